#include "MainWindow.h"

#include "window/Commands.h"
#include "window/DockTitle.h"
#include "window/DropZone.h"
#include "window/HelpCommands.h"
#include "window/HistoryList.h"
#include "window/MessageLog.h"
#include "window/OneLine.h"
#include "window/ProjectTree.h"
#include "window/Timeline.h"
#include "window/Viewer.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QMenuBar>
#include <QScreen>
#include <QStandardPaths>
#include <QStatusBar>

namespace rostrum {
namespace {

constexpr int kAutosaveInterval = 60; // seconds, unless the settings tell
constexpr char kAutosaveKey[] = "autosave/seconds";
constexpr int kLayoutVersion = 1;
constexpr char kGeometryKey[] = "window/geometry";
constexpr char kLayoutKey[] = "window/layout";
constexpr QSize kFirstSize{ 1500, 900 }; // pixels
constexpr int kProjectWidth = 460; // pixels
constexpr int kTimelineHeight = 300; // pixels

bool IsInside(const QWidget *widget, const QWidget *around)
{
    return widget && around && (widget == around || around->isAncestorOf(widget));
}

} // namespace

Places Places::OfUser()
{
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return { QDir(config).filePath(QStringLiteral("rostrum/rostrum.ini")),
        QDir(data).filePath(QStringLiteral("rostrum")) };
}

MainWindow::MainWindow(Host &host, const Places &places)
    : session(host)
    , settings(places.settingsFile, QSettings::IniFormat)
    , files(session, places.dataFolder)
    , importer(session, this)
    , tree(new ProjectTree(session))
    , viewer(new Viewer(session))
    , timeline(new Timeline(session))
    , messages(new MessageLog)
    , lastMessage(new OneLine)
{
    setObjectName(QStringLiteral("rostrum"));
    setDockOptions(AnimatedDocks | AllowNestedDocks | AllowTabbedDocks);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea); // a sheet wants height
    setCentralWidget(viewer);
    panels = new PanelDocks(session, this);
    idle = new PluginIdle(session, this);
    fileCommands = new FileCommands(session, files, importer, *tree, settings, this);
    editCommands = new EditCommands(session, this);
    compositionCommands = new CompositionCommands(session, *tree, this);
    layerCommands = new LayerCommands(session, *compositionCommands, this);
    pluginMenus = new PluginMenus(
        session, [this] { return ActiveWindowType(); }, this);
    lastMessage->setObjectName(QStringLiteral("lastMessage"));
    statusBar()->addWidget(lastMessage, 1);
    MakeDocks();
    MakeMenus();
    connect(&session, &Session::MessageShown, this, &MainWindow::OnMessage);
    connect(&files, &ProjectFiles::StateChanged, this, &MainWindow::ShowTitle);
    connect(qApp, &QApplication::focusChanged, this, &MainWindow::OnFocusChanged);
    const int seconds = settings.value(QLatin1String(kAutosaveKey), kAutosaveInterval).toInt();
    autosave.setInterval(qBound(1, seconds, 3600) * 1000);
    connect(&autosave, &QTimer::timeout, &files, &ProjectFiles::StartAutosave);
    connect(&files, &ProjectFiles::AutosaveFailed, this,
        [this](const QString &error) { session.Tell(tr("No copy could be saved. ") + error); });
    resize(kFirstSize.boundedTo(screen()->availableSize()));
    ShowTitle();
}

MainWindow::~MainWindow()
{
    idle->Stop();
    session.Driver().CallDeath(); // for a window that was never closed
    disconnect(qApp, nullptr, this, nullptr);
    // They take back from the host what they lent it, so that they go before the session does.
    delete panels;
    delete fileCommands;
}

QDockWidget *MainWindow::AddDock(
    const char *name, const QString &title, QWidget *content, Qt::DockWidgetArea area, bool isOpen)
{
    auto *dock = new QDockWidget(title, this);
    dock->setObjectName(QLatin1String(name));
    dock->setWidget(content);
    dock->setTitleBarWidget(new DockTitle(dock));
    addDockWidget(area, dock);
    dock->setVisible(isOpen);
    return dock;
}

void MainWindow::MakeDocks()
{
    projectDock = AddDock("projectDock", tr("Project"), tree, Qt::LeftDockWidgetArea, true);
    timelineDock
        = AddDock("timelineDock", tr("Timeline"), timeline, Qt::BottomDockWidgetArea, true);
    historyDock = AddDock(
        "historyDock", tr("History"), new HistoryList(session), Qt::LeftDockWidgetArea, false);
    messagesDock = AddDock("messagesDock", tr("Messages"), messages, Qt::LeftDockWidgetArea, false);
    resizeDocks({ projectDock }, { kProjectWidth }, Qt::Horizontal);
    resizeDocks({ timelineDock }, { kTimelineHeight }, Qt::Vertical);
    ConnectTree();
    ConnectTimeline();
    AcceptDrops(viewer);
    AcceptDrops(timeline);
}

void MainWindow::ConnectTree()
{
    connect(tree, &ProjectTree::CompositionOpened, this, [this](ItemId item) {
        session.SetActiveItem(item);
        viewer->View().setFocus();
    });
    connect(
        tree, &ProjectTree::FilesDropped, this, [this](const QStringList &paths, ItemId folder) {
            AfterDrop([=] { fileCommands->TakeDropped(paths, folder); });
        });
    connect(tree, &ProjectTree::LayersWanted, compositionCommands,
        [this](const QVector<ItemId> &items, ItemId composition) {
            compositionCommands->AddLayersTo(composition, items);
        });
    connect(tree, &ProjectTree::RelinkWanted, this,
        [this](ItemId footage) { importer.AskAndRelink(footage); });
    connect(tree, &ProjectTree::BlankWanted, this,
        [this](ItemId footage) { importer.AddBlank(footage); });
}

void MainWindow::ConnectTimeline()
{
    connect(timeline, &Timeline::SigPreview, viewer, &Viewer::OnPreview);
    connect(timeline, &Timeline::SigPreviewEnd, viewer, &Viewer::OnPreviewEnd);
    timeline->AddKeys(viewer->GetTransport().Actions());
}

/// What is dropped where a composition is shown becomes layers of it.
void MainWindow::AcceptDrops(QWidget *widget)
{
    auto *zone = new DropZone(widget);
    connect(zone, &DropZone::ItemsDropped, compositionCommands, &CompositionCommands::AddLayers);
    connect(zone, &DropZone::FilesDropped, this, [this](const QStringList &paths) {
        AfterDrop([=] {
            compositionCommands->AddLayers(fileCommands->TakeDropped(paths, /*folder=*/0));
        });
    });
}

/// The program that files are dragged from waits for the drop's end, and must not wait for a dialog.
void MainWindow::AfterDrop(const std::function<void()> &work)
{
    QTimer::singleShot(0, this, work);
}

void MainWindow::MakeMenus()
{
    QMenu *file = menuBar()->addMenu(tr("&File"));
    fileCommands->Fill(file);
    connect(fileCommands, &FileCommands::QuitWanted, this, &QWidget::close);
    QMenu *edit = menuBar()->addMenu(tr("&Edit"));
    editCommands->Fill(edit);
    connect(editCommands, &EditCommands::HistoryWanted, this, [this] {
        historyDock->show();
        historyDock->raise();
    });
    QMenu *composition = menuBar()->addMenu(tr("&Composition"));
    compositionCommands->Fill(composition);
    QMenu *layer = menuBar()->addMenu(tr("&Layer"));
    layerCommands->Fill(layer);
    QMenu *window = menuBar()->addMenu(tr("&Window"));
    FillWindowMenu(window);
    FillHelpMenu(menuBar()->addMenu(tr("&Help")), this);
    pluginMenus->Attach(file, PluginMenus::kFile);
    pluginMenus->Attach(edit, PluginMenus::kEdit);
    pluginMenus->Attach(composition, PluginMenus::kComposition);
    pluginMenus->Attach(layer, PluginMenus::kLayer);
    pluginMenus->Attach(window, AEGP_Menu_WINDOW);
}

void MainWindow::FillWindowMenu(QMenu *menu)
{
    for (QDockWidget *dock : { projectDock, timelineDock, historyDock, messagesDock })
        menu->addAction(dock->toggleViewAction());
    menu->addSeparator();
    AddEntry(menu, tr("&Reset Layout"), this, &MainWindow::OnReset);
}

// Plug-ins.

int MainWindow::LoadPlugins(const QStringList &paths)
{
    int loaded = 0;
    for (const QString &path : paths) {
        const QString error = QFileInfo(path).isFile() ? session.Driver().LoadPlugin(path)
                                                       : tr("there is no file \"%1\"").arg(path);
        if (error.isEmpty())
            ++loaded;
        else
            session.Tell(tr("A plug-in was left out: %1").arg(error));
    }
    if (loaded < paths.size())
        messagesDock->show();
    panels->MakeDocks();
    return loaded;
}

AEGP_WindowType MainWindow::ActiveWindowType() const
{
    const QWidget *focus = QApplication::focusWidget();
    if (IsInside(focus, projectDock))
        return AEGP_WindType_PROJECT;
    return session.ActiveCompositionId() ? AEGP_WindType_COMP : AEGP_WindType_NONE;
}

/// The item in front is the composition wherever it is worked on: in the viewer, in the timeline, in
/// a plug-in's panel. What the project list makes of it is its own matter.
void MainWindow::OnFocusChanged(QWidget *, QWidget *now)
{
    if (!now || now->window() == nullptr || IsInside(now, projectDock) || IsInside(now, historyDock)
        || IsInside(now, messagesDock))
        return;
    const bool isPanel = [&] {
        for (const QByteArray &name : session.Driver().Panels()) {
            if (IsInside(now, panels->Find(name)))
                return true;
        }
        return false;
    }();
    if (isPanel || IsInside(now, centralWidget()) || IsInside(now, timelineDock))
        session.ActivateComposition();
}

// Start and end.

void MainWindow::LayOut()
{
    firstLayout = saveState(kLayoutVersion);
    restoreGeometry(settings.value(QLatin1String(kGeometryKey)).toByteArray());
    const QByteArray layout = settings.value(QLatin1String(kLayoutKey)).toByteArray();
    restoreState(layout, kLayoutVersion);
    show();
    panels->ShowRestored();
    // While a panel was made its dock was hidden for a moment, and the neighbours took its room.
    restoreState(layout, kLayoutVersion);
}

void MainWindow::OnReset()
{
    restoreState(firstLayout, kLayoutVersion);
    panels->ShowRestored();
}

void MainWindow::Start()
{
    LayOut();
    tree->setFocus();
    session.ActivateComposition();
    fileCommands->OfferLeftCopies();
    idle->Start();
    autosave.start();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!closed && !fileCommands->MayGiveUp()) {
        event->ignore();
        return;
    }
    if (!closed) {
        settings.setValue(QLatin1String(kGeometryKey), saveGeometry());
        settings.setValue(QLatin1String(kLayoutKey), saveState(kLayoutVersion));
        settings.sync();
        autosave.stop();
        idle->Stop();
        files.Discard();
        session.Driver().CallDeath();
    }
    closed = true;
    event->accept();
    emit Closed();
}

void MainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        tree->LookForMissing(); // drawings may have come or gone meanwhile
}

void MainWindow::OnMessage(const QString &message)
{
    messages->Add(message);
    lastMessage->setText(QString(message).replace(QLatin1Char('\n'), QLatin1Char(' ')));
    lastMessage->setToolTip(message);
}

void MainWindow::ShowTitle()
{
    setWindowTitle(files.Title() + QStringLiteral("[*] - Rostrum"));
    setWindowModified(files.IsDirty());
}

} // namespace rostrum
