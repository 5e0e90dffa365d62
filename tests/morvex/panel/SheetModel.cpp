#include "SheetModel.h"

namespace {

/// What a typed text stands for: ":" is no drawing, what is no number is 0.
int TypedNumber(const QString &text)
{
    if (text == QLatin1String(":"))
        return -1;
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    return isNumber ? value : 0;
}

QVector<int> Piece(const QVector<int> &values, int from, int to)
{
    QVector<int> piece;
    for (int i = from; i < to && i < values.size(); ++i)
        piece << values[i];
    return piece;
}

} // namespace

void SheetModel::Do(Deed deed, const Chosen &chosen, const QString &text)
{
    undoName.clear();
    box.clear();
    switch (deed) {
    case Deed::Type:
        return Type(chosen, text);
    case Deed::Repeat:
        return Repeat(chosen);
    case Deed::Serie:
        return Serie(chosen);
    case Deed::Cycle:
        return Cycle(chosen);
    case Deed::StartExpo:
    case Deed::EndExpo:
        return Expo(chosen, deed == Deed::StartExpo);
    case Deed::Insert:
    case Deed::Remove:
    case Deed::Clear:
        return Blocs(deed, chosen);
    case Deed::Copy:
    case Deed::Cut:
        return Clip(deed, chosen);
    case Deed::Paste:
        return Paste(chosen);
    }
}

/// @param mode 0 a line of cells, 1 a column that ends in the current row, 2 a row, 3 any range
bool SheetModel::Passes(const Chosen &chosen, int mode, const char *message)
{
    const bool isColumn = chosen.left == chosen.right;
    const bool isRow = chosen.top == chosen.bottom;
    const bool isOfKind = mode == 0 ? isColumn || isRow
        : mode == 1                 ? isColumn && chosen.row == chosen.bottom
        : mode == 2                 ? isRow
                                    : true;
    if (chosen.any && isOfKind)
        return true;
    box = QStringLiteral("Warning: ") + QLatin1String(message);
    return false;
}

void SheetModel::Write(int col, int row, int value)
{
    ModelColumn &column = columns[col];
    if (!column.isSeries || row < 0 || row >= rows)
        return;
    if (value < 0 || value > 9999)
        value = 0;
    if (value > column.last)
        value = column.isBlank ? 0 : column.last;
    column.cells[row] = value;
}

void SheetModel::WriteColumn(int col, const QVector<int> &values)
{
    for (int row = 0; row < rows; ++row)
        Write(col, row, values[row]);
}

/// The first row below that shows another drawing and is not empty.
int SheetModel::NextChange(int col, int row) const
{
    if (row >= rows)
        return rows;
    const QVector<int> &cells = columns[col].cells;
    for (int below = row + 1; below < rows; ++below) {
        if (cells[below] != 0 && cells[below] != cells[row])
            return below;
    }
    return rows;
}

/// The rule of series: one number rises; two interleaved series; else runs of equal cells.
QVector<int> SheetModel::Continue(const QVector<int> &given, int total)
{
    QVector<int> out = given;
    out.resize(qMax(total, given.size()));
    const int first = given[0];
    if (given.size() == 1) {
        for (int i = 0; i < total; ++i)
            out[i] = first + i;
        return out;
    }
    if (given.size() > 2 && qAbs(first - given[1]) > qAbs(first - given[2])) {
        const int evenStep = given[2] - first;
        const int oddStep = given.size() > 3 ? given[3] - given[1] : evenStep;
        int next[] = { first, given[1] };
        for (int i = 0; i < total && next[i % 2] >= 1; ++i) {
            out[i] = next[i % 2];
            next[i % 2] += i % 2 ? oddStep : evenStep;
        }
        return out;
    }
    int run = 1;
    while (run < given.size() && given[run] == first)
        ++run;
    const int second = run < given.size() ? given[run] : first;
    int value = second;
    for (int i = run, done = 0; i < total; ++i, ++done) {
        if (done == run) {
            value += second - first;
            done = 0;
        }
        if (value < 1)
            break;
        out[i] = value;
    }
    return out;
}

void SheetModel::Type(const Chosen &chosen, const QString &text)
{
    undoName = QStringLiteral("morvex:EditCell");
    Write(chosen.col, chosen.row, TypedNumber(text));
}

void SheetModel::Repeat(const Chosen &chosen)
{
    if (!Passes(chosen, 0, "Select only One Cell"))
        return;
    if (chosen.col != chosen.left || chosen.row != chosen.top) {
        box = QStringLiteral("Info: Erreur bizzare");
        return;
    }
    undoName = QStringLiteral("morvex:Repeat");
    const int value = columns[chosen.col].cells[chosen.row];
    const int end = NextChange(chosen.col, chosen.row + 1);
    for (int row = chosen.row + 1; row < end; ++row)
        Write(chosen.col, row, value);
}

void SheetModel::Serie(const Chosen &chosen)
{
    if (!Passes(chosen, 1, "Select only One Column"))
        return;
    const ModelColumn &column = columns[chosen.left];
    if (column.isBlank && column.cells[chosen.top] == 0)
        return;
    if (chosen.col != chosen.left) {
        box = QStringLiteral("Info: Erreur bizzare");
        return;
    }
    undoName = QStringLiteral("morvex:Serie");
    const int end = NextChange(chosen.left, chosen.bottom);
    const QVector<int> series
        = Continue(Piece(column.cells, chosen.top, chosen.bottom + 1), end - chosen.top);
    for (int row = chosen.top; row < end; ++row)
        Write(chosen.left, row, series[row - chosen.top]);
}

void SheetModel::Cycle(const Chosen &chosen)
{
    if (!Passes(chosen, 1, "Select only One Column"))
        return;
    undoName = QStringLiteral("morvex:Cycle");
    const QVector<int> pattern = Piece(columns[chosen.left].cells, chosen.top, chosen.bottom + 1);
    const int end = NextChange(chosen.left, chosen.bottom + 1);
    for (int row = chosen.bottom + 1; row < end; ++row)
        Write(chosen.left, row, pattern[(row - chosen.bottom - 1) % pattern.size()]);
}

void SheetModel::Expo(const Chosen &chosen, bool isStart)
{
    if (!Passes(chosen, 2, "Select only One Row"))
        return;
    undoName = isStart ? QStringLiteral("morvex:StartExpo") : QStringLiteral("morvex:EndExpo");
    for (int col = chosen.left; col <= chosen.right; ++col) {
        ModelColumn &column = columns[col];
        if (!column.isBlank) {
            (isStart ? column.start : column.end) = chosen.row;
            if (column.end - column.start >= -1) { // the host takes no time below 0
                column.hostStart = column.start;
                column.hostEnd = column.end;
            }
        }
        for (int row = 0; row < rows; ++row) {
            if (isStart ? row < chosen.row : row > chosen.row)
                Write(col, row, 0);
        }
    }
}

void SheetModel::Blocs(Deed deed, const Chosen &chosen)
{
    if (!Passes(chosen, 3, "Select only One Bloc"))
        return;
    undoName = deed == Deed::Insert ? QStringLiteral("morvex:Insert Bloc")
        : deed == Deed::Remove      ? QStringLiteral("morvex:Remove Bloc")
                                    : QStringLiteral("morvex:Delete Bloc");
    const int count = chosen.bottom - chosen.top + 1;
    for (int col = chosen.left; col <= chosen.right; ++col) {
        const QVector<int> &cells = columns[col].cells;
        const QVector<int> above = Piece(cells, 0, chosen.top);
        const QVector<int> below = Piece(cells, chosen.bottom + 1, rows);
        const QVector<int> empty(count, 0);
        if (deed == Deed::Insert)
            WriteColumn(col,
                above + QVector<int>(count, cells[chosen.top]) + Piece(cells, chosen.top, rows));
        else if (deed == Deed::Remove)
            WriteColumn(col, above + below + empty);
        else
            WriteColumn(col, above + empty + below);
    }
}

void SheetModel::Clip(Deed deed, const Chosen &chosen)
{
    if (!Passes(chosen, 1, "Select only One Column"))
        return;
    clip = Piece(columns[chosen.left].cells, chosen.top, chosen.bottom + 1);
    if (deed == Deed::Copy)
        return;
    undoName = QStringLiteral("morvex:Cut");
    for (int row = chosen.top; row <= chosen.bottom; ++row)
        Write(chosen.left, row, 0);
}

void SheetModel::Paste(const Chosen &chosen)
{
    undoName = QStringLiteral("morvex:Paste");
    for (int i = 0; i < clip.size() && chosen.col >= 0; ++i)
        Write(chosen.col, chosen.row + i, clip[i]);
}

QStringList SheetModel::Texts(int col) const
{
    const ModelColumn &column = columns[col];
    QStringList texts;
    for (int row = 0; row < rows; ++row) {
        const int value = column.cells[row];
        if (!column.isSeries)
            texts << (row >= column.start && row <= column.end ? QStringLiteral(" - ") : QString());
        else if (value == 0 && column.isBlank)
            texts << QString();
        else if (row > 0 && value == column.cells[row - 1])
            texts << QStringLiteral(" ~ ");
        else
            texts << QString::number(value);
    }
    return texts;
}
