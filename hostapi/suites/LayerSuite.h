// AEGP Layer Suite: Layers of a composition; index 0 is the topmost.
// Every slot is declared, in the order of the table, so that the offsets hold; the names of the
// arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"

/// "AEGP Layer Suite" version 10.
struct AEGP_LayerSuite4
{
    static constexpr char kName[] = "AEGP Layer Suite";
    static constexpr std::int32_t kVersion = 10;

    A_Err (*AEGP_GetCompNumLayers)(AEGP_CompH comp, A_long *count);
    A_Err (*AEGP_GetCompLayerByIndex)(AEGP_CompH comp, A_long index, AEGP_LayerH *layer);
    A_Err (*AEGP_GetActiveLayer)(AEGP_LayerH *layer);
    A_Err (*AEGP_GetLayerIndex)(AEGP_LayerH layer, A_long *index);
    A_Err (*AEGP_GetLayerSourceItem)(AEGP_LayerH layer, AEGP_ItemH *source);
    A_Err (*AEGP_GetLayerSourceItemID)(AEGP_LayerH, A_long *);
    A_Err (*AEGP_GetLayerParentComp)(AEGP_LayerH layer, AEGP_CompH *comp);
    A_Err (*AEGP_GetLayerName)(AEGP_LayerH layer, A_char *layerName, A_char *sourceName);
    A_Err (*AEGP_GetLayerQuality)(AEGP_LayerH, AEGP_LayerQuality *);
    A_Err (*AEGP_SetLayerQuality)(AEGP_LayerH, AEGP_LayerQuality);
    A_Err (*AEGP_GetLayerFlags)(AEGP_LayerH, AEGP_LayerFlags *);
    A_Err (*AEGP_SetLayerFlag)(AEGP_LayerH, AEGP_LayerFlags, A_Boolean);
    A_Err (*AEGP_IsLayerVideoReallyOn)(AEGP_LayerH, A_Boolean *);
    A_Err (*AEGP_IsLayerAudioReallyOn)(AEGP_LayerH, A_Boolean *);
    A_Err (*AEGP_GetLayerCurrentTime)(AEGP_LayerH, AEGP_LTimeMode, A_Time *);
    A_Err (*AEGP_GetLayerInPoint)(AEGP_LayerH layer, AEGP_LTimeMode timeMode, A_Time *inPoint);
    A_Err (*AEGP_GetLayerDuration)(AEGP_LayerH layer, AEGP_LTimeMode timeMode, A_Time *duration);
    A_Err (*AEGP_SetLayerInPointAndDuration)(
        AEGP_LayerH layer, AEGP_LTimeMode timeMode, const A_Time *inPoint, const A_Time *duration);
    A_Err (*AEGP_GetLayerOffset)(AEGP_LayerH, A_Time *);
    A_Err (*AEGP_SetLayerOffset)(AEGP_LayerH layer, const A_Time *offset);
    A_Err (*AEGP_GetLayerStretch)(AEGP_LayerH, A_Ratio *);
    A_Err (*AEGP_SetLayerStretch)(AEGP_LayerH, const A_Ratio *);
    A_Err (*AEGP_GetLayerTransferMode)(AEGP_LayerH, AEGP_LayerTransferMode *);
    A_Err (*AEGP_SetLayerTransferMode)(AEGP_LayerH, const AEGP_LayerTransferMode *);
    A_Err (*AEGP_IsAddLayerValid)(AEGP_ItemH, AEGP_CompH, A_Boolean *);
    A_Err (*AEGP_AddLayer)(AEGP_ItemH item, AEGP_CompH comp, AEGP_LayerH *layer);
    A_Err (*AEGP_ReorderLayer)(AEGP_LayerH layer, A_long index);
    A_Err (*AEGP_GetLayerMaskedBounds)(AEGP_LayerH, AEGP_LTimeMode, const A_Time *, A_FloatRect *);
    A_Err (*AEGP_GetLayerObjectType)(AEGP_LayerH, AEGP_ObjectType *);
    A_Err (*AEGP_IsLayer3D)(AEGP_LayerH, A_Boolean *);
    A_Err (*AEGP_IsLayer2D)(AEGP_LayerH, A_Boolean *);
    A_Err (*AEGP_IsVideoActive)(AEGP_LayerH, AEGP_LTimeMode, const A_Time *, A_Boolean *);
    A_Err (*AEGP_IsLayerUsedAsTrackMatte)(AEGP_LayerH, A_Boolean, A_Boolean *);
    A_Err (*AEGP_DoesLayerHaveTrackMatte)(AEGP_LayerH, A_Boolean *);
    A_Err (*AEGP_ConvertCompToLayerTime)(AEGP_LayerH, const A_Time *, A_Time *);
    A_Err (*AEGP_ConvertLayerToCompTime)(AEGP_LayerH, const A_Time *, A_Time *);
    A_Err (*AEGP_GetLayerDancingRandValue)(AEGP_LayerH, const A_Time *, A_long *);
    A_Err (*AEGP_GetLayerID)(AEGP_LayerH, AEGP_LayerIDVal *);
    A_Err (*AEGP_GetLayerToWorldXform)(AEGP_LayerH, const A_Time *, A_Matrix4 *);
    A_Err (*AEGP_GetLayerToWorldXformFromView)(
        AEGP_LayerH, const A_Time *, const A_Time *, A_Matrix4 *);
    A_Err (*AEGP_SetLayerName)(AEGP_LayerH, const A_char *);
    A_Err (*AEGP_GetLayerParent)(AEGP_LayerH layer, AEGP_LayerH *parent);
    A_Err (*AEGP_SetLayerParent)(AEGP_LayerH, AEGP_LayerH);
    A_Err (*AEGP_DeleteLayer)(AEGP_LayerH);
    A_Err (*AEGP_DuplicateLayer)(AEGP_LayerH, AEGP_LayerH *);
};
