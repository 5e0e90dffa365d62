// A panel of line edits, docked in a host of plain windows. The program's own Qt is the panel's: the
// library's loading is played by the main function, and no loop of Qt's runs.
#pragma once

#include "PlainHost.h"
#include "TestPanel.h"

#include <QPointer>

namespace testing {

class DockedPanel
{
public:
    explicit DockedPanel(int fields = 2);
    ~DockedPanel() { delete panel; }
    DockedPanel(const DockedPanel &) = delete;
    DockedPanel &operator=(const DockedPanel &) = delete;

    /// Shows the host's window, the container in it, and waits for the panel.
    bool Open();
    /// Serves the host until a widget of the panel has the keyboard. @param name "none" for none
    bool WaitForFocus(const char *name);
    /// Serves the host until one of its windows has the keyboard.
    bool WaitForFocus(HWND window);
    /// The same for any state.
    bool ServeUntil(const std::function<bool()> &isDone) { return plain.ServeUntil(isDone); }

    rostrum::Host host;
    PlainHost plain;
    AEGP_PanelFunctions1 functions{};
    QPointer<TestPanel> panel;
};

/// The name of the widget that has the keyboard, for Qt.
QByteArray Focused();
/// What is in a field of the host's.
QString TextOf(HWND field);

/// Loads, runs the tests and unloads. @return the program's exit status
int RunDockedTests(QObject &tests, int argc, char **argv);

} // namespace testing
