// The program itself in a process and window of its own, worked by keys that come from outside, by way
// of the display server. Any number of them may run at once; each is known by its process.
#pragma once

#include "core/ProjectFile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

namespace testing {

constexpr int kPatience = 60000; // ms, on a busy machine
constexpr int kOneTry = 8000; // ms for keys to have an effect

inline QByteArray Bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

/// What the programs are given to live in, and a folder for projects.
class Home
{
public:
    Home()
    {
        QSettings settings(
            folder.filePath(QStringLiteral("config/rostrum/rostrum.ini")), QSettings::IniFormat);
        settings.setValue(QStringLiteral("autosave/seconds"), 1);
        settings.sync();
        QDir().mkpath(folder.filePath(QStringLiteral("cut")));
    }
    QString Path(const char *name) const
    {
        return folder.filePath(QStringLiteral("cut/") + QLatin1String(name));
    }
    /// Hidden ones as well, in the folder for projects.
    QStringList Files() const
    {
        return QDir(Path("")).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    QDir Data() const { return QDir(folder.filePath(QStringLiteral("data/rostrum"))); }
    QProcessEnvironment Environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(
            QStringLiteral("XDG_CONFIG_HOME"), folder.filePath(QStringLiteral("config")));
        environment.insert(
            QStringLiteral("XDG_DATA_HOME"), folder.filePath(QStringLiteral("data")));
        return environment;
    }

private:
    QTemporaryDir folder;
};

class OtherProgram
{
public:
    OtherProgram(const Home &home, const QStringList &words)
    {
        process.setProcessEnvironment(home.Environment());
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(QStringLiteral(VN_ROSTRUM), words);
        process.waitForStarted(kPatience); // unchecked: what it is to show would never come
    }

    ~OtherProgram()
    {
        if (process.state() != QProcess::NotRunning)
            Kill(); // unchecked: what a test wants of its end it asks for
    }
    OtherProgram(const OtherProgram &) = delete;
    OtherProgram &operator=(const OtherProgram &) = delete;

    /// Its window whose title matches, empty when there is none.
    QString Find(const QString &title) const
    {
        if (process.state() == QProcess::NotRunning)
            return {};
        const QByteArray found = Tell({ QStringLiteral("search"), QStringLiteral("--all"),
            QStringLiteral("--pid"), QString::number(process.processId()),
            QStringLiteral("--onlyvisible"), QStringLiteral("--name"), title });
        return QString::fromLatin1(found.split('\n').last());
    }
    bool Shows(const QString &title) const { return !Find(title).isEmpty(); }
    /// Waits for a window. @return false when it never comes
    bool Comes(const QString &title) const
    {
        return QTest::qWaitFor([&] { return Shows(title); }, kPatience);
    }
    /// Presses keys in a window until they have the effect: what comes before a window is quite up
    /// is lost. @return false when it never comes
    template <typename Effect>
    bool Press(const QString &title, const QStringList &keys, Effect effect) const
    {
        QElapsedTimer passed;
        for (passed.start(); passed.elapsed() < kPatience;) {
            const QString window = Find(title);
            if (!window.isEmpty()) {
                Tell({ QStringLiteral("windowactivate"), QStringLiteral("--sync"), window });
                Tell(QStringList{ QStringLiteral("key"), QStringLiteral("--clearmodifiers") }
                    + keys);
            }
            if (QTest::qWaitFor(effect, window.isEmpty() ? 100 : kOneTry))
                return true;
        }
        return false;
    }
    /// Makes a composition as the dialog proposes it.
    bool MakeComposition(const QString &title) const
    {
        const QString dialog = QStringLiteral("^New Composition$");
        return Press(title, { QStringLiteral("ctrl+n") }, [&] { return Shows(dialog); })
            && Press(dialog, { QStringLiteral("Return") }, [&] { return !Shows(dialog); });
    }
    /// Answers a question by its proposed button, or by keys that lead to another one.
    bool Answer(
        const QString &titleThen, const QStringList &keys = { QStringLiteral("Return") }) const
    {
        return Press(QuestionTitle(), keys, [&] { return Shows(titleThen); });
    }
    static QString QuestionTitle() { return QStringLiteral("^Rostrum$"); }

    /// Ends it as nothing else does: it gets no word in. @return whether it had been running
    bool Kill()
    {
        process.kill();
        return process.waitForFinished(kPatience) && process.exitStatus() == QProcess::CrashExit;
    }
    /// By its own command, from a project without changes. @return whether it ended well
    bool Quit(const QString &title)
    {
        return Press(title, { QStringLiteral("ctrl+q") },
                   [&] { return process.state() == QProcess::NotRunning; })
            && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }

private:
    /// Works the keyboard and looks for windows, as a person does.
    static QByteArray Tell(const QStringList &words)
    {
        QProcess hand;
        hand.start(QStringLiteral("xdotool"), words);
        hand.waitForFinished(kPatience);
        return hand.readAllStandardOutput().trimmed();
    }

    QProcess process;
};

} // namespace testing
