#include "window/MovieJob.h"
#include "DrawnScene.h"
#include "testhost/HostTestMain.h"
#include "testing/Platform.h"

#include <QDir>
#include <QProcess>

using rostrum::MovieJob;
using rostrum::RenderProgress;
using rostrum::RenderResult;
using testing::DrawnScene;

namespace {

constexpr int kColorSlack = 8; // of 255; what a movie's colours may be off

/// What ffprobe says of the movie's picture: "width,height,rate,frames".
QString Facts(const QString &movie)
{
    QProcess probe;
    probe.start(QStringLiteral("ffprobe"),
        { QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-count_frames"),
            QStringLiteral("-select_streams"), QStringLiteral("v:0"),
            QStringLiteral("-show_entries"),
            QStringLiteral("stream=width,height,r_frame_rate,nb_read_frames"),
            QStringLiteral("-of"), QStringLiteral("csv=p=0"), movie });
    probe.waitForFinished();
    return QString::fromUtf8(probe.readAllStandardOutput() + probe.readAllStandardError())
        .trimmed();
}

/// The movie's frames as pictures.
QVector<QImage> Frames(const QString &movie)
{
    const QTemporaryDir folder;
    QProcess::execute(QStringLiteral("ffmpeg"),
        { QStringLiteral("-loglevel"), QStringLiteral("error"), QStringLiteral("-i"), movie,
            folder.filePath(QStringLiteral("%03d.png")) });
    QVector<QImage> frames;
    for (const QString &name : QDir(folder.path()).entryList(QDir::Files, QDir::Name))
        frames << QImage(folder.filePath(name));
    return frames;
}

/// Stands in for an encoder. @param does a shell script
QString FakeEncoder(const QTemporaryDir &folder, const QByteArray &does)
{
    QFile script(folder.filePath(QStringLiteral("ffmpeg")));
    if (!script.open(QIODevice::WriteOnly) || script.write("#!/bin/sh\n" + does + "\n") < 0
        || !script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner))
        qFatal("no script can be written");
    return script.fileName();
}

QByteArray Content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

bool IsNear(const QColor &a, const QColor &b)
{
    return qAbs(a.red() - b.red()) <= kColorSlack && qAbs(a.green() - b.green()) <= kColorSlack
        && qAbs(a.blue() - b.blue()) <= kColorSlack;
}

} // namespace

/// Movies, made by the real encoder; stand-ins for it fail where that is wanted.
class TestMovieJob : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { scene.reset(); }
    void aMovieHasTheFramesTheRateAndTheSize_data();
    void aMovieHasTheFramesTheRateAndTheSize();
    void theFramesOfTheRangeAreInItInOrder();
    void namesOfAnyKindAreTaken_data();
    void namesOfAnyKindAreTaken();
    void framesBeyondFourDigitsAreFound();
    void cancellingLeavesNothingNew_data();
    void cancellingLeavesNothingNew();
    void aMissingEncoderIsTold();
    void anEncoderThatFailsIsToldInItsWords_data();
    void anEncoderThatFailsIsToldInItsWords();
    void aFormatThatNobodyKnowsIsToldInTheEncodersWords();
    void aNameWithoutAnEndingIsRefused();
    void aFolderThatCannotBeWrittenIsTold_data();
    void aFolderThatCannotBeWrittenIsTold();
    void progressCountsEachFrameTwice();

private:
    QString Path(const QString &name) const { return out->filePath(name); }
    QStringList Left() const
    {
        return QDir(out->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    MovieJob Job(const QString &path, const QString &encoder = rostrum::FindEncoder())
    {
        return { scene->host.GetProject(), scene->composition, encoder, path };
    }
    rostrum::Composition *Composition()
    {
        return scene->host.Edit("test").EditComposition(scene->composition);
    }

    QScopedPointer<DrawnScene> scene;
    QScopedPointer<QTemporaryDir> out;
};

void TestMovieJob::init()
{
    QVERIFY2(!rostrum::FindEncoder().isEmpty(), "tools/setup installs ffmpeg");
    scene.reset(new DrawnScene(6));
    out.reset(new QTemporaryDir);
}

void TestMovieJob::aMovieHasTheFramesTheRateAndTheSize_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("num");
    QTest::addColumn<int>("den");
    QTest::addColumn<QString>("facts");
    const QString mp4 = QStringLiteral("a.mp4");
    QTest::newRow("25 a second") << mp4 << QSize(64, 48) << 25 << 1
                                 << QStringLiteral("64,48,25/1,6");
    QTest::newRow("24 a second") << mp4 << QSize(64, 48) << 24 << 1
                                 << QStringLiteral("64,48,24/1,6");
    QTest::newRow("23.976 a second")
        << mp4 << QSize(64, 48) << 24000 << 1001 << QStringLiteral("64,48,24000/1001,6");
    QTest::newRow("odd sides are made even")
        << mp4 << QSize(63, 47) << 25 << 1 << QStringLiteral("64,48,25/1,6");
    QTest::newRow("mov") << QStringLiteral("a.mov") << QSize(64, 48) << 25 << 1
                         << QStringLiteral("64,48,25/1,6");
    QTest::newRow("webm") << QStringLiteral("a.webm") << QSize(64, 48) << 25 << 1
                          << QStringLiteral("64,48,25/1,6");
    QTest::newRow("mkv") << QStringLiteral("a.mkv") << QSize(64, 48) << 25 << 1
                         << QStringLiteral("64,48,25/1,6");
}

void TestMovieJob::aMovieHasTheFramesTheRateAndTheSize()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QFETCH(int, num);
    QFETCH(int, den);
    const rostrum::Rate rate{ num, den };
    Composition()->size = size;
    Composition()->rate = rate;
    Composition()->duration = rate.FrameTime(6);

    const RenderResult result = Job(Path(name)).Run();

    QCOMPARE(result.error, QString());
    QVERIFY(result.Ok());
    QCOMPARE(result.written, 6);
    QCOMPARE(Left(), QStringList{ name });
    QTEST(Facts(Path(name)), "facts");
}

void TestMovieJob::theFramesOfTheRangeAreInItInOrder()
{
    MovieJob job = Job(Path(QStringLiteral("a.mp4")));
    job.SetRange(2, 4);

    QCOMPARE(job.Run().written, 3);

    const QVector<QImage> frames = Frames(Path(QStringLiteral("a.mp4")));
    QCOMPARE(frames.size(), 3);
    for (int i = 0; i < 3; ++i) {
        const QColor seen = frames[i].pixelColor(32, 24);
        QVERIFY2(IsNear(seen, DrawnScene::ColorOf(2 + i)), qPrintable(seen.name()));
    }
}

void TestMovieJob::namesOfAnyKindAreTaken_data()
{
    QTest::addColumn<QString>("composition");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("file");
    const QString plain = QStringLiteral("scene");
    QTest::newRow("a place for a number in the composition's")
        << QStringLiteral("100%d_%2") << plain << QStringLiteral("a.mp4");
    QTest::newRow("a place for a number in the folder's")
        << plain << QStringLiteral("50%d %03d") << QStringLiteral("a.mp4");
    QTest::newRow("beyond ASCII") << QStringLiteral("été 動画") << QStringLiteral("plan é")
                                  << QStringLiteral("fin très belle.mp4");
    QTest::newRow("what looks like an option")
        << QStringLiteral("-y") << plain << QStringLiteral("-i.mp4");
    QTest::newRow("points") << QStringLiteral("a.b.c") << plain << QStringLiteral("v1.2.final.mp4");
}

void TestMovieJob::namesOfAnyKindAreTaken()
{
    QFETCH(QString, composition);
    QFETCH(QString, folder);
    QFETCH(QString, file);
    scene->host.Edit("test").Edit(scene->composition)->name = composition.toUtf8();
    QVERIFY(QDir(out->path()).mkdir(folder));
    const QString path = Path(folder + QLatin1Char('/') + file);

    const RenderResult result = Job(path).Run();

    QCOMPARE(result.error, QString());
    QCOMPARE(Facts(path), QStringLiteral("64,48,25/1,6"));
}

void TestMovieJob::framesBeyondFourDigitsAreFound()
{
    Composition()->duration = rostrum::Rate().FrameTime(10010);
    MovieJob job = Job(Path(QStringLiteral("a.mp4")));
    job.SetRange(9998, 10001);

    const RenderResult result = job.Run();

    QCOMPARE(result.error, QString());
    QCOMPARE(Facts(Path(QStringLiteral("a.mp4"))), QStringLiteral("64,48,25/1,4"));
}

void TestMovieJob::cancellingLeavesNothingNew_data()
{
    QTest::addColumn<int>("atStep");
    QTest::newRow("at once") << 0;
    QTest::newRow("while frames are drawn") << 3;
    QTest::newRow("while they are encoded") << 7;
}

void TestMovieJob::cancellingLeavesNothingNew()
{
    QFETCH(int, atStep);
    const QTemporaryDir tools;
    // It never ends by itself.
    MovieJob job = Job(Path(QStringLiteral("a.mp4")), FakeEncoder(tools, "exec sleep 600"));
    QFile old(Path(QStringLiteral("a.mp4")));
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("of yesterday") > 0);
    old.close();
    int step = 0;

    const RenderResult result = job.Run([&](const RenderProgress &) { return step++ < atStep; });

    QVERIFY(result.isCancelled);
    QVERIFY(!result.Ok());
    QCOMPARE(result.error, QString());
    QCOMPARE(result.written, atStep < 7 ? atStep : 0);
    QCOMPARE(Left(), QStringList{ QStringLiteral("a.mp4") });
    QCOMPARE(Content(old.fileName()), QByteArray("of yesterday"));
}

void TestMovieJob::aMissingEncoderIsTold()
{
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "");
    const QString encoder = rostrum::FindEncoder();
    qputenv("PATH", path);
    QCOMPARE(encoder, QString());

    const RenderResult result = Job(Path(QStringLiteral("a.mp4")), encoder).Run();

    QVERIFY2(result.error.contains(QStringLiteral("ffmpeg, which does it, is not installed")),
        qPrintable(result.error));
    QCOMPARE(Left(), QStringList());
}

void TestMovieJob::anEncoderThatFailsIsToldInItsWords_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("told");
    QTest::newRow("with words") << QByteArray("echo 'the tape is torn' >&2; exit 1")
                                << QStringLiteral("the tape is torn");
    QTest::newRow("with many words")
        << QByteArray("i=0; while [ $i -lt 20000 ]; do echo line $i of many >&2; i=$((i + 1)); done"
                      "; echo the last >&2; exit 1")
        << QStringLiteral("the last");
    QTest::newRow("without a word") << QByteArray("exit 1") << QStringLiteral("the encoder failed");
    QTest::newRow("killed") << QByteArray("kill -9 $$") << QStringLiteral("the encoder failed");
    QTest::newRow("says it went well and made nothing")
        << QByteArray("exit 0") << QStringLiteral("it cannot be put in its place");
}

void TestMovieJob::anEncoderThatFailsIsToldInItsWords()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, told);
    const QTemporaryDir tools;

    const RenderResult result
        = Job(Path(QStringLiteral("a.mp4")), FakeEncoder(tools, script)).Run();

    QVERIFY(!result.Ok() && !result.isCancelled);
    QVERIFY2(result.error.contains(told), qPrintable(result.error));
    QVERIFY2(result.error.size() < 1000, "a box can show it");
    QCOMPARE(result.written, 0);
    QCOMPARE(Left(), QStringList());
}

void TestMovieJob::aFormatThatNobodyKnowsIsToldInTheEncodersWords()
{
    const RenderResult result = Job(Path(QStringLiteral("a.nonsense"))).Run();

    QVERIFY2(result.error.contains(QStringLiteral("output format"), Qt::CaseInsensitive),
        qPrintable(result.error));
    QVERIFY2(!result.error.contains(QStringLiteral(".rostrum-movie")), qPrintable(result.error));
    QCOMPARE(Left(), QStringList());
}

void TestMovieJob::aNameWithoutAnEndingIsRefused()
{
    const RenderResult result = Job(Path(QStringLiteral("movie"))).Run();

    QVERIFY2(result.error.contains(QStringLiteral(".mp4")), qPrintable(result.error));
    QCOMPARE(Left(), QStringList());
}

void TestMovieJob::aFolderThatCannotBeWrittenIsTold_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("not there") << QStringLiteral("no such folder");
    QTest::newRow("protected") << QStringLiteral("protected");
}

void TestMovieJob::aFolderThatCannotBeWrittenIsTold()
{
    QFETCH(QString, folder);
    QVERIFY(QDir(out->path()).mkdir(QStringLiteral("protected")));
    QVERIFY(QFile::setPermissions(out->path(), QFile::Permissions(0x7755))); // by anybody
    const QString path = Path(folder + QStringLiteral("/a.mp4"));
    RenderResult result;
    {
        const testing::WriteProtection protection(Path(QStringLiteral("protected")));
        result = Job(path).Run();
    }

    QVERIFY2(result.error.contains(QStringLiteral("\"%1\" cannot be made: ").arg(path)),
        qPrintable(result.error));
    QCOMPARE(Left(), QStringList{ QStringLiteral("protected") });
}

void TestMovieJob::progressCountsEachFrameTwice()
{
    QVector<int> done;
    int total = 0;

    const RenderResult result
        = Job(Path(QStringLiteral("a.mp4"))).Run([&](const RenderProgress &p) {
              done << p.done;
              total = p.total;
              return true;
          });

    QVERIFY(result.Ok());
    QCOMPARE(total, 12);
    QCOMPARE(done.mid(0, 7), QVector<int>({ 0, 1, 2, 3, 4, 5, 6 }));
    QVERIFY(std::is_sorted(done.begin(), done.end()));
    QVERIFY(done.last() <= 12);
}

VN_HOST_TEST_MAIN(TestMovieJob)
#include "tst_moviejob.moc"
