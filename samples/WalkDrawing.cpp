// The walk on the spot: ink and colour on transparent ground.
#include "Drawings.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace {

constexpr int kSize = 480; // pixels
constexpr double kStride = kStepLength / 2.0;
constexpr double kTurn = 2 * 3.14159265358979323846;

const QColor kInk(38, 34, 46);
const QColor kCoat(226, 88, 62);
const QColor kCoatShade(178, 62, 52);
const QColor kTrousers(58, 84, 128);
const QColor kTrousersShade(42, 62, 98);
const QColor kSkin(250, 214, 178);
const QColor kHat(244, 190, 62);

struct Limb
{
    QPointF root, joint, end;
};

/// Two bones of equal length from a root to an end, the joint bent to one side.
Limb Bend(const QPointF &root, const QPointF &wanted, double bone, double side)
{
    const QPointF line = wanted - root;
    const double reach = std::hypot(line.x(), line.y());
    const double length = qMin(reach, 2 * bone - 0.5);
    const QPointF along = line / reach;
    const QPointF end = root + along * length;
    const double away = std::sqrt(bone * bone - length * length / 4);
    const QPointF joint
        = root + along * (length / 2) + QPointF(-along.y(), along.x()) * away * side;
    return { root, joint, end };
}

void Stroke(QPainter &painter, const Limb &limb, const QColor &color, double width)
{
    QPainterPath path(limb.root);
    path.quadTo(limb.joint + (limb.joint - (limb.root + limb.end) / 2) * 0.4, limb.end);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(kInk, width + 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
}

void Shape(QPainter &painter, const QPainterPath &path, const QColor &color)
{
    painter.setPen(QPen(kInk, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(color);
    painter.drawPath(path);
}

/// The foot's way in one step: back along the ground, forward in an arc.
QPointF Foot(double phase)
{
    const double x = 240 + kStride * std::cos(phase);
    const double lift = qMax(0.0, -std::sin(phase)) * 46;
    return { x, kWalkGround - lift };
}

void Leg(QPainter &painter, const QPointF &hip, double phase, const QColor &color)
{
    const QPointF foot = Foot(phase);
    const Limb leg = Bend(hip, foot - QPointF(0, 14), 74, -1);
    Stroke(painter, leg, color, 30);
    const double tilt = qMax(0.0, -std::sin(phase)) * 24;
    painter.save();
    painter.translate(leg.end + QPointF(0, 6));
    painter.rotate(tilt);
    QPainterPath shoe;
    shoe.moveTo(-20, -10);
    shoe.cubicTo(-24, 14, -20, 16, 0, 14);
    shoe.lineTo(34, 14);
    shoe.cubicTo(42, 2, 18, -6, 12, -12);
    shoe.closeSubpath();
    Shape(painter, shoe, kInk.lighter(150));
    painter.restore();
}

void Arm(QPainter &painter, const QPointF &shoulder, double swing, const QColor &color)
{
    const QPointF hand
        = shoulder + QPointF(62 * std::cos(swing), 92 - 14 * std::fabs(std::cos(swing)));
    const Limb arm = Bend(shoulder, hand, 58, 1);
    Stroke(painter, arm, color, 24);
    QPainterPath fist;
    fist.addEllipse(arm.end, 16, 15);
    Shape(painter, fist, kSkin);
}

void Body(QPainter &painter, const QPointF &hip, const QPointF &neck)
{
    QPainterPath coat;
    coat.moveTo(neck + QPointF(-26, -2));
    coat.cubicTo(neck + QPointF(-58, 30), hip + QPointF(-58, -30), hip + QPointF(-54, 22));
    coat.cubicTo(hip + QPointF(-20, 34), hip + QPointF(24, 34), hip + QPointF(56, 20));
    coat.cubicTo(hip + QPointF(56, -30), neck + QPointF(56, 30), neck + QPointF(28, -2));
    coat.closeSubpath();
    Shape(painter, coat, kCoat);
    painter.setBrush(kHat);
    for (int button = 0; button < 3; ++button)
        painter.drawEllipse(neck + QPointF(30 - button * 2, 30 + button * 32), 6, 6);
}

void Head(QPainter &painter, const QPointF &neck)
{
    QPainterPath head;
    head.addEllipse(neck + QPointF(8, -48), 56, 52);
    Shape(painter, head, kSkin);
    QPainterPath nose;
    nose.addEllipse(neck + QPointF(64, -44), 15, 12);
    Shape(painter, nose, kSkin.darker(108));
    painter.setBrush(kInk);
    painter.drawEllipse(neck + QPointF(34, -60), 5, 8);
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(QRectF(neck + QPointF(14, -40), QSizeF(38, 24)), 200 * 16, 120 * 16);
    QPainterPath hat;
    hat.moveTo(neck + QPointF(-62, -78));
    hat.cubicTo(neck + QPointF(-20, -92), neck + QPointF(40, -96), neck + QPointF(88, -76));
    hat.lineTo(neck + QPointF(54, -84));
    hat.cubicTo(neck + QPointF(50, -142), neck + QPointF(-34, -142), neck + QPointF(-40, -82));
    hat.closeSubpath();
    Shape(painter, hat, kHat);
}

} // namespace

QImage WalkDrawing(int number)
{
    QImage image(kSize, kSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double phase = kTurn * (number - 1) / kWalkDrawings;
    const double bob = 9 * std::cos(2 * phase); // low on the wide step, high in passing
    const QPointF hip(236, 286 + bob);
    const QPointF neck(244, 176 + bob * 1.2);
    const QPointF shoulder = neck + QPointF(2, 26);
    Arm(painter, shoulder, kTurn / 4 + 0.9 * std::cos(phase + kTurn / 2), kCoatShade);
    Leg(painter, hip, phase + kTurn / 2, kTrousersShade);
    Leg(painter, hip, phase, kTrousers);
    Body(painter, hip, neck);
    Head(painter, neck);
    Arm(painter, shoulder, kTurn / 4 + 0.9 * std::cos(phase), kCoat.lighter(108));
    return image;
}
