// FolderList: the names in a folder, one by one, in the order in which the file system gives them.
//
// Reading a list of tens of thousands of names must cost little more than the system's own reading
// of it: no name is sorted, no file is asked about unless the caller wants to know. One source file
// for systems with a directory stream (_posix), one over Qt for all others (_qt).
#pragma once

#include <memory>

class FolderList
{
public:
    /// @param folder UTF-8; "/" and "\" both separate; empty is the root of the file system. A
    /// folder that cannot be listed has no names
    explicit FolderList(const char *folder);
    ~FolderList();
    FolderList(const FolderList &) = delete;
    FolderList &operator=(const FolderList &) = delete;

    /// The next name, without its folder, valid until the next call; null at the end. Hidden names
    /// are given, "." and ".." may be.
    const char *Next();
    /// Whether the name given last is a folder, or a link to one. Asks the file system only when
    /// the list itself does not tell. REQUIRES: Next gave a name
    bool IsFolder() const;

private:
    struct Listing;
    std::unique_ptr<Listing> listing;
};
