// A hand that drags from widget to widget, drops files, and chooses from the menu of the right button.
#pragma once

#include "MouseHand.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWindow>

namespace testing {

/// Drags what lies at a place of a widget to a place of any widget, as a person does: with an
/// application-wide drag in between, which serves events until the button is let go.
inline void DragAcross(QWidget &from, const QPoint &start, QWidget &to, const QPoint &end,
    Qt::KeyboardModifiers modifiers = {})
{
    QTest::mousePress(&from, Qt::LeftButton, modifiers, start);
    QTimer hand;
    QWindow *window = to.window()->windowHandle();
    const QPoint place = to.mapTo(to.window(), end);
    int step = 0;
    QObject::connect(&hand, &QTimer::timeout, &hand, [&] {
        if (++step <= 3)
            QTest::mouseMove(window, place + QPoint(3 - step, 0));
        else
            QTest::mouseRelease(window, Qt::LeftButton, modifiers, place);
    });
    hand.start(5);
    for (const int way : { 5, 25 })
        MoveMouse(from, start + QPoint(way, 0)); // the drag begins, and is over when this returns
    hand.stop();
    QTest::mouseRelease(&from, Qt::LeftButton, modifiers, start);
}

/// Drops files as another program does. @return what was made of them; IgnoreAction when refused
inline Qt::DropAction DropFiles(QWidget &widget, const QPoint &place, const QStringList &files,
    Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString &file : files)
        urls << QUrl::fromLocalFile(file);
    data.setUrls(urls);
    QDragEnterEvent enter(place, offered, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &enter);
    if (!enter.isAccepted())
        return Qt::IgnoreAction;
    QDragMoveEvent move(place, offered, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &move);
    QDropEvent drop(place, offered, &data, Qt::LeftButton, Qt::NoModifier);
    drop.setDropAction(Qt::MoveAction); // some file managers propose it
    QApplication::sendEvent(&widget, &drop);
    return drop.isAccepted() ? drop.dropAction() : Qt::IgnoreAction;
}

/// Opens the menu of the right button at a place and chooses an entry by way of its titles; without
/// any it is closed again. @return the texts of the entries that are not grey
inline QStringList ChooseFromMenu(QWidget &widget, const QPoint &place, QStringList titles)
{
    QStringList usable;
    QTimer hand;
    const QWidget *seen = nullptr;
    QObject::connect(&hand, &QTimer::timeout, &hand, [&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu || menu == seen)
            return;
        QAction *found = nullptr;
        for (QAction *action : menu->actions()) {
            const QString text = action->text().remove(QLatin1Char('&'));
            if (action->isEnabled() && !seen)
                usable << text;
            if (!titles.isEmpty() && action->isEnabled() && text == titles.first())
                found = action;
        }
        seen = menu;
        if (!found) {
            while (QWidget *open = QApplication::activePopupWidget())
                open->close();
            return;
        }
        titles.removeFirst();
        if (titles.isEmpty())
            hand.stop();
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(found).center());
    });
    hand.start(5);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, widget.mapToGlobal(place));
    QApplication::sendEvent(&widget, &event);
    return usable;
}

} // namespace testing
