// What a frame shows when: bars, remapped images, blank and unreadable drawings, limits.
#include "RenderFixture.h"

#include "testing/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <limits>

using namespace rostrum;
using namespace testing;

namespace {

const QString kNothing = QStringLiteral("ref-empty.png");

QString Step(int image)
{
    return QStringLiteral("ref-step-%1.png").arg(image);
}

/// The name of the reference that a frame is, of the series' images and the empty frame.
QString Shown(const QImage &frame)
{
    for (int image = 1; image < 6; ++image) {
        if (Differs(frame, Step(image), /*mean=*/0, /*largest=*/0).isEmpty())
            return Step(image);
    }
    const bool isEmpty = Differs(frame, kNothing, /*mean=*/0, /*largest=*/0).isEmpty();
    return isEmpty ? kNothing : QStringLiteral("something else");
}

/// Image 0 of the series is transparent and looks like nothing at all.
QString Expected(int image)
{
    return image > 0 ? Step(image) : kNothing;
}

LayerId AddSteps(RenderFixture *scene)
{
    const LayerId layer
        = scene->AddLayer(scene->AddSeries(DataPath(QStringLiteral("step0001.png"))));
    scene->PutCorner(layer, 28, 21);
    return layer;
}

LayerId AddSolid(RenderFixture *scene, const QSize &size, const Color &color)
{
    Solid solid;
    solid.size = size;
    solid.color = color;
    return scene->AddLayer(scene->project.AddSolid("solid", solid));
}

constexpr Color kRed{ 1, 0, 0 };
constexpr QRgb kRedPixel = 0xffff0000;
constexpr QRgb kGround = 0xff304050;

} // namespace

using Change = void (*)(RenderFixture *, LayerId);
Q_DECLARE_METATYPE(Change)

class TestRenderer : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyCompositionShowsItsBackground();
    void withoutItsBackgroundAFrameIsTransparent();
    void aFrameOutsideTheCompositionShowsTheBackgroundAlone();
    void everyFrameOfHeldCellsShowsItsImage();
    void everyFrameOfALinearRampShowsTheImageThatTheSheetReads();
    void aBezierRampShowsTheImageThatTheSheetReads();
    void aKeyOfImage29ShowsImage29();
    void withoutRemapKeysALayerShowsItsOwnTimeAndNothingPastItsLastImage();
    void aMovedLayerStartsItsSeriesWhereItLies();
    void aLayerShowsFromItsInPointUpToItsEnd();
    void aSeriesCountsItsImagesByPlaceAcrossAGap();
    void aBlankImage0WithoutAlphaIsNothing();
    void aBlankImageElsewhereIsDrawn_data();
    void aBlankImageElsewhereIsDrawn();
    void aStillShowsAtEveryTime();
    void aNestedCompositionShowsItsOwnTime();
    void aRemappedCompositionShowsTheFrameThatTheSheetReads();
    void aNestedCompositionShowsNothingPastItsEnd();
    void camerasLightsAndTextsDrawNothing();
    void aCameraCanBeAParent();
    void keyedTransformsFollowTheTime();
    void anUnreadableImageShowsAPlaceholderAndTheRestIsDrawn();
    void aMissingImageIsToldOnceAFrame();
    void aSolidIsDrawnCrispAtWholePixels();
    void anEffectGrowsASolidBeyondItsEdges();
    void effectsRunInTheirOrder();
    void framesCopiedTogetherAreQuick();
    void largeFramesAreNotQuick();
    void framesThatTakeMoreAreNotQuick_data();
    void framesThatTakeMoreAreNotQuick();
    void theFrameBufferIsUsedAgain();
    void aHeldFrameStaysAsItIs();
    void anOpaqueDrawingOverAllHidesWhatLiesBelow();
    void aDrawingOverAllWithHolesLetsThroughWhatLiesBelow();
    void aDrawingBeyondTheFrameIsCut();
    void oddSizesAreDrawn_data();
    void oddSizesAreDrawn();
    void impossibleSizesAreRefused_data();
    void impossibleSizesAreRefused();
    void anUnknownCompositionIsRefused();
    void impossibleTransformsDrawNothing_data();
    void impossibleTransformsDrawNothing();
    void anEnormousScaleShowsTheColourOfOnePixel_data();
    void anEnormousScaleShowsTheColourOfOnePixel();
    void namesBeyondAsciiAndWithScaleMarksAreRead_data();
    void namesBeyondAsciiAndWithScaleMarksAreRead();
};

void TestRenderer::anEmptyCompositionShowsItsBackground()
{
    RenderFixture scene;
    const QImage frame = scene.Frame();
    QCOMPARE(frame.format(), QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(frame.size(), QSize(96, 72));
    QCOMPARE(Shown(frame), kNothing);
}

void TestRenderer::withoutItsBackgroundAFrameIsTransparent()
{
    RenderFixture scene;
    scene.PutCorner(AddSolid(&scene, { 10, 10 }, kRed), 50, 40);
    scene.renderer.SetBackground(false);
    const QImage frame = scene.Frame();
    QCOMPARE(frame.pixel(3, 3), 0U);
    QCOMPARE(frame.pixel(55, 45), kRedPixel);
}

void TestRenderer::aFrameOutsideTheCompositionShowsTheBackgroundAlone()
{
    RenderFixture scene;
    const LayerId layer = AddSteps(&scene);
    scene.HoldImages(layer, { { 0, 3 } });
    scene.Edit(layer)->inPoint = Time{ -10, 25 };
    scene.Edit(layer)->duration = Time{ 100, 25 };
    QCOMPARE(Shown(scene.Frame(39)), Step(3));
    QCOMPARE(Shown(scene.Frame(40)), kNothing);
    QCOMPARE(Shown(scene.Frame(-1)), kNothing);

    scene.project.EditComposition(scene.composition)->duration = Time{ 0, 25 };
    QCOMPARE(Shown(scene.Frame(0)), kNothing);
}

void TestRenderer::everyFrameOfHeldCellsShowsItsImage()
{
    RenderFixture scene;
    scene.HoldImages(AddSteps(&scene), { { 0, 1 }, { 3, 2 }, { 4, 0 }, { 6, 5 }, { 9, 6 } });
    const QVector<int> images{ 1, 1, 1, 2, 0, 0, 5, 5, 5, /*past the last image*/ 0, 0 };
    for (int frame = 0; frame < images.size(); ++frame)
        QCOMPARE(Shown(scene.Frame(frame)), Expected(images[frame]));
}

namespace {

/// The number that an exposure sheet shows for a frame: the stream sampled there, times 25, plus a
/// half, cut.
int SheetReading(const RenderFixture &scene, LayerId layer, int frame)
{
    StreamValue value{};
    const Layer *found = scene.project.FindLayer(scene.composition, layer);
    if (!scene.project.StreamValueAt(*found, kTimeRemap, Time{ frame, 25 }, &value))
        return -1;
    const double rounded = 25 * value[0] + 0.5;
    return static_cast<int>(rounded);
}

void MakeRamp(RenderFixture *scene, LayerId layer, Interpolation shape)
{
    Stream &remap = scene->Edit(layer)->timeRemap;
    remap.InsertKey(Time{ 2, 25 }, { 1 / 25.0, 0, 0, 0 });
    remap.InsertKey(Time{ 19, 25 }, { 5 / 25.0, 0, 0, 0 });
    remap.SetKeyInterpolation(0, shape, shape);
    remap.SetKeyInterpolation(1, shape, shape);
}

} // namespace

void TestRenderer::everyFrameOfALinearRampShowsTheImageThatTheSheetReads()
{
    RenderFixture scene;
    const LayerId layer = AddSteps(&scene);
    MakeRamp(&scene, layer, Interpolation::Linear);
    // Four images in 17 frames, each changing half-way to the next.
    const QVector<int> images{ 1, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5 };
    for (int frame = 0; frame < images.size(); ++frame) {
        QCOMPARE(SheetReading(scene, layer, frame), images[frame]);
        QCOMPARE(Shown(scene.Frame(frame)), Step(images[frame]));
    }
}

void TestRenderer::aBezierRampShowsTheImageThatTheSheetReads()
{
    RenderFixture scene;
    const LayerId layer = AddSteps(&scene);
    MakeRamp(&scene, layer, Interpolation::Bezier);
    QCOMPARE(Shown(scene.Frame(5)), Step(1)); // where the straight ramp has come to 2
    QCOMPARE(Shown(scene.Frame(16)), Step(5)); // where it is at 4
    for (int frame = 0; frame < 25; ++frame)
        QCOMPARE(Shown(scene.Frame(frame)), Expected(SheetReading(scene, layer, frame)));
}

void TestRenderer::aKeyOfImage29ShowsImage29()
{
    QTemporaryDir folder;
    for (int number = 0; number < 31; ++number) {
        QImage image(2, 2, QImage::Format_RGB32);
        image.fill(qRgb(number + 1, 0, 0));
        QVERIFY(image.save(folder.filePath(QStringLiteral("run%1.png").arg(number))));
    }
    RenderFixture scene;
    const LayerId layer
        = scene.AddLayer(scene.AddSeries(folder.filePath(QStringLiteral("run0.png"))));
    scene.PutCorner(layer, 10, 10);
    for (int image = 0; image < 31; ++image)
        scene.HoldImages(layer, { { image, image } });
    for (int image = 0; image < 31; ++image)
        QCOMPARE(qRed(scene.Frame(image).pixel(10, 10)), image + 1);
}

void TestRenderer::withoutRemapKeysALayerShowsItsOwnTimeAndNothingPastItsLastImage()
{
    RenderFixture scene;
    AddSteps(&scene);
    for (int frame = 0; frame < 40; ++frame)
        QCOMPARE(Shown(scene.Frame(frame)), Expected(frame < 6 ? frame : 0));
}

void TestRenderer::aMovedLayerStartsItsSeriesWhereItLies()
{
    RenderFixture scene;
    const LayerId layer = AddSteps(&scene);
    scene.Edit(layer)->offset = Time{ 7, 25 };
    QCOMPARE(Shown(scene.Frame(6)), kNothing); // before its first image
    QCOMPARE(Shown(scene.Frame(7 + 2)), Step(2));
    QCOMPARE(Shown(scene.Frame(7 + 5)), Step(5));
    QCOMPARE(Shown(scene.Frame(7 + 6)), kNothing);

    scene.HoldImages(layer, { { 4, 3 } }); // in layer time
    QCOMPARE(Shown(scene.Frame(20)), Step(3));
}

void TestRenderer::aLayerShowsFromItsInPointUpToItsEnd()
{
    RenderFixture scene;
    const LayerId layer = AddSteps(&scene);
    scene.HoldImages(layer, { { 0, 4 } });
    scene.Edit(layer)->inPoint = Time{ 5, 25 };
    scene.Edit(layer)->duration = Time{ 3, 25 };
    QCOMPARE(Shown(scene.Frame(4)), kNothing);
    QCOMPARE(Shown(scene.Frame(5)), Step(4));
    QCOMPARE(Shown(scene.Frame(7)), Step(4));
    QCOMPARE(Shown(scene.Frame(8)), kNothing);

    scene.Edit(layer)->duration = Time{ 0, 25 };
    QCOMPARE(Shown(scene.Frame(5)), kNothing);
}

void TestRenderer::aSeriesCountsItsImagesByPlaceAcrossAGap()
{
    RenderFixture scene; // the files are 0, 1, 2, 3, 5, 6
    scene.HoldImages(AddSteps(&scene), { { 0, 4 } });
    const QImage frame = scene.Frame();
    QCOMPARE(Shown(frame), Step(4));
    QCOMPARE(frame.pixel(28 + 15, 21 + 15), qRgb(0xe0, 0xc0, 0x20)); // the file of number 5
}

void TestRenderer::aBlankImage0WithoutAlphaIsNothing()
{
    RenderFixture scene;
    const ItemId series = scene.AddSeries(DataPath(QStringLiteral("solid0001.png")));
    const LayerId layer = scene.AddLayer(series);
    scene.PutCorner(layer, 30, 30);
    QCOMPARE(Shown(scene.Frame(0)), kNothing);
    QCOMPARE(scene.Frame(1).pixel(35, 35), qRgb(0xa0, 0x50, 0x10));
    scene.HoldImages(layer, { { 0, 0 } });
    QCOMPARE(Shown(scene.Frame(17)), kNothing);
}

void TestRenderer::aBlankImageElsewhereIsDrawn_data()
{
    QTest::addColumn<bool>("series");
    QTest::addColumn<int>("black"); // the number of the black image in the series
    QTest::addColumn<int>("format");
    QTest::addColumn<QRgb>("shown");
    const QRgb black = 0xff000000;
    QTest::newRow("image 0, no alpha") << true << 0 << int(QImage::Format_RGB32) << kGround;
    QTest::newRow("image 1, no alpha") << true << 1 << int(QImage::Format_RGB32) << black;
    QTest::newRow("a still") << false << 0 << int(QImage::Format_RGB32) << black;
    QTest::newRow("image 0, opaque black with alpha")
        << true << 0 << int(QImage::Format_ARGB32) << black;
    QTest::newRow("image 0, a palette's first colour")
        << true << 0 << int(QImage::Format_Indexed8) << kGround;
}

void TestRenderer::aBlankImageElsewhereIsDrawn()
{
    QFETCH(bool, series);
    QFETCH(int, black);
    QFETCH(int, format);
    QTemporaryDir folder;
    for (int number = 0; number < 2; ++number) {
        QImage image(16, 12, QImage::Format_RGB32);
        image.fill(number == black ? Qt::black : Qt::white);
        image = image.convertToFormat(QImage::Format(format));
        if (format == QImage::Format_Indexed8) {
            image.setColorTable({ qRgb(250, 240, 230), qRgb(0, 0, 0) });
            image.fill(0U);
        }
        if (format == QImage::Format_ARGB32 && number != black)
            image.setPixel(0, 0, qRgba(0, 0, 0, 0));
        QVERIFY(image.save(folder.filePath(QStringLiteral("a%1.png").arg(number))));
    }
    RenderFixture scene;
    const QString first = folder.filePath(QStringLiteral("a%1.png").arg(black));
    const LayerId layer = scene.AddLayer(series ? scene.AddSeries(first) : scene.AddStill(first));
    scene.PutCorner(layer, 10, 10);
    QTEST(scene.Frame(series ? black : 0).pixel(15, 15), "shown");
}

void TestRenderer::aStillShowsAtEveryTime()
{
    RenderFixture scene;
    const LayerId layer = scene.AddStillLayer(QStringLiteral("step0002.png"));
    scene.PutCorner(layer, 28, 21);
    scene.Edit(layer)->offset = Time{ 12, 25 };
    QCOMPARE(Shown(scene.Frame(0)), Step(2));
    QCOMPARE(Shown(scene.Frame(39)), Step(2));
}

namespace {

/// A nested composition of the scene's own size over the series. @return its layer
LayerId AddNestedSteps(RenderFixture *scene, Composition **nested)
{
    const ItemId outer = scene->composition;
    scene->composition = scene->AddComposition(QSize(96, 72));
    const LayerId steps = AddSteps(scene);
    scene->HoldImages(steps, { { 0, 1 }, { 2, 2 }, { 3, 4 }, { 8, 5 } });
    const ItemId inner = scene->composition;
    scene->composition = outer;
    const LayerId layer = scene->AddLayer(inner);
    *nested = scene->project.EditComposition(inner);
    (*nested)->background = kRed; // which must not show
    return layer;
}

} // namespace

void TestRenderer::aNestedCompositionShowsItsOwnTime()
{
    RenderFixture scene;
    Composition *nested = nullptr;
    const LayerId layer = AddNestedSteps(&scene, &nested);
    QCOMPARE(Shown(scene.Frame(2)), Step(2));
    scene.Edit(layer)->offset = Time{ 6, 25 };
    QCOMPARE(Shown(scene.Frame(5)), kNothing); // before it begins
    QCOMPARE(Shown(scene.Frame(6 + 2)), Step(2));
    QCOMPARE(Shown(scene.Frame(6 + 3)), Step(4));
}

void TestRenderer::aRemappedCompositionShowsTheFrameThatTheSheetReads()
{
    RenderFixture scene;
    Composition *nested = nullptr;
    const LayerId layer = AddNestedSteps(&scene, &nested);
    scene.HoldImages(layer, { { 0, 8 }, { 4, 2 }, { 5, 0 }, { 6, 40 } });
    QCOMPARE(Shown(scene.Frame(3)), Step(5));
    QCOMPARE(Shown(scene.Frame(4)), Step(2));
    QCOMPARE(Shown(scene.Frame(5)), Step(1));
    QCOMPARE(Shown(scene.Frame(6)), kNothing); // it has the frames 0 to 39
}

void TestRenderer::aNestedCompositionShowsNothingPastItsEnd()
{
    RenderFixture scene;
    Composition *nested = nullptr;
    AddNestedSteps(&scene, &nested);
    nested->duration = Time{ 7, 25 };
    QCOMPARE(Shown(scene.Frame(6)), Step(4));
    QCOMPARE(Shown(scene.Frame(7)), kNothing);
}

void TestRenderer::camerasLightsAndTextsDrawNothing()
{
    RenderFixture scene;
    for (const LayerKind kind : { LayerKind::Camera, LayerKind::Light, LayerKind::Text })
        QVERIFY(scene.project.AddLayerWithoutSource(kind, "none", scene.composition) != 0);
    QCOMPARE(Shown(scene.Frame()), kNothing);
}

void TestRenderer::aCameraCanBeAParent()
{
    RenderFixture scene;
    const LayerId camera
        = scene.project.AddLayerWithoutSource(LayerKind::Camera, "camera", scene.composition);
    scene.SetStream(camera, kPosition, 20, 11);
    const LayerId layer = AddSteps(&scene);
    scene.PutCorner(layer, 8, 10);
    QVERIFY(scene.project.SetParent(scene.composition, layer, camera));
    QCOMPARE(Shown(scene.Frame(3)), Step(3));
}

void TestRenderer::keyedTransformsFollowTheTime()
{
    RenderFixture scene;
    const LayerId layer = scene.AddStillLayer(QStringLiteral("step0002.png"));
    scene.PutCorner(layer, 0, 0);
    scene.Edit(layer)->offset = Time{ 5, 25 };
    Stream &position = scene.Edit(layer)->position;
    position.InsertKey(Time{ 0, 25 }, { 20, 25, 0, 0 });
    position.InsertKey(Time{ 4, 25 }, { 36, 17, 0, 0 });
    Stream &opacity = scene.Edit(layer)->opacity;
    opacity.InsertKey(Time{ 3, 25 }, { 100, 0, 0, 0 });
    opacity.InsertKey(Time{ 4, 25 }, { 0, 0, 0, 0 });
    QCOMPARE(Shown(scene.Frame(5 + 2)), Step(2));
    QCOMPARE(scene.Frame(5).pixel(20 + 10, 25 + 10), qRgb(0x20, 0xc0, 0x40));
    QCOMPARE(Shown(scene.Frame(5 + 4)), kNothing);
}

void TestRenderer::anUnreadableImageShowsAPlaceholderAndTheRestIsDrawn()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("broken.png"));
    QVERIFY(QFile::copy(DataPath(QStringLiteral("paint.png")), path));
    RenderFixture scene;
    const LayerId broken = scene.AddLayer(scene.AddStill(path));
    scene.PutCorner(broken, 50, 5);
    scene.AddEffect(broken, kFill, {}); // which must not hide that it is no drawing
    const LayerId layer = AddSteps(&scene);
    scene.HoldImages(layer, { { 0, 2 } });
    QFile file(path);
    QVERIFY(file.resize(100)); // the header alone is left

    const QImage frame = scene.Frame();

    QCOMPARE(frame.pixel(28 + 8, 21 + 12), qRgb(0x20, 0xc0, 0x40));
    const QImage placeholder = frame.copy(50, 5, 40, 30);
    QCOMPARE(placeholder.pixel(10, 2), qRgb(255, 255, 255)); // the checker
    QCOMPARE(placeholder.pixel(18, 2), qRgb(160, 160, 160));
    QVERIFY(qRed(placeholder.pixel(20, 15)) > 200 && qGreen(placeholder.pixel(20, 15)) < 60);
    QCOMPARE(frame.pixel(49, 5), kGround);
    QCOMPARE(frame.pixel(90, 5), kGround); // of the footage's size
    QCOMPARE(scene.renderer.Messages().size(), 1);
    const QString message = scene.renderer.Messages().first();
    QVERIFY2(message.contains(path), qPrintable(message));
}

void TestRenderer::aMissingImageIsToldOnceAFrame()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("gone.png"));
    QVERIFY(QFile::copy(DataPath(QStringLiteral("cel.png")), path));
    RenderFixture scene;
    const ItemId still = scene.AddStill(path);
    scene.AddLayer(still);
    scene.AddLayer(still);
    QVERIFY(QFile::remove(path));
    const QStringList expected{
        QStringLiteral("The image \"%1\" cannot be read: there is no such file").arg(path)
    };
    for (int frame = 0; frame < 3; ++frame) {
        scene.Frame(frame);
        QCOMPARE(scene.renderer.Messages(), expected);
    }
    QVERIFY(QFile::copy(DataPath(QStringLiteral("cel.png")), path)); // it comes back
    scene.Frame();
    QCOMPARE(scene.renderer.Messages(), QStringList());
}

void TestRenderer::aSolidIsDrawnCrispAtWholePixels()
{
    RenderFixture scene;
    const LayerId layer = AddSolid(&scene, { 7, 5 }, { 1, 0.5, 2 }); // 2 counts as full
    scene.PutCorner(layer, 11, 13);
    QImage expected(96, 72, QImage::Format_ARGB32_Premultiplied);
    expected.fill(kGround);
    for (int y = 13; y < 18; ++y) {
        for (int x = 11; x < 18; ++x)
            expected.setPixel(x, y, qRgb(255, 128, 255));
    }
    QCOMPARE(Compare(scene.Frame(), expected).largest, 0);
}

void TestRenderer::anEffectGrowsASolidBeyondItsEdges()
{
    RenderFixture scene;
    const LayerId layer = AddSolid(&scene, { 20, 10 }, kRed);
    scene.PutCorner(layer, 30, 30);
    scene.AddEffect(layer, kGaussianBlur, { 6 });
    const QImage frame = scene.Frame();
    QVERIFY(qRed(frame.pixel(28, 35)) > qRed(kGround)); // over the edge
    QCOMPARE(frame.pixel(40, 35), frame.pixel(40, 34)); // symmetric
    QCOMPARE(frame.pixel(5, 35), kGround);
}

void TestRenderer::effectsRunInTheirOrder()
{
    RenderFixture fillFirst;
    LayerId layer = AddSolid(&fillFirst, { 20, 10 }, { 0, 1, 0 });
    fillFirst.PutCorner(layer, 30, 30);
    fillFirst.AddEffect(layer, kFill, { 100, 0, 0 });
    fillFirst.AddEffect(layer, kColorBalance, { 120, 0, 0 });
    QCOMPARE(fillFirst.Frame().pixel(35, 35), qRgb(0, 255, 0));

    RenderFixture fillLast;
    layer = AddSolid(&fillLast, { 20, 10 }, { 0, 1, 0 });
    fillLast.PutCorner(layer, 30, 30);
    fillLast.AddEffect(layer, kColorBalance, { 120, 0, 0 });
    fillLast.AddEffect(layer, kFill, { 100, 0, 0 });
    QCOMPARE(fillLast.Frame().pixel(35, 35), kRedPixel);
}

void TestRenderer::framesCopiedTogetherAreQuick()
{
    RenderFixture scene;
    scene.Frame();
    QVERIFY(scene.renderer.IsQuick()); // a background alone
    AddSteps(&scene);
    scene.PutCorner(AddSolid(&scene, { 10, 10 }, kRed), 50, 40);
    Composition *nested = nullptr;
    AddNestedSteps(&scene, &nested);
    scene.Frame();
    QVERIFY(!scene.renderer.IsQuick()); // a drawing was read
    scene.Frame();
    QVERIFY(scene.renderer.IsQuick());
    QImage after;
    QVERIFY(scene.renderer.Render(scene.project, scene.composition, 1000, &after));
    QVERIFY(scene.renderer.IsQuick()); // past the end
}

void TestRenderer::largeFramesAreNotQuick()
{
    RenderFixture scene;
    constexpr int side = 4096;
    static_assert(side * side == Renderer::kMostQuickPixels);
    scene.composition = scene.AddComposition(QSize(side, side));
    scene.Frame();
    QVERIFY(scene.renderer.IsQuick());
    scene.PutCorner(AddSolid(&scene, { 1, 1 }, kRed), 10, 10);
    scene.Frame();
    QVERIFY(!scene.renderer.IsQuick());
}

void TestRenderer::framesThatTakeMoreAreNotQuick_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("turned") << Change([](RenderFixture *scene, LayerId layer) {
        scene->Edit(layer)->rotation.SetConstant({ 1, 0, 0, 0 });
    });
    QTest::newRow("scaled") << Change([](RenderFixture *scene, LayerId layer) {
        scene->Edit(layer)->scale.SetConstant({ 101, 100, 100, 0 });
    });
    QTest::newRow("by half a pixel")
        << Change([](RenderFixture *scene, LayerId layer) { scene->PutCorner(layer, 10.5, 10); });
    QTest::newRow("blurred") << Change(
        [](RenderFixture *scene, LayerId layer) { scene->AddEffect(layer, kGaussianBlur, { 3 }); });
}

void TestRenderer::framesThatTakeMoreAreNotQuick()
{
    QFETCH(Change, change);
    RenderFixture scene;
    const LayerId layer = AddSteps(&scene);
    scene.Frame(1); // reads the drawing
    scene.Frame(1);
    QVERIFY(scene.renderer.IsQuick());
    change(&scene, layer);
    scene.Frame(1);
    QVERIFY(!scene.renderer.IsQuick());
}

void TestRenderer::theFrameBufferIsUsedAgain()
{
    RenderFixture scene;
    scene.HoldImages(AddSteps(&scene), { { 0, 1 }, { 1, 2 } });
    QImage image;
    QVERIFY(scene.renderer.Render(scene.project, scene.composition, 0, &image));
    const uchar *const pixels = image.constBits();
    QVERIFY(scene.renderer.Render(scene.project, scene.composition, 1, &image));
    QCOMPARE(image.constBits(), pixels);
    QCOMPARE(Shown(image), Step(2));
}

void TestRenderer::aHeldFrameStaysAsItIs()
{
    RenderFixture scene;
    scene.HoldImages(AddSteps(&scene), { { 0, 1 }, { 1, 2 } });
    QImage image;
    QVERIFY(scene.renderer.Render(scene.project, scene.composition, 0, &image));
    const QImage held = image;
    QVERIFY(scene.renderer.Render(scene.project, scene.composition, 1, &image));
    QCOMPARE(Shown(held), Step(1));
    QCOMPARE(Shown(image), Step(2));
}

void TestRenderer::anOpaqueDrawingOverAllHidesWhatLiesBelow()
{
    QTemporaryDir folder;
    QImage paper(120, 90, QImage::Format_ARGB32); // opaque, though it could be transparent
    paper.fill(qRgb(1, 2, 3));
    QVERIFY(paper.save(folder.filePath(QStringLiteral("paper.png"))));
    RenderFixture scene;
    AddSteps(&scene);
    const int below = scene.cache.Readings();
    const LayerId layer
        = scene.AddLayer(scene.AddStill(folder.filePath(QStringLiteral("paper.png"))));
    scene.PutCorner(layer, -4, -7);
    const QImage frame = scene.Frame(3);
    QCOMPARE(frame.pixel(0, 0), qRgb(1, 2, 3));
    QCOMPARE(frame.pixel(40, 33), qRgb(1, 2, 3));
    QCOMPARE(scene.cache.Readings(), below + 1); // the layer below was not even read

    scene.SetStream(layer, kOpacity, 50);
    QVERIFY(scene.Frame(3).pixel(40, 33) != qRgb(1, 2, 3));
    QCOMPARE(scene.cache.Readings(), below + 2);
}

void TestRenderer::aDrawingOverAllWithHolesLetsThroughWhatLiesBelow()
{
    QTemporaryDir folder;
    QImage frame(96, 72, QImage::Format_ARGB32);
    frame.fill(qRgb(1, 2, 3));
    for (int y = 20; y < 50; ++y) {
        for (int x = 28; x < 68; ++x)
            frame.setPixel(x, y, 0);
    }
    const QString path = folder.filePath(QStringLiteral("frame.png"));
    QVERIFY(frame.save(path));
    RenderFixture scene;
    scene.HoldImages(AddSteps(&scene), { { 0, 2 } });
    const LayerId layer = scene.AddLayer(scene.AddStill(path));
    scene.PutCorner(layer, 0, 0);
    for (const qint32 number : { 0, 1, 2 }) { // the pixels of the frame before must not stay
        QCOMPARE(scene.Frame(number).pixel(0, 0), qRgb(1, 2, 3));
        QCOMPARE(scene.Frame(number).pixel(28 + 8, 21 + 12), qRgb(0x20, 0xc0, 0x40));
        QCOMPARE(scene.Frame(number).pixel(60, 24), kGround);
    }
}

void TestRenderer::aDrawingBeyondTheFrameIsCut()
{
    RenderFixture scene;
    const LayerId layer = AddSolid(&scene, { 200, 300 }, kRed);
    scene.PutCorner(layer, -50, 70);
    const QImage frame = scene.Frame();
    QCOMPARE(frame.pixel(0, 69), kGround);
    QCOMPARE(frame.pixel(0, 70), kRedPixel);
    QCOMPARE(frame.pixel(95, 71), kRedPixel);
    scene.PutCorner(layer, 96, 0);
    QCOMPARE(Shown(scene.Frame()), kNothing);
}

void TestRenderer::oddSizesAreDrawn_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("one pixel") << QSize(1, 1);
    QTest::newRow("a line") << QSize(1, 301);
    QTest::newRow("primes") << QSize(61, 37);
    QTest::newRow("the longest side") << QSize(30000, 1);
}

void TestRenderer::oddSizesAreDrawn()
{
    QFETCH(QSize, size);
    RenderFixture scene;
    scene.composition = scene.AddComposition(size);
    AddSolid(&scene, size, kRed); // centred, as a new layer is
    const QImage frame = scene.Frame();
    QCOMPARE(frame.size(), size);
    QCOMPARE(frame.pixel(0, 0), kRedPixel);
    QCOMPARE(frame.pixel(size.width() - 1, size.height() - 1), kRedPixel);
}

void TestRenderer::impossibleSizesAreRefused_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("nothing") << QSize(0, 0);
    QTest::newRow("no height") << QSize(10, 0);
    QTest::newRow("below 0") << QSize(-4, 5);
    QTest::newRow("one pixel too wide") << QSize(30001, 1);
    QTest::newRow("sides allowed, area not") << QSize(30000, 30000);
    QTest::newRow("beyond all") << QSize(2147483647, 2147483647);
}

void TestRenderer::impossibleSizesAreRefused()
{
    QFETCH(QSize, size);
    RenderFixture scene;
    const ItemId outer = scene.composition;
    const ItemId refused = scene.AddComposition(size);
    QImage image(3, 3, QImage::Format_ARGB32_Premultiplied);
    QVERIFY(!scene.renderer.Render(scene.project, refused, 0, &image));
    QVERIFY(image.isNull());
    QCOMPARE(scene.renderer.Messages(),
        QStringList{ QStringLiteral("The composition \"scene\" of %1 by %2 pixels cannot be drawn")
                         .arg(size.width())
                         .arg(size.height()) });

    // Inside another composition, the rest is drawn.
    scene.composition = outer;
    scene.PutCorner(scene.AddStillLayer(QStringLiteral("step0002.png")), 28, 21);
    QVERIFY(scene.AddLayer(refused) != 0);
    QCOMPARE(Shown(scene.Frame()), Step(2));
    QCOMPARE(scene.renderer.Messages().size(), 1);
}

void TestRenderer::anUnknownCompositionIsRefused()
{
    RenderFixture scene;
    QImage image;
    const ItemId still = scene.AddStill(DataPath(QStringLiteral("cel.png")));
    for (const ItemId item : { ItemId(0), ItemId(999), still }) {
        QVERIFY(!scene.renderer.Render(scene.project, item, 0, &image));
        QVERIFY(image.isNull());
        QCOMPARE(scene.renderer.Messages().size(), 1);
    }
}

void TestRenderer::impossibleTransformsDrawNothing_data()
{
    QTest::addColumn<int>("stream");
    QTest::addColumn<double>("value");
    const double infinite = std::numeric_limits<double>::infinity();
    const double noNumber = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("no width") << int(kScale) << 0.0;
    QTest::newRow("infinite scale") << int(kScale) << infinite;
    QTest::newRow("infinite position") << int(kPosition) << infinite;
    QTest::newRow("far away") << int(kPosition) << 1e12;
    QTest::newRow("far away on the other side") << int(kPosition) << -1e12;
    QTest::newRow("a position that is no number") << int(kPosition) << noNumber;
    QTest::newRow("an angle that is no number") << int(kRotation) << noNumber;
    QTest::newRow("an opacity that is no number") << int(kOpacity) << noNumber;
    QTest::newRow("opacity 0") << int(kOpacity) << 0.0;
    QTest::newRow("opacity below 0") << int(kOpacity) << -50.0;
}

void TestRenderer::impossibleTransformsDrawNothing()
{
    QFETCH(int, stream);
    QFETCH(double, value);
    for (const bool solid : { false, true }) {
        RenderFixture scene;
        const LayerId layer = solid ? AddSolid(&scene, { 40, 30 }, kRed)
                                    : scene.AddStillLayer(QStringLiteral("paint.png"));
        scene.SetStream(layer, stream, value, 50);
        QCOMPARE(Shown(scene.Frame()), kNothing);
    }
}

void TestRenderer::anEnormousScaleShowsTheColourOfOnePixel_data()
{
    QTest::addColumn<double>("percent");
    QTest::addColumn<double>("rotation");
    QTest::newRow("a hundred times") << 1e4 << 0.0;
    QTest::newRow("a hundred times, turned") << 1e4 << 33.0;
    QTest::newRow("a thousand times, turned") << 1e5 << 33.0;
    QTest::newRow("a million times") << 1e8 << 0.0;
}

void TestRenderer::anEnormousScaleShowsTheColourOfOnePixel()
{
    QFETCH(double, percent);
    QFETCH(double, rotation);
    for (const bool solid : { false, true }) {
        RenderFixture scene;
        const LayerId layer = solid ? AddSolid(&scene, { 40, 30 }, { 1, 1, 1 })
                                    : scene.AddStillLayer(QStringLiteral("paint.png"));
        scene.SetStream(layer, kAnchorPoint, 6.5, 12.5); // in its white part
        scene.SetStream(layer, kScale, percent, percent);
        scene.SetStream(layer, kRotation, rotation);
        const QImage frame = scene.Frame();
        QCOMPARE(frame.pixel(48, 36), qRgb(255, 255, 255));
        QCOMPARE(frame.pixel(0, 0), qRgb(255, 255, 255));
        QCOMPARE(frame.pixel(95, 71), qRgb(255, 255, 255));
    }
}

void TestRenderer::namesBeyondAsciiAndWithScaleMarksAreRead_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("accents") << QStringLiteral("décor été.png");
    QTest::newRow("kana") << QStringLiteral("動画.png");
    QTest::newRow("blanks and signs") << QStringLiteral(" a #%25 'b'.png");
    QTest::newRow("a scale mark") << QStringLiteral("cel@2x.png");
}

void TestRenderer::namesBeyondAsciiAndWithScaleMarksAreRead()
{
    QFETCH(QString, name);
    QTemporaryDir folder;
    const QString path = folder.filePath(name);
    QVERIFY(QFile::copy(DataPath(QStringLiteral("step0003.png")), path));
    RenderFixture scene;
    scene.PutCorner(scene.AddLayer(scene.AddStill(path)), 28, 21);
    QCOMPARE(Shown(scene.Frame()), Step(3));
    QCOMPARE(scene.renderer.Messages(), QStringList());
}

VN_TEST_MAIN(TestRenderer)

#include "tst_renderer.moc"
