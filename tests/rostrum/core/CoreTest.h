// What the tests of the model share: values in print, and small projects.
#pragma once

#include "core/Project.h"
#include "testing/TestMain.h"

namespace rostrum {

/// Qt Test prints a time as "value/scale" where a comparison fails.
inline char *toString(const Time &time)
{
    return qstrdup(QByteArray::number(time.value) + '/' + QByteArray::number(time.scale));
}

} // namespace rostrum

/// A series of drawings at 25 images a second that lie nowhere.
inline rostrum::Footage Series(int images)
{
    rostrum::Footage footage;
    footage.folder = QStringLiteral("/cut");
    footage.isSeries = true;
    footage.size = QSize(640, 481);
    for (int i = 0; i < images; ++i) {
        footage.files << QStringLiteral("walk%1.png").arg(i);
        footage.numbers << i;
    }
    return footage;
}

inline rostrum::Footage Still()
{
    rostrum::Footage footage;
    footage.folder = QStringLiteral("/cut");
    footage.files << QStringLiteral("decor.psd");
    footage.size = QSize(1001, 700);
    return footage;
}

/// An empty composition. @param frames its duration at 25 frames a second
inline rostrum::Composition Comp(int frames, const QSize &size = QSize(1280, 721))
{
    rostrum::Composition composition;
    composition.size = size;
    composition.duration = { frames, 25 };
    return composition;
}

/// The ids of a composition's layers, topmost first.
inline QVector<rostrum::LayerId> LayerIds(
    const rostrum::Project &project, rostrum::ItemId composition)
{
    QVector<rostrum::LayerId> ids;
    for (const rostrum::LayerPtr &layer : project.FindComposition(composition)->layers)
        ids << layer->id;
    return ids;
}
