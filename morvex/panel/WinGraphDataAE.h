// WinGraphDataAE: the graph that the panel shows, bound to the composition: a box for each layer,
// hanging from the layer that it is parented to, and "[Root]" for the layers with no parent.
//
//                 [child]               depth 2
//        [head]   [body]    [floor]     depth 1, each at its layer's index times the column width
//     [Root]                            at the scene's origin
//
// A box stands above the column of the same index; where the library's ReverseColumns turns the
// columns around, the boxes keep the host's order. A click makes the layer the current column.
// The graph only reads: its menu and its drag change nothing.
//
// Units    node   a layer's handle in the host; 0 is no node, 1 the root
// Cost     Nothing is kept: each answer is worked out from the host, and a list of children is a
//          walk over all layers. A paint of n layers makes in the order of n squared host calls.
// Errors   A layer that the host cannot tell about is left out, with an error line in the log. A
//          handle that has gone stale stands at x 0 and is called "ERR". A missing suite ends the
//          widget's event, with what was drawn by then.
#pragma once

#include "vnQT/wExpoGraph.h"

#include "hostapi/HostTypes.h"

class WinGraphDataAE : public WExpoGraph
{
    Q_OBJECT

public:
    explicit WinGraphDataAE(QWidget *parent = nullptr);

    /// The layer of the document's current column. [host]
    NodeHandle GetCurrentNode() override;
    /// Makes a layer the current column; the root cannot be it. [host]
    void SetCurrentNode(NodeHandle node) override;
    NodeHandle GetRootNode() override;
    /// @return the root for a layer with no parent, 0 for the root [host]
    NodeHandle GetParentNode(NodeHandle node) override;
    /// [host]
    QPoint GetNodePos(NodeHandle node) override;
    void NodeHook() override;
    QSize GetNodeSize(NodeHandle node) override;
    bool IsRootNode(NodeHandle node) override;
    void DeleteNode(NodeHandle node) override;
    void NewChildNode(NodeHandle node, bool vect) override;
    void NewFatherNode(NodeHandle node) override;
    void DragNode(QPoint pos, bool free) override;
    /// [host]
    int GetNbChildren(NodeHandle node) override;
    /// Children come in the host's layer order. @return 0 behind the last one [host]
    NodeHandle GetChildNode(NodeHandle node, int index) override;
    /// The column's name. Leaves the library's current layer on the node: whoever needs a layer
    /// makes it current first. [host]
    QString GetNodeName(NodeHandle node) override;
    virtual void NodeExtra(); // no code calls it

protected:
    /// Qt cannot pass on what is thrown for a missing suite, so every event ends it here.
    bool event(QEvent *event) override;

private:
    template <class Use>
    static NodeHandle FirstChild(NodeHandle node, Use isWanted);
    /// Steps up to a layer with no parent, that last one counted.
    static int Depth(AEGP_LayerH layer);

    int nodeHeight; // pixels
};
