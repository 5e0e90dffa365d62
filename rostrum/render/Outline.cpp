#include "Outline.h"

#include "DrawingCache.h"

#include <QPainter>

#include <cmath>
#include <vector>

namespace rostrum {
namespace {

/// For each pixel of a grid, the distance up or down to the nearest covered one, at most `limit`.
class VerticalDistances
{
public:
    VerticalDistances(const QImage &image, int margin, int limit)
        : width(image.width() + 2 * margin)
        , height(image.height() + 2 * margin)
        , distances(std::size_t(width) * height, limit)
    {
        for (int y = 0; y < image.height(); ++y) {
            const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
            for (int x = 0; x < image.width(); ++x) {
                if (qAlpha(line[x]) >= 128)
                    At(x + margin, y + margin) = 0;
            }
        }
        for (int y = 1; y < height; ++y)
            Spread(y - 1, y);
        for (int y = height - 1; y > 0; --y)
            Spread(y, y - 1);
    }

    const int *Line(int y) const { return &distances[std::size_t(y) * width]; }

private:
    int &At(int x, int y) { return distances[std::size_t(y) * width + x]; }

    void Spread(int from, int to)
    {
        for (int x = 0; x < width; ++x)
            At(x, to) = qMin(At(x, to), At(x, from) + 1);
    }

    int width;
    int height;
    std::vector<int> distances;
};

} // namespace

bool DrawOutline(double width, Raster *raster)
{
    if (!(width > 0) || raster->image.isNull())
        return true;
    const double reach = qMin(width, kLargestStroke);
    const int margin = static_cast<int>(std::ceil(reach)) + 1;
    const QSize grown = raster->image.size() + QSize(2 * margin, 2 * margin);
    if (!IsSizeAllowed(grown))
        return false;
    QImage result(grown, QImage::Format_ARGB32_Premultiplied);
    if (result.isNull())
        return false;

    const VerticalDistances distances(raster->image, margin, margin);
    for (int y = 0; y < grown.height(); ++y) {
        const int *vertical = distances.Line(y);
        auto *line = reinterpret_cast<QRgb *>(result.scanLine(y));
        for (int x = 0; x < grown.width(); ++x) {
            int nearest = 2 * margin * margin; // of the squares
            const int last = qMin(grown.width() - 1, x + margin);
            for (int i = qMax(0, x - margin); i <= last; ++i)
                nearest = qMin(nearest, (i - x) * (i - x) + vertical[i] * vertical[i]);
            const double cover = qBound(0.0, reach + 0.5 - std::sqrt(nearest), 1.0);
            line[x] = qRgba(0, 0, 0, static_cast<int>(std::lround(cover * 255)));
        }
    }
    QPainter(&result).drawImage(QPoint(margin, margin), raster->image);
    raster->image = result;
    raster->origin -= QPoint(margin, margin);
    return true;
}

} // namespace rostrum
