#include "PanelStage.h"

#include "testing/AllocationCount.h"

#include <string>

using testing::AllocationCount;
using testing::PanelStage;

/// What the idle call asks of the heap, with the library and its host in one process.
class TestPanelAllocations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { stage = std::make_unique<PanelStage>(); }
    void cleanupTestCase() { stage.reset(); }

    void theCountIsInPlace();
    void anIdleCallWithNothingChangedAllocatesNothing_data();
    void anIdleCallWithNothingChangedAllocatesNothing();
    void withNoActiveItemAnIdleCallAllocatesNothing();

private:
    std::unique_ptr<PanelStage> stage;
};

void TestPanelAllocations::theCountIsInPlace()
{
    const long before = AllocationCount();
    const auto block = std::make_unique<std::string>(1000, 'x');
    QVERIFY(AllocationCount() >= before + 2);
}

void TestPanelAllocations::anIdleCallWithNothingChangedAllocatesNothing_data()
{
    QTest::addColumn<bool>("column");
    QTest::addColumn<bool>("frame");
    QTest::newRow("no option") << false << false;
    QTest::newRow("both options") << true << true;
}

void TestPanelAllocations::anIdleCallWithNothingChangedAllocatesNothing()
{
    QFETCH(const bool, column);
    QFETCH(const bool, frame);
    stage->ClickCell(PanelStage::kRun, 6);
    stage->Tick("Sync Column with AE", column);
    stage->Tick("Sync Ima with AE", frame);
    stage->Idle();
    stage->WaitForTimers();
    const long before = AllocationCount();
    for (int i = 0; i < 100; ++i)
        stage->host.Driver().CallIdle();
    QCOMPARE(AllocationCount() - before, 0L);
}

void TestPanelAllocations::withNoActiveItemAnIdleCallAllocatesNothing()
{
    stage->Document().view.activeItem = 0;
    stage->Idle();
    const long before = AllocationCount();
    for (int i = 0; i < 100; ++i)
        stage->host.Driver().CallIdle();
    QCOMPARE(AllocationCount() - before, 0L);
}

VN_HOST_TEST_MAIN(TestPanelAllocations)
#include "tst_panel_allocations.moc"
