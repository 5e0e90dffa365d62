#include "SuiteChecks.h"

using namespace rostrum;
using namespace testing;

namespace {

A_Err SetOffset(SheetFixture &sheet, qint32 frame)
{
    const Suite<AEGP_LayerSuite4> layers;
    const A_Time time = FrameTime(frame);
    return layers->AEGP_SetLayerOffset(sheet.LayerH(), &time);
}

} // namespace

class TestUtilitySuite : public QObject
{
    Q_OBJECT

private slots:
    void aGroupIsOneEntryOfItsName();
    void innerGroupsArePartOfTheOuterOne();
    void aGroupThatChangesNothingLeavesNoEntryAndKeepsTheRedoList();
    void anEndWithoutAStartIsAMisuse();
    void aGroupLeftOpenIsClosedAndReported();
    void aGroupLeftOpenWithoutANameIsReportedToo();
    void anOpenGroupIsInTheAccount();
    void looseChangesBeforeAGroupAreAnEntryOfTheirOwn();
    void aGroupsNameIsKeptByteForByte();
    void aNullNameIsAMisuse();
};

void TestUtilitySuite::aGroupIsOneEntryOfItsName()
{
    SheetFixture sheet;
    const Suite<AEGP_UtilitySuite5> suite;
    QCOMPARE(suite->AEGP_StartUndoGroup("move"), A_Err_NONE);
    QCOMPARE(SetOffset(sheet, 3), A_Err_NONE);
    QCOMPARE(SetOffset(sheet, 4), A_Err_NONE);
    QCOMPARE(suite->AEGP_EndUndoGroup(), A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "move" }));
    QVERIFY(sheet.host.GetDocument().Undo());
    QCOMPARE(sheet.Find(sheet.layer).offset, Time());
}

void TestUtilitySuite::innerGroupsArePartOfTheOuterOne()
{
    SheetFixture sheet;
    const Suite<AEGP_UtilitySuite5> suite;
    QCOMPARE(suite->AEGP_StartUndoGroup("outer"), A_Err_NONE);
    QCOMPARE(suite->AEGP_StartUndoGroup("inner"), A_Err_NONE);
    QCOMPARE(SetOffset(sheet, 3), A_Err_NONE);
    QCOMPARE(suite->AEGP_EndUndoGroup(), A_Err_NONE);
    QVERIFY(sheet.host.GetDocument().IsGroupOpen());
    QCOMPARE(suite->AEGP_EndUndoGroup(), A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "outer" }));
}

void TestUtilitySuite::aGroupThatChangesNothingLeavesNoEntryAndKeepsTheRedoList()
{
    SheetFixture sheet;
    const Suite<AEGP_UtilitySuite5> suite;
    QCOMPARE(SetOffset(sheet, 3), A_Err_NONE);
    QVERIFY(sheet.host.GetDocument().Undo());
    QCOMPARE(suite->AEGP_StartUndoGroup("nothing"), A_Err_NONE);
    QCOMPARE(SetOffset(sheet, 0), A_Err_NONE);
    QCOMPARE(suite->AEGP_EndUndoGroup(), A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
    QCOMPARE(sheet.host.GetDocument().RedoNames(), QVector<QByteArray>({ "Layer Offset" }));
}

void TestUtilitySuite::anEndWithoutAStartIsAMisuse()
{
    SheetFixture sheet;
    const Suite<AEGP_UtilitySuite5> suite;
    QCOMPARE(suite->AEGP_EndUndoGroup(), A_Err_GENERIC);
    QCOMPARE(
        sheet.host.TakeComplaints(), QByteArrayList{ "AEGP_EndUndoGroup: no undo group is open" });
}

void TestUtilitySuite::aGroupLeftOpenIsClosedAndReported()
{
    SheetFixture sheet;
    const Suite<AEGP_UtilitySuite5> suite;
    QCOMPARE(suite->AEGP_StartUndoGroup("outer"), A_Err_NONE);
    QCOMPARE(suite->AEGP_StartUndoGroup("inner"), A_Err_NONE);
    QCOMPARE(SetOffset(sheet, 3), A_Err_NONE);
    sheet.host.ReturnToEventLoop();
    QCOMPARE(sheet.host.TakeComplaints(), QByteArrayList{ "undo group \"outer\" was left open" });
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "outer" }));
    sheet.host.ReturnToEventLoop();
    QCOMPARE(sheet.host.TakeComplaints(), QByteArrayList());
}

void TestUtilitySuite::aGroupLeftOpenWithoutANameIsReportedToo()
{
    SheetFixture sheet;
    const Suite<AEGP_UtilitySuite5> suite;
    QCOMPARE(suite->AEGP_StartUndoGroup(""), A_Err_NONE);
    sheet.host.ReturnToEventLoop();
    QCOMPARE(sheet.host.TakeComplaints(), QByteArrayList{ "undo group \"\" was left open" });
}

void TestUtilitySuite::anOpenGroupIsInTheAccount()
{
    SheetFixture sheet;
    const Suite<AEGP_UtilitySuite5> suite;
    QCOMPARE(suite->AEGP_StartUndoGroup("open"), A_Err_NONE);
    QVERIFY(sheet.host.Account().contains("undo group"));
    QCOMPARE(suite->AEGP_EndUndoGroup(), A_Err_NONE);
    QVERIFY(!sheet.host.Account().contains("undo group"));
}

void TestUtilitySuite::looseChangesBeforeAGroupAreAnEntryOfTheirOwn()
{
    SheetFixture sheet;
    const Suite<AEGP_UtilitySuite5> suite;
    QCOMPARE(SetOffset(sheet, 3), A_Err_NONE);
    QCOMPARE(suite->AEGP_StartUndoGroup("group"), A_Err_NONE);
    QCOMPARE(SetOffset(sheet, 4), A_Err_NONE);
    QCOMPARE(suite->AEGP_EndUndoGroup(), A_Err_NONE);
    QCOMPARE(SetOffset(sheet, 5), A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "Layer Offset", "group", "Layer Offset" }));
}

void TestUtilitySuite::aGroupsNameIsKeptByteForByte()
{
    SheetFixture sheet;
    const Suite<AEGP_UtilitySuite5> suite;
    const QByteArray name = QByteArray("déplacer ").repeated(40);
    QCOMPARE(suite->AEGP_StartUndoGroup(name.constData()), A_Err_NONE);
    QCOMPARE(SetOffset(sheet, 4), A_Err_NONE);
    QCOMPARE(suite->AEGP_EndUndoGroup(), A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ name }));
}

void TestUtilitySuite::aNullNameIsAMisuse()
{
    SheetFixture sheet;
    const Suite<AEGP_UtilitySuite5> suite;
    RefusesNull(sheet.host,
        { { "AEGP_StartUndoGroup", [&] { return suite->AEGP_StartUndoGroup(nullptr); } } });
    QVERIFY(!sheet.host.GetDocument().IsGroupOpen());
}

VN_HOST_TEST_MAIN(TestUtilitySuite)
#include "tst_utilitysuite.moc"
