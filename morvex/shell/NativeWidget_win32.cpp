#include "shell/NativeWindow_win32.h"

#include <QWidget>

void nativeWindow::Embed(QWidget *widget, Handle parent)
{
    MakeChild(reinterpret_cast<Handle>(widget->winId()), parent);
}
