// A progress line for a terminal: bar, frames, time left.
//
//     [##############----------------]  12/25  left 0:09
#pragma once

#include "RenderJob.h"

#include <cstdio>

namespace rostrum {

/// @param width characters of the bar alone
QString ProgressLine(const RenderProgress &progress, int width = 30);

/// Seconds as "0:09", "12:34", "1:02:03", rounded up; "-" below 0.
QString TimeText(double seconds);

class ConsoleProgress
{
public:
    /// @param isLive the line is written over itself, as a terminal can; else a line is written at
    /// every tenth of the way, for a log
    ConsoleProgress(std::FILE *out, bool isLive) : out(out), isLive(isLive) { }

    void Show(const RenderProgress &progress);
    /// Ends a line that is still being written over. To be called once the job has ended.
    void Finish();

private:
    std::FILE *out;
    bool isLive;
    int shownLength = 0; // characters of the line that stands
    int tenth = -1; // the last one logged
};

} // namespace rostrum
