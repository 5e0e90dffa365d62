#include "FolderList.h"

#include <algorithm>
#include <string>

#include <dirent.h>
#include <sys/stat.h>

struct FolderList::Listing
{
    DIR *stream = nullptr;
    const dirent *entry = nullptr;
};

FolderList::FolderList(const char *folder) : listing(std::make_unique<Listing>())
{
    std::string path(folder);
    std::replace(path.begin(), path.end(), '\\', '/');
    listing->stream = opendir((path + '/').c_str());
}

FolderList::~FolderList()
{
    if (listing->stream)
        closedir(listing->stream);
}

const char *FolderList::Next()
{
    listing->entry = listing->stream ? readdir(listing->stream) : nullptr;
    return listing->entry ? listing->entry->d_name : nullptr;
}

bool FolderList::IsFolder() const
{
    const unsigned char type = listing->entry->d_type;
    if (type != DT_UNKNOWN && type != DT_LNK)
        return type == DT_DIR;
    struct stat status = {};
    return fstatat(dirfd(listing->stream), listing->entry->d_name, &status, 0) == 0
        && S_ISDIR(status.st_mode);
}
