#include "RenderJob.h"

#include "Placement.h"
#include "core/WholeFile.h"

#include <QBuffer>
#include <QDir>

#include <chrono>

namespace rostrum {
namespace {

constexpr int kLeastDigits = 4;
constexpr int kLongestStem = 60; // UTF-16 units; a file system's names end at 255 bytes

double SteadySeconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

QString CleanStem(const QByteArray &name)
{
    QString stem = QString::fromUtf8(name).left(kLongestStem).trimmed();
    if (!stem.isEmpty() && stem.at(stem.size() - 1).isHighSurrogate())
        stem.chop(1);
    for (QChar &character : stem) {
        const bool isForbidden = QStringLiteral("/\\:*?\"<>|").contains(character);
        if (isForbidden || character < QLatin1Char(' '))
            character = QLatin1Char('_');
    }
    const bool isHidden = stem.startsWith(QLatin1Char('.'));
    return stem.isEmpty() || isHidden ? QStringLiteral("frame") + stem : stem;
}

/// The frame as a file. One without holes goes without an alpha channel.
QByteArray Encoded(const QImage &image, bool isOpaque)
{
    const QImage seen(image.constBits(), image.width(), image.height(), image.bytesPerLine(),
        isOpaque ? QImage::Format_RGB32 : image.format());
    QByteArray bytes;
    QBuffer buffer(&bytes);
    const bool isWritten = buffer.open(QIODevice::WriteOnly) && seen.save(&buffer, "PNG");
    return isWritten ? bytes : QByteArray();
}

} // namespace

RenderJob::RenderJob(const Project &project, ItemId composition)
    : project(project), composition(composition), clock(SteadySeconds)
{
    if (const Composition *found = project.FindComposition(composition))
        last = FrameCount(*found) - 1;
}

void RenderJob::SetRange(qint32 from, qint32 to)
{
    first = from;
    last = to;
}

QString RenderJob::FileName(qint32 frame) const
{
    const Item *item = project.Find(composition);
    const int digits = qMax(kLeastDigits, QString::number(last).size());
    const QString number = QString::number(frame).rightJustified(digits, QLatin1Char('0'));
    return QStringLiteral("%1_%2.png").arg(CleanStem(item ? item->name : QByteArray()), number);
}

/// As messages tell it.
QString RenderJob::NumberOf(qint32 frame) const
{
    return QString::number(qint64(frame) + firstNumber);
}

/// What keeps the job from starting, empty when nothing does.
QString RenderJob::WhyNot() const
{
    const Composition *found = project.FindComposition(composition);
    if (!found)
        return QStringLiteral("There is no composition with the number %1").arg(composition);
    const QString name = QString::fromUtf8(project.Find(composition)->name);
    const qint32 count = FrameCount(*found);
    if (count == 0)
        return QStringLiteral("The composition \"%1\" has no frames").arg(name);
    if (first < 0 || last >= count || first > last)
        return QStringLiteral("The frames %1 to %2 are not in the composition \"%3\", which has %4 "
                              "to %5")
            .arg(NumberOf(first), NumberOf(last), name, NumberOf(0), NumberOf(count - 1));
    if (folder.isEmpty())
        return QStringLiteral("No folder is given for the frames");
    if (!QDir().mkpath(folder))
        return QStringLiteral("The folder \"%1\" cannot be made").arg(folder);
    return {};
}

RenderProgress RenderJob::ProgressAt(int done, double start) const
{
    RenderProgress progress;
    progress.done = done;
    progress.total = last - first + 1;
    if (done > 0)
        progress.secondsLeft = (clock() - start) / done * (progress.total - done);
    return progress;
}

/// @return what went wrong, empty when the file is written
QString RenderJob::WriteFrame(Renderer *renderer, qint32 frame, QImage *image) const
{
    if (!renderer->Render(project, composition, frame, image))
        return renderer->Messages().join(QLatin1Char('\n'));
    const QString path = QDir(folder).filePath(FileName(frame));
    const QByteArray bytes = Encoded(*image, background);
    if (bytes.isEmpty())
        return QStringLiteral("The frame \"%1\" cannot be encoded").arg(path);
    return WriteWholeFile(path, bytes);
}

RenderResult RenderJob::Run(const ProgressFunction &progress) const
{
    RenderResult result;
    result.error = WhyNot();
    if (!result.error.isEmpty())
        return result;
    DrawingCache cache(cacheLimit);
    Renderer renderer(cache);
    renderer.SetBackground(background);
    QImage image;
    QStringList told;
    const double start = clock();
    for (qint32 frame = first; frame <= last; ++frame) {
        if (progress && !progress(ProgressAt(frame - first, start))) {
            result.isCancelled = true;
            return result;
        }
        result.error = WriteFrame(&renderer, frame, &image);
        for (const QString &message : renderer.Messages()) {
            if (told.contains(message))
                continue;
            told << message;
            result.messages << QStringLiteral("Frame %1: %2").arg(NumberOf(frame), message);
        }
        if (!result.error.isEmpty())
            return result;
        ++result.written;
    }
    if (progress)
        progress(ProgressAt(result.written, start)); // unchecked: there is nothing left to cancel
    return result;
}

} // namespace rostrum
