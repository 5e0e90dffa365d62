// Failures ordered up: a test, or the check of a plug-in, makes calls of the host fail.
//
// A call that fails answers the error and does nothing else; its out arguments stay as they are.
// This holds for the functions that give something back, too: a disposal that is made to fail
// disposes of nothing. Where a leak is then what must be seen, SpareGiveBacks leaves them out.
//
// AcquireSuite and ReleaseSuite are not counted. Withhold makes a suite unobtainable.
#pragma once

#include "hostapi/HostTypes.h"

#include <QByteArray>
#include <QVector>

namespace rostrum {

class FaultPlan
{
public:
    /// The k-th call from now fails, 1 is the next one.
    void FailNth(int call, A_Err error = A_Err_GENERIC);
    /// The next call of a function fails.
    void FailNext(const QByteArray &function, A_Err error = A_Err_GENERIC);
    /// Each call of a function fails.
    void FailEvery(const QByteArray &function, A_Err error = A_Err_GENERIC);
    void Withhold(const QByteArray &suite, int version);
    /// The suite is handed out as success with a null table.
    void HandOutNull(const QByteArray &suite, int version);
    /// Calls that give something back neither fail by number nor count.
    void SpareGiveBacks(bool spare) { spareGiveBacks = spare; }
    /// Forgets all orders and the count.
    void Clear() { *this = FaultPlan(); }

    /// Calls since the start or the last Clear, those that failed included.
    int CallCount() const { return count; }
    /// Dispose..., Free..., Unlock..., End...: what a scope's destructor calls.
    static bool IsGiveBack(const char *function);

    // For the host.

    /// Counts a call. @return the error that it must answer, A_Err_NONE for none
    A_Err OnCall(const char *function)
    {
        if (!active && !spareGiveBacks) {
            ++count;
            return A_Err_NONE;
        }
        return Judge(function);
    }
    bool IsWithheld(const char *suite, int version) const;
    bool IsNull(const char *suite, int version) const;

private:
    struct FunctionFault
    {
        QByteArray function;
        A_Err error;
        bool once;
    };
    struct NumberedFault
    {
        int call;
        A_Err error;
    };
    struct Pair
    {
        QByteArray suite;
        int version;
    };

    A_Err Judge(const char *function);
    static bool Holds(const QVector<Pair> &pairs, const char *suite, int version);

    QVector<FunctionFault> byFunction;
    QVector<NumberedFault> byNumber;
    QVector<Pair> withheld;
    QVector<Pair> null;
    int count = 0;
    bool active = false; // there are orders
    bool spareGiveBacks = false;
};

} // namespace rostrum
