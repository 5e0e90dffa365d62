// AEGP Command Suite: Menu commands: a number of our own, its place in a menu, its check mark, and
// running any command. Every slot is declared, in the order of the table, so that the offsets hold;
// the names of the arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"

/// "AEGP Command Suite" version 1.
struct AEGP_CommandSuite1
{
    static constexpr char kName[] = "AEGP Command Suite";
    static constexpr std::int32_t kVersion = 1;

    A_Err (*AEGP_GetUniqueCommand)(AEGP_Command *command);
    A_Err (*AEGP_InsertMenuCommand)(
        AEGP_Command command, const A_char *text, AEGP_MenuID menu, A_long after);
    A_Err (*AEGP_RemoveMenuCommand)(AEGP_Command);
    A_Err (*AEGP_SetMenuCommandName)(AEGP_Command, const A_char *);
    A_Err (*AEGP_EnableCommand)(AEGP_Command command);
    A_Err (*AEGP_DisableCommand)(AEGP_Command);
    A_Err (*AEGP_CheckMarkMenuCommand)(AEGP_Command command, A_Boolean checked);
    A_Err (*AEGP_DoCommand)(AEGP_Command command);
};
