#include "Placement.h"

#include <cmath>

namespace rostrum {
namespace {

/// Pixels of the layer's source to pixels of what it stands in: its parent's source, or the
/// composition.
QTransform OwnMatrix(const Layer &layer, const Time &compTime)
{
    const Time time = layer.ToLayerTime(compTime);
    const StreamValue anchor = layer.anchorPoint.ValueAt(time);
    const StreamValue position = layer.position.ValueAt(time);
    const StreamValue scale = layer.scale.ValueAt(time);
    QTransform matrix;
    matrix.translate(position[0], position[1]);
    matrix.rotate(std::fmod(layer.rotation.ValueAt(time)[0], 360.0)); // whole turns leave no trace
    matrix.scale(scale[0] / 100.0, scale[1] / 100.0);
    matrix.translate(-anchor[0], -anchor[1]);
    return matrix;
}

/// The frame of a remapped source, read as the sheet reads it: times the rate, plus a half, cut.
/// A key of image 29 holds 29/25 s, and 25 times that is 28.999999999999996 in doubles; rounding
/// down would show image 28 under a cell that says 29. Between two keys of a ramp, too, the image
/// thus changes where the number in the sheet does.
/// @param count frames that the source has @return -1 where it has none
int RemappedFrame(double sourceSeconds, const Rate &rate, int count)
{
    const double exact = sourceSeconds * rate.PerSecond() + 0.5;
    if (!(exact > -1.0 && exact < count)) // also for what is no number
        return -1;
    return static_cast<int>(exact);
}

} // namespace

qint32 FrameCount(const Composition &composition)
{
    const qint32 whole = composition.rate.FrameAt(composition.duration);
    const bool partLeft = composition.rate.FrameTime(whole) < composition.duration;
    return qMax(0, whole + (partLeft ? 1 : 0));
}

bool IsInBar(const Layer &layer, const Time &compTime)
{
    return layer.inPoint <= compTime && compTime - layer.inPoint < layer.duration;
}

QTransform LayerMatrix(const Composition &composition, const Layer &layer, const Time &compTime)
{
    QTransform matrix = OwnMatrix(layer, compTime);
    LayerId above = layer.parent;
    // The count ends a ring of parents, should one ever get into a project.
    for (int left = composition.layers.size(); above && left > 0; --left) {
        const int index = composition.IndexOf(above);
        if (index < 0)
            break;
        const Layer &parent = *composition.layers[index];
        matrix *= OwnMatrix(parent, compTime);
        above = parent.parent;
    }
    return matrix;
}

double LayerOpacity(const Layer &layer, const Time &compTime)
{
    const double percent = layer.opacity.ValueAt(layer.ToLayerTime(compTime))[0];
    return percent > 0 ? qMin(percent, 100.0) / 100.0 : 0; // 0 also for what is no number
}

int ShownImage(const Layer &layer, const Footage &footage, const Time &compTime)
{
    const int count = footage.files.size();
    if (!footage.isSeries)
        return count > 0 ? 0 : -1;
    if (layer.timeRemap.HasKeys())
        return RemappedFrame(layer.SourceSeconds(compTime), footage.rate, count);
    const qint32 position = footage.rate.FrameAt(layer.ToLayerTime(compTime));
    return position >= 0 && position < count ? position : -1;
}

bool ShownTime(
    const Layer &layer, const Composition &nested, const Time &compTime, Time *nestedTime)
{
    if (layer.timeRemap.HasKeys()) {
        const double seconds = layer.SourceSeconds(compTime);
        const int frame = RemappedFrame(seconds, nested.rate, FrameCount(nested));
        if (frame < 0)
            return false;
        *nestedTime = nested.rate.FrameTime(frame);
        return true;
    }
    const Time time = layer.ToLayerTime(compTime);
    if (time.value < 0 || nested.duration <= time)
        return false;
    *nestedTime = time;
    return true;
}

} // namespace rostrum
