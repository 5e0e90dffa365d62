// Counts what the windows of a test are asked to repaint.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QTest>

namespace testing {

/// Counts from its making on. What is due from before is served first and does not count.
class RepaintCounter : public QObject
{
public:
    RepaintCounter()
    {
        QApplication::setCursorFlashTime(0); // a blinking cursor paints on its own
        qApp->installEventFilter(this);
        // A display may ask for a window's pixels some time after the window has come.
        constexpr int kMostWaits = 50;
        for (int waits = 0; waits == 0 || (count > 0 && waits < kMostWaits); ++waits) {
            count = 0;
            QTest::qWait(100);
        }
        count = 0;
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
