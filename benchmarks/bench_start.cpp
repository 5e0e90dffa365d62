// Starting the program on the sample scene, with the sheet docked, up to the moment when it can be used;
// beside a bare Qt window of the same size. Both in real windows, on a display that nobody sees.
//
// Cold: the system has forgotten all files, which only the administrator can bring about; where that is
// not allowed only the warm start is measured, and a line says so.
#include "bench/Bench.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace {

constexpr int kLongest = 60 * 1000; // ms, of any start; the child gives up as well
constexpr int kWarmRounds = 9;
constexpr int kColdRounds = 3;

/// A display with a window manager, as long as this lives.
class Display
{
public:
    Display()
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QStringLiteral(VN_WITH_DISPLAY),
            { QStringLiteral("sh"), QStringLiteral("-c"),
                QStringLiteral("echo $DISPLAY; exec sleep 3600") });
        while (!process.canReadLine()) {
            if (!process.waitForReadyRead(kLongest))
                throw std::runtime_error("there is no display");
        }
        name = QString::fromLatin1(process.readLine().trimmed());
    }
    ~Display()
    {
        process.terminate();
        process.waitForFinished();
    }
    Display(const Display &) = delete;
    Display &operator=(const Display &) = delete;

    QString name;

private:
    QProcess process;
};

/// A copy of the sample scene, and settings of its own.
class Starts
{
public:
    Starts()
    {
        const QDir sample(QStringLiteral(VN_SAMPLE));
        for (const char *sub : { "", "walk", "splash" }) {
            const QDir from(sample.filePath(QLatin1String(sub)));
            const QDir to(folder.filePath(QLatin1String("scene/") + QLatin1String(sub)));
            to.mkpath(QStringLiteral("."));
            for (const QString &file : from.entryList(QDir::Files))
                QFile::copy(from.filePath(file), to.filePath(file)); // unchecked: opening it tells
        }
        environment.insert(QStringLiteral("DISPLAY"), display.name);
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder.filePath(QStringLiteral("c")));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), folder.filePath(QStringLiteral("d")));
        Run("layout");
    }

    /// Until it says that it is ready.
    void Run(const char *kind) const
    {
        QProcess child;
        child.setProcessEnvironment(environment);
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child.start(QCoreApplication::applicationFilePath(),
            { QStringLiteral("--start"), QLatin1String(kind),
                folder.filePath(QStringLiteral("scene/puddles.rostrum")) });
        while (child.readLine() != "ready\n") { // others may write as well
            if (!child.canReadLine() && !child.waitForReadyRead(kLongest))
                throw std::runtime_error(kind + std::string(" did not start"));
        }
        if (!child.waitForFinished(kLongest) || child.exitStatus() != QProcess::NormalExit
            || child.exitCode() != 0)
            throw std::runtime_error(kind + std::string(" did not end well"));
    }

private:
    QTemporaryDir folder;
    Display display;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

/// Makes the system forget what it keeps of files. @return false where it may not
bool ForgetFiles()
{
    sync();
    QFile switches(QStringLiteral("/proc/sys/vm/drop_caches"));
    return switches.open(QIODevice::WriteOnly) && switches.write("3\n") == 2 && switches.flush();
}

bench::Figures MeasureStart()
{
    const Starts starts;
    const auto window = [&] { starts.Run("window"); };
    const auto bare = [&] { starts.Run("bare"); };
    bench::Figures figures{ bench::Compare(
        QStringLiteral("start on the sample scene, warm"), /*goal=*/3, kWarmRounds, window, bare) };
    if (!ForgetFiles()) {
        std::puts("start on the sample scene, cold: not measured, files cannot be forgotten");
        return figures;
    }
    QVector<double> ours, floor;
    for (int round = 0; round < kColdRounds; ++round) {
        ForgetFiles(); // unchecked: it could a moment ago
        ours << bench::Once(window);
        ForgetFiles(); // unchecked: as above
        floor << bench::Once(bare);
    }
    bench::Figure cold;
    cold.name = QStringLiteral("start on the sample scene, cold");
    cold.ours = bench::Median(ours);
    cold.floor = bench::Median(floor);
    cold.goal = 3;
    return figures << cold;
}

const bench::Registration registration("start", MeasureStart);

} // namespace
