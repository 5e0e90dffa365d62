#include "suites/SuiteTools.h"
#include "suites/Tables.h"

namespace rostrum {
namespace {

using Table = AEGP_LayerSuite4;

/// A query of one layer: checks the handle and the place for the answer, then asks `answer`.
template <typename Out, typename Answer>
A_Err AskLayer(const char *function, AEGP_LayerH layerH, Out *out, Answer answer)
{
    return HostCall<Table>(
        function,
        [&](Host &host) -> A_Err {
            const LayerRef layer = host.FindLayer(layerH);
            if (!layer)
                return host.BadHandle(layerH);
            if (!out)
                return NullArgument(host);
            *out = answer(host, layer);
            return A_Err_NONE;
        },
        layerH, out);
}

/// Makes a change to one layer, under a name of its own where no undo group is open.
Layer &EditLayer(Host &host, const LayerRef &layer, const char *what)
{
    return *host.Edit(what).EditLayer(
        layer.place->composition, layer.place->layer, &layer.place->index);
}

A_Err GetCompNumLayers(AEGP_CompH compH, A_long *count)
{
    return HostCall<Table>(
        "AEGP_GetCompNumLayers",
        [&](Host &host) -> A_Err {
            const Item *comp = host.FindComp(compH);
            if (!comp)
                return host.BadHandle(compH);
            if (!count)
                return NullArgument(host);
            *count = comp->AsComposition()->layers.size();
            return A_Err_NONE;
        },
        compH, count);
}

A_Err GetCompLayerByIndex(AEGP_CompH compH, A_long index, AEGP_LayerH *layer)
{
    return HostCall<Table>(
        "AEGP_GetCompLayerByIndex",
        [&](Host &host) -> A_Err {
            const Item *comp = host.FindComp(compH);
            if (!comp)
                return host.BadHandle(compH);
            if (!layer)
                return NullArgument(host);
            const QVector<LayerPtr> &layers = comp->AsComposition()->layers;
            if (index < 0 || index >= layers.size())
                return A_Err_PARAMETER;
            *layer = host.LayerHandle(comp->id, layers.at(index)->id, index);
            return A_Err_NONE;
        },
        compH, index, layer);
}

/// The one selected layer of the active composition; null when none is selected, or several are.
A_Err GetActiveLayer(AEGP_LayerH *layer)
{
    return HostCall<Table>(
        "AEGP_GetActiveLayer",
        [&](Host &host) -> A_Err {
            if (!layer)
                return NullArgument(host);
            const View &view = host.GetDocument().view;
            AEGP_LayerH only = nullptr;
            int count = 0;
            for (const LayerId selected : view.selections.value(view.activeItem)) {
                const AEGP_LayerH handle = host.LayerHandle(view.activeItem, selected);
                if (!host.FindLayer(handle))
                    continue; // gone since it was selected
                only = handle;
                ++count;
            }
            *layer = count == 1 ? only : nullptr;
            return A_Err_NONE;
        },
        layer);
}

A_Err GetLayerIndex(AEGP_LayerH layerH, A_long *index)
{
    return AskLayer("AEGP_GetLayerIndex", layerH, index,
        [](Host &, const LayerRef &layer) { return layer.place->index; });
}

/// Null for a camera, a light, a text.
A_Err GetLayerSourceItem(AEGP_LayerH layerH, AEGP_ItemH *source)
{
    return AskLayer("AEGP_GetLayerSourceItem", layerH, source,
        [](Host &host, const LayerRef &layer) { return host.ItemHandle(layer->source); });
}

A_Err GetLayerParentComp(AEGP_LayerH layerH, AEGP_CompH *comp)
{
    return AskLayer("AEGP_GetLayerParentComp", layerH, comp, [](Host &host, const LayerRef &layer) {
        return host.CompHandle(layer.place->composition);
    });
}

/// The layer's own name is empty when the user gave none. That the real host leaves it empty then
/// was never seen; a plug-in counts on it.
A_Err GetLayerName(AEGP_LayerH layerH, A_char *layerName, A_char *sourceName)
{
    return HostCall<Table>(
        "AEGP_GetLayerName",
        [&](Host &host) -> A_Err {
            const LayerRef layer = host.FindLayer(layerH);
            if (!layer)
                return host.BadHandle(layerH);
            if (!layerName || !sourceName)
                return NullArgument(host);
            const Item *source = host.GetProject().SourceOf(*layer.layer);
            CopyName(layer->name, layerName, AEGP_MAX_LAYER_NAME_SIZE);
            CopyName(source ? source->name : QByteArray(), sourceName, AEGP_MAX_LAYER_NAME_SIZE);
            return A_Err_NONE;
        },
        layerH, layerName, sourceName);
}

A_Err CheckTimeMode(Host &host, AEGP_LTimeMode timeMode)
{
    const A_Time anyTime = { 0, 1 };
    return CheckTime(host, &anyTime, timeMode);
}

/// In composition time the first visible frame, in layer time always 0.
A_Err GetLayerInPoint(AEGP_LayerH layerH, AEGP_LTimeMode timeMode, A_Time *inPoint)
{
    return HostCall<Table>(
        "AEGP_GetLayerInPoint",
        [&](Host &host) -> A_Err {
            const LayerRef layer = host.FindLayer(layerH);
            if (!layer)
                return host.BadHandle(layerH);
            if (!inPoint)
                return NullArgument(host);
            if (const A_Err error = CheckTimeMode(host, timeMode))
                return error;
            *inPoint = ToHostTime(layer->inPoint);
            if (timeMode == AEGP_LTimeMode_LayerTime)
                inPoint->value = 0;
            return A_Err_NONE;
        },
        layerH, timeMode, inPoint);
}

/// The same in both modes: no layer is stretched here.
A_Err GetLayerDuration(AEGP_LayerH layerH, AEGP_LTimeMode timeMode, A_Time *duration)
{
    return HostCall<Table>(
        "AEGP_GetLayerDuration",
        [&](Host &host) -> A_Err {
            const LayerRef layer = host.FindLayer(layerH);
            if (!layer)
                return host.BadHandle(layerH);
            if (!duration)
                return NullArgument(host);
            if (const A_Err error = CheckTimeMode(host, timeMode))
                return error;
            *duration = ToHostTime(layer->duration);
            return A_Err_NONE;
        },
        layerH, timeMode, duration);
}

/// Both in one step. A layer's length may be 0, not less.
A_Err SetLayerInPointAndDuration(
    AEGP_LayerH layerH, AEGP_LTimeMode timeMode, const A_Time *inPoint, const A_Time *duration)
{
    return HostCall<Table>(
        "AEGP_SetLayerInPointAndDuration",
        [&](Host &host) -> A_Err {
            const LayerRef layer = host.FindLayer(layerH);
            if (!layer)
                return host.BadHandle(layerH);
            if (const A_Err error = CheckTime(host, inPoint, timeMode))
                return error;
            if (const A_Err error = CheckTime(host, duration, timeMode))
                return error;
            if (duration->value < 0)
                return A_Err_PARAMETER;
            const Time start = InCompTime(*layer.layer, *inPoint, timeMode);
            Layer &edited = EditLayer(host, layer, "Layer In Point and Duration");
            edited.inPoint = start;
            edited.duration = FromHostTime(*duration);
            return A_Err_NONE;
        },
        layerH, timeMode, inPoint, duration);
}

/// Where layer time 0 lies in composition time. The bar stays where it is.
A_Err SetLayerOffset(AEGP_LayerH layerH, const A_Time *offset)
{
    return HostCall<Table>(
        "AEGP_SetLayerOffset",
        [&](Host &host) -> A_Err {
            const LayerRef layer = host.FindLayer(layerH);
            if (!layer)
                return host.BadHandle(layerH);
            if (const A_Err error = CheckTime(host, offset))
                return error;
            EditLayer(host, layer, "Layer Offset").offset = FromHostTime(*offset);
            return A_Err_NONE;
        },
        layerH, offset);
}

/// Above all others. An item that cannot be shown there, a folder or a composition that would then
/// show itself, is an ordinary error; the real host says no more than that results are undefined.
A_Err AddLayer(AEGP_ItemH itemH, AEGP_CompH compH, AEGP_LayerH *layer)
{
    return HostCall<Table>(
        "AEGP_AddLayer",
        [&](Host &host) -> A_Err {
            const Item *item = host.FindItem(itemH);
            const Item *comp = host.FindComp(compH);
            if (!item)
                return host.BadHandle(itemH);
            if (!comp)
                return host.BadHandle(compH);
            if (!layer)
                return NullArgument(host);
            const ItemId source = item->id;
            const ItemId target = comp->id;
            if (!host.GetProject().CanAddLayer(source, target))
                return A_Err_PARAMETER;
            *layer = host.LayerHandle(target, host.Edit("Add Layer").AddLayer(source, target));
            return A_Err_NONE;
        },
        itemH, compH, layer);
}

/// The number is the layer's index after the move, -1 the end of the stack. That it is the final
/// index was never seen in the real host.
A_Err ReorderLayer(AEGP_LayerH layerH, A_long index)
{
    return HostCall<Table>(
        "AEGP_ReorderLayer",
        [&](Host &host) -> A_Err {
            const LayerRef layer = host.FindLayer(layerH);
            if (!layer)
                return host.BadHandle(layerH);
            const LayerPlace place = *layer.place;
            const int count = host.GetProject().FindComposition(place.composition)->layers.size();
            if (index < AEGP_REORDER_LAYER_TO_END || index >= count)
                return A_Err_PARAMETER;
            const int to = index == AEGP_REORDER_LAYER_TO_END ? count - 1 : index;
            if (to == place.index)
                return A_Err_NONE;
            host.Edit("Reorder Layer").MoveLayer(place.composition, place.layer, to);
            layer.place->index = to;
            return A_Err_NONE;
        },
        layerH, index);
}

/// Null for a layer without parent.
A_Err GetLayerParent(AEGP_LayerH layerH, AEGP_LayerH *parent)
{
    return AskLayer("AEGP_GetLayerParent", layerH, parent, [](Host &host, const LayerRef &layer) {
        return host.LayerHandle(layer.place->composition, layer->parent);
    });
}

} // namespace

void FillTable(AEGP_LayerSuite4 &table)
{
    table.AEGP_GetCompNumLayers = GetCompNumLayers;
    table.AEGP_GetCompLayerByIndex = GetCompLayerByIndex;
    table.AEGP_GetActiveLayer = GetActiveLayer;
    table.AEGP_GetLayerIndex = GetLayerIndex;
    table.AEGP_GetLayerSourceItem = GetLayerSourceItem;
    table.AEGP_GetLayerParentComp = GetLayerParentComp;
    table.AEGP_GetLayerName = GetLayerName;
    table.AEGP_GetLayerInPoint = GetLayerInPoint;
    table.AEGP_GetLayerDuration = GetLayerDuration;
    table.AEGP_SetLayerInPointAndDuration = SetLayerInPointAndDuration;
    table.AEGP_SetLayerOffset = SetLayerOffset;
    table.AEGP_AddLayer = AddLayer;
    table.AEGP_ReorderLayer = ReorderLayer;
    table.AEGP_GetLayerParent = GetLayerParent;
}

} // namespace rostrum
