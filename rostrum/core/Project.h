// The project: a value. A copy costs next to nothing, since copies share whatever is equal; so a
// history entry is simply the project as it was before a change.
//
// Operations here take ids and change the value they are called on. One that is given an id which
// is not there answers a null pointer, 0 or false, and changes nothing.
#pragma once

#include "core/Item.h"

#include <QMap>
#include <QSet>

namespace rostrum {

class Project
{
public:
    /// An empty project: the root folder alone.
    Project();

    ItemId RootFolder() const { return kRootFolder; }
    /// @return null when no item has this id
    const Item *Find(ItemId item) const;
    const Composition *FindComposition(ItemId item) const;
    /// @param hint an index to look at first; takes the index that was found
    const Layer *FindLayer(ItemId composition, LayerId layer, int *hint = nullptr) const;
    /// The item behind a layer, null for a layer without source.
    const Item *SourceOf(const Layer &layer) const;
    /// The item after this one in the walk, 0 after the last: the root folder first, each folder
    /// before what it holds, siblings in project order.
    ItemId NextInWalk(ItemId item) const;
    /// The number of items, the root folder included.
    int ItemCount() const { return items.size(); }

    /// Access for writing; what is shared with other copies is copied first. Ids, and which folder
    /// holds an item, are the operations' below to change.
    Item *Edit(ItemId item);
    Composition *EditComposition(ItemId item);
    Layer *EditLayer(ItemId composition, LayerId layer, int *hint = nullptr);

    ItemId AddFolder(const QByteArray &name, ItemId parent = kRootFolder);
    /// Layers and effects that the composition brings along get ids of their own.
    ItemId AddComposition(
        const QByteArray &name, const Composition &composition, ItemId parent = kRootFolder);
    ItemId AddFootage(const QByteArray &name, const Footage &footage, ItemId parent = kRootFolder);
    ItemId AddSolid(const QByteArray &name, const Solid &solid, ItemId parent = kRootFolder);
    /// Removes the item, the layers that show it, and with a folder all that it holds.
    bool RemoveItem(ItemId item);
    /// Puts an item last into another folder. @return false for a folder that the item holds itself,
    /// at any depth, and for the root folder
    bool MoveItem(ItemId item, ItemId folder);

    /// A layer of an item may not make a composition show itself, at any depth.
    bool CanAddLayer(ItemId source, ItemId composition) const;
    /// The new layer lies on top, starts at 0 and lasts as long as the composition, centred.
    LayerId AddLayer(ItemId source, ItemId composition);
    /// A camera, a light or a text. @param kind anything but Source
    LayerId AddLayerWithoutSource(LayerKind kind, const QByteArray &name, ItemId composition);
    /// A copy of a layer of any composition, with its effects, on top of this one. It keeps its
    /// parent where that is in this composition.
    /// @return 0 where a layer of its source may not be added
    LayerId AddCopy(const Layer &layer, ItemId composition);
    bool RemoveLayer(ItemId composition, LayerId layer);
    /// @param index the layer's index after the move, 0 to count - 1; -1 for the end
    bool MoveLayer(ItemId composition, LayerId layer, int index);
    /// A parent of 0 frees the layer. A layer may not become its own parent, at any distance.
    bool SetParent(ItemId composition, LayerId layer, LayerId parent);
    /// The stream's value, as the layer shows it. @return false when the layer has no such stream
    bool StreamValueAt(
        const Layer &layer, qint32 streamNumber, const Time &compTime, StreamValue *value) const;
    /// False for a number that is not offered, and for the time remap of a layer whose source has
    /// no time of its own.
    bool HasStream(const Layer &layer, qint32 streamNumber) const;
    EffectId ApplyEffect(ItemId composition, LayerId layer, EffectKey key);

    /// A project as it was saved, ids included. @param items all of them, the root folder among
    /// them; who reads them in from outside sees to it that they hang together
    /// @param nextId above all ids of items, layers and effects
    static Project FromItems(const QVector<Item> &items, qint32 nextId);
    /// The id that the next new thing gets.
    qint32 NextId() const { return nextId; }

    /// Gives out no id that the other project has given out already. An id thus stays one thing's
    /// for good, also when the project goes back to a state from before that thing was made.
    void KeepIdsOf(const Project &other);

    friend bool operator==(const Project &a, const Project &b);

private:
    static constexpr ItemId kRootFolder = 1;

    ItemId AddItem(Item item);
    LayerId AddLayer(Layer layer, ItemId composition);
    void GiveIds(Composition &composition);
    QSet<ItemId> WithContents(ItemId item) const;
    bool Shows(ItemId shower, ItemId shown) const;

    QMap<ItemId, ItemPtr> items;
    qint32 nextId = kRootFolder + 1; // of items, layers and effects alike
};

inline bool operator!=(const Project &a, const Project &b)
{
    return !(a == b);
}

} // namespace rostrum
