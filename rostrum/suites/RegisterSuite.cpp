#include "suites/SuiteTools.h"
#include "suites/Tables.h"

namespace rostrum {
namespace {

using Table = AEGP_RegisterSuite5;

/// Hooks are registered from inside the entry point only, under the id that was given there.
/// @param add registers it, once all is well
template <typename Hook, typename Add>
A_Err RegisterHook(Host &host, AEGP_PluginID pluginId, Hook hook, Add add)
{
    if (!hook)
        return NullArgument(host);
    if (!host.Driver().IsEntering())
        return host.Misuse("hooks are registered inside the entry point only", A_Err_GENERIC);
    if (!host.Driver().IsPlugin(pluginId))
        return host.Misuse("no plug-in has the id " + QByteArray::number(pluginId));
    return add();
}

/// The priority counts for nothing: hooks are called before the host acts.
A_Err RegisterCommandHook(AEGP_PluginID pluginId, AEGP_HookPriority priority, AEGP_Command command,
    AEGP_CommandHook hook, AEGP_CommandRefcon refcon)
{
    return HostCall<Table>(
        "AEGP_RegisterCommandHook",
        [&](Host &host) {
            return RegisterHook(host, pluginId, hook,
                [&] { return host.Driver().AddCommandHook(pluginId, command, hook, refcon); });
        },
        pluginId, priority, command, hook, refcon);
}

A_Err RegisterUpdateMenuHook(
    AEGP_PluginID pluginId, AEGP_UpdateMenuHook hook, AEGP_UpdateMenuRefcon refcon)
{
    return HostCall<Table>(
        "AEGP_RegisterUpdateMenuHook",
        [&](Host &host) {
            return RegisterHook(host, pluginId, hook,
                [&] { return host.Driver().AddUpdateMenuHook(pluginId, hook, refcon); });
        },
        pluginId, hook, refcon);
}

A_Err RegisterDeathHook(AEGP_PluginID pluginId, AEGP_DeathHook hook, AEGP_DeathRefcon refcon)
{
    return HostCall<Table>(
        "AEGP_RegisterDeathHook",
        [&](Host &host) {
            return RegisterHook(host, pluginId, hook,
                [&] { return host.Driver().AddDeathHook(pluginId, hook, refcon); });
        },
        pluginId, hook, refcon);
}

A_Err RegisterIdleHook(AEGP_PluginID pluginId, AEGP_IdleHook hook, AEGP_IdleRefcon refcon)
{
    return HostCall<Table>(
        "AEGP_RegisterIdleHook",
        [&](Host &host) {
            return RegisterHook(host, pluginId, hook,
                [&] { return host.Driver().AddIdleHook(pluginId, hook, refcon); });
        },
        pluginId, hook, refcon);
}

} // namespace

void FillTable(AEGP_RegisterSuite5 &table)
{
    table.AEGP_RegisterCommandHook = RegisterCommandHook;
    table.AEGP_RegisterUpdateMenuHook = RegisterUpdateMenuHook;
    table.AEGP_RegisterDeathHook = RegisterDeathHook;
    table.AEGP_RegisterIdleHook = RegisterIdleHook;
}

} // namespace rostrum
