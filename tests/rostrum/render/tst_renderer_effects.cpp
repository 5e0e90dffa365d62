#include "render/Effects.h"
#include "RenderFixture.h"
#include "render/Outline.h"

#include "testing/TestMain.h"

#include <cmath>
#include <limits>

using namespace rostrum;

namespace {

Raster Dot(int side, QRgb color)
{
    Raster raster;
    raster.image = QImage(side, side, QImage::Format_ARGB32_Premultiplied);
    raster.image.fill(0);
    raster.image.setPixel(side / 2, side / 2, color);
    return raster;
}

Raster Plain(const QSize &size, QRgb color)
{
    Raster raster;
    raster.image = QImage(size, QImage::Format_ARGB32_Premultiplied);
    raster.image.fill(color);
    return raster;
}

/// The raw pixel, which stays premultiplied. @param x, y in pixels of the source
QRgb RawAt(const Raster &raster, int x, int y)
{
    const QPoint at = QPoint(x, y) - raster.origin;
    if (!raster.image.rect().contains(at))
        return 0;
    return reinterpret_cast<const QRgb *>(raster.image.constScanLine(at.y()))[at.x()];
}

LayerEffect Effect(const char *matchName, const QVector<double> &params)
{
    LayerEffect effect;
    effect.key = FindEffect(QByteArray(matchName))->key;
    for (const double param : params)
        effect.params << Stream(StreamValue{ param, 0, 0, 0 });
    return effect;
}

} // namespace

class TestRendererEffects : public QObject
{
    Q_OBJECT

private slots:
    void blurKeepsTheLightAndSpreadsItByItsDeviation_data();
    void blurKeepsTheLightAndSpreadsItByItsDeviation();
    void blurIsTheSameInAllDirections();
    void blurKeepsAPlainAreaAsItIs();
    void aBlurredPixelIsNeverBrighterThanItsOpacity();
    void blurOfNoRadiusChangesNothing_data();
    void blurOfNoRadiusChangesNothing();
    void blurBeyondTheLimitsIsRefused();
    void aGreyStaysGreyWhateverTheSaturation();
    void theEndsOfTheBalance_data();
    void theEndsOfTheBalance();
    void balanceLeavesOpacityAlone();
    void fillKeepsOpacity();
    void strokeDrawsARingOfItsWidth();
    void effectsThatChangeNothingAreKnown_data();
    void effectsThatChangeNothingAreKnown();
    void paramsFollowTheirKeysInLayerTime();
};

void TestRendererEffects::blurKeepsTheLightAndSpreadsItByItsDeviation_data()
{
    QTest::addColumn<double>("radius");
    for (const double radius : { 1.0, 3.0, 10.0, 16.0, 16.5, 25.0, 60.0 })
        QTest::addRow("radius %g", radius) << radius;
}

void TestRendererEffects::blurKeepsTheLightAndSpreadsItByItsDeviation()
{
    QFETCH(double, radius);
    Raster raster = Plain(QSize(101, 101), 0xffffffff); // large, so that 8 bits measure it well
    raster.origin = QPoint(-50, -50);
    QVERIFY(GaussianBlur(radius, &raster));
    double light = 0, squares = 0;
    for (int y = 0; y < raster.image.height(); ++y) {
        for (int x = 0; x < raster.image.width(); ++x) {
            const double alpha = qAlpha(raster.image.pixel(x, y)) / 255.0;
            const double from = x + raster.origin.x();
            light += alpha;
            squares += alpha * from * from;
        }
    }
    QVERIFY2(std::abs(light / (101 * 101) - 1) < 0.01, qPrintable(QString::number(light)));
    // Variances add up: that of the square, and the bell's.
    const double variance = squares / light - (101.0 * 101.0 - 1) / 12;
    const double expected = radius * radius / 4;
    QVERIFY2(std::abs(variance - expected) < 0.03 * expected + 1.5,
        qPrintable(QStringLiteral("%1, expected %2").arg(variance).arg(expected)));
}

void TestRendererEffects::blurIsTheSameInAllDirections()
{
    for (const double radius : { 4.0, 20.0 }) {
        Raster raster = Plain(QSize(9, 9), 0xff4080c0);
        QVERIFY(GaussianBlur(radius, &raster));
        const int reach = -raster.origin.x();
        QCOMPARE(raster.image.size(), QSize(9 + 2 * reach, 9 + 2 * reach));
        const QImage &image = raster.image;
        QVERIFY(image == image.mirrored(true, false));
        QVERIFY(image == image.mirrored(false, true));
        // The lines are blurred first, then the columns, with a rounding in between.
        QVERIFY(testing::Compare(image.transformed(QTransform().rotate(90)), image).largest <= 1);
        // A round bell: as high on the diagonal as on the axis at the same distance.
        const int straight = qAlpha(RawAt(raster, 4 + 10, 4));
        const int slanted = qAlpha(RawAt(raster, 4 + 7, 4 + 7));
        QVERIFY(qAbs(straight - slanted) <= 3);
    }
}

void TestRendererEffects::blurKeepsAPlainAreaAsItIs()
{
    for (const double radius : { 5.0, 30.0 }) {
        Raster raster = Plain(QSize(201, 151), 0x80402010);
        QVERIFY(GaussianBlur(radius, &raster));
        QCOMPARE(RawAt(raster, 100, 75), 0x80402010U);
    }
}

void TestRendererEffects::aBlurredPixelIsNeverBrighterThanItsOpacity()
{
    for (const double radius : { 2.0, 7.0, 19.0, 70.0 }) {
        Raster raster = Dot(33, 0xffffffff);
        raster.image.setPixel(3, 4, 0xff00ff00);
        QVERIFY(GaussianBlur(radius, &raster));
        for (int y = 0; y < raster.image.height(); ++y) {
            const auto *line = reinterpret_cast<const QRgb *>(raster.image.constScanLine(y));
            for (int x = 0; x < raster.image.width(); ++x) {
                const QRgb pixel = line[x];
                QVERIFY(qMax(qRed(pixel), qMax(qGreen(pixel), qBlue(pixel))) <= qAlpha(pixel));
            }
        }
    }
}

void TestRendererEffects::blurOfNoRadiusChangesNothing_data()
{
    QTest::addColumn<double>("radius");
    QTest::newRow("0") << 0.0;
    QTest::newRow("below 0") << -7.0;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN();
}

void TestRendererEffects::blurOfNoRadiusChangesNothing()
{
    QFETCH(double, radius);
    Raster raster = Dot(5, 0xff00ff00);
    const QImage before = raster.image;
    QVERIFY(GaussianBlur(radius, &raster));
    QVERIFY(DrawOutline(radius, &raster));
    QCOMPARE(raster.image, before);
    QCOMPARE(raster.origin, QPoint());
}

void TestRendererEffects::blurBeyondTheLimitsIsRefused()
{
    Raster raster = Plain(QSize(29999, 1), 0xff00ff00);
    QVERIFY(!GaussianBlur(1000, &raster));
    QVERIFY(!DrawOutline(50, &raster));
    QCOMPARE(raster.image.size(), QSize(29999, 1));
    QCOMPARE(raster.origin, QPoint());
    Raster small = Dot(3, 0xff00ff00);
    QVERIFY(GaussianBlur(1e300, &small)); // counts as the largest radius
    QVERIFY(small.image.width() > 2000 && small.image.width() < 3100);
}

void TestRendererEffects::aGreyStaysGreyWhateverTheSaturation()
{
    for (const double saturation : { -100.0, -30.0, 60.0, 100.0 }) {
        const ColorBalance balance{ 77, 0, saturation };
        for (const QRgb grey : { 0xff000000, 0xff808080, 0xffffffff, 0x40202020U })
            QCOMPARE(balance.Balance(grey), grey);
    }
}

void TestRendererEffects::theEndsOfTheBalance_data()
{
    QTest::addColumn<QVector<double>>("balance"); // hue, lightness, saturation
    QTest::addColumn<QRgb>("pixel");
    QTest::addColumn<QRgb>("expected");
    const auto row = [](const char *name, const QVector<double> &balance, QRgb from, QRgb to) {
        QTest::newRow(name) << balance << from << to;
    };
    row("nothing", { 0, 0, 0 }, 0xff4080c0, 0xff4080c0);
    row("lightness 100 is white", { 0, 100, 0 }, 0xff4080c0, 0xffffffff);
    row("lightness -100 is black", { 0, -100, 0 }, 0xff4080c0, 0xff000000);
    row("saturation -100 is grey", { 0, 0, -100 }, 0xff4080c0, 0xff808080);
    row("saturation 100 stops at full colour", { 0, 0, 100 }, 0xff2080e0, 0xff0180ff);
    row("red turned by 120 is green", { 120, 0, 0 }, 0xffff0000, 0xff00ff00);
    row("red turned by -120 is blue", { -120, 0, 0 }, 0xffff0000, 0xff0000ff);
    row("green turned by 180 is magenta", { 180, 0, 0 }, 0xff00ff00, 0xffff00ff);
    row("blue turned by -180 is yellow", { -180, 0, 0 }, 0xff0000ff, 0xffffff00);
    row("a whole turn", { 360, 0, 0 }, 0xff123456, 0xff123456);
    row("nothing to colour", { 120, 100, 100 }, 0x00000000, 0x00000000);
}

void TestRendererEffects::theEndsOfTheBalance()
{
    QFETCH(QVector<double>, balance);
    QFETCH(QRgb, pixel);
    const ColorBalance made{ balance[0], balance[1], balance[2] };
    QTEST(made.Balance(pixel), "expected");
}

void TestRendererEffects::balanceLeavesOpacityAlone()
{
    const ColorBalance balance{ 120, 0, 0 };
    QCOMPARE(
        balance.Balance(qPremultiply(qRgba(255, 0, 0, 100))), qPremultiply(qRgba(0, 255, 0, 100)));
}

void TestRendererEffects::fillKeepsOpacity()
{
    Raster raster = Dot(5, qPremultiply(qRgba(10, 200, 30, 128)));
    QVERIFY(ApplyEffect(Effect(kFill, { 100, 50, 300 }), Time(), &raster));
    QCOMPARE(RawAt(raster, 2, 2), qRgba(128, 64, 128, 128));
    QCOMPARE(RawAt(raster, 1, 2), 0U);
}

void TestRendererEffects::strokeDrawsARingOfItsWidth()
{
    Raster raster = Plain(QSize(11, 11), 0xff00ff00);
    QVERIFY(ApplyEffect(Effect(kStroke, { 4 }), Time(), &raster));
    QCOMPARE(RawAt(raster, 0, 5), 0xff00ff00U); // the drawing lies on top
    QCOMPARE(RawAt(raster, -1, 5), 0xff000000U);
    QCOMPARE(RawAt(raster, -4, 5), 0x80000000U); // softened at its outer edge
    QCOMPARE(RawAt(raster, -5, 5), 0U);
    QCOMPARE(RawAt(raster, 5, 13), 0xff000000U);
    QCOMPARE(RawAt(raster, -4, -4), 0U); // round at the corner
    QCOMPARE(RawAt(raster, -2, -2), 0xff000000U);
}

void TestRendererEffects::effectsThatChangeNothingAreKnown_data()
{
    QTest::addColumn<QByteArray>("effect");
    QTest::addColumn<QVector<double>>("params");
    QTest::addColumn<bool>("expected");
    const auto row
        = [](const char *name, const char *effect, const QVector<double> &params, bool expected) {
              QTest::newRow(name) << QByteArray(effect) << params << expected;
          };
    row("no blur", kGaussianBlur, { 0 }, false);
    row("blur", kGaussianBlur, { 0.5 }, true);
    row("no stroke", kStroke, { 0 }, false);
    row("stroke", kStroke, { 2 }, true);
    row("balanced", kColorBalance, { 0, 0, 0 }, false);
    row("a whole turn of the hue", kColorBalance, { -720, 0, 0 }, false);
    row("saturation", kColorBalance, { 0, 0, 1 }, true);
    row("fill", kFill, { 0, 0, 0 }, true);
    row("a blur without its parameter", kGaussianBlur, {}, false);
    row("no number", kGaussianBlur, { std::numeric_limits<double>::quiet_NaN() }, false);
}

void TestRendererEffects::effectsThatChangeNothingAreKnown()
{
    QFETCH(QByteArray, effect);
    QFETCH(QVector<double>, params);
    QTEST(Alters(Effect(effect.constData(), params), Time()), "expected");
    LayerEffect unknown;
    unknown.key = 999;
    QVERIFY(!Alters(unknown, Time()));
}

void TestRendererEffects::paramsFollowTheirKeysInLayerTime()
{
    LayerEffect effect = Effect(kGaussianBlur, { 0 });
    effect.params[0].InsertKey(Time{ 2, 25 }, { 0, 0, 0, 0 });
    effect.params[0].InsertKey(Time{ 6, 25 }, { 8, 0, 0, 0 });
    QVERIFY(!Alters(effect, Time{ 2, 25 }));
    QVERIFY(Alters(effect, Time{ 3, 25 }));
    Raster keyed = Dot(5, 0xff00ff00), plain = keyed;
    QVERIFY(ApplyEffect(effect, Time{ 4, 25 }, &keyed));
    QVERIFY(GaussianBlur(4, &plain));
    QCOMPARE(keyed.image, plain.image);
}

VN_TEST_MAIN(TestRendererEffects)

#include "tst_renderer_effects.moc"
