#include "Platform.h"

#include <QDir>

#include <atomic>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <thread>

#include <windows.h>

namespace testing {
namespace {

std::atomic<qint64> fileSizeLimit{ -1 }; // bytes; none below 0
QString protectedFolder; // with backslashes and one at its end; empty when there is none

bool IsProtected(const wchar_t *path)
{
    return !protectedFolder.isEmpty()
        && QDir::toNativeSeparators(QString::fromWCharArray(path))
               .contains(protectedFolder, Qt::CaseInsensitive);
}

template <typename Function>
Function *SystemFunction(const char *name)
{
    return reinterpret_cast<Function *>(
        reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), name)));
}

BOOL WINAPI LimitedWriteFile(
    HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED overlapped)
{
    static const auto write = SystemFunction<decltype(WriteFile)>("WriteFile");
    LARGE_INTEGER position = {};
    if (fileSizeLimit >= 0 && GetFileType(file) == FILE_TYPE_DISK
        && SetFilePointerEx(file, {}, &position, FILE_CURRENT)
        && position.QuadPart + size > fileSizeLimit) {
        SetLastError(ERROR_DISK_FULL);
        return FALSE;
    }
    return write(file, bytes, size, written, overlapped);
}

HANDLE WINAPI LimitedCreateFileW(LPCWSTR path, DWORD access, DWORD share,
    LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags, HANDLE model)
{
    static const auto create = SystemFunction<decltype(CreateFileW)>("CreateFileW");
    if ((access & (GENERIC_WRITE | GENERIC_ALL | FILE_WRITE_DATA)) && IsProtected(path)) {
        SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    return create(path, access, share, security, disposition, flags, model);
}

/// The message box of this process, null while there is none.
HWND FindBox()
{
    HWND box = nullptr;
    while ((box = FindWindowExW(nullptr, box, L"#32770", nullptr)) != nullptr) {
        DWORD process = 0;
        GetWindowThreadProcessId(box, &process);
        if (process == GetCurrentProcessId() && IsWindowVisible(box))
            break;
    }
    return box;
}

} // namespace
} // namespace testing

// The addresses that a program linked with these two functions calls them through, Qt's code too.
// The linker takes what stands in the program before what a library of imports offers.
extern "C" {
decltype(&WriteFile) __imp_WriteFile = testing::LimitedWriteFile;
decltype(&CreateFileW) __imp_CreateFileW = testing::LimitedCreateFileW;
}

namespace testing {

bool LimitFileSize(qint64 bytes)
{
    fileSizeLimit = bytes;
    return true;
}

bool LiftFileSize()
{
    fileSizeLimit = -1;
    return true;
}

QString LinkName(const QString &name)
{
    return name + QStringLiteral(".lnk");
}

/// Wine looks at all names of a folder before it makes another, as they may differ in case alone.
int ManyFiles()
{
    return 2000;
}

/// Until it is whole a file has another name, which is longer by a point and six letters.
int LongestName()
{
    return 248;
}

QString SystemLibrary()
{
    return QStringLiteral("version.dll");
}

/// The other one is a plug-in of Qt's that is packaged for Linux alone.
QString PanelStyle()
{
    return QStringLiteral("fusion");
}

WriteProtection::WriteProtection(const QString &folder) : folder(folder)
{
    protectedFolder = QDir::toNativeSeparators(QDir(folder).absolutePath()) + QLatin1Char('\\');
}

WriteProtection::~WriteProtection()
{
    protectedFolder.clear();
}

/// Only the processes of one console can send each other a Ctrl+C, and a child that a test starts has
/// none. The runtime calls a signal's function on a thread of its own; so does this.
void AwaitInterrupt()
{
    std::thread([] {
        if (std::getchar() != EOF)
            std::raise(SIGINT);
    }).detach();
}

bool Interrupt(QProcess &child)
{
    return child.write("\n") == 1 && child.waitForBytesWritten();
}

void AwaitUnused(const QString &folder)
{
    const std::wstring path = QDir::toNativeSeparators(folder).toStdWString();
    for (int tries = 0; tries < 500; ++tries) {
        constexpr DWORD all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        const HANDLE removable = CreateFileW(
            path.c_str(), DELETE, all, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        if (removable != INVALID_HANDLE_VALUE) {
            CloseHandle(removable);
            return;
        }
        Sleep(10); // ms
    }
}

void AnswerAssertion()
{
    std::thread([] {
        HWND box = nullptr;
        while ((box = FindBox()) == nullptr)
            Sleep(20); // ms
        constexpr int kText = 0xFFFF; // of the label in each message box
        char text[500] = "";
        GetDlgItemTextA(box, kText, text, sizeof text);
        std::fprintf(stderr, "%.*s\n", static_cast<int>(strcspn(text, "\r\n")), text);
        SendMessageW(box, WM_COMMAND, IDIGNORE, 0);
    }).detach();
}

QString SetCommaLocale(const QString &)
{
    return std::setlocale(LC_ALL, "French_France.1252") ? QString()
                                                        : QStringLiteral("there is no French");
}

} // namespace testing
