// Makes a movie of a composition's frames, by the encoder of the system (ffmpeg).
//
// The frames are rendered into a temporary folder beside the movie, then encoded. The movie gets its
// name when it is whole: one that was there stays up to then, and stays when anything fails.
#pragma once

#include "render/RenderJob.h"

namespace rostrum {

/// The encoder's program file, empty where it is not installed.
QString FindEncoder();

class MovieJob
{
public:
    /// @param encoder its program file @param path of the movie; its extension tells the format
    MovieJob(
        const Project &project, ItemId composition, const QString &encoder, const QString &path);

    void SetRange(qint32 first, qint32 last);
    /// What messages call the first frame: 0 at the start.
    void SetFirstNumber(qint32 number) { job.SetFirstNumber(number); }

    /// Not to be run in the thread of a window. In the progress each frame counts twice, drawn and
    /// encoded. @return `written` is the number of frames in the movie
    RenderResult Run(const RenderJob::ProgressFunction &progress = {});

    /// The words behind the encoder's name. @param pattern of the frames' files
    QStringList EncoderWords(const QString &pattern, const QString &target) const;

private:
    QString WhyNot() const;
    QString FilePattern(const QString &folder) const;
    QString Encode(const QString &pattern, const QString &target, int frames,
        const RenderJob::ProgressFunction &progress, bool *isCancelled) const;

    RenderJob job;
    QString encoder;
    QString path;
    Rate rate;
    qint32 first = 0;
    qint32 last = 0;
};

} // namespace rostrum
