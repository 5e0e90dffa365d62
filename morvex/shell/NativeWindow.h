// The window system as docking sees it: what it takes to keep a Qt widget inside a window of the
// host's, and nothing else.
//
//     NativeWindow_win32.cpp   calls the window system
//     NativeWindow_qt.cpp      serves a host that shares this process's Qt: a handle is the window
//                              id of a widget of the host's, a window procedure an event filter on
//                              it, a property a property
//
// Errors   A handle whose window is gone, or null, is passed over: the operation does nothing and
//          answers null, 0 or an empty rectangle.
// Units    Pixels of the window system.
// Thread   The host's main thread.
#pragma once

#include <cstdint>

class QWidget;

namespace nativeWindow {

using Handle = void *;

struct Rectangle
{
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

// The messages that docking knows, by the numbers that the window system gives them.

constexpr unsigned kMessageSized = 5; // the window has another size
constexpr unsigned kMessageFocus = 7; // the keyboard has come to the window
constexpr unsigned kMessagePaint = 15;
constexpr unsigned kMessageCommand = 273;
constexpr unsigned kMessageSizing = 532; // the window is being given another size

/// What a window does with its messages.
using Procedure = std::intptr_t (*)(
    Handle window, unsigned message, std::uintptr_t first, std::intptr_t second);

// The procedure.

/// @return the procedure in charge; null when there is none
Procedure GetProcedure(Handle window);
void SetProcedure(Handle window, Procedure procedure);
std::intptr_t CallProcedure(Procedure procedure, Handle window, unsigned message,
    std::uintptr_t first, std::intptr_t second);
/// What a window does that has no procedure of its own. It takes a paint message for painted.
std::intptr_t DefaultProcedure(
    Handle window, unsigned message, std::uintptr_t first, std::intptr_t second);
void SetProperty(Handle window, const char *name, void *value);
/// @return null when it was never set
void *GetProperty(Handle window, const char *name);

// The window tree.

/// Makes a widget a plain child of the window, without frame, title or system menu, and hidden. It
/// outlives the window.
void Embed(QWidget *widget, Handle parent);
Rectangle ClientRectangle(Handle window); // at 0, 0
Rectangle WindowRectangle(Handle window); // on the screen
/// Asks for a paint message; during one it changes nothing. The background is not erased.
void Invalidate(Handle window);
void Enable(Handle window, bool enabled); // takes mouse and keys, or does not
void BringToTop(Handle window);
void Activate(Handle window);

// The keyboard.

/// Where the focus goes on to when a chain of widgets has ended. A window system that knows no
/// order of windows leaves it to the window.
enum class Onward { Nowhere, Forward, Backward };

/// @return null when no window of this thread has the focus
Handle GetFocus();
void SetFocus(Handle window, Onward onward = Onward::Nowhere);
bool IsShiftDown();
/// Whether a message as Qt passes it to a widget's nativeEvent tells that the focus has come.
bool IsFocusMessage(void *nativeMessage);

} // namespace nativeWindow
