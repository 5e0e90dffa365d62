// A layer of a composition.
#pragma once

#include "core/EffectCatalogue.h"
#include "core/Stream.h"

#include <QByteArray>
#include <QSharedData>
#include <QSharedDataPointer>

namespace rostrum {

using ItemId = qint32; // 0 is none
using LayerId = qint32; // unique in the project, never used again; 0 is none
using EffectId = qint32; // the same for applied effects

enum class LayerKind { Source, Camera, Light, Text };

/// The streams of a layer by the host's numbers. 5 and 6 are not offered.
enum LayerStreamNumber {
    kAnchorPoint = 0, // pixels of the source from its top left
    kPosition = 1, // pixels of the composition, or of the parent's source
    kScale = 2, // percent
    kRotation = 3, // degrees, clockwise on the screen
    kOpacity = 4, // percent
    kTimeRemap = 7, // seconds of the source
};

struct LayerEffect
{
    EffectId id = 0;
    EffectKey key = 0;
    QVector<Stream> params;
};

bool operator==(const LayerEffect &a, const LayerEffect &b);

/// Its bar runs from inPoint for duration, in composition time; offset is where layer time 0 lies
/// in composition time. Keys stand in layer time, so that they move with the layer.
struct Layer : QSharedData
{
    LayerId id = 0;
    LayerKind kind = LayerKind::Source;
    ItemId source = 0; // none for a camera, a light or a text
    QByteArray name; // UTF-8; empty when the user gave none
    LayerId parent = 0; // in the same composition
    qint8 label = 0; // 0 none, 1 to 16; the timeline's own, the sheet shows that of the source
    Time inPoint;
    Time duration;
    Time offset;
    Stream anchorPoint;
    Stream position;
    Stream scale{ StreamValue{ 100, 100, 100, 0 } };
    Stream rotation;
    Stream opacity{ StreamValue{ 100, 0, 0, 0 } };
    Stream timeRemap; // its keys alone count: without any, the layer shows its own time
    QVector<LayerEffect> effects;

    /// @return null for a number that is not offered
    const Stream *FindStream(qint32 number) const;
    Stream *FindStream(qint32 number);
    const LayerEffect *FindEffect(EffectId effect) const;
    LayerEffect *FindEffect(EffectId effect);

    Time ToLayerTime(const Time &compTime) const { return compTime - offset; }
    Time ToCompTime(const Time &layerTime) const { return layerTime + offset; }
    /// The source time in seconds that the layer shows. Without time-remap keys it is the layer's
    /// own time, so that a sheet reads what the layer shows.
    /// @param keyHint see Stream::KeysBefore
    double SourceSeconds(const Time &compTime, int *keyHint = nullptr) const;
};

bool operator==(const Layer &a, const Layer &b);

/// Copies of a composition share their layers; writing through the pointer makes a copy first.
using LayerPtr = QSharedDataPointer<Layer>;

} // namespace rostrum

Q_DECLARE_TYPEINFO(rostrum::LayerPtr, Q_MOVABLE_TYPE);
