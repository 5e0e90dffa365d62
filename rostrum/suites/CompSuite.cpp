#include "suites/SuiteTools.h"
#include "suites/Tables.h"

namespace rostrum {
namespace {

using Table = AEGP_CompSuite6;

/// An item that is no composition gives an error and null.
A_Err GetCompFromItem(AEGP_ItemH itemH, AEGP_CompH *comp)
{
    return HostCall<Table>(
        "AEGP_GetCompFromItem",
        [&](Host &host) -> A_Err {
            if (!comp)
                return NullArgument(host);
            const Item *item = host.FindItem(itemH);
            if (!item)
                return host.BadHandle(itemH);
            *comp = item->AsComposition() ? host.CompHandle(item->id) : nullptr;
            return *comp ? A_Err_NONE : A_Err_PARAMETER;
        },
        itemH, comp);
}

A_Err GetItemFromComp(AEGP_CompH compH, AEGP_ItemH *item)
{
    return HostCall<Table>(
        "AEGP_GetItemFromComp",
        [&](Host &host) -> A_Err {
            const Item *comp = host.FindComp(compH);
            if (!comp)
                return host.BadHandle(compH);
            if (!item)
                return NullArgument(host);
            *item = host.ItemHandle(comp->id);
            return A_Err_NONE;
        },
        compH, item);
}

/// The collection becomes the composition's whole selection and stays the caller's. A member that
/// is gone, or of another composition, is an error, and the selection stays.
A_Err SetSelection(AEGP_CompH compH, AEGP_Collection2H selection)
{
    return HostCall<Table>(
        "AEGP_SetSelection",
        [&](Host &host) -> A_Err {
            const Item *comp = host.FindComp(compH);
            if (!comp)
                return host.BadHandle(compH);
            const HandleParts parts = TakeApart(selection);
            const Collection *collection = parts.kind == HandleKind::Collection
                ? host.collections.Find(parts.payload)
                : nullptr;
            if (!collection)
                return host.BadHandle(selection);
            QVector<LayerId> layers;
            for (const AEGP_LayerH handle : collection->layers) {
                const LayerRef layer = host.FindLayer(handle);
                if (!layer || layer.place->composition != comp->id)
                    return kErrBadHandle;
                if (!layers.contains(layer->id))
                    layers << layer->id;
            }
            host.GetDocument().view.selections.insert(comp->id, layers);
            host.NoteChange();
            return A_Err_NONE;
        },
        compH, selection);
}

/// A duration equal to what it is, whatever its scale, is no change.
A_Err SetCompDuration(AEGP_CompH compH, const A_Time *duration)
{
    return HostCall<Table>(
        "AEGP_SetCompDuration",
        [&](Host &host) -> A_Err {
            const Item *comp = host.FindComp(compH);
            if (!comp)
                return host.BadHandle(compH);
            if (const A_Err error = CheckTime(host, duration))
                return error;
            if (duration->value < 0)
                return A_Err_PARAMETER;
            if (comp->AsComposition()->duration != FromHostTime(*duration))
                host.Edit("Composition Duration").EditComposition(comp->id)->duration
                    = FromHostTime(*duration);
            return A_Err_NONE;
        },
        compH, duration);
}

} // namespace

void FillTable(AEGP_CompSuite6 &table)
{
    table.AEGP_GetCompFromItem = GetCompFromItem;
    table.AEGP_GetItemFromComp = GetItemFromComp;
    table.AEGP_SetSelection = SetSelection;
    table.AEGP_SetCompDuration = SetCompDuration;
}

} // namespace rostrum
