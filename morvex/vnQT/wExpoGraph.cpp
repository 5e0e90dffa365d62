#include "wExpoGraph.h"

#include <QCursor>
#include <QDebug>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <cmath>

namespace {

constexpr double kFirstOffset = 100.0; // pixels, of the scene's origin in both directions
constexpr double kTurn = 45.0; // degrees
constexpr int kNotch = 120; // eighths of a degree, one click of a common wheel
// Bounds of the wheel. They are asked before a step, which can then end beyond them.
constexpr double kMinScale = 0.1;
constexpr double kMaxScale = 64.0;

constexpr double kRadiusX = 10.0; // scene units, of a box's corners
constexpr double kRadiusY = 8.0;
constexpr int kNameMargin = 3; // scene units at either side of a name that is cut

/// The middle of an odd width is cut to a whole number.
QPoint TopCentre(const QRect &box)
{
    return QPoint(box.x() + box.width() / 2, box.y());
}

QPoint BottomCentre(const QRect &box)
{
    return QPoint(box.x() + box.width() / 2, box.y() + box.height());
}

/// The nearest whole point; far out, where the view is very small, the last one that there is.
QPoint NearestPoint(const QPointF &point)
{
    constexpr double limit = 1e9;
    return QPointF(qBound(-limit, point.x(), limit), qBound(-limit, point.y(), limit)).toPoint();
}

bool HasCtrlAndAlt(const QMouseEvent *event)
{
    return event->modifiers().testFlag(Qt::ControlModifier)
        && event->modifiers().testFlag(Qt::AltModifier);
}

} // namespace

WSlideWidget::WSlideWidget(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    view.translate(kFirstOffset, kFirstOffset);
    setAutoFillBackground(true);
    SetBackgroundColor(Qt::white);
}

/// Worked out here, since QTransform takes a scale below 1e-12 for none: that is forty times
/// PageDown, a second or two of holding the key.
QPointF WSlideWidget::MapToScene(const QPointF &point) const
{
    const double x = point.x() - view.dx();
    const double y = point.y() - view.dy();
    const double area = view.determinant();
    return QPointF(
        (view.m22() * x - view.m21() * y) / area, (view.m11() * y - view.m12() * x) / area);
}

Qt::MouseButton WSlideWidget::GetMouseButton(const QMouseEvent *event)
{
    const bool isMiddle = event->button() == Qt::LeftButton && HasCtrlAndAlt(event);
    return isMiddle ? Qt::MiddleButton : event->button();
}

Qt::MouseButtons WSlideWidget::GetMouseButtons(const QMouseEvent *event)
{
    const bool isMiddle = event->buttons() == Qt::LeftButton && HasCtrlAndAlt(event);
    return isMiddle ? Qt::MiddleButton : event->buttons();
}

void WSlideWidget::SetBackgroundColor(const QColor &color)
{
    QPalette colors;
    colors.setBrush(QPalette::All, backgroundRole(), QBrush(color));
    setPalette(colors);
}

/// A notch is one doubling or halving, however far it turned. A turn of nothing halves, unless it
/// only opens or closes a gesture.
void WSlideWidget::wheelEvent(QWheelEvent *event)
{
    event->accept(); // a wheel event comes unaccepted, and would go on to the parent
    const QPoint turn = event->angleDelta();
    if (turn.isNull() && event->phase() != Qt::NoScrollPhase)
        return;
    const int delta = turn.y() != 0 ? turn.y() : turn.x();
    if (delta != 0 && !CompletesNotch(delta))
        return;

    const double scale = std::hypot(view.m11(), view.m21());
    if (delta < 0 && scale < kMinScale)
        return;
    if (delta >= 1 && scale > kMaxScale)
        return;
    ZoomAt(event->position(), delta >= 1 ? 2.0 : 0.5);
}

/// Fine wheels turn in steps below a notch, which add up. What is left over counts for the next one,
/// until the wheel turns the other way.
bool WSlideWidget::CompletesNotch(int delta)
{
    if ((delta < 0) != (wheelRest < 0))
        wheelRest = 0;
    const qint64 turned = static_cast<qint64>(wheelRest) + delta;
    wheelRest = static_cast<int>(turned % kNotch);
    return qAbs(turned) >= kNotch;
}

/// The scene point under a widget point stays under it. A step after which the view could not be
/// reversed any more is dropped.
void WSlideWidget::ZoomAt(const QPointF &point, double factor)
{
    const QPointF fixed = MapToScene(point);
    QTransform next = view;
    next.translate(fixed.x(), fixed.y());
    next.scale(factor, factor);
    next.translate(-fixed.x(), -fixed.y());
    if (!std::isnormal(next.determinant()) || !std::isfinite(next.dx() + next.dy()))
        return;
    view = next;
    update();
}

void WSlideWidget::keyPressEvent(QKeyEvent *event)
{
    qWarning() << "WSlideWidget::keyPressEvent" << spaceDown;
    switch (event->key()) {
    case Qt::Key_Space:
        spaceDown = true;
        break;
    case Qt::Key_Home:
        view.rotate(kTurn);
        update();
        break;
    case Qt::Key_End:
        view.rotate(-kTurn);
        update();
        break;
    case Qt::Key_PageUp: // no bound here, unlike the wheel
        ZoomAt(mapFromGlobal(QCursor::pos()), 2.0);
        break;
    case Qt::Key_PageDown:
        ZoomAt(mapFromGlobal(QCursor::pos()), 0.5);
        break;
    default:
        qWarning() << event->key();
    }
    event->ignore(); // the parent widget gets every key too
}

void WSlideWidget::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space)
        spaceDown = false;
    event->ignore();
}

void WSlideWidget::mousePressEvent(QMouseEvent *event)
{
    qWarning() << "mousePressEvent";
    if (GetMouseButton(event) == Qt::MiddleButton)
        anchor = MapToScene(event->localPos());
}

/// The view stands still while the drag lasts, so that the anchor keeps its meaning.
void WSlideWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (!GetMouseButtons(event).testFlag(Qt::MiddleButton))
        return;
    const QPointF moved = MapToScene(event->localPos()) - anchor;
    pan = QTransform::fromTranslate(moved.x(), moved.y());
    update();
}

void WSlideWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (GetMouseButton(event) != Qt::MiddleButton)
        return;
    view = pan * view;
    pan.reset();
    update();
}

WExpoGraph::WExpoGraph(QWidget *parent) : WSlideWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setContextMenuPolicy(Qt::CustomContextMenu);
    view.translate(kFirstOffset, kFirstOffset); // with the base's, 200 in both directions
    connect(this, &QWidget::customContextMenuRequested, this, &WExpoGraph::OnPopupMenu);
}

// The tree of the class itself: empty, and it takes no change.

WExpoGraph::NodeHandle WExpoGraph::GetCurrentNode()
{
    return 0;
}

void WExpoGraph::SetCurrentNode(NodeHandle) { }

WExpoGraph::NodeHandle WExpoGraph::GetRootNode()
{
    return 0;
}

WExpoGraph::NodeHandle WExpoGraph::GetParentNode(NodeHandle)
{
    return 0;
}

QPoint WExpoGraph::GetNodePos(NodeHandle)
{
    return QPoint(0, 0);
}

void WExpoGraph::NodeHook() { }

QSize WExpoGraph::GetNodeSize(NodeHandle)
{
    return QSize(50, 30);
}

bool WExpoGraph::IsRootNode(NodeHandle)
{
    return false;
}

void WExpoGraph::DeleteNode(NodeHandle) { }

void WExpoGraph::NewChildNode(NodeHandle, bool) { }

void WExpoGraph::NewFatherNode(NodeHandle) { }

void WExpoGraph::DragNode(QPoint, bool) { }

int WExpoGraph::GetNbChildren(NodeHandle)
{
    return 0;
}

WExpoGraph::NodeHandle WExpoGraph::GetChildNode(NodeHandle, int)
{
    return 0;
}

QString WExpoGraph::GetNodeName(NodeHandle)
{
    return QString();
}

/// Goes through a tree, a node before its children, up to the first node that is wanted. A node that
/// the tree names more than once counts at its first place only, so that a tree that runs in a
/// circle comes to an end.
WExpoGraph::NodeHandle WExpoGraph::FirstInTree(
    NodeHandle node, const std::function<bool(NodeHandle)> &isWanted, NodeSet &seen)
{
    if (node == 0 || seen.contains(node))
        return 0;
    seen.insert(node);
    if (isWanted(node))
        return node;
    const int count = GetNbChildren(node);
    for (int i = 0; i < count; ++i) {
        if (const NodeHandle found = FirstInTree(GetChildNode(node, i), isWanted, seen))
            return found;
    }
    return 0;
}

/// The right and the bottom edge of a box lie one unit inside of what is drawn.
WExpoGraph::NodeHandle WExpoGraph::FindNode(NodeHandle node, const QPointF &point)
{
    NodeSet seen;
    const auto holdsPoint = [&](NodeHandle candidate) {
        const QRect box(GetNodePos(candidate), GetNodeSize(candidate));
        return point.x() >= box.left() && point.x() <= box.right() && point.y() >= box.top()
            && point.y() <= box.bottom();
    };
    return FirstInTree(node, holdsPoint, seen);
}

void WExpoGraph::PickAt(const QPointF &point)
{
    const NodeHandle node = FindNode(GetRootNode(), point);
    if (node == 0 || node == GetCurrentNode())
        return;
    SetCurrentNode(node);
    update();
    emit SigSomethingHasChanged(UpdCurrent, this);
}

void WExpoGraph::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().brush(QPalette::Base));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(view);
    painter.setTransform(pan, /*combine=*/true);

    const NodeHandle root = GetRootNode();
    DrawNode(root, painter, /*links=*/true); // first, so that the boxes lie over the lines
    DrawNode(root, painter, /*links=*/false);
}

/// Draws a node and all that hangs from it: the links, or the boxes.
void WExpoGraph::DrawNode(NodeHandle node, QPainter &painter, bool links)
{
    NodeSet seen;
    const auto draw = [&](NodeHandle drawn) {
        if (links)
            DrawLink(drawn, painter);
        else
            DrawBox(drawn, painter);
        return false; // and on to the next
    };
    FirstInTree(node, draw, seen);
}

/// Pens of width 0 are one pixel wide at every zoom.
void WExpoGraph::DrawBox(NodeHandle node, QPainter &painter)
{
    const QRect box(GetNodePos(node), GetNodeSize(node));
    const bool isCurrent = node == GetCurrentNode();
    painter.setPen(QPen(Qt::black, 0));
    painter.setBrush(palette().brush(isCurrent ? QPalette::BrightText : QPalette::Highlight));
    painter.drawRoundedRect(box, kRadiusX, kRadiusY, Qt::AbsoluteSize);

    QString name = GetNodeName(node);
    if (painter.fontMetrics().horizontalAdvance(name) > box.width()) // its beginning tells most
        name
            = painter.fontMetrics().elidedText(name, Qt::ElideRight, box.width() - 2 * kNameMargin);
    painter.drawText(box, Qt::AlignCenter, name);
}

/// From a node's bottom centre half way towards its parent, across, and on to the parent's top
/// centre.
void WExpoGraph::DrawLink(NodeHandle node, QPainter &painter)
{
    if (IsRootNode(node))
        return;
    const NodeHandle parent = GetParentNode(node);
    if (parent == 0)
        return;
    const QPointF from = BottomCentre(QRect(GetNodePos(node), GetNodeSize(node)));
    const QPointF to = TopCentre(QRect(GetNodePos(parent), GetNodeSize(parent)));
    const double middle = (from.y() + to.y()) / 2.0;

    QPainterPath path(from);
    path.lineTo(from.x(), middle);
    path.lineTo(to.x(), middle);
    path.lineTo(to);
    painter.setPen(QPen(Qt::black, 0));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(path);
}

void WExpoGraph::mousePressEvent(QMouseEvent *event)
{
    WSlideWidget::mousePressEvent(event);
    const Qt::MouseButton button = GetMouseButton(event);
    if (button == Qt::LeftButton || button == Qt::RightButton)
        PickAt(MapToScene(event->localPos()));
}

void WExpoGraph::mouseMoveEvent(QMouseEvent *event)
{
    WSlideWidget::mouseMoveEvent(event);
    if (!GetMouseButtons(event).testFlag(Qt::LeftButton))
        return;
    const bool isFree = !event->modifiers().testFlag(Qt::ShiftModifier);
    DragNode(NearestPoint(MapToScene(event->localPos())), isFree);
    update();
}

void WExpoGraph::OnUpdate(UpdateLevel, void *caller)
{
    if (caller != this)
        update();
}

void WExpoGraph::OnUpdate(UpdateLevel upd)
{
    OnUpdate(upd, /*caller=*/nullptr);
}

// The tree commands. None of them does anything without a current node.

void WExpoGraph::OnTreeDelete()
{
    const NodeHandle current = GetCurrentNode();
    if (current == 0 || IsRootNode(current))
        return;
    DeleteNode(current);
    SetCurrentNode(GetRootNode());
    TellTreeChanged();
}

void WExpoGraph::OnTreeNewChild()
{
    NewChild(/*vect=*/false);
}

void WExpoGraph::OnTreeNewChildVect()
{
    NewChild(/*vect=*/true);
}

void WExpoGraph::NewChild(bool vect)
{
    const NodeHandle current = GetCurrentNode();
    if (current == 0)
        return;
    NewChildNode(current, vect);
    TellTreeChanged();
}

void WExpoGraph::OnTreeNewFather()
{
    const NodeHandle current = GetCurrentNode();
    if (current == 0 || IsRootNode(current))
        return;
    NewFatherNode(current);
    TellTreeChanged();
}

/// The widget ignores its own notices, so it repaints here.
void WExpoGraph::TellTreeChanged()
{
    update();
    emit SigSomethingHasChanged(UpdAll, this);
}

void WExpoGraph::OnEsc() { }

/// The menu is the widget's child and goes with it; each popup makes one of its own.
void WExpoGraph::OnPopupMenu(QPoint pt)
{
    auto *menu = new QMenu(this);
    menu->addAction(tr("Delete"), this, &WExpoGraph::OnTreeDelete);
    menu->addAction(tr("New Child"), this, &WExpoGraph::OnTreeNewChild);
    menu->addAction(tr("New Child Vect"), this, &WExpoGraph::OnTreeNewChildVect);
    menu->addAction(tr("New Father"), this, &WExpoGraph::OnTreeNewFather);
    menu->exec(mapToGlobal(pt));
}
