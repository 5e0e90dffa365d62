#include "ProjectReading.h"

#include "ProjectWriting.h"

#include <QHash>
#include <QSet>

#include <limits>

namespace rostrum {
namespace {

constexpr qint64 kMin32 = std::numeric_limits<qint32>::min();
constexpr qint64 kMax32 = std::numeric_limits<qint32>::max();
constexpr qint64 kMaxScale = std::numeric_limits<quint32>::max();
constexpr int kHighestLabel = 16;

QSize ReadSize(const JsonReader &from)
{
    if (from.Size() == 2)
        return { from.At(0).Whole32(0), from.At(1).Whole32(0) };
    from.Fail(QStringLiteral("it is no width and height"));
    return {};
}

Rate ReadRate(const JsonReader &from)
{
    if (from.Size() == 2)
        return { from.At(0).Whole32(1), from.At(1).Whole32(1) };
    from.Fail(QStringLiteral("it is no rate"));
    return {};
}

Time ReadTime(const JsonReader &from)
{
    if (from.Size() == 2)
        return { static_cast<qint32>(from.At(0).Whole(kMin32, kMax32)),
            static_cast<quint32>(from.At(1).Whole(1, kMaxScale)) };
    from.Fail(QStringLiteral("it is no time"));
    return {};
}

Color ReadColor(const JsonReader &from)
{
    double numbers[3] = {};
    from.Numbers(numbers, 3);
    return { numbers[0], numbers[1], numbers[2] };
}

QByteArray ReadName(const JsonReader &from)
{
    if (!from.IsObject())
        return from.Text().toUtf8();
    const JsonReader base64 = from.At("base64");
    const auto decoded = QByteArray::fromBase64Encoding(
        base64.Text().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (decoded.decodingStatus != QByteArray::Base64DecodingStatus::Ok)
        base64.Fail(QStringLiteral("it is not in base64"));
    return decoded.decoded;
}

/// A whole number that was read together with others. @return false beyond the limits
bool TakeWhole(double number, qint64 low, qint64 high, qint64 *whole)
{
    if (!(number >= static_cast<double>(low) && number <= static_cast<double>(high)))
        return false;
    *whole = static_cast<qint64>(number);
    return static_cast<double>(*whole) == number;
}

/// Puts a key behind the stream's others.
void ReadKey(const JsonReader &from, Stream *stream)
{
    double numbers[8] = {};
    from.Numbers(numbers, 8);
    qint64 value = 0, scale = 1, in = 1, out = 1;
    if (!TakeWhole(numbers[0], kMin32, kMax32, &value)
        || !TakeWhole(numbers[1], 1, kMaxScale, &scale) || !TakeWhole(numbers[2], 1, 3, &in)
        || !TakeWhole(numbers[3], 1, 3, &out)) {
        from.Fail(QStringLiteral("it is no key"));
        return;
    }
    const Time time{ static_cast<qint32>(value), static_cast<quint32>(scale) };
    const int last = stream->KeyCount() - 1;
    if (last >= 0 && time <= stream->KeyAt(last).time) {
        from.Fail(QStringLiteral("it does not come after the key before it"));
        return;
    }
    const int index = stream->InsertKey(time, { numbers[4], numbers[5], numbers[6], numbers[7] });
    stream->SetKeyInterpolation(index, Interpolation(in), Interpolation(out));
}

Stream ReadStream(const JsonReader &from)
{
    StreamValue value{};
    from.At("value").Numbers(value.data(), static_cast<int>(value.size()));
    Stream stream(value);
    if (!from.Has("keys"))
        return stream;
    const JsonReader keys = from.At("keys");
    const int count = keys.Size();
    for (int i = 0; i < count && !keys.HasFailed(); ++i)
        ReadKey(keys.At(i), &stream);
    return stream;
}

/// Finds whether things that each have one parent at most form a ring.
/// @return a member of a ring, 0 when there is none
qint32 FindRing(const QHash<qint32, qint32> &parents)
{
    QSet<qint32> fine; // known to lead to an end
    for (auto start = parents.cbegin(); start != parents.cend(); ++start) {
        QSet<qint32> path;
        for (qint32 at = start.key(); at && !fine.contains(at); at = parents.value(at)) {
            if (path.contains(at))
                return at;
            path << at;
        }
        fine += path;
    }
    return 0;
}

class ProjectReader
{
public:
    explicit ProjectReader(const QDir &folder) : folder(folder) { }

    Project Read(const JsonReader &all);

private:
    /// An id between 1 and the next one that nothing else has.
    qint32 ReadId(const JsonReader &from);
    Item ReadItem(const JsonReader &from);
    bool ReadContent(const JsonReader &from, Item *item);
    Folder ReadFolder(const JsonReader &from);
    Composition ReadComposition(const JsonReader &from);
    Footage ReadFootage(const JsonReader &from);
    Layer ReadLayer(const JsonReader &from);
    LayerEffect ReadEffect(const JsonReader &from);

    void CheckFolders(const JsonReader &list) const;
    void CheckLayers(const JsonReader &list) const;
    void CheckLayer(
        const JsonReader &from, const Layer &layer, const QHash<LayerId, LayerId> &parents) const;
    void CheckNesting(const JsonReader &list) const;

    QDir folder;
    qint32 nextId = 0;
    QSet<qint32> ids; // of items, layers and effects
    QVector<Item> items;
    QHash<ItemId, int> places; // of the items in the list
};

Project ProjectReader::Read(const JsonReader &all)
{
    nextId = all.At("nextId").Whole32(2);
    const JsonReader list = all.At("items");
    const int count = list.Size();
    for (int i = 0; i < count && !all.HasFailed(); ++i) {
        items << ReadItem(list.At(i));
        places.insert(items.last().id, i);
    }
    if (!all.HasFailed())
        CheckFolders(list);
    if (!all.HasFailed())
        CheckLayers(list);
    if (!all.HasFailed())
        CheckNesting(list);
    return all.HasFailed() ? Project() : Project::FromItems(items, nextId);
}

qint32 ProjectReader::ReadId(const JsonReader &from)
{
    const auto id = static_cast<qint32>(from.Whole(1, nextId - 1));
    if (ids.contains(id))
        from.Fail(QStringLiteral("the id %1 is there twice").arg(id));
    ids << id;
    return id;
}

Item ProjectReader::ReadItem(const JsonReader &from)
{
    Item item;
    item.id = ReadId(from.At("id"));
    item.parent = from.At("parent").Whole32(0);
    item.name = ReadName(from.At("name"));
    item.label = static_cast<qint8>(from.At("label").Whole(0, kHighestLabel));
    if (!ReadContent(from, &item))
        from.At("kind").Fail(QStringLiteral("there is no such kind of item"));
    return item;
}

bool ProjectReader::ReadContent(const JsonReader &from, Item *item)
{
    const QString kind = from.At("kind").Text();
    if (kind == QLatin1String("folder"))
        item->content = ReadFolder(from);
    else if (kind == QLatin1String("composition"))
        item->content = ReadComposition(from);
    else if (kind == QLatin1String("footage"))
        item->content = ReadFootage(from);
    else if (kind == QLatin1String("solid"))
        item->content = Solid{ ReadSize(from.At("size")), ReadColor(from.At("color")) };
    else
        return false;
    return true;
}

Folder ProjectReader::ReadFolder(const JsonReader &from)
{
    Folder result;
    const JsonReader children = from.At("children");
    const int count = children.Size();
    for (int i = 0; i < count && !from.HasFailed(); ++i)
        result.children << children.At(i).Whole32(1);
    return result;
}

Composition ProjectReader::ReadComposition(const JsonReader &from)
{
    Composition result;
    result.size = ReadSize(from.At("size"));
    result.rate = ReadRate(from.At("rate"));
    result.duration = ReadTime(from.At("duration"));
    result.background = ReadColor(from.At("background"));
    const JsonReader layers = from.At("layers");
    const int count = layers.Size();
    for (int i = 0; i < count && !from.HasFailed(); ++i)
        result.layers << LayerPtr(new Layer(ReadLayer(layers.At(i))));
    return result;
}

Footage ProjectReader::ReadFootage(const JsonReader &from)
{
    Footage result;
    result.folder = QDir::cleanPath(folder.absoluteFilePath(from.At("folder").Text()));
    result.isSeries = from.At("series").Flag();
    result.size = ReadSize(from.At("size"));
    result.rate = ReadRate(from.At("rate"));
    const JsonReader files = from.At("files");
    const int count = files.Size();
    for (int i = 0; i < count && !from.HasFailed(); ++i) {
        result.files << files.At(i).Text();
        if (result.files.last().isEmpty())
            files.At(i).Fail(QStringLiteral("it names no file"));
    }
    if (count == 0 || (!result.isSeries && count > 1))
        files.Fail(QStringLiteral("a series has some files, a still has one"));
    const JsonReader numbers = from.At("numbers");
    const int numberCount = numbers.Size();
    for (int i = 0; i < numberCount && !from.HasFailed(); ++i) {
        result.numbers << numbers.At(i).Whole32(0);
        if (i > 0 && result.numbers[i] < result.numbers[i - 1])
            numbers.At(i).Fail(QStringLiteral("the numbers do not rise"));
    }
    if (numberCount != 0 && numberCount != count)
        numbers.Fail(QStringLiteral("there are not as many numbers as files"));
    return result;
}

Layer ProjectReader::ReadLayer(const JsonReader &from)
{
    Layer layer;
    layer.id = ReadId(from.At("id"));
    const JsonReader kind = from.At("kind");
    int found = 0;
    while (found < 4 && kind.Text() != QLatin1String(kLayerKindNames[found]))
        ++found;
    if (found == 4)
        kind.Fail(QStringLiteral("there is no such kind of layer"));
    else
        layer.kind = LayerKind(found);
    layer.source = from.At("source").Whole32(0);
    layer.name = ReadName(from.At("name"));
    layer.parent = from.At("parent").Whole32(0);
    layer.label = static_cast<qint8>(from.At("label").Whole(0, kHighestLabel));
    layer.inPoint = ReadTime(from.At("in"));
    layer.duration = ReadTime(from.At("duration"));
    layer.offset = ReadTime(from.At("offset"));
    for (const NamedStream &named : kLayerStreams)
        layer.*named.stream = ReadStream(from.At(named.name));
    const JsonReader effects = from.At("effects");
    const int count = effects.Size();
    for (int i = 0; i < count && !from.HasFailed(); ++i)
        layer.effects << ReadEffect(effects.At(i));
    return layer;
}

LayerEffect ProjectReader::ReadEffect(const JsonReader &from)
{
    LayerEffect effect;
    effect.id = ReadId(from.At("id"));
    const JsonReader name = from.At("effect");
    const EffectInfo *info = FindEffect(name.Text().toUtf8());
    const JsonReader params = from.At("params");
    const int count = params.Size();
    if (!info) {
        name.Fail(QStringLiteral("the effect \"%1\" is not installed").arg(name.Text()));
        return effect;
    }
    if (count != info->params.size())
        params.Fail(QStringLiteral("the effect has %1 parameters").arg(info->params.size()));
    effect.key = info->key;
    for (int i = 0; i < count && !from.HasFailed(); ++i)
        effect.params << ReadStream(params.At(i));
    return effect;
}

/// Each item lies in the one folder that its parent is, and all hang from the root.
void ProjectReader::CheckFolders(const JsonReader &list) const
{
    const ItemId root = Project().RootFolder();
    if (!places.contains(root) || !items[places.value(root)].AsFolder()) {
        list.Fail(QStringLiteral("the root folder, item %1, is missing").arg(root));
        return;
    }
    QHash<qint32, qint32> parents; // by what the folders hold
    for (int i = 0; i < items.size(); ++i) {
        const Folder *holder = items[i].AsFolder();
        const QVector<ItemId> children = holder ? holder->children : QVector<ItemId>();
        for (const ItemId child : children) {
            if (!places.contains(child) || parents.contains(child) || child == root)
                list.At(i)
                    .At("children")
                    .Fail(QStringLiteral("item %1 cannot be in it").arg(child));
            parents.insert(child, items[i].id);
        }
    }
    for (int i = 0; i < items.size(); ++i) {
        const bool isHeld = items[i].id == root || parents.contains(items[i].id);
        if (!isHeld || items[i].parent != parents.value(items[i].id))
            list.At(i).At("parent").Fail(QStringLiteral("the item is not in this folder"));
    }
    const qint32 ring = FindRing(parents);
    if (ring)
        list.At(places.value(ring)).Fail(QStringLiteral("the folder holds itself"));
}

void ProjectReader::CheckLayers(const JsonReader &list) const
{
    for (int i = 0; i < items.size(); ++i) {
        const Composition *composition = items[i].AsComposition();
        if (!composition)
            continue;
        const JsonReader layers = list.At(i).At("layers");
        QHash<LayerId, LayerId> parents;
        for (const LayerPtr &layer : composition->layers)
            parents.insert(layer->id, layer->parent);
        for (int j = 0; j < composition->layers.size(); ++j)
            CheckLayer(layers.At(j), *composition->layers[j], parents);
        const qint32 ring = layers.HasFailed() ? 0 : FindRing(parents);
        if (ring)
            layers.At(composition->IndexOf(ring))
                .Fail(QStringLiteral("the layer is its own parent"));
    }
}

void ProjectReader::CheckLayer(
    const JsonReader &from, const Layer &layer, const QHash<LayerId, LayerId> &parents) const
{
    const int place = places.value(layer.source, -1);
    const bool isShowable = place >= 0 && !items[place].AsFolder();
    const bool isRight = layer.kind == LayerKind::Source ? isShowable : layer.source == 0;
    if (!isRight)
        from.At("source").Fail(QStringLiteral("the layer cannot show item %1").arg(layer.source));
    if (layer.parent && !parents.contains(layer.parent))
        from.At("parent").Fail(
            QStringLiteral("there is no layer %1 in the composition").arg(layer.parent));
}

/// Takes away, again and again, the compositions that show none of those left. What stays shows
/// itself.
void ProjectReader::CheckNesting(const JsonReader &list) const
{
    QHash<ItemId, QVector<ItemId>> showers; // of a composition, one entry for each layer
    QHash<ItemId, int> shown; // compositions that a composition shows and that are left
    QVector<ItemId> done;
    for (const Item &item : items) {
        const Composition *composition = item.AsComposition();
        if (!composition)
            continue;
        for (const LayerPtr &layer : composition->layers) {
            if (!layer->source || !items[places.value(layer->source)].AsComposition())
                continue;
            showers[layer->source] << item.id;
            ++shown[item.id];
        }
        if (!shown.contains(item.id))
            done << item.id;
    }
    for (int i = 0; i < done.size(); ++i) {
        const QVector<ItemId> above = showers.take(done[i]);
        for (const ItemId shower : above) {
            if (--shown[shower] == 0)
                done << shower;
        }
    }
    for (int i = 0; i < items.size(); ++i) {
        if (items[i].AsComposition() && shown.value(items[i].id) > 0)
            list.At(i).Fail(QStringLiteral("the composition shows itself"));
    }
}

} // namespace

Project ReadProject(const JsonReader &all, const QDir &folder)
{
    all.At("version").Whole32(1); // unchecked: a wrong one is noted like any other damage
    return ProjectReader(folder).Read(all);
}

} // namespace rostrum
