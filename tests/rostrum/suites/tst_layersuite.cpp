#include "SuiteChecks.h"

#include <cstring>

using namespace rostrum;
using namespace testing;

namespace {

struct Names
{
    QByteArray own;
    QByteArray source;
};

Names NamesOf(AEGP_LayerH layer)
{
    const Suite<AEGP_LayerSuite4> suite;
    A_char own[32];
    A_char source[32];
    std::memset(own, '#', sizeof own);
    std::memset(source, '#', sizeof source);
    if (suite->AEGP_GetLayerName(layer, own, source))
        return { "error", "error" };
    return { own, source };
}

QVector<LayerId> Order(SheetFixture &sheet)
{
    QVector<LayerId> order;
    for (const LayerPtr &layer : sheet.host.GetProject().FindComposition(sheet.composition)->layers)
        order << layer->id;
    return order;
}

} // namespace

class TestLayerSuite : public QObject
{
    Q_OBJECT

private slots:
    void layersAreFoundByIndexFromTheTop();
    void anIndexOutOfTheStackIsRefused();
    void thirtyThousandLayersAreFoundBothWays();
    void theActiveLayerIsTheOneSelectedInTheActiveComposition();
    void sourcesAreNullForACamera();
    void aLayersOwnNameIsEmptyWhenNoneWasGiven();
    void namesAreCutOnACharacterBoundary();
    void inPointAndDurationAreSetInOneStep();
    void inPointInLayerTimeCountsFromTheOffset();
    void theOffsetMovesLayerTimeAndNotTheBar();
    void impossibleTimesAreRefused();
    void aNewLayerLiesOnTopForTheWholeComposition();
    void aLayerThatCannotBeAddedIsRefused();
    void theNumberOfAReorderIsTheFinalIndex_data();
    void theNumberOfAReorderIsTheFinalIndex();
    void aParentIsNullWithoutOne();
    void eachChangeIsAnEntryAndNoneWhenNothingChanged();
    void aLayerThatComesBackByUndoHasItsOldHandle();
    void nullArgumentsAreMisuses();
    void badHandlesAreErrors();
};

void TestLayerSuite::layersAreFoundByIndexFromTheTop()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    const LayerId camera = sheet.AddCamera("camera");
    const LayerId top = sheet.AddSeries("run", 12);
    A_long count = 0;
    QCOMPARE(suite->AEGP_GetCompNumLayers(sheet.Comp(), &count), A_Err_NONE);
    QCOMPARE(count, 3);
    const LayerId wanted[] = { top, camera, sheet.layer };
    for (A_long index = 0; index < count; ++index) {
        AEGP_LayerH layer = nullptr;
        A_long found = -1;
        AEGP_CompH comp = nullptr;
        QCOMPARE(suite->AEGP_GetCompLayerByIndex(sheet.Comp(), index, &layer), A_Err_NONE);
        QCOMPARE(layer, sheet.LayerH(wanted[index]));
        QCOMPARE(suite->AEGP_GetLayerIndex(layer, &found), A_Err_NONE);
        QCOMPARE(found, index);
        QCOMPARE(suite->AEGP_GetLayerParentComp(layer, &comp), A_Err_NONE);
        QCOMPARE(comp, sheet.Comp());
    }
}

void TestLayerSuite::anIndexOutOfTheStackIsRefused()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    for (const A_long index : { -1, 1, 2147483647 }) {
        AEGP_LayerH layer = nullptr;
        QCOMPARE(suite->AEGP_GetCompLayerByIndex(sheet.Comp(), index, &layer), A_Err_PARAMETER);
        QVERIFY(!layer);
    }
}

void TestLayerSuite::thirtyThousandLayersAreFoundBothWays()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    Project &project = sheet.host.GetDocument().Edit("many");
    Composition *comp = project.EditComposition(sheet.composition);
    for (int i = 1; i < 30001; ++i) {
        Layer layer;
        layer.id = 100 + i;
        comp->layers << LayerPtr(new Layer(layer));
    }
    A_long count = 0;
    QCOMPARE(suite->AEGP_GetCompNumLayers(sheet.Comp(), &count), A_Err_NONE);
    QCOMPARE(count, 30001);
    QVector<AEGP_LayerH> handles;
    for (A_long index = 0; index < count; ++index) {
        AEGP_LayerH layer = nullptr;
        QCOMPARE(suite->AEGP_GetCompLayerByIndex(sheet.Comp(), index, &layer), A_Err_NONE);
        handles << layer;
    }
    for (A_long index = 0; index < count; ++index) {
        A_long found = -1;
        QCOMPARE(suite->AEGP_GetLayerIndex(handles[index], &found), A_Err_NONE);
        QCOMPARE(found, index);
    }
    // The last one goes to the top: what is known of places is then wrong for all.
    QCOMPARE(suite->AEGP_ReorderLayer(handles.last(), 0), A_Err_NONE);
    A_long found = -1;
    QCOMPARE(suite->AEGP_GetLayerIndex(handles.last(), &found), A_Err_NONE);
    QCOMPARE(found, 0);
    QCOMPARE(suite->AEGP_GetLayerIndex(handles[15000], &found), A_Err_NONE);
    QCOMPARE(found, 15001);
}

void TestLayerSuite::theActiveLayerIsTheOneSelectedInTheActiveComposition()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    const LayerId second = sheet.AddSeries("run", 12);
    View &view = sheet.host.GetDocument().view;
    const auto active = [&] {
        AEGP_LayerH layer = nullptr;
        return suite->AEGP_GetActiveLayer(&layer) == A_Err_NONE ? layer : nullptr;
    };
    view.selections.insert(sheet.composition, { second });
    QCOMPARE(active(), sheet.LayerH(second));
    view.selections.insert(sheet.composition, { sheet.layer, second });
    QVERIFY(!active());
    view.selections.insert(sheet.composition, {});
    QVERIFY(!active());
    view.selections.insert(sheet.composition, { 4711, second }); // the first is long gone
    QCOMPARE(active(), sheet.LayerH(second));
    view.activeItem = sheet.footage;
    QVERIFY(!active());
}

void TestLayerSuite::sourcesAreNullForACamera()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    const LayerId camera = sheet.AddCamera("camera");
    AEGP_ItemH source = nullptr;
    QCOMPARE(suite->AEGP_GetLayerSourceItem(sheet.LayerH(), &source), A_Err_NONE);
    QCOMPARE(source, sheet.host.ItemHandle(sheet.footage));
    QCOMPARE(suite->AEGP_GetLayerSourceItem(sheet.LayerH(camera), &source), A_Err_NONE);
    QVERIFY(!source);
}

void TestLayerSuite::aLayersOwnNameIsEmptyWhenNoneWasGiven()
{
    SheetFixture sheet;
    const LayerId camera = sheet.AddCamera("Kamera é");
    QCOMPARE(NamesOf(sheet.LayerH()).own, QByteArray());
    QCOMPARE(NamesOf(sheet.LayerH()).source, QByteArray("walk[0000-0039].png"));
    QCOMPARE(NamesOf(sheet.LayerH(camera)).own, QByteArray("Kamera é"));
    QCOMPARE(NamesOf(sheet.LayerH(camera)).source, QByteArray());
}

void TestLayerSuite::namesAreCutOnACharacterBoundary()
{
    SheetFixture sheet;
    const QByteArray ascii30 = "012345678901234567890123456789";
    const LayerId layer = sheet.AddStill(ascii30 + "é.png");
    sheet.host.GetDocument().Edit("name").EditLayer(sheet.composition, layer)->name
        = ascii30.left(29) + "éé";
    QCOMPARE(NamesOf(sheet.LayerH(layer)).own, ascii30.left(29) + "é");
    QCOMPARE(NamesOf(sheet.LayerH(layer)).source, ascii30);
}

void TestLayerSuite::inPointAndDurationAreSetInOneStep()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    const A_Time in = { 7, 25 };
    const A_Time length = { 33, 50 };
    QCOMPARE(suite->AEGP_SetLayerInPointAndDuration(
                 sheet.LayerH(), AEGP_LTimeMode_CompTime, &in, &length),
        A_Err_NONE);
    A_Time read = { 0, 0 };
    QCOMPARE(
        suite->AEGP_GetLayerInPoint(sheet.LayerH(), AEGP_LTimeMode_CompTime, &read), A_Err_NONE);
    QCOMPARE(read.value, 7);
    QCOMPARE(read.scale, 25u);
    for (const AEGP_LTimeMode mode : { AEGP_LTimeMode_CompTime, AEGP_LTimeMode_LayerTime }) {
        QCOMPARE(suite->AEGP_GetLayerDuration(sheet.LayerH(), mode, &read), A_Err_NONE);
        QCOMPARE(read.value, 33);
        QCOMPARE(read.scale, 50u);
    }
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "Layer In Point and Duration" }));
}

void TestLayerSuite::inPointInLayerTimeCountsFromTheOffset()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    const A_Time offset = { 10, 25 };
    const A_Time in = { 3, 25 };
    const A_Time length = { 20, 25 };
    QCOMPARE(suite->AEGP_SetLayerOffset(sheet.LayerH(), &offset), A_Err_NONE);
    QCOMPARE(suite->AEGP_SetLayerInPointAndDuration(
                 sheet.LayerH(), AEGP_LTimeMode_LayerTime, &in, &length),
        A_Err_NONE);
    QCOMPARE(sheet.Find(sheet.layer).inPoint, (Time{ 13, 25 }));
    A_Time read = { 5, 5 };
    QCOMPARE(
        suite->AEGP_GetLayerInPoint(sheet.LayerH(), AEGP_LTimeMode_LayerTime, &read), A_Err_NONE);
    QCOMPARE(read.value, 0); // in layer time always 0
}

void TestLayerSuite::theOffsetMovesLayerTimeAndNotTheBar()
{
    SheetFixture sheet({ { 0, 1 }, { 4, 9 } });
    const Suite<AEGP_LayerSuite4> suite;
    const A_Time offset = { 10, 25 };
    const Time in = sheet.Find(sheet.layer).inPoint;
    QCOMPARE(suite->AEGP_SetLayerOffset(sheet.LayerH(), &offset), A_Err_NONE);
    QCOMPARE(sheet.Find(sheet.layer).inPoint, in);
    QCOMPARE(sheet.RemapKeys(), Keys({ { 10, 1 }, { 14, 9 } })); // keys move along
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "Layer Offset" }));
}

void TestLayerSuite::impossibleTimesAreRefused()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    const AEGP_LayerH layer = sheet.LayerH();
    const A_Time good = { 4, 25 };
    const A_Time none = { 4, 0 };
    const A_Time negative = { -4, 25 };
    const AEGP_LTimeMode comp = AEGP_LTimeMode_CompTime;
    const AEGP_LTimeMode unknown = 2;
    A_Time read = { 0, 0 };
    QCOMPARE(suite->AEGP_SetLayerInPointAndDuration(layer, comp, &none, &good), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_SetLayerInPointAndDuration(layer, comp, &good, &none), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_SetLayerInPointAndDuration(layer, unknown, &good, &good), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_SetLayerOffset(layer, &none), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_GetLayerInPoint(layer, unknown, &read), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_GetLayerDuration(layer, unknown, &read), A_Err_PARAMETER);
    QCOMPARE(sheet.host.TakeComplaints().size(), 6);
    QCOMPARE(
        suite->AEGP_SetLayerInPointAndDuration(layer, comp, &good, &negative), A_Err_PARAMETER);
    QCOMPARE(sheet.host.TakeComplaints().size(), 0);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
    QCOMPARE(suite->AEGP_SetLayerInPointAndDuration(layer, comp, &negative, &good), A_Err_NONE);
}

void TestLayerSuite::aNewLayerLiesOnTopForTheWholeComposition()
{
    SheetFixture sheet({}, /*frames=*/100);
    const Suite<AEGP_LayerSuite4> suite;
    AEGP_LayerH layer = nullptr;
    QCOMPARE(suite->AEGP_AddLayer(sheet.host.ItemHandle(sheet.footage), sheet.Comp(), &layer),
        A_Err_NONE);
    QVERIFY(layer != sheet.LayerH());
    A_long index = -1;
    QCOMPARE(suite->AEGP_GetLayerIndex(layer, &index), A_Err_NONE);
    QCOMPARE(index, 0);
    QCOMPARE(suite->AEGP_GetLayerIndex(sheet.LayerH(), &index), A_Err_NONE);
    QCOMPARE(index, 1);
    A_Time duration = { 0, 0 };
    QCOMPARE(suite->AEGP_GetLayerDuration(layer, AEGP_LTimeMode_CompTime, &duration), A_Err_NONE);
    QCOMPARE(duration.value, 100); // the composition's, not the source's 40
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "Add Layer" }));
}

void TestLayerSuite::aLayerThatCannotBeAddedIsRefused()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    AEGP_LayerH layer = nullptr;
    const AEGP_ItemH root = sheet.host.ItemHandle(sheet.host.GetProject().RootFolder());
    QCOMPARE(suite->AEGP_AddLayer(root, sheet.Comp(), &layer), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_AddLayer(sheet.CompItem(), sheet.Comp(), &layer), A_Err_PARAMETER);
    QVERIFY(!layer);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
}

void TestLayerSuite::theNumberOfAReorderIsTheFinalIndex_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QVector<int>>("order"); // former indexes; empty when refused
    using Order = QVector<int>;
    QTest::newRow("down") << 0 << 2 << Order{ 1, 2, 0, 3 };
    QTest::newRow("up") << 3 << 1 << Order{ 0, 3, 1, 2 };
    QTest::newRow("to where it is") << 2 << 2 << Order{ 0, 1, 2, 3 };
    QTest::newRow("to the end by its index") << 1 << 3 << Order{ 0, 2, 3, 1 };
    QTest::newRow("to the end by -1") << 1 << -1 << Order{ 0, 2, 3, 1 };
    QTest::newRow("the last to the end by -1") << 3 << -1 << Order{ 0, 1, 2, 3 };
    QTest::newRow("to the top") << 2 << 0 << Order{ 2, 0, 1, 3 };
    QTest::newRow("beyond the stack") << 1 << 4 << Order{};
    QTest::newRow("below the end mark") << 1 << -2 << Order{};
}

void TestLayerSuite::theNumberOfAReorderIsTheFinalIndex()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QVector<int>, order);
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    sheet.AddCamera("a");
    sheet.AddCamera("b");
    sheet.AddCamera("c");
    const QVector<LayerId> before = Order(sheet);
    QCOMPARE(suite->AEGP_ReorderLayer(sheet.LayerH(before[from]), to),
        order.isEmpty() ? A_Err_PARAMETER : A_Err_NONE);
    QVector<LayerId> wanted;
    for (const int index : order)
        wanted << before[index];
    QCOMPARE(Order(sheet), order.isEmpty() ? before : wanted);
    const bool moved = Order(sheet) != before;
    QCOMPARE(sheet.UndoNames(),
        moved ? QVector<QByteArray>({ "Reorder Layer" }) : QVector<QByteArray>());
    A_long index = -1;
    QCOMPARE(suite->AEGP_GetLayerIndex(sheet.LayerH(before[from]), &index), A_Err_NONE);
    QCOMPARE(index, Order(sheet).indexOf(before[from]));
}

void TestLayerSuite::aParentIsNullWithoutOne()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    const LayerId child = sheet.AddSeries("run", 12);
    sheet.host.GetDocument().Edit("parent").SetParent(sheet.composition, child, sheet.layer);
    AEGP_LayerH parent = nullptr;
    QCOMPARE(suite->AEGP_GetLayerParent(sheet.LayerH(child), &parent), A_Err_NONE);
    QCOMPARE(parent, sheet.LayerH());
    QCOMPARE(suite->AEGP_GetLayerParent(sheet.LayerH(), &parent), A_Err_NONE);
    QVERIFY(!parent);
}

void TestLayerSuite::eachChangeIsAnEntryAndNoneWhenNothingChanged()
{
    SheetFixture sheet({}, /*frames=*/100);
    const Suite<AEGP_LayerSuite4> suite;
    const A_Time zero = { 0, 100 };
    const A_Time whole = { 400, 100 };
    QCOMPARE(suite->AEGP_SetLayerInPointAndDuration(
                 sheet.LayerH(), AEGP_LTimeMode_CompTime, &zero, &whole),
        A_Err_NONE);
    QCOMPARE(suite->AEGP_SetLayerOffset(sheet.LayerH(), &zero), A_Err_NONE);
    QCOMPARE(suite->AEGP_ReorderLayer(sheet.LayerH(), 0), A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());

    // Loose changes up to the next return to the event loop are one entry, named after the first.
    const A_Time later = { 1, 25 };
    AEGP_LayerH layer = nullptr;
    QCOMPARE(suite->AEGP_SetLayerOffset(sheet.LayerH(), &later), A_Err_NONE);
    QCOMPARE(suite->AEGP_AddLayer(sheet.host.ItemHandle(sheet.footage), sheet.Comp(), &layer),
        A_Err_NONE);
    sheet.host.ReturnToEventLoop();
    QCOMPARE(suite->AEGP_ReorderLayer(layer, 1), A_Err_NONE);
    sheet.host.ReturnToEventLoop();
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "Layer Offset", "Reorder Layer" }));
}

void TestLayerSuite::aLayerThatComesBackByUndoHasItsOldHandle()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    AEGP_LayerH layer = nullptr;
    QCOMPARE(suite->AEGP_AddLayer(sheet.host.ItemHandle(sheet.footage), sheet.Comp(), &layer),
        A_Err_NONE);
    A_long index = -1;
    QVERIFY(sheet.host.GetDocument().Undo());
    QCOMPARE(suite->AEGP_GetLayerIndex(layer, &index), kErrBadHandle);
    QVERIFY(sheet.host.GetDocument().Redo());
    QCOMPARE(suite->AEGP_GetLayerIndex(layer, &index), A_Err_NONE);
    QCOMPARE(index, 0);
    QVERIFY(sheet.host.GetDocument().Undo());
    AEGP_LayerH another = nullptr;
    QCOMPARE(suite->AEGP_AddLayer(sheet.host.ItemHandle(sheet.footage), sheet.Comp(), &another),
        A_Err_NONE);
    QVERIFY(another != layer); // the old one is never another layer's
    QCOMPARE(suite->AEGP_GetLayerIndex(layer, &index), kErrBadHandle);
}

void TestLayerSuite::nullArgumentsAreMisuses()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    const AEGP_LayerH layer = sheet.LayerH();
    const AEGP_CompH comp = sheet.Comp();
    const AEGP_LTimeMode mode = AEGP_LTimeMode_CompTime;
    A_char name[32];
    const A_Time time = FrameTime(3);
    RefusesNull(sheet.host,
        { { "AEGP_GetCompNumLayers", [&] { return suite->AEGP_GetCompNumLayers(comp, nullptr); } },
            { "AEGP_GetCompLayerByIndex",
                [&] { return suite->AEGP_GetCompLayerByIndex(comp, 0, nullptr); } },
            { "AEGP_GetActiveLayer", [&] { return suite->AEGP_GetActiveLayer(nullptr); } },
            { "AEGP_GetLayerIndex", [&] { return suite->AEGP_GetLayerIndex(layer, nullptr); } },
            { "AEGP_GetLayerSourceItem",
                [&] { return suite->AEGP_GetLayerSourceItem(layer, nullptr); } },
            { "AEGP_GetLayerParentComp",
                [&] { return suite->AEGP_GetLayerParentComp(layer, nullptr); } },
            { "AEGP_GetLayerName", [&] { return suite->AEGP_GetLayerName(layer, nullptr, name); } },
            { "AEGP_GetLayerName", [&] { return suite->AEGP_GetLayerName(layer, name, nullptr); } },
            { "AEGP_GetLayerInPoint",
                [&] { return suite->AEGP_GetLayerInPoint(layer, mode, nullptr); } },
            { "AEGP_GetLayerDuration",
                [&] { return suite->AEGP_GetLayerDuration(layer, mode, nullptr); } },
            { "AEGP_SetLayerInPointAndDuration",
                [&] {
                    return suite->AEGP_SetLayerInPointAndDuration(layer, mode, nullptr, &time);
                } },
            { "AEGP_SetLayerInPointAndDuration",
                [&] {
                    return suite->AEGP_SetLayerInPointAndDuration(layer, mode, &time, nullptr);
                } },
            { "AEGP_SetLayerOffset", [&] { return suite->AEGP_SetLayerOffset(layer, nullptr); } },
            { "AEGP_AddLayer",
                [&] {
                    return suite->AEGP_AddLayer(
                        sheet.host.ItemHandle(sheet.footage), comp, nullptr);
                } },
            { "AEGP_GetLayerParent",
                [&] { return suite->AEGP_GetLayerParent(layer, nullptr); } } });
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
}

void TestLayerSuite::badHandlesAreErrors()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    const LayerId gone = sheet.AddSeries("run", 12);
    const AEGP_LayerH stale = sheet.LayerH(gone);
    sheet.host.GetDocument().Edit("delete").RemoveLayer(sheet.composition, gone);
    const AEGP_ItemH footage = sheet.host.ItemHandle(sheet.footage);
    const AEGP_LTimeMode mode = AEGP_LTimeMode_CompTime;
    A_long number = 0;
    A_char name[32];
    A_Time time = FrameTime(3);
    AEGP_ItemH item = nullptr;
    AEGP_CompH comp = nullptr;
    AEGP_LayerH layer = nullptr;
    const QVector<std::function<A_Err(AEGP_LayerH)>> calls = {
        [&](AEGP_LayerH h) { return suite->AEGP_GetLayerIndex(h, &number); },
        [&](AEGP_LayerH h) { return suite->AEGP_GetLayerSourceItem(h, &item); },
        [&](AEGP_LayerH h) { return suite->AEGP_GetLayerParentComp(h, &comp); },
        [&](AEGP_LayerH h) { return suite->AEGP_GetLayerName(h, name, name); },
        [&](AEGP_LayerH h) { return suite->AEGP_GetLayerInPoint(h, mode, &time); },
        [&](AEGP_LayerH h) { return suite->AEGP_GetLayerDuration(h, mode, &time); },
        [&](AEGP_LayerH h) {
            return suite->AEGP_SetLayerInPointAndDuration(h, mode, &time, &time);
        },
        [&](AEGP_LayerH h) { return suite->AEGP_SetLayerOffset(h, &time); },
        [&](AEGP_LayerH h) { return suite->AEGP_ReorderLayer(h, 0); },
        [&](AEGP_LayerH h) { return suite->AEGP_GetLayerParent(h, &layer); },
    };
    for (const auto &call : calls)
        RefusesBadHandles(sheet.host, stale, call);

    const AEGP_CompH staleComp = sheet.Comp();
    const AEGP_ItemH staleItem = sheet.CompItem();
    sheet.host.GetDocument().Edit("delete").RemoveItem(sheet.composition);
    RefusesBadHandles(sheet.host, staleComp,
        [&](AEGP_CompH h) { return suite->AEGP_GetCompNumLayers(h, &number); });
    RefusesBadHandles(sheet.host, staleComp,
        [&](AEGP_CompH h) { return suite->AEGP_GetCompLayerByIndex(h, 0, &layer); });
    RefusesBadHandles(sheet.host, staleComp,
        [&](AEGP_CompH h) { return suite->AEGP_AddLayer(footage, h, &layer); });
    RefusesBadHandles(sheet.host, staleItem,
        [&](AEGP_ItemH h) { return suite->AEGP_AddLayer(h, staleComp, &layer); });
}

VN_HOST_TEST_MAIN(TestLayerSuite)
#include "tst_layersuite.moc"
