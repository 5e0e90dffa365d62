#include "MemoryGrid.h"

MemoryGrid::MemoryGrid(int columns, int rows, QWidget *parent) : WExpoGrid(parent)
{
    SetSize(columns, rows);
}

void MemoryGrid::SetSize(int columns, int rowCount)
{
    rows = rowCount;
    cells.resize(columns);
    keys.resize(columns);
    for (QVector<int> &column : cells)
        column.resize(rows);
}

void MemoryGrid::SetColumn(int col, const QVector<int> &values)
{
    cells[col] = values;
    cells[col].resize(rows);
}

void MemoryGrid::SetKey(int col, int row, bool on)
{
    if (on)
        keys[col].insert(row);
    else
        keys[col].remove(row);
}

bool MemoryGrid::Holds(int col, int row) const
{
    return col >= 0 && col < cells.size() && row >= 0 && row < rows;
}

void MemoryGrid::StartUndoGroup(QString name)
{
    openGroups << name;
}

void MemoryGrid::EndUndoGroup()
{
    undoSteps << (openGroups.isEmpty() ? QStringLiteral("unopened") : openGroups.takeLast());
}

QString MemoryGrid::GetColName(int col)
{
    return col < names.size() ? names[col] : QStringLiteral("Layer %1").arg(col + 1);
}

bool MemoryGrid::GetCurrentCell(int *col, int *row)
{
    if (*col == current.x() && *row == current.y())
        return false;
    *col = current.x();
    *row = current.y();
    return true;
}

bool MemoryGrid::SetCurrentCell(int row, int col)
{
    if (current == QPoint(col, row))
        return false;
    current = QPoint(col, row);
    return true;
}

QString MemoryGrid::GetCellText(int col, int row)
{
    const int value = cells[col][row];
    if (fixed.contains(col))
        return QStringLiteral(" - ");
    if (value == 0 && IsBlankCol(col))
        return QString();
    if (row > 0 && value == cells[col][row - 1])
        return QStringLiteral(" ~ ");
    return QString::number(value);
}

int MemoryGrid::GetCellValue(int col, int row)
{
    return Holds(col, row) ? cells[col][row] : 0;
}

bool MemoryGrid::SetCellValue(int row, int col, int value)
{
    if (fixed.contains(col))
        return true;
    if (!takes || !Holds(col, row))
        return false;
    cells[col][row] = value;
    RefreshGrid();
    return true;
}

quint8 MemoryGrid::GetCellKey(int col, int row)
{
    return loadedCol == col && keys[col].contains(row) ? 1 : 0;
}

void MemoryGrid::SetStartExpo(int col, int row)
{
    FillCells(col, 0, row, 0);
}

void MemoryGrid::SetEndExpo(int col, int row)
{
    FillCells(col, row + 1, rows - row - 1, 0);
}

void MemoryGrid::SwapCols(int colA, int colB)
{
    if (!Holds(colA, 0) || !Holds(colB, 0))
        return;
    cells[colA].swap(cells[colB]);
    keys[colA].swap(keys[colB]);
    RefreshGrid();
}

int MemoryGrid::GetEmptyValue(int)
{
    return emptyValue;
}
