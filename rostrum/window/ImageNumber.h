// Which drawing a number means. A sheet counts the images of a series by their place, from 0, so
// that a gap in the files closes up; on disk each keeps the number in its name. One must always
// be able to see which file a number stands for.
#pragma once

#include "core/Project.h"

#include <QString>

namespace rostrum {

/// Images a second of what the layer can be remapped over: a series, or a composition's frames.
/// @return false when the layer's source has no time of its own
bool FindImageRate(const Project &project, const Layer &layer, Rate *rate);

/// Images of the layer's series, frames of its composition; 0 for any other layer.
int ImageCount(const Project &project, const Layer &layer);

/// As the sheet and the renderer read it: times the rate, plus a half, cut. What is beyond 32 bits,
/// or no number, stays inside them.
int ImageOfSeconds(double seconds, const Rate &rate);
double SecondsOfImage(int image, const Rate &rate);

/// The image that the layer names at a time, whether it has that many images or not.
/// @return -1 for a layer that cannot be remapped
int ImageAt(const Project &project, const Layer &layer, const Time &compTime);

/// The file of an image: "walk0024.png". Empty where there is none.
QString FileOfImage(const Project &project, const Layer &layer, int image);

/// "12 = walk0024.png"; "99: no drawing" past the last; of a composition "frame 12".
QString ImageText(const Project &project, const Layer &layer, int image);

} // namespace rostrum
