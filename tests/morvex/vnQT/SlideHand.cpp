#include "SlideHand.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTest>
#include <QWheelEvent>

SlideHand::SlideHand(WSlideWidget &widget) : surface(widget)
{
    surface.show();
    surface.activateWindow();
    surface.setFocus();
    QVERIFY(QTest::qWaitForWindowActive(surface.window()));
}

void SlideHand::Press(const QPoint &pos, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    QTest::ignoreMessage(QtWarningMsg, "mousePressEvent");
    QMouseEvent event(
        QEvent::MouseButtonPress, pos, surface.mapToGlobal(pos), button, button, modifiers);
    QApplication::sendEvent(&surface, &event);
}

void SlideHand::Move(const QPoint &pos, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers)
{
    QMouseEvent event(
        QEvent::MouseMove, pos, surface.mapToGlobal(pos), Qt::NoButton, buttons, modifiers);
    QApplication::sendEvent(&surface, &event);
}

void SlideHand::Release(const QPoint &pos, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    QMouseEvent event(
        QEvent::MouseButtonRelease, pos, surface.mapToGlobal(pos), button, Qt::NoButton, modifiers);
    QApplication::sendEvent(&surface, &event);
}

void SlideHand::Click(const QPoint &pos, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    Press(pos, button, modifiers);
    Release(pos, button, modifiers);
}

void SlideHand::Turn(const QPoint &pos, const QPoint &delta, Qt::ScrollPhase phase)
{
    QWheelEvent event(pos, surface.mapToGlobal(pos), /*pixelDelta=*/QPoint(), delta, Qt::NoButton,
        Qt::NoModifier, phase, /*inverted=*/false);
    QApplication::sendEvent(&surface, &event);
    QVERIFY(event.isAccepted());
}

void SlideHand::HoldKey(Qt::Key key)
{
    QTest::ignoreMessage(QtWarningMsg,
        spaceDown ? "WSlideWidget::keyPressEvent true" : "WSlideWidget::keyPressEvent false");
    const bool isKnown = key == Qt::Key_Space || key == Qt::Key_Home || key == Qt::Key_End
        || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
    if (!isKnown)
        QTest::ignoreMessage(QtWarningMsg, QByteArray::number(key).constData());
    QTest::keyPress(&surface, key);
    spaceDown |= key == Qt::Key_Space;
}

void SlideHand::Key(Qt::Key key)
{
    HoldKey(key);
    QTest::keyRelease(&surface, key);
    spaceDown &= key != Qt::Key_Space;
}

void SlideHand::Point(const QPoint &pos)
{
    QCursor::setPos(surface.mapToGlobal(pos));
    QCOMPARE(surface.mapFromGlobal(QCursor::pos()), pos);
}
