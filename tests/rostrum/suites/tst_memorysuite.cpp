#include "SuiteChecks.h"

#include <algorithm>
#include <cstring>

using namespace rostrum;
using namespace testing;

class TestMemorySuite : public QObject
{
    Q_OBJECT

private slots:
    void blocksAreAlignedAndCanBeFilled_data();
    void blocksAreAlignedAndCanBeFilled();
    void memoryIsClearedOnRequest();
    void locksNestAndGiveOneAddress();
    void unlockingMoreThanLockedIsAMisuse();
    void freeingLockedMemoryIsAMisuse();
    void memoryIsOpenUntilItIsFreed();
    void freeingTwiceIsAMisuse();
    void moreThanThereIsIsRefused();
    void manyBlocksKeepApart();
    void nullArgumentsAreMisuses();
    void badHandlesAreErrors();
};

void TestMemorySuite::blocksAreAlignedAndCanBeFilled_data()
{
    QTest::addColumn<uint>("size");
    for (const uint size : { 0u, 1u, 15u, 16u, 17u, 520u, 1000003u })
        QTest::addRow("%u bytes", size) << size;
}

void TestMemorySuite::blocksAreAlignedAndCanBeFilled()
{
    QFETCH(uint, size);
    SheetFixture sheet;
    const Suite<AEGP_MemorySuite1> suite;
    AEGP_MemHandle memory = nullptr;
    void *address = nullptr;
    QCOMPARE(suite->AEGP_NewMemHandle(kPluginId, "test", size, 0, &memory), A_Err_NONE);
    QCOMPARE(suite->AEGP_LockMemHandle(memory, &address), A_Err_NONE);
    QVERIFY(address);
    QCOMPARE(reinterpret_cast<quintptr>(address) % 16, quintptr(0));
    std::memset(address, 0x5A, size);
    QCOMPARE(suite->AEGP_UnlockMemHandle(memory), A_Err_NONE);
    QCOMPARE(suite->AEGP_FreeMemHandle(memory), A_Err_NONE);
}

void TestMemorySuite::memoryIsClearedOnRequest()
{
    SheetFixture sheet;
    const Suite<AEGP_MemorySuite1> suite;
    for (const AEGP_MemFlag flags : { AEGP_MemFlag_NONE, AEGP_MemFlag_CLEAR }) {
        AEGP_MemHandle memory = nullptr;
        void *address = nullptr;
        QCOMPARE(suite->AEGP_NewMemHandle(kPluginId, "test", 100, flags, &memory), A_Err_NONE);
        QCOMPARE(suite->AEGP_LockMemHandle(memory, &address), A_Err_NONE);
        const auto *bytes = static_cast<const unsigned char *>(address);
        const unsigned char wanted = flags ? 0 : 0xCD;
        QVERIFY(std::all_of(bytes, bytes + 100, [=](unsigned char b) { return b == wanted; }));
        QCOMPARE(suite->AEGP_UnlockMemHandle(memory), A_Err_NONE);
        QCOMPARE(suite->AEGP_FreeMemHandle(memory), A_Err_NONE);
    }
}

void TestMemorySuite::locksNestAndGiveOneAddress()
{
    SheetFixture sheet;
    const Suite<AEGP_MemorySuite1> suite;
    AEGP_MemHandle memory = nullptr;
    void *first = nullptr;
    void *second = nullptr;
    QCOMPARE(suite->AEGP_NewMemHandle(kPluginId, "nested", 8, 0, &memory), A_Err_NONE);
    QCOMPARE(suite->AEGP_LockMemHandle(memory, &first), A_Err_NONE);
    QCOMPARE(suite->AEGP_LockMemHandle(memory, &second), A_Err_NONE);
    QCOMPARE(first, second);
    QVERIFY(sheet.host.Account().contains("memory of 8 bytes \"nested\", locks: 2"));
    QCOMPARE(suite->AEGP_UnlockMemHandle(memory), A_Err_NONE);
    QCOMPARE(suite->AEGP_UnlockMemHandle(memory), A_Err_NONE);
    QCOMPARE(suite->AEGP_FreeMemHandle(memory), A_Err_NONE);
}

void TestMemorySuite::unlockingMoreThanLockedIsAMisuse()
{
    SheetFixture sheet;
    const Suite<AEGP_MemorySuite1> suite;
    AEGP_MemHandle memory = nullptr;
    QCOMPARE(suite->AEGP_NewMemHandle(kPluginId, "test", 8, 0, &memory), A_Err_NONE);
    QCOMPARE(suite->AEGP_UnlockMemHandle(memory), A_Err_PARAMETER);
    QCOMPARE(sheet.host.TakeComplaints(),
        QByteArrayList{ "AEGP_UnlockMemHandle: the memory is not locked" });
    QCOMPARE(suite->AEGP_FreeMemHandle(memory), A_Err_NONE);
}

void TestMemorySuite::freeingLockedMemoryIsAMisuse()
{
    SheetFixture sheet;
    const Suite<AEGP_MemorySuite1> suite;
    AEGP_MemHandle memory = nullptr;
    void *address = nullptr;
    QCOMPARE(suite->AEGP_NewMemHandle(kPluginId, "test", 8, 0, &memory), A_Err_NONE);
    QCOMPARE(suite->AEGP_LockMemHandle(memory, &address), A_Err_NONE);
    QCOMPARE(suite->AEGP_FreeMemHandle(memory), A_Err_PARAMETER);
    QCOMPARE(
        sheet.host.TakeComplaints(), QByteArrayList{ "AEGP_FreeMemHandle: the memory is locked" });
    QCOMPARE(suite->AEGP_UnlockMemHandle(memory), A_Err_NONE); // it is still there
    QCOMPARE(suite->AEGP_FreeMemHandle(memory), A_Err_NONE);
}

void TestMemorySuite::memoryIsOpenUntilItIsFreed()
{
    SheetFixture sheet;
    const Suite<AEGP_MemorySuite1> suite;
    AEGP_MemHandle memory = nullptr;
    QCOMPARE(suite->AEGP_NewMemHandle(kPluginId, nullptr, 520, 0, &memory), A_Err_NONE);
    QCOMPARE(sheet.host.Account(),
        (QByteArrayList{ "suite \"AEGP Memory Suite\" 1", "memory of 520 bytes \"\"" }));
    QCOMPARE(suite->AEGP_FreeMemHandle(memory), A_Err_NONE);
    QCOMPARE(sheet.host.OpenHandles(), 1);
}

void TestMemorySuite::freeingTwiceIsAMisuse()
{
    SheetFixture sheet;
    const Suite<AEGP_MemorySuite1> suite;
    AEGP_MemHandle memory = nullptr;
    QCOMPARE(suite->AEGP_NewMemHandle(kPluginId, "test", 8, 0, &memory), A_Err_NONE);
    QCOMPARE(suite->AEGP_FreeMemHandle(memory), A_Err_NONE);
    void *address = nullptr;
    QCOMPARE(suite->AEGP_FreeMemHandle(memory), kErrBadHandle);
    QCOMPARE(suite->AEGP_LockMemHandle(memory, &address), kErrBadHandle);
    QCOMPARE(suite->AEGP_UnlockMemHandle(memory), kErrBadHandle);
    QCOMPARE(sheet.host.TakeComplaints().size(), 3);
    QVERIFY(!address);
}

void TestMemorySuite::moreThanThereIsIsRefused()
{
    SheetFixture sheet;
    const Suite<AEGP_MemorySuite1> suite;
    AEGP_MemHandle memory = nullptr;
    QCOMPARE(suite->AEGP_NewMemHandle(kPluginId, "test", 0xFFFFFFFF, 0, &memory), A_Err_ALLOC);
    QVERIFY(!memory);
}

void TestMemorySuite::manyBlocksKeepApart()
{
    SheetFixture sheet;
    const Suite<AEGP_MemorySuite1> suite;
    QVector<AEGP_MemHandle> handles(3000);
    for (int i = 0; i < handles.size(); ++i) {
        void *address = nullptr;
        QCOMPARE(suite->AEGP_NewMemHandle(kPluginId, "test", 4, 0, &handles[i]), A_Err_NONE);
        QCOMPARE(suite->AEGP_LockMemHandle(handles[i], &address), A_Err_NONE);
        std::memcpy(address, &i, sizeof i);
        QCOMPARE(suite->AEGP_UnlockMemHandle(handles[i]), A_Err_NONE);
    }
    for (int i = 0; i < handles.size(); i += 2)
        QCOMPARE(suite->AEGP_FreeMemHandle(handles[i]), A_Err_NONE);
    for (int i = 1; i < handles.size(); i += 2) {
        void *address = nullptr;
        int kept = -1;
        QCOMPARE(suite->AEGP_LockMemHandle(handles[i], &address), A_Err_NONE);
        std::memcpy(&kept, address, sizeof kept);
        QCOMPARE(kept, i);
        QCOMPARE(suite->AEGP_UnlockMemHandle(handles[i]), A_Err_NONE);
        QCOMPARE(suite->AEGP_FreeMemHandle(handles[i]), A_Err_NONE);
    }
    QCOMPARE(sheet.host.OpenHandles(), 1);
}

void TestMemorySuite::nullArgumentsAreMisuses()
{
    SheetFixture sheet;
    const Suite<AEGP_MemorySuite1> suite;
    AEGP_MemHandle memory = nullptr;
    QCOMPARE(suite->AEGP_NewMemHandle(kPluginId, "test", 8, 0, &memory), A_Err_NONE);
    RefusesNull(sheet.host,
        { { "AEGP_NewMemHandle",
              [&] { return suite->AEGP_NewMemHandle(kPluginId, "test", 8, 0, nullptr); } },
            { "AEGP_LockMemHandle", [&] { return suite->AEGP_LockMemHandle(memory, nullptr); } } });
    QCOMPARE(suite->AEGP_FreeMemHandle(memory), A_Err_NONE);
}

void TestMemorySuite::badHandlesAreErrors()
{
    SheetFixture sheet;
    const Suite<AEGP_MemorySuite1> suite;
    void *address = nullptr;
    const auto unknown = MakeHandle<AEGP_MemHandle>(HandleKind::Memory, 12345);
    RefusesBadHandles(sheet.host, unknown,
        [&](AEGP_MemHandle h) { return suite->AEGP_LockMemHandle(h, &address); });
    RefusesBadHandles(
        sheet.host, unknown, [&](AEGP_MemHandle h) { return suite->AEGP_UnlockMemHandle(h); });
    RefusesBadHandles(
        sheet.host, unknown, [&](AEGP_MemHandle h) { return suite->AEGP_FreeMemHandle(h); });
}

VN_HOST_TEST_MAIN(TestMemorySuite)
#include "tst_memorysuite.moc"
