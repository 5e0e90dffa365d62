// The splash: a crown of water that rises, breaks into drops and leaves rings behind.
#include "Drawings.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace {

const QColor kInk(44, 58, 92);
const QColor kWater(178, 216, 240, 235);
const QColor kLight(240, 250, 255);

constexpr int kDrops = 11;
constexpr double kCentre = 210;
constexpr double kCrownEnd = 0.55; // of the time: the crown has fallen back by then

QPen Ink(double width)
{
    return { kInk, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin };
}

/// Rings on the water, each a little later than the one within.
void Rings(QPainter &painter, double time)
{
    painter.setBrush(Qt::NoBrush);
    for (int ring = 0; ring < 3; ++ring) {
        const double age = time - ring * 0.16;
        if (age <= 0)
            continue;
        const double width = 26 + 170 * std::sqrt(age);
        painter.setPen(Ink(qMax(0.8, 5 * (1 - age))));
        painter.drawEllipse(QPointF(kCentre, kSplashGround), width, width * 0.17);
    }
}

/// The sheet of water around the foot, with a ragged upper edge.
void Crown(QPainter &painter, double time)
{
    if (time >= kCrownEnd)
        return;
    const double height = 104 * std::sin(time / kCrownEnd * 3.14159);
    const double foot = 34 + 50 * time;
    const double rim = foot + 46 * std::sqrt(time);
    constexpr int kTeeth = 7;
    QPainterPath path(QPointF(kCentre - foot, kSplashGround));
    for (int tooth = 0; tooth <= kTeeth; ++tooth) {
        const double across = 2.0 * tooth / kTeeth - 1;
        const double reach = height * (0.72 + 0.28 * std::cos(5.1 * tooth));
        const QPointF tip(kCentre + across * rim, kSplashGround - reach);
        if (tooth > 0) {
            const double between = across - 1.0 / kTeeth;
            path.quadTo(
                QPointF(kCentre + between * rim * 0.97, kSplashGround - height * 0.34), tip);
        } else {
            path.quadTo(QPointF(kCentre - rim * 0.86, kSplashGround - reach * 0.3), tip);
        }
    }
    path.quadTo(QPointF(kCentre + rim * 0.86, kSplashGround - height * 0.2),
        QPointF(kCentre + foot, kSplashGround));
    path.quadTo(QPointF(kCentre, kSplashGround + 16), QPointF(kCentre - foot, kSplashGround));
    painter.setPen(Ink(4));
    painter.setBrush(kWater);
    painter.drawPath(path);
    painter.setPen(QPen(kLight, 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(kCentre - foot * 0.8, kSplashGround - height * 0.42, foot * 1.1, 30),
        100 * 16, 70 * 16);
}

/// A drop's way is a throw; it shrinks as it flies and is gone at the ground.
void Drops(QPainter &painter, double time)
{
    for (int drop = 0; drop < kDrops; ++drop) {
        const double spread = 2.0 * drop / (kDrops - 1) - 1;
        const double start = 0.08 + 0.05 * (drop % 3);
        const double age = time - start;
        const double speed = 330 + 70 * std::cos(2.3 * drop);
        const QPointF at(kCentre + spread * (30 + 205 * age),
            kSplashGround - 18 - speed * age + 560 * age * age);
        const double size = (9 + 4 * std::cos(1.7 * drop)) * (1 - 0.6 * age);
        if (age <= 0 || at.y() > kSplashGround)
            continue;
        painter.setPen(Ink(3));
        painter.setBrush(kWater);
        painter.drawEllipse(at, size * 0.85, size);
        painter.setPen(Qt::NoPen);
        painter.setBrush(kLight);
        painter.drawEllipse(at - QPointF(size * 0.28, size * 0.34), size * 0.22, size * 0.28);
    }
}

} // namespace

QImage SplashDrawing(int number)
{
    QImage image(420, 260, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double time = (number - 0.4) / kSplashDrawings; // 0 to 1
    Rings(painter, time);
    Crown(painter, time);
    Drops(painter, time);
    return image;
}
