// The two tables of the typed objects: what a value is (TV_), and how it is shown and bounded
// (TG_).
//
// A variable stores row numbers of both, and everywhere but in T_VerifEnum a number indexes its
// table directly. So each row names its own number, and T_VerifEnum compares them while the program
// is loaded, before a table is used.
#pragma once

#include <QtGlobal>

/// The value types. The code is what a T_Var stores; the tag of its row is what stands in a file.
enum T_VarType : quint32 {
    TV_NULL = 0, // no value
    TV_ONGLET = 1, // a layout marker: no value either, its gadget says what begins here
    TV_BOOL = 2, // 1 byte, zero is false
    TV_INT = 3, // 32-bit signed
    TV_FLOAT = 4, // 32-bit float
    TV_STRING = 5, // a fixed character array of T_Var::mStringSize bytes
    TV_BOUTON = 6, // 1 byte, never interpreted: the field only tells which button it is
    TV_COLOR = 7, // 32-bit ARGB (QRgb)
    TV_SHORT = 8, // 16-bit signed
    TV_SXY = 9, // T_ShortPoint
    TV_DOUBLE = 10, // 64-bit float
    TV_CHAR = 11, // 8-bit signed
    TV_QPOINT = 12, // QPoint
    TV_QVECTOR2D = 13, // QVector2D
    TV_QVECTOR3D = 14, // QVector3D
    TV_QTRANSFORM = 15, // QTransform
    TV_QSTRING = 16, // QString
    TV_LINKED_POINT = 17, // T_LinkedPoint
    TV_LAST = 18, // the end of the table; no variable has this code
};

constexpr quint32 kVarTypeRows = TV_LAST + 1;

/// The gadgets that have a name: what a value looks like on screen. The other rows of the table are
/// spin boxes of another range (1, 2, 3, 12) or values without range (4, 5).
enum T_Gadget : quint32 {
    TG_DEFAULT = 0, // the type's ordinary editor
    TG_SLIDER = 6, // a TV_INT as a slider
    TG_COMBO = 7, // a TV_INT as a combo box of T_Var::mEnumList
    TG_TAB = 8, // on a TV_ONGLET: a new tab begins
    TG_GROUP = 9, // on a TV_ONGLET: a horizontal group begins
    TG_COLUMN = 10, // on a TV_ONGLET: a new column begins
    TG_EDITCOMBO = 11, // a TV_QSTRING as an editable combo box
};

constexpr quint32 kGadgetRows = 13;

struct T_VarTypeRow
{
    quint32 code; // equals the row's index
    const char *tag; // what stands in a file
    const char *displayName; // read by nothing
};

struct T_GadgetRow
{
    quint32 row; // equals the row's index
    qint32 lower; // a row whose lower bound is not below its upper bound has no range: a value is
    qint32 upper; //   then not clamped. Who shows a value makes that comparison
    quint32 word; // 0 in every row, read by nothing
    float factorA; // 1.0 in every row, read by nothing
    float factorB; // likewise
};

extern const T_VarTypeRow T_VarTypeTable[kVarTypeRows];
extern const T_GadgetRow T_GadgetTable[kGadgetRows];

/// One element of TV_SXY.
struct T_ShortPoint
{
    qint16 x;
    qint16 y;
};

/// One element of TV_LINKED_POINT. The link is neither shown nor saved.
struct T_LinkedPoint
{
    double x;
    double y;
    quint64 link;
};

/// @return the code of a tag, TV_NULL for any text that is no tag of a value: "TV_LAST" is none
/// either. Upper and lower case differ.
quint32 T_TypeFromTag(const char *tag);

/// @return the tag of a code, "TV_LAST" beyond the table
const char *T_TagFromType(quint32 code);

/// Compares the rows of both tables with their places and remembers that they fit. A table out of
/// order ends the process (vnFatal), since any variable would then be taken for another.
void T_VerifEnum();

/// What T_VerifEnum does, on tables of the caller's choice with the length of the real ones.
void T_VerifTables(const T_VarTypeRow *types, const T_GadgetRow *gadgets);
