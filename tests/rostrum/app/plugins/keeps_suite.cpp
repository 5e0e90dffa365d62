// Acquires a suite at each idle call and never releases it.
#include "PluginKit.h"

namespace {

A_Err OnIdle(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long *)
{
    plugin::Acquire<AEGP_MemorySuite1>();
    return A_Err_NONE;
}

} // namespace

A_Err plugin::Enter()
{
    return RegisterIdle(OnIdle);
}
