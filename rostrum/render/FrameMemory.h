// Memory for frames. A large one is made of large pages where the system has them: in small pages, of
// which each is handed over when it is first written, a new frame costs as much again as drawing it.
#pragma once

#include <QImage>

namespace rostrum {

/// An image of format ARGB32_Premultiplied whose pixels are not set yet.
/// @return null for a size beyond the limits in DrawingCache.h, or when there is no memory
QImage NewFrame(const QSize &size);

} // namespace rostrum
