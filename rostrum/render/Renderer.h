// Draws what a composition shows at a frame.
//
// Layers are drawn from the bottom up, each at its place, with its effects, inside its bar. A
// nested composition is drawn without its own background. Cameras, lights and texts draw nothing.
// What cannot be drawn is told by a message, and the rest of the frame is drawn: a drawing that
// cannot be read shows a checker with a cross, of its footage's size.
//
// Not to be used from two threads at once, nor two renderers with one cache.
#pragma once

#include "DrawingCache.h"
#include "GaussianBlur.h"
#include "core/Project.h"

#include <QStringList>
#include <QTransform>

QT_FORWARD_DECLARE_CLASS(QPainter)

namespace rostrum {

class Renderer
{
public:
    static constexpr qint64 kMostQuickPixels = qint64(1)
        << 24; // half a frame's time at 60 a second

    /// @param cache is kept by reference
    explicit Renderer(DrawingCache &cache) : cache(cache) { }

    /// Draws frame `frame`, from 0, of a composition. Outside the composition's frames its
    /// background stands alone.
    /// @param image takes the frame, ARGB32_Premultiplied, of the composition's size; the pixels of
    /// the last frame are used again when size and format fit and nobody else holds them
    /// @return false when there is no such composition, or its size is beyond the limits in
    /// DrawingCache.h, or there is no memory; the image is then null and a message says so
    bool Render(const Project &project, ItemId composition, qint32 frame, QImage *image);

    /// Whether drawing the last frame again would cost little more than showing it: few enough
    /// pixels, each copied or blended from a drawing in memory. What was read from disk, has an effect
    /// or lies between whole pixels is not quick.
    bool IsQuick() const { return !isCostly && writtenPixels <= kMostQuickPixels; }

    /// What went wrong in the last frame: what and where, each once.
    const QStringList &Messages() const { return messages; }

    /// Whether the composition's background is drawn; true at the start. Without it the frame keeps
    /// its transparency.
    void SetBackground(bool drawn) { background = drawn; }

private:
    /// What a layer puts into the frame.
    struct Picture
    {
        const Layer *layer = nullptr;
        const Item *source = nullptr;
        QTransform matrix; // source pixels to pixels of the composition
        double opacity = 1; // 0 to 1
        Drawing drawing; // of footage
        Time nestedTime; // of a composition
        bool hasEffects = false;
    };

    void DrawComposition(const Item &item, const Time &time, bool withBackground, QImage *image);
    bool Look(const Composition &composition, const Layer &layer, const Time &time, Picture *found);
    bool LookAtFootage(
        const Layer &layer, const Footage &footage, const Time &time, Picture *found);
    static bool Covers(const Picture &picture, const QSize &size);
    void Draw(const Picture &picture, const Time &time, QPainter *painter);
    void Weigh(const Picture &picture, const QRect &frame);
    bool MakeRaster(const Picture &picture, Raster *raster);
    QImage Placeholder(const QSize &size);
    QImage TakeImage(const QSize &size);
    void GiveBack(QImage &&image);
    void Tell(const QString &message);

    DrawingCache &cache;
    const Project *project = nullptr; // during Render
    QStringList messages;
    QVector<QImage> spares; // frames of nested compositions, to be drawn into again
    QImage placeholder; // the last one
    int depth = 0; // compositions around the one being drawn
    qint64 writtenPixels = 0; // of the last frame, by copying and blending
    bool isCostly = false; // something dearer was done for it
    bool background = true;
};

} // namespace rostrum
