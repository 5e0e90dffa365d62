// The Gaussian blur of an image whose surroundings are transparent.
#pragma once

#include <QImage>

namespace rostrum {

/// An image and where it stands: its pixel (0, 0) lies at `origin` in pixels of its layer's source.
/// Effects may let it grow beyond the source's edges.
struct Raster
{
    QImage image; // ARGB32_Premultiplied or RGB32
    QPoint origin;
};

constexpr double kLargestBlurRadius = 1000; // pixels; a larger one blurs like this

/// Blurs with the standard deviation radius / 2, so that 95 % of a point's light stays within the
/// radius. The raster grows by what bleeds over its edges.
///
/// Up to a deviation of 8 pixels the bell is sampled, up to three deviations to each side; above,
/// three boxes in a row stand in for it, which differ from the bell by less than 3 % of its height
/// and cost the same for every radius.
/// @param radius pixels; 0 and below change nothing
/// @return false when there is no memory for it, the raster is as it was then
bool GaussianBlur(double radius, Raster *raster);

} // namespace rostrum
