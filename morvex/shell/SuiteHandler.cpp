#include "shell/SuiteHandler.h"

namespace {

constexpr std::uint64_t BitOf(unsigned place)
{
    return std::uint64_t(1) << (place % 64);
}

} // namespace

const void *SuiteHandler::Suite(int row)
{
    const auto place = static_cast<unsigned>(row);
    if (place >= static_cast<unsigned>(kPublishedSuiteCount)) // a negative one is huge
        throw SuiteErr(PF_Err_BAD_CALLBACK_PARAM);
    return held[place / kWordBits] & BitOf(place) ? tables[place] : Acquire(place);
}

const void *SuiteHandler::Acquire(unsigned place)
{
    const PublishedSuite &suite = kPublishedSuites[place];
    const void *table = nullptr;
    if (basicSuite->AcquireSuite(suite.name, suite.version, &table) != kSPNoError || !table)
        throw SuiteErr(PF_Err_BAD_CALLBACK_PARAM);
    tables[place] = table;
    held[place / kWordBits] |= BitOf(place);
    return table;
}

/// Walks the set bits of a word from the lowest on, so that a few are found among many at once.
void SuiteHandler::ReleaseWord(unsigned word)
{
    for (std::uint64_t bits = held[word]; bits != 0; bits &= bits - 1) {
        const auto bit = static_cast<unsigned>(__builtin_ctzll(bits));
        const PublishedSuite &suite = kPublishedSuites[word * kWordBits + bit];
        basicSuite->ReleaseSuite(suite.name, suite.version); // unchecked: nobody could act on it
    }
    held[word] = 0;
}
