// A library or program of Windows, mapped but not run: what it exports, imports and carries.
#pragma once

#include <QByteArrayList>
#include <QString>

#include <windows.h>

class ImageFile
{
public:
    explicit ImageFile(const QString &path);
    ~ImageFile();
    ImageFile(const ImageFile &) = delete;
    ImageFile &operator=(const ImageFile &) = delete;

    /// False for a file that is no library or program for this machine.
    bool IsMapped() const { return module != nullptr; }
    QByteArrayList Exports() const;
    /// The libraries that the system has to find for it, in lower case.
    QByteArrayList Imports() const;
    /// @return empty when there is no such resource
    QByteArray Resource(const char *type, int id, int language) const;

private:
    template <typename Type>
    const Type *At(DWORD offset) const
    {
        return reinterpret_cast<const Type *>(base + offset);
    }
    /// One of the tables that the file's header leads to; null when the file has none.
    template <typename Type>
    const Type *Table(int index) const
    {
        const DWORD offset = headers->OptionalHeader.DataDirectory[index].VirtualAddress;
        return offset ? At<Type>(offset) : nullptr;
    }

    HMODULE module = nullptr;
    const char *base = nullptr;
    const IMAGE_NT_HEADERS *headers = nullptr;
};
