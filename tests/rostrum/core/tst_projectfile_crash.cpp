// What is on the disk when a save does not come to its end. The saves run in a process of its own,
// this program again, called with "--save".

#include "CoreTest.h"

#include "core/ProjectFile.h"
#include "testing/Platform.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

using namespace rostrum;

class TestProjectFileCrash : public QObject
{
    Q_OBJECT

private slots:
    void aProcessKilledWhileItSavesLeavesOneOfTheTwoVersions();
    void aFullDiskIsToldAndTheOldFileStaysWhole();
};

namespace {

constexpr int kKills = 100;
constexpr int kLayers = 60;
constexpr int kKeys = 40; // of each layer

/// A project of some 200 kB. @param version tells two of them apart
Project Version(int version)
{
    Project project;
    Composition composition;
    composition.duration = composition.rate.FrameTime(kKeys);
    const QByteArray name = "version " + QByteArray::number(version);
    const ItemId compo = project.AddComposition(name, composition);
    Footage series = Series(kKeys);
    series.folder = QDir::rootPath() + QStringLiteral("cut"); // read again it has its drive
    const ItemId footage = project.AddFootage("walk", series);
    for (int i = 0; i < kLayers; ++i) {
        Layer &layer = *project.EditLayer(compo, project.AddLayer(footage, compo));
        for (int frame = 0; frame < kKeys; ++frame)
            layer.timeRemap.InsertKey(
                composition.rate.FrameTime(frame), { (frame * version + i) / 25.0, 0, 0, 0 });
    }
    return project;
}

/// Saves the two versions in turn until it is killed, a line a save.
int SaveForEver(const QString &path)
{
    const Project versions[] = { Version(1), Version(2) };
    for (int save = 0;; save = 1 - save) {
        const QString wrong = SaveProject(versions[save], path);
        std::printf("%s\n", qPrintable(wrong));
        std::fflush(stdout);
        if (!wrong.isEmpty())
            return 3;
    }
}

/// One save in a process whose files may not grow beyond a size, as if the disk were full.
int SaveOnFullDisk(const QString &path, qint64 bytes)
{
    const Project project = Version(2);
    if (!testing::LimitFileSize(bytes))
        return 4;
    const QString wrong = SaveProject(project, path);
    std::printf("%s\n", qPrintable(wrong));
    return wrong.isEmpty() ? 0 : 3;
}

void Start(QProcess &child, const QStringList &arguments)
{
    child.start(QCoreApplication::applicationFilePath(), arguments);
    QVERIFY(child.waitForStarted());
}

void AwaitLines(QProcess &child, int count)
{
    for (int line = 0; line < count; ++line) {
        while (!child.canReadLine())
            QVERIFY(child.waitForReadyRead());
        QCOMPARE(child.readLine().trimmed(), QByteArray());
    }
}

} // namespace

void TestProjectFileCrash::aProcessKilledWhileItSavesLeavesOneOfTheTwoVersions()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("cut.rostrum"));
    const Project versions[] = { Version(1), Version(2) };
    QCOMPARE(SaveProject(versions[0], path), QString());
    int met[2] = {};
    for (int kill = 0; kill < kKills; ++kill) {
        QProcess child;
        Start(child, { QStringLiteral("--save"), path });
        AwaitLines(child, kill % 3);
        QTest::qSleep(1 + kill * 7 % 23); // ms, so that each kill meets another moment of a save
        child.kill();
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);

        const LoadedProject loaded = LoadProject(path);
        QCOMPARE(loaded.error, QString());
        const int found = loaded.project == versions[1] ? 1 : 0;
        QVERIFY(loaded.project == versions[found]);
        ++met[found];
    }
    QVERIFY(met[0] > 0 && met[1] > 0); // the saves went through, too
}

void TestProjectFileCrash::aFullDiskIsToldAndTheOldFileStaysWhole()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("cut.rostrum"));
    QCOMPARE(SaveProject(Version(1), path), QString());
    QProcess child;
    Start(child, { QStringLiteral("--full"), path, QStringLiteral("20000") });
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitCode(), 3);
    QCOMPARE(QString::fromLocal8Bit(child.readAllStandardOutput()).trimmed(),
        QStringLiteral("The file \"%1\" cannot be written: there is no room for all of it")
            .arg(path));
    QVERIFY(LoadProject(path).project == Version(1));
    QCOMPARE(
        QDir(folder.path()).entryList(QDir::Files), QStringList(QStringLiteral("cut.rostrum")));
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--save"))
        return SaveForEver(arguments.value(2));
    if (arguments.value(1) == QLatin1String("--full"))
        return SaveOnFullDisk(arguments.value(2), arguments.value(3).toLongLong());
    TestProjectFileCrash tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_projectfile_crash.moc"
