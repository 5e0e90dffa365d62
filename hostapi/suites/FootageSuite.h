// AEGP Footage Suite: Files on disk as footage: import, paths, number of files.
// Every slot is declared, in the order of the table, so that the offsets hold; the names of the
// arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"

/// "AEGP Footage Suite" version 11.
struct AEGP_FootageSuite5
{
    static constexpr char kName[] = "AEGP Footage Suite";
    static constexpr std::int32_t kVersion = 11;

    A_Err (*AEGP_GetMainFootageFromItem)(AEGP_ItemH item, AEGP_FootageH *footage);
    A_Err (*AEGP_GetProxyFootageFromItem)(AEGP_ItemH, AEGP_FootageH *);
    A_Err (*AEGP_GetFootageNumFiles)(
        AEGP_FootageH footage, A_long *mainFiles, A_long *filesPerFrame);
    A_Err (*AEGP_GetFootagePath)(
        AEGP_FootageH footage, A_long frame, A_long fileIndex, AEGP_MemHandle *utf16Path);
    A_Err (*AEGP_GetFootageSignature)(AEGP_FootageH, AEGP_FootageSignature *);
    A_Err (*AEGP_NewFootage)(AEGP_PluginID pluginId, const A_UTF16Char *utf16Path,
        const AEGP_FootageLayerKey *layerKey, const AEGP_FileSequenceImportOptions *options,
        AEGP_InterpretationStyle style, void *reserved, AEGP_FootageH *footage);
    A_Err (*AEGP_AddFootageToProject)(AEGP_FootageH footage, AEGP_ItemH folder, AEGP_ItemH *item);
    A_Err (*AEGP_SetItemProxyFootage)(AEGP_FootageH, AEGP_ItemH);
    A_Err (*AEGP_ReplaceItemMainFootage)(AEGP_FootageH, AEGP_ItemH);
    A_Err (*AEGP_DisposeFootage)(AEGP_FootageH footage);
    A_Err (*AEGP_GetFootageInterpretation)(AEGP_ItemH, A_Boolean, AEGP_FootageInterp *);
    A_Err (*AEGP_SetFootageInterpretation)(AEGP_ItemH, A_Boolean, const AEGP_FootageInterp *);
    A_Err (*AEGP_GetFootageLayerKey)(AEGP_FootageH, AEGP_FootageLayerKey *);
    A_Err (*AEGP_NewPlaceholderFootage)(
        AEGP_PluginID, const A_char *, A_long, A_long, const A_Time *, AEGP_FootageH *);
    A_Err (*AEGP_NewPlaceholderFootageWithPath)(AEGP_PluginID, const A_UTF16Char *, AEGP_Platform,
        AEIO_FileType, A_long, A_long, const A_Time *, AEGP_FootageH *);
    A_Err (*AEGP_NewSolidFootage)(
        const A_char *, A_long, A_long, const AEGP_ColorVal *, AEGP_FootageH *);
    A_Err (*AEGP_GetSolidFootageColor)(AEGP_ItemH, A_Boolean, AEGP_ColorVal *);
    A_Err (*AEGP_SetSolidFootageColor)(AEGP_ItemH, A_Boolean, const AEGP_ColorVal *);
    A_Err (*AEGP_SetSolidFootageDimensions)(AEGP_ItemH, A_Boolean, A_long, A_long);
    A_Err (*AEGP_GetFootageSoundDataFormat)(AEGP_FootageH, AEGP_SoundDataFormat *);
    A_Err (*AEGP_GetFootageSequenceImportOptions)(AEGP_FootageH, AEGP_FileSequenceImportOptions *);
};
