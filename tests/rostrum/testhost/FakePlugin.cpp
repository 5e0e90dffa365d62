#include "FakePlugin.h"

#include "SheetFixture.h"

#include "hostapi/Suites.h"

namespace testing {

FakePlugin *FakePlugin::current = nullptr;

FakePlugin::FakePlugin()
{
    current = this;
}

FakePlugin::~FakePlugin()
{
    current = nullptr;
}

A_Err FakePlugin::Enter(rostrum::Host &host)
{
    return host.Driver().EnterPlugin(Entry);
}

A_Err FakePlugin::RegisterAll()
{
    const Suite<AEGP_RegisterSuite5> hooks;
    const Suite<AEGP_WorkspacePanelSuite1> panels;
    const A_Err errors[] = {
        hooks->AEGP_RegisterCommandHook(
            id, AEGP_HP_BeforeAE, watched, OnCommand, RefconOf<AEGP_CommandRefcon>(1)),
        hooks->AEGP_RegisterIdleHook(id, OnIdle, RefconOf<AEGP_IdleRefcon>(2)),
        hooks->AEGP_RegisterUpdateMenuHook(id, OnUpdateMenu, RefconOf<AEGP_UpdateMenuRefcon>(3)),
        hooks->AEGP_RegisterDeathHook(id, OnDeath, RefconOf<AEGP_DeathRefcon>(4)),
        panels->AEGP_RegisterCreatePanelHook(id, reinterpret_cast<const A_u_char *>(panelName),
            OnCreatePanel, RefconOf<AEGP_CreatePanelRefcon>(5), 1),
    };
    for (const A_Err error : errors) {
        if (error)
            return error;
    }
    return A_Err_NONE;
}

A_Err FakePlugin::Entry(SPBasicSuite *basicSuite, A_long majorVersion, A_long minorVersion,
    AEGP_PluginID pluginId, AEGP_GlobalRefcon *globalRefcon)
{
    current->calls << "entry " + QByteArray::number(majorVersion) + '.'
            + QByteArray::number(minorVersion);
    current->id = pluginId;
    current->refconsRight = basicSuite == rostrum::Host::Instance()->BasicSuite();
    *globalRefcon = current->GlobalRefcon();
    return current->onEntry ? current->onEntry() : current->RegisterAll();
}

void FakePlugin::Check(AEGP_GlobalRefcon global, const void *refcon, int number)
{
    const bool right = global == GlobalRefcon()
        && reinterpret_cast<quintptr>(refcon) == static_cast<quintptr>(number);
    refconsRight = refconsRight && right;
}

A_Err FakePlugin::OnCommand(AEGP_GlobalRefcon global, AEGP_CommandRefcon refcon,
    AEGP_Command command, AEGP_HookPriority priority, A_Boolean alreadyHandled, A_Boolean *handled)
{
    current->Check(global, refcon, 1);
    current->calls << "command " + QByteArray::number(command)
            + (priority == AEGP_HP_BeforeAE ? "" : " behind the host")
            + (alreadyHandled ? " handled" : "");
    return current->onCommand ? current->onCommand(command, handled) : A_Err_NONE;
}

A_Err FakePlugin::OnIdle(AEGP_GlobalRefcon global, AEGP_IdleRefcon refcon, A_long *maxSleep)
{
    current->Check(global, refcon, 2);
    current->calls << "idle";
    return current->onIdle ? current->onIdle(maxSleep) : A_Err_NONE;
}

A_Err FakePlugin::OnUpdateMenu(
    AEGP_GlobalRefcon global, AEGP_UpdateMenuRefcon refcon, AEGP_WindowType activeWindow)
{
    current->Check(global, refcon, 3);
    current->calls << "menu " + QByteArray::number(activeWindow);
    return current->onUpdateMenu ? current->onUpdateMenu() : A_Err_NONE;
}

A_Err FakePlugin::OnDeath(AEGP_GlobalRefcon global, AEGP_DeathRefcon refcon)
{
    current->Check(global, refcon, 4);
    current->calls << "death";
    return A_Err_NONE;
}

A_Err FakePlugin::OnCreatePanel(AEGP_GlobalRefcon global, AEGP_CreatePanelRefcon refcon,
    AEGP_PlatformViewRef container, AEGP_PanelH panel, AEGP_PanelFunctions1 *functions,
    AEGP_PanelRefcon *outRefcon)
{
    current->Check(global, refcon, 5);
    current->calls << (panel ? "panel" : "panel without a handle");
    current->container = container;
    *outRefcon = RefconOf<AEGP_PanelRefcon>(6);
    return current->onCreatePanel ? current->onCreatePanel(functions) : A_Err_NONE;
}

} // namespace testing
