#include "PanelFixture.h"

#include "T_Types/T_QtEdit.h"
#include "panel/WinGridDataAE.h"
#include "shell/Assert.h"
#include "shell/SuiteHandler.h"
#include "support/vnLog.h"

#include <functional>

/// The panel over a host whose calls fail, each of them once. Whatever fails, nothing stays open, no
/// rule of the host is broken, and the next poll shows the panel whole.
class TestPanelFaults : public QObject
{
    Q_OBJECT

private slots:
    void eachCallFailsOnce_data();
    void eachCallFailsOnce();
    void eachSuiteIsMissing_data();
    void eachSuiteIsMissing();
    void aPanelThatCannotBeBuiltHoldsNothing_data();
    void aPanelThatCannotBeBuiltHoldsNothing();
};

namespace {

constexpr int kFrames = 8; // few, since a reload reads every cell

struct Operation
{
    const char *name;
    std::function<void(PanelFixture &)> run;
    bool onPanel = true; // the panel stands on a cell before
};

QVector<Operation> Operations()
{
    const auto change = [](const void *field) {
        return [field](PanelFixture &shown) {
            shown.panel->OnSpinChanged(shown.Editor(field).GetVar());
        };
    };
    return {
        { "construction", [](PanelFixture &shown) { shown.Open(); }, /*onPanel=*/false },
        { "a poll that finds another composition",
            [](PanelFixture &shown) {
                GetVipLi()->CompoName[0] = '\0';
                shown.panel->OnHostIdle();
            } },
        { "a poll that follows the host's cell",
            [](PanelFixture &shown) {
                GetDoc()->syncColumn = GetDoc()->syncIma = true;
                shown.SetHostFrame(7);
                shown.Document().view.selections[shown.composition] = { shown.layers[2] };
                shown.panel->OnHostIdle();
            } },
        { "an update of the cells",
            [](PanelFixture &shown) { shown.panel->OnUpdate(UpdCells, nullptr); } },
        { "a number", change(&GetDoc()->posX) },
        { "the scale", change(&GetDoc()->scale) },
        { "a key",
            [change](PanelFixture &shown) {
                GetDoc()->keyPos = true;
                change (&GetDoc()->keyPos)(shown);
            } },
        { "a key that goes",
            [change](PanelFixture &shown) {
                GetDoc()->keyPos = false;
                change (&GetDoc()->keyPos)(shown);
            } },
        { "a column that moves", [](PanelFixture &shown) { shown.panel->MoveCol(1, 1); } },
        { "a column of the project's folder",
            [](PanelFixture &shown) {
                shown.Document().path = QStringLiteral("/art/scene.rostrum");
                GetDoc()->name = QStringLiteral("none");
                shown.panel->OnCreateCol();
            } },
        { "the list of compositions",
            [](PanelFixture &shown) {
                QStringList list;
                shown.panel->OnReloadCompoList(list);
            } },
    };
}

void Prepare(PanelFixture &shown, const Operation &operation)
{
    shown.Change(shown.layers[0], [](rostrum::Layer &layer) {
        layer.position.InsertKey({ 5, 25 }, { 10, 20 });
    });
    if (operation.onPanel) {
        shown.OpenOnCompo();
        shown.ClickCell(0, 5);
    }
    shown.Document().CloseLooseEnds();
    shown.host.Faults().Clear();
}

/// The panel as it stands when all is well again.
void ExpectWhole(PanelFixture &shown, const QByteArray &where)
{
    shown.host.Faults().Clear();
    if (!shown.panel)
        return;
    shown.host.ReturnToEventLoop();
    const QByteArrayList complaints = shown.host.TakeComplaints();
    for (const QByteArray &complaint : complaints) {
        // By rule: a reload that fails leaves its group; a group that did not open is closed.
        QVERIFY2(complaint == "undo group \"morvex:Reload\" was left open"
                || complaint == "AEGP_EndUndoGroup: no undo group is open",
            (where + ": " + complaint).constData());
    }
    QVERIFY2(shown.host.Account().size() == 2, where.constData()); // the panel's suites
    GetVipLi()->CompoName[0] = '\0';
    GetDoc()->syncColumn = GetDoc()->syncIma = false;
    shown.Poll();
    QVERIFY2(shown.panel->windowTitle() == QLatin1String("scene 7"), where.constData());
    QVERIFY2(shown.Headers().size() == 3, where.constData());
    QVERIFY2(shown.EnabledTabs().size() == 6, where.constData());
    shown.TakeLog();
}

/// "name|version" of what an operation uses.
QByteArrayList SuitesOf(const Operation &operation)
{
    PanelFixture shown(kFrames);
    Prepare(shown, operation);
    shown.host.GetTrace().Start();
    operation.run(shown);
    QByteArrayList suites;
    for (const rostrum::TraceEntry &entry : shown.host.GetTrace().Entries()) {
        const QByteArray suite = QByteArray(entry.suite) + '|' + QByteArray::number(entry.version);
        if (QByteArray(entry.function).startsWith("AEGP_") && !suites.contains(suite))
            suites << suite;
    }
    shown.host.GetTrace().Stop();
    shown.TakeLog();
    shown.host.ReturnToEventLoop();
    return suites;
}

void AddRows()
{
    QTest::addColumn<int>("number");
    const QVector<Operation> operations = Operations();
    for (int i = 0; i < operations.size(); ++i)
        QTest::newRow(operations[i].name) << i;
}

} // namespace

void TestPanelFaults::eachCallFailsOnce_data()
{
    AddRows();
}

void TestPanelFaults::eachCallFailsOnce()
{
    QFETCH(int, number);
    const Operation operation = Operations()[number];
    int calls = 0;
    {
        PanelFixture shown(kFrames);
        Prepare(shown, operation);
        shown.host.Faults().SpareGiveBacks(true);
        operation.run(shown);
        calls = shown.host.CallCount();
        shown.host.Faults().Clear();
        shown.TakeLog();
        shown.host.ReturnToEventLoop();
    }
    QVERIFY(calls > 0);
    for (int k = 1; k <= calls; ++k) {
        PanelFixture shown(kFrames);
        Prepare(shown, operation);
        shown.host.Faults().SpareGiveBacks(true);
        shown.host.FailNth(k);
        operation.run(shown);
        ExpectWhole(shown, QByteArray(operation.name) + ", call " + QByteArray::number(k));
        if (QTest::currentTestFailed())
            return;
    }
}

void TestPanelFaults::eachSuiteIsMissing_data()
{
    AddRows();
}

void TestPanelFaults::eachSuiteIsMissing()
{
    QFETCH(int, number);
    const Operation operation = Operations()[number];
    if (!operation.onPanel)
        return; // a test of its own
    for (const QByteArray &suite : SuitesOf(operation)) {
        PanelFixture shown(kFrames);
        Prepare(shown, operation);
        shown.host.Withhold(suite.split('|')[0], suite.split('|')[1].toInt());
        SuiteErr thrown = A_Err_NONE;
        try {
            operation.run(shown);
        } catch (SuiteErr error) {
            thrown = error;
        }
        QCOMPARE(thrown, PF_Err_BAD_CALLBACK_PARAM);
        ExpectWhole(shown, QByteArray(operation.name) + " without " + suite);
        if (QTest::currentTestFailed())
            return;
    }
}

void TestPanelFaults::aPanelThatCannotBeBuiltHoldsNothing_data()
{
    QTest::addColumn<QByteArray>("suite");
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("error");
    QTest::newRow("the base's first") << QByteArray("PF AE App Suite") << 6 << A_Err_MISSING_SUITE;
    QTest::newRow("the base's second")
        << QByteArray("AEGP Workspace Panel Suite") << 1 << A_Err_MISSING_SUITE;
    QTest::newRow("the effects, behind the children")
        << QByteArray("AEGP Effect Suite") << 3 << PF_Err_BAD_CALLBACK_PARAM;
}

void TestPanelFaults::aPanelThatCannotBeBuiltHoldsNothing()
{
    QFETCH(QByteArray, suite);
    QFETCH(int, version);
    QFETCH(int, error);
    PanelFixture shown(kFrames);
    shown.host.Withhold(suite, version);
    SuiteErr thrown = A_Err_NONE;
    try {
        shown.Open();
    } catch (SuiteErr err) {
        thrown = err;
    }
    QCOMPARE(thrown, error);
    QVERIFY(!shown.panel);
    QCOMPARE(shown.host.Account(), QByteArrayList());
    shown.host.Faults().Clear();
    shown.Open(); // the second time it goes well
    shown.TakeLog();
    shown.Poll();
    QCOMPARE(shown.Grid().columnCount(), 3);
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    testing::CollectHostEnds();
    SetAssertHandler([](const char *, const char *) {}); // a missing suite is what is tested
    TestPanelFaults tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_panel_faults.moc"
