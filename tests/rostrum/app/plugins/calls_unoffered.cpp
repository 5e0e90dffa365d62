// Calls a slot that the host does not offer.
#include "PluginKit.h"

namespace {

A_Err OnIdle(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long *)
{
    A_long count = 0;
    return plugin::Suite<AEGP_ProjSuite5>()->AEGP_GetNumProjects(&count);
}

} // namespace

A_Err plugin::Enter()
{
    return RegisterIdle(OnIdle);
}
