#include "ProjectWriting.h"

#include "ProjectFile.h"

#include <QJsonArray>

namespace rostrum {
namespace {

QJsonArray Written(const QSize &size)
{
    return { size.width(), size.height() };
}

QJsonArray Written(const Rate &rate)
{
    return { rate.num, rate.den };
}

QJsonArray Written(const Time &time)
{
    return { time.value, qint64(time.scale) };
}

QJsonArray Written(const Color &color)
{
    return { color.red, color.green, color.blue };
}

QJsonValue WrittenName(const QByteArray &name)
{
    const QString text = QString::fromUtf8(name);
    if (text.toUtf8() == name)
        return text;
    return QJsonObject{ { QStringLiteral("base64"), QString::fromLatin1(name.toBase64()) } };
}

QJsonObject Written(const Stream &stream)
{
    QJsonArray value;
    for (const double number : stream.Constant())
        value << number;
    QJsonObject result{ { QStringLiteral("value"), value } };
    QJsonArray keys;
    for (int i = 0; i < stream.KeyCount(); ++i) {
        const Key &key = stream.KeyAt(i);
        QJsonArray written = Written(key.time);
        written << int(key.in) << int(key.out);
        for (const double number : key.value)
            written << number;
        keys << written;
    }
    if (!keys.isEmpty())
        result.insert(QStringLiteral("keys"), keys);
    return result;
}

QJsonObject Written(const LayerEffect &effect)
{
    const EffectInfo *info = FindEffect(effect.key);
    QJsonArray params;
    for (const Stream &param : effect.params)
        params << Written(param);
    return {
        { QStringLiteral("id"), effect.id },
        { QStringLiteral("effect"), QString::fromLatin1(info ? info->matchName : QByteArray()) },
        { QStringLiteral("params"), params },
    };
}

QJsonObject Written(const Layer &layer)
{
    QJsonArray effects;
    for (const LayerEffect &effect : layer.effects)
        effects << Written(effect);
    QJsonObject result{
        { QStringLiteral("id"), layer.id },
        { QStringLiteral("kind"), QLatin1String(kLayerKindNames[int(layer.kind)]) },
        { QStringLiteral("source"), layer.source },
        { QStringLiteral("name"), WrittenName(layer.name) },
        { QStringLiteral("parent"), layer.parent },
        { QStringLiteral("label"), layer.label },
        { QStringLiteral("in"), Written(layer.inPoint) },
        { QStringLiteral("duration"), Written(layer.duration) },
        { QStringLiteral("offset"), Written(layer.offset) },
        { QStringLiteral("effects"), effects },
    };
    for (const NamedStream &named : kLayerStreams)
        result.insert(QLatin1String(named.name), Written(layer.*named.stream));
    return result;
}

void Write(const Composition &composition, QJsonObject *result)
{
    QJsonArray layers;
    for (const LayerPtr &layer : composition.layers)
        layers << Written(*layer);
    result->insert(QStringLiteral("kind"), QStringLiteral("composition"));
    result->insert(QStringLiteral("size"), Written(composition.size));
    result->insert(QStringLiteral("rate"), Written(composition.rate));
    result->insert(QStringLiteral("duration"), Written(composition.duration));
    result->insert(QStringLiteral("background"), Written(composition.background));
    result->insert(QStringLiteral("layers"), layers);
}

void Write(const Footage &footage, const QDir &folder, QJsonObject *result)
{
    QJsonArray numbers;
    for (const qint32 number : footage.numbers)
        numbers << number;
    result->insert(QStringLiteral("kind"), QStringLiteral("footage"));
    result->insert(QStringLiteral("folder"), folder.relativeFilePath(footage.folder));
    result->insert(QStringLiteral("files"), QJsonArray::fromStringList(footage.files));
    result->insert(QStringLiteral("numbers"), numbers);
    result->insert(QStringLiteral("series"), footage.isSeries);
    result->insert(QStringLiteral("size"), Written(footage.size));
    result->insert(QStringLiteral("rate"), Written(footage.rate));
}

QJsonObject Written(const Item &item, const QDir &folder)
{
    QJsonObject result{
        { QStringLiteral("id"), item.id },
        { QStringLiteral("parent"), item.parent },
        { QStringLiteral("name"), WrittenName(item.name) },
        { QStringLiteral("label"), item.label },
    };
    if (const Composition *composition = item.AsComposition())
        Write(*composition, &result);
    else if (const Footage *footage = item.AsFootage())
        Write(*footage, folder, &result);
    else if (const Solid *solid = item.AsSolid()) {
        result.insert(QStringLiteral("kind"), QStringLiteral("solid"));
        result.insert(QStringLiteral("size"), Written(solid->size));
        result.insert(QStringLiteral("color"), Written(solid->color));
    } else {
        QJsonArray children;
        for (const ItemId child : item.AsFolder()->children)
            children << child;
        result.insert(QStringLiteral("kind"), QStringLiteral("folder"));
        result.insert(QStringLiteral("children"), children);
    }
    return result;
}

} // namespace

QJsonObject WrittenProject(const Project &project, const QDir &folder)
{
    QJsonArray items;
    for (ItemId item = project.RootFolder(); item; item = project.NextInWalk(item))
        items << Written(*project.Find(item), folder);
    return {
        { QStringLiteral("format"), QLatin1String(kProjectFormat) },
        { QStringLiteral("version"), kProjectFileVersion },
        { QStringLiteral("nextId"), project.NextId() },
        { QStringLiteral("items"), items },
    };
}

} // namespace rostrum
