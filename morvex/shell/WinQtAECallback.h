// WinQtAECallback: a widget in the host's window that answers the host's panel function table.
//
// The table's three functions get the panel's refcon, PanelRefcon(). Each calls the operation of
// the same name; whatever that throws ends at this border, and the host is told success.
#pragma once

#include "shell/QWinWidget.h"
#include "shell/SuiteHelper.h"

#include "hostapi/Hooks.h"

class WinQtAECallback : public QWinWidget
{
    Q_OBJECT

public:
    /// Fills in the table. Throws A_Err_MISSING_SUITE (13) when a suite cannot be had; the table
    /// is then as it was.
    /// @param basicSuite not owned; it outlives the widget
    /// @param container the host's native window
    WinQtAECallback(SPBasicSuite *basicSuite, AEGP_PanelH panel, AEGP_PlatformViewRef container,
        AEGP_PanelFunctions1 *functions);
    ~WinQtAECallback() override;

    // What the host asks of a panel, in slot order.

    /// @param sizes out @param count in: room; out: sizes written
    virtual void GetSnapSizes(A_LPoint *sizes, A_long *count);
    /// @param items out @param count in: room; out: items written. Here neither is touched.
    virtual void PopulateFlyout(AEGP_FlyoutMenuItem *items, A_long *count);
    virtual void DoFlyoutCommand(AEGP_FlyoutMenuCmdID command);
    /// The container has another size.
    virtual void OnResize() = 0;

    /// The pointer that the functions of the table expect as their first argument.
    AEGP_PanelRefcon PanelRefcon();

protected:
    nativeWindow::Handle container; // the same as parentWindow()
    AEGP_PanelH panelH;
    // A background colour of the panel; nothing reads it.
    std::uint8_t red;
    std::uint8_t green;
    std::uint8_t blue;
    bool useBackground;
    SuiteHelper<PF_AppSuite4> appSuite; // both are held for the widget's life
    SuiteHelper<AEGP_WorkspacePanelSuite1> workspaceSuite;
};
