// Transform and effect values of the current layer, in whole numbers.

#include "hostErrors.h"
#include "hostScopes.h"
#include "vipLi.h"

#include "support/vnLog.h"

#include <cstdio>
#include <cstring>

namespace {

/// A name of an installed effect and the key that it sets. Names are compared in full.
struct EffectName
{
    const char *name;
    qint32 vipLi::*key;
};

// The blur and the colour filter are known by their French names alone: in a host of another
// language they are not found, and their fields do nothing.
constexpr EffectName kEffectNames[] = {
    { "Flou gaussien", &vipLi::EfxKeyBlur },
    { "Balance des couleurs (TLS)", &vipLi::EfxKeyFiltre },
    { "Remplir", &vipLi::EfxKeyFill },
    { "Fill", &vipLi::EfxKeyFill },
    { "Trait", &vipLi::EfxKeyOutline },
    { "Stroke", &vipLi::EfxKeyOutline },
    { "TessalyEfx", &vipLi::EfxKeyTessaly },
};

/// The component of a value by its index, null above 3.
double *Component(AEGP_StreamVal &value, qint32 component)
{
    switch (component) {
    case 0:
        return &value.four_d.x;
    case 1:
        return &value.four_d.y;
    case 2:
        return &value.four_d.z;
    case 3:
        return &value.four_d.w;
    default:
        return nullptr;
    }
}

void LogKey(const char *name, qint32 key)
{
    char line[64];
    std::snprintf(line, sizeof line, "%s=%d", name, key);
    vnLog::Instance()->Add(line);
}

} // namespace

bool vipLi::ReadLayerStream(
    SuiteHandler &suites, qint32 streamNumber, const A_Time &time, AEGP_StreamVal &value)
{
    AEGP_StreamType type = AEGP_StreamType_NO_DATA;
    return !VN_HOST_FAILED(suites.Stream7()->AEGP_GetLayerStreamValue(Layer, streamNumber,
        AEGP_LTimeMode_CompTime, &time, /*preExpression=*/false, &value, &type));
}

bool vipLi::SetStreamValue(qint32 streamNumber, qint32 frame, qint32 value, qint32 component)
{
    if (!Project || !Compo || !Layer)
        return false;
    SuiteHandler suites(BasicSuite);
    LayerStream stream(suites, PluginId, Layer, streamNumber);
    const A_Time time = FrameTime(frame);
    AEGP_StreamValue written{};
    written.streamH = stream.Handle();
    if (VN_HOST_FAILED(stream.Error())
        || !ReadLayerStream(suites, streamNumber, time, written.val)) // the others stay as they are
        return false;
    if (double *changed = Component(written.val, component))
        *changed = value;

    A_Boolean hasKeys = false;
    if (VN_HOST_FAILED(suites.Stream7()->AEGP_IsStreamTimevarying(stream.Handle(), &hasKeys)))
        return false;
    if (hasKeys) {
        AEGP_KeyframeIndex key = -1; // of the frame's key, which may have stood there already
        if (VN_HOST_FAILED(suites.Keyframe3()->AEGP_InsertKeyframe(
                stream.Handle(), AEGP_LTimeMode_CompTime, &time, &key))
            || VN_HOST_FAILED(
                suites.Keyframe3()->AEGP_SetKeyframeValue(stream.Handle(), key, &written)))
            return false;
    } else if (VN_HOST_FAILED( // the value then holds for all frames
                   suites.Stream7()->AEGP_SetStreamValue(PluginId, stream.Handle(), &written))) {
        return false;
    }
    return !VN_HOST_FAILED(stream.Close());
}

bool vipLi::GetStreamValue(qint32 streamNumber, qint32 frame, qint32 &first, qint32 &second)
{
    first = second = -1;
    if (!Project || !Compo || !Layer)
        return false;
    SuiteHandler suites(BasicSuite);
    AEGP_StreamVal value{};
    if (!ReadLayerStream(suites, streamNumber, FrameTime(frame), value))
        return false;
    first = ToWhole(value.two_d.x);
    second = ToWhole(value.two_d.y);
    return true;
}

bool vipLi::FindEfxKeys()
{
    SuiteHandler suites(BasicSuite);
    A_long count = 0;
    if (VN_HOST_FAILED(suites.Effect3()->AEGP_GetNumInstalledEffects(&count)))
        return false;
    AEGP_InstalledEffectKey key = AEGP_InstalledEffectKey_NONE;
    for (qint32 i = 0; i < count; ++i) {
        char name[AEGP_MAX_EFFECT_NAME_SIZE] = "";
        if (VN_HOST_FAILED(suites.Effect3()->AEGP_GetNextInstalledEffect(key, &key))
            || VN_HOST_FAILED(suites.Effect3()->AEGP_GetEffectName(key, name)))
            return false;
        for (const EffectName &known : kEffectNames) {
            if (std::strcmp(name, known.name) == 0)
                this->*known.key = key; // the later one in the host's list counts
        }
    }
    LogKey("EfxKeyBlur", EfxKeyBlur);
    LogKey("EfxKeyFiltre", EfxKeyFiltre);
    LogKey("EfxKeyOutline", EfxKeyOutline);
    LogKey("EfxKeyFill", EfxKeyFill);
    return true;
}

bool vipLi::GetLayerEffect(qint32 installedKey, bool apply, AEGP_EffectRefH &effect)
{
    if (!Compo || !Layer || installedKey == kNoEffect)
        return false;
    effect = nullptr;
    SuiteHandler suites(BasicSuite);
    A_long count = 0;
    if (VN_HOST_FAILED(suites.Effect3()->AEGP_GetLayerNumEffects(Layer, &count)))
        return false;
    for (qint32 i = 0; i < count; ++i) {
        AEGP_EffectRefH found = nullptr;
        if (VN_HOST_FAILED(
                suites.Effect3()->AEGP_GetLayerEffectByIndex(PluginId, Layer, i, &found)))
            return false;
        EffectRef candidate(suites, found);
        AEGP_InstalledEffectKey key = AEGP_InstalledEffectKey_NONE;
        if (VN_HOST_FAILED(suites.Effect3()->AEGP_GetInstalledKeyFromLayerEffect(found, &key)))
            return false;
        if (key == installedKey) {
            effect = candidate.Release(); // the caller's from here on
            return true;
        }
        if (VN_HOST_FAILED(candidate.Close()))
            return false;
    }
    if (!apply)
        return true;
    return !VN_HOST_FAILED(
        suites.Effect3()->AEGP_ApplyEffect(PluginId, Layer, installedKey, &effect));
}

template <class Use>
bool vipLi::UseEfxValue(const EfxParam &param, bool apply, Use use)
{
    AEGP_EffectRefH found = nullptr;
    if (!GetLayerEffect(param.installedKey, apply, found))
        return false;
    if (!found)
        return true;
    // What the host has just failed on is not handed to it again: it stays open, by Release.
    SuiteHandler suites(BasicSuite);
    EffectRef effect(suites, found);
    A_long count = 0; // asked for, and of no further use
    if (VN_HOST_FAILED(suites.Stream7()->AEGP_GetEffectNumParamStreams(found, &count))) {
        effect.Release();
        return false;
    }
    LayerStream stream(suites, PluginId, found, param.index + 1); // stream 0 is the input layer
    if (VN_HOST_FAILED(stream.Error())) {
        effect.Release();
        return false;
    }
    StreamValue value(suites, PluginId, stream.Handle(), FrameTime(param.frame));
    if (VN_HOST_FAILED(value.Error()) || !use(suites, stream.Handle(), value)
        || VN_HOST_FAILED(value.Close()) || VN_HOST_FAILED(stream.Close())) {
        value.Release();
        stream.Release();
        effect.Release();
        return false;
    }
    return !VN_HOST_FAILED(effect.Close());
}

bool vipLi::GetEfxValue(qint32 installedKey, qint32 frame, qint32 param, qint32 &value)
{
    if (!Compo || !Layer || installedKey == kNoEffect)
        return false;
    value = 0;
    return UseEfxValue({ installedKey, frame, param }, /*apply=*/false,
        [&](SuiteHandler &, AEGP_StreamRefH, StreamValue &read) {
            value = ToWhole(read.First());
            return true;
        });
}

bool vipLi::SetEfxValue(qint32 installedKey, qint32 frame, qint32 param, qint32 value)
{
    if (!Compo || !Layer || installedKey == kNoEffect)
        return false;
    // A 0 on a layer without the effect needs no effect; a 0 on one that has it leaves it there.
    return UseEfxValue({ installedKey, frame, param }, /*apply=*/value != 0,
        [&](SuiteHandler &suites, AEGP_StreamRefH stream, StreamValue &written) {
            written.First() = value;
            return !VN_HOST_FAILED(
                suites.Stream7()->AEGP_SetStreamValue(PluginId, stream, written.Value()));
        });
}
