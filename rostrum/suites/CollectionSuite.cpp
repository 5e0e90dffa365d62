#include "suites/SuiteTools.h"
#include "suites/Tables.h"

namespace rostrum {
namespace {

using Table = AEGP_CollectionSuite2;

Collection *FindCollection(Host &host, AEGP_Collection2H handle)
{
    const HandleParts parts = TakeApart(handle);
    return parts.kind == HandleKind::Collection ? host.collections.Find(parts.payload) : nullptr;
}

A_Err NewCollection(AEGP_PluginID pluginId, AEGP_Collection2H *collection)
{
    return HostCall<Table>(
        "AEGP_NewCollection",
        [&](Host &host) -> A_Err {
            if (!collection)
                return NullArgument(host);
            std::uint64_t payload = 0;
            if (!host.collections.Open({}, &payload))
                return A_Err_ALLOC;
            *collection = MakeHandle<AEGP_Collection2H>(HandleKind::Collection, payload);
            return A_Err_NONE;
        },
        pluginId, collection);
}

A_Err DisposeCollection(AEGP_Collection2H collection)
{
    return HostCall<Table>(
        "AEGP_DisposeCollection",
        [&](Host &host) -> A_Err {
            if (!FindCollection(host, collection))
                return host.BadHandle(collection);
            host.collections.Close(TakeApart(collection).payload);
            return A_Err_NONE;
        },
        collection);
}

/// Layers only. All of the item but its kind and its layer must be zero: what else stands there
/// would be taken for a stream that the host is to own.
A_Err CollectionPushBack(AEGP_Collection2H collectionH, const AEGP_CollectionItemV2 *item)
{
    return HostCall<Table>(
        "AEGP_CollectionPushBack",
        [&](Host &host) -> A_Err {
            Collection *collection = FindCollection(host, collectionH);
            if (!collection)
                return host.BadHandle(collectionH);
            if (!item)
                return NullArgument(host);
            if (item->type != AEGP_CollectionItemType_LAYER)
                return A_Err_PARAMETER;
            if (item->stream_refH)
                return host.Misuse("a layer's item names a stream");
            if (!host.FindLayer(item->u.layer.layerH))
                return host.BadHandle(item->u.layer.layerH);
            collection->layers << item->u.layer.layerH;
            return A_Err_NONE;
        },
        collectionH, item);
}

} // namespace

void FillTable(AEGP_CollectionSuite2 &table)
{
    table.AEGP_NewCollection = NewCollection;
    table.AEGP_DisposeCollection = DisposeCollection;
    table.AEGP_CollectionPushBack = CollectionPushBack;
}

} // namespace rostrum
