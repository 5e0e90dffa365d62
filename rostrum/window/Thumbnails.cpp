#include "Thumbnails.h"

#include "render/Placement.h"

#include <QImageReader>
#include <QPainter>

namespace rostrum {
namespace {

constexpr int kPause = 30; // ms between two pictures, so that typing and drawing go before

/// The picture in the middle of a field of the thumbnails' size.
QPixmap Framed(const QImage &image)
{
    QPixmap field(kThumbnailSize);
    field.fill(QColor(58, 58, 58));
    if (image.isNull())
        return field;
    const QImage small
        = image.scaled(kThumbnailSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&field);
    painter.drawImage((kThumbnailSize.width() - small.width()) / 2,
        (kThumbnailSize.height() - small.height()) / 2, small);
    return field;
}

} // namespace

Thumbnails::Thumbnails(Session &session, QObject *parent)
    : QObject(parent), session(session), renderer(session.Drawings())
{
    turn.setInterval(kPause);
    connect(&turn, &QTimer::timeout, this, &Thumbnails::OnTurn);
}

QPixmap Thumbnails::Of(ItemId item)
{
    const auto found = kept.constFind(item);
    if (found != kept.constEnd())
        return *found;
    if (!waiting.contains(item))
        waiting << item;
    if (!turn.isActive())
        turn.start();
    return Framed(QImage());
}

void Thumbnails::Clear()
{
    kept.clear();
    waiting.clear();
}

void Thumbnails::OnTurn()
{
    if (waiting.isEmpty()) {
        turn.stop();
        return;
    }
    const ItemId item = waiting.takeFirst();
    if (!session.GetProject().Find(item))
        return;
    kept.insert(item, Framed(Draw(item)));
    emit Ready(item);
}

QImage Thumbnails::Draw(ItemId id)
{
    const Item &item = *session.GetProject().Find(id);
    if (const Footage *footage = item.AsFootage())
        return DrawFootage(*footage);
    if (const Solid *solid = item.AsSolid()) {
        QImage image(kThumbnailSize, QImage::Format_RGB32);
        image.fill(QColor::fromRgbF(solid->color.red, solid->color.green, solid->color.blue));
        return image;
    }
    QImage image;
    if (const Composition *composition = item.AsComposition()) {
        const int frames = FrameCount(*composition);
        renderer.Render(session.GetProject(), id, frames / 2, &image);
        // unchecked: a composition that is too large shows the plain field
    }
    return image;
}

/// Formats that can do so are read small at once.
QImage Thumbnails::DrawFootage(const Footage &footage) const
{
    QImageReader reader(footage.PathOf(footage.files.size() / 2));
    const QSize size = reader.size();
    if (size.isValid())
        reader.setScaledSize(size.scaled(kThumbnailSize * 2, Qt::KeepAspectRatio));
    return reader.read();
}

} // namespace rostrum
