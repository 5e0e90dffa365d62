// MenuUser: the hand on the graph's context menu.
#pragma once

#include "vnQT/wExpoGraph.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QWindow>

/// Opens the menu by the right button on the widget's window, as the window system does, notes its
/// entries and clicks one, or closes it.
class MenuUser
{
public:
    QStringList entries;
    QVector<bool> haveShortcuts;
    WExpoGraph::NodeHandle currentAtOpening = 0;

    void Open(WExpoGraph &graph, const QPoint &pos, const QString &choice = QString())
    {
        bool seen = false;
        QTimer chooser;
        QObject::connect(&chooser, &QTimer::timeout, [&] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu || seen)
                return;
            seen = true;
            currentAtOpening = graph.GetCurrentNode();
            Choose(menu, choice);
        });
        chooser.start(0);
        QTest::ignoreMessage(QtWarningMsg, "mousePressEvent");
        QTest::mouseClick(graph.windowHandle(), Qt::RightButton, Qt::NoModifier, pos);
        QTRY_VERIFY2(seen, "no menu opened");
    }

private:
    void Choose(QMenu *menu, const QString &choice)
    {
        const QList<QAction *> actions = menu->actions();
        for (QAction *action : actions) {
            entries << action->text();
            haveShortcuts << !action->shortcut().isEmpty();
        }
        const int index = entries.indexOf(choice);
        if (index < 0)
            menu->close();
        else
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                menu->actionGeometry(actions.at(index)).center());
    }
};
