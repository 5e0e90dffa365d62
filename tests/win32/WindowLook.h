// What a person sees of windows, read from the display.
#pragma once

#include <QImage>

#include <windows.h>

namespace testing {

/// Whether a child lies exactly over its parent's client area.
bool Covers(HWND child, HWND parent);
bool IsInside(HWND window, HWND ancestor);
/// A window's client area as the display has it, with whatever lies over it.
QImage Shown(HWND window);
int ColorsOf(const QImage &image);

} // namespace testing
