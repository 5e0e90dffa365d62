#include "T_Types/T_TypeTables.h"

#include "support/vnMessage.h"

#include <cstring>

// Both tables are constants that stand before any constructor runs: the registry's records check
// them during static initialisation.
const T_VarTypeRow T_VarTypeTable[kVarTypeRows] = {
    { TV_NULL, "TV_NULL", "null" },
    { TV_ONGLET, "TV_ONGLET", "onglet" },
    { TV_BOOL, "TV_BOOL", "bool" },
    { TV_INT, "TV_INT", "int" },
    { TV_FLOAT, "TV_FLOAT", "float" },
    { TV_STRING, "TV_STRING", "string" },
    { TV_BOUTON, "TV_BOUTON", "bouton" },
    { TV_COLOR, "TV_COLOR", "couleur" },
    { TV_SHORT, "TV_SHORT", "short" },
    { TV_SXY, "TV_SXY", "pointXY" },
    { TV_DOUBLE, "TV_DOUBLE", "double" },
    { TV_CHAR, "TV_CHAR", "char" },
    { TV_QPOINT, "TV_QPOINT", "QPoint" },
    { TV_QVECTOR2D, "TV_QVECTOR2D", "QVector2D" },
    { TV_QVECTOR3D, "TV_QVECTOR3D", "QVector3D" },
    { TV_QTRANSFORM, "TV_QTRANSFORM", "QTransform" },
    { TV_QSTRING, "TV_QSTRING", "QString" },
    { TV_LINKED_POINT, "TV_LINKED_POINT", "LinkedPoint" },
    { TV_LAST, "TV_LAST", "last" },
};

const T_GadgetRow T_GadgetTable[kGadgetRows] = {
    { TG_DEFAULT, -100000, 100000, 0, 1.0F, 1.0F },
    { 1, 2, 56, 0, 1.0F, 1.0F },
    { 2, 0, 100, 0, 1.0F, 1.0F },
    { 3, 0, 100, 0, 1.0F, 1.0F },
    { 4, 0, -1, 0, 1.0F, 1.0F },
    { 5, 0, -1, 0, 1.0F, 1.0F },
    { TG_SLIDER, 0, 100, 0, 1.0F, 1.0F },
    { TG_COMBO, 0, 100, 0, 1.0F, 1.0F },
    { TG_TAB, 0, 100, 0, 1.0F, 1.0F },
    { TG_GROUP, 0, 100, 0, 1.0F, 1.0F },
    { TG_COLUMN, 0, 100, 0, 1.0F, 1.0F },
    { TG_EDITCOMBO, 0, 100, 0, 1.0F, 1.0F },
    { 12, 0, 100, 0, 1.0F, 1.0F },
};

quint32 T_TypeFromTag(const char *tag)
{
    for (quint32 code = 0; code < TV_LAST; ++code) {
        if (std::strcmp(tag, T_VarTypeTable[code].tag) == 0)
            return code;
    }
    return TV_NULL;
}

const char *T_TagFromType(quint32 code)
{
    return T_VarTypeTable[code < TV_LAST ? code : quint32(TV_LAST)].tag;
}

void T_VerifTables(const T_VarTypeRow *types, const T_GadgetRow *gadgets)
{
    for (quint32 i = 0; i < kVarTypeRows; ++i) {
        if (types[i].code != i)
            vnFatal("T_VerifEnum:coherence TV");
    }
    for (quint32 i = 0; i < kGadgetRows; ++i) {
        if (gadgets[i].row != i)
            vnFatal("T_VerifEnum:coherence TG");
    }
}

void T_VerifEnum()
{
    static bool verified = false;
    if (verified)
        return;
    T_VerifTables(T_VarTypeTable, T_GadgetTable);
    verified = true;
}
