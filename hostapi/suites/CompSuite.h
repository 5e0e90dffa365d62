// AEGP Comp Suite: Compositions. Layer selection is replaced as a whole.
// Every slot is declared, in the order of the table, so that the offsets hold; the names of the
// arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"

/// "AEGP Comp Suite" version 14.
struct AEGP_CompSuite6
{
    static constexpr char kName[] = "AEGP Comp Suite";
    static constexpr std::int32_t kVersion = 14;

    A_Err (*AEGP_GetCompFromItem)(AEGP_ItemH item, AEGP_CompH *comp);
    A_Err (*AEGP_GetItemFromComp)(AEGP_CompH comp, AEGP_ItemH *item);
    A_Err (*AEGP_GetCompDownsampleFactor)(AEGP_CompH, AEGP_DownsampleFactor *);
    A_Err (*AEGP_SetCompDownsampleFactor)(AEGP_CompH, const AEGP_DownsampleFactor *);
    A_Err (*AEGP_GetCompBGColor)(AEGP_CompH, AEGP_ColorVal *);
    A_Err (*AEGP_SetCompBGColor)(AEGP_CompH, const AEGP_ColorVal *);
    A_Err (*AEGP_GetCompFlags)(AEGP_CompH, AEGP_CompFlags *);
    A_Err (*AEGP_GetCompFramerate)(AEGP_CompH, A_FpLong *);
    A_Err (*AEGP_SetCompFrameRate)(AEGP_CompH, const A_FpLong *);
    A_Err (*AEGP_GetCompShutterAnglePhase)(AEGP_CompH, A_Ratio *, A_Ratio *);
    A_Err (*AEGP_GetCompShutterFrameRange)(AEGP_CompH, const A_Time *, A_Time *, A_Time *);
    A_Err (*AEGP_GetCompSuggestedMotionBlurSamples)(AEGP_CompH, A_long *);
    A_Err (*AEGP_SetCompSuggestedMotionBlurSamples)(AEGP_CompH, A_long);
    A_Err (*AEGP_GetCompWorkAreaStart)(AEGP_CompH, A_Time *);
    A_Err (*AEGP_GetCompWorkAreaDuration)(AEGP_CompH, A_Time *);
    A_Err (*AEGP_SetCompWorkAreaStartAndDuration)(AEGP_CompH, const A_Time *, const A_Time *);
    A_Err (*AEGP_CreateSolidInComp)(const A_char *, A_long, A_long, const AEGP_ColorVal *,
        AEGP_CompH, const A_Time *, AEGP_LayerH *);
    A_Err (*AEGP_CreateCameraInComp)(const A_char *, A_FloatPoint, AEGP_CompH, AEGP_LayerH *);
    A_Err (*AEGP_CreateLightInComp)(const A_char *, A_FloatPoint, AEGP_CompH, AEGP_LayerH *);
    A_Err (*AEGP_CreateComp)(AEGP_ItemH, const A_char *, A_long, A_long, const A_Ratio *,
        const A_Time *, const A_Ratio *, AEGP_CompH *);
    A_Err (*AEGP_GetNewCollectionFromCompSelection)(AEGP_PluginID, AEGP_CompH, AEGP_Collection2H *);
    A_Err (*AEGP_SetSelection)(AEGP_CompH comp, AEGP_Collection2H selection);
    A_Err (*AEGP_GetCompDisplayStartTime)(AEGP_CompH, A_Time *);
    A_Err (*AEGP_SetCompDisplayStartTime)(AEGP_CompH, const A_Time *);
    A_Err (*AEGP_SetCompDuration)(AEGP_CompH comp, const A_Time *duration);
    A_Err (*AEGP_CreateNullInComp)(const A_char *, AEGP_CompH, const A_Time *, AEGP_LayerH *);
    A_Err (*AEGP_SetCompPixelAspectRatio)(AEGP_CompH, const A_Ratio *);
    A_Err (*AEGP_CreateTextLayerInComp)(AEGP_CompH, AEGP_LayerH *);
    A_Err (*AEGP_SetCompDimensions)(AEGP_CompH, A_long, A_long);
    A_Err (*AEGP_DuplicateComp)(AEGP_CompH, AEGP_CompH *);
    A_Err (*AEGP_GetCompFrameDuration)(AEGP_CompH, A_Time *);
    A_Err (*AEGP_GetMostRecentlyUsedComp)(AEGP_CompH *);
    A_Err (*AEGP_CreateVectorLayerInComp)(AEGP_CompH, AEGP_LayerH *);
    A_Err (*AEGP_GetNewCompMarkerStream)(AEGP_PluginID, AEGP_CompH, AEGP_StreamRefH *);
};
