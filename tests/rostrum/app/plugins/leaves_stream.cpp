// Opens a stream at each idle call and never gives it back.
#include "PluginKit.h"

namespace {

A_Err OnIdle(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long *)
{
    AEGP_StreamRefH stream = nullptr;
    if (const AEGP_LayerH layer = plugin::FirstLayer()) {
        return plugin::Suite<AEGP_StreamSuite2>()->AEGP_GetNewLayerStream(
            plugin::id, layer, AEGP_LayerStream_OPACITY, &stream);
    }
    return A_Err_NONE;
}

} // namespace

A_Err plugin::Enter()
{
    return RegisterIdle(OnIdle);
}
