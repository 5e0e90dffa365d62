// The function tables, one of each for the process. Every slot is filled: those that are offered by
// the source file of their suite, all others by a function that answers A_Err_GENERIC and is
// recorded by name.
#pragma once

#include "suites/Host.h"

#include "hostapi/Suites.h"

namespace rostrum {

/// A suite is known by its name and its exact version.
struct OfferedSuite
{
    const char *name;
    int version;
    const void *table;
};

const std::array<OfferedSuite, kSuiteCount> &OfferedSuites();

// The offered slots of each table.
void FillTable(AEGP_RegisterSuite5 &table);
void FillTable(AEGP_CommandSuite1 &table);
void FillTable(AEGP_WorkspacePanelSuite1 &table);
void FillTable(AEGP_ProjSuite5 &table);
void FillTable(AEGP_ItemSuite7 &table);
void FillTable(AEGP_CompSuite6 &table);
void FillTable(AEGP_LayerSuite4 &table);
void FillTable(AEGP_StreamSuite2 &table);
void FillTable(AEGP_KeyframeSuite3 &table);
void FillTable(AEGP_KeyframeSuite4 &table);
void FillTable(AEGP_EffectSuite3 &table);
void FillTable(AEGP_FootageSuite5 &table);
void FillTable(AEGP_CollectionSuite2 &table);
void FillTable(AEGP_MemorySuite1 &table);
void FillTable(AEGP_UtilitySuite5 &table);

} // namespace rostrum
