// Gives a collection back twice.
#include "PluginKit.h"

namespace {

A_Err OnIdle(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long *)
{
    const plugin::Suite<AEGP_CollectionSuite2> collections;
    AEGP_Collection2H collection = nullptr;
    collections->AEGP_NewCollection(plugin::id, &collection);
    collections->AEGP_DisposeCollection(collection);
    return collections->AEGP_DisposeCollection(collection);
}

} // namespace

A_Err plugin::Enter()
{
    return RegisterIdle(OnIdle);
}
