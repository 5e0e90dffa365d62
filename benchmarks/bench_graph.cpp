// The graph bound to the composition: what a paint costs beside its host calls alone and a paint of
// the same boxes kept in memory.
#include "bench/Bench.h"
#include "bench/TraceOff.h"

#include "hostapi/Suites.h"
#include "memorygraph/MemoryGraph.h"
#include "panel/Doc.h"
#include "panel/WinGraphDataAE.h"
#include "suites/Host.h"
#include "vnAE/vipLi.h"

#include <QPainter>
#include <QPixmap>

#include <cstring>

using namespace rostrum;

namespace {

constexpr int kRounds = 25;

/// Layers of a composition, every fifth on the root and the others in chains upon it.
struct Tree
{
    explicit Tree(int count)
    {
        Project project;
        compo = project.AddComposition("bench", {});
        const ItemId solid = project.AddSolid("layer", { QSize(8, 8), {} });
        for (int i = 0; i < count; ++i)
            layers.prepend(project.AddLayer(solid, compo)); // each lies on top
        for (int i = 0; i < count; ++i) {
            project.EditLayer(compo, layers[i])->name = "layer " + QByteArray::number(i);
            if (i % 5)
                project.SetParent(compo, layers[i], layers[i - 1]);
        }
        host.GetDocument().Replace(project);
        vipLi *library = GetVipLi();
        library->BasicSuite = host.BasicSuite();
        library->Compo = nullptr;
        std::strcpy(library->CompoName, "bench");
        library->FindCompo();
        GetDoc()->SetCol(count / 2);
    }

    AEGP_LayerH LayerH(int i) { return host.LayerHandle(compo, layers[i]); }

    Host host;
    ItemId compo = 0;
    QVector<LayerId> layers;
};

/// One suite of the host for a scope, as a plug-in holds it that does nothing else.
template <class Table>
class Bare
{
public:
    Bare() { Basic()->AcquireSuite(Table::kName, Table::kVersion, &table); }
    ~Bare() { Basic()->ReleaseSuite(Table::kName, Table::kVersion); }
    Bare(const Bare &) = delete;
    Bare &operator=(const Bare &) = delete;
    const Table *operator->() const { return static_cast<const Table *>(table); }

private:
    static const SPBasicSuite *Basic() { return GetVipLi()->BasicSuite; }
    const void *table = nullptr;
};

/// The host calls of a paint in their order, one operation's suites at a time, and nothing done with
/// what they answer but what leads to the next call.
class BarePaint
{
public:
    explicit BarePaint(AEGP_LayerH current) : current(current) { }

    void Run()
    {
        Children(nullptr, /*isLinks=*/true);
        Current();
        Children(nullptr, /*isLinks=*/false);
    }

    qint64 sum = 0; // so that nothing is left out

private:
    void FindCompo()
    {
        const Bare<AEGP_ProjSuite5> projects;
        const Bare<AEGP_ItemSuite7> items;
        const Bare<AEGP_CompSuite6> comps;
        AEGP_ProjectH project = nullptr;
        AEGP_ItemH item = nullptr;
        projects->AEGP_GetProjectByIndex(0, &project);
        projects->AEGP_GetProjectRootFolder(project, &item);
        for (;;) {
            items->AEGP_GetNextProjItem(project, item, &item);
            AEGP_ItemType type = AEGP_ItemType_NONE;
            items->AEGP_GetItemType(item, &type);
            if (type != AEGP_ItemType_COMP)
                continue;
            char name[32];
            items->AEGP_GetItemName(item, name);
            break;
        }
        comps->AEGP_GetCompFromItem(item, &compo);
    }

    /// @param index of the child that is asked for, -1 to count them
    AEGP_LayerH Walk(AEGP_LayerH parent, int index, int *count)
    {
        FindCompo();
        const A_long layers = CountLayers();
        const Bare<AEGP_LayerSuite4> suite;
        int passed = 0;
        for (A_long i = 0; i < layers; ++i) {
            AEGP_LayerH layer = nullptr;
            AEGP_LayerH above = nullptr;
            suite->AEGP_GetCompLayerByIndex(compo, i, &layer);
            suite->AEGP_GetLayerParent(layer, &above);
            if (above == parent && passed++ == index)
                return layer;
        }
        *count = passed;
        return nullptr;
    }

    A_long CountLayers()
    {
        const Bare<AEGP_LayerSuite4> suite;
        A_long layers = 0;
        suite->AEGP_GetCompNumLayers(compo, &layers);
        return layers;
    }

    void Children(AEGP_LayerH parent, bool isLinks)
    {
        int count = 0;
        Walk(parent, -1, &count);
        for (int i = 0; i < count; ++i) {
            const AEGP_LayerH layer = Walk(parent, i, nullptr);
            if (isLinks)
                Link(layer);
            else
                Box(layer);
            Children(layer, isLinks);
        }
    }

    AEGP_LayerH Parent(AEGP_LayerH layer)
    {
        const Bare<AEGP_LayerSuite4> suite;
        AEGP_LayerH parent = nullptr;
        suite->AEGP_GetLayerParent(layer, &parent);
        return parent;
    }

    void Position(AEGP_LayerH layer)
    {
        {
            const Bare<AEGP_LayerSuite4> suite;
            A_long index = 0;
            suite->AEGP_GetLayerIndex(layer, &index);
            sum += index;
        }
        const Bare<AEGP_LayerSuite4> suite;
        for (AEGP_LayerH above = layer; above; ++sum)
            suite->AEGP_GetLayerParent(above, &above);
    }

    void Link(AEGP_LayerH layer)
    {
        const AEGP_LayerH parent = Parent(layer);
        Position(layer);
        if (parent)
            Position(parent);
    }

    void Current()
    {
        const Bare<AEGP_LayerSuite4> suite;
        A_long layers = 0;
        suite->AEGP_GetCompNumLayers(compo, &layers);
        AEGP_LayerH layer = nullptr;
        suite->AEGP_GetCompLayerByIndex(compo, layers / 2, &layer);
        sum += layer == current;
    }

    void Box(AEGP_LayerH layer)
    {
        Position(layer);
        Current();
        FindCompo();
        const Bare<AEGP_LayerSuite4> suite;
        char own[32];
        char source[32];
        suite->AEGP_GetLayerName(layer, own, source);
        sum += own[0];
    }

    AEGP_LayerH current;
    AEGP_CompH compo = nullptr;
};

/// The same tree in memory, as the bound graph lays it out.
void CopyTree(WinGraphDataAE &from, WExpoGraph::NodeHandle node, MemoryGraph &to)
{
    for (int i = 0; i < from.GetNbChildren(node); ++i) {
        const WExpoGraph::NodeHandle child = from.GetChildNode(node, i);
        to.Add(child, node, from.GetNodePos(child), from.GetNodeName(child));
        CopyTree(from, child, to);
    }
}

void Paint(QWidget &widget, QPixmap &canvas)
{
    QPainter painter(&canvas);
    widget.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
}

int CallsOf(const std::function<void()> &work)
{
    Trace &trace = Host::Instance()->GetTrace();
    trace.Start();
    work();
    trace.Stop();
    const QByteArrayList calls = trace.Functions();
    return calls.size();
}

bench::Figures PaintOf(int count)
{
    Tree tree(count);
    WinGraphDataAE graph;
    MemoryGraph memory;
    memory.Add(graph.GetRootNode(), 0, QPoint(0, 0), QStringLiteral("[Root]"));
    CopyTree(graph, graph.GetRootNode(), memory);
    memory.current = graph.GetCurrentNode();
    const QSize size(300 + count * 48, 450);
    graph.resize(size);
    memory.resize(size);
    QPixmap canvas(size);
    BarePaint bare(tree.LayerH(count / 2));
    const auto paint = [&] { Paint(graph, canvas); };
    const auto bareCalls = [&] { bare.Run(); };
    const int calls = CallsOf(paint);
    if (CallsOf(bareCalls) != calls)
        qFatal("the floor makes %d host calls, the paint %d", CallsOf(bareCalls), calls);

    bench::Figures figures{ bench::Compare(
        QStringLiteral("graph of %1 layers over its calls and boxes in memory").arg(count), 1.5,
        kRounds, paint, [&] {
            bare.Run();
            Paint(memory, canvas);
        }) };
    figures << bench::Figure{ QStringLiteral("host calls of that paint"),
        static_cast<double>(calls), 0, 0, QStringLiteral("calls") };
    figures << bench::Compare(QStringLiteral("that paint over the boxes in memory alone"), 0,
        kRounds, paint, [&] { Paint(memory, canvas); });
    return figures;
}

const bench::Registration graph("graph", [] {
    const bench::TraceOff traceOff;
    return PaintOf(50);
});

} // namespace
