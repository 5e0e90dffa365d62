// A mouse in a test. Qt Test's own moves go by way of the cursor, which no such window follows.
#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QTest>

namespace testing {

inline void MoveMouse(QWidget &widget, const QPoint &to, Qt::MouseButtons held = Qt::LeftButton)
{
    QMouseEvent event(
        QEvent::MouseMove, to, widget.mapToGlobal(to), Qt::NoButton, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

/// Presses at the first place, moves over all others, releases at the last.
inline void DragMouse(QWidget &widget, const QVector<QPoint> &way,
    Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mousePress(&widget, button, modifiers, way.first());
    for (int i = 1; i < way.size(); ++i)
        MoveMouse(widget, way[i], button);
    QTest::mouseRelease(&widget, button, modifiers, way.last());
}

} // namespace testing
