#include "wExpoGrid.h"

#include <QAction>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>

WExpoGrid::WExpoGrid(QWidget *parent) : QTableWidget(0, 0, parent)
{
    Q_INIT_RESOURCE(sheet); // a static library's resources are not found by themselves

    for (QHeaderView *header : { horizontalHeader(), verticalHeader() }) {
        header->setMinimumSectionSize(1); // or the style's, which is above the sheet's row height
        header->setHighlightSections(false); // its bold face cuts names; the colour says it
    }
    verticalHeader()->setDefaultSectionSize(rowHeight);
    // Names stand above the numbers, and a long one is cut at its end only.
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);

    // The empty area looks like the cells.
    QPalette colors = palette();
    colors.setBrush(
        QPalette::Active, QPalette::Base, QBrush(colors.color(QPalette::AlternateBase)));
    setPalette(colors);

    BuildActions();
    connect(this, &QTableWidget::cellChanged, this, &WExpoGrid::OnCellChanged);
    connect(this, &QTableWidget::currentCellChanged, this, &WExpoGrid::OnSelectionChanged);
}

/// The list of actions is the context menu. Its texts name the keys, but the actions carry no
/// shortcut: the keys work through keyPressEvent alone.
///
/// Clear Bloc is kept where Cut was kept before. So the menu's Cut is connected to nothing, and its
/// Clear Bloc runs OnCut, which works on one column and keeps a copy; the clear of a whole block is
/// reached by the Del key. Users know the menu this way, so it stays.
void WExpoGrid::BuildActions()
{
    actions[RepeatAction] = AddAction(tr("Repeat\t(Return)"));
    actions[CutAction] = AddAction(tr("Cut\t(Ctrl+X)"));
    actions[CopyAction] = AddAction(tr("Copy\t(Ctrl+C)"));
    actions[PasteAction] = AddAction(tr("Paste\t(Ctrl+V)"));
    actions[SerieAction] = AddAction(tr("Serie\t(Ctrl+G)"));
    actions[CycleAction] = AddAction(tr("Cycle\t(Ctrl+H)"));
    actions[StartExpoAction] = AddAction(tr("StartExpo\t(Home)"));
    actions[EndExpoAction] = AddAction(tr("EndExpo\t(End)"));
    actions[InsertAction] = AddAction(tr("Insert Bloc\t(Ins)"));
    actions[CutAction] = AddAction(tr("Clear  Bloc\t(Del)")); // in the place of Cut, see above
    actions[RemoveAction] = AddAction(tr("Remove Bloc\t(Ctrl+Del)"));
    setContextMenuPolicy(Qt::ActionsContextMenu);

    connect(actions[RepeatAction], &QAction::triggered, this, &WExpoGrid::OnRepeat);
    connect(actions[CopyAction], &QAction::triggered, this, &WExpoGrid::OnCopy);
    connect(actions[PasteAction], &QAction::triggered, this, &WExpoGrid::OnPaste);
    connect(actions[CutAction], &QAction::triggered, this, &WExpoGrid::OnCut);
    connect(actions[SerieAction], &QAction::triggered, this, &WExpoGrid::OnSerie);
    connect(actions[CycleAction], &QAction::triggered, this, &WExpoGrid::OnCycle);
    connect(actions[StartExpoAction], &QAction::triggered, this, &WExpoGrid::OnStartExpo);
    connect(actions[EndExpoAction], &QAction::triggered, this, &WExpoGrid::OnEndExpo);
    connect(actions[InsertAction], &QAction::triggered, this, &WExpoGrid::OnInsert);
    connect(actions[RemoveAction], &QAction::triggered, this, &WExpoGrid::OnRemove);
}

QAction *WExpoGrid::AddAction(const QString &text)
{
    auto *action = new QAction(text, this);
    addAction(action);
    return action;
}

// What the sheet is without a host: five by five cells that take no change.

// NOLINTNEXTLINE(performance-unnecessary-value-param): the slot takes the string over
void WExpoGrid::StartUndoGroup(QString) { }

void WExpoGrid::EndUndoGroup() { }

QString WExpoGrid::GetColName(int)
{
    return QStringLiteral("??");
}

int WExpoGrid::GetNbc()
{
    return 5;
}

int WExpoGrid::GetNbl()
{
    return 5;
}

bool WExpoGrid::GetCurrentCell(int *, int *)
{
    return false;
}

bool WExpoGrid::SetCurrentCell(int, int)
{
    return false;
}

QString WExpoGrid::GetCellText(int, int)
{
    return QStringLiteral("?");
}

int WExpoGrid::GetCellValue(int, int)
{
    return 0;
}

bool WExpoGrid::SetCellValue(int, int, int)
{
    return false;
}

int WExpoGrid::GetColWidth()
{
    return 36;
}

quint8 WExpoGrid::GetCellKey(int, int)
{
    return 0;
}

void WExpoGrid::LoadColKeys(int) { }

QBrush WExpoGrid::GetColBrush(int)
{
    return QBrush(Qt::white);
}

bool WExpoGrid::GetSheetFlag()
{
    return false;
}

void WExpoGrid::SetStartExpo(int, int) { }

void WExpoGrid::SetEndExpo(int, int) { }

void WExpoGrid::SwapCols(int, int) { }

bool WExpoGrid::IsBlankCol(int)
{
    return true;
}

int WExpoGrid::GetEmptyValue(int)
{
    return 0;
}

bool WExpoGrid::IsBusy()
{
    return false;
}

// The selection.

bool WExpoGrid::GetSelectedBloc(int *left, int *right, int *top, int *bottom, int mode)
{
    const QList<QTableWidgetSelectionRange> ranges = selectedRanges();
    if (ranges.size() != 1)
        return false;
    const QTableWidgetSelectionRange &range = ranges.first();
    if (mode == 0 && range.columnCount() != 1 && range.rowCount() != 1)
        return false;
    if (mode == 1 && range.columnCount() != 1)
        return false;
    if (mode == 2 && range.rowCount() != 1)
        return false;

    *left = range.leftColumn();
    *right = range.rightColumn();
    *top = range.topRow();
    *bottom = range.bottomRow();

    // What such a command writes goes on below the current cell, so the selection has to end in it.
    // A column dragged upwards ends with the current cell on top and is refused.
    return mode != 1 || *bottom == currentRow();
}

void WExpoGrid::SelectBloc(int left, int right, int top, int bottom)
{
    setRangeSelected(QTableWidgetSelectionRange(top, left, bottom, right), /*select=*/true);
}

// The current cell. The document owns it, not the table.

void WExpoGrid::OnSelectionChanged(int row, int col, int oldRow, int oldCol)
{
    if (!SetCurrentCell(row, col))
        return; // the document was there already: this is an echo
    MarkCurrent(oldRow, oldCol, /*on=*/false);
    MarkCurrent(row, col, /*on=*/true);
    emit SigSomethingHasChanged(UpdCurrent, this);
}

void WExpoGrid::SyncCurrentCell()
{
    const int oldCol = currentColumn();
    const int oldRow = currentRow();
    int col = oldCol;
    int row = oldRow;
    if (!GetCurrentCell(&col, &row))
        return;
    if (col == oldCol && row == oldRow)
        return;

    {
        const QSignalBlocker quiet(this); // no echo into OnSelectionChanged
        setCurrentCell(row, col, QItemSelectionModel::ClearAndSelect);
    }
    MarkCurrent(oldRow, oldCol, /*on=*/false);
    MarkCurrent(row, col, /*on=*/true);
    update();
}

void WExpoGrid::OnUpdate(UpdateLevel upd, void *caller)
{
    if (caller == this || upd < UpdCurrent)
        return;
    if (upd > UpdCurrent)
        RefreshGrid();
    SyncCurrentCell();
    update();
}

// The keyboard and the typed cell.

void WExpoGrid::keyPressEvent(QKeyEvent *event)
{
    static const struct
    {
        QKeySequence::StandardKey key;
        void (WExpoGrid::*run)();
    } standardKeys[] = {
        { QKeySequence::Cut, &WExpoGrid::OnCut },
        { QKeySequence::Copy, &WExpoGrid::OnCopy },
        { QKeySequence::Paste, &WExpoGrid::OnPaste },
    };
    static const struct
    {
        int key;
        Qt::KeyboardModifier modifiers; // exactly these
        void (WExpoGrid::*run)();
    } keys[] = {
        { Qt::Key_Return, Qt::NoModifier, &WExpoGrid::OnRepeat }, // Key_Enter goes to the table
        { Qt::Key_Insert, Qt::NoModifier, &WExpoGrid::OnInsert },
        { Qt::Key_Delete, Qt::NoModifier, &WExpoGrid::OnDelete },
        { Qt::Key_Home, Qt::NoModifier, &WExpoGrid::OnStartExpo },
        { Qt::Key_End, Qt::NoModifier, &WExpoGrid::OnEndExpo },
        { Qt::Key_G, Qt::ControlModifier, &WExpoGrid::OnSerie },
        { Qt::Key_H, Qt::ControlModifier, &WExpoGrid::OnCycle },
        { Qt::Key_Delete, Qt::ControlModifier, &WExpoGrid::OnRemove },
    };

    // What an open editor leaves over comes up here, the Return that ends the typing first of all.
    // It must not run Repeat on top: a typed cell is one undo step.
    if (state() == EditingState) {
        QAbstractItemView::keyPressEvent(event);
        // Return ends the typing by an event that the delegate has posted to itself. Who types on
        // while the program is busy has the next key come before it: it would be lost.
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            QCoreApplication::sendPostedEvents(itemDelegate(), QEvent::MetaCall);
        return;
    }

    for (const auto &command : standardKeys) {
        if (event->matches(command.key))
            return (this->*command.run)();
    }
    for (const auto &command : keys) {
        if (event->key() == command.key && event->modifiers() == command.modifiers)
            return (this->*command.run)();
    }
    QAbstractItemView::keyPressEvent(event);
}

void WExpoGrid::OnCellChanged(int row, int col)
{
    RunInUndoGroup(QStringLiteral("morvex:EditCell"), [&] {
        const QTableWidgetItem *cell = item(row, col);
        if (cell && StoreTypedCell(row, col, cell->text()))
            emit SigSomethingHasChanged(UpdCells, this); // announced inside the undo step
    });
}
