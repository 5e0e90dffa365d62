#include "shell/EntryPoint.h"
#include "shell/MorvexPanel.h"
#include "shell/Assert.h"
#include "shell/SuiteTable.h"

#include "suites/Host.h"
#include "testing/TestMain.h"

using rostrum::Host;
using rostrum::MenuItem;

namespace {

const QByteArray kPanelName = "morvex";

int assertions = 0;

/// Stands in for the panel. It notes how far the host is when it is told to refresh.
class StandInPanel : public MorvexPanel
{
public:
    void ScheduleRefresh() override
    {
        ++refreshes;
        undoStepsAtRefresh = Host::Instance()->GetDocument().UndoNames().size();
    }
    void OnHostIdle() override { ++idleCalls; }
    AEGP_PanelRefcon Refcon() override { return reinterpret_cast<AEGP_PanelRefcon>(this); }

    int refreshes = 0;
    int undoStepsAtRefresh = -1;
    int idleCalls = 0;
};

StandInPanel *standIn = nullptr;
int panelsMade = 0;

MorvexPanel *MakeStandIn(
    SPBasicSuite *, AEGP_PluginID, AEGP_PanelH, AEGP_PlatformViewRef, AEGP_PanelFunctions1 *)
{
    ++panelsMade;
    return standIn;
}

/// The host with a place for the panel, which is shown and hidden like a window.
class Desk
{
public:
    Desk()
    {
        host.onComplaint = nullptr; // they are looked at in the end
        rostrum::PanelWindows &windows = host.Driver().windows;
        windows.make = [this](const QByteArray &) { return static_cast<void *>(&shown); };
        windows.show = [this](const QByteArray &) { shown = frontmost = true; };
        windows.hide = [this](const QByteArray &) { shown = frontmost = false; };
        windows.isShown = [this](const QByteArray &) { return shown; };
        windows.isFrontmost = [this](const QByteArray &) { return frontmost; };
    }

    A_Err Enter() { return host.Driver().EnterPlugin(EntryPointFunc); }
    /// Our menu item after the host has brought its menus up to date; empty when there is none.
    MenuItem ShownItem()
    {
        host.Driver().CallUpdateMenus(AEGP_WindType_NONE);
        return host.Driver().MenuItems().value(0);
    }
    A_Err PickItem()
    {
        return host.Driver().RunCommand(host.Driver().MenuItems().value(0).command);
    }
    /// What the host complains about, and what is held that is to be given back.
    QByteArrayList Wrongs() { return host.Complaints() + host.UnexpectedCalls() + host.Account(); }
    int HeldSuites() const
    {
        int count = 0;
        for (const PublishedSuite &suite : kPublishedSuites)
            count += host.Held(suite.name, suite.version);
        return count;
    }
    /// All that the host would do with a plug-in, whether its construction went well or not.
    void LiveAndDie()
    {
        host.Driver().CallIdle();
        host.Driver().CallUpdateMenus(AEGP_WindType_COMP);
        host.Driver().RunCommand(kHostCommandUndo);
        PickItem();
        host.Driver().TogglePanel(kPanelName);
        host.Driver().CallIdle();
        host.Driver().CallDeath();
    }

    Host host;
    bool shown = false;
    bool frontmost = false;
};

const QByteArrayList kSteps = { "AEGP_GetUniqueCommand", "AEGP_InsertMenuCommand",
    "AEGP_RegisterCommandHook", "AEGP_RegisterIdleHook", "AEGP_RegisterUpdateMenuHook",
    "AEGP_RegisterDeathHook", "AEGP_RegisterCreatePanelHook" };

bool IsReached(const PublishedSuite &suite)
{
    const QByteArray name = suite.name;
    return (name == "AEGP Command Suite" && suite.version == 1)
        || (name == "AEGP Register Suite" && suite.version == 6)
        || (name == "AEGP Workspace Panel Suite" && suite.version == 1);
}

} // namespace

/// The plug-in in the stand-alone host, entered through its entry point.
class TestEntryPoint : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theHostSeesTheRegistrationsInOrder();
    void theItemStandsInTheWindowMenu();
    void onlyThePanelSuiteIsHeldForLife();
    void aFailingHostCallLeavesTheEntryPointReturning0();
    void aSuiteThatCannotBeHadLeavesTheEntryPointReturning0_data();
    void aSuiteThatCannotBeHadLeavesTheEntryPointReturning0();
    void theItemOpensAndClosesOnePanel();
    void theItemStaysEnabledWithAnEmptyProject();
    void theItemIsCheckedWhileThePanelIsInFront_data();
    void theItemIsCheckedWhileThePanelIsInFront();
    void idleAsksFor10WithAndWithoutAPanel();
    void undoWithNoPanelIsCarriedOut();
    void theRefreshIsScheduledBeforeTheHostUndoes();
    void theHostCarriesOutWhatThePanelHasSeen_data();
    void theHostCarriesOutWhatThePanelHasSeen();
    void withoutAPanelToMakeTheHostGoesOn();
    void afterTheDeathHookNothingHasChanged();
};

void TestEntryPoint::init()
{
    assertions = 0;
    panelsMade = 0;
    standIn = nullptr;
    SetAssertHandler([](const char *, const char *) { ++assertions; });
    SetMorvexPanelFactory(MakeStandIn);
}

void TestEntryPoint::cleanup()
{
    SetAssertHandler(nullptr);
    SetMorvexPanelFactory(nullptr);
}

void TestEntryPoint::theHostSeesTheRegistrationsInOrder()
{
    Desk desk;
    desk.host.GetTrace().Start();
    QCOMPARE(desk.Enter(), 0);
    QCOMPARE(desk.host.GetTrace().Functions(), kSteps);
    QCOMPARE(desk.Wrongs(), QByteArrayList());
}

void TestEntryPoint::theItemStandsInTheWindowMenu()
{
    Desk desk;
    QCOMPARE(desk.Enter(), 0);
    QCOMPARE(desk.host.Driver().MenuItems().size(), 1);
    QCOMPARE(desk.host.Driver().MenuItems()[0].text, kPanelName);
    QCOMPARE(desk.host.Driver().MenuItems()[0].menu, AEGP_Menu_WINDOW);
    QCOMPARE(desk.host.Driver().Panels(), QVector<QByteArray>({ kPanelName }));
}

void TestEntryPoint::onlyThePanelSuiteIsHeldForLife()
{
    Desk desk;
    QCOMPARE(desk.Enter(), 0);
    desk.LiveAndDie();
    QCOMPARE(desk.host.Held("AEGP Workspace Panel Suite", 1), 1);
    QCOMPARE(desk.HeldSuites(), 1);
    QCOMPARE(desk.host.HeldByRule().size(), 1);
    QCOMPARE(desk.Wrongs(), QByteArrayList());
}

void TestEntryPoint::aFailingHostCallLeavesTheEntryPointReturning0()
{
    for (int k = 1; k <= kSteps.size(); ++k) {
        Desk desk;
        desk.host.FailNth(k, /*error=*/A_Err_ALLOC);
        desk.host.GetTrace().Start();
        QCOMPARE(desk.Enter(), 0);
        QCOMPARE(desk.host.GetTrace().Functions(), QByteArrayList(kSteps.mid(0, k)));
        QCOMPARE(desk.HeldSuites(), 0);
        desk.host.Faults().Clear();
        desk.LiveAndDie();
        QCOMPARE(desk.HeldSuites(), 0);
        QCOMPARE(desk.Wrongs(), QByteArrayList());
    }
    QCOMPARE(panelsMade, 0);
}

void TestEntryPoint::aSuiteThatCannotBeHadLeavesTheEntryPointReturning0_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<bool>("asNullTable");
    for (int place = 0; place < kPublishedSuiteCount; ++place) {
        const PublishedSuite &suite = kPublishedSuites[place];
        QTest::addRow("%s %d withheld", suite.name, suite.version) << place << false;
        QTest::addRow("%s %d null", suite.name, suite.version) << place << true;
    }
}

void TestEntryPoint::aSuiteThatCannotBeHadLeavesTheEntryPointReturning0()
{
    QFETCH(int, place);
    QFETCH(bool, asNullTable);
    const PublishedSuite &suite = kPublishedSuites[place];
    Desk desk;
    if (asNullTable)
        desk.host.Faults().HandOutNull(suite.name, suite.version);
    else
        desk.host.Withhold(suite.name, suite.version);

    QCOMPARE(desk.Enter(), 0);
    desk.LiveAndDie();

    const bool stands = !IsReached(suite);
    QCOMPARE(desk.HeldSuites(), stands ? 1 : 0);
    QCOMPARE(panelsMade, stands ? 1 : 0);
    QCOMPARE(assertions, QByteArray(suite.name) == "AEGP Workspace Panel Suite" ? 1 : 0);
    QCOMPARE(desk.host.Complaints(), QByteArrayList());
    QCOMPARE(desk.host.UnexpectedCalls(), QByteArrayList());
}

void TestEntryPoint::theItemOpensAndClosesOnePanel()
{
    StandInPanel panel;
    standIn = &panel;
    Desk desk;
    QCOMPARE(desk.Enter(), 0);
    QCOMPARE(panelsMade, 0);
    QCOMPARE(desk.PickItem(), 0);
    QVERIFY(desk.shown);
    QCOMPARE(desk.PickItem(), 0);
    QVERIFY(!desk.shown);
    QCOMPARE(desk.PickItem(), 0);
    QVERIFY(desk.shown);
    QCOMPARE(panelsMade, 1);
    QCOMPARE(panel.refreshes, 0);
}

void TestEntryPoint::theItemStaysEnabledWithAnEmptyProject()
{
    Desk desk;
    QCOMPARE(desk.Enter(), 0);
    QVERIFY(!desk.host.Driver().MenuItems()[0].enabled);
    QVERIFY(desk.ShownItem().enabled);
    QVERIFY(desk.ShownItem().enabled);
}

void TestEntryPoint::theItemIsCheckedWhileThePanelIsInFront_data()
{
    QTest::addColumn<bool>("shown");
    QTest::addColumn<bool>("frontmost");
    QTest::addColumn<bool>("checked");
    QTest::newRow("in front") << true << true << true;
    QTest::newRow("shown but not frontmost") << true << false << false;
    QTest::newRow("closed") << false << false << false;
}

void TestEntryPoint::theItemIsCheckedWhileThePanelIsInFront()
{
    QFETCH(bool, shown);
    QFETCH(bool, frontmost);
    QFETCH(bool, checked);
    Desk desk;
    QCOMPARE(desk.Enter(), 0);
    QCOMPARE(desk.PickItem(), 0);
    QVERIFY(desk.ShownItem().checked);
    desk.shown = shown;
    desk.frontmost = frontmost;
    QCOMPARE(desk.ShownItem().checked, checked);
}

void TestEntryPoint::idleAsksFor10WithAndWithoutAPanel()
{
    StandInPanel panel;
    standIn = &panel;
    Desk desk;
    QVERIFY(desk.host.Driver().CallIdle() != 10); // it is the plug-in that asks
    QCOMPARE(desk.Enter(), 0);
    QCOMPARE(desk.host.Driver().CallIdle(), 10);
    QCOMPARE(panel.idleCalls, 0);
    QCOMPARE(desk.PickItem(), 0);
    QCOMPARE(desk.host.Driver().CallIdle(), 10);
    QCOMPARE(panel.idleCalls, 1);
}

void TestEntryPoint::undoWithNoPanelIsCarriedOut()
{
    Desk desk;
    QCOMPARE(desk.Enter(), 0);
    desk.host.Edit("add").AddFolder("rushes");
    desk.host.ReturnToEventLoop();
    QCOMPARE(desk.host.GetDocument().UndoNames().size(), 1);
    QCOMPARE(desk.host.Driver().RunCommand(kHostCommandUndo), 0);
    QCOMPARE(desk.host.GetDocument().UndoNames().size(), 0);
    QCOMPARE(desk.Wrongs(), QByteArrayList());
}

void TestEntryPoint::theRefreshIsScheduledBeforeTheHostUndoes()
{
    StandInPanel panel;
    standIn = &panel;
    Desk desk;
    QCOMPARE(desk.Enter(), 0);
    QCOMPARE(desk.PickItem(), 0);
    desk.host.Edit("add").AddFolder("rushes");
    desk.host.ReturnToEventLoop();

    QCOMPARE(desk.host.Driver().RunCommand(kHostCommandUndo), 0);

    QCOMPARE(panel.refreshes, 1);
    QCOMPARE(panel.undoStepsAtRefresh, 1);
    QCOMPARE(desk.host.GetDocument().UndoNames().size(), 0);
}

void TestEntryPoint::theHostCarriesOutWhatThePanelHasSeen_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("refreshes");
    QTest::newRow("Open Project") << int(kHostCommandOpenProject) << 1;
    QTest::newRow("Save") << int(kHostCommandSave) << 0;
}

void TestEntryPoint::theHostCarriesOutWhatThePanelHasSeen()
{
    QFETCH(int, command);
    QFETCH(int, refreshes);
    StandInPanel panel;
    standIn = &panel;
    Desk desk;
    int carriedOut = 0;
    desk.host.Driver().openProject = desk.host.Driver().saveProject = [&] {
        ++carriedOut;
        return A_Err_NONE;
    };
    QCOMPARE(desk.Enter(), 0);
    QCOMPARE(desk.PickItem(), 0);
    QCOMPARE(desk.host.Driver().RunCommand(command), 0);
    QCOMPARE(panel.refreshes, refreshes);
    QCOMPARE(carriedOut, 1); // the handled flag was left alone
}

void TestEntryPoint::withoutAPanelToMakeTheHostGoesOn()
{
    Desk desk;
    QCOMPARE(desk.Enter(), 0);
    QCOMPARE(desk.PickItem(), 0);
    QCOMPARE(panelsMade, 1);
    QCOMPARE(desk.host.Driver().CallIdle(), 10);
    QCOMPARE(desk.host.Driver().RunCommand(kHostCommandUndo), 0);
    QCOMPARE(desk.host.Driver().PanelFlyout(kPanelName).size(), 0);
    QCOMPARE(desk.Wrongs(), QByteArrayList());
}

void TestEntryPoint::afterTheDeathHookNothingHasChanged()
{
    StandInPanel panel;
    standIn = &panel;
    Desk desk;
    QCOMPARE(desk.Enter(), 0);
    QCOMPARE(desk.PickItem(), 0);
    desk.host.GetTrace().Start();
    desk.host.Driver().CallDeath();
    QCOMPARE(desk.host.GetTrace().Entries().size(), 0);
    QCOMPARE(panel.refreshes + panel.idleCalls, 0);
    QCOMPARE(desk.host.Driver().MenuItems().size(), 1);
    QCOMPARE(desk.HeldSuites(), 1);
}

VN_TEST_MAIN(TestEntryPoint)
#include "tst_entrypoint.moc"
