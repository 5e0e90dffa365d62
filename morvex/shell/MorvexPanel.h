// The panel as the plug-in object sees it: made by the host's wish, driven by its idle calls.
//
// The object that docks a panel stands above the widgets that it shows; this seam keeps it free of
// them, and lets a test stand in for a whole panel.
#pragma once

#include "hostapi/BasicSuite.h"
#include "hostapi/Hooks.h"

class MorvexPanel
{
public:
    virtual ~MorvexPanel() = default;

    /// Reloads the sheet a moment later, when the host has carried out the command it is about to.
    virtual void ScheduleRefresh() = 0;
    /// Looks for what has changed in the host.
    virtual void OnHostIdle() = 0;
    /// What the functions of the panel's own table expect as their first argument.
    virtual AEGP_PanelRefcon Refcon() = 0;
};

/// Makes a panel inside the host's container and fills in its function table.
/// @return null when there is no memory for it. May throw what its construction throws.
using MorvexPanelFactory = MorvexPanel *(*)(SPBasicSuite *basicSuite, AEGP_PluginID pluginId,
    AEGP_PanelH panel, AEGP_PlatformViewRef container, AEGP_PanelFunctions1 *functions);

/// Sets what the next panels are made by. Null restores the factory of the product.
void SetMorvexPanelFactory(MorvexPanelFactory factory);
