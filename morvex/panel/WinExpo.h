// WinExpo: the panel, the one window of the plug-in, and the place where changes meet. Those made in
// the host are found by polling at its idle calls, those made in the panel's own widgets come as
// signals; both end in OnUpdate, which brings the document up to date and redraws what is on show.
//
//     +--------------------------------------------+---+
//     | dock: Layer NewCol Transform Effect Setup  | U |   pbRefresh, progressBar
//     |       Board (report)                       | ? |
//     +--------------------------------------------+---+
//     | graph                                          |   a splitter
//     +------------------------------------------------+
//     | grid                                           |
//     +------------------------------------------------+
//
// One composition is on show, the host's active one; the library remembers it by name. Without one,
// the tabs that work on it are disabled and the title is empty.
//
//     WinExpo.cpp           the main loop: polling, OnUpdate, the two timers
//     WinExpo_dispatch.cpp  what each editor and button of the dashboard does
//     WinExpo_columns.cpp   columns moved and made
//     WinExpo_assembly.cpp  construction, the flyout menu, the plain slots
//
// Visible means the flyout's state alone: a panel that is not painted yet, or lies behind another
// one, follows the host all the same.
// Errors    The user is told nothing; the library notes a failed host call in the memory log. A
//           suite that the host does not have is thrown as 516 and is caught where the host called.
// Thread    The host's main thread.
#pragma once

#include "shell/MorvexPanel.h"
#include "shell/WinQtAE.h"
#include "ui_Form.h"
#include "vnQT/UpdateLevel.h"

#include <QBasicTimer>
#include <QDir>

class KDockPannel;
class QTimer;
class ReportWidget;
class T_Var;
class WinGraphDataAE;
class WinGridDataAE;

class WinExpo : public WinQtAE, public Ui::Form, public MorvexPanel
{
    Q_OBJECT

public:
    /// Builds the panel inside the host's container and fills in the host's function table. No timer
    /// runs afterwards: the next idle call is the first sign of life. [host]
    WinExpo(SPBasicSuite *basicSuite, AEGP_PluginID pluginId, AEGP_PanelH panel,
        AEGP_PlatformViewRef container, AEGP_PanelFunctions1 *functions);
    ~WinExpo() override;

    // For the plug-in object.

    void OnHostIdle() override;
    /// Repeated calls push the refresh back, so that it runs once.
    void ScheduleRefresh() override;
    AEGP_PanelRefcon Refcon() override;

    // For the host's flyout menu.

    void PopulateFlyout(AEGP_FlyoutMenuItem *items, A_long *count) override;
    void DoFlyoutCommand(AEGP_FlyoutMenuCmdID command) override;

    // The main loop.

    /// Pushes the document's frame to the host a moment later, and not while a mouse button is down.
    void ScheduleHostTime();
    /// Makes another composition the one on show. @param name empty for none [host]
    void OnCompoChanged(const QByteArray &name);
    /// Copies the host's values of the current cell into the document and shows them. [host]
    void UpdateDocFromHost();

    // The columns.

    /// Moves a column by some places, one undo step; out of the sheet it does nothing. [host] [undo]
    void MoveCol(int col, int delta);
    /// The selected block goes one place, each of its columns in an undo step of its own. It stays
    /// where it is at the sheet's edge, and when more than one range is selected. [host] [undo]
    void MoveSelectedColsLeft();
    void MoveSelectedColsRight();
    /// Adds a column from the fields of the tab "NewCol". @return false when none was made
    /// [host] [undo]
    bool OnCreateCol();
    /// Waits for files to be loaded. @return false
    bool OnLoadExpo();
    /// Aligns the footage layers. [host] [undo]
    bool OnCenterLayers();
    /// Works out the project's folder for a tool that is not started yet. [host]
    bool GetProjectFolder();

    // The order of the slots is published. Those that do nothing belong to it.
public slots:
    void OnTimerRefresh();
    void OnPbCreateAepFromMov();
    void OnPbSelectAll();
    void OnPbSelectNone();
    /// Follows a change. @param caller who caused it; it skips its own notice [host]
    void OnUpdate(UpdateLevel upd, void *caller);
    /// Reloads the sheet from the host, when it is visible. [host]
    void OnRefresh();
    void OnCompoSelected();
    void OnChangeCheckBox();
    void OnPbClearLog();
    /// Pushes the document's frame to the host at once. [host]
    void OnPbTest();
    void OnPbHelp();
    /// Fills the list with the names of all compositions, in the order of the project's walk.
    /// @return false when there is no project, and the list is then untouched, or when the walk
    /// broke off [host]
    bool OnReloadCompoList(QStringList &list);
    void OnPbReloadExpo(); // as OnRefresh, without a repaint of the panel
    /// Carries out what an editor of the dashboard was changed to, or a button. [host] [undo]
    void OnSpinChanged(T_Var *var);
    void OnRealoadStart();
    void OnRealoadDone();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct Dispatch;

    void AddDock(QWidget *splitter);
    void AddGraph(QWidget *splitter);
    void AddGrid(QWidget *splitter);
    void AddReport();
    void AddTabs();

    bool IsGridBusy() const;
    /// By the flyout; false for a widget that is not there.
    bool IsOnShow(const QWidget *widget) const;
    void ReloadSheet();
    void RepaintPanel();
    void RepaintDashboard();
    /// All but "Setup" and "Board", which need no composition.
    void EnableTabs(bool on);
    void FollowActiveCompo();
    bool TakeHostsCell();

    WinGridDataAE *grid = nullptr; // the sheet
    WinGraphDataAE *graph = nullptr;
    KDockPannel *dock = nullptr; // the dashboard
    ReportWidget *report = nullptr; // its last tab
    QTimer *refreshTimer = nullptr; // after a command of the host
    QBasicTimer timeTimer; // delays the push of the current frame
    bool showGraph = true; // by the flyout
    bool showGrid = true; // likewise
    bool showOther = false; // nothing reads it
    QDir otherFolders[2]; // nothing reads them
    bool timePending = false; // a frame waits to be pushed: the host still holds the one before
};
