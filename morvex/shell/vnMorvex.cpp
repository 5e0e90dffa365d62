#include "shell/vnMorvex.h"

#include "panel/WinExpo.h"
#include "vnAE/vipLi.h"

#include <new>

namespace {

/// The panel of the product.
MorvexPanel *MakeWinExpo(SPBasicSuite *basicSuite, AEGP_PluginID pluginId, AEGP_PanelH panel,
    AEGP_PlatformViewRef container, AEGP_PanelFunctions1 *functions)
{
    return new (std::nothrow) WinExpo(basicSuite, pluginId, panel, container, functions);
}

MorvexPanelFactory panelFactory = MakeWinExpo;

bool ChangesProjectUnseen(AEGP_Command command)
{
    return command == kHostCommandUndo || command == kHostCommandRedo
        || command == kHostCommandOpenProject;
}

} // namespace

void SetMorvexPanelFactory(MorvexPanelFactory factory)
{
    panelFactory = factory ? factory : MakeWinExpo;
}

vnMorvex::vnMorvex(SPBasicSuite *basicSuite, AEGP_PluginID pluginId)
    : vnQtAE(basicSuite, pluginId), panel(nullptr)
{
    vipLi *library = GetVipLi();
    library->BasicSuite = basicSuite;
    library->PluginId = pluginId;
}

void vnMorvex::CommandHook(
    AEGP_Command picked, AEGP_HookPriority priority, A_Boolean alreadyHandled, A_Boolean *handled)
{
    if (panel && ChangesProjectUnseen(picked))
        panel->ScheduleRefresh();
    vnQtAE::CommandHook(picked, priority, alreadyHandled, handled);
}

void vnMorvex::IdleHook(A_long *maxSleep)
{
    vnQtAE::IdleHook(maxSleep);
    if (panel)
        panel->OnHostIdle();
}

void vnMorvex::DeathHook() { }

void vnMorvex::CreatePanelHook(AEGP_PlatformViewRef container, AEGP_PanelH panelH,
    AEGP_PanelFunctions1 *functions, AEGP_PanelRefcon *refcon)
{
    panel = panelFactory(
        basicSuite, static_cast<AEGP_PluginID>(pluginId), panelH, container, functions);
    *refcon = panel ? panel->Refcon() : nullptr;
}
