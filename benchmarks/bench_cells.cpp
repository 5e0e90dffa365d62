// What a cell costs: read, read with many keys, written.

#include "bench/Bench.h"

#include "shell/SuiteHandler.h"
#include "suites/Host.h"
#include "vnAE/vipLi.h"

#include <QMap>

#include <algorithm>
#include <cstring>

using namespace rostrum;

namespace {

constexpr int kColumns = 50;
constexpr int kFrames = 1500;

/// A composition of columns over one series, each with its keys evenly spread.
struct Sheet
{
    Sheet(int columns, int keysPerColumn)
    {
        Project project;
        Composition composition;
        composition.duration = composition.rate.FrameTime(kFrames);
        compo = project.AddComposition("bench", composition);
        Footage series;
        series.isSeries = true;
        series.size = { 64, 64 };
        for (int image = 0; image < 100; ++image)
            series.files << QStringLiteral("b%1.png").arg(image);
        const ItemId footage = project.AddFootage("b", series);
        for (int column = 0; column < columns; ++column) {
            const LayerId layer = project.AddLayer(footage, compo);
            Stream &stream = project.EditLayer(compo, layer)->timeRemap;
            for (int key = 0; key < keysPerColumn; ++key) {
                const Time time = composition.rate.FrameTime(key * kFrames / keysPerColumn);
                const int index = stream.InsertKey(time, { (key % 7) / 25.0, 0, 0, 0 });
                stream.SetKeyInterpolation(index, Interpolation::Hold, Interpolation::Hold);
            }
        }
        host.GetDocument().Replace(project);
        host.GetDocument().view.activeItem = compo;
        vipLi *library = GetVipLi();
        library->BasicSuite = host.BasicSuite();
        library->Compo = nullptr;
        std::strcpy(library->CompoName, "bench");
        library->FindCompo();
        library->SetCurrentColumn(0);
    }

    Host host;
    ItemId compo = 0;
};

/// The bare sequence of a cell's reading: acquire, get the value, release.
double BareRead(const SPBasicSuite *basic, AEGP_LayerH layer, qint32 frame)
{
    const void *table = nullptr;
    basic->AcquireSuite(AEGP_StreamSuite2::kName, AEGP_StreamSuite2::kVersion, &table);
    const A_Time time{ frame, 25 };
    AEGP_StreamVal value{};
    AEGP_StreamType type = 0;
    static_cast<const AEGP_StreamSuite2 *>(table)->AEGP_GetLayerStreamValue(
        layer, AEGP_LayerStream_TIME_REMAP, AEGP_LTimeMode_CompTime, &time, 0, &value, &type);
    basic->ReleaseSuite(AEGP_StreamSuite2::kName, AEGP_StreamSuite2::kVersion);
    return value.one_d;
}

bench::Figure OneCell()
{
    Sheet sheet(1, 50);
    double sum = 0;
    const auto ours = [&] {
        qint32 image = 0;
        for (qint32 frame = 0; frame < kFrames; ++frame) {
            GetVipLi()->GetCellImage(frame, image);
            sum += image;
        }
    };
    const auto floor = [&] {
        for (qint32 frame = 0; frame < kFrames; ++frame)
            sum += BareRead(GetVipLi()->BasicSuite, GetVipLi()->Layer, frame);
    };
    return bench::Compare(QStringLiteral("1500 x GetCellImage"), 1.5, 25, ours, floor);
}

double ReadWholeSheet(int keysPerColumn)
{
    Sheet sheet(kColumns, keysPerColumn);
    return bench::Once([] {
        qint32 image = 0;
        for (qint32 column = 0; column < kColumns; ++column) {
            GetVipLi()->SetCurrentColumn(column);
            for (qint32 frame = 0; frame < kFrames; ++frame)
                GetVipLi()->GetCellImage(frame, image);
        }
    });
}

/// The dearest and the cheapest number of keys against each other, each the median of five rounds
/// that go through all of them in turn.
bench::Figure FlatReading()
{
    QMap<int, QVector<double>> times;
    for (int round = 0; round < 5; ++round) {
        for (const int keys : { 1, 10, 100, 750 })
            times[keys] << ReadWholeSheet(keys) / (kColumns * kFrames);
    }
    QVector<double> medians;
    for (const QVector<double> &ofKeys : qAsConst(times))
        medians << bench::Median(ofKeys);
    bench::Figure figure;
    figure.name = QStringLiteral("a cell of 50 x 1500, 1 to 750 keys a column");
    figure.ours = *std::max_element(medians.cbegin(), medians.cend());
    figure.floor = *std::min_element(medians.cbegin(), medians.cend());
    figure.goal = 1.25;
    return figure;
}

/// Cells written from top to bottom, no two neighbours equal: as many keys as cells.
void WriteColumn(int cells)
{
    for (qint32 frame = 0; frame < cells; ++frame)
        GetVipLi()->SetCellImage(frame, 1 + frame % 3);
}

double WriteTimePerCell(int cells)
{
    QVector<double> times;
    for (int round = 0; round < 5; ++round) {
        Sheet sheet(1, 1);
        GetVipLi()->StartUndoGroup(QStringLiteral("morvex:Bench"));
        times << bench::Once([=] { WriteColumn(cells); }) / cells;
        GetVipLi()->EndUndoGroup();
    }
    return bench::Median(times);
}

/// Each write walks the keys before it, so that a cell may cost twice as much with twice the cells.
bench::Figure WriteGrowth()
{
    bench::Figure figure;
    figure.name = QStringLiteral("a cell written, 1500 against twice one of 750");
    figure.ours = WriteTimePerCell(1500);
    figure.floor = 2 * WriteTimePerCell(750);
    figure.goal = 1.25;
    return figure;
}

bench::Figure WriteCalls()
{
    Sheet sheet(1, 1);
    const int before = sheet.host.CallCount();
    WriteColumn(kFrames);
    bench::Figure figure;
    figure.name = QStringLiteral("host calls a written cell, 1500 in order");
    figure.unit = QStringLiteral("calls");
    figure.ours = double(sheet.host.CallCount() - before) / kFrames;
    return figure;
}

const bench::Registration cells("cells", [] {
    return bench::Figures{ OneCell(), FlatReading(), WriteGrowth(), WriteCalls() };
});

} // namespace
