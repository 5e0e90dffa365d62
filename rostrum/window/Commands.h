// What the menus' classes have in common: an entry with a key, that calls a function.
//
// The keys of the entries count in the whole window. What belongs to whatever has the focus (Return,
// Home, End, Ins, Del, Space, the page keys, Ctrl+X, C, V, G, H and Ctrl+Del) is never among them.
#pragma once

#include <QAction>
#include <QKeySequence>
#include <QMenu>

namespace rostrum {

/// Ctrl and a key. Qt's operator would join two enumerations, of which neither has the result.
inline QKeySequence CtrlKey(Qt::Key key)
{
    return { static_cast<int>(Qt::CTRL) | static_cast<int>(key) };
}

template <typename Receiver, typename Slot>
QAction *AddEntry(
    QMenu *menu, const QString &text, const QKeySequence &key, Receiver *receiver, Slot slot)
{
    QAction *action = menu->addAction(text);
    action->setShortcut(key);
    QObject::connect(action, &QAction::triggered, receiver, slot);
    return action;
}

template <typename Receiver, typename Slot>
QAction *AddEntry(QMenu *menu, const QString &text, Receiver *receiver, Slot slot)
{
    return AddEntry(menu, text, QKeySequence(), receiver, slot);
}

/// Shows an entry grey while its menu is open and the test fails. While the menu is closed its key
/// works all the same: what it needs may have come meanwhile, so that its function looks itself.
template <typename Test>
void GreyUnless(QMenu *menu, QAction *action, Test test)
{
    QObject::connect(
        menu, &QMenu::aboutToShow, action, [action, test] { action->setEnabled(test()); });
    QObject::connect(menu, &QMenu::aboutToHide, action, [action] { action->setEnabled(true); });
}

} // namespace rostrum
