// Versions 3 and 4. They differ in the marker member of their value structs alone, which no stream
// here uses; of version 4 only what needs no value is offered.
#include "suites/SuiteTools.h"
#include "suites/Tables.h"

namespace rostrum {
namespace {

bool HasKey(const StreamRef &ref, A_long index)
{
    return ref.HasValues() && index >= 0 && index < ref.stream->KeyCount();
}

/// -1 for an effect's input layer, which holds no values.
template <typename Table>
A_Err GetStreamNumKFs(AEGP_StreamRefH streamH, A_long *count)
{
    return HostCall<Table>(
        "AEGP_GetStreamNumKFs",
        [&](Host &host) -> A_Err {
            const StreamRef ref = FindStream(host, streamH);
            if (!ref)
                return host.BadHandle(streamH);
            if (!count)
                return NullArgument(host);
            *count = ref.HasValues() ? ref.stream->KeyCount() : AEGP_NumKF_NO_DATA;
            return A_Err_NONE;
        },
        streamH, count);
}

template <typename Table>
A_Err GetKeyframeTime(
    AEGP_StreamRefH streamH, AEGP_KeyframeIndex index, AEGP_LTimeMode timeMode, A_Time *time)
{
    return HostCall<Table>(
        "AEGP_GetKeyframeTime",
        [&](Host &host) -> A_Err {
            const StreamRef ref = FindStream(host, streamH);
            if (!ref)
                return host.BadHandle(streamH);
            if (!time)
                return NullArgument(host);
            const A_Time anyTime = { 0, 1 };
            if (const A_Err error = CheckTime(host, &anyTime, timeMode))
                return error;
            if (!HasKey(ref, index))
                return A_Err_PARAMETER;
            const Time layerTime = ref.stream->KeyAt(index).time;
            *time = ToHostTime(timeMode == AEGP_LTimeMode_LayerTime
                    ? layerTime
                    : ref.layer->ToCompTime(layerTime));
            return A_Err_NONE;
        },
        streamH, index, timeMode, time);
}

/// A key at a time. It takes the value that the stream shows there, so that inserting alone changes
/// nothing that can be seen. At a key's time it answers that key and changes nothing. A new key is
/// linear, which was never seen in the real host. The first key of a time remap switches it on.
A_Err InsertKeyframe(
    AEGP_StreamRefH streamH, AEGP_LTimeMode timeMode, const A_Time *time, AEGP_KeyframeIndex *index)
{
    return HostCall<AEGP_KeyframeSuite3>(
        "AEGP_InsertKeyframe",
        [&](Host &host) -> A_Err {
            const StreamRef ref = FindStream(host, streamH);
            if (!ref)
                return host.BadHandle(streamH);
            if (!index)
                return NullArgument(host);
            if (const A_Err error = CheckTime(host, time, timeMode))
                return error;
            if (!ref.HasValues())
                return A_Err_PARAMETER;
            const Time compTime = InCompTime(*ref.layer.layer, *time, timeMode);
            const Time layerTime = ref.layer->ToLayerTime(compTime);
            const int there = ref.stream->FindKey(layerTime);
            if (there >= 0) {
                *index = there;
                return A_Err_NONE;
            }
            StreamValue value;
            if (const A_Err error = ReadStream(host, ref, compTime, &value))
                return error;
            *index = EditStream(host, ref, "Insert Keyframe").InsertKey(layerTime, value);
            return A_Err_NONE;
        },
        streamH, timeMode, time, index);
}

/// A stream that loses its last key keeps that key's value; a time remap is switched off by it.
void DeleteKey(Stream &stream, int index, bool isTimeRemap)
{
    if (stream.KeyCount() == 1 && !isTimeRemap)
        stream.SetConstant(stream.KeyAt(0).value);
    stream.DeleteKey(index);
}

A_Err DeleteKeyframe(AEGP_StreamRefH streamH, AEGP_KeyframeIndex index)
{
    return HostCall<AEGP_KeyframeSuite3>(
        "AEGP_DeleteKeyframe",
        [&](Host &host) -> A_Err {
            const StreamRef ref = FindStream(host, streamH);
            if (!ref)
                return host.BadHandle(streamH);
            if (!HasKey(ref, index))
                return A_Err_PARAMETER;
            DeleteKey(EditStream(host, ref, "Delete Keyframe"), index, ref.IsTimeRemap());
            return A_Err_NONE;
        },
        streamH, index);
}

/// To be disposed of.
A_Err GetNewKeyframeValue(AEGP_PluginID pluginId, AEGP_StreamRefH streamH, AEGP_KeyframeIndex index,
    AEGP_StreamValue *value)
{
    return HostCall<AEGP_KeyframeSuite3>(
        "AEGP_GetNewKeyframeValue",
        [&](Host &host) -> A_Err {
            const StreamRef ref = FindStream(host, streamH);
            if (!ref)
                return host.BadHandle(streamH);
            if (!value)
                return NullArgument(host);
            if (!HasKey(ref, index))
                return A_Err_PARAMETER;
            GiveValue(host, streamH, ref.stream->KeyAt(index).value, value);
            return A_Err_NONE;
        },
        pluginId, streamH, index, value);
}

A_Err SetKeyframeValue(
    AEGP_StreamRefH streamH, AEGP_KeyframeIndex index, const AEGP_StreamValue *value)
{
    return HostCall<AEGP_KeyframeSuite3>(
        "AEGP_SetKeyframeValue",
        [&](Host &host) -> A_Err {
            const StreamRef ref = FindStream(host, streamH);
            if (!ref)
                return host.BadHandle(streamH);
            if (!value)
                return NullArgument(host);
            StreamValue taken;
            if (!HasKey(ref, index) || !TakeValue(ref, &value->val, &taken))
                return A_Err_PARAMETER;
            EditStream(host, ref, "Set Keyframe Value").SetKeyValue(index, taken);
            return A_Err_NONE;
        },
        streamH, index, value);
}

bool IsInterpolation(AEGP_KeyframeInterpolationType type)
{
    return type == AEGP_KeyInterp_LINEAR || type == AEGP_KeyInterp_BEZIER
        || type == AEGP_KeyInterp_HOLD;
}

template <typename Table>
A_Err SetKeyframeInterpolation(AEGP_StreamRefH streamH, AEGP_KeyframeIndex index,
    AEGP_KeyframeInterpolationType in, AEGP_KeyframeInterpolationType out)
{
    return HostCall<Table>(
        "AEGP_SetKeyframeInterpolation",
        [&](Host &host) -> A_Err {
            const StreamRef ref = FindStream(host, streamH);
            if (!ref)
                return host.BadHandle(streamH);
            if (!HasKey(ref, index) || !IsInterpolation(in) || !IsInterpolation(out))
                return A_Err_PARAMETER;
            EditStream(host, ref, "Keyframe Interpolation")
                .SetKeyInterpolation(
                    index, static_cast<Interpolation>(in), static_cast<Interpolation>(out));
            return A_Err_NONE;
        },
        streamH, index, in, out);
}

static_assert(int(Interpolation::Linear) == AEGP_KeyInterp_LINEAR);
static_assert(int(Interpolation::Bezier) == AEGP_KeyInterp_BEZIER);
static_assert(int(Interpolation::Hold) == AEGP_KeyInterp_HOLD);

} // namespace

void FillTable(AEGP_KeyframeSuite3 &table)
{
    table.AEGP_GetStreamNumKFs = GetStreamNumKFs<AEGP_KeyframeSuite3>;
    table.AEGP_GetKeyframeTime = GetKeyframeTime<AEGP_KeyframeSuite3>;
    table.AEGP_InsertKeyframe = InsertKeyframe;
    table.AEGP_DeleteKeyframe = DeleteKeyframe;
    table.AEGP_GetNewKeyframeValue = GetNewKeyframeValue;
    table.AEGP_SetKeyframeValue = SetKeyframeValue;
    table.AEGP_SetKeyframeInterpolation = SetKeyframeInterpolation<AEGP_KeyframeSuite3>;
}

void FillTable(AEGP_KeyframeSuite4 &table)
{
    table.AEGP_GetStreamNumKFs = GetStreamNumKFs<AEGP_KeyframeSuite4>;
    table.AEGP_GetKeyframeTime = GetKeyframeTime<AEGP_KeyframeSuite4>;
    table.AEGP_SetKeyframeInterpolation = SetKeyframeInterpolation<AEGP_KeyframeSuite4>;
}

} // namespace rostrum
