#include "suites/SuiteTools.h"
#include "suites/Tables.h"

namespace rostrum {
namespace {

using Table = AEGP_UtilitySuite5;

/// The outermost group names the entry; a group that changes nothing leaves none. That inner names
/// count for nothing is known of the host's scripts only.
A_Err StartUndoGroup(const A_char *name)
{
    return HostCall<Table>(
        "AEGP_StartUndoGroup",
        [&](Host &host) -> A_Err {
            if (!name)
                return NullArgument(host);
            host.GetDocument().StartGroup(name);
            return A_Err_NONE;
        },
        name);
}

/// An end without a start answers an error and changes nothing.
A_Err EndUndoGroup()
{
    return HostCall<Table>("AEGP_EndUndoGroup", [](Host &host) -> A_Err {
        if (!host.GetDocument().EndGroup())
            return host.Misuse("no undo group is open", A_Err_GENERIC);
        return A_Err_NONE;
    });
}

} // namespace

void FillTable(AEGP_UtilitySuite5 &table)
{
    table.AEGP_StartUndoGroup = StartUndoGroup;
    table.AEGP_EndUndoGroup = EndUndoGroup;
}

} // namespace rostrum
