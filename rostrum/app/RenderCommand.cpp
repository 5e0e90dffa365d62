#include "RenderCommand.h"

#include "app/Terminal.h"
#include "core/ProjectFile.h"
#include "render/ConsoleProgress.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <csignal>
#include <cstdio>
#include <memory>

namespace rostrum {
namespace {

constexpr int kWentWrong = 1;
constexpr int kNotUnderstood = 2;

volatile std::sig_atomic_t stopWanted = 0;

/// Lets Ctrl+C ask for the end instead of bringing it about, as long as it lives.
class StopOnInterrupt
{
public:
    StopOnInterrupt()
    {
        stopWanted = 0;
        before = std::signal(SIGINT, [](int) { stopWanted = 1; });
    }
    ~StopOnInterrupt() { std::signal(SIGINT, before); }
    StopOnInterrupt(const StopOnInterrupt &) = delete;
    StopOnInterrupt &operator=(const StopOnInterrupt &) = delete;

    static bool IsWanted() { return stopWanted != 0; }

private:
    void (*before)(int) = SIG_DFL;
};

struct RenderWords
{
    QString project;
    QString folder;
    QString composition; // empty when none is named
    bool hasRange = false;
    qint32 first = 0;
    qint32 last = 0;
    bool isTransparent = false;
};

void Say(const QString &text)
{
    std::fprintf(stderr, "rostrum: %s\n", text.toUtf8().constData());
}

/// Takes "12-40" or "12". @return false for anything else
bool TakeRange(const QString &text, RenderWords *words)
{
    static const QRegularExpression form(QStringLiteral("^([0-9]+)(?:-([0-9]+))?$"));
    const QRegularExpressionMatch match = form.match(text);
    const QString first = match.captured(1);
    const QString last = match.captured(2).isEmpty() ? first : match.captured(2);
    bool firstFits = false, lastFits = false;
    words->first = first.toInt(&firstFits);
    words->last = last.toInt(&lastFits);
    words->hasRange = true;
    return firstFits && lastFits;
}

/// Takes one option's value. @return what is wrong with it, empty when nothing is
QString TakeOption(const QString &option, const QString &value, RenderWords *words)
{
    if (value.isEmpty() || value.startsWith(QLatin1String("--")))
        return QStringLiteral("%1 wants something behind it").arg(option);
    if (option == QLatin1String("--out"))
        words->folder = value;
    else if (option == QLatin1String("--comp"))
        words->composition = value;
    else if (!TakeRange(value, words))
        return QStringLiteral("--frames wants A-B, not \"%1\"").arg(value);
    return {};
}

/// @return what is wrong, empty when nothing is
QString ReadWords(const QStringList &arguments, RenderWords *words)
{
    static const QStringList withValue{ QStringLiteral("--out"), QStringLiteral("--comp"),
        QStringLiteral("--frames") };
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &word = arguments[i];
        if (withValue.contains(word)) {
            QString wrong = TakeOption(word, arguments.value(++i), words);
            if (!wrong.isEmpty())
                return wrong;
        } else if (word == QLatin1String("--transparent")) {
            words->isTransparent = true;
        } else if (word.startsWith(QLatin1String("--"))) {
            return QStringLiteral("\"%1\" is no option of render").arg(word);
        } else if (words->project.isEmpty()) {
            words->project = word;
        } else {
            return QStringLiteral("render wants one project");
        }
    }
    if (words->project.isEmpty())
        return QStringLiteral("render wants a project");
    return words->folder.isEmpty() ? QStringLiteral("render wants --out and a folder") : QString();
}

/// The composition of the name that was asked for, or the project's only one.
/// @return 0 when it cannot be told; `error` then says why
ItemId FindComposition(const Project &project, const QString &name, QString *error)
{
    QVector<ItemId> found;
    QStringList all;
    for (ItemId item = project.RootFolder(); item; item = project.NextInWalk(item)) {
        if (!project.FindComposition(item))
            continue;
        const QByteArray itemName = project.Find(item)->name;
        all << QLatin1Char('"') + QString::fromUtf8(itemName) + QLatin1Char('"');
        if (name.isEmpty() || itemName == name.toUtf8())
            found << item;
    }
    if (found.size() == 1)
        return found.first();
    if (all.isEmpty())
        *error = QStringLiteral("The project has no composition");
    else if (name.isEmpty())
        *error = QStringLiteral("Name one of the project's compositions with --comp: ")
            + all.join(QLatin1String(", "));
    else
        *error = QStringLiteral("%1 of the project's compositions has the name \"%2\"; there are: ")
                     .arg(found.isEmpty() ? QStringLiteral("None") : QStringLiteral("Not only one"),
                         name)
            + all.join(QLatin1String(", "));
    return 0;
}

RenderResult Render(const Project &project, ItemId composition, const RenderWords &words)
{
    RenderJob job(project, composition);
    if (words.hasRange)
        job.SetRange(words.first, words.last);
    job.SetFolder(words.folder);
    job.SetBackground(!words.isTransparent);
    const StopOnInterrupt stop;
    ConsoleProgress console(stderr, IsTerminal(stderr));
    RenderResult result = job.Run([&](const RenderProgress &progress) {
        console.Show(progress);
        return !StopOnInterrupt::IsWanted();
    });
    console.Finish();
    return result;
}

} // namespace

int RunRender(const QStringList &arguments)
{
    RenderWords words;
    const QString wrong = ReadWords(arguments, &words);
    if (!wrong.isEmpty()) {
        Say(wrong + QStringLiteral("; see rostrum --help"));
        return kNotUnderstood;
    }
    // Image formats that are plug-ins are found by way of an application.
    int count = 1;
    char name[] = "rostrum";
    char *names[] = { name, nullptr };
    std::unique_ptr<QCoreApplication> application;
    if (!QCoreApplication::instance())
        application = std::make_unique<QCoreApplication>(count, names);

    const LoadedProject loaded = LoadProject(words.project);
    QString error = loaded.error;
    const ItemId composition
        = loaded.Ok() ? FindComposition(loaded.project, words.composition, &error) : 0;
    if (!composition) {
        Say(error);
        return kWentWrong;
    }
    const RenderResult result = Render(loaded.project, composition, words);
    for (const QString &message : result.messages)
        Say(message);
    if (!result.error.isEmpty())
        Say(result.error);
    if (result.isCancelled)
        Say(QStringLiteral("stopped after %1 frames").arg(result.written));
    return result.Ok() && result.messages.isEmpty() ? 0 : kWentWrong;
}

} // namespace rostrum
