#include "suites/SuiteTools.h"
#include "suites/Tables.h"

namespace rostrum {
namespace {

using Table = AEGP_ItemSuite7;

/// A query of one item: checks the handle and the place for the answer, then asks `answer`.
template <typename Out, typename Answer>
A_Err AskItem(const char *function, AEGP_ItemH itemH, Out *out, Answer answer)
{
    return HostCall<Table>(
        function,
        [&](Host &host) -> A_Err {
            const Item *item = host.FindItem(itemH);
            if (!item)
                return host.BadHandle(itemH);
            if (!out)
                return NullArgument(host);
            *out = answer(host, *item);
            return A_Err_NONE;
        },
        itemH, out);
}

/// The walk starts at the root folder, which counts as an item. Its order was never seen in the
/// real host: here each folder comes before what it holds, siblings in project order.
A_Err GetFirstProjItem(AEGP_ProjectH project, AEGP_ItemH *item)
{
    return HostCall<Table>(
        "AEGP_GetFirstProjItem",
        [&](Host &host) -> A_Err {
            if (!host.IsProject(project))
                return kErrBadHandle;
            if (!item)
                return NullArgument(host);
            *item = host.ItemHandle(host.GetProject().RootFolder());
            return A_Err_NONE;
        },
        project, item);
}

A_Err GetNextProjItem(AEGP_ProjectH project, AEGP_ItemH itemH, AEGP_ItemH *nextItem)
{
    return HostCall<Table>(
        "AEGP_GetNextProjItem",
        [&](Host &host) -> A_Err {
            const Item *item = host.FindItem(itemH);
            if (!host.IsProject(project) || !item)
                return kErrBadHandle;
            if (!nextItem)
                return NullArgument(host);
            *nextItem = host.ItemHandle(host.GetProject().NextInWalk(item->id)); // null at the end
            return A_Err_NONE;
        },
        project, itemH, nextItem);
}

A_Err GetActiveItem(AEGP_ItemH *item)
{
    return HostCall<Table>(
        "AEGP_GetActiveItem",
        [&](Host &host) -> A_Err {
            if (!item)
                return NullArgument(host);
            const ItemId active = host.GetDocument().view.activeItem;
            *item = host.GetProject().Find(active) ? host.ItemHandle(active) : nullptr;
            return A_Err_NONE;
        },
        item);
}

A_Err GetItemType(AEGP_ItemH itemH, AEGP_ItemType *itemType)
{
    return AskItem("AEGP_GetItemType", itemH, itemType, [](Host &, const Item &item) {
        if (item.AsFolder())
            return AEGP_ItemType_FOLDER;
        return item.AsComposition() ? AEGP_ItemType_COMP : AEGP_ItemType_FOOTAGE; // solids, too
    });
}

A_Err GetItemName(AEGP_ItemH itemH, A_char *name)
{
    return HostCall<Table>(
        "AEGP_GetItemName",
        [&](Host &host) -> A_Err {
            const Item *item = host.FindItem(itemH);
            if (!item)
                return host.BadHandle(itemH);
            if (!name)
                return NullArgument(host);
            CopyName(item->name, name, AEGP_MAX_ITEM_NAME_SIZE);
            return A_Err_NONE;
        },
        itemH, name);
}

/// In the item's own time. A series answers its number of images over its rate: a plug-in reads the
/// value as a count of frames. That the real host does so, too, was never seen.
A_Err GetItemDuration(AEGP_ItemH itemH, A_Time *duration)
{
    return AskItem("AEGP_GetItemDuration", itemH, duration,
        [](Host &, const Item &item) { return ToHostTime(item.Duration()); });
}

/// What was set last, in the numbers in which it was set.
A_Err GetItemCurrentTime(AEGP_ItemH itemH, A_Time *time)
{
    return AskItem("AEGP_GetItemCurrentTime", itemH, time, [](Host &host, const Item &item) {
        const Composition *composition = item.AsComposition();
        const Time start = composition ? composition->rate.FrameTime(0) : Time();
        return ToHostTime(host.GetDocument().view.currentTimes.value(item.id, start));
    });
}

/// No history entry comes of it. Only compositions have a current time here.
A_Err SetItemCurrentTime(AEGP_ItemH itemH, const A_Time *time)
{
    return HostCall<Table>(
        "AEGP_SetItemCurrentTime",
        [&](Host &host) -> A_Err {
            const Item *item = host.FindItem(itemH);
            if (!item)
                return host.BadHandle(itemH);
            if (const A_Err error = CheckTime(host, time))
                return error;
            if (!item->AsComposition())
                return A_Err_PARAMETER;
            host.GetDocument().view.currentTimes.insert(item->id, FromHostTime(*time));
            host.NoteChange();
            return A_Err_NONE;
        },
        itemH, time);
}

A_Err GetItemDimensions(AEGP_ItemH itemH, A_long *width, A_long *height)
{
    return HostCall<Table>(
        "AEGP_GetItemDimensions",
        [&](Host &host) -> A_Err {
            const Item *item = host.FindItem(itemH);
            if (!item)
                return host.BadHandle(itemH);
            if (!width || !height)
                return NullArgument(host);
            const QSize size = item->Dimensions();
            *width = size.width();
            *height = size.height();
            return A_Err_NONE;
        },
        itemH, width, height);
}

A_Err GetItemLabel(AEGP_ItemH itemH, AEGP_LabelID *label)
{
    return AskItem("AEGP_GetItemLabel", itemH, label,
        [](Host &, const Item &item) { return static_cast<AEGP_LabelID>(item.label); });
}

} // namespace

void FillTable(AEGP_ItemSuite7 &table)
{
    table.AEGP_GetFirstProjItem = GetFirstProjItem;
    table.AEGP_GetNextProjItem = GetNextProjItem;
    table.AEGP_GetActiveItem = GetActiveItem;
    table.AEGP_GetItemType = GetItemType;
    table.AEGP_GetItemName = GetItemName;
    table.AEGP_GetItemDuration = GetItemDuration;
    table.AEGP_GetItemCurrentTime = GetItemCurrentTime;
    table.AEGP_SetItemCurrentTime = SetItemCurrentTime;
    table.AEGP_GetItemDimensions = GetItemDimensions;
    table.AEGP_GetItemLabel = GetItemLabel;
}

} // namespace rostrum
