#include "SheetSession.h"

#include "panel/Doc.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QTest>

using namespace rostrum;

namespace {

struct DeedKey
{
    const char *name;
    int key;
    Qt::KeyboardModifiers modifiers;
};

const DeedKey kDeeds[] = { { "type", 0, {} }, { "Repeat", Qt::Key_Return, {} },
    { "Serie", Qt::Key_G, Qt::ControlModifier }, { "Cycle", Qt::Key_H, Qt::ControlModifier },
    { "StartExpo", Qt::Key_Home, {} }, { "EndExpo", Qt::Key_End, {} },
    { "Insert", Qt::Key_Insert, {} }, { "Remove", Qt::Key_Delete, Qt::ControlModifier },
    { "Clear", Qt::Key_Delete, {} }, { "Copy", Qt::Key_C, Qt::ControlModifier },
    { "Cut", Qt::Key_X, Qt::ControlModifier }, { "Paste", Qt::Key_V, Qt::ControlModifier } };

constexpr int kDeedCount = 12;

QByteArray Numbers(const QVector<int> &values)
{
    QByteArray text;
    for (const int value : values)
        text += ' ' + QByteArray::number(value);
    return text;
}

QByteArray Texts(const QStringList &texts)
{
    return '[' + texts.join(QLatin1Char('|')).toUtf8() + ']';
}

QByteArray Cell(int col, int row)
{
    return QByteArray::number(col) + ',' + QByteArray::number(row);
}

/// Runs of small numbers, so that neighbours are often equal, from frame 0 on.
Keys RandomKeys(QRandomGenerator &dice, int frames, int images)
{
    Keys keys;
    for (int frame = 0; frame < frames; frame += 1 + dice.bounded(6)) {
        const int image = dice.bounded(4) ? dice.bounded(5) : dice.bounded(images + 2);
        keys << testing::KeyAt{ frame, image };
    }
    return keys;
}

ColumnPlan RandomSeries(QRandomGenerator &dice, int frames, const QString &extension)
{
    // 29 and its like are the images whose seconds, times 25, fall short of them.
    const int images[] = { 9, 13, 31, 60, 119 };
    const int count = images[dice.bounded(5)];
    return SeriesColumn("walk", count, RandomKeys(dice, frames, count), extension);
}

QString RandomText(QRandomGenerator &dice)
{
    static const char *const odd[] = { ":", "ab", "12a", "12345", "007", "9999", "10000", "-3" };
    switch (dice.bounded(8)) {
    case 0:
        return QLatin1String(odd[dice.bounded(int(std::size(odd)))]);
    case 1:
        return QString::number(27 + dice.bounded(4));
    case 2:
        return QString::number(dice.bounded(130));
    default:
        return QString::number(dice.bounded(6));
    }
}

/// The cells that a command is tried on: mostly those that it takes.
void RandomSelection(SheetStep &step, QRandomGenerator &dice, int columns, int frames)
{
    step.selects = true;
    step.fromCol = step.toCol = dice.bounded(columns);
    step.fromRow = step.toRow = dice.bounded(frames);
    const bool isAny = dice.bounded(12) == 0;
    const bool isCell = step.deed == Deed::Type || step.deed == Deed::Repeat;
    const bool isRow = step.deed == Deed::StartExpo || step.deed == Deed::EndExpo;
    const bool isBloc
        = step.deed == Deed::Insert || step.deed == Deed::Remove || step.deed == Deed::Clear;
    if (isAny || isRow || isBloc)
        step.toCol = qMin(columns - 1, step.fromCol + dice.bounded(3));
    if (isAny || !(isCell || isRow))
        step.toRow = qMin(frames - 1, step.fromRow + dice.bounded(6));
    if (dice.bounded(isBloc ? 2 : 20) == 0) { // dragged upwards
        qSwap(step.fromCol, step.toCol);
        qSwap(step.fromRow, step.toRow);
    }
}

SheetStep::Kind RandomKind(QRandomGenerator &dice)
{
    const int kind = dice.bounded(40);
    return kind < 3 ? SheetStep::Undo
        : kind < 5  ? SheetStep::Redo
        : kind < 9  ? SheetStep::Reload
        : kind < 10 ? SheetStep::PutKey
        : kind < 11 ? SheetStep::TakeKey
                    : SheetStep::Command;
}

/// Types over the current cell and ends with Return. No event but those that the editor posts is
/// served, so that a session of many steps stays quick.
void TypeOver(QWidget &grid, QWidget &viewport, const QString &text)
{
    QTest::keyClick(&grid, text[0].toLatin1());
    auto *editor = viewport.findChild<QLineEdit *>();
    if (!editor)
        return;
    QTest::keyClicks(editor, text.mid(1));
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall); // the editor hands over later
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

QByteArray Describe(const SheetPlan &plan)
{
    QByteArray text;
    for (const ColumnPlan &column : plan) {
        text += "  column " + column.name;
        if (column.source == Source::Series) {
            text += ' ' + QByteArray::number(column.images) + " images " + column.extension.toUtf8()
                + ", keys";
            for (int i = 0; i < column.keys.size(); ++i) {
                text += ' ' + Cell(column.keys[i].frame, column.keys[i].image);
                if (column.linear.contains(i))
                    text += '/';
            }
        }
        text += '\n';
    }
    return text;
}

QByteArray Describe(const SheetStep &step)
{
    QByteArray text;
    if (step.selects)
        text
            += '(' + Cell(step.fromCol, step.fromRow) + ")-(" + Cell(step.toCol, step.toRow) + ") ";
    switch (step.kind) {
    case SheetStep::Command:
        text += kDeeds[int(step.deed)].name;
        return step.deed == Deed::Type ? text + " \"" + step.text.toUtf8() + '"' : text;
    case SheetStep::Undo:
        return text + "undo";
    case SheetStep::Redo:
        return text + "redo";
    case SheetStep::Reload:
        return text + "reload";
    case SheetStep::PutKey:
        return text + "by hand: a key at " + Cell(step.toCol, step.toRow) + " of "
            + QByteArray::number(step.image) + (step.isLinear ? ", linear" : ", hold");
    case SheetStep::TakeKey:
        return text + "by hand: no key behind " + Cell(step.toCol, step.toRow);
    }
    return text;
}

SheetPlan RandomPlan(quint32 seed, int *frames)
{
    QRandomGenerator dice(seed);
    *frames = 16 + dice.bounded(20);
    const QString png = QStringLiteral("png");
    SheetPlan plan{ RandomSeries(dice, *frames, png), RandomSeries(dice, *frames, png),
        RandomSeries(dice, *frames, QStringLiteral("psd")), StillColumn("sky.png") };
    ColumnPlan ramp = RandomSeries(dice, *frames, png);
    for (int key = 0; key < ramp.keys.size(); key += 1 + dice.bounded(4))
        ramp.linear << key;
    plan << ramp;
    if (dice.bounded(2))
        plan << SeriesColumn("run", 24, {}); // without keys it shows its own time
    for (int i = plan.size() - 1; i > 0; --i)
        plan.move(i, dice.bounded(i + 1));
    return plan;
}

SheetSteps RandomSteps(quint32 seed, int count, int columns, int frames)
{
    QRandomGenerator dice(seed ^ 0x5EED5u);
    SheetSteps steps;
    for (int i = 0; i < count; ++i) {
        SheetStep step;
        step.kind = RandomKind(dice);
        step.deed = dice.bounded(4) ? Deed(dice.bounded(kDeedCount)) : Deed::Type;
        step.text = RandomText(dice);
        step.image = dice.bounded(14);
        step.isLinear = dice.bounded(2);
        RandomSelection(step, dice, columns, frames);
        step.selects = step.kind == SheetStep::Command && dice.bounded(10) > 0;
        steps << step;
    }
    return steps;
}

SheetModel ModelOf(BoundSheet &sheet)
{
    SheetModel model;
    model.rows = sheet.frames;
    const Rate rate{ 25, 1 };
    for (int col = 0; col < sheet.plan.size(); ++col) {
        const ColumnPlan &plan = sheet.plan[col];
        const Layer &layer = sheet.LayerOf(col);
        ModelColumn column;
        column.isSeries = plan.source == Source::Series;
        column.isBlank = column.isSeries && plan.extension == QLatin1String("png");
        column.last = plan.images - 1;
        column.start = column.hostStart = rate.FrameAt(layer.inPoint);
        column.end = column.hostEnd = column.start + rate.FrameAt(layer.duration) - 1;
        column.cells = column.isSeries ? sheet.HostColumn(col) : QVector<int>(model.rows);
        model.columns << column;
    }
    return model;
}

void DoCommand(BoundSheet &sheet, const SheetStep &step)
{
    if (step.selects)
        sheet.Robot().Drag(step.fromCol, step.fromRow, step.toCol, step.toRow);
    if (step.deed == Deed::Type)
        return TypeOver(sheet.grid, *sheet.grid.viewport(), step.text);
    const DeedKey &key = kDeeds[int(step.deed)];
    sheet.Robot().Key(key.key, key.modifiers);
}

void DoByHand(BoundSheet &sheet, const SheetStep &step)
{
    if (sheet.plan[step.toCol].source != Source::Series)
        return;
    Stream &remap = sheet.EditLayerOf(step.toCol, "by hand").timeRemap;
    const Time time{ step.toRow, 25 };
    if (step.kind == SheetStep::PutKey) {
        const int key = remap.InsertKey(time, { step.image / 25.0, 0, 0, 0 });
        const Interpolation kind = step.isLinear ? Interpolation::Linear : Interpolation::Hold;
        remap.SetKeyInterpolation(key, kind, kind);
    } else if (remap.KeysBefore(time) < remap.KeyCount()) {
        remap.DeleteKey(remap.KeysBefore(time));
    }
    sheet.Doc().CloseLooseEnds();
}

SheetSteps Shrink(SheetSteps steps, const std::function<bool(const SheetSteps &)> &fails, int tries)
{
    int part = qMax(1, steps.size() / 2);
    while (tries > 0) {
        bool isShorter = false;
        for (int from = 0; from < steps.size() && tries > 0;) {
            SheetSteps shorter = steps;
            shorter.remove(from, qMin(part, steps.size() - from));
            --tries;
            if (fails(shorter)) {
                steps = shorter;
                isShorter = true;
            } else {
                from += part;
            }
        }
        if (part == 1 && !isShorter)
            break;
        part = isShorter ? qMin(part, qMax(1, steps.size() / 2)) : part / 2;
    }
    return steps;
}

// The session.

QByteArray SheetSession::Run(const SheetPlan &plan, int frames, const SheetSteps &steps)
{
    BoundSheet sheet(plan, frames);
    sheet.Show();
    states = { sheet.Doc().GetProject() };
    chosen = Chosen();
    chosen.col = sheet.grid.currentColumn();
    chosen.row = sheet.grid.currentRow();
    model = ModelOf(sheet);
    TakeFromHost(sheet);
    if (const QByteArray error = Compare(sheet); !error.isEmpty())
        return "after the load: " + error;
    for (int i = 0; i < steps.size(); ++i) {
        const QByteArray error = Do(sheet, steps[i]);
        if (!error.isEmpty())
            return "at step " + QByteArray::number(i + 1) + " of "
                + QByteArray::number(steps.size()) + ", " + Describe(steps[i]) + ": " + error;
    }
    if (const QByteArray error = Reload(sheet); !error.isEmpty())
        return "at the closing reload: " + error;
    const QByteArray error = UndoAll(sheet);
    return error.isEmpty() ? error : "undoing all: " + error;
}

QByteArray SheetSession::Do(BoundSheet &sheet, const SheetStep &step)
{
    switch (step.kind) {
    case SheetStep::Command:
        return DoDeed(sheet, step);
    case SheetStep::Undo:
    case SheetStep::Redo:
        return GoInHistory(sheet, step.kind == SheetStep::Undo);
    case SheetStep::Reload:
        return Reload(sheet);
    case SheetStep::PutKey:
    case SheetStep::TakeKey: {
        DoByHand(sheet, step);
        const QByteArray error = CompareHistory(sheet, "by hand");
        return error.isEmpty() ? Reload(sheet) : error;
    }
    }
    return {};
}

QByteArray SheetSession::DoDeed(BoundSheet &sheet, const SheetStep &step)
{
    if (step.selects) {
        chosen.any = true;
        chosen.left = qMin(step.fromCol, step.toCol);
        chosen.right = qMax(step.fromCol, step.toCol);
        chosen.top = qMin(step.fromRow, step.toRow);
        chosen.bottom = qMax(step.fromRow, step.toRow);
        chosen.col = step.toCol;
        chosen.row = step.toRow;
    }
    const QTableWidgetItem *cell = sheet.grid.item(chosen.row, chosen.col);
    const QString before = cell ? cell->text() : QString();
    DoCommand(sheet, step);
    model.Do(step.deed, chosen, step.text);
    if (spoil)
        spoil(model, step);

    const QString box = sheet.Robot().TakeBoxes().join(QLatin1String(" and "));
    if (box != model.box)
        return "shows the box \"" + box.toUtf8() + "\" for \"" + model.box.toUtf8() + '"';
    // A cell without a number of its own is not written again: it goes on showing what was typed.
    if (step.deed == Deed::Type && !model.columns[chosen.col].isSeries)
        typedOver.insert({ chosen.col, chosen.row }, step.text);
    else if (!model.undoName.isEmpty() && (step.deed != Deed::Type || step.text != before))
        typedOver.clear(); // by the rebuild; what is typed as it stands is no change to the table
    if (sheet.grid.currentColumn() != chosen.col || sheet.grid.currentRow() != chosen.row)
        return "the current cell is not " + Cell(chosen.col, chosen.row);
    QByteArray error = CompareHistory(sheet, model.undoName.toLatin1());
    if (error.isEmpty())
        error = Compare(sheet);
    return error.isEmpty() ? CompareAccount(sheet) : error;
}

QByteArray SheetSession::GoInHistory(BoundSheet &sheet, bool back)
{
    const int next = state + (back ? -1 : 1);
    const bool can = next >= 0 && next < states.size();
    if ((back ? sheet.Doc().Undo() : sheet.Doc().Redo()) != can)
        return can ? "there is nothing to go to" : "there was something to go to";
    if (!can)
        return {};
    state = next;
    if (sheet.Doc().GetProject() != states[state])
        return "the project is another one";
    // The table does not follow before the reload that the panel makes after it.
    QByteArray error;
    for (int col = 0; col < model.columns.size() && error.isEmpty(); ++col) {
        if (sheet.Table(col) != model.columns[col].cells)
            error = "the table changed by itself";
    }
    return error.isEmpty() ? Reload(sheet) : error;
}

QByteArray SheetSession::Reload(BoundSheet &sheet)
{
    if (!sheet.grid.UpdateFromCompo())
        return "the reload fails";
    typedOver.clear();
    TakeFromHost(sheet);
    QByteArray error = CompareHistory(sheet, "morvex:Reload");
    if (error.isEmpty() && sheet.Doc().GetProject() != states[state])
        error = "the reload changes the project";
    if (error.isEmpty())
        error = Compare(sheet);
    return error.isEmpty() ? CompareAccount(sheet) : error;
}

QByteArray SheetSession::UndoAll(BoundSheet &sheet)
{
    while (state > 0) {
        if (!sheet.Doc().Undo())
            return "it ends early";
        if (sheet.Doc().GetProject() != states[--state])
            return "the project before \"" + names[state] + "\" is another one";
    }
    return sheet.Doc().Undo() ? "there is more than was done" : QByteArray();
}

QByteArray SheetSession::Compare(BoundSheet &sheet) const
{
    if (sheet.grid.columnCount() != model.columns.size() || sheet.grid.rowCount() != model.rows)
        return "the table has another size";
    for (int col = 0; col < model.columns.size(); ++col) {
        const QByteArray where = "column " + QByteArray::number(col);
        const ModelColumn &column = model.columns[col];
        if (const QVector<int> table = sheet.Table(col); table != column.cells)
            return where + " holds" + Numbers(table) + "\n  for" + Numbers(column.cells);
        QStringList texts = model.Texts(col);
        for (int row = 0; row < model.rows; ++row)
            texts[row] = typedOver.value({ col, row }, texts[row]);
        if (const QStringList shown = sheet.Shown(col); shown != texts)
            return where + " shows " + Texts(shown) + "\n  for " + Texts(texts);
        if (!holds[col])
            continue;
        if (const QVector<int> host = sheet.HostColumn(col); host != column.cells)
            return where + " is in the host" + Numbers(host) + "\n  for" + Numbers(column.cells);
    }
    return {};
}

QByteArray SheetSession::CompareHistory(BoundSheet &sheet, const QByteArray &name)
{
    const Project &now = sheet.Doc().GetProject();
    if (now != states[state]) {
        if (name.isEmpty())
            return "the project changed";
        states.resize(state + 1);
        names.resize(state);
        states << now;
        names << name;
        ++state;
        ++changes;
    }
    const QVector<QByteArray> undo = sheet.Doc().UndoNames();
    if (undo != names.mid(0, state))
        return "the history ends in \"" + undo.value(undo.size() - 1) + "\", "
            + QByteArray::number(undo.size()) + " entries for " + QByteArray::number(state);
    if (sheet.Doc().RedoNames().size() != names.size() - state)
        return "what can be redone is another number";
    return {};
}

QByteArray SheetSession::CompareAccount(BoundSheet &sheet) const
{
    for (int col = 0; col < model.columns.size(); ++col) {
        const Layer &layer = sheet.LayerOf(col);
        const Time in{ model.columns[col].hostStart, 25 };
        const Time length{ model.columns[col].hostEnd - model.columns[col].hostStart + 1, 25 };
        if (layer.inPoint != in || layer.duration != length)
            return "column " + QByteArray::number(col) + " has another span in the host";
    }
    if (sheet.Doc().IsGroupOpen())
        return "an undo group is open";
    const QByteArrayList wrong = sheet.host.Account() + sheet.host.Complaints();
    return wrong.join(", ");
}

void SheetSession::TakeFromHost(BoundSheet &sheet)
{
    const QVector<ModelColumn> before = model.columns;
    model.columns = ModelOf(sheet).columns;
    holds.fill(false, model.columns.size());
    for (int col = 0; col < model.columns.size(); ++col) {
        if (!model.columns[col].isSeries && !before[col].cells.isEmpty())
            model.columns[col].cells = before[col].cells;
        holds[col] = model.columns[col].isSeries && sheet.HoldsFromStart(col);
    }
}
