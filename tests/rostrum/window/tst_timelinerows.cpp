// Where the rows of the timeline lie, and where its frames.
#include "testhost/HostTestMain.h"
#include "testhost/SheetFixture.h"
#include "window/ItemText.h"
#include "window/TimeScale.h"
#include "window/TimelineRows.h"

using namespace rostrum;
using testing::SheetFixture;

namespace {

constexpr int kHigh = TimelineRows::kRowHeight;

QString Names(const TimelineRows &rows)
{
    QStringList names;
    for (int i = 0; i < rows.Count(); ++i)
        names << (rows.At(i).isLayer ? QString::number(rows.At(i).index) : rows.At(i).stream.name);
    return names.join(QLatin1Char('|'));
}

} // namespace

class TestTimelineRows : public QObject
{
    Q_OBJECT

private slots:
    void unfoldedLayerShowsItsStreams();
    void effectsSpeakTheLanguageOfTheHost();
    void noCompositionHasNoRows();
    void placesFindTheirRows();
    void dropsFindTheirGap();
    void nameIsThatOfTheSourceWhereTheLayerHasNone();

    void framesFindTheirPixels();
    void zoomKeepsTheFrameUnderTheHand();
    void zoomHasBounds();
    void labelsHaveRoom_data();
    void labelsHaveRoom();
};

void TestTimelineRows::unfoldedLayerShowsItsStreams()
{
    SheetFixture sheet;
    const LayerId camera = sheet.AddCamera("cam");
    TimelineRows rows;
    rows.Rebuild(sheet.host.GetProject(), sheet.composition, { sheet.layer, camera, 999 },
        EffectLanguage::French);
    QCOMPARE(Names(rows),
        QStringLiteral(
            "0|Anchor point|Position|Scale|Rotation|Opacity|1|Image|Anchor point|Position|"
            "Scale|Rotation|Opacity"));
    QCOMPARE(rows.RowOf(sheet.layer), 6);
    QCOMPARE(rows.RowOf(sheet.layer, { kTimeRemap }), 7);
    QCOMPARE(rows.RowOf(camera, { kTimeRemap }), -1);
    QCOMPARE(rows.RowOf(999), -1);
}

void TestTimelineRows::effectsSpeakTheLanguageOfTheHost()
{
    SheetFixture sheet;
    Project project = sheet.host.GetProject();
    const EffectId effect = project.ApplyEffect(
        sheet.composition, sheet.layer, FindEffect(QByteArray(kGaussianBlur))->key);
    TimelineRows rows;
    rows.Rebuild(project, sheet.composition, { sheet.layer }, EffectLanguage::French);
    QVERIFY(Names(rows).endsWith(QStringLiteral("Flou gaussien: Radius")));
    rows.Rebuild(project, sheet.composition, { sheet.layer }, EffectLanguage::English);
    QVERIFY(Names(rows).endsWith(QStringLiteral("Gaussian Blur: Radius")));
    QCOMPARE(rows.At(rows.Count() - 1).stream.id.effect, effect);
}

void TestTimelineRows::noCompositionHasNoRows()
{
    SheetFixture sheet;
    TimelineRows rows;
    for (const ItemId item : { sheet.composition, sheet.footage, 0, 4711 }) {
        rows.Rebuild(sheet.host.GetProject(), item, {}, EffectLanguage::French);
        QCOMPARE(rows.Count(), item == sheet.composition ? 1 : 0);
    }
    QCOMPARE(rows.RowAt(0), -1);
    QCOMPARE(rows.GapAt(50), 0);
    QCOMPARE(rows.TopOfGap(0), 0);
}

void TestTimelineRows::placesFindTheirRows()
{
    SheetFixture sheet;
    sheet.AddSolid("on top");
    TimelineRows rows;
    rows.Rebuild(sheet.host.GetProject(), sheet.composition, {}, EffectLanguage::French);
    QCOMPARE(rows.RowAt(-1), -1);
    QCOMPARE(rows.RowAt(0), 0);
    QCOMPARE(rows.RowAt(kHigh - 1), 0);
    QCOMPARE(rows.RowAt(kHigh), 1);
    QCOMPARE(rows.RowAt(2 * kHigh), -1);
    QCOMPARE(rows.Height(), 2 * kHigh);
}

void TestTimelineRows::dropsFindTheirGap()
{
    SheetFixture sheet;
    const LayerId top = sheet.AddCamera("on top");
    TimelineRows rows;
    rows.Rebuild(sheet.host.GetProject(), sheet.composition, { top }, EffectLanguage::French);
    QCOMPARE(rows.GapAt(-9), 0);
    QCOMPARE(rows.GapAt(kHigh / 2), 1); // below the middle of the first layer, above its streams
    QCOMPARE(rows.TopOfGap(1), 6 * kHigh);
    QCOMPARE(rows.GapAt(6 * kHigh + kHigh / 2), 2);
    QCOMPARE(rows.GapAt(999), 2);
    QCOMPARE(rows.TopOfGap(2), 7 * kHigh);
}

void TestTimelineRows::nameIsThatOfTheSourceWhereTheLayerHasNone()
{
    SheetFixture sheet;
    Project project = sheet.host.GetProject();
    const auto title
        = [&] { return LayerText(project, *project.FindLayer(sheet.composition, sheet.layer)); };
    QCOMPARE(title(), QStringLiteral("walk[0000-0039].png"));
    project.EditLayer(sheet.composition, sheet.layer)->name = "\xC3\xA9t\xC3\xA9";
    QCOMPARE(title(), QStringLiteral("\u00e9t\u00e9"));
    const LayerId light = project.AddLayerWithoutSource(LayerKind::Light, "", sheet.composition);
    QCOMPARE(
        LayerText(project, *project.FindLayer(sheet.composition, light)), QStringLiteral("Light"));
}

void TestTimelineRows::framesFindTheirPixels()
{
    TimeScale scale;
    scale.ZoomAt(0, 10 / scale.PixelsPerFrame());
    scale.SetScroll(35);
    QCOMPARE(scale.LeftOf(7), 35.0);
    QCOMPARE(scale.MiddleOf(7), 40.0);
    QCOMPARE(scale.FrameAt(35), 7);
    QCOMPARE(scale.FrameAt(44), 7);
    QCOMPARE(scale.FrameAt(-36), -1);
    QCOMPARE(scale.EdgeAt(39), 7);
    QCOMPARE(scale.EdgeAt(41), 8);
    QCOMPARE(FramesOf(Time{ 1, 50 }, Rate()), 0.5);
}

void TestTimelineRows::zoomKeepsTheFrameUnderTheHand()
{
    TimeScale scale;
    scale.SetScroll(127);
    const int frame = scale.FrameAt(77);
    for (const double factor : { 2.0, 0.1, 1.7, 3.3 }) {
        scale.ZoomAt(77, factor);
        QCOMPARE(scale.FrameAt(77), frame);
    }
}

void TestTimelineRows::zoomHasBounds()
{
    TimeScale scale;
    scale.ZoomAt(0, 1e9);
    QCOMPARE(scale.PixelsPerFrame(), TimeScale::kMost);
    scale.ZoomAt(0, 1e-9);
    QCOMPARE(scale.PixelsPerFrame(), TimeScale::kLeast);
    scale.Fit(0, 100); // no frames
    QCOMPARE(scale.PixelsPerFrame(), TimeScale::kMost);
    scale.Fit(200, 100);
    QCOMPARE(scale.PixelsPerFrame(), 0.5);
    QCOMPARE(scale.FrameAt(1e300), 2000000000);
}

void TestTimelineRows::labelsHaveRoom_data()
{
    QTest::addColumn<double>("pixels");
    QTest::addColumn<int>("step");
    QTest::newRow("each frame") << 50.0 << 1;
    QTest::newRow("every fifth") << 8.0 << 5;
    QTest::newRow("every second") << 2.0 << 25;
    QTest::newRow("every minute") << 0.03 << 25 * 60;
}

void TestTimelineRows::labelsHaveRoom()
{
    QFETCH(double, pixels);
    TimeScale scale;
    scale.ZoomAt(0, pixels / scale.PixelsPerFrame());
    QTEST(scale.LabelStep(Rate(), /*labelWidth=*/40), "step");
}

VN_HOST_TEST_MAIN(TestTimelineRows)
#include "tst_timelinerows.moc"
