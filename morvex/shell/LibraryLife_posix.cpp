#include "shell/LibraryLife.h"

#include <dlfcn.h>

#include <cstdlib>
#include <string>

namespace {

constexpr char kPlatform[] = "QT_QPA_PLATFORM";

bool IsSet(const char *variable)
{
    const char *text = std::getenv(variable);
    return text && *text;
}

/// The application goes in front of Qt's own objects: what was made last is destroyed first. A
/// function of the kind "destructor" would come behind all of them.
__attribute__((constructor)) void Load()
{
    OnLibraryLoad();
    std::atexit(OnLibraryUnload);
}

} // namespace

namespace libraryLife {

/// A host's loop here is anything from none to the toolkit's own. Where it is the toolkit's, or that
/// of the library that the toolkit waits with, posted events are delivered already.
void HookMessages(void (*)()) { }
void UnhookMessages() { }

bool KeepLoaded()
{
    Dl_info place;
    if (dladdr(reinterpret_cast<const void *>(&OnLibraryLoad), &place) == 0 || !place.dli_fname)
        return false;
    return dlopen(place.dli_fname, RTLD_NOW | RTLD_NOLOAD)
        != nullptr; // the result is the reference
}

/// The toolkit ends the process when it finds no display. It is told to go on without one, unless
/// the user has said what to take; and told for the length of this object, since the processes that
/// the host starts inherit the environment.
PlatformChoice::PlatformChoice() : isOurs(!IsSet(kPlatform))
{
    if (!isOurs)
        return;
    const bool hasDisplay = IsSet("DISPLAY");
    setenv(kPlatform, hasDisplay ? "xcb;offscreen" : "offscreen", /*overwrite=*/1);
}

PlatformChoice::~PlatformChoice()
{
    if (isOurs)
        unsetenv(kPlatform);
}

} // namespace libraryLife
