#include "vnLog.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr char kEndMark[] = "<END>";
constexpr qint32 kEndMarkLength = 5;
constexpr qint32 kFirstCapacity = 1000; // bytes
constexpr qint32 kLongestLine = 1000; // bytes; a longer message gets no line of its own
constexpr qint32 kSmallestDrop = 400; // bytes
// One fixed place on every system, relative to the working folder where there is no drive C.
constexpr char kDebugFile[] = "C:\\VN_DEBUG.log";

char *buffer = nullptr;
bool fileSwitch = false;
bool memorySwitch = true;
// A line break and kLongestLine bytes, each of which may be a "\n" that becomes two.
char workBuffer[2 + 2 * kLongestLine + 1];

/// @return the length of the line in workBuffer
qint32 MakeLine(const char *text)
{
    char *out = workBuffer;
    *out++ = '\r';
    *out++ = '\n';
    for (; *text; ++text) {
        if (*text == '\n')
            *out++ = '\r'; // a "\r" that is there already is kept
        *out++ = *text;
    }
    *out = '\0';
    return static_cast<qint32>(out - workBuffer);
}

} // namespace

vnLog *vnLog::Instance()
{
    static vnLog *const log = [] {
        auto *made = new vnLog;
        made->Clear();
        return made;
    }();
    return log;
}

void vnLog::Clear()
{
    reserved = 0;
    if (Resize(kFirstCapacity)) {
        std::memcpy(buffer, kEndMark, sizeof kEndMark);
        used = kEndMarkLength;
    }
    WriteFile("=== CLEAR LOG ===");
}

int vnLog::Add(const char *text)
{
    if (fileSwitch)
        WriteFile(text);
    if (!memorySwitch)
        return 0;

    const std::size_t length = std::strlen(text);
    if (length >= static_cast<std::size_t>(limit))
        return 0; // longer than the log may ever become
    if (length > static_cast<std::size_t>(kLongestLine))
        return Append(text, static_cast<qint32>(length));
    const qint32 lineLength = MakeLine(text);
    return Append(workBuffer, lineLength);
}

void vnLog::WriteFile(const char *text)
{
    if (!fileSwitch)
        return;
    if (std::FILE *file = std::fopen(kDebugFile, "a")) {
        std::fprintf(file, "%s\n", text);
        std::fclose(file);
    }
}

const char *vnLog::Text() const
{
    return buffer ? buffer : "";
}

void vnLog::SetFileSwitch(bool on)
{
    fileSwitch = on;
}

void vnLog::SetMemorySwitch(bool on)
{
    memorySwitch = on;
}

int vnLog::Append(const char *text, qint32 length)
{
    if (!MakeRoom(length))
        return 0;
    char *end = buffer + used - kEndMarkLength; // the old end mark goes
    std::memcpy(end, text, static_cast<std::size_t>(length));
    std::memcpy(end + length, kEndMark, sizeof kEndMark);
    used += length;
    return 1;
}

bool vnLog::MakeRoom(qint32 length)
{
    if (!buffer)
        return false;
    const qint32 need = used + length + 1;
    if (need < capacity)
        return true;
    if (need < limit)
        return Resize(capacity + qMax(1000, length + 100));

    const qint32 drop = qMax(length + 1, kSmallestDrop);
    if (drop > used - kEndMarkLength)
        return false; // more to drop than there is: the message is lost, the text stays
    DropOldest(drop);
    return true;
}

bool vnLog::Resize(qint32 bytes)
{
    void *grown = buffer ? std::realloc(buffer, static_cast<std::size_t>(bytes))
                         : std::calloc(static_cast<std::size_t>(bytes), 1);
    if (!grown)
        return false;
    buffer = static_cast<char *>(grown);
    capacity = bytes;
    return true;
}

void vnLog::DropOldest(qint32 bytes)
{
    // The cut falls where it falls, also inside a message.
    std::memmove(buffer, buffer + bytes, static_cast<std::size_t>(used - bytes + 1));
    used -= bytes;
}

void vnLogErrorLine(char kind, int line, const char *file)
{
    char text[256];
    std::snprintf(text, sizeof text, "-ERR %c- line %d, file(%s)", kind, line, file);
    vnLog::Instance()->Add(text);
}
