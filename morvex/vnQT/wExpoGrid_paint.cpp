// What the sheet looks like: the rebuild of the table, the background of a cell and the highlight
// of the current one.
#include "wExpoGrid.h"

#include <QApplication>
#include <QBitmap>
#include <QDebug>
#include <QHeaderView>
#include <QSignalBlocker>

namespace {

enum PaintMode {
    ModePlain = 0,
    ModeCurrent = 1,
    ModeCurrentRow = 2,
    ModeCurrentColumn = 3,
    ModeFind = -1
};

enum PaintKey { KeyNone = 0, KeyShown = 1, KeyAsk = -1, KeyKeep = -2 };

/// An item that keeps what it shows at hand, so that a rebuild can compare 75,000 of them without
/// taking copies out of their lists of roles.
class SheetItem : public QTableWidgetItem
{
public:
    static constexpr int kType = QTableWidgetItem::UserType + 1;

    explicit SheetItem(const QString &newText)
        : QTableWidgetItem(newText, kType), shownText(newText)
    { }

    static bool ShowsText(const QTableWidgetItem *item, const QString &text)
    {
        return item->type() == kType ? static_cast<const SheetItem *>(item)->shownText == text
                                     : item->text() == text;
    }
    static bool ShowsBrush(const QTableWidgetItem *item, const QBrush &brush)
    {
        return item->type() == kType ? static_cast<const SheetItem *>(item)->shownBrush == brush
                                     : item->background() == brush;
    }

    QTableWidgetItem *clone() const override { return new SheetItem(*this); }

    void setData(int role, const QVariant &value) override
    {
        // Before the base announces the change: who hears of it may rebuild.
        if (role == Qt::DisplayRole || role == Qt::EditRole)
            shownText = value.toString();
        if (role == Qt::BackgroundRole)
            shownBrush = qvariant_cast<QBrush>(value);
        QTableWidgetItem::setData(role, value);
    }

private:
    SheetItem(const SheetItem &) = default;
    SheetItem &operator=(const SheetItem &) = delete;

    QString shownText;
    QBrush shownBrush;
};

/// A brush whose marked cells show the bitmap: its black takes the colour, its white stays clear.
QBrush MarkBrush(QBrush brush, const QString &bitmapPath, const QColor &color)
{
    const QBitmap bitmap(bitmapPath);
    if (bitmap.isNull())
        return brush; // drawn without a mark
    brush.setTexture(bitmap);
    brush.setColor(color);
    return brush;
}

/// Somebody's try at a background picture. Nothing shows it and a missing file is no error; the
/// path is taken as it is on every system.
void TryTestTexture()
{
    const QPixmap picture(QStringLiteral("c:/test.bmp"));
    const QPalette palette = QApplication::palette();
    QBrush brushes[] = { palette.brush(QPalette::Base), palette.brush(QPalette::Base) };
    brushes[0].setTexture(picture);
}

void SetItemBackground(QTableWidgetItem *item, const QBrush &brush)
{
    if (!SheetItem::ShowsBrush(item, brush))
        item->setBackground(brush);
}

/// The same for a section of a header. Announced in the ordinary way, the change of a header item
/// makes the table lay out and paint all that it has; so the model keeps it to itself.
void SetSectionBackground(
    QHeaderView *header, int section, QTableWidgetItem *item, const QBrush &brush)
{
    if (!item || item->background() == brush)
        return;
    {
        const QSignalBlocker quiet(header->model());
        item->setBackground(brush);
    }
    QWidget *paper = header->viewport();
    const int start = header->sectionViewportPosition(section);
    const int size = header->sectionSize(section);
    if (header->orientation() == Qt::Horizontal)
        paper->update(start, 0, size, paper->height());
    else
        paper->update(0, start, paper->width(), size);
}

} // namespace

// The rebuild.

void WExpoGrid::RefreshGrid()
{
    if (refreshHolds > 0 && !refreshAtOnce) {
        refreshDue = true;
        return;
    }
    RebuildTable();
}

void WExpoGrid::RebuildTable()
{
    const int columns = GetNbc();
    const int rows = GetNbl();
    TryTestTexture();

    const QSignalBlocker quiet(this); // or every item would come back to OnCellChanged
    setRowCount(rows);
    setColumnCount(columns);
    qWarning().nospace() << "x y " << columnWidth(1) << " " << QTableWidget::rowHeight(1);

    QStringList labels;
    for (int row = 0; row < rows; ++row)
        labels << QStringLiteral("%1").arg(row + 1);
    setVerticalHeaderLabels(labels);

    labels.clear();
    UpdateBrushes();
    for (int col = 0; col < GetNbc(); ++col) {
        labels << GetColName(col);
        RebuildColumn(col, rows);
        if (columnWidth(col) != GetColWidth())
            setColumnWidth(col, GetColWidth());
    }
    for (int row = 0; row < rows; ++row) {
        if (QTableWidget::rowHeight(row) != rowHeight)
            setRowHeight(row, rowHeight);
    }
    setHorizontalHeaderLabels(labels);
}

void WExpoGrid::RebuildColumn(int col, int rows)
{
    const QString format = tr("%1");
    const bool isPlainFormat = format == QLatin1String("%1"); // spares the search in each text
    const int currentCol = currentColumn();
    const int currentLine = currentRow();

    LoadColKeys(col);
    for (int row = 0; row < rows; ++row) {
        const QString value = GetCellText(col, row);
        const QString text = isPlainFormat ? value : format.arg(value);
        const int key = GetCellKey(col, row);
        const int mode = ModeOf(row, col, currentLine, currentCol);
        if (QTableWidgetItem *cell = item(row, col)) {
            if (!SheetItem::ShowsText(cell, text))
                cell->setText(text);
            PaintItem(cell, mode, key);
            continue;
        }
        auto *cell = new SheetItem(text);
        PaintItem(cell, mode, key); // before the table has it and repaints for each change
        const QSignalBlocker silent(model()); // 75,000 notices of the model, for one repaint
        setItem(row, col, cell);
        viewport()->update();
    }
}

// The look of a cell.

int WExpoGrid::ModeOf(int row, int col, int currentRow, int currentCol) const
{
    if (col == currentCol)
        return row == currentRow ? ModeCurrent : ModeCurrentColumn;
    return row == currentRow ? ModeCurrentRow : ModePlain;
}

void WExpoGrid::UpdateBrushes()
{
    const QPalette palette = QApplication::palette();
    if (brushes.paletteKey == palette.cacheKey())
        return;
    brushes.paletteKey = palette.cacheKey();

    const QBrush &plain = palette.brush(QPalette::AlternateBase);
    const QBrush &lit = palette.brush(QPalette::BrightText);
    brushes.plain[0] = plain;
    brushes.plain[1] = MarkBrush(plain, QStringLiteral(":/Resources/cell_key_1.bmp"), Qt::darkGray);
    brushes.lit[0] = lit;
    brushes.lit[1] = MarkBrush(lit, QStringLiteral(":/Resources/cell_key_1_inv.bmp"), lit.color());
}

void WExpoGrid::PaintCell(int row, int col, int mode, int key)
{
    QTableWidgetItem *cell = item(row, col);
    if (!cell)
        return;
    if (mode == ModeFind)
        mode = ModeOf(row, col, currentRow(), currentColumn());
    if (key == KeyAsk) {
        LoadColKeys(col);
        key = GetCellKey(col, row);
    }
    const QSignalBlocker quiet(this); // a new background is no typed cell
    UpdateBrushes();
    PaintItem(cell, mode, key);
}

void WExpoGrid::PaintItem(QTableWidgetItem *cell, int mode, int key)
{
    const bool isLit = mode != ModePlain && (mode != ModeCurrentColumn || markColumn);
    if (key == KeyKeep && !QBitmap(cell->background().texture()).isNull())
        key = KeyShown;
    const bool isMarked = key > KeyNone;
    if (isMarked)
        qWarning("setText2"); // for every marked cell at every repaint, also one left as it is
    SetItemBackground(cell, isLit ? brushes.lit[isMarked] : brushes.plain[isMarked]);
}

// The highlight of the current cell.

void WExpoGrid::MarkCurrent(int row, int col, bool on)
{
    const QBrush header
        = QApplication::palette().brush(on ? QPalette::BrightText : QPalette::Window);
    for (int c = 0; c < columnCount(); ++c)
        PaintCell(row, c, on ? ModeCurrentRow : ModePlain, KeyKeep);
    if (markColumn) {
        for (int r = 0; r < rowCount(); ++r)
            PaintCell(r, col, on ? ModeCurrentColumn : ModePlain, KeyKeep);
    }
    SetSectionBackground(horizontalHeader(), col, horizontalHeaderItem(col), header);
    SetSectionBackground(verticalHeader(), row, verticalHeaderItem(row), header);
}
