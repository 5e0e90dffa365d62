// A series or a still on disk as one footage item of the project.

#include "CellFiles.h"
#include "hostErrors.h"
#include "hostScopes.h"
#include "vipLi.h"

#include "support/vnPath.h"

#include <cstdio>
#include <cstring>

ImportText ImportMessage = "";

namespace {

constexpr qint32 kMovie = 3; // the kind of a path that no zero image is made for

bool IsMovie(const QByteArray &path)
{
    const QString extension = vnPath::LowerExtension(QString::fromUtf8(path));
    return extension == QLatin1String("swf") || extension == QLatin1String("mov");
}

/// Where the import starts: the first drawing of the path's series, with its zero image beside it.
/// Whatever goes wrong on disk is told in ImportMessage, and the import goes on.
bool FirstFileOfSeries(const QByteArray &path, QByteArray &firstPath)
{
    CellPathParts parts;
    CellName root, firstFile;
    if (!SplitCellPath(path.constData(), parts) || !GetCellRoot(path.constData(), root))
        return false;
    const ImportCode code = WriteZeroCell(parts.folder, root, parts.extension, firstFile);
    if (code != kImportOk)
        FormatImportMessage(ImportMessage, code, parts.folder, root, firstFile);
    firstPath = QByteArray(parts.folder) + '\\' + QByteArray(firstFile);
    return true;
}

} // namespace

bool vipLi::FindFootage(const QByteArray &path, qint32 kind, AEGP_ItemH &item)
{
    SuiteHandler suites(BasicSuite);
    AEGP_ItemH walked = nullptr;
    if (VN_HOST_FAILED(suites.Item11()->AEGP_GetFirstProjItem(Project, &walked)))
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
        if (VN_HOST_FAILED(suites.Item11()->AEGP_GetNextProjItem(Project, walked, &next)))
            return false;
        walked = next;
    }
    return true;
}

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

bool vipLi::ImportCells(qint32 kind, const QByteArray &path, AEGP_ItemH &item, bool makeZero)
{
    std::snprintf(ImportMessage, sizeof ImportMessage, "ERROR : Voir Log");
    item = nullptr;
    SuiteHandler suites(BasicSuite);
    AEGP_ItemH root = nullptr;
    if (VN_HOST_FAILED(suites.Proj8()->AEGP_GetProjectByIndex(0, &Project))
        || VN_HOST_FAILED(suites.Proj8()->AEGP_GetProjectRootFolder(Project, &root)))
        return false;
    if (!FindFootage(path, kind, item))
        return false;
    if (item)
        return true; // imported once already

    if (IsMovie(path))
        kind = kMovie;
    const bool isSeries = kind == kSequence;
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
    options.force_alphabeticalB = 0;
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
    A_long mainFiles = 0;
    A_long filesPerFrame = 0;
    return !VN_HOST_FAILED(
        suites.Footage11()->AEGP_GetFootageNumFiles(footage, &mainFiles, &filesPerFrame));
}
