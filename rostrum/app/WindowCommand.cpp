#include "WindowCommand.h"

#include "window/MainWindow.h"
#include "window/PluginFiles.h"
#include "window/Style.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>

namespace rostrum {
namespace {

constexpr int kWentWrong = 1;
constexpr int kNotUnderstood = 2;

struct WindowWords
{
    QString project;
    QStringList plugins;
    EffectLanguage effectNames = EffectLanguage::French;
};

/// @return what is wrong, empty when nothing is
QString ReadWords(const QStringList &arguments, WindowWords *words)
{
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &word = arguments[i];
        if (word == QLatin1String("--plug-in")) {
            const QString file = arguments.value(++i);
            if (file.isEmpty() || file.startsWith(QLatin1String("--")))
                return QStringLiteral("--plug-in wants a file");
            words->plugins << file;
        } else if (word == QLatin1String("--effect-names")) {
            const QString language = arguments.value(++i);
            if (language != QLatin1String("en") && language != QLatin1String("fr"))
                return QStringLiteral("--effect-names wants en or fr");
            words->effectNames = language == QLatin1String("en") ? EffectLanguage::English
                                                                 : EffectLanguage::French;
        } else if (word.startsWith(QLatin1String("--"))) {
            return QStringLiteral("\"%1\" is no option of the window").arg(word);
        } else if (word.isEmpty()) {
            return QStringLiteral("a project has a name");
        } else if (words->project.isEmpty()) {
            words->project = word;
        } else {
            return QStringLiteral("one project is opened at a time");
        }
    }
    return {};
}

void Say(const QString &text)
{
    std::fprintf(stderr, "rostrum: %s\n", text.toUtf8().constData());
}

/// Qt ends a program that finds no display by a message of its own and an abort.
void SayNoDisplay(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type != QtFatalMsg)
        return;
    Say(QStringLiteral("no window can be opened: there is no display that can be used. \"rostrum "
                       "render\" and \"rostrum --check\" need none."));
    std::fprintf(stderr, "%s\n", message.toUtf8().constData());
    std::_Exit(kWentWrong);
}

} // namespace

bool OpensWindow(const QStringList &words)
{
    return words.isEmpty() || !words.first().startsWith(QLatin1String("--"))
        || words.first() == QLatin1String("--plug-in")
        || words.first() == QLatin1String("--effect-names");
}

int RunWindow(const QStringList &arguments, int argc, char **argv)
{
    WindowWords words;
    const QString wrong = ReadWords(arguments, &words);
    if (!wrong.isEmpty()) {
        Say(wrong + QStringLiteral("; see rostrum --help"));
        return kNotUnderstood;
    }
    const QtMessageHandler before = qInstallMessageHandler(SayNoDisplay);
    QApplication application(argc, argv);
    qInstallMessageHandler(before);
    QApplication::setApplicationName(QStringLiteral("Rostrum"));
    ApplyStyle(application);

    Host host;
    host.effectLanguage = words.effectNames;
    MainWindow window(host, Places::OfUser());
    window.LoadPlugins(FindPlugins(PluginFolders()) + words.plugins); // unchecked: it tells
    QObject::connect(&window, &MainWindow::Closed, &application, &QApplication::quit);
    window.Start();
    if (!words.project.isEmpty())
        QTimer::singleShot(0, &window, [&] { window.Open(words.project); }); // over the window
    return QApplication::exec();
}

} // namespace rostrum
