// What the host calls: the entry point, the hooks that a plug-in registers, the panel's functions.
// Nothing thrown may leave any of them.
#pragma once

#include "hostapi/BasicSuite.h"
#include "hostapi/HostTypes.h"

/// Sees every command for which it was registered before the host acts on it.
using AEGP_CommandHook = A_Err (*)(AEGP_GlobalRefcon globalRefcon, AEGP_CommandRefcon refcon,
    AEGP_Command command, AEGP_HookPriority priority, A_Boolean alreadyHandled, A_Boolean *handled);
using AEGP_UpdateMenuHook = A_Err (*)(
    AEGP_GlobalRefcon globalRefcon, AEGP_UpdateMenuRefcon refcon, AEGP_WindowType activeWindow);
using AEGP_DeathHook = A_Err (*)(AEGP_GlobalRefcon globalRefcon, AEGP_DeathRefcon refcon);
/// @param maxSleep in and out, in 1/60 s: the longest wait until the next call
using AEGP_IdleHook
    = A_Err (*)(AEGP_GlobalRefcon globalRefcon, AEGP_IdleRefcon refcon, A_long *maxSleep);
using AEGP_VersionHook
    = A_Err (*)(AEGP_GlobalRefcon globalRefcon, AEGP_VersionRefcon refcon, A_u_long *version);
using AEGP_AboutStringHook
    = A_Err (*)(AEGP_GlobalRefcon globalRefcon, AEGP_AboutStringRefcon refcon, A_char *about);
using AEGP_AboutHook = A_Err (*)(AEGP_GlobalRefcon globalRefcon, AEGP_AboutRefcon refcon);

/// One entry of a panel's flyout menu.
struct AEGP_FlyoutMenuItem
{
    AEGP_FlyoutMenuIndent indent; // 1: top level, 2: sub menu of the entry before
    AEGP_FlyoutMenuMarkType type;
    A_Boolean enabledB;
    AEGP_FlyoutMenuCmdID cmdID; // 0: none
    const A_u_char *utf8NameZ; // null for a separator
};

static_assert(sizeof(AEGP_FlyoutMenuItem) == 24 && alignof(AEGP_FlyoutMenuItem) == 8);
static_assert(offsetof(AEGP_FlyoutMenuItem, type) == 4);
static_assert(offsetof(AEGP_FlyoutMenuItem, enabledB) == 8);
static_assert(offsetof(AEGP_FlyoutMenuItem, cmdID) == 12);
static_assert(offsetof(AEGP_FlyoutMenuItem, utf8NameZ) == 16);

constexpr AEGP_FlyoutMenuMarkType AEGP_FlyoutMenuMarkType_NORMAL = 0;
constexpr AEGP_FlyoutMenuMarkType AEGP_FlyoutMenuMarkType_CHECKED = 1;
constexpr AEGP_FlyoutMenuMarkType AEGP_FlyoutMenuMarkType_RADIO_BULLET = 2;
constexpr AEGP_FlyoutMenuMarkType AEGP_FlyoutMenuMarkType_SEPARATOR = 3;
constexpr AEGP_FlyoutMenuCmdID AEGP_FlyoutMenuCmdID_NONE = 0;
constexpr A_long kMaxSnapSizes = 5;

/// The panel's own table, filled in by the plug-in when its panel is made.
struct AEGP_PanelFunctions1
{
    /// @param count in: room in sizes; out: sizes written, at most kMaxSnapSizes
    A_Err (*GetSnapSizes)(AEGP_PanelRefcon refcon, A_LPoint *sizes, A_long *count);
    /// @param count in: room in items; out: items written
    A_Err (*PopulateFlyout)(AEGP_PanelRefcon refcon, AEGP_FlyoutMenuItem *items, A_long *count);
    A_Err (*DoFlyoutCommand)(AEGP_PanelRefcon refcon, AEGP_FlyoutMenuCmdID command);
};

static_assert(sizeof(AEGP_PanelFunctions1) == 24);
static_assert(offsetof(AEGP_PanelFunctions1, PopulateFlyout) == 8);
static_assert(offsetof(AEGP_PanelFunctions1, DoFlyoutCommand) == 16);

using AEGP_CreatePanelHook = A_Err (*)(AEGP_GlobalRefcon globalRefcon,
    AEGP_CreatePanelRefcon refcon, AEGP_PlatformViewRef container, AEGP_PanelH panel,
    AEGP_PanelFunctions1 *functions, AEGP_PanelRefcon *outRefcon);

/// The entry point's name is found in the plug-in property list and exported by the library.
constexpr char kEntryPointName[] = "EntryPointFunc";
using AEGP_EntryPoint = A_Err (*)(SPBasicSuite *basicSuite, A_long majorVersion,
    A_long minorVersion, AEGP_PluginID pluginId, AEGP_GlobalRefcon *globalRefcon);

/// The version of the interface that the host tells at the entry point.
constexpr A_long kHostMajorVersion = 17;
constexpr A_long kHostMinorVersion = 0;
