#include "EditCommands.h"

#include "window/Commands.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace rostrum {
namespace {

QString NameOf(const QVector<QByteArray> &names)
{
    return names.isEmpty() ? QString() : QLatin1Char(' ') + QString::fromUtf8(names.last());
}

QAction *ActionWithKey(const QWidget &widget, const QKeySequence &key)
{
    for (QAction *action : widget.actions()) {
        if (action->isEnabled() && action->shortcuts().contains(key))
            return action;
    }
    return nullptr;
}

} // namespace

bool RunFocusKey(QKeySequence::StandardKey standardKey)
{
    QWidget *focus = QApplication::focusWidget();
    const QKeySequence key(standardKey);
    if (!focus || key.isEmpty())
        return false;
    for (QWidget *widget = focus; widget && !widget->isWindow(); widget = widget->parentWidget()) {
        if (QAction *action = ActionWithKey(*widget, key)) {
            action->trigger();
            return true;
        }
    }
    const int code = key[0] & ~static_cast<int>(Qt::KeyboardModifierMask);
    const auto modifiers
        = static_cast<Qt::KeyboardModifiers>(key[0] & static_cast<int>(Qt::KeyboardModifierMask));
    for (const QEvent::Type type : { QEvent::KeyPress, QEvent::KeyRelease }) {
        QKeyEvent event(type, code, modifiers);
        QApplication::sendEvent(focus, &event);
    }
    return true;
}

EditCommands::EditCommands(Session &session, QObject *parent) : QObject(parent), session(session)
{
    connect(&session, &Session::HistoryChanged, this, &EditCommands::FollowHistory);
}

/// The key is shown, and belongs to the widget with the focus: the menu's own never works.
void EditCommands::AddFocusEntry(QMenu *menu, const QString &text, QKeySequence::StandardKey key)
{
    QAction *action = AddEntry(menu, text, key, this, [key] { RunFocusKey(key); });
    action->setShortcutContext(Qt::WidgetShortcut);
}

void EditCommands::Fill(QMenu *menu)
{
    undo = AddEntry(menu, QString(), CtrlKey(Qt::Key_Z), this,
        [this] { session.RunCommand(kHostCommandUndo); });
    redo = AddEntry(menu, QString(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), this,
        [this] { session.RunCommand(kHostCommandRedo); });
    AddEntry(menu, tr("&History"), this, &EditCommands::HistoryWanted);
    menu->addSeparator();
    AddFocusEntry(menu, tr("Cu&t"), QKeySequence::Cut);
    AddFocusEntry(menu, tr("&Copy"), QKeySequence::Copy);
    AddFocusEntry(menu, tr("&Paste"), QKeySequence::Paste);
    AddFocusEntry(menu, tr("&Delete"), QKeySequence::Delete);
    FollowHistory();
}

void EditCommands::FollowHistory()
{
    if (!undo)
        return;
    const Document &document = session.GetDocument();
    const QVector<QByteArray> undoNames = document.UndoNames();
    const QVector<QByteArray> redoNames = document.RedoNames();
    undo->setText(tr("&Undo") + NameOf(undoNames));
    undo->setEnabled(!undoNames.isEmpty());
    redo->setText(tr("&Redo") + NameOf(redoNames));
    redo->setEnabled(!redoNames.isEmpty());
}

} // namespace rostrum
