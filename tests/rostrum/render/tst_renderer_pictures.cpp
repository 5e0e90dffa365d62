// Frames held against the references in tests/data/render, which another program has made.
#include "RenderFixture.h"

#include "testing/TestMain.h"

#include <QPainter>
#include <QTemporaryDir>

using namespace rostrum;
using namespace testing;

namespace {

// The limits of a comparison: the mean over all channels, and the largest step of one channel.
constexpr double kExactMean = 0.05; // the same pixels, up to the rounding of a blend
constexpr int kExactLargest = 2;
// Both programs blend four pixels; they differ in how an edge of the drawing is softened, and the
// painter blends in steps of 1/256.
constexpr double kBlendedMean = 0.15;
constexpr int kBlendedLargest = 20;
constexpr double kBlurredMean = 0.5; // boxes instead of a bell
constexpr int kBlurredLargest = 4;

QString ExactlyDiffers(const QImage &image, const QString &reference)
{
    return Differs(image, reference, kExactMean, kExactLargest);
}

QString BlendedDiffers(const QImage &image, const QString &reference)
{
    return Differs(image, reference, kBlendedMean, kBlendedLargest);
}

} // namespace

class TestRendererPictures : public QObject
{
    Q_OBJECT

private slots:
    void aDrawingStandsWithItsAnchorAtItsPosition();
    void aMoveByPartOfAPixelBlends();
    void aTransformHasItsReference_data();
    void aTransformHasItsReference();
    void aDrawingAtAQuarterOfItsSizeShowsAllItsPixels();
    void whatLiesClearAroundADrawingChangesNothing_data();
    void whatLiesClearAroundADrawingChangesNothing();
    void opacityThinsTheDrawing();
    void theLayerOfIndex0LiesOnTop();
    void blurHasItsReference_data();
    void blurHasItsReference();
    void colorEffectsHaveTheirReference_data();
    void colorEffectsHaveTheirReference();
    void aParentCarriesItsChild_data();
    void aParentCarriesItsChild();
    void aNestedCompositionIsDrawnWithoutItsBackground();
    void aNestedCompositionFadesAsOne();
};

void TestRendererPictures::aDrawingStandsWithItsAnchorAtItsPosition()
{
    RenderFixture scene;
    const LayerId layer = scene.AddStillLayer(QStringLiteral("cel.png"));
    scene.Place(layer, QPointF(8, 6), QPointF(15, 17));
    QCOMPARE(ExactlyDiffers(scene.Frame(), QStringLiteral("ref-moved.png")), QString());
}

void TestRendererPictures::aMoveByPartOfAPixelBlends()
{
    RenderFixture scene;
    const LayerId layer = scene.AddStillLayer(QStringLiteral("cel.png"));
    scene.Place(layer, QPointF(20, 15), QPointF(48.5, 36.25));
    QCOMPARE(BlendedDiffers(scene.Frame(), QStringLiteral("ref-moved-part.png")), QString());
}

void TestRendererPictures::aTransformHasItsReference_data()
{
    QTest::addColumn<QPointF>("anchor");
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<QPointF>("scale");
    QTest::addColumn<double>("rotation");
    QTest::addColumn<QString>("reference");
    const auto row = [](const char *name, QPointF anchor, QPointF position, QPointF scale,
                         double rotation, const char *reference) {
        QTest::newRow(name) << anchor << position << scale << rotation
                            << QString::fromLatin1(reference);
    };
    const QPointF centre(20, 15), middle(48, 36), whole(100, 100);
    row("a quarter turn, clockwise", centre, middle, whole, 90, "ref-rotated-90.png");
    row("a quarter turn, after two whole ones", centre, middle, whole, 810, "ref-rotated-90.png");
    row("a turn around a point beside the middle", { 8, 6 }, { 40, 22 }, whole, 30,
        "ref-rotated-30.png");
    row("half as large again", centre, middle, { 150, 150 }, 0, "ref-scaled-150.png");
    row("wider and lower", centre, middle, { 200, 75 }, 0, "ref-scaled-200-75.png");
    row("mirrored", centre, middle, { -100, 100 }, 0, "ref-flipped.png");
    row("all at once", { 0, 30 }, { 30, 50 }, { 125, 80 }, -20, "ref-all.png");
}

void TestRendererPictures::aTransformHasItsReference()
{
    QFETCH(QPointF, anchor);
    QFETCH(QPointF, position);
    QFETCH(QPointF, scale);
    QFETCH(double, rotation);
    QFETCH(QString, reference);
    RenderFixture scene;
    const LayerId layer = scene.AddStillLayer(QStringLiteral("cel.png"));
    scene.Place(layer, anchor, position);
    scene.SetStream(layer, kScale, scale.x(), scale.y());
    scene.SetStream(layer, kRotation, rotation);
    QCOMPARE(BlendedDiffers(scene.Frame(), reference), QString());
}

void TestRendererPictures::aDrawingAtAQuarterOfItsSizeShowsAllItsPixels()
{
    RenderFixture scene;
    const LayerId layer = scene.AddStillLayer(QStringLiteral("cel-28.png"));
    scene.PutCorner(layer, 20, 10);
    scene.SetStream(layer, kScale, 25, 25);
    QCOMPARE(BlendedDiffers(scene.Frame(), QStringLiteral("ref-quarter.png")), QString());
}

void TestRendererPictures::whatLiesClearAroundADrawingChangesNothing_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("rotation");
    QTest::newRow("as it is") << QPointF(48, 36) << 100.0 << 0.0;
    QTest::newRow("moved by part of a pixel") << QPointF(48.25, 35.5) << 100.0 << 0.0;
    QTest::newRow("turned") << QPointF(48, 36) << 100.0 << 31.0;
    QTest::newRow("turned, larger") << QPointF(40, 30) << 260.0 << -17.0;
    QTest::newRow("turned, smaller") << QPointF(48, 36) << 70.0 << 200.0;
    QTest::newRow("averaged down") << QPointF(48, 36) << 37.0 << 12.0;
    QTest::newRow("averaged down twice") << QPointF(50.5, 36) << 19.0 << 0.0;
    QTest::newRow("half out of the frame") << QPointF(3, 70) << 120.0 << 45.0;
    QTest::newRow("enormous") << QPointF(48, 36) << 40000.0 << 20.0;
}

/// A drawing with two hardly visible corners is drawn whole, one without them only where it is
/// drawn.
void TestRendererPictures::whatLiesClearAroundADrawingChangesNothing()
{
    QFETCH(QPointF, position);
    QFETCH(double, scale);
    QFETCH(double, rotation);
    QImage drawing(120, 90, QImage::Format_ARGB32);
    drawing.fill(Qt::transparent);
    QPainter painter(&drawing);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 3));
    painter.setBrush(QColor(240, 150, 30));
    painter.drawEllipse(QPointF(63.5, 47), 24, 15);
    painter.end();
    const QTemporaryDir folder;
    const QString part = folder.filePath(QStringLiteral("part.png"));
    const QString whole = folder.filePath(QStringLiteral("whole.png"));
    QVERIFY(drawing.save(part));
    drawing.setPixel(0, 0, qRgba(0, 0, 0, 1));
    drawing.setPixel(119, 89, qRgba(0, 0, 0, 1));
    QVERIFY(drawing.save(whole));
    const auto frame = [&](const QString &path) {
        RenderFixture scene;
        const LayerId layer = scene.AddLayer(scene.AddStill(path));
        scene.Place(layer, QPointF(60, 45), position);
        scene.SetStream(layer, kScale, scale, scale);
        scene.SetStream(layer, kRotation, rotation);
        return scene.Frame();
    };
    const Difference difference = Compare(frame(part), frame(whole));
    QVERIFY2(difference.mean <= kExactMean && difference.largest <= kBlendedLargest,
        qPrintable(
            QStringLiteral("mean %1, largest %2").arg(difference.mean).arg(difference.largest)));
}

void TestRendererPictures::opacityThinsTheDrawing()
{
    RenderFixture scene;
    const LayerId layer = scene.AddStillLayer(QStringLiteral("cel.png"));
    scene.PutCorner(layer, 7, 11);
    scene.SetStream(layer, kOpacity, 40);
    QCOMPARE(ExactlyDiffers(scene.Frame(), QStringLiteral("ref-opacity-40.png")), QString());
}

void TestRendererPictures::theLayerOfIndex0LiesOnTop()
{
    RenderFixture scene;
    scene.PutCorner(scene.AddStillLayer(QStringLiteral("paint.png")), 30, 20);
    scene.PutCorner(scene.AddStillLayer(QStringLiteral("cel.png")), 20, 12);
    QCOMPARE(ExactlyDiffers(scene.Frame(), QStringLiteral("ref-order.png")), QString());
}

void TestRendererPictures::blurHasItsReference_data()
{
    QTest::addColumn<double>("radius");
    QTest::addColumn<QString>("reference");
    QTest::newRow("radius 3, a sampled bell") << 3.0 << QStringLiteral("ref-blur-1.5.png");
    QTest::newRow("radius 8, a sampled bell") << 8.0 << QStringLiteral("ref-blur-4.png");
    QTest::newRow("radius 20, three boxes") << 20.0 << QStringLiteral("ref-blur-10.png");
}

void TestRendererPictures::blurHasItsReference()
{
    QFETCH(double, radius);
    QFETCH(QString, reference);
    RenderFixture scene;
    const LayerId layer = scene.AddStillLayer(QStringLiteral("cel.png"));
    scene.PutCorner(layer, 28, 21);
    scene.AddEffect(layer, kGaussianBlur, { radius });
    QCOMPARE(Differs(scene.Frame(), reference, kBlurredMean, kBlurredLargest), QString());
}

void TestRendererPictures::colorEffectsHaveTheirReference_data()
{
    QTest::addColumn<QByteArray>("effect");
    QTest::addColumn<QVector<double>>("params"); // of the balance: hue, lightness, saturation
    QTest::addColumn<QString>("reference");
    const auto row = [](const char *name, const char *effect, const QVector<double> &params,
                         const char *reference) {
        QTest::newRow(name) << QByteArray(effect) << params << QString::fromLatin1(reference);
    };
    row("hue 90", kColorBalance, { 90, 0, 0 }, "ref-hue-90.png");
    row("hue 450 is hue 90", kColorBalance, { 450, 0, 0 }, "ref-hue-90.png");
    row("hue -45", kColorBalance, { -45, 0, 0 }, "ref-hue-minus-45.png");
    row("lightness -40", kColorBalance, { 0, -40, 0 }, "ref-lightness-minus-40.png");
    row("lightness 30", kColorBalance, { 0, 30, 0 }, "ref-lightness-30.png");
    row("saturation -70", kColorBalance, { 0, 0, -70 }, "ref-saturation-minus-70.png");
    row("saturation 20", kColorBalance, { 0, 0, 20 }, "ref-saturation-20.png");
    row("fill", kFill, { 10.2, 50.2, 100 }, "ref-fill.png");
}

void TestRendererPictures::colorEffectsHaveTheirReference()
{
    QFETCH(QByteArray, effect);
    QFETCH(QVector<double>, params);
    QFETCH(QString, reference);
    RenderFixture scene;
    const LayerId layer = scene.AddStillLayer(QStringLiteral("cel.png"));
    scene.PutCorner(layer, 7, 11);
    scene.AddEffect(layer, effect.constData(), params);
    QCOMPARE(ExactlyDiffers(scene.Frame(), reference), QString());
}

void TestRendererPictures::aParentCarriesItsChild_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("rotation");
    QTest::addColumn<QString>("reference");
    QTest::newRow("moved only") << QPointF(48, 36) << 100.0 << 0.0
                                << QStringLiteral("ref-parent-plain.png");
    QTest::newRow("moved, scaled, turned")
        << QPointF(50, 34) << 120.0 << 25.0 << QStringLiteral("ref-parent.png");
}

void TestRendererPictures::aParentCarriesItsChild()
{
    QFETCH(QPointF, position);
    QFETCH(double, scale);
    QFETCH(double, rotation);
    QFETCH(QString, reference);
    RenderFixture scene;
    Solid solid;
    solid.size = QSize(60, 50);
    const LayerId parent = scene.AddLayer(scene.project.AddSolid("parent", solid));
    scene.SetStream(parent, kPosition, position.x(), position.y());
    scene.SetStream(parent, kScale, scale, scale);
    scene.SetStream(parent, kRotation, rotation);
    scene.SetStream(parent, kOpacity, 0); // which is the parent's own
    const LayerId child = scene.AddStillLayer(QStringLiteral("cel.png"));
    scene.Place(child, QPointF(20, 15), QPointF(30, 25));
    scene.SetStream(child, kRotation, 90);
    QVERIFY(scene.project.SetParent(scene.composition, child, parent));
    QCOMPARE(BlendedDiffers(scene.Frame(), reference), QString());
}

namespace {

/// A scene that shows a composition of 60 by 50 with two drawings. @return the nested layer
LayerId AddNested(RenderFixture *scene)
{
    const ItemId outer = scene->composition;
    const ItemId inner = scene->AddComposition(QSize(60, 50));
    scene->project.EditComposition(inner)->background = Color{ 1, 0, 0 }; // which must not show
    scene->composition = inner;
    scene->PutCorner(scene->AddStillLayer(QStringLiteral("paint.png")), 18, 16);
    scene->PutCorner(scene->AddStillLayer(QStringLiteral("cel.png")), -5, 3);
    scene->composition = outer;
    return scene->AddLayer(inner);
}

} // namespace

void TestRendererPictures::aNestedCompositionIsDrawnWithoutItsBackground()
{
    RenderFixture scene;
    const LayerId layer = AddNested(&scene);
    scene.SetStream(layer, kPosition, 46, 37);
    scene.SetStream(layer, kRotation, -15);
    QCOMPARE(BlendedDiffers(scene.Frame(), QStringLiteral("ref-nested.png")), QString());
}

void TestRendererPictures::aNestedCompositionFadesAsOne()
{
    RenderFixture scene;
    const LayerId layer = AddNested(&scene);
    scene.SetStream(layer, kOpacity, 50);
    QCOMPARE(ExactlyDiffers(scene.Frame(), QStringLiteral("ref-nested-50.png")), QString());
}

VN_TEST_MAIN(TestRendererPictures)

#include "tst_renderer_pictures.moc"
