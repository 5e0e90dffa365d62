// AEGP Effect Suite: Installed effects and the effects applied to a layer.
// Every slot is declared, in the order of the table, so that the offsets hold; the names of the
// arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"

/// "AEGP Effect Suite" version 3.
struct AEGP_EffectSuite3
{
    static constexpr char kName[] = "AEGP Effect Suite";
    static constexpr std::int32_t kVersion = 3;

    A_Err (*AEGP_GetLayerNumEffects)(AEGP_LayerH layer, A_long *count);
    A_Err (*AEGP_GetLayerEffectByIndex)(AEGP_PluginID pluginId, AEGP_LayerH layer,
        AEGP_EffectIndex effectIndex, AEGP_EffectRefH *effect);
    A_Err (*AEGP_GetInstalledKeyFromLayerEffect)(
        AEGP_EffectRefH effect, AEGP_InstalledEffectKey *effectKey);
    A_Err (*AEGP_GetEffectParamUnionByIndex)(
        AEGP_PluginID, AEGP_EffectRefH, PF_ParamIndex, PF_ParamType *, PF_ParamDefUnion *);
    A_Err (*AEGP_GetEffectFlags)(AEGP_EffectRefH, AEGP_EffectFlags *);
    A_Err (*AEGP_SetEffectFlags)(AEGP_EffectRefH, AEGP_EffectFlags, AEGP_EffectFlags);
    A_Err (*AEGP_ReorderEffect)(AEGP_EffectRefH, A_long);
    A_Err (*AEGP_EffectCallGeneric)(AEGP_PluginID, AEGP_EffectRefH, const A_Time *, PF_Cmd, void *);
    A_Err (*AEGP_DisposeEffect)(AEGP_EffectRefH effect);
    A_Err (*AEGP_ApplyEffect)(AEGP_PluginID pluginId, AEGP_LayerH layer,
        AEGP_InstalledEffectKey effectKey, AEGP_EffectRefH *effect);
    A_Err (*AEGP_DeleteLayerEffect)(AEGP_EffectRefH);
    A_Err (*AEGP_GetNumInstalledEffects)(A_long *count);
    A_Err (*AEGP_GetNextInstalledEffect)(
        AEGP_InstalledEffectKey effectKey, AEGP_InstalledEffectKey *nextKey);
    A_Err (*AEGP_GetEffectName)(AEGP_InstalledEffectKey effectKey, A_char *name);
    A_Err (*AEGP_GetEffectMatchName)(AEGP_InstalledEffectKey, A_char *);
    A_Err (*AEGP_GetEffectCategory)(AEGP_InstalledEffectKey, A_char *);
    A_Err (*AEGP_DuplicateEffect)(AEGP_EffectRefH, AEGP_EffectRefH *);
};
