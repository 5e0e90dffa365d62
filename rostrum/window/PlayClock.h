// Which frame is due while a composition plays. It is told the time and keeps none of its own.
//
// Frames are due at the composition's rate from the start on, whatever was shown meanwhile: who is
// late skips frames and stays in time, and what was skipped is counted.
#pragma once

#include "core/Time.h"

#include <QString>

namespace rostrum {

class PlayClock
{
public:
    /// @param frame is shown now @param count frames of the composition, above 0
    /// @param now nanoseconds since any moment
    void Start(qint32 frame, qint32 count, const Rate &rate, qint64 now);
    /// From the last frame on to the first again; true at the start. Takes effect at once.
    void SetLoop(bool on) { loop = on; }
    bool Loops() const { return loop; }

    struct Due
    {
        qint32 frame = 0;
        bool isNew = false; // since the last call
        bool isEnd = false; // the last frame of what does not loop
    };
    /// Counts as shown from now on.
    Due At(qint64 now);
    /// Nanoseconds when the next frame is due.
    qint64 NextAt() const;

    /// Frames that were due and never shown, since the start.
    qint64 Dropped() const { return dropped; }

private:
    bool loop = true;
    qint32 first = 0; // the frame at the start
    qint32 count = 1;
    Rate rate;
    qint64 start = 0; // nanoseconds
    qint64 shown = 0; // frames since the start
    qint64 dropped = 0;
};

/// "0:00:07:12": hours, minutes, seconds, frames; each second has as many frames as the rate rounds
/// to. Below 0 with a sign.
QString Timecode(qint32 frame, const Rate &rate);

} // namespace rostrum
