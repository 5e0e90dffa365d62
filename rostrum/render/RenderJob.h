// Writes a range of a composition's frames as numbered PNG files.
//
// Each file is written whole or not at all: it gets its name when its last byte is on the disk. A
// run that is cancelled, fails or is killed leaves whole files only, and a file from an earlier run
// stays as it was until the new one takes its place.
#pragma once

#include "Renderer.h"

#include <functional>

namespace rostrum {

struct RenderProgress
{
    int done = 0; // frames written
    int total = 0;
    double secondsLeft = -1; // at the pace of the frames done; -1 before the first
};

struct RenderResult
{
    int written = 0; // files
    bool isCancelled = false;
    QString error; // what and where; empty unless the run ended early for a fault
    QStringList messages; // what could not be drawn, and in which frame first; each once

    bool Ok() const { return error.isEmpty() && !isCancelled; }
};

class RenderJob
{
public:
    /// Is told before the first frame and after each. @return false cancels
    using ProgressFunction = std::function<bool(const RenderProgress &)>;

    /// The job keeps its own copy of the project, so that editing may go on.
    RenderJob(const Project &project, ItemId composition);

    /// From frame `first` to frame `last`, both included; all frames at the start.
    void SetRange(qint32 first, qint32 last);
    /// What messages call the first frame: 0 at the start, as the files do.
    void SetFirstNumber(qint32 number) { firstNumber = number; }
    void SetFolder(const QString &path) { folder = path; }
    /// Whether the composition's background is drawn; true at the start.
    void SetBackground(bool drawn) { background = drawn; }
    /// Bytes that the decoded drawings may take.
    void SetCacheLimit(qint64 bytes) { cacheLimit = bytes; }
    /// Seconds that have passed since any moment, for the time left; the system's steady clock at
    /// the start.
    void SetClock(std::function<double()> seconds) { clock = std::move(seconds); }

    /// The composition's name, cleaned of what a file name cannot hold, "_", the frame's number in
    /// at least four digits: "walk_0012.png".
    QString FileName(qint32 frame) const;

    /// Makes the folder if need be and writes the files. A drawing that cannot be read ends nothing:
    /// its placeholder is drawn, and a message tells it.
    RenderResult Run(const ProgressFunction &progress = {}) const;

private:
    QString NumberOf(qint32 frame) const;
    QString WhyNot() const;
    RenderProgress ProgressAt(int done, double start) const;
    QString WriteFrame(Renderer *renderer, qint32 frame, QImage *image) const;

    Project project;
    ItemId composition;
    QString folder;
    qint32 first = 0;
    qint32 last = -1;
    qint32 firstNumber = 0;
    bool background = true;
    qint64 cacheLimit = DrawingCache::kDefaultLimit;
    std::function<double()> clock;
};

} // namespace rostrum
