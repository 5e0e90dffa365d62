// Counts what the whole process allocates, whoever asks: our code, Qt, the C++ library. Not for builds
// under the address sanitizer, which has an allocator of its own.
#pragma once

namespace testing {

/// Blocks asked for since the process started.
long AllocationCount();

} // namespace testing
