// WinGridDataAE: the sheet that the panel shows, bound to the composition.
//
// It keeps one sheet as a table of its own, filled from the layers of the current composition, and
// turns each changed cell into keys through the composition library. The table is a copy; the truth
// is in the host. It is there so that painting, the selection and the commands can read cells
// without asking the host.
//
//     column  0         1         2           a layer each; SEQUENCE columns are edited, FIXE columns
//     row 0   1         " - "     "   "       have a span of frames only
//         1   " ~ "     " - "     4           " ~ " repeats the drawing above
//         2   2         " - "     " ~ "
//
// Limits   50 columns by 1500 rows. A larger composition is shown clipped, with a line in the log;
//          its own duration stays.
// Errors   What the host refuses while a cell is written is not told: the next reload shows it. A
//          failed reload leaves its undo group open, and that stays: nothing here closes it later.
//          A suite that the host does not have is thrown (see vipLi), behind a closed group.
#pragma once

#include "vnQT/wExpoGrid.h"

class WinGridDataAE : public WExpoGrid
{
    Q_OBJECT

public:
    static constexpr int kMaxColumns = 50;
    static constexpr int kMaxRows = 1500; // those of the key marks, too

    explicit WinGridDataAE(QWidget *parent = nullptr);

    /// Rebuilds the sheet from the composition, or empties it when there is none.
    /// @return false when the composition or a column could not be reached
    bool UpdateFromCompo();
    /// Reads every column of the current composition. Selects each layer in the host in turn, so
    /// that the last column is the current one afterwards. Writes no cell back.
    bool Reload();
    /// Changes a cell of a SEQUENCE column; in any other column it does nothing and answers true.
    /// @param text one to four digits; every other text is 0. A number above the column's last image
    /// becomes 0 in a blank column and the last image in another
    /// @param push writes the cell to the host, so that no other cell changes there
    bool SetCellFromText(int col, int row, const char *text, bool push);
    /// Names of 20 bytes or more are cut to 19.
    void SetColName(int col, const char *name);
    /// Writes the table alone; a row at or past the sheet's end is not written.
    void StoreCell(int col, int row, int value);

    void StartUndoGroup(QString name) override;
    void EndUndoGroup() override;
    QString GetColName(int col) override;
    int GetNbc() override;
    int GetNbl() override;
    bool GetCurrentCell(int *col, int *row) override;
    bool SetCurrentCell(int row, int col) override;
    QString GetCellText(int col, int row) override;
    /// @return 0 outside the table
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
    bool IsBusy() override;

private:
    static constexpr int kNameBytes = 20; // terminator included

    struct Column
    {
        char name[kNameBytes];
        int kind; // kSequence or kFixe
        int start; // first frame of the layer
        int end; // last frame of the layer
        int lastImage; // highest drawing number
        bool blank; // drawing 0 is the blank image, so that 0 displays as nothing
    };

    static bool InTable(int col, int row);
    /// The number that a column shows for an image of its stream: what has five digits or is below
    /// 0 is no drawing, and the column's last one is the highest.
    static int ShownNumber(const Column &column, qint32 image);
    /// Takes the sheet's size from the composition, inside the table.
    void ReadSize();
    /// The record and the cells of the library's current layer.
    void ReadColumn(int col);
    void ReadCells(int col);
    /// Makes a column's layer the current one, and the selected one where the host allows that.
    static bool ReachColumn(int col);
    void PushCell(int col, int row, int value);
    /// Gives back to the rows below a written one what its key has covered.
    void RestoreBelow(int col, int row, int value);
    /// The span of a column whose frames the layer itself bounds.
    void PushSpan(int col);

    int rowBase[10]; // 0 to 9, the rows that a sheet counts from
    int nbl = 0; // rows: frames of the composition
    int nbc = 0; // columns: its layers
    bool busy; // nothing sets it
    int cells[kMaxColumns][kMaxRows] = {};
    Column columns[kMaxColumns] = {};
};
