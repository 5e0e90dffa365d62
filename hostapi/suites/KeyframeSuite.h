// AEGP Keyframe Suite: Keys of a stream, by index in rising time.
// Every slot is declared, in the order of the table, so that the offsets hold; the names of the
// arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"

/// "AEGP Keyframe Suite" version 3.
struct AEGP_KeyframeSuite3
{
    static constexpr char kName[] = "AEGP Keyframe Suite";
    static constexpr std::int32_t kVersion = 3;

    A_Err (*AEGP_GetStreamNumKFs)(AEGP_StreamRefH stream, A_long *count);
    A_Err (*AEGP_GetKeyframeTime)(
        AEGP_StreamRefH stream, AEGP_KeyframeIndex index, AEGP_LTimeMode timeMode, A_Time *time);
    A_Err (*AEGP_InsertKeyframe)(AEGP_StreamRefH stream, AEGP_LTimeMode timeMode,
        const A_Time *time, AEGP_KeyframeIndex *index);
    A_Err (*AEGP_DeleteKeyframe)(AEGP_StreamRefH stream, AEGP_KeyframeIndex index);
    A_Err (*AEGP_GetNewKeyframeValue)(AEGP_PluginID pluginId, AEGP_StreamRefH stream,
        AEGP_KeyframeIndex index, AEGP_StreamValue *value);
    A_Err (*AEGP_SetKeyframeValue)(
        AEGP_StreamRefH stream, AEGP_KeyframeIndex index, const AEGP_StreamValue *value);
    A_Err (*AEGP_GetStreamValueDimensionality)(AEGP_StreamRefH, A_short *);
    A_Err (*AEGP_GetStreamTemporalDimensionality)(AEGP_StreamRefH, A_short *);
    A_Err (*AEGP_GetNewKeyframeSpatialTangents)(
        AEGP_PluginID, AEGP_StreamRefH, AEGP_KeyframeIndex, AEGP_StreamValue *, AEGP_StreamValue *);
    A_Err (*AEGP_SetKeyframeSpatialTangents)(
        AEGP_StreamRefH, AEGP_KeyframeIndex, const AEGP_StreamValue *, const AEGP_StreamValue *);
    A_Err (*AEGP_GetKeyframeTemporalEase)(
        AEGP_StreamRefH, AEGP_KeyframeIndex, A_long, AEGP_KeyframeEase *, AEGP_KeyframeEase *);
    A_Err (*AEGP_SetKeyframeTemporalEase)(AEGP_StreamRefH, AEGP_KeyframeIndex, A_long,
        const AEGP_KeyframeEase *, const AEGP_KeyframeEase *);
    A_Err (*AEGP_GetKeyframeFlags)(AEGP_StreamRefH, AEGP_KeyframeIndex, AEGP_KeyframeFlags *);
    A_Err (*AEGP_SetKeyframeFlag)(
        AEGP_StreamRefH, AEGP_KeyframeIndex, AEGP_KeyframeFlags, A_Boolean);
    A_Err (*AEGP_GetKeyframeInterpolation)(AEGP_StreamRefH, AEGP_KeyframeIndex,
        AEGP_KeyframeInterpolationType *, AEGP_KeyframeInterpolationType *);
    A_Err (*AEGP_SetKeyframeInterpolation)(AEGP_StreamRefH stream, AEGP_KeyframeIndex index,
        AEGP_KeyframeInterpolationType in, AEGP_KeyframeInterpolationType out);
    A_Err (*AEGP_StartAddKeyframes)(AEGP_StreamRefH, AEGP_AddKeyframesInfoH *);
    A_Err (*AEGP_AddKeyframes)(AEGP_AddKeyframesInfoH, AEGP_LTimeMode, const A_Time *, A_long *);
    A_Err (*AEGP_SetAddKeyframe)(AEGP_AddKeyframesInfoH, A_long, const AEGP_StreamValue *);
    A_Err (*AEGP_EndAddKeyframes)(A_Boolean, AEGP_AddKeyframesInfoH);
};

/// "AEGP Keyframe Suite" version 4.
struct AEGP_KeyframeSuite4
{
    static constexpr char kName[] = "AEGP Keyframe Suite";
    static constexpr std::int32_t kVersion = 4;

    A_Err (*AEGP_GetStreamNumKFs)(AEGP_StreamRefH stream, A_long *count);
    A_Err (*AEGP_GetKeyframeTime)(
        AEGP_StreamRefH stream, AEGP_KeyframeIndex index, AEGP_LTimeMode timeMode, A_Time *time);
    A_Err (*AEGP_InsertKeyframe)(
        AEGP_StreamRefH, AEGP_LTimeMode, const A_Time *, AEGP_KeyframeIndex *);
    A_Err (*AEGP_DeleteKeyframe)(AEGP_StreamRefH, AEGP_KeyframeIndex);
    A_Err (*AEGP_GetNewKeyframeValue)(
        AEGP_PluginID, AEGP_StreamRefH, AEGP_KeyframeIndex, AEGP_StreamValue2 *);
    A_Err (*AEGP_SetKeyframeValue)(AEGP_StreamRefH, AEGP_KeyframeIndex, const AEGP_StreamValue2 *);
    A_Err (*AEGP_GetStreamValueDimensionality)(AEGP_StreamRefH, A_short *);
    A_Err (*AEGP_GetStreamTemporalDimensionality)(AEGP_StreamRefH, A_short *);
    A_Err (*AEGP_GetNewKeyframeSpatialTangents)(AEGP_PluginID, AEGP_StreamRefH, AEGP_KeyframeIndex,
        AEGP_StreamValue2 *, AEGP_StreamValue2 *);
    A_Err (*AEGP_SetKeyframeSpatialTangents)(
        AEGP_StreamRefH, AEGP_KeyframeIndex, const AEGP_StreamValue2 *, const AEGP_StreamValue2 *);
    A_Err (*AEGP_GetKeyframeTemporalEase)(
        AEGP_StreamRefH, AEGP_KeyframeIndex, A_long, AEGP_KeyframeEase *, AEGP_KeyframeEase *);
    A_Err (*AEGP_SetKeyframeTemporalEase)(AEGP_StreamRefH, AEGP_KeyframeIndex, A_long,
        const AEGP_KeyframeEase *, const AEGP_KeyframeEase *);
    A_Err (*AEGP_GetKeyframeFlags)(AEGP_StreamRefH, AEGP_KeyframeIndex, AEGP_KeyframeFlags *);
    A_Err (*AEGP_SetKeyframeFlag)(
        AEGP_StreamRefH, AEGP_KeyframeIndex, AEGP_KeyframeFlags, A_Boolean);
    A_Err (*AEGP_GetKeyframeInterpolation)(AEGP_StreamRefH, AEGP_KeyframeIndex,
        AEGP_KeyframeInterpolationType *, AEGP_KeyframeInterpolationType *);
    A_Err (*AEGP_SetKeyframeInterpolation)(AEGP_StreamRefH stream, AEGP_KeyframeIndex index,
        AEGP_KeyframeInterpolationType in, AEGP_KeyframeInterpolationType out);
    A_Err (*AEGP_StartAddKeyframes)(AEGP_StreamRefH, AEGP_AddKeyframesInfoH *);
    A_Err (*AEGP_AddKeyframes)(AEGP_AddKeyframesInfoH, AEGP_LTimeMode, const A_Time *, A_long *);
    A_Err (*AEGP_SetAddKeyframe)(AEGP_AddKeyframesInfoH, A_long, const AEGP_StreamValue2 *);
    A_Err (*AEGP_EndAddKeyframes)(A_Boolean, AEGP_AddKeyframesInfoH);
};
