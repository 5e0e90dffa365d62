// A host of three suites, those that the plug-in object reaches. It notes every call with its
// arguments, keeps the hooks that are registered, and fails one call or lacks one suite on demand.
#pragma once

#include "hostapi/BasicSuite.h"
#include "hostapi/Suites.h"

#include <QByteArray>
#include <QHash>
#include <QList>

namespace shellHost {

struct State
{
    QList<QByteArray> calls; // what was called, in order: "AEGP_EnableCommand 4711"
    QHash<QByteArray, int> held; // acquired and not given back, by suite
    int callCount = 0; // calls that can fail
    int failAt = 0; // the call that fails, counted from 1; 0: none
    QByteArray failing; // the function that always fails
    QByteArray withheld; // the suite that is not offered
    AEGP_Command command = 4711; // the next unique command
    A_Boolean tabShown = 0;
    A_Boolean frontmost = 0;

    AEGP_CommandHook commandHook = nullptr;
    AEGP_CommandRefcon commandRefcon = nullptr;
    AEGP_IdleHook idleHook = nullptr;
    AEGP_IdleRefcon idleRefcon = nullptr;
    AEGP_UpdateMenuHook updateMenuHook = nullptr;
    AEGP_UpdateMenuRefcon updateMenuRefcon = nullptr;
    AEGP_DeathHook deathHook = nullptr;
    AEGP_DeathRefcon deathRefcon = nullptr;
    AEGP_CreatePanelHook createPanelHook = nullptr;
    AEGP_CreatePanelRefcon createPanelRefcon = nullptr;
};

inline State state;

/// Counts a call and notes it. @return the host's answer
inline A_Err Call(const char *function, const QByteArray &arguments = QByteArray())
{
    ++state.callCount;
    if (state.callCount == state.failAt || state.failing == function) {
        state.calls << "failed " + QByteArray(function);
        return A_Err_GENERIC;
    }
    state.calls << (arguments.isEmpty() ? QByteArray(function)
                                        : QByteArray(function) + ' ' + arguments);
    return A_Err_NONE;
}

template <class Number>
QByteArray Text(Number number)
{
    return QByteArray::number(number);
}

inline QByteArray Text(const A_u_char *text)
{
    return reinterpret_cast<const char *>(text);
}

inline A_Err GetUniqueCommand(AEGP_Command *command)
{
    const A_Err err = Call("AEGP_GetUniqueCommand");
    if (!err)
        *command = state.command;
    return err;
}

inline A_Err InsertMenuCommand(
    AEGP_Command command, const A_char *text, AEGP_MenuID menu, A_long after)
{
    return Call("AEGP_InsertMenuCommand",
        Text(command) + ' ' + text + ' ' + Text(menu) + ' ' + Text(after));
}

inline A_Err EnableCommand(AEGP_Command command)
{
    return Call("AEGP_EnableCommand", Text(command));
}

inline A_Err DisableCommand(AEGP_Command command)
{
    return Call("AEGP_DisableCommand", Text(command));
}

inline A_Err CheckMarkMenuCommand(AEGP_Command command, A_Boolean check)
{
    return Call("AEGP_CheckMarkMenuCommand", Text(command) + ' ' + Text(check));
}

inline A_Err RegisterCommandHook(AEGP_PluginID id, AEGP_HookPriority priority, AEGP_Command command,
    AEGP_CommandHook hook, AEGP_CommandRefcon refcon)
{
    state.commandHook = hook;
    state.commandRefcon = refcon;
    return Call("AEGP_RegisterCommandHook", Text(id) + ' ' + Text(priority) + ' ' + Text(command));
}

inline A_Err RegisterIdleHook(AEGP_PluginID id, AEGP_IdleHook hook, AEGP_IdleRefcon refcon)
{
    state.idleHook = hook;
    state.idleRefcon = refcon;
    return Call("AEGP_RegisterIdleHook", Text(id));
}

inline A_Err RegisterUpdateMenuHook(
    AEGP_PluginID id, AEGP_UpdateMenuHook hook, AEGP_UpdateMenuRefcon refcon)
{
    state.updateMenuHook = hook;
    state.updateMenuRefcon = refcon;
    return Call("AEGP_RegisterUpdateMenuHook", Text(id));
}

inline A_Err RegisterDeathHook(AEGP_PluginID id, AEGP_DeathHook hook, AEGP_DeathRefcon refcon)
{
    state.deathHook = hook;
    state.deathRefcon = refcon;
    return Call("AEGP_RegisterDeathHook", Text(id));
}

inline A_Err RegisterCreatePanelHook(AEGP_PluginID id, const A_u_char *matchName,
    AEGP_CreatePanelHook hook, AEGP_CreatePanelRefcon refcon, A_Boolean paintBackground)
{
    state.createPanelHook = hook;
    state.createPanelRefcon = refcon;
    return Call("AEGP_RegisterCreatePanelHook",
        Text(id) + ' ' + Text(matchName) + ' ' + Text(paintBackground));
}

inline A_Err ToggleVisibility(const A_u_char *matchName)
{
    return Call("AEGP_ToggleVisibility", Text(matchName));
}

inline A_Err IsShown(const A_u_char *matchName, A_Boolean *tabShown, A_Boolean *frontmost)
{
    const A_Err err
        = Call("AEGP_IsShown", Text(matchName) + ' ' + Text(*tabShown) + ' ' + Text(*frontmost));
    *tabShown = state.tabShown; // also on failure: the answer is not to be used then
    *frontmost = state.frontmost;
    return err;
}

inline const void *FindTable(const QByteArray &suite)
{
    static const AEGP_CommandSuite1 command = [] {
        AEGP_CommandSuite1 table = {};
        table.AEGP_GetUniqueCommand = GetUniqueCommand;
        table.AEGP_InsertMenuCommand = InsertMenuCommand;
        table.AEGP_EnableCommand = EnableCommand;
        table.AEGP_DisableCommand = DisableCommand;
        table.AEGP_CheckMarkMenuCommand = CheckMarkMenuCommand;
        return table;
    }();
    static const AEGP_RegisterSuite5 hooks = [] {
        AEGP_RegisterSuite5 table = {};
        table.AEGP_RegisterCommandHook = RegisterCommandHook;
        table.AEGP_RegisterIdleHook = RegisterIdleHook;
        table.AEGP_RegisterUpdateMenuHook = RegisterUpdateMenuHook;
        table.AEGP_RegisterDeathHook = RegisterDeathHook;
        return table;
    }();
    static const AEGP_WorkspacePanelSuite1 panel = [] {
        AEGP_WorkspacePanelSuite1 table = {};
        table.AEGP_RegisterCreatePanelHook = RegisterCreatePanelHook;
        table.AEGP_ToggleVisibility = ToggleVisibility;
        table.AEGP_IsShown = IsShown;
        return table;
    }();
    static const QHash<QByteArray, const void *> tables = { { "AEGP Command Suite 1", &command },
        { "AEGP Register Suite 6", &hooks }, { "AEGP Workspace Panel Suite 1", &panel } };
    return tables.value(suite);
}

inline SPErr AcquireSuite(const char *name, std::int32_t version, const void **suite)
{
    const QByteArray pair = QByteArray(name) + ' ' + Text(version);
    if (++state.callCount == state.failAt || pair == state.withheld || !FindTable(pair))
        return kSPSuiteNotFound;
    *suite = FindTable(pair);
    ++state.held[pair];
    return kSPNoError;
}

inline SPErr ReleaseSuite(const char *name, std::int32_t version)
{
    const QByteArray pair = QByteArray(name) + ' ' + Text(version);
    if (state.held.value(pair) == 0)
        return kSPAlreadyReleased;
    if (--state.held[pair] == 0)
        state.held.remove(pair);
    return kSPNoError;
}

inline SPBasicSuite basicSuite
    = { AcquireSuite, ReleaseSuite, nullptr, nullptr, nullptr, nullptr, nullptr };

} // namespace shellHost
