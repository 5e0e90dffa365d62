// What the tests of the renderer share: projects over the drawings in tests/data/render, and the
// comparison with a reference frame.
#pragma once

#include "core/Project.h"
#include "render/Renderer.h"

#include <QImage>

namespace testing {

/// A file of tests/data/render.
QString DataPath(const QString &fileName);

/// A project with one composition of 96 by 72 pixels and 40 frames at 25, on #304050.
class RenderFixture
{
public:
    RenderFixture();

    rostrum::ItemId AddStill(const QString &path);
    rostrum::ItemId AddSeries(const QString &path);
    /// Another composition, like the first but for its size.
    rostrum::ItemId AddComposition(const QSize &size);
    /// A layer of the item on top of the fixture's composition.
    rostrum::LayerId AddLayer(rostrum::ItemId item);
    rostrum::LayerId AddStillLayer(const QString &fileName);

    rostrum::Layer *Edit(rostrum::LayerId layer);
    /// The anchor point lies at the drawing's top left corner, at a place of the composition.
    void PutCorner(rostrum::LayerId layer, double x, double y);
    void Place(rostrum::LayerId layer, QPointF anchor, QPointF position);
    void SetStream(rostrum::LayerId layer, qint32 number, double first, double second = 0);
    /// @param params values of the effect's own parameters
    void AddEffect(rostrum::LayerId layer, const char *matchName, const QVector<double> &params);
    /// Hold keys of the time remap: a frame of the layer, an image at 25 a second.
    void HoldImages(rostrum::LayerId layer, const QVector<QPair<int, int>> &images);

    /// The frame. Any message is a failure, unless the test takes the messages itself.
    QImage Frame(int frame = 0);

    rostrum::Project project;
    rostrum::ItemId composition = 0;
    rostrum::DrawingCache cache;
    rostrum::Renderer renderer;
};

/// How two images differ, over all channels of all pixels, in steps of 255.
struct Difference
{
    double mean = 255;
    int largest = 255;
};

/// Images of different size differ by everything.
Difference Compare(const QImage &image, const QImage &reference);

/// Empty when the image is the reference within the limits; else tells by how much it is not, and
/// leaves the image beside the test's working folder when VN_KEEP_FRAMES is set.
QString Differs(const QImage &image, const QString &reference, double mean, int largest);

} // namespace testing
