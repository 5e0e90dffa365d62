#include "BoundGraph.h"
#include "graphtest/MenuUser.h"
#include "panel/Doc.h"
#include "support/vnLog.h"

#include <functional>

/// The graph's paint, its pick and its menu commands with each of their host calls failing. Whatever
/// fails, the project stays as it is, nothing stays open, and the next paint shows the truth.
class TestGraphFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void eachCallFailsOnce_data();
    void eachCallFailsOnce();
    void eachFunctionFailsForGood_data();
    void eachFunctionFailsForGood();
    void aMissingSuiteEndsTheEventAlone_data();
    void aMissingSuiteEndsTheEventAlone();
    void aPaintWhoseLayersFailShowsTheOthers();
    void withoutABasicSuiteThePaintEndsAtOnce();
};

namespace {

const GraphPlan kFigure{ { "hat", 1 }, { "head", 3 }, { "sky" }, { "body" } };
constexpr int kCurrentCol = 2;

struct Operation
{
    const char *name;
    std::function<void(BoundGraph &, SlideHand &)> run;
    int picked; // the column that it makes current when nothing fails
};

QVector<Operation> Operations()
{
    return {
        { "paint", [](BoundGraph &bound, SlideHand &) { bound.Picture(); }, kCurrentCol },
        { "pick",
            [](BoundGraph &bound, SlideHand &hand) {
                hand.Click(bound.InBox({ 144, -36 }), Qt::LeftButton);
            },
            3 },
        { "click on root",
            [](BoundGraph &bound, SlideHand &hand) {
                hand.Click(bound.InBox({ 0, 0 }), Qt::LeftButton);
            },
            kCurrentCol },
        { "click on nothing",
            [](BoundGraph &, SlideHand &hand) {
                hand.Click({ 5, 390 }, Qt::LeftButton);
            },
            kCurrentCol },
        { "drag",
            [](BoundGraph &bound, SlideHand &hand) {
                hand.Move(bound.InBox({ 0, 0 }), Qt::LeftButton);
            },
            kCurrentCol },
        { "delete", [](BoundGraph &bound, SlideHand &) { bound.graph.OnTreeDelete(); },
            kCurrentCol },
    };
}

/// The graph as an operation finds it: shown, column 2 current.
class SweptGraph : public BoundGraph
{
public:
    SweptGraph() : BoundGraph(kFigure), hand(graph)
    {
        before = host.GetProject();
        GetDoc()->SetCol(kCurrentCol);
        sound = Expected(PlannedBoxes(), kCurrentCol);
        if (Picture() != sound)
            qFatal("the graph is not shown as it is planned");
        Reset();
    }

    void Reset()
    {
        host.Faults().Clear();
        GetDoc()->SetCol(kCurrentCol);
        vnLog::Instance()->Clear();
    }

    /// @return what is wrong behind an operation
    QByteArray Error()
    {
        host.Faults().Clear();
        if (!(host.GetProject() == before) || host.ChangeCount() > 0)
            return "the project has changed";
        if (!host.Account().isEmpty())
            return "open: " + host.Account().join(", ");
        if (!host.Complaints().isEmpty())
            return "complaints: " + host.TakeComplaints().join(", ");
        const int col = GetDoc()->GetCol();
        if (Picture() != Expected(PlannedBoxes(), col))
            return "the next paint is not the truth";
        return {};
    }

    SlideHand hand;
    QImage sound;
    rostrum::Project before;
};

QByteArrayList CallsOf(const Operation &operation)
{
    SweptGraph swept;
    swept.host.GetTrace().Start();
    operation.run(swept, swept.hand);
    swept.host.GetTrace().Stop();
    return swept.host.GetTrace().Functions();
}

void AddRows()
{
    QTest::addColumn<int>("number");
    const QVector<Operation> operations = Operations();
    for (int i = 0; i < operations.size(); ++i)
        QTest::newRow(operations[i].name) << i;
}

/// The columns that may be current behind an operation in which calls failed: the one before, the
/// picked one, and column 0, as which an index reads that the host did not tell.
bool MayBeCurrent(int col, const Operation &operation)
{
    return col == kCurrentCol || col == operation.picked
        || (col == 0 && operation.picked != kCurrentCol);
}

} // namespace

void TestGraphFaults::initTestCase()
{
    SetDarkColors();
    qRegisterMetaType<UpdateLevel>("UpdateLevel");
}

void TestGraphFaults::eachCallFailsOnce_data()
{
    AddRows();
}

void TestGraphFaults::eachCallFailsOnce()
{
    QFETCH(const int, number);
    const Operation operation = Operations()[number];
    const QByteArrayList calls = CallsOf(operation);
    QVERIFY(!calls.isEmpty() || QByteArray(operation.name) == "drag");
    // These are not told: the answer is then 0.
    const QByteArrayList unchecked{ "AEGP_GetCompNumLayers", "AEGP_GetLayerIndex" };

    SweptGraph swept;
    for (int k = 0; k < calls.size(); ++k) {
        swept.Reset();
        swept.host.FailNth(k + 1);
        operation.run(swept, swept.hand);

        const QByteArray where = calls[k] + ", call " + QByteArray::number(k + 1);
        const QByteArray log(vnLog::Instance()->Text());
        const bool isTold = log.startsWith("\r\n-ERR I- line ");
        QVERIFY2(isTold || unchecked.contains(calls[k]), (where + " logs " + log).constData());
        QVERIFY2(MayBeCurrent(GetDoc()->GetCol(), operation), where.constData());
        const QByteArray error = swept.Error();
        QVERIFY2(error.isEmpty(), (where + ": " + error).constData());
    }
}

void TestGraphFaults::eachFunctionFailsForGood_data()
{
    AddRows();
}

void TestGraphFaults::eachFunctionFailsForGood()
{
    QFETCH(const int, number);
    const Operation operation = Operations()[number];
    QByteArrayList tried;
    for (const QByteArray &function : CallsOf(operation)) {
        if (tried.contains(function))
            continue;
        tried << function;
        SweptGraph swept;
        swept.host.FailEvery(function);
        operation.run(swept, swept.hand);
        QVERIFY2(MayBeCurrent(GetDoc()->GetCol(), operation), function.constData());
        const QByteArray error = swept.Error();
        QVERIFY2(error.isEmpty(), (function + ": " + error).constData());
    }
}

void TestGraphFaults::aMissingSuiteEndsTheEventAlone_data()
{
    QTest::addColumn<QByteArray>("suite");
    QTest::addColumn<int>("version");
    QTest::newRow("project") << QByteArray(AEGP_ProjSuite5::kName) << AEGP_ProjSuite5::kVersion;
    QTest::newRow("item") << QByteArray(AEGP_ItemSuite7::kName) << AEGP_ItemSuite7::kVersion;
    QTest::newRow("composition") << QByteArray(AEGP_CompSuite6::kName) << AEGP_CompSuite6::kVersion;
    QTest::newRow("layer") << QByteArray(AEGP_LayerSuite4::kName) << AEGP_LayerSuite4::kVersion;
}

void TestGraphFaults::aMissingSuiteEndsTheEventAlone()
{
    QFETCH(const QByteArray, suite);
    QFETCH(const int, version);
    for (const Operation &operation : Operations()) {
        if (QByteArray(operation.name) == "delete") // a slot is no event
            continue;
        SweptGraph swept;
        QSignalSpy spy(&swept.graph, &WExpoGraph::SigSomethingHasChanged);
        swept.host.Withhold(suite, version);
        operation.run(swept, swept.hand); // and nothing is thrown at us
        // Qt's own paint of a shown widget goes on as well.
        swept.graph.repaint();
        QCOMPARE(GetDoc()->GetCol(), kCurrentCol);
        const bool isRoot = QByteArray(operation.name) == "click on root";
        const bool needsLayers = suite == AEGP_LayerSuite4::kName;
        QCOMPARE(spy.count(), isRoot && !needsLayers ? 1 : 0);
        const QByteArray error = swept.Error();
        QVERIFY2(error.isEmpty(), (operation.name + (": " + error)).constData());
    }
    SweptGraph swept;
    swept.host.Withhold(suite, version);
    QImage background(swept.graph.size(), QImage::Format_ARGB32);
    background.fill(kBase);
    QCOMPARE(swept.Picture().convertToFormat(QImage::Format_ARGB32), background);
}

void TestGraphFaults::aPaintWhoseLayersFailShowsTheOthers()
{
    SweptGraph swept;
    QVector<Box> boxes = swept.PlannedBoxes();
    swept.host.FailEvery("AEGP_GetLayerParent");
    QCOMPARE(swept.Picture(), swept.Expected({}));
    swept.host.Faults().Clear();
    swept.host.FailEvery("AEGP_GetCompLayerByIndex");
    QCOMPARE(swept.Picture(), swept.Expected({}));
    swept.host.Faults().Clear();

    swept.host.FailEvery("AEGP_GetLayerName");
    for (Box &box : boxes)
        box.name = QStringLiteral("ERR");
    QCOMPARE(swept.Picture(), swept.Expected(boxes, kCurrentCol));
    swept.host.Faults().Clear();
    QCOMPARE(swept.Picture(), swept.sound);
}

void TestGraphFaults::withoutABasicSuiteThePaintEndsAtOnce()
{
    SweptGraph swept;
    GetVipLi()->BasicSuite = nullptr;
    QImage background(swept.graph.size(), QImage::Format_ARGB32);
    background.fill(kBase);
    QCOMPARE(swept.Picture().convertToFormat(QImage::Format_ARGB32), background);
    swept.hand.Click(swept.InBox({ 0, 0 }), Qt::LeftButton);
    GetVipLi()->BasicSuite = swept.host.BasicSuite();
    QCOMPARE(swept.Picture(), swept.sound);
}

VN_HOST_TEST_MAIN(TestGraphFaults)
#include "tst_graph_faults.moc"
