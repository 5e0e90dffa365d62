#include "PlainHost.h"

namespace testing {
namespace {

constexpr wchar_t kContainerClass[] = L"PlainHostContainer";
constexpr wchar_t kWindowClass[] = L"PlainHostWindow";
constexpr int kLongestWait = 10000; // ms
constexpr int kSixtieth = 17; // ms; the unit of the idle hooks' sleep
constexpr RECT kContainerPlace = { 10, 40, 871, 540 };

void RegisterKind(const wchar_t *name, WNDPROC procedure)
{
    WNDCLASSW kind = {};
    kind.lpfnWndProc = procedure;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)); // the arrow
    kind.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    kind.lpszClassName = name;
    RegisterClassW(&kind); // unchecked: a second host finds it registered
}

} // namespace

PlainHost::PlainHost(rostrum::Host &host) : host(host)
{
    RegisterKind(kContainerClass, OnContainerMessage);
    RegisterKind(kWindowClass, DefWindowProcW);
    window = CreateWindowExW(0, kWindowClass, L"Plain host", WS_OVERLAPPEDWINDOW, 40, 40, 900, 640,
        nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    before = MakeChild(L"EDIT", WS_VISIBLE | WS_TABSTOP, { 10, 10, 300, 32 });
    container = MakeChild(kContainerClass, 0, kContainerPlace);
    after = MakeChild(L"EDIT", WS_VISIBLE | WS_TABSTOP, { 10, 550, 300, 572 });
    SetWindowLongPtrA(container, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ownProcedure = reinterpret_cast<WNDPROC>(GetWindowLongPtrA(container, GWLP_WNDPROC));

    rostrum::PanelWindows &windows = host.Driver().windows;
    windows.make = [this](const QByteArray &) { return container; };
    windows.show = [this](const QByteArray &) { ShowWindow(container, SW_SHOW); };
    windows.hide = [this](const QByteArray &) { ShowWindow(container, SW_HIDE); };
    windows.isShown = [this](const QByteArray &) { return IsWindowVisible(container) != 0; };
    windows.isFrontmost = windows.isShown;
}

PlainHost::~PlainHost()
{
    host.Driver().windows = {};
    SetWindowLongPtrA(container, GWLP_USERDATA, 0);
    DestroyWindow(window);
}

HWND PlainHost::MakeChild(const wchar_t *kind, DWORD style, const RECT &place) const
{
    return CreateWindowExW(0, kind, L"", WS_CHILD | WS_CLIPCHILDREN | style, place.left, place.top,
        place.right - place.left, place.bottom - place.top, window, nullptr,
        GetModuleHandleW(nullptr), nullptr);
}

LRESULT CALLBACK PlainHost::OnContainerMessage(
    HWND handle, UINT message, WPARAM first, LPARAM second)
{
    if (auto *self = reinterpret_cast<PlainHost *>(GetWindowLongPtrA(handle, GWLP_USERDATA)))
        ++self->counts[message];
    if (message == kQuestion)
        return kAnswer;
    return DefWindowProcW(handle, message, first, second);
}

bool PlainHost::Open()
{
    ShowWindow(window, SW_SHOW);
    SetForegroundWindow(window);
    return ServeUntil([this] { return GetForegroundWindow() == window; });
}

/// The Shift key's state is that of the moment when the key was pressed.
bool PlainHost::TakeTab(const MSG &message) const
{
    if (message.message != WM_KEYDOWN || message.wParam != VK_TAB
        || (message.hwnd != before && message.hwnd != after))
        return false;
    const bool isBackward = GetKeyState(VK_SHIFT) < 0;
    const bool isToPanel = isBackward == (message.hwnd == after) && Panel();
    SetFocus(isToPanel ? Panel() : message.hwnd == before ? after : before);
    return true;
}

void PlainHost::ServeOnce()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (TakeTab(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    host.ReturnToEventLoop();
    if (GetTickCount64() >= nextIdle) {
        nextIdle = GetTickCount64() + static_cast<ULONGLONG>(host.Driver().CallIdle()) * kSixtieth;
    }
    MsgWaitForMultipleObjects(0, nullptr, FALSE, /*milliseconds=*/10, QS_ALLINPUT);
}

void PlainHost::Serve(int milliseconds)
{
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    do {
        ServeOnce();
    } while (GetTickCount64() < end);
}

bool PlainHost::ServeUntil(const std::function<bool()> &isDone)
{
    const ULONGLONG end = GetTickCount64() + kLongestWait;
    while (!isDone() && GetTickCount64() < end)
        ServeOnce();
    return isDone();
}

} // namespace testing
