// RecordingGrid: a MemoryGrid that notes each virtual call in order, with its arguments, as
// "SetCellValue(7,2,5)". What reads the sheet is noted too; Changes() leaves that out, and puts one
// "rebuild" for each rebuild of the table.
#pragma once

#include "MemoryGrid.h"

class RecordingGrid : public MemoryGrid
{
    Q_OBJECT

public:
    explicit RecordingGrid(int columns = 0, int rows = 0, QWidget *parent = nullptr);

    /// Undo groups, cells, expo changes, current cell, signals and rebuilds, in order.
    QStringList Changes() const;
    int Rebuilds() const { return Changes().count(QStringLiteral("rebuild")); }

    void StartUndoGroup(QString name) override;
    void EndUndoGroup() override;
    QString GetColName(int col) override;
    int GetNbc() override;
    int GetNbl() override;
    bool GetCurrentCell(int *col, int *row) override;
    bool SetCurrentCell(int row, int col) override;
    QString GetCellText(int col, int row) override;
    int GetCellValue(int col, int row) override;
    bool SetCellValue(int row, int col, int value) override;
    int GetColWidth() override;
    quint8 GetCellKey(int col, int row) override;
    void LoadColKeys(int col) override;
    QBrush GetColBrush(int col) override;
    bool GetSheetFlag() override;
    void SetStartExpo(int col, int row) override;
    void SetEndExpo(int col, int row) override;
    void SwapCols(int colA, int colB) override;
    bool IsBlankCol(int col) override;
    int GetEmptyValue(int col) override;
    bool IsBusy() override;

    // What is protected in the grid and looked at by tests.
    using MemoryGrid::clip;
    using MemoryGrid::markColumn;

    QStringList calls;

private:
    void Note(const char *operation, const QString &arguments = QString());
};
