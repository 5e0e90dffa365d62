#include "shell/SuiteHandler.h"

#include <cstring>

SuiteHandler::SuiteHandler(const SPBasicSuite *basicSuite) : basicSuite(basicSuite)
{
    if (!basicSuite)
        throw SuiteErr(PF_Err_BAD_CALLBACK_PARAM);
    std::memset(tables, 0, sizeof(tables));
    std::memset(held, 0, sizeof(held));
}

SuiteHandler::~SuiteHandler()
{
    for (int word = 0; word < kWords; ++word) {
        for (std::uint64_t bits = held[word]; bits != 0; bits &= bits - 1) {
            const int place = word * kWordBits + __builtin_ctzll(bits);
            const PublishedSuite &suite = kPublishedSuites[place];
            basicSuite->ReleaseSuite(
                suite.name, suite.version); // unchecked: nobody could act on it
        }
    }
}

const void *SuiteHandler::Suite(int place)
{
    if (place < 0 || place >= kPublishedSuiteCount)
        throw SuiteErr(PF_Err_BAD_CALLBACK_PARAM);
    return tables[place] ? tables[place] : Acquire(place);
}

const void *SuiteHandler::Acquire(int place)
{
    const PublishedSuite &suite = kPublishedSuites[place];
    const void *table = nullptr;
    if (basicSuite->AcquireSuite(suite.name, suite.version, &table) != kSPNoError || !table)
        throw SuiteErr(PF_Err_BAD_CALLBACK_PARAM);
    tables[place] = table;
    held[place / kWordBits] |= std::uint64_t(1) << (place % kWordBits);
    return table;
}
