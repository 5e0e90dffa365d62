#include "Layer.h"

namespace rostrum {

bool operator==(const LayerEffect &a, const LayerEffect &b)
{
    return a.id == b.id && a.key == b.key && a.params == b.params;
}

const Stream *Layer::FindStream(qint32 number) const
{
    switch (number) {
    case kAnchorPoint:
        return &anchorPoint;
    case kPosition:
        return &position;
    case kScale:
        return &scale;
    case kRotation:
        return &rotation;
    case kOpacity:
        return &opacity;
    case kTimeRemap:
        return &timeRemap;
    default:
        return nullptr;
    }
}

Stream *Layer::FindStream(qint32 number)
{
    return const_cast<Stream *>(static_cast<const Layer *>(this)->FindStream(number));
}

const LayerEffect *Layer::FindEffect(EffectId effect) const
{
    for (const LayerEffect &candidate : effects) {
        if (candidate.id == effect)
            return &candidate;
    }
    return nullptr;
}

LayerEffect *Layer::FindEffect(EffectId effect)
{
    for (LayerEffect &candidate : effects) {
        if (candidate.id == effect)
            return &candidate;
    }
    return nullptr;
}

double Layer::SourceSeconds(const Time &compTime, int *keyHint) const
{
    const Time layerTime = ToLayerTime(compTime);
    return timeRemap.HasKeys() ? timeRemap.ValueAt(layerTime, keyHint)[0] : layerTime.Seconds();
}

bool operator==(const Layer &a, const Layer &b)
{
    return a.id == b.id && a.kind == b.kind && a.source == b.source && a.name == b.name
        && a.parent == b.parent && a.label == b.label && a.inPoint == b.inPoint
        && a.duration == b.duration && a.offset == b.offset && a.anchorPoint == b.anchorPoint
        && a.position == b.position && a.scale == b.scale && a.rotation == b.rotation
        && a.opacity == b.opacity && a.timeRemap == b.timeRemap && a.effects == b.effects;
}

} // namespace rostrum
