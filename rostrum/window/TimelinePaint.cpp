#include "TimelinePaint.h"

#include <QPainterPath>

#include <array>

namespace rostrum {
namespace {

constexpr double kKeyRadius = 5; // pixels

QColor Mixed(const QColor &a, const QColor &b, double part)
{
    const auto mix = [part](int from, int to) { return qRound(from + (to - from) * part); };
    return { mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()) };
}

/// One side of a key's outline, the right one from the top down or the left one from below up.
void AddSide(QPainterPath &path, Interpolation kind, bool right)
{
    constexpr double radius = kKeyRadius;
    constexpr double square = kKeyRadius * 0.82;
    const double x = right ? 1 : -1;
    const double first = right ? -1 : 1; // the end of the side where the path comes in
    switch (kind) {
    case Interpolation::Linear:
        path.lineTo(0, first * radius);
        path.lineTo(x * radius, 0);
        path.lineTo(0, -first * radius);
        break;
    case Interpolation::Hold:
        path.lineTo(0, first * square);
        path.lineTo(x * square, first * square);
        path.lineTo(x * square, -first * square);
        path.lineTo(0, -first * square);
        break;
    case Interpolation::Bezier:
        path.lineTo(0, first * radius);
        path.arcTo(QRectF(-radius, -radius, 2 * radius, 2 * radius), right ? 90 : 270, -180);
        break;
    }
}

QPainterPath NewKeyShape(Interpolation in, Interpolation out)
{
    QPainterPath path(QPointF(0, -kKeyRadius * 0.82));
    AddSide(path, out, /*right=*/true);
    AddSide(path, in, /*right=*/false);
    path.closeSubpath();
    return path;
}

/// All nine shapes are made once: a long sheet shows hundreds of keys.
const QPainterPath &KeyShape(Interpolation in, Interpolation out)
{
    static const auto shapes = [] {
        std::array<QPainterPath, 9> made;
        for (int i = 0; i < 9; ++i)
            made[std::size_t(i)] = NewKeyShape(Interpolation(i / 3 + 1), Interpolation(i % 3 + 1));
        return made;
    }();
    return shapes[std::size_t((int(in) - 1) * 3 + int(out) - 1)];
}

} // namespace

TimelineColors::TimelineColors(const QPalette &palette)
    : row(palette.color(QPalette::Window))
    , streamRow(Mixed(row, palette.color(QPalette::Base), 0.45))
    , selectedRow(Mixed(row, QColor(80, 130, 190), 0.4))
    , line(Mixed(row, Qt::black, 0.35))
    , text(palette.color(QPalette::WindowText))
    , faintText(Mixed(text, row, 0.45))
    , key(Mixed(text, Qt::white, 0.3))
    , selectedKey(255, 186, 60)
    , now(96, 190, 255)
    , outside(0, 0, 0, 70)
{ }

void DrawKey(QPainter &painter, const QPointF &middle, Interpolation in, Interpolation out,
    const QColor &color, const QColor &edge)
{
    painter.setPen(QPen(edge, 1));
    painter.setBrush(color);
    painter.translate(middle);
    painter.drawPath(KeyShape(in, out));
    painter.translate(-middle);
}

void DrawElided(QPainter &painter, const QRect &place, const QString &text, Qt::TextElideMode mode)
{
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft,
        painter.fontMetrics().elidedText(text, mode, place.width()));
}

void DrawImageText(QPainter &painter, QRect place, const QString &text)
{
    const int equals = text.indexOf(QLatin1String(" = "));
    const QString number = equals < 0 ? QString() : text.left(equals + 3);
    DrawElided(painter, place, number);
    place.setLeft(place.left() + painter.fontMetrics().horizontalAdvance(number));
    DrawElided(
        painter, place, text.mid(number.size()), equals < 0 ? Qt::ElideRight : Qt::ElideLeft);
}

void DrawBar(QPainter &painter, const QRectF &bar, const QColor &color, bool selected)
{
    painter.setPen(selected ? QPen(color.lighter(165), 1.4) : QPen(color.darker(160), 1));
    painter.setBrush(selected ? color : Mixed(color, QColor(60, 60, 60), 0.25));
    painter.drawRoundedRect(bar.adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
}

} // namespace rostrum
