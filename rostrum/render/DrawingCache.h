// Decoded drawings, ready to be drawn, up to a limit in bytes; the least recently used goes first.
//
// A drawing is known by its path, its size in bytes and its modification time: a file that was
// changed is read anew, one that is gone is missed at once. A file that cannot be read is
// remembered, too, so that it is not tried at every frame.
//
// Not to be used from two threads at once.
#pragma once

#include <QDateTime>
#include <QHash>
#include <QImage>
#include <QRect>

#include <list>

namespace rostrum {

constexpr int kLargestSide = 30000; // pixels of a drawing or a composition
constexpr qint64 kLargestArea = qint64(1) << 28; // pixels; 1 GiB as ARGB

/// @return false for a size that is empty or beyond the limits above
bool IsSizeAllowed(const QSize &size);

struct Drawing
{
    QImage image; // ARGB32_Premultiplied, or RGB32 when no pixel lets anything through
    QRect drawn; // around all pixels that let not everything through; empty where there are none
    bool isBlank = false; // every pixel of the file has the value 0, also where that is black
    QString error; // what and where; empty when the image was read

    bool IsReadable() const { return error.isEmpty(); }
    bool IsOpaque() const { return image.format() == QImage::Format_RGB32; }
};

/// Reads a drawing, past any cache; its format is found as when it is imported.
Drawing ReadDrawing(const QString &path);

class DrawingCache
{
public:
    static constexpr qint64 kDefaultLimit = qint64(1) << 29; // bytes

    explicit DrawingCache(qint64 limit = kDefaultLimit) : limit(limit) { }
    DrawingCache(const DrawingCache &) = delete;
    DrawingCache &operator=(const DrawingCache &) = delete;

    /// The drawing of a file, which becomes the most recently used. One that is larger than the
    /// limit is read, and not kept.
    Drawing Get(const QString &path);

    qint64 Limit() const { return limit; }
    /// What is over the new limit goes at once. @param bytes 0 keeps nothing
    void SetLimit(qint64 bytes);
    void Clear();

    qint64 Used() const { return used; } // bytes
    int Count() const { return index.size(); }
    bool Holds(const QString &path) const { return index.contains(path); }
    /// The number of files read since the cache was made.
    int Readings() const { return readings; }

private:
    struct Entry
    {
        QString path;
        qint64 size = 0; // bytes of the file, 0 when there is none
        QDateTime modified;
        Drawing drawing;
        qint64 cost = 0; // bytes of the image
    };
    using Entries = std::list<Entry>;

    void Remove(const QString &path);
    void Shrink();

    qint64 limit;
    qint64 used = 0;
    int readings = 0;
    Entries entries; // the most recently used first
    QHash<QString, Entries::iterator> index;
};

} // namespace rostrum
