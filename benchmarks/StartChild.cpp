#include "StartChild.h"

#include "app/WindowCommand.h"
#include "window/MainWindow.h"
#include "window/Viewer.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QMenuBar>
#include <QScreen>
#include <QSet>
#include <QTimer>

#include <algorithm>
#include <cstdio>

using namespace rostrum;

namespace {

constexpr QSize kSize{ 1500, 900 }; // of Rostrum's window on a screen that is large enough
constexpr int kLongest = 60 * 1000; // ms
bool isWatching = false;
bool leavesLayout = false;

void SayReady()
{
    std::puts("ready");
    std::fflush(stdout);
}

/// Follows Rostrum's start from inside: what is there is looked at whenever events are done.
class Watch : public QObject
{
public:
    explicit Watch(QObject *parent) : QObject(parent)
    {
        qApp->installEventFilter(this);
        connect(&timer, &QTimer::timeout, this, &Watch::OnIdle);
        timer.start(0);
        QTimer::singleShot(kLongest, this, [] { std::_Exit(1); });
    }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            painted.insert(object);
        return false;
    }

private:
    void OnIdle()
    {
        MainWindow *window = nullptr;
        for (QWidget *widget : QApplication::topLevelWidgets())
            window = window ? window : qobject_cast<MainWindow *>(widget);
        auto *viewer = window ? window->findChild<Viewer *>() : nullptr;
        if (!viewer || viewer->Frames().Count() == 0)
            return; // the project is not shown yet
        const PanelDock *sheet = window->Panels().Find("morvex");
        if (!sheet)
            qFatal("the plug-in is not there");
        if (leavesLayout && sheet->isHidden())
            OpenSheet(*window);
        else if (painted.contains(&viewer->View()) && HasPainted(*sheet))
            End(window);
    }

    static void OpenSheet(const MainWindow &window)
    {
        for (QAction *title : window.menuBar()->actions()) {
            emit title->menu()->aboutToShow(); // plug-ins' entries are put in then
            for (QAction *entry : title->menu()->actions()) {
                if (entry->text() == QLatin1String("morvex"))
                    entry->trigger();
            }
        }
    }

    bool HasPainted(const PanelDock &sheet) const
    {
        if (!sheet.isVisible() || !sheet.Container())
            return false;
        const auto tables = sheet.Container()->findChildren<QAbstractScrollArea *>();
        return std::any_of(tables.cbegin(), tables.cend(),
            [&](const QAbstractScrollArea *table) { return painted.contains(table->viewport()); });
    }

    void End(MainWindow *window)
    {
        timer.stop();
        SayReady();
        if (leavesLayout)
            window->close();
        else
            std::_Exit(0); // how long it takes to end is not asked
    }

    QTimer timer;
    QSet<const QObject *> painted;
};

void WatchStart()
{
    if (isWatching)
        new Watch(qApp);
}
Q_COREAPP_STARTUP_FUNCTION(WatchStart)

int ShowBareWindow(int argc, char **argv)
{
    class Bare : public QWidget
    {
    protected:
        void paintEvent(QPaintEvent *) override
        {
            QTimer::singleShot(0, this, [] {
                SayReady();
                std::_Exit(0);
            });
        }
    };
    const QApplication application(argc, argv);
    Bare window;
    window.resize(kSize.boundedTo(window.screen()->availableSize()));
    window.show();
    return QApplication::exec();
}

} // namespace

int bench::RunStartChild(int argc, char **argv)
{
    const QStringList words = { QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]) };
    if (words[0] == QLatin1String("bare"))
        return ShowBareWindow(argc, argv);
    isWatching = true;
    leavesLayout = words[0] == QLatin1String("layout");
    return RunWindow({ words[1] }, argc, argv);
}
