#include "SuiteChecks.h"

#include "testhost/FakePlugin.h"

using namespace rostrum;
using namespace testing;

class TestTrace : public QObject
{
    Q_OBJECT

private slots:
    void callsAreKeptInOrderWithArgumentsAndResult();
    void nothingIsKeptWhileItIsOff();
    void startingEmptiesTheRecord();
    void textsAndTimesAreShownAndHandlesNamed();
    void aCallInsideACallStandsBehindIt();
    void acquisitionsAreCountedBySuite();
    void aRecordStartedInsideACallIsSafe();
};

void TestTrace::callsAreKeptInOrderWithArgumentsAndResult()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    Trace &trace = sheet.host.GetTrace();
    trace.Start();
    A_long number = 0;
    const A_Time time = { 5, 25 };
    suite->AEGP_GetCompNumLayers(sheet.Comp(), &number);
    suite->AEGP_SetLayerOffset(sheet.LayerH(), &time);
    suite->AEGP_GetLayerIndex(nullptr, &number);
    sheet.host.FailNext("AEGP_GetLayerIndex", 99);
    suite->AEGP_GetLayerIndex(sheet.LayerH(), &number);
    QCOMPARE(trace.Text(),
        "AEGP Layer Suite 10 AEGP_GetCompNumLayers(composition "
            + QByteArray::number(sheet.composition)
            + ", &) = 0\n"
              "AEGP Layer Suite 10 AEGP_SetLayerOffset(layer 0, 5/25) = 0\n"
              "AEGP Layer Suite 10 AEGP_GetLayerIndex(null, &) = 2\n"
              "AEGP Layer Suite 10 AEGP_GetLayerIndex(layer 0, &) = 99\n");
    QCOMPARE(trace.Functions(),
        QByteArrayList({ "AEGP_GetCompNumLayers", "AEGP_SetLayerOffset", "AEGP_GetLayerIndex",
            "AEGP_GetLayerIndex" }));
    QCOMPARE(trace.Count("AEGP_GetLayerIndex"), 2);
}

void TestTrace::nothingIsKeptWhileItIsOff()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    A_long number = 0;
    suite->AEGP_GetCompNumLayers(sheet.Comp(), &number);
    QVERIFY(sheet.host.GetTrace().Entries().isEmpty());
    sheet.host.GetTrace().Start();
    suite->AEGP_GetCompNumLayers(sheet.Comp(), &number);
    sheet.host.GetTrace().Stop();
    suite->AEGP_GetCompNumLayers(sheet.Comp(), &number);
    QCOMPARE(sheet.host.GetTrace().Entries().size(), 1);
}

void TestTrace::startingEmptiesTheRecord()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> suite;
    A_long number = 0;
    sheet.host.GetTrace().Start();
    suite->AEGP_GetCompNumLayers(sheet.Comp(), &number);
    sheet.host.GetTrace().Start();
    QVERIFY(sheet.host.GetTrace().Entries().isEmpty());
    suite->AEGP_GetLayerIndex(sheet.LayerH(), &number);
    QCOMPARE(sheet.host.GetTrace().Functions(), QByteArrayList{ "AEGP_GetLayerIndex" });
    QCOMPARE(sheet.host.GetTrace().Entries()[0].result, A_Err_NONE);
}

void TestTrace::textsAndTimesAreShownAndHandlesNamed()
{
    SheetFixture sheet;
    const QString path = QStringLiteral("/nowhere/é.png");
    const A_Time time = { -7, 50 };
    AEGP_StreamVal value{};
    const auto *panel = reinterpret_cast<const A_u_char *>("a panel");
    QCOMPARE(ArgumentsText("group"), QByteArray("\"group\""));
    QCOMPARE(ArgumentsText(path.utf16()), QByteArray("\"/nowhere/é.png\""));
    QCOMPARE(ArgumentsText(&time, panel), QByteArray("-7/50, \"a panel\""));
    QCOMPARE(ArgumentsText(&value, 3, -1, A_Boolean(1), 2.5), QByteArray("&, 3, -1, 1, 2.5"));
    QCOMPARE(ArgumentsText(sheet.CompItem(), static_cast<AEGP_LayerH>(nullptr)),
        "item " + QByteArray::number(sheet.composition) + ", null");
    QCOMPARE(ArgumentsText(static_cast<const A_char *>(nullptr)), QByteArray("null"));
    QCOMPARE(ArgumentsText(), QByteArray());
}

void TestTrace::aCallInsideACallStandsBehindIt()
{
    SheetFixture sheet;
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    const Suite<AEGP_CommandSuite1> commands;
    const Suite<AEGP_LayerSuite4> layers;
    plugin.onCommand = [&](AEGP_Command, A_Boolean *) {
        A_long number = 0;
        return layers->AEGP_GetCompNumLayers(nullptr, &number);
    };
    sheet.host.GetTrace().Start();
    QCOMPARE(commands->AEGP_DoCommand(16), A_Err_NONE);
    QCOMPARE(sheet.host.GetTrace().Text(),
        QByteArray("AEGP Command Suite 1 AEGP_DoCommand(16) = 0\n"
                   "AEGP Layer Suite 10 AEGP_GetCompNumLayers(null, &) = 2\n"));
}

void TestTrace::acquisitionsAreCountedBySuite()
{
    SheetFixture sheet;
    sheet.host.GetTrace().Start();
    {
        const Suite<AEGP_StreamSuite2> suite;
    }
    QCOMPARE(sheet.host.GetTrace().Text(),
        QByteArray("SP Basic Suite 4 AcquireSuite(AEGP Stream Suite 7) = 0\n"
                   "SP Basic Suite 4 ReleaseSuite(AEGP Stream Suite 7) = 0\n"));
    QCOMPARE(sheet.host.GetTrace().Count("AcquireSuite"), 1);
    QVERIFY(sheet.host.GetTrace().Functions().isEmpty());
}

void TestTrace::aRecordStartedInsideACallIsSafe()
{
    SheetFixture sheet;
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    const Suite<AEGP_CommandSuite1> commands;
    plugin.onCommand = [&](AEGP_Command, A_Boolean *) {
        sheet.host.GetTrace().Start();
        return A_Err_NONE;
    };
    sheet.host.GetTrace().Start();
    QCOMPARE(commands->AEGP_DoCommand(4711), A_Err_PARAMETER);
    QVERIFY(sheet.host.GetTrace().Entries().isEmpty());
}

VN_HOST_TEST_MAIN(TestTrace)
#include "tst_trace.moc"
