// Panel windows without a window system: a stack of names. The containers are fake handles.
#pragma once

#include "suites/HostDriver.h"

#include <QByteArrayList>

namespace testing {

class FakeWindows
{
public:
    /// Serves the driver's panels. It must outlive the driver's use of them.
    explicit FakeWindows(rostrum::HostDriver &driver);

    /// Brings a panel to front, or shows it there.
    void Raise(const QByteArray &name);
    void Hide(const QByteArray &name) { shown.removeOne(name); }

    bool refuse = false; // to make containers
    QByteArrayList made; // in the order of their making
    QByteArrayList shown; // the frontmost last
};

} // namespace testing
