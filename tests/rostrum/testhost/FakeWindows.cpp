#include "FakeWindows.h"

namespace testing {

FakeWindows::FakeWindows(rostrum::HostDriver &driver)
{
    driver.windows.make = [this](const QByteArray &name) -> AEGP_PlatformViewRef {
        if (refuse)
            return nullptr;
        made << name;
        return reinterpret_cast<AEGP_PlatformViewRef>(static_cast<quintptr>(1000 + made.size()));
    };
    driver.windows.show = [this](const QByteArray &name) { Raise(name); };
    driver.windows.hide = [this](const QByteArray &name) { Hide(name); };
    driver.windows.isShown = [this](const QByteArray &name) { return shown.contains(name); };
    driver.windows.isFrontmost
        = [this](const QByteArray &name) { return !shown.isEmpty() && shown.last() == name; };
}

void FakeWindows::Raise(const QByteArray &name)
{
    shown.removeOne(name);
    shown << name;
}

} // namespace testing
