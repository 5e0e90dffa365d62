// What the effects of a layer do to its pixels.
//
// Gaussian blur     see GaussianBlur.h
// Colour balance    turns the hue by degrees, scales the saturation by 1 + percent / 100 up to full
//                   saturation, so that a grey stays grey, and moves the lightness towards black or
//                   white by its percentage: all in the double cone of hue, lightness, saturation
// Fill              gives every pixel one colour and leaves it its opacity
// Stroke            see Outline.h
#pragma once

#include "GaussianBlur.h"
#include "core/Layer.h"

namespace rostrum {

/// The effect changes pixels at this time. One that does not costs nothing: a layer with such
/// effects only is drawn like one without.
/// @param layerTime time of the layer, in which the keys of its effects stand
bool Alters(const LayerEffect &effect, const Time &layerTime);

/// @return false when there is no memory for it, the raster is as it was then
bool ApplyEffect(const LayerEffect &effect, const Time &layerTime, Raster *raster);

/// Hue in degrees, lightness and saturation from -100 to 100; what is beyond counts as the limit.
struct ColorBalance
{
    double hue = 0;
    double lightness = 0;
    double saturation = 0;

    /// @param pixel premultiplied @return the same
    QRgb Balance(QRgb pixel) const;
};

} // namespace rostrum
