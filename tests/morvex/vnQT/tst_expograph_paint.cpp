#include "SlideHand.h"
#include "TreeGraph.h"
#include "testing/TestMain.h"

#include <cmath>

class TestExpoGraphPaint : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { SetDarkColors(); }

    void anEmptyTreePaintsOnlyTheBackground();
    void boxesAreRoundedAndTheCurrentOneIsBright();
    void anElbowLinkJoinsANodeToItsParent();
    void theRootHasNoLink();
    void boxesLieOverLinks();
    void linesStayOnePixelWideWhenZoomed();
    void aNameStandsInTheMiddleOfItsBox();
    void aLongNameIsCutAtItsEnd();
    void everyPaintAsksTheTreeAfresh();
    void thePanUnderWayIsPainted();
    void extremeZoomsStillPaint_data();
    void extremeZoomsStillPaint();
};

void TestExpoGraphPaint::anEmptyTreePaintsOnlyTheBackground()
{
    WExpoGraph graph;
    graph.resize(300, 290);
    QImage background(300, 290, QImage::Format_ARGB32);
    background.fill(kBase);
    QCOMPARE(graph.grab().toImage().convertToFormat(QImage::Format_ARGB32), background);
}

void TestExpoGraphPaint::boxesAreRoundedAndTheCurrentOneIsBright()
{
    TreeGraph graph;
    graph.current = kHead;
    graph.nodes[kFloor].size = QSize(30, 70);
    LayOnPixelCentres(graph);
    const QImage picture = graph.grab().toImage();

    const auto at = [&picture](const QPoint &origin, int x, int y) {
        return picture.pixelColor(QPoint(200, 200) + origin + QPoint(x, y));
    };
    const QPoint body = graph.GetNodePos(kBody); // 48 by 24
    QCOMPARE(at(body, 24, 12), kBox);
    QCOMPARE(at(body, 2, 12), kBox);
    QCOMPARE(at(body, 46, 12), kBox);
    QCOMPARE(at(body, 0, 12), QColor(Qt::black)); // the outline
    QCOMPARE(at(body, 48, 12), QColor(Qt::black));
    QCOMPARE(at(body, 14, 0), QColor(Qt::black));
    QCOMPARE(at(body, 14, 24), QColor(Qt::black));
    QCOMPARE(at(body, 49, 12), kBase);
    // The corner is an ellipse of 10 by 8: outside of it the background, inside of it the box.
    QCOMPARE(at(body, 0, 0), kBase);
    QCOMPARE(at(body, 2, 2), kBase);
    QCOMPARE(at(body, 5, 5), kBox);
    QCOMPARE(at(body, 48, 24), kBase);
    QCOMPARE(at(body, 43, 19), kBox);

    QCOMPARE(at(graph.GetNodePos(kHead), 24, 12), kCurrent);
    QCOMPARE(at(graph.GetNodePos(kRoot), 24, 12), kBox);
    QCOMPARE(at(graph.GetNodePos(kFloor), 15, 65), kBox); // each box has its own size
    QCOMPARE(at(graph.GetNodePos(kFloor), 33, 12), kBase);
}

void TestExpoGraphPaint::anElbowLinkJoinsANodeToItsParent()
{
    TreeGraph graph;
    graph.nodes[kHead].size = QSize(49, 24); // half of an odd width is cut to a whole number
    LayOnPixelCentres(graph);
    const QImage picture = graph.grab().toImage();
    const auto at = [&picture](int x, int y) { return picture.pixelColor(200 + x, 200 + y); };

    for (int y = -86; y <= -68; ++y)
        QVERIFY(at(124, y).lightness() < 30); // black, but for the ends
    for (int x = 84; x <= 124; ++x)
        QVERIFY(at(x, -68).lightness() < 30);
    for (int y = -68; y <= -50; ++y)
        QVERIFY(at(84, y).lightness() < 30);

    QCOMPARE(at(124, -66), kBase); // it goes no further down
    QCOMPARE(at(84, -70), kBase); // and comes from no further up
    QCOMPARE(at(126, -68), kBase);
    QCOMPARE(at(82, -68), kBase);
    QCOMPARE(at(100, -66), kBase); // nothing fills the elbow
    QCOMPARE(at(100, -70), kBase);
}

void TestExpoGraphPaint::theRootHasNoLink()
{
    TreeGraph graph;
    graph.nodes[kRoot].children.clear();
    graph.nodes[kRoot].parent = kBody; // asked for, it would be drawn
    LayOnPixelCentres(graph);
    const QImage picture = graph.grab().toImage();
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (!QRect(199, 199, 51, 27).contains(x, y))
                QCOMPARE(picture.pixelColor(x, y), kBase);
        }
    }
}

void TestExpoGraphPaint::boxesLieOverLinks()
{
    TreeGraph graph;
    graph.nodes[kFloor].pos = QPoint(95, -76); // where the link of the head runs, in front of it
    LayOnPixelCentres(graph);
    const QImage picture = graph.grab().toImage();
    for (int y = -70; y <= -60; ++y)
        QCOMPARE(picture.pixelColor(200 + 124, 200 + y), kBox);
    QCOMPARE(picture.pixelColor(200 + 84, 200 - 60), QColor(Qt::black)); // the rest of that link
}

void TestExpoGraphPaint::linesStayOnePixelWideWhenZoomed()
{
    TreeGraph graph;
    graph.SetView(QTransform::fromTranslate(100.5, 100.5).scale(8, 8).translate(-104, 68));
    const QImage picture = graph.grab().toImage();
    QCOMPARE(picture.pixelColor(100, 100), QColor(Qt::black)); // on the link of the head
    QCOMPARE(picture.pixelColor(100, 98), kBase);
    QCOMPARE(picture.pixelColor(100, 102), kBase);
}

void TestExpoGraphPaint::aNameStandsInTheMiddleOfItsBox()
{
    TreeGraph graph;
    graph.nodes[kFloor].name = QStringLiteral("HH"); // as good as symmetrical
    graph.nodes[kFloor].size = QSize(120, 60);
    LayOnPixelCentres(graph);
    const QImage picture = graph.grab().toImage();

    const QRect inside
        = QRect(graph.GetNodePos(kFloor) + QPoint(200, 200), QSize(120, 60)).adjusted(6, 6, -6, -6);
    QRect text;
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x) {
            if (picture.pixelColor(x, y) != kBox)
                text |= QRect(x, y, 1, 1);
        }
    }
    QVERIFY(text.width() > 8 && text.height() > 5);
    QVERIFY(qAbs(text.center().x() - inside.center().x()) <= 2);
    QVERIFY(qAbs(text.center().y() - inside.center().y()) <= 3);
}

void TestExpoGraphPaint::aLongNameIsCutAtItsEnd()
{
    TreeGraph graph;
    LayOnPixelCentres(graph);
    const QRect start = QRect(graph.GetNodePos(kBody) + QPoint(201, 203), QSize(12, 18));
    const QRect whole = QRect(graph.GetNodePos(kBody) + QPoint(199, 199), QSize(51, 27));
    const auto draw = [&graph](const QString &name) {
        graph.nodes[kBody].name = name;
        return graph.grab().toImage();
    };
    const QImage cut = draw(QStringLiteral("Background_final_version_7"));
    const QImage other = draw(QStringLiteral("Background_final_version_9"));
    const QImage empty = draw(QString());

    QCOMPARE(cut, other); // they differ beyond the cut
    QVERIFY(cut.copy(start) != empty.copy(start)); // and begin at the box's left
    for (int y = 0; y < cut.height(); ++y) {
        for (int x = 0; x < cut.width(); ++x) {
            if (!whole.contains(x, y))
                QCOMPARE(cut.pixel(x, y), empty.pixel(x, y)); // nothing leaves the box
        }
    }
}

void TestExpoGraphPaint::everyPaintAsksTheTreeAfresh()
{
    TreeGraph graph;
    LayOnPixelCentres(graph);
    QCOMPARE(graph.grab().toImage().pixelColor(200 - 76, 210), kBase);
    graph.Add(kFloor + 1, kFloor, QPoint(-100, 0), QString());
    QCOMPARE(graph.grab().toImage().pixelColor(200 - 76, 210), kBox);
}

void TestExpoGraphPaint::thePanUnderWayIsPainted()
{
    TreeGraph graph;
    SlideHand hand(graph);
    graph.SetView(QTransform::fromTranslate(100, 200).scale(2, 2));
    hand.Press(QPoint(300, 300), Qt::MiddleButton);
    hand.Move(QPoint(300 + 60, 300 + 40), Qt::MiddleButton);
    QCOMPARE(graph.grab().toImage().pixelColor(100 + 60 + 48, 200 + 40 + 24), kBox); // the root
    const QImage whileDragged = graph.grab().toImage();
    hand.Release(QPoint(300 + 60, 300 + 40), Qt::MiddleButton);
    QCOMPARE(graph.grab().toImage(), whileDragged);
}

void TestExpoGraphPaint::extremeZoomsStillPaint_data()
{
    QTest::addColumn<int>("power");
    QTest::addColumn<bool>("isExact");

    for (const int power : { -400, -60, -20, -7, 7, 20 })
        QTest::addRow("2 to the power of %d", power) << power << true;
    for (const int power : { 60, 400 }) // beyond the painter's own numbers: it has to end, no more
        QTest::addRow("2 to the power of %d", power) << power << false;
}

void TestExpoGraphPaint::extremeZoomsStillPaint()
{
    QFETCH(const int, power);
    QFETCH(const bool, isExact);
    TreeGraph graph;
    graph.nodes[kBody].name = QStringLiteral("body");
    const double scale = std::ldexp(1.0, power);
    for (const double angle : { 0.0, 45.0 }) {
        QTransform view = QTransform::fromTranslate(250, 200).rotate(angle);
        graph.SetView(view.scale(scale, scale).translate(-60, 38));
        graph.namesAsked = 0;
        const QImage picture = graph.grab().toImage();
        QCOMPARE(graph.namesAsked, 4);
        if (!isExact)
            continue;
        QCOMPARE(picture.pixelColor(240, 198), kBase);
        QCOMPARE(picture.pixelColor(260, 202), power > 0 ? kBox : kBase);
    }
}

VN_TEST_MAIN(TestExpoGraphPaint)
#include "tst_expograph_paint.moc"
