// What the small plug-ins of the tests share: the entry point, and the way to the host. Each of them
// does one thing, well or badly; it defines Enter and the hook that it registers there.
#pragma once

#include "hostapi/BasicSuite.h"
#include "hostapi/Hooks.h"
#include "hostapi/Suites.h"

namespace plugin {

inline SPBasicSuite *basic = nullptr;
inline AEGP_PluginID id = 0;

/// Defined by each plug-in; called from its entry point. @return the entry point's answer
A_Err Enter();

template <typename Table>
const Table *Acquire()
{
    const void *table = nullptr;
    return basic->AcquireSuite(Table::kName, Table::kVersion, &table) == kSPNoError
        ? static_cast<const Table *>(table)
        : nullptr;
}

/// One suite for a scope.
template <typename Table>
class Suite
{
public:
    Suite() = default;
    ~Suite() { basic->ReleaseSuite(Table::kName, Table::kVersion); }
    Suite(const Suite &) = delete;
    Suite &operator=(const Suite &) = delete;
    const Table *operator->() const { return table; }

private:
    const Table *table = Acquire<Table>();
};

A_Err RegisterIdle(AEGP_IdleHook hook);
A_Err RegisterDeath(AEGP_DeathHook hook);

/// The first layer of the active composition, null when there is none.
AEGP_LayerH FirstLayer();

} // namespace plugin
