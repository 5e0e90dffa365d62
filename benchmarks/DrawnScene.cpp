#include "DrawnScene.h"

#include "core/FootageFiles.h"

#include <QPainter>

namespace bench {
namespace {

using namespace rostrum;

/// A drawing that fills the frame: two filled shapes with soft edges, the rest transparent.
QImage MakeDrawing(int layer, int number)
{
    QImage image(DrawnScene::kSize, QImage::Format_ARGB32_Premultiplied);
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

/// A hold key a frame.
void ShowRoundAndRound(const Composition &composition, int frames, Layer *layer)
{
    layer->duration = composition.duration;
    for (int frame = 0; frame < frames; ++frame) {
        const double shown = composition.rate.FrameTime(frame % DrawnScene::kDrawings).Seconds();
        const int key
            = layer->timeRemap.InsertKey(composition.rate.FrameTime(frame), { shown, 0, 0, 0 });
        layer->timeRemap.SetKeyInterpolation(key, Interpolation::Hold, Interpolation::Hold);
    }
}

} // namespace

DrawnScene::DrawnScene(int frames)
{
    Composition made;
    made.size = kSize;
    made.duration = made.rate.FrameTime(frames);
    composition = project.AddComposition("scene", made);
    for (int layer = 0; layer < kLayers; ++layer) {
        for (int number = 0; number < kDrawings; ++number)
            MakeDrawing(layer, number).save(PathOf(layer, number)); // unchecked: import tells
        const ImportResult import = ImportDrawings(PathOf(layer, 0), /*series=*/true);
        if (!import.Ok())
            qFatal("%s", qPrintable(import.error));
        layers << project.AddLayer(project.AddFootage(import.name, import.footage), composition);
        ShowRoundAndRound(made, frames, project.EditLayer(composition, layers.last()));
    }
}

QString DrawnScene::PathOf(int layer, int number) const
{
    return folder.filePath(
        QStringLiteral("l%1_%2.png").arg(layer).arg(number, 4, 10, QLatin1Char('0')));
}

} // namespace bench
