#include "CommandLine.h"

#include "Check.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

namespace rostrum {
namespace {

constexpr int kNotUnderstood = 2;

constexpr char kHelp[]
    = "rostrum, the stand-alone host of exposure sheets\n"
      "\n"
      "  rostrum --check PLUGIN   walks a plug-in library through its life and tells what it\n"
      "                           registered, used and left open; status 1 where there is "
      "something\n"
      "      --effect-names en    the installed effects have English names (fr: French, the "
      "usual)\n"
      "  rostrum --version\n"
      "  rostrum --help\n"
      "\n"
      "The window of the program is still to come.\n";

int NotUnderstood(const QString &why)
{
    std::fprintf(stderr, "rostrum: %s; see rostrum --help\n", qPrintable(why));
    return kNotUnderstood;
}

/// Takes "--effect-names en|fr" out of the words. @return false for another language or none
bool TakeEffectNames(QStringList &words, EffectLanguage &language)
{
    const int at = words.indexOf(QStringLiteral("--effect-names"));
    if (at < 0)
        return true;
    const QString name = words.value(at + 1);
    words.erase(words.begin() + at, words.begin() + qMin(at + 2, words.size()));
    language = name == QLatin1String("en") ? EffectLanguage::English : EffectLanguage::French;
    return name == QLatin1String("en") || name == QLatin1String("fr");
}

} // namespace

int RunCommandLine(int argc, char **argv)
{
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words << QString::fromLocal8Bit(argv[i]);
    CheckSettings settings;
    if (!TakeEffectNames(words, settings.effectNames))
        return NotUnderstood(QStringLiteral("--effect-names wants en or fr"));

    const QString command = words.value(0);
    if (command.isEmpty() || command == QLatin1String("--help")) {
        std::fputs(kHelp, command.isEmpty() ? stderr : stdout);
        return command.isEmpty() ? kNotUnderstood : 0;
    }
    if (command == QLatin1String("--version")) {
        std::printf("rostrum %s\n", ROSTRUM_VERSION);
        return 0;
    }
    const bool isPass
        = command == QLatin1String(kCheckPassWith) || command == QLatin1String(kCheckPassWithout);
    if (command != QLatin1String("--check") && !isPass)
        return NotUnderstood(QStringLiteral("\"%1\" is no command").arg(command));
    if (words.size() != 2)
        return NotUnderstood(QStringLiteral("--check wants the file of one plug-in"));
    settings.plugin = words[1];
    settings.withApplication = command == QLatin1String(kCheckPassWith);
    return isPass ? RunCheckPass(settings, argc, argv) : RunCheck(settings, argc, argv);
}

} // namespace rostrum
