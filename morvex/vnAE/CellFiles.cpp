#include "CellFiles.h"

#include "vnAE/FolderList.h"
#include "support/vnLog.h"
#include "support/vnPath.h"

#include <QBuffer>
#include <QImage>
#include <QSaveFile>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string_view>

// Passes the answer of a copy on; a text that did not fit is noted under the caller's line.
#define VN_FITS(done) ((done) || (vnLogErrorLine('B', __LINE__, __FILE__), false))

namespace {

using std::string_view;

constexpr string_view kCellExtensions[] = { "png", "tga", "psd" };

/// A file name taken apart, without a copy. stem is root and digits.
struct NameView
{
    string_view stem;
    string_view root;
    string_view digits;
    string_view extension;
};

/// One character as paths are compared: "/" for both separators, ASCII letters in lower case.
char Folded(char c)
{
    if (c >= 'A' && c <= 'Z')
        return static_cast<char>(c - 'A' + 'a');
    return c == '\\' ? '/' : c;
}

bool SameText(string_view a, string_view b)
{
    return a.size() == b.size()
        && std::equal(a.begin(), a.end(), b.begin(),
            [](char left, char right) { return left == right || Folded(left) == Folded(right); });
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsCellExtension(string_view extension)
{
    return std::any_of(std::begin(kCellExtensions), std::end(kCellExtensions),
        [&](string_view known) { return SameText(known, extension); });
}

/// The file name of a path. Unlike the helper below it, this one takes a separator at position 0
/// for one, so that a series in the root folder of a file system has a root without a separator.
const char *FileName(const char *path)
{
    const char *file = vnPath::FilePart(path);
    return file == path && (*file == '/' || *file == '\\') ? file + 1 : file;
}

/// What stands before the last separator.
string_view FolderOf(const char *path)
{
    const auto length = static_cast<std::size_t>(FileName(path) - path);
    return { path, length ? length - 1 : 0 };
}

NameView TakeApart(string_view fileName)
{
    NameView name{ fileName, {}, {}, {} };
    const std::size_t point = fileName.rfind('.');
    if (point != 0 && point != string_view::npos) { // a leading point starts no extension
        name.stem = fileName.substr(0, point);
        name.extension = fileName.substr(point + 1);
    }
    std::size_t length = name.stem.size();
    while (length > 0 && IsDigit(name.stem[length - 1]))
        --length;
    name.root = name.stem.substr(0, length);
    name.digits = name.stem.substr(length);
    return name;
}

NameView TakePathApart(const char *path)
{
    return TakeApart(FileName(path));
}

/// The value of a run of digits, or the highest number there is.
qint32 NumberOf(string_view digits)
{
    constexpr qint64 highest = std::numeric_limits<qint32>::max();
    qint64 number = 0;
    for (const char digit : digits)
        number = qMin(number * 10 + (digit - '0'), highest);
    return static_cast<qint32>(number);
}

template <std::size_t Bytes>
bool Put(char (&out)[Bytes], string_view text)
{
    const bool fits = text.size() < Bytes;
    const std::size_t length = fits ? text.size() : 0;
    std::copy_n(text.data(), length, out);
    out[length] = '\0';
    return fits;
}

/// snprintf into a whole buffer; empty instead of cut.
template <std::size_t Bytes, typename... Args>
bool Print(char (&out)[Bytes], const char *format, Args... arguments)
{
    const int length = std::snprintf(out, Bytes, format, arguments...);
    const bool fits = length >= 0 && static_cast<std::size_t>(length) < Bytes;
    if (!fits)
        out[0] = '\0';
    return fits;
}

/// A name in a folder, as Qt opens it on every system.
QString DiskPath(const char *folder, const char *name)
{
    QString path = QString::fromUtf8(folder);
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return path + QLatin1Char('/') + QString::fromUtf8(name);
}

/// GetFirstCellFile, which also tells the spelling that opens the file where case counts.
qint32 FindFirstCell(const char *folder, const char *root, const char *extension,
    CellName &fileName, CellName &onDisk)
{
    qint32 lowest = kCellNumberLimit;
    bool found = false;
    fileName[0] = onDisk[0] = '\0';
    if (!IsCellExtension(extension))
        return -1;

    const string_view wantedRoot(root);
    const string_view wantedExtension(extension);
    FolderList list(folder);
    while (const char *entry = list.Next()) {
        const NameView name = TakeApart(entry);
        if (name.digits.empty() || !SameText(name.root, wantedRoot)
            || !SameText(name.extension, wantedExtension))
            continue;
        const qint32 number = NumberOf(name.digits);
        if ((found && number >= lowest) || list.IsFolder())
            continue;
        found = true;
        if (number >= lowest || !VN_FITS(Put(onDisk, entry)))
            continue;
        lowest = number;
    }
    Put(fileName, onDisk);
    vnPath::ToLower(fileName);
    return found ? lowest : -1;
}

/// Value 0 for every pixel. Where the colours come from a table with transparent entries, value 0
/// need not be one of them, so it is made one.
void MakeBlank(QImage &image)
{
    image.fill(0U);
    if (image.colorCount() > 0 && image.hasAlphaChannel())
        image.setColor(0, qRgba(0, 0, 0, 0));
}

/// The blank image's name in the series of a first file.
bool MakeZeroName(const char *firstFile, CellPath &zeroName, CellName &extension)
{
    CellPathParts parts;
    if (!SplitCellPath(firstFile, parts))
        return false;
    const std::size_t padding = std::strlen(parts.digits);
    const bool kept = padding >= 2 && padding <= 4;
    Put(parts.digits, string_view("0000", kept ? padding : 1));
    Put(extension, parts.extension);
    return MakeCellPath(zeroName, parts);
}

/// Writes the whole file or nothing. The image is made in memory, where no write can fail: Qt's
/// writer of PNG keeps its rows when one does. The flush is asked for by itself, because a commit
/// takes no notice of one that fails and would keep a file without its end.
bool SaveImage(const QImage &image, const QString &path, const char *format)
{
    QBuffer bytes;
    QSaveFile file(path);
    return bytes.open(QIODevice::WriteOnly) && image.save(&bytes, format)
        && file.open(QIODevice::WriteOnly) && file.write(bytes.data()) == bytes.size()
        && file.flush() && file.commit();
}

} // namespace

bool GetCellRoot(const char *path, CellName &root)
{
    return VN_FITS(Put(root, TakePathApart(path).root));
}

bool GetCellDigits(const char *fileName, CellName &digits)
{
    return VN_FITS(Put(digits, TakePathApart(fileName).digits));
}

bool GetFileStem(const char *path, CellName &stem)
{
    return VN_FITS(Put(stem, TakePathApart(path).stem));
}

bool SplitCellPath(const char *path, CellPathParts &parts)
{
    const NameView name = TakePathApart(path);
    if (VN_FITS(Put(parts.folder, FolderOf(path)) && Put(parts.root, name.root)
            && Put(parts.digits, name.digits) && Put(parts.extension, name.extension)))
        return true;
    parts.folder[0] = parts.root[0] = parts.digits[0] = parts.extension[0] = '\0';
    return false;
}

bool MakeCellPath(CellPath &path, const CellPathParts &parts)
{
    if (!parts.folder[0])
        return VN_FITS(Print(path, "%s%s.%s", parts.root, parts.digits, parts.extension));
    return VN_FITS(
        Print(path, "%s/%s%s.%s", parts.folder, parts.root, parts.digits, parts.extension));
}

bool ParseCellFileName(const char *fileName, CellName &root, qint32 &number)
{
    const NameView name = TakePathApart(fileName);
    root[0] = '\0';
    number = -1;
    if (!IsCellExtension(name.extension) || name.digits.empty())
        return false;
    if (!VN_FITS(Put(root, name.root)))
        return false;
    vnPath::ToLower(root);
    number = NumberOf(name.digits);
    return true;
}

qint32 GetFirstCellFile(
    const char *folder, const char *root, const char *extension, CellName &fileName)
{
    CellName onDisk;
    return FindFirstCell(folder, root, extension, fileName, onDisk);
}

ImportCode WriteZeroCell(
    const char *folder, const char *root, const char *extension, CellName &fileName)
{
    CellName onDisk;
    const qint32 first = FindFirstCell(folder, root, extension, fileName, onDisk);
    if (first == 0)
        return kImportOk;
    if (first < 0)
        return kImportNoSerie;

    QImage image; // a series without a first file names its folder here, which does not load
    if (!image.load(DiskPath(folder, onDisk)))
        return kImportNotOpened;
    MakeBlank(image);

    CellPath zeroName;
    CellName format;
    if (!MakeZeroName(fileName, zeroName, format))
        return kImportZeroNotWritten;
    // Joined to the folder here, because an empty one would make the name a relative one.
    return SaveImage(image, DiskPath(folder, zeroName), format) ? kImportOk : kImportZeroNotWritten;
}

bool SameCellSerie(const char *projectPath, const char *wantedPath, qint32 kind, qint32 fileCount)
{
    if (kind == kFixe && fileCount >= 2)
        return false;
    const NameView inProject = TakePathApart(projectPath);
    const NameView wanted = TakePathApart(wantedPath);
    if (!SameText(inProject.extension, wanted.extension)
        || !SameText(FolderOf(projectPath), FolderOf(wantedPath)))
        return false;
    if (kind == kSequence)
        return SameText(inProject.root, wanted.root);
    return kind == kFixe && SameText(inProject.stem, wanted.stem);
}

bool FormatImportMessage(
    ImportText &text, qint32 code, const char *folder, const char *root, const char *firstFile)
{
    const auto withFirstFile
        = [&](const char *format) { return VN_FITS(Print(text, format, folder, firstFile)); };
    switch (code) {
    case kImportNoSerie:
        return VN_FITS(
            Print(text, "[%s]Aucune images du type %s/%s[0-9][tga/png]", firstFile, folder, root));
    case kImportNotOpened:
        return withFirstFile("Echec ouverture fichier [%s/%s]");
    case kImportBadExtension:
        return withFirstFile("Extension non reconnue [%s/%s]");
    case kImportBadArguments:
        return withFirstFile("Mauvais parametres [%s/%s]");
    case kImportNoImage:
        return withFirstFile("Echec ouverture image [%s/%s]");
    case kImportZeroNotWritten:
    case kImportZeroNotSaved:
        return VN_FITS(Print(text, "Echec ecriture image Zero [%s/%s*]", folder, root));
    default:
        text[0] = '\0';
        return false;
    }
}
