#include "Item.h"

#include <algorithm>

namespace rostrum {
namespace {

bool operator==(const Color &a, const Color &b)
{
    return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

bool SameLayer(const LayerPtr &a, const LayerPtr &b)
{
    return a.constData() == b.constData() || *a == *b; // shared layers are equal at once
}

} // namespace

int Composition::IndexOf(LayerId layer, int hint) const
{
    if (hint >= 0 && hint < layers.size() && layers[hint]->id == layer)
        return hint;
    for (int i = 0; i < layers.size(); ++i) {
        if (layers[i]->id == layer)
            return i;
    }
    return -1;
}

Time Footage::Duration() const
{
    return isSeries ? rate.FrameTime(files.size()) : Time();
}

QString Footage::PathOf(int position) const
{
    const bool isRoot = folder.endsWith(QLatin1Char('/')); // "/" alone ends in one
    return folder + (isRoot ? QString() : QStringLiteral("/")) + files.at(position);
}

QSize Item::Dimensions() const
{
    if (const Composition *composition = AsComposition())
        return composition->size;
    if (const Footage *footage = AsFootage())
        return footage->size;
    if (const Solid *solid = AsSolid())
        return solid->size;
    return { 0, 0 };
}

Time Item::Duration() const
{
    if (const Composition *composition = AsComposition())
        return composition->duration;
    if (const Footage *footage = AsFootage())
        return footage->Duration();
    return {};
}

bool Item::CanRemapTime() const
{
    const Footage *footage = AsFootage();
    return AsComposition() || (footage && footage->isSeries);
}

bool operator==(const Item &a, const Item &b)
{
    return a.id == b.id && a.parent == b.parent && a.name == b.name && a.label == b.label
        && a.content == b.content;
}

bool operator==(const Folder &a, const Folder &b)
{
    return a.children == b.children;
}

bool operator==(const Composition &a, const Composition &b)
{
    if (a.size != b.size || a.rate != b.rate || a.duration != b.duration
        || !(a.background == b.background) || a.layers.size() != b.layers.size())
        return false;
    return std::equal(a.layers.cbegin(), a.layers.cend(), b.layers.cbegin(), SameLayer);
}

bool operator==(const Footage &a, const Footage &b)
{
    return a.folder == b.folder && a.files == b.files && a.numbers == b.numbers
        && a.isSeries == b.isSeries && a.size == b.size && a.rate == b.rate;
}

bool operator==(const Solid &a, const Solid &b)
{
    return a.size == b.size && a.color == b.color;
}

} // namespace rostrum
