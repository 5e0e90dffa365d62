// The host's plug-in interface: types, layouts and numbers. They are binary facts of the host, at
// the level of its tenth release, 64-bit; sizes and offsets are checked below while compiling.
//
// Everything here keeps the host's own names, so that a call reads like the host's documentation.
// All functions of the tables answer A_Err, 0 for success.
#pragma once

#include <cstddef>
#include <cstdint>

// Scalars. All have a fixed width, A_long also where a long has 64 bits.

using A_char = char;
using A_u_char = std::uint8_t;
using A_Boolean = std::uint8_t;
using A_short = std::int16_t;
using A_u_short = std::uint16_t;
using A_long = std::int32_t;
using A_u_long = std::uint32_t;
using A_FpLong = double;
using A_Err = A_long;
using PF_Err = A_long;
using A_UTF16Char = std::uint16_t; // zero-terminated UTF-16
using A_Handle = void *;
/// Enumerations that are one byte under some compilers and 32 bits in the host itself: 32 here.
using A_LegacyEnumType = std::int32_t;

using AEGP_PluginID = A_long;
using AEGP_Command = A_long;
using AEGP_HookPriority = A_u_long;
using AEGP_InstalledEffectKey = A_long;
using AEGP_EffectIndex = A_long;
using AEGP_EffectFlags = A_long;
using AEGP_KeyframeIndex = A_long;
using AEGP_KeyframeInterpolationType = A_long;
using AEGP_KeyInterpolationMask = A_long;
using AEGP_KeyframeFlags = A_long;
using AEGP_LayerStream = A_long;
using AEGP_MaskStream = A_long;
using AEGP_StreamType = A_long;
using AEGP_StreamFlags = A_long;
using AEGP_ItemFlags = A_long;
using AEGP_CompFlags = A_long;
using AEGP_LayerFlags = A_long;
using AEGP_LayerIDVal = A_long;
using AEGP_LayerDrawStyle = A_long;
using AEGP_MemFlag = A_long;
using AEGP_MemSize = A_u_long;
using AEGP_ObjectType = A_long;
using AEGP_Platform = A_long;
using AEGP_FootageSignature = A_u_long;
using AEGP_ItemType = A_short; // 16 bits: a pointer to an int would leave half of it unwritten
using AEGP_LTimeMode = A_short;
using AEGP_LayerQuality = A_short;
using AEGP_LabelID = signed char;
using AEGP_ProjBitDepth = char;
using AEGP_InterpretationStyle = A_u_char;
using AEGP_MenuID = A_LegacyEnumType;
using AEGP_WindowType = A_LegacyEnumType;
using AEGP_CollectionItemType = A_LegacyEnumType;
using AEGP_StreamCollectionItemType = A_LegacyEnumType;
using AEGP_FlyoutMenuCmdID = A_long;
using AEGP_FlyoutMenuMarkType = A_long;
using AEGP_FlyoutMenuIndent = A_long;
using AEIO_FileType = A_long;
using PF_Boolean = char;
using PF_Cmd = A_long;
using PF_CursorType = A_long;
using PF_ParamIndex = A_long;
using PF_ParamType = A_long;
using PF_App_ColorType = A_short;
using PF_EyeDropperSampleMode = A_short;
using PF_FontStyleSheet = A_LegacyEnumType;

// Handles: opaque, null or given by the host. Two handles of one layer are equal.

// NOLINTBEGIN(bugprone-macro-parentheses): a name that is declared takes none
#define VN_HANDLE(Name) using Name = struct Name##_opaque **
#define VN_POINTER(Name) using Name = struct Name##_opaque *
// NOLINTEND(bugprone-macro-parentheses)

VN_HANDLE(AEGP_ProjectH);
VN_HANDLE(AEGP_ItemH);
VN_HANDLE(AEGP_CompH);
VN_HANDLE(AEGP_FootageH);
VN_HANDLE(AEGP_LayerH);
VN_HANDLE(AEGP_EffectRefH);
VN_HANDLE(AEGP_MaskRefH);
VN_HANDLE(AEGP_StreamRefH);
VN_HANDLE(AEGP_MaskOutlineValH);
VN_HANDLE(AEGP_Collection2H);
VN_HANDLE(AEGP_TextDocumentH);
VN_HANDLE(AEGP_AddKeyframesInfoH);
VN_HANDLE(AEGP_MemHandle);
VN_HANDLE(PF_ContextH);

VN_POINTER(AEGP_GlobalRefcon);
VN_POINTER(AEGP_CommandRefcon);
VN_POINTER(AEGP_UpdateMenuRefcon);
VN_POINTER(AEGP_DeathRefcon);
VN_POINTER(AEGP_VersionRefcon);
VN_POINTER(AEGP_AboutStringRefcon);
VN_POINTER(AEGP_AboutRefcon);
VN_POINTER(AEGP_IdleRefcon);
VN_POINTER(AEGP_IORefcon);
VN_POINTER(AEGP_CreatePanelRefcon);
VN_POINTER(AEGP_PanelRefcon);
VN_POINTER(AEGP_PanelH);
VN_POINTER(AEGP_ItemViewP);
VN_POINTER(AEGP_MarkerValP);

#undef VN_POINTER
#undef VN_HANDLE

/// The window system's own handle of a panel's container: a window handle or a widget's window id.
using AEGP_PlatformViewRef = void *;

// Structs of slots that are declared for their place and never called; they stay incomplete.

struct AEGP_ErrReportState;
struct AEGP_FootageInterp;
struct AEGP_FootageLayerKey;
struct AEGP_KeyframeEase;
struct AEGP_LayerTransferMode;
struct AEGP_SoundDataFormat;
struct AEGP_TimeDisplay2;
struct AEIO_FunctionBlock4;
struct AEIO_ModuleInfo;
struct A_FloatRect;
struct A_Matrix4;
struct AEGP_DownsampleFactor;
struct PF_App_Color;
struct PF_AppPersonalTextInfo;
struct PF_FontName;
struct PF_ParamDefUnion;
struct PF_PixelFloat;
struct PF_Point;
struct PF_Rect;
struct PR_ArtisanEntryPoints;
struct PT_TrackerEntryPoints;

// Small structs.

/// A time or a length: value / scale seconds. A scale of 0 is no time at all.
struct A_Time
{
    A_long value;
    A_u_long scale;
};

struct A_Ratio
{
    A_long num;
    A_u_long den;
};

/// A size in pixels where the panel's snap sizes are asked for.
struct A_LPoint
{
    A_long x;
    A_long y;
};

struct A_Version
{
    A_short majorS;
    A_short minorS;
};

struct A_FloatPoint
{
    A_FpLong x;
    A_FpLong y;
};

static_assert(sizeof(A_Time) == 8 && alignof(A_Time) == 4 && offsetof(A_Time, scale) == 4);
static_assert(sizeof(A_Ratio) == 8 && alignof(A_Ratio) == 4 && offsetof(A_Ratio, den) == 4);
static_assert(sizeof(A_LPoint) == 8 && alignof(A_LPoint) == 4 && offsetof(A_LPoint, y) == 4);
static_assert(sizeof(A_Version) == 4 && offsetof(A_Version, minorS) == 2);
static_assert(sizeof(A_FloatPoint) == 16 && offsetof(A_FloatPoint, y) == 8);

// Stream values. Component c of any numeric stream is double c of four_d.

struct AEGP_FourDVal
{
    A_FpLong x, y, z, w;
};

struct AEGP_ThreeDVal
{
    A_FpLong x, y, z;
};

struct AEGP_TwoDVal
{
    A_FpLong x, y;
};

struct AEGP_ColorVal
{
    A_FpLong alphaF, redF, greenF, blueF; // 0 to 1
};

union AEGP_StreamVal
{
    AEGP_FourDVal four_d;
    AEGP_ThreeDVal three_d;
    AEGP_TwoDVal two_d;
    A_FpLong one_d; // seconds for a time remap, degrees for a rotation, percent for an opacity
    AEGP_ColorVal color;
    A_Handle arbH;
    A_Handle markerH;
    A_long layer_id;
    A_long mask_id;
    AEGP_MaskOutlineValH mask;
    AEGP_TextDocumentH text_documentH;
};

union AEGP_StreamVal2
{
    AEGP_FourDVal four_d;
    AEGP_ThreeDVal three_d;
    AEGP_TwoDVal two_d;
    A_FpLong one_d;
    AEGP_ColorVal color;
    A_Handle arbH;
    AEGP_MarkerValP markerP;
    A_long layer_id;
    A_long mask_id;
    AEGP_MaskOutlineValH mask;
    AEGP_TextDocumentH text_documentH;
};

/// A value made by the host, to be disposed of. The first generation of this struct; its layout
/// equals that of the second.
struct AEGP_StreamValue
{
    AEGP_StreamRefH streamH;
    AEGP_StreamVal val;
};

struct AEGP_StreamValue2
{
    AEGP_StreamRefH streamH;
    AEGP_StreamVal2 val;
};

static_assert(sizeof(AEGP_StreamVal) == 32 && alignof(AEGP_StreamVal) == 8);
static_assert(sizeof(AEGP_StreamVal2) == 32 && alignof(AEGP_StreamVal2) == 8);
static_assert(sizeof(AEGP_StreamValue) == 40 && offsetof(AEGP_StreamValue, val) == 8);
static_assert(sizeof(AEGP_StreamValue2) == 40 && offsetof(AEGP_StreamValue2, val) == 8);
static_assert(offsetof(AEGP_ColorVal, redF) == 8 && offsetof(AEGP_ColorVal, blueF) == 24);

// Collection items. A layer item is type 1 with its handle, everything else zero.

struct AEGP_LayerCollectionItem
{
    AEGP_LayerH layerH;
};

struct AEGP_MaskCollectionItem
{
    AEGP_LayerH layerH;
    A_long index;
};

struct AEGP_EffectCollectionItem
{
    AEGP_LayerH layerH;
    AEGP_EffectIndex index;
};

struct AEGP_LayerStreamCollectionItem
{
    AEGP_LayerH layerH;
    AEGP_LayerStream layer_stream;
};

struct AEGP_MaskStreamCollectionItem
{
    AEGP_MaskCollectionItem mask;
    AEGP_MaskStream mask_stream;
};

struct AEGP_EffectStreamCollectionItem
{
    AEGP_EffectCollectionItem effect;
    PF_ParamIndex param_index;
};

struct AEGP_StreamCollectionItem
{
    AEGP_StreamCollectionItemType type;
    union
    {
        AEGP_LayerStreamCollectionItem layer_stream;
        AEGP_MaskStreamCollectionItem mask_stream;
        AEGP_EffectStreamCollectionItem effect_stream;
    } u;
};

struct AEGP_MaskVertexCollectionItem
{
    AEGP_MaskCollectionItem mask_sel;
    A_long index;
};

struct AEGP_KeyframeCollectionItem
{
    AEGP_StreamCollectionItem stream_coll;
    AEGP_KeyframeIndex index;
};

struct AEGP_CollectionItemV2
{
    AEGP_CollectionItemType type;
    union
    {
        AEGP_LayerCollectionItem layer;
        AEGP_MaskCollectionItem mask;
        AEGP_EffectCollectionItem effect;
        AEGP_StreamCollectionItem stream;
        AEGP_MaskVertexCollectionItem mask_vertex;
        AEGP_KeyframeCollectionItem keyframe;
    } u;
    AEGP_StreamRefH stream_refH;
};

static_assert(sizeof(AEGP_MaskCollectionItem) == 16 && sizeof(AEGP_EffectCollectionItem) == 16);
static_assert(sizeof(AEGP_LayerStreamCollectionItem) == 16);
static_assert(sizeof(AEGP_MaskStreamCollectionItem) == 24);
static_assert(sizeof(AEGP_EffectStreamCollectionItem) == 24);
static_assert(sizeof(AEGP_StreamCollectionItem) == 32);
static_assert(sizeof(AEGP_MaskVertexCollectionItem) == 24);
static_assert(sizeof(AEGP_KeyframeCollectionItem) == 40);
static_assert(offsetof(AEGP_KeyframeCollectionItem, index) == 32);
static_assert(sizeof(AEGP_CollectionItemV2) == 56 && alignof(AEGP_CollectionItemV2) == 8);
static_assert(offsetof(AEGP_CollectionItemV2, u) == 8);
static_assert(offsetof(AEGP_CollectionItemV2, stream_refH) == 48);

// Footage import.

struct AEGP_FileSequenceImportOptions
{
    A_Boolean all_in_folderB; // 1: the series that the file belongs to; 0: this one file
    A_Boolean force_alphabeticalB; // 1: file names in alphabetical order
    A_long start_frameL; // -1: the earliest that is found
    A_long end_frameL; // -1: the last that is found
};

static_assert(sizeof(AEGP_FileSequenceImportOptions) == 12);
static_assert(offsetof(AEGP_FileSequenceImportOptions, force_alphabeticalB) == 1);
static_assert(offsetof(AEGP_FileSequenceImportOptions, start_frameL) == 4);
static_assert(offsetof(AEGP_FileSequenceImportOptions, end_frameL) == 8);

// The width of every name is its place in a table's signature.

static_assert(sizeof(AEGP_ItemType) == 2 && sizeof(AEGP_LTimeMode) == 2);
static_assert(sizeof(AEGP_MenuID) == 4 && sizeof(AEGP_WindowType) == 4);
static_assert(sizeof(AEGP_CollectionItemType) == 4 && sizeof(AEGP_LabelID) == 1);
static_assert(sizeof(AEGP_InterpretationStyle) == 1 && sizeof(A_Boolean) == 1);
static_assert(sizeof(void *) == 8, "the host is a 64-bit program");

// Numbers.

constexpr AEGP_ItemType AEGP_ItemType_NONE = 0;
constexpr AEGP_ItemType AEGP_ItemType_FOLDER = 1;
constexpr AEGP_ItemType AEGP_ItemType_COMP = 2;
constexpr AEGP_ItemType AEGP_ItemType_FOOTAGE = 4; // solids too

constexpr AEGP_LayerStream AEGP_LayerStream_ANCHORPOINT = 0;
constexpr AEGP_LayerStream AEGP_LayerStream_POSITION = 1;
constexpr AEGP_LayerStream AEGP_LayerStream_SCALE = 2;
constexpr AEGP_LayerStream AEGP_LayerStream_ROTATION = 3;
constexpr AEGP_LayerStream AEGP_LayerStream_OPACITY = 4;
constexpr AEGP_LayerStream AEGP_LayerStream_TIME_REMAP = 7;

constexpr AEGP_LTimeMode AEGP_LTimeMode_LayerTime = 0;
constexpr AEGP_LTimeMode AEGP_LTimeMode_CompTime = 1;

constexpr AEGP_KeyframeInterpolationType AEGP_KeyInterp_NONE = 0;
constexpr AEGP_KeyframeInterpolationType AEGP_KeyInterp_LINEAR = 1;
constexpr AEGP_KeyframeInterpolationType AEGP_KeyInterp_BEZIER = 2;
constexpr AEGP_KeyframeInterpolationType AEGP_KeyInterp_HOLD = 3;

constexpr AEGP_StreamType AEGP_StreamType_NO_DATA = 0;
constexpr AEGP_StreamType AEGP_StreamType_ThreeD_SPATIAL = 1;
constexpr AEGP_StreamType AEGP_StreamType_ThreeD = 2;
constexpr AEGP_StreamType AEGP_StreamType_TwoD_SPATIAL = 3;
constexpr AEGP_StreamType AEGP_StreamType_TwoD = 4;
constexpr AEGP_StreamType AEGP_StreamType_OneD = 5;
constexpr AEGP_StreamType AEGP_StreamType_COLOR = 6;
constexpr AEGP_StreamType AEGP_StreamType_LAYER_ID = 9;
constexpr A_long AEGP_NumKF_NO_DATA = -1;

constexpr AEGP_HookPriority AEGP_HP_BeforeAE = 1;
constexpr AEGP_Command AEGP_Command_ALL = 0;
constexpr AEGP_MenuID AEGP_Menu_NONE = 0;
constexpr AEGP_MenuID AEGP_Menu_WINDOW = 7;
constexpr AEGP_MenuID AEGP_Menu_PURGE = 15; // the last one
constexpr A_long AEGP_MENU_INSERT_SORTED = -2;
constexpr A_long AEGP_MENU_INSERT_AT_BOTTOM = -1;
constexpr A_long AEGP_MENU_INSERT_AT_TOP = 0;

constexpr AEGP_WindowType AEGP_WindType_NONE = 0;
constexpr AEGP_WindowType AEGP_WindType_PROJECT = 1;
constexpr AEGP_WindowType AEGP_WindType_COMP = 2;

constexpr AEGP_CollectionItemType AEGP_CollectionItemType_NONE = 0;
constexpr AEGP_CollectionItemType AEGP_CollectionItemType_LAYER = 1;

constexpr AEGP_InterpretationStyle AEGP_InterpretationStyle_NO_DIALOG_GUESS = 0;
constexpr AEGP_InterpretationStyle AEGP_InterpretationStyle_DIALOG_OK = 1;
constexpr AEGP_InterpretationStyle AEGP_InterpretationStyle_NO_DIALOG_NO_GUESS = 2;

constexpr AEGP_InstalledEffectKey AEGP_InstalledEffectKey_NONE = 0;
constexpr A_long AEGP_REORDER_LAYER_TO_END = -1;
constexpr A_long AEGP_FOOTAGE_MAIN_FILE_INDEX = 0;
constexpr A_long AEGP_ANY_FRAME = -1;

constexpr AEGP_MemFlag AEGP_MemFlag_NONE = 0;
constexpr AEGP_MemFlag AEGP_MemFlag_CLEAR = 1;
constexpr AEGP_MemFlag AEGP_MemFlag_QUIET = 2;

// Buffer sizes in bytes, terminator included.
constexpr std::size_t AEGP_MAX_ITEM_NAME_SIZE = 32;
constexpr std::size_t AEGP_MAX_LAYER_NAME_SIZE = 32;
constexpr std::size_t AEGP_MAX_EFFECT_NAME_SIZE = 48; // wider than the other names

// Errors.
constexpr A_Err A_Err_NONE = 0;
constexpr A_Err A_Err_GENERIC = 1;
constexpr A_Err A_Err_STRUCT = 2;
constexpr A_Err A_Err_PARAMETER = 3;
constexpr A_Err A_Err_ALLOC = 4;
constexpr A_Err A_Err_MISSING_SUITE = 13;
constexpr A_Err PF_Err_BAD_CALLBACK_PARAM = 516;

// Commands of the host's own menus that are run or watched.
constexpr AEGP_Command kHostCommandOpenProject = 3;
constexpr AEGP_Command kHostCommandSave = 5;
constexpr AEGP_Command kHostCommandUndo = 16;
constexpr AEGP_Command kHostCommandRedo = 2035;
