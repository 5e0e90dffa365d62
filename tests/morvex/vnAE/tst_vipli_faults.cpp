#include "FaultSweep.h"

#include <QBrush>

namespace {

void MakeOtherActive(LibrarySheet &sheet)
{
    sheet.AddSeries("run", 8);
    sheet.host.GetDocument().view.selections[sheet.composition] = {};
}

void AddPositionKeys(LibrarySheet &sheet)
{
    for (int frame : { 3, 8 })
        sheet.EditLayer().position.InsertKey({ frame, 25 }, { 1, 2, 0, 0 });
}

const QByteArrayList kWriteIsNotTold{ "AEGP_GetStreamNumKFs", "AEGP_GetKeyframeTime",
    "AEGP_InsertKeyframe", "AEGP_SetKeyframeValue", "AEGP_SetKeyframeInterpolation",
    "AEGP_DeleteKeyframe" };

/// A key whose image cannot be read is taken as one of another image.
const QByteArrayList kKeyIsNotEqual{ "AEGP_GetNewKeyframeValue" };

QVector<SweptOperation> CompositionOperations()
{
    vipLi *lib = GetVipLi();
    return {
        { "StartUndoGroup",
            [=] {
                lib->StartUndoGroup(QStringLiteral("morvex:Sweep"));
                return QByteArray();
            },
            "", { "AEGP_StartUndoGroup" }, {} },
        { "DoCommand",
            [=] {
                lib->DoCommand(kHostCommandUndo);
                return QByteArray();
            },
            "", {},
            [](LibrarySheet &sheet) { // something to undo
                sheet.host.GetDocument().StartGroup("move");
                sheet.host.GetDocument()
                    .Edit("move")
                    .EditLayer(sheet.composition, sheet.layer)
                    ->name
                    = "x";
                sheet.host.GetDocument().EndGroup();
            } },
        { "GetActiveCompo", [=] { return Bool(lib->GetActiveCompo()); }, "false",
            { "AEGP_GetCompFromItem" }, {} },
        { "HasActiveItem", [=] { return Bool(lib->HasActiveItem()); }, "false", {}, {} },
        { "FindCompo", [=] { return Bool(lib->FindCompo()); }, "false", {}, {} },
        { "HasCompo",
            [=] {
                lib->Compo = nullptr;
                return Bool(lib->HasCompo());
            },
            "false", {}, {} },
        { "GetCompoName", [=] { return lib->GetCompoName(lib->Compo); }, "", {}, {} },
        { "IsNamedAsCompo", [=] { return Bool(lib->IsNamedAsCompo(lib->Compo)); }, "false", {},
            {} },
        { "GetCompoDuration", [=] { return QByteArray::number(lib->GetCompoDuration(lib->Compo)); },
            "0", { "AEGP_GetItemFromComp", "AEGP_GetItemDuration" }, {} },
        { "GetCurrentFrame", [=] { return QByteArray::number(lib->GetCurrentFrame()); }, "0",
            { "AEGP_GetItemFromComp", "AEGP_GetItemCurrentTime" }, {} },
        { "SetCurrentFrame",
            [=] {
                lib->SetCurrentFrame(7);
                return QByteArray();
            },
            "", {}, {} },
    };
}

QVector<SweptOperation> ColumnOperations()
{
    vipLi *lib = GetVipLi();
    return {
        { "GetColumnCount", [=] { return QByteArray::number(lib->GetColumnCount()); }, "0",
            { "AEGP_GetCompNumLayers" }, {} },
        { "GetActiveColumnIndex", [=] { return QByteArray::number(lib->GetActiveColumnIndex()); },
            "0", { "AEGP_GetActiveLayer", "AEGP_GetLayerIndex" },
            [](LibrarySheet &sheet) {
                sheet.AddSeries("run", 8); // the active one is below, so that its index is not 0
                sheet.host.GetDocument().view.selections[sheet.composition] = { sheet.layer };
            } },
        { "GetLayerIndex", [=] { return QByteArray::number(lib->GetLayerIndex(lib->Layer)); }, "0",
            { "AEGP_GetLayerIndex" }, [](LibrarySheet &sheet) { sheet.AddSeries("run", 8); } },
        { "GetLayerAt", [=] { return Bool(lib->GetLayerAt(lib->Compo, 0)); }, "false", {}, {} },
        { "SetCurrentColumn", [=] { return Bool(lib->SetCurrentColumn(0)); }, "false", {}, {} },
        { "SelectColumn", [=] { return Bool(lib->SelectColumn(1)); }, "false", {},
            MakeOtherActive },
        { "GetColumnName", [=] { return lib->GetColumnName().toUtf8(); }, "ERR", {}, {} },
        { "GetColumnKind", [=] { return QByteArray::number(lib->GetColumnKind()); }, "2", {}, {} },
        { "GetSourceLastFrame", [=] { return QByteArray::number(lib->GetSourceLastFrame()); }, "0",
            {}, {} },
        { "GetSourcePath", [=] { return lib->GetSourcePath().toUtf8(); }, "", {}, {} },
        { "GetLayerLabel", [=] { return QByteArray::number(lib->GetLayerLabel(nullptr)); }, "0", {},
            [](LibrarySheet &sheet) { sheet.EditProject().Edit(sheet.footage)->label = 9; } },
        { "GetLabelBrush",
            [=] {
                QBrush brush;
                return lib->GetLabelBrush(brush, nullptr).color().name().toUtf8();
            },
            "#ffffff", {},
            [](LibrarySheet &sheet) { sheet.EditProject().Edit(sheet.footage)->label = 9; } },
    };
}

QVector<SweptOperation> CellOperations()
{
    vipLi *lib = GetVipLi();
    return {
        { "GetCellImage",
            [=] {
                qint32 image = 77;
                const bool read = lib->GetCellImage(3, image);
                return Text(read, image);
            },
            "false 77", {}, {} },
        { "SetCellImage: a new key", [=] { return Bool(lib->SetCellImage(5, 9)); }, "false",
            kWriteIsNotTold, {}, kKeyIsNotEqual },
        { "SetCellImage: joined before", [=] { return Bool(lib->SetCellImage(4, 1)); }, "false",
            kWriteIsNotTold, {}, kKeyIsNotEqual },
        { "SetCellImage: joined after", [=] { return Bool(lib->SetCellImage(7, 3)); }, "false",
            kWriteIsNotTold, {}, kKeyIsNotEqual },
        { "SetCellImage: a key of another image", [=] { return Bool(lib->SetCellImage(4, 6)); },
            "false", kWriteIsNotTold, {}, kKeyIsNotEqual },
        { "ClearCells",
            [=] {
                lib->ClearCells(0);
                return QByteArray();
            },
            "", { "AEGP_InsertKeyframe", "AEGP_SetKeyframeValue", "AEGP_SetKeyframeInterpolation" },
            {}, kKeyIsNotEqual,
            { "AEGP_GetStreamNumKFs", "AEGP_GetKeyframeTime", "AEGP_DeleteKeyframe" } },
        { "AddKey", [=] { return Bool(lib->AddKey(AEGP_LayerStream_SCALE, 4)); }, "false", {}, {} },
        { "DeleteKey", [=] { return Bool(lib->DeleteKey(AEGP_LayerStream_POSITION, 8)); }, "false",
            { "AEGP_GetStreamNumKFs", "AEGP_GetKeyframeTime" }, AddPositionKeys },
        { "HasKey", [=] { return Bool(lib->HasKey(AEGP_LayerStream_POSITION, 8)); }, "false",
            { "AEGP_GetStreamNumKFs", "AEGP_GetKeyframeTime" }, AddPositionKeys },
        { "MarkStreamKeys", [=] { return Bool(lib->MarkStreamKeys(AEGP_LayerStream_POSITION, 1)); },
            "false", {}, AddPositionKeys },
        { "UpdateKeyMarks", [=] { return Bool(lib->UpdateKeyMarks()); }, "true", {},
            AddPositionKeys },
    };
}

} // namespace

/// The composition, its columns and their cells.
class TestVipLiFaults : public FaultSweep
{
    Q_OBJECT

protected:
    QVector<SweptOperation> Operations() const override
    {
        return CompositionOperations() + ColumnOperations() + CellOperations();
    }
};

VN_HOST_TEST_MAIN(TestVipLiFaults)

#include "tst_vipli_faults.moc"
