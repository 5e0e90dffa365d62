#include "shell/EntryPoint.h"

#include "shell/Guarded.h"
#include "shell/vnMorvex.h"

#include <new>
#include <type_traits>

static_assert(std::is_same_v<decltype(&EntryPointFunc), AEGP_EntryPoint>);

A_Err EntryPointFunc(SPBasicSuite *basicSuite, A_long, A_long, AEGP_PluginID pluginId,
    AEGP_GlobalRefcon *globalRefcon)
{
    return Guarded([&] {
        vnQtAE *object = new (std::nothrow) vnMorvex(basicSuite, pluginId);
        *globalRefcon = reinterpret_cast<AEGP_GlobalRefcon>(object);
    });
}
