#include "FrameCache.h"

namespace rostrum {

void FrameCache::Clear()
{
    frames.clear();
    loose = Frame();
    used = 0;
}

/// Takes frames out until so many bytes fit. @return the pixels of the last one, to be drawn into
/// again: fresh memory for a large frame costs as much as drawing it
QImage FrameCache::MakeRoom(qint32 frame, qint64 bytes)
{
    QImage spare;
    while (used + bytes > limit && !frames.empty()) {
        auto last = frames.lower_bound(frame); // the one before it in the ring
        last = last == frames.begin() ? std::prev(frames.end()) : std::prev(last);
        used -= last->second.image.sizeInBytes();
        spare = std::move(last->second.image);
        frames.erase(last);
    }
    return spare;
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
    const qint64 bytes = target ? qint64(target->size.width()) * target->size.height() * 4 : 0;
    loose.image = bytes <= limit ? MakeRoom(frame, bytes) : std::move(loose.image);
    renderer.SetBackground(background);
    renderer.Render(project, composition, frame, &loose.image); // a failure is in the messages
    loose.messages = renderer.Messages();
    ++renderings;
    if (loose.image.isNull() || loose.image.sizeInBytes() > limit)
        return loose;
    used += loose.image.sizeInBytes();
    Frame &kept = frames[frame];
    std::swap(kept, loose);
    return kept;
}

} // namespace rostrum
