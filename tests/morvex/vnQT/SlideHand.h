// SlideHand: the hand on the mouse, the wheel and the keys of a pan and zoom surface. Each event is
// announced with what the surface writes to Qt's warnings for it, no more and no less, so that the
// trace is tested on the way.
#pragma once

#include "vnQT/wExpoGraph.h"

Q_DECLARE_METATYPE(Qt::MouseButton)

/// A surface whose transforms can be seen and set.
class OpenSlide : public WSlideWidget
{
public:
    using WSlideWidget::pan;
    using WSlideWidget::spaceDown;
    using WSlideWidget::view;
};

class SlideHand
{
public:
    explicit SlideHand(WSlideWidget &surface);

    void Press(const QPoint &pos, Qt::MouseButton button,
        Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Move(const QPoint &pos, Qt::MouseButtons buttons,
        Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Release(const QPoint &pos, Qt::MouseButton button,
        Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Click(const QPoint &pos, Qt::MouseButton button,
        Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Turns the wheel. @param delta in eighths of a degree, sideways and away from the user
    void Turn(const QPoint &pos, const QPoint &delta, Qt::ScrollPhase phase = Qt::NoScrollPhase);
    void Key(Qt::Key key);
    /// A key that goes down and stays there.
    void HoldKey(Qt::Key key);
    /// Puts the pointer where the keys look for it.
    void Point(const QPoint &pos);

private:
    WSlideWidget &surface;
    bool spaceDown = false;
};
