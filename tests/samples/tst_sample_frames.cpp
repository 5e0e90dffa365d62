// The frames that the program renders of the scene that comes with it, pixel by pixel the same on
// every system. What they are is kept as one line a frame: its file and the SHA-256 of its pixels.
//
//     tst_sample_frames --keep    takes what is rendered now for right; to be looked at first

#include "run/RostrumRun.h"

#include "testing/TestMain.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace {

const QString kKnownFrames = QStringLiteral(VN_TEST_DATA "/puddles-frames.txt");
constexpr int kFrames = 96;

/// Of the pixels alone, three bytes each: a file may be packed in many ways.
QByteArray Digest(const QString &path)
{
    const QImage frame = QImage(path).convertToFormat(QImage::Format_RGB888);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(QByteArray::number(frame.width()) + 'x' + QByteArray::number(frame.height()));
    for (int row = 0; row < frame.height(); ++row)
        hash.addData(reinterpret_cast<const char *>(frame.constScanLine(row)), 3 * frame.width());
    return hash.result().toHex();
}

/// Renders every frame of the scene. @return a line for each, empty when the program failed
QByteArrayList RenderedFrames(const QString &folder)
{
    const testing::RostrumRun run = testing::RunRostrum(
        { QStringLiteral("render"), QStringLiteral(SAMPLES "/puddles/puddles.rostrum"),
            QStringLiteral("--out"), folder },
        folder);
    QByteArrayList lines;
    if (run.status != 0)
        return lines;
    for (const QString &file : QDir(folder).entryList(QDir::Files, QDir::Name))
        lines << file.toUtf8() + ' ' + Digest(folder + QLatin1Char('/') + file);
    return lines;
}

int KeepFrames()
{
    const QTemporaryDir folder;
    const QByteArrayList lines = RenderedFrames(folder.path());
    QFile file(kKnownFrames);
    const QByteArray text = lines.join('\n') + '\n';
    const bool isKept = lines.size() == kFrames && file.open(QIODevice::WriteOnly)
        && file.write(text) == text.size();
    return isKept ? 0 : 1;
}

} // namespace

class TestSampleFrames : public QObject
{
    Q_OBJECT

private slots:
    void everyFrameHasTheSamePixelsAsEverywhere();
};

void TestSampleFrames::everyFrameHasTheSamePixelsAsEverywhere()
{
    QFile file(kKnownFrames);
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
    const QByteArrayList known = file.readAll().trimmed().split('\n');
    QCOMPARE(known.size(), kFrames);
    const QTemporaryDir folder;
    const QByteArrayList rendered = RenderedFrames(folder.path());
    QCOMPARE(rendered.size(), kFrames);
    for (int frame = 0; frame < kFrames; ++frame)
        QCOMPARE(rendered[frame], known[frame]);
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], "--keep") == 0)
        return KeepFrames();
    TestSampleFrames tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_sample_frames.moc"
