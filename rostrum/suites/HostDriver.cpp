#include "HostDriver.h"

#include "suites/Handles.h"
#include "suites/Host.h"

#include <QLibrary>

#include <algorithm>

namespace rostrum {
namespace {

constexpr A_long kLongestSleep = 60; // 1/60 s: an idle call a second when no hook asks for more
constexpr A_long kFlyoutRoom = 64; // items
constexpr AEGP_PluginID kFirstPluginId = 21; // any number; not 0 and no count of anything

} // namespace

template <typename Call>
A_Err HostDriver::CallIn(const char *what, Call call)
{
    A_Err error = A_Err_GENERIC;
    ++callsUnderWay;
    try {
        error = call();
    } catch (...) {
        host.Misuse(QByteArray("something was thrown out of ") + what);
    }
    --callsUnderWay;
    return error;
}

QString HostDriver::LoadPlugin(const QString &path)
{
    QLibrary library(path); // its destructor leaves the library loaded
    library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    if (!library.load())
        return library.errorString();
    const auto entry = reinterpret_cast<AEGP_EntryPoint>(library.resolve(kEntryPointName));
    if (!entry)
        return QStringLiteral("\"%1\" has no %2").arg(path, QLatin1String(kEntryPointName));
    const A_Err error = EnterPlugin(entry);
    if (error)
        return QStringLiteral("\"%1\" answered the error %2").arg(path, QString::number(error));
    return {};
}

A_Err HostDriver::EnterPlugin(AEGP_EntryPoint entry)
{
    Plugin plugin;
    plugin.id = kFirstPluginId + plugins.size();
    plugins << plugin;
    const int index = plugins.size() - 1;
    AEGP_GlobalRefcon refcon = nullptr;
    entering = true;
    const A_Err error = CallIn("the entry point", [&] {
        return entry(host.BasicSuite(), kHostMajorVersion, kHostMinorVersion, plugin.id, &refcon);
    });
    entering = false;
    plugins[index].refcon = refcon;
    return error;
}

bool HostDriver::IsPlugin(AEGP_PluginID id) const
{
    return id >= kFirstPluginId && id < kFirstPluginId + plugins.size();
}

AEGP_GlobalRefcon HostDriver::RefconOf(AEGP_PluginID id) const
{
    return plugins[id - kFirstPluginId].refcon;
}

int HostDriver::CallIdle()
{
    A_long wait = kLongestSleep;
    if (callsUnderWay > 0 || dead)
        return wait;
    const auto hooks = idleHooks;
    for (const auto &hook : hooks) {
        A_long sleep = kLongestSleep;
        CallIn("an idle hook",
            [&] { return hook.function(RefconOf(hook.plugin), hook.refcon, &sleep); });
        wait = std::min(wait, std::max(sleep, 1));
    }
    return wait;
}

void HostDriver::CallUpdateMenus(AEGP_WindowType activeWindow)
{
    if (dead)
        return;
    for (MenuItem &item : menuItems)
        item.enabled = false;
    const auto hooks = updateMenuHooks;
    for (const auto &hook : hooks) {
        CallIn("an update-menu hook",
            [&] { return hook.function(RefconOf(hook.plugin), hook.refcon, activeWindow); });
    }
}

A_Err HostDriver::RunCommand(AEGP_Command command)
{
    if (dead)
        return A_Err_GENERIC;
    A_Boolean handled = 0;
    const auto hooks = commandHooks;
    for (const auto &hook : hooks) {
        if (hook.command != AEGP_Command_ALL && hook.command != command)
            continue;
        CallIn("a command hook", [&] {
            return hook.function(
                RefconOf(hook.plugin), hook.refcon, command, AEGP_HP_BeforeAE, handled, &handled);
        });
    }
    return handled ? A_Err_NONE : ActOn(command);
}

A_Err HostDriver::ActOn(AEGP_Command command)
{
    Document &document = host.GetDocument();
    switch (command) {
    case kHostCommandUndo:
    case kHostCommandRedo:
        if (document.IsGroupOpen())
            return A_Err_GENERIC;
        if (command == kHostCommandUndo ? document.Undo() : document.Redo())
            host.NoteChange();
        return A_Err_NONE; // nothing to undo is no error: the menu item is just grey
    case kHostCommandOpenProject:
        return openProject ? openProject() : A_Err_GENERIC;
    case kHostCommandSave:
        return saveProject ? saveProject() : A_Err_GENERIC;
    default:
        return IsPluginCommand(command) ? A_Err_NONE : A_Err_PARAMETER;
    }
}

void HostDriver::CallDeath()
{
    if (dead)
        return;
    const auto hooks = deathHooks;
    for (const auto &hook : hooks)
        CallIn("a death hook", [&] { return hook.function(RefconOf(hook.plugin), hook.refcon); });
    dead = true;
}

A_Err HostDriver::AddCommandHook(
    AEGP_PluginID id, AEGP_Command command, AEGP_CommandHook hook, AEGP_CommandRefcon refcon)
{
    commandHooks.append({ id, hook, refcon, command });
    return A_Err_NONE;
}

A_Err HostDriver::AddIdleHook(AEGP_PluginID id, AEGP_IdleHook hook, AEGP_IdleRefcon refcon)
{
    idleHooks.append({ id, hook, refcon });
    return A_Err_NONE;
}

A_Err HostDriver::AddUpdateMenuHook(
    AEGP_PluginID id, AEGP_UpdateMenuHook hook, AEGP_UpdateMenuRefcon refcon)
{
    updateMenuHooks.append({ id, hook, refcon });
    return A_Err_NONE;
}

A_Err HostDriver::AddDeathHook(AEGP_PluginID id, AEGP_DeathHook hook, AEGP_DeathRefcon refcon)
{
    deathHooks.append({ id, hook, refcon });
    return A_Err_NONE;
}

bool HostDriver::IsPluginCommand(AEGP_Command command) const
{
    return command > kLastHostCommand && command <= lastCommand;
}

MenuItem *HostDriver::FindMenuItem(AEGP_Command command)
{
    for (MenuItem &item : menuItems) {
        if (item.command == command)
            return &item;
    }
    return nullptr;
}

A_Err HostDriver::AddMenuItem(const MenuItem &item)
{
    if (!IsPluginCommand(item.command) || FindMenuItem(item.command))
        return A_Err_PARAMETER;
    menuItems << item;
    return A_Err_NONE;
}

A_Err HostDriver::AddPanelHook(AEGP_PluginID id, const QByteArray &matchName,
    AEGP_CreatePanelHook hook, AEGP_CreatePanelRefcon refcon, bool paintBackground)
{
    if (matchName.isEmpty() || FindPanel(matchName))
        return A_Err_PARAMETER;
    Panel panel;
    panel.matchName = matchName;
    panel.plugin = id;
    panel.hook = hook;
    panel.refcon = refcon;
    panel.paintBackground = paintBackground;
    panels << panel;
    return A_Err_NONE;
}

QVector<QByteArray> HostDriver::Panels() const
{
    QVector<QByteArray> names;
    for (const Panel &panel : panels)
        names << panel.matchName;
    return names;
}

const HostDriver::Panel *HostDriver::FindPanel(const QByteArray &matchName) const
{
    for (const Panel &panel : panels) {
        if (panel.matchName == matchName)
            return &panel;
    }
    return nullptr;
}

HostDriver::Panel *HostDriver::FindPanel(const QByteArray &matchName)
{
    for (Panel &panel : panels) {
        if (panel.matchName == matchName)
            return &panel;
    }
    return nullptr;
}

bool HostDriver::IsPanelMade(const QByteArray &matchName) const
{
    const Panel *panel = FindPanel(matchName);
    return panel && panel->made;
}

bool HostDriver::IsBackgroundPainted(const QByteArray &matchName) const
{
    const Panel *panel = FindPanel(matchName);
    return panel && panel->paintBackground;
}

int HostDriver::PanelsMade() const
{
    return static_cast<int>(std::count_if(
        panels.cbegin(), panels.cend(), [](const Panel &panel) { return panel.made; }));
}

/// The hook is called once for a panel's life: a closed panel's container is hidden and used again.
A_Err HostDriver::MakePanel(const QByteArray &matchName)
{
    const AEGP_PlatformViewRef container = windows.make ? windows.make(matchName) : nullptr;
    if (!container)
        return A_Err_GENERIC;
    Panel *panel = FindPanel(matchName);
    panel->made = true;
    const Panel made = *panel;
    const auto handle = MakeHandle<AEGP_PanelH>(
        HandleKind::Panel, static_cast<std::uint64_t>(panel - panels.constData() + 1));
    AEGP_PanelFunctions1 functions{};
    AEGP_PanelRefcon refcon = nullptr;
    const A_Err error = CallIn("a create-panel hook", [&] {
        return made.hook(
            RefconOf(made.plugin), made.refcon, container, handle, &functions, &refcon);
    });
    panel = FindPanel(matchName); // the hook may have registered another one
    panel->functions = functions;
    panel->panelRefcon = refcon;
    return error;
}

A_Err HostDriver::TogglePanel(const QByteArray &matchName)
{
    const Panel *panel = FindPanel(matchName);
    if (!panel)
        return A_Err_PARAMETER;
    const A_Err error = panel->made ? A_Err_NONE : MakePanel(matchName);
    if (error)
        return error;
    bool shown = false;
    bool frontmost = false;
    PanelState(matchName, &shown, &frontmost);
    const auto &change = shown && frontmost ? windows.hide : windows.show;
    if (change)
        change(matchName);
    return A_Err_NONE;
}

A_Err HostDriver::PanelState(const QByteArray &matchName, bool *shown, bool *frontmost) const
{
    const Panel *panel = FindPanel(matchName);
    if (!panel)
        return A_Err_PARAMETER;
    *shown = panel->made && windows.isShown && windows.isShown(matchName);
    *frontmost = *shown && windows.isFrontmost && windows.isFrontmost(matchName);
    return A_Err_NONE;
}

QVector<A_LPoint> HostDriver::PanelSnapSizes(const QByteArray &matchName)
{
    Panel *panel = FindPanel(matchName);
    if (!panel || !panel->functions.GetSnapSizes)
        return {};
    QVector<A_LPoint> sizes(kMaxSnapSizes);
    A_long count = kMaxSnapSizes;
    const A_Err error = CallIn("GetSnapSizes",
        [&] { return panel->functions.GetSnapSizes(panel->panelRefcon, sizes.data(), &count); });
    sizes.resize(error ? 0 : qBound(0, count, kMaxSnapSizes));
    return sizes;
}

QVector<FlyoutItem> HostDriver::PanelFlyout(const QByteArray &matchName)
{
    Panel *panel = FindPanel(matchName);
    if (!panel || !panel->functions.PopulateFlyout)
        return {};
    QVector<AEGP_FlyoutMenuItem> items(kFlyoutRoom, AEGP_FlyoutMenuItem{});
    A_long count = kFlyoutRoom;
    const A_Err error = CallIn("PopulateFlyout",
        [&] { return panel->functions.PopulateFlyout(panel->panelRefcon, items.data(), &count); });
    QVector<FlyoutItem> flyout;
    for (int i = 0; !error && i < qBound(0, count, kFlyoutRoom); ++i) {
        const AEGP_FlyoutMenuItem &item = items.at(i);
        if (!item.utf8NameZ && item.type != AEGP_FlyoutMenuMarkType_SEPARATOR)
            continue; // room that was not filled: a panel may leave the count as it came
        flyout << FlyoutItem{ item.indent, item.type, item.enabledB != 0, item.cmdID,
            QByteArray(reinterpret_cast<const char *>(item.utf8NameZ)) };
    }
    return flyout;
}

A_Err HostDriver::RunFlyout(const QByteArray &matchName, AEGP_FlyoutMenuCmdID command)
{
    Panel *panel = FindPanel(matchName);
    if (!panel || !panel->functions.DoFlyoutCommand)
        return A_Err_PARAMETER;
    return CallIn("DoFlyoutCommand",
        [&] { return panel->functions.DoFlyoutCommand(panel->panelRefcon, command); });
}

} // namespace rostrum
