// A host made of widgets, with a panel docked in it.
//
//     +-- window --------------+
//     | before    (line edit)  |
//     | container: the panel,  |
//     |   its fields in a row  |
//     | after     (line edit)  |
//     +------------------------+
//
// The suites are those of a real host object, so that a suite that is not given back fails the run.
#pragma once

#include "TestPanel.h"
#include "suites/Host.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

namespace testing {

/// A widget of the host's that lends itself to a panel. It notes what reaches its own handling.
class Container : public QWidget
{
public:
    using QWidget::QWidget;

    nativeWindow::Handle Handle() { return reinterpret_cast<nativeWindow::Handle>(winId()); }

    int paints = 0;
    int sizings = 0;
    QList<bool> enabled; // each change
    QList<int> keys;

protected:
    void paintEvent(QPaintEvent *) override { ++paints; }
    void resizeEvent(QResizeEvent *) override { ++sizings; }
    void keyPressEvent(QKeyEvent *event) override { keys << event->key(); }
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::EnabledChange)
            enabled << isEnabled();
        QWidget::changeEvent(event);
    }
};

class DockFixture
{
public:
    explicit DockFixture(int fields = 2)
    {
        auto *column = new QVBoxLayout(&window);
        before = new QLineEdit(&window);
        container = new Container(&window);
        after = new QLineEdit(&window);
        before->setObjectName(QStringLiteral("before"));
        container->setObjectName(QStringLiteral("container"));
        after->setObjectName(QStringLiteral("after"));
        column->addWidget(before);
        column->addWidget(container, /*stretch=*/1);
        column->addWidget(after);
        panel = new TestPanel(host.BasicSuite(), container->Handle(), &functions, fields);
        window.resize(420, 300);
    }
    ~DockFixture() { delete panel; } // a container that goes leaves it

    /// Shows the window, makes it active and waits for the panel. @return false when that fails
    bool Open()
    {
        window.show();
        window.activateWindow();
        return WaitForActive(&window)
            && QTest::qWaitFor([this] { return panel && panel->isVisible(); });
    }

    /// @return false when it does not become active. (To Qt Test, a dialog is active with its parent.)
    static bool WaitForActive(const QWidget *widget)
    {
        return QTest::qWaitFor([=] { return QApplication::activeWindow() == widget; });
    }

    /// A key as it comes from the window system, to whoever has the focus.
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWindow(), key, modifiers);
    }
    static void PressTab() { Press(Qt::Key_Tab); }
    static void PressShiftTab() { Press(Qt::Key_Backtab, Qt::ShiftModifier); }
    /// The name of the widget that has the focus.
    static QString Focused()
    {
        const QWidget *widget = QApplication::focusWidget();
        return widget ? widget->objectName() : QStringLiteral("none");
    }

    rostrum::Host host;
    AEGP_PanelFunctions1 functions{};
    QWidget window;
    QLineEdit *before;
    Container *container;
    QLineEdit *after;
    QPointer<TestPanel> panel;
};

} // namespace testing
