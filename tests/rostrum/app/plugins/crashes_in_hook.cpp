// Crashes in its idle hook.
#include "PluginKit.h"

#include <csignal>

namespace {

A_Err OnIdle(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long *)
{
    std::raise(SIGSEGV);
    return A_Err_NONE;
}

} // namespace

A_Err plugin::Enter()
{
    return RegisterIdle(OnIdle);
}
