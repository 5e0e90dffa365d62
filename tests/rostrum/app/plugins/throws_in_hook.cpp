// Throws out of its idle hook.
#include "PluginKit.h"

#include <stdexcept>

namespace {

A_Err OnIdle(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long *)
{
    throw std::runtime_error("nobody catches this in the plug-in");
}

} // namespace

A_Err plugin::Enter()
{
    return RegisterIdle(OnIdle);
}
