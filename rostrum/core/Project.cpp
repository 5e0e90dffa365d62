#include "Project.h"

#include <QHash>

#include <algorithm>

namespace rostrum {
namespace {

StreamValue Centre(const QSize &size)
{
    return { size.width() / 2.0, size.height() / 2.0, 0, 0 };
}

/// Takes out the layers that a test picks, in one pass, and frees their children.
template <typename Test>
void RemoveLayers(Composition &composition, const Test &picks)
{
    QVector<LayerPtr> kept;
    QSet<LayerId> gone;
    for (const LayerPtr &layer : qAsConst(composition.layers)) {
        if (picks(*layer))
            gone << layer->id;
        else
            kept << layer;
    }
    for (LayerPtr &layer : kept) {
        if (gone.contains(layer.constData()->parent))
            layer->parent = 0;
    }
    composition.layers = kept;
}

} // namespace

Project::Project()
{
    Item root;
    root.id = kRootFolder;
    root.content = Folder();
    items.insert(kRootFolder, ItemPtr(new Item(root)));
}

Project Project::FromItems(const QVector<Item> &items, qint32 nextId)
{
    Project project;
    for (const Item &item : items)
        project.items.insert(item.id, ItemPtr(new Item(item)));
    project.nextId = nextId;
    return project;
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
    return items.contains(item) ? items[item].data() : nullptr;
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
    Composition content = composition;
    GiveIds(content);
    item.content = content;
    return AddItem(item);
}

void Project::GiveIds(Composition &composition)
{
    QHash<LayerId, LayerId> given;
    for (LayerPtr &layer : composition.layers) {
        given.insert(layer.constData()->id, nextId);
        layer->id = nextId++;
        for (LayerEffect &effect : layer->effects)
            effect.id = nextId++;
    }
    for (LayerPtr &layer : composition.layers) {
        const LayerId parent = layer.constData()->parent;
        layer->parent = parent ? given.value(parent) : 0;
    }
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
    const QSet<ItemId> gone = WithContents(item);
    Edit(found->parent)->AsFolder()->children.removeOne(item);
    for (const ItemId each : gone)
        items.remove(each);

    const auto showsGone = [&gone](const Layer &layer) { return gone.contains(layer.source); };
    const QList<ItemId> left = items.keys();
    for (const ItemId each : left) {
        const Composition *composition = FindComposition(each);
        const auto isHit = [&](const LayerPtr &layer) { return showsGone(*layer); };
        if (composition
            && std::any_of(composition->layers.cbegin(), composition->layers.cend(), isHit))
            RemoveLayers(*EditComposition(each), showsGone);
    }
    return true;
}

bool Project::MoveItem(ItemId item, ItemId folder)
{
    const Item *moved = Find(item);
    const Item *target = Find(folder);
    if (!moved || item == kRootFolder || !target || !target->AsFolder()
        || WithContents(item).contains(folder))
        return false;
    Edit(moved->parent)->AsFolder()->children.removeOne(item);
    Edit(folder)->AsFolder()->children << item;
    Edit(item)->parent = folder;
    return true;
}

/// The item and, of a folder, all that it holds.
QSet<ItemId> Project::WithContents(ItemId item) const
{
    QVector<ItemId> found{ item };
    for (int i = 0; i < found.size(); ++i) {
        if (const Folder *folder = Find(found.at(i))->AsFolder())
            found << folder->children;
    }
    return { found.cbegin(), found.cend() };
}

/// Looks into each composition once, however often and however deep it is shown.
bool Project::Shows(ItemId shower, ItemId shown) const
{
    QVector<ItemId> waiting{ shower };
    QSet<ItemId> met{ shower, 0 }; // 0: a layer without source
    while (!waiting.isEmpty()) {
        const ItemId item = waiting.takeLast();
        if (item == shown)
            return true;
        const Composition *composition = FindComposition(item);
        const QVector<LayerPtr> layers = composition ? composition->layers : QVector<LayerPtr>();
        for (const LayerPtr &layer : layers) {
            if (met.contains(layer->source))
                continue;
            met << layer->source;
            waiting << layer->source;
        }
    }
    return false;
}

bool Project::CanAddLayer(ItemId source, ItemId composition) const
{
    const Item *item = Find(source);
    return item && !item->AsFolder() && FindComposition(composition) && !Shows(source, composition);
}

LayerId Project::AddCopy(const Layer &layer, ItemId composition)
{
    const bool hasSource = layer.kind == LayerKind::Source;
    if (!FindComposition(composition) || (hasSource && !CanAddLayer(layer.source, composition)))
        return 0;
    Layer copy = layer;
    copy.id = nextId++;
    copy.parent = FindLayer(composition, layer.parent) ? layer.parent : 0;
    for (LayerEffect &effect : copy.effects)
        effect.id = nextId++;
    EditComposition(composition)->layers.prepend(LayerPtr(new Layer(copy)));
    return copy.id;
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
    if (kind == LayerKind::Source)
        return 0;
    Layer layer;
    layer.kind = kind;
    layer.name = name;
    return AddLayer(layer, composition);
}

bool Project::RemoveLayer(ItemId composition, LayerId layer)
{
    if (!FindLayer(composition, layer))
        return false;
    RemoveLayers(
        *EditComposition(composition), [&](const Layer &each) { return each.id == layer; });
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
    return a.items.size() == b.items.size() // an item holds its key, its id
        && std::equal(a.items.cbegin(), a.items.cend(), b.items.cbegin(), same);
}

} // namespace rostrum
