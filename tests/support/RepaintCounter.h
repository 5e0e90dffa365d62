// Counts what the windows of a test are asked to repaint.
#pragma once

#include <QApplication>
#include <QEvent>

namespace testing {

/// Counts from its making on. What is due from before is served first and does not count.
class RepaintCounter : public QObject
{
public:
    RepaintCounter()
    {
        QApplication::setCursorFlashTime(0); // a blinking cursor paints on its own
        Settle();
        qApp->installEventFilter(this);
    }

    /// Serves what is due: posted events, and what they bring about.
    static void Settle()
    {
        for (int i = 0; i < 5; ++i) {
            QCoreApplication::sendPostedEvents(nullptr, 0);
            QCoreApplication::processEvents();
        }
    }

    /// Requests since the last call.
    int Take()
    {
        Settle();
        const int taken = count;
        count = 0;
        return taken;
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        const QEvent::Type type = event->type();
        if (type == QEvent::Paint || type == QEvent::UpdateRequest || type == QEvent::LayoutRequest)
            ++count;
        return false;
    }

private:
    int count = 0;
};

} // namespace testing
