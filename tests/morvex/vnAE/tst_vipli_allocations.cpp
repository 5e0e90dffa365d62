#include "LibrarySheet.h"
#include "testing/AllocationCount.h"

/// Reading a cell is done for each frame of each column on a reload: it allocates nothing.
class TestVipLiAllocations : public QObject
{
    Q_OBJECT

private slots:
    void theCounterCounts();
    void readingACellAllocatesNothing();
    void openingASuiteScopeAllocatesNothing();
};

void TestVipLiAllocations::theCounterCounts()
{
    const long before = testing::AllocationCount();
    const QVector<int> block(100, 7);
    QCOMPARE(testing::AllocationCount(), before + 1);
    QCOMPARE(block.last(), 7);
}

void TestVipLiAllocations::readingACellAllocatesNothing()
{
    LibrarySheet sheet(Keys{ { 0, 1 }, { 4, 2 }, { 9, 3 } });
    qint32 image = -1;
    qint32 sum = 0;
    QVERIFY(GetVipLi()->GetCellImage(0, image));
    const long before = testing::AllocationCount();
    for (int frame = 0; frame < 24; ++frame) {
        GetVipLi()->GetCellImage(frame, image);
        sum += image;
    }
    QCOMPARE(testing::AllocationCount(), before);
    QCOMPARE(sum, 4 * 1 + 5 * 2 + 15 * 3);
}

void TestVipLiAllocations::openingASuiteScopeAllocatesNothing()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    GetVipLi()->GetColumnCount();
    const long before = testing::AllocationCount();
    QCOMPARE(GetVipLi()->GetColumnCount(), 1);
    QCOMPARE(testing::AllocationCount(), before);
}

VN_HOST_TEST_MAIN(TestVipLiAllocations)

#include "tst_vipli_allocations.moc"
