#include "shell/WinQtAE.h"

#include "shell/Guarded.h"
#include "vnAE/vipLi.h"

#include <QKeyEvent>
#include <QLayout>

namespace {

// Properties of the container.
constexpr char kPanel[] = "WinTools"; // the panel in it
constexpr char kOwnProcedure[] = "WinToolsProcedure"; // what its own procedure was

WinQtAE *livePanels = nullptr;

/// What the host's own shortcut would have run.
struct HandedKey
{
    QKeySequence::StandardKey key;
    AEGP_Command command;
};

constexpr HandedKey kHandedKeys[] = {
    { QKeySequence::Undo, kHostCommandUndo },
    { QKeySequence::Redo, kHostCommandRedo },
    { QKeySequence::Open, kHostCommandOpenProject },
    { QKeySequence::Save, kHostCommandSave },
};

} // namespace

WinQtAE::WinQtAE(SPBasicSuite *basicSuite, AEGP_PluginID pluginId, AEGP_PanelH panel,
    AEGP_PlatformViewRef container, AEGP_PanelFunctions1 *functions)
    : WinQtAECallback(basicSuite, panel, container, functions)
    , oldWndProc(OwnProcedure(container))
    , basicSuite(basicSuite)
    , pluginId(static_cast<std::uint32_t>(pluginId))
    , nextLive(livePanels)
{
    livePanels = this;
    nativeWindow::SetProcedure(container, ContainerProcedure);
    nativeWindow::SetProperty(container, kPanel, this);
}

WinQtAE::~WinQtAE()
{
    WinQtAE **link = &livePanels;
    while (*link && *link != this)
        link = &(*link)->nextLive;
    if (*link)
        *link = nextLive;
}

/// An earlier panel in the same container has left its procedure, which is this one: it would call
/// itself for ever.
nativeWindow::Procedure WinQtAE::OwnProcedure(nativeWindow::Handle window)
{
    const nativeWindow::Procedure found = nativeWindow::GetProcedure(window);
    if (found == ContainerProcedure)
        return reinterpret_cast<nativeWindow::Procedure>(
            nativeWindow::GetProperty(window, kOwnProcedure));
    nativeWindow::SetProperty(window, kOwnProcedure, reinterpret_cast<void *>(found));
    return found;
}

/// The property outlives a panel that is deleted before its container.
WinQtAE *WinQtAE::PanelIn(nativeWindow::Handle window)
{
    const void *panel = nativeWindow::GetProperty(window, kPanel);
    WinQtAE *live = livePanels;
    while (live && live != panel)
        live = live->nextLive;
    return live;
}

/// The paint message never gets to the container's own procedure: the panel covers all that it
/// would draw.
std::intptr_t WinQtAE::ContainerProcedure(
    nativeWindow::Handle window, unsigned message, std::uintptr_t first, std::intptr_t second)
{
    WinQtAE *panel = PanelIn(window);
    if (!panel)
        return nativeWindow::DefaultProcedure(window, message, first, second);
    switch (message) {
    case nativeWindow::kMessagePaint:
        Guarded([&] {
            panel->show();
            panel->OnResize();
        });
        return nativeWindow::DefaultProcedure(window, message, first, second);
    case nativeWindow::kMessageSized: // a window that has become smaller is not painted
    case nativeWindow::kMessageSizing:
        Guarded([&] { panel->OnResize(); });
        break;
    case nativeWindow::kMessageCommand: // the host's own menus and buttons
    default:
        break;
    }
    if (!panel->oldWndProc)
        return nativeWindow::DefaultProcedure(window, message, first, second);
    return nativeWindow::CallProcedure(panel->oldWndProc, window, message, first, second);
}

void WinQtAE::OnResize()
{
    QLayout *own = layout();
    // A window keeps to its layout's smallest size, and would reach over the container.
    if (own && own->sizeConstraint() != QLayout::SetNoConstraint) {
        own->setSizeConstraint(QLayout::SetNoConstraint);
        setMinimumSize(0, 0);
    }
    const nativeWindow::Rectangle area = nativeWindow::ClientRectangle(container);
    nativeWindow::Invalidate(container);
    setGeometry(/*x=*/0, /*y=*/0, area.width, area.height);
}

void WinQtAE::keyPressEvent(QKeyEvent *event)
{
    for (const HandedKey &handed : kHandedKeys) {
        if (!event->matches(handed.key))
            continue;
        Guarded([&] { GetVipLi()->DoCommand(handed.command); }); // a key comes out of the host, too
        return;
    }
    QWidget::keyPressEvent(event);
}
