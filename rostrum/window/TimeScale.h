// Frames and pixels: how wide a frame is drawn, and which one stands at the left edge.
//
// A frame is a cell, from its left edge to the next frame's. What happens at a frame (a key, the
// current time) is drawn in the middle of its cell; a bar covers the cells of its frames.
#pragma once

#include "core/Time.h"

namespace rostrum {

class TimeScale
{
public:
    static constexpr double kLeast = 0.02; // pixels a frame
    static constexpr double kMost = 80;

    double PixelsPerFrame() const { return perFrame; }
    /// Pixels from frame 0 to the left edge of what is shown.
    double Scroll() const { return scroll; }
    void SetScroll(double pixels) { scroll = pixels; }

    double LeftOf(double frame) const { return frame * perFrame - scroll; }
    double MiddleOf(double frame) const { return LeftOf(frame + 0.5); }
    /// The frame whose cell lies at x.
    int FrameAt(double x) const;
    /// The frame whose left edge is nearest to x.
    int EdgeAt(double x) const;

    /// The frame at x stays where it is.
    void ZoomAt(double x, double factor);
    /// All frames in a width of pixels.
    void Fit(int frames, int width);

    /// Frames from one labelled tick to the next, so that labels of this width have room.
    int LabelStep(const Rate &rate, int labelWidth) const;

private:
    double perFrame = 8; // pixels
    double scroll = 0; // pixels
};

/// A time as a count of frames, not rounded; for drawing alone.
double FramesOf(const Time &time, const Rate &rate);

} // namespace rostrum
