// AEGP Item Suite: Items of the project: folders, compositions, footage. Names go into 32-byte
// buffers. Every slot is declared, in the order of the table, so that the offsets hold; the names
// of the arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"

/// "AEGP Item Suite" version 11.
struct AEGP_ItemSuite7
{
    static constexpr char kName[] = "AEGP Item Suite";
    static constexpr std::int32_t kVersion = 11;

    A_Err (*AEGP_GetFirstProjItem)(AEGP_ProjectH project, AEGP_ItemH *item);
    A_Err (*AEGP_GetNextProjItem)(AEGP_ProjectH project, AEGP_ItemH item, AEGP_ItemH *nextItem);
    A_Err (*AEGP_GetActiveItem)(AEGP_ItemH *item);
    A_Err (*AEGP_IsItemSelected)(AEGP_ItemH, A_Boolean *);
    A_Err (*AEGP_SelectItem)(AEGP_ItemH, A_Boolean, A_Boolean);
    A_Err (*AEGP_GetItemType)(AEGP_ItemH item, AEGP_ItemType *itemType);
    A_Err (*AEGP_GetTypeName)(AEGP_ItemType, A_char *);
    A_Err (*AEGP_GetItemName)(AEGP_ItemH item, A_char *name);
    A_Err (*AEGP_SetItemName)(AEGP_ItemH, const A_char *);
    A_Err (*AEGP_GetItemID)(AEGP_ItemH, A_long *);
    A_Err (*AEGP_GetItemFlags)(AEGP_ItemH, AEGP_ItemFlags *);
    A_Err (*AEGP_SetItemUseProxy)(AEGP_ItemH, A_Boolean);
    A_Err (*AEGP_GetItemParentFolder)(AEGP_ItemH, AEGP_ItemH *);
    A_Err (*AEGP_SetItemParentFolder)(AEGP_ItemH, AEGP_ItemH);
    A_Err (*AEGP_GetItemDuration)(AEGP_ItemH item, A_Time *duration);
    A_Err (*AEGP_GetItemCurrentTime)(AEGP_ItemH item, A_Time *time);
    A_Err (*AEGP_GetItemDimensions)(AEGP_ItemH item, A_long *width, A_long *height);
    A_Err (*AEGP_GetItemPixelAspectRatio)(AEGP_ItemH, A_Ratio *);
    A_Err (*AEGP_DeleteItem)(AEGP_ItemH);
    A_Err (*AEGP_CreateNewFolder)(const A_char *, AEGP_ItemH, AEGP_ItemH *);
    A_Err (*AEGP_SetItemCurrentTime)(AEGP_ItemH item, const A_Time *time);
    A_Err (*AEGP_GetItemCommentLength)(AEGP_ItemH, A_u_long *);
    A_Err (*AEGP_GetItemComment)(AEGP_ItemH, A_u_long, A_char *);
    A_Err (*AEGP_SetItemComment)(AEGP_ItemH, const A_char *);
    A_Err (*AEGP_GetItemLabel)(AEGP_ItemH item, AEGP_LabelID *label);
    A_Err (*AEGP_SetItemLabel)(AEGP_ItemH, AEGP_LabelID);
    A_Err (*AEGP_GetItemMRUView)(AEGP_ItemH, AEGP_ItemViewP *);
};
