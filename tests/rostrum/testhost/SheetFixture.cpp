#include "SheetFixture.h"

#include <QDir>
#include <QImage>
#include <QTest>

#include <cmath>

namespace testing {

using namespace rostrum;

namespace {

const Rate kRate{ 25, 1 };
const QSize kImageSize(320, 200);

void PutKeys(Layer *layer, const Keys &keys)
{
    while (layer->timeRemap.HasKeys())
        layer->timeRemap.DeleteKey(0);
    for (const KeyAt &key : keys) {
        const StreamValue value{ key.image / kRate.PerSecond(), 0, 0, 0 };
        const Time time = layer->ToLayerTime(kRate.FrameTime(key.frame));
        const int index = layer->timeRemap.InsertKey(time, value);
        layer->timeRemap.SetKeyInterpolation(index, Interpolation::Hold, Interpolation::Hold);
    }
}

QByteArray SeriesName(const QByteArray &stem, int images, const QString &extension)
{
    const QByteArray last = QByteArray::number(images - 1).rightJustified(4, '0');
    return stem + "[0000-" + last + "]." + extension.toLatin1();
}

} // namespace

char *toString(const Keys &keys)
{
    QByteArrayList texts;
    for (const KeyAt &key : keys)
        texts << '{' + QByteArray::number(key.frame) + ", " + QByteArray::number(key.image) + '}';
    return qstrdup(texts.join(' ').constData());
}

Footage SeriesOf(const QString &folder, const QString &stem, int images, const QString &extension)
{
    Footage footage;
    footage.folder = folder;
    footage.isSeries = true;
    footage.size = kImageSize;
    footage.rate = kRate;
    for (int i = 0; i < images; ++i) {
        footage.files
            << QStringLiteral("%1%2.%3").arg(stem).arg(i, 4, 10, QLatin1Char('0')).arg(extension);
        footage.numbers << i;
    }
    return footage;
}

QString WriteSeries(const QString &folder, const QString &stem, int first, int count, int digits,
    const QSize &size, const QString &extension)
{
    QString firstPath;
    for (int number = first; number < first + count; ++number) {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(QColor::fromHsv(0, 0, 10 + number % 240));
        const QString path = QStringLiteral("%1/%2%3.%4")
                                 .arg(folder, stem)
                                 .arg(number, digits, 10, QLatin1Char('0'))
                                 .arg(extension);
        if (!image.save(path))
            qWarning("cannot write %s", qPrintable(path));
        if (firstPath.isEmpty())
            firstPath = path;
    }
    return firstPath;
}

SheetFixture::SheetFixture(const Keys &keys, int frames, int images)
{
    host.onComplaint = nullptr; // they are judged at the end, or taken by the test
    Project project;
    Composition content;
    content.size = QSize(640, 360);
    content.rate = kRate;
    content.duration = kRate.FrameTime(frames);
    composition = project.AddComposition("scene 7", content);
    footage = project.AddFootage(SeriesName("walk", images, QStringLiteral("png")),
        SeriesOf(QStringLiteral("/scenes/walk"), QStringLiteral("walk"), images));
    layer = project.AddLayer(footage, composition);
    PutKeys(project.EditLayer(composition, layer), keys);
    host.GetDocument().Replace(project);
    host.GetDocument().view.activeItem = composition;
    host.GetDocument().view.selections.insert(composition, { layer });
}

LayerId SheetFixture::AddSeries(
    const QByteArray &name, int images, const Keys &keys, const QString &extension)
{
    const QString stem = QString::fromUtf8(name);
    const ItemId item = Edit().AddFootage(SeriesName(name, images, extension),
        SeriesOf(QStringLiteral("/scenes/") + stem, stem, images, extension));
    const LayerId added = Edit().AddLayer(item, composition);
    PutKeys(Edit().EditLayer(composition, added), keys);
    Close();
    return added;
}

LayerId SheetFixture::AddStill(const QByteArray &fileName)
{
    Footage still;
    still.folder = QStringLiteral("/scenes/stills");
    still.files << QString::fromUtf8(fileName);
    still.size = QSize(400, 300);
    const ItemId item = Edit().AddFootage(fileName, still);
    const LayerId added = Edit().AddLayer(item, composition);
    Close();
    return added;
}

LayerId SheetFixture::AddSolid(const QByteArray &name)
{
    const ItemId item = Edit().AddSolid(name, { QSize(100, 50), { 1, 0.5, 0.25 } });
    const LayerId added = Edit().AddLayer(item, composition);
    Close();
    return added;
}

LayerId SheetFixture::AddCamera(const QByteArray &name)
{
    const LayerId added = Edit().AddLayerWithoutSource(LayerKind::Camera, name, composition);
    Close();
    return added;
}

void SheetFixture::SetRemapKeys(LayerId changed, const Keys &keys)
{
    PutKeys(Edit().EditLayer(composition, changed), keys);
    Close();
}

const Layer &SheetFixture::Find(LayerId wanted) const
{
    const Layer *found = host.GetProject().FindLayer(composition, wanted);
    if (!found)
        qFatal("layer %d is gone", wanted);
    return *found;
}

Keys SheetFixture::RemapKeys(LayerId read) const
{
    const Layer &found = Find(read);
    Keys keys;
    for (int i = 0; i < found.timeRemap.KeyCount(); ++i) {
        const Key &key = found.timeRemap.KeyAt(i);
        const double frame = found.ToCompTime(key.time).Seconds() * kRate.PerSecond();
        const double image = key.value[0] * kRate.PerSecond();
        keys << KeyAt{ static_cast<qint32>(std::lround(frame)),
            static_cast<qint32>(std::lround(image)) };
    }
    return keys;
}

QVector<QByteArray> SheetFixture::UndoNames()
{
    if (!host.GetDocument().IsGroupOpen())
        Close();
    QVector<QByteArray> names = host.GetDocument().UndoNames();
    names.removeAll("fixture");
    return names;
}

} // namespace testing
