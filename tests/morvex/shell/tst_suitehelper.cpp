#include "shell/SuiteHelper.h"

#include "CountingHost.h"
#include "testing/Platform.h"
#include "testing/TestMain.h"

#include <QProcess>

using PanelSuite = SuiteHelper<AEGP_WorkspacePanelSuite1>;

namespace {

constexpr int kPanel1 = SuitePlace("AEGP Workspace Panel Suite", 1);
const QByteArray kAcquire = "acquire AEGP Workspace Panel Suite 1";
const QByteArray kRelease = "release AEGP Workspace Panel Suite 1";
QByteArray assertedFile;

void NoteAssertion(const char *text, const char *file)
{
    countingHost::state.calls << "assert " + QByteArray(text);
    assertedFile = file;
}

/// Builds a helper and lets it go again. @return the number that was thrown, 0 when nothing was
SuiteErr ThrownByLife(const SPBasicSuite *basicSuite)
{
    try {
        const PanelSuite suite(basicSuite);
        countingHost::state.calls << "built";
    } catch (SuiteErr err) {
        countingHost::state.calls << "thrown";
        return err;
    }
    return 0;
}

} // namespace

class TestSuiteHelper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { SetAssertHandler(NoteAssertion); }
    void cleanupTestCase() { SetAssertHandler(nullptr); }
    void init()
    {
        countingHost::state = {};
        assertedFile.clear();
    }
    void aSuiteIsHeldAsLongAsItsOwnerLives();
    void theArrowGivesTheTable();
    void aMissingSuiteFailsItsAssertionBeforeItThrows13();
    void successWithANullTableIsAFailure();
    void anErrorWithATableIsAFailure();
    void aNullBasicSuiteFailsItsAssertionAndThrows13WithoutAnyCall();
    void aReleaseThatFailsIsAssertedOnAndNothingMore();
    void theAssertionsNameTheirFixedFile();
    void aFailedAssertionIsToldInOneLineAndTheProgramGoesOn();
};

void TestSuiteHelper::aSuiteIsHeldAsLongAsItsOwnerLives()
{
    QCOMPARE(ThrownByLife(&countingHost::basicSuite), 0);
    QCOMPARE(countingHost::state.calls, QList<QByteArray>({ kAcquire, "built", kRelease }));
}

void TestSuiteHelper::theArrowGivesTheTable()
{
    const PanelSuite suite(&countingHost::basicSuite);
    QCOMPARE(static_cast<const void *>(suite.operator->()),
        static_cast<const void *>(&countingHost::tables[kPanel1]));
}

void TestSuiteHelper::aMissingSuiteFailsItsAssertionBeforeItThrows13()
{
    countingHost::state.withheld = kPanel1;
    QCOMPARE(ThrownByLife(&countingHost::basicSuite), 13);
    QCOMPARE(countingHost::state.calls, QList<QByteArray>({ kAcquire, "assert false", "thrown" }));
}

void TestSuiteHelper::successWithANullTableIsAFailure()
{
    countingHost::state.empty = kPanel1;
    QCOMPARE(ThrownByLife(&countingHost::basicSuite), 13);
    QCOMPARE(countingHost::state.calls, QList<QByteArray>({ kAcquire, "assert false", "thrown" }));
}

void TestSuiteHelper::anErrorWithATableIsAFailure()
{
    countingHost::state.failing = kPanel1;
    QCOMPARE(ThrownByLife(&countingHost::basicSuite), 13);
    QCOMPARE(countingHost::state.calls, QList<QByteArray>({ kAcquire, "assert false", "thrown" }));
}

void TestSuiteHelper::aNullBasicSuiteFailsItsAssertionAndThrows13WithoutAnyCall()
{
    QCOMPARE(ThrownByLife(nullptr), 13);
    QCOMPARE(countingHost::state.calls, QList<QByteArray>({ "assert basic_suiteP", "thrown" }));
}

void TestSuiteHelper::aReleaseThatFailsIsAssertedOnAndNothingMore()
{
    countingHost::state.releaseResult = kSPAlreadyReleased;
    QCOMPARE(ThrownByLife(&countingHost::basicSuite), 0);
    QCOMPARE(countingHost::state.calls,
        QList<QByteArray>({ kAcquire, "built", kRelease, "assert !err" }));
}

void TestSuiteHelper::theAssertionsNameTheirFixedFile()
{
    const QByteArray file = R"(..\..\..\LIB\AE\AE_CS5\Headers\SuiteHelper)";
    ThrownByLife(nullptr);
    QCOMPARE(assertedFile, file);

    assertedFile.clear();
    countingHost::state.withheld = kPanel1;
    ThrownByLife(&countingHost::basicSuite);
    QCOMPARE(assertedFile, file);

    assertedFile.clear();
    countingHost::state.withheld = -1;
    countingHost::state.releaseResult = kSPAlreadyReleased;
    ThrownByLife(&countingHost::basicSuite);
    QCOMPARE(assertedFile, file);
}

void TestSuiteHelper::aFailedAssertionIsToldInOneLineAndTheProgramGoesOn()
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), { QStringLiteral("--missing-suite") });
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 13);
    QCOMPARE(child.readAllStandardError().replace("\r\n", "\n"),
        QByteArray("Assertion failed: false, "
                   R"(file ..\..\..\LIB\AE\AE_CS5\Headers\SuiteHelper)"
                   "\n"));
}

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--missing-suite") == 0) {
        testing::AnswerAssertion();
        countingHost::state.withheld = kPanel1;
        return ThrownByLife(&countingHost::basicSuite);
    }
    QApplication application(argc, argv);
    TestSuiteHelper tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_suitehelper.moc"
