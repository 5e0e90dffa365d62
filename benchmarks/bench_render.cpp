// What a frame of drawn layers costs over the painter's own work for the same images.
#include "bench/Bench.h"
#include "bench/DrawnScene.h"

#include "core/FootageFiles.h"
#include "render/Renderer.h"

#include <QPainter>

using namespace rostrum;

namespace {

using bench::DrawnScene;

constexpr QSize kSize = DrawnScene::kSize;
constexpr int kLayers = DrawnScene::kLayers, kDrawings = DrawnScene::kDrawings;

bench::Figure Report(const QString &name, double microseconds)
{
    bench::Figure figure;
    figure.name = name;
    figure.ours = microseconds;
    return figure;
}

bench::Figures MeasureFrames()
{
    const DrawnScene scene(kDrawings);
    DrawingCache cache;
    Renderer renderer(cache);
    QImage ours(kSize, QImage::Format_ARGB32_Premultiplied);
    QImage floor(kSize, QImage::Format_ARGB32_Premultiplied);
    QVector<QVector<QImage>> images(kLayers);
    for (int layer = 0; layer < kLayers; ++layer) {
        for (int number = 0; number < kDrawings; ++number)
            images[layer] << ReadDrawing(scene.PathOf(layer, number)).image;
    }

    int oursFrame = 0;
    const auto render = [&] {
        if (!renderer.Render(scene.project, scene.composition, oursFrame++ % kDrawings, &ours))
            qFatal("%s", qPrintable(renderer.Messages().join(QLatin1Char('\n'))));
    };
    int floorFrame = 0;
    const auto paint = [&] {
        floor.fill(Qt::black);
        QPainter painter(&floor);
        for (const QVector<QImage> &drawings : images)
            painter.drawImage(QPoint(0, 0), drawings[floorFrame % kDrawings]);
        ++floorFrame;
    };
    for (int i = 0; i < kDrawings; ++i) { // all drawings into the cache
        render();
        paint();
        if (ours != floor)
            qFatal("the two frames differ");
    }
    bench::Figures figures;
    figures << bench::Compare(QStringLiteral("frame of 5 cached layers, 1920x1080"), /*goal=*/1.3,
        /*rounds=*/101, render, paint);
    figures << Report(QStringLiteral("cached frame"), bench::MedianTime(25, render));
    figures << Report(QStringLiteral("first frame, drawings read"), bench::MedianTime(5, [&] {
        cache.Clear();
        render();
    }));
    return figures;
}

const bench::Registration registration("render", MeasureFrames);

} // namespace
