#include "GridRobot.h"
#include "RecordingGrid.h"
#include "testing/TestMain.h"

#include <stdexcept>

using Cells = QVector<int>;

namespace {

const Qt::KeyboardModifiers kCtrl = Qt::ControlModifier;

QString Group(const char *name)
{
    return QStringLiteral("StartUndoGroup(morvex:%1)").arg(QLatin1String(name));
}

QString Write(int row, int col, int value)
{
    return QStringLiteral("SetCellValue(%1,%2,%3)").arg(row).arg(col).arg(value);
}

const QString kEndGroup = QStringLiteral("EndUndoGroup()");
const QString kRebuild = QStringLiteral("rebuild");

/// A sheet with two columns whose second is worked on, so that the two do not get mixed up.
struct Sheet
{
    explicit Sheet(const Cells &cells) : grid(3, cells.size())
    {
        grid.SetColumn(0, Cells(cells.size(), 71));
        grid.SetColumn(1, cells);
        grid.SetColumn(2, Cells(cells.size(), 72));
        robot.reset(new GridRobot(grid));
    }

    Cells Column() const { return grid.Column(1); }
    bool NeighboursAreUntouched() const
    {
        return grid.Column(0) == Cells(grid.Column(0).size(), 71)
            && grid.Column(2) == Cells(grid.Column(2).size(), 72);
    }

    RecordingGrid grid;
    QScopedPointer<GridRobot> robot;
};

} // namespace

class TestExpoGridCommands : public QObject
{
    Q_OBJECT

private slots:
    // the helpers
    void theNextChange_data();
    void theNextChange();
    void theNextChangeReadsOnceBehindTheLastRow();
    void fillWritesDownwardsAndIsClipped_data();
    void fillWritesDownwardsAndIsClipped();
    void fillTakesTheEmptyValueBeforeItLooksAtTheBounds();
    void insertPushesDown_data();
    void insertPushesDown();
    void removePullsUp_data();
    void removePullsUp();
    void copy_data();
    void copy();
    void helpersOutsideTheSheetAnswerFalse();

    // the commands
    void aCommandIsAGroupARebuildAndNoSignal_data();
    void aCommandIsAGroupARebuildAndNoSignal();
    void aWrongSelectionShowsTheMessage_data();
    void aWrongSelectionShowsTheMessage();
    void repeat_data();
    void repeat();
    void aSecondRepeatChangesNothing();
    void repeatOnTheLastRowIsAnEmptyStep();
    void repeatWantsTheCurrentCellOnTop();
    void repeatTakesARowThatBeginsAtTheCurrentCell();
    void serie_data();
    void serie();
    void serieDirectlyAboveAChangeRewritesTheSelectedCells();
    void serieOnABlankTopCellIsSilent();
    void serieOnAZeroOfAColumnWithoutBlankGoesOn();
    void serieWantsTheCurrentCell();
    void serieOverAsManyRowsAsTheSheetHas();
    void cycle_data();
    void cycle();
    void cycleThatReachesTheLastRowIsAnEmptyStep();
    void expoGoesToTheCurrentRowOfEveryColumn_data();
    void expoGoesToTheCurrentRowOfEveryColumn();
    void blockCommands_data();
    void blockCommands();
    void blockCommandsDoEachColumnInTurn();
    void insertAndRemoveKeepTheLength();
    void aFixedColumnTakesNoCell();
    void aHostThatGivesUpGetsItsGroupClosed();
};

void TestExpoGridCommands::theNextChange_data()
{
    QTest::addColumn<Cells>("cells");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("expected");
    QTest::newRow("blank rows do not end it") << Cells{ 4, 4, 0, 0, 7 } << 0 << 4;
    QTest::newRow("at the next row") << Cells{ 4, 5, 6 } << 0 << 1;
    QTest::newRow("from within") << Cells{ 4, 4, 4, 5 } << 1 << 3;
    QTest::newRow("none up to the end") << Cells{ 4, 4, 4 } << 0 << 3;
    QTest::newRow("from a blank row") << Cells{ 0, 0, 7, 8 } << 0 << 2;
    QTest::newRow("the last row") << Cells{ 4, 5, 6 } << 2 << 3;
    QTest::newRow("behind the end") << Cells{ 4, 5, 6 } << 3 << 3;
    QTest::newRow("far behind the end") << Cells{ 4, 5, 6 } << 30 << 3;
}

void TestExpoGridCommands::theNextChange()
{
    QFETCH(Cells, cells);
    QFETCH(int, row);
    MemoryGrid grid(2, cells.size());
    grid.SetColumn(1, cells);
    QTEST(grid.FindNextChange(1, row), "expected");
}

void TestExpoGridCommands::theNextChangeReadsOnceBehindTheLastRow()
{
    RecordingGrid grid(2, 3);
    grid.SetColumn(1, { 4, 4, 4 });
    QCOMPARE(grid.FindNextChange(1, 0), 3);
    QCOMPARE(grid.calls.count(QStringLiteral("GetCellValue(1,3)")), 1);
    QCOMPARE(grid.calls.count(QStringLiteral("GetCellValue(1,4)")), 0);
}

void TestExpoGridCommands::fillWritesDownwardsAndIsClipped_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("value");
    QTest::addColumn<Cells>("expected");
    QTest::newRow("within") << 1 << 2 << 9 << Cells{ 1, 9, 9, 4 };
    QTest::newRow("to the end") << 2 << 2 << 9 << Cells{ 1, 2, 9, 9 };
    QTest::newRow("beyond the end") << 2 << 20 << 9 << Cells{ 1, 2, 9, 9 };
    QTest::newRow("nothing") << 2 << 0 << 9 << Cells{ 1, 2, 3, 4 };
    QTest::newRow("a count below 0") << 2 << -3 << 9 << Cells{ 1, 2, 3, 4 };
    QTest::newRow("the empty value") << 1 << 2 << WExpoGrid::kFillEmpty << Cells{ 1, 5, 5, 4 };
    QTest::newRow("from above the sheet") << -2 << 3 << 9 << Cells{ 9, 2, 3, 4 };
}

void TestExpoGridCommands::fillWritesDownwardsAndIsClipped()
{
    QFETCH(int, row);
    QFETCH(int, count);
    QFETCH(int, value);
    RecordingGrid grid(2, 4);
    grid.emptyValue = 5;
    grid.SetColumn(1, { 1, 2, 3, 4 });
    QCOMPARE(grid.FillCells(1, row, count, value), true);
    QTEST(grid.Column(1), "expected");
    QCOMPARE(grid.Changes().filter(QStringLiteral("SetCellValue(-")), QStringList());
}

void TestExpoGridCommands::fillTakesTheEmptyValueBeforeItLooksAtTheBounds()
{
    RecordingGrid grid(2, 4);
    QCOMPARE(grid.FillCells(2, 0, 1, WExpoGrid::kFillEmpty), false);
    QCOMPARE(grid.calls.value(0), QStringLiteral("GetEmptyValue(2)"));
    QCOMPARE(grid.Changes(), QStringList());
}

void TestExpoGridCommands::insertPushesDown_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("count");
    QTest::addColumn<Cells>("expected");
    QTest::newRow("one in the middle") << 1 << 1 << Cells{ 1, 2, 2, 3, 4 };
    QTest::newRow("two at the top") << 0 << 2 << Cells{ 1, 1, 1, 2, 3 };
    QTest::newRow("at the end") << 4 << 1 << Cells{ 1, 2, 3, 4, 5 };
    QTest::newRow("more than there is below") << 3 << 9 << Cells{ 1, 2, 3, 4, 4 };
    QTest::newRow("none") << 1 << 0 << Cells{ 1, 2, 3, 4, 5 };
}

void TestExpoGridCommands::insertPushesDown()
{
    QFETCH(int, row);
    QFETCH(int, count);
    MemoryGrid grid(2, 5);
    grid.SetColumn(1, { 1, 2, 3, 4, 5 });
    QCOMPARE(grid.InsertCells(1, row, count), true);
    QTEST(grid.Column(1), "expected");
}

void TestExpoGridCommands::removePullsUp_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("count");
    QTest::addColumn<Cells>("expected");
    QTest::newRow("one in the middle") << 1 << 1 << Cells{ 1, 3, 4, 5, 0 };
    QTest::newRow("two at the top") << 0 << 2 << Cells{ 3, 4, 5, 0, 0 };
    QTest::newRow("at the end") << 4 << 1 << Cells{ 1, 2, 3, 4, 0 };
    QTest::newRow("all") << 0 << 5 << Cells{ 0, 0, 0, 0, 0 };
    QTest::newRow("more than the sheet") << 0 << 9 << Cells{ 0, 0, 0, 0, 0 };
}

void TestExpoGridCommands::removePullsUp()
{
    QFETCH(int, row);
    QFETCH(int, count);
    MemoryGrid grid(2, 5);
    grid.SetColumn(1, { 1, 2, 3, 4, 5 });
    grid.RemoveCells(1, row, count);
    QTEST(grid.Column(1), "expected");
}

void TestExpoGridCommands::copy_data()
{
    QTest::addColumn<int>("srcRow");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("dstCol");
    QTest::addColumn<int>("dstRow");
    QTest::addColumn<bool>("result");
    QTest::addColumn<Cells>("expected"); // the target column
    QTest::newRow("below itself") << 0 << 2 << 0 << 2 << true << Cells{ 1, 2, 1, 2, 5 };
    QTest::newRow("above itself") << 3 << 2 << 0 << 1 << true << Cells{ 1, 4, 5, 4, 5 };
    QTest::newRow("overlap by one") << 0 << 3 << 0 << 2 << false << Cells{ 1, 2, 3, 4, 5 };
    QTest::newRow("onto itself") << 1 << 2 << 0 << 1 << false << Cells{ 1, 2, 3, 4, 5 };
    QTest::newRow("the same rows of another column")
        << 1 << 2 << 1 << 1 << true << Cells{ 0, 2, 3, 0, 0 };
    QTest::newRow("the target ends first") << 0 << 3 << 1 << 3 << false << Cells{ 0, 0, 0, 1, 2 };
    QTest::newRow("the source ends first") << 3 << 4 << 1 << 0 << false << Cells{ 4, 5, 0, 0, 0 };
    QTest::newRow("nothing") << 0 << 0 << 1 << 2 << true << Cells{ 0, 0, 0, 0, 0 };
    QTest::newRow("to behind the end") << 0 << 0 << 1 << 5 << false << Cells{ 0, 0, 0, 0, 0 };
}

void TestExpoGridCommands::copy()
{
    QFETCH(int, srcRow);
    QFETCH(int, count);
    QFETCH(int, dstCol);
    QFETCH(int, dstRow);
    MemoryGrid grid(2, 5);
    grid.SetColumn(0, { 1, 2, 3, 4, 5 });
    QTEST(grid.CopyCells(0, srcRow, count, dstCol, dstRow), "result");
    QTEST(grid.Column(dstCol), "expected");
}

void TestExpoGridCommands::helpersOutsideTheSheetAnswerFalse()
{
    RecordingGrid grid(3, 5);
    QCOMPARE(grid.FillCells(3, 1, 1, 9), false);
    QCOMPARE(grid.FillCells(1, 5, 1, 9), false);
    QCOMPARE(grid.InsertCells(3, 1, 1), false);
    QCOMPARE(grid.InsertCells(1, 5, 1), false);
    QCOMPARE(grid.RemoveCells(3, 1, 1), false);
    QCOMPARE(grid.RemoveCells(1, 5, 1), false);
    QCOMPARE(grid.CopyCells(3, 1, 1, 1, 2), false);
    QCOMPARE(grid.CopyCells(1, 1, 1, 3, 2), false);
    QCOMPARE(grid.CopyCells(1, 5, 1, 2, 2), false);
    QCOMPARE(grid.CopyCells(1, 1, 1, 2, 5), false);
    QCOMPARE(grid.Changes(), QStringList());
}

void TestExpoGridCommands::aCommandIsAGroupARebuildAndNoSignal_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QStringList>("changes");
    const auto row = [](const char *name, int key, Qt::KeyboardModifiers modifiers,
                         const QStringList &changes) {
        QTest::newRow(name) << key << modifiers
                            << (QStringList{ Group(name) } << changes << kEndGroup << kRebuild);
    };
    // On row 1 of 4, 5, 5, 6.
    row("Repeat", Qt::Key_Return, Qt::NoModifier, { Write(2, 1, 5) });
    row("Serie", Qt::Key_G, kCtrl, { Write(1, 1, 5), Write(2, 1, 6) });
    row("Cycle", Qt::Key_H, kCtrl, { Write(2, 1, 5) });
    row("StartExpo", Qt::Key_Home, Qt::NoModifier,
        { QStringLiteral("SetStartExpo(1,1)"), Write(0, 1, 0) });
    row("EndExpo", Qt::Key_End, Qt::NoModifier,
        { QStringLiteral("SetEndExpo(1,1)"), Write(2, 1, 0), Write(3, 1, 0) });
    row("Insert Bloc", Qt::Key_Insert, Qt::NoModifier,
        { Write(3, 1, 5), Write(2, 1, 5), Write(1, 1, 5) });
    row("Remove Bloc", Qt::Key_Delete, kCtrl, { Write(1, 1, 5), Write(2, 1, 6), Write(3, 1, 0) });
    row("Delete Bloc", Qt::Key_Delete, Qt::NoModifier, { Write(1, 1, 0) });
    row("Cut", Qt::Key_X, kCtrl, { Write(1, 1, 0) });
    row("Paste", Qt::Key_V, kCtrl, {});
}

void TestExpoGridCommands::aCommandIsAGroupARebuildAndNoSignal()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    Sheet sheet({ 4, 5, 5, 6 });
    sheet.robot->Click(1, 1);
    sheet.grid.calls.clear();

    sheet.robot->Key(key, modifiers);

    QTEST(sheet.grid.Changes(), "changes");
    QVERIFY(sheet.NeighboursAreUntouched());
    QCOMPARE(sheet.robot->TakeBoxes(), QStringList());
}

void TestExpoGridCommands::aWrongSelectionShowsTheMessage_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("message");
    const auto row
        = [](const char *name, int key, Qt::KeyboardModifiers modifiers, const char *message) {
              QTest::newRow(name) << key << modifiers
                                  << QLatin1String("Warning: ") + QLatin1String(message);
          };
    row("Repeat", Qt::Key_Return, Qt::NoModifier, "Select only One Cell");
    row("Serie", Qt::Key_G, kCtrl, "Select only One Column");
    row("Cycle", Qt::Key_H, kCtrl, "Select only One Column");
    row("StartExpo", Qt::Key_Home, Qt::NoModifier, "Select only One Row");
    row("EndExpo", Qt::Key_End, Qt::NoModifier, "Select only One Row");
    row("Insert", Qt::Key_Insert, Qt::NoModifier, "Select only One Bloc");
    row("Remove", Qt::Key_Delete, kCtrl, "Select only One Bloc");
    row("Clear", Qt::Key_Delete, Qt::NoModifier, "Select only One Bloc");
    row("Cut", Qt::Key_X, kCtrl, "Select only One Column");
    row("Copy", Qt::Key_C, kCtrl, "Select only One Column");
}

void TestExpoGridCommands::aWrongSelectionShowsTheMessage()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(QString, message);
    Sheet sheet({ 4, 5, 5, 6 });
    sheet.robot->Drag(0, 1, 1, 2); // a block, which only Insert, Remove and Clear take,
    if (message.endsWith(QLatin1String("Bloc")))
        sheet.robot->Click(2, 3, kCtrl); // and two ranges, which nothing takes
    sheet.grid.calls.clear();

    sheet.robot->Key(key, modifiers);

    QCOMPARE(sheet.robot->TakeBoxes(), QStringList{ message });
    QCOMPARE(sheet.robot->lastIcon, QMessageBox::Warning);
    QCOMPARE(sheet.robot->lastButtons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(sheet.grid.calls, QStringList());
}

void TestExpoGridCommands::repeat_data()
{
    QTest::addColumn<Cells>("cells");
    QTest::addColumn<int>("row");
    QTest::addColumn<Cells>("expected");
    QTest::newRow("over the next exposure")
        << Cells{ 1, 2, 2, 2, 3, 3 } << 0 << Cells{ 1, 1, 1, 1, 3, 3 };
    QTest::newRow("from the end of its own exposure")
        << Cells{ 1, 1, 1, 1, 3, 3 } << 3 << Cells{ 1, 1, 1, 1, 1, 1 };
    QTest::newRow("over blanks too") << Cells{ 1, 2, 0, 0, 3 } << 0 << Cells{ 1, 1, 1, 1, 3 };
    QTest::newRow("over blanks up to the next drawing")
        << Cells{ 1, 0, 0, 3 } << 0 << Cells{ 1, 1, 1, 3 };
    QTest::newRow("a blank cell too") << Cells{ 0, 2, 2, 3 } << 0 << Cells{ 0, 0, 0, 3 };
    QTest::newRow("up to the sheet's end") << Cells{ 1, 2, 2 } << 0 << Cells{ 1, 1, 1 };
}

void TestExpoGridCommands::repeat()
{
    QFETCH(Cells, cells);
    QFETCH(int, row);
    Sheet sheet(cells);
    sheet.robot->Click(1, row);
    sheet.robot->Key(Qt::Key_Return);
    QTEST(sheet.Column(), "expected");
    QVERIFY(sheet.NeighboursAreUntouched());
}

void TestExpoGridCommands::aSecondRepeatChangesNothing()
{
    Sheet sheet({ 1, 2, 2, 2, 3, 3 });
    sheet.robot->Click(1, 0);
    sheet.robot->Key(Qt::Key_Return);
    sheet.robot->Key(Qt::Key_Return);
    QCOMPARE(sheet.Column(), (Cells{ 1, 1, 1, 1, 3, 3 }));
    QCOMPARE(sheet.grid.undoSteps.size(), 2);
}

void TestExpoGridCommands::repeatOnTheLastRowIsAnEmptyStep()
{
    Sheet sheet({ 1, 2, 3 });
    sheet.robot->Click(1, 2);
    sheet.grid.calls.clear();
    sheet.robot->Key(Qt::Key_Return);
    QCOMPARE(sheet.grid.Changes(), (QStringList{ Group("Repeat"), kEndGroup, kRebuild }));
}

void TestExpoGridCommands::repeatWantsTheCurrentCellOnTop()
{
    Sheet sheet({ 1, 2, 3, 4, 4, 5 });
    sheet.robot->Drag(1, 0, 1, 2); // downwards: the current cell is the lowest
    sheet.grid.calls.clear();
    sheet.robot->Key(Qt::Key_Return);
    QCOMPARE(sheet.robot->TakeBoxes(), QStringList{ QStringLiteral("Info: Erreur bizzare") });
    QCOMPARE(sheet.robot->lastIcon, QMessageBox::Information);
    QCOMPARE(sheet.grid.Changes(), QStringList());

    sheet.robot->Drag(1, 2, 1, 0); // upwards
    sheet.robot->Key(Qt::Key_Return);
    QCOMPARE(sheet.robot->TakeBoxes(), QStringList());
    QCOMPARE(sheet.Column(), (Cells{ 1, 1, 3, 4, 4, 5 }));
}

void TestExpoGridCommands::repeatTakesARowThatBeginsAtTheCurrentCell()
{
    Sheet sheet({ 1, 2, 2, 3 });
    sheet.robot->Drag(2, 0, 1, 0); // towards the left: the current cell is the first
    sheet.robot->Key(Qt::Key_Return);
    QCOMPARE(sheet.Column(), (Cells{ 1, 1, 1, 3 }));
    QVERIFY(sheet.NeighboursAreUntouched());
}

void TestExpoGridCommands::serie_data()
{
    QTest::addColumn<Cells>("selected");
    QTest::addColumn<int>("total");
    QTest::addColumn<Cells>("expected");
    const auto row = [](const char *name, const Cells &selected, const Cells &expected) {
        QTest::newRow(name) << selected << expected.size() << expected;
    };
    row("one cell", { 5 }, { 5, 6, 7, 8 });
    row("a step of two", { 1, 3 }, { 1, 3, 5, 7, 9 });
    row("runs of two", { 1, 1, 2 }, { 1, 1, 2, 2, 3, 3, 4 });
    row("a hold", { 4, 4 }, { 4, 4, 4, 4, 4 });
    row("downwards, which runs out", { 3, 2 }, { 3, 2, 1, 0, 0 });
    row("alternating", { 1, 10, 2 }, { 1, 10, 2, 11, 3, 12 });
    row("alternating with a hold", { 1, 10, 2, 10 }, { 1, 10, 2, 10, 3, 10 });
    row("what follows the first change is rewritten", { 1, 2, 5, 9 }, { 1, 2, 3, 4, 5 });
}

void TestExpoGridCommands::serie()
{
    QFETCH(Cells, selected);
    QFETCH(int, total);
    QFETCH(Cells, expected);
    // Rows above and below that must stay; the exposure of the last selected cell makes `total`.
    Cells cells{ 81, 82 };
    cells += selected;
    while (cells.size() < 2 + total)
        cells << selected.last();
    cells << 91 << 92;
    Sheet sheet(cells);
    sheet.robot->Drag(1, 2, 1, 1 + selected.size());

    sheet.robot->Key(Qt::Key_G, kCtrl);

    QCOMPARE(sheet.Column(), Cells({ 81, 82 }) + expected + Cells({ 91, 92 }));
    QVERIFY(sheet.NeighboursAreUntouched());
    QCOMPARE(sheet.robot->TakeBoxes(), QStringList());
}

void TestExpoGridCommands::serieDirectlyAboveAChangeRewritesTheSelectedCells()
{
    Sheet sheet({ 1, 2, 5, 9, 20 });
    sheet.robot->Drag(1, 0, 1, 3);
    sheet.grid.calls.clear();
    sheet.robot->Key(Qt::Key_G, kCtrl);
    QCOMPARE(sheet.grid.Changes(),
        (QStringList{ Group("Serie"), Write(0, 1, 1), Write(1, 1, 2), Write(2, 1, 3),
            Write(3, 1, 4), kEndGroup, kRebuild }));
}

void TestExpoGridCommands::serieOnABlankTopCellIsSilent()
{
    Sheet sheet({ 0, 2, 0, 0 });
    sheet.robot->Drag(1, 0, 1, 1);
    sheet.grid.calls.clear();
    sheet.robot->Key(Qt::Key_G, kCtrl);
    QCOMPARE(sheet.grid.Changes(), QStringList());
    QCOMPARE(sheet.robot->TakeBoxes(), QStringList());
}

void TestExpoGridCommands::serieOnAZeroOfAColumnWithoutBlankGoesOn()
{
    Sheet sheet({ 0, 0, 0, 7 });
    sheet.grid.notBlank = { 1 };
    sheet.robot->Click(1, 0);
    sheet.robot->Key(Qt::Key_G, kCtrl);
    QCOMPARE(sheet.Column(), (Cells{ 0, 1, 2, 7 }));
}

void TestExpoGridCommands::serieWantsTheCurrentCell()
{
    Sheet sheet({ 1, 2, 3, 4 });
    sheet.robot->Click(1, 2);
    sheet.grid.setCurrentCell(2, 0, QItemSelectionModel::NoUpdate); // the right row only
    sheet.grid.calls.clear();
    sheet.robot->Key(Qt::Key_G, kCtrl);
    QCOMPARE(sheet.robot->TakeBoxes(), QStringList{ QStringLiteral("Info: Erreur bizzare") });
    QCOMPARE(sheet.grid.Changes(), QStringList());
}

void TestExpoGridCommands::serieOverAsManyRowsAsTheSheetHas()
{
    constexpr int rows = 2000; // more than any composition that the panel shows
    RecordingGrid grid(1, rows);
    grid.SetColumn(0, { 3 });
    GridRobot robot(grid);
    robot.Click(0, 0);
    robot.Key(Qt::Key_G, kCtrl);
    QCOMPARE(grid.Column(0).first(), 3);
    QCOMPARE(grid.Column(0).last(), 2002);

    grid.selectColumn(0); // as many given as there are rows
    grid.setCurrentCell(rows - 1, 0, QItemSelectionModel::NoUpdate);
    robot.Key(Qt::Key_G, kCtrl);
    QCOMPARE(grid.Column(0).last(), 2002);
    QCOMPARE(robot.TakeBoxes(), QStringList());
}

void TestExpoGridCommands::cycle_data()
{
    QTest::addColumn<Cells>("cells");
    QTest::addColumn<int>("top");
    QTest::addColumn<int>("bottom");
    QTest::addColumn<Cells>("expected");
    QTest::newRow("the last piece is cut short") << Cells{ 1, 2, 3, 4, 4, 4, 4, 4, 4, 4, 5 } << 0
                                                 << 2 << Cells{ 1, 2, 3, 1, 2, 3, 1, 2, 3, 1, 5 };
    QTest::newRow("a one-row exposure below")
        << Cells{ 1, 2, 3, 4, 5, 5 } << 0 << 2 << Cells{ 1, 2, 3, 1, 5, 5 };
    QTest::newRow("whole pieces") << Cells{ 1, 2, 4, 4, 4, 4, 5 } << 0 << 1
                                  << Cells{ 1, 2, 1, 2, 1, 2, 5 };
    QTest::newRow("one cell") << Cells{ 9, 1, 4, 4, 5 } << 1 << 1 << Cells{ 9, 1, 1, 1, 5 };
    QTest::newRow("over blanks to the end")
        << Cells{ 1, 2, 0, 0, 0 } << 0 << 1 << Cells{ 1, 2, 1, 2, 1 };
}

void TestExpoGridCommands::cycle()
{
    QFETCH(Cells, cells);
    QFETCH(int, top);
    QFETCH(int, bottom);
    Sheet sheet(cells);
    sheet.robot->Drag(1, top, 1, bottom);
    sheet.robot->Key(Qt::Key_H, kCtrl);
    QTEST(sheet.Column(), "expected");
    QVERIFY(sheet.NeighboursAreUntouched());
}

void TestExpoGridCommands::cycleThatReachesTheLastRowIsAnEmptyStep()
{
    Sheet sheet({ 1, 2, 3 });
    sheet.robot->Drag(1, 1, 1, 2);
    sheet.grid.calls.clear();
    sheet.robot->Key(Qt::Key_H, kCtrl);
    QCOMPARE(sheet.grid.Changes(), (QStringList{ Group("Cycle"), kEndGroup, kRebuild }));
}

void TestExpoGridCommands::expoGoesToTheCurrentRowOfEveryColumn_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("start") << int(Qt::Key_Home)
                           << QStringList{ QStringLiteral("SetStartExpo(1,2)"),
                                  QStringLiteral("SetStartExpo(2,2)") };
    QTest::newRow("end") << int(Qt::Key_End)
                         << QStringList{ QStringLiteral("SetEndExpo(1,2)"),
                                QStringLiteral("SetEndExpo(2,2)") };
}

void TestExpoGridCommands::expoGoesToTheCurrentRowOfEveryColumn()
{
    QFETCH(int, key);
    Sheet sheet({ 1, 2, 3, 4 });
    sheet.robot->Drag(1, 2, 2, 2);
    sheet.grid.calls.clear();
    sheet.robot->Key(key);
    QTEST(sheet.grid.Changes().filter(QStringLiteral("Expo(")), "calls");
    QCOMPARE(sheet.grid.undoSteps.size(), 1); // one step for both

    // The row is the current one and not the selection's.
    sheet.grid.setCurrentCell(1, 0, QItemSelectionModel::NoUpdate);
    sheet.grid.calls.clear();
    sheet.robot->Key(key);
    QVERIFY(sheet.grid.Changes()
                .filter(QStringLiteral("Expo("))
                .first()
                .endsWith(QLatin1String("(1,1)")));
}

void TestExpoGridCommands::blockCommands_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<Cells>("expected");
    QTest::newRow("Insert Bloc") << int(Qt::Key_Insert) << Qt::KeyboardModifiers()
                                 << Cells{ 1, 1, 1 };
    QTest::newRow("Remove Bloc") << int(Qt::Key_Delete) << kCtrl << Cells{ 3, 0, 0 };
    QTest::newRow("Clear Bloc") << int(Qt::Key_Delete) << Qt::KeyboardModifiers()
                                << Cells{ 0, 0, 3 };
}

void TestExpoGridCommands::blockCommands()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    Sheet sheet({ 1, 2, 3 });
    sheet.robot->Drag(1, 1, 1, 0); // upwards is as good as downwards here
    sheet.robot->Key(key, modifiers);
    QTEST(sheet.Column(), "expected");
    QVERIFY(sheet.NeighboursAreUntouched());
}

void TestExpoGridCommands::blockCommandsDoEachColumnInTurn()
{
    Sheet sheet({ 1, 2, 3, 4 });
    sheet.robot->Drag(2, 2, 1, 1);
    sheet.grid.calls.clear();
    sheet.robot->Key(Qt::Key_Delete);
    QCOMPARE(sheet.grid.Changes(),
        (QStringList{ Group("Delete Bloc"), Write(1, 1, 0), Write(2, 1, 0), Write(1, 2, 0),
            Write(2, 2, 0), kEndGroup, kRebuild }));
}

void TestExpoGridCommands::insertAndRemoveKeepTheLength()
{
    Sheet sheet({ 1, 2, 3, 4 });
    sheet.robot->Drag(1, 1, 1, 2);
    sheet.robot->Key(Qt::Key_Insert);
    QCOMPARE(sheet.grid.rowCount(), 4);
    QCOMPARE(sheet.Column(), (Cells{ 1, 2, 2, 2 }));
    sheet.robot->Key(Qt::Key_Delete, kCtrl);
    QCOMPARE(sheet.grid.rowCount(), 4);
    QCOMPARE(sheet.Column(), (Cells{ 1, 2, 0, 0 }));
}

void TestExpoGridCommands::aFixedColumnTakesNoCell()
{
    Sheet sheet({ 1, 2, 3, 4 });
    sheet.grid.fixed = { 1 };
    sheet.robot->Click(1, 1);
    sheet.grid.calls.clear();
    sheet.robot->Key(Qt::Key_Delete);
    QCOMPARE(sheet.grid.Changes(),
        (QStringList{ Group("Delete Bloc"), Write(1, 1, 0), kEndGroup, kRebuild }));
    QCOMPARE(sheet.Column(), (Cells{ 1, 2, 3, 4 }));
}

void TestExpoGridCommands::aHostThatGivesUpGetsItsGroupClosed()
{
    struct ThrowingGrid : MemoryGrid
    {
        using MemoryGrid::MemoryGrid;
        bool SetCellValue(int, int, int) override { throw 516; } // a suite that is missing
    };
    ThrowingGrid grid(2, 4);
    GridRobot robot(grid);
    robot.Click(1, 2);
    int thrown = 0;
    try {
        grid.OnDelete();
    } catch (int number) {
        thrown = number;
    }
    QCOMPARE(thrown, 516);
    QCOMPARE(grid.openGroups, QStringList());
    QCOMPARE(grid.undoSteps, QStringList{ QStringLiteral("morvex:Delete Bloc") });

    grid.SetColumn(1, { 7 });
    grid.RefreshGrid(); // outside a command it works at once again
    QCOMPARE(grid.item(0, 1)->text(), QStringLiteral("7"));
    QVERIFY(!grid.signalsBlocked());
}

VN_TEST_MAIN(TestExpoGridCommands)
#include "tst_expogrid_commands.moc"
