#include "TimelineTracks.h"

#include "ImageNumber.h"
#include "ItemText.h"
#include "TimelineRuler.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QToolTip>

#include <cmath>

namespace rostrum {
namespace {

constexpr int kDragStart = 3; // pixels
constexpr int kSnapReach = 8; // pixels

} // namespace

TimelineTracks::TimelineTracks(TimelineBoard &board, QWidget *parent)
    : QWidget(parent), board(board)
{
    setObjectName(QStringLiteral("timelineTracks"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(100, 2 * TimelineRows::kRowHeight);
    connect(&board, &TimelineBoard::SigChanged, this, &TimelineTracks::OnChanged);
    connect(&board, &TimelineBoard::SigScrolled, this, &TimelineTracks::OnChanged);
    connect(&board.GetSession(), &Session::TimeChanged, this, &TimelineTracks::OnTimeChanged);
}

QString TimelineTracks::HintAt(const QPoint &place) const
{
    const TimelineHit hit = HitTest(board, place);
    if (hit.row < 0 || hit.kind == TimelineHit::Nothing)
        return {};
    const Layer *layer = board.LayerOf(board.Rows().At(hit.row));
    if (!layer)
        return {};
    const Rate rate = board.GetRate();
    Time time = rate.FrameTime(hit.frame);
    if (hit.kind == TimelineHit::Key) {
        if (!hit.key.stream.IsTimeRemap())
            return {};
        time = layer->ToCompTime(hit.key.time);
    }
    const int image = ImageAt(board.Shown(), *layer, time);
    return image < 0 && ImageCount(board.Shown(), *layer) == 0
        ? LayerText(board.Shown(), *layer)
        : ImageText(board.Shown(), *layer, image);
}

void TimelineTracks::changeEvent(QEvent *event)
{
    OnChanged(); // colours, or the font
    QWidget::changeEvent(event);
}

bool TimelineTracks::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        auto *help = static_cast<QHelpEvent *>(event);
        QToolTip::showText(help->globalPos(), HintAt(help->pos()), this);
        return true;
    }
    // Esc belongs to the drag, whatever the window would do with it.
    if (event->type() == QEvent::ShortcutOverride && dragging
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void TimelineTracks::mousePressEvent(QMouseEvent *event)
{
    board.GetSession().ActivateComposition();
    if (event->button() == Qt::RightButton) {
        const TimelineHit hit = HitTest(board, event->pos());
        if (hit.kind == TimelineHit::Key && !board.IsSelected(hit.key))
            board.SelectKey(hit.key, {});
        else if (hit.layer && hit.kind != TimelineHit::Key)
            board.SelectForDrag(hit.layer);
        return;
    }
    if (event->button() != Qt::LeftButton || held)
        return;
    held = true;
    grabbedAt = event->pos();
    grabbed = HitTest(board, event->pos());
    draggedIn = board.Place();
    Press(grabbed, event->modifiers());
}

/// What is selected already stays so for a drag of all that is; Ctrl takes it out at once.
void TimelineTracks::Press(const TimelineHit &hit, Qt::KeyboardModifiers modifiers)
{
    clicked = modifiers;
    selectsLate = false;
    keysBefore = modifiers ? board.Keys() : KeyIds();
    if (hit.kind == TimelineHit::Nothing) {
        if (hit.row < 0 && !modifiers)
            board.SelectNone();
        board.SelectKeys(keysBefore);
        return;
    }
    const bool isKey = hit.kind == TimelineHit::Key;
    const bool isSelected = isKey ? board.IsSelected(hit.key) : board.IsSelected(hit.layer);
    selectsLate = isSelected && !(modifiers & Qt::ControlModifier);
    if (!selectsLate)
        SelectPressed();
    draggedKeys = board.Keys();
    draggedLayers = board.GetSession().SelectedLayers();
    held = isKey ? board.IsSelected(hit.key) : board.IsSelected(hit.layer);
}

void TimelineTracks::SelectPressed()
{
    if (grabbed.kind == TimelineHit::Key)
        board.SelectKey(grabbed.key, clicked);
    else
        board.SelectLayer(grabbed.layer, clicked);
}

void TimelineTracks::mouseMoveEvent(QMouseEvent *event)
{
    if (!held) {
        ShowCursor(HitTest(board, event->pos()).kind);
        emit SigHint(HintAt(event->pos()));
        return;
    }
    if (!dragging && (event->pos() - grabbedAt).manhattanLength() < kDragStart)
        return;
    dragging = true;
    if (draggedIn != board.Place()) {
        EndDrag(); // another composition, or project, has come up meanwhile
        return;
    }
    Drag(event->pos(), event->modifiers());
}

void TimelineTracks::Drag(const QPoint &to, Qt::KeyboardModifiers modifiers)
{
    if (grabbed.kind == TimelineHit::Nothing) {
        band = QRect(grabbedAt, to).normalized();
        KeyIds keys = KeysIn(board, band);
        keys.insert(keysBefore.begin(), keysBefore.end());
        board.SelectKeys(keys);
        return;
    }
    way = WayInFrames(to, modifiers);
    board.Preview(EditOf(way));
}

int TimelineTracks::WayInFrames(const QPoint &to, Qt::KeyboardModifiers modifiers) const
{
    const double perFrame = board.Scale().PixelsPerFrame();
    const int plain = static_cast<int>(std::lround((to.x() - grabbedAt.x()) / perFrame));
    const Layer *layer = board.GetSession().GetProject().FindLayer(board.Comp(), grabbed.layer);
    if (!(modifiers & Qt::ShiftModifier) || !layer)
        return plain;
    const Rate rate = board.GetRate();
    const int in = rate.FrameAt(layer->inPoint);
    const int out = rate.FrameAt(layer->inPoint + layer->duration);
    QVector<int> edges;
    if (grabbed.kind == TimelineHit::Key)
        edges << rate.FrameAt(layer->ToCompTime(grabbed.key.time));
    if (grabbed.kind == TimelineHit::In || grabbed.kind == TimelineHit::Bar)
        edges << in;
    if (grabbed.kind == TimelineHit::Out || grabbed.kind == TimelineHit::Bar)
        edges << out;
    const int reach = static_cast<int>(kSnapReach / perFrame);
    return Snap(plain, edges, SnapMarks(board, draggedLayers), reach);
}

TimelineBoard::Edit TimelineTracks::EditOf(int frames) const
{
    const ItemId composition = draggedIn.composition;
    const QVector<LayerId> layers = draggedLayers;
    const KeyIds keys = draggedKeys;
    const TimelineHit::Kind kind = grabbed.kind;
    return [=](Project &project) {
        if (frames == 0)
            return;
        if (kind == TimelineHit::Key)
            MoveKeys(project, composition, keys, frames);
        else if (kind == TimelineHit::In)
            TrimIn(project, composition, layers, frames);
        else if (kind == TimelineHit::Out)
            TrimOut(project, composition, layers, frames);
        else if (kind == TimelineHit::Bar)
            MoveLayers(project, composition, layers, frames);
    };
}

void TimelineTracks::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !held)
        return;
    if (dragging && draggedIn == board.Place())
        Drop();
    else if (!dragging && selectsLate)
        SelectPressed();
    EndDrag();
}

void TimelineTracks::Drop()
{
    if (grabbed.kind == TimelineHit::Nothing || way == 0)
        return;
    if (grabbed.kind != TimelineHit::Key) {
        board.Do(grabbed.kind == TimelineHit::Bar ? "Move Layer" : "Trim Layer", EditOf(way));
        return;
    }
    KeyIds moved; // selected under their new times
    const int frames = way;
    board.Do("Move Keys", [&](Project &project) {
        moved = MoveKeys(project, draggedIn.composition, draggedKeys, frames);
    });
    board.SelectKeys(moved);
}

void TimelineTracks::EndDrag()
{
    held = false;
    dragging = false;
    way = 0;
    band = QRect();
    draggedLayers.clear();
    draggedKeys.clear();
    board.Cancel();
    update();
}

void TimelineTracks::mouseDoubleClickEvent(QMouseEvent *event)
{
    const TimelineHit hit = HitTest(board, event->pos());
    const Layer *layer = hit.row >= 0 ? board.LayerOf(board.Rows().At(hit.row)) : nullptr;
    if (hit.kind == TimelineHit::Key && layer) {
        const Time time = layer->ToCompTime(hit.key.time);
        board.GetSession().SetCurrentFrame(board.GetRate().FrameAt(time));
        emit SigEditKey(hit.row);
    }
}

void TimelineTracks::wheelEvent(QWheelEvent *event)
{
    TurnWheel(board, event, /*zooms=*/false);
}

void TimelineTracks::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && held)
        EndDrag();
    else
        QWidget::keyPressEvent(event);
}

void TimelineTracks::contextMenuEvent(QContextMenuEvent *event)
{
    emit SigMenu(event->globalPos());
}

void TimelineTracks::ShowCursor(TimelineHit::Kind kind)
{
    if (kind == TimelineHit::In || kind == TimelineHit::Out)
        setCursor(Qt::SizeHorCursor);
    else
        unsetCursor();
}

} // namespace rostrum
