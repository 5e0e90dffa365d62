// A line around what a drawing covers.
#pragma once

#include "GaussianBlur.h"

namespace rostrum {

constexpr double kLargestStroke = 100; // pixels; a larger width draws like this

/// Draws a black line along the outside of all that is at least half opaque, below the drawing
/// itself. The raster grows by what the line needs.
/// @param width pixels; 0 and below change nothing
/// @return false when there is no memory for it, the raster is as it was then
bool DrawOutline(double width, Raster *raster);

} // namespace rostrum
