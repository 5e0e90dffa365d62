// UndoScope: one step of the host's history, closed on every way out.
#pragma once

#include "vnAE/vipLi.h"

#include <utility>

class UndoScope
{
public:
    UndoScope(vipLi *library, const QString &name) : library(library)
    {
        library->StartUndoGroup(name);
    }
    ~UndoScope()
    {
        try {
            Close();
        } catch (...) { // the suite is gone, and with it the one way to close the group
        }
    }
    UndoScope(const UndoScope &) = delete;
    UndoScope &operator=(const UndoScope &) = delete;

    void Close()
    {
        if (std::exchange(open, false))
            library->EndUndoGroup();
    }
    /// Leaves the group open for good. The reason stands at the call.
    void Release() { open = false; }

private:
    vipLi *library;
    bool open = true;
};
