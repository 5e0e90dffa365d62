#include "SheetSession.h"
#include "TraceLinesOff.h"
#include "shell/SuiteHandler.h"
#include "support/vnLog.h"

#include <functional>

/// Every command of the sheet with each of its host calls failing. Whatever fails, the undo group is
/// closed, but for that of a reload that fails; no handle stays open; no layer changes but those
/// that the command is for; and the next reload shows what the host holds.
class TestSheetFaults : public QObject
{
    Q_OBJECT

private slots:
    void eachCallFailsOnce_data();
    void eachCallFailsOnce();
    void eachFunctionFailsForGood_data();
    void eachFunctionFailsForGood();
    void theEndOfTheGroupFails_data();
    void theEndOfTheGroupFails();
    void eachSuiteIsMissing_data();
    void eachSuiteIsMissing();
    void aReloadOfACompositionThatIsGoneLeavesItsGroupOpen();
    void aReloadWhoseColumnIsNotSelectedHasReadThoseBefore();
};

namespace {

const int kFrames = 6;
const QByteArrayList kOpenGroup{ "undo group" }; // in the words of the host's account

/// The operations work on columns 0 and 1; column 3 is a series, too, so that a cell may get there
/// by mistake.
SheetPlan Columns()
{
    const QString psd = QStringLiteral("psd");
    return { SeriesColumn("walk", 9, { { 0, 4 }, { 1, 3 }, { 3, 7 } }),
        SeriesColumn("run", 9, { { 0, 2 }, { 4, 5 } }, psd), StillColumn("sky.png"),
        SeriesColumn("jump", 9, { { 0, 1 }, { 2, 6 } }, psd) };
}

struct Operation
{
    const char *name;
    QByteArray group; // the name of its undo group
    /// What is selected first: the current cell is the lower right one.
    int left, top, right, bottom;
    /// Runs it as the user does.
    std::function<void(BoundSheet &)> run;
    /// Runs it with no event between, so that what is thrown can be caught here.
    std::function<void(BoundSheet &)> runDirectly;

    bool IsReload() const { return group == "morvex:Reload"; }
};

bool reloadAnswer = false; // of the last reload that was run as an operation

std::function<void(BoundSheet &)> Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return [=](BoundSheet &sheet) {
        QTest::keyClick(&sheet.grid, static_cast<Qt::Key>(key), modifiers);
    };
}

QVector<Operation> Operations()
{
    const Qt::KeyboardModifiers ctrl = Qt::ControlModifier;
    const auto reload = [](BoundSheet &sheet) { reloadAnswer = sheet.grid.UpdateFromCompo(); };
    const auto typeOver
        = [](BoundSheet &sheet) { sheet.grid.item(1, 0)->setText(QStringLiteral("5")); };
    const auto typeDirectly = [](BoundSheet &sheet) {
        {
            const QSignalBlocker quiet(&sheet.grid);
            sheet.grid.item(1, 0)->setText(QStringLiteral("5"));
        }
        sheet.grid.OnCellChanged(1, 0);
    };
    return {
        { "Reload", "morvex:Reload", 0, 1, 0, 1, reload, reload },
        { "EditCell", "morvex:EditCell", 0, 1, 0, 1, typeOver, typeDirectly },
        { "Repeat", "morvex:Repeat", 0, 1, 0, 1, Press(Qt::Key_Return),
            [](BoundSheet &sheet) { sheet.grid.OnRepeat(); } },
        { "Serie", "morvex:Serie", 0, 0, 0, 1, Press(Qt::Key_G, ctrl),
            [](BoundSheet &sheet) { sheet.grid.OnSerie(); } },
        { "Cycle", "morvex:Cycle", 0, 1, 0, 3, Press(Qt::Key_H, ctrl),
            [](BoundSheet &sheet) { sheet.grid.OnCycle(); } },
        { "StartExpo", "morvex:StartExpo", 0, 2, 1, 2, Press(Qt::Key_Home),
            [](BoundSheet &sheet) { sheet.grid.OnStartExpo(); } },
        { "EndExpo", "morvex:EndExpo", 0, 2, 1, 2, Press(Qt::Key_End),
            [](BoundSheet &sheet) { sheet.grid.OnEndExpo(); } },
        { "Insert Bloc", "morvex:Insert Bloc", 0, 1, 1, 2, Press(Qt::Key_Insert),
            [](BoundSheet &sheet) { sheet.grid.OnInsert(); } },
        { "Remove Bloc", "morvex:Remove Bloc", 0, 1, 1, 2, Press(Qt::Key_Delete, ctrl),
            [](BoundSheet &sheet) { sheet.grid.OnRemove(); } },
        { "Clear Bloc", "morvex:Delete Bloc", 0, 1, 1, 3, Press(Qt::Key_Delete),
            [](BoundSheet &sheet) { sheet.grid.OnDelete(); } },
        { "Cut", "morvex:Cut", 0, 1, 0, 3, Press(Qt::Key_X, ctrl),
            [](BoundSheet &sheet) { sheet.grid.OnCut(); } },
        { "Paste", "morvex:Paste", 0, 2, 0, 2, Press(Qt::Key_V, ctrl),
            [](BoundSheet &sheet) { sheet.grid.OnPaste(); } },
    };
}

/// The sheet as an operation finds it, loaded and with its cells selected, not shown.
class SweptSheet : public BoundSheet
{
public:
    explicit SweptSheet(const Operation &operation) : BoundSheet(Columns(), kFrames)
    {
        grid.UpdateFromCompo();
        Select(1, 3, 1, 5);
        grid.OnCopy(); // for Paste: 2, 5, 5
        Select(operation.left, operation.top, operation.right, operation.bottom);
        GetVipLi()->SetCurrentColumn(3); // as behind a rebuild
        vnLog::Instance()->Clear();
        host.Faults().Clear();
        before = Doc().GetProject();
    }

    rostrum::Project before;

private:
    void Select(int left, int top, int right, int bottom)
    {
        grid.clearSelection();
        grid.setCurrentCell(bottom, right, QItemSelectionModel::NoUpdate);
        grid.SelectBloc(left, right, top, bottom);
    }
};

void AddRows()
{
    QTest::addColumn<int>("number");
    const QVector<Operation> operations = Operations();
    for (int i = 0; i < operations.size(); ++i)
        QTest::newRow(operations[i].name) << i;
}

/// What an operation calls when nothing fails, what gives back left out.
QByteArrayList CallsOf(const Operation &operation)
{
    SweptSheet sheet(operation);
    sheet.host.GetTrace().Start();
    operation.run(sheet);
    QByteArrayList calls;
    for (const QByteArray &call : sheet.host.GetTrace().Functions()) {
        if (!rostrum::FaultPlan::IsGiveBack(call.constData()))
            calls << call;
    }
    return calls;
}

/// @return what is wrong right behind the operation
QByteArray StateError(SweptSheet &sheet, const Operation &operation, bool groupFailed)
{
    const bool mayBeOpen = operation.IsReload() && !reloadAnswer && !groupFailed;
    if (sheet.Doc().IsGroupOpen() != mayBeOpen)
        return mayBeOpen ? "the group is closed" : "the group is open";
    const QByteArrayList open = sheet.host.Account();
    if (open != (mayBeOpen ? kOpenGroup : QByteArrayList()))
        return "open: " + open.join(", ");
    const QByteArray log(vnLog::Instance()->Text());
    const bool isTold
        = log.contains("-ERR B- line ") && log.contains(", file(morvex/panel/WinGridDataAE.cpp)");
    if (operation.IsReload() && isTold == reloadAnswer)
        return "the log tells another answer: " + log;

    sheet.host.ReturnToEventLoop();
    const QByteArrayList complaints = sheet.host.TakeComplaints();
    QByteArrayList expected;
    if (groupFailed && (!operation.IsReload() || reloadAnswer))
        expected << "AEGP_EndUndoGroup: no undo group is open";
    if (mayBeOpen)
        expected << "undo group \"morvex:Reload\" was left open";
    return complaints == expected ? QByteArray() : "complaints: " + complaints.join(", ");
}

/// @return what is wrong with the project and its history
QByteArray ProjectError(SweptSheet &sheet, const Operation &operation, bool groupFailed)
{
    const bool isChanged = sheet.Doc().GetProject() != sheet.before;
    if (isChanged && operation.IsReload())
        return "a reload has changed the project";
    for (int col = operation.right + 1; col < sheet.plan.size(); ++col) {
        const rostrum::Layer *layer = sheet.before.FindLayer(sheet.composition, sheet.layers[col]);
        if (!(sheet.LayerOf(col) == *layer))
            return "another layer changed: column " + QByteArray::number(col);
    }
    const QVector<QByteArray> names = sheet.Doc().UndoNames();
    if (names.size() != (isChanged ? 1 : 0))
        return QByteArray::number(names.size()) + " entries in the history";
    if (isChanged && !groupFailed && names[0] != operation.group)
        return "the entry is called " + names[0];
    return {};
}

/// @return what is wrong with the sheet after a reload in which nothing fails
QByteArray ReloadError(SweptSheet &sheet)
{
    if (!sheet.grid.UpdateFromCompo())
        return "the next reload fails";
    const SheetModel model = ModelOf(sheet);
    if (sheet.grid.columnCount() != sheet.plan.size() || sheet.grid.rowCount() != kFrames)
        return "the table has another size";
    for (int col = 0; col < sheet.plan.size(); ++col) {
        if (sheet.Table(col) != model.columns[col].cells)
            return "column " + QByteArray::number(col) + " is not what the host holds";
        if (sheet.Shown(col) != model.Texts(col))
            return "column " + QByteArray::number(col) + " does not show what the host holds";
    }
    if (sheet.Doc().IsGroupOpen() || !sheet.host.Account().isEmpty())
        return "the next reload leaves something open";
    return sheet.host.TakeComplaints().join(", ");
}

/// All checks behind an operation with a fault in it.
QByteArray ErrorBehind(SweptSheet &sheet, const Operation &operation, bool groupFailed)
{
    QByteArray error = StateError(sheet, operation, groupFailed);
    if (error.isEmpty())
        error = ProjectError(sheet, operation, groupFailed);
    return error.isEmpty() ? ReloadError(sheet) : error;
}

} // namespace

void TestSheetFaults::eachCallFailsOnce_data()
{
    AddRows();
}

void TestSheetFaults::eachCallFailsOnce()
{
    QFETCH(int, number);
    const TraceLinesOff quiet;
    const Operation operation = Operations()[number];
    const QByteArrayList calls = CallsOf(operation);
    QVERIFY(calls.size() > 30);
    for (int k = 0; k < calls.size(); ++k) {
        SweptSheet sheet(operation);
        sheet.host.Faults().SpareGiveBacks(true);
        sheet.host.FailNth(k + 1);
        operation.run(sheet);
        sheet.host.Faults().Clear();
        const bool groupFailed = calls[k] == "AEGP_StartUndoGroup";
        const QByteArray error = ErrorBehind(sheet, operation, groupFailed);
        QVERIFY2(
            error.isEmpty(), (calls[k] + ", call " + QByteArray::number(k + 1) + ": " + error));
    }
}

void TestSheetFaults::eachFunctionFailsForGood_data()
{
    AddRows();
}

void TestSheetFaults::eachFunctionFailsForGood()
{
    QFETCH(int, number);
    const TraceLinesOff quiet;
    const Operation operation = Operations()[number];
    const QByteArrayList calls = CallsOf(operation);
    for (const QByteArray &function : QSet<QByteArray>(calls.begin(), calls.end())) {
        SweptSheet sheet(operation);
        sheet.host.FailEvery(function);
        operation.run(sheet);
        sheet.host.Faults().Clear();
        const bool groupFailed = function == "AEGP_StartUndoGroup";
        const QByteArray error = ErrorBehind(sheet, operation, groupFailed);
        QVERIFY2(error.isEmpty(), (function + ": " + error));
    }
}

void TestSheetFaults::theEndOfTheGroupFails_data()
{
    AddRows();
}

void TestSheetFaults::theEndOfTheGroupFails()
{
    // What the host does not close when it is asked to, it closes by itself.
    QFETCH(int, number);
    const TraceLinesOff quiet;
    const Operation operation = Operations()[number];
    SweptSheet sheet(operation);
    sheet.host.FailNext("AEGP_EndUndoGroup");
    operation.run(sheet);
    sheet.host.Faults().Clear();
    QCOMPARE(sheet.host.Account(), kOpenGroup);
    sheet.host.ReturnToEventLoop();
    QCOMPARE(sheet.host.TakeComplaints(),
        QByteArrayList{ "undo group \"" + operation.group + "\" was left open" });
    QCOMPARE(ReloadError(sheet), QByteArray());
}

void TestSheetFaults::eachSuiteIsMissing_data()
{
    AddRows();
}

void TestSheetFaults::eachSuiteIsMissing()
{
    QFETCH(int, number);
    const TraceLinesOff quiet;
    const Operation operation = Operations()[number];
    QByteArrayList suites; // "name|version" of what the operation uses
    {
        SweptSheet sheet(operation);
        sheet.host.GetTrace().Start();
        operation.runDirectly(sheet);
        for (const rostrum::TraceEntry &entry : sheet.host.GetTrace().Entries()) {
            const QByteArray suite
                = QByteArray(entry.suite) + '|' + QByteArray::number(entry.version);
            if (QByteArray(entry.function).startsWith("AEGP_") && !suites.contains(suite))
                suites << suite;
        }
    }
    QVERIFY(suites.size() > 4);
    for (const QByteArray &suite : qAsConst(suites)) {
        SweptSheet sheet(operation);
        sheet.host.Withhold(suite.split('|')[0], suite.split('|')[1].toInt());
        SuiteErr thrown = 0;
        try {
            operation.runDirectly(sheet);
        } catch (SuiteErr error) {
            thrown = error;
        }
        sheet.host.Faults().Clear();
        QCOMPARE(thrown, PF_Err_BAD_CALLBACK_PARAM);
        QVERIFY2(!sheet.Doc().IsGroupOpen(), suite.constData());
        QCOMPARE(sheet.host.Account(), QByteArrayList());
        QCOMPARE(sheet.host.TakeComplaints(), QByteArrayList());
        QVERIFY(!sheet.grid.signalsBlocked());
        QVERIFY2(ReloadError(sheet).isEmpty(), suite.constData());
    }
}

void TestSheetFaults::aReloadOfACompositionThatIsGoneLeavesItsGroupOpen()
{
    BoundSheet sheet(Columns(), kFrames);
    sheet.Show();
    const QStringList shown = sheet.Shown(0);
    sheet.SelectCompo("another scene");
    GetVipLi()->Compo = sheet.Comp(); // the one that it has just left
    vnLog::Instance()->Clear();
    QVERIFY(!sheet.grid.UpdateFromCompo());
    QVERIFY(QByteArray(vnLog::Instance()->Text()).startsWith("\r\n-ERR B- line "));
    QVERIFY(QByteArray(vnLog::Instance()->Text())
                .endsWith(", file(morvex/panel/WinGridDataAE.cpp)<END>"));
    QCOMPARE(sheet.Shown(0), shown); // the table as before
    QVERIFY(sheet.Doc().IsGroupOpen());
    sheet.host.ReturnToEventLoop();
    QCOMPARE(sheet.host.TakeComplaints(),
        QByteArrayList{ "undo group \"morvex:Reload\" was left open" });
}

void TestSheetFaults::aReloadWhoseColumnIsNotSelectedHasReadThoseBefore()
{
    BoundSheet sheet(Columns(), kFrames);
    sheet.Show();
    const QStringList shown = sheet.Shown(0);
    sheet.SetRemapKeys(sheet.layers[0], { { 0, 8 } });
    sheet.SetRemapKeys(sheet.layers[1], { { 0, 8 } });
    sheet.EditProject().EditComposition(sheet.composition)->duration = { 4, 25 };
    sheet.Doc().CloseLooseEnds();
    sheet.host.FailNext("AEGP_CollectionPushBack");
    sheet.Doc().view.selections[sheet.composition]
        = { sheet.layers[0] }; // column 1 needs selecting
    QVERIFY(!sheet.grid.UpdateFromCompo());
    QCOMPARE(sheet.grid.GetNbl(), 4);
    QCOMPARE(sheet.Table(0).mid(0, 4), QVector<int>(4, 8));
    QCOMPARE(sheet.Table(1).mid(0, 4), QVector<int>(4, 2));
    QCOMPARE(sheet.Shown(0), shown); // no rebuild
    sheet.host.ReturnToEventLoop();
    QCOMPARE(sheet.host.TakeComplaints().size(), 1);
    QVERIFY(sheet.grid.UpdateFromCompo());
    QCOMPARE(sheet.grid.rowCount(), 4);
}

VN_HOST_TEST_MAIN(TestSheetFaults)
#include "tst_sheet_faults.moc"
