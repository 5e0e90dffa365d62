#include "CommandLine.h"

#include "app/Check.h"
#include "app/CheckWalk.h"
#include "app/RenderCommand.h"
#include "app/Terminal.h"
#include "app/WindowCommand.h"

#include <QStringList>

#include <cstdio>

namespace rostrum {
namespace {

constexpr int kNotUnderstood = 2;
constexpr int kLongestTimeLimit = 24 * 60 * 60; // seconds

constexpr char kTitle[] = "rostrum, the stand-alone host of exposure sheets\n\n";
constexpr char kHelp[]
    = "  rostrum --check PLUGIN      walks a plug-in library through its life and tells\n"
      "                              what it registered, called and left open; status 1\n"
      "                              where something was found\n"
      "      --effect-names en|fr    the language of the installed effects' names, fr\n"
      "                              unless told\n"
      "      --time-limit SECONDS    for each step of the walk, 60 unless told\n"
      "  rostrum --version\n"
      "  rostrum --help\n";

int NotUnderstood(const QString &why)
{
    std::fprintf(stderr, "rostrum: %s; see rostrum --help\n", why.toUtf8().constData());
    return kNotUnderstood;
}

/// Takes one option's value. @return what is wrong with it, empty when nothing is
QString TakeOption(const QString &option, const QString &value, CheckSettings &settings)
{
    if (option == QLatin1String("--effect-names")) {
        if (value != QLatin1String("en") && value != QLatin1String("fr"))
            return QStringLiteral("--effect-names wants en or fr");
        settings.effectNames
            = value == QLatin1String("en") ? EffectLanguage::English : EffectLanguage::French;
        return {};
    }
    if (option == QLatin1String("--time-limit")) {
        settings.timeLimit = value.toInt(); // 0 for what is no number
        return settings.timeLimit >= 1 && settings.timeLimit <= kLongestTimeLimit
            ? QString()
            : QStringLiteral("--time-limit wants seconds, 1 to %1").arg(kLongestTimeLimit);
    }
    return QStringLiteral("\"%1\" is no option of --check").arg(option);
}

/// The words behind a command that takes one plug-in and options, in any order.
/// @return what is wrong, empty when nothing is
QString ReadCheckWords(const QStringList &words, CheckSettings &settings)
{
    QStringList files;
    for (int i = 0; i < words.size(); ++i) {
        if (!words[i].startsWith(QLatin1String("--"))) {
            files << words[i];
            continue;
        }
        QString wrong = TakeOption(words[i], words.value(i + 1), settings);
        if (!wrong.isEmpty())
            return wrong;
        ++i;
    }
    if (files.size() != 1 || files[0].isEmpty())
        return QStringLiteral("--check wants the file of one plug-in");
    settings.plugin = files[0];
    return {};
}

int RunCheckCommand(const QString &command, const QStringList &words, int argc, char **argv)
{
    CheckSettings settings;
    const QString wrong = ReadCheckWords(words, settings);
    if (!wrong.isEmpty())
        return NotUnderstood(wrong);
    if (command == QLatin1String("--check"))
        return RunCheck(settings, argc, argv);
    settings.withApplication = command == QLatin1String(kWalkWithApplication);
    return RunWalkHere(settings, argc, argv);
}

} // namespace

int RunCommandLine(int argc, char **argv)
{
    PrepareTerminal();
    QStringList words = CommandWords(argc, argv).mid(1);
    if (words.value(0) == QLatin1String("render"))
        return RunRender(words.mid(1)); // it needs no display, and may have none
    if (OpensWindow(words))
        return RunWindow(words, argc, argv);

    const QString command = words.takeFirst();
    if (command == QLatin1String("--check") || command == QLatin1String(kWalkWithApplication)
        || command == QLatin1String(kWalkWithoutApplication)) {
        return RunCheckCommand(command, words, argc, argv);
    }
    const bool isHelp = command == QLatin1String("--help");
    if (!isHelp && command != QLatin1String("--version"))
        return NotUnderstood(QStringLiteral("\"%1\" is no command").arg(command));
    if (!words.isEmpty())
        return NotUnderstood(QStringLiteral("%1 stands alone").arg(command));
    if (isHelp)
        std::printf("%s%s%s%s", kTitle, kWindowHelp, kRenderHelp, kHelp);
    else
        std::printf("rostrum %s\n", ROSTRUM_VERSION);
    return 0;
}

} // namespace rostrum
