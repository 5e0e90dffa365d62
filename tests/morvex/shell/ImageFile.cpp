#include "ImageFile.h"

#include <QDir>

#include <algorithm>

ImageFile::ImageFile(const QString &path)
{
    const std::wstring native = QDir::toNativeSeparators(path).toStdWString();
    module = LoadLibraryExW(native.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    if (!module)
        return;
    base = reinterpret_cast<const char *>(module);
    headers = At<IMAGE_NT_HEADERS>(
        static_cast<DWORD>(reinterpret_cast<const IMAGE_DOS_HEADER *>(base)->e_lfanew));
}

ImageFile::~ImageFile()
{
    if (module)
        FreeLibrary(module);
}

QByteArrayList ImageFile::Exports() const
{
    QByteArrayList names;
    const auto *table = Table<IMAGE_EXPORT_DIRECTORY>(IMAGE_DIRECTORY_ENTRY_EXPORT);
    for (DWORD i = 0; table && i < table->NumberOfNames; ++i)
        names << At<char>(At<DWORD>(table->AddressOfNames)[i]);
    std::sort(names.begin(), names.end());
    return names;
}

QByteArrayList ImageFile::Imports() const
{
    QByteArrayList names;
    const auto *table = Table<IMAGE_IMPORT_DESCRIPTOR>(IMAGE_DIRECTORY_ENTRY_IMPORT);
    for (; table && table->Name; ++table)
        names << QByteArray(At<char>(table->Name)).toLower();
    std::sort(names.begin(), names.end());
    return names;
}

QByteArray ImageFile::Resource(const char *type, int id, int language) const
{
    const HRSRC found
        = FindResourceExA(module, type, MAKEINTRESOURCEA(id), static_cast<WORD>(language));
    const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    if (!loaded)
        return {};
    return QByteArray(static_cast<const char *>(LockResource(loaded)),
        static_cast<int>(SizeofResource(module, found)));
}
