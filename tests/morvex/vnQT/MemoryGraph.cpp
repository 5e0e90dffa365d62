#include "MemoryGraph.h"

void MemoryGraph::Add(NodeHandle handle, NodeHandle parent, const QPoint &pos, const QString &name)
{
    Node node;
    node.parent = parent;
    node.pos = pos;
    node.name = name;
    nodes.insert(handle, node);
    if (parent == 0)
        root = handle;
    else
        nodes[parent].children << handle;
}

void MemoryGraph::SetCurrentNode(NodeHandle node)
{
    calls << QStringLiteral("SetCurrentNode %1").arg(node);
    current = node;
}

void MemoryGraph::DeleteNode(NodeHandle node)
{
    calls << QStringLiteral("DeleteNode %1").arg(node);
    const Node gone = nodes.take(node);
    nodes[gone.parent].children.removeAll(node);
}

void MemoryGraph::NewChildNode(NodeHandle node, bool vect)
{
    calls << QStringLiteral("NewChildNode %1 %2")
                 .arg(node)
                 .arg(QLatin1String(vect ? "vect" : "plain"));
    Add(nodes.lastKey() + 1, node, GetNodePos(node) - QPoint(0, 36), QStringLiteral("new"));
}

void MemoryGraph::NewFatherNode(NodeHandle node)
{
    calls << QStringLiteral("NewFatherNode %1").arg(node);
}

void MemoryGraph::DragNode(QPoint pos, bool free)
{
    calls << QStringLiteral("DragNode %1,%2 %3")
                 .arg(pos.x())
                 .arg(pos.y())
                 .arg(QLatin1String(free ? "free" : "bound"));
}

WExpoGraph::NodeHandle MemoryGraph::GetChildNode(NodeHandle node, int index)
{
    return nodes.value(node).children.value(index);
}

QString MemoryGraph::GetNodeName(NodeHandle node)
{
    ++namesAsked;
    return nodes.value(node).name;
}

QStringList MemoryGraph::TakeCalls()
{
    QStringList taken;
    taken.swap(calls);
    return taken;
}
