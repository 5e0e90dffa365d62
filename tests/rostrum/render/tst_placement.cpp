#include "render/Placement.h"

#include "testing/TestMain.h"

#include <limits>

using namespace rostrum;

class TestPlacement : public QObject
{
    Q_OBJECT

private slots:
    void aCompositionHasAFrameForEachTimeInIt_data();
    void aCompositionHasAFrameForEachTimeInIt();
    void theMatrixPutsTheAnchorAtThePosition();
    void aChainOfParentsIsWalkedToItsEnd();
    void aRingOfParentsEnds();
    void aParentThatIsNotThereIsNone();
    void opacityStaysBetween0And1_data();
    void opacityStaysBetween0And1();
    void theImageOfARemappedSeries_data();
    void theImageOfARemappedSeries();
    void theImageOfASeriesByItsOwnTime_data();
    void theImageOfASeriesByItsOwnTime();
    void footageWithoutFilesShowsNothing();
};

namespace {

LayerPtr MakeLayer(LayerId id, LayerId parent, double x, double y, double rotation)
{
    LayerPtr layer(new Layer);
    layer->id = id;
    layer->parent = parent;
    layer->position.SetConstant({ x, y, 0, 0 });
    layer->rotation.SetConstant({ rotation, 0, 0, 0 });
    return layer;
}

Footage MakeSeries(int count, const Rate &rate)
{
    Footage footage;
    footage.isSeries = true;
    footage.rate = rate;
    for (int i = 0; i < count; ++i) {
        footage.files << QStringLiteral("a%1.png").arg(i);
        footage.numbers << i;
    }
    return footage;
}

} // namespace

void TestPlacement::aCompositionHasAFrameForEachTimeInIt_data()
{
    QTest::addColumn<int>("num");
    QTest::addColumn<int>("den");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("scale");
    QTest::addColumn<int>("expected");
    const auto row = [](const char *name, int num, int den, int value, int scale, int expected) {
        QTest::newRow(name) << num << den << value << scale << expected;
    };
    row("none", 25, 1, 0, 25, 0);
    row("one", 25, 1, 1, 25, 1);
    row("a thousand and five", 25, 1, 1005, 25, 1005);
    row("a part of a frame is one", 25, 1, 1, 1000, 1);
    row("two frames and a part", 25, 1, 81, 1000, 3);
    row("below 0", 25, 1, -5, 25, 0);
    row("a rate with a denominator", 30000, 1001, 2002, 30000, 2);
    row("an hour at that rate", 30000, 1001, 3600, 1, 107893);
}

void TestPlacement::aCompositionHasAFrameForEachTimeInIt()
{
    QFETCH(int, num);
    QFETCH(int, den);
    QFETCH(int, value);
    QFETCH(int, scale);
    Composition composition;
    composition.rate = Rate{ num, den };
    composition.duration = Time{ value, static_cast<quint32>(scale) };
    QTEST(FrameCount(composition), "expected");
}

void TestPlacement::theMatrixPutsTheAnchorAtThePosition()
{
    Composition composition;
    composition.layers << MakeLayer(7, 0, 30, 40, 90);
    Layer &layer = *composition.layers[0];
    layer.anchorPoint.SetConstant({ 3, 5, 0, 0 });
    layer.scale.SetConstant({ 200, 50, 0, 0 });
    const QTransform matrix = LayerMatrix(composition, layer, Time());
    QCOMPARE(matrix.map(QPointF(3, 5)), QPointF(30, 40));
    // One pixel to the right is twice as far, and points down after a quarter turn clockwise.
    QCOMPARE(matrix.map(QPointF(4, 5)), QPointF(30, 42));
    QCOMPARE(matrix.map(QPointF(3, 6)), QPointF(29.5, 40));
}

void TestPlacement::aChainOfParentsIsWalkedToItsEnd()
{
    Composition composition;
    composition.layers << MakeLayer(1, 2, 10, 0, 0) << MakeLayer(2, 3, 5, 0, 90)
                       << MakeLayer(3, 0, 100, 200, 90);
    const QTransform matrix = LayerMatrix(composition, *composition.layers[0], Time());
    // (10, 0) turned by 90 is (0, 10); (5, 10) turned by 90 is (-10, 5).
    QCOMPARE(matrix.map(QPointF(0, 0)), QPointF(90, 205));
}

void TestPlacement::aRingOfParentsEnds()
{
    Composition composition;
    composition.layers << MakeLayer(1, 2, 10, 0, 0) << MakeLayer(2, 1, 5, 0, 0);
    LayerMatrix(composition, *composition.layers[0], Time()); // unchecked: it has come back
    composition.layers << MakeLayer(3, 3, 1, 0, 0);
    QVERIFY(LayerMatrix(composition, *composition.layers[2], Time()).isAffine());
}

void TestPlacement::aParentThatIsNotThereIsNone()
{
    Composition composition;
    composition.layers << MakeLayer(1, 99, 10, 20, 0);
    const QTransform matrix = LayerMatrix(composition, *composition.layers[0], Time());
    QCOMPARE(matrix.map(QPointF(0, 0)), QPointF(10, 20));
}

void TestPlacement::opacityStaysBetween0And1_data()
{
    QTest::addColumn<double>("percent");
    QTest::addColumn<double>("expected");
    QTest::newRow("0") << 0.0 << 0.0;
    QTest::newRow("below") << -3.0 << 0.0;
    QTest::newRow("between") << 37.5 << 0.375;
    QTest::newRow("full") << 100.0 << 1.0;
    QTest::newRow("beyond") << 400.0 << 1.0;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0.0;
}

void TestPlacement::opacityStaysBetween0And1()
{
    QFETCH(double, percent);
    Layer layer;
    layer.opacity.SetConstant({ percent, 0, 0, 0 });
    QTEST(LayerOpacity(layer, Time()), "expected");
}

void TestPlacement::theImageOfARemappedSeries_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<int>("expected"); // of 60 images at 25
    QTest::newRow("image 29, whose time falls short in doubles") << 29 / 25.0 << 29;
    QTest::newRow("image 57, the same") << 57 / 25.0 << 57;
    QTest::newRow("just below half-way") << 3.4999 / 25 << 3;
    QTest::newRow("half-way goes up") << 0.5 / 25 << 1;
    QTest::newRow("a little below 0 reads as 0") << -1.0 / 25 << 0;
    QTest::newRow("further below 0") << -1.5 / 25 << -1;
    QTest::newRow("the last") << 59.49 / 25 << 59;
    QTest::newRow("past the last") << 59.5 / 25 << -1;
    QTest::newRow("far beyond") << 1e300 << -1;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << -1;
}

void TestPlacement::theImageOfARemappedSeries()
{
    QFETCH(double, seconds);
    Layer layer;
    layer.timeRemap.InsertKey(Time{ 3, 25 }, { seconds, 0, 0, 0 });
    QTEST(ShownImage(layer, MakeSeries(60, Rate()), Time{ 8, 25 }), "expected");
}

void TestPlacement::theImageOfASeriesByItsOwnTime_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("scale");
    QTest::addColumn<int>("offset"); // in 25ths
    QTest::addColumn<int>("expected"); // of 12 images at 12
    QTest::newRow("the start") << 0 << 25 << 0 << 0;
    QTest::newRow("before the next image") << 2 << 25 << 0 << 0;
    QTest::newRow("the next image") << 3 << 25 << 0 << 1;
    QTest::newRow("exactly at an image") << 7 << 12 << 0 << 7;
    QTest::newRow("the last") << 24 << 25 << 0 << 11;
    QTest::newRow("past the last") << 25 << 25 << 0 << -1;
    QTest::newRow("before the first") << 9 << 25 << 10 << -1;
    QTest::newRow("moved") << 13 << 25 << 10 << 1;
}

void TestPlacement::theImageOfASeriesByItsOwnTime()
{
    QFETCH(int, value);
    QFETCH(int, scale);
    QFETCH(int, offset);
    Layer layer;
    layer.offset = Time{ offset, 25 };
    const Time time{ value, static_cast<quint32>(scale) };
    QTEST(ShownImage(layer, MakeSeries(12, Rate{ 12, 1 }), time), "expected");
}

void TestPlacement::footageWithoutFilesShowsNothing()
{
    Footage still;
    QCOMPARE(ShownImage(Layer(), still, Time()), -1);
    QCOMPARE(ShownImage(Layer(), MakeSeries(0, Rate()), Time()), -1);
}

VN_TEST_MAIN(TestPlacement)

#include "tst_placement.moc"
