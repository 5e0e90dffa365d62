// Holds a collection from its first idle call to its death, and gives it back there: all is well.
#include "PluginKit.h"

namespace {

AEGP_Collection2H held = nullptr;

A_Err OnIdle(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long *)
{
    return held ? A_Err_NONE
                : plugin::Suite<AEGP_CollectionSuite2>()->AEGP_NewCollection(plugin::id, &held);
}

A_Err OnDeath(AEGP_GlobalRefcon, AEGP_DeathRefcon)
{
    return plugin::Suite<AEGP_CollectionSuite2>()->AEGP_DisposeCollection(held);
}

} // namespace

A_Err plugin::Enter()
{
    const A_Err error = RegisterIdle(OnIdle);
    return error ? error : RegisterDeath(OnDeath);
}
