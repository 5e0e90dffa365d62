#include "shell/NativeWindow_win32.h"

#include <QVariant>
#include <QWidget>

/// Qt makes the native window as a child at once when it is told of the parent. Of one that was made
/// with a frame it would go on adding the frame to every geometry.
void nativeWindow::Embed(QWidget *widget, Handle parent)
{
    widget->setProperty(
        "_q_embedded_native_parent_handle", QVariant::fromValue(reinterpret_cast<WId>(parent)));
    MakeChild(reinterpret_cast<Handle>(widget->winId()), parent);
}
