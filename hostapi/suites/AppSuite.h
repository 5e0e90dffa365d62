// PF AE App Suite: The host application itself. The panel holds it for its life and calls nothing
// in it. Every slot is declared, in the order of the table, so that the offsets hold; the names of
// the arguments stand at the slots that are called.
#pragma once

#include "hostapi/HostTypes.h"

/// "PF AE App Suite" version 6.
struct PF_AppSuite4
{
    static constexpr char kName[] = "PF AE App Suite";
    static constexpr std::int32_t kVersion = 6;

    PF_Err (*PF_AppGetBgColor)(PF_App_Color *);
    PF_Err (*PF_AppGetColor)(PF_App_ColorType, PF_App_Color *);
    PF_Err (*PF_GetPersonalInfo)(PF_AppPersonalTextInfo *);
    PF_Err (*PF_GetFontStyleSheet)(
        PF_FontStyleSheet, PF_FontName *, A_short *, A_short *, A_short *);
    PF_Err (*PF_SetCursor)(PF_CursorType);
    PF_Err (*PF_IsRenderEngine)(PF_Boolean *);
    PF_Err (*PF_AppColorPickerDialog)(
        const A_char *, const PF_PixelFloat *, PF_Boolean, PF_PixelFloat *);
    PF_Err (*PF_GetMouse)(PF_Point *);
    PF_Err (*PF_InvalidateRect)(const PF_ContextH, const PF_Rect *);
    PF_Err (*PF_ConvertLocalToGlobal)(const PF_Point *, PF_Point *);
    PF_Err (*PF_GetColorAtGlobalPoint)(
        const PF_Point *, A_short, PF_EyeDropperSampleMode, PF_PixelFloat *);
};
