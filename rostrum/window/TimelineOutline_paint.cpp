// What the outline looks like; only the rows that are seen are drawn.
#include "ImageNumber.h"
#include "ItemText.h"
#include "TimelineOutline.h"
#include "TimelinePaint.h"

#include <QPaintEvent>

namespace rostrum {
namespace {

void DrawTriangle(QPainter &painter, const QPointF &middle, double size, int degrees)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(middle);
    painter.rotate(degrees);
    painter.setBrush(painter.pen().color());
    painter.setPen(Qt::NoPen);
    painter.drawPolygon(QPolygonF({ { -size / 2, -size }, { size, 0 }, { -size / 2, size } }));
    painter.restore();
}

/// At most two digits behind the point, none that say nothing.
QString NumberText(double number)
{
    QString text = QString::number(number, 'f', 2);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

} // namespace

QString TimelineOutline::ValueText(const TimelineRow &row, int component) const
{
    const Layer *layer = board.LayerOf(row);
    const Stream *stream = board.StreamOf(row);
    if (!layer || !stream)
        return {};
    const Time time = board.GetRate().FrameTime(board.GetSession().CurrentFrame());
    if (row.stream.id.IsTimeRemap())
        return QString::number(ImageAt(board.Shown(), *layer, time));
    return NumberText(stream->ValueAt(layer->ToLayerTime(time))[std::size_t(component)]);
}

void TimelineOutline::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const TimelineColors colors(palette());
    painter.fillRect(event->rect(), colors.row);
    const int high = TimelineRows::kRowHeight;
    const int first = qMax(0, (event->rect().top() + board.ScrollY()) / high);
    const int last
        = qMin(board.Rows().Count() - 1, (event->rect().bottom() + board.ScrollY()) / high);
    for (int row = first; row <= last; ++row) {
        if (event->region().intersects(QRect(0, TopOf(row), width(), high)))
            DrawRow(painter, row, event->region());
    }
    if (dragging)
        DrawDrop(painter);
    painter.setPen(colors.line);
    painter.drawLine(width() - 1, 0, width() - 1, height());
}

void TimelineOutline::DrawRow(QPainter &painter, int index, const QRegion &dirty)
{
    const TimelineColors colors(palette());
    const TimelineRow &row = board.Rows().At(index);
    const Layer *layer = board.LayerOf(row);
    if (!layer)
        return;
    const int top = TopOf(index);
    const QRect place(0, top, width(), TimelineRows::kRowHeight);
    const bool isSelected = row.isLayer && board.IsSelected(row.layer);
    painter.fillRect(place,
        isSelected        ? colors.selectedRow
            : row.isLayer ? colors.row
                          : colors.streamRow);
    painter.setPen(colors.line);
    painter.drawLine(place.bottomLeft(), place.bottomRight());
    painter.setPen(colors.text);
    if (row.isLayer)
        DrawLayer(painter, row, *layer, top, dirty);
    else
        DrawStream(painter, row, *layer, top);
}

/// While a composition plays only the drawing is dirty; the other cells are not even laid out then.
void TimelineOutline::DrawLayer(
    QPainter &painter, const TimelineRow &row, const Layer &layer, int top, const QRegion &dirty)
{
    const OutlineCells cells(width());
    const QRect drawing = cells.Rect(OutlineCells::Drawing, top);
    if (ImageCount(board.Shown(), layer) > 0) {
        const Time time = board.GetRate().FrameTime(board.GetSession().CurrentFrame());
        painter.setPen(TimelineColors(palette()).faintText);
        DrawImageText(
            painter, drawing, ImageText(board.Shown(), layer, ImageAt(board.Shown(), layer, time)));
    }
    if ((dirty & QRect(0, top, width(), drawing.height())).subtracted(drawing).isEmpty())
        return;
    const QRect arrow = cells.Rect(OutlineCells::Arrow, top);
    painter.setPen(TimelineColors(palette()).text);
    DrawTriangle(painter, QRectF(arrow).center(), 4, board.IsUnfolded(row.layer) ? 90 : 0);
    const QRect swatch = cells.Rect(OutlineCells::Swatch, top).adjusted(0, 4, 0, -4);
    painter.fillRect(swatch, LabelColor(layer.label));
    DrawNumberAndName(painter, row, layer, cells.Rect(OutlineCells::Name, top));
    DrawParent(painter, layer, cells.Rect(OutlineCells::Parent, top));
}

void TimelineOutline::DrawNumberAndName(
    QPainter &painter, const TimelineRow &row, const Layer &layer, QRect place)
{
    const TimelineColors colors(palette());
    painter.setPen(colors.faintText);
    const QString number = QString::number(row.index + 1);
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft, number);
    place.setLeft(place.left() + qMax(22, fontMetrics().horizontalAdvance(number) + 8));
    painter.setPen(colors.text);
    DrawElided(painter, place, LayerText(board.Shown(), layer));
}

void TimelineOutline::DrawParent(QPainter &painter, const Layer &layer, QRect place)
{
    const TimelineColors colors(palette());
    painter.setPen(colors.faintText);
    DrawTriangle(painter, QPointF(place.right() - 5, QRectF(place).center().y()), 3, 90);
    place.setRight(place.right() - 12);
    const Composition *composition = board.ShownComp();
    const int index = layer.parent && composition ? composition->IndexOf(layer.parent) : -1;
    painter.setPen(index < 0 ? colors.faintText : colors.text);
    DrawElided(painter, place,
        index < 0 ? tr("None")
                  : QStringLiteral("%1  %2").arg(index + 1).arg(
                      LayerText(board.Shown(), *composition->layers[index])));
}

void TimelineOutline::DrawStream(
    QPainter &painter, const TimelineRow &row, const Layer &layer, int top)
{
    const TimelineColors colors(palette());
    const OutlineCells cells(width());
    DrawKeyButton(painter, row, top);
    QRect name = cells.Rect(OutlineCells::Name, top);
    name.setLeft(cells.Rect(OutlineCells::KeyBehind, top).right() + 6);
    painter.setPen(colors.text);
    // Of an effect's parameters the ends tell one from the next: "Balance des couleurs (TLS): ...".
    DrawElided(
        painter, name, row.stream.name, row.stream.id.effect == 0 ? Qt::ElideRight : Qt::ElideLeft);
    painter.setPen(QColor(150, 195, 240)); // what can be typed over
    for (int i = 0; i < row.stream.components; ++i)
        DrawElided(painter, cells.Rect(OutlineCells::Value, top, i),
            ValueText(row, i)
                + (*row.stream.unit ? QLatin1Char(' ') + QString::fromUtf8(row.stream.unit)
                                    : QString()));
    if (!row.stream.id.IsTimeRemap())
        return;
    QRect file = cells.Rect(OutlineCells::Value, top, 1);
    file.setRight(width() - 6);
    const Time time = board.GetRate().FrameTime(board.GetSession().CurrentFrame());
    painter.setPen(colors.faintText);
    DrawImageText(
        painter, file, ImageText(board.Shown(), layer, ImageAt(board.Shown(), layer, time)));
}

void TimelineOutline::DrawKeyButton(QPainter &painter, const TimelineRow &row, int top)
{
    const TimelineColors colors(palette());
    const OutlineCells cells(width());
    const Layer *layer = board.LayerOf(row);
    const Stream *stream = board.StreamOf(row);
    if (!layer || !stream)
        return;
    const QPointF middle = QRectF(cells.Rect(OutlineCells::KeyButton, top)).center();
    const Rate rate = board.GetRate();
    const int here = KeyInFrame(*stream, *layer, rate, board.GetSession().CurrentFrame());
    painter.setRenderHint(QPainter::Antialiasing);
    const Interpolation in = here < 0 ? Interpolation::Linear : stream->KeyAt(here).in;
    const Interpolation out = here < 0 ? Interpolation::Linear : stream->KeyAt(here).out;
    DrawKey(painter, middle, in, out, here < 0 ? QColor(Qt::transparent) : colors.selectedKey,
        stream->HasKeys() ? colors.key : colors.faintText);
    if (!stream->HasKeys())
        return;
    painter.setPen(colors.faintText);
    DrawTriangle(painter, QRectF(cells.Rect(OutlineCells::KeyBefore, top)).center(), 3.5, 180);
    DrawTriangle(painter, QRectF(cells.Rect(OutlineCells::KeyBehind, top)).center(), 3.5, 0);
}

/// Where the dragged layers would go.
void TimelineOutline::DrawDrop(QPainter &painter)
{
    const int y = board.Rows().TopOfGap(gap) - board.ScrollY();
    painter.fillRect(QRect(0, y - 1, width(), 3), TimelineColors(palette()).now);
}

} // namespace rostrum
