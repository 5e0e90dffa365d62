// Two and three of the program at once, each in a process of its own, on one project. What a person is
// asked is told by what the proposed button leads to: that of "is open already" is Cancel, that of
// "has changes that were never saved" is Recover.
#include "OtherProgram.h"
#include "testing/TestMain.h"

#include <QGuiApplication>
#include <QRegularExpression>

using rostrum::LoadProject;
using rostrum::Project;
using testing::Bytes;
using testing::Home;
using testing::kPatience;
using testing::OtherProgram;

namespace {

const char kClean[] = "^scene\\.rostrum - Rostrum$";
const char kChanged[] = "^scene\\.rostrum\\* - Rostrum$";
const char kEmpty[] = "^Untitled - Rostrum$";
const char kUntitledChanged[] = "^Untitled\\* - Rostrum$";

QString Title(const char *title)
{
    return QString::fromLatin1(title);
}

/// Past a proposed Cancel, to the other button.
QStringList TheOtherButton()
{
    return { QStringLiteral("Tab"), QStringLiteral("Return") };
}

/// A folder with a project in it.
class Shared : public Home
{
public:
    Shared() { QCOMPARE(rostrum::SaveProject(Project(), Scene()), QString()); }
    QString Scene() const { return Path("scene.rostrum"); }
    QString Copy() const { return Path("scene.autosave.rostrum"); }
    /// Of programs that were not the first.
    QStringList OwnCopies() const
    {
        return Files().filter(QRegularExpression(QStringLiteral("^scene\\.autosave-.*rostrum$")));
    }
    static int Items(const QString &path) { return LoadProject(path).project.ItemCount(); }
};

/// Makes a composition and waits for the copy that has it.
bool Work(const OtherProgram &program, const QString &copy)
{
    return program.MakeComposition(Title(kClean))
        && QTest::qWaitFor([&] { return Shared::Items(copy) == 2; }, kPatience);
}

} // namespace

class TestTwoPrograms : public QObject
{
    Q_OBJECT

private slots:
    void theSecondAsksAndLeavesTheFirstAlone();
    void theCopyOfALivingProgramIsNoLostWork();
    void afterTheFirstWasKilledItsWorkIsOffered();
    void aSurvivorIsSeenByTheNextOne_data();
    void aSurvivorIsSeenByTheNextOne();
    void lostWorkThatTwoAreOfferedGoesToTheOneThatTakesIt();
    void anUnsavedProjectThatTwoAreOfferedGoesToTheOneThatTakesIt();
};

void TestTwoPrograms::theSecondAsksAndLeavesTheFirstAlone()
{
    const Shared shared;
    const QByteArray file = Bytes(shared.Scene());
    OtherProgram first(shared, { shared.Scene() });
    QVERIFY(Work(first, shared.Copy()));
    const QByteArray copy = Bytes(shared.Copy());
    {
        OtherProgram second(shared, { shared.Scene() });
        QVERIFY(second.Comes(OtherProgram::QuestionTitle()));
        QVERIFY(second.Answer(Title(kEmpty)));
        QVERIFY(!second.Shows(OtherProgram::QuestionTitle()));
        QVERIFY(second.Quit(Title(kEmpty)));
    }
    QCOMPARE(Bytes(shared.Scene()), file);
    QCOMPARE(Bytes(shared.Copy()), copy);

    QVERIFY(first.Press(Title(kChanged), { QStringLiteral("ctrl+s") },
        [&] { return Shared::Items(shared.Scene()) == 2; }));
    QVERIFY(first.Quit(Title(kClean)));
    QCOMPARE(shared.Files(), QStringList{ QStringLiteral("scene.rostrum") });
}

void TestTwoPrograms::theCopyOfALivingProgramIsNoLostWork()
{
    const Shared shared;
    const QByteArray file = Bytes(shared.Scene());
    OtherProgram first(shared, { shared.Scene() });
    QVERIFY(Work(first, shared.Copy()));
    const QByteArray copy = Bytes(shared.Copy());

    OtherProgram second(shared, { shared.Scene() });
    QVERIFY(second.Comes(OtherProgram::QuestionTitle()));
    QVERIFY(second.Answer(Title(kClean), TheOtherButton())); // as saved, and nothing else is asked
    QVERIFY(!second.Shows(OtherProgram::QuestionTitle()));
    QVERIFY(second.MakeComposition(Title(kClean)));
    QTRY_COMPARE_WITH_TIMEOUT(shared.OwnCopies().size(), 1, kPatience);
    QCOMPARE(Bytes(shared.Copy()), copy);
    QCOMPARE(Bytes(shared.Scene()), file);

    // What the second saves takes nothing of the first's but the file.
    QVERIFY(second.Press(Title(kChanged), { QStringLiteral("ctrl+s") },
        [&] { return Shared::Items(shared.Scene()) == 2; }));
    QVERIFY(second.Quit(Title(kClean)));
    QCOMPARE(shared.OwnCopies(), QStringList());
    QCOMPARE(Bytes(shared.Copy()), copy);
}

void TestTwoPrograms::afterTheFirstWasKilledItsWorkIsOffered()
{
    const Shared shared;
    const QByteArray file = Bytes(shared.Scene());
    {
        OtherProgram first(shared, { shared.Scene() });
        QVERIFY(Work(first, shared.Copy()));
        {
            OtherProgram second(shared, { shared.Scene() });
            QVERIFY(second.Comes(OtherProgram::QuestionTitle()));
            QVERIFY(first.Kill()); // while it asks
            QVERIFY(second.Answer(Title(kEmpty)));
            QVERIFY(second.Quit(Title(kEmpty)));
        }
    }
    QCOMPARE(Bytes(shared.Scene()), file);
    OtherProgram second(shared, { shared.Scene() });
    QVERIFY(second.Answer(Title(kChanged)));
    QCOMPARE(Bytes(shared.Scene()), file);
    QVERIFY(second.Press(Title(kChanged), { QStringLiteral("ctrl+s") },
        [&] { return Shared::Items(shared.Scene()) == 2; }));
    QVERIFY(second.Quit(Title(kClean)));
    QCOMPARE(shared.Files(), QStringList{ QStringLiteral("scene.rostrum") });
}

void TestTwoPrograms::aSurvivorIsSeenByTheNextOne_data()
{
    QTest::addColumn<bool>("isKilled");
    QTest::newRow("the first was closed") << false;
    QTest::newRow("the first was killed") << true;
}

/// The third was not asked: only the first had a lock.
void TestTwoPrograms::aSurvivorIsSeenByTheNextOne()
{
    QFETCH(bool, isKilled);
    const Shared shared;
    OtherProgram first(shared, { shared.Scene() });
    QVERIFY(first.Comes(Title(kClean)));
    OtherProgram second(shared, { shared.Scene() });
    QVERIFY(second.Comes(OtherProgram::QuestionTitle()));
    QVERIFY(second.Answer(Title(kClean), TheOtherButton()));
    QVERIFY(isKilled ? first.Kill() : first.Quit(Title(kClean)));
    {
        OtherProgram third(shared, { shared.Scene() });
        QVERIFY(third.Comes(OtherProgram::QuestionTitle()));
        QVERIFY(third.Answer(Title(kEmpty)));
        QVERIFY(third.Quit(Title(kEmpty)));
    }
    QVERIFY(second.Quit(Title(kClean)));
    OtherProgram last(shared, { shared.Scene() });
    QVERIFY(last.Comes(Title(kClean)));
    QVERIFY(!last.Shows(OtherProgram::QuestionTitle()));
    QVERIFY(last.Quit(Title(kClean)));
    QCOMPARE(shared.Files(), QStringList{ QStringLiteral("scene.rostrum") });
}

/// Both wrote to one copy, and the one that ended first took it away from the other.
void TestTwoPrograms::lostWorkThatTwoAreOfferedGoesToTheOneThatTakesIt()
{
    const Shared shared;
    {
        OtherProgram lost(shared, { shared.Scene() });
        QVERIFY(Work(lost, shared.Copy()));
        QVERIFY(lost.Kill());
    }
    const QByteArray copy = Bytes(shared.Copy());
    OtherProgram second(shared, { shared.Scene() });
    OtherProgram first(shared, { shared.Scene() });
    QVERIFY(second.Comes(OtherProgram::QuestionTitle()));
    QVERIFY(first.Comes(OtherProgram::QuestionTitle()));
    QVERIFY(first.Answer(Title(kChanged)));

    const QString question = second.Find(OtherProgram::QuestionTitle());
    QVERIFY(second.Press(OtherProgram::QuestionTitle(), { QStringLiteral("Return") }, [&] {
        const QString now = second.Find(OtherProgram::QuestionTitle());
        return !now.isEmpty() && now != question; // the first has it open by now
    }));
    QVERIFY(second.Answer(Title(kEmpty)));
    QVERIFY(second.Quit(Title(kEmpty)));

    QCOMPARE(Bytes(shared.Copy()), copy);
    QVERIFY(first.Press(Title(kChanged), { QStringLiteral("ctrl+s") },
        [&] { return Shared::Items(shared.Scene()) == 2; }));
    QVERIFY(first.Quit(Title(kClean)));
    QCOMPARE(shared.Files(), QStringList{ QStringLiteral("scene.rostrum") });
}

void TestTwoPrograms::anUnsavedProjectThatTwoAreOfferedGoesToTheOneThatTakesIt()
{
    const Home home;
    const auto copies = [&] {
        return home.Data().entryList(
            { QStringLiteral("untitled-*.autosave.rostrum") }, QDir::Files);
    };
    {
        OtherProgram lost(home, {});
        QVERIFY(lost.MakeComposition(Title(kEmpty)));
        QTRY_COMPARE_WITH_TIMEOUT(copies().size(), 1, kPatience);
        QVERIFY(lost.Kill());
    }
    const QString copy = home.Data().filePath(copies().first());
    const QByteArray before = Bytes(copy);
    OtherProgram second(home, {});
    OtherProgram first(home, {});
    QVERIFY(second.Comes(OtherProgram::QuestionTitle()));
    QVERIFY(first.Comes(OtherProgram::QuestionTitle()));
    QVERIFY(first.Answer(Title(kUntitledChanged)));

    const QString question = second.Find(OtherProgram::QuestionTitle());
    QVERIFY(second.Press(OtherProgram::QuestionTitle(), { QStringLiteral("Return") }, [&] {
        const QString now = second.Find(OtherProgram::QuestionTitle());
        return !now.isEmpty() && now != question; // that it is in other hands
    }));
    QVERIFY(second.Press(OtherProgram::QuestionTitle(), { QStringLiteral("Return") },
        [&] { return !second.Shows(OtherProgram::QuestionTitle()); }));
    QVERIFY(second.Quit(Title(kEmpty)));

    QCOMPARE(copies().size(), 1);
    QCOMPARE(Bytes(copy), before);
    QVERIFY(first.Shows(Title(kUntitledChanged)));
}

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    TestTwoPrograms tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_two_programs.moc"
