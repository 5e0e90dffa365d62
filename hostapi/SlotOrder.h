// The order of the slots, checked while compiling: a table of the host has no header field, and a
// slot's place is all that tells its function.
#pragma once

#include "hostapi/Suites.h"

#include <cstddef>

constexpr std::size_t kSlotSize = 8; // bytes; tables are those of 64-bit processes

#define VN_TABLE(Table, slots) static_assert(sizeof(Table) == (slots)*kSlotSize)
#define VN_SLOT(Table, function, index)                                                            \
    static_assert(offsetof(Table, function) == (index)*kSlotSize)

#include "hostapi/SlotList.h"

#undef VN_SLOT
#undef VN_TABLE
