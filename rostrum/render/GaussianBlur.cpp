#include "GaussianBlur.h"

#include "DrawingCache.h"

#include <array>
#include <cmath>
#include <vector>

namespace rostrum {
namespace {

constexpr double kLargestSampledDeviation = 8; // pixels
constexpr int kChannels = 4;
constexpr float kUnit = 257; // an 8-bit channel spread over 16 bits, for the pass in between

using Cell = std::array<float, kChannels>;
using Line = std::vector<Cell>;

/// Pixels of 16 bits a channel, line by line.
struct Plane
{
    int width = 0;
    int height = 0;
    std::vector<std::array<quint16, kChannels>> pixels;
};

/// Blurs lines. A line has room for Reach() cells on both sides of its drawing.
class LineBlur
{
public:
    explicit LineBlur(double deviation)
    {
        if (deviation <= kLargestSampledDeviation)
            SampleBell(deviation);
        else
            ChooseBoxes(deviation);
    }

    /// Cells that the light of a point travels to each side.
    int Reach() const { return reach; }

    /// @param spare of the line's size; its content is of no matter
    void Run(Line *line, Line *spare) const
    {
        if (!kernel.empty()) {
            Convolve(*line, spare);
            line->swap(*spare);
        }
        for (const int half : boxes) {
            AverageBox(*line, half, spare);
            line->swap(*spare);
        }
    }

private:
    void SampleBell(double deviation)
    {
        reach = static_cast<int>(std::ceil(3 * deviation - 1e-6)); // a hair makes no pixel
        double sum = 0;
        for (int i = -reach; i <= reach; ++i) {
            kernel.push_back(static_cast<float>(std::exp(-i * i / (2 * deviation * deviation))));
            sum += kernel.back();
        }
        for (float &weight : kernel)
            weight = static_cast<float>(weight / sum);
    }

    /// Three boxes of odd widths whose variances, (width^2 - 1) / 12 each, add up to the bell's as
    /// nearly as whole widths allow: `small` boxes of the odd width below the ideal one, the others
    /// of the next odd width.
    void ChooseBoxes(double deviation)
    {
        const double variance = deviation * deviation;
        const double ideal = std::sqrt(variance * 12 / 3 + 1);
        const int half = static_cast<int>((ideal - 1) / 2);
        const double low = 2.0 * half + 1;
        const double high = low + 2;
        const double small = (3 * high * high - 3 - 12 * variance) / (high * high - low * low);
        for (int i = 0; i < 3; ++i)
            boxes.push_back(i < std::lround(small) ? half : half + 1);
        for (const int box : boxes)
            reach += box;
    }

    void Convolve(const Line &in, Line *out) const
    {
        const int size = static_cast<int>(in.size());
        for (int at = 0; at < size; ++at) {
            const int first = qMax(0, at - reach);
            const int last = qMin(size - 1, at + reach);
            Cell sum{};
            for (int i = first; i <= last; ++i) {
                const float weight = kernel[i - at + reach];
                for (int c = 0; c < kChannels; ++c)
                    sum[c] += in[i][c] * weight;
            }
            (*out)[at] = sum;
        }
    }

    /// The average of 2 * half + 1 cells around each, by a sum that moves along.
    static void AverageBox(const Line &in, int half, Line *out)
    {
        const int size = static_cast<int>(in.size());
        const double share = 1.0 / (2 * half + 1);
        std::array<double, kChannels> sum{};
        for (int at = -half; at < size; ++at) {
            for (int c = 0; c < kChannels; ++c) {
                if (at + half < size)
                    sum[c] += in[at + half][c];
                if (at - half - 1 >= 0)
                    sum[c] -= in[at - half - 1][c];
                if (at >= 0)
                    (*out)[at][c] = static_cast<float>(sum[c] * share);
            }
        }
    }

    int reach = 0;
    std::vector<float> kernel; // of the sampled bell
    std::vector<int> boxes; // half widths, in place of the bell
};

/// Blurs the lines of a plane and writes them as the columns of another, so that doing it twice
/// blurs both ways. Lines go in groups, so that the columns are written in runs.
Plane BlurredAndTurned(const Plane &in, const LineBlur &blur)
{
    constexpr int kGroup = 8;
    Plane out{ in.height, in.width + 2 * blur.Reach(), {} };
    out.pixels.resize(std::size_t(out.width) * out.height);
    std::array<Line, kGroup> lines;
    Line spare(out.height);
    for (int top = 0; top < in.height; top += kGroup) {
        const int count = qMin(kGroup, in.height - top);
        for (int i = 0; i < count; ++i) {
            lines[i].assign(out.height, Cell{});
            const auto *from = &in.pixels[std::size_t(top + i) * in.width];
            for (int x = 0; x < in.width; ++x) {
                for (int c = 0; c < kChannels; ++c)
                    lines[i][x + blur.Reach()][c] = from[x][c];
            }
            blur.Run(&lines[i], &spare);
        }
        for (int y = 0; y < out.height; ++y) {
            auto *to = &out.pixels[std::size_t(y) * out.width + top];
            for (int i = 0; i < count; ++i) {
                for (int c = 0; c < kChannels; ++c)
                    to[i][c] = static_cast<quint16>(lines[i][y][c] + 0.5F);
            }
        }
    }
    return out;
}

Plane PlaneOf(const QImage &image)
{
    Plane plane{ image.width(), image.height(), {} };
    plane.pixels.reserve(std::size_t(plane.width) * plane.height);
    for (int y = 0; y < plane.height; ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < plane.width; ++x) {
            plane.pixels.push_back({ static_cast<quint16>(qRed(line[x]) * 257),
                static_cast<quint16>(qGreen(line[x]) * 257),
                static_cast<quint16>(qBlue(line[x]) * 257),
                static_cast<quint16>(qAlpha(line[x]) * 257) });
        }
    }
    return plane;
}

int Channel(quint16 value)
{
    return static_cast<int>(static_cast<float>(value) / kUnit + 0.5F);
}

void CopyInto(const Plane &plane, QImage *image)
{
    for (int y = 0; y < plane.height; ++y) {
        const auto *from = &plane.pixels[std::size_t(y) * plane.width];
        auto *line = reinterpret_cast<QRgb *>(image->scanLine(y));
        for (int x = 0; x < plane.width; ++x) {
            const int alpha = Channel(from[x][3]);
            line[x] = qRgba(qMin(alpha, Channel(from[x][0])), qMin(alpha, Channel(from[x][1])),
                qMin(alpha, Channel(from[x][2])), alpha);
        }
    }
}

} // namespace

bool GaussianBlur(double radius, Raster *raster)
{
    if (!(radius > 0) || raster->image.isNull())
        return true;
    const LineBlur blur(qMin(radius, kLargestBlurRadius) / 2);
    const QSize grown = raster->image.size() + QSize(2 * blur.Reach(), 2 * blur.Reach());
    if (!IsSizeAllowed(grown))
        return false;
    QImage result(grown, QImage::Format_ARGB32_Premultiplied);
    if (result.isNull())
        return false;
    Plane plane = PlaneOf(raster->image);
    plane = BlurredAndTurned(plane, blur);
    plane = BlurredAndTurned(plane, blur);
    CopyInto(plane, &result);
    raster->image = result;
    raster->origin -= QPoint(blur.Reach(), blur.Reach());
    return true;
}

} // namespace rostrum
