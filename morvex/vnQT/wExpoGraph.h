// WSlideWidget: a drawing surface that the user pans, zooms and turns.
// WExpoGraph: a tree of rounded boxes on it, each joined to its parent by an elbow line, with a pick
// and a context menu.
//
// The graph knows no host. What it draws, and what the user wants changed, goes through its row of
// virtual operations; the class itself answers them as an empty tree that takes no change. It keeps
// nothing of the tree: every paint and every click asks afresh.
//
// Units      scene    what the drawing is laid out in; at the start one scene unit is one pixel
//            widget   pixels from the widget's top left
//            node     an opaque handle; 0 is no node. Only the virtual operations know what it means
// Mouse      wheel zooms around the pointer; the middle button, or Ctrl + Alt and the left one, pans;
//            left and right button pick; the right one opens the menu
// Keys       Home and End turn by 45 degrees, PageUp and PageDown zoom. Every key goes on to the
//            parent widget as well.
#pragma once

#include "vnQT/UpdateLevel.h"

#include <QPointF>
#include <QSet>
#include <QTransform>
#include <QWidget>

#include <functional>

class QPainter;

class WSlideWidget : public QWidget
{
public:
    explicit WSlideWidget(QWidget *parent = nullptr);

    /// The scene point under a widget point. A pan that is under way is not reckoned with.
    QPointF MapToScene(const QPointF &point) const;

    /// The button of an event; Ctrl and Alt make the left one the middle one, so that a mouse of two
    /// buttons can pan.
    static Qt::MouseButton GetMouseButton(const QMouseEvent *event);
    /// The same for the buttons that are held; the left one has to be the only one.
    static Qt::MouseButtons GetMouseButtons(const QMouseEvent *event);

    /// Gives the widget a palette of its own, in which only the background differs from the
    /// application's.
    void SetBackgroundColor(const QColor &color);

protected:
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

    QTransform view; // scene to widget; always affine and reversible
    QTransform pan; // of the drag under way, in scene units; it comes before the view
    bool spaceDown = false; // the space bar is held; nothing reads it
    QPointF anchor; // scene point where the pan began

private:
    bool CompletesNotch(int delta);
    void ZoomAt(const QPointF &point, double factor);

    int wheelRest = 0; // eighths of a degree turned since the last full notch
};

class WExpoGraph : public WSlideWidget
{
    Q_OBJECT

public:
    using NodeHandle = quint64;

    explicit WExpoGraph(QWidget *parent = nullptr);

    // The tree behind the widget, in slot order.

    virtual NodeHandle GetCurrentNode(); // the one that is picked
    virtual void SetCurrentNode(NodeHandle node);
    virtual NodeHandle GetRootNode();
    virtual NodeHandle GetParentNode(NodeHandle node);
    /// Top left of a node's box, in scene units.
    virtual QPoint GetNodePos(NodeHandle node);
    virtual void NodeHook(); // no code calls it
    /// Width and height of a node's box, in scene units.
    virtual QSize GetNodeSize(NodeHandle node);
    virtual bool IsRootNode(NodeHandle node);
    virtual void DeleteNode(NodeHandle node);
    virtual void NewChildNode(NodeHandle node, bool vect);
    virtual void NewFatherNode(NodeHandle node);
    /// A step of a drag by the left button. @param pos in scene units
    /// @param free false while Shift is held
    virtual void DragNode(QPoint pos, bool free);
    virtual int GetNbChildren(NodeHandle node);
    virtual NodeHandle GetChildNode(NodeHandle node, int index);
    virtual QString GetNodeName(NodeHandle node); // text of the box

    /// The node whose box holds a scene point, a parent before its children and a child before its
    /// later sisters. @param node top of the tree that is searched @return 0 when there is none
    NodeHandle FindNode(NodeHandle node, const QPointF &point);

signals:
    void SigSomethingHasChanged(UpdateLevel upd, void *caller);

public slots:
    /// Follows a change elsewhere. @param caller who caused it; the widget ignores its own notices
    void OnUpdate(UpdateLevel upd, void *caller);
    void OnUpdate(UpdateLevel upd);
    void OnTreeDelete();
    void OnTreeNewChild();
    void OnTreeNewChildVect();
    void OnTreeNewFather();
    void OnEsc(); // does nothing, and nothing connects to it
    void OnPopupMenu(QPoint pt);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    using NodeSet = QSet<NodeHandle>;

    NodeHandle FirstInTree(
        NodeHandle node, const std::function<bool(NodeHandle)> &isWanted, NodeSet &seen);
    void DrawNode(NodeHandle node, QPainter &painter, bool links);
    void DrawBox(NodeHandle node, QPainter &painter);
    void DrawLink(NodeHandle node, QPainter &painter);
    void PickAt(const QPointF &point);
    void NewChild(bool vect);
    void TellTreeChanged();
};
