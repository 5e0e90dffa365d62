// MemoryGrid: the exposure sheet over cells that are held in memory, for tests, the demo and the
// benchmark. It behaves like a sheet bound to a host: a cell equal to the one above shows " ~ ", a
// written cell asks for a rebuild, a column without cells of its own takes none.
#pragma once

#include "vnQT/wExpoGrid.h"

#include <QPoint>
#include <QSet>
#include <QStringList>
#include <QVector>

class MemoryGrid : public WExpoGrid
{
    Q_OBJECT

public:
    explicit MemoryGrid(int columns = 0, int rows = 0, QWidget *parent = nullptr);

    /// Gives the sheet another size; cells that stay keep their value. No rebuild.
    void SetSize(int columns, int rows);
    /// The cells of a column from the top; the others become 0. No rebuild.
    void SetColumn(int col, const QVector<int> &values);
    QVector<int> Column(int col) const { return cells[col]; }
    /// Sets or clears the key flag of a cell. No rebuild.
    void SetKey(int col, int row, bool on);

    void StartUndoGroup(QString name) override;
    void EndUndoGroup() override;
    QString GetColName(int col) override;
    int GetNbc() override { return cells.size(); }
    int GetNbl() override { return rows; }
    bool GetCurrentCell(int *col, int *row) override;
    bool SetCurrentCell(int row, int col) override;
    QString GetCellText(int col, int row) override;
    int GetCellValue(int col, int row) override;
    bool SetCellValue(int row, int col, int value) override;
    int GetColWidth() override { return colWidth; }
    quint8 GetCellKey(int col, int row) override;
    void LoadColKeys(int col) override { loadedCol = col; }
    void SetStartExpo(int col, int row) override;
    void SetEndExpo(int col, int row) override;
    void SwapCols(int colA, int colB) override;
    bool IsBlankCol(int col) override { return !notBlank.contains(col); }
    int GetEmptyValue(int col) override;

    QStringList names; // of the columns; those without one are "Layer 1" and so on
    int colWidth = 48; // pixels
    QPoint current{ -1, -1 }; // the document's current cell: x column, y row
    QSet<int> notBlank; // columns in which 0 is an ordinary drawing
    QSet<int> fixed; // columns that take no cell
    int emptyValue = 0; // of every column
    bool takes = true; // what SetCellValue answers
    QStringList undoSteps; // names of the groups that were closed
    QStringList openGroups;

private:
    bool Holds(int col, int row) const;

    QVector<QVector<int>> cells; // by column, then row
    QVector<QSet<int>> keys; // rows, by column
    int rows = 0;
    int loadedCol = -1;
};
