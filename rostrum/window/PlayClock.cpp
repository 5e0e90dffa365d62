#include "PlayClock.h"

namespace rostrum {
namespace {

__extension__ using Wide = __int128; // nanoseconds of a day times any rate

constexpr Wide kSecond = 1000000000;

} // namespace

void PlayClock::Start(qint32 frame, qint32 frames, const Rate &newRate, qint64 now)
{
    first = frame;
    count = frames;
    rate = newRate;
    start = now;
    shown = 0;
    dropped = 0;
}

PlayClock::Due PlayClock::At(qint64 now)
{
    const Wide passed = qMax<Wide>(0, Wide(now) - start);
    auto due = static_cast<qint64>(passed * rate.num / (kSecond * rate.den));
    const qint64 end = qint64(count) - 1 - first;
    if (!loop)
        due = qMin(due, qMax<qint64>(0, end));
    Due answer;
    answer.isNew = due > shown;
    if (answer.isNew) {
        dropped += due - shown - 1;
        shown = due;
    }
    answer.frame = static_cast<qint32>((first + shown) % count);
    answer.isEnd = !loop && shown >= end;
    return answer;
}

qint64 PlayClock::NextAt() const
{
    const Wide above = (Wide(shown) + 1) * kSecond * rate.den;
    return start + static_cast<qint64>((above + rate.num - 1) / rate.num);
}

QString Timecode(qint32 frame, const Rate &rate)
{
    const qint64 perSecond = qMax(1, qRound(rate.PerSecond()));
    const qint64 whole = qAbs(qint64(frame));
    const qint64 seconds = whole / perSecond;
    const int digits = perSecond > 100 ? 3 : 2;
    return QStringLiteral("%1%2:%3:%4:%5")
        .arg(frame < 0 ? QStringLiteral("-") : QString())
        .arg(seconds / 3600)
        .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'))
        .arg(whole % perSecond, digits, 10, QLatin1Char('0'));
}

} // namespace rostrum
