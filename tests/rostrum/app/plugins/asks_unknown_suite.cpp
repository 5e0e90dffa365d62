// Asks for a version of a suite that there is not.
#include "PluginKit.h"

namespace {

A_Err OnIdle(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long *)
{
    const void *table = nullptr;
    plugin::basic->AcquireSuite(AEGP_LayerSuite4::kName, 99, &table);
    return A_Err_NONE;
}

} // namespace

A_Err plugin::Enter()
{
    return RegisterIdle(OnIdle);
}
