// The streams of a layer as a person meets them: which there are, their names, what they count.
#pragma once

#include "core/Project.h"

#include <QString>

namespace rostrum {

/// A stream of a layer: its own, or a parameter of an effect on it. It may be gone by now; who has
/// one looks it up.
struct StreamId
{
    qint32 number = -1; // of the layer's own streams
    EffectId effect = 0; // of an effect's parameter, else 0
    int param = 0; // the effect's own parameters, from 0

    bool IsTimeRemap() const { return effect == 0 && number == kTimeRemap; }
};

bool operator==(const StreamId &a, const StreamId &b);
bool operator<(const StreamId &a, const StreamId &b);

struct StreamInfo
{
    StreamId id;
    QString name; // "Position", "Flou gaussien: Radius"
    int components = 1; // 1 or 2
    const char *unit = ""; // behind a value: "px", "%", "\u00b0"; empty for image numbers
    double low = -1e6; // limits of the editor
    double high = 1e6;
};

/// All streams that the layer offers: its own first, then those of its effects.
QVector<StreamInfo> StreamsOf(
    const Project &project, const Layer &layer, EffectLanguage language = EffectLanguage::French);

/// @return null when the layer has no such stream
const Stream *FindStream(const Layer &layer, const StreamId &id);
Stream *FindStream(Layer &layer, const StreamId &id);

} // namespace rostrum
