// A host with one composition of 64 by 48 pixels that shows a series of drawings on disk. Drawing n
// covers the frame in a red of its own; without time remap frame n shows drawing n.
#pragma once

#include "core/FootageFiles.h"
#include "window/Session.h"

#include <QImage>
#include <QTemporaryDir>

namespace testing {

class DrawnScene
{
public:
    explicit DrawnScene(int frames = 10)
    {
        for (int i = 0; i < frames; ++i)
            Draw(i, ColorOf(i));
        rostrum::Composition scene;
        scene.size = QSize(64, 48);
        scene.duration = rostrum::Rate().FrameTime(frames);
        scene.background = { 0, 0, 1 };
        rostrum::Project project;
        composition = project.AddComposition("scene", scene);
        if (frames > 0) {
            const auto drawings = rostrum::ImportDrawings(PathOf(0), /*series=*/true);
            footage = project.AddFootage(drawings.name, drawings.footage);
            layer = project.AddLayer(footage, composition);
        }
        host.GetDocument().Replace(project);
        host.GetDocument().view.activeItem = composition;
    }

    QString PathOf(int drawing) const
    {
        return folder.filePath(QStringLiteral("walk%1.png").arg(drawing, 4, 10, QLatin1Char('0')));
    }
    static QColor ColorOf(int drawing) { return { 40 + 10 * drawing, 0, 0 }; }
    void Draw(int drawing, const QColor &color) const
    {
        QImage image(64, 48, QImage::Format_RGB32);
        image.fill(color);
        image.save(PathOf(drawing));
    }

    /// Scales the layer by a tenth, so that a frame cannot be copied together: such a frame is kept.
    void MakeDear()
    {
        rostrum::Project project = host.GetProject();
        project.EditLayer(composition, layer)->scale.SetConstant({ 110, 110, 100, 0 });
        host.GetDocument().Replace(project);
        host.GetDocument().view.activeItem = composition;
    }

    QTemporaryDir folder;
    rostrum::Host host;
    rostrum::ItemId composition = 0;
    rostrum::ItemId footage = 0;
    rostrum::LayerId layer = 0;
};

} // namespace testing
