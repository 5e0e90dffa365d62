// AEGP Register Suite: Hooks that the host calls later; to be used from inside the entry point
// only. Every slot is declared, in the order of the table, so that the offsets hold; the names of
// the arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"
#include "hostapi/Hooks.h"

/// "AEGP Register Suite" version 6.
struct AEGP_RegisterSuite5
{
    static constexpr char kName[] = "AEGP Register Suite";
    static constexpr std::int32_t kVersion = 6;

    A_Err (*AEGP_RegisterCommandHook)(AEGP_PluginID pluginId, AEGP_HookPriority priority,
        AEGP_Command command, AEGP_CommandHook hook, AEGP_CommandRefcon refcon);
    A_Err (*AEGP_RegisterUpdateMenuHook)(
        AEGP_PluginID pluginId, AEGP_UpdateMenuHook hook, AEGP_UpdateMenuRefcon refcon);
    A_Err (*AEGP_RegisterDeathHook)(
        AEGP_PluginID pluginId, AEGP_DeathHook hook, AEGP_DeathRefcon refcon);
    A_Err (*AEGP_RegisterVersionHook)(AEGP_PluginID, AEGP_VersionHook, AEGP_VersionRefcon);
    A_Err (*AEGP_RegisterAboutStringHook)(
        AEGP_PluginID, AEGP_AboutStringHook, AEGP_AboutStringRefcon);
    A_Err (*AEGP_RegisterAboutHook)(AEGP_PluginID, AEGP_AboutHook, AEGP_AboutRefcon);
    A_Err (*AEGP_RegisterArtisan)(A_Version, A_Version, AEGP_PluginID, void *, const A_char *,
        const A_char *, PR_ArtisanEntryPoints *);
    A_Err (*AEGP_RegisterIO)(
        AEGP_PluginID, AEGP_IORefcon, const AEIO_ModuleInfo *, const AEIO_FunctionBlock4 *);
    A_Err (*AEGP_RegisterIdleHook)(
        AEGP_PluginID pluginId, AEGP_IdleHook hook, AEGP_IdleRefcon refcon);
    A_Err (*AEGP_RegisterTracker)(A_Version, A_Version, AEGP_PluginID, const AEGP_GlobalRefcon,
        const A_char *, const A_char *, const PT_TrackerEntryPoints *);
    A_Err (*AEGP_RegisterInteractiveArtisan)(A_Version, A_Version, AEGP_PluginID, void *,
        const A_char *, const A_char *, PR_ArtisanEntryPoints *);
    A_Err (*AEGP_RegisterPresetLocalizationString)(const A_char *, const A_char *);
};
