// vnMorvex: the exposure sheet's plug-in object. It adds to its base the panel, the reaction to
// three commands of the host, and the forwarding of the idle call, the one clock that the host
// drives.
#pragma once

#include "shell/MorvexPanel.h"
#include "shell/vnQtAE.h"

class vnMorvex final : public vnQtAE
{
public:
    /// After the base it hands the basic suite and the plug-in's number to the composition library,
    /// which from here on opens its own suite scopes.
    vnMorvex(SPBasicSuite *basicSuite, AEGP_PluginID pluginId);
    ~vnMorvex() = default;

    /// Undo, Redo and Open Project change the project behind the panel's back: the panel reloads a
    /// moment later. A command that is one of these and our own too does both.
    void CommandHook(AEGP_Command command, AEGP_HookPriority priority, A_Boolean alreadyHandled,
        A_Boolean *handled) override;
    void IdleHook(A_long *maxSleep) override;
    void DeathHook() override;
    /// Makes a panel, which replaces one made before: that one is neither deleted nor told.
    void CreatePanelHook(AEGP_PlatformViewRef container, AEGP_PanelH panel,
        AEGP_PanelFunctions1 *functions, AEGP_PanelRefcon *refcon) override;

private:
    MorvexPanel *panel; // the latest, null until the host makes one; stays when the host closes it
};
