// The commands of the trade, the sheet's own clipboard and the cell helpers beneath them. Every
// command has the same frame: its selection test and its message, its own tests, then the changes
// in one undo group, one rebuild and a repaint. All changes go through SetCellValue; none is
// announced by a signal, only a typed cell is.
#include "wExpoGrid.h"

#include "support/vnMessage.h"
#include "support/vnPath.h"
#include "vnAE/SerieRule.h"

#include <QMessageBox>
#include <QVector>

/// While one stands, RefreshGrid only notes that a rebuild is due.
class WExpoGrid::RefreshHold
{
public:
    explicit RefreshHold(WExpoGrid &grid) : holds(grid.refreshHolds)
    {
        if (++holds == 1)
            grid.refreshDue = false;
    }
    ~RefreshHold() { --holds; }
    RefreshHold(const RefreshHold &) = delete;
    RefreshHold &operator=(const RefreshHold &) = delete;

private:
    int &holds;
};

// The frame.

bool WExpoGrid::SelectedBlocOrWarn(Bloc *bloc, int mode, const QString &message)
{
    if (GetSelectedBloc(&bloc->left, &bloc->right, &bloc->top, &bloc->bottom, mode))
        return true;
    QMessageBox::warning(
        nullptr, QStringLiteral("Warning"), message, QMessageBox::Ok, QMessageBox::NoButton);
    return false;
}

void WExpoGrid::ForEachColumn(const Bloc &bloc, const std::function<void(int)> &work)
{
    for (int col = bloc.left; col <= bloc.right; ++col)
        work(col);
}

void WExpoGrid::RunInUndoGroup(const QString &name, const std::function<void()> &changes)
{
    StartUndoGroup(name);
    try {
        changes();
    } catch (...) { // a suite that the host does not have
        EndUndoGroup();
        throw;
    }
    EndUndoGroup();
}

void WExpoGrid::RunCommand(const QString &name, const std::function<void()> &changes)
{
    {
        const RefreshHold hold(*this);
        RunInUndoGroup(name, changes);
    }
    RefreshGrid();
    update();
}

bool WExpoGrid::StoreTypedCell(int row, int col, const QString &text)
{
    const int value = text == QLatin1String(":") ? -1 : text.toInt(); // letters read as 0
    bool taken = false;
    {
        const RefreshHold hold(*this);
        taken = SetCellValue(row, col, value);
    }
    // A sheet that asks for no rebuild gets none: the cell then goes on showing what was typed.
    if (refreshDue)
        RefreshGrid();
    return taken;
}

// The cell helpers.

bool WExpoGrid::IsInside(int col, int row)
{
    return col < GetNbc() && row < GetNbl();
}

int WExpoGrid::FindNextChange(int col, int row)
{
    if (row >= GetNbl())
        return GetNbl();
    const int value = GetCellValue(col, row);
    do {
        ++row;
        const int below = GetCellValue(col, row); // once also behind the last row
        if (below != value && below != GetEmptyValue(col))
            break;
    } while (row < GetNbl());
    return qMin(row, GetNbl());
}

bool WExpoGrid::FillCells(int col, int row, int count, int value)
{
    if (value == kFillEmpty)
        value = GetEmptyValue(col);
    if (!IsInside(col, row))
        return false;
    // Rows above the sheet come from a table that is taller than the sheet has become.
    for (int r = qMax(row, 0); r < row + count && r < GetNbl(); ++r)
        SetCellValue(r, col, value); // unchecked: a refused cell stays as it is
    return true;
}

bool WExpoGrid::InsertCells(int col, int row, int count)
{
    if (!IsInside(col, row))
        return false;
    const int held = GetCellValue(col, row);
    for (int r = GetNbl() - count - 1; r >= row; --r) // bottom up: read before it is overwritten
        SetCellValue(r + count, col, GetCellValue(col, r)); // unchecked: see FillCells
    return FillCells(col, row, count, held);
}

bool WExpoGrid::RemoveCells(int col, int row, int count)
{
    if (!IsInside(col, row))
        return false;
    for (int i = 0; i < GetNbl() - row - count; ++i)
        SetCellValue(row + i, col, GetCellValue(col, row + i + count)); // unchecked: see FillCells
    return FillCells(col, GetNbl() - count, count, kFillEmpty);
}

bool WExpoGrid::CopyCells(int srcCol, int srcRow, int count, int dstCol, int dstRow)
{
    if (!IsInside(srcCol, srcRow) || !IsInside(dstCol, dstRow))
        return false;
    if (srcCol == dstCol && srcRow + count > dstRow && dstRow + count > srcRow)
        return false;
    for (int i = 0; i < count; ++i) {
        if (srcRow + i >= GetNbl() || dstRow + i >= GetNbl())
            return false;
        SetCellValue(dstRow + i, dstCol, GetCellValue(srcCol, srcRow + i)); // unchecked: as above
    }
    return true;
}

void WExpoGrid::PasteCells(int col, int row)
{
    if (col < 0 || row < 0)
        return; // no current cell: there is no place to paste to
    for (int i = 0; i < clip.size() && row + i < GetNbl(); ++i)
        SetCellValue(row + i, col, clip[i]); // unchecked: see FillCells
}

// The clipboard. It is the sheet's own: nothing goes to or comes from another program.

void WExpoGrid::OnCopy()
{
    Bloc bloc;
    if (!SelectedBlocOrWarn(&bloc, /*mode=*/1, QStringLiteral("Select only One Column")))
        return;
    vnPath::OrderInts(bloc.top, bloc.bottom);

    if (bloc.Rows() > clip.capacity())
        clip.reserve(bloc.Rows());
    clip.clear(); // the capacity stays
    for (int i = 0; i < bloc.Rows(); ++i)
        clip.append(GetCellValue(bloc.left, bloc.top + i));
}

void WExpoGrid::OnCut()
{
    Bloc bloc;
    if (!SelectedBlocOrWarn(&bloc, /*mode=*/1, QStringLiteral("Select only One Column")))
        return;
    vnPath::OrderInts(bloc.top, bloc.bottom);

    OnCopy();
    RunCommand(QStringLiteral("morvex:Cut"),
        [&] { FillCells(bloc.left, bloc.top, bloc.Rows(), kFillEmpty); });
}

void WExpoGrid::OnPaste()
{
    const int col = currentColumn(); // the current cell alone, whatever is selected
    const int row = currentRow();
    RunCommand(QStringLiteral("morvex:Paste"), [&] { PasteCells(col, row); });
}

// The commands.

/// Extends the current drawing over the next exposure.
void WExpoGrid::OnRepeat()
{
    Bloc bloc;
    if (!SelectedBlocOrWarn(&bloc, /*mode=*/0, QStringLiteral("Select only One Cell")))
        return;
    const int col = currentColumn();
    const int row = currentRow();
    if (col != bloc.left || row != bloc.top)
        return vnInfo("Erreur bizzare"); // the selection does not start at the current cell

    const int value = GetCellValue(col, row);
    const int end = FindNextChange(col, row + 1);
    RunCommand(QStringLiteral("morvex:Repeat"), [&] {
        for (int r = row + 1; r < end; ++r)
            SetCellValue(r, col, value); // unchecked: see FillCells
    });
}

/// Continues what the selected cells begin, as far as the next change of drawing below them.
void WExpoGrid::OnSerie()
{
    Bloc bloc;
    if (!SelectedBlocOrWarn(&bloc, /*mode=*/1, QStringLiteral("Select only One Column")))
        return;
    const int col = bloc.left;
    if (IsBlankCol(col) && GetCellValue(col, bloc.top) == GetEmptyValue(col))
        return; // nothing begins at an empty cell
    if (currentColumn() != col || currentRow() != bloc.bottom)
        return vnInfo("Erreur bizzare"); // the selection does not end at the current cell
    if (bloc.top > currentRow())
        return;

    const int given = bloc.Rows();
    const int total = FindNextChange(col, bloc.bottom) - bloc.top;
    QVector<int> series(qMax(GetNbl(), given)); // room for every row that there is
    for (int i = 0; i < given; ++i)
        series[i] = GetCellValue(col, bloc.top + i);
    ExtendSerie(series.data(), given, total);

    RunCommand(QStringLiteral("morvex:Serie"), [&] {
        for (int i = 0; i < total; ++i) // the selected cells too: the rule may have changed them
            SetCellValue(bloc.top + i, col, series[i]); // unchecked: see FillCells
    });
}

/// Repeats the selected cells below themselves up to the next change of drawing; the last piece is
/// cut short.
void WExpoGrid::OnCycle()
{
    Bloc bloc;
    if (!SelectedBlocOrWarn(&bloc, /*mode=*/1, QStringLiteral("Select only One Column")))
        return;
    if (bloc.top > bloc.bottom)
        return;

    const int col = bloc.left;
    const int end = FindNextChange(col, bloc.bottom + 1);
    RunCommand(QStringLiteral("morvex:Cycle"), [&] {
        int bottom = bloc.bottom;
        int piece = qMin(bloc.Rows(), end - bottom - 1);
        while (CopyCells(col, bloc.top, piece, col, bottom + 1)) {
            bottom += piece;
            piece = qMin(piece, end - bottom - 1);
            if (piece < 1)
                break;
        }
    });
}

void WExpoGrid::OnStartExpo()
{
    Bloc bloc;
    if (!SelectedBlocOrWarn(&bloc, /*mode=*/2, QStringLiteral("Select only One Row")))
        return;
    RunCommand(QStringLiteral("morvex:StartExpo"),
        [&] { ForEachColumn(bloc, [&](int col) { SetStartExpo(col, currentRow()); }); });
}

void WExpoGrid::OnEndExpo()
{
    Bloc bloc;
    if (!SelectedBlocOrWarn(&bloc, /*mode=*/2, QStringLiteral("Select only One Row")))
        return;
    RunCommand(QStringLiteral("morvex:EndExpo"),
        [&] { ForEachColumn(bloc, [&](int col) { SetEndExpo(col, currentRow()); }); });
}

void WExpoGrid::OnInsert()
{
    Bloc bloc;
    if (!SelectedBlocOrWarn(&bloc, /*mode=*/3, QStringLiteral("Select only One Bloc")))
        return;
    RunCommand(QStringLiteral("morvex:Insert Bloc"),
        [&] { ForEachColumn(bloc, [&](int col) { InsertCells(col, bloc.top, bloc.Rows()); }); });
}

void WExpoGrid::OnRemove()
{
    Bloc bloc;
    if (!SelectedBlocOrWarn(&bloc, /*mode=*/3, QStringLiteral("Select only One Bloc")))
        return;
    RunCommand(QStringLiteral("morvex:Remove Bloc"),
        [&] { ForEachColumn(bloc, [&](int col) { RemoveCells(col, bloc.top, bloc.Rows()); }); });
}

void WExpoGrid::OnDelete()
{
    Bloc bloc;
    if (!SelectedBlocOrWarn(&bloc, /*mode=*/3, QStringLiteral("Select only One Bloc")))
        return;
    RunCommand(QStringLiteral("morvex:Delete Bloc"), [&] { // the menu says Clear, the history this
        ForEachColumn(bloc, [&](int col) { FillCells(col, bloc.top, bloc.Rows(), kFillEmpty); });
    });
}
