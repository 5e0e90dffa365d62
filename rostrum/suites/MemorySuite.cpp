#include "suites/SuiteTools.h"
#include "suites/Tables.h"

namespace rostrum {
namespace {

using Table = AEGP_MemorySuite1;

/// The name says what the memory is for; it may be null.
A_Err NewMemHandle(AEGP_PluginID pluginId, const A_char *what, AEGP_MemSize size,
    AEGP_MemFlag flags, AEGP_MemHandle *memory)
{
    return HostCall<Table>(
        "AEGP_NewMemHandle",
        [&](Host &host) -> A_Err {
            if (!memory)
                return NullArgument(host);
            return host.NewMemory(what, size, flags, memory);
        },
        pluginId, what, size, flags, memory);
}

A_Err FreeMemHandle(AEGP_MemHandle memory)
{
    return HostCall<Table>(
        "AEGP_FreeMemHandle", [&](Host &host) { return host.FreeMemory(memory); }, memory);
}

/// Locks nest. The address is a multiple of 16.
A_Err LockMemHandle(AEGP_MemHandle memory, void **address)
{
    return HostCall<Table>(
        "AEGP_LockMemHandle",
        [&](Host &host) -> A_Err {
            MemoryBlock *block = host.FindMemory(memory);
            if (!block)
                return host.BadHandle(memory);
            if (!address)
                return NullArgument(host);
            ++block->locks;
            *address = block->address;
            return A_Err_NONE;
        },
        memory, address);
}

A_Err UnlockMemHandle(AEGP_MemHandle memory)
{
    return HostCall<Table>(
        "AEGP_UnlockMemHandle",
        [&](Host &host) -> A_Err {
            MemoryBlock *block = host.FindMemory(memory);
            if (!block)
                return host.BadHandle(memory);
            if (block->locks == 0)
                return host.Misuse("the memory is not locked");
            --block->locks;
            return A_Err_NONE;
        },
        memory);
}

} // namespace

void FillTable(AEGP_MemorySuite1 &table)
{
    table.AEGP_NewMemHandle = NewMemHandle;
    table.AEGP_FreeMemHandle = FreeMemHandle;
    table.AEGP_LockMemHandle = LockMemHandle;
    table.AEGP_UnlockMemHandle = UnlockMemHandle;
}

} // namespace rostrum
