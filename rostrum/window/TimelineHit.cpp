#include "TimelineHit.h"

#include <QRect>

#include <cmath>

namespace rostrum {
namespace {

constexpr int kEdgeReach = 5; // pixels
constexpr int kKeyReach = 6;

/// The key whose middle is nearest to x and near enough, -1 when there is none.
int KeyNear(const Stream &stream, const Layer &layer, const TimelineBoard &board, double x)
{
    const Rate rate = board.GetRate();
    const TimeScale &scale = board.Scale();
    const int reach = static_cast<int>(std::ceil(kKeyReach / scale.PixelsPerFrame())) + 1;
    const Time from = layer.ToLayerTime(rate.FrameTime(scale.FrameAt(x) - reach));
    int best = -1;
    double bestWay = kKeyReach + 0.5;
    for (int i = stream.KeysBefore(from); i < stream.KeyCount(); ++i) {
        const double way = MiddleOf(layer, stream.KeyAt(i).time, rate, scale) - x;
        if (way > kKeyReach)
            break;
        if (std::abs(way) < bestWay) {
            best = i;
            bestWay = std::abs(way);
        }
    }
    return best;
}

TimelineHit::Kind KindInBar(const BarSpan &bar, double x)
{
    // In a bar of a few pixels the middle must stay to be taken hold of.
    const double reach = qMin<double>(kEdgeReach, qMax(1.0, (bar.right - bar.left) / 4));
    if (std::abs(x - bar.left) <= reach)
        return TimelineHit::In;
    if (std::abs(x - bar.right) <= qMax(reach, 3.0))
        return TimelineHit::Out;
    return x > bar.left && x < bar.right ? TimelineHit::Bar : TimelineHit::Nothing;
}

} // namespace

BarSpan SpanOf(const Layer &layer, const Rate &rate, const TimeScale &scale)
{
    return { scale.LeftOf(FramesOf(layer.inPoint, rate)),
        scale.LeftOf(FramesOf(layer.inPoint, rate) + FramesOf(layer.duration, rate)) };
}

double MiddleOf(const Layer &layer, const Time &layerTime, const Rate &rate, const TimeScale &scale)
{
    return scale.MiddleOf(FramesOf(layer.offset, rate) + FramesOf(layerTime, rate));
}

TimelineHit HitTest(const TimelineBoard &board, const QPoint &point)
{
    TimelineHit hit;
    hit.frame = board.Scale().FrameAt(point.x());
    hit.row = board.Rows().RowAt(point.y() + board.ScrollY());
    if (hit.row < 0)
        return hit;
    const TimelineRow &row = board.Rows().At(hit.row);
    const Layer *layer = board.LayerOf(row);
    if (!layer)
        return hit;
    hit.layer = row.layer;
    if (row.isLayer) {
        hit.kind = KindInBar(SpanOf(*layer, board.GetRate(), board.Scale()), point.x());
        return hit;
    }
    const Stream *stream = board.StreamOf(row);
    const int index = stream ? KeyNear(*stream, *layer, board, point.x()) : -1;
    if (index >= 0) {
        hit.kind = TimelineHit::Key;
        hit.key = { row.layer, row.stream.id, stream->KeyAt(index).time };
    }
    return hit;
}

KeyIds KeysIn(const TimelineBoard &board, const QRect &rect)
{
    KeyIds keys;
    const int high = TimelineRows::kRowHeight;
    const int first = qMax(0, (rect.top() + board.ScrollY()) / high);
    const int last = qMin(board.Rows().Count() - 1, (rect.bottom() + board.ScrollY()) / high);
    const Rate rate = board.GetRate();
    for (int i = first; i <= last; ++i) {
        const TimelineRow &row = board.Rows().At(i);
        const Layer *layer = board.LayerOf(row);
        const Stream *stream = board.StreamOf(row);
        for (int key = 0; layer && stream && key < stream->KeyCount(); ++key) {
            const Time time = stream->KeyAt(key).time;
            const double x = MiddleOf(*layer, time, rate, board.Scale());
            if (x >= rect.left() && x <= rect.right())
                keys.insert({ row.layer, row.stream.id, time });
        }
    }
    return keys;
}

int Snap(int way, const QVector<int> &edges, const QVector<int> &marks, int reach)
{
    int best = way;
    int bestMiss = reach + 1;
    for (const int edge : edges) {
        for (const int mark : marks) {
            const int miss = std::abs(edge + way - mark);
            if (miss < bestMiss) {
                bestMiss = miss;
                best = mark - edge;
            }
        }
    }
    return best;
}

QVector<int> SnapMarks(const TimelineBoard &board, const QVector<LayerId> &moved)
{
    QVector<int> marks{ 0, board.GetSession().FrameCount(), board.GetSession().CurrentFrame() };
    const Composition *composition = board.GetSession().ActiveComposition();
    if (!composition)
        return marks;
    for (const LayerPtr &layer : composition->layers) {
        if (moved.contains(layer->id))
            continue;
        marks << composition->rate.FrameAt(layer->inPoint)
              << composition->rate.FrameAt(layer->inPoint + layer->duration);
    }
    return marks;
}

} // namespace rostrum
