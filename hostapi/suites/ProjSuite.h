// AEGP Proj Suite: The one open project (index 0).
// Every slot is declared, in the order of the table, so that the offsets hold; the names of the
// arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"

/// "AEGP Proj Suite" version 8.
struct AEGP_ProjSuite5
{
    static constexpr char kName[] = "AEGP Proj Suite";
    static constexpr std::int32_t kVersion = 8;

    A_Err (*AEGP_GetNumProjects)(A_long *);
    A_Err (*AEGP_GetProjectByIndex)(A_long index, AEGP_ProjectH *project);
    A_Err (*AEGP_GetProjectName)(AEGP_ProjectH, A_char *);
    A_Err (*AEGP_GetProjectPath)(AEGP_ProjectH project, AEGP_MemHandle *utf16Path);
    A_Err (*AEGP_GetProjectRootFolder)(AEGP_ProjectH project, AEGP_ItemH *rootFolder);
    A_Err (*AEGP_SaveProjectToPath)(AEGP_ProjectH, const A_UTF16Char *);
    A_Err (*AEGP_GetProjectTimeDisplay)(AEGP_ProjectH, AEGP_TimeDisplay2 *);
    A_Err (*AEGP_SetProjectTimeDisplay)(AEGP_ProjectH, const AEGP_TimeDisplay2 *);
    A_Err (*AEGP_ProjectIsDirty)(AEGP_ProjectH, A_Boolean *);
    A_Err (*AEGP_SaveProjectAs)(AEGP_ProjectH, const A_UTF16Char *);
    A_Err (*AEGP_NewProject)(AEGP_ProjectH *);
    A_Err (*AEGP_OpenProjectFromPath)(const A_UTF16Char *, AEGP_ProjectH *);
    A_Err (*AEGP_GetProjectBitDepth)(AEGP_ProjectH, AEGP_ProjBitDepth *);
    A_Err (*AEGP_SetProjectBitDepth)(AEGP_ProjectH, AEGP_ProjBitDepth);
};
