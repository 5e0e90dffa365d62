#include "TimelineOutline.h"

#include "ImageNumber.h"
#include "ItemText.h"
#include "TimelinePaint.h"

#include <QComboBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>

namespace rostrum {
namespace {

constexpr int kDragStart = 3; // pixels
constexpr int kArrowWidth = 18; // cells, in pixels
constexpr int kSwatchLeft = 20;
constexpr int kSwatchWidth = 12;
constexpr int kNameLeft = 38;
constexpr int kKeyLeft = 16;
constexpr int kKeyArrowWidth = 12;
constexpr int kKeyWidth = 16;
constexpr int kValueWidth = 76;
constexpr int kWidestParent = 120;

} // namespace

int OutlineCells::ValuesFrom() const
{
    return qMax(140, width * 42 / 100);
}

QRect OutlineCells::Rect(Cell cell, int top, int component) const
{
    const int high = TimelineRows::kRowHeight - 1;
    const int parent = qMin(kWidestParent, (width - ValuesFrom()) * 2 / 5);
    const auto span = [&](int left, int right) { return QRect(left, top, right - left, high); };
    switch (cell) {
    case Arrow:
        return span(0, kArrowWidth);
    case Swatch:
        return span(kSwatchLeft, kSwatchLeft + kSwatchWidth);
    case Name:
        return span(kNameLeft, ValuesFrom() - 6);
    case Drawing:
        return span(ValuesFrom(), width - parent - 8);
    case Parent:
        return span(width - parent - 4, width - 4);
    case KeyBefore:
        return span(kKeyLeft, kKeyLeft + kKeyArrowWidth);
    case KeyButton:
        return span(kKeyLeft + kKeyArrowWidth, kKeyLeft + kKeyArrowWidth + kKeyWidth);
    case KeyBehind:
        return span(
            kKeyLeft + kKeyArrowWidth + kKeyWidth, kKeyLeft + 2 * kKeyArrowWidth + kKeyWidth);
    case Value: {
        const int left = ValuesFrom() + component * kValueWidth;
        return span(left, left + kValueWidth - 4);
    }
    case None:
        break;
    }
    return {};
}

OutlineCells::Cell OutlineCells::CellAt(int x, const TimelineRow &row) const
{
    static constexpr Cell layerCells[] = { Arrow, Swatch, Name, Drawing, Parent };
    static constexpr Cell streamCells[] = { KeyBefore, KeyButton, KeyBehind };
    const auto isIn = [&](Cell cell) {
        const QRect rect = Rect(cell, 0);
        return x >= rect.left() && x <= rect.right();
    };
    if (row.isLayer) {
        for (const Cell cell : layerCells) {
            if (isIn(cell))
                return cell;
        }
        return None;
    }
    for (const Cell cell : streamCells) {
        if (isIn(cell))
            return cell;
    }
    const int component = (x - ValuesFrom()) / kValueWidth;
    return x >= ValuesFrom() && component < row.stream.components ? Value : Name;
}

int OutlineCells::ComponentAt(int x) const
{
    return qMax(0, (x - ValuesFrom()) / kValueWidth);
}

TimelineOutline::TimelineOutline(TimelineBoard &board, QWidget *parent)
    : QWidget(parent), board(board)
{
    setObjectName(QStringLiteral("timelineOutline"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumWidth(260);
    const auto follow = [this] {
        PlaceEditor();
        update();
    };
    connect(&board, &TimelineBoard::SigChanged, this, follow);
    connect(&board, &TimelineBoard::SigScrolled, this, follow);
    connect(&board.GetSession(), &Session::TimeChanged, this, &TimelineOutline::OnTimeChanged);
}

/// While a composition plays the drawings and the values on keys change, and the rest stays.
void TimelineOutline::OnTimeChanged()
{
    const OutlineCells cells(width());
    for (int index = 0; index < board.Rows().Count(); ++index) {
        const TimelineRow &row = board.Rows().At(index);
        const Stream *stream = board.StreamOf(row);
        if (row.isLayer)
            update(cells.Rect(OutlineCells::Drawing, TopOf(index)));
        else if (row.stream.id.IsTimeRemap() || (stream && stream->HasKeys()))
            update(0, TopOf(index), width(), TimelineRows::kRowHeight);
    }
}

int TimelineOutline::RowAt(const QPoint &place) const
{
    return board.Rows().RowAt(place.y() + board.ScrollY());
}

bool TimelineOutline::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    auto *help = static_cast<QHelpEvent *>(event);
    QToolTip::showText(help->globalPos(), HintAt(help->pos()), this);
    return true;
}

QString TimelineOutline::HintAt(const QPoint &place) const
{
    const int index = RowAt(place);
    const Layer *layer = index < 0 ? nullptr : board.LayerOf(board.Rows().At(index));
    if (!layer)
        return {};
    const TimelineRow &row = board.Rows().At(index);
    const OutlineCells::Cell cell = OutlineCells(width()).CellAt(place.x(), row);
    const Rate rate = board.GetRate();
    const int image
        = ImageAt(board.Shown(), *layer, rate.FrameTime(board.GetSession().CurrentFrame()));
    const bool hasImages = ImageCount(board.Shown(), *layer) > 0;
    if (hasImages && (cell == OutlineCells::Drawing || row.stream.id.IsTimeRemap()))
        return ImageText(board.Shown(), *layer, image);
    if (cell == OutlineCells::KeyButton)
        return tr("Add a key at the current time, or take it away");
    return row.isLayer ? LayerText(board.Shown(), *layer) : row.stream.name;
}

void TimelineOutline::mousePressEvent(QMouseEvent *event)
{
    board.GetSession().ActivateComposition();
    const int index = RowAt(event->pos());
    if (index < 0) {
        board.SelectNone();
        return;
    }
    const TimelineRow row = board.Rows().At(index); // a copy: what is pressed may change the rows
    const OutlineCells::Cell cell = OutlineCells(width()).CellAt(event->x(), row);
    if (event->button() == Qt::RightButton && row.isLayer)
        board.SelectForDrag(row.layer);
    if (event->button() != Qt::LeftButton)
        return;
    if (row.isLayer)
        PressLayer(row, cell, event);
    else
        PressStream(row, cell, event->pos());
}

void TimelineOutline::PressLayer(
    const TimelineRow &row, OutlineCells::Cell cell, QMouseEvent *event)
{
    if (cell == OutlineCells::Arrow) {
        board.ToggleFold(row.layer);
    } else if (cell == OutlineCells::Swatch) {
        PickLabel(row.layer, event->globalPos());
    } else if (cell == OutlineCells::Parent) {
        PickParent(row);
    } else {
        clicked = event->modifiers();
        selectsLate = board.IsSelected(row.layer) && !(clicked & Qt::ControlModifier);
        if (!selectsLate)
            board.SelectLayer(row.layer, clicked);
        held = board.IsSelected(row.layer);
        grabbed = row.layer;
        grabbedAt = event->pos();
        draggedIn = board.Place();
    }
}

void TimelineOutline::PressStream(
    const TimelineRow &row, OutlineCells::Cell cell, const QPoint &place)
{
    if (cell == OutlineCells::KeyButton)
        ToggleKey(row);
    else if (cell == OutlineCells::KeyBefore)
        GoToKey(row, -1);
    else if (cell == OutlineCells::KeyBehind)
        GoToKey(row, 1);
    else if (cell == OutlineCells::Value)
        OnEditValue(RowAt(place), OutlineCells(width()).ComponentAt(place.x()));
    else
        SelectKeysOf(row);
}

/// The name of a stream stands for all its keys.
void TimelineOutline::SelectKeysOf(const TimelineRow &row)
{
    const Stream *stream = board.StreamOf(row);
    KeyIds keys;
    for (int i = 0; stream && i < stream->KeyCount(); ++i)
        keys.insert({ row.layer, row.stream.id, stream->KeyAt(i).time });
    board.SelectKeys(keys);
}

void TimelineOutline::ToggleKey(const TimelineRow &row)
{
    const Layer *layer = board.LayerOf(row);
    const Stream *stream = board.StreamOf(row);
    if (!layer || !stream)
        return;
    const Rate rate = board.GetRate();
    const int frame = board.GetSession().CurrentFrame();
    const int there = KeyInFrame(*stream, *layer, rate, frame);
    const ItemId composition = board.Comp();
    if (there >= 0) {
        const KeyId key{ row.layer, row.stream.id, stream->KeyAt(there).time };
        board.Do(
            "Remove Key", [&](Project &project) { RemoveKeys(project, composition, { key }); });
        return;
    }
    board.Do("Add Key", [&](Project &project) {
        AddKey(project, composition, row.layer, row.stream.id, rate.FrameTime(frame));
    });
}

void TimelineOutline::GoToKey(const TimelineRow &row, int direction)
{
    const Layer *layer = board.LayerOf(row);
    const Stream *stream = board.StreamOf(row);
    if (!layer || !stream)
        return;
    const Rate rate = board.GetRate();
    const int frame = board.GetSession().CurrentFrame();
    const int index = direction < 0
        ? stream->KeysBefore(layer->ToLayerTime(rate.FrameTime(frame))) - 1
        : stream->KeysBefore(layer->ToLayerTime(rate.FrameTime(frame + 1)));
    if (index >= 0 && index < stream->KeyCount())
        board.GetSession().SetCurrentFrame(
            rate.FrameAt(layer->ToCompTime(stream->KeyAt(index).time)));
}

void TimelineOutline::mouseMoveEvent(QMouseEvent *event)
{
    if (!held) {
        emit SigHint(HintAt(event->pos()));
        return;
    }
    if (!dragging && (event->pos() - grabbedAt).manhattanLength() < kDragStart)
        return;
    dragging = true;
    if (event->y() < 0 || event->y() > height()) // on and on beyond the edge
        board.SetScrollY(board.ScrollY() + (event->y() < 0 ? -1 : 1) * TimelineRows::kRowHeight);
    gap = board.Rows().GapAt(event->y() + board.ScrollY());
    update();
}

void TimelineOutline::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !held)
        return;
    const bool dropped = dragging && draggedIn == board.Place();
    const bool isClick = !dragging && selectsLate;
    EndDrag();
    if (isClick)
        board.SelectLayer(grabbed, clicked);
    if (!dropped)
        return;
    const QVector<LayerId> layers = board.GetSession().SelectedLayers();
    board.Do("Reorder Layers",
        [&](Project &project) { Reorder(project, draggedIn.composition, layers, gap); });
}

void TimelineOutline::EndDrag()
{
    held = false;
    dragging = false;
    update();
}

void TimelineOutline::mouseDoubleClickEvent(QMouseEvent *event)
{
    const int index = RowAt(event->pos());
    const bool isName = index >= 0 && board.Rows().At(index).isLayer
        && OutlineCells(width()).CellAt(event->x(), board.Rows().At(index)) == OutlineCells::Name;
    EndDrag();
    if (isName)
        OnRename(index);
    else
        mousePressEvent(event); // a quick second click on an arrow or a key button counts, too
}

void TimelineOutline::wheelEvent(QWheelEvent *event)
{
    board.SetScrollY(board.ScrollY() - event->angleDelta().y() / 2);
    event->accept();
}

void TimelineOutline::keyPressEvent(QKeyEvent *event)
{
    const QVector<LayerId> layers = board.GetSession().SelectedLayers();
    const LayerId layer = layers.isEmpty() ? 0 : layers.last();
    const Composition *composition = board.GetSession().ActiveComposition();
    const int index = composition && layer ? composition->IndexOf(layer) : -1;
    const auto select = [&](int at) {
        if (!composition || at < 0 || at >= composition->layers.size())
            return;
        board.SelectLayer(composition->layers[at]->id, {});
        emit SigShowRow(board.Rows().RowOf(composition->layers[at]->id));
    };
    const Qt::Key foldKey = board.IsUnfolded(layer) ? Qt::Key_Left : Qt::Key_Right;
    if (event->key() == Qt::Key_Escape && held)
        EndDrag();
    else if (event->key() == Qt::Key_Up)
        select(index - 1);
    else if (event->key() == Qt::Key_Down)
        select(index + 1);
    else if (event->key() == foldKey && layer)
        board.ToggleFold(layer);
    else if (event->key() == Qt::Key_F2 && layer)
        OnRename(board.Rows().RowOf(layer));
    else
        QWidget::keyPressEvent(event);
}

} // namespace rostrum
