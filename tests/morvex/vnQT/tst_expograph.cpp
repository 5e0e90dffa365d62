#include "MenuUser.h"
#include "SlideHand.h"
#include "TreeGraph.h"
#include "testing/TestMain.h"

#include <QMenu>
#include <QMetaMethod>
#include <QSignalSpy>

#include <cmath>
#include <functional>

class TestExpoGraph : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void startsWithItsOriginAt200();
    void signalAndSlotsStandInTheirOrder();
    void theClassItselfAnswersAnEmptyTree();

    void theHitTestKnowsTheEdgesOfABox_data();
    void theHitTestKnowsTheEdgesOfABox();
    void aParentGoesBeforeItsChildrenAndAChildBeforeLaterOnes();
    void leftAndRightButtonPick_data();
    void leftAndRightButtonPick();
    void aPickOfTheCurrentNodeOrOfNothingTellsNothing();
    void theWheelZoomsAndThePickFollows();
    void homeAndEndTurnTheDrawingAndThePickFollows();

    void ctrlAndAltWithTheLeftButtonPanAndDoNotPick();
    void aLeftDragTellsScenePositionAndShift();
    void otherDragsMoveNoNode();

    void aRightClickPicksBeforeTheMenuOpens();
    void aRightClickOnNothingKeepsThePickAndOpensTheMenu();
    void theMenuStaysAChildOfTheWidget();
    void theMenuCommandsChangeTheTree_data();
    void theMenuCommandsChangeTheTree();
    void deletingPicksTheRoot();
    void escDoesNothing();

    void itsOwnNoticesAreIgnoredOthersRepaint();

    void aTreeThatRunsInACircleEnds_data();
    void aTreeThatRunsInACircleEnds();
    void aTreeInWhichAllNameAllEnds();
    void aParentThatIsNoNodeHasNoLink();
    void aChildThatIsNoNodeIsPassedOver();
    void fiftyLevelsAreDrawnAndHit();
};

void TestExpoGraph::initTestCase()
{
    SetDarkColors();
    qRegisterMetaType<UpdateLevel>("UpdateLevel");
}

void TestExpoGraph::startsWithItsOriginAt200()
{
    BareGraph graph;
    QCOMPARE(graph.view, QTransform::fromTranslate(200, 200));
    QCOMPARE(graph.focusPolicy(), Qt::StrongFocus);
    QCOMPARE(graph.contextMenuPolicy(), Qt::CustomContextMenu);
    QCOMPARE(graph.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(graph.sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
}

void TestExpoGraph::signalAndSlotsStandInTheirOrder()
{
    QStringList found;
    const QMetaObject &meta = WExpoGraph::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        found << QString::fromLatin1(meta.method(i).methodSignature());

    QCOMPARE(found,
        QStringList({ QStringLiteral("SigSomethingHasChanged(UpdateLevel,void*)"),
            QStringLiteral("OnUpdate(UpdateLevel,void*)"), QStringLiteral("OnUpdate(UpdateLevel)"),
            QStringLiteral("OnTreeDelete()"), QStringLiteral("OnTreeNewChild()"),
            QStringLiteral("OnTreeNewChildVect()"), QStringLiteral("OnTreeNewFather()"),
            QStringLiteral("OnEsc()"), QStringLiteral("OnPopupMenu(QPoint)") }));
}

void TestExpoGraph::theClassItselfAnswersAnEmptyTree()
{
    WExpoGraph graph;
    QSignalSpy spy(&graph, &WExpoGraph::SigSomethingHasChanged);
    graph.SetCurrentNode(7);

    QCOMPARE(graph.GetCurrentNode(), NodeHandle(0));
    QCOMPARE(graph.GetRootNode(), NodeHandle(0));
    QCOMPARE(graph.GetParentNode(7), NodeHandle(0));
    QCOMPARE(graph.GetNodePos(7), QPoint(0, 0));
    QCOMPARE(graph.GetNodeSize(7), QSize(50, 30));
    QVERIFY(!graph.IsRootNode(7));
    QCOMPARE(graph.GetNbChildren(7), 0);
    QCOMPARE(graph.GetChildNode(7, 2), NodeHandle(0));
    QCOMPARE(graph.GetNodeName(7), QString());
    QCOMPARE(graph.FindNode(0, QPointF(5, 5)), NodeHandle(0));

    graph.OnTreeDelete();
    graph.OnTreeNewChild();
    graph.OnTreeNewChildVect();
    graph.OnTreeNewFather();
    QCOMPARE(spy.count(), 0);
}

/// From the head's bottom centre (124, -86) by way of the height -68 to the body's top centre
/// (84, -50).
/// The widget's centre lies on the left edge of a box, half way down.
void TestExpoGraph::theHitTestKnowsTheEdgesOfABox_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("isHit");

    // The box is 48 by 24 at (60, -50): up to 107 and -27.
    QTest::newRow("top left") << QPointF(60, -50) << true;
    QTest::newRow("left of it") << QPointF(59.5, -50) << false;
    QTest::newRow("above it") << QPointF(60, -50.5) << false;
    QTest::newRow("right edge") << QPointF(107, -40) << true;
    QTest::newRow("half a unit inside of what is drawn") << QPointF(107.5, -40) << false;
    QTest::newRow("drawn right edge") << QPointF(108, -40) << false;
    QTest::newRow("bottom edge") << QPointF(80, -27) << true;
    QTest::newRow("drawn bottom edge") << QPointF(80, -26) << false;
    QTest::newRow("bottom right") << QPointF(107, -27) << true;
    QTest::newRow("beyond both") << QPointF(107.5, -26.5) << false;
    QTest::newRow("a corner that is rounded off") << QPointF(60.5, -49.5) << true;
}

void TestExpoGraph::theHitTestKnowsTheEdgesOfABox()
{
    QFETCH(const QPointF, point);
    QFETCH(const bool, isHit);
    TreeGraph graph;
    SlideHand hand(graph);
    graph.SetView(QTransform::fromTranslate(30, 190).scale(2, 2)); // half units are whole pixels

    QCOMPARE(graph.FindNode(kRoot, point), isHit ? kBody : NodeHandle(0));
    hand.Click(OnWidget(graph, point.x(), point.y()), Qt::LeftButton);
    QCOMPARE(graph.current, isHit ? kBody : NodeHandle(0));
}

void TestExpoGraph::aParentGoesBeforeItsChildrenAndAChildBeforeLaterOnes()
{
    TreeGraph graph;
    SlideHand hand(graph);
    graph.nodes[kFloor].pos = QPoint(90, -50); // over the body's right half
    graph.nodes[kHead].pos = QPoint(60, -60); // over the body's upper half

    hand.Click(OnWidget(graph, 100, -40), Qt::LeftButton); // body and floor: the earlier child
    QCOMPARE(graph.current, kBody);
    hand.Click(OnWidget(graph, 70, -55), Qt::LeftButton); // the head alone
    QCOMPARE(graph.current, kHead);
    hand.Click(OnWidget(graph, 70, -45), Qt::LeftButton); // body and head: the parent
    QCOMPARE(graph.current, kBody);
    hand.Click(OnWidget(graph, 120, -40), Qt::LeftButton);
    QCOMPARE(graph.current, kFloor);
    // The head, deep below the earlier child, goes before the later child.
    graph.nodes[kHead].pos = QPoint(115, -50);
    hand.Click(OnWidget(graph, 120, -40), Qt::LeftButton);
    QCOMPARE(graph.current, kHead);
}

void TestExpoGraph::leftAndRightButtonPick_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<bool>("isPicked");

    const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::AltModifier;
    QTest::newRow("left") << Qt::LeftButton << Qt::KeyboardModifiers() << true;
    QTest::newRow("right") << Qt::RightButton << Qt::KeyboardModifiers() << true;
    QTest::newRow("Shift + left") << Qt::LeftButton << Qt::KeyboardModifiers(Qt::ShiftModifier)
                                  << true;
    QTest::newRow("Ctrl + Alt + right") << Qt::RightButton << both << true;
    QTest::newRow("middle") << Qt::MiddleButton << Qt::KeyboardModifiers() << false;
    QTest::newRow("Ctrl + Alt + left") << Qt::LeftButton << both << false;
}

void TestExpoGraph::leftAndRightButtonPick()
{
    QFETCH(const Qt::MouseButton, button);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const bool, isPicked);
    TreeGraph graph;
    SlideHand hand(graph);
    QSignalSpy spy(&graph, &WExpoGraph::SigSomethingHasChanged);

    hand.Press(MiddleOf(graph, kHead), button, modifiers);

    QCOMPARE(graph.current, isPicked ? kHead : NodeHandle(0));
    QCOMPARE(Levels(spy, &graph), isPicked ? QVector<int>{ UpdCurrent } : QVector<int>());
}

void TestExpoGraph::aPickOfTheCurrentNodeOrOfNothingTellsNothing()
{
    TreeGraph graph;
    SlideHand hand(graph);
    graph.current = kBody;
    QSignalSpy spy(&graph, &WExpoGraph::SigSomethingHasChanged);

    hand.Click(MiddleOf(graph, kBody), Qt::LeftButton);
    hand.Click(QPoint(3, 395), Qt::LeftButton);

    QCOMPARE(graph.TakeCalls(), QStringList());
    QCOMPARE(graph.current, kBody);
    QCOMPARE(spy.count(), 0);
}

void TestExpoGraph::theWheelZoomsAndThePickFollows()
{
    TreeGraph graph;
    SlideHand hand(graph);
    const QPoint onBody = MiddleOf(graph, kBody);
    for (int i = 0; i < 3; ++i)
        hand.Turn(onBody, QPoint(0, 120));
    QCOMPARE(graph.View().m11(), 8.0);

    hand.Click(onBody + QPoint(8 * 20, 8 * 10), Qt::LeftButton); // still inside of it
    QCOMPARE(graph.current, kBody);
    QCOMPARE(graph.grab().toImage().pixelColor(onBody), kCurrent);
    for (int i = 0; i < 6; ++i)
        hand.Turn(onBody, QPoint(0, -120));
    hand.Click(MiddleOf(graph, kFloor), Qt::LeftButton);
    QCOMPARE(graph.current, kFloor);
}

void TestExpoGraph::homeAndEndTurnTheDrawingAndThePickFollows()
{
    TreeGraph graph;
    SlideHand hand(graph);
    graph.nodes[kBody].name = QStringLiteral("|||"); // upright strokes, which turn as well
    const QImage upright = graph.grab().toImage();

    hand.Key(Qt::Key_Home);
    const double half = std::sqrt(0.5);
    const QPoint turned(qRound(200 + (84 - -38) * half), qRound(200 + (84 + -38) * half));
    QCOMPARE(MiddleOf(graph, kBody), turned);
    hand.Click(turned, Qt::LeftButton);
    QCOMPARE(graph.current, kBody);
    hand.Click(MiddleOf(graph, kHead), Qt::LeftButton);
    QCOMPARE(graph.current, kHead);
    QCOMPARE(graph.grab().toImage().pixelColor(MiddleOf(graph, kHead)), kCurrent);

    hand.Key(Qt::Key_End);
    graph.current = 0;
    graph.SetView(QTransform::fromTranslate(200, 200)); // without what the two turns leave
    QCOMPARE(graph.grab().toImage(), upright);
}

void TestExpoGraph::ctrlAndAltWithTheLeftButtonPanAndDoNotPick()
{
    TreeGraph graph;
    SlideHand hand(graph);
    const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::AltModifier;
    const QPoint from = MiddleOf(graph, kBody);

    hand.Press(from, Qt::LeftButton, both);
    hand.Move(from + QPoint(31, -17), Qt::LeftButton, both);
    hand.Release(from + QPoint(31, -17), Qt::LeftButton, both);

    QCOMPARE(graph.View(), QTransform::fromTranslate(231, 183)); // and it is kept
    QCOMPARE(graph.TakeCalls(), QStringList()); // nothing picked, nothing dragged
    hand.Click(from + QPoint(31, -17), Qt::LeftButton);
    QCOMPARE(graph.current, kBody);
}

void TestExpoGraph::aLeftDragTellsScenePositionAndShift()
{
    TreeGraph graph;
    SlideHand hand(graph);
    graph.SetView(QTransform::fromTranslate(30, 190).scale(4, 4));
    hand.Press(MiddleOf(graph, kRoot), Qt::LeftButton);
    graph.TakeCalls();

    hand.Move(QPoint(30 + 41, 190 - 19), Qt::LeftButton); // 10.25, -4.75
    hand.Move(QPoint(30 + 43, 190 - 17), Qt::LeftButton, Qt::ShiftModifier); // 10.75, -4.25
    hand.Move(QPoint(30 + 44, 190), Qt::LeftButton | Qt::RightButton); // among others

    QCOMPARE(graph.TakeCalls(),
        QStringList({ QStringLiteral("DragNode 10,-5 free"), QStringLiteral("DragNode 11,-4 bound"),
            QStringLiteral("DragNode 11,0 free") }));
    graph.paints = 0;
    hand.Move(QPoint(80, 80), Qt::LeftButton);
    QTRY_VERIFY(graph.paints > 0);

    const double tiny = std::ldexp(1.0, -60); // the scene point is beyond all whole numbers
    graph.TakeCalls();
    graph.SetView(QTransform::fromScale(tiny, tiny));
    hand.Move(QPoint(1, 1), Qt::LeftButton);
    QCOMPARE(graph.TakeCalls(), QStringList(QStringLiteral("DragNode 1000000000,1000000000 free")));
}

void TestExpoGraph::otherDragsMoveNoNode()
{
    TreeGraph graph;
    SlideHand hand(graph);
    hand.Move(QPoint(80, 80), Qt::NoButton);
    hand.Move(QPoint(80, 80), Qt::RightButton);
    hand.Move(QPoint(80, 80), Qt::MiddleButton);
    hand.Move(QPoint(80, 80), Qt::LeftButton, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(graph.TakeCalls(), QStringList());
}

void TestExpoGraph::aRightClickPicksBeforeTheMenuOpens()
{
    TreeGraph graph;
    SlideHand hand(graph);
    QSignalSpy spy(&graph, &WExpoGraph::SigSomethingHasChanged);
    MenuUser user;
    user.Open(graph, MiddleOf(graph, kHead));

    QCOMPARE(user.currentAtOpening, kHead);
    QCOMPARE(user.entries,
        QStringList({ QStringLiteral("Delete"), QStringLiteral("New Child"),
            QStringLiteral("New Child Vect"), QStringLiteral("New Father") }));
    QCOMPARE(user.haveShortcuts, QVector<bool>(4, false));
    QCOMPARE(Levels(spy, &graph), QVector<int>{ UpdCurrent });
}

void TestExpoGraph::aRightClickOnNothingKeepsThePickAndOpensTheMenu()
{
    TreeGraph graph;
    SlideHand hand(graph);
    graph.current = kFloor;
    QSignalSpy spy(&graph, &WExpoGraph::SigSomethingHasChanged);
    MenuUser user;
    user.Open(graph, QPoint(20, 20));

    QCOMPARE(user.entries.size(), 4);
    QCOMPARE(user.currentAtOpening, kFloor);
    QCOMPARE(spy.count(), 0);
}

void TestExpoGraph::theMenuStaysAChildOfTheWidget()
{
    TreeGraph graph;
    SlideHand hand(graph);
    MenuUser user;
    user.Open(graph, QPoint(20, 20));
    user.Open(graph, QPoint(20, 20));
    QCOMPARE(graph.findChildren<QMenu *>().size(), 2);
}

void TestExpoGraph::theMenuCommandsChangeTheTree_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<NodeHandle>("current");
    QTest::addColumn<QStringList>("calls");

    const NodeHandle none = 0;
    const auto row
        = [](const char *name, const char *entry, NodeHandle current, const QStringList &calls) {
              QTest::newRow(name) << QString::fromLatin1(entry) << current << calls;
          };
    row("Delete", "Delete", kHead,
        { QStringLiteral("DeleteNode 21"), QStringLiteral("SetCurrentNode 1") });
    row("Delete on the root", "Delete", kRoot, {});
    row("Delete on no node", "Delete", none, {});
    row("New Child", "New Child", kHead, { QStringLiteral("NewChildNode 21 plain") });
    row("New Child on the root", "New Child", kRoot, { QStringLiteral("NewChildNode 1 plain") });
    row("New Child on no node", "New Child", none, {});
    row("New Child Vect", "New Child Vect", kHead, { QStringLiteral("NewChildNode 21 vect") });
    row("New Child Vect on the root", "New Child Vect", kRoot,
        { QStringLiteral("NewChildNode 1 vect") });
    row("New Child Vect on no node", "New Child Vect", none, {});
    row("New Father", "New Father", kHead, { QStringLiteral("NewFatherNode 21") });
    row("New Father on the root", "New Father", kRoot, {});
    row("New Father on no node", "New Father", none, {});
}

void TestExpoGraph::theMenuCommandsChangeTheTree()
{
    QFETCH(const QString, entry);
    QFETCH(const NodeHandle, current);
    QFETCH(const QStringList, calls);
    TreeGraph graph;
    SlideHand hand(graph);
    graph.current = current;
    QSignalSpy spy(&graph, &WExpoGraph::SigSomethingHasChanged);

    MenuUser user;
    user.Open(graph, QPoint(20, 20), entry);

    QTRY_COMPARE(spy.count(), calls.isEmpty() ? 0 : 1);
    QCOMPARE(graph.TakeCalls(), calls);
    QCOMPARE(Levels(spy, &graph), calls.isEmpty() ? QVector<int>() : QVector<int>{ UpdAll });
}

void TestExpoGraph::deletingPicksTheRoot()
{
    TreeGraph graph;
    SlideHand hand(graph);
    graph.current = kHead;
    const QPoint gone = MiddleOf(graph, kHead);
    QCOMPARE(graph.grab().toImage().pixelColor(gone), kCurrent);

    MenuUser user;
    user.Open(graph, QPoint(20, 20), QStringLiteral("Delete"));

    QTRY_COMPARE(graph.current, kRoot);
    QCOMPARE(graph.grab().toImage().pixelColor(gone), kBase);
    QCOMPARE(graph.grab().toImage().pixelColor(MiddleOf(graph, kRoot)), kCurrent);
}

void TestExpoGraph::escDoesNothing()
{
    TreeGraph graph;
    SlideHand hand(graph);
    graph.current = kHead;
    const QTransform before = graph.View();
    QSignalSpy spy(&graph, &WExpoGraph::SigSomethingHasChanged);

    hand.Key(Qt::Key_Escape);
    graph.OnEsc();

    QCOMPARE(graph.TakeCalls(), QStringList());
    QCOMPARE(graph.View(), before);
    QCOMPARE(spy.count(), 0);
}

void TestExpoGraph::itsOwnNoticesAreIgnoredOthersRepaint()
{
    TreeGraph graph;
    SlideHand hand(graph);
    QTRY_VERIFY(graph.paints > 0);
    const auto paintsAfter = [&graph](const std::function<void()> &notice) {
        QCoreApplication::processEvents();
        graph.paints = 0;
        notice();
        QCoreApplication::processEvents();
        return graph.paints;
    };

    for (const UpdateLevel level : { UpdNone, UpdCurrent, UpdCells, UpdAll, UpdCompo }) {
        QCOMPARE(paintsAfter([&] { graph.OnUpdate(level, &graph); }), 0);
        QCOMPARE(paintsAfter([&] { graph.OnUpdate(level, this); }), 1);
        QCOMPARE(paintsAfter([&] { graph.OnUpdate(level, nullptr); }), 1);
        QCOMPARE(paintsAfter([&] { graph.OnUpdate(level); }), 1);
    }
}

void TestExpoGraph::aTreeThatRunsInACircleEnds_data()
{
    QTest::addColumn<NodeHandle>("from");
    QTest::addColumn<NodeHandle>("to");

    QTest::newRow("a node is its own child") << kHead << kHead;
    QTest::newRow("two are each other's children") << kHead << kBody;
    QTest::newRow("the root hangs from a leaf") << kHead << kRoot;
    QTest::newRow("the root is its own child") << kRoot << kRoot;
    QTest::newRow("a node hangs from two") << kFloor << kHead;
}

void TestExpoGraph::aTreeThatRunsInACircleEnds()
{
    QFETCH(const NodeHandle, from);
    QFETCH(const NodeHandle, to);
    TreeGraph graph;
    SlideHand hand(graph);
    const QImage sound = graph.grab().toImage();
    graph.nodes[from].children << to;
    graph.namesAsked = 0;

    const QImage picture = graph.grab().toImage();

    QCOMPARE(picture, sound);
    QCOMPARE(graph.namesAsked, 4); // each box once
    QCOMPARE(graph.FindNode(kRoot, QPointF(-500, -500)), NodeHandle(0));
    for (const NodeHandle node : { kRoot, kBody, kHead, kFloor }) {
        hand.Click(MiddleOf(graph, node), Qt::LeftButton);
        QCOMPARE(graph.current, node);
    }
}

// With the nodes on the way down alone remembered, a tree like this is walked by every one of its
// ways, and there are more of them than a life is long.
void TestExpoGraph::aTreeInWhichAllNameAllEnds()
{
    constexpr NodeHandle count = 60;
    TreeGraph graph;
    graph.nodes.clear();
    for (NodeHandle node = 1; node <= count; ++node)
        graph.Add(node, node == 1 ? 0 : 1, QPoint(0, 0), QString());
    for (NodeHandle node = 1; node <= count; ++node) {
        for (NodeHandle child = 1; child <= count; ++child)
            graph.nodes[node].children << child;
    }
    graph.namesAsked = 0;
    graph.grab();
    QCOMPARE(graph.namesAsked, static_cast<int>(count));
    QCOMPARE(graph.FindNode(1, QPointF(-9, -9)), NodeHandle(0));
}

void TestExpoGraph::aParentThatIsNoNodeHasNoLink()
{
    TreeGraph graph;
    LayOnPixelCentres(graph);
    graph.nodes[kHead].parent = 0;
    const QImage picture = graph.grab().toImage();
    QCOMPARE(picture.pixelColor(200 + 124, 200 - 80), kBase);
    QCOMPARE(picture.pixelColor(MiddleOf(graph, kHead)), kBox);
}

void TestExpoGraph::aChildThatIsNoNodeIsPassedOver()
{
    TreeGraph graph;
    const QImage sound = graph.grab().toImage();
    graph.nodes[kBody].children.prepend(0);
    graph.nodes[kRoot].children.prepend(0);
    QCOMPARE(graph.grab().toImage(), sound);
    QCOMPARE(graph.FindNode(kRoot, QPointF(105, -100)), kHead);
}

void TestExpoGraph::fiftyLevelsAreDrawnAndHit()
{
    MemoryGraph graph;
    graph.resize(300, 700);
    constexpr NodeHandle deepest = 51;
    for (NodeHandle node = 1; node <= deepest; ++node)
        graph.Add(node, node - 1, QPoint(static_cast<int>(node) * 2, static_cast<int>(node) * -36),
            QString());
    SlideHand hand(graph);
    graph.SetView(QTransform::fromTranslate(50.5, 680.5).scale(0.3125, 0.3125));

    hand.Click(MiddleOf(graph, deepest), Qt::LeftButton);
    QCOMPARE(graph.current, deepest);
    graph.namesAsked = 0;
    const QImage picture = graph.grab().toImage();
    QCOMPARE(graph.namesAsked, static_cast<int>(deepest));
    QCOMPARE(picture.pixelColor(MiddleOf(graph, deepest)), kCurrent);
    for (NodeHandle node = 1; node < deepest; ++node)
        QCOMPARE(picture.pixelColor(MiddleOf(graph, node)), kBox);
}

VN_TEST_MAIN(TestExpoGraph)
#include "tst_expograph.moc"
