#include "BlankDrawing.h"

#include "core/FootageFiles.h"
#include "core/WholeFile.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>

#include <cmath>

namespace rostrum {
namespace {

constexpr double kWhole = 1e-6; // images; how far from a whole one a key's value may be

/// Of a key that shows an image: of the one behind it.
double NextImage(double seconds, const Rate &rate)
{
    const double image = seconds * rate.PerSecond();
    const double whole = std::round(image);
    return std::abs(image - whole) < kWhole ? (whole + 1) / rate.PerSecond()
                                            : seconds + 1 / rate.PerSecond();
}

/// The name that a series got when it came in. @param now the one with its blank drawing
QByteArray NameFrom(const Footage &before, QByteArray now)
{
    const QByteArray first = NumberedName(before.files.first()).digits.toUtf8();
    const QByteArray blank(first.size(), '0');
    return now.replace('[' + blank + '-', '[' + first + '-');
}

void ShiftImages(Stream *remap, const Rate &rate)
{
    for (int key = 0; key < remap->KeyCount(); ++key) {
        StreamValue value = remap->KeyAt(key).value;
        value[0] = NextImage(value[0], rate);
        remap->SetKeyValue(key, value);
    }
}

void ShiftLayersOf(ItemId footage, const Rate &rate, Project *project)
{
    for (ItemId item = project->RootFolder(); item; item = project->NextInWalk(item)) {
        const Composition *composition = project->FindComposition(item);
        if (!composition)
            continue;
        const QVector<LayerPtr> layers = composition->layers;
        for (const LayerPtr &layer : layers) {
            if (layer->kind == LayerKind::Source && layer->source == footage
                && layer->timeRemap.HasKeys())
                ShiftImages(&project->EditLayer(item, layer->id)->timeRemap, rate);
        }
    }
}

} // namespace

bool LacksBlank(const Footage &footage)
{
    return footage.isSeries && !footage.numbers.isEmpty() && footage.numbers.first() != 0;
}

QString BlankNote(const Footage &footage)
{
    if (!LacksBlank(footage))
        return {};
    return QStringLiteral("there is no drawing 0, so 0 in a sheet is %1 and no cell can be blank; "
                          "Add Blank Drawing in the list's menu writes one")
        .arg(footage.files.first());
}

QString BlankPath(const Footage &footage)
{
    const NumberedName first(footage.files.first());
    const QString name = first.stem + QString(first.digits.size(), QLatin1Char('0'));
    return QDir(footage.folder)
        .filePath(first.extension.isEmpty() ? name : name + QLatin1Char('.') + first.extension);
}

QString WriteBlank(const Footage &footage)
{
    const QString path = BlankPath(footage);
    if (QFileInfo::exists(path))
        return {};
    QImageReader reader(footage.PathOf(0));
    const QByteArray format = reader.format();
    const QSize size = reader.read().size();
    if (size.isEmpty())
        return QStringLiteral("\"%1\" cannot be read: %2")
            .arg(footage.PathOf(0), reader.errorString());
    QImage blank(size, QImage::Format_ARGB32);
    blank.fill(0);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, format);
    if (!buffer.open(QIODevice::WriteOnly) || !writer.write(blank))
        return QStringLiteral("No blank drawing can be written as %1: %2")
            .arg(QString::fromLatin1(format).toUpper(), writer.errorString());
    return WriteWholeFile(path, bytes);
}

QString TakeBlank(ItemId id, Project *project)
{
    const Footage before = *project->Find(id)->AsFootage();
    const ImportResult result = ImportDrawings(BlankPath(before), /*series=*/true);
    if (!result.Ok())
        return result.error;
    if (result.footage.files.size() != before.files.size() + 1 || LacksBlank(result.footage))
        return QStringLiteral("The drawings in \"%1\" are others than when they were imported; "
                              "import them again")
            .arg(before.folder);
    Item *item = project->Edit(id);
    if (item->name == NameFrom(before, result.name))
        item->name = result.name; // nobody had given it another
    Footage footage = result.footage;
    footage.rate = before.rate;
    item->content = footage;
    ShiftLayersOf(id, footage.rate, project);
    return {};
}

} // namespace rostrum
