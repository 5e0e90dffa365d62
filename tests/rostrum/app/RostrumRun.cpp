#include "RostrumRun.h"

#include "testing/Platform.h"

#include <QProcess>

namespace testing {
namespace {

constexpr int kLongestRun = 120000; // ms; for a machine that is very busy

QString Indented(const QString &line, int depth)
{
    return line.startsWith(QString(depth, QLatin1Char(' '))) ? line.mid(depth) : QString();
}

} // namespace

QStringList RostrumRun::WalkLines(int walk) const
{
    QStringList lines;
    int current = -1;
    for (const QString &line : out.split(QLatin1Char('\n'))) {
        if (line.endsWith(QLatin1String(" the host's application object")))
            ++current;
        else if (current == walk && line.startsWith(QLatin1String("  ")))
            lines << line;
    }
    return lines;
}

QStringList RostrumRun::Section(int walk, const QString &title) const
{
    QStringList section;
    bool isInside = false;
    for (const QString &line : WalkLines(walk)) {
        const QString text = Indented(line, 4);
        if (text.isEmpty())
            isInside = line == QLatin1String("  ") + title;
        else if (isInside)
            section << text;
    }
    return section;
}

QStringList RostrumRun::PluginLines(int walk) const
{
    QStringList lines;
    for (const QString &line : WalkLines(walk)) {
        if (line.startsWith(QLatin1String("  | ")))
            lines << line.mid(4);
    }
    return lines;
}

RostrumRun RunRostrum(
    const QStringList &words, const QString &folder, const QProcessEnvironment &environment)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(VN_ROSTRUM), words);
    RostrumRun run;
    if (!process.waitForFinished(kLongestRun)) {
        process.kill();
        process.waitForFinished();
    } else if (process.exitStatus() == QProcess::NormalExit) {
        run.status = process.exitCode();
    }
    if (!folder.isEmpty())
        AwaitUnused(folder);
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

QString TestPlugin(const QString &name)
{
    return QStringLiteral(VN_TEST_PLUGINS "/%1" VN_LIBRARY_SUFFIX).arg(name);
}

} // namespace testing
