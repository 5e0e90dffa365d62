#include "suites/SuiteTools.h"
#include "suites/Tables.h"

#include "core/FootageFiles.h"

#include <QDir>

namespace rostrum {
namespace {

using Table = AEGP_FootageSuite5;

/// What a footage handle leads to. A solid has no footage, but is an item of that type.
struct FootageRef
{
    const Item *item = nullptr;
    const Footage *footage = nullptr;
    FootagePlace *place = nullptr; // of footage that was imported by a plug-in

    explicit operator bool() const { return item || footage; }
    int FileCount() const { return footage ? footage->files.size() : 0; }
};

FootageRef FindFootage(Host &host, AEGP_FootageH handle)
{
    const HandleParts parts = TakeApart(handle);
    FootageRef ref;
    if (parts.kind == HandleKind::Footage) {
        ref.place = host.footage.Find(parts.payload);
        ref.footage = ref.place ? &ref.place->footage : nullptr;
        return ref;
    }
    if (parts.kind != HandleKind::ItemFootage)
        return {};
    ref.item = host.FindItem(MakeHandle<AEGP_ItemH>(HandleKind::Item, parts.payload));
    ref.footage = ref.item ? ref.item->AsFootage() : nullptr;
    return ref;
}

A_Err GetMainFootageFromItem(AEGP_ItemH itemH, AEGP_FootageH *footage)
{
    return HostCall<Table>(
        "AEGP_GetMainFootageFromItem",
        [&](Host &host) -> A_Err {
            const Item *item = host.FindItem(itemH);
            if (!item)
                return host.BadHandle(itemH);
            if (!footage)
                return NullArgument(host);
            if (!item->AsFootage() && !item->AsSolid())
                return A_Err_PARAMETER;
            *footage = host.ItemFootageHandle(item->id);
            return A_Err_NONE;
        },
        itemH, footage);
}

/// A solid has no file. There is one file for each frame.
A_Err GetFootageNumFiles(AEGP_FootageH footageH, A_long *mainFiles, A_long *filesPerFrame)
{
    return HostCall<Table>(
        "AEGP_GetFootageNumFiles",
        [&](Host &host) -> A_Err {
            const FootageRef ref = FindFootage(host, footageH);
            if (!ref)
                return host.BadHandle(footageH);
            if (!mainFiles || !filesPerFrame)
                return NullArgument(host);
            *mainFiles = ref.FileCount();
            *filesPerFrame = 1;
            return A_Err_NONE;
        },
        footageH, mainFiles, filesPerFrame);
}

/// A new text, empty for a solid. There are no auxiliary files here.
A_Err GetFootagePath(
    AEGP_FootageH footageH, A_long frame, A_long fileIndex, AEGP_MemHandle *utf16Path)
{
    return HostCall<Table>(
        "AEGP_GetFootagePath",
        [&](Host &host) -> A_Err {
            const FootageRef ref = FindFootage(host, footageH);
            if (!ref)
                return host.BadHandle(footageH);
            if (!utf16Path)
                return NullArgument(host);
            if (frame < 0 || frame >= qMax(ref.FileCount(), 1)
                || fileIndex != AEGP_FOOTAGE_MAIN_FILE_INDEX)
                return A_Err_PARAMETER;
            const QString path = ref.FileCount() > 0 ? ref.footage->PathOf(frame) : QString();
            return host.NewText("footage path", QDir::toNativeSeparators(path), utf16Path);
        },
        footageH, frame, fileIndex, utf16Path);
}

/// Only whole series in the order of their numbers are offered.
bool AreOptionsOffered(const AEGP_FileSequenceImportOptions &options)
{
    return !options.all_in_folderB
        || (!options.force_alphabeticalB && options.start_frameL == AEGP_ANY_FRAME
            && options.end_frameL == AEGP_ANY_FRAME);
}

/// A path without a folder is what a plug-in makes of the folder of a project that has no file.
bool LacksProjectFolder(const Document &document, const QString &path)
{
    return document.path.isEmpty() && WithSlashes(path).lastIndexOf(QLatin1Char('/')) <= 0;
}

/// Says why an import failed, to the user: the plug-in is told an error number only.
void TellFailure(Host &host, const QString &path, const QString &error)
{
    if (LacksProjectFolder(host.GetDocument(), path))
        host.Tell(
            QStringLiteral("Save the project first: \"%1\" is looked for beside it").arg(path));
    else
        host.Tell(error);
}

/// The caller's until it is added to the project.
A_Err NewFootage(AEGP_PluginID pluginId, const A_UTF16Char *utf16Path,
    const AEGP_FootageLayerKey *layerKey, const AEGP_FileSequenceImportOptions *options,
    AEGP_InterpretationStyle style, void *reserved, AEGP_FootageH *footage)
{
    return HostCall<Table>(
        "AEGP_NewFootage",
        [&](Host &host) -> A_Err {
            if (!utf16Path || !footage)
                return NullArgument(host);
            if (layerKey || style > AEGP_InterpretationStyle_NO_DIALOG_NO_GUESS
                || (options && !AreOptionsOffered(*options)))
                return A_Err_PARAMETER;
            const QString path = QString::fromUtf16(utf16Path);
            const ImportResult result
                = ImportDrawings(path, options && options->all_in_folderB != 0);
            if (!result.Ok()) {
                TellFailure(host, path, result.error);
                return A_Err_GENERIC;
            }
            std::uint64_t payload = 0;
            if (!host.footage.Open({ result.footage, result.name, 0 }, &payload))
                return A_Err_ALLOC;
            *footage = MakeHandle<AEGP_FootageH>(HandleKind::Footage, payload);
            return A_Err_NONE;
        },
        pluginId, utf16Path, layerKey, options, style, reserved, footage);
}

/// Once only. The handle stays good: it then names the footage in the project.
A_Err AddFootageToProject(AEGP_FootageH footageH, AEGP_ItemH folder, AEGP_ItemH *item)
{
    return HostCall<Table>(
        "AEGP_AddFootageToProject",
        [&](Host &host) -> A_Err {
            const FootageRef ref = FindFootage(host, footageH);
            if (!ref)
                return host.BadHandle(footageH);
            const Item *target = host.FindItem(folder);
            if (!target)
                return host.BadHandle(folder);
            if (!item)
                return NullArgument(host);
            if (!ref.place || ref.place->item)
                return host.Misuse("the footage is in the project already");
            if (!target->AsFolder())
                return A_Err_PARAMETER;
            const ItemId parent = target->id;
            ref.place->item = host.Edit("Import Footage")
                                  .AddFootage(ref.place->name, ref.place->footage, parent);
            *item = host.ItemHandle(ref.place->item);
            return A_Err_NONE;
        },
        footageH, folder, item);
}

/// Of footage that was not added: what was, belongs to the project.
A_Err DisposeFootage(AEGP_FootageH footageH)
{
    return HostCall<Table>(
        "AEGP_DisposeFootage",
        [&](Host &host) -> A_Err {
            const FootageRef ref = FindFootage(host, footageH);
            if (!ref)
                return host.BadHandle(footageH);
            if (!ref.place || ref.place->item)
                return host.Misuse("the footage belongs to the project");
            host.footage.Close(TakeApart(footageH).payload);
            return A_Err_NONE;
        },
        footageH);
}

} // namespace

void FillTable(AEGP_FootageSuite5 &table)
{
    table.AEGP_GetMainFootageFromItem = GetMainFootageFromItem;
    table.AEGP_GetFootageNumFiles = GetFootageNumFiles;
    table.AEGP_GetFootagePath = GetFootagePath;
    table.AEGP_NewFootage = NewFootage;
    table.AEGP_AddFootageToProject = AddFootageToProject;
    table.AEGP_DisposeFootage = DisposeFootage;
}

} // namespace rostrum
