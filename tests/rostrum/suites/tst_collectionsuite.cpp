#include "SuiteChecks.h"

using namespace rostrum;
using namespace testing;

class TestCollectionSuite : public QObject
{
    Q_OBJECT

private slots:
    void aCollectionIsOpenUntilItIsDisposedOf();
    void aSecondDisposalIsAMisuse();
    void onlyLayersArePushed();
    void aLayersItemThatNamesAStreamIsAMisuse();
    void aLayerThatIsGoneIsRefused();
    void nullArgumentsAreMisuses();
    void badHandlesAreErrors();
};

void TestCollectionSuite::aCollectionIsOpenUntilItIsDisposedOf()
{
    SheetFixture sheet;
    const Suite<AEGP_CollectionSuite2> suite;
    AEGP_Collection2H collection = nullptr;
    QCOMPARE(suite->AEGP_NewCollection(kPluginId, &collection), A_Err_NONE);
    AEGP_CollectionItemV2 item{};
    item.type = AEGP_CollectionItemType_LAYER;
    item.u.layer.layerH = sheet.LayerH();
    QCOMPARE(suite->AEGP_CollectionPushBack(collection, &item), A_Err_NONE);
    QVERIFY(sheet.host.Account().contains("collection, layers: 1"));
    QCOMPARE(suite->AEGP_DisposeCollection(collection), A_Err_NONE);
    QCOMPARE(sheet.host.OpenHandles(), 1); // the suite
}

void TestCollectionSuite::aSecondDisposalIsAMisuse()
{
    SheetFixture sheet;
    const Suite<AEGP_CollectionSuite2> suite;
    AEGP_Collection2H collection = nullptr;
    QCOMPARE(suite->AEGP_NewCollection(kPluginId, &collection), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeCollection(collection), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeCollection(collection), kErrBadHandle);
    QCOMPARE(sheet.host.TakeComplaints(),
        QByteArrayList{ "AEGP_DisposeCollection: collection 0 was given back already" });
}

void TestCollectionSuite::onlyLayersArePushed()
{
    SheetFixture sheet;
    const Suite<AEGP_CollectionSuite2> suite;
    AEGP_Collection2H collection = nullptr;
    QCOMPARE(suite->AEGP_NewCollection(kPluginId, &collection), A_Err_NONE);
    for (const AEGP_CollectionItemType type : { 0, 2, 4, 7, 8, -1 }) {
        AEGP_CollectionItemV2 item{};
        item.type = type;
        item.u.layer.layerH = sheet.LayerH();
        QCOMPARE(suite->AEGP_CollectionPushBack(collection, &item), A_Err_PARAMETER);
    }
    QVERIFY(sheet.host.Account().contains("collection, layers: 0"));
    QCOMPARE(suite->AEGP_DisposeCollection(collection), A_Err_NONE);
}

void TestCollectionSuite::aLayersItemThatNamesAStreamIsAMisuse()
{
    SheetFixture sheet;
    const Suite<AEGP_CollectionSuite2> suite;
    AEGP_Collection2H collection = nullptr;
    QCOMPARE(suite->AEGP_NewCollection(kPluginId, &collection), A_Err_NONE);
    AEGP_CollectionItemV2 item{};
    item.type = AEGP_CollectionItemType_LAYER;
    item.u.layer.layerH = sheet.LayerH();
    item.stream_refH = reinterpret_cast<AEGP_StreamRefH>(sheet.LayerH());
    QCOMPARE(suite->AEGP_CollectionPushBack(collection, &item), A_Err_PARAMETER);
    QCOMPARE(sheet.host.TakeComplaints(),
        QByteArrayList{ "AEGP_CollectionPushBack: a layer's item names a stream" });
    QCOMPARE(suite->AEGP_DisposeCollection(collection), A_Err_NONE);
}

void TestCollectionSuite::aLayerThatIsGoneIsRefused()
{
    SheetFixture sheet;
    const Suite<AEGP_CollectionSuite2> suite;
    const AEGP_LayerH stale = sheet.LayerH();
    sheet.host.GetDocument().Edit("delete").RemoveLayer(sheet.composition, sheet.layer);
    AEGP_Collection2H collection = nullptr;
    QCOMPARE(suite->AEGP_NewCollection(kPluginId, &collection), A_Err_NONE);
    RefusesBadHandles(sheet.host, stale, [&](AEGP_LayerH layer) {
        AEGP_CollectionItemV2 item{};
        item.type = AEGP_CollectionItemType_LAYER;
        item.u.layer.layerH = layer;
        return suite->AEGP_CollectionPushBack(collection, &item);
    });
    QCOMPARE(suite->AEGP_DisposeCollection(collection), A_Err_NONE);
}

void TestCollectionSuite::nullArgumentsAreMisuses()
{
    SheetFixture sheet;
    const Suite<AEGP_CollectionSuite2> suite;
    AEGP_Collection2H collection = nullptr;
    QCOMPARE(suite->AEGP_NewCollection(kPluginId, &collection), A_Err_NONE);
    RefusesNull(sheet.host,
        { { "AEGP_NewCollection", [&] { return suite->AEGP_NewCollection(kPluginId, nullptr); } },
            { "AEGP_CollectionPushBack",
                [&] { return suite->AEGP_CollectionPushBack(collection, nullptr); } } });
    QCOMPARE(suite->AEGP_DisposeCollection(collection), A_Err_NONE);
}

void TestCollectionSuite::badHandlesAreErrors()
{
    SheetFixture sheet;
    const Suite<AEGP_CollectionSuite2> suite;
    AEGP_CollectionItemV2 item{};
    const auto unknown = MakeHandle<AEGP_Collection2H>(HandleKind::Collection, 12345);
    RefusesBadHandles(sheet.host, unknown,
        [&](AEGP_Collection2H h) { return suite->AEGP_CollectionPushBack(h, &item); });
    RefusesBadHandles(
        sheet.host, unknown, [&](AEGP_Collection2H h) { return suite->AEGP_DisposeCollection(h); });
}

VN_HOST_TEST_MAIN(TestCollectionSuite)
#include "tst_collectionsuite.moc"
