#include "StreamId.h"

#include <tuple>

namespace rostrum {
namespace {

constexpr char kPixels[] = "px";
constexpr char kPercent[] = "%";
constexpr char kDegrees[] = "\u00b0";

QVector<StreamInfo> OwnStreams()
{
    return {
        { { kTimeRemap }, QStringLiteral("Image"), 1, "", 0, 1e6 },
        { { kAnchorPoint }, QStringLiteral("Anchor point"), 2, kPixels },
        { { kPosition }, QStringLiteral("Position"), 2, kPixels },
        { { kScale }, QStringLiteral("Scale"), 2, kPercent },
        { { kRotation }, QStringLiteral("Rotation"), 1, kDegrees },
        { { kOpacity }, QStringLiteral("Opacity"), 1, kPercent, 0, 100 },
    };
}

} // namespace

bool operator==(const StreamId &a, const StreamId &b)
{
    return a.number == b.number && a.effect == b.effect && a.param == b.param;
}

bool operator<(const StreamId &a, const StreamId &b)
{
    return std::tie(a.effect, a.number, a.param) < std::tie(b.effect, b.number, b.param);
}

QVector<StreamInfo> StreamsOf(const Project &project, const Layer &layer, EffectLanguage language)
{
    static const QVector<StreamInfo> own = OwnStreams();
    QVector<StreamInfo> streams;
    for (const StreamInfo &stream : own) {
        if (project.HasStream(layer, stream.id.number))
            streams << stream;
    }
    for (const LayerEffect &effect : layer.effects) {
        const EffectInfo *info = FindEffect(effect.key);
        const QString name
            = info ? QString::fromUtf8(EffectName(*info, language)) : QStringLiteral("Effect");
        for (int i = 0; i < effect.params.size(); ++i) {
            const bool isKnown = info && i < info->params.size();
            StreamInfo stream;
            stream.id = { -1, effect.id, i };
            stream.name = name + QStringLiteral(": ")
                + (isKnown ? QString::fromUtf8(info->params[i].name) : QString::number(i + 1));
            if (isKnown) {
                stream.low = info->params[i].low;
                stream.high = info->params[i].high;
            }
            streams << stream;
        }
    }
    return streams;
}

const Stream *FindStream(const Layer &layer, const StreamId &id)
{
    if (id.effect == 0)
        return layer.FindStream(id.number);
    const LayerEffect *effect = layer.FindEffect(id.effect);
    return effect && id.param >= 0 && id.param < effect->params.size() ? &effect->params[id.param]
                                                                       : nullptr;
}

Stream *FindStream(Layer &layer, const StreamId &id)
{
    if (id.effect == 0)
        return layer.FindStream(id.number);
    LayerEffect *effect = layer.FindEffect(id.effect);
    return effect && id.param >= 0 && id.param < effect->params.size() ? &effect->params[id.param]
                                                                       : nullptr;
}

} // namespace rostrum
