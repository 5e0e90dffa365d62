// A property of a layer or an effect: one value, or keys over time.
#pragma once

#include "core/Time.h"

#include <QVector>

#include <array>

namespace rostrum {

/// Up to four components; those that a stream does not have are 0.
using StreamValue = std::array<double, 4>;

enum class Interpolation { Linear = 1, Bezier = 2, Hold = 3 };

struct Key
{
    Time time; // layer time
    StreamValue value{};
    Interpolation in = Interpolation::Linear;
    Interpolation out = Interpolation::Linear;
};

bool operator==(const Key &a, const Key &b);

/// What a stream shows: before the first key that key's value, after the last key that key's value;
/// between two keys the left one's when it holds, else a line or a curve. A Bezier side eases: the
/// curve leaves or arrives level, with handles a third of the way.
///
/// Keys stand in rising time, no two at one time. Copies share their keys until one is changed.
class Stream
{
public:
    Stream() = default;
    explicit Stream(const StreamValue &constant) : constant(constant) { }

    bool HasKeys() const { return !keys.isEmpty(); }
    int KeyCount() const { return keys.size(); }
    /// @param index 0 to KeyCount() - 1
    const Key &KeyAt(int index) const { return keys[index]; }
    /// The index of the key at a time, -1 when there is none.
    int FindKey(const Time &time) const;
    /// The number of keys before a time. @param hint where the last answer is kept: times asked for
    /// in their order are then found at once, however many keys there are
    int KeysBefore(const Time &time, int *hint = nullptr) const;
    StreamValue ValueAt(const Time &time, int *hint = nullptr) const;
    const StreamValue &Constant() const { return constant; }

    /// Legal without keys only; the suites refuse it otherwise.
    void SetConstant(const StreamValue &value) { constant = value; }
    /// A linear key at a time. Where one stands it stays as it is.
    /// @return the key's index; later keys move up by one when the key is new
    int InsertKey(const Time &time, const StreamValue &value);
    void DeleteKey(int index) { keys.remove(index); }
    void SetKeyValue(int index, const StreamValue &value) { keys[index].value = value; }
    void SetKeyInterpolation(int index, Interpolation in, Interpolation out);

    friend bool operator==(const Stream &a, const Stream &b);

private:
    bool IsPlaceOf(const Time &time, int place) const;

    StreamValue constant{};
    QVector<Key> keys;
};

inline bool operator!=(const Stream &a, const Stream &b)
{
    return !(a == b);
}

} // namespace rostrum
