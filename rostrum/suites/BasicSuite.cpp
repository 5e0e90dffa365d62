// "SP Basic Suite": hands out the tables. Its blocks and its comparison are not called by any
// plug-in of ours; they answer errors and are recorded.
#include "suites/Host.h"

namespace rostrum {
namespace {

constexpr char kBasicName[] = "SP Basic Suite";
constexpr int kBasicVersion = 4;

template <typename Call>
SPErr BasicCall(const char *function, Call call)
{
    Host *host = Host::Instance();
    if (!host)
        return kSPSuiteNotFound;
    if (!host->OnMainThread()) {
        host->Misuse(QByteArray(function) + " was called from another thread");
        return kSPBadParameter;
    }
    return call(*host);
}

/// @return an entry of the record, with the suite's name as the argument
TraceEntry Entry(const char *function, const char *name, int version, SPErr result)
{
    const QByteArray arguments = QByteArray(name) + ' ' + QByteArray::number(version);
    return { kBasicName, kBasicVersion, function, arguments, result };
}

SPErr AcquireSuite(const char *name, std::int32_t version, const void **suite)
{
    return BasicCall("AcquireSuite", [&](Host &host) -> SPErr {
        if (!name || !suite) {
            host.Misuse("AcquireSuite: null argument");
            return kSPBadParameter;
        }
        const SPErr result = host.Acquire(name, version, suite);
        if (host.GetTrace().IsOn())
            host.GetTrace().Add(Entry("AcquireSuite", name, version, result));
        return result;
    });
}

SPErr ReleaseSuite(const char *name, std::int32_t version)
{
    return BasicCall("ReleaseSuite", [&](Host &host) -> SPErr {
        if (!name) {
            host.Misuse("ReleaseSuite: null argument");
            return kSPBadParameter;
        }
        const SPErr result = host.Release(name, version);
        if (host.GetTrace().IsOn())
            host.GetTrace().Add(Entry("ReleaseSuite", name, version, result));
        return result;
    });
}

SPErr NotOffered(const char *function)
{
    return BasicCall(function, [&](Host &host) -> SPErr {
        host.Unexpected(kBasicName, kBasicVersion, function);
        return kSPBadParameter;
    });
}

SPBoolean IsEqual(const char *, const char *)
{
    NotOffered("IsEqual");
    return 0;
}

SPErr AllocateBlock(std::size_t, void **)
{
    return NotOffered("AllocateBlock");
}

SPErr FreeBlock(void *)
{
    return NotOffered("FreeBlock");
}

SPErr ReallocateBlock(void *, std::size_t, void **)
{
    return NotOffered("ReallocateBlock");
}

SPErr Undefined()
{
    return NotOffered("Undefined");
}

} // namespace

SPBasicSuite *Host::BasicSuite()
{
    static SPBasicSuite suite{ AcquireSuite, ReleaseSuite, IsEqual, AllocateBlock, FreeBlock,
        ReallocateBlock, Undefined };
    return &suite;
}

} // namespace rostrum
