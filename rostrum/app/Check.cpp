#include "Check.h"

#include "CheckReport.h"
#include "suites/Host.h"

#include <QApplication>
#include <QProcess>
#include <QWidget>

#include <cstdio>
#include <map>
#include <memory>

namespace rostrum {
namespace {

constexpr AEGP_Command kUnknownCommand = 4242; // one that nobody knows
constexpr int kIdleCalls = 3;
constexpr int kLongestWalk = 120000; // ms; a library that hangs is ended

/// The panels' containers: plain windows, never shown on any display.
class Containers
{
public:
    PanelWindows Windows()
    {
        PanelWindows windows;
        windows.make = [this](const QByteArray &name) { return Make(name); };
        windows.show = [this](const QByteArray &name) { Find(name)->show(); };
        windows.hide = [this](const QByteArray &name) { Find(name)->hide(); };
        windows.isShown
            = [this](const QByteArray &name) { return Find(name) && Find(name)->isVisible(); };
        windows.isFrontmost = windows.isShown;
        return windows;
    }

private:
    AEGP_PlatformViewRef Make(const QByteArray &name)
    {
        if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
            return nullptr; // no window can be made in this process
        auto window = std::make_unique<QWidget>();
        window->resize(861, 500);
        const WId id = window->winId();
        containers[name] = std::move(window);
        return reinterpret_cast<AEGP_PlatformViewRef>(id);
    }

    QWidget *Find(const QByteArray &name) const
    {
        const auto found = containers.find(name);
        return found == containers.end() ? nullptr : found->second.get();
    }

    std::map<QByteArray, std::unique_ptr<QWidget>> containers;
};

/// A composition to look at: a solid, and a layer of a series whose files need not be there.
void MakeProject(Host &host)
{
    Project project;
    Composition composition;
    composition.size = { 640, 480 };
    composition.duration = composition.rate.FrameTime(24);
    const ItemId compo = project.AddComposition("check", composition);
    project.AddLayer(project.AddSolid("ground", { { 640, 480 }, { 0.5, 0.5, 0.5 } }), compo);
    Footage series;
    series.folder = QStringLiteral("/");
    series.isSeries = true;
    series.size = { 320, 240 };
    for (int number = 1; number <= 8; ++number) {
        series.files << QStringLiteral("check%1.png").arg(number);
        series.numbers << number;
    }
    project.AddLayer(project.AddFootage("check[1-8].png", series), compo);
    host.GetDocument().Replace(project);
    host.GetDocument().view.activeItem = compo;
}

void ServeEvents(Host &host)
{
    host.ReturnToEventLoop();
    if (QCoreApplication::instance()) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void Idle(Host &host)
{
    for (int i = 0; i < kIdleCalls; ++i) {
        host.Driver().CallIdle();
        ServeEvents(host);
    }
}

/// Every command of a plug-in's own, and those of the host that plug-ins watch.
void RunCommands(Host &host)
{
    QVector<AEGP_Command> commands{ kHostCommandUndo, kHostCommandRedo, kHostCommandOpenProject,
        kHostCommandSave, kUnknownCommand };
    for (const MenuItem &item : host.Driver().MenuItems())
        commands << item.command << item.command; // its panel is opened, then closed
    for (const AEGP_Command command : qAsConst(commands)) {
        host.Driver().RunCommand(command); // unchecked: what it answers is the host's own matter
        ServeEvents(host);
    }
}

void WalkPanel(Host &host, const QByteArray &name)
{
    HostDriver &driver = host.Driver();
    driver.TogglePanel(name); // unchecked: the report tells whether the panel was made
    Idle(host);
    driver.CallUpdateMenus(AEGP_WindType_COMP);
    driver.PanelSnapSizes(name);
    for (const FlyoutItem &item : driver.PanelFlyout(name)) {
        if (item.enabled && item.command != AEGP_FlyoutMenuCmdID_NONE) {
            driver.RunFlyout(name, item.command);
            ServeEvents(host);
        }
    }
    driver.TogglePanel(name);
    ServeEvents(host);
}

void WalkThroughLife(Host &host)
{
    HostDriver &driver = host.Driver();
    Idle(host);
    for (AEGP_WindowType window = AEGP_WindType_NONE; window <= 11; ++window)
        driver.CallUpdateMenus(window);
    RunCommands(host);
    for (const QByteArray &panel : driver.Panels())
        WalkPanel(host, panel);
    host.GetDocument().Replace(Project()); // an empty project
    Idle(host);
    driver.CallUpdateMenus(AEGP_WindType_PROJECT);
    driver.CallDeath();
    ServeEvents(host);
}

} // namespace

int RunCheckPass(const CheckSettings &settings, int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    std::unique_ptr<QApplication> application;
    if (settings.withApplication)
        application = std::make_unique<QApplication>(argc, argv);

    Host host;
    host.onComplaint = [](const QByteArray &) {}; // the report has them all
    Host::SetEndHandler([](const QByteArrayList &) {});
    host.effectLanguage = settings.effectNames;
    host.Driver().openProject = host.Driver().saveProject = [] { return A_Err_NONE; };
    Containers containers;
    host.Driver().windows = containers.Windows();
    MakeProject(host);
    host.GetTrace().Start();

    const QString refused = host.Driver().LoadPlugin(settings.plugin);
    if (!refused.isEmpty()) {
        std::printf("not loaded: %s\n", qPrintable(refused));
        return 1;
    }
    std::printf("registered\n%s%s", RegisteredText(host).constData(),
        HooksText(host.GetTrace()).constData());
    WalkThroughLife(host);

    std::printf("used\n%s", UsedText(host.GetTrace()).constData());
    std::printf("panels made: %d\n", host.Driver().PanelsMade());
    for (const QByteArray &line : host.HeldByRule())
        std::printf("held by rule: %s\n", line.constData());
    const QByteArrayList findings = Findings(host);
    for (const QByteArray &line : findings)
        std::printf("FOUND %s\n", line.constData());
    std::printf("%s\n", findings.isEmpty() ? "nothing left open" : "something is wrong");
    std::fflush(stdout);
    return findings.isEmpty() ? 0 : 1;
}

int RunCheck(const CheckSettings &settings, int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const struct
    {
        const char *pass;
        const char *title;
    } passes[] = { { kCheckPassWith, "with the host's application object" },
        { kCheckPassWithout, "without one" } };
    int status = 0;
    for (const auto &pass : passes) {
        std::printf("== %s, %s\n", qPrintable(settings.plugin), pass.title);
        std::fflush(stdout);
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        const bool english = settings.effectNames == EffectLanguage::English;
        process.start(QCoreApplication::applicationFilePath(),
            { QLatin1String(pass.pass), settings.plugin, QStringLiteral("--effect-names"),
                english ? QStringLiteral("en") : QStringLiteral("fr") });
        if (!process.waitForFinished(kLongestWalk)) {
            process.kill();
            process.waitForFinished();
        }
        if (process.exitStatus() != QProcess::NormalExit) {
            std::printf(
                "FOUND the walk did not come to its end: %s\n", qPrintable(process.errorString()));
            status = 1;
        } else if (process.exitCode() != 0) {
            status = 1;
        }
    }
    return status;
}

} // namespace rostrum
