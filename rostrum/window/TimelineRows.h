// The rows of the timeline: a row a layer, the topmost first, and below an unfolded layer a row for
// each of its streams. All rows are equally high, so that a place is found without a search.
#pragma once

#include "StreamId.h"

#include <QSet>

namespace rostrum {

struct TimelineRow
{
    LayerId layer = 0;
    int index = 0; // of the layer in the stack
    bool isLayer = true; // else one of its streams
    StreamInfo stream;
};

class TimelineRows
{
public:
    static constexpr int kRowHeight = 22; // pixels

    /// No rows for what is no composition.
    void Rebuild(const Project &project, ItemId composition, const QSet<LayerId> &unfolded,
        EffectLanguage language);

    int Count() const { return rows.size(); }
    const TimelineRow &At(int row) const { return rows[row]; }
    int Height() const { return Count() * kRowHeight; }
    static int TopOf(int row) { return row * kRowHeight; }
    /// @param y pixels below the first row's top @return -1 outside all rows
    int RowAt(int y) const;
    /// The row of a layer or of one of its streams, -1 when it is not shown.
    int RowOf(LayerId layer) const;
    int RowOf(LayerId layer, const StreamId &stream) const;
    /// Where a layer that is dropped at y comes to lie: before the layer of this index; the number
    /// of layers for the end.
    int GapAt(int y) const;
    /// The top of the layer before which a gap lies.
    int TopOfGap(int gap) const;

private:
    QVector<TimelineRow> rows;
    QVector<int> layerRows; // of each layer, by its index
};

} // namespace rostrum
