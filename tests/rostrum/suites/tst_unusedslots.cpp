#include "SuiteChecks.h"

#include <algorithm>

using namespace rostrum;
using namespace testing;

namespace {

/// Calls a slot with zero for each argument.
template <typename... Arguments>
A_Err CallWithZeros(A_Err (*slot)(Arguments...))
{
    return slot(Arguments{}...);
}

struct Slot
{
    QByteArray suite;
    int version;
    QByteArray function;
    std::function<A_Err()> call;
};

QVector<Slot> AllSlots()
{
    QVector<Slot> all;
#define VN_TABLE(Table, count)
#define VN_SLOT(Table, slot, index)                                                                \
    all << Slot                                                                                    \
    {                                                                                              \
        Table::kName, Table::kVersion, #slot, [] {                                                 \
            const Suite<Table> suite;                                                              \
            return suite->slot ? CallWithZeros(suite->slot) : A_Err_ALLOC;                         \
        }                                                                                          \
    }
#include "hostapi/SlotList.h"
#undef VN_SLOT
#undef VN_TABLE
    return all;
}

} // namespace

class TestUnusedSlots : public QObject
{
    Q_OBJECT

private slots:
    void everySlotHasAFunction();
    void slotsThatAreNotOfferedAnswerAnErrorAndAreRecorded();
    void whatIsOfferedIsNoMoreAndNoLess();
    void theyAreTracedLikeAllCalls();
};

void TestUnusedSlots::everySlotHasAFunction()
{
    SheetFixture sheet;
    const auto isFull = [](const void *table, std::size_t size) {
        const auto *first = static_cast<void *const *>(table);
        return std::all_of(
            first, first + size / sizeof(void *), [](void *s) { return s != nullptr; });
    };
    int count = 0;
#define VN_TABLE(Table, slots)                                                                     \
    {                                                                                              \
        const void *table = nullptr;                                                               \
        sheet.host.BasicSuite()->AcquireSuite(Table::kName, Table::kVersion, &table);              \
        QVERIFY2(isFull(table, sizeof(Table)), Table::kName);                                      \
        sheet.host.BasicSuite()->ReleaseSuite(Table::kName, Table::kVersion);                      \
        count += slots;                                                                            \
    }
#define VN_SLOT(Table, slot, index)
#include "hostapi/SlotList.h"
#undef VN_SLOT
#undef VN_TABLE
    QCOMPARE(count, 301);
}

void TestUnusedSlots::slotsThatAreNotOfferedAnswerAnErrorAndAreRecorded()
{
    SheetFixture sheet;
    int unused = 0;
    for (const Slot &slot : AllSlots()) {
        const A_Err error = slot.call();
        const QByteArrayList calls = sheet.host.TakeUnexpectedCalls();
        QVERIFY2(error != A_Err_ALLOC, slot.function.constData());
        if (calls.isEmpty())
            continue;
        ++unused;
        QCOMPARE(error, A_Err_GENERIC);
        QCOMPARE(calls,
            QByteArrayList{
                slot.suite + ' ' + QByteArray::number(slot.version) + ' ' + slot.function });
    }
    // 82 are offered, two more of the newer key table, which have their like in the older, and the
    // giving back of footage, which is called when the project refuses it.
    QCOMPARE(unused, 301 - 85);
    sheet.host.TakeComplaints(); // of the null arguments
}

void TestUnusedSlots::whatIsOfferedIsNoMoreAndNoLess()
{
    SheetFixture sheet;
    QMap<QByteArray, int> offered;
    for (const Slot &slot : AllSlots()) {
        slot.call();
        if (sheet.host.TakeUnexpectedCalls().isEmpty())
            ++offered[slot.suite + ' ' + QByteArray::number(slot.version)];
    }
    const QMap<QByteArray, int> wanted = {
        { "AEGP Register Suite 6", 4 },
        { "AEGP Command Suite 1", 5 },
        { "AEGP Workspace Panel Suite 1", 3 },
        { "AEGP Proj Suite 8", 3 },
        { "AEGP Item Suite 11", 10 },
        { "AEGP Comp Suite 14", 4 },
        { "AEGP Layer Suite 10", 14 },
        { "AEGP Stream Suite 7", 9 },
        { "AEGP Keyframe Suite 3", 7 },
        { "AEGP Keyframe Suite 4", 3 },
        { "AEGP Effect Suite 3", 8 },
        { "AEGP Footage Suite 11", 6 },
        { "AEGP Collection Suite 2", 3 },
        { "AEGP Memory Suite 1", 4 },
        { "AEGP Utility Suite 11", 2 },
    };
    QCOMPARE(offered, wanted);
    sheet.host.TakeComplaints();
}

void TestUnusedSlots::theyAreTracedLikeAllCalls()
{
    SheetFixture sheet;
    const Suite<AEGP_ProjSuite5> suite;
    sheet.host.GetTrace().Start();
    A_long count = 0;
    QCOMPARE(suite->AEGP_GetNumProjects(&count), A_Err_GENERIC);
    QCOMPARE(
        sheet.host.GetTrace().Text(), QByteArray("AEGP Proj Suite 8 AEGP_GetNumProjects(&) = 1\n"));
    sheet.host.FailNext("AEGP_GetNumProjects", A_Err_ALLOC);
    QCOMPARE(suite->AEGP_GetNumProjects(&count), A_Err_ALLOC);
    QCOMPARE(sheet.host.TakeUnexpectedCalls().size(), 1);
}

VN_HOST_TEST_MAIN(TestUnusedSlots)
#include "tst_unusedslots.moc"
