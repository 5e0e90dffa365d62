#include "PluginKit.h"

namespace plugin {

A_Err RegisterIdle(AEGP_IdleHook hook)
{
    return Suite<AEGP_RegisterSuite5>()->AEGP_RegisterIdleHook(id, hook, nullptr);
}

A_Err RegisterDeath(AEGP_DeathHook hook)
{
    return Suite<AEGP_RegisterSuite5>()->AEGP_RegisterDeathHook(id, hook, nullptr);
}

AEGP_LayerH FirstLayer()
{
    AEGP_ItemH item = nullptr;
    AEGP_CompH composition = nullptr;
    AEGP_LayerH layer = nullptr;
    const Suite<AEGP_ItemSuite7> items;
    if (items->AEGP_GetActiveItem(&item) || !item)
        return nullptr;
    const Suite<AEGP_CompSuite6> compositions;
    if (compositions->AEGP_GetCompFromItem(item, &composition))
        return nullptr;
    const Suite<AEGP_LayerSuite4> layers;
    return layers->AEGP_GetCompLayerByIndex(composition, 0, &layer) ? nullptr : layer;
}

} // namespace plugin

extern "C" __attribute__((visibility("default"))) A_Err EntryPointFunc(
    SPBasicSuite *basicSuite, A_long, A_long, AEGP_PluginID pluginId, AEGP_GlobalRefcon *)
{
    plugin::basic = basicSuite;
    plugin::id = pluginId;
    return plugin::Enter();
}
