#include "shell/SuiteHandler.h"

const void *SuiteHandler::Suite(int place)
{
    if (place < 0 || place >= kPublishedSuiteCount)
        throw SuiteErr(PF_Err_BAD_CALLBACK_PARAM);
    return IsHeld(place) ? tables[place] : Acquire(place);
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

/// Walks the set bits of a word from the lowest on, so that a few are found among many at once.
void SuiteHandler::ReleaseWord(int word)
{
    for (std::uint64_t bits = held[word]; bits != 0; bits &= bits - 1) {
        const PublishedSuite &suite = kPublishedSuites[word * kWordBits + __builtin_ctzll(bits)];
        basicSuite->ReleaseSuite(suite.name, suite.version); // unchecked: nobody could act on it
    }
    held[word] = 0;
}
