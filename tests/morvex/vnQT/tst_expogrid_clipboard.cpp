#include "GridRobot.h"
#include "RecordingGrid.h"
#include "testing/TestMain.h"

#include <QClipboard>

#include <numeric>

using Cells = QVector<int>;

namespace {

const Qt::KeyboardModifiers kCtrl = Qt::ControlModifier;

Cells Clip(const RecordingGrid &grid)
{
    Cells values;
    for (int value : grid.clip)
        values << value;
    return values;
}

void FillSheet(RecordingGrid &grid)
{
    grid.SetSize(3, 6);
    grid.SetColumn(0, { 1, 2, 3, 4, 5, 6 });
    grid.SetColumn(1, { 11, 12, 13, 14, 15, 16 });
    grid.SetColumn(2, { 21, 22, 23, 24, 25, 26 });
}

} // namespace

class TestExpoGridClipboard : public QObject
{
    Q_OBJECT

private slots:
    void copyKeepsTheValuesFromTopToBottom();
    void copyIsNoUndoStepAndRebuildsNothing();
    void copyOfAWrongSelectionKeepsTheClipboard_data();
    void copyOfAWrongSelectionKeepsTheClipboard();
    void copyLeavesTheSystemClipboardAlone();
    void copyBeyondTheRoomGrowsAndAShorterOneKeepsTheRoom();
    void cutThenPasteRestoresTheColumn();
    void cutWritesTheEmptyValue();
    void pasteGoesToTheCurrentCellWhateverIsSelected();
    void pasteOfFiveOnTheSecondLastRowWritesTwo();
    void pasteAgainAndAgain();
    void pasteOfNothingIsAnEmptyStep();
    void pasteWithoutACurrentCellWritesNothing();
    void theClipboardSurvivesAnotherSheet();
};

void TestExpoGridClipboard::copyKeepsTheValuesFromTopToBottom()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(1, 2, 1, 4);
    robot.Key(Qt::Key_C, kCtrl);
    QCOMPARE(Clip(grid), (Cells{ 13, 14, 15 }));
}

void TestExpoGridClipboard::copyIsNoUndoStepAndRebuildsNothing()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(1, 2, 1, 4);
    grid.calls.clear();
    robot.Key(Qt::Key_C, kCtrl);
    QCOMPARE(grid.calls,
        (QStringList{ QStringLiteral("GetCellValue(1,2)"), QStringLiteral("GetCellValue(1,3)"),
            QStringLiteral("GetCellValue(1,4)") }));
}

void TestExpoGridClipboard::copyOfAWrongSelectionKeepsTheClipboard_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Copy") << int(Qt::Key_C);
    QTest::newRow("Cut") << int(Qt::Key_X);
}

void TestExpoGridClipboard::copyOfAWrongSelectionKeepsTheClipboard()
{
    QFETCH(int, key);
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    robot.Key(Qt::Key_C, kCtrl);
    grid.calls.clear();

    robot.Drag(0, 3, 1, 4);
    robot.Key(key, kCtrl);
    robot.Drag(2, 4, 2, 1); // upwards
    robot.Key(key, kCtrl);

    const QString warning = QStringLiteral("Warning: Select only One Column");
    QCOMPARE(robot.TakeBoxes(), (QStringList{ warning, warning }));
    QCOMPARE(Clip(grid), Cells{ 13 });
    QCOMPARE(grid.Changes().filter(QStringLiteral("Undo")), QStringList());
    QCOMPARE(grid.Column(2), (Cells{ 21, 22, 23, 24, 25, 26 }));
}

void TestExpoGridClipboard::copyLeavesTheSystemClipboardAlone()
{
    QApplication::clipboard()->setText(QStringLiteral("of another program"));
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    robot.Key(Qt::Key_C, kCtrl);
    robot.Key(Qt::Key_X, kCtrl);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("of another program"));
    robot.Key(Qt::Key_V, kCtrl);
    QCOMPARE(grid.Column(1)[2], 13);
}

void TestExpoGridClipboard::copyBeyondTheRoomGrowsAndAShorterOneKeepsTheRoom()
{
    RecordingGrid grid(1, 300);
    Cells values(300);
    std::iota(values.begin(), values.end(), 1);
    grid.SetColumn(0, values);
    GridRobot robot(grid);
    QCOMPARE(grid.clip.capacity(), 256);

    grid.selectColumn(0);
    grid.setCurrentCell(299, 0, QItemSelectionModel::NoUpdate);
    robot.Key(Qt::Key_C, kCtrl);
    QCOMPARE(Clip(grid), values);
    const int room = grid.clip.capacity();
    QVERIFY(room >= 300);

    grid.scrollToTop();
    robot.Drag(0, 3, 0, 5);
    robot.Key(Qt::Key_C, kCtrl);
    QCOMPARE(Clip(grid), (Cells{ 4, 5, 6 }));
    QCOMPARE(grid.clip.capacity(), room);
}

void TestExpoGridClipboard::cutThenPasteRestoresTheColumn()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(1, 2, 1, 4);
    robot.Key(Qt::Key_X, kCtrl);
    QCOMPARE(grid.Column(1), (Cells{ 11, 12, 0, 0, 0, 16 }));
    QCOMPARE(robot.Shown(1).mid(2, 3), (QStringList{ QString(), QString(), QString() }));

    robot.Click(1, 2);
    robot.Key(Qt::Key_V, kCtrl);
    QCOMPARE(grid.Column(1), (Cells{ 11, 12, 13, 14, 15, 16 }));
    QCOMPARE(grid.undoSteps,
        (QStringList{ QStringLiteral("morvex:Cut"), QStringLiteral("morvex:Paste") }));
}

void TestExpoGridClipboard::cutWritesTheEmptyValue()
{
    RecordingGrid grid;
    FillSheet(grid);
    grid.emptyValue = 7;
    GridRobot robot(grid);
    robot.Drag(1, 2, 1, 3);
    robot.Key(Qt::Key_X, kCtrl);
    QCOMPARE(grid.Column(1), (Cells{ 11, 12, 7, 7, 15, 16 }));
}

void TestExpoGridClipboard::pasteGoesToTheCurrentCellWhateverIsSelected()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(1, 0, 1, 1);
    robot.Key(Qt::Key_C, kCtrl);

    robot.Drag(0, 1, 2, 3); // three columns; the current cell is the last
    robot.Key(Qt::Key_V, kCtrl);
    QCOMPARE(robot.TakeBoxes(), QStringList()); // no test of the selection
    QCOMPARE(grid.Column(2), (Cells{ 21, 22, 23, 11, 12, 26 }));
    QCOMPARE(grid.Column(0), (Cells{ 1, 2, 3, 4, 5, 6 }));

    grid.clearSelection();
    grid.setCurrentCell(4, 0, QItemSelectionModel::NoUpdate);
    robot.Key(Qt::Key_V, kCtrl);
    QCOMPARE(grid.Column(0), (Cells{ 1, 2, 3, 4, 11, 12 }));
}

void TestExpoGridClipboard::pasteOfFiveOnTheSecondLastRowWritesTwo()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(1, 0, 1, 4);
    robot.Key(Qt::Key_C, kCtrl);
    robot.Click(2, 4);
    grid.calls.clear();
    robot.Key(Qt::Key_V, kCtrl);
    QCOMPARE(grid.Changes(),
        (QStringList{ QStringLiteral("StartUndoGroup(morvex:Paste)"),
            QStringLiteral("SetCellValue(4,2,11)"), QStringLiteral("SetCellValue(5,2,12)"),
            QStringLiteral("EndUndoGroup()"), QStringLiteral("rebuild") }));
}

void TestExpoGridClipboard::pasteAgainAndAgain()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(1, 0, 1, 1);
    robot.Key(Qt::Key_C, kCtrl);
    for (int row : { 0, 2, 4 }) {
        robot.Click(0, row);
        robot.Key(Qt::Key_V, kCtrl);
    }
    QCOMPARE(grid.Column(0), (Cells{ 11, 12, 11, 12, 11, 12 }));
}

void TestExpoGridClipboard::pasteOfNothingIsAnEmptyStep()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    grid.calls.clear();
    robot.Key(Qt::Key_V, kCtrl);
    QCOMPARE(grid.Changes(),
        (QStringList{ QStringLiteral("StartUndoGroup(morvex:Paste)"),
            QStringLiteral("EndUndoGroup()"), QStringLiteral("rebuild") }));
}

void TestExpoGridClipboard::pasteWithoutACurrentCellWritesNothing()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    robot.Key(Qt::Key_C, kCtrl);
    grid.SetSize(0, 0);
    grid.RefreshGrid();
    grid.calls.clear();
    robot.Key(Qt::Key_V, kCtrl);
    QCOMPARE(grid.Changes(),
        (QStringList{ QStringLiteral("StartUndoGroup(morvex:Paste)"),
            QStringLiteral("EndUndoGroup()") })); // no column whose rebuild would show
}

void TestExpoGridClipboard::theClipboardSurvivesAnotherSheet()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(1, 0, 1, 1);
    robot.Key(Qt::Key_C, kCtrl);
    grid.SetSize(0, 0);
    grid.RefreshGrid();
    grid.SetSize(2, 4);
    grid.RefreshGrid();
    robot.Click(0, 1);
    robot.Key(Qt::Key_V, kCtrl);
    QCOMPARE(grid.Column(0), (Cells{ 0, 11, 12, 0 }));
}

VN_TEST_MAIN(TestExpoGridClipboard)
#include "tst_expogrid_clipboard.moc"
