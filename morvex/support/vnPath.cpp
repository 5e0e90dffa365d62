#include "vnPath.h"

#include <QString>

#include <cstring>
#include <utility>

namespace vnPath {
namespace {

bool IsSeparator(char c)
{
    return c == '/' || c == '\\';
}

/// The last separator, null when there is none behind position 0.
const char *LastSeparator(const char *path)
{
    for (const char *at = path + std::strlen(path); at > path + 1;) {
        --at;
        if (IsSeparator(*at))
            return at;
    }
    return nullptr;
}

/// The point of the extension, null when there is none.
const char *ExtensionPoint(const char *path)
{
    const char *file = FilePart(path);
    const char *point = std::strrchr(file, '.');
    return point == file ? nullptr : point;
}

} // namespace

const char *FilePart(const char *path)
{
    const char *separator = LastSeparator(path);
    return separator ? separator + 1 : path;
}

void CutFilePart(char *path)
{
    const char *separator = LastSeparator(path);
    path[separator ? separator - path : 0] = '\0';
}

const char *Extension(const char *path)
{
    const char *point = ExtensionPoint(path);
    return point ? point + 1 : path + std::strlen(path);
}

void CutExtension(char *path)
{
    if (const char *point = ExtensionPoint(path))
        path[point - path] = '\0';
}

QString LowerExtension(const QString &path)
{
    const QByteArray bytes = path.toUtf8();
    return QString::fromUtf8(Extension(bytes.constData())).toLower();
}

void ToLower(char *text)
{
    for (; *text; ++text) {
        if (*text >= 'A' && *text <= 'Z')
            *text = static_cast<char>(*text - 'A' + 'a');
    }
}

bool IsDigitsOnly(const char *text)
{
    return *text && text[std::strspn(text, "0123456789")] == '\0';
}

void OrderInts(int &low, int &high)
{
    if (low > high)
        std::swap(low, high);
}

} // namespace vnPath
