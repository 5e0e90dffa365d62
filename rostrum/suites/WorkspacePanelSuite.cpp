#include "suites/SuiteTools.h"
#include "suites/Tables.h"

namespace rostrum {
namespace {

using Table = AEGP_WorkspacePanelSuite1;

QByteArray Name(const A_u_char *matchName)
{
    return reinterpret_cast<const char *>(matchName);
}

A_Err RegisterCreatePanelHook(AEGP_PluginID pluginId, const A_u_char *matchName,
    AEGP_CreatePanelHook hook, AEGP_CreatePanelRefcon refcon, A_Boolean paintBackground)
{
    return HostCall<Table>(
        "AEGP_RegisterCreatePanelHook",
        [&](Host &host) -> A_Err {
            if (!matchName || !hook)
                return NullArgument(host);
            if (!host.Driver().IsPlugin(pluginId))
                return host.Misuse("no plug-in has the id " + QByteArray::number(pluginId));
            return host.Driver().AddPanelHook(
                pluginId, Name(matchName), hook, refcon, paintBackground != 0);
        },
        pluginId, matchName, hook, refcon, paintBackground);
}

/// More than open and close: a panel behind another tab is brought to front.
A_Err ToggleVisibility(const A_u_char *matchName)
{
    return HostCall<Table>(
        "AEGP_ToggleVisibility",
        [&](Host &host) -> A_Err {
            if (!matchName)
                return NullArgument(host);
            return host.Driver().TogglePanel(Name(matchName));
        },
        matchName);
}

A_Err IsShown(const A_u_char *matchName, A_Boolean *tabShown, A_Boolean *panelFrontmost)
{
    return HostCall<Table>(
        "AEGP_IsShown",
        [&](Host &host) -> A_Err {
            if (!matchName || !tabShown || !panelFrontmost)
                return NullArgument(host);
            bool shown = false;
            bool frontmost = false;
            const A_Err error = host.Driver().PanelState(Name(matchName), &shown, &frontmost);
            if (error)
                return error;
            *tabShown = shown;
            *panelFrontmost = frontmost;
            return A_Err_NONE;
        },
        matchName, tabShown, panelFrontmost);
}

} // namespace

void FillTable(AEGP_WorkspacePanelSuite1 &table)
{
    table.AEGP_RegisterCreatePanelHook = RegisterCreatePanelHook;
    table.AEGP_ToggleVisibility = ToggleVisibility;
    table.AEGP_IsShown = IsShown;
}

} // namespace rostrum
