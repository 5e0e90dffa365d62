#include "Time.h"

#include <cmath>
#include <limits>
#include <numeric>

namespace rostrum {
namespace {

bool Fits(qint64 value, qint64 scale)
{
    return value >= std::numeric_limits<qint32>::min()
        && value <= std::numeric_limits<qint32>::max()
        && scale <= std::numeric_limits<quint32>::max();
}

/// A fraction as a time: as it stands when it fits, else in lowest terms, else rounded.
Time Fraction(qint64 value, qint64 scale)
{
    if (!Fits(value, scale)) {
        const qint64 divisor = std::gcd(value, scale);
        value /= divisor;
        scale /= divisor;
    }
    while (!Fits(value, scale)) {
        value /= 2;
        scale = qMax<qint64>(scale / 2, 1);
        if (scale == 1 && !Fits(value, 1)) // beyond any time that the host can tell
            value = value < 0 ? std::numeric_limits<qint32>::min()
                              : std::numeric_limits<qint32>::max();
    }
    return { static_cast<qint32>(value), static_cast<quint32>(scale) };
}

Time Sum(const Time &a, const Time &b, int sign)
{
    if (a.scale == b.scale)
        return Fraction(qint64(a.value) + sign * qint64(b.value), a.scale);
    if (b.value == 0)
        return a;
    const qint64 divisor = std::gcd(qint64(a.scale), qint64(b.scale));
    const qint64 aFactor = b.scale / divisor;
    const qint64 bFactor = a.scale / divisor;
    const qint64 value = a.value * aFactor + sign * b.value * bFactor;
    return Fraction(value, a.scale * aFactor);
}

} // namespace

Time operator+(const Time &a, const Time &b)
{
    return Sum(a, b, 1);
}

Time operator-(const Time &a, const Time &b)
{
    return Sum(a, b, -1);
}

Time Rate::FrameTime(qint32 frame) const
{
    return Fraction(qint64(frame) * den, num);
}

qint32 Rate::FrameAt(const Time &time) const
{
    const double exact = static_cast<double>(time.value) * num; // below 2^53 * 2^9: never rounds up
    const double frames = std::floor(exact / (static_cast<double>(time.scale) * den));
    const auto frame = static_cast<qint32>(qBound(-2147483647.0, frames, 2147483647.0));
    // The division may round up to the next whole frame; the exact test puts that right.
    return time < FrameTime(frame) ? frame - 1 : frame;
}

} // namespace rostrum
