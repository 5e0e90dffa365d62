// The window of the program: project list, viewer, timeline, the panels of plug-ins, and the menus.
//
// Order of calls:
//   1. LoadPlugins, then Open where a project was named
//   2. Start: lays the docks out as they were left, shows the window, offers what was left unsaved,
//      calls idle hooks and saves copies from then on
//   3. Closing the window asks about what is not saved; then the plug-ins' death hooks are called,
//      and nothing of the host may be called any more
#pragma once

#include "window/CompositionCommands.h"
#include "window/EditCommands.h"
#include "window/FileCommands.h"
#include "window/LayerCommands.h"
#include "window/PanelDocks.h"
#include "window/PluginIdle.h"
#include "window/PluginMenus.h"

#include <QMainWindow>
#include <QSettings>

QT_FORWARD_DECLARE_CLASS(QLabel)

namespace rostrum {

class HistoryList;
class MessageLog;
class ProjectTree;
class Timeline;
class Viewer;

/// Where the program keeps what is the user's own.
struct Places
{
    QString settingsFile; // recent projects and the layout
    QString dataFolder; // copies of projects without a file

    static Places OfUser();
};

class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// @param host is kept by reference
    MainWindow(Host &host, const Places &places);
    ~MainWindow() override;

    /// Loads plug-ins; one that fails is told and left out. @return how many are in
    int LoadPlugins(const QStringList &files);
    /// @return true when the project is open
    bool Open(const QString &path) { return fileCommands->Open(path); }
    void Start();

    Session &GetSession() { return session; }
    ProjectFiles &Files() { return files; }
    PanelDocks &Panels() { return *panels; }

signals:
    /// The end of the program, also with a panel afloat.
    void Closed();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QDockWidget *AddDock(const char *name, const QString &title, QWidget *content,
        Qt::DockWidgetArea area, bool isOpen);
    void MakeDocks();
    void ConnectTree();
    void ConnectTimeline();
    void AcceptDrops(QWidget *widget);
    void AfterDrop(const std::function<void()> &work);
    void MakeMenus();
    void FillWindowMenu(QMenu *menu);
    void LayOut();
    void OnReset();
    void OnMessage(const QString &message);
    void OnFocusChanged(QWidget *old, QWidget *now);
    void ShowTitle();
    AEGP_WindowType ActiveWindowType() const;

    Session session;
    QSettings settings;
    ProjectFiles files;
    Importer importer;
    ProjectTree *tree;
    Viewer *viewer;
    Timeline *timeline;
    MessageLog *messages;
    QDockWidget *projectDock = nullptr;
    QDockWidget *timelineDock = nullptr;
    QDockWidget *historyDock = nullptr;
    QDockWidget *messagesDock = nullptr;
    QLabel *lastMessage;
    PanelDocks *panels;
    PluginIdle *idle;
    PluginMenus *pluginMenus;
    FileCommands *fileCommands;
    EditCommands *editCommands;
    CompositionCommands *compositionCommands;
    LayerCommands *layerCommands;
    QTimer autosave;
    QByteArray firstLayout;
    bool closed = false;
};

} // namespace rostrum
