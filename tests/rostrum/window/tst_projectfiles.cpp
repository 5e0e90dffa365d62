#include "core/ProjectFile.h"
#include "testhost/HostTestMain.h"
#include "testhost/SheetFixture.h"
#include "window/ProjectFiles.h"

#include <QDateTime>
#include <QDir>
#include <QLockFile>
#include <QSignalSpy>
#include <QTemporaryDir>

using rostrum::Project;
using rostrum::ProjectFiles;
using rostrum::Session;

namespace {

/// A session over an empty project, with folders of its own.
struct Desk
{
    QTemporaryDir folder;
    rostrum::Host host;
    Session session{ host };
    ProjectFiles files{ session, folder.filePath(QStringLiteral("data")) };

    QString Path(const char *name) const { return folder.filePath(QLatin1String(name)); }
    void Change(const QByteArray &name)
    {
        session.Do("Add", [&](Project &project) { project.AddFolder(name); });
    }
    int Items() const { return session.GetProject().ItemCount(); }
    /// Without the lock of the project, which comes and goes with its program.
    QStringList In(const QString &path) const
    {
        QStringList names = QDir(path).entryList(QDir::Files | QDir::Hidden, QDir::Name);
        for (int i = names.size() - 1; i >= 0; --i) {
            if (names[i].startsWith(QLatin1Char('.')) && names[i].endsWith(QLatin1String(".lock")))
                names.removeAt(i);
        }
        return names;
    }
};

QByteArray Bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

void Write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

} // namespace

/// The open project's file, and the copies that save themselves.
class TestProjectFiles : public QObject
{
    Q_OBJECT

private slots:
    void aProjectIsDirtyUntilItIsAsSaved();
    void aFileThatCannotBeReadLeavesTheProjectAlone_data();
    void aFileThatCannotBeReadLeavesTheProjectAlone();
    void aSaveThatFailsKeepsPathAndDirt();
    void openShowsTheFirstComposition();
    void aCopyLiesBesideTheFileAndGoesWithTheSave();
    void aCopyIsWrittenOnlyWhereSomethingIsNew();
    void aCopyIsFoundAfterAnAbruptEnd();
    void aCopyThatIsOlderThanTheFileIsNotOffered();
    void aRecoveredProjectIsDirtyAndSavesToItsFile();
    void untitledCopiesAreOfferedWhenTheirProgramIsGone();
    void untitledCopiesOfALivingProgramAreLeftAlone();
    void aCopyInAFolderThatCannotBeMadeIsTold();
    void noCopyIsMadeInsideAGroup();
    void openingAnotherGivesUpTheCopy();
    void longAndForeignNamesAreKept();
    void aProjectIsLockedWhileItIsOpen();
    void theLockGoesAlongWithSaveAs();
    void aCopyOfALivingProgramIsNotOffered();
    void aProjectThatIsOpenElsewhereGetsACopyOfItsOwn();
    void theSecondProgramIsSeenWhenTheFirstIsGone();
    void theSecondProgramsLockGoesWhenItIsGone();
    void aCopyThatAnotherProgramHoldsIsNotTaken_data();
    void aCopyThatAnotherProgramHoldsIsNotTaken();
    void copiesOfTheirOwnAreOfferedTheNewestFirst();
    void theLockOfAProgramThatIsGoneLocksNothing();
    void aCopyIsWrittenWhileWorkGoesOn();
    void aCopyThatCannotBeWrittenIsTold();
    void savingWhileACopyIsWrittenLeavesNone();
};

void TestProjectFiles::aProjectIsDirtyUntilItIsAsSaved()
{
    Desk desk;
    QSignalSpy states(&desk.files, &ProjectFiles::StateChanged);
    QVERIFY(!desk.files.IsDirty());
    QCOMPARE(desk.files.Title(), QStringLiteral("Untitled"));

    desk.Change("a");
    QVERIFY(desk.files.IsDirty());
    QCOMPARE(states.size(), 1);
    QCOMPARE(desk.files.Save(desk.Path("scene.rostrum")), QString());
    QVERIFY(!desk.files.IsDirty());
    QCOMPARE(desk.files.Title(), QStringLiteral("scene.rostrum"));
    desk.Change("b");
    QVERIFY(desk.files.IsDirty());
    desk.session.RunCommand(kHostCommandUndo);
    QVERIFY(!desk.files.IsDirty()); // as in the file again
    desk.session.RunCommand(kHostCommandUndo);
    QVERIFY(desk.files.IsDirty());
    desk.files.New();
    QVERIFY(!desk.files.IsDirty());
    QCOMPARE(desk.files.Title(), QStringLiteral("Untitled"));
}

void TestProjectFiles::aFileThatCannotBeReadLeavesTheProjectAlone_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("why");
    QTest::newRow("not there") << QByteArray("(none)") << QStringLiteral("is not there");
    QTest::newRow("empty") << QByteArray() << QStringLiteral("is empty");
    QTest::newRow("damaged") << QByteArray("{ \"format\": ") << QStringLiteral("is damaged");
    QTest::newRow("newer") << QByteArray("{ \"format\": \"rostrum project\", \"version\": 99 }")
                           << QStringLiteral("newer Rostrum");
    QTest::newRow("of something else") << QByteArray("{}") << QStringLiteral("is no project");
}

void TestProjectFiles::aFileThatCannotBeReadLeavesTheProjectAlone()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, why);
    Desk desk;
    desk.Change("a");
    QCOMPARE(desk.files.Save(desk.Path("scene.rostrum")), QString());
    desk.Change("b");
    const QString path = desk.Path("bad.rostrum");
    if (bytes != "(none)")
        Write(path, bytes);

    const QString error = desk.files.Open(path);

    QVERIFY2(error.contains(why) && error.contains(path), qPrintable(error));
    QCOMPARE(desk.Items(), 3);
    QVERIFY(desk.files.IsDirty());
    QCOMPARE(desk.files.Title(), QStringLiteral("scene.rostrum"));
    QCOMPARE(desk.session.GetDocument().UndoNames().size(), 2);
}

void TestProjectFiles::aSaveThatFailsKeepsPathAndDirt()
{
    Desk desk;
    desk.Change("a");
    QCOMPARE(desk.files.Save(desk.Path("scene.rostrum")), QString());
    desk.Change("b");

    const QString error = desk.files.Save(desk.Path("no such folder/other.rostrum"));

    QVERIFY2(error.contains(QStringLiteral("cannot be written")), qPrintable(error));
    QVERIFY(desk.files.IsDirty());
    QCOMPARE(desk.session.GetDocument().path, desk.Path("scene.rostrum"));
}

void TestProjectFiles::openShowsTheFirstComposition()
{
    Desk desk;
    Project project;
    const rostrum::ItemId folder = project.AddFolder("drawings");
    const rostrum::ItemId scene = project.AddComposition("scene", {}, folder);
    project.AddComposition("other", {});
    QCOMPARE(rostrum::SaveProject(project, desk.Path("a.rostrum")), QString());

    QCOMPARE(desk.files.Open(desk.Path("a.rostrum")), QString());

    QCOMPARE(desk.session.ActiveItem(), scene);
    QVERIFY(!desk.files.IsDirty());
    QCOMPARE(desk.session.GetDocument().UndoNames().size(), 0);
}

void TestProjectFiles::aCopyLiesBesideTheFileAndGoesWithTheSave()
{
    Desk desk;
    desk.Change("a");
    QCOMPARE(desk.files.Save(desk.Path("scene.rostrum")), QString());
    desk.Change("b");

    QCOMPARE(desk.files.Autosave(), QString());
    QCOMPARE(desk.In(desk.folder.path()),
        QStringList({ QStringLiteral("scene.autosave.rostrum"), QStringLiteral("scene.rostrum") }));
    QCOMPARE(rostrum::LoadProject(desk.Path("scene.autosave.rostrum")).project.ItemCount(), 3);
    QCOMPARE(rostrum::LoadProject(desk.Path("scene.rostrum")).project.ItemCount(), 2);

    QCOMPARE(desk.files.Save(desk.Path("scene.rostrum")), QString());
    QCOMPARE(desk.In(desk.folder.path()), QStringList{ QStringLiteral("scene.rostrum") });
}

void TestProjectFiles::aCopyIsWrittenOnlyWhereSomethingIsNew()
{
    Desk desk;
    QCOMPARE(desk.files.Autosave(), QString());
    QVERIFY(!QDir(desk.Path("data")).exists()); // nothing to save: not even a folder
    desk.Change("a");
    QCOMPARE(desk.files.Save(desk.Path("scene.rostrum")), QString());
    desk.Change("b");
    QCOMPARE(desk.files.Autosave(), QString());
    Write(desk.Path("scene.autosave.rostrum"), "marked");

    QCOMPARE(desk.files.Autosave(), QString());
    QCOMPARE(Bytes(desk.Path("scene.autosave.rostrum")), QByteArray("marked"));
    desk.Change("c");
    QCOMPARE(desk.files.Autosave(), QString());
    QVERIFY(Bytes(desk.Path("scene.autosave.rostrum")) != QByteArray("marked"));
}

void TestProjectFiles::aCopyIsFoundAfterAnAbruptEnd()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("scene.rostrum"));
    {
        Desk desk;
        desk.Change("a");
        QCOMPARE(desk.files.Save(path), QString());
        QCOMPARE(ProjectFiles::CopyOf(path), QString());
        desk.Change("b");
        QCOMPARE(desk.files.Autosave(), QString());
    } // without Discard: as when the program is killed

    QCOMPARE(ProjectFiles::CopyOf(path), folder.filePath(QStringLiteral("scene.autosave.rostrum")));
}

void TestProjectFiles::aCopyThatIsOlderThanTheFileIsNotOffered()
{
    Desk desk;
    const QString path = desk.Path("scene.rostrum");
    const QString copy = desk.Path("scene.autosave.rostrum");
    Write(path, "file");
    Write(copy, "copy");
    const auto setTime = [](const QString &file, int seconds) {
        QFile opened(file);
        return opened.open(QIODevice::ReadWrite)
            && opened.setFileTime(QDateTime::fromSecsSinceEpoch(1600000000 + seconds),
                QFileDevice::FileModificationTime);
    };

    QVERIFY(setTime(path, 60) && setTime(copy, 59));
    QCOMPARE(ProjectFiles::CopyOf(path), QString());
    QVERIFY(setTime(copy, 60)); // a clock may be coarse
    QCOMPARE(ProjectFiles::CopyOf(path), copy);
    QVERIFY(QFile::remove(path)); // the copy is all that there is
    QCOMPARE(ProjectFiles::CopyOf(path), copy);
}

void TestProjectFiles::aRecoveredProjectIsDirtyAndSavesToItsFile()
{
    Desk desk;
    const QString path = desk.Path("scene.rostrum");
    const QString copy = desk.Path("scene.autosave.rostrum");
    Project project;
    QCOMPARE(rostrum::SaveProject(project, path), QString());
    project.AddFolder("more");
    QCOMPARE(rostrum::SaveProject(project, copy), QString());

    QCOMPARE(desk.files.OpenCopy(copy, path), QString());

    QCOMPARE(desk.Items(), 2);
    QVERIFY(desk.files.IsDirty());
    QCOMPARE(desk.session.GetDocument().path, path);
    QVERIFY(QFile::exists(copy)); // until it is saved
    QCOMPARE(desk.files.Save(path), QString());
    QVERIFY(!QFile::exists(copy));
    QCOMPARE(rostrum::LoadProject(path).project.ItemCount(), 2);
}

void TestProjectFiles::untitledCopiesAreOfferedWhenTheirProgramIsGone()
{
    Desk desk;
    desk.Change("a");
    QCOMPARE(desk.files.Autosave(), QString());
    const QString copy = desk.files.AutosavePath();
    QVERIFY(QFile::exists(copy));
    {
        ProjectFiles ended(desk.session, desk.Path("data"));
        QCOMPARE(ended.LeftCopies(), QStringList()); // the first one lives
    }
    desk.files.Discard();
    QVERIFY(!QFile::exists(copy));
    QCOMPARE(desk.In(desk.Path("data")), QStringList());

    QCOMPARE(rostrum::SaveProject(desk.session.GetProject(), copy), QString()); // and was killed
    QCOMPARE(desk.files.LeftCopies(), QStringList{ copy });
    QCOMPARE(desk.files.OpenCopy(copy, QString()), QString());
    QVERIFY(desk.files.IsDirty());
    QCOMPARE(desk.files.Title(), QStringLiteral("Untitled"));
    QCOMPARE(desk.files.LeftCopies(), QStringList()); // it is this program's now
    QCOMPARE(desk.files.AutosavePath(), copy);
}

void TestProjectFiles::untitledCopiesOfALivingProgramAreLeftAlone()
{
    Desk desk;
    desk.Change("a");
    QCOMPARE(desk.files.Autosave(), QString());

    ProjectFiles other(desk.session, desk.Path("data"));

    QCOMPARE(other.LeftCopies(), QStringList());
    QCOMPARE(desk.files.LeftCopies(), QStringList());
}

void TestProjectFiles::aCopyInAFolderThatCannotBeMadeIsTold()
{
    Desk desk;
    Write(desk.Path("data"), "a file where the folder would be");
    desk.Change("a");

    const QString error = desk.files.Autosave();

    QVERIFY2(error.contains(QStringLiteral("cannot be written")), qPrintable(error));
}

void TestProjectFiles::noCopyIsMadeInsideAGroup()
{
    Desk desk;
    desk.session.GetDocument().StartGroup("half a change");
    desk.session.GetDocument().Edit("half").AddFolder("a");

    QCOMPARE(desk.files.Autosave(), QString());
    QVERIFY(!QDir(desk.Path("data")).exists());
    desk.session.GetDocument().EndGroup();
    QCOMPARE(desk.files.Autosave(), QString());
    QVERIFY(QDir(desk.Path("data")).exists());
}

void TestProjectFiles::openingAnotherGivesUpTheCopy()
{
    Desk desk;
    QCOMPARE(desk.files.Save(desk.Path("other.rostrum")), QString());
    QCOMPARE(desk.files.Save(desk.Path("scene.rostrum")), QString());
    desk.Change("b");
    QCOMPARE(desk.files.Autosave(), QString());

    QCOMPARE(desk.files.Open(desk.Path("other.rostrum")), QString());

    QCOMPARE(desk.In(desk.folder.path()),
        QStringList({ QStringLiteral("other.rostrum"), QStringLiteral("scene.rostrum") }));
}

void TestProjectFiles::longAndForeignNamesAreKept()
{
    Desk desk;
    desk.Change("a");
    const QString name = QString(200, QLatin1Char('x')) + QStringLiteral(" été.v2.rostrum");
    const QString path = desk.folder.filePath(name);

    QCOMPARE(desk.files.Save(path), QString());
    QCOMPARE(desk.files.Title(), name);
    desk.Change("b");
    QCOMPARE(desk.files.Autosave(), QString());
    QCOMPARE(desk.In(desk.folder.path()).size(), 2);
    desk.files.Discard();
    QCOMPARE(desk.In(desk.folder.path()), QStringList{ name });
}

void TestProjectFiles::aProjectIsLockedWhileItIsOpen()
{
    Desk desk;
    desk.Change("a");
    const QString path = desk.Path("scene.rostrum");
    QCOMPARE(ProjectFiles::OpenElsewhere(path), QString());

    QCOMPARE(desk.files.Save(path), QString());

    const QString who = ProjectFiles::OpenElsewhere(path); // as another program sees it
    QVERIFY2(who.contains(QString::number(QCoreApplication::applicationPid())), qPrintable(who));
    desk.files.Discard();
    QCOMPARE(ProjectFiles::OpenElsewhere(path), QString());
    QVERIFY(!QFile::exists(desk.Path(".scene.rostrum.lock")));
}

void TestProjectFiles::theLockGoesAlongWithSaveAs()
{
    Desk desk;
    desk.Change("a");
    QCOMPARE(desk.files.Save(desk.Path("one.rostrum")), QString());
    QCOMPARE(desk.files.Save(desk.Path("two.rostrum")), QString());

    QCOMPARE(ProjectFiles::OpenElsewhere(desk.Path("one.rostrum")), QString());
    QVERIFY(!ProjectFiles::OpenElsewhere(desk.Path("two.rostrum")).isEmpty());
    desk.files.New();
    QCOMPARE(ProjectFiles::OpenElsewhere(desk.Path("two.rostrum")), QString());
}

void TestProjectFiles::aCopyOfALivingProgramIsNotOffered()
{
    Desk desk;
    const QString path = desk.Path("scene.rostrum");
    QCOMPARE(rostrum::SaveProject(Project(), path), QString());
    QCOMPARE(rostrum::SaveProject(Project(), desk.Path("scene.autosave.rostrum")), QString());
    QLockFile other(desk.Path(".scene.rostrum.lock"));
    QVERIFY(other.tryLock());

    QCOMPARE(ProjectFiles::CopyOf(path), QString());
    other.unlock();
    QCOMPARE(ProjectFiles::CopyOf(path), desk.Path("scene.autosave.rostrum"));
}

void TestProjectFiles::aProjectThatIsOpenElsewhereGetsACopyOfItsOwn()
{
    Desk desk;
    const QString path = desk.Path("scene.rostrum");
    QCOMPARE(rostrum::SaveProject(Project(), path), QString());
    Write(desk.Path("scene.autosave.rostrum"), "of the other program");
    QLockFile other(desk.Path(".scene.rostrum.lock"));
    QVERIFY(other.tryLock());
    QCOMPARE(desk.files.Open(path), QString());
    desk.Change("a");

    QCOMPARE(desk.files.Autosave(), QString());

    const QString copy = desk.files.AutosavePath();
    QVERIFY2(copy.contains(QStringLiteral("/scene.autosave-")), qPrintable(copy));
    QCOMPARE(rostrum::LoadProject(copy).project.ItemCount(), 2);
    QCOMPARE(ProjectFiles::CopyOf(path), QString()); // both programs live
    QCOMPARE(desk.files.Save(path), QString());
    QVERIFY(!QFile::exists(copy));
    QCOMPARE(Bytes(desk.Path("scene.autosave.rostrum")), QByteArray("of the other program"));
}

/// Only the first program had a lock: with that gone, a third one was not asked.
void TestProjectFiles::theSecondProgramIsSeenWhenTheFirstIsGone()
{
    Desk desk;
    const QString path = desk.Path("scene.rostrum");
    QCOMPARE(rostrum::SaveProject(Project(), path), QString());
    QLockFile other(desk.Path(".scene.rostrum.lock"));
    QVERIFY(other.tryLock());
    QCOMPARE(desk.files.Open(path), QString());
    QVERIFY(!ProjectFiles::OpenElsewhere(path).isEmpty());

    other.unlock();

    const QString who = ProjectFiles::OpenElsewhere(path);
    QVERIFY2(who.contains(QString::number(QCoreApplication::applicationPid())), qPrintable(who));
    desk.files.New();
    QCOMPARE(ProjectFiles::OpenElsewhere(path), QString());
    QCOMPARE(QDir(desk.folder.path()).entryList(QDir::Files | QDir::Hidden),
        QStringList{ QStringLiteral("scene.rostrum") });
}

/// A lock of this kind is taken away by whoever looks.
void TestProjectFiles::theSecondProgramsLockGoesWhenItIsGone()
{
    Desk desk;
    const QString path = desk.Path("scene.rostrum");
    QCOMPARE(rostrum::SaveProject(Project(), path), QString());
    const QString lock = desk.Path(".scene.rostrum-1a2b3c4d.lock");
    Write(lock, "999999999\nrostrum\n\n"); // of no machine: of this one

    QCOMPARE(ProjectFiles::OpenElsewhere(path), QString());
    QVERIFY(!QFile::exists(lock));
}

void TestProjectFiles::aCopyThatAnotherProgramHoldsIsNotTaken_data()
{
    QTest::addColumn<QString>("copyName");
    QTest::addColumn<QString>("lockName");
    QTest::addColumn<bool>("hasFile");
    QTest::newRow("of the first program") << QStringLiteral("scene.autosave.rostrum")
                                          << QStringLiteral(".scene.rostrum.lock") << true;
    QTest::newRow("of another one") << QStringLiteral("scene.autosave-1a.rostrum")
                                    << QStringLiteral("scene.autosave-1a.rostrum.lock") << true;
    QTest::newRow("of a project without a file")
        << QStringLiteral("data/untitled-1a.autosave.rostrum")
        << QStringLiteral("data/untitled-1a.autosave.rostrum.lock") << false;
}

/// Another program took it while the question was up. What is in it comes, and it stays the other's.
void TestProjectFiles::aCopyThatAnotherProgramHoldsIsNotTaken()
{
    QFETCH(QString, copyName);
    QFETCH(QString, lockName);
    QFETCH(bool, hasFile);
    Desk desk;
    const QString path = hasFile ? desk.Path("scene.rostrum") : QString();
    const QString copy = desk.folder.filePath(copyName);
    QVERIFY(QDir().mkpath(desk.Path("data")));
    if (hasFile)
        QCOMPARE(rostrum::SaveProject(Project(), path), QString());
    Project project;
    project.AddFolder("a");
    QCOMPARE(rostrum::SaveProject(project, copy), QString());
    const QByteArray before = Bytes(copy);
    QLockFile other(desk.folder.filePath(lockName));
    QVERIFY(other.tryLock());

    QCOMPARE(desk.files.OpenCopy(copy, path), QString());

    QCOMPARE(desk.Items(), 2);
    QVERIFY(desk.files.IsDirty());
    desk.Change("b");
    QCOMPARE(desk.files.Autosave(), QString());
    QVERIFY(desk.files.AutosavePath() != copy);
    QCOMPARE(rostrum::LoadProject(desk.files.AutosavePath()).project.ItemCount(), 3);
    desk.files.Discard();
    QCOMPARE(Bytes(copy), before);
}

void TestProjectFiles::copiesOfTheirOwnAreOfferedTheNewestFirst()
{
    Desk desk;
    const QString path = desk.Path("scene.rostrum");
    Project project;
    QCOMPARE(rostrum::SaveProject(project, path), QString());
    int items = 1;
    for (const char *name : { "scene.autosave-1a.rostrum", "scene.autosave-2b.rostrum" }) {
        project.AddFolder("more");
        QCOMPARE(rostrum::SaveProject(project, desk.Path(name)), QString());
        QFile copy(desk.Path(name));
        QVERIFY(copy.open(QIODevice::ReadWrite)
            && copy.setFileTime(QDateTime::currentDateTime().addSecs(10 * ++items),
                QFileDevice::FileModificationTime));
    }
    Write(desk.Path("scene.autosave-2b.txt"), "none of them");
    Write(desk.Path("scenery.autosave-3c.rostrum"), "of another project");

    QCOMPARE(ProjectFiles::CopyOf(path), desk.Path("scene.autosave-2b.rostrum"));
    QCOMPARE(desk.files.OpenCopy(ProjectFiles::CopyOf(path), path), QString());
    QCOMPARE(desk.files.AutosavePath(), desk.Path("scene.autosave-2b.rostrum"));
    QCOMPARE(desk.files.Save(path), QString());
    QVERIFY(!QFile::exists(desk.Path("scene.autosave-2b.rostrum")));
    QVERIFY(QFile::exists(desk.Path("scene.autosave-1a.rostrum"))); // nobody has looked at it
}

void TestProjectFiles::theLockOfAProgramThatIsGoneLocksNothing()
{
    Desk desk;
    const QString path = desk.Path("scene.rostrum");
    const QString copy = desk.Path("scene.autosave.rostrum");
    QCOMPARE(rostrum::SaveProject(Project(), path), QString());
    QCOMPARE(rostrum::SaveProject(Project(), copy), QString());
    Write(desk.Path(".scene.rostrum.lock"),
        "999999999\nrostrum\n\n"); // of no machine: of this one

    QCOMPARE(ProjectFiles::OpenElsewhere(path), QString());
    QCOMPARE(ProjectFiles::CopyOf(path), copy);
}

void TestProjectFiles::aCopyIsWrittenWhileWorkGoesOn()
{
    Desk desk;
    QCOMPARE(desk.files.Save(desk.Path("scene.rostrum")), QString());
    desk.Change("a");
    int written = 0; // in this thread, behind what the class itself does about it
    connect(
        &desk.files, &ProjectFiles::CopyWritten, this, [&] { ++written; }, Qt::QueuedConnection);

    desk.files.StartAutosave();
    desk.Change("b");

    QTRY_COMPARE(written, 1);
    const QString copy = desk.Path("scene.autosave.rostrum");
    QCOMPARE(rostrum::LoadProject(copy).project.ItemCount(), 2); // as it was at the start
    QCOMPARE(desk.Items(), 3);
    desk.files.StartAutosave();
    QTRY_COMPARE(written, 2);
    QCOMPARE(rostrum::LoadProject(copy).project.ItemCount(), 3);
    desk.files.StartAutosave(); // nothing new
    QCOMPARE(desk.files.Autosave(), QString());
    QCoreApplication::processEvents();
    QCOMPARE(written, 2);
    disconnect(&desk.files, nullptr, this, nullptr);
}

void TestProjectFiles::aCopyThatCannotBeWrittenIsTold()
{
    Desk desk;
    QCOMPARE(desk.files.Save(desk.Path("scene.rostrum")), QString());
    QVERIFY(QDir().mkpath(desk.Path("scene.autosave.rostrum/in the way")));
    desk.Change("a");
    QSignalSpy failed(&desk.files, &ProjectFiles::AutosaveFailed);

    desk.files.StartAutosave();

    QTRY_COMPARE(failed.size(), 1);
    const QString error = failed.first().first().toString();
    QVERIFY2(error.contains(QStringLiteral("scene.autosave.rostrum")), qPrintable(error));
}

void TestProjectFiles::savingWhileACopyIsWrittenLeavesNone()
{
    Desk desk;
    QCOMPARE(desk.files.Save(desk.Path("scene.rostrum")), QString());
    desk.Change("a");

    desk.files.StartAutosave();
    QCOMPARE(desk.files.Save(desk.Path("scene.rostrum")), QString());

    QCoreApplication::processEvents();
    QCOMPARE(desk.In(desk.folder.path()), QStringList{ QStringLiteral("scene.rostrum") });
    desk.Change("b");
    desk.files.StartAutosave();
    desk.files.Discard();
    QCOMPARE(desk.In(desk.folder.path()), QStringList{ QStringLiteral("scene.rostrum") });
}

VN_HOST_TEST_MAIN(TestProjectFiles)
#include "tst_projectfiles.moc"
