// The street: what does not move.
#include "Drawings.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 720;
constexpr int kPavement = 560; // y of the houses' foot
constexpr int kKerb = 604;

const QColor kInk(34, 34, 58);
const QColor kLamp(255, 214, 120);

struct House
{
    int left, width, top; // pixels
    QColor wall;
    int lit; // a bit for each window
};

const House kHouses[] = { { -20, 190, 250, QColor(74, 78, 122), 0x25 },
    { 170, 150, 190, QColor(96, 84, 128), 0x92 }, { 320, 210, 290, QColor(70, 92, 130), 0x4d },
    { 530, 130, 210, QColor(110, 86, 120), 0x18 }, { 660, 230, 260, QColor(78, 76, 116), 0xa6 },
    { 890, 160, 180, QColor(92, 96, 136), 0x61 }, { 1050, 250, 270, QColor(84, 80, 124), 0x3a } };

void Sky(QPainter &painter)
{
    QLinearGradient dusk(0, 0, 0, kPavement);
    dusk.setColorAt(0, QColor(36, 40, 84));
    dusk.setColorAt(0.55, QColor(104, 84, 138));
    dusk.setColorAt(1, QColor(226, 144, 128));
    painter.fillRect(0, 0, kWidth, kHeight, dusk);
    painter.setPen(Qt::NoPen);
    for (int star = 0; star < 46; ++star) {
        const int x = star * 367 % kWidth, y = star * 211 % 230;
        painter.setBrush(QColor(255, 250, 226, 70 + star * 53 % 150));
        painter.drawEllipse(QPointF(x, y), 1.2 + star % 3 * 0.5, 1.2 + star % 3 * 0.5);
    }
    for (int glow = 5; glow >= 0; --glow) {
        painter.setBrush(QColor(255, 242, 206, glow == 0 ? 255 : 14));
        painter.drawEllipse(QPointF(1010, 104), 40 + glow * 13, 40 + glow * 13);
    }
}

void Hills(QPainter &painter)
{
    QPainterPath hills(QPointF(0, kPavement));
    hills.lineTo(0, 330);
    hills.cubicTo(220, 210, 360, 330, 520, 290);
    hills.cubicTo(760, 220, 900, 360, 1080, 280);
    hills.cubicTo(1160, 250, 1230, 280, kWidth, 300);
    hills.lineTo(kWidth, kPavement);
    painter.setBrush(QColor(86, 72, 122));
    painter.drawPath(hills);
}

void Windows(QPainter &painter, const House &house)
{
    const int columns = house.width / 62;
    const int gap = house.width / columns;
    int number = 0;
    for (int y = house.top + 34; y < kPavement - 96; y += 84) {
        for (int column = 0; column < columns; ++column, ++number) {
            const QRectF frame(house.left + gap * column + (gap - 34) / 2.0, y, 34, 48);
            const bool lit = house.lit >> (number % 8) & 1;
            painter.setPen(QPen(kInk, 3));
            painter.setBrush(lit ? kLamp : house.wall.darker(150));
            painter.drawRoundedRect(frame, 3, 3);
            const double middle = frame.center().x(), bar = frame.top() + 18;
            painter.drawLine(QPointF(middle, frame.top()), QPointF(middle, frame.bottom()));
            painter.drawLine(QPointF(frame.left(), bar), QPointF(frame.right(), bar));
        }
    }
}

void DrawHouse(QPainter &painter, const House &house)
{
    painter.setPen(QPen(kInk, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(house.wall.darker(160));
    const QPolygonF roof({ QPointF(house.left - 8, house.top),
        QPointF(house.left + house.width * 0.5, house.top - 74),
        QPointF(house.left + house.width + 8, house.top) });
    painter.drawPolygon(roof);
    painter.setBrush(house.wall);
    painter.drawRect(house.left, house.top, house.width, kPavement - house.top);
    Windows(painter, house);
    painter.setPen(QPen(kInk, 4));
    painter.setBrush(house.wall.darker(190));
    painter.drawRoundedRect(house.left + house.width / 2 - 22, kPavement - 82, 44, 82, 6, 6);
}

void Lantern(QPainter &painter, int x)
{
    painter.setPen(Qt::NoPen);
    for (int glow = 6; glow > 0; --glow) {
        painter.setBrush(QColor(255, 214, 120, 13));
        painter.drawEllipse(QPointF(x, 318), glow * 26, glow * 26);
    }
    painter.setPen(QPen(kInk, 9, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(x, 340, x, kKerb - 12);
    painter.setPen(QPen(kInk, 4));
    painter.setBrush(kLamp);
    painter.drawPolygon(QPolygonF({ QPointF(x - 16, 300), QPointF(x + 16, 300),
        QPointF(x + 11, 340), QPointF(x - 11, 340) }));
    painter.setBrush(kInk);
    painter.drawPolygon(QPolygonF({ QPointF(x - 22, 300), QPointF(x, 280), QPointF(x + 22, 300) }));
}

void Road(QPainter &painter, const QVector<int> &puddles)
{
    painter.setPen(Qt::NoPen);
    painter.fillRect(0, kPavement, kWidth, kKerb - kPavement, QColor(108, 98, 132));
    painter.fillRect(0, kKerb, kWidth, 8, QColor(58, 54, 86));
    QLinearGradient wet(0, kKerb + 8, 0, kHeight);
    wet.setColorAt(0, QColor(70, 70, 104));
    wet.setColorAt(1, QColor(46, 48, 80));
    painter.fillRect(0, kKerb + 8, kWidth, kHeight - kKerb - 8, wet);
    for (int streak = 0; streak < 40; ++streak) {
        painter.setBrush(QColor(150, 140, 176, 34));
        painter.drawRoundedRect(
            streak * 293 % kWidth, kKerb + 16 + streak * 37 % 96, 30 + streak * 17 % 70, 3, 2, 2);
    }
    for (const int x : puddles) {
        painter.setPen(QPen(QColor(34, 36, 66), 3));
        painter.setBrush(QColor(112, 120, 168));
        painter.drawEllipse(QPointF(x, kStreetGround), 104, 15);
        painter.setPen(QPen(QColor(226, 190, 170, 150), 3, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(x - 52, kStreetGround - 4, x - 6, kStreetGround - 5);
        painter.drawLine(x + 14, kStreetGround + 5, x + 46, kStreetGround + 4);
    }
}

} // namespace

QImage Street(const QVector<int> &puddles)
{
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    Sky(painter);
    Hills(painter);
    for (const House &house : kHouses)
        DrawHouse(painter, house);
    Road(painter, puddles);
    for (const int x : { 96, 500, 960 })
        Lantern(painter, x);
    return image;
}
