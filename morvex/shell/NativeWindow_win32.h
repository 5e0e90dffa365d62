// The piece of the Win32 implementation that knows no Qt, for the piece that does.
#pragma once

#include "shell/NativeWindow.h"

namespace nativeWindow {

/// Makes a window a plain child of another, without frame, title or system menu.
void MakeChild(Handle window, Handle parent);

} // namespace nativeWindow
