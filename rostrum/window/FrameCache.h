// Frames of a composition as they were drawn, up to a limit in bytes.
//
// A frame is kept when it was dear. One that is quickly drawn anew (Renderer::IsQuick) is drawn
// whenever it is shown, into one image, memory that the processor has at hand, while that of a kept
// frame comes from afar and is better left to the dear ones.
//
// They are those of one state of one project: any change empties the cache, found out here,
// at the next frame asked for. A drawing that was painted over on disk is not noticed while its
// frames are kept; who knows of it clears.
//
// Beyond the limit the frame goes that playing forward, around the end, would come to last. The
// memory of frames that went stays for those to come, so that playing again after a change need not
// wait for it.
#pragma once

#include "render/Renderer.h"

#include <map>

namespace rostrum {

class FrameCache
{
public:
    static constexpr qint64 kDefaultLimit = qint64(1) << 29; // bytes

    struct Frame
    {
        QImage image; // null when it could not be drawn; the messages say why
        QStringList messages;
    };

    /// @param drawings is kept by reference
    /// @param limit of the frames that are kept; the last one is not counted
    explicit FrameCache(DrawingCache &drawings, qint64 limit = kDefaultLimit)
        : renderer(drawings), limit(limit)
    { }

    /// The frame, drawn now unless it is there. It stands until the next call; its image stays as it
    /// is for as long as somebody holds it.
    const Frame &Get(const Project &project, ItemId composition, qint32 frame, bool background);
    void Clear();

    bool Holds(qint32 frame) const { return frames.count(frame) > 0; }
    int Count() const { return static_cast<int>(frames.size()); }
    qint64 Used() const { return used; } // bytes
    /// Frames drawn since the cache was made.
    int Renderings() const { return renderings; }

private:
    void MakeRoom(qint32 frame, qint64 bytes);
    QImage TakeSpare(const QSize &size);

    Renderer renderer;
    qint64 limit;
    qint64 used = 0;
    int renderings = 0;
    Project of;
    ItemId composition = 0;
    bool background = true;
    std::map<qint32, Frame> frames;
    QVector<QImage> spares; // memory of frames that were taken out, to be drawn into again
    // The last one that is not kept; its memory is drawn into again unless somebody holds it.
    Frame loose;
};

} // namespace rostrum
