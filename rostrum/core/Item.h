// The items of a project: folders, compositions, footage, solids.
#pragma once

#include "core/Layer.h"

#include <QSize>
#include <QStringList>

#include <variant>

namespace rostrum {

/// Colours of solids and backgrounds, 0 to 1.
struct Color
{
    double red = 0;
    double green = 0;
    double blue = 0;
};

struct Folder
{
    QVector<ItemId> children; // in project order
};

struct Composition
{
    QSize size{ 1920, 1080 }; // pixels
    Rate rate;
    Time duration;
    Color background;
    QVector<LayerPtr> layers; // 0 is the topmost

    /// The layer's index, -1 when it is not here. @param hint an index to look at first
    int IndexOf(LayerId layer, int hint = 0) const;
};

/// Drawings on disk. A series has an image for each of its files, in the order of their numbers;
/// the position of an image in the list is its number in a sheet, so that a gap closes up.
struct Footage
{
    QString folder; // absolute, "/" between its parts
    QStringList files; // names in the folder; a still has one
    QVector<qint32> numbers; // the files' own numbers, rising; empty for a file without one
    bool isSeries = false; // true for a single numbered file imported as a series, too
    QSize size; // pixels of the first image
    Rate rate; // images a second, of a series

    /// Images at the footage's rate; a still has the duration 0.
    Time Duration() const;
    /// The path of an image. @param position 0 to the number of files - 1
    QString PathOf(int position) const;
};

struct Solid
{
    QSize size;
    Color color;
};

struct Item : QSharedData
{
    ItemId id = 0;
    ItemId parent = 0; // a folder; 0 for the root folder alone
    QByteArray name; // UTF-8
    qint8 label = 0; // 0 none, 1 to 16
    std::variant<Folder, Composition, Footage, Solid> content;

    const Composition *AsComposition() const { return std::get_if<Composition>(&content); }
    Composition *AsComposition() { return std::get_if<Composition>(&content); }
    const Footage *AsFootage() const { return std::get_if<Footage>(&content); }
    const Folder *AsFolder() const { return std::get_if<Folder>(&content); }
    Folder *AsFolder() { return std::get_if<Folder>(&content); }
    const Solid *AsSolid() const { return std::get_if<Solid>(&content); }

    /// Width and height in pixels; a folder has 0 by 0.
    QSize Dimensions() const;
    /// In the item's own time: a composition's, a series' images; 0 for a still, a solid, a folder.
    Time Duration() const;
    /// A layer of this item can be remapped in time: a series or a composition.
    bool CanRemapTime() const;
};

bool operator==(const Folder &a, const Folder &b);
bool operator==(const Composition &a, const Composition &b);
bool operator==(const Footage &a, const Footage &b);
bool operator==(const Solid &a, const Solid &b);
bool operator==(const Item &a, const Item &b);

using ItemPtr = QSharedDataPointer<Item>;

} // namespace rostrum
