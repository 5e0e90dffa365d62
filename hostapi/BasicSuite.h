// The basic suite: the one table that comes with the entry point and hands out all others.
#pragma once

#include <cstddef>
#include <cstdint>

using SPErr = std::int32_t;
#ifdef _WIN32
using SPBoolean = std::int32_t;
#else
using SPBoolean = std::uint8_t;
#endif

/// "SP Basic Suite" version 4. Suites are counted for each pair of name and version: one
/// AcquireSuite is owed one ReleaseSuite.
struct SPBasicSuite
{
    SPErr (*AcquireSuite)(const char *name, std::int32_t version, const void **suite);
    SPErr (*ReleaseSuite)(const char *name, std::int32_t version);
    SPBoolean (*IsEqual)(const char *, const char *);
    SPErr (*AllocateBlock)(std::size_t size, void **block);
    SPErr (*FreeBlock)(void *block);
    SPErr (*ReallocateBlock)(void *block, std::size_t newSize, void **newBlock);
    SPErr (*Undefined)();
};

static_assert(sizeof(SPBasicSuite) == 56);
static_assert(offsetof(SPBasicSuite, AcquireSuite) == 0);
static_assert(offsetof(SPBasicSuite, ReleaseSuite) == 8);
static_assert(offsetof(SPBasicSuite, IsEqual) == 16);
static_assert(offsetof(SPBasicSuite, AllocateBlock) == 24);
static_assert(offsetof(SPBasicSuite, FreeBlock) == 32);
static_assert(offsetof(SPBasicSuite, ReallocateBlock) == 40);
static_assert(offsetof(SPBasicSuite, Undefined) == 48);

constexpr SPErr kSPNoError = 0;
constexpr SPErr kSPSuiteNotFound = 0x53214664; // 'S!Fd'
constexpr SPErr kSPAlreadyReleased = 0x5352656C; // 'SRel'
constexpr SPErr kSPBadParameter = 0x5061726D; // 'Parm'
constexpr SPErr kSPOutOfMemory = -108;
