// vnQtAE: a plug-in that docks one Qt panel. It knows nothing of exposure sheets.
//
// What the host sees, in order:
//   1. construction: a command, its item in the Window menu, the hooks, the panel's match name
//   2. CreatePanelHook, when the user opens the panel or a workspace that holds it
//   3. IdleHook, UpdateMenuHook, CommandHook, again and again
//   4. DeathHook, when the host quits; nothing is unregistered
//
// Errors   Thrown as the host's numbers (SuiteErr) and ended at the border by Guarded().
// Thread   The host's main thread; one hook at a time.
#pragma once

#include "shell/SuiteHandler.h"
#include "shell/SuiteHelper.h"

class vnQtAE
{
public:
    /// Registers everything with the host. A failing step ends it, and what was registered before
    /// stays registered; the hooks of an object that never came to be do nothing.
    /// @param basicSuite not owned; it lives as long as the process
    vnQtAE(SPBasicSuite *basicSuite, AEGP_PluginID pluginId);

    vnQtAE(const vnQtAE &) = delete;
    vnQtAE &operator=(const vnQtAE &) = delete;

    // The hooks, in slot order. A destructor is not among the slots: the host never lets go of the
    // object.

    /// A command that the host is about to perform. Our own opens, brings to front, or closes the
    /// panel.
    /// @param handled never written, for our own command neither: the host is to go on as usual
    virtual void CommandHook(AEGP_Command command, AEGP_HookPriority priority,
        A_Boolean alreadyHandled, A_Boolean *handled);
    /// @param maxSleep out, in 1/60 s: the longest wait until the next call
    virtual void IdleHook(A_long *maxSleep);
    virtual void DeathHook();
    /// @param container the host's native window; @param refcon out, what the panel's functions get
    virtual void CreatePanelHook(AEGP_PlatformViewRef container, AEGP_PanelH panel,
        AEGP_PanelFunctions1 *functions, AEGP_PanelRefcon *refcon);

    /// Enables our menu item, with any project or none, and checks it while the panel is in front.
    void UpdateMenuHook(AEGP_WindowType activeWindow);

    /// @return whether the pointer that a hook got back belongs to an object that stands
    static bool IsLive(const vnQtAE *object);

protected:
    ~vnQtAE();

    SPBasicSuite *basicSuite;
    std::uint32_t pluginId;
    SuiteHandler suites; // gives back at the end of each operation, so that it holds none for long
    std::uint32_t command; // of our menu item
    SuiteHelper<AEGP_WorkspacePanelSuite1> workspaceSuite; // held for life
    const char *panelName; // text of the menu item and match name of the panel

private:
    void Register();

    vnQtAE *nextLive; // the objects that stand, in a list
};
