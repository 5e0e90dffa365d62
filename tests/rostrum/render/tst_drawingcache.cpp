#include "render/DrawingCache.h"
#include "RenderFixture.h"

#include "testing/TestMain.h"

#include <QBuffer>
#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

using namespace rostrum;
using namespace testing;

class TestDrawingCache : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aDrawingIsReadOnce();
    void aDrawingWithHolesIsPremultiplied();
    void anOpaqueDrawingIsKnownToBeOpaque_data();
    void anOpaqueDrawingIsKnownToBeOpaque();
    void theDrawnPartIsKnown_data();
    void theDrawnPartIsKnown();
    void theLeastRecentlyUsedGoesFirst();
    void theLimitIsKept();
    void aDrawingLargerThanTheLimitIsReadAndNotKept();
    void aLowerLimitTakesEffectAtOnce();
    void aChangedFileIsReadAnew_data();
    void aChangedFileIsReadAnew();
    void aFileThatIsGoneIsMissed();
    void anUnreadableFileIsToldAndNotTriedAgain_data();
    void anUnreadableFileIsToldAndNotTriedAgain();
    void anImageThatNamesAnImpossibleSizeIsNotDecoded();
    void whoHoldsADrawingKeepsIt();
    void clearForgetsAll();

private:
    QString Make(const QString &name, QSize size = QSize(64, 32), QRgb color = 0xff102030);

    QScopedPointer<QTemporaryDir> folder;
};

namespace {

constexpr qint64 kBytes = 64 * 32 * 4; // of a drawing that Make makes
constexpr qint64 kBytesAndEntry = kBytes + 1024;

} // namespace

void TestDrawingCache::init()
{
    folder.reset(new QTemporaryDir);
}

QString TestDrawingCache::Make(const QString &name, QSize size, QRgb color)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    QString path = folder->filePath(name);
    if (!image.save(path))
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

void TestDrawingCache::aDrawingIsReadOnce()
{
    DrawingCache cache;
    const QString path = Make(QStringLiteral("a.png"));
    const Drawing first = cache.Get(path);
    const Drawing second = cache.Get(path);
    QCOMPARE(cache.Readings(), 1);
    QCOMPARE(first.error, QString());
    QCOMPARE(second.image.constBits(), first.image.constBits()); // no copy was made
    QCOMPARE(cache.Count(), 1);
    QCOMPARE(cache.Used(), kBytesAndEntry);
}

void TestDrawingCache::aDrawingWithHolesIsPremultiplied()
{
    DrawingCache cache;
    const Drawing drawing
        = cache.Get(Make(QStringLiteral("a.png"), QSize(5, 5), qRgba(200, 100, 50, 128)));
    QCOMPARE(drawing.image.format(), QImage::Format_ARGB32_Premultiplied);
    QVERIFY(!drawing.IsOpaque());
    QCOMPARE(reinterpret_cast<const QRgb *>(drawing.image.constBits())[0],
        qPremultiply(qRgba(200, 100, 50, 128)));
}

void TestDrawingCache::anOpaqueDrawingIsKnownToBeOpaque_data()
{
    QTest::addColumn<int>("format");
    QTest::newRow("no alpha") << int(QImage::Format_RGB32);
    QTest::newRow("alpha, full everywhere") << int(QImage::Format_ARGB32);
    QTest::newRow("grey") << int(QImage::Format_Grayscale8);
    QTest::newRow("a palette") << int(QImage::Format_Indexed8);
    QTest::newRow("16 bits a channel") << int(QImage::Format_RGBA64);
}

void TestDrawingCache::anOpaqueDrawingIsKnownToBeOpaque()
{
    QFETCH(int, format);
    QImage image(3, 3, QImage::Format_RGB32);
    image.fill(qRgb(100, 100, 100));
    image.setPixel(1, 1, qRgb(10, 10, 10));
    const QString path = folder->filePath(QStringLiteral("a.png"));
    QVERIFY(image.convertToFormat(QImage::Format(format)).save(path));
    DrawingCache cache;
    const Drawing drawing = cache.Get(path);
    QVERIFY(drawing.IsOpaque());
    QVERIFY(!drawing.isBlank);
    QCOMPARE(drawing.image.pixel(1, 1), qRgb(10, 10, 10));
}

void TestDrawingCache::theDrawnPartIsKnown_data()
{
    QTest::addColumn<QVector<QPoint>>("pixels");
    QTest::addColumn<QRect>("expected");
    QTest::newRow("nothing") << QVector<QPoint>() << QRect();
    QTest::newRow("the first pixel") << QVector<QPoint>{ { 0, 0 } } << QRect(0, 0, 1, 1);
    QTest::newRow("the last pixel") << QVector<QPoint>{ { 8, 6 } } << QRect(8, 6, 1, 1);
    QTest::newRow("one inside") << QVector<QPoint>{ { 4, 3 } } << QRect(4, 3, 1, 1);
    QTest::newRow("far apart") << QVector<QPoint>{ { 5, 1 }, { 2, 4 } } << QRect(2, 1, 4, 4);
    QTest::newRow("two corners") << QVector<QPoint>{ { 8, 0 }, { 0, 6 } } << QRect(0, 0, 9, 7);
}

void TestDrawingCache::theDrawnPartIsKnown()
{
    QFETCH(QVector<QPoint>, pixels);
    QFETCH(QRect, expected);
    QImage image(9, 7, QImage::Format_ARGB32);
    image.fill(qRgba(255, 255, 255, 0)); // clear, whatever colour it would have
    for (const QPoint &pixel : qAsConst(pixels))
        image.setPixel(pixel, qRgba(0, 0, 0, 1));
    const QString path = folder->filePath(QStringLiteral("a.png"));
    QVERIFY(image.save(path));
    const Drawing drawing = DrawingCache().Get(path);
    QCOMPARE(drawing.drawn, expected);
    QCOMPARE(drawing.isBlank, pixels.isEmpty());
    QCOMPARE(DrawingCache().Get(Make(QStringLiteral("full.png"))).drawn, QRect(0, 0, 64, 32));
}

void TestDrawingCache::theLeastRecentlyUsedGoesFirst()
{
    const QString a = Make(QStringLiteral("a.png"));
    const QString b = Make(QStringLiteral("b.png"));
    const QString c = Make(QStringLiteral("c.png"));
    DrawingCache cache(2 * kBytesAndEntry);
    cache.Get(a);
    cache.Get(b);
    cache.Get(a); // b has now been unused for longer
    cache.Get(c);
    QVERIFY(cache.Holds(a));
    QVERIFY(!cache.Holds(b));
    QVERIFY(cache.Holds(c));
    QCOMPARE(cache.Readings(), 3);
    cache.Get(b);
    QCOMPARE(cache.Readings(), 4);
    QVERIFY(!cache.Holds(a));
}

void TestDrawingCache::theLimitIsKept()
{
    DrawingCache cache(5 * kBytesAndEntry + 17);
    for (int i = 0; i < 40; ++i) {
        cache.Get(Make(QStringLiteral("a%1.png").arg(i)));
        QVERIFY(cache.Used() <= cache.Limit());
        QCOMPARE(cache.Used(), cache.Count() * kBytesAndEntry);
    }
    QCOMPARE(cache.Count(), 5);
}

void TestDrawingCache::aDrawingLargerThanTheLimitIsReadAndNotKept()
{
    const QString small = Make(QStringLiteral("small.png"));
    const QString large = Make(QStringLiteral("large.png"), QSize(100, 100));
    DrawingCache cache(2 * kBytesAndEntry);
    cache.Get(small);
    QCOMPARE(cache.Get(large).image.size(), QSize(100, 100));
    QVERIFY(!cache.Holds(large));
    QVERIFY(cache.Holds(small)); // nothing had to go for it
}

void TestDrawingCache::aLowerLimitTakesEffectAtOnce()
{
    DrawingCache cache;
    const QString a = Make(QStringLiteral("a.png"));
    const QString b = Make(QStringLiteral("b.png"));
    cache.Get(a);
    cache.Get(b);
    cache.SetLimit(kBytesAndEntry);
    QVERIFY(!cache.Holds(a));
    QVERIFY(cache.Holds(b));
    cache.SetLimit(0);
    QCOMPARE(cache.Count(), 0);
    QCOMPARE(cache.Used(), 0);
    QVERIFY(cache.Get(a).IsReadable());
    QCOMPARE(cache.Count(), 0);
}

void TestDrawingCache::aChangedFileIsReadAnew_data()
{
    QTest::addColumn<bool>("sameSize");
    QTest::addColumn<bool>("sameTime");
    QTest::newRow("another time") << true << false;
    QTest::newRow("another size") << false << true;
}

void TestDrawingCache::aChangedFileIsReadAnew()
{
    QFETCH(bool, sameSize);
    QFETCH(bool, sameTime);
    const QDateTime before(QDate(2020, 5, 17), QTime(12, 0), Qt::UTC);
    const auto setTime = [](const QString &path, const QDateTime &time) {
        QFile file(path);
        return file.open(QIODevice::ReadWrite)
            && file.setFileTime(time, QFileDevice::FileModificationTime);
    };
    const auto write = [](const QString &path, QRgb color, int padding) {
        QImage image(1, 1, QImage::Format_ARGB32);
        image.fill(color);
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && image.save(&file, "BMP")
            && file.write(QByteArray(padding, 'x')) == padding;
    };
    const QString path = folder->filePath(QStringLiteral("a.bmp"));
    DrawingCache cache;
    QVERIFY(write(path, qRgb(1, 2, 3), 0) && setTime(path, before));
    QCOMPARE(cache.Get(path).image.pixel(0, 0), qRgb(1, 2, 3));

    QVERIFY(write(path, qRgb(9, 8, 7), sameSize ? 0 : 5));
    QVERIFY(setTime(path, sameTime ? before : before.addMSecs(1)));

    QCOMPARE(cache.Get(path).image.pixel(0, 0), qRgb(9, 8, 7));
    QCOMPARE(cache.Count(), 1);
    QCOMPARE(cache.Readings(), 2);
}

void TestDrawingCache::aFileThatIsGoneIsMissed()
{
    const QString path = Make(QStringLiteral("a.png"));
    DrawingCache cache;
    QVERIFY(cache.Get(path).IsReadable());
    QVERIFY(QFile::remove(path));
    QCOMPARE(cache.Get(path).error,
        QStringLiteral("The image \"%1\" cannot be read: there is no such file").arg(path));
    QCOMPARE(cache.Used(), 1024);
    Make(QStringLiteral("a.png"));
    QVERIFY(cache.Get(path).IsReadable());
}

void TestDrawingCache::anUnreadableFileIsToldAndNotTriedAgain_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no image") << QStringLiteral("a.png") << QByteArray("this is a text");
    QTest::newRow("empty") << QStringLiteral("a.png") << QByteArray();
    QTest::newRow("an unknown extension") << QStringLiteral("a.xyz") << QByteArray("nothing");
    QTest::newRow("a cut bitmap") << QStringLiteral("a.bmp") << QByteArray("BM\0\0\0\0", 6);
}

void TestDrawingCache::anUnreadableFileIsToldAndNotTriedAgain()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    const QString path = folder->filePath(name);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
    file.close();
    DrawingCache cache;
    for (int i = 0; i < 3; ++i) {
        const Drawing drawing = cache.Get(path);
        QVERIFY(!drawing.IsReadable());
        QVERIFY(drawing.image.isNull());
        const QString start = QStringLiteral("The image \"%1\" cannot be read: ").arg(path);
        QVERIFY2(drawing.error.startsWith(start), qPrintable(drawing.error));
        QVERIFY(drawing.error.size() > start.size());
    }
    QCOMPARE(cache.Readings(), 1);
    const QString folderPath = folder->path(); // a folder is no image either
    QVERIFY(!cache.Get(folderPath).IsReadable());
}

void TestDrawingCache::anImageThatNamesAnImpossibleSizeIsNotDecoded()
{
    // A bitmap whose header names 40000 by 1 pixels, and which has none.
    QByteArray header("BM");
    const auto number = [&header](quint32 value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            header += char(value >> (8 * i) & 0xff);
    };
    for (const quint32 value : { 54U, 0U, 54U, 40U, 40000U, 1U })
        number(value, 4);
    number(1, 2);
    number(32, 2);
    for (const quint32 value : { 0U, 0U, 2835U, 2835U, 0U, 0U })
        number(value, 4);
    const QString path = folder->filePath(QStringLiteral("huge.bmp"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(header), 54);
    file.close();
    QCOMPARE(ReadDrawing(path).error,
        QStringLiteral("The image \"%1\" cannot be read: 40000 by 1 pixels are too many")
            .arg(path));
}

void TestDrawingCache::whoHoldsADrawingKeepsIt()
{
    DrawingCache cache(kBytesAndEntry);
    const Drawing held = cache.Get(Make(QStringLiteral("a.png"), QSize(64, 32), 0xff123456));
    cache.Get(Make(QStringLiteral("b.png")));
    QCOMPARE(cache.Count(), 1);
    QCOMPARE(held.image.pixel(63, 31), 0xff123456);
}

void TestDrawingCache::clearForgetsAll()
{
    DrawingCache cache;
    const QString path = Make(QStringLiteral("a.png"));
    cache.Get(path);
    cache.Clear();
    QCOMPARE(cache.Count(), 0);
    QCOMPARE(cache.Used(), 0);
    cache.Get(path);
    QCOMPARE(cache.Readings(), 2);
}

VN_TEST_MAIN(TestDrawingCache)

#include "tst_drawingcache.moc"
