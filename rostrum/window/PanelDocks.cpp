#include "PanelDocks.h"

#include "window/DockTitle.h"

#include <QMenu>
#include <QToolButton>

namespace rostrum {
namespace {

constexpr QSize kFirstPanelSize{ 480, 300 }; // pixels

} // namespace

PanelDock::PanelDock(Session &session, const QByteArray &matchName, QWidget *parent)
    : QDockWidget(QString::fromUtf8(matchName), parent), session(session), matchName(matchName)
{
    setObjectName(QStringLiteral("panel:") + QString::fromUtf8(matchName));
    MakeTitle();
    connect(this, &QDockWidget::visibilityChanged, this,
        [this](bool isVisible) { frontmost = isVisible; });
}

void PanelDock::MakeTitle()
{
    auto *title = new DockTitle(this);
    flyoutButton = title->AddButton("flyout", title->MenuIcon(), tr("Menu of the panel"));
    connect(flyoutButton, &QToolButton::clicked, this, &PanelDock::ShowFlyout);
    setTitleBarWidget(title);
}

/// Its native window makes none of the widgets around it native.
QWidget *PanelDock::MakeContainer()
{
    if (!container) {
        container = new QWidget(this);
        container->setObjectName(QStringLiteral("panelContainer"));
        container->setAttribute(Qt::WA_DontCreateNativeAncestors);
        container->setAttribute(Qt::WA_NativeWindow);
        container->setAutoFillBackground(session.Driver().IsBackgroundPainted(matchName));
        setWidget(container);
    }
    return container;
}

/// A command that comes before another is indented by more, and is the sub menu's title.
void PanelDock::FillFlyout(QMenu *menu)
{
    const QVector<FlyoutItem> items = session.Driver().PanelFlyout(matchName);
    QMenu *into = menu;
    for (int i = 0; i < items.size(); ++i) {
        const FlyoutItem &item = items[i];
        if (item.indent <= 1)
            into = menu;
        if (item.type == AEGP_FlyoutMenuMarkType_SEPARATOR) {
            into->addSeparator();
            continue;
        }
        const QString text = QString::fromUtf8(item.text);
        if (item.indent <= 1 && i + 1 < items.size() && items[i + 1].indent > 1) {
            into = menu->addMenu(text);
            into->menuAction()->setEnabled(item.enabled);
            continue;
        }
        QAction *action = into->addAction(text);
        action->setEnabled(item.enabled);
        action->setCheckable(item.type != AEGP_FlyoutMenuMarkType_NORMAL);
        action->setChecked(item.type != AEGP_FlyoutMenuMarkType_NORMAL);
        connect(action, &QAction::triggered, this, [this, command = item.command] {
            session.Driver().RunFlyout(matchName, command); // unchecked: the plug-in's own matter
            session.Look();
        });
    }
    if (items.isEmpty())
        menu->addAction(tr("(no entries)"))->setEnabled(false);
}

void PanelDock::ShowFlyout()
{
    QMenu menu(this);
    FillFlyout(&menu);
    menu.exec(flyoutButton->mapToGlobal({ 0, flyoutButton->height() }));
}

PanelDocks::PanelDocks(Session &session, QMainWindow *window)
    : QObject(window), session(session), window(window)
{
    PanelWindows &windows = session.Driver().windows;
    windows.make = [this](const QByteArray &name) { return Make(name); };
    windows.show = [this](const QByteArray &name) { Show(name); };
    windows.hide = [this](const QByteArray &name) { Find(name)->hide(); };
    windows.isShown
        = [this](const QByteArray &name) { return Find(name) && !Find(name)->isHidden(); };
    windows.isFrontmost
        = [this](const QByteArray &name) { return Find(name) && Find(name)->IsFrontmost(); };
}

PanelDocks::~PanelDocks()
{
    session.Driver().windows = PanelWindows();
}

void PanelDocks::MakeDocks()
{
    for (const QByteArray &name : session.Driver().Panels()) {
        if (docks.contains(name))
            continue;
        auto *dock = new PanelDock(session, name, window);
        docks.insert(name, dock);
        window->addDockWidget(Qt::RightDockWidgetArea, dock);
        dock->hide();
    }
}

AEGP_PlatformViewRef PanelDocks::Make(const QByteArray &name)
{
    MakeDocks(); // a plug-in may register a panel late
    const WId id = Find(name)->MakeContainer()->winId();
    // A host hands its window over as a pointer. NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<AEGP_PlatformViewRef>(id);
}

void PanelDocks::Show(const QByteArray &name)
{
    PanelDock *dock = Find(name);
    const bool isFirst = !dock->property("wasShown").toBool();
    dock->setProperty("wasShown", true);
    dock->show();
    dock->Container()->show();
    dock->raise();
    if (isFirst && !dock->property("restored").toBool())
        SetFirstSize(dock);
}

/// The largest of the sizes that the panel likes, and never so narrow that nothing can be read in it.
void PanelDocks::SetFirstSize(PanelDock *dock)
{
    QSize size = kFirstPanelSize;
    for (const A_LPoint &liked : session.Driver().PanelSnapSizes(dock->MatchName()))
        size = size.expandedTo({ liked.x, liked.y });
    window->resizeDocks({ dock }, { size.width() }, Qt::Horizontal);
    window->resizeDocks({ dock }, { size.height() }, Qt::Vertical);
}

void PanelDocks::ShowRestored()
{
    for (PanelDock *dock : qAsConst(docks)) {
        if (dock->isHidden())
            continue;
        dock->setProperty("restored", true);
        dock->hide(); // toggling would close what is shown already
        if (session.Driver().TogglePanel(dock->MatchName()))
            session.Tell(tr("The panel \"%1\" could not be made").arg(dock->windowTitle()));
    }
    session.Look();
}

} // namespace rostrum
