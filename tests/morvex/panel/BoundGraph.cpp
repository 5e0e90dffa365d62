#include "BoundGraph.h"

#include "panel/Doc.h"

using namespace rostrum;

BoundGraph::BoundGraph(const GraphPlan &layerPlan) : plan(layerPlan)
{
    Project &project = EditProject();
    project.RemoveLayer(composition, layer);
    for (int col = plan.size() - 1; col >= 0; --col) // each lies on top of those before
        layers.prepend(AddSolid(plan[col].name));
    for (int col = 0; col < plan.size(); ++col) {
        if (plan[col].parent >= 0)
            EditLayerOf(col).parent = layers[plan[col].parent];
    }
    host.GetDocument().Replace(Project(host.GetProject()));
    host.GetDocument().view.activeItem = composition;
    SelectCompo("scene 7"); // the handles of the project before are stale
    GetVipLi()->FindCompo();
    GetVipLi()->Layer = nullptr;
    GetDoc()->SetRow(-1);
    GetDoc()->SetCol(-1);
    GetDoc()->colWidth = 48;
    graph.resize(700, 400);
}

Layer &BoundGraph::EditLayerOf(int col)
{
    return *EditProject().EditLayer(composition, layers[col]);
}

NodeHandle BoundGraph::HandleOf(ItemId composition, LayerId layer)
{
    return reinterpret_cast<quintptr>(host.LayerHandle(composition, layer));
}

NodeHandle BoundGraph::LibraryLayer() const
{
    return reinterpret_cast<quintptr>(GetVipLi()->Layer);
}

QPoint BoundGraph::InBox(const QPoint &pos) const
{
    return graph.view.map(pos + QPoint(GetDoc()->colWidth / 2, 12));
}

QImage BoundGraph::Expected(const QVector<Box> &boxes, int current) const
{
    const auto nodeAt = [](int place) { return static_cast<NodeHandle>(place) + 2; };
    const QSize size(GetDoc()->colWidth, 24);
    MemoryGraph memory;
    memory.resize(graph.size());
    memory.SetView(graph.view);
    memory.Add(kTop, 0, QPoint(0, 0), QStringLiteral("[Root]"));
    memory.nodes[kTop].size = size;
    for (int i = 0; i < boxes.size(); ++i) {
        MemoryGraph::Node &node = memory.nodes[nodeAt(i)];
        node.parent = boxes[i].parent < 0 ? kTop : nodeAt(boxes[i].parent);
        node.pos = boxes[i].pos;
        node.name = boxes[i].name;
        node.size = size;
        memory.nodes[node.parent].children << nodeAt(i);
    }
    if (current >= 0)
        memory.current = nodeAt(current);
    return memory.grab().toImage();
}

QVector<Box> BoundGraph::PlannedBoxes() const
{
    QVector<Box> boxes;
    for (int col = 0; col < plan.size(); ++col) {
        int depth = 1;
        for (int above = plan[col].parent; above >= 0; above = plan[above].parent)
            ++depth;
        boxes << Box{ QString::fromUtf8(plan[col].name),
            QPoint(col * GetDoc()->colWidth, depth * -36), plan[col].parent };
    }
    return boxes;
}

QByteArrayList BoundGraph::CallsOfAPaint()
{
    Picture(); // the widget's first picture may be two paints
    host.GetTrace().Start();
    Picture();
    host.GetTrace().Stop();
    return host.GetTrace().Functions();
}
