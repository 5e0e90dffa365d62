#include "EffectCatalogue.h"

namespace rostrum {

const QVector<EffectInfo> &InstalledEffects()
{
    static const QVector<EffectInfo> effects = {
        { 1, kGaussianBlur, "Flou gaussien", "Gaussian Blur", { { "Radius", 0, 0, 1000 } } },
        { 2, kColorBalance, "Balance des couleurs (TLS)", "Color Balance (HLS)",
            { { "Hue", 0, -180, 180 }, { "Lightness", 0, -100, 100 },
                { "Saturation", 0, -100, 100 } } },
        { 3, kFill, "Remplir", "Fill",
            { { "Red", 100, 0, 100 }, { "Green", 0, 0, 100 }, { "Blue", 0, 0, 100 } } },
        { 4, kStroke, "Trait", "Stroke", { { "Width", 2, 0, 100 } } },
    };
    return effects;
}

const EffectInfo *FindEffect(EffectKey key)
{
    for (const EffectInfo &effect : InstalledEffects()) {
        if (effect.key == key)
            return &effect;
    }
    return nullptr;
}

const EffectInfo *FindEffect(const QByteArray &matchName)
{
    for (const EffectInfo &effect : InstalledEffects()) {
        if (effect.matchName == matchName)
            return &effect;
    }
    return nullptr;
}

const QByteArray &EffectName(const EffectInfo &effect, EffectLanguage language)
{
    return language == EffectLanguage::French ? effect.french : effect.english;
}

} // namespace rostrum
