#include "shell/SuiteHandler.h"

#include "CountingHost.h"
#include "testing/TestMain.h"

#include <QFile>

#include <cstdlib>
#include <functional>
#include <new>

namespace {

int allocations = 0;

/// @return the number that was thrown, 0 when nothing was
SuiteErr ThrownBy(const std::function<void()> &work)
{
    try {
        work();
    } catch (SuiteErr err) {
        return err;
    }
    return 0;
}

constexpr int kItem11 = SuitePlace("AEGP Item Suite", 11);
constexpr int kLayer10 = SuitePlace("AEGP Layer Suite", 10);

SPErr AcquireAnyTable(const char *, std::int32_t, const void **suite)
{
    static const AEGP_ItemSuite7 table = {};
    *suite = &table;
    return kSPNoError;
}

SPErr ReleaseNothing(const char *, std::int32_t)
{
    return kSPNoError;
}

} // namespace

// The program counts what it allocates, so that a test can tell that an operation does not.
void *operator new(std::size_t size)
{
    ++allocations;
    if (void *memory = std::malloc(size ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

using Accessor = std::function<const void *(SuiteHandler &)>;
Q_DECLARE_METATYPE(Accessor)

class TestSuiteHandler : public QObject
{
    Q_OBJECT

private slots:
    void init() { countingHost::state = {}; }
    void theKnownPairsAreThePublishedListInItsOrder();
    void anAccessorGivesTheTableOfItsNameAndVersion_data();
    void anAccessorGivesTheTableOfItsNameAndVersion();
    void aHandlerThatReachesNothingAcquiresNothing();
    void openingAHandlerAndReachingASuiteAllocatesNothing();
    void aSuiteUsedTwiceIsAcquiredOnceAndReleasedOnce();
    void everyPairCanBeHadAndAllGoBackInTheFixedOrder();
    void aMissingSuiteIsThrownAs516AndTheOnesBeforeAreReleased();
    void successWithANullTableIsAFailure();
    void anErrorWithATableIsAFailure();
    void aSuiteThatWasMissingIsAskedForAgain();
    void aRowThatDoesNotExistIsThrownAs516WithoutAskingTheHost_data();
    void aRowThatDoesNotExistIsThrownAs516WithoutAskingTheHost();
    void aNullBasicSuiteIsThrownAs516BeforeAnyCall();
    void suitesAreReleasedWhileAnExceptionPasses();
    void theResultOfAReleaseIsIgnored();
    void afterReleaseAllASuiteIsAcquiredAnew();
};

void TestSuiteHandler::theKnownPairsAreThePublishedListInItsOrder()
{
    QFile file(QStringLiteral(VN_TEST_DATA "/host-abi/published-suites.csv"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    file.readLine(); // the columns' names
    QCOMPARE(kPublishedSuiteCount, 144);
    for (const PublishedSuite &suite : kPublishedSuites) {
        const QList<QByteArray> cells = file.readLine().split(',');
        QCOMPARE(QByteArray(suite.name), cells[0]);
        QCOMPARE(suite.version, cells[1].toInt());
    }
    QVERIFY(file.atEnd());
}

void TestSuiteHandler::anAccessorGivesTheTableOfItsNameAndVersion_data()
{
    QTest::addColumn<Accessor>("accessor");
    const auto row
        = [](const char *pair, const Accessor &accessor) { QTest::newRow(pair) << accessor; };
    row("AEGP Register Suite 6", [](SuiteHandler &suites) { return suites.Register6(); });
    row("AEGP Command Suite 1", [](SuiteHandler &suites) { return suites.Command1(); });
    row("AEGP Workspace Panel Suite 1",
        [](SuiteHandler &suites) { return suites.WorkspacePanel1(); });
    row("PF AE App Suite 6", [](SuiteHandler &suites) { return suites.PFApp6(); });
    row("AEGP Proj Suite 8", [](SuiteHandler &suites) { return suites.Proj8(); });
    row("AEGP Item Suite 11", [](SuiteHandler &suites) { return suites.Item11(); });
    row("AEGP Comp Suite 14", [](SuiteHandler &suites) { return suites.Comp14(); });
    row("AEGP Layer Suite 10", [](SuiteHandler &suites) { return suites.Layer10(); });
    row("AEGP Stream Suite 7", [](SuiteHandler &suites) { return suites.Stream7(); });
    row("AEGP Keyframe Suite 3", [](SuiteHandler &suites) { return suites.Keyframe3(); });
    row("AEGP Keyframe Suite 4", [](SuiteHandler &suites) { return suites.Keyframe4(); });
    row("AEGP Effect Suite 3", [](SuiteHandler &suites) { return suites.Effect3(); });
    row("AEGP Footage Suite 11", [](SuiteHandler &suites) { return suites.Footage11(); });
    row("AEGP Collection Suite 2", [](SuiteHandler &suites) { return suites.Collection2(); });
    row("AEGP Memory Suite 1", [](SuiteHandler &suites) { return suites.Memory1(); });
    row("AEGP Utility Suite 11", [](SuiteHandler &suites) { return suites.Utility11(); });
}

void TestSuiteHandler::anAccessorGivesTheTableOfItsNameAndVersion()
{
    QFETCH(Accessor, accessor);
    const QByteArray pair = QTest::currentDataTag();
    const int split = pair.lastIndexOf(' ');
    const int place = SuitePlace(pair.left(split).constData(), pair.mid(split + 1).toInt());
    QVERIFY(place >= 0);
    {
        SuiteHandler suites(&countingHost::basicSuite);
        QCOMPARE(accessor(suites), static_cast<const void *>(&countingHost::tables[place]));
    }
    QCOMPARE(
        countingHost::state.calls, QList<QByteArray>({ "acquire " + pair, "release " + pair }));
}

void TestSuiteHandler::aHandlerThatReachesNothingAcquiresNothing()
{
    {
        const SuiteHandler suites(&countingHost::basicSuite);
    }
    QCOMPARE(countingHost::state.calls, QList<QByteArray>());
}

void TestSuiteHandler::openingAHandlerAndReachingASuiteAllocatesNothing()
{
    SPBasicSuite quiet = {};
    quiet.AcquireSuite = AcquireAnyTable;
    quiet.ReleaseSuite = ReleaseNothing;
    const int before = allocations;
    bool found = false;
    {
        SuiteHandler suites(&quiet);
        found = suites.Item11() != nullptr;
    }
    const int after = allocations;
    QVERIFY(found);
    QVERIFY(before > 0); // the counter is in place
    QCOMPARE(after, before);
}

void TestSuiteHandler::aSuiteUsedTwiceIsAcquiredOnceAndReleasedOnce()
{
    {
        SuiteHandler suites(&countingHost::basicSuite);
        QCOMPARE(suites.Item11(), suites.Item11());
        QCOMPARE(suites.Suite(kItem11), static_cast<const void *>(suites.Item11()));
    }
    QCOMPARE(countingHost::state.calls,
        QList<QByteArray>({ "acquire AEGP Item Suite 11", "release AEGP Item Suite 11" }));
}

void TestSuiteHandler::everyPairCanBeHadAndAllGoBackInTheFixedOrder()
{
    QList<QByteArray> expected;
    {
        SuiteHandler suites(&countingHost::basicSuite);
        for (int place = kPublishedSuiteCount - 1; place >= 0; --place) {
            QCOMPARE(suites.Suite(place), static_cast<const void *>(&countingHost::tables[place]));
            const PublishedSuite &suite = kPublishedSuites[place];
            expected << countingHost::Call("acquire", suite.name, suite.version);
        }
    }
    for (const PublishedSuite &suite : kPublishedSuites)
        expected << countingHost::Call("release", suite.name, suite.version);
    QCOMPARE(countingHost::state.calls, expected);
}

void TestSuiteHandler::aMissingSuiteIsThrownAs516AndTheOnesBeforeAreReleased()
{
    countingHost::state.withheld = kLayer10;
    const SuiteErr thrown = ThrownBy([] {
        SuiteHandler suites(&countingHost::basicSuite);
        suites.Stream7();
        suites.Item11();
        suites.Layer10();
        countingHost::state.calls << "not reached";
    });
    QCOMPARE(thrown, 516);
    QCOMPARE(countingHost::state.calls,
        QList<QByteArray>({ "acquire AEGP Stream Suite 7", "acquire AEGP Item Suite 11",
            "acquire AEGP Layer Suite 10", "release AEGP Item Suite 11",
            "release AEGP Stream Suite 7" }));
}

void TestSuiteHandler::successWithANullTableIsAFailure()
{
    countingHost::state.empty = kItem11;
    QCOMPARE(ThrownBy([] { SuiteHandler(&countingHost::basicSuite).Item11(); }), 516);
    QCOMPARE(countingHost::state.calls, QList<QByteArray>({ "acquire AEGP Item Suite 11" }));
}

void TestSuiteHandler::anErrorWithATableIsAFailure()
{
    countingHost::state.failing = kItem11;
    QCOMPARE(ThrownBy([] { SuiteHandler(&countingHost::basicSuite).Item11(); }), 516);
    QCOMPARE(countingHost::state.calls, QList<QByteArray>({ "acquire AEGP Item Suite 11" }));
}

void TestSuiteHandler::aSuiteThatWasMissingIsAskedForAgain()
{
    SuiteHandler suites(&countingHost::basicSuite);
    countingHost::state.withheld = kItem11;
    QCOMPARE(ThrownBy([&] { suites.Item11(); }), 516);
    countingHost::state.withheld = -1;
    QVERIFY(suites.Item11());
}

void TestSuiteHandler::aRowThatDoesNotExistIsThrownAs516WithoutAskingTheHost_data()
{
    QTest::addColumn<int>("place");
    QTest::newRow("no such pair") << SuitePlace("AEGP Item Suite", 12);
    QTest::newRow("a name that goes on") << SuitePlace("AEGP Item Suites", 11);
    QTest::newRow("a name cut short") << SuitePlace("AEGP Item Suit", 11);
    QTest::newRow("behind the last") << 144;
}

void TestSuiteHandler::aRowThatDoesNotExistIsThrownAs516WithoutAskingTheHost()
{
    QFETCH(int, place);
    SuiteHandler suites(&countingHost::basicSuite);
    QCOMPARE(ThrownBy([&] { suites.Suite(place); }), 516);
    QCOMPARE(countingHost::state.calls, QList<QByteArray>());
}

void TestSuiteHandler::aNullBasicSuiteIsThrownAs516BeforeAnyCall()
{
    QCOMPARE(ThrownBy([] { const SuiteHandler suites(nullptr); }), 516);
    QCOMPARE(countingHost::state.calls, QList<QByteArray>());
}

void TestSuiteHandler::suitesAreReleasedWhileAnExceptionPasses()
{
    const SuiteErr thrown = ThrownBy([] {
        SuiteHandler suites(&countingHost::basicSuite);
        suites.Utility11();
        throw SuiteErr(77);
    });
    QCOMPARE(thrown, 77);
    QCOMPARE(countingHost::state.calls,
        QList<QByteArray>({ "acquire AEGP Utility Suite 11", "release AEGP Utility Suite 11" }));
}

void TestSuiteHandler::theResultOfAReleaseIsIgnored()
{
    countingHost::state.releaseResult = kSPAlreadyReleased;
    {
        SuiteHandler suites(&countingHost::basicSuite);
        suites.Item11();
        suites.Layer10();
    }
    QCOMPARE(countingHost::state.calls.size(), 4);
    QCOMPARE(countingHost::state.calls.last(), QByteArray("release AEGP Layer Suite 10"));
}

void TestSuiteHandler::afterReleaseAllASuiteIsAcquiredAnew()
{
    {
        SuiteHandler suites(&countingHost::basicSuite);
        suites.Item11();
        suites.ReleaseAll();
        suites.ReleaseAll();
        suites.Item11();
    }
    const QByteArray acquire("acquire AEGP Item Suite 11"), release("release AEGP Item Suite 11");
    QCOMPARE(countingHost::state.calls, QList<QByteArray>({ acquire, release, acquire, release }));
}

VN_TEST_MAIN(TestSuiteHandler)
#include "tst_suitehandler.moc"
