// What the safe way to a suite costs over the bare calls: a scope opened, one suite acquired, one
// call made in it, everything given back.

#include "bench/Bench.h"

#include "shell/SuiteHandler.h"

#include <cstring>

namespace {

constexpr int kOperations = 20000; // of a measured round
constexpr int kRounds = 25;

struct Offer
{
    const char *name;
    std::int32_t version;
    const void *table;
    int count;
};

int calls = 0;

A_Err GetActiveItem(AEGP_ItemH *item)
{
    ++calls;
    *item = nullptr;
    return A_Err_NONE;
}

const AEGP_ItemSuite7 &ItemTable()
{
    static const AEGP_ItemSuite7 table = [] {
        AEGP_ItemSuite7 made = {};
        made.AEGP_GetActiveItem = GetActiveItem;
        return made;
    }();
    return table;
}

/// A host in this process that does next to nothing: the pair is looked up and counted.
Offer *FindOffer(const char *name, std::int32_t version)
{
    static Offer offers[] = {
        { AEGP_RegisterSuite5::kName, AEGP_RegisterSuite5::kVersion, nullptr, 0 },
        { AEGP_CommandSuite1::kName, AEGP_CommandSuite1::kVersion, nullptr, 0 },
        { AEGP_WorkspacePanelSuite1::kName, AEGP_WorkspacePanelSuite1::kVersion, nullptr, 0 },
        { AEGP_ProjSuite5::kName, AEGP_ProjSuite5::kVersion, nullptr, 0 },
        { AEGP_ItemSuite7::kName, AEGP_ItemSuite7::kVersion, &ItemTable(), 0 },
    };
    for (Offer &offer : offers) {
        if (offer.version == version && std::strcmp(offer.name, name) == 0)
            return &offer;
    }
    return nullptr;
}

SPErr AcquireSuite(const char *name, std::int32_t version, const void **suite)
{
    Offer *offer = FindOffer(name, version);
    if (!offer)
        return kSPSuiteNotFound;
    ++offer->count;
    *suite = offer->table;
    return kSPNoError;
}

SPErr ReleaseSuite(const char *name, std::int32_t version)
{
    Offer *offer = FindOffer(name, version);
    if (!offer || offer->count == 0)
        return kSPAlreadyReleased;
    --offer->count;
    return kSPNoError;
}

SPBasicSuite fastHost = { AcquireSuite, ReleaseSuite, nullptr, nullptr, nullptr, nullptr, nullptr };

void UseScope()
{
    for (int i = 0; i < kOperations; ++i) {
        SuiteHandler suites(&fastHost);
        AEGP_ItemH item = nullptr;
        suites.Item11()->AEGP_GetActiveItem(&item);
    }
}

void UseBareCalls()
{
    const SPBasicSuite *const host = &fastHost;
    for (int i = 0; i < kOperations; ++i) {
        const void *table = nullptr;
        if (host->AcquireSuite(AEGP_ItemSuite7::kName, AEGP_ItemSuite7::kVersion, &table))
            return;
        AEGP_ItemH item = nullptr;
        static_cast<const AEGP_ItemSuite7 *>(table)->AEGP_GetActiveItem(&item);
        host->ReleaseSuite(AEGP_ItemSuite7::kName, AEGP_ItemSuite7::kVersion);
    }
}

const bench::Registration suites("suites", [] {
    // A report: the double answers in a few nanoseconds, so that the ratio is that of a few more. What
    // counts is the goal of the cells, on a host that does something.
    return bench::Figures{ bench::Compare(
        QStringLiteral("a suite scope with one call, 20000 times"),
        /*goal=*/0, kRounds, UseScope, UseBareCalls) };
});

} // namespace
