// AEGP Memory Suite: Memory that host and plug-in hand to each other; locked before it is read.
// Every slot is declared, in the order of the table, so that the offsets hold; the names of the
// arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"

/// "AEGP Memory Suite" version 1.
struct AEGP_MemorySuite1
{
    static constexpr char kName[] = "AEGP Memory Suite";
    static constexpr std::int32_t kVersion = 1;

    A_Err (*AEGP_NewMemHandle)(AEGP_PluginID pluginId, const A_char *what, AEGP_MemSize size,
        AEGP_MemFlag flags, AEGP_MemHandle *memory);
    A_Err (*AEGP_FreeMemHandle)(AEGP_MemHandle memory);
    A_Err (*AEGP_LockMemHandle)(AEGP_MemHandle memory, void **address);
    A_Err (*AEGP_UnlockMemHandle)(AEGP_MemHandle memory);
    A_Err (*AEGP_GetMemHandleSize)(AEGP_MemHandle, AEGP_MemSize *);
    A_Err (*AEGP_ResizeMemHandle)(const A_char *, AEGP_MemSize, AEGP_MemHandle);
    A_Err (*AEGP_SetMemReportingOn)(A_Boolean);
    A_Err (*AEGP_GetMemStats)(AEGP_PluginID, A_long *, A_long *);
};
