#include "suites/SuiteTools.h"
#include "suites/Tables.h"

namespace rostrum {
namespace {

using Table = AEGP_EffectSuite3;

A_Err OpenEffect(Host &host, AEGP_LayerH layerH, EffectId effect, AEGP_EffectRefH *effectH)
{
    EffectPlace place;
    place.layer = TakeApart(layerH).payload;
    place.effect = effect;
    std::uint64_t payload = 0;
    if (!host.effects.Open(place, &payload))
        return A_Err_ALLOC;
    *effectH = MakeHandle<AEGP_EffectRefH>(HandleKind::Effect, payload);
    return A_Err_NONE;
}

const EffectPlace *FindPlace(Host &host, AEGP_EffectRefH handle)
{
    const HandleParts parts = TakeApart(handle);
    return parts.kind == HandleKind::Effect ? host.effects.Find(parts.payload) : nullptr;
}

A_Err GetLayerNumEffects(AEGP_LayerH layerH, A_long *count)
{
    return HostCall<Table>(
        "AEGP_GetLayerNumEffects",
        [&](Host &host) -> A_Err {
            const LayerRef layer = host.FindLayer(layerH);
            if (!layer)
                return host.BadHandle(layerH);
            if (!count)
                return NullArgument(host);
            *count = layer->effects.size();
            return A_Err_NONE;
        },
        layerH, count);
}

A_Err GetLayerEffectByIndex(AEGP_PluginID pluginId, AEGP_LayerH layerH,
    AEGP_EffectIndex effectIndex, AEGP_EffectRefH *effect)
{
    return HostCall<Table>(
        "AEGP_GetLayerEffectByIndex",
        [&](Host &host) -> A_Err {
            const LayerRef layer = host.FindLayer(layerH);
            if (!layer)
                return host.BadHandle(layerH);
            if (!effect)
                return NullArgument(host);
            if (effectIndex < 0 || effectIndex >= layer->effects.size())
                return A_Err_PARAMETER;
            return OpenEffect(host, layerH, layer->effects.at(effectIndex).id, effect);
        },
        pluginId, layerH, effectIndex, effect);
}

A_Err GetInstalledKeyFromLayerEffect(AEGP_EffectRefH effectH, AEGP_InstalledEffectKey *effectKey)
{
    return HostCall<Table>(
        "AEGP_GetInstalledKeyFromLayerEffect",
        [&](Host &host) -> A_Err {
            const EffectPlace *place = FindPlace(host, effectH);
            if (!place)
                return host.BadHandle(effectH);
            const LayerRef layer = host.FindLayer(place->layer);
            const LayerEffect *effect = layer ? layer->FindEffect(place->effect) : nullptr;
            if (!effect)
                return kErrBadHandle;
            if (!effectKey)
                return NullArgument(host);
            *effectKey = effect->key;
            return A_Err_NONE;
        },
        effectH, effectKey);
}

/// The streams that were opened from an effect are given back before it.
A_Err DisposeEffect(AEGP_EffectRefH effectH)
{
    return HostCall<Table>(
        "AEGP_DisposeEffect",
        [&](Host &host) -> A_Err {
            if (!FindPlace(host, effectH))
                return host.BadHandle(effectH);
            const std::uint64_t payload = TakeApart(effectH).payload;
            bool hasStreams = false;
            host.streams.ForEach([&](const StreamPlace &place) {
                hasStreams = hasStreams || place.effectHandle == payload;
            });
            if (hasStreams)
                return host.Misuse("a stream of the effect is still open", A_Err_GENERIC);
            host.effects.Close(payload);
            return A_Err_NONE;
        },
        effectH);
}

/// Behind those that the layer has.
A_Err ApplyEffect(AEGP_PluginID pluginId, AEGP_LayerH layerH, AEGP_InstalledEffectKey effectKey,
    AEGP_EffectRefH *effect)
{
    return HostCall<Table>(
        "AEGP_ApplyEffect",
        [&](Host &host) -> A_Err {
            const LayerRef layer = host.FindLayer(layerH);
            if (!layer)
                return host.BadHandle(layerH);
            if (!effect)
                return NullArgument(host);
            if (!FindEffect(effectKey))
                return A_Err_PARAMETER;
            const EffectId id = host.Edit("Apply Effect")
                                    .ApplyEffect(layer.place->composition, layer->id, effectKey);
            return OpenEffect(host, layerH, id, effect);
        },
        pluginId, layerH, effectKey, effect);
}

A_Err GetNumInstalledEffects(A_long *count)
{
    return HostCall<Table>(
        "AEGP_GetNumInstalledEffects",
        [&](Host &host) -> A_Err {
            if (!count)
                return NullArgument(host);
            *count = InstalledEffects().size();
            return A_Err_NONE;
        },
        count);
}

/// The key behind another one; none leads to the first, the last leads to none. That the walk ends
/// so was never seen in the real host.
A_Err GetNextInstalledEffect(AEGP_InstalledEffectKey effectKey, AEGP_InstalledEffectKey *nextKey)
{
    return HostCall<Table>(
        "AEGP_GetNextInstalledEffect",
        [&](Host &host) -> A_Err {
            if (!nextKey)
                return NullArgument(host);
            if (effectKey != AEGP_InstalledEffectKey_NONE && !FindEffect(effectKey))
                return A_Err_PARAMETER;
            *nextKey = AEGP_InstalledEffectKey_NONE;
            for (const EffectInfo &effect : InstalledEffects()) { // by rising key
                if (effect.key > effectKey) {
                    *nextKey = effect.key;
                    break;
                }
            }
            return A_Err_NONE;
        },
        effectKey, nextKey);
}

/// In the host's language, into a buffer of 48 bytes.
A_Err GetEffectName(AEGP_InstalledEffectKey effectKey, A_char *name)
{
    return HostCall<Table>(
        "AEGP_GetEffectName",
        [&](Host &host) -> A_Err {
            const EffectInfo *effect = FindEffect(effectKey);
            if (!effect)
                return A_Err_PARAMETER;
            if (!name)
                return NullArgument(host);
            CopyName(EffectName(*effect, host.effectLanguage), name, AEGP_MAX_EFFECT_NAME_SIZE);
            return A_Err_NONE;
        },
        effectKey, name);
}

} // namespace

void FillTable(AEGP_EffectSuite3 &table)
{
    table.AEGP_GetLayerNumEffects = GetLayerNumEffects;
    table.AEGP_GetLayerEffectByIndex = GetLayerEffectByIndex;
    table.AEGP_GetInstalledKeyFromLayerEffect = GetInstalledKeyFromLayerEffect;
    table.AEGP_DisposeEffect = DisposeEffect;
    table.AEGP_ApplyEffect = ApplyEffect;
    table.AEGP_GetNumInstalledEffects = GetNumInstalledEffects;
    table.AEGP_GetNextInstalledEffect = GetNextInstalledEffect;
    table.AEGP_GetEffectName = GetEffectName;
}

} // namespace rostrum
