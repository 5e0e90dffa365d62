#include "GridRobot.h"
#include "RecordingGrid.h"
#include "testing/TestMain.h"

#include <QHeaderView>
#include <QRandomGenerator>

namespace {

const Qt::KeyboardModifiers kCtrl = Qt::ControlModifier;
constexpr int kColumns = 5;
constexpr int kRows = 24;

/// All that a user can see of a sheet, and its cells.
QStringList Look(MemoryGrid &grid)
{
    QStringList look;
    look << QStringLiteral("current %1,%2").arg(grid.currentColumn()).arg(grid.currentRow());
    for (int col = 0; col < grid.columnCount(); ++col) {
        const QTableWidgetItem *header = grid.horizontalHeaderItem(col);
        look << QStringLiteral("column %1 %2 %3 %4")
                    .arg(col)
                    .arg(grid.columnWidth(col))
                    .arg(header->text(), header->background().color().name());
        for (int row = 0; row < grid.rowCount(); ++row) {
            const QTableWidgetItem *cell = grid.item(row, col);
            const QBrush brush = cell->background();
            look << QStringLiteral("%1,%2 %3 '%4' %5 %6 %7")
                        .arg(col)
                        .arg(row)
                        .arg(grid.GetCellValue(col, row))
                        .arg(cell->text(), brush.color().name())
                        .arg(brush.style())
                        .arg(cell->isSelected());
        }
    }
    for (int row = 0; row < grid.rowCount(); ++row) {
        const QTableWidgetItem *header = grid.verticalHeaderItem(row);
        look << QStringLiteral("row %1 %2 %3 %4")
                    .arg(row)
                    .arg(grid.verticalHeader()->sectionSize(row))
                    .arg(header->text(), header->background().color().name());
    }
    return look;
}

void FillSheet(MemoryGrid &grid, QRandomGenerator &dice)
{
    grid.SetSize(kColumns, kRows);
    for (int col = 0; col < kColumns; ++col) {
        QVector<int> values(kRows);
        for (int &value : values)
            value = dice.bounded(4); // few numbers, so that exposures and blanks come up
        grid.SetColumn(col, values);
        for (int row = 0; row < kRows; ++row)
            grid.SetKey(col, row, dice.bounded(6) == 0);
    }
    grid.notBlank = { 3 };
    grid.fixed = { 4 };
}

struct Command
{
    int key;
    Qt::KeyboardModifiers modifiers;
};

const Command kCommands[] = { { Qt::Key_Return, Qt::NoModifier }, { Qt::Key_G, kCtrl },
    { Qt::Key_H, kCtrl }, { Qt::Key_Home, Qt::NoModifier }, { Qt::Key_End, Qt::NoModifier },
    { Qt::Key_Insert, Qt::NoModifier }, { Qt::Key_Delete, Qt::NoModifier },
    { Qt::Key_Delete, kCtrl }, { Qt::Key_C, kCtrl }, { Qt::Key_X, kCtrl }, { Qt::Key_V, kCtrl } };

/// One thing that a user does, the same for any sheet of this size.
struct Deed
{
    explicit Deed(QRandomGenerator &dice)
        : fromCol(dice.bounded(kColumns))
        , fromRow(dice.bounded(kRows))
        , toCol(dice.bounded(2) ? fromCol : dice.bounded(kColumns))
        , toRow(dice.bounded(3) ? fromRow : dice.bounded(kRows))
        , kind(dice.bounded(int(std::size(kCommands)) + 3))
        , number(dice.bounded(30))
    { }

    void Do(MemoryGrid &grid, GridRobot &robot) const
    {
        robot.Drag(fromCol, fromRow, toCol, toRow);
        const int command = kind - 3;
        if (command >= 0)
            robot.Key(kCommands[command].key, kCommands[command].modifiers);
        else if (kind == 0)
            robot.Type(QString::number(number));
        else if (kind == 1)
            grid.SwapCols(fromCol, toCol);
        else
            MoveDocument(grid, robot);
    }

    void MoveDocument(MemoryGrid &grid, GridRobot &robot) const
    {
        grid.current = QPoint(toCol, fromRow);
        grid.SetKey(fromCol, fromRow, number % 2);
        grid.OnUpdate(number % 3 ? UpdCells : UpdCurrent, &robot);
    }

    int fromCol, fromRow, toCol, toRow;
    int kind;
    int number;
};

constexpr int kDeeds = 150;

/// What a row of deeds made of a sheet, after each of them.
struct Run
{
    QVector<QStringList> looks;
    QVector<QStringList> boxes;
    QStringList undoSteps;
    QImage picture; // at the end
    int changes = 0; // deeds after which something looked different
};

/// Does the deeds of a seed on the sheet of that seed. @param atOnce a rebuild a cell
Run RunDeeds(quint32 seed, bool atOnce)
{
    QRandomGenerator dice(seed);
    MemoryGrid grid;
    FillSheet(grid, dice);
    grid.SetRefreshAtOnce(atOnce);
    GridRobot robot(grid);
    Run run;
    QStringList before;
    for (int i = 0; i < kDeeds; ++i) {
        Deed(dice).Do(grid, robot);
        run.looks << Look(grid);
        run.boxes << robot.TakeBoxes();
        run.changes += run.looks.last() != before;
        before = run.looks.last();
    }
    run.undoSteps = grid.undoSteps;
    run.picture = grid.viewport()->grab().toImage();
    return run;
}

/// Counts what the table announces to whoever shows it.
struct ChangeCounter
{
    explicit ChangeCounter(QTableWidget &grid)
    {
        QObject::connect(
            grid.model(), &QAbstractItemModel::dataChanged, &grid, [this] { ++count; });
    }
    int count = 0;
};

} // namespace

class TestExpoGridRebuild : public QObject
{
    Q_OBJECT

private slots:
    void oneRebuildACommandShowsWhatARebuildACellShows_data();
    void oneRebuildACommandShowsWhatARebuildACellShows();
    void aCommandRebuildsOnceHoweverManyCellsItWrites();
    void theSwitchMakesEveryCellRebuildAtOnce();
    void outsideACommandARebuildWorksAtOnce();
    void aRebuildTouchesOnlyWhatDiffers();
    void aRebuildIsSilentTowardsTheItemSignals();
    void aRebuildSeesWhatOthersWroteIntoTheTable();
};

void TestExpoGridRebuild::oneRebuildACommandShowsWhatARebuildACellShows_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed : { 3u, 14u, 159u, 2653u })
        QTest::newRow(qPrintable(QStringLiteral("seed %1").arg(seed))) << seed;
}

void TestExpoGridRebuild::oneRebuildACommandShowsWhatARebuildACellShows()
{
    QFETCH(quint32, seed);
    const Run once = RunDeeds(seed, /*atOnce=*/false);
    const Run each = RunDeeds(seed, /*atOnce=*/true);

    QCOMPARE(once.looks.size(), kDeeds);
    for (int i = 0; i < kDeeds; ++i) {
        QCOMPARE(once.looks[i], each.looks[i]);
        QCOMPARE(once.boxes[i], each.boxes[i]);
    }
    QCOMPARE(once.undoSteps, each.undoSteps);
    QCOMPARE(once.picture, each.picture);
    QVERIFY(once.changes > kDeeds / 3); // the deeds did something
    QVERIFY(
        QSet<QString>(once.undoSteps.begin(), once.undoSteps.end()).size() > 8); // of every kind
}

void TestExpoGridRebuild::aCommandRebuildsOnceHoweverManyCellsItWrites()
{
    RecordingGrid grid(3, 200);
    grid.SetColumn(1, { 6 });
    GridRobot robot(grid);
    robot.Click(1, 0);
    grid.calls.clear();
    robot.Key(Qt::Key_G, kCtrl);
    QCOMPARE(grid.calls.filter(QStringLiteral("SetCellValue")).size(), 200);
    QCOMPARE(grid.Rebuilds(), 1);
    QCOMPARE(grid.Changes().last(), QStringLiteral("rebuild")); // the closing one
    QCOMPARE(robot.Shown(1).last(), QStringLiteral("205"));
}

void TestExpoGridRebuild::theSwitchMakesEveryCellRebuildAtOnce()
{
    RecordingGrid grid(3, 20);
    grid.SetColumn(1, { 6 });
    grid.SetRefreshAtOnce(true);
    GridRobot robot(grid);
    robot.Click(1, 0);
    grid.calls.clear();
    robot.Key(Qt::Key_G, kCtrl);
    QCOMPARE(grid.Rebuilds(), 21); // one a cell and the closing one
}

void TestExpoGridRebuild::outsideACommandARebuildWorksAtOnce()
{
    RecordingGrid grid(3, 20);
    GridRobot robot(grid);
    robot.Click(1, 4);
    robot.Key(Qt::Key_Insert); // a command has run before
    grid.calls.clear();
    grid.SetCellValue(7, 2, 5);
    QCOMPARE(grid.Rebuilds(), 1);
    QCOMPARE(grid.item(7, 2)->text(), QStringLiteral("5"));
    grid.FillCells(2, 10, 3, 9); // a helper alone is no command
    QCOMPARE(grid.Rebuilds(), 4);
}

void TestExpoGridRebuild::aRebuildTouchesOnlyWhatDiffers()
{
    RecordingGrid grid(3, 20);
    grid.SetColumn(1, { 4, 5, 6 });
    GridRobot robot(grid);
    robot.Click(0, 10);
    ChangeCounter changes(grid);

    grid.RefreshGrid();
    QCOMPARE(changes.count, 0);
    grid.SetColumn(1, { 4, 7, 6 });
    grid.RefreshGrid();
    QCOMPARE(changes.count, 1); // a text
    grid.SetKey(2, 15, true);
    grid.RefreshGrid();
    QCOMPARE(changes.count, 2); // a brush
    grid.SetKey(2, 15, false);
    grid.SetColumn(1, { 4, 5, 6 });
    grid.RefreshGrid();
    QCOMPARE(changes.count, 4);
}

void TestExpoGridRebuild::aRebuildIsSilentTowardsTheItemSignals()
{
    RecordingGrid grid(3, 20);
    GridRobot robot(grid);
    robot.Click(2, 17);
    int heard = 0;
    connect(&grid, &QTableWidget::cellChanged, this, [&] { ++heard; });
    connect(&grid, &QTableWidget::itemChanged, this, [&] { ++heard; });
    connect(&grid, &QTableWidget::currentCellChanged, this, [&] { ++heard; });
    grid.calls.clear();
    grid.SetColumn(0, { 1, 2, 3 });
    grid.SetSize(2, 9); // the current cell goes
    grid.RefreshGrid();
    QCOMPARE(heard, 0);
    QCOMPARE(grid.Changes(), QStringList{ QStringLiteral("rebuild") });
}

void TestExpoGridRebuild::aRebuildSeesWhatOthersWroteIntoTheTable()
{
    RecordingGrid grid(3, 20);
    grid.SetColumn(1, { 4, 5, 6 });
    GridRobot robot(grid);
    const QBrush plain = grid.item(1, 1)->background();
    {
        const QSignalBlocker quiet(&grid);
        grid.item(1, 1)->setText(QStringLiteral("77"));
        grid.item(1, 1)->setBackground(Qt::green);
        grid.setItem(2, 1, new QTableWidgetItem(QStringLiteral("a plain item")));
    }
    grid.RefreshGrid();
    QCOMPARE(grid.item(1, 1)->text(), QStringLiteral("5"));
    QCOMPARE(grid.item(1, 1)->background(), plain);
    QCOMPARE(grid.item(2, 1)->text(), QStringLiteral("6"));
    QCOMPARE(grid.item(2, 1)->background(), plain);
}

VN_TEST_MAIN(TestExpoGridRebuild)
#include "tst_expogrid_rebuild.moc"
