// A composition of full-frame layers over numbered drawings in a temporary folder, each frame of which
// shows other drawings than the one before.
#pragma once

#include "core/Project.h"

#include <QTemporaryDir>

namespace bench {

class DrawnScene
{
public:
    static constexpr int kLayers = 5;
    static constexpr int kDrawings = 4; // of each layer's series, shown round and round
    static constexpr QSize kSize{ 1920, 1080 };

    /// @param frames of the composition, at 25 a second
    explicit DrawnScene(int frames);

    QString PathOf(int layer, int number) const;

    rostrum::Project project;
    rostrum::ItemId composition = 0;
    QVector<rostrum::LayerId> layers; // bottom first

private:
    QTemporaryDir folder;
};

} // namespace bench
