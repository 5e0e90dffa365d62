// What the tests of all tables ask in the same way.
#pragma once

#include "testhost/HostTestMain.h"
#include "testhost/SheetFixture.h"

#include "hostapi/Suites.h"

#include <functional>

namespace testing {

struct NamedCall
{
    const char *function;
    std::function<A_Err()> call;
};

/// Each call gets a null where none may be: an error, and a complaint by name.
inline void RefusesNull(rostrum::Host &host, const QVector<NamedCall> &calls)
{
    for (const NamedCall &call : calls) {
        QCOMPARE(call.call(), A_Err_PARAMETER);
        QCOMPARE(
            host.TakeComplaints(), QByteArrayList{ QByteArray(call.function) + ": null argument" });
    }
}

/// Handles that lead nowhere: null, rubbish, another kind, a number never given out, a stale one.
template <typename Handle>
QVector<Handle> BadHandles(Handle stale)
{
    static int something = 0;
    const auto kind = rostrum::TakeApart(stale).kind;
    return { nullptr, reinterpret_cast<Handle>(quintptr(0x11)),
        reinterpret_cast<Handle>(&something),
        rostrum::MakeHandle<Handle>(rostrum::HandleKind::Panel, 1),
        rostrum::MakeHandle<Handle>(kind, rostrum::kPayloadMask), stale };
}

/// Each bad handle is an ordinary error.
template <typename Handle, typename Call>
void RefusesBadHandles(rostrum::Host &host, Handle stale, Call call)
{
    for (const Handle handle : BadHandles(stale)) {
        QCOMPARE(call(handle), rostrum::kErrBadHandle);
        QCOMPARE(host.Complaints(), QByteArrayList());
    }
}

constexpr AEGP_PluginID kPluginId = 77;

inline A_Time FrameTime(qint32 frame, quint32 scale = 25)
{
    return { frame, scale };
}

/// The text of a memory handle; the handle is freed.
inline QString TakeText(AEGP_MemHandle memory)
{
    const Suite<AEGP_MemorySuite1> suite;
    void *address = nullptr;
    if (suite->AEGP_LockMemHandle(memory, &address))
        return QStringLiteral("no memory");
    const QString text = QString::fromUtf16(static_cast<const ushort *>(address));
    suite->AEGP_UnlockMemHandle(memory);
    suite->AEGP_FreeMemHandle(memory);
    return text;
}

} // namespace testing
