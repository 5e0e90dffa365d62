#include "LibrarySheet.h"
#include "shell/SuiteHandler.h"
#include "support/vnLog.h"

#include <QBrush>
#include <QVector>

#include <functional>

/// Every operation of the library with each of its host calls failing once, and with each suite
/// missing. Whatever fails, nothing stays open, and the answer and the log line are the operation's.
class TestVipLiFaults : public QObject
{
    Q_OBJECT

private slots:
    void eachCallFailsOnce_data();
    void eachCallFailsOnce();
    void eachSuiteIsMissingOnce_data();
    void eachSuiteIsMissingOnce();
    void aGivingBackThatFailsIsSurvived_data();
    void aGivingBackThatFailsIsSurvived();
};

namespace {

/// One operation as the sweep runs it.
struct Operation
{
    const char *name;
    /// Runs it and answers its result in words, with its out arguments.
    std::function<QByteArray()> run;
    /// What it answers when a checked call fails.
    QByteArray failure;
    /// Functions whose failure is not told: no log line, and the steps go on.
    QByteArrayList unchecked;
    /// Puts the library into the state that the operation needs.
    std::function<void(LibrarySheet &)> prepare;
    /// Functions whose failure leaves its line, and the steps go on.
    QByteArrayList toldOnly = {};
    /// Functions that it calls both ways: checked at one place, unchecked at another.
    QByteArrayList bothWays = {};
};

QByteArray Bool(bool value)
{
    return value ? "true" : "false";
}

QByteArray Text(bool value, qint32 out)
{
    return Bool(value) + ' ' + QByteArray::number(out);
}

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

QVector<Operation> CompositionOperations()
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

QVector<Operation> ColumnOperations()
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

QVector<Operation> CellOperations()
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

QVector<Operation> Operations()
{
    return CompositionOperations() + ColumnOperations() + CellOperations();
}

void AddRows()
{
    QTest::addColumn<int>("number");
    const QVector<Operation> operations = Operations();
    for (int i = 0; i < operations.size(); ++i)
        QTest::newRow(operations[i].name) << i;
}

const Keys kKeys{ { 0, 1 }, { 4, 2 }, { 9, 3 } };

/// The functions that an operation calls when nothing fails, in order.
QByteArrayList CallsOf(const Operation &operation)
{
    LibrarySheet sheet(kKeys);
    if (operation.prepare)
        operation.prepare(sheet);
    sheet.host.GetTrace().Start();
    operation.run();
    QByteArrayList calls = sheet.host.GetTrace().Functions();
    if (qstrcmp(operation.name, "StartUndoGroup") == 0)
        GetVipLi()->EndUndoGroup();
    return calls;
}

} // namespace

void TestVipLiFaults::eachCallFailsOnce_data()
{
    AddRows();
}

void TestVipLiFaults::eachCallFailsOnce()
{
    QFETCH(int, number);
    const Operation operation = Operations()[number];
    QByteArrayList calls;
    for (const QByteArray &call : CallsOf(operation)) {
        if (!rostrum::FaultPlan::IsGiveBack(call.constData()))
            calls << call;
    }
    QVERIFY(!calls.isEmpty());

    for (int k = 1; k <= calls.size(); ++k) {
        const QByteArray where = "call " + QByteArray::number(k) + ", " + calls[k - 1];
        LibrarySheet sheet(kKeys);
        if (operation.prepare)
            operation.prepare(sheet);
        vnLog::Instance()->Clear();
        sheet.host.Faults().Clear();
        sheet.host.Faults().SpareGiveBacks(true);
        sheet.host.FailNth(k);

        const QByteArray answer = operation.run();

        sheet.host.Faults().Clear();
        const QByteArray log(vnLog::Instance()->Text());
        const QByteArray &failed = calls[k - 1];
        const bool told
            = log.startsWith("\r\n-ERR I- line ") && log.contains(", file(morvex/vnAE/");
        if (operation.unchecked.contains(failed))
            QVERIFY2(log == "<END>", where.constData());
        else if (operation.bothWays.contains(failed))
            QVERIFY2(told || log == "<END>", (where + " logs " + log).constData());
        else
            QVERIFY2(told, (where + " logs " + log).constData());
        if (!operation.unchecked.contains(failed) && !operation.toldOnly.contains(failed))
            QVERIFY2(answer == operation.failure, (where + " answers " + answer).constData());
        QCOMPARE(sheet.host.Account(), QByteArrayList());
    }
}

void TestVipLiFaults::eachSuiteIsMissingOnce_data()
{
    AddRows();
}

void TestVipLiFaults::eachSuiteIsMissingOnce()
{
    QFETCH(int, number);
    const Operation operation = Operations()[number];
    QByteArrayList pairs; // "name version" of what the operation acquires
    {
        LibrarySheet sheet(kKeys);
        if (operation.prepare)
            operation.prepare(sheet);
        sheet.host.GetTrace().Start();
        operation.run();
        for (const rostrum::TraceEntry &entry : sheet.host.GetTrace().Entries()) {
            const QByteArray pair
                = QByteArray(entry.suite) + '|' + QByteArray::number(entry.version);
            if (QByteArray(entry.function).startsWith("AEGP_") && !pairs.contains(pair))
                pairs << pair;
        }
        if (sheet.host.GetDocument().IsGroupOpen())
            GetVipLi()->EndUndoGroup();
    }
    QVERIFY(!pairs.isEmpty());

    for (const QByteArray &pair : qAsConst(pairs)) {
        LibrarySheet sheet(kKeys);
        if (operation.prepare)
            operation.prepare(sheet);
        sheet.host.Withhold(pair.split('|')[0], pair.split('|')[1].toInt());
        SuiteErr thrown = 0;
        try {
            operation.run();
        } catch (SuiteErr err) {
            thrown = err;
        }
        QCOMPARE(thrown, PF_Err_BAD_CALLBACK_PARAM);
        QCOMPARE(sheet.host.Account(), QByteArrayList()); // all that was acquired is released
        sheet.host.Faults().Clear();
    }
}

void TestVipLiFaults::aGivingBackThatFailsIsSurvived_data()
{
    AddRows();
}

void TestVipLiFaults::aGivingBackThatFailsIsSurvived()
{
    // What cannot be given back stays open, by definition; the answer is as if it had been.
    QFETCH(int, number);
    const Operation operation = Operations()[number];
    const QByteArrayList calls = CallsOf(operation);
    QByteArray expected;
    {
        LibrarySheet sheet(kKeys);
        if (operation.prepare)
            operation.prepare(sheet);
        expected = operation.run();
        if (sheet.host.GetDocument().IsGroupOpen())
            GetVipLi()->EndUndoGroup();
    }
    for (int k = 1; k <= calls.size(); ++k) {
        if (!rostrum::FaultPlan::IsGiveBack(calls[k - 1].constData()))
            continue;
        LibrarySheet sheet(kKeys);
        if (operation.prepare)
            operation.prepare(sheet);
        sheet.host.Faults().Clear();
        sheet.host.FailNth(k);
        QCOMPARE(operation.run(), expected);
        const QByteArrayList open = sheet.host.Account();
        QCOMPARE(open.size(), 1);
        testing::ExpectAtEnd({ "left open: " + open[0] });
    }
}

VN_HOST_TEST_MAIN(TestVipLiFaults)

#include "tst_vipli_faults.moc"
