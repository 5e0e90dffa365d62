// What a frame of drawn layers costs over the painter's own work for the same images.
#include "bench/Bench.h"

#include "core/FootageFiles.h"
#include "render/Renderer.h"

#include <QDir>
#include <QPainter>
#include <QPainterPath>
#include <QTemporaryDir>

using namespace rostrum;

namespace {

constexpr int kLayers = 5;
constexpr int kDrawings = 4; // of each layer's series
constexpr QSize kSize(1920, 1080);

/// A drawing that fills the frame: two filled shapes with soft edges, the rest transparent.
QImage MakeDrawing(int layer, int number)
{
    QImage image(kSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 6));
    painter.setBrush(QColor::fromHsv(layer * 70, 180, 220));
    painter.drawEllipse(QPointF(300 + 280 * layer, 400 + 30 * number), 380, 300);
    painter.setBrush(QColor::fromHsv(layer * 70 + 30, 180, 120, 160));
    painter.drawRect(200 * layer, 500 + 20 * number, 900, 400);
    return image;
}

/// A composition of full-frame layers over numbered drawings in a temporary folder.
class Scene
{
public:
    Scene()
    {
        Composition made;
        made.size = kSize;
        made.duration = Time{ kDrawings, 25 };
        composition = project.AddComposition("scene", made);
        for (int layer = 0; layer < kLayers; ++layer) {
            for (int number = 0; number < kDrawings; ++number)
                MakeDrawing(layer, number).save(PathOf(layer, number)); // unchecked: import tells
            const ImportResult import = ImportDrawings(PathOf(layer, 0), /*series=*/true);
            if (!import.Ok())
                qFatal("%s", qPrintable(import.error));
            project.AddLayer(project.AddFootage(import.name, import.footage), composition);
        }
    }

    QString PathOf(int layer, int number) const
    {
        return folder.filePath(
            QStringLiteral("l%1_%2.png").arg(layer).arg(number, 4, 10, QLatin1Char('0')));
    }

    Project project;
    ItemId composition = 0;

private:
    QTemporaryDir folder;
};

bench::Figure Report(const QString &name, double microseconds)
{
    bench::Figure figure;
    figure.name = name;
    figure.ours = microseconds;
    return figure;
}

bench::Figures MeasureFrames()
{
    const Scene scene;
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
