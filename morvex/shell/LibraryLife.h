// The life of the plug-in's library: what happens when a process loads it, and when it goes.
//
// A host without a Qt application gets one, which never runs its event loop: Qt's widgets get their
// native messages through the host's loop, and what Qt posts for itself is delivered from a hook on
// that loop. A host that has one is left alone.
//
//     LibraryLife.cpp          what is done
//     LibraryLife_win32.cpp    when, and the hook; no Qt
//     LibraryLife_posix.cpp    when; there is no loop that every host shares, so no hook either
//
// These files belong to the library alone. In a program their work would run before main().
#pragma once

/// At the loading, on the host's main thread.
void OnLibraryLoad();
/// At the unloading, which a library that made the application puts off to the process's end.
void OnLibraryUnload();

namespace libraryLife {

/// Has work done at each message that the calling thread fetches from now on.
void HookMessages(void (*work)());
/// Takes the hook away again: it leads into a library that goes.
void UnhookMessages();
/// Adds a reference to the library itself, so that the host cannot unload it while Qt objects live.
/// @return false when it cannot be found by its path, which is too long for a buffer of 256 bytes, say
bool KeepLoaded();

/// Sees to it, as long as it stands, that an application object can be made, with a display to show
/// on or without.
class PlatformChoice
{
public:
    PlatformChoice();
    ~PlatformChoice();
    PlatformChoice(const PlatformChoice &) = delete;
    PlatformChoice &operator=(const PlatformChoice &) = delete;

private:
    bool isOurs;
};

} // namespace libraryLife
