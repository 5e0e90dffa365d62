// A series or a still on disk as one footage item of the project.

#include "CellFiles.h"
#include "hostErrors.h"
#include "hostScopes.h"
#include "vipLi.h"

#include "support/vnPath.h"

#include <cstdio>

ImportText ImportMessage = "";

namespace {

/// A movie plays by itself: whatever kind it is asked for as, it is no series of drawings.
bool IsMovie(const QByteArray &path)
{
    const QString extension = vnPath::LowerExtension(QString::fromUtf8(path));
    return extension == QLatin1String("swf") || extension == QLatin1String("mov");
}

/// The first file of a path's series, after its zero image was written. What goes wrong on disk is
/// told in ImportMessage alone; without a series on disk the file's name is empty, and the host
/// answers for it.
/// @return false when a part of the path does not fit its buffer, with its log line
bool FirstFileOfSeries(const QByteArray &path, QByteArray &firstPath)
{
    CellPathParts parts;
    if (!SplitCellPath(path.constData(), parts))
        return false;
    CellName firstFile;
    const ImportCode code = WriteZeroCell(parts.folder, parts.root, parts.extension, firstFile);
    if (code != kImportOk)
        FormatImportMessage(ImportMessage, code, parts.folder, parts.root, firstFile);
    firstPath = QByteArray(parts.folder) + '\\' + QByteArray(firstFile);
    return true;
}

} // namespace

bool vipLi::IsSameFootage(
    SuiteHandler &suites, AEGP_ItemH item, const QByteArray &path, qint32 kind, bool &same)
{
    AEGP_FootageH footage = nullptr;
    QByteArray projectPath;
    A_long mainFiles = 0;
    A_long filesPerFrame = 0;
    if (VN_HOST_FAILED(suites.Footage11()->AEGP_GetMainFootageFromItem(item, &footage))
        || !ReadFootagePath(suites, footage, projectPath)
        || VN_HOST_FAILED(
            suites.Footage11()->AEGP_GetFootageNumFiles(footage, &mainFiles, &filesPerFrame)))
        return false;
    // A path too long for its buffer is nobody's: the walk goes on past it.
    same = projectPath.size() < kPathBytes
        && SameCellSerie(projectPath.constData(), path.constData(), kind, mainFiles);
    return true;
}

bool vipLi::FindFootage(SuiteHandler &suites, AEGP_ProjectH project, const QByteArray &path,
    qint32 kind, AEGP_ItemH &item)
{
    AEGP_ItemH walked = nullptr;
    if (VN_HOST_FAILED(suites.Item11()->AEGP_GetFirstProjItem(project, &walked)))
        return false;
    while (walked) {
        AEGP_ItemType type = AEGP_ItemType_NONE;
        if (VN_HOST_FAILED(suites.Item11()->AEGP_GetItemType(walked, &type)))
            return false;
        if (type == AEGP_ItemType_FOOTAGE) {
            bool same = false;
            if (!IsSameFootage(suites, walked, path, kind, same))
                return false;
            if (same) {
                item = walked; // the first in the walk counts
                return true;
            }
        }
        AEGP_ItemH next = nullptr;
        if (VN_HOST_FAILED(suites.Item11()->AEGP_GetNextProjItem(project, walked, &next)))
            return false;
        walked = next;
    }
    return true;
}

bool vipLi::ImportCells(qint32 kind, const QByteArray &path, AEGP_ItemH &item, bool makeZero)
{
    std::snprintf(ImportMessage, sizeof ImportMessage, "ERROR : Voir Log");
    item = nullptr;
    SuiteHandler suites(BasicSuite);
    AEGP_ProjectH project = nullptr;
    AEGP_ItemH root = nullptr;
    if (VN_HOST_FAILED(suites.Proj8()->AEGP_GetProjectByIndex(0, &project))
        || VN_HOST_FAILED(suites.Proj8()->AEGP_GetProjectRootFolder(project, &root)))
        return false;
    if (!FindFootage(suites, project, path, kind, item))
        return false;
    if (item)
        return true; // imported once already

    const bool isSeries = kind == kSequence && !IsMovie(path);
    QByteArray file = path;
    if (isSeries && makeZero && !FirstFileOfSeries(path, file))
        return false;
    return NewFootageItem(suites, file, isSeries, root, item);
}

bool vipLi::NewFootageItem(SuiteHandler &suites, const QByteArray &file, bool isSeries,
    AEGP_ItemH folder, AEGP_ItemH &item)
{
    AEGP_FileSequenceImportOptions options{};
    options.all_in_folderB = isSeries;
    options.force_alphabeticalB = false;
    options.start_frameL = AEGP_ANY_FRAME;
    options.end_frameL = AEGP_ANY_FRAME;
    const QString text = QString::fromUtf8(file);
    AEGP_FootageH footage = nullptr;
    if (VN_HOST_FAILED(suites.Footage11()->AEGP_NewFootage(PluginId, text.utf16(),
            /*layerKey=*/nullptr, &options, AEGP_InterpretationStyle_NO_DIALOG_GUESS,
            /*reserved=*/nullptr, &footage)))
        return false;
    NewFootage owned(suites, footage);
    if (VN_HOST_FAILED(suites.Footage11()->AEGP_AddFootageToProject(footage, folder, &item)))
        return false;
    owned.Release();
    A_long mainFiles = 0; // asked for, and of no further use
    A_long filesPerFrame = 0;
    return !VN_HOST_FAILED(
        suites.Footage11()->AEGP_GetFootageNumFiles(footage, &mainFiles, &filesPerFrame));
}
