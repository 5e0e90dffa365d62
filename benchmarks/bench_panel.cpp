// The panel in a host: what an idle call costs beside its host calls alone, and what follows a move
// of the current cell.
#include "bench/Bench.h"
#include "bench/TraceOff.h"

#include "hostapi/Suites.h"
#include "panel/Doc.h"
#include "panel/WinExpo.h"
#include "suites/Host.h"
#include "vnAE/vipLi.h"

#include <QApplication>

#include <cstring>
#include <memory>

using namespace rostrum;

namespace {

constexpr int kColumns = 10;
constexpr int kIdleCalls = 2000; // of a measured round
constexpr int kMoves = 50; // likewise
constexpr int kRounds = 15;
constexpr int kShort = 100, kLong = 1500; // rows

/// A host with two compositions, a short and a long one, and the panel in a window.
class Scene
{
public:
    Scene()
    {
        Project project;
        Footage series;
        series.folder = QStringLiteral("/bench");
        series.isSeries = true;
        series.size = { 64, 64 };
        for (int image = 0; image < 100; ++image) {
            series.files << QStringLiteral("b%1.png").arg(image, 4, 10, QLatin1Char('0'));
            series.numbers << image;
        }
        const ItemId footage = project.AddFootage("b", series);
        shortCompo = AddCompo(project, footage, "short", kShort);
        longCompo = AddCompo(project, footage, "long", kLong);
        host.onComplaint = nullptr;
        host.GetDocument().Replace(project);
        vipLi *library = GetVipLi();
        library->BasicSuite = host.BasicSuite();
        library->PluginId = 1;
        container.resize(861, 700);
        // A host hands its window over as a pointer. NOLINTNEXTLINE(performance-no-int-to-ptr)
        const auto window = reinterpret_cast<AEGP_PlatformViewRef>(container.winId());
        panel = std::make_unique<WinExpo>(
            host.BasicSuite(), AEGP_PluginID{ 1 }, /*panel=*/nullptr, window, &functions);
        container.show();
        QApplication::processEvents();
    }

    void Activate(ItemId compo)
    {
        host.GetDocument().view.activeItem = compo;
        panel->OnHostIdle();
        MoveTo(3);
    }

    /// Another current cell, by way of the document, and all that follows, up to the pixels.
    void MoveTo(int row)
    {
        GetDoc()->SetRow(row);
        GetDoc()->SetCol(row % kColumns);
        panel->OnUpdate(UpdCurrent, nullptr);
        QApplication::processEvents();
    }

    Host host;
    ItemId shortCompo = 0, longCompo = 0;
    std::unique_ptr<WinExpo> panel;

private:
    static ItemId AddCompo(Project &project, ItemId footage, const char *name, int rows)
    {
        Composition content;
        content.duration = content.rate.FrameTime(rows);
        const ItemId compo = project.AddComposition(name, content);
        for (int col = 0; col < kColumns; ++col) {
            const LayerId layer = project.AddLayer(footage, compo);
            Stream &remap = project.EditLayer(compo, layer)->timeRemap;
            for (int row = 0; row < rows; row += 3) {
                const int key = remap.InsertKey({ row, 25 }, { (row / 3 % 24) / 25.0, 0, 0, 0 });
                remap.SetKeyInterpolation(key, Interpolation::Hold, Interpolation::Hold);
            }
        }
        return compo;
    }

    AEGP_PanelFunctions1 functions{};
    QWidget container; // goes before the panel, which outlives its host's window
};

template <class Table>
const Table *Acquire()
{
    const void *table = nullptr;
    GetVipLi()->BasicSuite->AcquireSuite(Table::kName, Table::kVersion, &table);
    return static_cast<const Table *>(table);
}

template <class Table>
void Release()
{
    GetVipLi()->BasicSuite->ReleaseSuite(Table::kName, Table::kVersion);
}

/// An idle call's host calls, one operation's suites at a time, and the comparison that it is for.
bool BareIdle()
{
    AEGP_ItemH item = nullptr;
    AEGP_CompH compo = nullptr;
    char name[32] = {};
    Acquire<AEGP_ItemSuite7>()->AEGP_GetActiveItem(&item);
    Release<AEGP_ItemSuite7>();

    Acquire<AEGP_ItemSuite7>()->AEGP_GetActiveItem(&item);
    Acquire<AEGP_CompSuite6>()->AEGP_GetCompFromItem(item, &compo);
    Release<AEGP_ItemSuite7>();
    Release<AEGP_CompSuite6>();

    Acquire<AEGP_CompSuite6>()->AEGP_GetItemFromComp(compo, &item);
    Acquire<AEGP_ItemSuite7>()->AEGP_GetItemName(item, name);
    Release<AEGP_ItemSuite7>();
    Release<AEGP_CompSuite6>();
    return std::strcmp(name, GetVipLi()->CompoName) == 0;
}

bench::Figure IdleCall(Scene &scene)
{
    scene.Activate(scene.shortCompo);
    int same = 0;
    return bench::Compare(
        QStringLiteral("2000 idle calls with nothing changed, over their host calls"), 1.5, kRounds,
        [&] {
            for (int i = 0; i < kIdleCalls; ++i)
                scene.panel->OnHostIdle();
        },
        [&] {
            for (int i = 0; i < kIdleCalls; ++i)
                same += BareIdle();
            if (same == 0)
                qFatal("the floor compares other names");
        });
}

/// Both lengths in turn, the median of each.
bench::Figures Moves(Scene &scene)
{
    QVector<double> shortTimes, longTimes;
    const auto measure = [&](ItemId compo, QVector<double> &times) {
        scene.Activate(compo);
        times << bench::Once([&] {
            for (int i = 0; i < kMoves; ++i)
                scene.MoveTo(4 + i % 20);
        }) / kMoves;
    };
    for (int round = 0; round < kRounds; ++round) {
        measure(scene.shortCompo, shortTimes);
        measure(scene.longCompo, longTimes);
    }
    bench::Figure flat;
    flat.name = QStringLiteral("a moved cell of 1500 rows, over one of 100");
    flat.ours = bench::Median(longTimes);
    flat.floor = bench::Median(shortTimes);
    flat.goal = 1.25;
    return { flat };
}

const bench::Registration panel("panel", [] {
    const bench::TraceOff traceOff;
    Scene scene;
    return bench::Figures{ IdleCall(scene) } + Moves(scene);
});

} // namespace
