// The one way into the host: every function of every table runs inside HostCall.
#pragma once

#include "suites/Host.h"

#include <new>

namespace rostrum {

/// A call that cannot be served: there is no host, or the thread is not the main one.
A_Err RefuseCall(Host *host, const char *function);

/// Checks the thread, lets the fault plan fail the call, records it, catches everything that the
/// body throws. `arguments` are for the record alone.
template <typename Table, typename Body, typename... Arguments>
A_Err HostCall(const char *function, Body body, const Arguments &...arguments)
{
    Host *host = Host::Instance();
    if (!host || !host->OnMainThread())
        return RefuseCall(host, function);

    const int record = host->GetTrace().IsOn() ? host->GetTrace().Add(
                           { Table::kName, Table::kVersion, function, ArgumentsText(arguments...) })
                                               : -1;
    const char *caller = host->currentFunction;
    host->currentFunction = function;
    A_Err result = host->Faults().OnCall(function);
    if (result == A_Err_NONE) {
        try {
            result = body(*host);
        } catch (const std::bad_alloc &) {
            result = A_Err_ALLOC;
        } catch (...) {
            result = A_Err_GENERIC;
        }
    }
    host->currentFunction = caller;
    if (record >= 0)
        host->GetTrace().SetResult(record, result);
    return result;
}

} // namespace rostrum
