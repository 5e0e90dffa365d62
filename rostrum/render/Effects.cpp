#include "Effects.h"

#include "Outline.h"

#include <cmath>

namespace rostrum {
namespace {

double Param(const LayerEffect &effect, int index, const Time &layerTime)
{
    if (index >= effect.params.size())
        return 0;
    const double value = effect.params[index].ValueAt(layerTime)[0];
    return std::isfinite(value) ? value : 0;
}

bool Is(const LayerEffect &effect, const char *matchName)
{
    const EffectInfo *info = FindEffect(effect.key);
    return info && info->matchName == matchName;
}

ColorBalance BalanceOf(const LayerEffect &effect, const Time &layerTime)
{
    ColorBalance balance;
    balance.hue = std::fmod(Param(effect, 0, layerTime), 360.0);
    balance.lightness = qBound(-100.0, Param(effect, 1, layerTime), 100.0);
    balance.saturation = qBound(-100.0, Param(effect, 2, layerTime), 100.0);
    return balance;
}

/// Hue 0 to 6, saturation and lightness 0 to 1.
struct Hsl
{
    double hue = 0;
    double saturation = 0;
    double lightness = 0;
};

Hsl ToHsl(double red, double green, double blue)
{
    const double high = qMax(red, qMax(green, blue));
    const double low = qMin(red, qMin(green, blue));
    const double span = high - low;
    Hsl hsl;
    hsl.lightness = (high + low) / 2;
    if (span <= 0)
        return hsl;
    hsl.saturation = span / (1 - std::abs(high + low - 1));
    if (high == red)
        hsl.hue = (green - blue) / span + (green < blue ? 6 : 0);
    else if (high == green)
        hsl.hue = (blue - red) / span + 2;
    else
        hsl.hue = (red - green) / span + 4;
    return hsl;
}

/// One of the three channels. @param turn its place on the circle of hues, which runs from 0 to 6
double FromHsl(const Hsl &hsl, double turn)
{
    const double chroma = hsl.saturation * (1 - std::abs(2 * hsl.lightness - 1));
    double hue = std::fmod(hsl.hue - turn + 12, 6.0); // 0 where the channel is at its highest
    if (hue > 3)
        hue = 6 - hue;
    return hsl.lightness + chroma * (qBound(0.0, 2 - hue, 1.0) - 0.5);
}

int Premultiplied(double channel, int alpha)
{
    return qBound(0, static_cast<int>(std::lround(channel * alpha)), alpha);
}

/// Runs a change of single pixels over a raster. Drawings have large areas of one colour, so the
/// last answer is kept.
template <typename Change>
void ChangePixels(QImage *image, Change change)
{
    QRgb before = 0;
    QRgb after = 0; // transparent stays transparent
    for (int y = 0; y < image->height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image->scanLine(y));
        for (int x = 0; x < image->width(); ++x) {
            if (line[x] != before) {
                before = line[x];
                after = change(before);
            }
            line[x] = after;
        }
    }
}

bool Fill(const LayerEffect &effect, const Time &layerTime, Raster *raster)
{
    std::array<double, 3> color{};
    for (int i = 0; i < 3; ++i)
        color[i] = qBound(0.0, Param(effect, i, layerTime) / 100.0, 1.0);
    ChangePixels(&raster->image, [&](QRgb pixel) {
        const int alpha = qAlpha(pixel);
        return qRgba(Premultiplied(color[0], alpha), Premultiplied(color[1], alpha),
            Premultiplied(color[2], alpha), alpha);
    });
    return true;
}

} // namespace

QRgb ColorBalance::Balance(QRgb pixel) const
{
    const int alpha = qAlpha(pixel);
    if (alpha == 0)
        return 0;
    Hsl hsl = ToHsl(
        qRed(pixel) / double(alpha), qGreen(pixel) / double(alpha), qBlue(pixel) / double(alpha));
    hsl.hue += hue / 60;
    hsl.saturation = qMin(1.0, hsl.saturation * (1 + saturation / 100));
    hsl.lightness = lightness < 0 ? hsl.lightness * (1 + lightness / 100)
                                  : hsl.lightness + (1 - hsl.lightness) * lightness / 100;
    return qRgba(Premultiplied(FromHsl(hsl, 0), alpha), Premultiplied(FromHsl(hsl, 2), alpha),
        Premultiplied(FromHsl(hsl, 4), alpha), alpha);
}

bool Alters(const LayerEffect &effect, const Time &layerTime)
{
    if (Is(effect, kGaussianBlur) || Is(effect, kStroke))
        return Param(effect, 0, layerTime) > 0;
    if (Is(effect, kColorBalance)) {
        const ColorBalance balance = BalanceOf(effect, layerTime);
        return balance.hue != 0 || balance.lightness != 0 || balance.saturation != 0;
    }
    return Is(effect, kFill);
}

bool ApplyEffect(const LayerEffect &effect, const Time &layerTime, Raster *raster)
{
    if (Is(effect, kGaussianBlur))
        return GaussianBlur(Param(effect, 0, layerTime), raster);
    if (Is(effect, kStroke))
        return DrawOutline(Param(effect, 0, layerTime), raster);
    if (Is(effect, kFill))
        return Fill(effect, layerTime, raster);
    if (Is(effect, kColorBalance)) {
        const ColorBalance balance = BalanceOf(effect, layerTime);
        ChangePixels(&raster->image, [&](QRgb pixel) { return balance.Balance(pixel); });
    }
    return true;
}

} // namespace rostrum
