// The host's side of a plug-in's life: it loads the library, enters it, calls the hooks that were
// registered, keeps the menu items and the panels.
//
// Order of calls:
//   1. LoadPlugin or EnterPlugin; the plug-in registers its hooks and nothing else happens
//   2. CallIdle, CallUpdateMenus, RunCommand, TogglePanel and the flyout, in any order
//   3. CallDeath, once; nothing is called after it
//
// Nothing thrown may leave a hook. If it does, it is caught here and reported as a misuse.
#pragma once

#include "hostapi/Hooks.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <functional>

namespace rostrum {

class Host;

/// A menu item of a plug-in. It is disabled until an update-menu hook enables it.
struct MenuItem
{
    AEGP_Command command = 0;
    QByteArray text; // UTF-8
    AEGP_MenuID menu = AEGP_Menu_NONE;
    bool enabled = false;
    bool checked = false;
};

struct FlyoutItem
{
    int indent = 1; // 1: top level, 2: sub menu of the item before
    AEGP_FlyoutMenuMarkType type = AEGP_FlyoutMenuMarkType_NORMAL;
    bool enabled = false;
    AEGP_FlyoutMenuCmdID command = AEGP_FlyoutMenuCmdID_NONE;
    QByteArray text; // UTF-8, empty for a separator
};

/// The panels' windows: what only the window system can do. All get the panel's match name. Without
/// a `make`, no panel can be shown; the rest may then be left out.
struct PanelWindows
{
    /// Makes the container, hidden. @return null when it cannot be made
    std::function<AEGP_PlatformViewRef(const QByteArray &)> make;
    std::function<void(const QByteArray &)> show; // and brings to front
    std::function<void(const QByteArray &)> hide; // the container stays
    std::function<bool(const QByteArray &)> isShown;
    std::function<bool(const QByteArray &)> isFrontmost;
};

class HostDriver
{
public:
    explicit HostDriver(Host &host) : host(host) { }

    // Commands that the program carries out. One that is not set answers an error.
    std::function<A_Err()> openProject;
    std::function<A_Err()> saveProject;
    PanelWindows windows;

    /// Loads a library and enters it. The library stays loaded for good, since it may keep windows.
    /// @return what went wrong, empty when the plug-in was entered and answered no error
    QString LoadPlugin(const QString &path);
    /// @return the entry point's answer
    A_Err EnterPlugin(AEGP_EntryPoint entry);
    int PluginCount() const { return plugins.size(); }

    /// Calls the idle hooks, unless a call into a plug-in is under way.
    /// @return the longest wait until the next call, in 1/60 s
    int CallIdle();
    /// To be called before any menu is shown: disables all items, then calls the hooks.
    void CallUpdateMenus(AEGP_WindowType activeWindow);
    /// A command from a menu or from AEGP_DoCommand: the command hooks see it first; then the host
    /// acts on it, unless a hook has handled it.
    A_Err RunCommand(AEGP_Command command);
    void CallDeath();

    const QVector<MenuItem> &MenuItems() const { return menuItems; }

    /// The match names of the panels that plug-ins have registered.
    QVector<QByteArray> Panels() const;
    /// Makes the panel if need be; then brings it to front, or closes it when it is there already.
    A_Err TogglePanel(const QByteArray &matchName);
    bool IsPanelMade(const QByteArray &matchName) const;
    /// Whether the host is to paint behind the panel.
    bool IsBackgroundPainted(const QByteArray &matchName) const;
    /// @return A_Err_PARAMETER for a panel that nobody registered
    A_Err PanelState(const QByteArray &matchName, bool *shown, bool *frontmost) const;
    QVector<A_LPoint> PanelSnapSizes(const QByteArray &matchName);
    QVector<FlyoutItem> PanelFlyout(const QByteArray &matchName);
    A_Err RunFlyout(const QByteArray &matchName, AEGP_FlyoutMenuCmdID command);
    /// Containers made so far: a panel is owed one hold of two suites for its life.
    int PanelsMade() const;

    // For the suites.

    bool IsEntering() const { return entering; }
    bool IsPlugin(AEGP_PluginID id) const;
    A_Err AddCommandHook(
        AEGP_PluginID id, AEGP_Command command, AEGP_CommandHook hook, AEGP_CommandRefcon refcon);
    A_Err AddIdleHook(AEGP_PluginID id, AEGP_IdleHook hook, AEGP_IdleRefcon refcon);
    A_Err AddUpdateMenuHook(
        AEGP_PluginID id, AEGP_UpdateMenuHook hook, AEGP_UpdateMenuRefcon refcon);
    A_Err AddDeathHook(AEGP_PluginID id, AEGP_DeathHook hook, AEGP_DeathRefcon refcon);
    A_Err AddPanelHook(AEGP_PluginID id, const QByteArray &matchName, AEGP_CreatePanelHook hook,
        AEGP_CreatePanelRefcon refcon, bool paintBackground);
    AEGP_Command NewCommand() { return ++lastCommand; }
    /// True for a number that NewCommand gave.
    bool IsPluginCommand(AEGP_Command command) const;
    A_Err AddMenuItem(const MenuItem &item);
    /// @return null for a command without an item
    MenuItem *FindMenuItem(AEGP_Command command);

private:
    static constexpr AEGP_Command kLastHostCommand = 9999; // plug-ins get the numbers behind

    struct Plugin
    {
        AEGP_PluginID id = 0;
        AEGP_GlobalRefcon refcon = nullptr;
    };
    template <typename Function, typename Refcon>
    struct Hook
    {
        AEGP_PluginID plugin;
        Function function;
        Refcon refcon;
        AEGP_Command command = AEGP_Command_ALL; // of a command hook
    };
    struct Panel
    {
        QByteArray matchName;
        AEGP_PluginID plugin = 0;
        AEGP_CreatePanelHook hook = nullptr;
        AEGP_CreatePanelRefcon refcon = nullptr;
        bool paintBackground = false;
        bool made = false;
        AEGP_PanelFunctions1 functions{};
        AEGP_PanelRefcon panelRefcon = nullptr;
    };

    AEGP_GlobalRefcon RefconOf(AEGP_PluginID id) const;
    Panel *FindPanel(const QByteArray &matchName);
    const Panel *FindPanel(const QByteArray &matchName) const;
    A_Err MakePanel(const QByteArray &matchName);
    A_Err ActOn(AEGP_Command command);
    /// Calls into a plug-in; what it throws becomes a complaint and A_Err_GENERIC.
    template <typename Call>
    A_Err CallIn(const char *what, Call call);

    Host &host;
    QVector<Plugin> plugins;
    QVector<Hook<AEGP_CommandHook, AEGP_CommandRefcon>> commandHooks;
    QVector<Hook<AEGP_IdleHook, AEGP_IdleRefcon>> idleHooks;
    QVector<Hook<AEGP_UpdateMenuHook, AEGP_UpdateMenuRefcon>> updateMenuHooks;
    QVector<Hook<AEGP_DeathHook, AEGP_DeathRefcon>> deathHooks;
    QVector<MenuItem> menuItems;
    QVector<Panel> panels;
    AEGP_Command lastCommand = kLastHostCommand;
    int callsUnderWay = 0;
    bool entering = false;
    bool dead = false;
};

} // namespace rostrum
