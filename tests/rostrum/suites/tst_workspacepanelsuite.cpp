#include "SuiteChecks.h"

#include "testhost/FakePlugin.h"
#include "testhost/FakeWindows.h"

using namespace rostrum;
using namespace testing;

namespace {

const A_u_char *Name(const char *name)
{
    return reinterpret_cast<const A_u_char *>(name);
}

/// "shown front", "shown", "hidden", or the error.
QByteArray StateOf(const char *name)
{
    const Suite<AEGP_WorkspacePanelSuite1> suite;
    A_Boolean shown = 7;
    A_Boolean front = 7;
    const A_Err error = suite->AEGP_IsShown(Name(name), &shown, &front);
    if (error)
        return "error " + QByteArray::number(error);
    return shown ? front ? "shown front" : "shown" : front ? "front but hidden" : "hidden";
}

} // namespace

class TestWorkspacePanelSuite : public QObject
{
    Q_OBJECT

private slots:
    void thePanelIsMadeWhenItIsFirstShown();
    void aClosedPanelIsHiddenAndUsedAgain();
    void aPanelBehindAnotherIsBroughtToFront();
    void aPanelThatTheUserClosedOpensAgain();
    void aPanelNobodyRegisteredIsRefused();
    void aMatchNameIsRegisteredOnce();
    void withoutAContainerThereIsNoPanel();
    void aFailingHookIsAnswered();
    void aPanelMayRegisterAnotherWhileItIsMade();
    void theSuitesThatAPanelHoldsForLifeAreHeldByRule();
    void nullArgumentsAreMisuses();
};

void TestWorkspacePanelSuite::thePanelIsMadeWhenItIsFirstShown()
{
    SheetFixture sheet;
    FakeWindows windows(sheet.host.Driver());
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    QCOMPARE(sheet.host.Driver().Panels(), QVector<QByteArray>({ "fake panel" }));
    QCOMPARE(StateOf("fake panel"), QByteArray("hidden"));
    QVERIFY(windows.made.isEmpty());
    const Suite<AEGP_WorkspacePanelSuite1> suite;
    QCOMPARE(suite->AEGP_ToggleVisibility(Name("fake panel")), A_Err_NONE);
    QCOMPARE(windows.made, QByteArrayList({ "fake panel" }));
    QCOMPARE(plugin.calls, QByteArrayList({ "entry 17.0", "panel" }));
    QCOMPARE(plugin.container, reinterpret_cast<AEGP_PlatformViewRef>(quintptr(1001)));
    QCOMPARE(StateOf("fake panel"), QByteArray("shown front"));
    QVERIFY(sheet.host.Driver().IsPanelMade("fake panel"));
    QVERIFY(sheet.host.Driver().IsBackgroundPainted("fake panel"));
    QVERIFY(!sheet.host.Driver().IsBackgroundPainted("nobody's"));
    QVERIFY(plugin.refconsRight);
}

void TestWorkspacePanelSuite::aClosedPanelIsHiddenAndUsedAgain()
{
    SheetFixture sheet;
    FakeWindows windows(sheet.host.Driver());
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    const Suite<AEGP_WorkspacePanelSuite1> suite;
    for (const char *state : { "shown front", "hidden", "shown front" }) {
        QCOMPARE(suite->AEGP_ToggleVisibility(Name("fake panel")), A_Err_NONE);
        QCOMPARE(StateOf("fake panel"), QByteArray(state));
    }
    QCOMPARE(windows.made.size(), 1);
    QCOMPARE(plugin.calls.count("panel"), 1);
}

void TestWorkspacePanelSuite::aPanelBehindAnotherIsBroughtToFront()
{
    SheetFixture sheet;
    FakeWindows windows(sheet.host.Driver());
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    const Suite<AEGP_WorkspacePanelSuite1> suite;
    QCOMPARE(suite->AEGP_ToggleVisibility(Name("fake panel")), A_Err_NONE);
    windows.Raise("the project list");
    QCOMPARE(StateOf("fake panel"), QByteArray("shown"));
    QCOMPARE(suite->AEGP_ToggleVisibility(Name("fake panel")), A_Err_NONE);
    QCOMPARE(StateOf("fake panel"), QByteArray("shown front"));
}

void TestWorkspacePanelSuite::aPanelThatTheUserClosedOpensAgain()
{
    SheetFixture sheet;
    FakeWindows windows(sheet.host.Driver());
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    const Suite<AEGP_WorkspacePanelSuite1> suite;
    QCOMPARE(suite->AEGP_ToggleVisibility(Name("fake panel")), A_Err_NONE);
    windows.Hide("fake panel");
    QCOMPARE(StateOf("fake panel"), QByteArray("hidden"));
    QCOMPARE(suite->AEGP_ToggleVisibility(Name("fake panel")), A_Err_NONE);
    QCOMPARE(StateOf("fake panel"), QByteArray("shown front"));
    QCOMPARE(plugin.calls.count("panel"), 1);
}

void TestWorkspacePanelSuite::aPanelNobodyRegisteredIsRefused()
{
    SheetFixture sheet;
    FakeWindows windows(sheet.host.Driver());
    const Suite<AEGP_WorkspacePanelSuite1> suite;
    QCOMPARE(suite->AEGP_ToggleVisibility(Name("nobody's")), A_Err_PARAMETER);
    QCOMPARE(StateOf("nobody's"), QByteArray("error 3"));
    QCOMPARE(StateOf(""), QByteArray("error 3"));
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
}

void TestWorkspacePanelSuite::aMatchNameIsRegisteredOnce()
{
    SheetFixture sheet;
    FakePlugin plugin;
    plugin.onEntry = [&] {
        const A_Err first = plugin.RegisterAll();
        const A_Err second = plugin.RegisterAll();
        plugin.panelName = "";
        const A_Err empty = plugin.RegisterAll();
        return first == A_Err_NONE && second == A_Err_PARAMETER ? empty : A_Err_NONE;
    };
    QCOMPARE(plugin.Enter(sheet.host), A_Err_PARAMETER);
    QCOMPARE(sheet.host.Driver().Panels().size(), 1);
}

void TestWorkspacePanelSuite::withoutAContainerThereIsNoPanel()
{
    SheetFixture sheet;
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    const Suite<AEGP_WorkspacePanelSuite1> suite;
    QCOMPARE(suite->AEGP_ToggleVisibility(Name("fake panel")), A_Err_GENERIC); // no windows at all
    FakeWindows windows(sheet.host.Driver());
    windows.refuse = true;
    QCOMPARE(suite->AEGP_ToggleVisibility(Name("fake panel")), A_Err_GENERIC);
    QCOMPARE(plugin.calls, QByteArrayList({ "entry 17.0" }));
    windows.refuse = false;
    QCOMPARE(suite->AEGP_ToggleVisibility(Name("fake panel")), A_Err_NONE);
    QCOMPARE(StateOf("fake panel"), QByteArray("shown front"));
}

void TestWorkspacePanelSuite::aFailingHookIsAnswered()
{
    SheetFixture sheet;
    FakeWindows windows(sheet.host.Driver());
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    plugin.onCreatePanel = [](AEGP_PanelFunctions1 *) { return A_Err_ALLOC; };
    const Suite<AEGP_WorkspacePanelSuite1> suite;
    QCOMPARE(suite->AEGP_ToggleVisibility(Name("fake panel")), A_Err_ALLOC);
    QCOMPARE(StateOf("fake panel"), QByteArray("hidden"));
    QVERIFY(sheet.host.Driver().PanelFlyout("fake panel").isEmpty());
    QVERIFY(sheet.host.Driver().PanelSnapSizes("fake panel").isEmpty());
}

void TestWorkspacePanelSuite::aPanelMayRegisterAnotherWhileItIsMade()
{
    SheetFixture sheet;
    FakeWindows windows(sheet.host.Driver());
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    plugin.onCreatePanel = [&](AEGP_PanelFunctions1 *functions) {
        functions->GetSnapSizes = [](AEGP_PanelRefcon, A_LPoint *sizes, A_long *count) {
            sizes[0] = { 100, 200 };
            *count = 1;
            return A_Err_NONE;
        };
        for (int i = 0; i < 50; ++i) {
            sheet.host.Driver().AddPanelHook(
                plugin.id, "panel " + QByteArray::number(i),
                [](AEGP_GlobalRefcon, AEGP_CreatePanelRefcon, AEGP_PlatformViewRef, AEGP_PanelH,
                    AEGP_PanelFunctions1 *, AEGP_PanelRefcon *) { return A_Err_NONE; },
                nullptr, true);
        }
        return A_Err_NONE;
    };
    const Suite<AEGP_WorkspacePanelSuite1> suite;
    QCOMPARE(suite->AEGP_ToggleVisibility(Name("fake panel")), A_Err_NONE);
    QCOMPARE(sheet.host.Driver().Panels().size(), 51);
    QCOMPARE(sheet.host.Driver().PanelSnapSizes("fake panel").size(), 1);
}

void TestWorkspacePanelSuite::theSuitesThatAPanelHoldsForLifeAreHeldByRule()
{
    SheetFixture sheet;
    FakeWindows windows(sheet.host.Driver());
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    const Suite<AEGP_WorkspacePanelSuite1> objects; // the plug-in object's
    QCOMPARE(sheet.host.OpenHandles(), 0);
    {
        const Suite<PF_AppSuite4> early; // held by no panel yet
        QCOMPARE(sheet.host.Account(), QByteArrayList{ "suite \"PF AE App Suite\" 6" });
    }
    QCOMPARE(objects->AEGP_ToggleVisibility(Name("fake panel")), A_Err_NONE);
    const Suite<AEGP_WorkspacePanelSuite1> panels;
    const Suite<PF_AppSuite4> app;
    QCOMPARE(sheet.host.OpenHandles(), 0);
    QCOMPARE(sheet.host.HeldByRule(),
        (QByteArrayList{ "suite \"AEGP Workspace Panel Suite\" 1",
            "suite \"AEGP Workspace Panel Suite\" 1", "suite \"PF AE App Suite\" 6" }));
    {
        const Suite<PF_AppSuite4> twice;
        QCOMPARE(sheet.host.Account(), QByteArrayList{ "suite \"PF AE App Suite\" 6" });
    }
}

void TestWorkspacePanelSuite::nullArgumentsAreMisuses()
{
    SheetFixture sheet;
    const Suite<AEGP_WorkspacePanelSuite1> suite;
    A_Boolean flag = 0;
    const AEGP_CreatePanelHook hook
        = [](AEGP_GlobalRefcon, AEGP_CreatePanelRefcon, AEGP_PlatformViewRef, AEGP_PanelH,
              AEGP_PanelFunctions1 *, AEGP_PanelRefcon *) { return A_Err_NONE; };
    RefusesNull(sheet.host,
        { { "AEGP_RegisterCreatePanelHook",
              [&] { return suite->AEGP_RegisterCreatePanelHook(21, nullptr, hook, nullptr, 1); } },
            { "AEGP_RegisterCreatePanelHook",
                [&] {
                    return suite->AEGP_RegisterCreatePanelHook(21, Name("x"), nullptr, nullptr, 1);
                } },
            { "AEGP_ToggleVisibility", [&] { return suite->AEGP_ToggleVisibility(nullptr); } },
            { "AEGP_IsShown", [&] { return suite->AEGP_IsShown(nullptr, &flag, &flag); } },
            { "AEGP_IsShown", [&] { return suite->AEGP_IsShown(Name("x"), nullptr, &flag); } },
            { "AEGP_IsShown", [&] { return suite->AEGP_IsShown(Name("x"), &flag, nullptr); } } });
    QCOMPARE(suite->AEGP_RegisterCreatePanelHook(21, Name("x"), hook, nullptr, 1), A_Err_PARAMETER);
    QCOMPARE(sheet.host.TakeComplaints(),
        QByteArrayList{ "AEGP_RegisterCreatePanelHook: no plug-in has the id 21" });
}

VN_HOST_TEST_MAIN(TestWorkspacePanelSuite)
#include "tst_workspacepanelsuite.moc"
