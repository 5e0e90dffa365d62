// The border to the host: each function that the host calls runs its work in here.
#pragma once

#include "hostapi/HostTypes.h"

/// Does the work of one call from the host. Whatever it throws ends here and nobody is told: the
/// host cannot act on our errors, and the user sees an operation that had no effect.
/// @return success in every case
template <class Work>
A_Err Guarded(Work work) noexcept
{
    try {
        work();
    } catch (...) { // numbers of the host, failed allocations, anything
    }
    return A_Err_NONE;
}
