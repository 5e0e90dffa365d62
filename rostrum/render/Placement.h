// What a layer shows at a time, and where: its bar, its image, its place in the composition. Pure
// functions of the project; no pixels.
//
// Units: pixels with (0, 0) at the top left corner of the top left pixel; angles clockwise.
#pragma once

#include "core/Project.h"

#include <QTransform>

namespace rostrum {

/// Frames that begin in the composition, so that a part of one at its end counts; 0 for an empty one.
/// Whoever counts a composition's frames asks here.
qint32 FrameCount(const Composition &composition);

/// The layer's bar covers the time: from the in point on, up to its end, the end excluded.
bool IsInBar(const Layer &layer, const Time &compTime);

/// Pixels of the layer's source to pixels of the composition, all parents included. A parent gives
/// its place, turn and size, whether it is shown itself or not; its opacity stays its own.
QTransform LayerMatrix(const Composition &composition, const Layer &layer, const Time &compTime);

/// 0 to 1.
double LayerOpacity(const Layer &layer, const Time &compTime);

/// The position of the image that the layer shows of its footage, -1 where it shows none: before
/// the first image, past the last. A still shows its one image at every time.
int ShownImage(const Layer &layer, const Footage &footage, const Time &compTime);

/// The time that the layer shows of a composition. @return false where it shows none of it
bool ShownTime(
    const Layer &layer, const Composition &nested, const Time &compTime, Time *nestedTime);

} // namespace rostrum
