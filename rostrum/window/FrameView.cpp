#include "FrameView.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace rostrum {
namespace {

constexpr int kMargin = 12; // pixels around a fitted frame
constexpr double kNotch = 1.25; // zoom for a notch of the wheel
constexpr double kActionSafe = 0.9; // of width and height
constexpr double kTitleSafe = 0.8;
const QColor kTable(26, 26, 26);

QRectF Inside(const QRectF &rect, double part)
{
    QRectF inside(QPointF(), rect.size() * part);
    inside.moveCenter(rect.center());
    return inside;
}

} // namespace

FrameView::FrameView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frameView"));
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(120, 80);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void FrameView::SetFrame(const QImage &image, const QString &newText)
{
    const bool isOtherSize = image.size() != frameSize;
    frame = image;
    frameSize = image.size();
    scaled = QImage();
    text = newText;
    if (isOtherSize && fitted)
        Fit();
    update();
}

void FrameView::SetQuick(bool on)
{
    quick = on;
    update();
}

QRectF FrameView::FrameRect() const
{
    QRectF rect(QPointF(), QSizeF(frame.size()) * zoom);
    rect.moveCenter(QRectF(this->rect()).center() + centre);
    // On whole pixels, or a frame at 100 % would be blended.
    rect.moveTopLeft(QPointF(std::round(rect.x()), std::round(rect.y())));
    return rect;
}

void FrameView::SetZoom(double factor, const QPointF &fixed)
{
    const double held = qBound(kLeastZoom, factor, kMostZoom);
    const QPointF fromCentre = fixed - QRectF(rect()).center() - centre;
    centre += fromCentre * (1 - held / zoom);
    zoom = held;
    scaled = QImage();
    update();
    emit SigZoomed();
}

void FrameView::OnZoom(double factor)
{
    fitted = false;
    SetZoom(factor, QRectF(rect()).center());
}

void FrameView::OnFit()
{
    fitted = true;
    Fit();
}

void FrameView::Fit()
{
    centre = QPointF();
    const QSizeF room(qMax(1, width() - 2 * kMargin), qMax(1, height() - 2 * kMargin));
    const QSizeF size = frame.isNull() ? room : QSizeF(frame.size());
    SetZoom(qMin(room.width() / size.width(), room.height() / size.height()), QPointF());
    centre = QPointF();
}

void FrameView::OnChecker(bool on)
{
    checker = on;
    update();
}

void FrameView::OnSafeFrames(bool on)
{
    safeFrames = on;
    update();
}

void FrameView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (frame.isNull()) {
        painter.fillRect(rect(), kTable);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
            Qt::AlignCenter | Qt::TextWordWrap, text);
        return;
    }
    const QRectF target = FrameRect();
    // A frame that plays pays for each pixel: below the frame the table is not seen. Its edge may
    // lie inside a pixel.
    for (const QRect &part : QRegion(rect()) - target.toRect().adjusted(1, 1, -1, -1))
        painter.fillRect(part, kTable);
    if (checker)
        DrawChecker(painter, target);
    DrawFrame(painter, target);
    if (safeFrames)
        DrawSafeFrames(painter, target);
}

void FrameView::DrawFrame(QPainter &painter, const QRectF &target)
{
    if (!checker) // the background has covered every pixel: nothing is to be blended
        painter.setCompositionMode(QPainter::CompositionMode_Source);
    const QSize size = target.size().toSize().expandedTo(QSize(1, 1));
    if (zoom < 1 && !quick) {
        if (scaled.size() != size)
            scaled = frame.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        painter.drawImage(target.topLeft(), scaled);
    } else if (size == frame.size()) {
        painter.drawImage(target.topLeft(), frame);
    } else {
        painter.drawImage(target, frame); // larger: a pixel stays a square, to be looked at
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void FrameView::DrawChecker(QPainter &painter, const QRectF &target) const
{
    constexpr int square = 8; // pixels of the screen, at every zoom
    QPixmap tile(2 * square, 2 * square);
    tile.fill(QColor(102, 102, 102));
    QPainter cell(&tile);
    cell.fillRect(0, 0, square, square, QColor(150, 150, 150));
    cell.fillRect(square, square, square, square, QColor(150, 150, 150));
    cell.end();
    const QRect seen = target.toAlignedRect().intersected(rect());
    painter.drawTiledPixmap(seen, tile, seen.topLeft() - target.topLeft().toPoint());
}

void FrameView::DrawSafeFrames(QPainter &painter, const QRectF &target) const
{
    painter.setBrush(Qt::NoBrush);
    for (const int pass : { 0, 1 }) { // dark below light: seen on any drawing
        painter.setPen(pass == 0 ? QPen(QColor(0, 0, 0, 140), 3) : QPen(QColor(90, 210, 255), 1));
        painter.drawRect(Inside(target, kActionSafe));
        painter.drawRect(Inside(target, kTitleSafe));
        const QPointF middle = target.center();
        const double arm = qMin(target.width(), target.height()) / 40;
        painter.drawLine(middle - QPointF(arm, 0), middle + QPointF(arm, 0));
        painter.drawLine(middle - QPointF(0, arm), middle + QPointF(0, arm));
    }
}

void FrameView::resizeEvent(QResizeEvent *)
{
    if (fitted)
        Fit();
}

void FrameView::wheelEvent(QWheelEvent *event)
{
    const int turn = event->angleDelta().y() ? event->angleDelta().y() : event->angleDelta().x();
    if (turn != 0) {
        fitted = false;
        SetZoom(zoom * std::pow(kNotch, turn / 120.0), event->position());
    }
    event->accept();
}

void FrameView::mousePressEvent(QMouseEvent *event)
{
    emit SigTouched();
    if (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton)
        return;
    dragging = true;
    grabbed = event->pos();
}

void FrameView::mouseMoveEvent(QMouseEvent *event)
{
    if (!dragging || event->pos() == grabbed)
        return;
    fitted = false;
    setCursor(Qt::ClosedHandCursor);
    centre += event->pos() - grabbed;
    grabbed = event->pos();
    update();
    emit SigZoomed();
}

void FrameView::mouseReleaseEvent(QMouseEvent *)
{
    dragging = false;
    unsetCursor();
}

void FrameView::mouseDoubleClickEvent(QMouseEvent *)
{
    OnFit();
}

} // namespace rostrum
