#include "SuiteChecks.h"

using namespace rostrum;
using namespace testing;

namespace {

/// A collection of layers for a scope.
class Layers
{
public:
    explicit Layers(const QVector<AEGP_LayerH> &layers)
    {
        suite->AEGP_NewCollection(kPluginId, &handle);
        for (const AEGP_LayerH layer : layers) {
            AEGP_CollectionItemV2 item{};
            item.type = AEGP_CollectionItemType_LAYER;
            item.u.layer.layerH = layer;
            suite->AEGP_CollectionPushBack(handle, &item);
        }
    }
    ~Layers() { suite->AEGP_DisposeCollection(handle); }
    Layers(const Layers &) = delete;
    Layers &operator=(const Layers &) = delete;

    const Suite<AEGP_CollectionSuite2> suite;
    AEGP_Collection2H handle = nullptr;
};

} // namespace

class TestCompSuite : public QObject
{
    Q_OBJECT

private slots:
    void compositionAndItemLeadToEachOther();
    void anItemThatIsNoCompositionGivesAnErrorAndNull();
    void twoCompositionsOfOneNameAreTwoHandles();
    void aSelectionReplacesTheWholeSelection();
    void aSelectionIsNoChangeOfTheProject();
    void aMemberThatIsGoneLeavesTheSelectionAlone();
    void aLayerOfAnotherCompositionIsRefused();
    void theDurationIsSetAndIsOneEntry();
    void aDurationOfEqualLengthIsNoChange();
    void impossibleDurationsAreRefused_data();
    void impossibleDurationsAreRefused();
    void nullArgumentsAreMisuses();
    void badHandlesAreErrors();
};

void TestCompSuite::compositionAndItemLeadToEachOther()
{
    SheetFixture sheet;
    const Suite<AEGP_CompSuite6> suite;
    AEGP_CompH comp = nullptr;
    AEGP_ItemH item = nullptr;
    QCOMPARE(suite->AEGP_GetCompFromItem(sheet.CompItem(), &comp), A_Err_NONE);
    QCOMPARE(comp, sheet.Comp());
    QCOMPARE(suite->AEGP_GetItemFromComp(comp, &item), A_Err_NONE);
    QCOMPARE(item, sheet.CompItem());
}

void TestCompSuite::anItemThatIsNoCompositionGivesAnErrorAndNull()
{
    SheetFixture sheet;
    const Suite<AEGP_CompSuite6> suite;
    for (const ItemId item : { sheet.footage, sheet.host.GetProject().RootFolder() }) {
        AEGP_CompH comp = sheet.Comp();
        QCOMPARE(suite->AEGP_GetCompFromItem(sheet.host.ItemHandle(item), &comp), A_Err_PARAMETER);
        QVERIFY(!comp);
    }
}

void TestCompSuite::twoCompositionsOfOneNameAreTwoHandles()
{
    SheetFixture sheet;
    const Suite<AEGP_CompSuite6> suite;
    const ItemId twin
        = sheet.host.GetDocument().Edit("twin").AddComposition("scene 7", Composition());
    AEGP_CompH comp = nullptr;
    QCOMPARE(suite->AEGP_GetCompFromItem(sheet.host.ItemHandle(twin), &comp), A_Err_NONE);
    QVERIFY(comp != sheet.Comp());
}

void TestCompSuite::aSelectionReplacesTheWholeSelection()
{
    SheetFixture sheet;
    const Suite<AEGP_CompSuite6> suite;
    const LayerId second = sheet.AddSeries("run", 12);
    const LayerId third = sheet.AddCamera("camera");
    const Layers two({ sheet.LayerH(second), sheet.LayerH(third), sheet.LayerH(second) });
    QCOMPARE(suite->AEGP_SetSelection(sheet.Comp(), two.handle), A_Err_NONE);
    QCOMPARE(sheet.host.GetDocument().view.selections.value(sheet.composition),
        QVector<LayerId>({ second, third }));
    const Layers none({});
    QCOMPARE(suite->AEGP_SetSelection(sheet.Comp(), none.handle), A_Err_NONE);
    QCOMPARE(sheet.host.GetDocument().view.selections.value(sheet.composition), QVector<LayerId>());
}

void TestCompSuite::aSelectionIsNoChangeOfTheProject()
{
    SheetFixture sheet;
    const Suite<AEGP_CompSuite6> suite;
    const Layers none({});
    QCOMPARE(suite->AEGP_SetSelection(sheet.Comp(), none.handle), A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
}

void TestCompSuite::aMemberThatIsGoneLeavesTheSelectionAlone()
{
    SheetFixture sheet;
    const Suite<AEGP_CompSuite6> suite;
    const LayerId gone = sheet.AddSeries("run", 12);
    const Layers both({ sheet.LayerH(), sheet.LayerH(gone) });
    sheet.host.GetDocument().Edit("delete").RemoveLayer(sheet.composition, gone);
    sheet.host.GetDocument().view.selections.remove(sheet.composition);
    QCOMPARE(suite->AEGP_SetSelection(sheet.Comp(), both.handle), kErrBadHandle);
    QVERIFY(!sheet.host.GetDocument().view.selections.contains(sheet.composition));
}

void TestCompSuite::aLayerOfAnotherCompositionIsRefused()
{
    SheetFixture sheet;
    const Suite<AEGP_CompSuite6> suite;
    const ItemId other
        = sheet.host.GetDocument().Edit("other").AddComposition("other", Composition());
    const Layers layers({ sheet.LayerH() });
    QCOMPARE(suite->AEGP_SetSelection(sheet.host.CompHandle(other), layers.handle), kErrBadHandle);
}

void TestCompSuite::theDurationIsSetAndIsOneEntry()
{
    SheetFixture sheet;
    const Suite<AEGP_CompSuite6> suite;
    const A_Time duration = { 77, 50 };
    QCOMPARE(suite->AEGP_SetCompDuration(sheet.Comp(), &duration), A_Err_NONE);
    const Suite<AEGP_ItemSuite7> items;
    A_Time read = { 0, 0 };
    QCOMPARE(items->AEGP_GetItemDuration(sheet.CompItem(), &read), A_Err_NONE);
    QCOMPARE(read.value, 77);
    QCOMPARE(read.scale, 50u);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "Composition Duration" }));
}

void TestCompSuite::aDurationOfEqualLengthIsNoChange()
{
    SheetFixture sheet({}, /*frames=*/100);
    const Suite<AEGP_CompSuite6> suite;
    for (const A_Time equal : { A_Time{ 100, 25 }, A_Time{ 4, 1 }, A_Time{ 400, 100 } })
        QCOMPARE(suite->AEGP_SetCompDuration(sheet.Comp(), &equal), A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
}

void TestCompSuite::impossibleDurationsAreRefused_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<uint>("scale");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("nothing at all") << 0 << 25u << true;
    QTest::newRow("less than nothing") << -1 << 25u << false;
    QTest::newRow("no time") << 10 << 0u << false;
    QTest::newRow("the finest scale") << 2147483647 << 2147483647u << true;
    QTest::newRow("a scale beyond it") << 10 << 2147483648u << false;
}

void TestCompSuite::impossibleDurationsAreRefused()
{
    QFETCH(int, value);
    QFETCH(uint, scale);
    QFETCH(bool, accepted);
    SheetFixture sheet;
    const Suite<AEGP_CompSuite6> suite;
    const A_Time duration = { value, scale };
    QCOMPARE(suite->AEGP_SetCompDuration(sheet.Comp(), &duration),
        accepted ? A_Err_NONE : A_Err_PARAMETER);
    QCOMPARE(sheet.UndoNames().size(), accepted ? 1 : 0);
    sheet.host.TakeComplaints(); // of the scales that make no time
}

void TestCompSuite::nullArgumentsAreMisuses()
{
    SheetFixture sheet;
    const Suite<AEGP_CompSuite6> suite;
    RefusesNull(sheet.host,
        { { "AEGP_GetCompFromItem",
              [&] { return suite->AEGP_GetCompFromItem(sheet.CompItem(), nullptr); } },
            { "AEGP_GetItemFromComp",
                [&] { return suite->AEGP_GetItemFromComp(sheet.Comp(), nullptr); } },
            { "AEGP_SetCompDuration",
                [&] { return suite->AEGP_SetCompDuration(sheet.Comp(), nullptr); } } });
}

void TestCompSuite::badHandlesAreErrors()
{
    SheetFixture sheet;
    const Suite<AEGP_CompSuite6> suite;
    const AEGP_CompH stale = sheet.Comp();
    const AEGP_ItemH staleItem = sheet.CompItem();
    const Layers none({});
    AEGP_CompH comp = nullptr;
    AEGP_ItemH item = nullptr;
    const A_Time time = FrameTime(10);
    AEGP_Collection2H disposed = nullptr;
    {
        const Layers gone({});
        disposed = gone.handle;
    }
    QCOMPARE(suite->AEGP_SetSelection(stale, nullptr), kErrBadHandle);
    QCOMPARE(suite->AEGP_SetSelection(stale, disposed), kErrBadHandle);
    QCOMPARE(sheet.host.TakeComplaints().size(), 1); // given back, then used
    // A composition's handle is no item's, nor the other way round.
    QCOMPARE(
        suite->AEGP_GetCompFromItem(reinterpret_cast<AEGP_ItemH>(stale), &comp), kErrBadHandle);
    QCOMPARE(
        suite->AEGP_GetItemFromComp(reinterpret_cast<AEGP_CompH>(staleItem), &item), kErrBadHandle);

    sheet.host.GetDocument().Edit("delete").RemoveItem(sheet.composition);
    RefusesBadHandles(sheet.host, staleItem,
        [&](AEGP_ItemH handle) { return suite->AEGP_GetCompFromItem(handle, &comp); });
    RefusesBadHandles(sheet.host, stale,
        [&](AEGP_CompH handle) { return suite->AEGP_GetItemFromComp(handle, &item); });
    RefusesBadHandles(sheet.host, stale,
        [&](AEGP_CompH handle) { return suite->AEGP_SetSelection(handle, none.handle); });
    RefusesBadHandles(sheet.host, stale,
        [&](AEGP_CompH handle) { return suite->AEGP_SetCompDuration(handle, &time); });
}

VN_HOST_TEST_MAIN(TestCompSuite)
#include "tst_compsuite.moc"
