#include "RecordingGrid.h"

namespace {

QString Two(int a, int b)
{
    return QStringLiteral("%1,%2").arg(a).arg(b);
}

} // namespace

RecordingGrid::RecordingGrid(int columns, int rowCount, QWidget *parent)
    : MemoryGrid(columns, rowCount, parent)
{
    connect(this, &WExpoGrid::SigSomethingHasChanged, this, [this](UpdateLevel upd, void *caller) {
        Note(caller == this ? "signal" : "signal of another", QString::number(upd));
    });
}

QStringList RecordingGrid::Changes() const
{
    static const QStringList kept{ QStringLiteral("StartUndoGroup("),
        QStringLiteral("EndUndoGroup("), QStringLiteral("SetC"), QStringLiteral("SetS"),
        QStringLiteral("SetE"), QStringLiteral("SwapCols("), QStringLiteral("signal") };
    QStringList changes;
    for (const QString &call : calls) {
        if (call == QLatin1String("LoadColKeys(0)")) // each rebuild comes to the first column once
            changes << QStringLiteral("rebuild");
        for (const QString &start : kept) {
            if (call.startsWith(start))
                changes << call;
        }
    }
    return changes;
}

void RecordingGrid::Note(const char *operation, const QString &arguments)
{
    calls << QStringLiteral("%1(%2)").arg(QLatin1String(operation), arguments);
}

void RecordingGrid::StartUndoGroup(QString name)
{
    Note("StartUndoGroup", name);
    MemoryGrid::StartUndoGroup(name);
}

void RecordingGrid::EndUndoGroup()
{
    Note("EndUndoGroup");
    MemoryGrid::EndUndoGroup();
}

QString RecordingGrid::GetColName(int col)
{
    Note("GetColName", QString::number(col));
    return MemoryGrid::GetColName(col);
}

int RecordingGrid::GetNbc()
{
    Note("GetNbc");
    return MemoryGrid::GetNbc();
}

int RecordingGrid::GetNbl()
{
    Note("GetNbl");
    return MemoryGrid::GetNbl();
}

bool RecordingGrid::GetCurrentCell(int *col, int *row)
{
    Note("GetCurrentCell", Two(*col, *row));
    return MemoryGrid::GetCurrentCell(col, row);
}

bool RecordingGrid::SetCurrentCell(int row, int col)
{
    Note("SetCurrentCell", Two(row, col));
    return MemoryGrid::SetCurrentCell(row, col);
}

QString RecordingGrid::GetCellText(int col, int row)
{
    Note("GetCellText", Two(col, row));
    return MemoryGrid::GetCellText(col, row);
}

int RecordingGrid::GetCellValue(int col, int row)
{
    Note("GetCellValue", Two(col, row));
    return MemoryGrid::GetCellValue(col, row);
}

bool RecordingGrid::SetCellValue(int row, int col, int value)
{
    Note("SetCellValue", QStringLiteral("%1,%2,%3").arg(row).arg(col).arg(value));
    return MemoryGrid::SetCellValue(row, col, value);
}

int RecordingGrid::GetColWidth()
{
    Note("GetColWidth");
    return MemoryGrid::GetColWidth();
}

quint8 RecordingGrid::GetCellKey(int col, int row)
{
    Note("GetCellKey", Two(col, row));
    return MemoryGrid::GetCellKey(col, row);
}

void RecordingGrid::LoadColKeys(int col)
{
    Note("LoadColKeys", QString::number(col));
    MemoryGrid::LoadColKeys(col);
}

QBrush RecordingGrid::GetColBrush(int col)
{
    Note("GetColBrush", QString::number(col));
    return MemoryGrid::GetColBrush(col);
}

bool RecordingGrid::GetSheetFlag()
{
    Note("GetSheetFlag");
    return MemoryGrid::GetSheetFlag();
}

void RecordingGrid::SetStartExpo(int col, int row)
{
    Note("SetStartExpo", Two(col, row));
    MemoryGrid::SetStartExpo(col, row);
}

void RecordingGrid::SetEndExpo(int col, int row)
{
    Note("SetEndExpo", Two(col, row));
    MemoryGrid::SetEndExpo(col, row);
}

void RecordingGrid::SwapCols(int colA, int colB)
{
    Note("SwapCols", Two(colA, colB));
    MemoryGrid::SwapCols(colA, colB);
}

bool RecordingGrid::IsBlankCol(int col)
{
    Note("IsBlankCol", QString::number(col));
    return MemoryGrid::IsBlankCol(col);
}

int RecordingGrid::GetEmptyValue(int col)
{
    Note("GetEmptyValue", QString::number(col));
    return MemoryGrid::GetEmptyValue(col);
}

bool RecordingGrid::IsBusy()
{
    Note("IsBusy");
    return MemoryGrid::IsBusy();
}
