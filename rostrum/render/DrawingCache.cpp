#include "DrawingCache.h"

#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

namespace rostrum {
namespace {

constexpr qint64 kEntryCost = 1024; // bytes; what an entry costs beside its pixels

/// @param pick takes a pixel @return whether it is true for all pixels of a 32-bit image
template <typename Pick>
bool AllPixels(const QImage &image, Pick pick)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        if (!std::all_of(line, line + image.width(), pick))
            return false;
    }
    return true;
}

bool HasIndexZeroOnly(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelIndex(x, y) != 0)
                return false;
        }
    }
    return true;
}

bool IsClear(QRgb pixel)
{
    return qAlpha(pixel) == 0;
}

/// @param image with alpha, 32 bits a pixel
QRect DrawnPart(const QImage &image)
{
    const int width = image.width();
    QRect drawn;
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        const auto *left = std::find_if_not(line, line + width, IsClear);
        if (left == line + width)
            continue;
        const auto *right = line + width - 1;
        while (IsClear(*right))
            --right;
        drawn |= QRect(
            QPoint(static_cast<int>(left - line), y), QPoint(static_cast<int>(right - line), y));
    }
    return drawn;
}

Drawing Unreadable(const QString &path, const QString &why)
{
    Drawing drawing;
    drawing.error = QStringLiteral("The image \"%1\" cannot be read: %2").arg(path, why);
    return drawing;
}

QString TooLarge(const QSize &size)
{
    return QStringLiteral("%1 by %2 pixels are too many").arg(size.width()).arg(size.height());
}

Drawing Converted(QImage image)
{
    Drawing drawing;
    const bool hasPalette = image.colorCount() > 0;
    if (hasPalette)
        drawing.isBlank = HasIndexZeroOnly(image); // whatever colour the palette gives it
    image.setDevicePixelRatio(1); // "@2x" in a file's name is no matter of ours
    drawing.drawn = image.rect();
    if (!image.hasAlphaChannel()) {
        drawing.image = std::move(image).convertToFormat(QImage::Format_RGB32);
        if (!hasPalette)
            drawing.isBlank
                = AllPixels(drawing.image, [](QRgb pixel) { return (pixel & RGB_MASK) == 0; });
        return drawing;
    }
    drawing.image = std::move(image).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (AllPixels(drawing.image, [](QRgb pixel) { return qAlpha(pixel) == 255; }))
        drawing.image = std::move(drawing.image).convertToFormat(QImage::Format_RGB32);
    else
        drawing.drawn = DrawnPart(drawing.image);
    if (!hasPalette)
        drawing.isBlank = drawing.drawn.isEmpty(); // premultiplied: what is clear is 0
    return drawing;
}

} // namespace

bool IsSizeAllowed(const QSize &size)
{
    return !size.isEmpty() && size.width() <= kLargestSide && size.height() <= kLargestSide
        && qint64(size.width()) * size.height() <= kLargestArea;
}

Drawing ReadDrawing(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return Unreadable(path, QStringLiteral("there is no such file"));
    QImageReader reader(path);
    // Asked before anything is decoded: a few bytes of a damaged header can name any size.
    const QSize told = reader.size();
    if (told.isValid() && !IsSizeAllowed(told))
        return Unreadable(path, TooLarge(told));
    QImage image = reader.read();
    if (image.isNull())
        return Unreadable(path, reader.errorString());
    if (!IsSizeAllowed(image.size()))
        return Unreadable(path, TooLarge(image.size()));
    Drawing drawing = Converted(std::move(image));
    return drawing.image.isNull() ? Unreadable(path, QStringLiteral("out of memory")) : drawing;
}

Drawing DrawingCache::Get(const QString &path)
{
    const QFileInfo file(path);
    const bool exists = file.isFile();
    const qint64 size = exists ? file.size() : 0;
    const QDateTime modified = exists ? file.lastModified() : QDateTime();
    const auto found = index.constFind(path);
    if (found != index.constEnd()) {
        const Entries::iterator entry = found.value();
        if (entry->size == size && entry->modified == modified) {
            entries.splice(entries.begin(), entries, entry);
            return entry->drawing;
        }
        Remove(path);
    }

    Entry entry{ path, size, modified, ReadDrawing(path), kEntryCost };
    ++readings;
    entry.cost += entry.drawing.image.sizeInBytes();
    Drawing drawing = entry.drawing;
    if (entry.cost <= limit) {
        used += entry.cost;
        entries.push_front(std::move(entry));
        index.insert(path, entries.begin());
        Shrink();
    }
    return drawing;
}

void DrawingCache::SetLimit(qint64 bytes)
{
    limit = bytes;
    Shrink();
}

void DrawingCache::Clear()
{
    entries.clear();
    index.clear();
    used = 0;
}

void DrawingCache::Remove(const QString &path)
{
    const Entries::iterator entry = index.take(path);
    used -= entry->cost;
    entries.erase(entry);
}

void DrawingCache::Shrink()
{
    while (used > limit && !entries.empty())
        Remove(QString(entries.back().path)); // a copy: the entry takes its own path with it
}

} // namespace rostrum
