#include "BoundGraph.h"
#include "graphtest/MenuUser.h"
#include "panel/Doc.h"
#include "panel/WinGridDataAE.h"

/// What the graph shows of a composition, and what the mouse does to it.
class TestGraph : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void aCompositionWithNoLayersShowsRootAlone();
    void noCompositionShowsRootAlone();
    void threeUnparentedLayersStandSideBySide();
    void aChildStandsAtItsOwnIndexOneLevelHigher();
    void grandchildrenStandALevelHigherEach();
    void changingTheColumnWidthSpreadsTheBoxesInStepWithTheSheet();
    void namesAreThoseOfTheColumns_data();
    void namesAreThoseOfTheColumns();
    void aLayersOwnLongestNameIsCutAtItsEnd();
    void whatTheHostChangesShowsAtTheNextPaint();

    void aClickMakesTheLayerTheCurrentColumn();
    void aRightClickDoesToo();
    void aClickOnRootKeepsTheLayerAndTells();
    void aClickOnTheCurrentLayerOrOnNothingTellsNothing();
    void reversedColumnsKeepTheHostsOrder();
    void theMenuChangesNothingInTheHost_data();
    void theMenuChangesNothingInTheHost();
    void aLeftDragOnlyRepaints();
};

namespace {

const GraphPlan kThree{ { "walk" }, { "run" }, { "jump" } };

/// The head hangs from the body, the hat from the head; the body lies lowest.
const GraphPlan kFigure{ { "hat", 1 }, { "head", 3 }, { "sky" }, { "body" } };

} // namespace

void TestGraph::initTestCase()
{
    SetDarkColors();
    qRegisterMetaType<UpdateLevel>("UpdateLevel");
}

void TestGraph::aCompositionWithNoLayersShowsRootAlone()
{
    BoundGraph bound({});
    const QImage picture = bound.Picture();
    QCOMPARE(picture, bound.Expected({}));
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (!QRect(199, 199, 51, 27).contains(x, y))
                QCOMPARE(picture.pixelColor(x, y), kBase);
        }
    }
    QCOMPARE(picture.pixelColor(205, 204), kBox);
}

void TestGraph::noCompositionShowsRootAlone()
{
    BoundGraph bound(kThree);
    bound.SelectCompo("");
    QCOMPARE(bound.Picture(), bound.Expected({}));
    bound.SelectCompo("a name that no composition has");
    QCOMPARE(bound.Picture(), bound.Expected({}));

    SlideHand hand(bound.graph);
    QSignalSpy spy(&bound.graph, &WExpoGraph::SigSomethingHasChanged);
    hand.Click(bound.InBox({ 0, 0 }), Qt::LeftButton);
    hand.Click(bound.InBox({ 48, -36 }), Qt::LeftButton); // where a layer would be
    QCOMPARE(Levels(spy, &bound.graph), QVector<int>{ UpdCurrent });
    QCOMPARE(GetDoc()->GetCol(), -1);
}

void TestGraph::threeUnparentedLayersStandSideBySide()
{
    BoundGraph bound(kThree);
    bound.graph.view = QTransform::fromTranslate(200.5, 200.5); // lines fill their pixels
    const QImage picture = bound.Picture();
    QCOMPARE(picture,
        bound.Expected({ { QStringLiteral("walk"), { 0, -36 } },
            { QStringLiteral("run"), { 48, -36 } }, { QStringLiteral("jump"), { 96, -36 } } }));

    for (int x = 24; x <= 24 + 96; ++x) // half way between the boxes and the root
        QVERIFY(picture.pixelColor(200 + x, 200 - 6).lightness() < 30);
    for (const int x : { 24, 72, 120 }) // up to each box
        QVERIFY(picture.pixelColor(200 + x, 200 - 9).lightness() < 30);
    QVERIFY(picture.pixelColor(200 + 24, 200 - 3).lightness() < 30); // down to the root's middle
    QCOMPARE(picture.pixelColor(200 + 72, 200 - 3), kBase);
}

void TestGraph::aChildStandsAtItsOwnIndexOneLevelHigher()
{
    BoundGraph bound({ { "walk" }, { "hand", 0 }, { "jump" } });
    QCOMPARE(bound.Picture(),
        bound.Expected({ { QStringLiteral("walk"), { 0, -36 } },
            { QStringLiteral("hand"), { 48, -72 }, 0 }, { QStringLiteral("jump"), { 96, -36 } } }));
}

void TestGraph::grandchildrenStandALevelHigherEach()
{
    BoundGraph bound(kFigure);
    QCOMPARE(bound.Picture(),
        bound.Expected({ { QStringLiteral("hat"), { 0, -108 }, 1 },
            { QStringLiteral("head"), { 48, -72 }, 3 }, { QStringLiteral("sky"), { 96, -36 } },
            { QStringLiteral("body"), { 144, -36 } } }));
}

void TestGraph::changingTheColumnWidthSpreadsTheBoxesInStepWithTheSheet()
{
    BoundGraph bound(kFigure);
    WinGridDataAE sheet;
    for (const int width : { 48, 80, 49, 20, 1, 0 }) {
        GetDoc()->colWidth = width;
        sheet.UpdateFromCompo();
        for (int col = 0; col < bound.plan.size(); ++col) {
            const int x = bound.graph.GetNodePos(bound.NodeOf(col)).x();
            QCOMPARE(x, col * width);
            if (width >= 20) // Qt's headers show no column of no width
                QCOMPARE(x, sheet.columnViewportPosition(col));
        }
        QCOMPARE(bound.graph.GetNodeSize(bound.NodeOf(0)), QSize(width, 24));
        QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes()));
    }
    bound.host.ReturnToEventLoop();
}

void TestGraph::namesAreThoseOfTheColumns_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QByteArray>("own");
    QTest::addColumn<QString>("shown");

    QTest::newRow("the source's") << QByteArray("walk") << QByteArray() << QStringLiteral("walk");
    QTest::newRow("a series' up to its bracket")
        << QByteArray("walk[0000-0039].png") << QByteArray() << QStringLiteral("walk");
    QTest::newRow("a file's up to its point")
        << QByteArray("sky.png") << QByteArray() << QStringLiteral("sky");
    QTest::newRow("the user's own, uncut")
        << QByteArray("sky.png") << QByteArray("s.[1]") << QStringLiteral("s.[1]");
    QTest::newRow("beyond ASCII") << QByteArray("x") << QByteArray("t\xc3\xaate")
                                  << QString::fromUtf8("t\xc3\xaate");
    QTest::newRow("beyond Latin") << QByteArray("x") << QByteArray("\xe7\x94\xbb")
                                  << QString::fromUtf8("\xe7\x94\xbb");
    QTest::newRow("no text of UTF-8")
        << QByteArray("x") << QByteArray("t\xeate") << QString::fromLatin1("t\xeate");
    QTest::newRow("a lone point") << QByteArray(".") << QByteArray() << QString();
}

void TestGraph::namesAreThoseOfTheColumns()
{
    QFETCH(const QByteArray, source);
    QFETCH(const QByteArray, own);
    QFETCH(const QString, shown);
    BoundGraph bound(GraphPlan{ LayerPlan{ source } });
    bound.EditLayerOf(0).name = own;
    bound.CloseChange();

    QCOMPARE(bound.graph.GetNodeName(bound.NodeOf(0)), shown);
    QCOMPARE(bound.Picture(), bound.Expected({ { shown, { 0, -36 } } }));
}

void TestGraph::aLayersOwnLongestNameIsCutAtItsEnd()
{
    BoundGraph bound(kThree);
    const QString longest = QStringLiteral("x") + QString(15, QChar(0xea)); // 31 bytes
    bound.EditLayerOf(1).name = longest.toUtf8() + "lost";
    bound.CloseChange();
    QCOMPARE(bound.graph.GetNodeName(bound.NodeOf(1)), longest);

    const QImage picture = bound.Picture();
    QVector<Box> boxes = bound.PlannedBoxes();
    boxes[1].name = longest;
    QCOMPARE(picture, bound.Expected(boxes));
    boxes[1].name = QStringLiteral("x"); // its neighbours are what they are beside a short name
    const QImage plain = bound.Expected(boxes);
    const QRect left(QPoint(190, 150), QPoint(200 + 46, 199));
    const QRect right(QPoint(200 + 98, 150), QPoint(400, 199));
    QCOMPARE(picture.copy(left), plain.copy(left));
    QCOMPARE(picture.copy(right), plain.copy(right));
}

void TestGraph::whatTheHostChangesShowsAtTheNextPaint()
{
    BoundGraph bound(kFigure);
    QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes()));

    bound.EditLayerOf(0).parent = 0; // the user frees the hat
    bound.CloseChange();
    bound.plan[0].parent = -1;
    QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes()));

    bound.EditProject().MoveLayer(bound.composition, bound.layers[0], 3); // and puts it below all
    bound.CloseChange();
    const GraphPlan moved{ { "head", 2 }, { "sky" }, { "body" }, { "hat" } };
    bound.plan = moved;
    QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes()));

    bound.Doc().Undo();
    bound.Doc().Undo();
    bound.plan = kFigure;
    QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes()));
}

void TestGraph::aClickMakesTheLayerTheCurrentColumn()
{
    BoundGraph bound(kFigure);
    SlideHand hand(bound.graph);
    QSignalSpy spy(&bound.graph, &WExpoGraph::SigSomethingHasChanged);
    const QVector<Box> boxes = bound.PlannedBoxes();
    for (const int col : { 0, 3, 2, 1 }) {
        hand.Click(bound.InBox(boxes[col].pos), Qt::LeftButton);
        QCOMPARE(GetDoc()->GetCol(), col);
        QCOMPARE(bound.LibraryLayer(), bound.NodeOf(col));
        QCOMPARE(bound.graph.GetCurrentNode(), bound.NodeOf(col));
        QCOMPARE(Levels(spy, &bound.graph), QVector<int>{ UpdCurrent });
        spy.clear();
        QCOMPARE(bound.Picture(), bound.Expected(boxes, col));
    }
    // The selection is the panel's to make, when the notice has come to it.
    QCOMPARE(bound.Doc().view.selections.value(bound.composition), QVector<rostrum::LayerId>());
    QCOMPARE(bound.UndoNames(), QVector<QByteArray>());
}

void TestGraph::aRightClickDoesToo()
{
    BoundGraph bound(kFigure);
    SlideHand hand(bound.graph);
    MenuUser user;
    user.Open(bound.graph, bound.InBox({ 48, -72 }));
    QCOMPARE(user.currentAtOpening, bound.NodeOf(1));
    QCOMPARE(GetDoc()->GetCol(), 1);
}

void TestGraph::aClickOnRootKeepsTheLayerAndTells()
{
    BoundGraph bound(kFigure);
    SlideHand hand(bound.graph);
    hand.Click(bound.InBox({ 48, -72 }), Qt::LeftButton);
    QSignalSpy spy(&bound.graph, &WExpoGraph::SigSomethingHasChanged);

    for (int time = 0; time < 2; ++time) { // the root does not become current, so each click tells
        hand.Click(bound.InBox({ 0, 0 }), Qt::LeftButton);
        QCOMPARE(Levels(spy, &bound.graph), QVector<int>{ UpdCurrent });
        spy.clear();
        QCOMPARE(GetDoc()->GetCol(), 1);
        QCOMPARE(bound.graph.GetCurrentNode(), bound.NodeOf(1));
    }
    bound.graph.SetCurrentNode(BoundGraph::kNone);
    bound.graph.SetCurrentNode(BoundGraph::kTop);
    QCOMPARE(GetDoc()->GetCol(), 1);
}

void TestGraph::aClickOnTheCurrentLayerOrOnNothingTellsNothing()
{
    BoundGraph bound(kFigure);
    SlideHand hand(bound.graph);
    GetDoc()->SetCol(2);
    QSignalSpy spy(&bound.graph, &WExpoGraph::SigSomethingHasChanged);
    hand.Click(bound.InBox({ 96, -36 }), Qt::LeftButton);
    hand.Click(QPoint(5, 390), Qt::LeftButton);
    hand.Click(bound.InBox({ 96, -72 }), Qt::LeftButton); // above it is nothing
    QCOMPARE(spy.count(), 0);
    QCOMPARE(GetDoc()->GetCol(), 2);
}

// A box stands by the host's index, so the order is mirrored to that of the columns.
void TestGraph::reversedColumnsKeepTheHostsOrder()
{
    BoundGraph bound(kFigure);
    GetVipLi()->ReverseColumns = true;
    const QVector<Box> boxes = bound.PlannedBoxes();
    QCOMPARE(bound.Picture(), bound.Expected(boxes));

    SlideHand hand(bound.graph);
    hand.Click(bound.InBox(boxes[1].pos), Qt::LeftButton);
    QCOMPARE(GetDoc()->GetCol(), 1);
    QCOMPARE(bound.graph.GetCurrentNode(), bound.NodeOf(1));
    QCOMPARE(bound.Picture(), bound.Expected(boxes, 1));

    GetVipLi()->SetCurrentColumn(1); // counted from below
    QCOMPARE(bound.LibraryLayer(), bound.NodeOf(2));
    GetVipLi()->ReverseColumns = false;
}

void TestGraph::theMenuChangesNothingInTheHost_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("current");
    QTest::addColumn<bool>("tells");

    for (const char *entry : { "Delete", "New Child", "New Child Vect", "New Father" }) {
        QTest::newRow(entry) << QString::fromLatin1(entry) << 1 << true;
        QTest::newRow((QByteArray(entry) + " with no current layer").constData())
            << QString::fromLatin1(entry) << -1 << false;
    }
}

void TestGraph::theMenuChangesNothingInTheHost()
{
    QFETCH(const QString, entry);
    QFETCH(const int, current);
    QFETCH(const bool, tells);
    BoundGraph bound(kFigure);
    SlideHand hand(bound.graph);
    GetDoc()->SetCol(current);
    QSignalSpy spy(&bound.graph, &WExpoGraph::SigSomethingHasChanged);
    const rostrum::Project before = bound.host.GetProject();
    const int changes = bound.host.ChangeCount();

    MenuUser user;
    user.Open(bound.graph, QPoint(5, 390), entry);
    if (tells)
        QTRY_COMPARE(spy.count(), 1);

    QCOMPARE(Levels(spy, &bound.graph), tells ? QVector<int>{ UpdAll } : QVector<int>());
    QVERIFY(bound.host.GetProject() == before);
    QCOMPARE(bound.host.ChangeCount(), changes);
    QCOMPARE(bound.UndoNames(), QVector<QByteArray>());
    QCOMPARE(GetDoc()->GetCol(), current); // deleting picks the root, which cannot be current
    QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes(), current));
}

void TestGraph::aLeftDragOnlyRepaints()
{
    BoundGraph bound(kFigure);
    SlideHand hand(bound.graph);
    const QPoint from = bound.InBox({ 48, -72 });
    hand.Press(from, Qt::LeftButton);
    QTRY_VERIFY(bound.graph.paints > 0);
    QCoreApplication::processEvents();
    bound.graph.paints = 0;
    const rostrum::Project before = bound.host.GetProject();
    QSignalSpy spy(&bound.graph, &WExpoGraph::SigSomethingHasChanged);

    hand.Move(from + QPoint(60, 40), Qt::LeftButton);
    hand.Move(from + QPoint(90, -40), Qt::LeftButton, Qt::ShiftModifier);
    hand.Release(from + QPoint(90, -40), Qt::LeftButton);

    QTRY_COMPARE(bound.graph.paints, 1); // two moves, one repaint
    QVERIFY(bound.host.GetProject() == before);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(GetDoc()->GetCol(), 1);
    QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes(), 1));
}

VN_HOST_TEST_MAIN(TestGraph)
#include "tst_graph.moc"
