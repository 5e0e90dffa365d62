// The effects that Rostrum has installed. An effect is known by its key; its name is shown in the
// language of the host, French by default.
#pragma once

#include <QByteArray>
#include <QVector>

namespace rostrum {

using EffectKey = qint32; // 1 up, 0 is none

struct EffectParam
{
    QByteArray name; // English
    double start = 0; // value of a newly applied effect
    double low = 0; // limits of the editor; a value outside is not refused
    double high = 0;
};

struct EffectInfo
{
    EffectKey key = 0;
    QByteArray matchName; // never translated, also in project files
    QByteArray french;
    QByteArray english;
    QVector<EffectParam> params; // its own; stream 0 of an applied effect is its input layer
};

enum class EffectLanguage { French, English };

/// All installed effects, by rising key. What is installed does not change while the host runs.
const QVector<EffectInfo> &InstalledEffects();
/// @return null for a key that is not installed
const EffectInfo *FindEffect(EffectKey key);
const EffectInfo *FindEffect(const QByteArray &matchName);
const QByteArray &EffectName(const EffectInfo &effect, EffectLanguage language);

// The effects that the renderer knows, by match name.
constexpr char kGaussianBlur[] = "rostrum.gaussian-blur"; // 0 radius in pixels
constexpr char kColorBalance[] = "rostrum.color-balance-hls"; // 0 hue, 1 lightness, 2 saturation
constexpr char kFill[] = "rostrum.fill"; // 0 to 2 red, green, blue in percent
constexpr char kStroke[] = "rostrum.stroke"; // 0 width in pixels

} // namespace rostrum
