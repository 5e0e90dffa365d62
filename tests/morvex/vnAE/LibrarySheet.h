// The composition library led to a host's one sheet: its composition found, its only layer current.
#pragma once

#include "testhost/HostTestMain.h"
#include "testhost/SheetFixture.h"
#include "vnAE/vipLi.h"

#include "hostapi/Suites.h"

#include <cstring>

using testing::Keys;

Q_DECLARE_METATYPE(testing::Keys)

class LibrarySheet : public testing::SheetFixture
{
public:
    explicit LibrarySheet(const Keys &keys = {}, int frames = 24, int images = 40)
        : SheetFixture(keys, frames, images), frameCount(frames), imageCount(images)
    {
        vipLi *library = GetVipLi();
        library->BasicSuite = host.BasicSuite();
        library->PluginId = 1;
        library->ReverseColumns = false;
        library->Project = nullptr;
        library->Layer = nullptr;
        library->EfxKeyBlur = library->EfxKeyFiltre = vipLi::kNoEffect;
        library->EfxKeyFill = library->EfxKeyOutline = library->EfxKeyTessaly = 0;
        SelectCompo("scene 7");
        library->FindCompo();
        library->SetCurrentColumn(0);
    }

    int Frames() const { return frameCount; }
    int Images() const { return imageCount; }

    /// Names another composition to the library and makes it forget the one it holds.
    void SelectCompo(const QByteArray &name)
    {
        std::strcpy(GetVipLi()->CompoName, name.constData());
        GetVipLi()->Compo = nullptr;
    }

    /// What the library reads on the first frames of the current column.
    QVector<int> Column(int frames) const
    {
        QVector<int> images;
        for (qint32 frame = 0; frame < frames; ++frame) {
            qint32 image = -77; // what stands where nothing could be read
            GetVipLi()->GetCellImage(frame, image);
            images << image;
        }
        return images;
    }

    // The project under the tables, for what a user would do by hand.

    rostrum::Project &EditProject() { return host.GetDocument().Edit("fixture"); }
    rostrum::Layer &EditLayer() { return *EditProject().EditLayer(composition, layer); }
    rostrum::Stream &EditRemap() { return EditLayer().timeRemap; }
    rostrum::Footage &EditFootage()
    {
        return std::get<rostrum::Footage>(EditProject().Edit(footage)->content);
    }

private:
    int frameCount;
    int imageCount;
};

/// A stream of the current layer, held for a scope.
class StreamHandle
{
public:
    explicit StreamHandle(qint32 number)
    {
        streams->AEGP_GetNewLayerStream(GetVipLi()->PluginId, GetVipLi()->Layer, number, &handle);
    }
    ~StreamHandle() { streams->AEGP_DisposeStream(handle); }
    StreamHandle(const StreamHandle &) = delete;
    StreamHandle &operator=(const StreamHandle &) = delete;
    AEGP_StreamRefH Handle() const { return handle; }

private:
    testing::Suite<AEGP_StreamSuite2> streams;
    AEGP_StreamRefH handle = nullptr;
};
