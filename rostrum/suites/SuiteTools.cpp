#include "SuiteTools.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace rostrum {

void CopyName(const QByteArray &name, A_char *buffer, std::size_t size)
{
    std::size_t length = static_cast<std::size_t>(name.size());
    if (length >= size) {
        length = size - 1;
        const auto isInside = [&](std::size_t at) {
            return (static_cast<unsigned char>(name.at(static_cast<int>(at))) & 0xC0) == 0x80;
        };
        // A character has at most three bytes behind its first; bytes that are no UTF-8 stay.
        std::size_t start = length;
        while (start > 0 && length - start < 3 && isInside(start))
            --start;
        if (!isInside(start))
            length = start;
    }
    std::memcpy(buffer, name.constData(), length);
    buffer[length] = '\0';
}

A_Err CheckTime(Host &host, const A_Time *time, AEGP_LTimeMode timeMode)
{
    if (!time)
        return NullArgument(host);
    if (time->scale == 0 || time->scale > std::numeric_limits<qint32>::max())
        return host.Misuse("a time with the scale " + QByteArray::number(time->scale));
    if (timeMode != AEGP_LTimeMode_CompTime && timeMode != AEGP_LTimeMode_LayerTime)
        return host.Misuse("time mode " + QByteArray::number(timeMode));
    return A_Err_NONE;
}

StreamRef FindStream(Host &host, AEGP_StreamRefH handle)
{
    const HandleParts parts = TakeApart(handle);
    const StreamPlace *place
        = parts.kind == HandleKind::Stream ? host.streams.Find(parts.payload) : nullptr;
    if (!place)
        return {};
    StreamRef ref;
    ref.place = *place;
    const LayerRef layer = host.FindLayer(place->layer);
    if (!layer)
        return {};
    if (place->effect) {
        const LayerEffect *effect = layer->FindEffect(place->effect);
        if (!effect)
            return {};
        ref.stream = place->param > 0 ? &effect->params.at(place->param - 1) : nullptr;
    } else {
        if (!host.GetProject().HasStream(*layer.layer, place->number))
            return {};
        ref.stream = layer->FindStream(place->number);
    }
    ref.layer = layer;
    return ref;
}

Stream &EditStream(Host &host, const StreamRef &ref, const char *what)
{
    LayerPlace &place = *ref.layer.place;
    Layer *layer = host.Edit(what).EditLayer(place.composition, place.layer, &place.index);
    if (ref.place.effect)
        return layer->FindEffect(ref.place.effect)->params[ref.place.param - 1];
    return *layer->FindStream(ref.place.number);
}

A_Err CheckTimeRemap(Host &host, const StreamRef &ref)
{
    const bool refused = host.strictTimeRemap && ref.IsTimeRemap() && !ref.stream->HasKeys();
    return refused ? A_Err_PARAMETER : A_Err_NONE;
}

A_Err ReadStream(Host &host, const StreamRef &ref, const Time &compTime, StreamValue *value)
{
    if (const A_Err error = CheckTimeRemap(host, ref))
        return error;
    if (ref.IsTimeRemap())
        *value = { ref.layer->SourceSeconds(compTime, &ref.layer.place->remapKey), 0, 0, 0 };
    else
        *value = ref.stream->ValueAt(ref.layer->ToLayerTime(compTime));
    return A_Err_NONE;
}

void GiveValue(Host &host, AEGP_StreamRefH handle, const StreamValue &value, AEGP_StreamValue *out)
{
    host.streamValues << handle;
    out->streamH = handle;
    out->val.four_d = { value[0], value[1], value[2], value[3] };
}

AEGP_StreamType TypeOfLayerStream(qint32 number)
{
    switch (number) {
    case kAnchorPoint:
    case kPosition:
        return AEGP_StreamType_ThreeD_SPATIAL; // on a layer that is not 3D, too
    case kScale:
        return AEGP_StreamType_ThreeD;
    case kRotation:
    case kOpacity:
    case kTimeRemap:
        return AEGP_StreamType_OneD;
    default:
        return AEGP_StreamType_NO_DATA;
    }
}

bool TakeValue(const StreamRef &ref, const void *hostValue, StreamValue *value)
{
    const bool isThreeD
        = !ref.place.effect && TypeOfLayerStream(ref.place.number) != AEGP_StreamType_OneD;
    const std::size_t count = isThreeD ? 3 : 1;
    *value = {};
    std::memcpy(value->data(), hostValue, count * sizeof(double));
    return std::all_of(
        value->begin(), value->end(), [](double component) { return std::isfinite(component); });
}

} // namespace rostrum
