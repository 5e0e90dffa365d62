#include "suites/SuiteTools.h"
#include "suites/Tables.h"

namespace rostrum {
namespace {

using Table = AEGP_CommandSuite1;

A_Err GetUniqueCommand(AEGP_Command *command)
{
    return HostCall<Table>(
        "AEGP_GetUniqueCommand",
        [&](Host &host) -> A_Err {
            if (!command)
                return NullArgument(host);
            *command = host.Driver().NewCommand();
            return A_Err_NONE;
        },
        command);
}

/// The Window menu is sorted: there, a place at its top or bottom is an error.
bool IsPlaceInMenu(AEGP_MenuID menu, A_long after)
{
    if (menu == AEGP_Menu_WINDOW)
        return after == AEGP_MENU_INSERT_SORTED;
    return menu > AEGP_Menu_NONE && menu <= AEGP_Menu_PURGE && after >= AEGP_MENU_INSERT_SORTED;
}

A_Err InsertMenuCommand(AEGP_Command command, const A_char *text, AEGP_MenuID menu, A_long after)
{
    return HostCall<Table>(
        "AEGP_InsertMenuCommand",
        [&](Host &host) -> A_Err {
            if (!text)
                return NullArgument(host);
            if (!IsPlaceInMenu(menu, after))
                return A_Err_PARAMETER;
            MenuItem item;
            item.command = command;
            item.text = text;
            item.menu = menu;
            return host.Driver().AddMenuItem(item);
        },
        command, text, menu, after);
}

A_Err EnableCommand(AEGP_Command command)
{
    return HostCall<Table>(
        "AEGP_EnableCommand",
        [&](Host &host) -> A_Err {
            MenuItem *item = host.Driver().FindMenuItem(command);
            if (!item)
                return A_Err_PARAMETER;
            item->enabled = true;
            return A_Err_NONE;
        },
        command);
}

A_Err CheckMarkMenuCommand(AEGP_Command command, A_Boolean checked)
{
    return HostCall<Table>(
        "AEGP_CheckMarkMenuCommand",
        [&](Host &host) -> A_Err {
            MenuItem *item = host.Driver().FindMenuItem(command);
            if (!item)
                return A_Err_PARAMETER;
            item->checked = checked != 0;
            return A_Err_NONE;
        },
        command, checked);
}

A_Err DoCommand(AEGP_Command command)
{
    return HostCall<Table>(
        "AEGP_DoCommand", [&](Host &host) { return host.Driver().RunCommand(command); }, command);
}

} // namespace

void FillTable(AEGP_CommandSuite1 &table)
{
    table.AEGP_GetUniqueCommand = GetUniqueCommand;
    table.AEGP_InsertMenuCommand = InsertMenuCommand;
    table.AEGP_EnableCommand = EnableCommand;
    table.AEGP_CheckMarkMenuCommand = CheckMarkMenuCommand;
    table.AEGP_DoCommand = DoCommand;
}

} // namespace rostrum
