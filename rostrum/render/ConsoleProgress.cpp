#include "ConsoleProgress.h"

#include <cmath>

namespace rostrum {

QString TimeText(double seconds)
{
    constexpr double longest = 359999; // 99:59:59
    if (!(seconds >= 0))
        return QStringLiteral("-");
    const int whole = static_cast<int>(std::ceil(qMin(seconds, longest)));
    const QLatin1Char zero('0');
    const QString rest = QStringLiteral("%1").arg(whole % 60, 2, 10, zero);
    if (whole < 3600)
        return QStringLiteral("%1:%2").arg(whole / 60).arg(rest);
    return QStringLiteral("%1:%2:%3").arg(whole / 3600).arg(whole / 60 % 60, 2, 10, zero).arg(rest);
}

QString ProgressLine(const RenderProgress &progress, int width)
{
    const int total = qMax(1, progress.total);
    const int filled = static_cast<int>(qint64(qBound(0, progress.done, total)) * width / total);
    const QString count = QString::number(progress.total);
    return QStringLiteral("[%1%2]  %3/%4  left %5")
        .arg(QString(filled, QLatin1Char('#')), QString(width - filled, QLatin1Char('-')))
        .arg(progress.done, count.size())
        .arg(count, TimeText(progress.secondsLeft));
}

void ConsoleProgress::Show(const RenderProgress &progress)
{
    const QString line = ProgressLine(progress);
    if (isLive) {
        // Blanks wipe what a longer line before has left.
        std::fprintf(out, "\r%s", qPrintable(line.leftJustified(shownLength)));
        shownLength = line.size();
        std::fflush(out);
        return;
    }
    const int now = static_cast<int>(qint64(progress.done) * 10 / qMax(1, progress.total));
    if (now == tenth)
        return;
    tenth = now;
    std::fprintf(out, "%s\n", qPrintable(line));
    std::fflush(out);
}

void ConsoleProgress::Finish()
{
    if (shownLength > 0)
        std::fputc('\n', out);
    shownLength = 0;
    std::fflush(out);
}

} // namespace rostrum
