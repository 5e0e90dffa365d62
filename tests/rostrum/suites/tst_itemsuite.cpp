#include "SuiteChecks.h"

#include <algorithm>
#include <cstring>

using namespace rostrum;
using namespace testing;

namespace {

/// Every item that the walk gives, by its handle.
QVector<AEGP_ItemH> Walk(Host &host)
{
    const Suite<AEGP_ItemSuite7> suite;
    QVector<AEGP_ItemH> items;
    AEGP_ItemH item = nullptr;
    A_Err error = suite->AEGP_GetFirstProjItem(host.ProjectHandle(), &item);
    while (!error && item) {
        items << item;
        error = suite->AEGP_GetNextProjItem(host.ProjectHandle(), item, &item);
    }
    return error ? QVector<AEGP_ItemH>() : items;
}

} // namespace

class TestItemSuite : public QObject
{
    Q_OBJECT

private slots:
    void theWalkGoesFolderFirstThenDownInProjectOrder();
    void theWalkOfAnEmptyProjectIsTheRootFolder();
    void typesAreThoseOfTheHost();
    void anItemTypeIsTwoBytes();
    void namesAreCutOnACharacterBoundary_data();
    void namesAreCutOnACharacterBoundary();
    void durationsStandInTheItemsOwnTime();
    void theActiveItemIsNullWhenItIsGone();
    void theCurrentTimeIsReadAsItWasSet();
    void theCurrentTimeStartsAtZeroOverTheRate();
    void theCurrentTimeLeavesNoHistory();
    void onlyCompositionsHaveACurrentTime();
    void dimensionsAreThoseOfTheItem();
    void labelsAreRead();
    void twoHandlesOfOneItemAreEqual();
    void nullArgumentsAreMisuses();
    void badHandlesAreErrors();
};

void TestItemSuite::theWalkGoesFolderFirstThenDownInProjectOrder()
{
    SheetFixture sheet;
    Project &project = sheet.host.GetDocument().Edit("items");
    const ItemId folder = project.AddFolder("a folder");
    const ItemId inner = project.AddFolder("an inner one", folder);
    const ItemId deep = project.AddComposition("deep", Composition(), inner);
    const ItemId behind = project.AddComposition("behind", Composition(), folder);
    const ItemId last = project.AddSolid("last", { QSize(3, 2), {} });
    QVector<AEGP_ItemH> wanted;
    for (const ItemId item : { project.RootFolder(), sheet.composition, sheet.footage, folder,
             inner, deep, behind, last })
        wanted << sheet.host.ItemHandle(item);
    QCOMPARE(Walk(sheet.host), wanted);
}

void TestItemSuite::theWalkOfAnEmptyProjectIsTheRootFolder()
{
    Host host;
    QCOMPARE(Walk(host), QVector<AEGP_ItemH>{ host.ItemHandle(host.GetProject().RootFolder()) });
}

void TestItemSuite::typesAreThoseOfTheHost()
{
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    sheet.AddSolid("plate");
    QVector<int> types;
    for (const AEGP_ItemH item : Walk(sheet.host)) {
        AEGP_ItemType type = -1;
        QCOMPARE(suite->AEGP_GetItemType(item, &type), A_Err_NONE);
        types << type;
    }
    QCOMPARE(types, QVector<int>({ 1, 2, 4, 4 })); // a solid is footage, too
}

void TestItemSuite::anItemTypeIsTwoBytes()
{
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    AEGP_ItemType types[2] = { 0x5555, 0x5555 };
    QCOMPARE(suite->AEGP_GetItemType(sheet.CompItem(), types), A_Err_NONE);
    QCOMPARE(types[1], AEGP_ItemType(0x5555));
}

void TestItemSuite::namesAreCutOnACharacterBoundary_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("shown");
    const QByteArray ascii30 = "012345678901234567890123456789";
    QTest::newRow("empty") << QByteArray() << QByteArray();
    QTest::newRow("31 bytes fit") << ascii30 + "x" << ascii30 + "x";
    QTest::newRow("32 bytes lose one") << ascii30 + "xy" << ascii30 + "x";
    QTest::newRow("an accent that ends at byte 31 stays")
        << ascii30.left(29) + "é" << ascii30.left(29) + "é";
    QTest::newRow("an accent over the end goes") << ascii30 + "é" << ascii30;
    QTest::newRow("three bytes over the end go") << ascii30.left(29) + "紙x" << ascii30.left(29);
    QTest::newRow("three bytes before the end stay")
        << ascii30.left(28) + "紙xyz" << ascii30.left(28) + "紙";
    QTest::newRow("four bytes over the end go") << ascii30.left(28) + "🎬x" << ascii30.left(28);
    QTest::newRow("bytes that are no UTF-8 are cut at 31")
        << QByteArray(40, '\xB0') << QByteArray(31, '\xB0');
    QTest::newRow("very long") << QByteArray(100000, 'n') << QByteArray(31, 'n');
}

void TestItemSuite::namesAreCutOnACharacterBoundary()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, shown);
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    const ItemId item = sheet.host.GetDocument().Edit("item").AddFolder(name);
    A_char buffer[40];
    std::memset(buffer, '#', sizeof buffer);
    QCOMPARE(suite->AEGP_GetItemName(sheet.host.ItemHandle(item), buffer), A_Err_NONE);
    QCOMPARE(QByteArray(buffer), shown);
    QVERIFY(std::all_of(buffer + 32, buffer + 40, [](char byte) { return byte == '#'; }));
}

void TestItemSuite::durationsStandInTheItemsOwnTime()
{
    SheetFixture sheet({}, /*frames=*/100, /*images=*/40);
    const Suite<AEGP_ItemSuite7> suite;
    sheet.AddStill("plate.png");
    sheet.AddSolid("black");
    QVector<QPair<int, int>> durations;
    for (const AEGP_ItemH item : Walk(sheet.host)) {
        A_Time duration = { -1, 0 };
        QCOMPARE(suite->AEGP_GetItemDuration(item, &duration), A_Err_NONE);
        durations << qMakePair(int(duration.value), int(duration.scale));
    }
    using Pairs = QVector<QPair<int, int>>;
    QCOMPARE(durations, Pairs({ { 0, 1 }, { 100, 25 }, { 40, 25 }, { 0, 1 }, { 0, 1 } }));
}

void TestItemSuite::theActiveItemIsNullWhenItIsGone()
{
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    AEGP_ItemH item = nullptr;
    QCOMPARE(suite->AEGP_GetActiveItem(&item), A_Err_NONE);
    QCOMPARE(item, sheet.CompItem());
    sheet.host.GetDocument().Edit("delete").RemoveItem(sheet.composition);
    QCOMPARE(suite->AEGP_GetActiveItem(&item), A_Err_NONE);
    QVERIFY(!item);
    sheet.host.GetDocument().view.activeItem = 0;
    QCOMPARE(suite->AEGP_GetActiveItem(&item), A_Err_NONE);
    QVERIFY(!item);
}

void TestItemSuite::theCurrentTimeIsReadAsItWasSet()
{
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    for (const A_Time set :
        { A_Time{ 14, 50 }, A_Time{ 7, 25 }, A_Time{ -3, 25 }, A_Time{ 90000, 24000 } }) {
        QCOMPARE(suite->AEGP_SetItemCurrentTime(sheet.CompItem(), &set), A_Err_NONE);
        A_Time read = { 0, 0 };
        QCOMPARE(suite->AEGP_GetItemCurrentTime(sheet.CompItem(), &read), A_Err_NONE);
        QCOMPARE(read.value, set.value);
        QCOMPARE(read.scale, set.scale);
    }
}

void TestItemSuite::theCurrentTimeStartsAtZeroOverTheRate()
{
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    Composition film;
    film.rate = { 24000, 1001 };
    const ItemId other = sheet.host.GetDocument().Edit("film").AddComposition("film", film);
    A_Time time = { 5, 5 };
    QCOMPARE(suite->AEGP_GetItemCurrentTime(sheet.CompItem(), &time), A_Err_NONE);
    QCOMPARE(time.value, 0);
    QCOMPARE(time.scale, 25u);
    QCOMPARE(suite->AEGP_GetItemCurrentTime(sheet.host.ItemHandle(other), &time), A_Err_NONE);
    QCOMPARE(time.value, 0);
    QCOMPARE(time.scale, 24000u);
}

void TestItemSuite::theCurrentTimeLeavesNoHistory()
{
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    const A_Time time = FrameTime(9);
    const int changes = sheet.host.ChangeCount();
    QCOMPARE(suite->AEGP_SetItemCurrentTime(sheet.CompItem(), &time), A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
    QVERIFY(sheet.host.ChangeCount() > changes); // the program must show it all the same
}

void TestItemSuite::onlyCompositionsHaveACurrentTime()
{
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    const A_Time time = FrameTime(9);
    const AEGP_ItemH footage = sheet.host.ItemHandle(sheet.footage);
    QCOMPARE(suite->AEGP_SetItemCurrentTime(footage, &time), A_Err_PARAMETER);
    A_Time read = { 5, 5 };
    QCOMPARE(suite->AEGP_GetItemCurrentTime(footage, &read), A_Err_NONE);
    QCOMPARE(read.value, 0);
    const A_Time none = { 9, 0 };
    QCOMPARE(suite->AEGP_SetItemCurrentTime(sheet.CompItem(), &none), A_Err_PARAMETER);
    QCOMPARE(sheet.host.TakeComplaints(),
        QByteArrayList{ "AEGP_SetItemCurrentTime: a time with the scale 0" });
}

void TestItemSuite::dimensionsAreThoseOfTheItem()
{
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    sheet.AddStill("plate.png");
    sheet.AddSolid("black");
    QVector<QSize> sizes;
    for (const AEGP_ItemH item : Walk(sheet.host)) {
        A_long width = -1;
        A_long height = -1;
        QCOMPARE(suite->AEGP_GetItemDimensions(item, &width, &height), A_Err_NONE);
        sizes << QSize(width, height);
    }
    QCOMPARE(
        sizes, QVector<QSize>({ { 0, 0 }, { 640, 360 }, { 320, 200 }, { 400, 300 }, { 100, 50 } }));
}

void TestItemSuite::labelsAreRead()
{
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    for (const int set : { 0, 3, 16 }) {
        sheet.host.GetDocument().Edit("label").Edit(sheet.footage)->label = static_cast<qint8>(set);
        AEGP_LabelID label = -1;
        QCOMPARE(
            suite->AEGP_GetItemLabel(sheet.host.ItemHandle(sheet.footage), &label), A_Err_NONE);
        QCOMPARE(int(label), set);
    }
}

void TestItemSuite::twoHandlesOfOneItemAreEqual()
{
    SheetFixture sheet;
    QCOMPARE(Walk(sheet.host), Walk(sheet.host));
    const QVector<AEGP_ItemH> items = Walk(sheet.host);
    QVERIFY(items[1] != items[2]);
}

void TestItemSuite::nullArgumentsAreMisuses()
{
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    const AEGP_ItemH item = sheet.CompItem();
    const AEGP_ProjectH project = sheet.host.ProjectHandle();
    A_long side = 0;
    RefusesNull(sheet.host,
        { { "AEGP_GetFirstProjItem",
              [&] { return suite->AEGP_GetFirstProjItem(project, nullptr); } },
            { "AEGP_GetNextProjItem",
                [&] { return suite->AEGP_GetNextProjItem(project, item, nullptr); } },
            { "AEGP_GetActiveItem", [&] { return suite->AEGP_GetActiveItem(nullptr); } },
            { "AEGP_GetItemType", [&] { return suite->AEGP_GetItemType(item, nullptr); } },
            { "AEGP_GetItemName", [&] { return suite->AEGP_GetItemName(item, nullptr); } },
            { "AEGP_GetItemDuration", [&] { return suite->AEGP_GetItemDuration(item, nullptr); } },
            { "AEGP_GetItemCurrentTime",
                [&] { return suite->AEGP_GetItemCurrentTime(item, nullptr); } },
            { "AEGP_SetItemCurrentTime",
                [&] { return suite->AEGP_SetItemCurrentTime(item, nullptr); } },
            { "AEGP_GetItemDimensions",
                [&] { return suite->AEGP_GetItemDimensions(item, &side, nullptr); } },
            { "AEGP_GetItemDimensions",
                [&] { return suite->AEGP_GetItemDimensions(item, nullptr, &side); } },
            { "AEGP_GetItemLabel", [&] { return suite->AEGP_GetItemLabel(item, nullptr); } } });
}

void TestItemSuite::badHandlesAreErrors()
{
    SheetFixture sheet;
    const Suite<AEGP_ItemSuite7> suite;
    const AEGP_ItemH stale = sheet.CompItem();
    sheet.host.GetDocument().Edit("delete").RemoveItem(sheet.composition);
    A_char name[32];
    A_Time time = FrameTime(3);
    A_long side = 0;
    AEGP_LabelID label = 0;
    AEGP_ItemType type = 0;
    AEGP_ItemH next = nullptr;
    const QVector<std::function<A_Err(AEGP_ItemH)>> calls = {
        [&](AEGP_ItemH item) {
            return suite->AEGP_GetNextProjItem(sheet.host.ProjectHandle(), item, &next);
        },
        [&](AEGP_ItemH item) { return suite->AEGP_GetItemType(item, &type); },
        [&](AEGP_ItemH item) { return suite->AEGP_GetItemName(item, name); },
        [&](AEGP_ItemH item) { return suite->AEGP_GetItemDuration(item, &time); },
        [&](AEGP_ItemH item) { return suite->AEGP_GetItemCurrentTime(item, &time); },
        [&](AEGP_ItemH item) { return suite->AEGP_SetItemCurrentTime(item, &time); },
        [&](AEGP_ItemH item) { return suite->AEGP_GetItemDimensions(item, &side, &side); },
        [&](AEGP_ItemH item) { return suite->AEGP_GetItemLabel(item, &label); },
    };
    for (const auto &call : calls)
        RefusesBadHandles(sheet.host, stale, call);
    QCOMPARE(suite->AEGP_GetFirstProjItem(nullptr, &next), kErrBadHandle);
}

VN_HOST_TEST_MAIN(TestItemSuite)
#include "tst_itemsuite.moc"
