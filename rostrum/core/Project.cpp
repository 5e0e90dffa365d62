#include "Project.h"

#include <algorithm>

namespace rostrum {
namespace {

StreamValue Centre(const QSize &size)
{
    return { size.width() / 2.0, size.height() / 2.0, 0, 0 };
}

} // namespace

Project::Project()
{
    Item root;
    root.id = kRootFolder;
    root.content = Folder();
    items.insert(kRootFolder, ItemPtr(new Item(root)));
}

void Project::KeepIdsOf(const Project &other)
{
    nextId = qMax(nextId, other.nextId);
}

const Item *Project::Find(ItemId item) const
{
    const auto found = items.constFind(item);
    return found == items.constEnd() ? nullptr : found->constData();
}

const Composition *Project::FindComposition(ItemId item) const
{
    const Item *found = Find(item);
    return found ? found->AsComposition() : nullptr;
}

const Layer *Project::FindLayer(ItemId composition, LayerId layer, int *hint) const
{
    const Composition *found = FindComposition(composition);
    const int index = found ? found->IndexOf(layer, hint ? *hint : 0) : -1;
    if (index < 0)
        return nullptr;
    if (hint)
        *hint = index;
    return found->layers[index].constData();
}

const Item *Project::SourceOf(const Layer &layer) const
{
    return layer.source ? Find(layer.source) : nullptr;
}

ItemId Project::NextInWalk(ItemId item) const
{
    const Item *at = Find(item);
    if (!at)
        return 0;
    const Folder *folder = at->AsFolder();
    if (folder && !folder->children.isEmpty())
        return folder->children.first();
    while (at->parent) {
        const Item *parent = Find(at->parent);
        const QVector<ItemId> &siblings = parent->AsFolder()->children;
        const int next = siblings.indexOf(at->id) + 1;
        if (next < siblings.size())
            return siblings[next];
        at = parent;
    }
    return 0;
}

Item *Project::Edit(ItemId item)
{
    const auto found = items.find(item);
    return found == items.end() ? nullptr : found->data();
}

Composition *Project::EditComposition(ItemId item)
{
    if (!FindComposition(item))
        return nullptr;
    return Edit(item)->AsComposition();
}

Layer *Project::EditLayer(ItemId composition, LayerId layer, int *hint)
{
    int index = hint ? *hint : 0;
    if (!FindLayer(composition, layer, &index))
        return nullptr;
    if (hint)
        *hint = index;
    return EditComposition(composition)->layers[index].data();
}

ItemId Project::AddItem(Item item)
{
    const Item *parent = Find(item.parent);
    if (!parent || !parent->AsFolder())
        return 0;
    item.id = nextId++;
    Edit(item.parent)->AsFolder()->children << item.id;
    items.insert(item.id, ItemPtr(new Item(item)));
    return item.id;
}

ItemId Project::AddFolder(const QByteArray &name, ItemId parent)
{
    Item item;
    item.parent = parent;
    item.name = name;
    item.content = Folder();
    return AddItem(item);
}

ItemId Project::AddComposition(
    const QByteArray &name, const Composition &composition, ItemId parent)
{
    Item item;
    item.parent = parent;
    item.name = name;
    item.content = composition;
    return AddItem(item);
}

ItemId Project::AddFootage(const QByteArray &name, const Footage &footage, ItemId parent)
{
    Item item;
    item.parent = parent;
    item.name = name;
    item.content = footage;
    return AddItem(item);
}

ItemId Project::AddSolid(const QByteArray &name, const Solid &solid, ItemId parent)
{
    Item item;
    item.parent = parent;
    item.name = name;
    item.content = solid;
    return AddItem(item);
}

bool Project::RemoveItem(ItemId item)
{
    const Item *found = Find(item);
    if (!found || item == kRootFolder)
        return false;
    if (const Folder *folder = found->AsFolder()) {
        const QVector<ItemId> children = folder->children;
        for (const ItemId child : children)
            RemoveItem(child);
    }
    const QList<ItemId> all = items.keys();
    for (const ItemId composition : all) {
        const Composition *content = FindComposition(composition);
        if (!content)
            continue;
        const QVector<LayerPtr> layers = content->layers;
        for (const LayerPtr &layer : layers) {
            if (layer->source == item)
                RemoveLayer(composition, layer->id);
        }
    }
    Edit(Find(item)->parent)->AsFolder()->children.removeOne(item);
    items.remove(item);
    return true;
}

bool Project::Shows(ItemId shower, ItemId shown) const
{
    if (shower == shown)
        return true;
    const Composition *composition = FindComposition(shower);
    return composition
        && std::any_of(composition->layers.cbegin(), composition->layers.cend(),
            [&](const LayerPtr &layer) { return layer->source && Shows(layer->source, shown); });
}

bool Project::CanAddLayer(ItemId source, ItemId composition) const
{
    const Item *item = Find(source);
    return item && !item->AsFolder() && FindComposition(composition) && !Shows(source, composition);
}

LayerId Project::AddLayer(Layer layer, ItemId composition)
{
    Composition *target = EditComposition(composition);
    if (!target)
        return 0;
    layer.id = nextId++;
    layer.duration = target->duration;
    layer.position.SetConstant(Centre(target->size));
    target->layers.prepend(LayerPtr(new Layer(layer)));
    return layer.id;
}

LayerId Project::AddLayer(ItemId source, ItemId composition)
{
    if (!CanAddLayer(source, composition))
        return 0;
    Layer layer;
    layer.source = source;
    layer.anchorPoint.SetConstant(Centre(Find(source)->Dimensions()));
    return AddLayer(layer, composition);
}

LayerId Project::AddLayerWithoutSource(LayerKind kind, const QByteArray &name, ItemId composition)
{
    Layer layer;
    layer.kind = kind;
    layer.name = name;
    return AddLayer(layer, composition);
}

bool Project::RemoveLayer(ItemId composition, LayerId layer)
{
    if (!FindLayer(composition, layer))
        return false;
    Composition *target = EditComposition(composition);
    target->layers.remove(target->IndexOf(layer));
    for (int i = 0; i < target->layers.size(); ++i) {
        if (target->layers.at(i)->parent == layer)
            target->layers[i]->parent = 0;
    }
    return true;
}

bool Project::MoveLayer(ItemId composition, LayerId layer, int index)
{
    const Composition *found = FindComposition(composition);
    const int from = found ? found->IndexOf(layer) : -1;
    if (from < 0 || index < -1 || index >= found->layers.size())
        return false;
    const int to = index < 0 ? found->layers.size() - 1 : index;
    if (from != to)
        EditComposition(composition)->layers.move(from, to);
    return true;
}

bool Project::SetParent(ItemId composition, LayerId layer, LayerId parent)
{
    for (LayerId above = parent; above;) {
        const Layer *ancestor = FindLayer(composition, above);
        if (!ancestor || above == layer)
            return false;
        above = ancestor->parent;
    }
    Layer *edited = EditLayer(composition, layer);
    if (!edited)
        return false;
    edited->parent = parent;
    return true;
}

bool Project::HasStream(const Layer &layer, qint32 streamNumber) const
{
    if (streamNumber != kTimeRemap)
        return layer.FindStream(streamNumber) != nullptr;
    const Item *source = SourceOf(layer);
    return source && source->CanRemapTime();
}

bool Project::StreamValueAt(
    const Layer &layer, qint32 streamNumber, const Time &compTime, StreamValue *value) const
{
    if (!HasStream(layer, streamNumber))
        return false;
    if (streamNumber == kTimeRemap) {
        *value = { layer.SourceSeconds(compTime), 0, 0, 0 };
        return true;
    }
    *value = layer.FindStream(streamNumber)->ValueAt(layer.ToLayerTime(compTime));
    return true;
}

EffectId Project::ApplyEffect(ItemId composition, LayerId layer, EffectKey key)
{
    const EffectInfo *info = rostrum::FindEffect(key);
    Layer *edited = info ? EditLayer(composition, layer) : nullptr;
    if (!edited)
        return 0;
    LayerEffect effect;
    effect.id = nextId++;
    effect.key = key;
    for (const EffectParam &param : info->params)
        effect.params << Stream(StreamValue{ param.start, 0, 0, 0 });
    edited->effects << effect;
    return effect.id;
}

bool operator==(const Project &a, const Project &b)
{
    // The next id is no part of what a person sees: a group that adds and removes is no change.
    const auto same = [](const ItemPtr &left, const ItemPtr &right) {
        return left.constData() == right.constData() || *left == *right;
    };
    if (a.items.isSharedWith(b.items))
        return true;
    return a.items.size() == b.items.size() && a.items.keys() == b.items.keys()
        && std::equal(a.items.cbegin(), a.items.cend(), b.items.cbegin(), same);
}

} // namespace rostrum
