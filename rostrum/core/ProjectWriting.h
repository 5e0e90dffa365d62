// A project as JSON; the form is told in ProjectFile.h.
#pragma once

#include "core/Project.h"

#include <QDir>
#include <QJsonObject>

namespace rostrum {

constexpr char kProjectFormat[] = "rostrum project";

/// The names of the layer kinds in a file, by LayerKind's order.
constexpr const char *kLayerKindNames[] = { "source", "camera", "light", "text" };

/// The streams of a layer with their names in a file.
struct NamedStream
{
    const char *name;
    Stream Layer::*stream;
};
constexpr NamedStream kLayerStreams[] = {
    { "anchorPoint", &Layer::anchorPoint },
    { "position", &Layer::position },
    { "scale", &Layer::scale },
    { "rotation", &Layer::rotation },
    { "opacity", &Layer::opacity },
    { "timeRemap", &Layer::timeRemap },
};

/// @param folder what the paths of the footage become relative to
QJsonObject WrittenProject(const Project &project, const QDir &folder);

} // namespace rostrum
