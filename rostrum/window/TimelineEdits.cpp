#include "TimelineEdits.h"

#include <QHash>

#include <tuple>

namespace rostrum {
namespace {

/// The stream for writing. @return null when there is no such stream, or it may have no keys
Stream *EditStream(Project &project, ItemId composition, LayerId layer, const StreamId &id)
{
    const Layer *found = project.FindLayer(composition, layer);
    const bool isThere = found && FindStream(*found, id)
        && (id.effect != 0 || project.HasStream(*found, id.number));
    return isThere ? FindStream(*project.EditLayer(composition, layer), id) : nullptr;
}

/// Puts a key in, whatever stood at its time.
void PutKey(Stream &stream, const Key &key)
{
    const int index = stream.InsertKey(key.time, key.value);
    stream.SetKeyValue(index, key.value);
    stream.SetKeyInterpolation(index, key.in, key.out);
}

/// How a new key comes in: as the one before it goes out.
Interpolation KindOfNewKey(const Stream &stream, const StreamId &id, const Time &layerTime)
{
    const int before = stream.KeysBefore(layerTime);
    if (before > 0)
        return stream.KeyAt(before - 1).out;
    if (stream.HasKeys())
        return stream.KeyAt(0).in;
    return id.IsTimeRemap() ? Interpolation::Hold : Interpolation::Linear;
}

void RemoveKey(Stream &stream, const StreamId &id, int index)
{
    if (stream.KeyCount() == 1 && !id.IsTimeRemap())
        stream.SetConstant(stream.KeyAt(0).value);
    stream.DeleteKey(index);
}

/// Calls `change(stream, index)` for each key that is still there, stream by stream.
template <typename Change>
void ForEachKey(Project &project, ItemId composition, const KeyIds &keys, const Change &change)
{
    Stream *stream = nullptr;
    const KeyId *last = nullptr;
    for (const KeyId &key : keys) {
        if (!last || last->layer != key.layer || !(last->stream == key.stream))
            stream = EditStream(project, composition, key.layer, key.stream);
        last = &key;
        const int index = stream ? stream->FindKey(key.time) : -1;
        if (index >= 0)
            change(*stream, key, index);
    }
}

Time FrameLength(const Project &project, ItemId composition)
{
    return project.FindComposition(composition)->rate.FrameTime(1);
}

} // namespace

bool operator<(const KeyId &a, const KeyId &b)
{
    return std::tie(a.layer, a.stream, a.time) < std::tie(b.layer, b.stream, b.time);
}

int FindKey(const Project &project, ItemId composition, const KeyId &key)
{
    const Layer *layer = project.FindLayer(composition, key.layer);
    const Stream *stream = layer ? FindStream(*layer, key.stream) : nullptr;
    return stream ? stream->FindKey(key.time) : -1;
}

int KeyInFrame(const Stream &stream, const Layer &layer, const Rate &rate, int frame)
{
    const int index = stream.KeysBefore(layer.ToLayerTime(rate.FrameTime(frame)));
    return index < stream.KeyCount()
            && layer.ToCompTime(stream.KeyAt(index).time) < rate.FrameTime(frame + 1)
        ? index
        : -1;
}

bool SetStreamValue(Project &project, ItemId composition, LayerId layer, const StreamId &id,
    const Time &compTime, const StreamValue &value)
{
    Stream *stream = EditStream(project, composition, layer, id);
    if (!stream)
        return false;
    if (!stream->HasKeys() && !id.IsTimeRemap()) {
        stream->SetConstant(value);
        return true;
    }
    const Time time = project.FindLayer(composition, layer)->ToLayerTime(compTime);
    const int there = stream->FindKey(time);
    if (there >= 0) {
        stream->SetKeyValue(there, value);
        return true;
    }
    const Interpolation kind = KindOfNewKey(*stream, id, time);
    PutKey(*stream, { time, value, kind, kind });
    return true;
}

bool AddKey(
    Project &project, ItemId composition, LayerId layer, const StreamId &id, const Time &compTime)
{
    const Layer *found = project.FindLayer(composition, layer);
    const Stream *old = found ? FindStream(*found, id) : nullptr;
    if (!old || old->FindKey(found->ToLayerTime(compTime)) >= 0)
        return false;
    const Time time = found->ToLayerTime(compTime);
    const StreamValue value = id.IsTimeRemap()
        ? StreamValue{ found->SourceSeconds(compTime), 0, 0, 0 }
        : old->ValueAt(time);
    Stream *stream = EditStream(project, composition, layer, id);
    if (!stream)
        return false;
    const Interpolation kind = KindOfNewKey(*stream, id, time);
    PutKey(*stream, { time, value, kind, kind });
    return true;
}

void RemoveKeys(Project &project, ItemId composition, const KeyIds &keys)
{
    ForEachKey(project, composition, keys,
        [](Stream &stream, const KeyId &key, int index) { RemoveKey(stream, key.stream, index); });
}

KeyIds MoveKeys(Project &project, ItemId composition, const KeyIds &keys, int frames)
{
    KeyIds moved;
    const Composition *found = project.FindComposition(composition);
    if (!found)
        return moved;
    const Time way = found->rate.FrameTime(frames);
    // All are taken out before any is put back: none may be taken for one that lay in the way.
    QVector<QPair<KeyId, Key>> taken;
    ForEachKey(project, composition, keys, [&](Stream &stream, const KeyId &id, int index) {
        taken << qMakePair(id, stream.KeyAt(index));
        stream.DeleteKey(index);
    });
    for (auto &[id, key] : taken) {
        key.time = key.time + way;
        id.time = key.time;
        PutKey(*EditStream(project, composition, id.layer, id.stream), key);
        moved.insert(id);
    }
    return moved;
}

void SetInterpolation(
    Project &project, ItemId composition, const KeyIds &keys, Interpolation interpolation)
{
    ForEachKey(project, composition, keys, [&](Stream &stream, const KeyId &, int index) {
        stream.SetKeyInterpolation(index, interpolation, interpolation);
    });
}

void SetKeyValue(Project &project, ItemId composition, const KeyId &key, const StreamValue &value)
{
    ForEachKey(project, composition, { key },
        [&](Stream &stream, const KeyId &, int index) { stream.SetKeyValue(index, value); });
}

void MoveLayers(Project &project, ItemId composition, const QVector<LayerId> &layers, int frames)
{
    if (frames == 0 || !project.FindComposition(composition))
        return;
    const Time way = project.FindComposition(composition)->rate.FrameTime(frames);
    for (const LayerId id : layers) {
        if (Layer *layer = project.EditLayer(composition, id)) {
            layer->inPoint = layer->inPoint + way;
            layer->offset = layer->offset + way;
        }
    }
}

void TrimIn(Project &project, ItemId composition, const QVector<LayerId> &layers, int frames)
{
    if (frames == 0 || !project.FindComposition(composition))
        return;
    const Rate rate = project.FindComposition(composition)->rate;
    for (const LayerId id : layers) {
        const Layer *old = project.FindLayer(composition, id);
        if (!old)
            continue;
        const int most = qMax(0, rate.FrameAt(old->duration) - 1);
        const Time way = rate.FrameTime(qMin(frames, most));
        if (way.value == 0)
            continue;
        Layer *layer = project.EditLayer(composition, id);
        layer->inPoint = layer->inPoint + way;
        layer->duration = layer->duration - way;
    }
}

void TrimOut(Project &project, ItemId composition, const QVector<LayerId> &layers, int frames)
{
    if (frames == 0 || !project.FindComposition(composition))
        return;
    const Time frame = FrameLength(project, composition);
    const Time way = project.FindComposition(composition)->rate.FrameTime(frames);
    for (const LayerId id : layers) {
        const Layer *old = project.FindLayer(composition, id);
        if (!old || (frames < 0 && old->duration <= frame))
            continue;
        const Time duration = old->duration + way;
        project.EditLayer(composition, id)->duration = duration < frame ? frame : duration;
    }
}

void Reorder(Project &project, ItemId composition, const QVector<LayerId> &layers, int gap)
{
    const Composition *found = project.FindComposition(composition);
    if (!found)
        return;
    QVector<LayerPtr> before;
    QVector<LayerPtr> moved;
    QVector<LayerPtr> after;
    for (int i = 0; i < found->layers.size(); ++i) {
        const LayerPtr &layer = found->layers[i];
        if (layers.contains(layer->id))
            moved << layer;
        else if (i < gap)
            before << layer;
        else
            after << layer;
    }
    const QVector<LayerPtr> order = before + moved + after;
    const auto isSame = [](const LayerPtr &a, const LayerPtr &b) { return a->id == b->id; };
    if (!std::equal(order.cbegin(), order.cend(), found->layers.cbegin(), isSame))
        project.EditComposition(composition)->layers = order;
}

QVector<LayerId> PossibleParents(const Project &project, ItemId composition, LayerId layer)
{
    QVector<LayerId> possible;
    const Composition *found = project.FindComposition(composition);
    if (!found)
        return possible;
    QHash<LayerId, LayerId> parents;
    for (const LayerPtr &each : found->layers)
        parents.insert(each->id, each->parent);
    for (const LayerPtr &each : found->layers) {
        LayerId above = each->id;
        for (int left = found->layers.size(); above && above != layer && left > 0; --left)
            above = parents.value(above);
        if (above != layer)
            possible << each->id;
    }
    return possible;
}

} // namespace rostrum
