// The main loop: what has changed in the host, and what follows from a change.

#include "WinExpo.h"

#include "MessageLog.h"
#include "T_Types/T_QtEditTab.h"
#include "panel/Doc.h"
#include "panel/DocMirror.h"
#include "panel/WinGraphDataAE.h"
#include "panel/WinGridDataAE.h"
#include "vnAE/vipLi.h"
#include "vnQT/wSendReportWidget.h"

#include <QApplication>
#include <QTimer>
#include <QTimerEvent>

#include <algorithm>
#include <cstring>

namespace {

constexpr int kRefreshDelay = 100; // ms; a command of the host is seen before it is carried out
constexpr int kHostTimeDelay = 30; // ms
constexpr int kTabsAlwaysOn = 2; // at the end: "Setup" and "Board"

} // namespace

WinExpo::~WinExpo()
{
    timeTimer.stop();
    if (report)
        MessageLog::DropPage(report->efLog);
}

/// The usual answer is to do nothing: this runs at every idle call.
void WinExpo::OnHostIdle()
{
    vipLi *library = GetVipLi();
    if (!library->HasActiveItem() || IsGridBusy())
        return;
    if (!library->IsNamedAsCompo(library->GetActiveCompo()))
        OnUpdate(UpdCompo, this);
    else if (TakeHostsCell())
        OnUpdate(UpdCurrent, this);
}

/// With the sync options on, takes the host's column and frame into the document.
/// @return whether either was another one
bool WinExpo::TakeHostsCell()
{
    vipLi *library = GetVipLi();
    Doc *doc = GetDoc();
    bool changed = false;
    if (doc->syncColumn) {
        const qint32 column = library->GetActiveColumnIndex();
        changed = column != doc->GetCol();
        if (changed)
            doc->SetCol(column);
    }
    if (doc->syncIma && !timePending) { // else the host's frame is the one about to be replaced
        const qint32 frame = library->GetCurrentFrame();
        if (frame != doc->GetRow()) {
            doc->SetRow(frame);
            return true;
        }
    }
    return changed;
}

void WinExpo::OnUpdate(UpdateLevel upd, void *caller)
{
    if (IsGridBusy())
        return;
    if (upd == UpdCompo)
        return FollowActiveCompo();
    if (upd < UpdCurrent)
        return;
    UpdateDocFromHost();
    if (IsOnShow(grid))
        grid->OnUpdate(upd, caller);
    if (IsOnShow(graph))
        graph->OnUpdate(upd, caller);

    // Also for a change that came from the host: what was just read goes back, and changes nothing.
    const Doc *doc = GetDoc();
    if (doc->syncColumn)
        GetVipLi()->SelectColumn(doc->GetCol()); // unchecked: the host keeps its selection
    if (doc->syncIma)
        ScheduleHostTime();
}

void WinExpo::FollowActiveCompo()
{
    vipLi *library = GetVipLi();
    OnCompoChanged(library->GetCompoName(library->GetActiveCompo()));
    EnableTabs(library->Compo != nullptr);
    RepaintPanel();
}

void WinExpo::OnCompoChanged(const QByteArray &name)
{
    vipLi *library = GetVipLi();
    std::memset(library->CompoName, 0, sizeof library->CompoName);
    std::memcpy(library->CompoName, name.constData(),
        std::min<std::size_t>(static_cast<std::size_t>(name.size()), vipLi::kNameBytes - 1));
    GetDoc()->SetRow(-1);
    GetDoc()->SetCol(-1);
    library->Compo = nullptr;
    library->Layer = nullptr;
    setWindowTitle(DisplayText(name.constData()));
    OnRefresh();
}

void WinExpo::UpdateDocFromHost()
{
    ReadDocFromHost(*GetVipLi(), *GetDoc());
    if (dock)
        dock->UpdateAll();
}

void WinExpo::OnRefresh()
{
    ReloadSheet();
    RepaintPanel();
}

void WinExpo::OnTimerRefresh()
{
    OnRefresh();
}

void WinExpo::OnPbReloadExpo()
{
    ReloadSheet();
}

void WinExpo::ScheduleRefresh()
{
    refreshTimer->stop();
    refreshTimer->setSingleShot(true);
    refreshTimer->start(kRefreshDelay);
}

void WinExpo::ScheduleHostTime()
{
    if (timeTimer.isActive())
        return;
    timePending = true;
    timeTimer.start(kHostTimeDelay, this);
}

/// While a button is down the timer goes on asking, so that a drag in the sheet moves the host once,
/// at its end, and not at each row that it crosses.
void WinExpo::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != timeTimer.timerId())
        return WinQtAE::timerEvent(event);
    if (QApplication::mouseButtons() != Qt::NoButton)
        return;
    timeTimer.stop();
    // The composition may have changed since: there is no frame to be pushed until one is current.
    if (GetDoc()->GetRow() >= 0)
        GetVipLi()->SetCurrentFrame(GetDoc()->GetRow());
    timePending = false;
}

void WinExpo::OnPbTest()
{
    GetVipLi()->SetCurrentFrame(GetDoc()->GetRow());
}

bool WinExpo::IsGridBusy() const
{
    return grid && grid->IsBusy();
}

bool WinExpo::IsOnShow(const QWidget *widget) const
{
    return widget && widget->isVisibleTo(this);
}

void WinExpo::ReloadSheet()
{
    if (IsOnShow(grid) && !grid->IsBusy())
        grid->UpdateFromCompo(); // unchecked: what could not be read shows as before
}

/// The graph shows what the host has at its painting. As it fills its own background, the panel's
/// painting leaves it out.
void WinExpo::RepaintPanel()
{
    update();
    if (graph)
        graph->update();
}

void WinExpo::RepaintDashboard()
{
    RepaintPanel();
    if (dock)
        dock->UpdateAll();
}

void WinExpo::EnableTabs(bool on)
{
    if (!dock)
        return;
    for (int tab = 0; tab < dock->count() - kTabsAlwaysOn; ++tab)
        dock->setTabEnabled(tab, on);
}
