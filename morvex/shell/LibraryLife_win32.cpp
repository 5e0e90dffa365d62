#include "shell/LibraryLife.h"

#include <windows.h>

namespace {

HINSTANCE library = nullptr;
HHOOK messageHook = nullptr;
void (*messageWork)() = nullptr;

LRESULT CALLBACK OnMessage(int code, WPARAM first, LPARAM second)
{
    messageWork();
    return CallNextHookEx(messageHook, code, first, second);
}

} // namespace

namespace libraryLife {

void HookMessages(void (*work)())
{
    messageWork = work;
    messageHook
        = SetWindowsHookExW(WH_GETMESSAGE, OnMessage, /*hmod=*/nullptr, GetCurrentThreadId());
}

void UnhookMessages()
{
    UnhookWindowsHookEx(messageHook);
    messageHook = nullptr;
}

bool KeepLoaded()
{
    char path[256];
    const DWORD length = GetModuleFileNameA(library, path, sizeof(path));
    if (length == 0 || length == sizeof(path)) // where it is cut it would name another library
        return false;
    return LoadLibraryA(path) != nullptr;
}

PlatformChoice::PlatformChoice() : isOurs(false) { }
PlatformChoice::~PlatformChoice() = default;

} // namespace libraryLife

/// The C++ runtime has made the library's static objects before it calls this.
BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID)
{
    library = instance;
    if (reason == DLL_PROCESS_ATTACH)
        OnLibraryLoad();
    else if (reason == DLL_PROCESS_DETACH)
        OnLibraryUnload();
    return TRUE;
}
