// SuiteHandler: the way to the host's suites for the length of one operation. It is made on the
// stack, acquires a suite at the first use of its accessor, and gives back all that it acquired
// when it goes, in a fixed order, on an ordinary return and while an exception passes alike.
//
// Errors   A suite that cannot be had is thrown as the number PF_Err_BAD_CALLBACK_PARAM (516), of
//          type SuiteErr. What a suite's own functions answer is the caller's to look at.
// Cost     No allocation, one clear; the host is asked only for the suites that are reached. One
//          that is reached five times is acquired once.
// Thread   The host's main thread.
#pragma once

#include "shell/SuiteTable.h"

#include "hostapi/Suites.h"
#include "hostapi/BasicSuite.h"

#include <cstdint>

/// What the shell throws: an error number of the host, by value.
using SuiteErr = A_Err;

class SuiteHandler
{
public:
    /// @param basicSuite not owned; it outlives the handler
    /// Throws 516 when it is null, before any call of the host.
    explicit SuiteHandler(const SPBasicSuite *basicSuite) : basicSuite(basicSuite)
    {
        if (!basicSuite)
            throw SuiteErr(PF_Err_BAD_CALLBACK_PARAM);
        for (std::uint64_t &word : held)
            word = 0;
    }
    ~SuiteHandler() { ReleaseAll(); }

    SuiteHandler(const SuiteHandler &) = delete;
    SuiteHandler &operator=(const SuiteHandler &) = delete;

    // The suites in use, by their short name and the version that the host knows them by. Each
    // throws 516 when the host has no such suite, or answers success with no table.

    const AEGP_RegisterSuite5 *Register6() { return Get<AEGP_RegisterSuite5>(); }
    const AEGP_CommandSuite1 *Command1() { return Get<AEGP_CommandSuite1>(); }
    const AEGP_WorkspacePanelSuite1 *WorkspacePanel1() { return Get<AEGP_WorkspacePanelSuite1>(); }
    const PF_AppSuite4 *PFApp6() { return Get<PF_AppSuite4>(); }
    const AEGP_ProjSuite5 *Proj8() { return Get<AEGP_ProjSuite5>(); }
    const AEGP_ItemSuite7 *Item11() { return Get<AEGP_ItemSuite7>(); }
    const AEGP_CompSuite6 *Comp14() { return Get<AEGP_CompSuite6>(); }
    const AEGP_LayerSuite4 *Layer10() { return Get<AEGP_LayerSuite4>(); }
    const AEGP_StreamSuite2 *Stream7() { return Get<AEGP_StreamSuite2>(); }
    const AEGP_KeyframeSuite3 *Keyframe3() { return Get<AEGP_KeyframeSuite3>(); }
    const AEGP_KeyframeSuite4 *Keyframe4() { return Get<AEGP_KeyframeSuite4>(); }
    const AEGP_EffectSuite3 *Effect3() { return Get<AEGP_EffectSuite3>(); }
    const AEGP_FootageSuite5 *Footage11() { return Get<AEGP_FootageSuite5>(); }
    const AEGP_CollectionSuite2 *Collection2() { return Get<AEGP_CollectionSuite2>(); }
    const AEGP_MemorySuite1 *Memory1() { return Get<AEGP_MemorySuite1>(); }
    const AEGP_UtilitySuite5 *Utility11() { return Get<AEGP_UtilitySuite5>(); }

    /// Any published suite, its table untyped, by its row in kPublishedSuites.
    /// Throws 516 also for a row that does not exist.
    const void *Suite(int place);

    /// Releases what is held, in the order of kPublishedSuites; the next use of an accessor
    /// acquires anew. For a handler that outlives its operations. Never throws.
    void ReleaseAll()
    {
        for (unsigned word = 0; word < kWords; ++word) {
            if (held[word])
                ReleaseWord(word);
        }
    }

private:
    template <class Table>
    const Table *Get()
    {
        constexpr int place = SuitePlace(Table::kName, Table::kVersion);
        static_assert(place >= 0, "the pair is not among the published suites");
        return static_cast<const Table *>(Suite(place));
    }
    const void *Acquire(unsigned place);
    void ReleaseWord(unsigned word);

    static constexpr unsigned kWordBits = 64;
    static constexpr unsigned kWords = (kPublishedSuiteCount + kWordBits - 1) / kWordBits;

    const SPBasicSuite *basicSuite;
    const void *tables[kPublishedSuiteCount]; // each counts as null while its bit is clear
    std::uint64_t held[kWords]; // a bit for each table; clearing them clears all tables at once
};
