// Changes of layers and keys by hand, on the project as a value; no widget, no history. What a
// change names and is not there any more is passed over, so that a hand slower than the host
// does no harm.
//
// Distances are whole frames of the composition. Times stay fractions: what does not lie on a frame
// keeps its part of one.
#pragma once

#include "StreamId.h"

#include <set>

namespace rostrum {

/// A key, known by its time, since an index changes with every insertion.
struct KeyId
{
    LayerId layer = 0;
    StreamId stream;
    Time time; // layer time
};

bool operator<(const KeyId &a, const KeyId &b);
inline bool operator==(const KeyId &a, const KeyId &b)
{
    return a.layer == b.layer && a.stream == b.stream && a.time == b.time;
}

using KeyIds = std::set<KeyId>;

/// The key's index in its stream, -1 when it is gone.
int FindKey(const Project &project, ItemId composition, const KeyId &key);

/// The first key that lies in a frame, at its start or behind it, -1 when there is none.
int KeyInFrame(const Stream &stream, const Layer &layer, const Rate &rate, int frame);

/// The value at a time: of the key there, of a new key where the stream has keys, else for good. A
/// time remap always gets a key, since keys are all that it has.
/// @return false when there is no such stream; nothing changes then
bool SetStreamValue(Project &project, ItemId composition, LayerId layer, const StreamId &id,
    const Time &compTime, const StreamValue &value);

/// A key at a time, of the value that is shown there, so that nothing seen changes: it holds where
/// the key before it holds. The first key of a time remap holds, as in a sheet.
/// @return false when there is no such stream, or a key stands there already
bool AddKey(
    Project &project, ItemId composition, LayerId layer, const StreamId &id, const Time &compTime);

/// A stream that loses its last key keeps the value of it; a time remap is switched off.
void RemoveKeys(Project &project, ItemId composition, const KeyIds &keys);

/// A key that comes to lie on another takes its place.
/// @return the keys under their new times
KeyIds MoveKeys(Project &project, ItemId composition, const KeyIds &keys, int frames);

void SetInterpolation(
    Project &project, ItemId composition, const KeyIds &keys, Interpolation interpolation);

void SetKeyValue(Project &project, ItemId composition, const KeyId &key, const StreamValue &value);

/// Moves layers with all their keys.
void MoveLayers(Project &project, ItemId composition, const QVector<LayerId> &layers, int frames);

/// Moves the in point, or the end, the drawings stay where they are. A layer keeps at least one
/// frame.
void TrimIn(Project &project, ItemId composition, const QVector<LayerId> &layers, int frames);
void TrimOut(Project &project, ItemId composition, const QVector<LayerId> &layers, int frames);

/// Puts layers, in their order, before the one that has the index `gap` now; the number of layers
/// puts them at the end.
void Reorder(Project &project, ItemId composition, const QVector<LayerId> &layers, int gap);

/// Layers that `layer` may be a child of, in stack order: neither itself nor one that hangs from
/// it.
QVector<LayerId> PossibleParents(const Project &project, ItemId composition, LayerId layer);

} // namespace rostrum
