// Pictures of viewer and timeline over a made-up scene, to be looked at: timeline_shots FOLDER
#include "core/FootageFiles.h"
#include "window/Session.h"
#include "window/Style.h"
#include "window/Timeline.h"
#include "window/Viewer.h"

#include <QApplication>
#include <QDir>
#include <QToolButton>

#include <cstdio>

using namespace rostrum;

namespace {

/// Hold keys of the time remap: pairs of a frame and an image.
void HoldImages(
    Project &project, ItemId composition, LayerId layer, const QVector<QPair<int, int>> &images)
{
    Stream &remap = project.EditLayer(composition, layer)->timeRemap;
    for (const auto &[frame, image] : images) {
        const int key = remap.InsertKey(Rate().FrameTime(frame), { image / 25.0, 0, 0, 0 });
        remap.SetKeyInterpolation(key, Interpolation::Hold, Interpolation::Hold);
    }
}

void Turn(Project &project, ItemId composition, LayerId layer)
{
    Layer *edited = project.EditLayer(composition, layer);
    const Interpolation kinds[]
        = { Interpolation::Linear, Interpolation::Bezier, Interpolation::Hold };
    for (int i = 0; i < 3; ++i) {
        const int key = edited->rotation.InsertKey(Rate().FrameTime(4 + 12 * i), { 15.0 * i });
        edited->rotation.SetKeyInterpolation(key, kinds[i], kinds[i]);
    }
    edited->inPoint = Rate().FrameTime(3);
    edited->duration = Rate().FrameTime(34);
}

ItemId MakeScene(Host &host)
{
    Project project;
    Composition scene;
    scene.size = QSize(640, 360);
    scene.duration = Rate().FrameTime(60);
    scene.background = { 0.75, 0.82, 0.86 };
    const ItemId composition = project.AddComposition("scene 12", scene);
    const auto drawings
        = ImportDrawings(QStringLiteral(VN_SAMPLES "/puddles/walk/walk0001.png"), /*series=*/true);
    if (!drawings.Ok()) {
        std::fprintf(stderr, "%s\n", qPrintable(drawings.error));
        return 0;
    }
    const ItemId walk = project.AddFootage(drawings.name, drawings.footage);
    Solid hill;
    hill.size = QSize(640, 120);
    hill.color = { 0.45, 0.6, 0.4 };
    const ItemId solid = project.AddSolid("hill", hill);
    const LayerId ground = project.AddLayer(solid, composition);
    project.EditLayer(composition, ground)->position.SetConstant({ 320, 300 });
    project.EditLayer(composition, ground)->label = 9;
    const LayerId walker = project.AddLayer(walk, composition);
    HoldImages(project, composition, walker,
        { { 0, 0 }, { 4, 1 }, { 8, 2 }, { 12, 3 }, { 14, 4 }, { 16, 5 }, { 24, 6 }, { 32, 7 },
            { 40, 12 } });
    project.EditLayer(composition, walker)->label = 3;
    const LayerId second = project.AddLayer(walk, composition);
    project.EditLayer(composition, second)->name
        = "Brume d'\xC3\xA9t\xC3\xA9, a name that is much longer than any column is wide";
    project.EditLayer(composition, second)->label = 11;
    project.EditLayer(composition, second)->position.SetConstant({ 480, 200 });
    project.SetParent(composition, second, walker);
    Turn(project, composition, second);
    project.ApplyEffect(composition, second, 1);
    project.AddLayerWithoutSource(LayerKind::Camera, "", composition);
    host.GetDocument().Replace(project);
    host.GetDocument().view.activeItem = composition;
    return composition;
}

bool Save(QWidget &widget, const QString &path)
{
    widget.show();
    QApplication::processEvents();
    if (widget.grab().save(path))
        return true;
    std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1]))) {
        std::fprintf(stderr, "usage: timeline_shots FOLDER\n");
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    ApplyStyle(application);
    Host host;
    if (!MakeScene(host))
        return 1;
    Session session(host);
    session.SetCurrentFrame(13);
    Viewer viewer(session);
    viewer.resize(760, 480);
    Timeline timeline(session);
    timeline.resize(1180, 420);
    timeline.show();
    const QVector<LayerPtr> layers = session.ActiveComposition()->layers;
    timeline.Board().ToggleFold(layers[1]->id);
    timeline.Board().ToggleFold(layers[2]->id);
    session.SelectLayers({ layers[2]->id });
    timeline.Board().SelectKeys({ { layers[1]->id, { kRotation }, Rate().FrameTime(16) } });
    bool good = Save(timeline, folder.filePath(QStringLiteral("timeline.png")));
    timeline.Outline().OnEditValue(timeline.Board().Rows().RowOf(layers[1]->id, { kPosition }));
    timeline.resize(700, 300);
    good = Save(timeline, folder.filePath(QStringLiteral("timeline_small.png"))) && good;
    good = Save(viewer, folder.filePath(QStringLiteral("viewer.png"))) && good;
    viewer.findChild<QToolButton *>(QStringLiteral("ckSafeFrames"))->click();
    viewer.findChild<QToolButton *>(QStringLiteral("ckChecker"))->click();
    session.Do("Relink", [&](Project &project) {
        for (ItemId item = project.RootFolder(); item; item = project.NextInWalk(item)) {
            if (project.Find(item)->AsFootage())
                std::get<Footage>(project.Edit(item)->content).folder = QStringLiteral("/gone");
        }
    });
    good = Save(viewer, folder.filePath(QStringLiteral("viewer_missing.png"))) && good;
    host.GetDocument().Undo();
    host.GetDocument().Replace(Project());
    session.Look();
    good = Save(viewer, folder.filePath(QStringLiteral("viewer_empty.png"))) && good;
    good = Save(timeline, folder.filePath(QStringLiteral("timeline_empty.png"))) && good;
    return good ? 0 : 1;
}
