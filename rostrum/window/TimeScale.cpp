#include "TimeScale.h"

#include <cmath>

namespace rostrum {
namespace {

int ToFrame(double frame)
{
    return static_cast<int>(qBound(-2.0e9, std::floor(frame), 2.0e9));
}

} // namespace

int TimeScale::FrameAt(double x) const
{
    return ToFrame((x + scroll) / perFrame);
}

int TimeScale::EdgeAt(double x) const
{
    return ToFrame((x + scroll) / perFrame + 0.5);
}

void TimeScale::ZoomAt(double x, double factor)
{
    const double frame = (x + scroll) / perFrame;
    perFrame = qBound(kLeast, perFrame * factor, kMost);
    scroll = frame * perFrame - x;
}

void TimeScale::Fit(int frames, int width)
{
    perFrame = qBound(kLeast, double(width) / qMax(1, frames), kMost);
    scroll = 0;
}

int TimeScale::LabelStep(const Rate &rate, int labelWidth) const
{
    for (const int step : { 1, 2, 5, 10 }) {
        if (step * perFrame >= labelWidth)
            return step;
    }
    const int second = qMax(1, qRound(rate.PerSecond()));
    for (const int seconds : { 1, 2, 5, 10, 30, 60, 120, 300, 600, 1800 }) {
        const int step = second * seconds;
        if (step > 10 && step * perFrame >= labelWidth)
            return step;
    }
    return second * 3600;
}

double FramesOf(const Time &time, const Rate &rate)
{
    return double(time.value) * rate.num / (double(time.scale) * rate.den);
}

} // namespace rostrum
