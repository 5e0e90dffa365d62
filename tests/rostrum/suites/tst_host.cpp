#include "SuiteChecks.h"

#include <thread>

using namespace rostrum;
using namespace testing;

class TestHost : public QObject
{
    Q_OBJECT

private slots:
    void thereIsOneHostAndThenNone();
    void aNewHostStartsEmpty();
    void callsFromAnotherThreadAreMisuses();
    void complaintsAreToldAsTheyCome();
    void whatIsLeftOpenIsToldAtTheEnd();
    void aComplaintThatNobodyTookIsToldAtTheEnd();
    void anUnexpectedCallIsToldAtTheEnd();
    void aCleanHostTellsNothingAtTheEnd();
    void messagesAreKeptAndShown();
    void handlesNeverPointAnywhere();
    void handlesOfNothingAreNullOrStale();
    void aMillionThingsMayBeOpenAndNoMore();
    void aHandleIsFollowedByItsSerialNumber();
};

void TestHost::thereIsOneHostAndThenNone()
{
    QVERIFY(!Host::Instance());
    {
        Host host;
        QCOMPARE(Host::Instance(), &host);
    }
    QVERIFY(!Host::Instance());
    Host again;
    QCOMPARE(Host::Instance(), &again);
}

void TestHost::aNewHostStartsEmpty()
{
    {
        SheetFixture sheet;
        sheet.host.FailEvery("AEGP_GetActiveItem");
        sheet.host.GetTrace().Start();
        sheet.host.Tell(QStringLiteral("message"));
    }
    Host host;
    QCOMPARE(host.GetProject().ItemCount(), 1);
    QCOMPARE(host.CallCount(), 0);
    QVERIFY(!host.GetTrace().IsOn());
    QVERIFY(host.Messages().isEmpty());
    const Suite<AEGP_ItemSuite7> suite;
    AEGP_ItemH item = nullptr;
    QCOMPARE(suite->AEGP_GetActiveItem(&item), A_Err_NONE);
}

void TestHost::callsFromAnotherThreadAreMisuses()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    A_Err error = A_Err_NONE;
    SPErr acquired = kSPNoError;
    const void *table = nullptr;
    const AEGP_LayerH layer = sheet.LayerH();
    A_long index = -5;
    std::thread([&] {
        error = suite->AEGP_GetLayerIndex(layer, &index);
        acquired = sheet.host.BasicSuite()->AcquireSuite("AEGP Item Suite", 11, &table);
    }).join();
    QCOMPARE(error, A_Err_GENERIC);
    QCOMPARE(acquired, kSPBadParameter);
    QCOMPARE(index, -5);
    QVERIFY(!table);
    QCOMPARE(sheet.host.TakeComplaints(),
        (QByteArrayList{ "AEGP_GetLayerIndex was called from another thread",
            "AcquireSuite was called from another thread" }));
}

void TestHost::complaintsAreToldAsTheyCome()
{
    SheetFixture sheet;
    QByteArrayList told;
    sheet.host.onComplaint = [&](const QByteArray &line) { told << line; };
    const Suite<AEGP_ItemSuite7> suite;
    QCOMPARE(suite->AEGP_GetActiveItem(nullptr), A_Err_PARAMETER);
    QCOMPARE(told, QByteArrayList{ "AEGP_GetActiveItem: null argument" });
    QCOMPARE(sheet.host.Complaints(), told);
    QCOMPARE(sheet.host.TakeComplaints(), told);
    QVERIFY(sheet.host.Complaints().isEmpty());
}

void TestHost::whatIsLeftOpenIsToldAtTheEnd()
{
    SheetFixture sheet({ { 0, 3 } });
    const QByteArray layer
        = "layer " + QByteArray::number(sheet.layer) + " \"walk[0000-0039].png\"";
    const Suite<AEGP_StreamSuite2> streams;
    const Suite<AEGP_KeyframeSuite3> keys;
    const Suite<AEGP_CollectionSuite2> collections;
    const Suite<AEGP_MemorySuite1> memories;
    const Suite<AEGP_UtilitySuite5> utility;
    AEGP_StreamRefH stream = nullptr;
    AEGP_StreamValue value{};
    AEGP_Collection2H collection = nullptr;
    AEGP_MemHandle memory = nullptr;
    void *address = nullptr;
    QCOMPARE(streams->AEGP_GetNewLayerStream(kPluginId, sheet.LayerH(), 7, &stream), A_Err_NONE);
    QCOMPARE(keys->AEGP_GetNewKeyframeValue(kPluginId, stream, 0, &value), A_Err_NONE);
    QCOMPARE(collections->AEGP_NewCollection(kPluginId, &collection), A_Err_NONE);
    QCOMPARE(memories->AEGP_NewMemHandle(kPluginId, "path", 520, 0, &memory), A_Err_NONE);
    QCOMPARE(memories->AEGP_LockMemHandle(memory, &address), A_Err_NONE);
    QCOMPARE(utility->AEGP_StartUndoGroup("group"), A_Err_NONE);
    ExpectAtEnd({ "left open: stream 7 of " + layer, "left open: value of stream 0",
        "left open: collection, layers: 0", "left open: memory of 520 bytes \"path\", locks: 1",
        "left open: undo group" });
}

void TestHost::aComplaintThatNobodyTookIsToldAtTheEnd()
{
    ExpectAtEnd({ "AEGP_GetActiveItem: null argument" });
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    QCOMPARE(suite->AEGP_GetActiveItem(nullptr), A_Err_PARAMETER);
}

void TestHost::anUnexpectedCallIsToldAtTheEnd()
{
    ExpectAtEnd({ "AEGP Item Suite 11 AEGP_DeleteItem" });
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    QCOMPARE(suite->AEGP_DeleteItem(sheet.CompItem()), A_Err_GENERIC);
    QVERIFY(sheet.host.GetProject().Find(sheet.composition));
}

void TestHost::aCleanHostTellsNothingAtTheEnd()
{
    int told = 0;
    Host::SetEndHandler([&](const QByteArrayList &) { ++told; });
    {
        SheetFixture sheet;
        const Suite<AEGP_ItemSuite7> suite;
    }
    QCOMPARE(told, 0);
    CollectHostEnds();
}

void TestHost::messagesAreKeptAndShown()
{
    SheetFixture sheet;
    sheet.host.Tell(QStringLiteral("first"));
    QStringList shown;
    sheet.host.messageArea = [&](const QString &message) { shown << message; };
    sheet.host.Tell(QStringLiteral("second"));
    QCOMPARE(shown, QStringList{ QStringLiteral("second") });
    QCOMPARE(
        sheet.host.Messages(), QStringList({ QStringLiteral("first"), QStringLiteral("second") }));
}

void TestHost::handlesNeverPointAnywhere()
{
    SheetFixture sheet;
    // No address of a 64-bit process has bits 47 and up that differ from each other.
    for (const void *handle : { static_cast<const void *>(sheet.host.ProjectHandle()),
             static_cast<const void *>(sheet.CompItem()), static_cast<const void *>(sheet.Comp()),
             static_cast<const void *>(sheet.LayerH()) }) {
        const auto top = reinterpret_cast<quintptr>(handle) >> 47;
        QVERIFY(top != 0 && top != 0x1FFFF);
    }
}

void TestHost::handlesOfNothingAreNullOrStale()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    QVERIFY(!sheet.host.ItemHandle(0));
    QVERIFY(!sheet.host.CompHandle(0));
    QVERIFY(!sheet.host.LayerHandle(sheet.composition, 0));
    A_long index = 0;
    QCOMPARE(suite->AEGP_GetLayerIndex(sheet.host.LayerHandle(sheet.composition, 4711), &index),
        kErrBadHandle);
    QCOMPARE(suite->AEGP_GetCompNumLayers(sheet.host.CompHandle(4711), &index), kErrBadHandle);
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
}

void TestHost::aMillionThingsMayBeOpenAndNoMore()
{
    HandlePool<int> pool;
    std::uint64_t payload = 0;
    for (std::uint64_t i = 0; i < HandlePool<int>::kPlaces; ++i)
        QVERIFY(pool.Open(int(i), &payload));
    const std::uint64_t last = payload;
    QVERIFY(!pool.Open(7, &payload));
    QCOMPARE(payload, last);
    pool.Close(last);
    QVERIFY(pool.Open(7, &payload));
    QVERIFY(payload != last);
}

void TestHost::aHandleIsFollowedByItsSerialNumber()
{
    HandlePool<int> pool;
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    QVERIFY(pool.Open(11, &first));
    QVERIFY(!pool.WasClosed(first));
    pool.Close(first);
    QVERIFY(pool.WasClosed(first));
    QVERIFY(!pool.Find(first));
    QVERIFY(pool.Open(12, &second));
    QCOMPARE(*pool.Find(second), 12);
    QVERIFY(!pool.Find(first));
    QVERIFY(!pool.WasClosed(second));
    QVERIFY(!pool.WasClosed(kPayloadMask)); // no such place
    int visited = 0;
    pool.ForEach([&](int thing) { visited += thing; });
    QCOMPARE(visited, 12);
}

VN_HOST_TEST_MAIN(TestHost)
#include "tst_host.moc"
