#include "shell/NativeWindow_win32.h"

#include <windows.h>

#include <type_traits>

namespace nativeWindow {
namespace {

static_assert(kMessageSized == WM_SIZE && kMessageFocus == WM_SETFOCUS && kMessagePaint == WM_PAINT
    && kMessageCommand == WM_COMMAND && kMessageSizing == WM_SIZING);
static_assert(
    std::is_same_v<WPARAM,
        std::
            uintptr_t> && std::is_same_v<LPARAM, std::intptr_t> && std::is_same_v<LRESULT, std::intptr_t>);

HWND Window(Handle handle)
{
    return static_cast<HWND>(handle);
}

// On 64-bit Windows there is one calling convention, so that our procedures are the system's.
static_assert(sizeof(void *) == 8);

WNDPROC SystemProcedure(Procedure procedure)
{
    return reinterpret_cast<WNDPROC>(procedure);
}

Rectangle FromSystem(const RECT &area)
{
    return { area.left, area.top, area.right - area.left, area.bottom - area.top };
}

} // namespace

Procedure GetProcedure(Handle window)
{
    // Of a window of the other character width this is no address but a token, which
    // CallWindowProc knows.
    return reinterpret_cast<Procedure>(GetWindowLongPtrA(Window(window), GWLP_WNDPROC));
}

void SetProcedure(Handle window, Procedure procedure)
{
    SetWindowLongPtrA(Window(window), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
}

std::intptr_t CallProcedure(Procedure procedure, Handle window, unsigned message,
    std::uintptr_t first, std::intptr_t second)
{
    return CallWindowProcA(SystemProcedure(procedure), Window(window), message, first, second);
}

std::intptr_t DefaultProcedure(
    Handle window, unsigned message, std::uintptr_t first, std::intptr_t second)
{
    return DefWindowProcA(Window(window), message, first, second);
}

void SetProperty(Handle window, const char *name, void *value)
{
    SetPropA(Window(window), name, value);
}

void *GetProperty(Handle window, const char *name)
{
    return GetPropA(Window(window), name);
}

void MakeChild(Handle window, Handle parent)
{
    constexpr LONG kChildStyle = WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
    static_assert(kChildStyle == 0x46000000);
    SetWindowLongA(Window(window), GWL_STYLE, kChildStyle);
    SetParent(Window(window), Window(parent));
}

Rectangle ClientRectangle(Handle window)
{
    RECT area = {};
    return GetClientRect(Window(window), &area) ? FromSystem(area) : Rectangle{};
}

Rectangle WindowRectangle(Handle window)
{
    RECT area = {};
    return GetWindowRect(Window(window), &area) ? FromSystem(area) : Rectangle{};
}

void Invalidate(Handle window)
{
    if (window) // without one, every window of the desktop would repaint
        InvalidateRect(Window(window), /*lpRect=*/nullptr, /*bErase=*/FALSE);
}

void Enable(Handle window, bool enabled)
{
    EnableWindow(Window(window), enabled ? TRUE : FALSE);
}

void BringToTop(Handle window)
{
    BringWindowToTop(Window(window));
}

void Activate(Handle window)
{
    if (window)
        SetActiveWindow(Window(window));
}

Handle GetFocus()
{
    return ::GetFocus();
}

/// The host knows what comes next in its window.
void SetFocus(Handle window, Onward)
{
    if (window) // without one, the keys would go nowhere
        ::SetFocus(Window(window));
}

bool IsShiftDown()
{
    return GetKeyState(VK_SHIFT) < 0;
}

bool IsFocusMessage(void *nativeMessage)
{
    return nativeMessage && static_cast<const MSG *>(nativeMessage)->message == WM_SETFOCUS;
}

} // namespace nativeWindow
