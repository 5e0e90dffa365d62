#include "DockedPanel.h"

#include "shell/LibraryLife.h"
#include "testhost/HostTestMain.h"

#include <QApplication>

namespace testing {

DockedPanel::DockedPanel(int fields)
    : plain(host), panel(new TestPanel(host.BasicSuite(), plain.Container(), &functions, fields))
{ }

bool DockedPanel::Open()
{
    ShowWindow(plain.Container(), SW_SHOW);
    return plain.Open() && ServeUntil([this] { return panel && panel->isVisible(); });
}

bool DockedPanel::WaitForFocus(const char *name)
{
    return ServeUntil([name] { return Focused() == name; });
}

bool DockedPanel::WaitForFocus(HWND window)
{
    return ServeUntil([window] { return GetFocus() == window; });
}

QByteArray Focused()
{
    const QWidget *widget = QApplication::focusWidget();
    return widget ? widget->objectName().toLatin1() : QByteArray("none");
}

QString TextOf(HWND field)
{
    wchar_t text[100];
    const int length = GetWindowTextW(field, text, 100);
    return QString::fromWCharArray(text, length);
}

int RunDockedTests(QObject &tests, int argc, char **argv)
{
    OnLibraryLoad();
    CollectHostEnds();
    const int status = RunTests(tests, argc, argv);
    OnLibraryUnload();
    return status;
}

} // namespace testing
