#include "shell/EntryPoint.h"
#include "shell/vnMorvex.h"

#include "ShellHost.h"
#include "testing/TestMain.h"
#include "vnAE/vipLi.h"

#include <cstdlib>
#include <new>

namespace {

bool nothrowNewFails = false;
std::size_t failingSize = 0; // bytes; an allocation of this size fails, 0: none does

} // namespace

// The program's allocation, so that a test can let one fail.
void *operator new(std::size_t size)
{
    if (failingSize != 0 && size == failingSize)
        throw std::bad_alloc();
    if (void *memory = std::malloc(size ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return nothrowNewFails ? nullptr : std::malloc(size ? size : 1);
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, const std::nothrow_t &) noexcept
{
    std::free(memory);
}

namespace {

using shellHost::state;
using Calls = QList<QByteArray>;
using Held = QHash<QByteArray, int>;

constexpr AEGP_PluginID kPluginId = 23;

template <class Pointer>
Pointer Address(quintptr number)
{
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a host's handles are numbers, any will do
    return reinterpret_cast<Pointer>(number);
}

const auto kUnwritten = Address<AEGP_GlobalRefcon>(0x77);

/// Stands in for the panel; notes in the host's list of calls what it is told.
class StandInPanel : public MorvexPanel
{
public:
    ~StandInPanel() override { state.calls << name + " deleted"; }
    void ScheduleRefresh() override { state.calls << name + " ScheduleRefresh"; }
    void OnHostIdle() override
    {
        state.calls << name + " OnHostIdle";
        if (throws)
            throw SuiteErr(516);
    }
    AEGP_PanelRefcon Refcon() override { return Address<AEGP_PanelRefcon>(number); }

    QByteArray name = "panel";
    quintptr number = 0;
    bool throws = false;
};

StandInPanel *nextPanel = nullptr; // what the factory answers
QByteArray factoryCall;

MorvexPanel *MakeStandIn(SPBasicSuite *basicSuite, AEGP_PluginID pluginId, AEGP_PanelH panel,
    AEGP_PlatformViewRef container, AEGP_PanelFunctions1 *functions)
{
    const auto hex = [](const void *pointer) {
        return QByteArray::number(reinterpret_cast<quintptr>(pointer), 16);
    };
    factoryCall = (basicSuite == &shellHost::basicSuite ? "ours " : "another ")
        + QByteArray::number(pluginId) + ' ' + hex(panel) + ' ' + hex(container) + ' '
        + hex(functions);
    return nextPanel;
}

MorvexPanel *ThrowInstead(
    SPBasicSuite *, AEGP_PluginID, AEGP_PanelH, AEGP_PlatformViewRef, AEGP_PanelFunctions1 *)
{
    throw SuiteErr(A_Err_MISSING_SUITE);
}

/// The plug-in as the host has it: built through the entry point, called through its hooks.
class Plugin
{
public:
    Plugin()
    {
        result = EntryPointFunc(&shellHost::basicSuite, /*majorVersion=*/17, /*minorVersion=*/0,
            kPluginId, &globalRefcon);
        registration = state.calls;
        state.calls.clear();
    }
    ~Plugin()
    {
        if (globalRefcon != kUnwritten)
            delete reinterpret_cast<vnMorvex *>(globalRefcon);
    }
    Plugin(const Plugin &) = delete;
    Plugin &operator=(const Plugin &) = delete;

    A_Err Command(AEGP_Command command)
    {
        return state.commandHook(globalRefcon, state.commandRefcon, command, AEGP_HP_BeforeAE,
            /*alreadyHandled=*/0, &handled);
    }
    A_Err Idle() { return state.idleHook(globalRefcon, state.idleRefcon, &maxSleep); }
    A_Err UpdateMenu()
    {
        return state.updateMenuHook(globalRefcon, state.updateMenuRefcon, AEGP_WindType_COMP);
    }
    A_Err Death() { return state.deathHook(globalRefcon, state.deathRefcon); }
    A_Err CreatePanel()
    {
        return state.createPanelHook(globalRefcon, state.createPanelRefcon,
            Address<AEGP_PlatformViewRef>(0xC0), Address<AEGP_PanelH>(0xA1),
            Address<AEGP_PanelFunctions1 *>(0xF2), &panelRefcon);
    }
    /// Calls what is registered, as a host does that knows nothing of a failure.
    void CallEveryHook()
    {
        if (state.commandHook)
            QCOMPARE(Command(16), 0);
        if (state.idleHook)
            QCOMPARE(Idle(), 0);
        if (state.updateMenuHook)
            QCOMPARE(UpdateMenu(), 0);
        if (state.deathHook)
            QCOMPARE(Death(), 0);
        if (state.createPanelHook)
            QCOMPARE(CreatePanel(), 0);
    }

    A_Err result = -1;
    AEGP_GlobalRefcon globalRefcon = kUnwritten;
    Calls registration;
    A_Boolean handled = 0xAB;
    A_long maxSleep = 1234;
    AEGP_PanelRefcon panelRefcon = Address<AEGP_PanelRefcon>(0x99);
};

const Held kPanelSuiteOnly = { { "AEGP Workspace Panel Suite 1", 1 } };

const Calls kRegistration = {
    "AEGP_GetUniqueCommand",
    "AEGP_InsertMenuCommand 4711 morvex 7 -2",
    "AEGP_RegisterCommandHook 23 1 0",
    "AEGP_RegisterIdleHook 23",
    "AEGP_RegisterUpdateMenuHook 23",
    "AEGP_RegisterDeathHook 23",
    "AEGP_RegisterCreatePanelHook 23 morvex 1",
};

} // namespace

class TestVnMorvex : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aFailingLibraryAllocationCleansUpTheBase(); // first: the library is made once a process
    void anAllocationThatGivesNullLeavesANullRefcon();
    void constructionShowsTheHostItsStepsInOrder();
    void onlyThePanelSuiteStaysHeld();
    void theHooksAreRegisteredWithTheirRefcons();
    void theLibraryGetsTheBasicSuiteAndThePluginId();
    void aNullBasicSuiteLeavesTheEntryPointReturning0();
    void aFailingHostCallLeavesTheEntryPointReturning0();
    void aWithheldSuiteLeavesTheEntryPointReturning0_data();
    void aWithheldSuiteLeavesTheEntryPointReturning0();
    void aCommandOfTheHostSchedulesARefresh_data();
    void aCommandOfTheHostSchedulesARefresh();
    void undoWithNoPanelSchedulesNothing();
    void ourCommandTogglesThePanel();
    void aCommandThatIsListedAndOursDoesBoth();
    void theHandledFlagIsNeverWritten_data();
    void theHandledFlagIsNeverWritten();
    void aFailingToggleIsNotTold();
    void idleWithNoPanelStillWrites10();
    void idleIsForwardedToThePanel();
    void idleWrites10AlsoWhenThePanelThrows();
    void theCheckMarkStandsWhileThePanelIsInFront_data();
    void theCheckMarkStandsWhileThePanelIsInFront();
    void theFirstFailureEndsAMenuUpdate_data();
    void theFirstFailureEndsAMenuUpdate();
    void theMenuItemIsEnabledEachTimeAndNeverDisabled();
    void withoutAPanelToMakeBothPlacesGetNull();
    void thePanelIsMadeFromWhatTheHostPassed();
    void aSecondPanelReplacesTheFirstWhichIsNotTold();
    void aPanelThatCannotBeMadeAfterOneClearsIt();
    void aPanelThatThrowsLeavesTheEarlierOneAndTheRefcon();
    void theDeathHookDoesNothing();
    void hooksWithoutAnObjectDoNothing();
};

void TestVnMorvex::init()
{
    state = {};
    nextPanel = nullptr;
    factoryCall.clear();
    SetMorvexPanelFactory(MakeStandIn);
    SetAssertHandler(
        [](const char *text, const char *) { state.calls << "assert " + QByteArray(text); });
}

void TestVnMorvex::cleanup()
{
    QCOMPARE(state.held, Held()); // the plug-in is gone, and so is what it held
    SetMorvexPanelFactory(nullptr);
    SetAssertHandler(nullptr);
}

void TestVnMorvex::aFailingLibraryAllocationCleansUpTheBase()
{
    failingSize = sizeof(vipLi);
    Plugin plugin;
    failingSize = 0;
    QCOMPARE(plugin.result, 0);
    QCOMPARE(plugin.globalRefcon, kUnwritten);
    QCOMPARE(plugin.registration, kRegistration); // the base had come that far
    QCOMPARE(state.held, Held());
    plugin.CallEveryHook();
    QCOMPARE(state.calls, Calls());
}

void TestVnMorvex::anAllocationThatGivesNullLeavesANullRefcon()
{
    nothrowNewFails = true;
    Plugin plugin;
    nothrowNewFails = false;
    QCOMPARE(plugin.result, 0);
    QVERIFY(!plugin.globalRefcon);
    QCOMPARE(state.callCount, 0);
}

void TestVnMorvex::constructionShowsTheHostItsStepsInOrder()
{
    const Plugin plugin;
    QCOMPARE(plugin.result, 0);
    QCOMPARE(plugin.registration, kRegistration);
}

void TestVnMorvex::onlyThePanelSuiteStaysHeld()
{
    Plugin plugin;
    QCOMPARE(state.held, kPanelSuiteOnly);
    QCOMPARE(plugin.UpdateMenu(), 0);
    QCOMPARE(plugin.Command(4711), 0);
    QCOMPARE(state.held, kPanelSuiteOnly);
}

void TestVnMorvex::theHooksAreRegisteredWithTheirRefcons()
{
    const Plugin plugin;
    const void *const object = plugin.globalRefcon;
    QVERIFY(object && object != kUnwritten);
    QCOMPARE(static_cast<const void *>(state.commandRefcon), object);
    QCOMPARE(static_cast<const void *>(state.idleRefcon), object);
    QVERIFY(!state.updateMenuRefcon);
    QCOMPARE(static_cast<const void *>(state.deathRefcon), object);
    QCOMPARE(static_cast<const void *>(state.createPanelRefcon), object);
}

void TestVnMorvex::theLibraryGetsTheBasicSuiteAndThePluginId()
{
    GetVipLi()->BasicSuite = nullptr;
    GetVipLi()->PluginId = 0;
    const Plugin plugin;
    QCOMPARE(GetVipLi()->BasicSuite, static_cast<const SPBasicSuite *>(&shellHost::basicSuite));
    QCOMPARE(GetVipLi()->PluginId, kPluginId);
}

void TestVnMorvex::aNullBasicSuiteLeavesTheEntryPointReturning0()
{
    AEGP_GlobalRefcon refcon = kUnwritten;
    QCOMPARE(EntryPointFunc(nullptr, 17, 0, kPluginId, &refcon), 0);
    QCOMPARE(refcon, kUnwritten);
    QCOMPARE(state.calls, Calls()); // the handler's 516 comes before the helper's assertion
}

void TestVnMorvex::aFailingHostCallLeavesTheEntryPointReturning0()
{
    int calls = 0;
    {
        const Plugin plugin;
        calls = state.callCount;
    }
    QCOMPARE(calls, 10); // seven steps, three suites
    for (int k = 1; k <= calls; ++k) {
        state = {};
        state.failAt = k;
        Plugin plugin;
        QCOMPARE(plugin.result, 0);
        QCOMPARE(plugin.globalRefcon, kUnwritten);
        QCOMPARE(state.callCount, k); // the failing step was the last one
        QCOMPARE(state.held, Held());
        plugin.CallEveryHook();
        QCOMPARE(state.calls, Calls()); // what was registered stays, and does nothing
        QCOMPARE(plugin.maxSleep, 1234);
    }
}

void TestVnMorvex::aWithheldSuiteLeavesTheEntryPointReturning0_data()
{
    QTest::addColumn<QByteArray>("suite");
    QTest::addColumn<Calls>("calls");
    QTest::newRow("panel suite: nothing is registered")
        << QByteArray("AEGP Workspace Panel Suite 1") << Calls{ "assert false" };
    QTest::newRow("command suite: nothing is registered")
        << QByteArray("AEGP Command Suite 1") << Calls();
    QTest::newRow("register suite: the menu item stays without its hooks")
        << QByteArray("AEGP Register Suite 6") << kRegistration.mid(0, 2);
}

void TestVnMorvex::aWithheldSuiteLeavesTheEntryPointReturning0()
{
    QFETCH(QByteArray, suite);
    QFETCH(Calls, calls);
    state.withheld = suite;
    Plugin plugin;
    QCOMPARE(plugin.result, 0);
    QCOMPARE(plugin.globalRefcon, kUnwritten);
    QCOMPARE(plugin.registration, calls);
    QCOMPARE(state.held, Held());
}

void TestVnMorvex::aCommandOfTheHostSchedulesARefresh_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<Calls>("calls");
    const Calls refresh = { "panel ScheduleRefresh" };
    QTest::newRow("Undo") << 16 << refresh;
    QTest::newRow("Redo") << 2035 << refresh;
    QTest::newRow("Open Project") << 3 << refresh;
    QTest::newRow("Save") << 5 << Calls();
    QTest::newRow("none") << 0 << Calls();
    QTest::newRow("one before Redo") << 2034 << Calls();
    QTest::newRow("negative") << -16 << Calls();
}

void TestVnMorvex::aCommandOfTheHostSchedulesARefresh()
{
    QFETCH(int, command);
    QFETCH(Calls, calls);
    StandInPanel panel;
    nextPanel = &panel;
    Plugin plugin;
    QCOMPARE(plugin.CreatePanel(), 0);
    QCOMPARE(plugin.Command(command), 0);
    QCOMPARE(state.calls, calls);
}

void TestVnMorvex::undoWithNoPanelSchedulesNothing()
{
    Plugin plugin;
    QCOMPARE(plugin.Command(16), 0);
    QCOMPARE(state.calls, Calls());
}

void TestVnMorvex::ourCommandTogglesThePanel()
{
    StandInPanel panel;
    nextPanel = &panel;
    Plugin plugin;
    QCOMPARE(plugin.Command(4711), 0);
    QCOMPARE(plugin.CreatePanel(), 0);
    QCOMPARE(plugin.Command(4711), 0);
    QCOMPARE(plugin.Command(4712), 0);
    QCOMPARE(
        state.calls, Calls({ "AEGP_ToggleVisibility morvex", "AEGP_ToggleVisibility morvex" }));
}

void TestVnMorvex::aCommandThatIsListedAndOursDoesBoth()
{
    state.command = 16;
    StandInPanel panel;
    nextPanel = &panel;
    Plugin plugin;
    QCOMPARE(plugin.CreatePanel(), 0);
    QCOMPARE(plugin.Command(16), 0);
    QCOMPARE(state.calls, Calls({ "panel ScheduleRefresh", "AEGP_ToggleVisibility morvex" }));
}

void TestVnMorvex::theHandledFlagIsNeverWritten_data()
{
    QTest::addColumn<int>("command");
    QTest::newRow("ours") << 4711;
    QTest::newRow("Undo") << 16;
    QTest::newRow("Redo") << 2035;
    QTest::newRow("Open Project") << 3;
    QTest::newRow("another") << 5;
    QTest::newRow("none") << 0;
}

void TestVnMorvex::theHandledFlagIsNeverWritten()
{
    QFETCH(int, command);
    StandInPanel panel;
    nextPanel = &panel;
    Plugin plugin;
    QCOMPARE(plugin.Command(command), 0);
    QCOMPARE(plugin.CreatePanel(), 0);
    QCOMPARE(plugin.Command(command), 0);
    QCOMPARE(int(plugin.handled), 0xAB);
}

void TestVnMorvex::aFailingToggleIsNotTold()
{
    Plugin plugin;
    state.failing = "AEGP_ToggleVisibility";
    QCOMPARE(plugin.Command(4711), 0);
    QCOMPARE(state.calls, Calls({ "failed AEGP_ToggleVisibility" }));
}

void TestVnMorvex::idleWithNoPanelStillWrites10()
{
    Plugin plugin;
    QCOMPARE(plugin.Idle(), 0);
    QCOMPARE(plugin.maxSleep, 10);
    plugin.maxSleep = 3; // a shorter one is overwritten too
    QCOMPARE(plugin.Idle(), 0);
    QCOMPARE(plugin.maxSleep, 10);
    QCOMPARE(state.calls, Calls());
}

void TestVnMorvex::idleIsForwardedToThePanel()
{
    StandInPanel panel;
    nextPanel = &panel;
    Plugin plugin;
    QCOMPARE(plugin.CreatePanel(), 0);
    QCOMPARE(plugin.Idle(), 0);
    QCOMPARE(plugin.Idle(), 0);
    QCOMPARE(plugin.maxSleep, 10);
    QCOMPARE(state.calls, Calls({ "panel OnHostIdle", "panel OnHostIdle" }));
}

void TestVnMorvex::idleWrites10AlsoWhenThePanelThrows()
{
    StandInPanel panel;
    panel.throws = true;
    nextPanel = &panel;
    Plugin plugin;
    QCOMPARE(plugin.CreatePanel(), 0);
    QCOMPARE(plugin.Idle(), 0);
    QCOMPARE(plugin.maxSleep, 10);
}

void TestVnMorvex::theCheckMarkStandsWhileThePanelIsInFront_data()
{
    QTest::addColumn<int>("tabShown");
    QTest::addColumn<int>("frontmost");
    QTest::addColumn<QByteArray>("mark");
    QTest::newRow("shown and frontmost") << 1 << 1 << QByteArray("1");
    QTest::newRow("shown but not frontmost") << 1 << 0 << QByteArray("0");
    QTest::newRow("frontmost but not shown") << 0 << 1 << QByteArray("0");
    QTest::newRow("closed") << 0 << 0 << QByteArray("0");
    QTest::newRow("any true value counts") << 255 << 2 << QByteArray("1");
}

void TestVnMorvex::theCheckMarkStandsWhileThePanelIsInFront()
{
    QFETCH(int, tabShown);
    QFETCH(int, frontmost);
    QFETCH(QByteArray, mark);
    Plugin plugin;
    state.tabShown = static_cast<A_Boolean>(tabShown);
    state.frontmost = static_cast<A_Boolean>(frontmost);
    QCOMPARE(plugin.UpdateMenu(), 0);
    QCOMPARE(state.calls,
        Calls({ "AEGP_EnableCommand 4711", "AEGP_IsShown morvex 0 0", // both start false
            "AEGP_CheckMarkMenuCommand 4711 " + mark }));
}

void TestVnMorvex::theFirstFailureEndsAMenuUpdate_data()
{
    QTest::addColumn<Calls>("calls");
    const QByteArray enable("AEGP_EnableCommand 4711"), shown("AEGP_IsShown morvex 0 0");
    QTest::newRow("AEGP_EnableCommand") << Calls{ "failed AEGP_EnableCommand" };
    QTest::newRow("AEGP_IsShown") << Calls{ enable, "failed AEGP_IsShown" };
    QTest::newRow("AEGP_CheckMarkMenuCommand")
        << Calls{ enable, shown, "failed AEGP_CheckMarkMenuCommand" };
}

void TestVnMorvex::theFirstFailureEndsAMenuUpdate()
{
    QFETCH(Calls, calls);
    Plugin plugin;
    state.failing = QTest::currentDataTag();
    state.tabShown = state.frontmost = 1;
    QCOMPARE(plugin.UpdateMenu(), 0);
    QCOMPARE(state.calls, calls);
    QCOMPARE(state.held, kPanelSuiteOnly);
}

void TestVnMorvex::theMenuItemIsEnabledEachTimeAndNeverDisabled()
{
    Plugin plugin;
    for (int i = 0; i < 3; ++i) {
        state.tabShown = state.frontmost = i == 1 ? 1 : 0;
        QCOMPARE(plugin.UpdateMenu(), 0);
    }
    QCOMPARE(state.calls.count("AEGP_EnableCommand 4711"), 3);
    QVERIFY(!state.calls.contains("AEGP_DisableCommand 4711"));
}

void TestVnMorvex::withoutAPanelToMakeBothPlacesGetNull()
{
    Plugin plugin;
    QCOMPARE(plugin.CreatePanel(), 0); // as when there is no memory for one
    QVERIFY(!plugin.panelRefcon);
    QCOMPARE(plugin.Idle(), 0);
    QCOMPARE(plugin.Command(16), 0);
    QCOMPARE(plugin.maxSleep, 10);
    QCOMPARE(state.calls, Calls());
}

void TestVnMorvex::thePanelIsMadeFromWhatTheHostPassed()
{
    StandInPanel panel;
    panel.number = 0x5E;
    nextPanel = &panel;
    Plugin plugin;
    QCOMPARE(plugin.CreatePanel(), 0);
    QCOMPARE(factoryCall, QByteArray("ours 23 a1 c0 f2"));
    QCOMPARE(plugin.panelRefcon, Address<AEGP_PanelRefcon>(0x5E));
}

void TestVnMorvex::aSecondPanelReplacesTheFirstWhichIsNotTold()
{
    StandInPanel first, second;
    second.name = "second";
    first.number = 1;
    second.number = 2;
    Plugin plugin;
    nextPanel = &first;
    QCOMPARE(plugin.CreatePanel(), 0);
    nextPanel = &second;
    QCOMPARE(plugin.CreatePanel(), 0);
    QCOMPARE(state.calls, Calls()); // neither deleted nor told
    QCOMPARE(plugin.panelRefcon, Address<AEGP_PanelRefcon>(2));
    QCOMPARE(plugin.Command(3), 0);
    QCOMPARE(plugin.Idle(), 0);
    QCOMPARE(state.calls, Calls({ "second ScheduleRefresh", "second OnHostIdle" }));
}

void TestVnMorvex::aPanelThatCannotBeMadeAfterOneClearsIt()
{
    StandInPanel panel;
    nextPanel = &panel;
    Plugin plugin;
    QCOMPARE(plugin.CreatePanel(), 0);
    nextPanel = nullptr;
    QCOMPARE(plugin.CreatePanel(), 0);
    QVERIFY(!plugin.panelRefcon);
    QCOMPARE(plugin.Idle(), 0);
    QCOMPARE(state.calls, Calls());
}

void TestVnMorvex::aPanelThatThrowsLeavesTheEarlierOneAndTheRefcon()
{
    StandInPanel panel;
    panel.number = 7;
    nextPanel = &panel;
    Plugin plugin;
    QCOMPARE(plugin.CreatePanel(), 0);
    SetMorvexPanelFactory(ThrowInstead);
    QCOMPARE(plugin.CreatePanel(), 0);
    QCOMPARE(plugin.panelRefcon, Address<AEGP_PanelRefcon>(7));
    QCOMPARE(plugin.Idle(), 0);
    QCOMPARE(state.calls, Calls({ "panel OnHostIdle" }));
}

void TestVnMorvex::theDeathHookDoesNothing()
{
    StandInPanel panel;
    nextPanel = &panel;
    Plugin plugin;
    QCOMPARE(plugin.CreatePanel(), 0);
    QCOMPARE(plugin.Death(), 0);
    QCOMPARE(state.calls, Calls());
    QCOMPARE(state.held, kPanelSuiteOnly);
    QCOMPARE(plugin.Idle(), 0); // and what comes after it is served
    QCOMPARE(state.calls, Calls({ "panel OnHostIdle" }));
}

void TestVnMorvex::hooksWithoutAnObjectDoNothing()
{
    const Plugin plugin;
    A_long maxSleep = 55;
    QCOMPARE(state.idleHook(nullptr, state.idleRefcon, &maxSleep), 0);
    QCOMPARE(maxSleep, 55);
    QCOMPARE(state.updateMenuHook(nullptr, nullptr, AEGP_WindType_NONE), 0);
    QCOMPARE(state.commandHook(plugin.globalRefcon, nullptr, 4711, 1, 0, nullptr), 0);
    QCOMPARE(state.calls, Calls());
}

VN_TEST_MAIN(TestVnMorvex)
#include "tst_vnmorvex.moc"
