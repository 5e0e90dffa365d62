// Does what a plug-in may do and gives everything back: a menu item, all hooks, an undoable change,
// a panel with snap sizes and a flyout menu.
#include "PluginKit.h"

#include <cstdio>

namespace {

constexpr AEGP_FlyoutMenuCmdID kRename = 5;
constexpr char kPanelName[] = "well behaved";

AEGP_Command ownCommand = 0;

const A_u_char *PanelName()
{
    return reinterpret_cast<const A_u_char *>(kPanelName);
}

A_Err OnCommand(AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command command, AEGP_HookPriority,
    A_Boolean, A_Boolean *handled)
{
    if (command != ownCommand)
        return A_Err_NONE;
    *handled = 1;
    return plugin::Suite<AEGP_WorkspacePanelSuite1>()->AEGP_ToggleVisibility(PanelName());
}

/// A change and its undo group; the stream and its value are given back.
A_Err OnIdle(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long *maxSleep)
{
    *maxSleep = 10;
    const AEGP_LayerH layer = plugin::FirstLayer();
    if (!layer)
        return A_Err_NONE;
    const plugin::Suite<AEGP_UtilitySuite5> utility;
    const plugin::Suite<AEGP_StreamSuite2> streams;
    const A_Time start{ 0, 25 };
    AEGP_StreamRefH stream = nullptr;
    AEGP_StreamValue value{};
    utility->AEGP_StartUndoGroup("well behaved: fade");
    streams->AEGP_GetNewLayerStream(plugin::id, layer, AEGP_LayerStream_OPACITY, &stream);
    streams->AEGP_GetNewStreamValue(
        plugin::id, stream, AEGP_LTimeMode_CompTime, &start, /*preExpression=*/0, &value);
    value.val.one_d /= 2;
    streams->AEGP_SetStreamValue(plugin::id, stream, &value);
    streams->AEGP_DisposeStreamValue(&value);
    streams->AEGP_DisposeStream(stream);
    return utility->AEGP_EndUndoGroup();
}

A_Err OnUpdateMenu(AEGP_GlobalRefcon, AEGP_UpdateMenuRefcon, AEGP_WindowType)
{
    return plugin::Suite<AEGP_CommandSuite1>()->AEGP_EnableCommand(ownCommand);
}

A_Err OnDeath(AEGP_GlobalRefcon, AEGP_DeathRefcon)
{
    std::printf("a last word"); // its line has no end
    return A_Err_NONE;
}

A_Err SnapSizes(AEGP_PanelRefcon, A_LPoint *sizes, A_long *count)
{
    sizes[0] = { 120, 80 };
    sizes[1] = { 640, 90 };
    *count = 2;
    return A_Err_NONE;
}

A_Err Flyout(AEGP_PanelRefcon, AEGP_FlyoutMenuItem *items, A_long *count)
{
    static const auto *rename = reinterpret_cast<const A_u_char *>("Rename");
    static const auto *later = reinterpret_cast<const A_u_char *>("Later");
    items[0] = { 1, AEGP_FlyoutMenuMarkType_NORMAL, 1, kRename, rename };
    items[1] = { 1, AEGP_FlyoutMenuMarkType_SEPARATOR, 0, AEGP_FlyoutMenuCmdID_NONE, nullptr };
    items[2] = { 1, AEGP_FlyoutMenuMarkType_NORMAL, 0, kRename + 1, later };
    *count = 3;
    return A_Err_NONE;
}

A_Err OnFlyout(AEGP_PanelRefcon, AEGP_FlyoutMenuCmdID command)
{
    std::printf("flyout entry %d\n", command);
    return A_Err_NONE;
}

A_Err OnCreatePanel(AEGP_GlobalRefcon, AEGP_CreatePanelRefcon, AEGP_PlatformViewRef, AEGP_PanelH,
    AEGP_PanelFunctions1 *functions, AEGP_PanelRefcon *)
{
    *functions = { SnapSizes, Flyout, OnFlyout };
    return A_Err_NONE;
}

} // namespace

A_Err plugin::Enter()
{
    std::puts("hello from the plug-in");
    const Suite<AEGP_RegisterSuite5> hooks;
    const Suite<AEGP_CommandSuite1> commands;
    commands->AEGP_GetUniqueCommand(&ownCommand);
    commands->AEGP_InsertMenuCommand(
        ownCommand, "Well behaved", AEGP_Menu_WINDOW, AEGP_MENU_INSERT_SORTED);
    hooks->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, ownCommand, OnCommand, nullptr);
    hooks->AEGP_RegisterUpdateMenuHook(id, OnUpdateMenu, nullptr);
    hooks->AEGP_RegisterIdleHook(id, OnIdle, nullptr);
    hooks->AEGP_RegisterDeathHook(id, OnDeath, nullptr);
    return Suite<AEGP_WorkspacePanelSuite1>()->AEGP_RegisterCreatePanelHook(
        id, PanelName(), OnCreatePanel, nullptr, /*paintBackground=*/1);
}
