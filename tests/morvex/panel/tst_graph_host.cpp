#include "BoundGraph.h"
#include "panel/Doc.h"
#include "support/vnLog.h"

/// What the graph asks the host, and what it makes of answers that are out of date.
class TestGraphHost : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { SetDarkColors(); }

    void theNodesAnswerTheParenting();
    void aPaintAsksInThisOrder();
    void aPaintCostsInTheOrderOfNSquaredCalls_data();
    void aPaintCostsInTheOrderOfNSquaredCalls();
    void aPaintWritesNothingAndLeavesNothingOpen();
    void aPaintLeavesTheLibrarysLayerOnTheLastBox();
    void fiftyLevelsAreDrawnAndHit();

    void parentingInACircleIsWalkedToAnEnd_data();
    void parentingInACircleIsWalkedToAnEnd();

    void aHandleOfADeletedLayerIsNoNodeOfTheTree();
    void deletingTheCurrentLayerMakesItsSuccessorCurrent();
    void aDeletedCompositionShowsRootAlone();
    void anotherProjectIsShownWhereItHasTheComposition();
    void eachOfTwoCompositionsShowsItsOwnLayers();
    void aLayerOfAnotherCompositionIsNoChild();
};

namespace {

const GraphPlan kFigure{ { "hat", 1 }, { "head", 3 }, { "sky" }, { "body" } };
const QByteArrayList kFindCompo{ "AEGP_GetProjectByIndex", "AEGP_GetProjectRootFolder",
    "AEGP_GetNextProjItem", "AEGP_GetItemType", "AEGP_GetItemName", "AEGP_GetCompFromItem" };

/// A walk over the layers up to a number of them.
QByteArrayList Walk(int layers)
{
    QByteArrayList calls = kFindCompo;
    calls << "AEGP_GetCompNumLayers";
    for (int i = 0; i < layers; ++i)
        calls << "AEGP_GetCompLayerByIndex"
              << "AEGP_GetLayerParent";
    return calls;
}

GraphPlan Unparented(int count)
{
    GraphPlan plan;
    for (int i = 0; i < count; ++i)
        plan << LayerPlan{ QByteArray::number(i) };
    return plan;
}

} // namespace

void TestGraphHost::theNodesAnswerTheParenting()
{
    BoundGraph bound(kFigure);
    WinGraphDataAE &graph = bound.graph;
    const NodeHandle none = BoundGraph::kNone;
    const NodeHandle root = BoundGraph::kTop;
    const NodeHandle hat = bound.NodeOf(0), head = bound.NodeOf(1), sky = bound.NodeOf(2),
                     body = bound.NodeOf(3);

    QCOMPARE(graph.GetRootNode(), root);
    QVERIFY(graph.IsRootNode(root));
    QVERIFY(!graph.IsRootNode(none) && !graph.IsRootNode(hat));
    QCOMPARE(graph.GetParentNode(none), none);
    QCOMPARE(graph.GetParentNode(root), none);
    QCOMPARE(graph.GetParentNode(body), root);
    QCOMPARE(graph.GetParentNode(hat), head);
    QCOMPARE(graph.GetNbChildren(none), 0);
    QCOMPARE(graph.GetNbChildren(root), 2);
    QCOMPARE(graph.GetNbChildren(body), 1);
    QCOMPARE(graph.GetNbChildren(hat), 0);
    QCOMPARE(graph.GetChildNode(root, 0), sky);
    QCOMPARE(graph.GetChildNode(root, 1), body);
    QCOMPARE(graph.GetChildNode(body, 0), head);
    for (const int index : { 2, 3, 1000, -1 })
        QCOMPARE(graph.GetChildNode(root, index), none);
    QCOMPARE(graph.GetChildNode(hat, 0), none);
    QCOMPARE(graph.GetChildNode(none, 0), none);
    QCOMPARE(graph.GetNodePos(none), QPoint(0, 0));
    QCOMPARE(graph.GetNodePos(root), QPoint(0, 0));
    QCOMPARE(graph.GetNodePos(hat), QPoint(0, -108));
    QCOMPARE(graph.GetNodePos(body), QPoint(144, -36));
    for (const NodeHandle node : { none, root, hat })
        QCOMPARE(graph.GetNodeSize(node), QSize(48, 24));
    QCOMPARE(graph.GetNodeName(root), QStringLiteral("[Root]"));
    QCOMPARE(graph.GetNodeName(none), QString());
    QCOMPARE(graph.GetCurrentNode(), none);
}

void TestGraphHost::aPaintAsksInThisOrder()
{
    BoundGraph bound({ { "walk" } });
    const QByteArrayList calls = bound.CallsOfAPaint();

    const QByteArrayList position{ "AEGP_GetLayerIndex", "AEGP_GetLayerParent" };
    QByteArrayList expected;
    // The links: the root's children, the layer's link, the layer's children.
    expected << Walk(1) << Walk(1) << "AEGP_GetLayerParent" << position << Walk(1);
    // The boxes. No column is current, so that nothing is asked for it.
    expected << Walk(1) << Walk(1) << position << kFindCompo << "AEGP_GetLayerName" << Walk(1);
    QCOMPARE(calls, expected);
}

void TestGraphHost::aPaintCostsInTheOrderOfNSquaredCalls_data()
{
    QTest::addColumn<int>("layers");
    for (const int layers : { 0, 1, 2, 10, 50 })
        QTest::newRow(QByteArray::number(layers).constData()) << layers;
}

void TestGraphHost::aPaintCostsInTheOrderOfNSquaredCalls()
{
    QFETCH(const int, layers);
    BoundGraph bound(Unparented(layers));
    const int calls = bound.CallsOfAPaint().size();

    const int find = kFindCompo.size();
    // A pass asks for the root's children, for each of them by its index, and for the children of
    // each: n + 1 walks over all layers and n over as many as the index says.
    const int walks = 2 * layers + 1;
    const int steps = (layers + 1) * layers + layers * (layers + 1) / 2;
    const int pass = walks * (find + 1) + 2 * steps;
    const int links = 3 * layers; // parent, index and depth
    const int boxes = layers * (2 + find + 1); // index and depth; the name
    QCOMPARE(calls, 2 * pass + links + boxes);
    QCOMPARE(bound.CallsOfAPaint().size(), calls); // nothing is kept
}

void TestGraphHost::aPaintWritesNothingAndLeavesNothingOpen()
{
    BoundGraph bound(kFigure);
    const rostrum::Project before = bound.host.GetProject();
    for (const QByteArray &call : bound.CallsOfAPaint())
        QVERIFY2(call.startsWith("AEGP_Get"), call.constData());
    QVERIFY(bound.host.GetProject() == before);
    QCOMPARE(bound.host.ChangeCount(), 0);
    QCOMPARE(bound.host.Account(), QByteArrayList());
    QCOMPARE(bound.host.HeldByRule(), QByteArrayList());
}

void TestGraphHost::aPaintLeavesTheLibrarysLayerOnTheLastBox()
{
    BoundGraph bound(kFigure);
    GetDoc()->SetCol(2);
    bound.Picture();
    QCOMPARE(bound.LibraryLayer(), bound.NodeOf(0)); // the hat, at the end of the second branch
    QCOMPARE(GetDoc()->GetCol(), 2);
    QCOMPARE(bound.graph.GetCurrentNode(), bound.NodeOf(2));
}

void TestGraphHost::fiftyLevelsAreDrawnAndHit()
{
    GraphPlan plan;
    for (int col = 0; col < 50; ++col)
        plan << LayerPlan{ QByteArray::number(col), col - 1 };
    BoundGraph bound(plan);
    bound.graph.resize(700, 700);
    bound.graph.view = QTransform::fromTranslate(20.5, 650.5).scale(0.25, 0.25);
    SlideHand hand(bound.graph);
    hand.Click(bound.InBox({ 49 * 48, 50 * -36 }), Qt::LeftButton);
    QCOMPARE(GetDoc()->GetCol(), 49);
    QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes(), 49));
}

void TestGraphHost::parentingInACircleIsWalkedToAnEnd_data()
{
    QTest::addColumn<QVector<int>>("parents"); // by column
    QTest::addColumn<QVector<int>>("shown");

    QTest::newRow("a layer is its own parent") << QVector<int>{ 0, -1, -1 } << QVector<int>{ 1, 2 };
    QTest::newRow("two are each other's parent") << QVector<int>{ 1, 0, -1 } << QVector<int>{ 2 };
    QTest::newRow("all are in one circle") << QVector<int>{ 1, 2, 0 } << QVector<int>();
    QTest::newRow("one hangs from a circle") << QVector<int>{ 1, 1, 0 } << QVector<int>();
}

void TestGraphHost::parentingInACircleIsWalkedToAnEnd()
{
    // The host refuses such parenting, so it is put into the project behind its back.
    QFETCH(const QVector<int>, parents);
    QFETCH(const QVector<int>, shown);
    BoundGraph bound({ { "walk" }, { "run" }, { "jump" } });
    for (int col = 0; col < parents.size(); ++col)
        bound.EditLayerOf(col).parent = parents[col] < 0 ? 0 : bound.layers[parents[col]];
    bound.CloseChange();

    QVector<Box> boxes; // nothing leads from the root into the circle
    for (const int col : shown)
        boxes << Box{ QString::fromUtf8(bound.plan[col].name), QPoint(col * 48, -36) };
    QCOMPARE(bound.Picture(), bound.Expected(boxes));
    QVERIFY(bound.CallsOfAPaint().size() < 500);

    for (int col = 0; col < parents.size(); ++col) {
        const QPoint pos = bound.graph.GetNodePos(bound.NodeOf(col));
        QCOMPARE(pos.x(), col * 48);
        QVERIFY(pos.y() <= -36 && pos.y() >= 3 * -36);
        const NodeHandle found = bound.graph.FindNode(BoundGraph::kTop, pos);
        QCOMPARE(found, shown.contains(col) ? bound.NodeOf(col) : BoundGraph::kNone);
    }
    GetDoc()->SetCol(0); // in some rows in the circle
    SlideHand hand(bound.graph);
    hand.Click(bound.InBox({ 0, 0 }), Qt::LeftButton);
    QCOMPARE(GetDoc()->GetCol(), 0);
}

void TestGraphHost::aHandleOfADeletedLayerIsNoNodeOfTheTree()
{
    BoundGraph bound(kFigure);
    const NodeHandle head = bound.NodeOf(1);
    bound.EditProject().RemoveLayer(bound.composition, bound.layers[1]);
    bound.CloseChange();
    vnLog::Instance()->Clear();

    QCOMPARE(bound.graph.GetParentNode(head), BoundGraph::kNone);
    QCOMPARE(bound.graph.GetNbChildren(head), 0);
    QCOMPARE(bound.graph.GetChildNode(head, 0), BoundGraph::kNone);
    QCOMPARE(bound.graph.GetNodePos(head), QPoint(0, -36));
    QCOMPARE(bound.graph.GetNodeName(head), QStringLiteral("ERR"));
    const QByteArray log(vnLog::Instance()->Text());
    QVERIFY2(log.contains("-ERR I- line ") && log.contains("morvex/panel/WinGraphDataAE.cpp)"),
        log.constData());

    bound.graph.SetCurrentNode(head); // as a pick does that the deletion has overtaken
    QCOMPARE(GetDoc()->GetCol(), 0);
    bound.Picture();
    QCOMPARE(bound.host.Account(), QByteArrayList());
}

void TestGraphHost::deletingTheCurrentLayerMakesItsSuccessorCurrent()
{
    BoundGraph bound({ { "walk" }, { "run" }, { "jump" } });
    GetDoc()->SetCol(1);
    QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes(), 1));
    bound.EditProject().RemoveLayer(bound.composition, bound.layers[1]);
    bound.CloseChange();
    const GraphPlan left{ { "walk" }, { "jump" } };
    bound.plan = left;
    QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes(), 1)); // a column is an index
    bound.EditProject().RemoveLayer(bound.composition, bound.layers[2]);
    bound.CloseChange();
    bound.plan = GraphPlan{ { "walk" } };
    QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes()));
}

void TestGraphHost::aDeletedCompositionShowsRootAlone()
{
    BoundGraph bound(kFigure);
    QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes()));
    GetDoc()->SetCol(1);
    bound.EditProject().RemoveItem(bound.composition);
    bound.CloseChange();
    QCOMPARE(bound.Picture(), bound.Expected({}));
    SlideHand hand(bound.graph);
    hand.Click(bound.InBox({ 48, -72 }), Qt::LeftButton);
    QCOMPARE(GetDoc()->GetCol(), 1);
    QCOMPARE(bound.host.Account(), QByteArrayList());
}

void TestGraphHost::anotherProjectIsShownWhereItHasTheComposition()
{
    BoundGraph bound(kFigure);
    bound.Picture();
    const NodeHandle before = bound.NodeOf(1);
    bound.host.GetDocument().Replace(rostrum::Project(bound.host.GetProject()));
    QVERIFY(bound.NodeOf(1) != before);
    QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes()));
    QCOMPARE(bound.graph.GetParentNode(bound.NodeOf(0)), bound.NodeOf(1));
    QCOMPARE(bound.graph.GetParentNode(before), BoundGraph::kNone);
}

void TestGraphHost::eachOfTwoCompositionsShowsItsOwnLayers()
{
    BoundGraph bound(kFigure);
    rostrum::Project &project = bound.EditProject();
    const rostrum::ItemId other = project.AddComposition("scene 8", {});
    const rostrum::ItemId solid = project.AddSolid("body", { QSize(10, 10), {} });
    const rostrum::LayerId below = project.AddLayer(solid, other);
    const rostrum::LayerId above = project.AddLayer(solid, other);
    QVERIFY(project.SetParent(other, above, below));
    bound.CloseChange();
    const QVector<Box> boxes{ { QStringLiteral("body"), { 0, -72 }, 1 },
        { QStringLiteral("body"), { 48, -36 } } };

    bound.SelectCompo("scene 8");
    QCOMPARE(bound.Picture(), bound.Expected(boxes));
    SlideHand hand(bound.graph);
    hand.Click(bound.InBox({ 0, -72 }), Qt::LeftButton);
    QCOMPARE(bound.graph.GetCurrentNode(), bound.HandleOf(other, above));
    QCOMPARE(bound.Picture(), bound.Expected(boxes, 0));

    bound.SelectCompo("scene 7");
    GetDoc()->SetCol(3);
    QCOMPARE(bound.Picture(), bound.Expected(bound.PlannedBoxes(), 3));
}

void TestGraphHost::aLayerOfAnotherCompositionIsNoChild()
{
    BoundGraph bound(kFigure);
    const NodeHandle body = bound.NodeOf(3);
    bound.EditProject().AddComposition("scene 8", {});
    bound.CloseChange();
    QCOMPARE(bound.graph.GetNbChildren(body), 1);
    bound.SelectCompo("scene 8");
    QCOMPARE(bound.graph.GetNbChildren(body), 0);
    QCOMPARE(bound.graph.GetChildNode(body, 0), BoundGraph::kNone);
    QCOMPARE(bound.graph.GetNodePos(body), QPoint(144, -36)); // where it stands in its own
}

VN_HOST_TEST_MAIN(TestGraphHost)
#include "tst_graph_host.moc"
