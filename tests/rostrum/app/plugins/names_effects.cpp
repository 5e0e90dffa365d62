// Writes the names of the installed effects.
#include "PluginKit.h"

#include <cstdio>

A_Err plugin::Enter()
{
    const Suite<AEGP_EffectSuite3> effects;
    AEGP_InstalledEffectKey key = AEGP_InstalledEffectKey_NONE;
    while (effects->AEGP_GetNextInstalledEffect(key, &key) == A_Err_NONE
        && key != AEGP_InstalledEffectKey_NONE) {
        A_char name[AEGP_MAX_EFFECT_NAME_SIZE] = "";
        effects->AEGP_GetEffectName(key, name);
        std::printf("effect \"%s\"\n", name);
    }
    return A_Err_NONE;
}
