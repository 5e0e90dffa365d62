#include "Check.h"

#include "app/CheckReport.h"
#include "app/CheckWalk.h"
#include "app/OffScreen.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

namespace rostrum {
namespace {

constexpr int kMilliseconds = 1000; // in a second
constexpr int kLongestStart = 60; // seconds up to the first step, in which no plug-in has a part

/// What a walk's process writes, line by line. The report is passed on, and so is what the plug-in
/// itself wrote, with a mark; findings are kept for the report's end.
class WalkOutput
{
public:
    /// @return true for a step
    bool Take(const QByteArray &line)
    {
        const QByteArray text = line.trimmed();
        if (line.startsWith(kStepMark))
            step = line.mid(1).trimmed();
        else if (line.startsWith(kFindingMark))
            findings << line.mid(1).trimmed();
        else if (line.startsWith(kReportMark))
            std::fputs(line.constData() + 1, stdout);
        else if (!text.isEmpty())
            std::printf("  | %s\n", text.constData());
        std::fflush(stdout);
        return line.startsWith(kStepMark);
    }

    QByteArray step = kFirstStep; // the last one that was begun
    QByteArrayList findings;
};

/// Follows a walk to its end. A step may take as long as the limit, however much is written.
/// @return false when it was ended for taking longer
bool Follow(QProcess &walk, int timeLimit, WalkOutput &output)
{
    QDeadlineTimer deadline(kLongestStart * kMilliseconds);
    while (!deadline.hasExpired() && walk.waitForReadyRead(int(deadline.remainingTime()))) {
        while (walk.canReadLine()) {
            if (output.Take(walk.readLine()))
                deadline.setRemainingTime(qint64(timeLimit) * kMilliseconds);
        }
    }
    if (walk.state() != QProcess::NotRunning)
        walk.waitForFinished(int(deadline.remainingTime())); // unchecked: the state tells
    const bool isLate = walk.state() != QProcess::NotRunning;
    if (isLate) {
        walk.kill();
        walk.waitForFinished(/*msecs=*/-1); // unchecked: a killed process ends
    }
    while (!walk.atEnd())
        output.Take(walk.readLine());
    return !isLate;
}

/// @return why a walk did not come to its end, empty when it did
QByteArray BrokenOff(const QProcess &walk, bool isInTime, int timeLimit, const QByteArray &step)
{
    if (!isInTime) {
        const int limit = step == kFirstStep ? kLongestStart : timeLimit;
        return "it was ended after " + QByteArray::number(limit) + " s in this step";
    }
    if (walk.error() == QProcess::FailedToStart)
        return walk.errorString().toUtf8();
    const QByteArray code = QByteArray::number(walk.exitCode());
    if (walk.exitStatus() != QProcess::NormalExit)
        return "it crashed with the code " + code;
    const bool isAtEnd = step == kLastStep && (walk.exitCode() == 0 || walk.exitCode() == 1);
    return isAtEnd ? QByteArray() : "the process was left with the status " + code;
}

QStringList WalkWords(const CheckSettings &settings, bool withApplication)
{
    const bool isEnglish = settings.effectNames == EffectLanguage::English;
    return { QLatin1String(withApplication ? kWalkWithApplication : kWalkWithoutApplication),
        settings.plugin, QStringLiteral("--effect-names"),
        isEnglish ? QStringLiteral("en") : QStringLiteral("fr") };
}

/// @return true when nothing was found
bool RunWalk(const CheckSettings &settings, bool withApplication, const QTemporaryDir &runtime)
{
    std::printf("%s the host's application object\n", withApplication ? "With" : "\nWithout");
    std::fflush(stdout);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    KeepOffScreen(&environment);
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
    QProcess walk;
    walk.setProcessEnvironment(environment);
    walk.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    walk.setStandardInputFile(QProcess::nullDevice());
    walk.start(QCoreApplication::applicationFilePath(), WalkWords(settings, withApplication),
        QIODevice::ReadOnly);

    WalkOutput output;
    const bool isInTime = Follow(walk, settings.timeLimit, output);
    const QByteArray why = BrokenOff(walk, isInTime, settings.timeLimit, output.step);
    if (!why.isEmpty())
        output.findings << "the walk broke off during " + output.step + ": " + why;
    for (const QByteArray &line : Section("findings", output.findings))
        std::printf("%s\n", line.constData());
    return output.findings.isEmpty() && walk.exitCode() == 0;
}

} // namespace

int RunCheck(const CheckSettings &settings, int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QFileInfo file(settings.plugin);
    if (!file.isFile()) {
        std::fprintf(
            stderr, "rostrum: there is no file \"%s\"\n", settings.plugin.toUtf8().constData());
        return 1;
    }
    CheckSettings absolute = settings; // a name alone would be looked for among the libraries
    absolute.plugin = file.absoluteFilePath();
    const QTemporaryDir runtime; // the toolkit wants one that is the user's alone

    std::printf("%s\n\n", absolute.plugin.toUtf8().constData());
    const bool isWell = RunWalk(absolute, /*withApplication=*/true, runtime);
    const bool isWellAlone = RunWalk(absolute, /*withApplication=*/false, runtime);
    std::printf("\n%s\n", isWell && isWellAlone ? "nothing was found" : "something was found");
    return isWell && isWellAlone ? 0 : 1;
}

} // namespace rostrum
