// AEGP Utility Suite: Undo groups; the rest of the table is not called.
// Every slot is declared, in the order of the table, so that the offsets hold; the names of the
// arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"

/// "AEGP Utility Suite" version 11.
struct AEGP_UtilitySuite5
{
    static constexpr char kName[] = "AEGP Utility Suite";
    static constexpr std::int32_t kVersion = 11;

    A_Err (*AEGP_ReportInfo)(AEGP_PluginID, const A_char *);
    A_Err (*AEGP_GetDriverPluginInitFuncVersion)(A_short *, A_short *);
    A_Err (*AEGP_GetDriverImplementationVersion)(A_short *, A_short *);
    A_Err (*AEGP_StartQuietErrors)(AEGP_ErrReportState *);
    A_Err (*AEGP_EndQuietErrors)(A_Boolean, AEGP_ErrReportState *);
    A_Err (*AEGP_GetLastErrorMessage)(A_long, A_char *, A_Err *);
    A_Err (*AEGP_StartUndoGroup)(const A_char *name);
    A_Err (*AEGP_EndUndoGroup)();
    A_Err (*AEGP_RegisterWithAEGP)(AEGP_GlobalRefcon, const A_char *, AEGP_PluginID *);
    A_Err (*AEGP_GetMainHWND)(void *);
    A_Err (*AEGP_ShowHideAllFloaters)(A_Boolean);
    A_Err (*AEGP_PaintPalGetForeColor)(AEGP_ColorVal *);
    A_Err (*AEGP_PaintPalGetBackColor)(AEGP_ColorVal *);
    A_Err (*AEGP_PaintPalSetForeColor)(const AEGP_ColorVal *);
    A_Err (*AEGP_PaintPalSetBackColor)(const AEGP_ColorVal *);
    A_Err (*AEGP_CharPalGetFillColor)(A_Boolean *, AEGP_ColorVal *);
    A_Err (*AEGP_CharPalGetStrokeColor)(A_Boolean *, AEGP_ColorVal *);
    A_Err (*AEGP_CharPalSetFillColor)(const AEGP_ColorVal *);
    A_Err (*AEGP_CharPalSetStrokeColor)(const AEGP_ColorVal *);
    A_Err (*AEGP_CharPalIsFillColorUIFrontmost)(A_Boolean *);
    A_Err (*AEGP_ConvertFpLongToHSFRatio)(A_FpLong, A_Ratio *);
    A_Err (*AEGP_ConvertHSFRatioToFpLong)(A_Ratio, A_FpLong *);
    A_Err (*AEGP_CauseIdleRoutinesToBeCalled)();
    A_Err (*AEGP_GetSuppressInteractiveUI)(A_Boolean *);
    A_Err (*AEGP_WriteToOSConsole)(const A_char *);
    A_Err (*AEGP_WriteToDebugLog)(const A_char *, const A_char *, const A_char *);
    A_Err (*AEGP_IsScriptingAvailable)(A_Boolean *);
    A_Err (*AEGP_ExecuteScript)(
        AEGP_PluginID, const A_char *, const A_Boolean, AEGP_MemHandle *, AEGP_MemHandle *);
    A_Err (*AEGP_HostIsActivated)(A_Boolean *);
    A_Err (*AEGP_GetPluginPlatformRef)(AEGP_PluginID, void **);
    A_Err (*AEGP_UpdateFontList)();
};
