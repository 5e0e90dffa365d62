// WinQtAE: a panel that fills the host's container, and hands the host the keys of its most used
// commands.
//
// It puts a window procedure of its own before the container's. The first paint of the container
// shows the panel, not its construction, and every paint and every change of size makes it fill the
// container. Neither the procedure nor the container's property "WinTools", which leads from the
// window to the panel, is taken back: the container goes away with the host's panel.
#pragma once

#include "shell/WinQtAECallback.h"

class WinQtAE : public WinQtAECallback
{
    Q_OBJECT

public:
    /// Throws as its base does.
    WinQtAE(SPBasicSuite *basicSuite, AEGP_PluginID pluginId, AEGP_PanelH panel,
        AEGP_PlatformViewRef container, AEGP_PanelFunctions1 *functions);
    ~WinQtAE() override;

    void OnResize() override;

protected:
    /// Undo, Redo, Open and Save go to the host: its own shortcuts are out of reach while the panel
    /// has the keyboard.
    void keyPressEvent(QKeyEvent *event) override;

    nativeWindow::Procedure oldWndProc; // the container's own; null: the default procedure
    SPBasicSuite *basicSuite;
    std::uint32_t pluginId;

private:
    static std::intptr_t ContainerProcedure(
        nativeWindow::Handle window, unsigned message, std::uintptr_t first, std::intptr_t second);
    static nativeWindow::Procedure OwnProcedure(nativeWindow::Handle window);
    /// @return null for a window without a panel, or whose panel is gone
    static WinQtAE *PanelIn(nativeWindow::Handle window);

    WinQtAE *nextLive; // the panels that stand, in a list
};
