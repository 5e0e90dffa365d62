#include "Terminal.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

namespace rostrum {

/// _isatty() takes the null device for a terminal; a console alone has a mode.
bool IsTerminal(std::FILE *stream)
{
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != 0;
}

/// argv is in the system's code page, which lacks letters that file names have.
QStringList CommandWords(int, char **)
{
    QStringList words;
    int count = 0;
    wchar_t **wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 0; wide && i < count; ++i)
        words << QString::fromWCharArray(wide[i]);
    LocalFree(wide);
    return words;
}

void PrepareTerminal()
{
    SetConsoleOutputCP(CP_UTF8); // unchecked: there may be no console
    _setmode(_fileno(stdout), _O_BINARY); // a line passed on from a child would end twice
    _setmode(_fileno(stderr), _O_BINARY);
}

} // namespace rostrum
