// A host reduced to its basic suite: it hands out empty tables of the published suites, notes each
// acquiring and releasing in order, and fails where it is told to.
#pragma once

#include "hostapi/BasicSuite.h"
#include "shell/SuiteTable.h"

#include <QByteArray>
#include <QList>

namespace countingHost {

struct State
{
    QList<QByteArray> calls; // "acquire AEGP Item Suite 11", "release ...", and what tests add
    int withheld = -1; // row of the suite that is not offered
    int empty = -1; // row of the suite for which success comes with no table
    int failing = -1; // row of the suite for which an error comes with a table
    SPErr releaseResult = kSPNoError;
};

inline State state;
inline char tables[kPublishedSuiteCount]; // only their addresses count

inline QByteArray Call(const char *verb, const char *name, std::int32_t version)
{
    return QByteArray(verb) + ' ' + name + ' ' + QByteArray::number(version);
}

inline SPErr AcquireSuite(const char *name, std::int32_t version, const void **suite)
{
    state.calls << Call("acquire", name, version);
    const int place = SuitePlace(name, version);
    if (place < 0 || place == state.withheld)
        return kSPSuiteNotFound;
    *suite = place == state.empty ? nullptr : &tables[place];
    return place == state.failing ? kSPOutOfMemory : kSPNoError;
}

inline SPErr ReleaseSuite(const char *name, std::int32_t version)
{
    state.calls << Call("release", name, version);
    return state.releaseResult;
}

inline SPBasicSuite basicSuite
    = { AcquireSuite, ReleaseSuite, nullptr, nullptr, nullptr, nullptr, nullptr };

} // namespace countingHost
