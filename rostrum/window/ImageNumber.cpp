#include "ImageNumber.h"

#include "render/Placement.h"

#include <cmath>

namespace rostrum {

bool FindImageRate(const Project &project, const Layer &layer, Rate *rate)
{
    const Item *source = project.SourceOf(layer);
    if (!source || !source->CanRemapTime())
        return false;
    *rate = source->AsFootage() ? source->AsFootage()->rate : source->AsComposition()->rate;
    return true;
}

int ImageCount(const Project &project, const Layer &layer)
{
    const Item *source = project.SourceOf(layer);
    if (!source || !source->CanRemapTime())
        return 0;
    return source->AsFootage() ? source->AsFootage()->files.size()
                               : FrameCount(*source->AsComposition());
}

int ImageOfSeconds(double seconds, const Rate &rate)
{
    const double exact = seconds * rate.PerSecond() + 0.5;
    if (std::isnan(exact))
        return 0;
    return static_cast<int>(qBound(-2147483647.0, exact, 2147483647.0));
}

double SecondsOfImage(int image, const Rate &rate)
{
    return image / rate.PerSecond();
}

int ImageAt(const Project &project, const Layer &layer, const Time &compTime)
{
    Rate rate;
    if (!FindImageRate(project, layer, &rate))
        return -1;
    if (!layer.timeRemap.HasKeys())
        return rate.FrameAt(layer.ToLayerTime(compTime)); // exact, as the renderer does
    return ImageOfSeconds(layer.SourceSeconds(compTime), rate);
}

QString FileOfImage(const Project &project, const Layer &layer, int image)
{
    const Item *source = project.SourceOf(layer);
    const Footage *footage = source ? source->AsFootage() : nullptr;
    return footage && image >= 0 && image < footage->files.size() ? footage->files[image]
                                                                  : QString();
}

QString ImageText(const Project &project, const Layer &layer, int image)
{
    const QString file = FileOfImage(project, layer, image);
    if (!file.isEmpty())
        return QString::number(image) + QStringLiteral(" = ") + file;
    const bool isThere = image >= 0 && image < ImageCount(project, layer);
    return isThere ? QStringLiteral("frame %1").arg(image)
                   : QStringLiteral("%1: no drawing").arg(image);
}

} // namespace rostrum
