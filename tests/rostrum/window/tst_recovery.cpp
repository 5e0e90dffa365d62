#include "WindowFixture.h"
#include "core/ProjectFile.h"
#include "testhost/HostTestMain.h"

#include <QLockFile>

using testing::ClickButton;
using testing::DialogHand;
using testing::WindowFixture;

namespace {

/// The window with a copy saved each second.
class HastyFixture : public WindowFixture
{
public:
    HastyFixture()
    {
        QSettings settings(Places().settingsFile, QSettings::IniFormat);
        settings.setValue(QStringLiteral("autosave/seconds"), 1);
        settings.sync();
        Show();
        QCOMPARE(window->Files().Save(Path("scene.rostrum")), QString());
    }
    void Change()
    {
        Session().Do("Add", [](rostrum::Project &project) { project.AddFolder("new"); });
    }
    bool HasCopy() const { return QFile::exists(Path("scene.autosave.rostrum")); }
};

void WriteProject(const QString &path, int folders)
{
    rostrum::Project project;
    for (int i = 0; i < folders; ++i)
        project.AddFolder("folder " + QByteArray::number(i));
    QCOMPARE(rostrum::SaveProject(project, path), QString());
}

QString Details(QDialog &dialog)
{
    return dialog.property("informativeText").toString();
}

} // namespace

/// Copies that are saved by themselves, and what is asked about them.
class TestRecovery : public QObject
{
    Q_OBJECT

private slots:
    void theCopySavesItselfAndGoesWithTheSave();
    void theCopyGoesWhenTheChangesAreGivenUp();
    void theQuestionNamesProjectFolderAndTimes();
    void aDamagedCopyIsToldAndTheFileIsOpened();
    void aProjectThatIsOpenElsewhereIsAskedAbout_data();
    void aProjectThatIsOpenElsewhereIsAskedAbout();
    void workThatAnotherTookMeanwhileStaysThere_data();
    void workThatAnotherTookMeanwhileStaysThere();
    void leftWorkThatAnotherTookMeanwhileStaysThere_data();
    void leftWorkThatAnotherTookMeanwhileStaysThere();
    void theQuestionAboutLeftWorkTellsWhatItHolds();
};

void TestRecovery::theCopySavesItselfAndGoesWithTheSave()
{
    HastyFixture fixture;
    QVERIFY(!fixture.HasCopy());
    fixture.Change();

    QTRY_VERIFY_WITH_TIMEOUT(fixture.HasCopy(), 20000);
    QCOMPARE(rostrum::LoadProject(fixture.Path("scene.autosave.rostrum")).project.ItemCount(), 2);
    QCOMPARE(rostrum::LoadProject(fixture.Path("scene.rostrum")).project.ItemCount(), 1);
    fixture.Press(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(!fixture.HasCopy());
    QCOMPARE(rostrum::LoadProject(fixture.Path("scene.rostrum")).project.ItemCount(), 2);
}

void TestRecovery::theCopyGoesWhenTheChangesAreGivenUp()
{
    HastyFixture fixture;
    fixture.Change();
    QTRY_VERIFY_WITH_TIMEOUT(fixture.HasCopy(), 20000);
    const DialogHand hand([](QDialog &d) { ClickButton(d, QStringLiteral("Discard")); });

    QVERIFY(fixture.window->close());

    QVERIFY(hand.Answered());
    QVERIFY(!fixture.HasCopy());
    QVERIFY(!QFile::exists(fixture.Path(".scene.rostrum.lock")));
}

void TestRecovery::theQuestionNamesProjectFolderAndTimes()
{
    WindowFixture fixture;
    WriteProject(fixture.Path("scene.rostrum"), 1);
    WriteProject(fixture.Path("scene.autosave.rostrum"), 2);
    QString details;
    const DialogHand hand([&](QDialog &d) {
        details = Details(d);
        ClickButton(d, QStringLiteral("Recover"));
    });

    QVERIFY(fixture.window->Open(fixture.Path("scene.rostrum")));

    QVERIFY2(hand.Text().contains(QStringLiteral("\"scene.rostrum\" has changes that were never")),
        qPrintable(hand.Text()));
    QVERIFY2(details.startsWith(QDir::toNativeSeparators(fixture.Path("scene.rostrum"))),
        qPrintable(details));
    QVERIFY2(details.count(QStringLiteral("%1-").arg(QDate::currentDate().year())) == 2,
        qPrintable(details));
    QCOMPARE(fixture.ItemNames().size(), 2);
}

void TestRecovery::aDamagedCopyIsToldAndTheFileIsOpened()
{
    WindowFixture fixture;
    WriteProject(fixture.Path("scene.rostrum"), 1);
    QFile copy(fixture.Path("scene.autosave.rostrum"));
    QVERIFY(copy.open(QIODevice::WriteOnly) && copy.write("{ \"format\"") > 0);
    copy.close();
    std::unique_ptr<DialogHand> second;
    const DialogHand hand([&](QDialog &d) {
        d.hide(); // so that the second hand waits for the next one
        second = std::make_unique<DialogHand>(
            [](QDialog &box) { ClickButton(box, QStringLiteral("OK")); });
        d.show();
        ClickButton(d, QStringLiteral("Recover"));
    });

    QVERIFY(fixture.window->Open(fixture.Path("scene.rostrum")));

    QVERIFY(hand.Answered() && second->Answered());
    QVERIFY2(second->Text().contains(QStringLiteral("is damaged")), qPrintable(second->Text()));
    QCOMPARE(fixture.ItemNames().size(), 1);
    QVERIFY(copy.exists());
}

void TestRecovery::aProjectThatIsOpenElsewhereIsAskedAbout_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("isOpen");
    QTest::newRow("open") << QStringLiteral("Open All the Same") << true;
    QTest::newRow("cancel") << QStringLiteral("Cancel") << false;
}

/// The copy that the other program keeps is never offered.
void TestRecovery::aProjectThatIsOpenElsewhereIsAskedAbout()
{
    QFETCH(QString, button);
    QFETCH(bool, isOpen);
    WindowFixture fixture;
    WriteProject(fixture.Path("scene.rostrum"), 1);
    WriteProject(fixture.Path("scene.autosave.rostrum"), 2);
    QLockFile other(fixture.Path(".scene.rostrum.lock"));
    QVERIFY(other.tryLock());
    const DialogHand hand([&](QDialog &d) { ClickButton(d, button); });

    QCOMPARE(fixture.window->Open(fixture.Path("scene.rostrum")), isOpen);

    QVERIFY2(hand.Text().contains(QStringLiteral("is open already")), qPrintable(hand.Text()));
    QCOMPARE(fixture.ItemNames().size(), isOpen ? 1 : 0);
    QVERIFY(!fixture.window->isWindowModified());
}

void TestRecovery::workThatAnotherTookMeanwhileStaysThere_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("recover") << QStringLiteral("Recover");
    QTest::newRow("open as saved") << QStringLiteral("Open as Saved");
}

/// Two windows asked the same; the second that answered wrote over the first's copy, or removed it.
void TestRecovery::workThatAnotherTookMeanwhileStaysThere()
{
    QFETCH(QString, button);
    WindowFixture fixture;
    WriteProject(fixture.Path("scene.rostrum"), 1);
    WriteProject(fixture.Path("scene.autosave.rostrum"), 2);
    QLockFile other(fixture.Path(".scene.rostrum.lock"));
    std::unique_ptr<DialogHand> second;
    const DialogHand hand([&](QDialog &d) {
        QVERIFY(other.tryLock());
        d.hide(); // so that the second hand waits for the next one
        second = std::make_unique<DialogHand>(
            [](QDialog &box) { ClickButton(box, QStringLiteral("Cancel")); });
        d.show();
        ClickButton(d, button);
    });

    QVERIFY(!fixture.window->Open(fixture.Path("scene.rostrum")));

    QVERIFY(second && second->Answered());
    QVERIFY2(
        second->Text().contains(QStringLiteral("is open already")), qPrintable(second->Text()));
    QCOMPARE(rostrum::LoadProject(fixture.Path("scene.autosave.rostrum")).project.ItemCount(), 3);
    QCOMPARE(fixture.ItemNames().size(), 0);
}

void TestRecovery::leftWorkThatAnotherTookMeanwhileStaysThere_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("recover") << QStringLiteral("Recover");
    QTest::newRow("remove") << QStringLiteral("Remove It");
}

void TestRecovery::leftWorkThatAnotherTookMeanwhileStaysThere()
{
    QFETCH(QString, button);
    WindowFixture fixture;
    QVERIFY(QDir().mkpath(fixture.Path("data")));
    const QString copy = fixture.Path("data/untitled-1234abcd.autosave.rostrum");
    WriteProject(copy, 3);
    QLockFile other(copy + QStringLiteral(".lock"));
    std::unique_ptr<DialogHand> second;
    const DialogHand hand([&](QDialog &d) {
        QVERIFY(other.tryLock());
        d.hide(); // as above
        second = std::make_unique<DialogHand>(
            [](QDialog &box) { ClickButton(box, QStringLiteral("OK")); });
        d.show();
        ClickButton(d, button);
    });

    fixture.Show(); // another start

    QVERIFY(second && second->Answered());
    QVERIFY2(second->Text().contains(QStringLiteral("Another window")), qPrintable(second->Text()));
    QCOMPARE(rostrum::LoadProject(copy).project.ItemCount(), 4);
    QCOMPARE(fixture.ItemNames().size(), 0);
}

void TestRecovery::theQuestionAboutLeftWorkTellsWhatItHolds()
{
    WindowFixture fixture;
    QVERIFY(QDir().mkpath(fixture.Path("data")));
    WriteProject(fixture.Path("data/untitled-1234abcd.autosave.rostrum"), 7);
    QString details;
    const DialogHand hand([&](QDialog &d) {
        details = Details(d);
        ClickButton(d, QStringLiteral("Recover"));
    });

    fixture.Show(); // another start

    QVERIFY(hand.Answered());
    QCOMPARE(details,
        QStringLiteral("It holds folder 0, folder 1, folder 2, folder 3, folder 4 and 2 more."));
    QCOMPARE(fixture.ItemNames().size(), 7);
    QCOMPARE(fixture.window->windowTitle(), QStringLiteral("Untitled[*] - Rostrum"));
    QVERIFY(fixture.window->isWindowModified());
}

VN_HOST_TEST_MAIN(TestRecovery)
#include "tst_recovery.moc"
