#include "shell/WinQtAECallback.h"

#include "shell/Guarded.h"

namespace {

/// Runs an operation of the panel behind a refcon. A panel whose construction failed half-way has
/// filled in the table and left no refcon.
template <class Work>
A_Err WithPanel(AEGP_PanelRefcon refcon, Work work) noexcept
{
    auto *panel = reinterpret_cast<WinQtAECallback *>(refcon);
    if (!panel)
        return A_Err_NONE;
    return Guarded([&] { work(*panel); });
}

A_Err OnGetSnapSizes(AEGP_PanelRefcon refcon, A_LPoint *sizes, A_long *count)
{
    return WithPanel(refcon, [&](WinQtAECallback &panel) { panel.GetSnapSizes(sizes, count); });
}

A_Err OnPopulateFlyout(AEGP_PanelRefcon refcon, AEGP_FlyoutMenuItem *items, A_long *count)
{
    return WithPanel(refcon, [&](WinQtAECallback &panel) { panel.PopulateFlyout(items, count); });
}

A_Err OnDoFlyoutCommand(AEGP_PanelRefcon refcon, AEGP_FlyoutMenuCmdID command)
{
    return WithPanel(refcon, [&](WinQtAECallback &panel) { panel.DoFlyoutCommand(command); });
}

} // namespace

WinQtAECallback::WinQtAECallback(SPBasicSuite *basicSuite, AEGP_PanelH panel,
    AEGP_PlatformViewRef container, AEGP_PanelFunctions1 *functions)
    : QWinWidget(container)
    , container(container)
    , panelH(panel)
    , red(255)
    , green(255)
    , blue(255)
    , useBackground(false)
    , appSuite(basicSuite)
    , workspaceSuite(basicSuite)
{
    functions->GetSnapSizes = OnGetSnapSizes;
    functions->PopulateFlyout = OnPopulateFlyout;
    functions->DoFlyoutCommand = OnDoFlyoutCommand;
}

WinQtAECallback::~WinQtAECallback() = default;

void WinQtAECallback::GetSnapSizes(A_LPoint *sizes, A_long *count)
{
    sizes[0] = { 100, 100 };
    sizes[1] = { 200, 400 };
    *count = 2;
}

void WinQtAECallback::PopulateFlyout(AEGP_FlyoutMenuItem *, A_long *) { }

void WinQtAECallback::DoFlyoutCommand(AEGP_FlyoutMenuCmdID) { }

AEGP_PanelRefcon WinQtAECallback::PanelRefcon()
{
    return reinterpret_cast<AEGP_PanelRefcon>(this);
}
