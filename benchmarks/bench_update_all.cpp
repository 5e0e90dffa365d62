// The panel refreshes its dashboard on every poll that found a change, mostly with few values new
// or none. The floor is a walk over the same editors that does nothing.
#include "bench/Bench.h"

#include "T_Types/T_QtEdit.h"
#include "T_Types/T_QtEditTab.h"
#include "panel/Doc.h"

#include <QCoreApplication>

#include <memory>

namespace {

using namespace bench;

constexpr int kCalls = 200; // in one measured round
constexpr int kRounds = 25;

struct Dashboard
{
    Dashboard() : dock(nullptr, /*rows=*/2)
    {
        dock.SetStructs(&doc);
        dock.show();
        dock.UpdateAll();
        QCoreApplication::processEvents();
        editors = dock.findChildren<T_QtEdit *>();
    }

    Doc doc;
    KDockPannel dock;
    QList<T_QtEdit *> editors;
};

/// The walk alone: each editor and its variable's field are looked at.
int Walk(const QList<T_QtEdit *> &editors)
{
    int withData = 0;
    for (T_QtEdit *editor : editors)
        withData += editor->GetVar()->mData != nullptr;
    return withData;
}

const Registration updateAll("update_all", [] {
    const auto shown = std::make_shared<Dashboard>();
    volatile int sink = 0;
    return Figures{ Compare(
        QStringLiteral("UpdateAll of the dashboard, nothing changed"), /*goal=*/0, kRounds,
        [&] {
            for (int i = 0; i < kCalls; ++i)
                shown->dock.UpdateAll();
        },
        [&] {
            for (int i = 0; i < kCalls; ++i)
                sink = Walk(shown->editors);
        }) };
});

} // namespace
