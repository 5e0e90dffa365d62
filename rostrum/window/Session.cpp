#include "Session.h"

#include "render/Placement.h"

#include <QAbstractEventDispatcher>
#include <QThread>

namespace rostrum {

Session::Session(Host &host, QObject *parent) : QObject(parent), host(host)
{
    host.messageArea = [this](const QString &message) { emit MessageShown(message); };
    seen = See();
    connect(QThread::currentThread()->eventDispatcher(), &QAbstractEventDispatcher::aboutToBlock,
        this, &Session::OnAboutToBlock);
}

Session::~Session()
{
    host.messageArea = nullptr;
}

/// A dialog that a plug-in opens inside its undo group serves events, too, and the group is still
/// its own: only the outermost loop closes what was left open. A plug-in that serves events without
/// waiting for any never comes here.
void Session::OnAboutToBlock()
{
    if (QThread::currentThread()->loopLevel() <= 1)
        host.ReturnToEventLoop();
    Look();
}

ItemId Session::ActiveItem() const
{
    const ItemId item = GetDocument().view.activeItem;
    return GetProject().Find(item) ? item : 0;
}

void Session::SetActiveItem(ItemId item)
{
    GetDocument().view.activeItem = item;
    Look();
}

/// The active composition is the last active item that was one, in this project.
void Session::FollowActiveItem() const
{
    const Document &document = GetDocument();
    if (compositionOf != document.ReplaceCount())
        composition = 0;
    compositionOf = document.ReplaceCount();
    if (GetProject().FindComposition(document.view.activeItem))
        composition = document.view.activeItem;
}

ItemId Session::ActiveCompositionId() const
{
    FollowActiveItem();
    return GetProject().FindComposition(composition) ? composition : 0;
}

const Composition *Session::ActiveComposition() const
{
    return GetProject().FindComposition(ActiveCompositionId());
}

int Session::FrameCount() const
{
    const Composition *active = ActiveComposition();
    return active ? rostrum::FrameCount(*active) : 0;
}

Time Session::CurrentTime() const
{
    return GetDocument().view.currentTimes.value(ActiveCompositionId());
}

qint32 Session::CurrentFrame() const
{
    const Composition *active = ActiveComposition();
    return active ? active->rate.FrameAt(CurrentTime()) : 0;
}

void Session::SetCurrentFrame(qint32 frame)
{
    const Composition *active = ActiveComposition();
    if (!active)
        return;
    const qint32 held = qBound(0, frame, qMax(FrameCount() - 1, 0));
    GetDocument().view.currentTimes.insert(ActiveCompositionId(), active->rate.FrameTime(held));
    Look();
}

QVector<LayerId> Session::SelectedLayers() const
{
    const Composition *active = ActiveComposition();
    QVector<LayerId> layers;
    for (const LayerId layer : GetDocument().view.selections.value(ActiveCompositionId())) {
        if (active && active->IndexOf(layer) >= 0)
            layers << layer;
    }
    return layers;
}

void Session::SelectLayers(const QVector<LayerId> &layers)
{
    if (!ActiveComposition())
        return;
    GetDocument().view.selections.insert(ActiveCompositionId(), layers);
    Look();
}

A_Err Session::RunCommand(AEGP_Command command)
{
    const A_Err error = Driver().RunCommand(command);
    Look();
    return error;
}

Session::Seen Session::See() const
{
    const Document &document = GetDocument();
    return { document.GetProject(), document.ReplaceCount(), document.HistoryVersion(),
        ActiveItem(), ActiveCompositionId(), SelectedLayers(), CurrentTime() };
}

void Session::LookOnce()
{
    const Seen before = std::exchange(seen, See());
    const Seen now = seen; // a receiver may look again
    const bool isOther = now.replaceCount != before.replaceCount;
    const bool isOtherItem
        = isOther || now.activeItem != before.activeItem || now.composition != before.composition;
    if (isOther || now.project != before.project)
        emit ProjectChanged();
    if (isOtherItem)
        emit ActiveItemChanged();
    if (isOtherItem || now.selection != before.selection)
        emit SelectionChanged();
    if (isOtherItem || now.time != before.time)
        emit TimeChanged();
    if (now.historyVersion != before.historyVersion)
        emit HistoryChanged();
}

/// A receiver that changes something and looks is served by another round, so that signals do not
/// nest and each receiver sees them in one order.
void Session::Look()
{
    lookAgain = true;
    if (looking)
        return;
    looking = true;
    while (lookAgain) {
        lookAgain = false;
        LookOnce();
    }
    looking = false;
}

} // namespace rostrum
