#include "TimelineRows.h"

namespace rostrum {

void TimelineRows::Rebuild(const Project &project, ItemId composition,
    const QSet<LayerId> &unfolded, EffectLanguage language)
{
    rows.clear();
    layerRows.clear();
    const Composition *found = project.FindComposition(composition);
    if (!found)
        return;
    for (int i = 0; i < found->layers.size(); ++i) {
        const Layer &layer = *found->layers[i];
        layerRows << rows.size();
        rows << TimelineRow{ layer.id, i, true, {} };
        if (!unfolded.contains(layer.id))
            continue;
        for (const StreamInfo &stream : StreamsOf(project, layer, language))
            rows << TimelineRow{ layer.id, i, false, stream };
    }
}

int TimelineRows::RowAt(int y) const
{
    const int row = y >= 0 ? y / kRowHeight : -1;
    return row < Count() ? row : -1;
}

int TimelineRows::RowOf(LayerId layer) const
{
    for (const int row : layerRows) {
        if (rows[row].layer == layer)
            return row;
    }
    return -1;
}

int TimelineRows::RowOf(LayerId layer, const StreamId &stream) const
{
    const int first = RowOf(layer);
    if (first < 0)
        return -1;
    for (int row = first + 1; row < Count() && !rows[row].isLayer; ++row) {
        if (rows[row].stream.id == stream)
            return row;
    }
    return -1;
}

int TimelineRows::GapAt(int y) const
{
    for (int i = 0; i < layerRows.size(); ++i) {
        if (y < TopOf(layerRows[i]) + kRowHeight / 2)
            return i;
    }
    return layerRows.size();
}

int TimelineRows::TopOfGap(int gap) const
{
    return gap >= 0 && gap < layerRows.size() ? TopOf(layerRows[gap]) : Height();
}

} // namespace rostrum
