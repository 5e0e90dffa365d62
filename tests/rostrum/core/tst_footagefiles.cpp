#include "CoreTest.h"

#include "core/FootageFiles.h"
#include "testing/Platform.h"

#include <QBuffer>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

using rostrum::Footage;
using rostrum::ImportDrawings;
using rostrum::ImportResult;

using Numbers = QVector<qint32>;

class TestFootageFiles : public QObject
{
    Q_OBJECT

private slots:
    void aSeriesIsFoundFromAnyOfItsFiles_data();
    void aSeriesIsFoundFromAnyOfItsFiles();
    void whatBelongsToASeries_data();
    void whatBelongsToASeries();
    void gapsInASeriesCloseUp();
    void aFolderOrADeadLinkIsNoFileOfASeries();
    void aStillIsTheOneFile();
    void aSeriesOfOneIsASeries_data();
    void aSeriesOfOneIsASeries();
    void aFileIsFoundByItsNameInAnyCase();
    void theNumberGoesUpTo31Bits();
    void aNumberBeyondThatIsRefused_data();
    void aNumberBeyondThatIsRefused();
    void aNumberBeyondThatIsLeftOutOfASeries();
    void aPathThatCannotComeInSaysWhy_data();
    void aPathThatCannotComeInSaysWhy();
    void theFormatsOfDrawingsTellTheirSize_data();
    void theFormatsOfDrawingsTellTheirSize();
    void theHeaderAloneIsRead();
    void theSizeIsThatOfTheFirstImage();
    void aPathIsMadeAbsoluteAndClean_data();
    void aPathIsMadeAbsoluteAndClean();
    void aPathInTheTopFolderHasOneSlash();
    void manyFilesAreSorted();
};

namespace {

QByteArray Png(const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return bytes;
}

/// The smallest PSD: header, three empty sections, three raw planes.
QByteArray Psd(const QSize &size)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.writeRawData("8BPS\0\1\0\0\0\0\0\0", 12);
    out << quint16(3) << quint32(size.height()) << quint32(size.width()) << quint16(8)
        << quint16(3); // channels, size, bits, RGB
    out << quint32(0) << quint32(0) << quint32(0) << quint16(0);
    return bytes + QByteArray(3 * size.width() * size.height(), '\x50');
}

/// A folder "cut" that is gone after the test.
class Cut
{
public:
    Cut() { QDir(top.path()).mkdir(QStringLiteral("cut")); }

    QString Folder() const { return QDir(top.path()).canonicalPath() + QStringLiteral("/cut"); }
    QString Path(const QString &name) const { return Folder() + QLatin1Char('/') + name; }
    void Write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(Path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(name));
    }
    void Draw(const QStringList &names, const QSize &size = QSize(7, 5)) const
    {
        const QByteArray bytes = Png(size);
        for (const QString &name : names)
            Write(name, bytes);
    }

private:
    QTemporaryDir top;
};

QString Text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

void TestFootageFiles::aSeriesIsFoundFromAnyOfItsFiles_data()
{
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QChar>("separator");
    const QChar slash = QLatin1Char('/');
    const QChar backslash = QLatin1Char('\\');
    QTest::newRow("the first") << Text("walk0001.png") << slash;
    QTest::newRow("the middle") << Text("walk0002.png") << slash;
    QTest::newRow("the last") << Text("walk0024.png") << slash;
    QTest::newRow("another case") << Text("WALK0002.Png") << slash;
    QTest::newRow("backslashes") << Text("walk0002.png") << backslash;
    QTest::newRow("backslashes and another case") << Text("Walk0024.PNG") << backslash;
}

void TestFootageFiles::aSeriesIsFoundFromAnyOfItsFiles()
{
    QFETCH(QString, asked);
    QFETCH(QChar, separator);
    const Cut cut;
    cut.Draw({ Text("walk0024.png"), Text("walk0001.png"), Text("walk0002.png") });
    const ImportResult result
        = ImportDrawings(cut.Path(asked).replace(QLatin1Char('/'), separator), /*series=*/true);

    QCOMPARE(result.error, QString());
    QCOMPARE(result.Ok(), true);
    QCOMPARE(result.name, QByteArray("walk[0001-0024].png"));
    const Footage &footage = result.footage;
    QCOMPARE(footage.folder, cut.Folder());
    QCOMPARE(footage.files,
        QStringList({ Text("walk0001.png"), Text("walk0002.png"), Text("walk0024.png") }));
    QCOMPARE(footage.numbers, Numbers({ 1, 2, 24 }));
    QCOMPARE(footage.isSeries, true);
    QCOMPARE(footage.size, QSize(7, 5));
    QCOMPARE(footage.rate, (rostrum::Rate{ 25, 1 }));
    QCOMPARE(footage.Duration(), (rostrum::Time{ 3, 25 }));
    QCOMPARE(footage.PathOf(2), cut.Path(Text("walk0024.png")));
}

void TestFootageFiles::whatBelongsToASeries_data()
{
    QTest::addColumn<QStringList>("inFolder");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<Numbers>("numbers");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *what, const char *inFolder, const char *asked,
                         const char *files, const Numbers &numbers, const char *name) {
        QTest::newRow(what) << Text(inFolder).split(QLatin1Char(' ')) << Text(asked)
                            << Text(files).split(QLatin1Char(' ')) << numbers << Text(name);
    };
    row("mixed case", "walk0002.png WALK0001.PNG Walk0003.Png", "walk0003.png",
        "WALK0001.PNG walk0002.png Walk0003.Png", { 1, 2, 3 }, "WALK[0001-0003].PNG");
    row("a longer root is another series", "walk_1.png walk_b1.png sidewalk_1.png", "walk_1.png",
        "walk_1.png", { 1 }, "walk_[1-1].png");
    row("another extension is another series", "walk1.png walk2.tga walk2.pngx", "walk1.png",
        "walk1.png", { 1 }, "walk[1-1].png");
    row("a file without number is none of it", "walk.png walk1.png walk1a.png", "walk1.png",
        "walk1.png", { 1 }, "walk[1-1].png");
    row("9 before 10, without padding", "walk10.png walk9.png walk100.png", "walk100.png",
        "walk9.png walk10.png walk100.png", { 9, 10, 100 }, "walk[9-100].png");
    row("paddings mixed", "walk0010.png walk9.png walk008.png", "walk9.png",
        "walk008.png walk9.png walk0010.png", { 8, 9, 10 }, "walk[008-0010].png");
    row("two spellings of one number", "walk1.png walk01.png walk2.png", "walk2.png",
        "walk01.png walk1.png walk2.png", { 1, 1, 2 }, "walk[01-2].png");
    row("image 0 comes first", "walk0002.png walk0000.png", "walk0002.png",
        "walk0000.png walk0002.png", { 0, 2 }, "walk[0000-0002].png");
    row("digits alone", "0002.png 0001.png", "0001.png", "0001.png 0002.png", { 1, 2 },
        "[0001-0002].png");
    row("digits inside the root", "cut12_walk2.png cut12_walk1.png cut13_walk1.png",
        "cut12_walk1.png", "cut12_walk1.png cut12_walk2.png", { 1, 2 }, "cut12_walk[1-2].png");
    row("digits behind a point", "walk.0002.png walk.0001.png", "walk.0001.png",
        "walk.0001.png walk.0002.png", { 1, 2 }, "walk.[0001-0002].png");
    row("digits behind a dash are no minus", "walk-2.png walk-1.png", "walk-1.png",
        "walk-1.png walk-2.png", { 1, 2 }, "walk-[1-2].png");
    row("a leading point", ".walk2.png .walk1.png walk3.png", ".walk1.png", ".walk1.png .walk2.png",
        { 1, 2 }, ".walk[1-2].png");
    row("a leading point and digits", ".0002.png .0001.png", ".0002.png", ".0001.png .0002.png",
        { 1, 2 }, ".[0001-0002].png");
    row("no extension", "walk2 walk1 walk3.png", "walk1", "walk1 walk2", { 1, 2 }, "walk[1-2]");
    row("a leading point starts no extension", ".0002 .0001", ".0001", ".0001 .0002", { 1, 2 },
        ".[0001-0002]");
    row("beyond ASCII", "été_夜0002.png été_夜0001.png ete_夜0003.png", "été_夜0002.png",
        "été_夜0001.png été_夜0002.png", { 1, 2 }, "été_夜[0001-0002].png");
    row("case beyond ASCII", "ÉTÉ1.PNG été2.png", "Été2.png", "ÉTÉ1.PNG été2.png", { 1, 2 },
        "ÉTÉ[1-2].PNG");
    row("digits of other scripts are letters", "walk٣1.png walk٤2.png", "walk٣1.png", "walk٣1.png",
        { 1 }, "walk٣[1-1].png");
#ifndef Q_OS_WIN // where no file can have that name, nor two that differ in case alone
    row("one number in two cases", "walk0001.png WALK0001.png", "walk0001.png",
        "WALK0001.png walk0001.png", { 1, 1 }, "WALK[0001-0001].png");
    row("signs that stand for something elsewhere", "a%1[*]?1.png a%1[*]?2.png axx1.png",
        "a%1[*]?1.png", "a%1[*]?1.png a%1[*]?2.png", { 1, 2 }, "a%1[*]?[1-2].png");
#endif
}

void TestFootageFiles::whatBelongsToASeries()
{
    QFETCH(QStringList, inFolder);
    QFETCH(QString, asked);
    const Cut cut;
    cut.Draw(inFolder);
    const ImportResult result = ImportDrawings(cut.Path(asked), /*series=*/true);
    QCOMPARE(result.error, QString());
    QTEST(result.footage.files, "files");
    QTEST(result.footage.numbers, "numbers");
    QTEST(QString::fromUtf8(result.name), "name");
}

void TestFootageFiles::gapsInASeriesCloseUp()
{
    const Cut cut;
    cut.Draw({ Text("walk0000.png"), Text("walk0003.png"), Text("walk0012.png") });
    const ImportResult result = ImportDrawings(cut.Path(Text("walk0003.png")), /*series=*/true);
    QCOMPARE(result.footage.PathOf(1), cut.Path(Text("walk0003.png")));
    QCOMPARE(result.footage.PathOf(2), cut.Path(Text("walk0012.png")));
    QCOMPARE(result.footage.Duration(), (rostrum::Time{ 3, 25 }));
}

void TestFootageFiles::aFolderOrADeadLinkIsNoFileOfASeries()
{
    const Cut cut;
    const QString dead = testing::LinkName(Text("walk3.png"));
    const QString alive = testing::LinkName(Text("walk4.png"));
    cut.Draw({ Text("walk1.png"), Text("elsewhere.png") });
    QVERIFY(QDir(cut.Folder()).mkdir(Text("walk2.png")));
    QVERIFY(QFile::link(cut.Path(Text("nowhere.png")), cut.Path(dead)));
    QVERIFY(QFile::link(cut.Path(Text("elsewhere.png")), cut.Path(alive)));
    QStringList drawings{ Text("walk1.png") };
    if (alive.endsWith(QLatin1String(".png")))
        drawings << alive;
    const ImportResult result = ImportDrawings(cut.Path(Text("walk1.png")), /*series=*/true);
    QCOMPARE(result.footage.files, drawings);
    QCOMPARE(ImportDrawings(cut.Path(Text("walk2.png")), /*series=*/true).Ok(), false);
    QCOMPARE(ImportDrawings(cut.Path(Text("walk3.png")), /*series=*/true).Ok(), false);
}

void TestFootageFiles::aStillIsTheOneFile()
{
    const Cut cut;
    cut.Draw({ Text("Decor_é01.PNG"), Text("decor_é02.png") }, { 11, 4 });
    const ImportResult result = ImportDrawings(cut.Path(Text("decor_é01.png")), /*series=*/false);
    QCOMPARE(result.error, QString());
    QCOMPARE(result.name, Text("Decor_é01.PNG").toUtf8());
    QCOMPARE(result.footage.files, QStringList({ Text("Decor_é01.PNG") })); // its real spelling
    QCOMPARE(result.footage.numbers, Numbers());
    QCOMPARE(result.footage.isSeries, false);
    QCOMPARE(result.footage.size, QSize(11, 4));
    QCOMPARE(result.footage.Duration(), rostrum::Time());
}

void TestFootageFiles::aSeriesOfOneIsASeries_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<Numbers>("numbers");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("numbered") << Text("walk0007.png") << Numbers({ 7 })
                              << QByteArray("walk[0007-0007].png");
    QTest::newRow("without digits") << Text("decor.png") << Numbers() << QByteArray("decor.png");
    QTest::newRow("digits not at the end")
        << Text("cut12b.png") << Numbers() << QByteArray("cut12b.png");
    QTest::newRow("a leading point alone") << Text(".png") << Numbers() << QByteArray(".png");
}

void TestFootageFiles::aSeriesOfOneIsASeries()
{
    QFETCH(QString, file);
    const Cut cut;
    cut.Draw({ file });
    const ImportResult result = ImportDrawings(cut.Path(file), /*series=*/true);
    QCOMPARE(result.error, QString());
    QCOMPARE(result.footage.files, QStringList({ file }));
    QTEST(result.footage.numbers, "numbers");
    QTEST(result.name, "name");
    QCOMPARE(result.footage.isSeries, true);
    QCOMPARE(result.footage.Duration(), (rostrum::Time{ 1, 25 }));
}

void TestFootageFiles::aFileIsFoundByItsNameInAnyCase()
{
    const Cut cut;
    cut.Draw({ Text("wALK.png"), Text("été.png") });
    const auto real
        = [&](const char *name) { return rostrum::RealFileName(cut.Folder(), Text(name)); };
    QCOMPARE(real("wALK.png"), Text("wALK.png"));
    QCOMPARE(real("walk.png"), Text("wALK.png"));
    QCOMPARE(real("ÉTÉ.PNG"), Text("été.png"));
    QCOMPARE(real("walk"), QString());
    QCOMPARE(real(""), QString());
    QCOMPARE(rostrum::RealFileName(cut.Path(Text("nowhere")), Text("walk.png")), QString());
    QCOMPARE(rostrum::WithSlashes(Text("c:\\cut/a\\b.png")), Text("c:/cut/a/b.png"));
    QCOMPARE(rostrum::WithSlashes(QString()), QString());
}

void TestFootageFiles::theNumberGoesUpTo31Bits()
{
    const Cut cut;
    cut.Draw({ Text("a2147483647.png"), Text("a0000000000000000000002.png") });
    const ImportResult result = ImportDrawings(cut.Path(Text("a2147483647.png")), /*series=*/true);
    QCOMPARE(result.error, QString());
    QCOMPARE(result.footage.numbers, Numbers({ 2, 2147483647 }));
}

void TestFootageFiles::aNumberBeyondThatIsRefused_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("32 bits") << Text("walk2147483648.png");
    QTest::newRow("33 bits, 1 if it were cut") << Text("walk4294967297.png");
    QTest::newRow("a date and more") << Text("walk20240131235959123456.png");
}

// Beside a file of an ordinary number, the series came in without the very file that was asked for.
void TestFootageFiles::aNumberBeyondThatIsRefused()
{
    QFETCH(QString, file);
    const Cut cut;
    cut.Draw({ file, Text("walk1.png") });
    const ImportResult result = ImportDrawings(cut.Path(file), /*series=*/true);
    QCOMPARE(result.Ok(), false);
    QVERIFY2(result.error.contains(file), qPrintable(result.error));
    QVERIFY(ImportDrawings(cut.Path(file), /*series=*/false).Ok()); // a still needs no number
}

void TestFootageFiles::aNumberBeyondThatIsLeftOutOfASeries()
{
    const Cut cut;
    cut.Draw({ Text("walk1.png"), Text("walk4294967298.png"), Text("walk3.png") });
    const ImportResult result = ImportDrawings(cut.Path(Text("walk1.png")), /*series=*/true);
    QCOMPARE(result.footage.numbers, Numbers({ 1, 3 }));
}

void TestFootageFiles::aPathThatCannotComeInSaysWhy_data()
{
    QTest::addColumn<QString>("below"); // what follows the folder
    QTest::addColumn<QString>("told");
    QTest::newRow("a missing file") << Text("/run1.png") << Text("run1.png");
    QTest::newRow("a missing folder") << Text("/none/walk1.png") << Text("/none");
    QTest::newRow("an empty file name") << Text("/") << Text("names no file");
    QTest::newRow("an empty file name, backslash") << Text("\\") << Text("names no file");
    QTest::newRow("a folder") << Text("") << Text("cut");
    QTest::newRow("a folder named like an image") << Text("/folder1.png") << Text("folder1.png");
    QTest::newRow("the folder above") << Text("/..") << Text("..");
    QTest::newRow("the folder itself") << Text("/.") << Text("cut");
    QTest::newRow("a file taken for a folder") << Text("/walk1.png/a.png") << Text("a.png");
    QTest::newRow("an unreadable image") << Text("/text1.png") << Text("text1.png");
    QTest::newRow("an empty file") << Text("/empty1.png") << Text("empty1.png");
    QTest::newRow("an unreadable TGA") << Text("/text1.tga") << Text("text1.tga");
    QTest::newRow("an unreadable PSD") << Text("/text1.psd") << Text("text1.psd");
    QTest::newRow("a format without a reader") << Text("/notes1.txt") << Text("notes1.txt");
}

void TestFootageFiles::aPathThatCannotComeInSaysWhy()
{
    QFETCH(QString, below);
    QFETCH(QString, told);
    const Cut cut;
    cut.Draw({ Text("walk1.png") });
    cut.Write(Text("empty1.png"), {});
    for (const char *name : { "text1.png", "text1.tga", "text1.psd", "notes1.txt" })
        cut.Write(Text(name), "It was a dark and stormy night; the rain fell in torrents.\n");
    QVERIFY(QDir(cut.Folder()).mkdir(Text("folder1.png")));
    for (const bool series : { true, false }) {
        const ImportResult result = ImportDrawings(cut.Folder() + below, series);
        QCOMPARE(result.Ok(), false);
        QVERIFY2(result.error.contains(told), qPrintable(result.error));
    }
    QCOMPARE(ImportDrawings(QString(), /*series=*/true).Ok(), false);
}

void TestFootageFiles::theFormatsOfDrawingsTellTheirSize_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("writer"); // "psd" is written by hand
    QTest::newRow("PNG") << Text("walk1.png") << QByteArray("png");
    QTest::newRow("PNG in capitals") << Text("WALK1.PNG") << QByteArray("png");
    QTest::newRow("TGA") << Text("walk1.tga") << QByteArray("tga");
    QTest::newRow("TGA in capitals") << Text("WALK1.TGA") << QByteArray("tga");
    QTest::newRow("PSD") << Text("walk1.psd") << QByteArray("psd");
    QTest::newRow("JPEG") << Text("walk1.jpg") << QByteArray("jpg");
    QTest::newRow("BMP") << Text("walk1.bmp") << QByteArray("bmp");
    QTest::newRow("a PNG by another name") << Text("walk1.tga") << QByteArray("png");
}

void TestFootageFiles::theFormatsOfDrawingsTellTheirSize()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, writer);
    const Cut cut;
    const QSize size(13, 6);
    if (writer == "psd") {
        cut.Write(file, Psd(size));
    } else {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::blue);
        QVERIFY(image.save(cut.Path(file), writer));
    }
    for (const bool series : { true, false }) {
        const ImportResult result = ImportDrawings(cut.Path(file), series);
        QCOMPARE(result.error, QString());
        QCOMPARE(result.footage.size, size);
    }
}

void TestFootageFiles::theHeaderAloneIsRead()
{
    const Cut cut;
    cut.Write(Text("walk1.png"), Png({ 700, 500 }).left(80)); // header, and the start of the pixels
    const ImportResult result = ImportDrawings(cut.Path(Text("walk1.png")), /*series=*/true);
    QCOMPARE(result.error, QString());
    QCOMPARE(result.footage.size, QSize(700, 500));
}

void TestFootageFiles::theSizeIsThatOfTheFirstImage()
{
    const Cut cut;
    cut.Draw({ Text("walk2.png") }, { 21, 20 });
    cut.Draw({ Text("walk1.png") }, { 11, 10 });
    const ImportResult result = ImportDrawings(cut.Path(Text("walk2.png")), /*series=*/true);
    QCOMPARE(result.footage.size, QSize(11, 10));
}

void TestFootageFiles::aPathIsMadeAbsoluteAndClean_data()
{
    QTest::addColumn<QString>("asked");
    QTest::newRow("a bare name") << Text("walk1.png");
    QTest::newRow("from the folder itself") << Text("./walk1.png");
    QTest::newRow("up and down") << Text("../cut/walk1.png");
    QTest::newRow("up and down, backslashes") << Text("..\\cut\\.\\walk1.png");
    QTest::newRow("doubled separators") << Text("..//cut///walk1.png");
}

void TestFootageFiles::aPathIsMadeAbsoluteAndClean()
{
    QFETCH(QString, asked);
    const Cut cut;
    cut.Draw({ Text("walk1.png") });
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(cut.Folder()));
    const ImportResult result = ImportDrawings(asked, /*series=*/true);
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(result.error, QString());
    QCOMPARE(result.footage.folder, cut.Folder());
    QCOMPARE(result.footage.PathOf(0), cut.Path(Text("walk1.png")));
}

// "\walk.png" is a file in the top folder; its path began with two slashes.
void TestFootageFiles::aPathInTheTopFolderHasOneSlash()
{
    Footage footage;
    footage.folder = Text("/");
    footage.files << Text("walk.png");
    QCOMPARE(footage.PathOf(0), Text("/walk.png"));
}

void TestFootageFiles::manyFilesAreSorted()
{
    const Cut cut;
    QStringList names;
    QStringList expected;
    const int count = testing::ManyFiles() / 5;
    for (int i = 0; i < count; ++i) {
        names << QStringLiteral("walk%1.png").arg((i * 1237) % count); // each once, in no order
        names << QStringLiteral("run%1.png").arg(i);
        expected << QStringLiteral("walk%1.png").arg(i);
    }
    cut.Draw(names);
    const ImportResult result = ImportDrawings(cut.Path(Text("walk200.png")), /*series=*/true);
    QCOMPARE(result.footage.files, expected);
    QCOMPARE(result.name, "walk[0-" + QByteArray::number(count - 1) + "].png");
    QCOMPARE(result.footage.numbers.size(), count);
    QCOMPARE(result.footage.Duration(), (rostrum::Time{ count, 25 }));
}

VN_TEST_MAIN(TestFootageFiles)

#include "tst_footagefiles.moc"
