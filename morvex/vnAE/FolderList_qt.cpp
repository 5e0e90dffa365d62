#include "FolderList.h"

#include <QDirIterator>

struct FolderList::Listing
{
    QDirIterator entries;
    QByteArray name;
};

FolderList::FolderList(const char *folder)
{
    QString path = QString::fromUtf8(folder);
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System;
    listing.reset(new Listing{ QDirIterator(path + QLatin1Char('/'), all), QByteArray() });
}

FolderList::~FolderList() = default;

const char *FolderList::Next()
{
    if (!listing->entries.hasNext())
        return nullptr;
    listing->entries.next();
    listing->name = listing->entries.fileName().toUtf8();
    return listing->name.constData();
}

bool FolderList::IsFolder() const
{
    return listing->entries.fileInfo().isDir();
}
