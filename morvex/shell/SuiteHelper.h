// SuiteHelper: one suite of the host, acquired at construction and held as long as its owner lives.
// For what lives long, the plug-in object and the panel; an operation uses SuiteHandler.
//
// Errors   A suite that cannot be had fails an assertion, then A_Err_MISSING_SUITE (13) is thrown,
//          of type SuiteErr. A release that fails is asserted on and nothing more.
#pragma once

#include "shell/Assert.h"
#include "shell/SuiteHandler.h"

/// The file that the assertions name. It is fixed: reports from users are compared by it.
inline constexpr char kSuiteHelperFile[] = "..\\..\\..\\LIB\\AE\\AE_CS5\\Headers\\SuiteHelper";

/// @tparam Table a table type of hostapi; it brings the suite's name and version as constants
template <class Table>
class SuiteHelper
{
public:
    /// @param basicSuite not owned; it outlives the helper. Null counts as a host without the
    /// suite.
    explicit SuiteHelper(const SPBasicSuite *basicSuite) : table(nullptr), basicSuite(basicSuite)
    {
        Assert(basicSuite != nullptr, "basic_suiteP", kSuiteHelperFile);
        if (!basicSuite)
            throw SuiteErr(A_Err_MISSING_SUITE);
        const void *found = nullptr;
        const SPErr err = basicSuite->AcquireSuite(Table::kName, Table::kVersion, &found);
        if (err != kSPNoError || !found) {
            Assert(false, "false", kSuiteHelperFile);
            throw SuiteErr(A_Err_MISSING_SUITE);
        }
        table = static_cast<const Table *>(found);
    }

    ~SuiteHelper()
    {
        if (!table)
            return;
        const SPErr err = basicSuite->ReleaseSuite(Table::kName, Table::kVersion);
        Assert(!err, "!err", kSuiteHelperFile);
    }

    SuiteHelper(const SuiteHelper &) = delete;
    SuiteHelper &operator=(const SuiteHelper &) = delete;

    const Table *operator->() const { return table; }

private:
    const Table *table; // null only while there is nothing to release
    const SPBasicSuite *basicSuite;
};
