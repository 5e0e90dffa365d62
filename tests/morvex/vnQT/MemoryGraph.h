// MemoryGraph: a tree held in memory behind the graph widget, for its tests and pictures. It takes
// every change and notes it. What it answers can be made wrong on purpose: the links between nodes
// are plain fields, so that a tree can run in a circle.
#pragma once

#include "vnQT/wExpoGraph.h"

#include <QMap>
#include <QStringList>
#include <QVector>

class MemoryGraph : public WExpoGraph
{
    Q_OBJECT

public:
    struct Node
    {
        NodeHandle parent = 0;
        QVector<NodeHandle> children;
        QPoint pos;
        QString name;
        QSize size{ 48, 24 };
    };

    using WExpoGraph::WExpoGraph;

    /// Adds a node below another; below 0 it becomes the root.
    void Add(NodeHandle handle, NodeHandle parent, const QPoint &pos, const QString &name);

    NodeHandle GetCurrentNode() override { return current; }
    void SetCurrentNode(NodeHandle node) override;
    NodeHandle GetRootNode() override { return root; }
    NodeHandle GetParentNode(NodeHandle node) override { return nodes.value(node).parent; }
    QPoint GetNodePos(NodeHandle node) override { return nodes.value(node).pos; }
    QSize GetNodeSize(NodeHandle node) override { return nodes.value(node).size; }
    bool IsRootNode(NodeHandle node) override { return node == root; }
    void DeleteNode(NodeHandle node) override;
    void NewChildNode(NodeHandle node, bool vect) override;
    void NewFatherNode(NodeHandle node) override;
    void DragNode(QPoint pos, bool free) override;
    int GetNbChildren(NodeHandle node) override { return nodes.value(node).children.size(); }
    NodeHandle GetChildNode(NodeHandle node, int index) override;
    QString GetNodeName(NodeHandle node) override;

    QTransform View() const { return view; }
    void SetView(const QTransform &transform) { view = transform; }
    QTransform Pan() const { return pan; }
    /// What the user asked for, oldest first, since the last call.
    QStringList TakeCalls();

    QMap<NodeHandle, Node> nodes;
    NodeHandle root = 0;
    NodeHandle current = 0;
    int namesAsked = 0; // one for each box that is drawn

private:
    QStringList calls;
};
