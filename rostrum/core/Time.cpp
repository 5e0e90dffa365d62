#include "Time.h"

#include <limits>

namespace rostrum {
namespace {

__extension__ using Wide = __int128; // holds a product of three 32-bit numbers

constexpr Wide kMaxValue = std::numeric_limits<qint32>::max();
constexpr Wide kMinValue = std::numeric_limits<qint32>::min();
constexpr Wide kMaxScale = std::numeric_limits<quint32>::max();

Wide Divisor(Wide a, Wide b)
{
    while (b != 0) {
        const Wide rest = a % b;
        a = b;
        b = rest;
    }
    return a < 0 ? -a : a;
}

bool Fits(Wide value, Wide scale)
{
    return value >= kMinValue && value <= kMaxValue && scale <= kMaxScale;
}

/// A fraction that does not fit, to the nearest time over the finest scale that can tell it.
Time Rounded(Wide value, Wide scale)
{
    const Wide size = value < 0 ? -value : value;
    const Wide finest = kMaxValue * scale / size; // not 0: a value of 0 fits in lowest terms
    const Wide newScale = qBound<Wide>(1, finest, kMaxScale);
    const Wide rounded = qMin((2 * size * newScale + scale) / (2 * scale), kMaxValue);
    return { static_cast<qint32>(value < 0 ? -rounded : rounded), static_cast<quint32>(newScale) };
}

/// A fraction as a time: as it stands when it fits, else in lowest terms, else rounded.
Time Fraction(Wide value, Wide scale)
{
    if (!Fits(value, scale)) {
        const Wide divisor = Divisor(value, scale);
        value /= divisor;
        scale /= divisor;
    }
    if (!Fits(value, scale))
        return Rounded(value, scale);
    return { static_cast<qint32>(value), static_cast<quint32>(scale) };
}

Time Sum(const Time &a, const Time &b, int sign)
{
    if (a.scale == b.scale)
        return Fraction(qint64(a.value) + sign * qint64(b.value), a.scale);
    if (b.value == 0)
        return a;
    const Wide divisor = Divisor(a.scale, b.scale);
    const Wide aFactor = b.scale / divisor;
    const Wide bFactor = a.scale / divisor;
    return Fraction(a.value * aFactor + sign * bFactor * b.value, a.scale * aFactor);
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
    return Fraction(Wide(frame) * den, num);
}

qint32 Rate::FrameAt(const Time &time) const
{
    const qint64 above = qint64(time.value) * num; // both products fit: 31 bits by 31, 32 by 31
    const qint64 below = qint64(time.scale) * den;
    const qint64 frame = above / below - (above % below < 0 ? 1 : 0);
    return static_cast<qint32>(qBound<qint64>(-2147483647, frame, 2147483647));
}

} // namespace rostrum
