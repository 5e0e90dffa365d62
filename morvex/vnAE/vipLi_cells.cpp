// The cells of a column, kept as hold keys on the layer's time-remap stream.
//
//     frame   0  1  2  3  4  5          column  1  1  1  2  2  0
//     key     |        |     |          at 0: 0.04 s   at 3: 0.08 s   at 5: 0 s
//
// A run of equal cells is one key at the run's first frame; its value is image / Fps seconds and it
// holds both ways. The sheet has no other record: reading samples the stream.

#include "hostErrors.h"
#include "hostScopes.h"
#include "vipLi.h"

#include "support/vnLog.h"

#include <cstring>

namespace {

struct MarkedStream
{
    qint32 number;
    quint8 mark;
};

constexpr MarkedStream kMarkedStreams[] = {
    { AEGP_LayerStream_POSITION, 1 },
    { AEGP_LayerStream_SCALE, 2 },
    { AEGP_LayerStream_ROTATION, 4 },
};

} // namespace

bool vipLi::ReadRemapSeconds(SuiteHandler &suites, qint32 frame, double &seconds)
{
    const A_Time time = FrameTime(frame);
    AEGP_StreamVal value{};
    AEGP_StreamType type = AEGP_StreamType_NO_DATA;
    if (VN_HOST_FAILED(
            suites.Stream7()->AEGP_GetLayerStreamValue(Layer, AEGP_LayerStream_TIME_REMAP,
                AEGP_LTimeMode_CompTime, &time, /*preExpression=*/false, &value, &type)))
        return false;
    seconds = value.one_d;
    return true;
}

bool vipLi::GetCellImage(qint32 frame, qint32 &image)
{
    if (!Layer)
        return false;
    SuiteHandler suites(BasicSuite);
    double seconds = 0;
    if (!ReadRemapSeconds(suites, frame, seconds))
        return false;
    image = ToWhole(Fps * seconds + 0.5);
    return true;
}

bool vipLi::IsImage(double seconds, qint32 image) const
{
    // A key of image 29 holds 1.16 s, and 25 times that is 28.99...: cut it reads 28, rounded 29.
    // By the cut reading alone, 28 written over 29 would seem to be there already.
    const double images = Fps * seconds;
    return ToWhole(images) == image && ToWhole(images + 0.5) == image;
}

bool vipLi::GetKeyImage(AEGP_StreamRefH stream, qint32 keyIndex, qint32 &image)
{
    SuiteHandler suites(BasicSuite);
    StreamValue value(suites, PluginId, stream, keyIndex);
    if (VN_HOST_FAILED(value.Error()))
        return false;
    image = ToWhole(
        Fps * value.First()); // no 0.5 here: the sheet's own reading adds it, this one not
    return true;
}

bool vipLi::KeyIsImage(SuiteHandler &suites, AEGP_StreamRefH stream, qint32 keyIndex, qint32 image)
{
    StreamValue value(suites, PluginId, stream, keyIndex);
    return !VN_HOST_FAILED(value.Error()) && IsImage(value.First(), image);
}

void vipLi::FindKeys(SuiteHandler &suites, AEGP_StreamRefH stream, qint32 frame, qint32 &at,
    qint32 &before, qint32 &after)
{
    at = before = after = -1;
    A_long count = 0;
    // unchecked: a stream whose keys cannot be counted is taken as one without keys
    LastHostError = suites.Keyframe3()->AEGP_GetStreamNumKFs(stream, &count);
    qint32 previous = -1;
    for (qint32 key = 0; key < count; ++key) {
        A_Time time{ 0, 1 };
        LastHostError
            = suites.Keyframe4()->AEGP_GetKeyframeTime(stream, key, AEGP_LTimeMode_CompTime, &time);
        if (LastHostError != A_Err_NONE)
            continue; // a key whose time cannot be read is no neighbour
        const qint32 keyFrame = TimeToFrame(time);
        if (keyFrame < previous)
            vnLog::Instance()->Add("Cles non sequentielles !!!");
        previous = keyFrame;
        if (keyFrame > frame) {
            after = key;
            return;
        }
        // Of two keys that round to one frame the later one counts.
        (keyFrame == frame ? at : before) = key;
    }
}

bool vipLi::FindKeys(
    AEGP_StreamRefH stream, qint32 frame, qint32 &at, qint32 &before, qint32 &after)
{
    SuiteHandler suites(BasicSuite);
    FindKeys(suites, stream, frame, at, before, after);
    return true;
}

void vipLi::WriteHoldKey(
    SuiteHandler &suites, AEGP_StreamRefH stream, qint32 keyIndex, qint32 image)
{
    AEGP_StreamValue value{};
    value.streamH = stream;
    value.val.one_d = static_cast<double>(image) / Fps;
    // unchecked: what the host refuses, the next reload shows
    LastHostError = suites.Keyframe3()->AEGP_SetKeyframeValue(stream, keyIndex, &value);
    LastHostError = suites.Keyframe3()->AEGP_SetKeyframeInterpolation(
        stream, keyIndex, AEGP_KeyInterp_HOLD, AEGP_KeyInterp_HOLD);
}

bool vipLi::SetCellImage(qint32 frame, qint32 image)
{
    if (!Layer)
        return false;
    SuiteHandler suites(BasicSuite);
    const LayerStream stream(suites, PluginId, Layer, AEGP_LayerStream_TIME_REMAP);
    double seconds = 0;
    if (VN_HOST_FAILED(stream.Error()) || !ReadRemapSeconds(suites, frame, seconds))
        return false;
    if (IsImage(seconds, image))
        return true;

    qint32 at, before, after;
    FindKeys(suites, stream.Handle(), frame, at, before, after);
    const bool joinsBefore
        = at >= 0 && frame > 0 && before >= 0 && KeyIsImage(suites, stream.Handle(), before, image);
    if (joinsBefore) {
        // unchecked: what the host refuses, the next reload shows; so also below
        LastHostError = suites.Keyframe3()->AEGP_DeleteKeyframe(stream.Handle(), at);
        FindKeys(suites, stream.Handle(), frame, at, before, after);
    } else {
        if (at < 0) {
            const A_Time time = FrameTime(frame);
            AEGP_KeyframeIndex inserted = -1;
            LastHostError = suites.Keyframe3()->AEGP_InsertKeyframe(
                stream.Handle(), AEGP_LTimeMode_CompTime, &time, &inserted);
            FindKeys(suites, stream.Handle(), frame, at, before, after);
        }
        if (at >= 0)
            WriteHoldKey(suites, stream.Handle(), at, image);
    }
    if (after >= 0 && KeyIsImage(suites, stream.Handle(), after, image))
        LastHostError = suites.Keyframe3()->AEGP_DeleteKeyframe(stream.Handle(), after);
    return true;
}

void vipLi::ClearCells(qint32 image)
{
    if (!Layer)
        return;
    SetCellImage(0, image); // unchecked: a stream that cannot be read has no keys to delete either
    SuiteHandler suites(BasicSuite);
    const LayerStream stream(suites, PluginId, Layer, AEGP_LayerStream_TIME_REMAP);
    if (VN_HOST_FAILED(stream.Error()))
        return;
    A_long count = 0;
    if (VN_HOST_FAILED(suites.Keyframe3()->AEGP_GetStreamNumKFs(stream.Handle(), &count)))
        return;
    for (qint32 key = count - 1; key >= 0; --key) { // downward: the indexes left stay valid
        A_Time time{ 0, 1 };
        if (VN_HOST_FAILED(suites.Keyframe3()->AEGP_GetKeyframeTime(
                stream.Handle(), key, AEGP_LTimeMode_CompTime, &time)))
            continue;
        if (TimeToFrame(time) != 0)
            VN_HOST_FAILED(suites.Keyframe3()->AEGP_DeleteKeyframe(stream.Handle(), key));
    }
}

template <class Use>
bool vipLi::WithStream(qint32 streamNumber, Use use)
{
    if (!Layer)
        return false;
    SuiteHandler suites(BasicSuite);
    const LayerStream stream(suites, PluginId, Layer, streamNumber);
    return !VN_HOST_FAILED(stream.Error()) && use(suites, stream.Handle());
}

bool vipLi::AddKey(qint32 streamNumber, qint32 frame)
{
    return WithStream(streamNumber, [&](SuiteHandler &suites, AEGP_StreamRefH stream) {
        const A_Time time = FrameTime(frame);
        AEGP_KeyframeIndex inserted = -1;
        return !VN_HOST_FAILED(suites.Keyframe3()->AEGP_InsertKeyframe(
            stream, AEGP_LTimeMode_CompTime, &time, &inserted));
    });
}

bool vipLi::DeleteKey(qint32 streamNumber, qint32 frame)
{
    return WithStream(streamNumber, [&](SuiteHandler &suites, AEGP_StreamRefH stream) {
        qint32 at, before, after;
        FindKeys(suites, stream, frame, at, before, after);
        return at < 0 || !VN_HOST_FAILED(suites.Keyframe3()->AEGP_DeleteKeyframe(stream, at));
    });
}

bool vipLi::HasKey(qint32 streamNumber, qint32 frame)
{
    return WithStream(streamNumber, [&](SuiteHandler &suites, AEGP_StreamRefH stream) {
        qint32 at, before, after;
        FindKeys(suites, stream, frame, at, before, after);
        return at >= 0;
    });
}

bool vipLi::MarkStreamKeys(qint32 streamNumber, quint8 mark)
{
    return WithStream(streamNumber, [&](SuiteHandler &suites, AEGP_StreamRefH stream) {
        A_long count = 0;
        if (VN_HOST_FAILED(suites.Keyframe3()->AEGP_GetStreamNumKFs(stream, &count)))
            return false;
        for (qint32 key = 0; key < count; ++key) {
            A_Time time{ 0, 1 };
            if (VN_HOST_FAILED(suites.Keyframe3()->AEGP_GetKeyframeTime(
                    stream, key, AEGP_LTimeMode_CompTime, &time)))
                return false;
            const qint32 frame = TimeToFrame(time);
            if (frame >= 0 && frame < kKeyMarkFrames) // the sheet has no row for any other
                KeyMarks[frame] |= mark;
        }
        return true;
    });
}

bool vipLi::UpdateKeyMarks()
{
    std::memset(KeyMarks, 0, sizeof KeyMarks);
    for (const MarkedStream &stream : kMarkedStreams)
        MarkStreamKeys(stream.number, stream.mark); // unchecked: the other streams are marked still
    return true;
}

quint8 vipLi::GetKeyMarks(qint32 frame) const
{
    return frame >= 0 && frame < kKeyMarkFrames ? KeyMarks[frame] : quint8(0);
}
