// Playing in the program's window: what a frame costs over rendering it and showing a bare image.
#include "bench/Bench.h"
#include "bench/DrawnScene.h"

#include "render/Renderer.h"
#include "window/FrameView.h"
#include "window/MainWindow.h"
#include "window/Transport.h"
#include "window/Viewer.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>

using namespace rostrum;

namespace {

using bench::DrawnScene;
using bench::Figure;

constexpr int kFrames = 60;
constexpr qint64 kFrameTime = 40 * 1000 * 1000; // nanoseconds at 25 a second

/// A window that shows an image and nothing else.
class BareView : public QWidget
{
public:
    BareView()
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        resize(DrawnScene::kSize);
        show();
    }

    QImage image;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(QPoint(0, 0), image);
    }
};

/// The window on a scene at 100 %, playing by a clock that is turned by hand.
class Stage
{
public:
    explicit Stage(const DrawnScene &scene)
        : window(host,
            Places{ folder.filePath(QStringLiteral("rostrum.ini")),
                folder.filePath(QStringLiteral("data")) })
    {
        host.onComplaint = nullptr;
        window.Start();
        Session &session = window.GetSession();
        session.GetDocument().Replace(scene.project);
        session.Look();
        session.SetActiveItem(scene.composition);
        auto *view = window.findChild<FrameView *>();
        window.resize(window.size() + DrawnScene::kSize - view->size());
        QApplication::processEvents();
        view->OnZoom(1);
        for (int frame = 0; frame < DrawnScene::kDrawings; ++frame) { // all drawings are read
            session.SetCurrentFrame(frame);
            QApplication::processEvents();
        }
        if (view->size() != DrawnScene::kSize)
            qFatal("the view has no room for the whole frame");
        session.SetCurrentFrame(0);
        transport = window.findChild<Transport *>();
        transport->SetTimeSource([this] { return now; });
        transport->OnPlay();
    }

    /// Median microseconds of a frame when all are played for the first time.
    double PlayFirst()
    {
        QVector<double> times;
        for (int frame = 0; frame < kFrames; ++frame)
            times << bench::Once([this] { Step(); });
        return bench::Median(times);
    }

    /// Each frame is to be drawn anew, as after any change.
    void Forget() { window.findChild<Viewer *>()->OnReload(); }

    /// The next frame is due; all that follows, up to the pixels.
    void Step()
    {
        const qint32 before = window.GetSession().CurrentFrame();
        now += kFrameTime;
        transport->OnTick();
        QApplication::processEvents();
        if (window.GetSession().CurrentFrame() != (before + 1) % kFrames)
            qFatal("it does not play frame by frame");
    }

private:
    QTemporaryDir folder;
    Host host;
    MainWindow window;
    Transport *transport = nullptr;
    qint64 now = 0;
};

bench::Figures MeasurePlayback()
{
    const DrawnScene scene(kFrames);
    Stage stage(scene);
    Figure first;
    first.name = QStringLiteral("play 5 layers of 1920x1080, first time");
    first.ours = stage.PlayFirst();
    stage.Forget();

    DrawingCache drawings;
    Renderer renderer(drawings);
    BareView bare;
    int frame = 0;
    const auto renderAndShow = [&] {
        if (!renderer.Render(scene.project, scene.composition, frame++ % kFrames, &bare.image))
            qFatal("%s", qPrintable(renderer.Messages().join(QLatin1Char('\n'))));
        bare.update();
        QApplication::processEvents();
    };
    for (int i = 0; i < DrawnScene::kDrawings; ++i) // all drawings are read
        renderAndShow();
    const Figure again = bench::Compare(
        QStringLiteral("play them again after a change"), /*goal=*/1.2, kFrames - 2,
        [&] { stage.Step(); }, renderAndShow);
    first.floor = again.floor;
    return { first, again };
}

/// The slowest frame against the time that it has.
Figure MeasureTurnedLayers()
{
    DrawnScene scene(kFrames);
    for (const int turned : { 1, 3 }) {
        Layer *layer = scene.project.EditLayer(scene.composition, scene.layers[turned]);
        layer->rotation.SetConstant({ 7.0 * turned, 0, 0, 0 });
        layer->scale.SetConstant({ 80.0 + 10 * turned, 85, 100, 0 });
    }
    Stage stage(scene);
    QVector<double> times;
    for (int frame = 0; frame < kFrames; ++frame)
        times << bench::Once([&] { stage.Step(); });
    Figure figure;
    figure.name = QStringLiteral("two of them turned, slowest frame, first time");
    figure.ours = *std::max_element(times.cbegin(), times.cend());
    figure.floor = kFrameTime / 1000.0;
    figure.goal = 1;
    return figure;
}

const bench::Registration registration(
    "play", [] { return MeasurePlayback() << MeasureTurnedLayers(); });

} // namespace
