#include "DrawingCache.h"
#include "FrameMemory.h"

#include <cstdlib>
#include <sys/mman.h>

namespace rostrum {
namespace {

constexpr size_t kLargePage = size_t(2) << 20; // bytes

} // namespace

QImage NewFrame(const QSize &size)
{
    constexpr auto format = QImage::Format_ARGB32_Premultiplied;
    if (!IsSizeAllowed(size))
        return {};
    const auto stride = static_cast<size_t>(size.width()) * 4;
    const size_t bytes = stride * static_cast<size_t>(size.height());
    // The end that fills no large page stays in small ones.
    const size_t inLargePages = bytes / kLargePage * kLargePage;
    if (inLargePages == 0)
        return QImage(size, format);
    void *memory = nullptr;
    if (posix_memalign(&memory, kLargePage, bytes) != 0)
        return {};
    madvise(memory, inLargePages, MADV_HUGEPAGE); // unchecked: small pages will do
    QImage image(static_cast<uchar *>(memory), size.width(), size.height(),
        static_cast<int>(stride), format, std::free, memory);
    if (image.isNull())
        std::free(memory);
    return image;
}

} // namespace rostrum
