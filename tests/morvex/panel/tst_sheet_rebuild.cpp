#include "SheetSession.h"
#include "TraceLinesOff.h"

#include <QHeaderView>
#include <QSet>

/// One rebuild a command over the host: what is seen and what the project becomes are the same as
/// with a rebuild for each cell that a command pushes.
class TestSheetRebuild : public QObject
{
    Q_OBJECT

private slots:
    void oneRebuildACommandIsSeenAsARebuildACell_data();
    void oneRebuildACommandIsSeenAsARebuildACell();
    void aCommandMarksEachColumnOnce();
};

namespace {

constexpr int kSteps = 160;

/// All that a user can see of the sheet.
QStringList Look(BoundSheet &sheet)
{
    const WinGridDataAE &grid = sheet.grid;
    QStringList look{
        QStringLiteral("current %1,%2").arg(grid.currentColumn()).arg(grid.currentRow())
    };
    for (int col = 0; col < grid.columnCount(); ++col) {
        const QTableWidgetItem *header = grid.horizontalHeaderItem(col);
        look << header->text() << header->background().color().name();
        for (int row = 0; row < grid.rowCount(); ++row) {
            const QTableWidgetItem *cell = grid.item(row, col);
            look << QStringLiteral("%1,%2 '%3' %4 %5 %6")
                        .arg(col)
                        .arg(row)
                        .arg(cell->text(), cell->background().color().name())
                        .arg(cell->background().style())
                        .arg(cell->isSelected());
        }
    }
    for (int row = 0; row < grid.rowCount(); ++row)
        look << grid.verticalHeaderItem(row)->background().color().name();
    return look;
}

struct Run
{
    QVector<QStringList> looks; // after each step
    QVector<QStringList> boxes;
    QVector<rostrum::Project> projects;
    QVector<QByteArray> undoNames; // at the end
    QImage picture; // at the end
};

/// Does the steps of a seed. @param atOnce a rebuild for each cell
Run RunSteps(quint32 seed, bool atOnce)
{
    int frames = 0;
    const SheetPlan plan = RandomPlan(seed, &frames);
    BoundSheet sheet(plan, frames);
    for (int i = 0; i < 6; ++i) // key marks, which each rebuild reads anew
        sheet.EditLayerOf(i % plan.size(), "by hand").position.InsertKey({ 2 * i, 25 }, {});
    sheet.Doc().CloseLooseEnds();
    sheet.grid.SetRefreshAtOnce(atOnce);
    sheet.Show();
    Run run;
    for (const SheetStep &step : RandomSteps(seed, kSteps, plan.size(), frames)) {
        if (step.kind == SheetStep::Command)
            DoCommand(sheet, step);
        else if (step.kind == SheetStep::Undo)
            sheet.Doc().Undo();
        else if (step.kind == SheetStep::Redo)
            sheet.Doc().Redo();
        else if (step.kind != SheetStep::Reload)
            DoByHand(sheet, step);
        if (step.kind != SheetStep::Command)
            sheet.grid.UpdateFromCompo();
        run.looks << Look(sheet);
        run.boxes << sheet.Robot().TakeBoxes();
        run.projects << sheet.Doc().GetProject();
    }
    run.undoNames = sheet.Doc().UndoNames();
    run.picture = sheet.grid.viewport()->grab().toImage();
    return run;
}

} // namespace

void TestSheetRebuild::oneRebuildACommandIsSeenAsARebuildACell_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed : { 5u, 26u, 358u, 979u, 3238u, 46264u })
        QTest::newRow(qPrintable(QStringLiteral("seed %1").arg(seed))) << seed;
}

void TestSheetRebuild::oneRebuildACommandIsSeenAsARebuildACell()
{
    QFETCH(quint32, seed);
    const TraceLinesOff quiet;
    const Run once = RunSteps(seed, /*atOnce=*/false);
    const Run each = RunSteps(seed, /*atOnce=*/true);

    int changes = 0;
    QCOMPARE(once.looks.size(), kSteps);
    for (int i = 0; i < kSteps; ++i) {
        QCOMPARE(once.looks[i], each.looks[i]);
        QCOMPARE(once.boxes[i], each.boxes[i]);
        QVERIFY(once.projects[i] == each.projects[i]);
        changes += i > 0 && once.projects[i] != once.projects[i - 1];
    }
    QCOMPARE(once.undoNames, each.undoNames);
    QCOMPARE(once.picture, each.picture);
    QVERIFY(changes > kSteps / 4); // the steps did something
}

void TestSheetRebuild::aCommandMarksEachColumnOnce()
{
    for (const bool atOnce : { false, true }) {
        BoundSheet sheet({ SeriesColumn("walk", 9, { { 0, 4 } }), StillColumn("sky.png") }, 20);
        sheet.grid.SetRefreshAtOnce(atOnce);
        sheet.Show();
        sheet.Robot().Drag(0, 2, 0, 8);
        sheet.host.GetTrace().Start();
        sheet.Robot().Key(Qt::Key_Insert);
        const int marked = sheet.host.GetTrace().Count("AEGP_GetCompLayerByIndex")
            - sheet.host.GetTrace().Count("AEGP_GetActiveLayer");
        QCOMPARE(marked, 2 * (atOnce ? 19 : 1)); // 11 rows move, 7 are filled, and the closing one
    }
}

VN_HOST_TEST_MAIN(TestSheetRebuild)
#include "tst_sheet_rebuild.moc"
