#include "suites/SuiteTools.h"
#include "suites/Tables.h"

namespace rostrum {
namespace {

using Table = AEGP_StreamSuite2;

A_Err OpenStream(Host &host, const StreamPlace &place, AEGP_StreamRefH *stream)
{
    std::uint64_t payload = 0;
    if (!host.streams.Open(place, &payload))
        return A_Err_ALLOC;
    *stream = MakeHandle<AEGP_StreamRefH>(HandleKind::Stream, payload);
    return A_Err_NONE;
}

/// The time remap of a still, a solid or a layer without source is not legal: an ordinary error.
A_Err GetNewLayerStream(AEGP_PluginID pluginId, AEGP_LayerH layerH, AEGP_LayerStream layerStream,
    AEGP_StreamRefH *stream)
{
    return HostCall<Table>(
        "AEGP_GetNewLayerStream",
        [&](Host &host) -> A_Err {
            const LayerRef layer = host.FindLayer(layerH);
            if (!layer)
                return host.BadHandle(layerH);
            if (!stream)
                return NullArgument(host);
            if (!host.GetProject().HasStream(*layer.layer, layerStream))
                return A_Err_PARAMETER;
            StreamPlace place;
            place.layer = TakeApart(layerH).payload;
            place.number = layerStream;
            return OpenStream(host, place, stream);
        },
        pluginId, layerH, layerStream, stream);
}

/// @return null when the handle is bad or its effect is gone
const LayerEffect *FindEffect(Host &host, AEGP_EffectRefH handle, EffectPlace *place)
{
    const HandleParts parts = TakeApart(handle);
    const EffectPlace *found
        = parts.kind == HandleKind::Effect ? host.effects.Find(parts.payload) : nullptr;
    if (!found)
        return nullptr;
    *place = *found;
    const LayerRef layer = host.FindLayer(found->layer);
    return layer ? layer->FindEffect(found->effect) : nullptr;
}

/// The effect's own parameters, and before them its input layer.
int ParamCount(const LayerEffect &effect)
{
    return effect.params.size() + 1;
}

A_Err GetEffectNumParamStreams(AEGP_EffectRefH effectH, A_long *count)
{
    return HostCall<Table>(
        "AEGP_GetEffectNumParamStreams",
        [&](Host &host) -> A_Err {
            EffectPlace place;
            const LayerEffect *effect = FindEffect(host, effectH, &place);
            if (!effect)
                return host.BadHandle(effectH);
            if (!count)
                return NullArgument(host);
            *count = ParamCount(*effect);
            return A_Err_NONE;
        },
        effectH, count);
}

A_Err GetNewEffectStreamByIndex(AEGP_PluginID pluginId, AEGP_EffectRefH effectH,
    PF_ParamIndex paramIndex, AEGP_StreamRefH *stream)
{
    return HostCall<Table>(
        "AEGP_GetNewEffectStreamByIndex",
        [&](Host &host) -> A_Err {
            EffectPlace effectPlace;
            const LayerEffect *effect = FindEffect(host, effectH, &effectPlace);
            if (!effect)
                return host.BadHandle(effectH);
            if (!stream)
                return NullArgument(host);
            if (paramIndex < 0 || paramIndex >= ParamCount(*effect))
                return A_Err_PARAMETER;
            StreamPlace place;
            place.layer = effectPlace.layer;
            place.effect = effect->id;
            place.param = paramIndex;
            place.effectHandle = TakeApart(effectH).payload;
            return OpenStream(host, place, stream);
        },
        pluginId, effectH, paramIndex, stream);
}

A_Err DisposeStream(AEGP_StreamRefH streamH)
{
    return HostCall<Table>(
        "AEGP_DisposeStream",
        [&](Host &host) -> A_Err {
            const HandleParts parts = TakeApart(streamH);
            // A stream whose layer is gone must be given back all the same.
            if (parts.kind != HandleKind::Stream || !host.streams.Find(parts.payload))
                return host.BadHandle(streamH);
            host.streams.Close(parts.payload);
            return A_Err_NONE;
        },
        streamH);
}

/// Whether it has keys: there are no expressions here.
A_Err IsStreamTimevarying(AEGP_StreamRefH streamH, A_Boolean *varying)
{
    return HostCall<Table>(
        "AEGP_IsStreamTimevarying",
        [&](Host &host) -> A_Err {
            const StreamRef ref = FindStream(host, streamH);
            if (!ref)
                return host.BadHandle(streamH);
            if (!varying)
                return NullArgument(host);
            *varying = ref.HasValues() && ref.stream->HasKeys();
            return A_Err_NONE;
        },
        streamH, varying);
}

/// The value, to be disposed of. An effect's input layer answers the id of its layer.
A_Err GetNewStreamValue(AEGP_PluginID pluginId, AEGP_StreamRefH streamH, AEGP_LTimeMode timeMode,
    const A_Time *time, A_Boolean preExpression, AEGP_StreamValue *value)
{
    return HostCall<Table>(
        "AEGP_GetNewStreamValue",
        [&](Host &host) -> A_Err {
            const StreamRef ref = FindStream(host, streamH);
            if (!ref)
                return host.BadHandle(streamH);
            if (!value)
                return NullArgument(host);
            if (const A_Err error = CheckTime(host, time, timeMode))
                return error;
            StreamValue read{};
            if (ref.HasValues()) {
                const Time at = InCompTime(*ref.layer.layer, *time, timeMode);
                if (const A_Err error = ReadStream(host, ref, at, &read))
                    return error;
            }
            GiveValue(host, streamH, read, value);
            if (!ref.HasValues())
                value->val.layer_id = ref.layer->id;
            return A_Err_NONE;
        },
        pluginId, streamH, timeMode, time, preExpression, value);
}

A_Err DisposeStreamValue(AEGP_StreamValue *value)
{
    return HostCall<Table>(
        "AEGP_DisposeStreamValue",
        [&](Host &host) -> A_Err {
            if (!value)
                return NullArgument(host);
            const int index = host.streamValues.lastIndexOf(value->streamH);
            if (index < 0)
                return host.Misuse("this is no value that was handed out, or not any more");
            host.streamValues.remove(index);
            *value = AEGP_StreamValue{}; // so that a second disposal of it is seen
            return A_Err_NONE;
        },
        value);
}

/// The constant of a stream without keys. With keys it is refused; so is a time remap, which has no
/// constant: its keys alone switch it on.
A_Err SetStreamValue(AEGP_PluginID pluginId, AEGP_StreamRefH streamH, AEGP_StreamValue *value)
{
    return HostCall<Table>(
        "AEGP_SetStreamValue",
        [&](Host &host) -> A_Err {
            const StreamRef ref = FindStream(host, streamH);
            if (!ref)
                return host.BadHandle(streamH);
            if (!value)
                return NullArgument(host);
            if (!ref.HasValues() || ref.stream->HasKeys() || ref.IsTimeRemap())
                return A_Err_PARAMETER;
            StreamValue taken;
            if (!TakeValue(ref, &value->val, &taken))
                return A_Err_PARAMETER;
            EditStream(host, ref, "Set Value").SetConstant(taken);
            return A_Err_NONE;
        },
        pluginId, streamH, value);
}

/// A value at any time, with no handle and nothing to dispose of. The type is left out where the
/// caller gives no place for it.
A_Err GetLayerStreamValue(AEGP_LayerH layerH, AEGP_LayerStream layerStream, AEGP_LTimeMode timeMode,
    const A_Time *time, A_Boolean preExpression, AEGP_StreamVal *value, AEGP_StreamType *type)
{
    return HostCall<Table>(
        "AEGP_GetLayerStreamValue",
        [&](Host &host) -> A_Err {
            const LayerRef layer = host.FindLayer(layerH);
            if (!layer)
                return host.BadHandle(layerH);
            if (!value)
                return NullArgument(host);
            if (const A_Err error = CheckTime(host, time, timeMode))
                return error;
            if (!host.GetProject().HasStream(*layer.layer, layerStream))
                return A_Err_PARAMETER;
            StreamRef ref;
            ref.layer = layer;
            ref.place.number = layerStream;
            ref.stream = layer->FindStream(layerStream);
            StreamValue read;
            const Time at = InCompTime(*layer.layer, *time, timeMode);
            if (const A_Err error = ReadStream(host, ref, at, &read))
                return error;
            value->four_d = { read[0], read[1], read[2], read[3] };
            if (type)
                *type = TypeOfLayerStream(layerStream);
            return A_Err_NONE;
        },
        layerH, layerStream, timeMode, time, preExpression, value, type);
}

} // namespace

void FillTable(AEGP_StreamSuite2 &table)
{
    table.AEGP_GetNewLayerStream = GetNewLayerStream;
    table.AEGP_GetEffectNumParamStreams = GetEffectNumParamStreams;
    table.AEGP_GetNewEffectStreamByIndex = GetNewEffectStreamByIndex;
    table.AEGP_DisposeStream = DisposeStream;
    table.AEGP_IsStreamTimevarying = IsStreamTimevarying;
    table.AEGP_GetNewStreamValue = GetNewStreamValue;
    table.AEGP_DisposeStreamValue = DisposeStreamValue;
    table.AEGP_SetStreamValue = SetStreamValue;
    table.AEGP_GetLayerStreamValue = GetLayerStreamValue;
}

} // namespace rostrum
