#include "WinGridDataAE.h"

#include "panel/Doc.h"
#include "support/vnLog.h"
#include "support/vnPath.h"
#include "vnAE/UndoScope.h"
#include "vnAE/hostErrors.h"
#include "vnAE/vipLi.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

namespace {

constexpr int kMostDigits = 4;
constexpr int kHighestNumber = 9999;

/// One to four digits; every other text is 0, also a number that is too long.
int ParseCell(const char *text)
{
    const std::size_t length = std::strlen(text);
    if (length > kMostDigits || !vnPath::IsDigitsOnly(text))
        return 0;
    int value = 0;
    std::sscanf(text, "%d", &value);
    return value;
}

bool HasBlankImage(const QString &path)
{
    const QString extension = vnPath::LowerExtension(path);
    return extension == QLatin1String("png") || extension == QLatin1String("tga");
}

} // namespace

WinGridDataAE::WinGridDataAE(QWidget *parent) : WExpoGrid(parent), busy(false)
{
    for (int i = 0; i < 10; ++i)
        rowBase[i] = i;
    GetDoc();
    GetVipLi();
}

bool WinGridDataAE::UpdateFromCompo()
{
    if (GetVipLi()->HasCompo())
        return Reload();
    qWarning("NoCompoSelected => Init nbc nbl");
    nbc = nbl = 0;
    RefreshGrid();
    emit SigSomethingHasChanged(UpdAll, this);
    return true;
}

bool WinGridDataAE::Reload()
{
    vipLi *library = GetVipLi();
    UndoScope undo(library, QStringLiteral("morvex:Reload"));
    if (VN_FALSE(library->FindCompo())) {
        undo.Release(); // a failed reload leaves its group open, and the host closes it on its own
        return false;
    }
    ReadSize();
    for (int col = 0; col < nbc; ++col) {
        if (VN_FALSE(library->SelectColumn(col))) {
            undo.Release(); // as above
            return false;
        }
        ReadColumn(col);
        ReadCells(col);
    }
    // What was just read, unclipped: it makes the duration a whole number of the sheet's frames. A
    // host that cannot tell the duration reads as 0, which must not empty the composition.
    const int frames = library->GetCurrentCompoDuration();
    if (frames > 0)
        library->SetCompoDuration(frames);
    undo.Close();
    OnUpdate(UpdAll, nullptr);
    return true;
}

void WinGridDataAE::ReadSize()
{
    // The third entry is counted in and out again, so that a sheet may one day start elsewhere.
    const int frames = GetVipLi()->GetCurrentCompoDuration() + rowBase[2] - 2;
    const int layers = GetVipLi()->GetColumnCount();
    nbl = qBound(0, frames, kMaxRows);
    nbc = qBound(0, layers, kMaxColumns);
    if (nbl == frames && nbc == layers)
        return;
    char line[120];
    std::snprintf(line, sizeof line, "The sheet shows %d of %d columns and %d of %d frames", nbc,
        layers, nbl, frames);
    vnLog::Instance()->Add(line);
}

void WinGridDataAE::ReadColumn(int col)
{
    vipLi *library = GetVipLi();
    Column &column = columns[col];
    SetColName(col, library->GetColumnName().toUtf8().constData());
    column.kind = library->GetColumnKind();
    qint32 first = column.start;
    qint32 last = column.end;
    if (library->GetLayerInOut(first, last)) {
        column.start = first;
        column.end = last;
    }
    column.lastImage = library->GetSourceLastFrame();
    const QString path = library->GetSourcePath();
    column.blank = column.kind == kSequence && HasBlankImage(path);
}

void WinGridDataAE::ReadCells(int col)
{
    vipLi *library = GetVipLi();
    const Column &column = columns[col];
    const int frames = qMin(library->GetCurrentCompoDuration(), nbl);
    for (int row = 0; row < frames; ++row) {
        qint32 image = 0;
        library->GetCellImage(row, image); // unchecked: a column that cannot be read is empty
        // What SetCellFromText makes of the number's text, without the text.
        if (column.kind == kSequence)
            StoreCell(col, row, ShownNumber(column, image));
    }
}

bool WinGridDataAE::SetCellFromText(int col, int row, const char *text, bool push)
{
    if (!InTable(col, row) || columns[col].kind != kSequence)
        return true;
    const int value = ShownNumber(columns[col], ParseCell(text));
    StoreCell(col, row, value);
    if (push)
        PushCell(col, row, value);
    return true;
}

int WinGridDataAE::ShownNumber(const Column &column, qint32 image)
{
    if (image < 0 || image > kHighestNumber)
        image = 0;
    if (image <= column.lastImage)
        return image;
    return column.blank ? 0 : column.lastImage;
}

bool WinGridDataAE::ReachColumn(int col)
{
    // A selection that the host refuses costs no cell, a layer that it does not find does: the cell
    // must not go to the layer that was current before.
    return GetVipLi()->SelectColumn(col) || GetVipLi()->SetCurrentColumn(col);
}

void WinGridDataAE::PushCell(int col, int row, int value)
{
    if (ReachColumn(col)) {
        GetVipLi()->SetCellImage(
            row, value); // unchecked: the next reload shows what the host holds
        RestoreBelow(col, row, value);
    }
    RefreshGrid();
}

void WinGridDataAE::RestoreBelow(int col, int row, int value)
{
    vipLi *library = GetVipLi();
    // The written key holds up to the next key, so the row below gets one of its own.
    if (row + 1 < nbl && GetCellValue(col, row + 1) != value)
        library->SetCellImage(row + 1, GetCellValue(col, row + 1));
    // A run of a written number that began further down has lost its key to the written one, and
    // the rows behind it show what they should not, up to the first that reads right.
    for (int next = row + 2; next < nbl; ++next) {
        const int wanted = GetCellValue(col, next);
        if (wanted == GetCellValue(col, next - 1))
            continue;
        qint32 image = 0;
        if (!library->GetCellImage(next, image) || ShownNumber(columns[col], image) == wanted)
            break;
        library->SetCellImage(next, wanted);
    }
}

void WinGridDataAE::SetColName(int col, const char *name)
{
    if (!InTable(col, 0))
        return;
    std::size_t length = qMin<std::size_t>(std::strlen(name), kNameBytes - 1);
    // UTF-8: the bytes behind the first of a character are 10xxxxxx; a cut may not leave any.
    while (length > 0 && name[length] && (name[length] & 0xC0) == 0x80)
        --length;
    std::memcpy(columns[col].name, name, length);
    columns[col].name[length] = '\0';
}

void WinGridDataAE::StoreCell(int col, int row, int value)
{
    if (InTable(col, row) && row < nbl && cells[col][row] != value)
        cells[col][row] = value;
}

bool WinGridDataAE::InTable(int col, int row)
{
    return col >= 0 && col < kMaxColumns && row >= 0 && row < kMaxRows;
}

void WinGridDataAE::StartUndoGroup(QString name)
{
    GetVipLi()->StartUndoGroup(name);
}

void WinGridDataAE::EndUndoGroup()
{
    GetVipLi()->EndUndoGroup();
}

QString WinGridDataAE::GetColName(int col)
{
    return InTable(col, 0) ? DisplayText(columns[col].name) : QString();
}

int WinGridDataAE::GetNbc()
{
    return nbc;
}

int WinGridDataAE::GetNbl()
{
    return nbl;
}

bool WinGridDataAE::GetCurrentCell(int *col, int *row)
{
    const Doc *doc = GetDoc();
    if (*col == doc->GetCol() && *row == doc->GetRow())
        return false;
    *col = doc->GetCol();
    *row = doc->GetRow();
    return true;
}

bool WinGridDataAE::SetCurrentCell(int row, int col)
{
    Doc *doc = GetDoc();
    const bool sameCol = doc->GetCol() == col;
    const bool sameRow = doc->GetRow() == row;
    if (!sameCol)
        doc->SetCol(col);
    if (!sameRow)
        doc->SetRow(row);
    return !sameCol || !sameRow; // neither moves the host
}

QString WinGridDataAE::GetCellText(int col, int row)
{
    if (col == -1) // a row's label; the grid itself never asks for it
        return QString::asprintf("%3d", row + 1);
    if (!InTable(col, row))
        return {};
    const Column &column = columns[col];
    if (column.kind == kFixe)
        return row >= column.start && row <= column.end ? QStringLiteral(" - ") : QString();
    if (column.kind != kSequence)
        return {};
    const int value = cells[col][row];
    if (value == 0 && column.blank)
        return {};
    if (row >= 1 && value == cells[col][row - 1])
        return QStringLiteral(" ~ ");
    return QString::number(value);
}

int WinGridDataAE::GetCellValue(int col, int row)
{
    return InTable(col, row) ? cells[col][row] : 0;
}

bool WinGridDataAE::SetCellValue(int row, int col, int value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%d", value);
    return SetCellFromText(col, row, text, /*push=*/true);
}

int WinGridDataAE::GetColWidth()
{
    return GetDoc()->colWidth;
}

quint8 WinGridDataAE::GetCellKey(int /*col*/, int row)
{
    return GetVipLi()->GetKeyMarks(row); // of the column that LoadColKeys took last
}

void WinGridDataAE::LoadColKeys(int col)
{
    GetVipLi()->SetCurrentColumn(col);
    GetVipLi()->UpdateKeyMarks();
}

QBrush WinGridDataAE::GetColBrush(int col)
{
    QBrush brush;
    return GetVipLi()->GetLabelBrush(brush, GetVipLi()->GetLayerAt(GetVipLi()->Compo, col));
}

bool WinGridDataAE::GetSheetFlag()
{
    return GetDoc()->sheetFlag;
}

void WinGridDataAE::PushSpan(int col)
{
    if (ReachColumn(col))
        GetVipLi()->SetLayerInOut(
            columns[col].start, columns[col].end); // unchecked: as in PushCell
}

void WinGridDataAE::SetStartExpo(int col, int row)
{
    if (!InTable(col, row))
        return;
    Column &column = columns[col];
    // A blank column keeps its layer's span and hides the frames by the blank drawing.
    if (!column.blank) {
        column.start = row;
        PushSpan(col);
    }
    if (column.kind == kSequence)
        FillCells(col, 0, row, 0);
}

void WinGridDataAE::SetEndExpo(int col, int row)
{
    if (!InTable(col, row))
        return;
    Column &column = columns[col];
    if (!column.blank) {
        column.end = row;
        PushSpan(col);
    }
    if (column.kind == kSequence)
        FillCells(col, row + 1, nbl - row + 1, 0); // overshoots by two, FillCells clips it
}

void WinGridDataAE::SwapCols(int colA, int colB)
{
    if (colB < 0 || colB >= columnCount() || !InTable(colA, 0) || !InTable(colB, 0))
        return;
    std::swap(columns[colA], columns[colB]);
    const int rows = qMin(rowCount(), kMaxRows);
    if (colA != colB)
        std::swap_ranges(cells[colA], cells[colA] + rows, cells[colB]);
    RefreshGrid();
}

bool WinGridDataAE::IsBlankCol(int col)
{
    return InTable(col, 0) && columns[col].blank;
}

bool WinGridDataAE::IsBusy()
{
    return busy;
}
