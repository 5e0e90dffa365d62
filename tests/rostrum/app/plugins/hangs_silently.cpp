// Hangs in its idle hook.
#include "PluginKit.h"

#include <chrono>
#include <thread>

namespace {

A_Err OnIdle(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long *)
{
    for (;;)
        std::this_thread::sleep_for(std::chrono::hours(1));
}

} // namespace

A_Err plugin::Enter()
{
    return RegisterIdle(OnIdle);
}
