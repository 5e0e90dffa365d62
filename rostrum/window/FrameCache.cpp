#include "FrameCache.h"

namespace rostrum {

void FrameCache::Clear()
{
    for (auto &entry : frames)
        spares.append(std::move(entry.second.image));
    frames.clear();
    used = 0;
}

/// Takes frames out until so many bytes fit.
void FrameCache::MakeRoom(qint32 frame, qint64 bytes)
{
    while (used + bytes > limit && !frames.empty()) {
        auto last = frames.lower_bound(frame); // the one before it in the ring
        last = last == frames.begin() ? std::prev(frames.end()) : std::prev(last);
        used -= last->second.image.sizeInBytes();
        spares.append(std::move(last->second.image));
        frames.erase(last);
    }
}

/// @return the pixels of a former frame, to be drawn into again: fresh memory for a large frame
/// costs as much as drawing it; null where there are none
QImage FrameCache::TakeSpare(const QSize &size)
{
    while (!spares.isEmpty() && spares.last().size() != size)
        spares.removeLast(); // of another composition
    return spares.isEmpty() ? QImage() : spares.takeLast();
}

const FrameCache::Frame &FrameCache::Get(
    const Project &project, ItemId newComposition, qint32 frame, bool newBackground)
{
    if (composition != newComposition || background != newBackground || of != project) {
        Clear();
        composition = newComposition;
        background = newBackground;
        of = project;
    }
    const auto found = frames.find(frame);
    if (found != frames.end())
        return found->second;

    const Composition *target = project.FindComposition(composition);
    if (target && loose.image.size() != target->size)
        loose.image = TakeSpare(target->size);
    renderer.SetBackground(background);
    renderer.Render(project, composition, frame, &loose.image); // a failure is in the messages
    loose.messages = renderer.Messages();
    ++renderings;
    const qint64 bytes = loose.image.sizeInBytes();
    if (loose.image.isNull() || renderer.IsQuick() || bytes > limit)
        return loose;
    MakeRoom(frame, bytes);
    used += bytes;
    Frame &kept = frames[frame];
    std::swap(kept, loose);
    return kept;
}

} // namespace rostrum
