// What lies under a point of the timeline's tracks, and where a dragged edge catches.
#pragma once

#include "TimelineBoard.h"

#include <QPoint>

namespace rostrum {

struct TimelineHit
{
    enum Kind { Nothing, Bar, In, Out, Key };

    Kind kind = Nothing;
    int row = -1; // -1 beside all rows
    LayerId layer = 0;
    KeyId key; // of a key
    int frame = 0; // at the point
};

/// @param point in the tracks, (0, 0) at their top left as they are scrolled
TimelineHit HitTest(const TimelineBoard &board, const QPoint &point);

/// The keys of the rows that a rectangle touches and whose middle lies in it.
KeyIds KeysIn(const TimelineBoard &board, const QRect &rect);

/// Where a bar begins and ends in the tracks, in pixels.
struct BarSpan
{
    double left = 0;
    double right = 0;
};
BarSpan SpanOf(const Layer &layer, const Rate &rate, const TimeScale &scale);

/// The middle of a key in the tracks, in pixels.
double MiddleOf(
    const Layer &layer, const Time &layerTime, const Rate &rate, const TimeScale &scale);

/// A way in frames that brings one of the edges onto a mark, if one is near, else the way itself.
/// @param edges frames before the move @param marks frames that catch @param reach frames
int Snap(int way, const QVector<int> &edges, const QVector<int> &marks, int reach);

/// What edges catch on: the ends of the composition, the current time, the ends of all bars but
/// those of `moved`.
QVector<int> SnapMarks(const TimelineBoard &board, const QVector<LayerId> &moved);

} // namespace rostrum
