// A host with one composition and one series layer in it, ready to be driven by its tables.
//
//   composition  "scene 7", 25 frames a second, 640 by 360 pixels, active
//   footage      "walk[0000-0039].png", images of 320 by 200; its files are on no disk
//   layer        the only one; selected
//
// What the fixture adds later goes into history entries of its own, which UndoNames leaves out.
#pragma once

#include "suites/Host.h"

#include <QSize>
#include <QVector>

namespace testing {

/// A key of the sheet: from a frame on an image is shown.
struct KeyAt
{
    qint32 frame;
    qint32 image;
};

using Keys = QVector<KeyAt>;

inline bool operator==(const KeyAt &a, const KeyAt &b)
{
    return a.frame == b.frame && a.image == b.image;
}

/// For the messages of QCOMPARE: "{0, 1} {20, 3}".
char *toString(const Keys &keys);

class SheetFixture
{
public:
    /// @param keys held keys of the layer's time remap
    /// @param frames of the composition @param images of the series, numbered from 0
    explicit SheetFixture(const Keys &keys = {}, int frames = 100, int images = 40);

    // Each lies on top of the layers that are there.

    rostrum::LayerId AddSeries(const QByteArray &name, int images, const Keys &keys = {},
        const QString &extension = QStringLiteral("png"));
    rostrum::LayerId AddStill(const QByteArray &fileName);
    rostrum::LayerId AddSolid(const QByteArray &name);
    rostrum::LayerId AddCamera(const QByteArray &name);

    void SetRemapKeys(rostrum::LayerId layer, const Keys &keys);
    /// What the layer's time remap holds, times and values rounded to the nearest.
    Keys RemapKeys() const { return RemapKeys(layer); }
    Keys RemapKeys(rostrum::LayerId layer) const;
    const rostrum::Stream &Remap() const { return Find(layer).timeRemap; }
    const rostrum::Layer &Find(rostrum::LayerId layer) const;
    /// Names of the history entries, without those of the fixture. Changes still loose are closed.
    QVector<QByteArray> UndoNames();

    AEGP_CompH Comp() { return host.CompHandle(composition); }
    AEGP_ItemH CompItem() { return host.ItemHandle(composition); }
    AEGP_LayerH LayerH() { return host.LayerHandle(composition, layer); }
    AEGP_LayerH LayerH(rostrum::LayerId other) { return host.LayerHandle(composition, other); }

    rostrum::Host host;
    rostrum::ItemId composition = 0;
    rostrum::ItemId footage = 0;
    rostrum::LayerId layer = 0;

private:
    rostrum::Project &Edit() { return host.GetDocument().Edit("fixture"); }
    void Close() { host.GetDocument().CloseLooseEnds(); }
};

/// A series as an import would make it, of files "walk0000.png" up that need not exist.
rostrum::Footage SeriesOf(const QString &folder, const QString &stem, int images,
    const QString &extension = QStringLiteral("png"));

/// Writes small numbered drawings, each of a grey of its own. @return the first file's path
QString WriteSeries(const QString &folder, const QString &stem, int first, int count,
    int digits = 4, const QSize &size = QSize(8, 6),
    const QString &extension = QStringLiteral("png"));

/// A table of the living host, acquired for a scope.
template <typename Table>
class Suite
{
public:
    Suite()
    {
        const void *found = nullptr;
        rostrum::Host::Instance()->BasicSuite()->AcquireSuite(
            Table::kName, Table::kVersion, &found);
        table = static_cast<const Table *>(found);
    }
    ~Suite()
    {
        if (table)
            rostrum::Host::Instance()->BasicSuite()->ReleaseSuite(Table::kName, Table::kVersion);
    }
    Suite(const Suite &) = delete;
    Suite &operator=(const Suite &) = delete;
    const Table *operator->() const { return table; }
    explicit operator bool() const { return table != nullptr; }

private:
    const Table *table = nullptr;
};

} // namespace testing
