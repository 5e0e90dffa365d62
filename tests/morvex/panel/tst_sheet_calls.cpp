#include "BoundSheet.h"

/// In which order the sheet calls the host.
class TestSheetCalls : public QObject
{
    Q_OBJECT

private slots:
    void aReloadReadsColumnByColumnInsideItsGroup();
    void aReloadWritesTheDurationAndNothingElse();
    void aTypedCell();
    void aTypedCellOfTheActiveLayerSelectsNothing();
    void aCommandSelectsOnceAndRebuildsBehindItsGroup();
    void anExpoWritesTheSpanBeforeTheCells();
};

namespace {

const QByteArrayList kFindCompo{ "AEGP_GetProjectByIndex", "AEGP_GetProjectRootFolder",
    "AEGP_GetNextProjItem", "AEGP_GetItemType", "AEGP_GetItemName", "AEGP_GetCompFromItem" };
const QByteArrayList kDuration{ "AEGP_GetItemFromComp", "AEGP_GetItemDuration" };
const QByteArrayList kFindLayer{ "AEGP_GetCompNumLayers", "AEGP_GetCompLayerByIndex" };
const QByteArrayList kSelect{ "AEGP_NewCollection", "AEGP_CollectionPushBack", "AEGP_SetSelection",
    "AEGP_DisposeCollection" };
const QByteArrayList kLastImage{ "AEGP_GetLayerSourceItem", "AEGP_GetItemType",
    "AEGP_GetItemDuration" };
const QByteArrayList kSourcePath{ "AEGP_GetLayerSourceItem", "AEGP_GetItemType",
    "AEGP_GetMainFootageFromItem", "AEGP_NewMemHandle", "AEGP_GetFootagePath", "AEGP_LockMemHandle",
    "AEGP_UnlockMemHandle", "AEGP_FreeMemHandle", "AEGP_FreeMemHandle" };

QByteArrayList MarksOf(int columns)
{
    QByteArrayList calls;
    for (int col = 0; col < columns; ++col) {
        calls << kFindLayer;
        for (int stream = 0; stream < 3; ++stream)
            calls << "AEGP_GetNewLayerStream"
                  << "AEGP_GetStreamNumKFs"
                  << "AEGP_DisposeStream";
    }
    return calls;
}

/// Blank, 9 images: 4 on rows 0 to 2, 7 behind; a still beside it.
SheetPlan TwoColumns()
{
    return { SeriesColumn("walk", 9, { { 0, 4 }, { 3, 7 } }), StillColumn("sky.png") };
}

/// The calls of one function, with their arguments and results.
QByteArrayList Calls(BoundSheet &sheet, const char *function)
{
    QByteArrayList lines;
    for (const QByteArray &line : sheet.host.GetTrace().Text().split('\n')) {
        const int at = line.indexOf(QByteArray(function) + '(');
        if (at >= 0)
            lines << line.mid(at);
    }
    return lines;
}

bool IsWrite(const QByteArray &function)
{
    return function.contains("Keyframe") && !function.startsWith("AEGP_Get");
}

} // namespace

void TestSheetCalls::aReloadReadsColumnByColumnInsideItsGroup()
{
    BoundSheet sheet(TwoColumns(), 2);
    sheet.Show();
    sheet.Robot().Click(0, 0);
    sheet.host.GetTrace().Start();
    QVERIFY(sheet.grid.UpdateFromCompo());

    QByteArrayList expected = QByteArrayList{ "AEGP_StartUndoGroup" } + kFindCompo + kDuration
        + QByteArrayList{ "AEGP_GetCompNumLayers" };
    for (int col = 0; col < 2; ++col) {
        expected << kFindLayer << "AEGP_GetActiveLayer" << kSelect;
        expected << "AEGP_GetLayerName" << kLastImage // the kind
                 << "AEGP_GetLayerInPoint"
                 << "AEGP_GetLayerDuration" << kLastImage << kSourcePath;
        expected << kDuration << "AEGP_GetLayerStreamValue"
                 << "AEGP_GetLayerStreamValue"; // two rows
    }
    expected << kDuration << kFindCompo << "AEGP_SetCompDuration"
             << "AEGP_EndUndoGroup" << MarksOf(2);
    QCOMPARE(sheet.host.GetTrace().Functions(), expected);
    QCOMPARE(Calls(sheet, "AEGP_StartUndoGroup"),
        QByteArrayList{ "AEGP_StartUndoGroup(\"morvex:Reload\") = 0" });
}

void TestSheetCalls::aReloadWritesTheDurationAndNothingElse()
{
    BoundSheet sheet(TwoColumns(), 30);
    sheet.EditProject().EditComposition(sheet.composition)->duration = { 1210, 1000 };
    sheet.Doc().CloseLooseEnds();
    rostrum::Project expected = sheet.Doc().GetProject();
    expected.EditComposition(sheet.composition)->duration = { 30, 25 };
    sheet.host.GetTrace().Start();
    sheet.Show();
    QVERIFY(sheet.Doc().GetProject() == expected);
    for (const QByteArray &function : sheet.host.GetTrace().Functions())
        QVERIFY2(!IsWrite(function), function.constData());
}

void TestSheetCalls::aTypedCell()
{
    BoundSheet sheet(TwoColumns(), 12);
    sheet.Show();
    sheet.Robot().Click(0, 5);
    int callsBeforeTheSignal = 0;
    connect(&sheet.grid, &WExpoGrid::SigSomethingHasChanged, this, [&](UpdateLevel level, void *) {
        QCOMPARE(level, UpdCells);
        callsBeforeTheSignal = sheet.host.GetTrace().Functions().size();
    });
    sheet.host.GetTrace().Start();
    sheet.Robot().Type(QStringLiteral("1"));

    const QByteArrayList calls = sheet.host.GetTrace().Functions();
    const QByteArrayList start = QByteArrayList{ "AEGP_StartUndoGroup" } + kFindLayer
        + QByteArrayList{ "AEGP_GetActiveLayer" } + kSelect
        + QByteArrayList{ "AEGP_GetNewLayerStream", "AEGP_GetLayerStreamValue" };
    QCOMPARE(calls.mid(0, start.size()), start);
    QCOMPARE(Calls(sheet, "AEGP_StartUndoGroup"),
        QByteArrayList{ "AEGP_StartUndoGroup(\"morvex:EditCell\") = 0" });
    QByteArrayList read = Calls(sheet, "AEGP_GetLayerStreamValue"); // which each write begins with
    for (QByteArray &line : read)
        line = line.mid(line.indexOf(", 7, ") + 5).split(',')[1].trimmed();
    QCOMPARE(read, QByteArrayList({ "5/25", "6/25" }));
    QByteArrayList inserted = Calls(sheet, "AEGP_InsertKeyframe");
    QCOMPARE(inserted.size(), 2);
    QVERIFY(inserted[0].contains("5/25") && inserted[1].contains("6/25"));

    // The rebuild, then the announcement, then the end of the group.
    const QByteArrayList marks = MarksOf(2);
    QCOMPARE(
        calls.mid(calls.size() - 1 - marks.size()), marks + QByteArrayList{ "AEGP_EndUndoGroup" });
    QCOMPARE(callsBeforeTheSignal, calls.size() - 1);
}

void TestSheetCalls::aTypedCellOfTheActiveLayerSelectsNothing()
{
    BoundSheet sheet(TwoColumns(), 12);
    sheet.Show();
    sheet.Robot().Click(0, 5);
    sheet.Robot().Type(QStringLiteral("1"));
    sheet.host.GetTrace().Start();
    sheet.Robot().Type(QStringLiteral("2"));
    QCOMPARE(sheet.host.GetTrace().Count("AEGP_GetActiveLayer"), 1);
    QCOMPARE(sheet.host.GetTrace().Count("AEGP_SetSelection"), 0);
}

void TestSheetCalls::aCommandSelectsOnceAndRebuildsBehindItsGroup()
{
    BoundSheet sheet(TwoColumns(), 12);
    sheet.Show();
    sheet.Robot().Drag(0, 3, 0, 8);
    sheet.host.GetTrace().Start();
    sheet.Robot().Key(Qt::Key_Delete);
    QCOMPARE(sheet.host.GetTrace().Count("AEGP_StartUndoGroup"), 1);
    QCOMPARE(sheet.host.GetTrace().Count("AEGP_GetActiveLayer"), 6); // a cell each
    QCOMPARE(sheet.host.GetTrace().Count("AEGP_SetSelection"), 1);
    const QByteArrayList calls = sheet.host.GetTrace().Functions();
    const QByteArrayList marks = MarksOf(2);
    QCOMPARE(
        calls.mid(calls.size() - 1 - marks.size()), QByteArrayList{ "AEGP_EndUndoGroup" } + marks);
}

void TestSheetCalls::anExpoWritesTheSpanBeforeTheCells()
{
    BoundSheet sheet({ SeriesColumn("run", 9, { { 0, 2 } }, QStringLiteral("psd")) }, 12);
    sheet.Show();
    sheet.Robot().Click(0, 2);
    sheet.host.GetTrace().Start();
    sheet.Robot().Key(Qt::Key_Home);
    const QByteArrayList start = QByteArrayList{ "AEGP_StartUndoGroup" } + kFindLayer
        + QByteArrayList{ "AEGP_GetActiveLayer", "AEGP_SetLayerOffset",
              "AEGP_SetLayerInPointAndDuration" }
        + kFindLayer + QByteArrayList{ "AEGP_GetActiveLayer", "AEGP_GetNewLayerStream" };
    QCOMPARE(sheet.host.GetTrace().Functions().mid(0, start.size()), start);
    QVERIFY(Calls(sheet, "AEGP_SetLayerInPointAndDuration")[0].endsWith("2/25, 10/25) = 0"));
}

VN_HOST_TEST_MAIN(TestSheetCalls)
#include "tst_sheet_calls.moc"
