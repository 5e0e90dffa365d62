// The program itself, in its own process and window: it is killed in the middle of the work, started
// again, and the work is there.
#include "OtherProgram.h"
#include "testing/TestMain.h"

#include <QGuiApplication>

using rostrum::LoadProject;
using rostrum::Project;
using testing::Bytes;
using testing::Home;
using testing::kPatience;
using testing::OtherProgram;

class TestKilled : public QObject
{
    Q_OBJECT

private slots:
    void theWorkSinceTheLastSaveIsThereAfterAKill();
    void aProjectThatWasNeverSavedIsThereAfterAKill();
};

void TestKilled::theWorkSinceTheLastSaveIsThereAfterAKill()
{
    const Home home;
    const QString path = home.Path("scene.rostrum");
    const QString clean = QStringLiteral("^scene\\.rostrum - Rostrum$");
    const QString changed = QStringLiteral("^scene\\.rostrum\\* - Rostrum$");
    QCOMPARE(rostrum::SaveProject(Project(), path), QString());
    const QByteArray before = Bytes(path);
    {
        OtherProgram program(home, { path });
        QVERIFY(program.MakeComposition(clean));
        const QString copy = home.Path("scene.autosave.rostrum");
        QTRY_VERIFY_WITH_TIMEOUT(LoadProject(copy).project.ItemCount() == 2, kPatience);
        QVERIFY(program.Kill());
    }
    QCOMPARE(Bytes(path), before);

    OtherProgram program(home, { path });
    QVERIFY(program.Answer(changed));
    QVERIFY(program.Press(changed, { QStringLiteral("ctrl+s") },
        [&] { return LoadProject(path).project.ItemCount() == 2; }));
    QVERIFY(program.Quit(clean));
    QCOMPARE(home.Files(), QStringList{ QStringLiteral("scene.rostrum") });
}

void TestKilled::aProjectThatWasNeverSavedIsThereAfterAKill()
{
    const Home home;
    const QDir data = home.Data();
    const QStringList copies{ QStringLiteral("untitled-*.autosave.rostrum") };
    {
        OtherProgram program(home, {});
        QVERIFY(program.MakeComposition(QStringLiteral("^Untitled - Rostrum$")));
        QTRY_COMPARE_WITH_TIMEOUT(data.entryList(copies, QDir::Files).size(), 1, kPatience);
        QVERIFY(program.Kill());
    }
    const QByteArray copy = Bytes(data.filePath(data.entryList(copies, QDir::Files).first()));
    for (int time = 0; time < 2; ++time) { // killed once more, it is still there
        OtherProgram program(home, {});
        QVERIFY(program.Answer(QStringLiteral("^Untitled\\* - Rostrum$")));
        QVERIFY(program.Kill());
        const QStringList left = data.entryList(copies, QDir::Files);
        QCOMPARE(left.size(), 1);
        QCOMPARE(Bytes(data.filePath(left.first())), copy);
    }
}

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    TestKilled tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_killed.moc"
