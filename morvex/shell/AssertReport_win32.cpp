#include "shell/Assert.h"

#include <cstdlib>
#include <string>

#include <windows.h>

/// The C runtime's box with its three buttons, made here: some runtimes end the process after their
/// own box, whatever is picked.
void ReportAssertion(const char *text, const char *file)
{
    const std::string message = "Assertion failed: " + std::string(text) + ", file " + file
        + "\n\nAbort ends the program, Retry calls a debugger, Ignore goes on.";
    constexpr UINT kind = MB_ABORTRETRYIGNORE | MB_DEFBUTTON3 | MB_ICONHAND | MB_TASKMODAL
        | MB_SETFOREGROUND;
    switch (MessageBoxA(nullptr, message.c_str(), "Morvex", kind)) {
    case IDABORT:
        std::_Exit(3); // as the runtime does
    case IDRETRY:
        DebugBreak();
        break;
    default:
        break; // Ignore, or no box could be shown
    }
}
