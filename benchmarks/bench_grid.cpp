// The exposure sheet as a widget, without a host: what a rebuild costs, and what a command, a typed
// cell and a move of the current cell cost beside it.
#include "bench/Bench.h"
#include "bench/TraceOff.h"

#include "memorygrid/MemoryGrid.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <memory>

namespace {

constexpr int kColumns = 50; // the largest sheet that the panel shows
constexpr int kRows = 1500;
constexpr int kRounds = 15;

int Drawing(int col, int row)
{
    return 1 + (row / 3 + col) % 24; // on threes
}

std::unique_ptr<MemoryGrid> FullSheet()
{
    auto grid = std::make_unique<MemoryGrid>(kColumns, kRows);
    for (int col = 0; col < kColumns; ++col) {
        QVector<int> values(kRows);
        for (int row = 0; row < kRows; ++row)
            values[row] = Drawing(col, row);
        grid->SetColumn(col, values);
    }
    grid->RefreshGrid();
    grid->resize(900, 700);
    grid->show();
    grid->setCurrentCell(4, 2);
    grid->setFocus();
    QApplication::processEvents();
    return grid;
}

/// The least that shows a sheet of this size: a table, its items, its headers and row heights.
std::unique_ptr<QTableWidget> FillBareTable()
{
    auto bare = std::make_unique<QTableWidget>(kRows, kColumns);
    QTableWidget &table = *bare;
    QStringList rowLabels, colLabels;
    for (int row = 0; row < kRows; ++row)
        rowLabels << QString::number(row + 1);
    for (int col = 0; col < kColumns; ++col)
        colLabels << QStringLiteral("Layer %1").arg(col + 1);
    table.setVerticalHeaderLabels(rowLabels);
    table.setHorizontalHeaderLabels(colLabels);
    for (int col = 0; col < kColumns; ++col) {
        for (int row = 0; row < kRows; ++row)
            table.setItem(row, col, new QTableWidgetItem(QString::number(Drawing(col, row))));
        table.setColumnWidth(col, 48);
    }
    for (int row = 0; row < kRows; ++row)
        table.setRowHeight(row, 18);
    return bare;
}

void Key(QWidget *widget, int key, const QString &text = QString(),
    Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(widget, &press);
}

/// From the key that opens the editor to the table that shows the cell; the painting, which the
/// change of focus makes one of the whole window, comes after it and is not counted.
void TypeCell(MemoryGrid &grid)
{
    const int value = 1 + grid.GetCellValue(2, 4) % 8; // another one each time, of one digit
    Key(&grid, Qt::Key_0 + value, QString::number(value));
    if (auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget()))
        Key(editor, Qt::Key_Return, QStringLiteral("\r"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall); // the editor hands over later
    if (grid.GetCellValue(2, 4) != value || grid.item(4, 2)->text() != grid.GetCellText(2, 4))
        qFatal("a typed cell did not get to the table");
}

void Settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the closed editor
    QApplication::processEvents();
}

bench::Figures MeasureGrid()
{
    const bench::TraceOff traceOff;
    const std::unique_ptr<MemoryGrid> grid = FullSheet();
    const auto rebuild = [&] { grid->RefreshGrid(); };
    const auto rebuildAndPaint = [&] {
        grid->RefreshGrid();
        QApplication::processEvents();
    };

    bench::Figures figures;
    std::unique_ptr<QTableWidget> bare; // its end is not measured
    figures << bench::Compare(
        QStringLiteral("rebuild, nothing changed, over a bare fill"), 0.5, kRounds, rebuild,
        [&] { bare = FillBareTable(); }, [&] { bare.reset(); });
    figures << bench::Compare(
        QStringLiteral("a typed cell over a rebuild"), 1.5, kRounds, [&] { TypeCell(*grid); },
        rebuild, Settle);

    int step = 0;
    figures << bench::Compare(
        QStringLiteral("a moved current cell over a rebuild"), 0.5, kRounds,
        [&] {
            Key(grid.get(), ++step % 2 ? Qt::Key_Down : Qt::Key_Up);
            QApplication::processEvents();
        },
        rebuild);

    grid->clearSelection();
    grid->setCurrentCell(0, 3);
    figures << bench::Compare(
        QStringLiteral("Serie over 1500 rows over a rebuild"), 2.5, kRounds,
        [&] {
            grid->SetColumn(3, { 1 + ++step % 5 });
            Key(grid.get(), Qt::Key_G, QString(), Qt::ControlModifier);
            QApplication::processEvents();
        },
        rebuildAndPaint);
    return figures;
}

const bench::Registration registration("grid", MeasureGrid);

} // namespace
