// The editors that the outline opens in place. One that is open belongs to a layer, not to a row:
// rows may come and go under it.
#include "ImageNumber.h"
#include "ItemText.h"
#include "Labels.h"
#include "TimelineOutline.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>

namespace rostrum {
namespace {

/// "12.5" and "12,5" are the same to a hand. @return false for what is no number
bool ReadNumber(QString text, double *number)
{
    bool good = false;
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    const double read = QLocale::c().toDouble(text.trimmed(), &good);
    if (!good || !qIsFinite(read))
        return false;
    *number = read;
    return true;
}

} // namespace

/// Where its layer is gone from the rows, so is the editor.
void TimelineOutline::PlaceEditor()
{
    if (!editor && !cbParent)
        return;
    const bool isValue = editor && editor->objectName() == QLatin1String("efValue");
    const int row = editedIn != board.Place() ? -1
        : isValue                             ? board.Rows().RowOf(editedLayer, editedStream.id)
                                              : board.Rows().RowOf(editedLayer);
    if (row < 0) {
        CloseEditor();
        return;
    }
    const OutlineCells cells(width());
    if (cbParent)
        cbParent->setGeometry(cells.Rect(OutlineCells::Parent, TopOf(row)));
    else if (isValue)
        editor->setGeometry(cells.Rect(OutlineCells::Value, TopOf(row), editedComponent));
    else
        editor->setGeometry(cells.Rect(OutlineCells::Name, TopOf(row)));
}

void TimelineOutline::OpenEditor(const QString &text, const char *name, int row)
{
    CloseEditor();
    editedIn = board.Place();
    editedLayer = board.Rows().At(row).layer;
    editedStream = board.Rows().At(row).stream;
    editor = new QLineEdit(text, this);
    editor->setObjectName(QLatin1String(name));
    editor->setFrame(false);
    editor->installEventFilter(this);
    PlaceEditor();
    editor->show();
    editor->selectAll();
    editor->setFocus();
}

void TimelineOutline::CloseEditor()
{
    const bool hadFocus = (editor && editor->hasFocus()) || (cbParent && cbParent->hasFocus());
    for (QWidget *open : { static_cast<QWidget *>(editor), static_cast<QWidget *>(cbParent) }) {
        if (!open)
            continue;
        open->disconnect(this);
        open->removeEventFilter(this);
        open->hide();
        open->deleteLater();
    }
    editor.clear();
    cbParent.clear();
    if (hadFocus)
        setFocus();
}

void TimelineOutline::OnEditValue(int row, int component)
{
    if (row < 0 || row >= board.Rows().Count() || board.Rows().At(row).isLayer)
        return;
    emit SigShowRow(row);
    editedComponent = component;
    const Layer *layer = board.LayerOf(board.Rows().At(row));
    const Stream *stream = board.StreamOf(board.Rows().At(row));
    if (!layer || !stream)
        return;
    // A key that lies in the frame is meant, also where it is not at its very start.
    const Rate rate = board.GetRate();
    const int frame = board.GetSession().CurrentFrame();
    const int key = KeyInFrame(*stream, *layer, rate, frame);
    editedTime = key < 0 ? rate.FrameTime(frame) : layer->ToCompTime(stream->KeyAt(key).time);
    OpenEditor(ValueText(board.Rows().At(row), component), "efValue", row);
    connect(editor, &QLineEdit::editingFinished, this, &TimelineOutline::OnValueTyped);
}

void TimelineOutline::OnValueTyped()
{
    if (!editor)
        return;
    const QString text = editor->text();
    const bool isChanged = editor->isModified();
    CloseEditor();
    double number = 0;
    if (!isChanged || !ReadNumber(text, &number))
        return; // the old value stands there again
    number = qBound(editedStream.low, number, editedStream.high);
    const Layer *layer
        = board.GetSession().GetProject().FindLayer(editedIn.composition, editedLayer);
    const Stream *stream = layer ? FindStream(*layer, editedStream.id) : nullptr;
    if (!stream)
        return;
    Rate rate;
    StreamValue value = stream->ValueAt(layer->ToLayerTime(editedTime));
    const bool isImage = editedStream.id.IsTimeRemap()
        && FindImageRate(board.GetSession().GetProject(), *layer, &rate);
    value[std::size_t(editedComponent)] = isImage ? SecondsOfImage(qRound(number), rate) : number;
    board.Do("Set " + editedStream.name.toUtf8(), [&](Project &project) {
        SetStreamValue(
            project, editedIn.composition, editedLayer, editedStream.id, editedTime, value);
    });
}

void TimelineOutline::OnRename(int row)
{
    if (row < 0 || row >= board.Rows().Count() || !board.Rows().At(row).isLayer)
        return;
    emit SigShowRow(row);
    const Layer *layer = board.LayerOf(board.Rows().At(row));
    if (!layer)
        return;
    OpenEditor(LayerText(board.Shown(), *layer), "efName", row);
    connect(editor, &QLineEdit::editingFinished, this, &TimelineOutline::OnNameTyped);
}

/// No name gives the layer that of its source again.
void TimelineOutline::OnNameTyped()
{
    if (!editor)
        return;
    const QByteArray name = editor->text().toUtf8();
    const bool isChanged = editor->isModified();
    CloseEditor();
    if (!isChanged)
        return;
    board.Do("Rename Layer", [&](Project &project) {
        if (Layer *layer = project.EditLayer(editedIn.composition, editedLayer))
            layer->name = name;
    });
}

void TimelineOutline::PickParent(const TimelineRow &row)
{
    const Layer *layer = board.LayerOf(row);
    const Composition *composition = board.ShownComp();
    if (!layer || !composition)
        return;
    CloseEditor();
    editedIn = board.Place();
    editedLayer = row.layer;
    cbParent = new QComboBox(this);
    cbParent->setObjectName(QStringLiteral("cbParent"));
    cbParent->addItem(tr("None"), 0);
    for (const LayerId id : PossibleParents(board.Shown(), editedIn.composition, row.layer)) {
        const int index = composition->IndexOf(id);
        cbParent->addItem(QStringLiteral("%1  %2").arg(index + 1).arg(
                              LayerText(board.Shown(), *composition->layers[index])),
            id);
    }
    cbParent->setCurrentIndex(qMax(0, cbParent->findData(layer->parent)));
    cbParent->view()->setMinimumWidth(220);
    connect(cbParent, QOverload<int>::of(&QComboBox::activated), this,
        &TimelineOutline::OnParentPicked);
    cbParent->installEventFilter(this);
    PlaceEditor();
    cbParent->show();
    cbParent->setFocus();
    cbParent->showPopup();
}

void TimelineOutline::OnParentPicked()
{
    const LayerId parent = cbParent ? cbParent->currentData().toInt() : 0;
    CloseEditor();
    board.Do("Parent Layer",
        [&](Project &project) { project.SetParent(editedIn.composition, editedLayer, parent); });
}

void TimelineOutline::PickLabel(LayerId layer, const QPoint &globalPlace)
{
    board.SelectForDrag(layer);
    const QVector<LayerId> layers = board.GetSession().SelectedLayers();
    const ItemId composition = board.Comp();
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("mnLabel"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    FillLabelMenu(menu, [=](int label) {
        board.Do("Label Layer", [&](Project &project) {
            for (const LayerId each : layers) {
                if (Layer *edited = project.EditLayer(composition, each))
                    edited->label = static_cast<qint8>(label);
            }
        });
    });
    menu->popup(globalPlace);
}

bool TimelineOutline::eventFilter(QObject *object, QEvent *event)
{
    const bool isEditor = object == editor || object == cbParent;
    if (isEditor && event->type() == QEvent::ShortcutOverride) {
        event->accept(); // whatever the window would do with the key, it is typed here
        return true;
    }
    if (isEditor && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Escape) {
            CloseEditor();
            return true;
        }
        if (key == Qt::Key_Tab && object == editor
            && editedComponent + 1 < editedStream.components) {
            const int row = board.Rows().RowOf(editedLayer, editedStream.id);
            const int next = editedComponent + 1;
            OnValueTyped();
            OnEditValue(row, next);
            return true;
        }
    }
    // Its own list takes the focus, too.
    if (object == cbParent && event->type() == QEvent::FocusOut && !cbParent->view()->isVisible())
        CloseEditor();
    return QWidget::eventFilter(object, event);
}

} // namespace rostrum
