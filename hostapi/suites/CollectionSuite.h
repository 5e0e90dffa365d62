// AEGP Collection Suite: Sets of things of a composition, handed over as a selection.
// Every slot is declared, in the order of the table, so that the offsets hold; the names of the
// arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"

/// "AEGP Collection Suite" version 2.
struct AEGP_CollectionSuite2
{
    static constexpr char kName[] = "AEGP Collection Suite";
    static constexpr std::int32_t kVersion = 2;

    A_Err (*AEGP_NewCollection)(AEGP_PluginID pluginId, AEGP_Collection2H *collection);
    A_Err (*AEGP_DisposeCollection)(AEGP_Collection2H collection);
    A_Err (*AEGP_GetCollectionNumItems)(AEGP_Collection2H, A_u_long *);
    A_Err (*AEGP_GetCollectionItemByIndex)(AEGP_Collection2H, A_u_long, AEGP_CollectionItemV2 *);
    A_Err (*AEGP_CollectionPushBack)(
        AEGP_Collection2H collection, const AEGP_CollectionItemV2 *item);
    A_Err (*AEGP_CollectionErase)(AEGP_Collection2H, A_u_long, A_u_long);
};
