#include "RostrumRun.h"
#include "testing/TestMain.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

using testing::RostrumRun;
using testing::RunRostrum;
using testing::TestPlugin;

/// rostrum --check over what does not come to the end of its walk, or does not even begin it.
class TestCheckBreakdown : public QObject
{
    Q_OBJECT

private slots:
    void aWalkThatBreaksOffIsToldWithItsStep_data();
    void aWalkThatBreaksOffIsToldWithItsStep();
    void whatWasRegisteredBeforeACrashIsToldAllTheSame();
    void anEntryPointsErrorIsToldAndSoIsWhatItLeftOpen();
    void aLibraryWithoutAnEntryPointIsTold();
    void aFileThatIsNoLibraryIsTold_data();
    void aFileThatIsNoLibraryIsTold();
    void whatIsNoFileIsToldAtOnce_data();
    void whatIsNoFileIsToldAtOnce();
};

void TestCheckBreakdown::aWalkThatBreaksOffIsToldWithItsStep_data()
{
    QTest::addColumn<QString>("step");
    QTest::addColumn<QString>("end");
    const QString idle = QStringLiteral("the idle calls over a composition");
    const QString late = QStringLiteral("it was ended after 2 s in this step");

    // A sanitizer catches the signal and leaves the process with a status of its own.
    QTest::newRow("crashes_in_hook")
        << idle
        << QStringLiteral("(it crashed with the code 11|the process was left with the "
                          "status [1-9]\\d*)");
    QTest::newRow("leaves_process")
        << idle << QStringLiteral("the process was left with the status 0");
    QTest::newRow("leaves_at_end") << QStringLiteral("the end of the process")
                                   << QStringLiteral("the process was left with the status 7");
    QTest::newRow("hangs_silently") << idle << late;
    QTest::newRow("hangs_talking") << idle << late;
}

void TestCheckBreakdown::aWalkThatBreaksOffIsToldWithItsStep()
{
    QFETCH(QString, step);
    QFETCH(QString, end);

    const RostrumRun run = RunRostrum(
        { QStringLiteral("--check"), TestPlugin(QString::fromLatin1(QTest::currentDataTag())),
            QStringLiteral("--time-limit"), QStringLiteral("2") });

    QCOMPARE(run.status, 1);
    const QRegularExpression line(
        QStringLiteral("^the walk broke off during %1: %2$").arg(step, end));
    for (const int walk : { 0, 1 }) {
        const QStringList findings = run.Section(walk, QStringLiteral("findings"));
        QCOMPARE(findings.size(), 1);
        QVERIFY2(line.match(findings[0]).hasMatch(), qPrintable(findings[0]));
    }
    QVERIFY(run.out.endsWith(QLatin1String("\nsomething was found\n")));
}

void TestCheckBreakdown::whatWasRegisteredBeforeACrashIsToldAllTheSame()
{
    const RostrumRun run
        = RunRostrum({ QStringLiteral("--check"), TestPlugin(QStringLiteral("crashes_in_hook")) });

    for (const int walk : { 0, 1 })
        QCOMPARE(
            run.Section(walk, QStringLiteral("hooks")), QStringList({ QStringLiteral("idle") }));
}

void TestCheckBreakdown::anEntryPointsErrorIsToldAndSoIsWhatItLeftOpen()
{
    const QString plugin = TestPlugin(QStringLiteral("refuses_entry"));

    const RostrumRun run = RunRostrum({ QStringLiteral("--check"), plugin });

    QCOMPARE(run.status, 1);
    for (const int walk : { 0, 1 }) {
        QCOMPARE(run.Section(walk, QStringLiteral("findings")),
            QStringList({ QStringLiteral("left open: suite \"AEGP Memory Suite\" 1; first seen "
                                         "during the loading and the entry"),
                QStringLiteral("\"%1\" answered the error 4").arg(plugin) }));
    }
}

void TestCheckBreakdown::aLibraryWithoutAnEntryPointIsTold()
{
    const QString plugin = TestPlugin(QStringLiteral("no_entry"));

    const RostrumRun run = RunRostrum({ QStringLiteral("--check"), plugin });

    QCOMPARE(run.status, 1);
    for (const int walk : { 0, 1 }) {
        QCOMPARE(run.Section(walk, QStringLiteral("findings")),
            QStringList({ QStringLiteral("\"%1\" has no EntryPointFunc").arg(plugin) }));
    }
}

void TestCheckBreakdown::aFileThatIsNoLibraryIsTold_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("name");

    QTest::newRow("text") << QByteArray("not a library at all\n") << QStringLiteral("text.so");
    QTest::newRow("empty") << QByteArray() << QStringLiteral("empty.so");
    QTest::newRow("the head of a library alone") << QByteArray("\x7F"
                                                               "ELF\x02\x01\x01",
        7) << QStringLiteral("head.so");
    QTest::newRow("a name beyond ASCII") << QByteArray("rien") << QStringLiteral("éphémère.so");
}

void TestCheckBreakdown::aFileThatIsNoLibraryIsTold()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, name);
    const QTemporaryDir folder;
    QFile file(folder.filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();

    const RostrumRun run = RunRostrum({ QStringLiteral("--check"), file.fileName() });

    QCOMPARE(run.status, 1);
    const QString told
        = QStringLiteral("Cannot load library %1: ").arg(QDir::toNativeSeparators(file.fileName()));
    for (const int walk : { 0, 1 }) {
        const QStringList findings = run.Section(walk, QStringLiteral("findings"));
        QCOMPARE(findings.size(), 1);
        QVERIFY2(findings[0].startsWith(told), qPrintable(findings[0]));
    }
}

void TestCheckBreakdown::whatIsNoFileIsToldAtOnce_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("missing") << QStringLiteral("missing.so");
    QTest::newRow("missing, with spaces and accents") << QStringLiteral("n'existe pas, hélas.so");
    QTest::newRow("a folder") << QStringLiteral(".");
    QTest::newRow("a library of the system, which is not here") << QStringLiteral("libm.so.6");
}

void TestCheckBreakdown::whatIsNoFileIsToldAtOnce()
{
    QFETCH(QString, name);
    const QTemporaryDir folder;

    const RostrumRun run = RunRostrum({ QStringLiteral("--check"), name }, folder.path());

    QCOMPARE(run.status, 1);
    QCOMPARE(run.out, QString());
    QCOMPARE(run.err, QStringLiteral("rostrum: there is no file \"%1\"\n").arg(name));
}

VN_TEST_MAIN(TestCheckBreakdown)
#include "tst_check_breakdown.moc"
