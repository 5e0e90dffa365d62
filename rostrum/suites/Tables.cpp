#include "Tables.h"

#include "suites/HostCall.h"

namespace rostrum {
namespace {

/// The table of a type.
template <typename Table>
Table tableOf{};

/// The function in a slot that is not offered.
template <auto Slot>
struct Unused;

template <typename Table, typename... Arguments, A_Err (*Table::*Slot)(Arguments...)>
struct Unused<Slot>
{
    static inline const char *name = "";

    static A_Err Call(Arguments... arguments)
    {
        return HostCall<Table>(
            name,
            [](Host &host) {
                host.Unexpected(Table::kName, Table::kVersion, name);
                return A_Err_GENERIC;
            },
            arguments...);
    }
};

void FillUnused()
{
#define VN_TABLE(Table, slots)
#define VN_SLOT(Table, function, index)                                                            \
    Unused<&Table::function>::name = #function;                                                    \
    tableOf<Table>.function = Unused<&Table::function>::Call
#include "hostapi/SlotList.h"
#undef VN_SLOT
#undef VN_TABLE
}

template <typename Table>
OfferedSuite Offer()
{
    FillTable(tableOf<Table>);
    return { Table::kName, Table::kVersion, &tableOf<Table> };
}

std::array<OfferedSuite, kSuiteCount> MakeTables()
{
    FillUnused();
    // The app suite is held by panels and nothing in it is called.
    const OfferedSuite app
        = { PF_AppSuite4::kName, PF_AppSuite4::kVersion, &tableOf<PF_AppSuite4> };
    return { Offer<AEGP_StreamSuite2>(), Offer<AEGP_LayerSuite4>(), Offer<AEGP_KeyframeSuite3>(),
        Offer<AEGP_KeyframeSuite4>(), Offer<AEGP_CompSuite6>(), Offer<AEGP_ItemSuite7>(),
        Offer<AEGP_ProjSuite5>(), Offer<AEGP_UtilitySuite5>(), Offer<AEGP_EffectSuite3>(),
        Offer<AEGP_CollectionSuite2>(), Offer<AEGP_FootageSuite5>(), Offer<AEGP_MemorySuite1>(),
        Offer<AEGP_CommandSuite1>(), Offer<AEGP_WorkspacePanelSuite1>(), app,
        Offer<AEGP_RegisterSuite5>() };
}

} // namespace

const std::array<OfferedSuite, kSuiteCount> &OfferedSuites()
{
    static const std::array<OfferedSuite, kSuiteCount> suites = MakeTables();
    return suites;
}

} // namespace rostrum
