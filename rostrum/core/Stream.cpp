#include "Stream.h"

#include <algorithm>

namespace rostrum {
namespace {

/// A cubic Bezier over the segment, its handles at one and two thirds of the time, so that the
/// curve's parameter is the time itself.
/// @param at 0 to 1 within the segment @return 0 to 1 between the two values
double Blend(double at, bool easeOut, bool easeIn)
{
    const double first = easeOut ? 0.0 : 1.0 / 3.0; // a level handle, or one on the line
    const double second = easeIn ? 1.0 : 2.0 / 3.0;
    const double rest = 1.0 - at;
    return 3.0 * rest * rest * at * first + 3.0 * rest * at * at * second + at * at * at;
}

StreamValue Between(const Key &left, const Key &right, const Time &time)
{
    if (left.out == Interpolation::Hold)
        return left.value;
    const double start = left.time.Seconds();
    const double at = (time.Seconds() - start) / (right.time.Seconds() - start);
    const bool easeOut = left.out == Interpolation::Bezier;
    const bool easeIn = right.in == Interpolation::Bezier;
    const double blend = easeOut || easeIn ? Blend(at, easeOut, easeIn) : at;
    StreamValue value{};
    for (std::size_t i = 0; i < value.size(); ++i)
        value[i] = left.value[i] + (right.value[i] - left.value[i]) * blend;
    return value;
}

} // namespace

bool operator==(const Key &a, const Key &b)
{
    return a.time == b.time && a.value == b.value && a.in == b.in && a.out == b.out;
}

bool Stream::IsPlaceOf(const Time &time, int place) const
{
    return place >= 0 && place <= keys.size() && (place == 0 || keys[place - 1].time < time)
        && (place == keys.size() || time <= keys[place].time);
}

int Stream::KeysBefore(const Time &time, int *hint) const
{
    if (hint && IsPlaceOf(time, *hint))
        return *hint;
    if (hint && IsPlaceOf(time, *hint + 1))
        return ++*hint;
    const auto before = [](const Key &key, const Time &limit) { return key.time < limit; };
    const auto found = std::lower_bound(keys.cbegin(), keys.cend(), time, before);
    const auto place = static_cast<int>(found - keys.cbegin());
    if (hint)
        *hint = place;
    return place;
}

int Stream::FindKey(const Time &time) const
{
    const int index = KeysBefore(time);
    return index < keys.size() && keys[index].time == time ? index : -1;
}

StreamValue Stream::ValueAt(const Time &time, int *hint) const
{
    if (keys.isEmpty())
        return constant;
    const int next = KeysBefore(time, hint);
    if (next < keys.size() && keys[next].time == time)
        return keys[next].value;
    if (next == 0)
        return keys.first().value;
    if (next == keys.size())
        return keys.last().value;
    return Between(keys[next - 1], keys[next], time);
}

int Stream::InsertKey(const Time &time, const StreamValue &value)
{
    const int index = KeysBefore(time);
    if (index < keys.size() && keys.at(index).time == time)
        return index;
    Key key;
    key.time = time;
    key.value = value;
    keys.insert(index, key);
    return index;
}

void Stream::SetKeyInterpolation(int index, Interpolation in, Interpolation out)
{
    keys[index].in = in;
    keys[index].out = out;
}

bool operator==(const Stream &a, const Stream &b)
{
    return a.constant == b.constant && a.keys == b.keys; // shared keys compare at once
}

} // namespace rostrum
