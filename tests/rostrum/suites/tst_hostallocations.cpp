#include "SuiteChecks.h"

#include "testing/AllocationCount.h"

#include <memory>

using namespace rostrum;
using namespace testing;

namespace {

/// One cell as a sheet reads it: the suite is had and given back around the call.
double ReadCell(AEGP_LayerH layer, qint32 frame)
{
    const Suite<AEGP_StreamSuite2> suite;
    AEGP_StreamVal value{};
    const A_Time time = FrameTime(frame);
    const A_Err error = suite->AEGP_GetLayerStreamValue(
        layer, 7, AEGP_LTimeMode_CompTime, &time, 0, &value, nullptr);
    return error ? -1 : value.one_d;
}

} // namespace

/// What is called for each cell of a reload and in each idle call must not ask for memory.
class TestHostAllocations : public QObject
{
    Q_OBJECT

private slots:
    void theCountCounts();
    void readingCellsAllocatesNothing();
    void theQueriesOfAnIdleCallAllocateNothing();
    void aStreamThatIsOpenedAgainAllocatesNothing();
};

void TestHostAllocations::theCountCounts()
{
    const long before = AllocationCount();
    const auto block = std::make_unique<int>(1);
    QCOMPARE(AllocationCount(), before + 1);
    Q_UNUSED(block)
}

void TestHostAllocations::readingCellsAllocatesNothing()
{
    SheetFixture sheet({ { 0, 4 }, { 30, 9 } });
    const AEGP_LayerH layer = sheet.LayerH();
    double sum = ReadCell(layer, 0);
    const long before = AllocationCount();
    for (qint32 frame = 0; frame < 100; ++frame)
        sum += ReadCell(layer, frame);
    QCOMPARE(AllocationCount(), before);
    QCOMPARE(qRound(sum * 25), 4 + 30 * 4 + 70 * 9);
}

void TestHostAllocations::theQueriesOfAnIdleCallAllocateNothing()
{
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> items;
    const Suite<AEGP_CompSuite6> comps;
    const Suite<AEGP_LayerSuite4> layers;
    const auto poll = [&] {
        AEGP_ItemH item = nullptr;
        AEGP_CompH comp = nullptr;
        AEGP_LayerH layer = nullptr;
        A_Time time = { 0, 0 };
        A_char name[32];
        A_long index = -1;
        return items->AEGP_GetActiveItem(&item) + comps->AEGP_GetCompFromItem(item, &comp)
            + items->AEGP_GetItemName(item, name) + items->AEGP_GetItemCurrentTime(item, &time)
            + items->AEGP_GetItemDuration(item, &time) + layers->AEGP_GetActiveLayer(&layer)
            + layers->AEGP_GetLayerIndex(layer, &index)
            + layers->AEGP_GetCompNumLayers(comp, &index)
            + layers->AEGP_GetCompLayerByIndex(comp, 0, &layer);
    };
    QCOMPARE(poll(), A_Err_NONE);
    const long before = AllocationCount();
    const A_Err error = poll();
    QCOMPARE(AllocationCount(), before);
    QCOMPARE(error, A_Err_NONE);
}

void TestHostAllocations::aStreamThatIsOpenedAgainAllocatesNothing()
{
    SheetFixture sheet;
    const Suite<AEGP_StreamSuite2> suite;
    const auto open = [&] {
        AEGP_StreamRefH stream = nullptr;
        suite->AEGP_GetNewLayerStream(kPluginId, sheet.LayerH(), 1, &stream);
        return suite->AEGP_DisposeStream(stream);
    };
    QCOMPARE(open(), A_Err_NONE);
    const long before = AllocationCount();
    const A_Err error = open();
    QCOMPARE(AllocationCount(), before);
    QCOMPARE(error, A_Err_NONE);
}

VN_HOST_TEST_MAIN(TestHostAllocations)
#include "tst_hostallocations.moc"
