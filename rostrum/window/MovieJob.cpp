#include "MovieJob.h"

#include "render/Placement.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <filesystem>

namespace rostrum {
namespace {

constexpr int kTurn = 100; // ms between two looks at the encoder
constexpr int kErrorLength = 400; // characters of what the encoder says at its end

QString Failed(const QString &path, const QString &why)
{
    return QStringLiteral("The movie \"%1\" cannot be made: %2").arg(path, why);
}

/// The number behind the last "frame=" that the encoder told, -1 without one.
int LastFrameTold(const QByteArray &told)
{
    const int place = told.lastIndexOf("frame=");
    if (place < 0)
        return -1;
    const int end = told.indexOf('\n', place);
    return end < 0 ? -1 : told.mid(place + 6, end - place - 6).trimmed().toInt();
}

/// Takes the place of what had the name before in one step.
bool Replace(const QString &from, const QString &to)
{
    std::error_code error;
    std::filesystem::rename(from.toStdU16String(), to.toStdU16String(), error);
    return !error;
}

} // namespace

QString FindEncoder()
{
    return QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
}

MovieJob::MovieJob(
    const Project &project, ItemId composition, const QString &encoder, const QString &path)
    : job(project, composition), encoder(encoder), path(path)
{
    if (const Composition *found = project.FindComposition(composition)) {
        rate = found->rate;
        last = FrameCount(*found) - 1;
    }
}

void MovieJob::SetRange(qint32 newFirst, qint32 newLast)
{
    first = newFirst;
    last = newLast;
    job.SetRange(first, last);
}

/// Players want even sides and a common pixel format, and take colours for what the file says they are.
QStringList MovieJob::EncoderWords(const QString &pattern, const QString &target) const
{
    return { QStringLiteral("-y"), QStringLiteral("-loglevel"), QStringLiteral("error"),
        QStringLiteral("-nostdin"), QStringLiteral("-progress"), QStringLiteral("pipe:1"),
        QStringLiteral("-framerate"), QStringLiteral("%1/%2").arg(rate.num).arg(rate.den),
        QStringLiteral("-start_number"), QString::number(first), QStringLiteral("-i"), pattern,
        QStringLiteral("-vf"),
        QStringLiteral("pad=ceil(iw/2)*2:ceil(ih/2)*2,scale=out_color_matrix=bt709"),
        QStringLiteral("-pix_fmt"), QStringLiteral("yuv420p"), QStringLiteral("-colorspace"),
        QStringLiteral("bt709"), QStringLiteral("-color_primaries"), QStringLiteral("bt709"),
        QStringLiteral("-color_trc"), QStringLiteral("bt709"), target };
}

QString MovieJob::Encode(const QString &pattern, const QString &target, int frames,
    const RenderJob::ProgressFunction &progress, bool *isCancelled) const
{
    QProcess process;
    process.start(encoder, EncoderWords(pattern, target));
    QByteArray told;
    while (process.state() != QProcess::NotRunning) {
        process.waitForFinished(kTurn); // unchecked: the state tells
        told = told.right(1000) + process.readAllStandardOutput();
        RenderProgress now;
        now.total = 2 * frames;
        now.done = frames + qBound(0, LastFrameTold(told), frames);
        if (progress && !progress(now)) {
            process.kill();
            process.waitForFinished();
            *isCancelled = true;
            return {};
        }
    }
    if (process.error() == QProcess::FailedToStart)
        return Failed(path, process.errorString());
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return {};
    static const QRegularExpression places(QStringLiteral("\\[[^\\]]* @ 0x[0-9a-f]+\\] "));
    QString said = QString::fromUtf8(process.readAllStandardError()).remove(places).trimmed();
    said.replace(target, path); // nobody knows the name that the movie has meanwhile
    return Failed(
        path, said.isEmpty() ? QStringLiteral("the encoder failed") : said.right(kErrorLength));
}

/// What keeps the job from starting, empty when nothing does.
QString MovieJob::WhyNot() const
{
    if (encoder.isEmpty())
        return Failed(path, QStringLiteral("ffmpeg, which does it, is not installed"));
    if (QFileInfo(path).suffix().isEmpty())
        return Failed(path, QStringLiteral("its name does not end in a format, like \".mp4\""));
    return {};
}

/// Every frame's file name is the first one's but for the number; a "%" that is no number is doubled.
QString MovieJob::FilePattern(const QString &folder) const
{
    const QFileInfo file(QDir(folder), job.FileName(first));
    const QString base = file.completeBaseName();
    const int digits = base.size() - base.lastIndexOf(QLatin1Char('_')) - 1;
    QString stem = file.path() + QLatin1Char('/') + base.chopped(digits);
    return stem.replace(QLatin1Char('%'), QLatin1String("%%")) + QLatin1String("%0")
        + QString::number(digits) + QLatin1String("d.png");
}

RenderResult MovieJob::Run(const RenderJob::ProgressFunction &progress)
{
    RenderResult result;
    result.error = WhyNot();
    if (!result.Ok())
        return result;
    const QFileInfo movie(path);
    QTemporaryDir folder(movie.absolutePath() + QStringLiteral("/.rostrum-movie-XXXXXX"));
    if (!folder.isValid()) {
        result.error = Failed(path, folder.errorString());
        return result;
    }
    job.SetFolder(folder.path());
    result = job.Run([&](RenderProgress now) {
        now.total *= 2;
        now.secondsLeft = -1; // how long encoding takes nobody knows
        return !progress || progress(now);
    });
    if (!result.Ok())
        return result;
    const QString target = folder.filePath(QStringLiteral("movie.") + movie.suffix());
    result.error
        = Encode(FilePattern(folder.path()), target, result.written, progress, &result.isCancelled);
    if (result.Ok() && !Replace(target, path))
        result.error = Failed(path, QStringLiteral("it cannot be put in its place"));
    if (!result.Ok())
        result.written = 0;
    return result;
}

} // namespace rostrum
