#include "FaultPlan.h"

#include <algorithm>

namespace rostrum {

void FaultPlan::FailNth(int call, A_Err error)
{
    byNumber << NumberedFault{ count + call, error };
    active = true;
}

void FaultPlan::FailNext(const QByteArray &function, A_Err error)
{
    byFunction << FunctionFault{ function, error, true };
    active = true;
}

void FaultPlan::FailEvery(const QByteArray &function, A_Err error)
{
    byFunction << FunctionFault{ function, error, false };
    active = true;
}

void FaultPlan::Withhold(const QByteArray &suite, int version)
{
    withheld << Pair{ suite, version };
}

void FaultPlan::HandOutNull(const QByteArray &suite, int version)
{
    null << Pair{ suite, version };
}

bool FaultPlan::IsGiveBack(const char *function)
{
    const QByteArray name = QByteArray::fromRawData(function, static_cast<int>(qstrlen(function)));
    static const char *const starts[]
        = { "AEGP_Dispose", "AEGP_Free", "AEGP_Unlock", "AEGP_EndUndoGroup" };
    return std::any_of(std::begin(starts), std::end(starts),
        [&](const char *start) { return name.startsWith(start); });
}

A_Err FaultPlan::Judge(const char *function)
{
    A_Err error = A_Err_NONE;
    for (int i = 0; i < byFunction.size() && !error; ++i) {
        if (byFunction[i].function != function)
            continue;
        error = byFunction[i].error;
        if (byFunction[i].once)
            byFunction.remove(i);
    }
    if (spareGiveBacks && IsGiveBack(function))
        return error;
    ++count;
    for (const NumberedFault &fault : qAsConst(byNumber)) {
        if (fault.call == count && !error)
            error = fault.error;
    }
    return error;
}

bool FaultPlan::Holds(const QVector<Pair> &pairs, const char *suite, int version)
{
    return std::any_of(pairs.cbegin(), pairs.cend(),
        [&](const Pair &pair) { return pair.version == version && pair.suite == suite; });
}

bool FaultPlan::IsWithheld(const char *suite, int version) const
{
    return Holds(withheld, suite, version);
}

bool FaultPlan::IsNull(const char *suite, int version) const
{
    return Holds(null, suite, version);
}

} // namespace rostrum
