#include "DrawingCache.h"
#include "FrameMemory.h"

namespace rostrum {

QImage NewFrame(const QSize &size)
{
    return IsSizeAllowed(size) ? QImage(size, QImage::Format_ARGB32_Premultiplied) : QImage();
}

} // namespace rostrum
