#include "SuiteChecks.h"

using namespace rostrum;
using namespace testing;

namespace {

struct Pair
{
    const char *name;
    int version;
};

constexpr Pair kPairs[] = {
    { "AEGP Register Suite", 6 },
    { "AEGP Command Suite", 1 },
    { "AEGP Workspace Panel Suite", 1 },
    { "PF AE App Suite", 6 },
    { "AEGP Proj Suite", 8 },
    { "AEGP Item Suite", 11 },
    { "AEGP Comp Suite", 14 },
    { "AEGP Layer Suite", 10 },
    { "AEGP Stream Suite", 7 },
    { "AEGP Keyframe Suite", 3 },
    { "AEGP Keyframe Suite", 4 },
    { "AEGP Effect Suite", 3 },
    { "AEGP Footage Suite", 11 },
    { "AEGP Collection Suite", 2 },
    { "AEGP Memory Suite", 1 },
    { "AEGP Utility Suite", 11 },
};

const void *Acquire(const char *name, int version)
{
    const void *table = nullptr;
    return Host::Instance()->BasicSuite()->AcquireSuite(name, version, &table) ? nullptr : table;
}

SPErr Release(const char *name, int version)
{
    return Host::Instance()->BasicSuite()->ReleaseSuite(name, version);
}

} // namespace

class TestBasicSuite : public QObject
{
    Q_OBJECT

private slots:
    void theSixteenPairsAreOffered();
    void holdsAreCountedForEachPair();
    void anUnheldSuiteIsReleasedAsAMisuse();
    void otherVersionsAndNamesAreRefused_data();
    void otherVersionsAndNamesAreRefused();
    void aWithheldSuiteIsRefusedAndOthersAreNot();
    void aSuiteCanBeHandedOutAsSuccessAndNull();
    void aNameOnTheStackIsReadEachTime();
    void nullArgumentsAreMisuses();
    void otherSlotsAnswerErrorsAndAreRecorded();
    void withoutAHostThereAreNoSuites();
    void heldSuitesAreLeftOpenAtTheEnd();
};

void TestBasicSuite::theSixteenPairsAreOffered()
{
    SheetFixture sheet;
    QVector<const void *> tables;
    for (const Pair &pair : kPairs) {
        const void *table = Acquire(pair.name, pair.version);
        QVERIFY2(table, pair.name);
        QVERIFY2(!tables.contains(table), pair.name);
        tables << table;
        QCOMPARE(sheet.host.Held(pair.name, pair.version), 1);
    }
    QCOMPARE(sheet.host.OpenHandles(), 16);
    for (const Pair &pair : kPairs)
        QCOMPARE(Release(pair.name, pair.version), kSPNoError);
    QCOMPARE(sheet.host.OpenHandles(), 0);
}

void TestBasicSuite::holdsAreCountedForEachPair()
{
    SheetFixture sheet;
    const void *first = Acquire("AEGP Keyframe Suite", 3);
    QCOMPARE(Acquire("AEGP Keyframe Suite", 3), first);
    QVERIFY(Acquire("AEGP Keyframe Suite", 4) != first);
    QCOMPARE(sheet.host.Held("AEGP Keyframe Suite", 3), 2);
    QCOMPARE(sheet.host.Held("AEGP Keyframe Suite", 4), 1);
    QCOMPARE(sheet.host.Held("AEGP Keyframe Suite", 5), 0);
    QCOMPARE(Release("AEGP Keyframe Suite", 3), kSPNoError);
    QCOMPARE(Release("AEGP Keyframe Suite", 3), kSPNoError);
    QCOMPARE(sheet.host.Held("AEGP Keyframe Suite", 4), 1);
    QCOMPARE(Release("AEGP Keyframe Suite", 4), kSPNoError);
}

void TestBasicSuite::anUnheldSuiteIsReleasedAsAMisuse()
{
    SheetFixture sheet;
    QCOMPARE(Release("AEGP Item Suite", 11), kSPAlreadyReleased);
    QCOMPARE(Release("AEGP Item Suite", 12), kSPAlreadyReleased);
    QCOMPARE(sheet.host.TakeComplaints(),
        (QByteArrayList{ "suite \"AEGP Item Suite\" 11 was released, but is not held",
            "suite \"AEGP Item Suite\" 12 was released, but is not held" }));
    QVERIFY(Acquire("AEGP Item Suite", 11));
    QCOMPARE(sheet.host.Held("AEGP Item Suite", 11), 1);
    QCOMPARE(Release("AEGP Item Suite", 11), kSPNoError);
}

void TestBasicSuite::otherVersionsAndNamesAreRefused_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("version");
    QTest::newRow("an older version") << QByteArray("AEGP Layer Suite") << 9;
    QTest::newRow("a newer version") << QByteArray("AEGP Layer Suite") << 11;
    QTest::newRow("another suite's version") << QByteArray("AEGP Layer Suite") << 7;
    QTest::newRow("case counts") << QByteArray("AEGP layer suite") << 10;
    QTest::newRow("the beginning of a name") << QByteArray("AEGP Layer") << 10;
    QTest::newRow("more than a name") << QByteArray("AEGP Layer Suite ") << 10;
    QTest::newRow("no name") << QByteArray("") << 10;
    QTest::newRow("the basic suite itself") << QByteArray("SP Basic Suite") << 4;
    QTest::newRow("a negative version") << QByteArray("AEGP Layer Suite") << -10;
}

void TestBasicSuite::otherVersionsAndNamesAreRefused()
{
    QFETCH(QByteArray, name);
    QFETCH(int, version);
    SheetFixture sheet;
    const void *table = &sheet;
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(sheet.host.BasicSuite()->AcquireSuite(name.constData(), version, &table),
            kSPSuiteNotFound);
    }
    QCOMPARE(table, static_cast<const void *>(&sheet)); // left alone
    QCOMPARE(
        sheet.host.RefusedSuites(), QByteArrayList{ name + ' ' + QByteArray::number(version) });
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
    QCOMPARE(sheet.host.OpenHandles(), 0);
}

void TestBasicSuite::aWithheldSuiteIsRefusedAndOthersAreNot()
{
    SheetFixture sheet;
    sheet.host.Withhold("AEGP Keyframe Suite", 4);
    QVERIFY(!Acquire("AEGP Keyframe Suite", 4));
    QVERIFY(Acquire("AEGP Keyframe Suite", 3));
    QCOMPARE(Release("AEGP Keyframe Suite", 3), kSPNoError);
    sheet.host.Faults().Clear();
    QVERIFY(Acquire("AEGP Keyframe Suite", 4));
    QCOMPARE(Release("AEGP Keyframe Suite", 4), kSPNoError);
}

void TestBasicSuite::aSuiteCanBeHandedOutAsSuccessAndNull()
{
    SheetFixture sheet;
    sheet.host.Faults().HandOutNull("AEGP Item Suite", 11);
    const void *table = &sheet;
    QCOMPARE(sheet.host.BasicSuite()->AcquireSuite("AEGP Item Suite", 11, &table), kSPNoError);
    QVERIFY(!table);
    QCOMPARE(sheet.host.OpenHandles(), 0); // nothing was had, nothing is owed
}

void TestBasicSuite::aNameOnTheStackIsReadEachTime()
{
    SheetFixture sheet;
    char name[40];
    qstrcpy(name, "AEGP Keyframe Suite");
    const void *keyframes = Acquire(name, 3);
    qstrcpy(name, "AEGP Effect Suite");
    const void *effects = Acquire(name, 3);
    QVERIFY(keyframes && effects && keyframes != effects);
    QCOMPARE(Release(name, 3), kSPNoError);
    QCOMPARE(Release("AEGP Keyframe Suite", 3), kSPNoError);
}

void TestBasicSuite::nullArgumentsAreMisuses()
{
    SheetFixture sheet;
    const void *table = nullptr;
    QCOMPARE(sheet.host.BasicSuite()->AcquireSuite(nullptr, 11, &table), kSPBadParameter);
    QCOMPARE(
        sheet.host.BasicSuite()->AcquireSuite("AEGP Item Suite", 11, nullptr), kSPBadParameter);
    QCOMPARE(sheet.host.BasicSuite()->ReleaseSuite(nullptr, 11), kSPBadParameter);
    QCOMPARE(sheet.host.TakeComplaints(),
        (QByteArrayList{ "AcquireSuite: null argument", "AcquireSuite: null argument",
            "ReleaseSuite: null argument" }));
    QCOMPARE(sheet.host.OpenHandles(), 0);
}

void TestBasicSuite::otherSlotsAnswerErrorsAndAreRecorded()
{
    SheetFixture sheet;
    const SPBasicSuite *suite = sheet.host.BasicSuite();
    void *block = nullptr;
    QCOMPARE(int(suite->IsEqual("a", "a")), 0);
    QCOMPARE(suite->AllocateBlock(8, &block), kSPBadParameter);
    QCOMPARE(suite->FreeBlock(block), kSPBadParameter);
    QCOMPARE(suite->ReallocateBlock(block, 8, &block), kSPBadParameter);
    QCOMPARE(suite->Undefined(), kSPBadParameter);
    QCOMPARE(sheet.host.TakeUnexpectedCalls(),
        (QByteArrayList{ "SP Basic Suite 4 IsEqual", "SP Basic Suite 4 AllocateBlock",
            "SP Basic Suite 4 FreeBlock", "SP Basic Suite 4 ReallocateBlock",
            "SP Basic Suite 4 Undefined" }));
}

void TestBasicSuite::withoutAHostThereAreNoSuites()
{
    SPBasicSuite *suite = nullptr;
    const AEGP_ItemSuite7 *items = nullptr;
    {
        SheetFixture sheet;
        suite = sheet.host.BasicSuite();
        items = static_cast<const AEGP_ItemSuite7 *>(Acquire("AEGP Item Suite", 11));
        QCOMPARE(Release("AEGP Item Suite", 11), kSPNoError);
    }
    const void *table = nullptr;
    AEGP_ItemH item = nullptr;
    QVERIFY(!Host::Instance());
    QCOMPARE(suite->AcquireSuite("AEGP Item Suite", 11, &table), kSPSuiteNotFound);
    QCOMPARE(suite->ReleaseSuite("AEGP Item Suite", 11), kSPSuiteNotFound);
    QCOMPARE(items->AEGP_GetActiveItem(&item), A_Err_GENERIC); // a table that was kept too long
}

void TestBasicSuite::heldSuitesAreLeftOpenAtTheEnd()
{
    ExpectAtEnd({ "left open: suite \"AEGP Item Suite\" 11" });
    SheetFixture sheet;
    QVERIFY(Acquire("AEGP Item Suite", 11));
}

VN_HOST_TEST_MAIN(TestBasicSuite)
#include "tst_basicsuite.moc"
