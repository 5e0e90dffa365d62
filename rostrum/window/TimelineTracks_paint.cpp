// What the tracks look like. Only the rows and keys that are seen are looked at: the time that a
// paint takes depends on the pixels, not on the length of the composition.
#include "ImageNumber.h"
#include "TimelinePaint.h"
#include "TimelineTracks.h"

#include <QPaintEvent>
#include <QtMath>

#include <cmath>

namespace rostrum {
namespace {

constexpr double kLeastWay = 3; // pixels between two keys that are both drawn
constexpr double kTextGap = 8; // pixels from a key to its number

/// Calls `show(index, x, room)` for the keys from the left edge to the right; of keys closer
/// than can be seen, one stands for all. `room` is the way to the next key, in pixels.
template <typename Show>
void ForSeenKeys(const Stream &stream, const Layer &layer, const Rate &rate, const TimeScale &scale,
    int width, const Show &show)
{
    const auto timeAt
        = [&](double x) { return layer.ToLayerTime(rate.FrameTime(scale.FrameAt(x))); };
    // One key more to the left: the run that it begins may reach in.
    int index = qMax(0, stream.KeysBefore(timeAt(-kLeastWay)) - 1);
    while (index < stream.KeyCount()) {
        const double x = MiddleOf(layer, stream.KeyAt(index).time, rate, scale);
        if (x > width + kLeastWay)
            return;
        int next = index + 1;
        if (next < stream.KeyCount()
            && MiddleOf(layer, stream.KeyAt(next).time, rate, scale) - x < kLeastWay)
            next = qMax(next, stream.KeysBefore(timeAt(x + kLeastWay)));
        const double room = next < stream.KeyCount()
            ? MiddleOf(layer, stream.KeyAt(next).time, rate, scale) - x
            : 1e6;
        show(index, x, room);
        index = next;
    }
}

} // namespace

void TimelineTracks::OnChanged()
{
    rows = QPixmap();
    update();
}

/// While a composition plays the mark of the current time moves, and the rows stay.
void TimelineTracks::OnTimeChanged()
{
    const TimeScale &scale = board.Scale();
    const int wide = qCeil(scale.PixelsPerFrame()) + 4;
    for (const int frame : { markedFrame, board.GetSession().CurrentFrame() })
        update(QRectF(scale.LeftOf(frame) - 2, 0, wide, height()).toAlignedRect());
}

void TimelineTracks::paintEvent(QPaintEvent *event)
{
    if (rows.size() != size() * devicePixelRatioF())
        DrawRows();
    QPainter painter(this);
    for (const QRect &part : event->region())
        painter.drawPixmap(part.topLeft(), rows,
            QRectF(part.topLeft() * devicePixelRatioF(), part.size() * devicePixelRatioF()));
    markedFrame = board.GetSession().CurrentFrame();
    if (board.ShownComp())
        DrawOver(painter);
}

void TimelineTracks::DrawRows()
{
    rows = QPixmap(size() * devicePixelRatioF());
    rows.setDevicePixelRatio(devicePixelRatioF());
    rows.fill(TimelineColors(palette()).streamRow);
    if (!board.ShownComp())
        return;
    QPainter painter(&rows);
    painter.setFont(font());
    const int high = TimelineRows::kRowHeight;
    const int first = qMax(0, board.ScrollY() / high);
    const int last = qMin(board.Rows().Count() - 1, (height() + board.ScrollY()) / high);
    for (int row = first; row <= last; ++row)
        DrawRow(painter, row, QRectF(0, TimelineRows::TopOf(row) - board.ScrollY(), width(), high));
}

void TimelineTracks::DrawRow(QPainter &painter, int index, const QRectF &place)
{
    const TimelineColors colors(palette());
    const TimelineRow &row = board.Rows().At(index);
    const Layer *layer = board.LayerOf(row);
    if (!layer)
        return;
    QColor back = row.isLayer ? colors.row : colors.streamRow;
    if (row.isLayer && board.IsSelected(row.layer))
        back = colors.selectedRow;
    painter.fillRect(place, back);
    painter.setPen(colors.line);
    painter.drawLine(place.bottomLeft() - QPointF(0, 0.5), place.bottomRight() - QPointF(0, 0.5));
    if (row.isLayer)
        DrawLayer(painter, *layer, place);
    else
        DrawKeys(painter, row, *layer, place);
}

void TimelineTracks::DrawLayer(QPainter &painter, const Layer &layer, const QRectF &place)
{
    const BarSpan span = SpanOf(layer, board.GetRate(), board.Scale());
    // Beyond the edges nothing is seen, and far beyond the painter's own numbers end.
    const double left = qMax(span.left, -20.0);
    const double right = qMin(qMax(span.right, span.left + 2), width() + 20.0);
    if (right <= left)
        return;
    const QRectF bar(left, place.top() + 2, right - left, place.height() - 5);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawBar(painter, bar, LabelColor(layer.label), board.IsSelected(layer.id));
    painter.save();
    painter.setClipRect(bar.adjusted(1, 1, -1, -1));
    DrawUndrawn(painter, layer, bar);
    DrawImages(painter, layer, bar);
    painter.restore();
}

/// Hatches the part of a bar in which a series without time remap has no drawing to show.
void TimelineTracks::DrawUndrawn(QPainter &painter, const Layer &layer, const QRectF &bar)
{
    Rate rate;
    if (layer.timeRemap.HasKeys() || !FindImageRate(board.Shown(), layer, &rate))
        return;
    const Time length = board.Shown().SourceOf(layer)->Duration();
    const Rate frames = board.GetRate();
    const double from = board.Scale().LeftOf(FramesOf(layer.offset, frames));
    const double to = board.Scale().LeftOf(FramesOf(layer.offset + length, frames));
    const QBrush hatch(QColor(0, 0, 0, 110), Qt::BDiagPattern);
    if (from > bar.left())
        painter.fillRect(QRectF(bar.topLeft(), QPointF(from, bar.bottom())), hatch);
    if (to < bar.right())
        painter.fillRect(
            QRectF(QPointF(qMax(to, bar.left()), bar.top()), bar.bottomRight()), hatch);
}

/// The numbers of the drawings, each where it begins to show.
void TimelineTracks::DrawImages(QPainter &painter, const Layer &layer, const QRectF &bar)
{
    Rate rate;
    if (!layer.timeRemap.HasKeys() || !FindImageRate(board.Shown(), layer, &rate))
        return;
    const int count = ImageCount(board.Shown(), layer);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const double half = board.Scale().PixelsPerFrame() / 2;
    const Stream &stream = layer.timeRemap;
    ForSeenKeys(stream, layer, board.GetRate(), board.Scale(), width(),
        [&](int index, double middle, double room) {
            const double x = std::round(middle - half);
            const int image = ImageOfSeconds(stream.KeyAt(index).value[0], rate);
            painter.setPen(QColor(0, 0, 0, 130));
            painter.drawLine(QPointF(x, bar.top() + 1), QPointF(x, bar.bottom() - 2));
            const QString number = QString::number(image);
            if (fontMetrics().horizontalAdvance(number) + 4 > room)
                return;
            painter.setPen(image < 0 || image >= count ? QColor(150, 0, 0) : QColor(20, 20, 20));
            painter.drawText(
                QRectF(x + 3, bar.top(), room, bar.height()), Qt::AlignVCenter, number);
        });
}

void TimelineTracks::DrawKeys(
    QPainter &painter, const TimelineRow &row, const Layer &layer, const QRectF &place)
{
    const Stream *stream = board.StreamOf(row);
    if (!stream || !stream->HasKeys())
        return;
    const TimelineColors colors(palette());
    Rate rate;
    const bool hasImages
        = row.stream.id.IsTimeRemap() && FindImageRate(board.Shown(), layer, &rate);
    const double y = place.center().y();
    painter.setRenderHint(QPainter::Antialiasing);
    ForSeenKeys(*stream, layer, board.GetRate(), board.Scale(), width(),
        [&](int index, double x, double room) {
            const Key &key = stream->KeyAt(index);
            const bool isLast = index + 1 >= stream->KeyCount();
            if (!isLast && room > 12) { // what happens up to the next key
                const bool holds = key.out == Interpolation::Hold;
                painter.setPen(QPen(colors.faintText, 1, holds ? Qt::DotLine : Qt::SolidLine));
                painter.drawLine(
                    QPointF(qMax(x, -9.0), y), QPointF(qMin(x + room, width() + 9.0), y));
            }
            const QString number
                = hasImages ? QString::number(ImageOfSeconds(key.value[0], rate)) : QString();
            const int wide = fontMetrics().horizontalAdvance(number);
            if (hasImages && wide + kTextGap + 8 < room) {
                const QRectF box(x + kTextGap, place.top(), wide + 2, place.height() - 1);
                painter.fillRect(box, colors.streamRow);
                painter.setPen(colors.text);
                painter.drawText(box, Qt::AlignVCenter, number);
            }
            const bool isChosen = board.IsSelected({ row.layer, row.stream.id, key.time });
            DrawKey(painter, QPointF(x, y), key.in, key.out,
                isChosen ? colors.selectedKey : colors.key, colors.line);
        });
}

/// What lies over all rows: beyond the composition, the current time, the frame that picks keys.
void TimelineTracks::DrawOver(QPainter &painter)
{
    const TimelineColors colors(palette());
    const TimeScale &scale = board.Scale();
    painter.setRenderHint(QPainter::Antialiasing, false);
    const double end = scale.LeftOf(board.GetSession().FrameCount());
    if (end < width())
        painter.fillRect(
            QRectF(qMax(end, 0.0), 0, width() - qMax(end, 0.0), height()), colors.outside);
    if (scale.LeftOf(0) > 0)
        painter.fillRect(
            QRectF(0, 0, qMin<double>(scale.LeftOf(0), width()), height()), colors.outside);
    const int now = board.GetSession().CurrentFrame();
    QColor cell = colors.now;
    cell.setAlpha(40);
    if (scale.PixelsPerFrame() >= 4)
        painter.fillRect(QRectF(scale.LeftOf(now), 0, scale.PixelsPerFrame(), height()), cell);
    painter.setPen(colors.now);
    const double x = std::round(scale.MiddleOf(now));
    if (x >= 0 && x <= width())
        painter.drawLine(QPointF(x, 0), QPointF(x, height()));
    if (!band.isEmpty()) {
        painter.fillRect(band, cell);
        painter.drawRect(band);
    }
}

} // namespace rostrum
