// Times and rates as exact fractions. Nothing in the model holds seconds as a double; a stream
// turns a time into seconds only where it interpolates between two keys.
#pragma once

#include <QtGlobal>

namespace rostrum {

/// value / scale seconds. A scale of 0 is no time; the suites refuse it, the model never makes it.
/// Two times are equal when the fractions are, whatever their scale.
struct Time
{
    qint32 value = 0;
    quint32 scale = 1;

    double Seconds() const { return static_cast<double>(value) / static_cast<double>(scale); }
};

inline bool operator==(const Time &a, const Time &b)
{
    return qint64(a.value) * b.scale == qint64(b.value) * a.scale;
}
inline bool operator!=(const Time &a, const Time &b)
{
    return !(a == b);
}
inline bool operator<(const Time &a, const Time &b)
{
    return qint64(a.value) * b.scale < qint64(b.value) * a.scale;
}
inline bool operator<=(const Time &a, const Time &b)
{
    return !(b < a);
}

/// Sum and difference, over the common scale; in lowest terms where that does not fit 32 bits. Only
/// what does not fit in lowest terms either is rounded, to the nearest time over the finest scale
/// that can tell it; beyond +-2147483647 seconds it stays there.
Time operator+(const Time &a, const Time &b);
Time operator-(const Time &a, const Time &b);

/// Frames a second as a fraction, 25 / 1 for new compositions and imported series. Both numbers are
/// above 0; who takes a rate in from outside sees to that.
struct Rate
{
    qint32 num = 25;
    qint32 den = 1;

    double PerSecond() const { return static_cast<double>(num) / den; }
    /// The time of a frame: frame * den / num seconds, rounded as a sum is where it does not fit.
    Time FrameTime(qint32 frame) const;
    /// The frame that a time lies in, rounded down, exact; within +-2147483647.
    qint32 FrameAt(const Time &time) const;
};

inline bool operator==(const Rate &a, const Rate &b)
{
    return qint64(a.num) * b.den == qint64(b.num) * a.den;
}
inline bool operator!=(const Rate &a, const Rate &b)
{
    return !(a == b);
}

} // namespace rostrum
