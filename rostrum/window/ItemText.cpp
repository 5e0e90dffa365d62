#include "ItemText.h"

#include "core/DrawingFolder.h"
#include "render/Placement.h"
#include "window/BlankDrawing.h"

#include <QDir>
#include <QSet>

namespace rostrum {
namespace {

constexpr int kFilesTold = 12;

/// "1 = A001.png", a line each; of a long series the first and the last.
QStringList FileLines(const Footage &footage)
{
    const auto line = [&](int position) {
        return QStringLiteral("%1 = %2").arg(position).arg(footage.files.at(position));
    };
    QStringList lines;
    const int count = footage.files.size();
    const bool isLong = count > kFilesTold;
    for (int i = 0; i < (isLong ? kFilesTold - 2 : count); ++i)
        lines << line(i);
    if (isLong)
        lines << QStringLiteral("...") << line(count - 1);
    return lines;
}

QStringList FootageLines(const Footage &footage)
{
    QStringList lines{ QDir::toNativeSeparators(footage.folder) };
    const QVector<qint32> missing = MissingFiles(footage);
    if (!missing.isEmpty())
        lines << QStringLiteral("%1 of %2 files are not there")
                     .arg(missing.size())
                     .arg(footage.files.size());
    if (!footage.isSeries)
        return lines;
    lines << SeriesNotes(footage);
    if (LacksBlank(footage))
        lines << BlankNote(footage);
    lines << QStringLiteral("In a sheet:") << FileLines(footage);
    return lines;
}

QString KindName(LayerKind kind)
{
    switch (kind) {
    case LayerKind::Camera:
        return QStringLiteral("Camera");
    case LayerKind::Light:
        return QStringLiteral("Light");
    case LayerKind::Text:
        return QStringLiteral("Text");
    case LayerKind::Source:
        break;
    }
    return QStringLiteral("Layer");
}

} // namespace

QString KindText(const Item &item)
{
    if (item.AsFolder())
        return QStringLiteral("Folder");
    if (item.AsComposition())
        return QStringLiteral("Composition");
    if (item.AsSolid())
        return QStringLiteral("Solid");
    return item.AsFootage()->isSeries ? QStringLiteral("Series") : QStringLiteral("Still");
}

QString SizeText(const Item &item)
{
    const QSize size = item.Dimensions();
    return item.AsFolder() ? QString()
                           : QStringLiteral("%1 x %2").arg(size.width()).arg(size.height());
}

QString LengthText(const Item &item)
{
    if (const Composition *composition = item.AsComposition()) {
        const int frames = FrameCount(*composition);
        return frames == 1 ? QStringLiteral("1 frame") : QStringLiteral("%1 frames").arg(frames);
    }
    const Footage *footage = item.AsFootage();
    if (!footage || !footage->isSeries)
        return {};
    const int count = footage->files.size();
    return count == 1 ? QStringLiteral("1 drawing") : QStringLiteral("%1 drawings").arg(count);
}

QString RateText(const Rate &rate)
{
    return QString::number(rate.PerSecond(), 'g', 6);
}

QString FactsText(const Item &item)
{
    QStringList facts{ KindText(item), SizeText(item), LengthText(item) };
    facts.removeAll(QString());
    return facts.join(QLatin1String(", "));
}

QString ItemDescription(const Item &item)
{
    QStringList lines{ QString::fromUtf8(item.name) };
    lines << FactsText(item);
    if (const Composition *composition = item.AsComposition())
        lines << QStringLiteral("%1 frames a second, %2 layers")
                     .arg(RateText(composition->rate))
                     .arg(composition->layers.size());
    if (const Folder *folder = item.AsFolder())
        lines << QStringLiteral("%1 items").arg(folder->children.size());
    if (const Footage *footage = item.AsFootage())
        lines << FootageLines(*footage);
    return lines.join(QLatin1Char('\n'));
}

QString LayerText(const Project &project, const Layer &layer)
{
    const Item *source = project.SourceOf(layer);
    const QByteArray &name = layer.name.isEmpty() && source ? source->name : layer.name;
    return name.isEmpty() ? KindName(layer.kind) : QString::fromUtf8(name);
}

QVector<qint32> MissingFiles(const Footage &footage)
{
    const QStringList there = QDir(footage.folder).entryList(QDir::Files | QDir::Hidden);
    const QSet<QString> names(there.cbegin(), there.cend());
    QVector<qint32> missing;
    for (int i = 0; i < footage.files.size(); ++i) {
        if (!names.contains(footage.files.at(i)))
            missing << i;
    }
    return missing;
}

QByteArray FreeName(const Project &project, const QByteArray &name)
{
    QSet<QByteArray> taken;
    for (ItemId item = project.RootFolder(); item; item = project.NextInWalk(item))
        taken << project.Find(item)->name;
    QByteArray free = name;
    for (int number = 2; taken.contains(free); ++number)
        free = name + ' ' + QByteArray::number(number);
    return free;
}

} // namespace rostrum
