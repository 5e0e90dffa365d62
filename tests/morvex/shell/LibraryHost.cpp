// A host in a process of its own, for what a library does at its loading and unloading. It loads one,
// says what it finds, line by line, opens the panel if there is one, lets go of the library and ends.
//
//     library_host PLUGIN bare       a host without Qt
//     library_host PLUGIN qt         a host with an application of its own
//     library_host PLUGIN panel      a host without Qt that opens the panel
#include "suites/Host.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QStyle>
#include <QTimer>
#include <QWidget>

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

void Say(const char *what, const QByteArray &value)
{
    std::printf("%s: %s\n", what, value.constData());
    std::fflush(stdout);
}

QByteArray Color(QPalette::ColorRole role)
{
    return QApplication::palette().color(role).name().toLatin1();
}

void SayApplication()
{
    const auto *application = qobject_cast<QApplication *>(QCoreApplication::instance());
    Say("application", application ? "yes" : "no");
    if (!application)
        return;
    QObject::connect(application, &QObject::destroyed, [] { Say("application", "deleted"); });
    Say("platform", QGuiApplication::platformName().toLatin1());
    Say("style", QApplication::style()->metaObject()->className());
    Say("window color", Color(QPalette::Window));
    Say("arguments", QByteArray::number(QCoreApplication::arguments().size()));
    Say("environment", std::getenv("QT_QPA_PLATFORM") ? std::getenv("QT_QPA_PLATFORM") : "unset");
}

/// The panel in a container, shown and painted; both are left to the process's end.
void OpenPanel(const QString &plugin)
{
    auto *host = new rostrum::Host; // left open, as by a host that ends in a hurry
    auto *container = new QWidget;
    container->resize(300, 200);
    rostrum::PanelWindows &windows = host->Driver().windows;
    windows.make = [container](const QByteArray &) {
        return reinterpret_cast<AEGP_PlatformViewRef>(container->winId());
    };
    windows.show = [container](const QByteArray &) { container->show(); };
    Say("loading", host->Driver().LoadPlugin(plugin).toUtf8());
    Say("panel", host->Driver().TogglePanel("morvex") ? "refused" : "made");
    bool timer = false;
    QTimer::singleShot(
        /*msec=*/10, [] { throw 516; }); // as an error of the host comes out of a slot
    QTimer::singleShot(/*msec=*/20, [&timer] { timer = true; });
    const QWidget *panel = container->findChild<QWidget *>();
    QDeadlineTimer deadline(/*msecs=*/10000);
    while (!deadline.hasExpired() && !(timer && panel && panel->isVisible()))
        QCoreApplication::processEvents(QEventLoop::AllEvents, /*maxtime=*/5);
    Say("panel shown", panel && panel->isVisible() ? "yes" : "no");
    Say("timer", timer ? "ran" : "did not run");
}

} // namespace

int main(int argc, char **argv)
{
    const QByteArray mode = argc == 3 ? argv[2] : "";
    std::unique_ptr<QApplication> own;
    if (mode == "qt")
        own = std::make_unique<QApplication>(argc, argv);
    if (own)
        SayApplication();

    void *library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        Say("loading", dlerror());
        return 1;
    }
    SayApplication();
    if (mode == "panel")
        OpenPanel(QString::fromLocal8Bit(argv[1]));
    dlclose(library);
    Say("library", dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD) ? "stays" : "is gone");
    Say("application", QCoreApplication::instance() ? "stays" : "is gone");
    Say("main", "ends");
    return 0;
}
