// The blank image of a series, on real files, in a folder that lasts for one test function.
#include "Drawings.h"
#include "testing/Platform.h"
#include "testing/TestMain.h"
#include "vnAE/CellFiles.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <memory>

namespace {

/// The one value that all pixels have, as an index or a colour with alpha. 0xBAD when they differ.
QRgb OneValue(const QImage &image)
{
    const bool indexed = image.colorCount() > 0;
    const auto at
        = [&](int x, int y) { return indexed ? QRgb(image.pixelIndex(x, y)) : image.pixel(x, y); };
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (at(x, y) != at(0, 0))
                return 0xBAD;
        }
    }
    return at(0, 0);
}

QImage Drawing(QImage::Format format, const QVector<QRgb> &colors = {})
{
    QImage image(13, 7, format); // unequal and odd, so that a swap or a cut shows
    image.setColorTable(colors);
    image.fill(colors.isEmpty() ? 0x40C08060U : 1U);
    return image;
}

} // namespace

class TestCellFilesZero : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { folder.reset(); }

    void theBlankImageIsNamedAfterTheFirstDrawing_data();
    void theBlankImageIsNamedAfterTheFirstDrawing();
    void aSeriesOfTwentyFourDrawingsGetsItsBlankImage();
    void aSeriesWithItsBlankImageIsLeftAlone();
    void theSecondCallFindsWhatTheFirstOneWrote_data();
    void theSecondCallFindsWhatTheFirstOneWrote();
    void theBlankImageKeepsSizeAndFormat_data();
    void theBlankImageKeepsSizeAndFormat();
    void fileKindsThatQtOnlyReadsKeepSizeAndFormatToo_data();
    void fileKindsThatQtOnlyReadsKeepSizeAndFormatToo();
    void aSeriesOfPsdDrawingsGetsNone();
    void withoutASeriesNothingIsWritten();
    void a9999AloneNamesTheFolderWhichDoesNotLoad();
    void aFirstDrawingThatDoesNotLoadStopsIt_data();
    void aFirstDrawingThatDoesNotLoadStopsIt();
    void aFolderInThePlaceOfTheBlankImageStopsIt();
    void aFolderWithoutWritePermissionStopsIt();
    void aDiskThatFillsUpLeavesNoHalfFile_data();
    void aDiskThatFillsUpLeavesNoHalfFile();
    void theLongestNamesAreHandled();

private:
    QString PathOf(const QString &name) const { return folder->filePath(name); }
    void Make(const QString &name, const QByteArray &bytes) const;
    void MakeDrawing(const QString &name) const;
    QStringList Files() const;
    QImage Load(const QString &name) const { return QImage(PathOf(name)); }
    /// @return the code and the out name, as "0 walk12.png"
    QByteArray Write(const QByteArray &root, const QByteArray &extension) const;

    std::unique_ptr<QTemporaryDir> folder;
};

void TestCellFilesZero::init()
{
    folder = std::make_unique<QTemporaryDir>();
    QVERIFY(folder->isValid());
}

void TestCellFilesZero::Make(const QString &name, const QByteArray &bytes) const
{
    QFile file(PathOf(name));
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(name));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

void TestCellFilesZero::MakeDrawing(const QString &name) const
{
    QVERIFY(Drawing(QImage::Format_ARGB32).save(PathOf(name)));
}

QStringList TestCellFilesZero::Files() const
{
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    return QDir(folder->path()).entryList(all, QDir::Name);
}

QByteArray TestCellFilesZero::Write(const QByteArray &root, const QByteArray &extension) const
{
    CellName fileName = "before";
    const int code = WriteZeroCell(
        folder->path().toUtf8().constData(), root.constData(), extension.constData(), fileName);
    return QByteArray::number(code) + ' ' + QByteArray(fileName);
}

void TestCellFilesZero::theBlankImageIsNamedAfterTheFirstDrawing_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QByteArray>("root");
    QTest::addColumn<QString>("zero");
    const auto row = [](const char *name, const char *first, const char *root, const char *zero) {
        QTest::newRow(name) << QString::fromUtf8(first) << QByteArray(root)
                            << QString::fromUtf8(zero);
    };
    row("one digit", "walk1.png", "walk", "walk0.png");
    row("two digits", "walk07.png", "walk", "walk00.png");
    row("three digits", "walk007.png", "walk", "walk000.png");
    row("four digits", "walk0012.png", "walk", "walk0000.png");
    row("five digits", "walk00001.png", "walk", "walk0.png");
    row("seven digits", "walk0000001.png", "walk", "walk0.png");
    row("upper case on disk", "WALK0001.PNG", "WALK", "walk0000.png");
    row("mixed case", "Walk_b01.Tga", "walk_b", "walk_b00.tga");
    row("an empty root", "0003.png", "", "0000.png");
    row("a root that ends in a point", "walk.0003.png", "walk.", "walk.0000.png");
    row("a root that ends in a dash", "walk-03.tga", "walk-", "walk-00.tga");
    row("beyond ASCII", "Été_歩03.png", "Été_歩", "Été_歩00.png");
    row("beyond ASCII, decomposed", "E\xCC\x81t03.png", "E\xCC\x81t", "e\xCC\x81t00.png");
}

void TestCellFilesZero::theBlankImageIsNamedAfterTheFirstDrawing()
{
    QFETCH(QString, first);
    QFETCH(QByteArray, root);
    QFETCH(QString, zero);
    MakeDrawing(first);
    CellName lower = "";
    qint32 number = 0;
    QVERIFY(ParseCellFileName(first.toUtf8().constData(), lower, number));

    const QByteArray extension = first.toUtf8().right(3);
    const QByteArray answer = Write(root, extension);
    QVERIFY2(answer.startsWith("0 " + QByteArray(lower)), answer.constData());
    QVERIFY2(!answer.endsWith(zero.toUtf8()), answer.constData()); // never the file just written

    QStringList expected{ first, zero };
    expected.sort();
    QStringList files = Files();
    files.sort();
    QCOMPARE(files, expected);
    QCOMPARE(Load(zero).size(), QSize(13, 7));
    QCOMPARE(OneValue(Load(zero)), QRgb(0));
    QCOMPARE(OneValue(Load(first)), QRgb(0x40C08060)); // the drawing is as it was
}

void TestCellFilesZero::aSeriesOfTwentyFourDrawingsGetsItsBlankImage()
{
    for (int number = 1; number <= 24; ++number)
        MakeDrawing(QStringLiteral("walk%1.png").arg(number, 4, 10, QLatin1Char('0')));
    QCOMPARE(Write("walk", "png"), QByteArray("0 walk0001.png"));
    QCOMPARE(Files().size(), 25);
    QCOMPARE(Load(QStringLiteral("walk0000.png")).size(), QSize(13, 7));
    QCOMPARE(OneValue(Load(QStringLiteral("walk0000.png"))), QRgb(0));
}

void TestCellFilesZero::aSeriesWithItsBlankImageIsLeftAlone()
{
    MakeDrawing(QStringLiteral("walk0001.png"));
    Make(QStringLiteral("WALK00.PNG"), "no image at all");
    QCOMPARE(Write("walk", "png"), QByteArray("0 walk00.png"));
    QCOMPARE(
        Files(), QStringList({ QStringLiteral("WALK00.PNG"), QStringLiteral("walk0001.png") }));
}

void TestCellFilesZero::theSecondCallFindsWhatTheFirstOneWrote_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QByteArray>("zero");
    QTest::newRow("four digits") << QStringLiteral("walk0001.png") << QByteArray("walk0000.png");
    QTest::newRow("five digits") << QStringLiteral("walk00001.png") << QByteArray("walk0.png");
    QTest::newRow("upper case") << QStringLiteral("WALK01.TGA") << QByteArray("walk00.tga");
}

void TestCellFilesZero::theSecondCallFindsWhatTheFirstOneWrote()
{
    QFETCH(QString, first);
    QFETCH(QByteArray, zero);
    const QByteArray extension = first.toUtf8().right(3);
    MakeDrawing(first);
    QCOMPARE(Write("walk", extension), "0 " + first.toLower().toUtf8());
    QCOMPARE(Write("walk", extension), "0 " + zero);
    QCOMPARE(Files().size(), 2);
}

void TestCellFilesZero::theBlankImageKeepsSizeAndFormat_data()
{
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QImage>("drawing");
    QTest::addColumn<int>("format"); // as the file reads back, before and after
    QTest::addColumn<QRgb>("value");
    QTest::addColumn<QRgb>("color");
    const QString png = QStringLiteral("png"), tga = QStringLiteral("tga");
    constexpr QRgb clear = 0, black = 0xFF000000, white = 0xFFFFFFFF, red = 0xFFFF0000;
    const QVector<QRgb> opaque{ red, black, white };
    const QVector<QRgb> clearFirst{ clear, black, red };
    const QVector<QRgb> clearLast{ white, red, 0x80FF00FF, clear };

    QTest::newRow("png with alpha")
        << png << Drawing(QImage::Format_ARGB32) << int(QImage::Format_ARGB32) << clear << clear;
    QTest::newRow("png without") << png << Drawing(QImage::Format_RGB32)
                                 << int(QImage::Format_RGB32) << black << black;
    QTest::newRow("png of 16 bits with alpha")
        << png << Drawing(QImage::Format_RGBA64) << int(QImage::Format_RGBA64) << clear << clear;
    QTest::newRow("png of 16 bits without")
        << png << Drawing(QImage::Format_RGBX64) << int(QImage::Format_RGBX64) << black << black;
    QTest::newRow("png, grey") << png << Drawing(QImage::Format_Grayscale8)
                               << int(QImage::Format_Grayscale8) << black << black;
    QTest::newRow("png, grey of 16 bits") << png << Drawing(QImage::Format_Grayscale16)
                                          << int(QImage::Format_Grayscale16) << black << black;
    QTest::newRow("png, palette: its first colour")
        << png << Drawing(QImage::Format_Indexed8, opaque) << int(QImage::Format_Indexed8)
        << QRgb(0) << red;
    QTest::newRow("png, palette, the first clear")
        << png << Drawing(QImage::Format_Indexed8, clearFirst) << int(QImage::Format_Indexed8)
        << QRgb(0) << clear;
    QTest::newRow("png, palette, the last clear")
        << png << Drawing(QImage::Format_Indexed8, clearLast) << int(QImage::Format_Indexed8)
        << QRgb(0) << clear;
    QTest::newRow("png of 1 bit, palette: its first colour")
        << png << Drawing(QImage::Format_Mono, { red, black }) << int(QImage::Format_Mono)
        << QRgb(0) << red;
    QTest::newRow("png of 1 bit, the second clear")
        << png << Drawing(QImage::Format_Mono, { red, clear }) << int(QImage::Format_Mono)
        << QRgb(0) << clear;
    QTest::newRow("tga with alpha")
        << tga << Drawing(QImage::Format_ARGB32) << int(QImage::Format_ARGB32) << clear << clear;
    QTest::newRow("tga without") << tga << Drawing(QImage::Format_RGB32)
                                 << int(QImage::Format_RGB32) << black << black;
}

void TestCellFilesZero::theBlankImageKeepsSizeAndFormat()
{
    QFETCH(QString, extension);
    QFETCH(QImage, drawing);
    const QString first = QStringLiteral("walk01.") + extension;
    const QString zero = QStringLiteral("walk00.") + extension;
    QVERIFY(drawing.save(PathOf(first)));
    QTEST(int(Load(first).format()), "format");

    QCOMPARE(Write("walk", extension.toLatin1()), "0 " + first.toLatin1());

    const QImage blank = Load(zero);
    QTEST(int(blank.format()), "format");
    QCOMPARE(blank.size(), drawing.size());
    QTEST(OneValue(blank), "value");
    QTEST(blank.pixel(0, 0), "color");
}

void TestCellFilesZero::fileKindsThatQtOnlyReadsKeepSizeAndFormatToo_data()
{
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QRgb>("color");
    const QString png = QStringLiteral("png"), tga = QStringLiteral("tga");
    constexpr QRgb clear = 0, black = 0xFF000000, white = 0xFFFFFFFF;
    constexpr int w = 13, h = 7;
    const QByteArray none, twoColors = QByteArray::fromHex("FF0000 00FF00");
    const QByteArray fourColors = QByteArray::fromHex("FF0000 00FF00 0000FF FFFFFF");

    QTest::newRow("png, grey and alpha")
        << png << drawings::Png(w, h, 8, 4, none, none, "\x80\x40", 2 * w) << clear;
    QTest::newRow("png, grey and alpha of 16 bits")
        << png << drawings::Png(w, h, 16, 4, none, none, "\x80\x81\x40\x41", 4 * w) << clear;
    QTest::newRow("png, one colour declared clear")
        << png
        << drawings::Png(
               w, h, 8, 2, none, QByteArray::fromHex("001000200030"), "\x80\x40\x20", 3 * w)
        << clear;
    QTest::newRow("png, palette of 2 bits, the second clear")
        << png
        << drawings::Png(
               w, h, 2, 3, fourColors, QByteArray::fromHex("FF00"), QByteArray(1, '\x1B'), 4)
        << clear;
    QTest::newRow("png, palette of 4 bits, opaque: its first colour")
        << png << drawings::Png(w, h, 4, 3, fourColors, none, QByteArray(1, '\x12'), 7)
        << QRgb(0xFFFF0000);
    QTest::newRow("png, palette of 1 bit, the second clear")
        << png
        << drawings::Png(
               w, h, 1, 3, twoColors, QByteArray::fromHex("FF00"), QByteArray(1, '\x55'), 2)
        << clear;
    QTest::newRow("png, black and white of 1 bit: value 0 is paper")
        << png << drawings::Png(w, h, 1, 0, none, none, QByteArray(1, '\x55'), 2) << white;
    QTest::newRow("png, grey of 4 bits")
        << png << drawings::Png(w, h, 4, 0, none, none, QByteArray(1, '\x55'), 7) << black;
    QTest::newRow("tga, alpha, from the bottom up")
        << tga << drawings::Tga(w, h, 2, "\x10\x20\x30\x40", 8) << clear;
    QTest::newRow("tga, alpha, run by run")
        << tga << drawings::Tga(w, h, 10, "\x10\x20\x30\x40", 8) << clear;
    QTest::newRow("tga, opaque, run by run")
        << tga << drawings::Tga(w, h, 10, "\x10\x20\x30", 0) << black;
    QTest::newRow("tga, grey") << tga << drawings::Tga(w, h, 3, "\x80", 0) << black;
}

void TestCellFilesZero::fileKindsThatQtOnlyReadsKeepSizeAndFormatToo()
{
    QFETCH(QString, extension);
    QFETCH(QByteArray, bytes);
    const QString first = QStringLiteral("walk01.") + extension;
    Make(first, bytes);
    const QImage drawing = Load(first);
    QCOMPARE(drawing.size(), QSize(13, 7));

    QCOMPARE(Write("walk", extension.toLatin1()), "0 " + first.toLatin1());

    const QImage blank = Load(QStringLiteral("walk00.") + extension);
    QCOMPARE(blank.size(), drawing.size());
    QCOMPARE(int(blank.format()), int(drawing.format()));
    QTEST(blank.pixel(0, 0), "color");
    QVERIFY(OneValue(blank) != 0xBAD);
}

void TestCellFilesZero::aSeriesOfPsdDrawingsGetsNone()
{
    Make(QStringLiteral("walk0001.psd"), drawings::Psd(13, 7));
    QCOMPARE(Load(QStringLiteral("walk0001.psd")).size(), QSize(13, 7)); // it is read,
    QCOMPARE(Write("walk", "psd"), QByteArray("21 walk0001.psd")); // not written
    QCOMPARE(Files(), QStringList(QStringLiteral("walk0001.psd")));
}

void TestCellFilesZero::withoutASeriesNothingIsWritten()
{
    MakeDrawing(QStringLiteral("run0001.png"));
    QCOMPARE(Write("walk", "png"), QByteArray("1 "));
    QCOMPARE(Write("run", "tga"), QByteArray("1 "));
    QCOMPARE(Files(), QStringList(QStringLiteral("run0001.png")));

    CellName fileName = "before";
    QCOMPARE(int(WriteZeroCell("/no/such/folder", "walk", "png", fileName)), 1);
    QCOMPARE(fileName, "");
}

void TestCellFilesZero::a9999AloneNamesTheFolderWhichDoesNotLoad()
{
    MakeDrawing(QStringLiteral("walk9999.png"));
    QCOMPARE(Write("walk", "png"), QByteArray("11 "));
    QCOMPARE(Files(), QStringList(QStringLiteral("walk9999.png")));
}

void TestCellFilesZero::aFirstDrawingThatDoesNotLoadStopsIt_data()
{
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray png = drawings::Png(13, 7, 8, 2, {}, {}, "\x80\x40\x20", 39);
    QTest::newRow("png of no bytes") << QStringLiteral("png") << QByteArray();
    QTest::newRow("png of some text") << QStringLiteral("png") << QByteArray("not an image");
    QTest::newRow("png of a signature alone") << QStringLiteral("png") << png.left(8);
    QTest::newRow("tga of no bytes") << QStringLiteral("tga") << QByteArray();
    QTest::newRow("tga of half a header") << QStringLiteral("tga") << QByteArray(9, '\0');
    QTest::newRow("psd of some text") << QStringLiteral("psd") << QByteArray("not an image");
}

void TestCellFilesZero::aFirstDrawingThatDoesNotLoadStopsIt()
{
    QFETCH(QString, extension);
    QFETCH(QByteArray, bytes);
    const QString first = QStringLiteral("walk01.") + extension;
    Make(first, bytes);
    Make(QStringLiteral("walk02.") + extension, drawings::Png(3, 3, 8, 0, {}, {}, "\x80", 3));
    QCOMPARE(Write("walk", extension.toLatin1()), "11 " + first.toLatin1());
    QCOMPARE(Files(), QStringList({ first, QStringLiteral("walk02.") + extension }));
}

void TestCellFilesZero::aFolderInThePlaceOfTheBlankImageStopsIt()
{
    MakeDrawing(QStringLiteral("walk0001.png"));
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("walk0000.png")));
    QCOMPARE(Write("walk", "png"), QByteArray("21 walk0001.png"));
    QCOMPARE(
        Files(), QStringList({ QStringLiteral("walk0000.png"), QStringLiteral("walk0001.png") }));
}

void TestCellFilesZero::aFolderWithoutWritePermissionStopsIt()
{
    MakeDrawing(QStringLiteral("walk0001.png"));
    {
        const testing::WriteProtection protection(folder->path());
        QCOMPARE(Write("walk", "png"), QByteArray("21 walk0001.png"));
    }
    QCOMPARE(Files(), QStringList(QStringLiteral("walk0001.png")));
}

void TestCellFilesZero::aDiskThatFillsUpLeavesNoHalfFile_data()
{
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QSize>("size");
    const QString png = QStringLiteral("png"), tga = QStringLiteral("tga");
    // What is written last, and first when the file is small, leaves its buffer at the very end.
    QTest::newRow("png of one buffer") << png << QSize(1201, 901);
    QTest::newRow("png of several") << png << QSize(2501, 2001);
    QTest::newRow("tga of one buffer") << tga << QSize(41, 31);
    QTest::newRow("tga of several") << tga << QSize(501, 301);
}

void TestCellFilesZero::aDiskThatFillsUpLeavesNoHalfFile()
{
    QFETCH(QString, extension);
    QFETCH(QSize, size);
    const QString first = QStringLiteral("walk01.") + extension;
    QImage drawing(size, QImage::Format_ARGB32);
    drawing.fill(0x40C08060U);
    QVERIFY(drawing.save(PathOf(first)));

    QVERIFY(testing::LimitFileSize(/*bytes=*/1000));
    const QByteArray answer = Write("walk", extension.toLatin1());
    QVERIFY(testing::LiftFileSize());

    QCOMPARE(answer, "21 " + first.toLatin1());
    QCOMPARE(Files(), QStringList(first));
}

void TestCellFilesZero::theLongestNamesAreHandled()
{
    // The zero file's name is never longer than the first one's, so that the longest name works.
    const QString root(testing::LongestName() - 5, QLatin1Char('w'));
    MakeDrawing(root + QStringLiteral("1.png"));
    QCOMPARE(Write(root.toLatin1(), "png"), root.toLatin1().prepend("0 ") + "1.png");
    QVERIFY(!Load(root + QStringLiteral("0.png")).isNull());

    CellName fileName = "before";
    const QByteArray tooLong(300, 'w');
    QCOMPARE(int(WriteZeroCell(
                 folder->path().toUtf8().constData(), tooLong.constData(), "png", fileName)),
        1); // no file can have that name
    QCOMPARE(fileName, "");
}

VN_TEST_MAIN(TestCellFilesZero)

#include "tst_cellfiles_zero.moc"
