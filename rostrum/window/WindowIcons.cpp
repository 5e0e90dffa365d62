#include "WindowIcons.h"

#include <QPainter>
#include <QPainterPath>

namespace rostrum {
namespace {

constexpr int kSide = 16; // pixels
constexpr int kFiner = 4; // drawn larger, so that a dense screen has something to show

void Triangle(QPainter &painter, double from, double to)
{
    painter.drawPolygon(QPolygonF({ { from, 3 }, { to, 8 }, { from, 13 } }));
}

void Bar(QPainter &painter, double x)
{
    painter.drawRect(QRectF(x, 3, 2, 10));
}

void DrawLoop(QPainter &painter)
{
    const QColor color = painter.brush().color();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 1.6));
    painter.drawArc(QRectF(2.5, 3.5, 11, 9), 60 * 16, 300 * 16);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPolygon(QPolygonF({ { 10, 1 }, { 15, 4.2 }, { 10, 7.4 } }));
}

void DrawFit(QPainter &painter)
{
    for (const int turn : { 0, 90, 180, 270 }) {
        painter.save();
        painter.translate(8, 8);
        painter.rotate(turn);
        painter.drawRect(QRectF(-6, -6, 4, 1.6));
        painter.drawRect(QRectF(-6, -6, 1.6, 4));
        painter.restore();
    }
    painter.drawRect(QRectF(5.5, 6.5, 5, 3));
}

void DrawChecker(QPainter &painter)
{
    const QColor color = painter.brush().color();
    for (int cell = 0; cell < 16; ++cell) {
        const int x = cell % 4;
        const int y = cell / 4;
        QColor shade = color;
        shade.setAlphaF((x + y) % 2 ? 0.25 : 1.0);
        painter.fillRect(QRectF(2 + 3 * x, 2 + 3 * y, 3, 3), shade);
    }
}

void DrawSafeFrames(QPainter &painter)
{
    const QColor color = painter.brush().color();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 1.2));
    painter.drawRect(QRectF(1.5, 3, 13, 10));
    painter.drawRect(QRectF(4.5, 5.5, 7, 5));
}

void Draw(QPainter &painter, IconShape shape)
{
    switch (shape) {
    case IconShape::First:
        Bar(painter, 3);
        Triangle(painter, 13, 6);
        break;
    case IconShape::Back:
        Triangle(painter, 8, 2);
        Bar(painter, 10);
        break;
    case IconShape::Play:
        Triangle(painter, 4, 13);
        break;
    case IconShape::Stop:
        painter.drawRect(QRectF(4, 4, 8, 8));
        break;
    case IconShape::Forward:
        Bar(painter, 4);
        Triangle(painter, 8, 14);
        break;
    case IconShape::Last:
        Triangle(painter, 3, 10);
        Bar(painter, 11);
        break;
    case IconShape::Loop:
        DrawLoop(painter);
        break;
    case IconShape::Fit:
        DrawFit(painter);
        break;
    case IconShape::Checker:
        DrawChecker(painter);
        break;
    case IconShape::SafeFrames:
        DrawSafeFrames(painter);
        break;
    }
}

QPixmap Picture(IconShape shape, const QColor &color)
{
    QPixmap picture(kSide * kFiner, kSide * kFiner);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(kFiner, kFiner);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    Draw(painter, shape);
    return picture;
}

} // namespace

QIcon NewIcon(IconShape shape, const QPalette &palette)
{
    const QColor &color = palette.color(QPalette::Active, QPalette::ButtonText);
    QColor faint = color;
    faint.setAlphaF(0.35);
    QIcon icon(Picture(shape, color));
    icon.addPixmap(Picture(shape, faint), QIcon::Disabled);
    return icon;
}

} // namespace rostrum
