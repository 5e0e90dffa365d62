// What several suites share: names into fixed buffers, times, and streams behind their handles.
#pragma once

#include "suites/HostCall.h"

namespace rostrum {

/// Copies a name into a buffer of `size` bytes, cut before the character that does not fit whole.
/// That a long name is cut at all, and so, was never seen in the real host.
void CopyName(const QByteArray &name, A_char *buffer, std::size_t size);

/// Where an argument must not be null: the complaint and the error for it.
inline A_Err NullArgument(Host &host)
{
    return host.Misuse("null argument");
}

/// @return an error for a null time, a scale that makes no time, an unknown time mode
A_Err CheckTime(Host &host, const A_Time *time, AEGP_LTimeMode timeMode = AEGP_LTimeMode_CompTime);

inline Time FromHostTime(const A_Time &time)
{
    return { time.value, time.scale };
}
inline A_Time ToHostTime(const Time &time)
{
    return { time.value, time.scale };
}

/// A time of either mode in composition time. The time must have passed CheckTime.
inline Time InCompTime(const Layer &layer, const A_Time &time, AEGP_LTimeMode timeMode)
{
    return timeMode == AEGP_LTimeMode_CompTime ? FromHostTime(time)
                                               : layer.ToCompTime(FromHostTime(time));
}

/// A stream as a call finds it.
struct StreamRef
{
    LayerRef layer;
    StreamPlace place;
    const Stream *stream = nullptr; // null for an effect's input layer

    explicit operator bool() const { return bool(layer); }
    bool HasValues() const { return stream != nullptr; }
    bool IsTimeRemap() const { return place.number == kTimeRemap; }
};

/// False when the handle is bad, or its layer, effect or source is gone.
StreamRef FindStream(Host &host, AEGP_StreamRefH handle);
/// The stream for writing. @param what names the undo entry where no group is open
Stream &EditStream(Host &host, const StreamRef &ref, const char *what);

/// Without keys, a layer's time remap shows the layer's own time. What the real host does there was
/// never seen; the strict mode refuses to read it and to insert a key.
/// @return A_Err_PARAMETER when it is refused
A_Err CheckTimeRemap(Host &host, const StreamRef &ref);

/// @param value takes up to four components, those that there are not are 0
A_Err ReadStream(Host &host, const StreamRef &ref, const Time &compTime, StreamValue *value);
/// Hands out a value that must be given back.
void GiveValue(Host &host, AEGP_StreamRefH handle, const StreamValue &value, AEGP_StreamValue *out);

/// @return AEGP_StreamType_NO_DATA for a number that is not offered
AEGP_StreamType TypeOfLayerStream(qint32 number);

/// A value that came from a plug-in. Only the components that the stream has are looked at: the
/// caller need not have filled the others.
/// @return false when one of them is no finite number
bool TakeValue(const StreamRef &ref, const void *hostValue, StreamValue *value);

} // namespace rostrum
