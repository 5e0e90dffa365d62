// Does something in the dialog that the next call opens.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

namespace testing {

/// Types any text; Qt Test's own keys know ASCII only.
inline void TypeText(QWidget *widget, const QString &text)
{
    for (const QChar letter : text) {
        for (const QEvent::Type type : { QEvent::KeyPress, QEvent::KeyRelease }) {
            QKeyEvent event(type, letter.toUpper().unicode(), Qt::NoModifier, QString(letter));
            QApplication::sendEvent(widget, &event);
        }
    }
}

/// Waits for a dialog and lets a function act in it. A dialog that the function leaves open is
/// closed, so that no test hangs. Answered() tells whether it came.
class DialogHand : public QObject
{
public:
    explicit DialogHand(std::function<void(QDialog &)> act) : act(std::move(act))
    {
        timer.setInterval(5);
        connect(&timer, &QTimer::timeout, this, [this] { Look(); });
        timer.start();
    }
    bool Answered() const { return answered; }
    QString Text() const { return text; } // of a message box

private:
    void Look()
    {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog || answered || !dialog->isVisible())
            return;
        answered = true;
        timer.stop();
        text = dialog->property("text").toString();
        act(*dialog);
        if (dialog->isVisible())
            dialog->reject();
    }

    std::function<void(QDialog &)> act;
    QTimer timer;
    QString text;
    bool answered = false;
};

/// Clicks the button whose text, without its mark, is this.
inline void ClickButton(QDialog &dialog, const QString &text)
{
    for (QPushButton *button : dialog.findChildren<QPushButton *>()) {
        if (button->text().remove(QLatin1Char('&')) == text && button->isVisible()) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    QFAIL(qPrintable(QStringLiteral("no button \"%1\"").arg(text)));
}

} // namespace testing
