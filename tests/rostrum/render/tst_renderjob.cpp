#include "render/RenderJob.h"
#include "RenderFixture.h"
#include "render/ConsoleProgress.h"

#include "testing/Platform.h"
#include "testing/TestMain.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

using namespace rostrum;
using namespace testing;

namespace {

QStringList Files(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

QByteArray Content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

RenderFixture *MakeScene()
{
    auto *scene = new RenderFixture;
    const LayerId layer
        = scene->AddLayer(scene->AddSeries(DataPath(QStringLiteral("step0001.png"))));
    scene->PutCorner(layer, 28, 21);
    scene->project.Edit(scene->composition)->name = "walk";
    return scene;
}

} // namespace

class TestRenderJob : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aRangeIsWrittenAsNumberedFiles();
    void withoutARangeAllFramesAreWritten();
    void whatIsWrittenIsWhatIsDrawn();
    void withoutBackgroundTheFilesKeepTheirHoles();
    void fileNamesAreClean_data();
    void fileNamesAreClean();
    void progressTellsFramesAndTimeLeft();
    void cancellingLeavesTheFramesDone();
    void anImpossibleRangeIsRefused_data();
    void anImpossibleRangeIsRefused();
    void aCompositionWithoutFramesIsRefused();
    void anUnknownCompositionIsRefused();
    void theFolderIsMadeIfNeedBe();
    void aFolderThatCannotBeMadeIsTold();
    void aFileThatCannotBeWrittenIsToldAndEndsTheJob();
    void unreadableImagesAreToldOnceAndTheFramesAreWritten();
    void anEarlierFileIsReplacedWhole();
    void aFullDiskIsToldAndLeavesWholeFilesOnly();
    void aKilledRunLeavesWholeFilesOnly();
    void aJobKeepsItsOwnCopyOfTheProject();

    void timesAreWrittenLikeAClock_data();
    void timesAreWrittenLikeAClock();
    void theProgressLineHasBarCountAndTime_data();
    void theProgressLineHasBarCountAndTime();
    void aLiveLineIsWrittenOverAndEndedOnce();
    void aLogGetsALineATenth();

private:
    QScopedPointer<QTemporaryDir> folder;
    QScopedPointer<RenderFixture> scene;
};

void TestRenderJob::init()
{
    folder.reset(new QTemporaryDir);
    scene.reset(MakeScene());
}

void TestRenderJob::aRangeIsWrittenAsNumberedFiles()
{
    RenderJob job(scene->project, scene->composition);
    job.SetRange(2, 4);
    job.SetFolder(folder->path());
    const RenderResult result = job.Run();
    QCOMPARE(result.error, QString());
    QVERIFY(result.Ok());
    QCOMPARE(result.written, 3);
    QCOMPARE(Files(folder->path()),
        QStringList({ QStringLiteral("walk_0002.png"), QStringLiteral("walk_0003.png"),
            QStringLiteral("walk_0004.png") }));
}

void TestRenderJob::withoutARangeAllFramesAreWritten()
{
    RenderJob job(scene->project, scene->composition);
    job.SetFolder(folder->path());
    QCOMPARE(job.Run().written, 40);
    const QStringList files = Files(folder->path());
    QCOMPARE(files.size(), 40);
    QCOMPARE(files.last(), QStringLiteral("walk_0039.png"));
}

void TestRenderJob::whatIsWrittenIsWhatIsDrawn()
{
    RenderJob job(scene->project, scene->composition);
    job.SetFolder(folder->path());
    job.SetRange(0, 6);
    QVERIFY(job.Run().Ok());
    for (int frame = 0; frame <= 6; ++frame) {
        const QImage file(QDir(folder->path()).filePath(job.FileName(frame)));
        QVERIFY(!file.hasAlphaChannel());
        const QString reference
            = QStringLiteral("ref-step-%1.png").arg(frame < 6 ? frame : 0); // 6 is past the last
        QCOMPARE(Differs(file, reference, /*mean=*/0, /*largest=*/0), QString());
    }
}

void TestRenderJob::withoutBackgroundTheFilesKeepTheirHoles()
{
    RenderJob job(scene->project, scene->composition);
    job.SetFolder(folder->path());
    job.SetRange(3, 3);
    job.SetBackground(false);
    QVERIFY(job.Run().Ok());
    const QImage file(folder->filePath(QStringLiteral("walk_0003.png")));
    QVERIFY(file.hasAlphaChannel());
    QCOMPARE(file.pixel(0, 0), 0U);
    QCOMPARE(file.pixel(28 + 10, 21 + 10), qRgb(0x20, 0x60, 0xe0));
}

void TestRenderJob::fileNamesAreClean_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("last");
    QTest::addColumn<QString>("expected"); // of frame 7
    const auto row
        = [](const char *what, const QByteArray &name, int last, const QString &expected) {
              QTest::newRow(what) << name << last << expected;
          };
    row("plain", "Cut 12", 9, QStringLiteral("Cut 12_0007.png"));
    row("separators", "a/b\\c:d", 9, QStringLiteral("a_b_c_d_0007.png"));
    row("wild cards and control characters", "a*?\"<>|\n", 9, QStringLiteral("a_______0007.png"));
    row("what looks like a place for a number", "a%2%1", 9, QStringLiteral("a%2%1_0007.png"));
    row("no name", "", 9, QStringLiteral("frame_0007.png"));
    row("blanks", "  ", 9, QStringLiteral("frame_0007.png"));
    row("the folder above", "..", 9, QStringLiteral("frame.._0007.png"));
    row("beyond ASCII", "été 動画", 9, QStringLiteral("été 動画_0007.png"));
    row("more digits", "a", 123456, QStringLiteral("a_000007.png"));
    row("the longest", QByteArray("\xe5\x8b\x95").repeated(90), 9,
        QString(60, QChar(0x52d5)) + QStringLiteral("_0007.png"));
    row("cut before half a character", QByteArray(59, 'a') + "\xf0\x9f\x8e\xa8", 9,
        QString(59, QLatin1Char('a')) + QStringLiteral("_0007.png"));
}

void TestRenderJob::fileNamesAreClean()
{
    QFETCH(QByteArray, name);
    QFETCH(int, last);
    scene->project.Edit(scene->composition)->name
        = name.trimmed().isEmpty() ? name : name.trimmed();
    RenderJob job(scene->project, scene->composition);
    job.SetRange(0, last);
    QTEST(job.FileName(7), "expected");
}

void TestRenderJob::progressTellsFramesAndTimeLeft()
{
    RenderJob job(scene->project, scene->composition);
    job.SetFolder(folder->path());
    job.SetRange(10, 13);
    double now = 1000;
    job.SetClock([&now] { return now; });
    QVector<int> done;
    QVector<double> left;
    const RenderResult result = job.Run([&](const RenderProgress &progress) {
        done << progress.done;
        left << progress.secondsLeft;
        now += progress.done + 2; // the frames take 2, 3, 4 and 5 seconds
        return progress.total == 4;
    });
    QVERIFY(result.Ok());
    QCOMPARE(done, QVector<int>({ 0, 1, 2, 3, 4 }));
    QCOMPARE(left, QVector<double>({ -1, 2.0 * 3, 5.0 / 2 * 2, 9.0 / 3, 0 }));
}

void TestRenderJob::cancellingLeavesTheFramesDone()
{
    RenderJob job(scene->project, scene->composition);
    job.SetFolder(folder->path());
    const RenderResult result
        = job.Run([](const RenderProgress &progress) { return progress.done < 3; });
    QVERIFY(result.isCancelled);
    QVERIFY(!result.Ok());
    QCOMPARE(result.error, QString());
    QCOMPARE(result.written, 3);
    QCOMPARE(Files(folder->path()).size(), 3);
}

void TestRenderJob::anImpossibleRangeIsRefused_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::newRow("before the start") << -1 << 3;
    QTest::newRow("past the end") << 0 << 40;
    QTest::newRow("backwards") << 5 << 4;
}

void TestRenderJob::anImpossibleRangeIsRefused()
{
    QFETCH(int, first);
    QFETCH(int, last);
    RenderJob job(scene->project, scene->composition);
    job.SetFolder(folder->path());
    job.SetRange(first, last);
    const RenderResult result = job.Run();
    QCOMPARE(result.error,
        QStringLiteral("The frames %1 to %2 are not in the composition \"walk\", which has 0 to 39")
            .arg(first)
            .arg(last));
    job.SetFirstNumber(1);
    QCOMPARE(job.Run().error,
        QStringLiteral("The frames %1 to %2 are not in the composition \"walk\", which has 1 to 40")
            .arg(first + 1)
            .arg(last + 1));
    QCOMPARE(Files(folder->path()), QStringList());
}

void TestRenderJob::aCompositionWithoutFramesIsRefused()
{
    scene->project.EditComposition(scene->composition)->duration = Time{ 0, 25 };
    RenderJob job(scene->project, scene->composition);
    job.SetFolder(folder->path());
    QCOMPARE(job.Run().error, QStringLiteral("The composition \"walk\" has no frames"));
}

void TestRenderJob::anUnknownCompositionIsRefused()
{
    RenderJob job(scene->project, /*composition=*/4711);
    job.SetFolder(folder->path());
    QCOMPARE(job.Run().error, QStringLiteral("There is no composition with the number 4711"));
}

void TestRenderJob::theFolderIsMadeIfNeedBe()
{
    const QString deep = folder->filePath(QStringLiteral("été/out"));
    RenderJob job(scene->project, scene->composition);
    job.SetFolder(deep);
    job.SetRange(0, 0);
    QVERIFY(job.Run().Ok());
    QCOMPARE(Files(deep), QStringList{ QStringLiteral("walk_0000.png") });
}

void TestRenderJob::aFolderThatCannotBeMadeIsTold()
{
    QFile file(folder->filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    RenderJob job(scene->project, scene->composition);
    const QString below = file.fileName() + QStringLiteral("/out");
    job.SetFolder(below);
    QCOMPARE(job.Run().error, QStringLiteral("The folder \"%1\" cannot be made").arg(below));
    job.SetFolder(QString());
    QCOMPARE(job.Run().error, QStringLiteral("No folder is given for the frames"));
}

void TestRenderJob::aFileThatCannotBeWrittenIsToldAndEndsTheJob()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("walk_0002.png"))); // a folder of that name
    RenderJob job(scene->project, scene->composition);
    job.SetFolder(folder->path());
    const RenderResult result = job.Run();
    QCOMPARE(result.written, 2);
    const QString start = QStringLiteral("The file \"%1\" cannot be written: ")
                              .arg(folder->filePath(QStringLiteral("walk_0002.png")));
    QVERIFY2(result.error.startsWith(start) && result.error.size() > start.size(),
        qPrintable(result.error));
    QCOMPARE(Files(folder->path()).size(), 2);
}

void TestRenderJob::unreadableImagesAreToldOnceAndTheFramesAreWritten()
{
    QTemporaryDir drawings;
    for (int number = 0; number < 6; ++number) {
        QVERIFY(QFile::copy(DataPath(QStringLiteral("cel.png")),
            drawings.filePath(QStringLiteral("c%1.png").arg(number))));
    }
    const LayerId layer
        = scene->AddLayer(scene->AddSeries(drawings.filePath(QStringLiteral("c0.png"))));
    scene->HoldImages(layer, { { 0, 0 }, { 3, 2 }, { 5, 1 }, { 6, 2 }, { 8, 4 } });
    QVERIFY(QFile::remove(drawings.filePath(QStringLiteral("c2.png"))));
    QVERIFY(QFile::remove(drawings.filePath(QStringLiteral("c4.png"))));
    RenderJob job(scene->project, scene->composition);
    job.SetFolder(folder->path());
    const RenderResult result = job.Run();
    QVERIFY(result.Ok());
    QCOMPARE(result.written, 40);
    const QString told
        = QStringLiteral("Frame %1: The image \"%2\" cannot be read: there is no such file");
    QCOMPARE(result.messages,
        QStringList({ told.arg(3).arg(drawings.filePath(QStringLiteral("c2.png"))),
            told.arg(8).arg(drawings.filePath(QStringLiteral("c4.png"))) }));
}

void TestRenderJob::anEarlierFileIsReplacedWhole()
{
    const QString path = folder->filePath(QStringLiteral("walk_0001.png"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(QByteArray(100000, 'x')), 100000);
    file.close();
    RenderJob job(scene->project, scene->composition);
    job.SetFolder(folder->path());
    job.SetRange(0, 1);
    // Up to the moment of the frame itself, the old file stands.
    const RenderResult result = job.Run([&](const RenderProgress &progress) {
        return progress.done == 2 || Content(path) == QByteArray(100000, 'x');
    });
    QVERIFY(result.Ok());
    QVERIFY(Content(path).size() < 5000);
    QCOMPARE(QImage(path).size(), QSize(96, 72));
}

void TestRenderJob::aFullDiskIsToldAndLeavesWholeFilesOnly()
{
    // A process of its own whose files may not grow beyond 60 bytes, as if the disk were full.
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
        { QStringLiteral("--render"), folder->path(), QStringLiteral("60") });
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 3);
    const QByteArray error = child.readAllStandardOutput().split('\n').value(1).trimmed();
    const QByteArray path = folder->filePath(QStringLiteral("walk_00000.png")).toUtf8();
    QCOMPARE(error, "The file \"" + path + "\" cannot be written: there is no room for all of it");
    QCOMPARE(Files(folder->path()), QStringList());
}

void TestRenderJob::aKilledRunLeavesWholeFilesOnly()
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
        { QStringLiteral("--render"), folder->path(), QStringLiteral("0") });
    QVERIFY(child.waitForStarted());
    for (int lines = 0; lines < 8; ++lines) { // a line a frame
        while (!child.canReadLine())
            QVERIFY(child.waitForReadyRead());
        child.readLine();
    }
    child.kill();
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);
    const QStringList files = QDir(folder->path()).entryList({ QStringLiteral("*.png") });
    QVERIFY(files.size() >= 7);
    for (const QString &file : files)
        QCOMPARE(QImage(folder->filePath(file)).size(), QSize(96, 72));
}

void TestRenderJob::aJobKeepsItsOwnCopyOfTheProject()
{
    RenderJob job(scene->project, scene->composition);
    job.SetFolder(folder->path());
    job.SetRange(0, 2);
    const RenderResult result = job.Run([&](const RenderProgress &) {
        scene->project.RemoveItem(scene->composition); // unchecked: gone after the first time
        return true;
    });
    QVERIFY(result.Ok());
    QCOMPARE(Differs(QImage(folder->filePath(QStringLiteral("walk_0002.png"))),
                 QStringLiteral("ref-step-2.png"), /*mean=*/0, /*largest=*/0),
        QString());
}

void TestRenderJob::timesAreWrittenLikeAClock_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("expected");
    QTest::newRow("unknown") << -1.0 << QStringLiteral("-");
    QTest::newRow("none") << 0.0 << QStringLiteral("0:00");
    QTest::newRow("rounded up") << 8.01 << QStringLiteral("0:09");
    QTest::newRow("minutes") << 754.0 << QStringLiteral("12:34");
    QTest::newRow("just below an hour") << 3599.0 << QStringLiteral("59:59");
    QTest::newRow("hours") << 3723.0 << QStringLiteral("1:02:03");
    QTest::newRow("beyond all") << 1e30 << QStringLiteral("99:59:59");
    QTest::newRow("no number") << qQNaN() << QStringLiteral("-");
}

void TestRenderJob::timesAreWrittenLikeAClock()
{
    QFETCH(double, seconds);
    QTEST(TimeText(seconds), "expected");
}

void TestRenderJob::theProgressLineHasBarCountAndTime_data()
{
    QTest::addColumn<int>("done");
    QTest::addColumn<int>("total");
    QTest::addColumn<double>("left");
    QTest::addColumn<QString>("expected");
    QTest::newRow("start") << 0 << 25 << -1.0 << QStringLiteral("[----------]   0/25  left -");
    QTest::newRow("way") << 12 << 25 << 9.0 << QStringLiteral("[####------]  12/25  left 0:09");
    QTest::newRow("nearly") << 24 << 25 << 1.0 << QStringLiteral("[#########-]  24/25  left 0:01");
    QTest::newRow("end") << 25 << 25 << 0.0 << QStringLiteral("[##########]  25/25  left 0:00");
    QTest::newRow("nothing to do") << 0 << 0 << -1.0 << QStringLiteral("[----------]  0/0  left -");
    QTest::newRow("many") << 2000000000 << 2147483647 << 61.0
                          << QStringLiteral("[#########-]  2000000000/2147483647  left 1:01");
}

void TestRenderJob::theProgressLineHasBarCountAndTime()
{
    QFETCH(int, done);
    QFETCH(int, total);
    QFETCH(double, left);
    QTEST(ProgressLine(RenderProgress{ done, total, left }, /*width=*/10), "expected");
}

namespace {

/// What is printed for the progress of 20 frames, and twice the end.
QByteArray Printed(bool isLive, int step)
{
    std::FILE *file = std::tmpfile();
    ConsoleProgress console(file, isLive);
    for (int done = 0; done <= 20; done += step)
        console.Show(RenderProgress{ done, 20, done ? 3600.0 * (20 - done) : -1.0 });
    console.Finish();
    console.Finish();
    std::rewind(file);
    QByteArray text(10000, '\0');
    text.truncate(
        static_cast<int>(std::fread(text.data(), 1, static_cast<std::size_t>(text.size()), file)));
    std::fclose(file);
    return text;
}

} // namespace

void TestRenderJob::aLiveLineIsWrittenOverAndEndedOnce()
{
    const QByteArray empty(15, '-'), half(15, '#');
    QCOMPARE(Printed(/*isLive=*/true, 10),
        "\r[" + empty + empty + "]   0/20  left -" + "\r[" + half + empty
            + "]  10/20  left 10:00:00" + "\r[" + half + half + "]  20/20  left 0:00    \n");
}

void TestRenderJob::aLogGetsALineATenth()
{
    const QByteArray text = Printed(/*isLive=*/false, 1);
    QCOMPARE(text.count('\n'), 11);
    QVERIFY(!text.contains('\r'));
    QVERIFY(text.contains("  2/20  left 18:00:00\n"));
    QVERIFY(!text.contains("  3/20"));
}

namespace {

/// The child of two tests: renders into a folder, a line for each frame; with a limit, no file may
/// become larger than so many bytes.
int RenderAsChild(const QString &folder, qint64 limit)
{
    if (limit > 0 && !LimitFileSize(limit))
        return 2;
    const QScopedPointer<RenderFixture> scene(MakeScene());
    scene->project.EditComposition(scene->composition)->duration = Time{ 20000, 25 };
    RenderJob job(scene->project, scene->composition);
    job.SetFolder(folder);
    const RenderResult result = job.Run([](const RenderProgress &progress) {
        std::printf("%d\n", progress.done);
        std::fflush(stdout);
        return true;
    });
    std::printf("%s\n", qPrintable(result.error));
    return result.Ok() ? 0 : 3;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--render"))
        return RenderAsChild(arguments.value(2), arguments.value(3).toLongLong());
    TestRenderJob tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_renderjob.moc"
