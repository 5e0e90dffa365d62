// A plug-in made of this process's own functions: it registers every hook there is and notes each
// call that it gets. What it does at a call can be set.
#pragma once

#include "suites/Host.h"

#include <QByteArrayList>

#include <functional>

namespace testing {

class FakePlugin
{
public:
    FakePlugin();
    ~FakePlugin();
    FakePlugin(const FakePlugin &) = delete;
    FakePlugin &operator=(const FakePlugin &) = delete;

    /// Lets the host enter it. @return the entry point's answer
    A_Err Enter(rostrum::Host &host);
    /// Registers all hooks, the panel too, for all commands. The entry point's work unless
    /// `onEntry` is set. @return the first error
    A_Err RegisterAll();

    std::function<A_Err()> onEntry;
    std::function<A_Err(AEGP_Command, A_Boolean *)> onCommand;
    std::function<A_Err(A_long *)> onIdle;
    std::function<A_Err()> onUpdateMenu;
    std::function<A_Err(AEGP_PanelFunctions1 *)> onCreatePanel;

    QByteArrayList calls; // "entry 17.0", "command 16", "idle", "menu 1", "death", "panel"
    AEGP_PluginID id = 0;
    AEGP_PlatformViewRef container = nullptr;
    AEGP_Command watched = AEGP_Command_ALL; // what RegisterAll asks for
    const char *panelName = "fake panel";

    // The refcons that it gives and expects back.
    AEGP_GlobalRefcon GlobalRefcon() { return reinterpret_cast<AEGP_GlobalRefcon>(this); }
    /// @param number tells the hooks' refcons apart
    template <typename Refcon>
    static Refcon RefconOf(int number)
    {
        return reinterpret_cast<Refcon>(static_cast<quintptr>(number));
    }
    bool refconsRight = true;

private:
    static A_Err Entry(SPBasicSuite *basicSuite, A_long majorVersion, A_long minorVersion,
        AEGP_PluginID pluginId, AEGP_GlobalRefcon *globalRefcon);
    static A_Err OnCommand(AEGP_GlobalRefcon global, AEGP_CommandRefcon refcon,
        AEGP_Command command, AEGP_HookPriority priority, A_Boolean alreadyHandled,
        A_Boolean *handled);
    static A_Err OnIdle(AEGP_GlobalRefcon global, AEGP_IdleRefcon refcon, A_long *maxSleep);
    static A_Err OnUpdateMenu(
        AEGP_GlobalRefcon global, AEGP_UpdateMenuRefcon refcon, AEGP_WindowType activeWindow);
    static A_Err OnDeath(AEGP_GlobalRefcon global, AEGP_DeathRefcon refcon);
    static A_Err OnCreatePanel(AEGP_GlobalRefcon global, AEGP_CreatePanelRefcon refcon,
        AEGP_PlatformViewRef container, AEGP_PanelH panel, AEGP_PanelFunctions1 *functions,
        AEGP_PanelRefcon *outRefcon);

    void Check(AEGP_GlobalRefcon global, const void *refcon, int number);

    static FakePlugin *current;
};

} // namespace testing
