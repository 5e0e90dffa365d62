// The panel's construction, its flyout menu, and the slots that need no more than a line or two.

#include "WinExpo.h"

#include "MessageLog.h"
#include "T_Types/T_QtEditTab.h"
#include "T_Types/T_Undo.h"
#include "Version.h"
#include "panel/Doc.h"
#include "panel/WinGraphDataAE.h"
#include "panel/WinGridDataAE.h"
#include "shell/SuiteHandler.h"
#include "vnAE/hostErrors.h"
#include "vnAE/vipLi.h"
#include "vnQT/wSendReportWidget.h"

#include <QSettings>
#include <QSplitter>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

constexpr int kFontSize = 8; // points
constexpr int kDashboardRows = 2; // of editors in a column
// Shares of the height. In a tall panel the graph's root is seen; the sheet always has the most.
constexpr int kGraphShare = 10000;
constexpr int kGridShare = 20000;
constexpr AEGP_FlyoutMenuCmdID kShowGraphCommand = 30;
constexpr AEGP_FlyoutMenuCmdID kShowGridCommand = 31;

/// As much room as there is goes to graph and grid.
void LetGrow(QWidget *widget)
{
    widget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    widget->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

/// The first lines of the log page.
void WriteBanner()
{
    for (const char *line :
        { "--- Morvex Log is Ready --- from qWarning() ", "Morvex, the exposure sheet",
            Version::Name(), Version::BuildDate(), Version::BuildTime(), "" })
        qWarning("%s", line);
}

AEGP_FlyoutMenuItem FlyoutEntry(
    AEGP_FlyoutMenuMarkType mark, AEGP_FlyoutMenuCmdID command, const char *text)
{
    return { /*indent=*/1, mark, /*enabledB=*/1, command,
        reinterpret_cast<const A_u_char *>(text) };
}

AEGP_FlyoutMenuItem FlyoutSwitch(bool on, AEGP_FlyoutMenuCmdID command, const char *text)
{
    return FlyoutEntry(
        on ? AEGP_FlyoutMenuMarkType_CHECKED : AEGP_FlyoutMenuMarkType_NORMAL, command, text);
}

} // namespace

WinExpo::WinExpo(SPBasicSuite *basicSuite, AEGP_PluginID pluginId, AEGP_PanelH panel,
    AEGP_PlatformViewRef container, AEGP_PanelFunctions1 *functions)
    : WinQtAE(basicSuite, pluginId, panel, container, functions)
{
    QFont small = font(); // two rows of editors fit the dock's height with it
    small.setPointSize(kFontSize);
    setFont(small);
    setupUi(this);
    label->setText(label->text().arg(QString::fromLatin1(Version::GuideAddress())));
    OnRealoadDone();
    MessageLog::Install();

    auto *splitter = new QSplitter(Qt::Vertical, this);
    T_Undo::SetEnabled(false); // the host has the history
    AddDock(splitter);
    AddGraph(splitter);
    AddGrid(splitter);
    splitter->setMinimumHeight(1); // a low container cuts the sheet, not the dashboard above it
    splitter->setSizes({ kGraphShare, kGridShare });
    splitter->show(); // what is in it shows by the flyout alone

    connect(dock, &KDockPannel::SignalValueChanged, this, &WinExpo::OnSpinChanged);
    connect(pbRefresh, &QPushButton::clicked, this, &WinExpo::OnRefresh);
    connect(pbDb1, &QPushButton::clicked, this, &WinExpo::OnPbTest);

    GetVipLi()->FindEfxKeys(); // unchecked: the tab "Effect" does nothing for what is not found
    OnPbCreateAepFromMov();
    AddReport();
    for (QWidget *widget : std::initializer_list<QWidget *>{ ckDb1, ckDb2, ckDb3, pbDb1 })
        widget->hide(); // the developer's
    AddTabs();

    refreshTimer = new QTimer(this);
    connect(refreshTimer, &QTimer::timeout, this, &WinExpo::OnTimerRefresh);
}

/// The strip then reads dashboard, refresh column, the developer's column.
void WinExpo::AddDock(QWidget *splitter)
{
    dock = new KDockPannel(this, kDashboardRows);
    horizontalLayout->insertWidget(0, dock);
    verticalLayout->addWidget(splitter);
}

void WinExpo::AddGraph(QWidget *splitter)
{
    graph = new WinGraphDataAE(splitter);
    connect(graph, &WinGraphDataAE::SigSomethingHasChanged, this, &WinExpo::OnUpdate);
    LetGrow(graph);
    graph->setVisible(showGraph);
}

void WinExpo::AddGrid(QWidget *splitter)
{
    grid = new WinGridDataAE(splitter);
    connect(grid, &WinGridDataAE::SigSomethingHasChanged, this, &WinExpo::OnUpdate);
    LetGrow(grid);
    grid->setVisible(showGrid);
}

void WinExpo::AddReport()
{
    report = new ReportWidget(this);
    MessageLog::SetPage(report->efLog);
    WriteBanner();
}

void WinExpo::AddTabs()
{
    dock->AddExtraTab(report, QStringLiteral("Board"));
    dock->SetStructs(GetDoc());
    EnableTabs(false);
}

AEGP_PanelRefcon WinExpo::Refcon()
{
    return PanelRefcon();
}

void WinExpo::PopulateFlyout(AEGP_FlyoutMenuItem *items, A_long *count)
{
    static char version[64]; // the host keeps the pointer
    std::snprintf(version, sizeof version, "%s - %s", Version::Name(), Version::BuildDate());
    const AEGP_FlyoutMenuItem separator
        = FlyoutEntry(AEGP_FlyoutMenuMarkType_SEPARATOR, AEGP_FlyoutMenuCmdID_NONE, nullptr);
    const std::array<AEGP_FlyoutMenuItem, 5> entries{ separator,
        FlyoutSwitch(showGraph, kShowGraphCommand, "Show Graph"),
        FlyoutSwitch(showGrid, kShowGridCommand, "Show Grid"), separator,
        FlyoutEntry(AEGP_FlyoutMenuMarkType_NORMAL, AEGP_FlyoutMenuCmdID_NONE, version) };
    constexpr A_long all = static_cast<A_long>(entries.size());
    std::copy_n(entries.begin(), qBound(0, *count, all), items);
    *count = all; // also where there was room for fewer: the host learns how many there are
}

void WinExpo::DoFlyoutCommand(AEGP_FlyoutMenuCmdID command)
{
    if (command == kShowGraphCommand) {
        showGraph = !showGraph;
        graph->setVisible(showGraph);
        update();
    }
    if (command == kShowGridCommand) {
        showGrid = !showGrid;
        grid->setVisible(showGrid);
        ReloadSheet(); // while hidden it took no updates
    }
}

/// The settings of the program's earlier form; there is nothing in them yet.
void WinExpo::OnPbCreateAepFromMov()
{
    const QSettings settings(QStringLiteral("Tessaly"), QStringLiteral("Morvex4After"));
}

bool WinExpo::OnReloadCompoList(QStringList &list)
{
    vipLi *library = GetVipLi();
    SuiteHandler suites(library->BasicSuite);
    AEGP_ProjectH project = nullptr;
    if (VN_HOST_FAILED(suites.Proj8()->AEGP_GetProjectByIndex(0, &project)) || !project)
        return false;
    AEGP_ItemH item = nullptr;
    if (VN_HOST_FAILED(suites.Proj8()->AEGP_GetProjectRootFolder(project, &item)) || !item)
        return false;

    list.clear();
    const AEGP_ItemSuite7 *items = suites.Item11();
    for (;;) {
        AEGP_ItemH next = nullptr;
        if (VN_HOST_FAILED(items->AEGP_GetNextProjItem(project, item, &next)))
            return false;
        if (!next)
            break;
        item = next;
        AEGP_ItemType type = AEGP_ItemType_NONE;
        if (VN_HOST_FAILED(items->AEGP_GetItemType(item, &type)))
            return false;
        char name[vipLi::kNameBytes] = {};
        if (type != AEGP_ItemType_COMP)
            continue;
        if (VN_HOST_FAILED(items->AEGP_GetItemName(item, name)))
            return false;
        list << DisplayText(name);
    }
    dock->UpdateAll();
    return true;
}

void WinExpo::OnRealoadStart()
{
    pbRefresh->hide();
    progressBar->setRange(0, 0); // busy, with no end known
    progressBar->show();
}

void WinExpo::OnRealoadDone()
{
    pbRefresh->show();
    progressBar->hide();
}

// Published slots with nothing to do: the log page clears itself, the rest has no widget here.

void WinExpo::OnPbSelectAll() { }

void WinExpo::OnPbSelectNone() { }

void WinExpo::OnCompoSelected() { }

void WinExpo::OnChangeCheckBox() { }

void WinExpo::OnPbClearLog() { }

void WinExpo::OnPbHelp() { }
