// WExpoGrid: the exposure sheet as a widget. One column a layer, one row a frame; a cell shows the
// number of the drawing that is exposed on that frame.
//
// The widget knows no host. All that it has to know about the sheet, and all that it wants to
// change, goes through the row of virtual operations; the class itself answers them as a harmless
// sheet of five by five cells that takes no change. The items of the table hold what is displayed
// and nothing else: RefreshGrid writes them anew from the virtual operations.
//
// Units      col     column from 0, a layer
//            row     row from 0, a frame; the row header shows row + 1
//            value   a drawing's number, 32 bits; kFillEmpty is an instruction, never stored
//            width, height in pixels
// Order      Cells are addressed column then row, but for SetCellValue and SetCurrentCell, and for
//            what follows QTableWidget (PaintCell, MarkCurrent), which take the row first.
// Errors     A wrong selection shows the command's one message and changes nothing. A cell helper
//            answers false and changes nothing when a column or row is outside the sheet.
//
// One rebuild a command. The sheet behind the widget owes the table a rebuild for each cell that it
// takes, and calls RefreshGrid for it. Within a command nothing can be seen between two of them,
// since no event is served, so there the call is noted only and the command's end does the work.
#pragma once

#include "vnQT/UpdateLevel.h"

#include <QBrush>
#include <QTableWidget>
#include <QVarLengthArray>

#include <functional>

class QAction;

class WExpoGrid : public QTableWidget
{
    Q_OBJECT

public:
    /// Stands for GetEmptyValue(col) where FillCells takes a value.
    static constexpr int kFillEmpty = -999999;

    explicit WExpoGrid(QWidget *parent = nullptr);

    // The sheet behind the widget, in slot order.

    /// Opens one undo step of the host. The name is the callee's own.
    virtual void StartUndoGroup(QString name);
    virtual void EndUndoGroup();
    virtual QString GetColName(int col);
    virtual int GetNbc(); // number of columns
    virtual int GetNbl(); // number of rows
    /// Fills in the current cell of the document.
    /// @return false when the two variables hold it already; they are then left alone
    virtual bool GetCurrentCell(int *col, int *row);
    /// Moves the document's current cell. The row comes first here.
    /// @return false when it was there already
    virtual bool SetCurrentCell(int row, int col);
    /// What the cell shows.
    virtual QString GetCellText(int col, int row);
    /// The cell's number. Asked for the row behind the last one too.
    virtual int GetCellValue(int col, int row);
    /// The one way to change a cell. The row comes first here.
    /// @return true when the sheet took it; false only keeps a typed cell from being announced
    virtual bool SetCellValue(int row, int col, int value);
    /// Width of every column in pixels.
    virtual int GetColWidth();
    /// Key flag of a cell, 0 for none. Valid for the column of the last LoadColKeys.
    virtual quint8 GetCellKey(int col, int row);
    virtual void LoadColKeys(int col);
    virtual QBrush GetColBrush(int col); // brush of the layer's label; the grid does not ask for it
    virtual bool GetSheetFlag(); // a flag of the document; the grid does not ask for it
    virtual void SetStartExpo(int col, int row);
    virtual void SetEndExpo(int col, int row);
    virtual void SwapCols(int colA, int colB);
    /// True when the value 0 of this column displays as nothing.
    virtual bool IsBlankCol(int col);
    virtual int GetEmptyValue(int col);
    /// While true, the panel skips its work.
    virtual bool IsBusy();

    // The display.

    /// Rebuilds the table from the operations above: at once, or within a command at its end. Only
    /// what differs is touched. It does not call update().
    void RefreshGrid();
    /// Follows a change elsewhere. @param caller who caused it; the widget ignores its own notices
    void OnUpdate(UpdateLevel upd, void *caller);
    /// Moves the table's current cell to the document's. Emits nothing: the document moved first.
    void SyncCurrentCell();
    /// Lays (on) or lifts the highlight of a current cell: its row and its two header sections.
    void MarkCurrent(int row, int col, bool on);
    /// Gives a cell its background; one without an item is left alone.
    /// @param mode 0 plain, 1 current cell, 2 current row, 3 current column, -1 to be worked out
    /// @param key  0 no key mark, above 0 the mark, -1 to be asked for, -2 as it is
    void PaintCell(int row, int col, int mode, int key);

    // The selection.

    /// The selected range, when exactly one is selected.
    /// @param mode 0 one column or one row, 1 one column that ends in the current row, 2 one row,
    /// 3 any
    /// @return false when it is not of that kind; the results are then unchanged, but for a range
    /// of one column that does not end in the current row
    bool GetSelectedBloc(int *left, int *right, int *top, int *bottom, int mode);
    /// Selects a range beside what is selected already.
    void SelectBloc(int left, int right, int top, int bottom);

    // The cells.

    /// The row at which the exposure found at `row` gives way to another drawing; rows of the empty
    /// value do not end it. @return at most GetNbl()
    int FindNextChange(int col, int row);
    /// Writes a value from `row` downwards, clipped to the sheet.
    bool FillCells(int col, int row, int count, int value);
    /// Pushes the cells down; the inserted ones show what stood at `row`. What passes the sheet's
    /// end is lost.
    bool InsertCells(int col, int row, int count);
    /// Pulls the cells up; the end of the column becomes empty.
    bool RemoveCells(int col, int row, int count);
    /// Copies cells downwards, top first. @return false when the ranges overlap in one column, and
    /// when the sheet ends first: what was copied then stays
    bool CopyCells(int srcCol, int srcRow, int count, int dstCol, int dstRow);
    /// Writes the sheet's clipboard from `row` downwards, clipped to the sheet.
    void PasteCells(int col, int row);

    /// A seam for tests: true makes every RefreshGrid work at once, also within a command.
    void SetRefreshAtOnce(bool atOnce) { refreshAtOnce = atOnce; }

signals:
    void SigSomethingHasChanged(UpdateLevel upd, void *caller);

public slots:
    void OnSelectionChanged(int row, int col, int oldRow, int oldCol);
    void OnCellChanged(int row, int col);
    void OnCopy();
    void OnRepeat();
    void OnPaste();
    void OnCut();
    void OnSerie();
    void OnCycle();
    void OnStartExpo();
    void OnEndExpo();
    void OnInsert();
    void OnRemove();
    void OnDelete(); // the real Clear Bloc; the Del key alone gets here

protected:
    enum ActionIndex {
        RepeatAction,
        CopyAction,
        PasteAction,
        CutAction, // holds Clear Bloc, see BuildActions
        SerieAction,
        CycleAction,
        StartExpoAction,
        EndExpoAction,
        InsertAction,
        RemoveAction,
        ActionCount
    };

    void keyPressEvent(QKeyEvent *event) override;

    QVarLengthArray<int, 256> clip; // values of the last Copy, top to bottom
    int rowHeight = 18; // pixels, of every row; nothing changes it
    bool markColumn = false; // the highlight runs down the current column too; nothing sets it
    QAction *actions[ActionCount] = {};

private:
    struct Bloc
    {
        int left = 0;
        int right = 0;
        int top = 0;
        int bottom = 0;

        int Rows() const { return bottom - top + 1; }
    };

    /// The backgrounds that a cell can have, by highlight and key mark.
    struct CellBrushes
    {
        qint64 paletteKey = -1; // of the application's palette that they were made from
        QBrush plain[2]; // without and with the mark
        QBrush lit[2];
    };

    class RefreshHold;

    void BuildActions();
    QAction *AddAction(const QString &text);

    /// GetSelectedBloc; shows the message when it fails.
    bool SelectedBlocOrWarn(Bloc *bloc, int mode, const QString &message);
    void ForEachColumn(const Bloc &bloc, const std::function<void(int)> &work);
    /// Runs the changes within one undo group, which is closed on every way out.
    void RunInUndoGroup(const QString &name, const std::function<void()> &changes);
    /// The end of every command: the changes in their group, one rebuild, a repaint.
    void RunCommand(const QString &name, const std::function<void()> &changes);
    /// SetCellValue for a cell that the user typed; the table is right again afterwards.
    bool StoreTypedCell(int row, int col, const QString &text);
    bool IsInside(int col, int row);

    void RebuildTable();
    void RebuildColumn(int col, int rows);
    int ModeOf(int row, int col, int currentRow, int currentCol) const;
    void UpdateBrushes();
    void PaintItem(QTableWidgetItem *cell, int mode, int key);

    CellBrushes brushes;
    int refreshHolds = 0; // commands that run
    bool refreshDue = false; // RefreshGrid was called within the command that runs
    bool refreshAtOnce = false;
};
