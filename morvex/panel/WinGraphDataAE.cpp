#include "WinGraphDataAE.h"

#include "panel/Doc.h"
#include "shell/SuiteHandler.h"
#include "vnAE/hostErrors.h"
#include "vnAE/vipLi.h"

#include <QVarLengthArray>

namespace {

constexpr WExpoGraph::NodeHandle kNoNode = 0;
constexpr WExpoGraph::NodeHandle kRootNode = 1; // no layer's handle is that low
constexpr int kNodeHeight = 24; // pixels
constexpr int kLevelGap = 12; // pixels between the boxes of two levels

AEGP_LayerH LayerOf(WExpoGraph::NodeHandle node)
{
    // A node is the handle itself. NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<AEGP_LayerH>(static_cast<quintptr>(node));
}

WExpoGraph::NodeHandle NodeOf(AEGP_LayerH layer)
{
    return reinterpret_cast<quintptr>(layer);
}

bool IsLayer(WExpoGraph::NodeHandle node)
{
    return node != kNoNode && node != kRootNode;
}

} // namespace

WinGraphDataAE::WinGraphDataAE(QWidget *parent) : WExpoGraph(parent), nodeHeight(kNodeHeight)
{
    GetDoc();
    GetVipLi();
}

bool WinGraphDataAE::event(QEvent *event)
{
    try {
        return WExpoGraph::event(event);
    } catch (SuiteErr) {
        return true;
    }
}

WExpoGraph::NodeHandle WinGraphDataAE::GetCurrentNode()
{
    return NodeOf(GetDoc()->GetCurrentLayer());
}

void WinGraphDataAE::SetCurrentNode(NodeHandle node)
{
    if (IsLayer(node))
        GetDoc()->SetCurrentLayer(LayerOf(node));
}

WExpoGraph::NodeHandle WinGraphDataAE::GetRootNode()
{
    return kRootNode;
}

WExpoGraph::NodeHandle WinGraphDataAE::GetParentNode(NodeHandle node)
{
    if (!IsLayer(node))
        return kNoNode;
    SuiteHandler suites(GetVipLi()->BasicSuite);
    AEGP_LayerH parent = nullptr;
    if (VN_HOST_FAILED(suites.Layer10()->AEGP_GetLayerParent(LayerOf(node), &parent)))
        return kNoNode;
    return parent ? NodeOf(parent) : kRootNode;
}

QPoint WinGraphDataAE::GetNodePos(NodeHandle node)
{
    if (!IsLayer(node))
        return QPoint(0, 0);
    const AEGP_LayerH layer = LayerOf(node);
    const int x = GetVipLi()->GetLayerIndex(layer) * GetDoc()->colWidth;
    const int y = -Depth(layer) * (nodeHeight + kLevelGap);
    return QPoint(x, y);
}

/// The host refuses parenting in a circle; should one come about, the walk ends where it began to
/// repeat. Few layers hang deep, so a list is searched faster than a set.
int WinGraphDataAE::Depth(AEGP_LayerH layer)
{
    SuiteHandler suites(GetVipLi()->BasicSuite);
    QVarLengthArray<AEGP_LayerH, 64> way;
    while (layer && !way.contains(layer)) {
        way.append(layer);
        AEGP_LayerH parent = nullptr;
        if (VN_HOST_FAILED(suites.Layer10()->AEGP_GetLayerParent(layer, &parent)))
            break;
        layer = parent;
    }
    return way.size();
}

void WinGraphDataAE::NodeHook() { }

QSize WinGraphDataAE::GetNodeSize(NodeHandle)
{
    return QSize(GetDoc()->colWidth, nodeHeight);
}

bool WinGraphDataAE::IsRootNode(NodeHandle node)
{
    return node == kRootNode;
}

void WinGraphDataAE::DeleteNode(NodeHandle) { }

void WinGraphDataAE::NewChildNode(NodeHandle, bool) { }

void WinGraphDataAE::NewFatherNode(NodeHandle) { }

void WinGraphDataAE::DragNode(QPoint, bool) { }

/// Walks the layers in the host's order. The composition is found anew, since its handle may have
/// gone stale since the last paint.
template <class Use>
WExpoGraph::NodeHandle WinGraphDataAE::FirstChild(NodeHandle node, Use isWanted)
{
    if (node == kNoNode)
        return kNoNode;
    vipLi *library = GetVipLi();
    library->FindCompo(); // unchecked: without a composition there are no columns
    const qint32 count = library->GetColumnCount();
    SuiteHandler suites(library->BasicSuite);
    for (qint32 index = 0; index < count; ++index) {
        AEGP_LayerH layer = nullptr;
        AEGP_LayerH parent = nullptr;
        if (VN_HOST_FAILED(
                suites.Layer10()->AEGP_GetCompLayerByIndex(library->Compo, index, &layer))
            || VN_HOST_FAILED(suites.Layer10()->AEGP_GetLayerParent(layer, &parent)))
            continue;
        const NodeHandle hangsFrom = parent ? NodeOf(parent) : kRootNode;
        if (hangsFrom == node && isWanted())
            return NodeOf(layer);
    }
    return kNoNode;
}

int WinGraphDataAE::GetNbChildren(NodeHandle node)
{
    int count = 0;
    FirstChild(node, [&count] {
        ++count;
        return false; // and on to the next
    });
    return count;
}

WExpoGraph::NodeHandle WinGraphDataAE::GetChildNode(NodeHandle node, int index)
{
    int passed = 0;
    return FirstChild(node, [&passed, index] { return passed++ == index; });
}

QString WinGraphDataAE::GetNodeName(NodeHandle node)
{
    if (node == kRootNode)
        return QStringLiteral("[Root]");
    vipLi *library = GetVipLi();
    library->FindCompo(); // unchecked: without a composition the name is empty
    library->Layer = LayerOf(node);
    return library->GetColumnName();
}

void WinGraphDataAE::NodeExtra() { }
