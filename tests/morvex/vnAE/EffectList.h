// A host whose list of installed effects is the test's own; all else is Rostrum's. It stands in for
// hosts of other languages and of other plug-ins, with names that Rostrum does not have.
#pragma once

#include "LibrarySheet.h"

namespace effectList {

constexpr AEGP_InstalledEffectKey kFirstKey = 11;

inline QByteArrayList names; // of the keys from kFirstKey on
inline AEGP_EffectSuite3 table;

inline A_Err GetNumInstalledEffects(A_long *count)
{
    *count = names.size();
    return A_Err_NONE;
}

inline A_Err GetNextInstalledEffect(AEGP_InstalledEffectKey key, AEGP_InstalledEffectKey *next)
{
    *next = key == AEGP_InstalledEffectKey_NONE ? kFirstKey : key + 1;
    return *next < kFirstKey + names.size() ? A_Err_NONE : A_Err_PARAMETER;
}

inline A_Err GetEffectName(AEGP_InstalledEffectKey key, A_char *name)
{
    std::strcpy(name, names[key - kFirstKey].constData());
    return A_Err_NONE;
}

inline SPErr AcquireSuite(const char *name, std::int32_t version, const void **suite)
{
    const SPErr error = rostrum::Host::Instance()->BasicSuite()->AcquireSuite(name, version, suite);
    if (error != kSPNoError || std::strcmp(name, AEGP_EffectSuite3::kName) != 0)
        return error;
    table = *static_cast<const AEGP_EffectSuite3 *>(*suite);
    table.AEGP_GetNumInstalledEffects = GetNumInstalledEffects;
    table.AEGP_GetNextInstalledEffect = GetNextInstalledEffect;
    table.AEGP_GetEffectName = GetEffectName;
    *suite = &table;
    return kSPNoError;
}

inline SPBasicSuite basicSuite;

} // namespace effectList

/// Makes the library's host have these effects installed.
/// @param names each of at most 47 bytes
inline void InstallEffects(LibrarySheet &sheet, const QByteArrayList &names)
{
    effectList::names = names;
    effectList::basicSuite = *sheet.host.BasicSuite();
    effectList::basicSuite.AcquireSuite = effectList::AcquireSuite;
    GetVipLi()->BasicSuite = &effectList::basicSuite;
}
