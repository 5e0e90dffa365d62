#include "Renderer.h"

#include "Effects.h"
#include "FrameMemory.h"
#include "Placement.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace rostrum {
namespace {

constexpr int kDeepestNesting = 64; // compositions inside each other
constexpr int kMostSpares = 4;
constexpr double kWholePixel = 1e-4; // nearer to a whole pixel than anybody can see
constexpr double kFarthest = 16000; // pixels; the painter's own coordinates end at 32767

QColor ToColor(const Color &color)
{
    const auto channel = [](double value) {
        return value > 0 ? static_cast<int>(std::lround(qMin(value, 1.0) * 255)) : 0;
    };
    return { channel(color.red), channel(color.green), channel(color.blue) };
}

/// @return "\"name\" of 3 by 4 pixels cannot be drawn"
QString CannotBeDrawn(const Item &item)
{
    const QSize size = item.Dimensions();
    return QStringLiteral("\"%1\" of %2 by %3 pixels cannot be drawn")
        .arg(QString::fromUtf8(item.name), QString::number(size.width()),
            QString::number(size.height())); // at once: the name may hold a "%2"
}

/// The matrix moves whole pixels onto whole pixels. @param by takes the way
bool IsWholeMove(const QTransform &matrix, QPoint *by)
{
    if (matrix.type() > QTransform::TxTranslate)
        return false;
    const QPointF exact(matrix.dx(), matrix.dy());
    if (!(std::abs(exact.x()) < kFarthest * 2 && std::abs(exact.y()) < kFarthest * 2))
        return false;
    *by = QPoint(qRound(exact.x()), qRound(exact.y()));
    return std::abs(exact.x() - by->x()) < kWholePixel
        && std::abs(exact.y() - by->y()) < kWholePixel;
}

qint64 Area(const QRect &rect)
{
    return qint64(rect.width()) * rect.height();
}

bool IsDrawable(const QTransform &matrix)
{
    const double sum = std::abs(matrix.m11()) + std::abs(matrix.m12()) + std::abs(matrix.m21())
        + std::abs(matrix.m22()) + std::abs(matrix.dx()) + std::abs(matrix.dy());
    return std::isfinite(sum) && std::isfinite(matrix.determinant()) && matrix.isInvertible();
}

/// An image drawn at less than half its size would show every second pixel or fewer. So it is
/// averaged down by powers of two first, to between once and twice the size wanted.
/// @param part and matrix follow
QImage Shrunk(const QImage &image, QRect *part, QTransform *matrix)
{
    const auto halvings = [](double scale) {
        return qBound(0, static_cast<int>(std::floor(-std::log2(scale))), 15);
    };
    const int across = halvings(std::hypot(matrix->m11(), matrix->m12()));
    const int down = halvings(std::hypot(matrix->m21(), matrix->m22()));
    if (across == 0 && down == 0)
        return image;
    const QSize size(qMax(1, image.width() >> across), qMax(1, image.height() >> down));
    QImage result = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QTransform grown = QTransform::fromScale(
        double(image.width()) / size.width(), double(image.height()) / size.height());
    *part = grown.inverted().mapRect(QRectF(*part)).toAlignedRect().intersected(result.rect());
    *matrix = grown * *matrix;
    return result;
}

/// A pixel more around a part of an image: those at its edge are blended with their neighbours.
QRect WithNeighbours(const QRect &part, const QImage &image)
{
    return part.adjusted(-1, -1, 1, 1).intersected(image.rect());
}

/// The part of an image that can be seen.
QRect VisiblePart(const QRect &part, const QTransform &matrix, const QRect &frame)
{
    const QRectF seen = matrix.inverted().mapRect(QRectF(frame));
    return seen.intersected(part).toAlignedRect();
}

/// @param part of the raster's image; around it everything is clear
void DrawImage(const Raster &raster, QRect part, const QTransform &sourceMatrix, double opacity,
    QPainter *painter)
{
    QTransform matrix
        = QTransform::fromTranslate(raster.origin.x(), raster.origin.y()) * sourceMatrix;
    painter->setOpacity(opacity);
    QPoint by;
    if (IsWholeMove(matrix, &by)) {
        painter->drawImage(by + part.topLeft(), raster.image, part);
        return;
    }
    const QImage shrunk = Shrunk(raster.image, &part, &matrix);
    const QRect frame = painter->viewport();
    QRectF reached = matrix.mapRect(QRectF(part));
    if (!reached.intersects(QRectF(frame).adjusted(-1, -1, 1, 1)))
        return;
    part = WithNeighbours(part, shrunk);
    reached = matrix.mapRect(QRectF(part));
    if (reached.width() > kFarthest || reached.height() > kFarthest)
        part = WithNeighbours(VisiblePart(part, matrix, frame), shrunk);
    // The painter snaps a mere move to whole pixels; a scale by a hair makes it blend them.
    if (matrix.type() <= QTransform::TxTranslate)
        matrix = QTransform::fromScale(1 + 1e-7, 1) * matrix;
    painter->setWorldTransform(matrix);
    painter->drawImage(QRectF(part), shrunk, QRectF(part));
    painter->resetTransform();
}

void DrawSolid(const Solid &solid, const QTransform &matrix, double opacity, QPainter *painter)
{
    const QPolygonF corners = matrix.map(QPolygonF(QRectF(QPointF(0, 0), solid.size)));
    QPainterPath frame;
    frame.addRect(QRectF(painter->viewport()).adjusted(-1, -1, 1, 1));
    QPainterPath path;
    path.addPolygon(corners);
    path.closeSubpath();
    const QRectF reached = corners.boundingRect();
    if (reached.width() > kFarthest || reached.height() > kFarthest)
        path = path.intersected(frame);
    painter->setOpacity(opacity);
    painter->fillPath(path, ToColor(solid.color));
}

} // namespace

bool Renderer::Render(const Project &of, ItemId composition, qint32 frame, QImage *image)
{
    project = &of;
    messages.clear();
    writtenPixels = 0;
    isCostly = false;
    const Item *item = of.Find(composition);
    const Composition *found = of.FindComposition(composition);
    if (!found) {
        *image = QImage();
        Tell(QStringLiteral("There is no composition with the number %1").arg(composition));
        return false;
    }
    const bool fits = image->size() == found->size
        && image->format() == QImage::Format_ARGB32_Premultiplied && image->isDetached();
    if (!fits) {
        *image = NewFrame(found->size);
    }
    if (image->isNull()) {
        Tell(QStringLiteral("The composition ") + CannotBeDrawn(*item));
        return false;
    }
    if (frame < 0 || frame >= FrameCount(*found)) {
        image->fill(background ? ToColor(found->background) : QColor(Qt::transparent));
        return true;
    }
    const int readings = cache.Readings();
    DrawComposition(*item, found->rate.FrameTime(frame), background, image);
    isCostly = isCostly || cache.Readings() != readings;
    return true;
}

void Renderer::DrawComposition(
    const Item &item, const Time &time, bool withBackground, QImage *image)
{
    const Composition &composition = *item.AsComposition();
    QVector<Picture> pictures; // the topmost first
    bool covered = false;
    for (const LayerPtr &layer : composition.layers) {
        Picture picture;
        if (!Look(composition, *layer, time, &picture))
            continue;
        pictures << picture;
        covered = Covers(picture, composition.size);
        if (covered)
            break; // nothing below it can be seen
    }
    if (!covered) { // else every pixel is written anyway
        image->fill(withBackground ? ToColor(composition.background) : QColor(Qt::transparent));
        writtenPixels += Area(image->rect());
    }
    QPainter painter(image);
    painter.setRenderHints(QPainter::SmoothPixmapTransform | QPainter::Antialiasing);
    for (auto picture = pictures.crbegin(); picture != pictures.crend(); ++picture)
        Draw(*picture, time, &painter);
}

bool Renderer::Look(
    const Composition &composition, const Layer &layer, const Time &time, Picture *found)
{
    const Item *source = project->SourceOf(layer);
    if (layer.kind != LayerKind::Source || !source || !IsInBar(layer, time))
        return false;
    found->layer = &layer;
    found->source = source;
    found->opacity = LayerOpacity(layer, time);
    found->matrix = LayerMatrix(composition, layer, time);
    if (found->opacity <= 0 || !IsDrawable(found->matrix))
        return false;
    const Time layerTime = layer.ToLayerTime(time);
    for (const LayerEffect &effect : layer.effects)
        found->hasEffects = found->hasEffects || Alters(effect, layerTime);
    if (const Footage *footage = source->AsFootage())
        return LookAtFootage(layer, *footage, time, found);
    if (const Composition *nested = source->AsComposition())
        return ShownTime(layer, *nested, time, &found->nestedTime);
    return source->AsSolid() && !source->AsSolid()->size.isEmpty();
}

bool Renderer::LookAtFootage(
    const Layer &layer, const Footage &footage, const Time &time, Picture *found)
{
    const int position = ShownImage(layer, footage, time);
    if (position < 0)
        return false;
    found->drawing = cache.Get(footage.PathOf(position));
    if (!found->drawing.IsReadable()) {
        Tell(found->drawing.error);
        found->drawing.image = Placeholder(footage.size);
        found->drawing.drawn = found->drawing.image.rect();
        found->hasEffects = false; // nothing may make it look like a drawing
        return !found->drawing.image.isNull();
    }
    // A series of drawings without alpha can have no transparent image: its number 0 is written
    // black, and stands for no drawing all the same.
    return !(footage.isSeries && position == 0 && found->drawing.isBlank);
}

bool Renderer::Covers(const Picture &picture, const QSize &size)
{
    QPoint by;
    return picture.drawing.IsOpaque() && picture.opacity >= 1 && !picture.hasEffects
        && IsWholeMove(picture.matrix, &by)
        && QRect(by, picture.drawing.image.size()).contains(QRect(QPoint(0, 0), size));
}

/// Adds what a picture costs in a frame.
void Renderer::Weigh(const Picture &picture, const QRect &frame)
{
    QPoint by;
    if (picture.hasEffects || !IsWholeMove(picture.matrix, &by)) {
        isCostly = true;
        return;
    }
    const QRect part = picture.drawing.image.isNull()
        ? QRect(QPoint(0, 0), picture.source->Dimensions())
        : picture.drawing.drawn;
    writtenPixels += Area(part.translated(by).intersected(frame));
}

void Renderer::Draw(const Picture &picture, const Time &time, QPainter *painter)
{
    Weigh(picture, painter->viewport());
    const Solid *solid = picture.source->AsSolid();
    if (solid && !picture.hasEffects) {
        DrawSolid(*solid, picture.matrix, picture.opacity, painter);
        return;
    }
    Raster raster;
    if (!MakeRaster(picture, &raster))
        return;
    const Time layerTime = picture.layer->ToLayerTime(time);
    for (const LayerEffect &effect : picture.layer->effects) {
        if (picture.hasEffects && Alters(effect, layerTime)
            && !ApplyEffect(effect, layerTime, &raster))
            Tell(QStringLiteral("There is no memory for an effect on a layer of \"%1\"")
                     .arg(QString::fromUtf8(picture.source->name)));
    }
    // An effect may put something where there was nothing.
    const bool isDrawing = !picture.drawing.image.isNull() && !picture.hasEffects;
    const QRect part = isDrawing ? picture.drawing.drawn : raster.image.rect();
    if (!part.isEmpty())
        DrawImage(raster, part, picture.matrix, picture.opacity, painter);
    if (picture.source->AsComposition())
        GiveBack(std::move(raster.image));
}

bool Renderer::MakeRaster(const Picture &picture, Raster *raster)
{
    if (!picture.drawing.image.isNull()) {
        raster->image = picture.drawing.image; // shared with the cache until an effect writes
        return true;
    }
    const QSize size = picture.source->Dimensions();
    if (depth >= kDeepestNesting) {
        Tell(QStringLiteral("The composition \"%1\" is nested too deeply")
                 .arg(QString::fromUtf8(picture.source->name)));
        return false;
    }
    raster->image = TakeImage(size);
    if (raster->image.isNull()) {
        Tell(QStringLiteral("The source ") + CannotBeDrawn(*picture.source));
        return false;
    }
    if (const Solid *solid = picture.source->AsSolid()) {
        raster->image.fill(ToColor(solid->color));
        return true;
    }
    ++depth;
    DrawComposition(*picture.source, picture.nestedTime, /*withBackground=*/false, &raster->image);
    --depth;
    return true;
}

QImage Renderer::Placeholder(const QSize &size)
{
    if (placeholder.size() == size || !IsSizeAllowed(size))
        return placeholder.size() == size ? placeholder : QImage();
    constexpr int square = 8; // pixels
    placeholder = QImage(size, QImage::Format_RGB32);
    if (placeholder.isNull())
        return placeholder;
    for (int y = 0; y < size.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(placeholder.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            line[x] = (x / square + y / square) % 2 ? qRgb(255, 255, 255) : qRgb(160, 160, 160);
    }
    QPainter painter(&placeholder);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(220, 0, 0), qMax(2.0, size.height() / 60.0)));
    painter.drawLine(QPointF(0, 0), QPointF(size.width(), size.height()));
    painter.drawLine(QPointF(size.width(), 0), QPointF(0, size.height()));
    return placeholder;
}

QImage Renderer::TakeImage(const QSize &size)
{
    for (int i = 0; i < spares.size(); ++i) {
        if (spares[i].size() == size)
            return spares.takeAt(i);
    }
    return NewFrame(size);
}

void Renderer::GiveBack(QImage &&image)
{
    if (spares.size() == kMostSpares)
        spares.removeFirst();
    spares << std::move(image);
}

void Renderer::Tell(const QString &message)
{
    if (!messages.contains(message))
        messages << message;
}

} // namespace rostrum
