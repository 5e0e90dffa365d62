// AEGP Workspace Panel Suite: Dockable panels known by a match name that is never translated.
// Every slot is declared, in the order of the table, so that the offsets hold; the names of the
// arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"
#include "hostapi/Hooks.h"

/// "AEGP Workspace Panel Suite" version 1.
struct AEGP_WorkspacePanelSuite1
{
    static constexpr char kName[] = "AEGP Workspace Panel Suite";
    static constexpr std::int32_t kVersion = 1;

    A_Err (*AEGP_RegisterCreatePanelHook)(AEGP_PluginID pluginId, const A_u_char *matchName,
        AEGP_CreatePanelHook hook, AEGP_CreatePanelRefcon refcon, A_Boolean paintBackground);
    A_Err (*AEGP_UnRegisterCreatePanelHook)(const A_u_char *);
    A_Err (*AEGP_SetTitle)(AEGP_PanelH, const A_u_char *);
    A_Err (*AEGP_ToggleVisibility)(const A_u_char *matchName);
    A_Err (*AEGP_IsShown)(
        const A_u_char *matchName, A_Boolean *tabShown, A_Boolean *panelFrontmost);
};
