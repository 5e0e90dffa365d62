#include "CheckWalk.h"

#include "app/CheckReport.h"
#include "app/OffScreen.h"
#include "suites/Host.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <map>
#include <memory>

namespace rostrum {
namespace {

constexpr AEGP_Command kUnknownCommand = 4242; // one that nobody knows
constexpr AEGP_WindowType kLastWindow = 11; // kinds of windows that the host may tell
constexpr int kIdleCalls = 3;
constexpr int kTimersTime = 300; // ms; more than a plug-in waits before it follows a command

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

    /// All that the panel shows, as a display would have it painted.
    void Paint(const QByteArray &name) const
    {
        if (QWidget *window = Find(name))
            window->grab();
    }

private:
    AEGP_PlatformViewRef Make(const QByteArray &name)
    {
        if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
            return nullptr; // no window can be made in this process
        auto window = std::make_unique<QWidget>();
        window->resize(861, 500);
        KeepOffScreen(window.get());
        const WId id = window->winId();
        containers[name] = std::move(window);
        // A host hands its window over as a pointer. NOLINTNEXTLINE(performance-no-int-to-ptr)
        return reinterpret_cast<AEGP_PlatformViewRef>(id);
    }

    QWidget *Find(const QByteArray &name) const
    {
        const auto found = containers.find(name);
        return found == containers.end() ? nullptr : found->second.get();
    }

    std::map<QByteArray, std::unique_ptr<QWidget>> containers;
};

/// A composition to look at: a solid, and a layer of a series whose files need not be there, hanging
/// from it.
void MakeProject(Host &host)
{
    Project project;
    Composition composition;
    composition.size = { 640, 480 };
    composition.duration = composition.rate.FrameTime(24);
    const ItemId compo = project.AddComposition("check", composition);
    const LayerId ground
        = project.AddLayer(project.AddSolid("ground", { { 640, 480 }, { 0.5, 0.5, 0.5 } }), compo);
    Footage series;
    series.folder = QStringLiteral("/");
    series.isSeries = true;
    series.size = { 320, 240 };
    for (int number = 1; number <= 8; ++number) {
        series.files << QStringLiteral("check%1.png").arg(number);
        series.numbers << number;
    }
    const LayerId drawn = project.AddLayer(project.AddFootage("check[1-8].png", series), compo);
    project.SetParent(compo, drawn, ground);
    host.GetDocument().Replace(project);
    host.GetDocument().view.activeItem = compo;
}

/// Prints a line of ours. The plug-in may have left its own line without an end.
void Say(char mark, const QByteArray &line)
{
    std::printf("\n%c%s\n", mark, line.constData());
    std::fflush(stdout);
}

void Report(const char *title, const QByteArrayList &lines)
{
    for (const QByteArray &line : Section(title, lines))
        Say(kReportMark, line);
}

void ServeEvents(Host &host)
{
    host.ReturnToEventLoop();
    if (QCoreApplication::instance()) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

/// Serves events long enough for a plug-in's own timers.
void ServeTimers()
{
    if (!QCoreApplication::instance())
        return;
    QEventLoop loop;
    QTimer::singleShot(kTimersTime, &loop, &QEventLoop::quit);
    loop.exec();
}

class Walk
{
public:
    Walk(Host &host, const Containers &containers)
        : host(host), driver(host.Driver()), containers(containers)
    { }

    /// @return false when the plug-in could not be loaded, or answered an error
    bool Load(const QString &plugin);
    void GoThroughLife();

    FindingLog findings;
    QVector<PanelSeen> panels;

private:
    template <typename Action>
    void Step(const QByteArray &name, Action action)
    {
        Say(kStepMark, name);
        action();
        ServeEvents(host);
        findings.Look(host, name);
    }
    void Idle(const QByteArray &when);
    void UpdateMenus(AEGP_WindowType window, const QByteArray &when);
    void RunHostCommands(const QByteArray &when);
    void RunPluginCommands();
    void GoThroughPanel(const QByteArray &name);
    void RunFlyout(PanelSeen &seen);
    void ChangeHost(const QByteArray &when);

    Host &host;
    HostDriver &driver;
    const Containers &containers;
};

bool Walk::Load(const QString &plugin)
{
    QString refused;
    Step("the loading and the entry", [&] { refused = driver.LoadPlugin(plugin); });
    if (!refused.isEmpty())
        findings.Add(refused.toUtf8());
    return refused.isEmpty();
}

void Walk::Idle(const QByteArray &when)
{
    Step("the idle calls " + when, [&] {
        for (int i = 0; i < kIdleCalls; ++i) {
            driver.CallIdle();
            ServeEvents(host);
        }
    });
}

void Walk::UpdateMenus(AEGP_WindowType window, const QByteArray &when)
{
    Step("the menus' update for window type " + QByteArray::number(window) + ' ' + when,
        [&] { driver.CallUpdateMenus(window); });
}

void Walk::RunHostCommands(const QByteArray &when)
{
    const struct
    {
        AEGP_Command command;
        const char *name;
    } commands[] = { { kHostCommandUndo, "Undo" }, { kHostCommandRedo, "Redo" },
        { kHostCommandOpenProject, "Open Project" }, { kHostCommandSave, "Save" },
        { kUnknownCommand, "a command that nobody knows" } };
    for (const auto &command : commands) {
        Step(QByteArray(command.name) + ' ' + when, [&] {
            driver.RunCommand(command.command); // unchecked: the host's own matter
        });
    }
}

void Walk::RunPluginCommands()
{
    const QVector<MenuItem> items = driver.MenuItems();
    for (const MenuItem &item : items) {
        for (const char *time : { "the first time", "the second time" }) {
            Step("the menu item \"" + item.text + "\" run " + time, [&] {
                driver.RunCommand(item.command); // unchecked: as above
            });
        }
    }
}

/// The entries that can be chosen are chosen, in order; a choice may change the menu, so that it is
/// asked for before each.
void Walk::RunFlyout(PanelSeen &seen)
{
    const QByteArray panel = " of panel \"" + seen.name + '"';
    Step("the flyout menu" + panel, [&] { seen.flyout = driver.PanelFlyout(seen.name); });
    for (int i = 0; i < seen.flyout.size(); ++i) {
        FlyoutItem item;
        Step("the flyout menu" + panel, [&] { item = driver.PanelFlyout(seen.name).value(i); });
        if (!item.enabled || item.command == AEGP_FlyoutMenuCmdID_NONE)
            continue;
        Step("the flyout entry \"" + item.text + '"' + panel, [&] {
            driver.RunFlyout(seen.name, item.command); // unchecked: the plug-in's own matter
        });
    }
}

/// What a user does in the host beside an open panel: other items, another time, another layer.
void Walk::ChangeHost(const QByteArray &when)
{
    View &view = host.GetDocument().view;
    const Project project = host.GetProject(); // a copy: the plug-in may change what it finds
    const ItemId compo = view.activeItem;
    const auto activate = [&](ItemId item, const char *what) {
        Step(QByteArray(what) + " becoming active " + when, [&] { view.activeItem = item; });
        Idle(QByteArray("with ") + what + " active " + when);
    };
    for (ItemId item = project.NextInWalk(project.RootFolder()); item;
         item = project.NextInWalk(item)) {
        if (!project.FindComposition(item))
            activate(item, "footage");
    }
    activate(0, "no item");
    activate(compo, "the composition");
    if (const Composition *content = project.FindComposition(compo)) {
        view.currentTimes[compo] = content->rate.FrameTime(5);
        for (const LayerPtr &layer : content->layers) {
            view.selections[compo] = { layer->id };
            Idle("with another time and layer " + when);
        }
    }
}

void Walk::GoThroughPanel(const QByteArray &name)
{
    const QByteArray panel = "panel \"" + name + '"';
    const QByteArray when = "with " + panel + " open";
    PanelSeen seen;
    seen.name = name;
    const auto toggle = [&] {
        driver.TogglePanel(name); // unchecked: the report tells whether the panel was made
    };
    Step("the showing of " + panel, toggle);
    seen.isMade = driver.IsPanelMade(name);
    if (seen.isMade) {
        Idle(when);
        Step("the painting of " + panel, [&] { containers.Paint(name); });
        UpdateMenus(AEGP_WindType_COMP, when);
        Step("the snap sizes of " + panel, [&] { seen.snapSizes = driver.PanelSnapSizes(name); });
        RunHostCommands(when);
        ChangeHost(when);
        RunFlyout(seen);
        Step("the wait for timers " + when, ServeTimers);
        Step("the second painting of " + panel, [&] { containers.Paint(name); });
        Step("the closing of " + panel, toggle);
        Step("the second showing of " + panel, toggle);
        Idle(when);
        Step("the second closing of " + panel, toggle);
    }
    panels << seen;
}

void Walk::GoThroughLife()
{
    Idle("over a composition");
    for (AEGP_WindowType window = AEGP_WindType_NONE; window <= kLastWindow; ++window)
        UpdateMenus(window, "over a composition");
    RunHostCommands("over a composition");
    RunPluginCommands();
    const QVector<QByteArray> names = driver.Panels();
    for (const QByteArray &name : names)
        GoThroughPanel(name);
    Step("the project's replacement", [&] {
        const QByteArrayList open = host.Account();
        host.GetDocument().Replace(Project());
        findings.KeepNames(open, host.Account());
    });
    Idle("over an empty project");
    UpdateMenus(AEGP_WindType_PROJECT, "over an empty project");
    Step("the death hook", [&] { driver.CallDeath(); });
}

} // namespace

int RunWalkHere(const CheckSettings &settings, int argc, char **argv)
{
    std::unique_ptr<QApplication> application;
    if (settings.withApplication)
        application = std::make_unique<QApplication>(argc, argv);

    Host host;
    host.onComplaint = nullptr; // the report has them all
    Host::SetEndHandler(nullptr);
    host.effectLanguage = settings.effectNames;
    host.Driver().openProject = host.Driver().saveProject = [] { return A_Err_NONE; };
    Containers containers;
    host.Driver().windows = containers.Windows();
    MakeProject(host);
    host.GetTrace().Start();

    Walk walk(host, containers);
    const bool isLoaded = walk.Load(settings.plugin);
    Report("hooks", HookLines(host.GetTrace()));
    Report("menu items", MenuItemLines(host.Driver()));
    if (isLoaded)
        walk.GoThroughLife();

    Report("panels", PanelLines(walk.panels));
    Report("suites and functions called", CallLines(host.GetTrace()));
    Report("held by rule", Joined(host.HeldByRule()));
    for (const QByteArray &finding : walk.findings.Lines())
        Say(kFindingMark, finding);
    Say(kStepMark, kLastStep);
    return walk.findings.IsEmpty() ? 0 : 1;
}

} // namespace rostrum
