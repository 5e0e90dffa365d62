// AEGP Stream Suite: Properties that may vary over time: values of layer and effect streams.
// Every slot is declared, in the order of the table, so that the offsets hold; the names of the
// arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"

/// "AEGP Stream Suite" version 7.
struct AEGP_StreamSuite2
{
    static constexpr char kName[] = "AEGP Stream Suite";
    static constexpr std::int32_t kVersion = 7;

    A_Err (*AEGP_IsStreamLegal)(AEGP_LayerH, AEGP_LayerStream, A_Boolean *);
    A_Err (*AEGP_CanVaryOverTime)(AEGP_StreamRefH, A_Boolean *);
    A_Err (*AEGP_GetValidInterpolations)(AEGP_StreamRefH, AEGP_KeyInterpolationMask *);
    A_Err (*AEGP_GetNewLayerStream)(AEGP_PluginID pluginId, AEGP_LayerH layer,
        AEGP_LayerStream layerStream, AEGP_StreamRefH *stream);
    A_Err (*AEGP_GetEffectNumParamStreams)(AEGP_EffectRefH effect, A_long *count);
    A_Err (*AEGP_GetNewEffectStreamByIndex)(AEGP_PluginID pluginId, AEGP_EffectRefH effect,
        PF_ParamIndex paramIndex, AEGP_StreamRefH *stream);
    A_Err (*AEGP_GetNewMaskStream)(
        AEGP_PluginID, AEGP_MaskRefH, AEGP_MaskStream, AEGP_StreamRefH *);
    A_Err (*AEGP_DisposeStream)(AEGP_StreamRefH stream);
    A_Err (*AEGP_GetStreamName)(AEGP_StreamRefH, A_Boolean, A_char *);
    A_Err (*AEGP_GetStreamUnitsText)(AEGP_StreamRefH, A_Boolean, A_char *);
    A_Err (*AEGP_GetStreamProperties)(AEGP_StreamRefH, AEGP_StreamFlags *, A_FpLong *, A_FpLong *);
    A_Err (*AEGP_IsStreamTimevarying)(AEGP_StreamRefH stream, A_Boolean *varying);
    A_Err (*AEGP_GetStreamType)(AEGP_StreamRefH, AEGP_StreamType *);
    A_Err (*AEGP_GetNewStreamValue)(AEGP_PluginID pluginId, AEGP_StreamRefH stream,
        AEGP_LTimeMode timeMode, const A_Time *time, A_Boolean preExpression,
        AEGP_StreamValue *value);
    A_Err (*AEGP_DisposeStreamValue)(AEGP_StreamValue *value);
    A_Err (*AEGP_SetStreamValue)(
        AEGP_PluginID pluginId, AEGP_StreamRefH stream, AEGP_StreamValue *value);
    A_Err (*AEGP_GetLayerStreamValue)(AEGP_LayerH layer, AEGP_LayerStream layerStream,
        AEGP_LTimeMode timeMode, const A_Time *time, A_Boolean preExpression, AEGP_StreamVal *value,
        AEGP_StreamType *type);
    A_Err (*AEGP_GetExpressionState)(AEGP_PluginID, AEGP_StreamRefH, A_Boolean *);
    A_Err (*AEGP_SetExpressionState)(AEGP_PluginID, AEGP_StreamRefH, A_Boolean);
    A_Err (*AEGP_GetExpression)(AEGP_PluginID, AEGP_StreamRefH, AEGP_MemHandle *);
    A_Err (*AEGP_SetExpression)(AEGP_PluginID, AEGP_StreamRefH, const A_char *);
    A_Err (*AEGP_DuplicateStreamRef)(AEGP_PluginID, AEGP_StreamRefH, AEGP_StreamRefH *);
};
