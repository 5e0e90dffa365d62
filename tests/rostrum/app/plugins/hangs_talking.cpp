// Hangs in its idle hook, and keeps writing.
#include "PluginKit.h"

#include <chrono>
#include <cstdio>
#include <thread>

namespace {

A_Err OnIdle(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long *)
{
    for (;;) {
        std::puts("still at it");
        std::fflush(stdout);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
}

} // namespace

A_Err plugin::Enter()
{
    return RegisterIdle(OnIdle);
}
