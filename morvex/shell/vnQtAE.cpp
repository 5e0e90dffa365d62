#include "shell/vnQtAE.h"

#include "shell/Guarded.h"

namespace {

constexpr char kPanelName[] = "morvex";
constexpr A_long kIdleSleep = 10; // 1/60 s

vnQtAE *liveObjects = nullptr;

void ThrowIfFailed(A_Err err)
{
    if (err != A_Err_NONE)
        throw SuiteErr(err);
}

/// The panel's match name as the panel suite takes it.
const A_u_char *MatchName(const char *name)
{
    return reinterpret_cast<const A_u_char *>(name);
}

/// Gives back at the end of an operation what it acquired.
class OperationSuites
{
public:
    explicit OperationSuites(SuiteHandler &suites) : suites(suites) { }
    ~OperationSuites() { suites.ReleaseAll(); }
    OperationSuites(const OperationSuites &) = delete;
    OperationSuites &operator=(const OperationSuites &) = delete;

private:
    SuiteHandler &suites;
};

/// Runs an operation of the object behind a refcon. A construction that failed leaves its hooks
/// registered, with a pointer to what is no more or with none: such calls do nothing.
template <class Refcon, class Work>
A_Err WithObject(Refcon refcon, Work work) noexcept
{
    auto *object = reinterpret_cast<vnQtAE *>(refcon);
    if (!vnQtAE::IsLive(object))
        return A_Err_NONE;
    return Guarded([&] { work(*object); });
}

// What the host calls. The command hook finds its object in its own refcon, the others in the
// global one.

A_Err OnCommand(AEGP_GlobalRefcon, AEGP_CommandRefcon refcon, AEGP_Command command,
    AEGP_HookPriority priority, A_Boolean alreadyHandled, A_Boolean *handled)
{
    return WithObject(refcon,
        [&](vnQtAE &object) { object.CommandHook(command, priority, alreadyHandled, handled); });
}

A_Err OnIdle(AEGP_GlobalRefcon globalRefcon, AEGP_IdleRefcon, A_long *maxSleep)
{
    return WithObject(globalRefcon, [&](vnQtAE &object) { object.IdleHook(maxSleep); });
}

A_Err OnUpdateMenu(
    AEGP_GlobalRefcon globalRefcon, AEGP_UpdateMenuRefcon, AEGP_WindowType activeWindow)
{
    return WithObject(globalRefcon, [&](vnQtAE &object) { object.UpdateMenuHook(activeWindow); });
}

A_Err OnDeath(AEGP_GlobalRefcon globalRefcon, AEGP_DeathRefcon)
{
    return WithObject(globalRefcon, [](vnQtAE &object) { object.DeathHook(); });
}

A_Err OnCreatePanel(AEGP_GlobalRefcon globalRefcon, AEGP_CreatePanelRefcon,
    AEGP_PlatformViewRef container, AEGP_PanelH panel, AEGP_PanelFunctions1 *functions,
    AEGP_PanelRefcon *outRefcon)
{
    return WithObject(globalRefcon,
        [&](vnQtAE &object) { object.CreatePanelHook(container, panel, functions, outRefcon); });
}

} // namespace

vnQtAE::vnQtAE(SPBasicSuite *basicSuite, AEGP_PluginID pluginId)
    : basicSuite(basicSuite)
    , pluginId(static_cast<std::uint32_t>(pluginId))
    , suites(basicSuite)
    , command(0)
    , workspaceSuite(basicSuite)
    , panelName(kPanelName)
    , nextLive(nullptr)
{
    Register();
    nextLive = liveObjects;
    liveObjects = this;
}

vnQtAE::~vnQtAE()
{
    vnQtAE **link = &liveObjects;
    while (*link && *link != this)
        link = &(*link)->nextLive;
    if (*link)
        *link = nextLive;
}

bool vnQtAE::IsLive(const vnQtAE *object)
{
    const vnQtAE *live = liveObjects;
    while (live && live != object)
        live = live->nextLive;
    return live != nullptr;
}

/// The order of the steps is what the host sees.
void vnQtAE::Register()
{
    const OperationSuites scope(suites);
    const auto id = static_cast<AEGP_PluginID>(pluginId);

    AEGP_Command number = 0;
    ThrowIfFailed(suites.Command1()->AEGP_GetUniqueCommand(&number));
    command = static_cast<std::uint32_t>(number);
    ThrowIfFailed(suites.Command1()->AEGP_InsertMenuCommand(
        number, panelName, AEGP_Menu_WINDOW, AEGP_MENU_INSERT_SORTED));
    ThrowIfFailed(suites.Register6()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE,
        AEGP_Command_ALL, OnCommand, reinterpret_cast<AEGP_CommandRefcon>(this)));
    ThrowIfFailed(suites.Register6()->AEGP_RegisterIdleHook(
        id, OnIdle, reinterpret_cast<AEGP_IdleRefcon>(this)));
    ThrowIfFailed(suites.Register6()->AEGP_RegisterUpdateMenuHook(id, OnUpdateMenu, nullptr));
    ThrowIfFailed(suites.Register6()->AEGP_RegisterDeathHook(
        id, OnDeath, reinterpret_cast<AEGP_DeathRefcon>(this)));
    ThrowIfFailed(workspaceSuite->AEGP_RegisterCreatePanelHook(id, MatchName(panelName),
        OnCreatePanel, reinterpret_cast<AEGP_CreatePanelRefcon>(this), /*paintBackground=*/1));
}

void vnQtAE::CommandHook(AEGP_Command picked, AEGP_HookPriority, A_Boolean, A_Boolean *)
{
    if (static_cast<std::uint32_t>(picked) == command)
        ThrowIfFailed(workspaceSuite->AEGP_ToggleVisibility(MatchName(panelName)));
}

void vnQtAE::IdleHook(A_long *maxSleep)
{
    *maxSleep = kIdleSleep;
}

void vnQtAE::DeathHook() { }

void vnQtAE::CreatePanelHook(
    AEGP_PlatformViewRef, AEGP_PanelH, AEGP_PanelFunctions1 *, AEGP_PanelRefcon *)
{ }

void vnQtAE::UpdateMenuHook(AEGP_WindowType)
{
    const OperationSuites scope(suites);
    const auto number = static_cast<AEGP_Command>(command);
    ThrowIfFailed(suites.Command1()->AEGP_EnableCommand(number));

    A_Boolean tabShown = 0;
    A_Boolean panelFrontmost = 0;
    ThrowIfFailed(workspaceSuite->AEGP_IsShown(MatchName(panelName), &tabShown, &panelFrontmost));
    const bool mark = tabShown && panelFrontmost;
    ThrowIfFailed(suites.Command1()->AEGP_CheckMarkMenuCommand(number, mark ? 1 : 0));
}
