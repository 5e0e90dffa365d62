#include "panel/Doc.h"

#include "vnAE/vipLi.h"

Doc::Doc()
    : extList{ QStringLiteral("png"), QStringLiteral("tga"), QStringLiteral("swf"),
        QStringLiteral("mov") }
    , typeList{ QStringLiteral("SEQUENCE"), QStringLiteral("FIXE") }
{
    SetName(QStringLiteral("Dashboard"));

    AddTabMark(QStringLiteral("Layer"));
    AddButton(&btMoveLeft, QStringLiteral("<< (move left)"));
    AddButton(&btMoveRight, QStringLiteral(">> (move right)"));

    AddTabMark(QStringLiteral("NewCol"));
    AddQString(&name, QStringLiteral("Name"), TG_DEFAULT);
    AddEnum(&typeIndex, QStringLiteral("Type"), TG_COMBO, &typeList);
    AddEnum(&extIndex, QStringLiteral("Ext"), TG_COMBO, &extList);
    AddButton(&btNewCol, QStringLiteral("New Col"));

    DeclareTransform();

    AddTabMark(QStringLiteral("Effect"));
    AddNumber(&opacity, QStringLiteral("Opacity"));
    AddNumber(&blur, QStringLiteral("Blur"));
    AddNumber(&hue, QStringLiteral("Hue"));
    AddNumber(&saturation, QStringLiteral("Saturation"));
    AddNumber(&lightness, QStringLiteral("Lightness"));

    // A declaration clears its field: both options start off, and the user turns them on.
    AddTabMark(QStringLiteral("Setup"));
    AddFlag(&syncColumn, QStringLiteral("Sync Column with AE"));
    AddFlag(&syncIma, QStringLiteral("Sync Ima with AE"));
}

bool Doc::IsA(const std::type_info &kind) const
{
    return kind == typeid(Doc) || T_Struct::IsA(kind);
}

void Doc::SetCol(qint32 column)
{
    col = column;
    GetVipLi()->SetCurrentColumn(column); // unchecked: no such column is no current layer
}

AEGP_LayerH Doc::GetCurrentLayer() const
{
    vipLi *library = GetVipLi();
    return library->GetLayerAt(library->Compo, col);
}

void Doc::SetCurrentLayer(AEGP_LayerH layer)
{
    vipLi *library = GetVipLi();
    col = library->GetLayerIndex(layer);
    library->Layer = layer;
}

void Doc::AddTabMark(const QString &text)
{
    AddVar(TV_ONGLET, text, /*field=*/nullptr, TG_TAB);
}

void Doc::AddNumber(qint32 *field, const QString &label)
{
    AddInt(field, label, TG_DEFAULT);
}

void Doc::AddFlag(bool *field, const QString &label)
{
    AddBool(field, label, TG_DEFAULT);
}

void Doc::DeclareTransform()
{
    AddTabMark(QStringLiteral("Transform"));
    AddNumber(&posX, QStringLiteral("Pos. X"));
    AddNumber(&posY, QStringLiteral("Pos. Y"));
    // Twice, so that in columns of two rows each coordinate has the key box at its side. The two
    // editors show one field.
    AddFlag(&keyPos, QStringLiteral("Key Pos"));
    AddFlag(&keyPos, QStringLiteral("Key Pos"));
    AddNumber(&scale, QStringLiteral("Scale"));
    AddNumber(&rotation, QStringLiteral("Rotation"));
    AddFlag(&keyScale, QStringLiteral("Key Scale"));
    AddFlag(&keyRotation, QStringLiteral("Key Rotation"));
}

Doc *GetDoc()
{
    static Doc *const doc = new Doc;
    return doc;
}
