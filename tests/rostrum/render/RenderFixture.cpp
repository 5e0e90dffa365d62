#include "RenderFixture.h"

#include "core/FootageFiles.h"

#include <QTest>

namespace testing {

using namespace rostrum;

QString DataPath(const QString &fileName)
{
    return QStringLiteral(VN_TEST_DATA "/render/") + fileName;
}

RenderFixture::RenderFixture() : renderer(cache)
{
    composition = AddComposition(QSize(96, 72));
}

ItemId RenderFixture::AddStill(const QString &path)
{
    const ImportResult import = ImportDrawings(path, /*series=*/false);
    if (!import.Ok())
        qFatal("%s", qPrintable(import.error));
    return project.AddFootage(import.name, import.footage);
}

ItemId RenderFixture::AddSeries(const QString &path)
{
    const ImportResult import = ImportDrawings(path, /*series=*/true);
    if (!import.Ok())
        qFatal("%s", qPrintable(import.error));
    return project.AddFootage(import.name, import.footage);
}

ItemId RenderFixture::AddComposition(const QSize &size)
{
    Composition made;
    made.size = size;
    made.duration = Time{ 40, 25 };
    made.background = Color{ 0x30 / 255.0, 0x40 / 255.0, 0x50 / 255.0 };
    return project.AddComposition("scene", made);
}

LayerId RenderFixture::AddLayer(ItemId item)
{
    return project.AddLayer(item, composition);
}

LayerId RenderFixture::AddStillLayer(const QString &fileName)
{
    return AddLayer(AddStill(DataPath(fileName)));
}

Layer *RenderFixture::Edit(LayerId layer)
{
    return project.EditLayer(composition, layer);
}

void RenderFixture::PutCorner(LayerId layer, double x, double y)
{
    Place(layer, QPointF(0, 0), QPointF(x, y));
}

void RenderFixture::Place(LayerId layer, QPointF anchor, QPointF position)
{
    SetStream(layer, kAnchorPoint, anchor.x(), anchor.y());
    SetStream(layer, kPosition, position.x(), position.y());
}

void RenderFixture::SetStream(LayerId layer, qint32 number, double first, double second)
{
    Edit(layer)->FindStream(number)->SetConstant({ first, second, 0, 0 });
}

void RenderFixture::AddEffect(LayerId layer, const char *matchName, const QVector<double> &params)
{
    const EffectKey key = FindEffect(QByteArray(matchName))->key;
    const EffectId effect = project.ApplyEffect(composition, layer, key);
    for (int i = 0; i < params.size(); ++i)
        Edit(layer)->FindEffect(effect)->params[i].SetConstant({ params[i], 0, 0, 0 });
}

void RenderFixture::HoldImages(LayerId layer, const QVector<QPair<int, int>> &images)
{
    Stream &remap = Edit(layer)->timeRemap;
    for (const QPair<int, int> &image : images) {
        const int key = remap.InsertKey(Time{ image.first, 25 }, { image.second / 25.0, 0, 0, 0 });
        remap.SetKeyInterpolation(key, Interpolation::Hold, Interpolation::Hold);
    }
}

QImage RenderFixture::Frame(int frame)
{
    QImage image;
    if (!renderer.Render(project, composition, frame, &image))
        qWarning("%s", qPrintable(renderer.Messages().join(QLatin1Char('\n'))));
    return image;
}

Difference Compare(const QImage &image, const QImage &reference)
{
    if (image.isNull() || image.size() != reference.size())
        return {};
    const QImage a = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QImage b = reference.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    qint64 sum = 0;
    Difference difference;
    difference.largest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int i = 0; i < 4 * a.width(); ++i) {
            const int off = qAbs(a.constScanLine(y)[i] - b.constScanLine(y)[i]);
            sum += off;
            difference.largest = qMax(difference.largest, off);
        }
    }
    difference.mean = double(sum) / (4.0 * a.width() * a.height());
    return difference;
}

QString Differs(const QImage &image, const QString &reference, double mean, int largest)
{
    const QImage expected(DataPath(reference));
    if (expected.isNull())
        return QStringLiteral("there is no %1").arg(reference);
    const Difference found = Compare(image, expected);
    if (qEnvironmentVariableIsSet("VN_KEEP_FRAMES"))
        image.save(qEnvironmentVariable("VN_KEEP_FRAMES") + QLatin1Char('/') + reference);
    if (found.mean <= mean && found.largest <= largest)
        return {};
    return QStringLiteral("%1: mean %2, largest %3")
        .arg(reference)
        .arg(found.mean)
        .arg(found.largest);
}

} // namespace testing
