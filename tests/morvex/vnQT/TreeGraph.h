// TreeGraph: a small tree in memory on a graph widget, and where it lies on that widget.
#pragma once

#include "MemoryGraph.h"
#include "support/vnPalette.h"

#include <QApplication>
#include <QPaintEvent>
#include <QSignalSpy>

using NodeHandle = WExpoGraph::NodeHandle;

constexpr NodeHandle kRoot = 1;
constexpr NodeHandle kBody = 20; // below the root
constexpr NodeHandle kHead = 21; // below the body
constexpr NodeHandle kFloor = 30; // below the root

const QColor kBase(69, 69, 69); // of the dark set
const QColor kBox(205, 205, 205);
const QColor kCurrent(180, 135, 30);

/// The root at the bottom, two nodes above it, one of them with a child. No names, so that a box is
/// one colour.
class TreeGraph : public MemoryGraph
{
public:
    TreeGraph()
    {
        Add(kRoot, 0, QPoint(0, 0), QString());
        Add(kBody, kRoot, QPoint(60, -50), QString());
        Add(kFloor, kRoot, QPoint(150, -50), QString());
        Add(kHead, kBody, QPoint(100, -110), QString());
        resize(500, 400);
    }

    int paints = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paints;
        MemoryGraph::paintEvent(event);
    }
};

/// The base class with its events and commands in reach.
class BareGraph : public WExpoGraph
{
public:
    using WExpoGraph::view;
};

inline QPoint OnWidget(const MemoryGraph &graph, double sceneX, double sceneY)
{
    return graph.View().map(QPointF(sceneX, sceneY)).toPoint();
}

inline QPoint MiddleOf(MemoryGraph &graph, NodeHandle node)
{
    const QRectF box(graph.GetNodePos(node), graph.GetNodeSize(node));
    return OnWidget(graph, box.center().x(), box.center().y());
}

/// Lays scene points onto the centres of pixels, so that a line of one pixel fills its pixels.
inline void LayOnPixelCentres(MemoryGraph &graph)
{
    graph.SetView(QTransform::fromTranslate(200.5, 200.5));
}

/// The dark colours, from which the ones above are taken.
inline void SetDarkColors()
{
    QPalette colors = QApplication::palette();
    ApplyColorSet(colors, /*set=*/1, /*range=*/1.0);
    QApplication::setPalette(colors);
}

/// The levels of the notices that a graph sent; -1 for one in another's name.
inline QVector<int> Levels(const QSignalSpy &spy, WExpoGraph *sender)
{
    QVector<int> levels;
    for (const QList<QVariant> &arguments : spy) {
        const bool isOwn = arguments.at(1).value<void *>() == sender;
        levels << (isOwn ? static_cast<int>(arguments.at(0).value<UpdateLevel>()) : -1);
    }
    return levels;
}
