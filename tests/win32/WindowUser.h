// What a person does with windows and sees of them: the system's input, and what the display has.
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

/// Keys and clicks that come through the system's input, to whoever has the focus or is under the
/// pointer.
void PressKey(WORD key, WORD modifier = 0);
/// @param x @param y in the client area of the window, pixels
void Click(HWND window, int x, int y);

} // namespace testing
