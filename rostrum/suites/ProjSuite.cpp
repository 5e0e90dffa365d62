#include "suites/SuiteTools.h"
#include "suites/Tables.h"

#include <QDir>

namespace rostrum {
namespace {

using Table = AEGP_ProjSuite5;

/// One project is open at most; its index is 0.
A_Err GetProjectByIndex(A_long index, AEGP_ProjectH *project)
{
    return HostCall<Table>(
        "AEGP_GetProjectByIndex",
        [&](Host &host) -> A_Err {
            if (!project)
                return NullArgument(host);
            if (index != 0)
                return A_Err_PARAMETER;
            *project = host.ProjectHandle();
            return A_Err_NONE;
        },
        index, project);
}

/// A new text, empty for a project that was never saved. A plug-in that hands in the place of an
/// open handle loses that handle; one of ours does so by rule, so it is accounted for apart.
A_Err GetProjectPath(AEGP_ProjectH project, AEGP_MemHandle *utf16Path)
{
    return HostCall<Table>(
        "AEGP_GetProjectPath",
        [&](Host &host) -> A_Err {
            if (!host.IsProject(project))
                return kErrBadHandle;
            if (!utf16Path)
                return NullArgument(host);
            MemoryBlock *overwritten = host.FindMemory(*utf16Path);
            const QString path = QDir::toNativeSeparators(host.GetDocument().path);
            const A_Err error = host.NewText("project path", path, utf16Path);
            if (!error && overwritten)
                overwritten->lost = true;
            return error;
        },
        project, utf16Path);
}

A_Err GetProjectRootFolder(AEGP_ProjectH project, AEGP_ItemH *rootFolder)
{
    return HostCall<Table>(
        "AEGP_GetProjectRootFolder",
        [&](Host &host) -> A_Err {
            if (!host.IsProject(project))
                return kErrBadHandle;
            if (!rootFolder)
                return NullArgument(host);
            *rootFolder = host.ItemHandle(host.GetProject().RootFolder());
            return A_Err_NONE;
        },
        project, rootFolder);
}

} // namespace

void FillTable(AEGP_ProjSuite5 &table)
{
    table.AEGP_GetProjectByIndex = GetProjectByIndex;
    table.AEGP_GetProjectPath = GetProjectPath;
    table.AEGP_GetProjectRootFolder = GetProjectRootFolder;
}

} // namespace rostrum
