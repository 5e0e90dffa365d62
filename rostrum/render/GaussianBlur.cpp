#include "GaussianBlur.h"

#include "DrawingCache.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace rostrum {
namespace {

constexpr double kLargestSampledDeviation = 8; // pixels
constexpr int kChannels = 4;
constexpr int kUnit = 257; // an 8-bit channel spread over 16 bits, for the pass in between

struct Cell
{
    float channels[kChannels] = {};
};
using Line = std::vector<Cell>;

struct Pixel
{
    quint16 channels[kChannels] = {};
};

/// Pixels of 16 bits a channel, line by line.
class Plane
{
public:
    Plane(int width, int height)
        : width(width)
        , height(height)
        , pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
    { }

    int Width() const { return width; }
    int Height() const { return height; }
    Pixel *Row(int y) { return pixels.data() + qptrdiff(y) * width; }
    const Pixel *Row(int y) const { return pixels.data() + qptrdiff(y) * width; }

private:
    int width;
    int height;
    std::vector<Pixel> pixels;
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

    void Convolve(const Line &line, Line *result) const
    {
        const int size = static_cast<int>(line.size());
        const Cell *in = line.data();
        Cell *out = result->data();
        for (int at = 0; at < size; ++at) {
            const int first = qMax(0, at - reach);
            const int last = qMin(size - 1, at + reach);
            const float *weight = kernel.data() + (first - at + reach);
            Cell sum;
            for (int i = first; i <= last; ++i, ++weight) {
                for (int c = 0; c < kChannels; ++c)
                    sum.channels[c] += in[i].channels[c] * *weight;
            }
            out[at] = sum;
        }
    }

    /// The average of 2 * half + 1 cells around each, by a sum that moves along.
    static void AverageBox(const Line &line, int half, Line *result)
    {
        const int size = static_cast<int>(line.size());
        const Cell *in = line.data();
        Cell *out = result->data();
        const double share = 1.0 / (2 * half + 1);
        double sum[kChannels] = {};
        for (int at = -half; at < size; ++at) {
            for (int c = 0; c < kChannels; ++c) {
                if (at + half < size)
                    sum[c] += in[at + half].channels[c];
                if (at - half - 1 >= 0)
                    sum[c] -= in[at - half - 1].channels[c];
                if (at >= 0)
                    out[at].channels[c] = static_cast<float>(sum[c] * share);
            }
        }
    }

    int reach = 0;
    std::vector<float> kernel; // of the sampled bell
    std::vector<int> boxes; // half widths, in place of the bell
};

/// Takes a line out of a plane, with room around it.
void TakeLine(const Plane &plane, int y, int margin, Line *line)
{
    std::fill(line->begin(), line->end(), Cell());
    const Pixel *from = plane.Row(y);
    Cell *to = line->data() + margin;
    for (int x = 0; x < plane.Width(); ++x) {
        for (int c = 0; c < kChannels; ++c)
            to[x].channels[c] = from[x].channels[c];
    }
}

/// Blurs the lines of a plane and writes them as the columns of another, so that doing it twice
/// blurs both ways. Lines go in groups, so that the columns are written in runs.
Plane BlurredAndTurned(const Plane &in, const LineBlur &blur)
{
    constexpr int kGroup = 8;
    Plane out(in.Height(), in.Width() + 2 * blur.Reach());
    const auto length = static_cast<std::size_t>(out.Height());
    Line spare(length);
    std::vector<Line> lines(kGroup, Line(length));
    for (int top = 0; top < in.Height(); top += kGroup) {
        const int count = qMin(kGroup, in.Height() - top);
        for (int i = 0; i < count; ++i) {
            Line *line = lines.data() + i;
            TakeLine(in, top + i, blur.Reach(), line);
            blur.Run(line, &spare);
        }
        for (int y = 0; y < out.Height(); ++y) {
            Pixel *to = out.Row(y) + top;
            for (int i = 0; i < count; ++i) {
                const Cell &cell = (lines.data() + i)->data()[y];
                for (int c = 0; c < kChannels; ++c)
                    to[i].channels[c] = static_cast<quint16>(qRound(cell.channels[c]));
            }
        }
    }
    return out;
}

Plane PlaneOf(const QImage &image)
{
    const auto wide = [](int channel) { return static_cast<quint16>(channel * kUnit); };
    Plane plane(image.width(), image.height());
    for (int y = 0; y < plane.Height(); ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        Pixel *to = plane.Row(y);
        for (int x = 0; x < plane.Width(); ++x)
            to[x] = { { wide(qRed(from[x])), wide(qGreen(from[x])), wide(qBlue(from[x])),
                wide(qAlpha(from[x])) } };
    }
    return plane;
}

int Narrow(quint16 channel)
{
    return (channel + kUnit / 2) / kUnit;
}

void CopyInto(const Plane &plane, QImage *image)
{
    for (int y = 0; y < plane.Height(); ++y) {
        const Pixel *from = plane.Row(y);
        auto *line = reinterpret_cast<QRgb *>(image->scanLine(y));
        for (int x = 0; x < plane.Width(); ++x) {
            const auto &channels = from[x].channels;
            const int alpha = Narrow(channels[3]);
            line[x] = qRgba(qMin(alpha, Narrow(channels[0])), qMin(alpha, Narrow(channels[1])),
                qMin(alpha, Narrow(channels[2])), alpha);
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
