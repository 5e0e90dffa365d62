#include "SuiteChecks.h"

using namespace rostrum;
using namespace testing;

namespace {

/// Three calls: the count, the layer, its index. @return their results
QVector<A_Err> ThreeCalls(SheetFixture &sheet)
{
    const Suite<AEGP_LayerSuite4> suite;
    A_long number = 0;
    AEGP_LayerH layer = nullptr;
    return { suite->AEGP_GetCompNumLayers(sheet.Comp(), &number),
        suite->AEGP_GetCompLayerByIndex(sheet.Comp(), 0, &layer),
        suite->AEGP_GetLayerIndex(sheet.LayerH(), &number) };
}

using Errors = QVector<A_Err>;

} // namespace

class TestFaultPlan : public QObject
{
    Q_OBJECT

private slots:
    void theNthCallFailsAndNoOther_data();
    void theNthCallFailsAndNoOther();
    void numbersCountFromNow();
    void severalNumbersAreKept();
    void theNextCallOfAFunctionFailsOnce();
    void everyCallOfAFunctionFails();
    void aFunctionOfBothKeyTablesFailsInBoth();
    void aFailingCallLeavesItsArgumentsAndTheProjectAlone();
    void aFailingGiveBackGivesNothingBack();
    void giveBacksCanBeSpared();
    void giveBacksAreKnownByName();
    void acquiringASuiteIsNotCounted();
    void clearingForgetsAll();
};

void TestFaultPlan::theNthCallFailsAndNoOther_data()
{
    QTest::addColumn<int>("call");
    QTest::addColumn<Errors>("errors");
    QTest::newRow("first") << 1 << Errors{ 4, 0, 0 };
    QTest::newRow("second") << 2 << Errors{ 0, 4, 0 };
    QTest::newRow("third") << 3 << Errors{ 0, 0, 4 };
    QTest::newRow("beyond") << 4 << Errors{ 0, 0, 0 };
    QTest::newRow("none") << 0 << Errors{ 0, 0, 0 };
}

void TestFaultPlan::theNthCallFailsAndNoOther()
{
    QFETCH(int, call);
    QFETCH(Errors, errors);
    SheetFixture sheet;
    sheet.host.FailNth(call, A_Err_ALLOC);
    QCOMPARE(ThreeCalls(sheet), errors);
    QCOMPARE(sheet.host.CallCount(), 3);
}

void TestFaultPlan::numbersCountFromNow()
{
    SheetFixture sheet;
    QCOMPARE(ThreeCalls(sheet), Errors(3, 0));
    sheet.host.FailNth(2);
    QCOMPARE(ThreeCalls(sheet), Errors({ 0, A_Err_GENERIC, 0 }));
    QCOMPARE(ThreeCalls(sheet), Errors(3, 0));
    QCOMPARE(sheet.host.CallCount(), 9);
}

void TestFaultPlan::severalNumbersAreKept()
{
    SheetFixture sheet;
    sheet.host.FailNth(1, A_Err_ALLOC);
    sheet.host.FailNth(3, A_Err_PARAMETER);
    QCOMPARE(ThreeCalls(sheet), Errors({ A_Err_ALLOC, 0, A_Err_PARAMETER }));
}

void TestFaultPlan::theNextCallOfAFunctionFailsOnce()
{
    SheetFixture sheet;
    sheet.host.FailNext("AEGP_GetCompLayerByIndex", A_Err_STRUCT);
    QCOMPARE(ThreeCalls(sheet), Errors({ 0, A_Err_STRUCT, 0 }));
    QCOMPARE(ThreeCalls(sheet), Errors(3, 0));
}

void TestFaultPlan::everyCallOfAFunctionFails()
{
    SheetFixture sheet;
    sheet.host.FailEvery("AEGP_GetLayerIndex", 77);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(ThreeCalls(sheet), Errors({ 0, 0, 77 }));
}

void TestFaultPlan::aFunctionOfBothKeyTablesFailsInBoth()
{
    SheetFixture sheet({ { 0, 1 } });
    const Suite<AEGP_StreamSuite2> streams;
    const Suite<AEGP_KeyframeSuite3> keys3;
    const Suite<AEGP_KeyframeSuite4> keys4;
    AEGP_StreamRefH stream = nullptr;
    QCOMPARE(streams->AEGP_GetNewLayerStream(kPluginId, sheet.LayerH(), 7, &stream), A_Err_NONE);
    sheet.host.FailEvery("AEGP_GetKeyframeTime", A_Err_ALLOC);
    A_Time time = { 0, 0 };
    QCOMPARE(keys3->AEGP_GetKeyframeTime(stream, 0, 1, &time), A_Err_ALLOC);
    QCOMPARE(keys4->AEGP_GetKeyframeTime(stream, 0, 1, &time), A_Err_ALLOC);
    QCOMPARE(streams->AEGP_DisposeStream(stream), A_Err_NONE);
}

void TestFaultPlan::aFailingCallLeavesItsArgumentsAndTheProjectAlone()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    sheet.host.FailEvery("AEGP_AddLayer");
    sheet.host.FailEvery("AEGP_GetLayerIndex");
    AEGP_LayerH layer = nullptr;
    A_long index = -5;
    QCOMPARE(suite->AEGP_AddLayer(sheet.host.ItemHandle(sheet.footage), sheet.Comp(), &layer),
        A_Err_GENERIC);
    QCOMPARE(suite->AEGP_GetLayerIndex(sheet.LayerH(), &index), A_Err_GENERIC);
    QVERIFY(!layer);
    QCOMPARE(index, -5);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
    QCOMPARE(suite->AEGP_GetLayerIndex(sheet.LayerH(), nullptr), A_Err_GENERIC);
    QCOMPARE(sheet.host.Complaints(), QByteArrayList()); // the arguments were not looked at
}

void TestFaultPlan::aFailingGiveBackGivesNothingBack()
{
    SheetFixture sheet;
    const Suite<AEGP_StreamSuite2> suite;
    AEGP_StreamRefH stream = nullptr;
    QCOMPARE(suite->AEGP_GetNewLayerStream(kPluginId, sheet.LayerH(), 7, &stream), A_Err_NONE);
    sheet.host.FailNext("AEGP_DisposeStream");
    QCOMPARE(suite->AEGP_DisposeStream(stream), A_Err_GENERIC);
    QCOMPARE(sheet.host.OpenHandles(), 2);
    QCOMPARE(suite->AEGP_DisposeStream(stream), A_Err_NONE);
}

void TestFaultPlan::giveBacksCanBeSpared()
{
    SheetFixture sheet;
    const Suite<AEGP_StreamSuite2> suite;
    sheet.host.Faults().SpareGiveBacks(true);
    AEGP_StreamRefH stream = nullptr;
    const auto run = [&] {
        const A_Err opened = suite->AEGP_GetNewLayerStream(kPluginId, sheet.LayerH(), 7, &stream);
        const A_Err closed = opened ? -1 : suite->AEGP_DisposeStream(stream);
        A_Boolean varying = 0;
        return Errors{ opened, closed, suite->AEGP_IsStreamTimevarying(nullptr, &varying) };
    };
    QCOMPARE(run(), Errors({ 0, 0, kErrBadHandle }));
    QCOMPARE(sheet.host.CallCount(), 2);
    sheet.host.FailNth(2, 88);
    QCOMPARE(run(), Errors({ 0, 0, 88 }));
    sheet.host.FailNext("AEGP_DisposeStream", 89); // by name it fails all the same
    QCOMPARE(run(), Errors({ 0, 89, kErrBadHandle }));
    QCOMPARE(suite->AEGP_DisposeStream(stream), A_Err_NONE);
}

void TestFaultPlan::giveBacksAreKnownByName()
{
    for (const char *name : { "AEGP_DisposeStream", "AEGP_DisposeStreamValue", "AEGP_DisposeEffect",
             "AEGP_DisposeCollection", "AEGP_FreeMemHandle", "AEGP_UnlockMemHandle",
             "AEGP_EndUndoGroup" })
        QVERIFY2(FaultPlan::IsGiveBack(name), name);
    for (const char *name : { "AEGP_GetNewLayerStream", "AEGP_LockMemHandle", "AEGP_StartUndoGroup",
             "AEGP_DeleteKeyframe" })
        QVERIFY2(!FaultPlan::IsGiveBack(name), name);
}

void TestFaultPlan::acquiringASuiteIsNotCounted()
{
    SheetFixture sheet;
    sheet.host.FailNth(1);
    const Suite<AEGP_LayerSuite4> suite;
    QVERIFY(suite);
    QCOMPARE(sheet.host.CallCount(), 0);
}

void TestFaultPlan::clearingForgetsAll()
{
    SheetFixture sheet;
    QCOMPARE(ThreeCalls(sheet), Errors(3, 0));
    sheet.host.FailEvery("AEGP_GetLayerIndex");
    sheet.host.FailNth(1);
    sheet.host.Withhold("AEGP Item Suite", 11);
    sheet.host.Faults().Clear();
    QCOMPARE(sheet.host.CallCount(), 0);
    QCOMPARE(ThreeCalls(sheet), Errors(3, 0));
    const Suite<AEGP_ItemSuite7> items;
    QVERIFY(items);
}

VN_HOST_TEST_MAIN(TestFaultPlan)
#include "tst_faultplan.moc"
