// BoundGraph: the panel's graph over a host of its own, made from a plan of layers, and the picture
// that it has to show.
#pragma once

#include "graphtest/SlideHand.h"
#include "graphtest/TreeGraph.h"
#include "librarysheet/LibrarySheet.h"
#include "panel/WinGraphDataAE.h"

/// A layer to be made, a solid. The first of a plan lies on top: it is column 0.
struct LayerPlan
{
    QByteArray name; // of the source
    int parent = -1; // place in the plan
};

using GraphPlan = QVector<LayerPlan>;

/// A box as it has to be seen.
struct Box
{
    QString name;
    QPoint pos; // top left, in scene units
    int parent = -1; // place in the list; -1 for "[Root]"
};

/// A graph whose view can be seen and whose paints are counted.
class OpenGraph : public WinGraphDataAE
{
public:
    using WinGraphDataAE::view;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paints;
        WinGraphDataAE::paintEvent(event);
    }
};

class BoundGraph : public LibrarySheet
{
public:
    static constexpr NodeHandle kNone = 0;
    static constexpr NodeHandle kTop = 1; // "[Root]"

    /// The host's project with an empty history and a graph over it, unshown. No column is current.
    explicit BoundGraph(const GraphPlan &plan);

    rostrum::Document &Doc() { return host.GetDocument(); }
    rostrum::Layer &EditLayerOf(int col);
    /// Takes a change made by hand as a history entry of its own.
    void CloseChange() { host.GetDocument().CloseLooseEnds(); }
    /// The layer's handle in the host, which is the name of its node.
    NodeHandle NodeOf(int col) { return HandleOf(composition, layers[col]); }
    NodeHandle HandleOf(rostrum::ItemId composition, rostrum::LayerId layer);
    NodeHandle LibraryLayer() const;

    /// The middle of a box whose top left is at a scene point.
    QPoint InBox(const QPoint &pos) const;
    QImage Picture() { return graph.grab().toImage(); }
    /// What a graph shows that keeps these boxes in memory, "[Root]" below them.
    /// @param current place in the list, -1 for none
    QImage Expected(const QVector<Box> &boxes, int current = -1) const;
    /// The boxes of the plan, none of them in a circle: an own rule beside the graph's.
    QVector<Box> PlannedBoxes() const;
    /// The host calls of one paint.
    QByteArrayList CallsOfAPaint();

    GraphPlan plan;
    QVector<rostrum::LayerId> layers; // by column
    OpenGraph graph;
};
