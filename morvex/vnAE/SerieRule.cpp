#include "SerieRule.h"

#include <QtGlobal>

#include <algorithm>
#include <limits>

namespace {

constexpr qint64 kHighest = std::numeric_limits<int>::max();

// Values are reckoned in 64 bits, because a cell may hold any number that a user can type.
qint64 Between(int from, int to)
{
    return qint64(to) - from;
}

/// Two series that alternate: the third cell is nearer to the first than the second is.
bool IsAlternating(const int *cells, int given)
{
    return given > 2 && qAbs(Between(cells[0], cells[1])) > qAbs(Between(cells[0], cells[2]));
}

void Rise(int *cells, int total)
{
    const qint64 first = cells[0];
    for (int i = 0; i < total && first + i <= kHighest; ++i)
        cells[i] = static_cast<int>(first + i); // below 1 too: this rule has no floor
}

void Alternate(int *cells, int given, int total)
{
    const qint64 start[] = { cells[0], cells[1] };
    const qint64 evenStep = Between(cells[0], cells[2]);
    const qint64 step[] = { evenStep, given > 3 ? Between(cells[1], cells[3]) : evenStep };
    for (int i = 0; i < total; ++i) {
        const qint64 value = start[i % 2] + step[i % 2] * (i / 2);
        if (value < 1 || value > kHighest)
            return;
        cells[i] = static_cast<int>(value);
    }
}

void ContinueRuns(int *cells, int given, int total)
{
    const int *change
        = std::find_if(cells, cells + given, [&](int cell) { return cell != cells[0]; });
    const int length = static_cast<int>(change - cells);
    const qint64 second = length < given ? *change : cells[0];
    const qint64 step = second - cells[0];
    for (int i = length; i < total; ++i) {
        const qint64 value = second + step * (i / length - 1);
        if (value < 1 || value > kHighest)
            return;
        cells[i] = static_cast<int>(value);
    }
}

} // namespace

bool ExtendSerie(int *cells, int given, int total)
{
    for (int i = qMax(given, 0); i < total; ++i)
        cells[i] = 0;

    if (given < 1)
        return true;
    if (given == 1)
        Rise(cells, total);
    else if (IsAlternating(cells, given))
        Alternate(cells, given, total);
    else
        ContinueRuns(cells, given, total);
    return true;
}
