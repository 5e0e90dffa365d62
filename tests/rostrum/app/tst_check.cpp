#include "RostrumRun.h"
#include "testing/TestMain.h"

#include <QRegularExpression>
#include <QTemporaryDir>

using testing::RostrumRun;
using testing::RunRostrum;
using testing::TestPlugin;

namespace {

RostrumRun Check(const QString &plugin, const QString &folder = {})
{
    return RunRostrum({ QStringLiteral("--check"), plugin }, folder);
}

const QStringList kNone{ QStringLiteral("none") };

} // namespace

/// rostrum --check over plug-ins that live through the walk, well or badly.
class TestCheck : public QObject
{
    Q_OBJECT

private slots:
    void aWellBehavedPluginPasses();
    void bothWalksAreReportedInOrder();
    void hooksMenuItemsAndPanelsAreListed();
    void callsAreCountedBySuiteAndFunction();
    void withoutAnApplicationObjectNoPanelIsMade();
    void whatThePluginWritesIsMarkedAsItsOwn();
    void nothingIsWrittenBesideTheReport();
    void whatIsGivenBackLateIsNoFinding();
    void aMisdeedIsToldWithItsStep_data();
    void aMisdeedIsToldWithItsStep();
    void thePathMayHoldSpacesAndAccents_data();
    void thePathMayHoldSpacesAndAccents();
    void aNameAloneIsAFileHereAndNoSystemLibrary();
    void ourOwnPluginPasses_data();
    void ourOwnPluginPasses();
};

void TestCheck::aWellBehavedPluginPasses()
{
    const RostrumRun run = Check(TestPlugin(QStringLiteral("well_behaved")));

    QCOMPARE(run.status, 0);
    for (const int walk : { 0, 1 }) {
        QCOMPARE(run.Section(walk, QStringLiteral("findings")), kNone);
        QCOMPARE(run.Section(walk, QStringLiteral("held by rule")), kNone);
    }
    QVERIFY(run.out.endsWith(QLatin1String("\nnothing was found\n")));
}

void TestCheck::bothWalksAreReportedInOrder()
{
    const QString plugin = TestPlugin(QStringLiteral("gives_back_late"));
    QStringList titles;

    for (const QString &line : Check(plugin).out.split(QLatin1Char('\n'))) {
        if (!line.startsWith(QLatin1String("    ")))
            titles << line;
    }

    const QStringList report{ QStringLiteral("  hooks"), QStringLiteral("  menu items"),
        QStringLiteral("  panels"), QStringLiteral("  suites and functions called"),
        QStringLiteral("  held by rule"), QStringLiteral("  findings"), QString() };
    QStringList expected{ plugin, QString() };
    expected << QStringLiteral("With the host's application object") << report;
    expected << QStringLiteral("Without the host's application object") << report;
    expected << QStringLiteral("nothing was found") << QString();
    QCOMPARE(titles, expected);
}

void TestCheck::hooksMenuItemsAndPanelsAreListed()
{
    const RostrumRun run = Check(TestPlugin(QStringLiteral("well_behaved")));

    for (const int walk : { 0, 1 }) {
        QCOMPARE(run.Section(walk, QStringLiteral("hooks")),
            QStringList({ QStringLiteral("command, number 10000"), QStringLiteral("update menu"),
                QStringLiteral("idle"), QStringLiteral("death"), QStringLiteral("create panel") }));
        QCOMPARE(run.Section(walk, QStringLiteral("menu items")),
            QStringList({ QStringLiteral("\"Well behaved\" in the Window menu, command 10000") }));
    }
    QCOMPARE(run.Section(/*walk=*/0, QStringLiteral("panels")),
        QStringList({ QStringLiteral("\"well behaved\", made, snap sizes 120 x 80, 640 x 90, "
                                     "flyout \"Rename\", \"Later\"") }));
}

void TestCheck::callsAreCountedBySuiteAndFunction()
{
    const QStringList calls
        = Check(TestPlugin(QStringLiteral("well_behaved")))
              .Section(/*walk=*/0, QStringLiteral("suites and functions called"));

    // Three idle calls over the composition, six with the panel open, three over no composition; with
    // the panel open three more for each of two footage items, no item, the composition again, and
    // each of its two layers.
    QVERIFY(calls.contains(QStringLiteral("AEGP Item Suite 11, acquired 30 times")));
    QVERIFY(calls.contains(QStringLiteral("  AEGP_GetActiveItem              30")));
    QVERIFY(calls.contains(QStringLiteral("AEGP Utility Suite 11, acquired 18 times")));
    QVERIFY(calls.contains(QStringLiteral("  AEGP_EndUndoGroup               18")));
    QVERIFY(calls.contains(QStringLiteral("AEGP Register Suite 6, acquired once")));
    QStringList suites;
    for (const QString &line : calls) {
        if (!line.startsWith(QLatin1Char(' ')))
            suites << line;
    }
    QStringList sorted = suites;
    sorted.sort();
    QCOMPARE(suites, sorted);
    QCOMPARE(suites.size(), 8);
}

void TestCheck::withoutAnApplicationObjectNoPanelIsMade()
{
    const RostrumRun run = Check(TestPlugin(QStringLiteral("well_behaved")));

    QCOMPARE(run.Section(/*walk=*/1, QStringLiteral("panels")),
        QStringList({ QStringLiteral("\"well behaved\", never made") }));
    QVERIFY(
        run.Section(/*walk=*/1, QStringLiteral("suites and functions called"))
            .contains(QStringLiteral("  AEGP_ToggleVisibility            2, 2 answered an error")));
}

void TestCheck::whatThePluginWritesIsMarkedAsItsOwn()
{
    const RostrumRun run = Check(TestPlugin(QStringLiteral("well_behaved")));

    QCOMPARE(run.PluginLines(/*walk=*/0),
        QStringList({ QStringLiteral("hello from the plug-in"), QStringLiteral("flyout entry 5"),
            QStringLiteral("a last word") }));
    QCOMPARE(run.PluginLines(/*walk=*/1),
        QStringList({ QStringLiteral("hello from the plug-in"), QStringLiteral("a last word") }));
}

/// The toolkit warns on standard error where the session has no runtime folder.
void TestCheck::nothingIsWrittenBesideTheReport()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("XDG_RUNTIME_DIR"));
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));

    const RostrumRun run = RunRostrum(
        { QStringLiteral("--check"), TestPlugin(QStringLiteral("well_behaved")) }, {}, environment);

    QCOMPARE(run.err, QString());
    QCOMPARE(run.status, 0);
    QVERIFY(!run.out.contains(QRegularExpression(QStringLiteral("[\\x00-\\x09\\x0B-\\x1F]"))));
}

void TestCheck::whatIsGivenBackLateIsNoFinding()
{
    const RostrumRun run = Check(TestPlugin(QStringLiteral("gives_back_late")));

    QCOMPARE(run.status, 0);
    QCOMPARE(run.Section(/*walk=*/0, QStringLiteral("findings")), kNone);
}

void TestCheck::aMisdeedIsToldWithItsStep_data()
{
    QTest::addColumn<QString>("finding");
    const auto row = [](const char *plugin, const char *finding) {
        QTest::newRow(plugin) << QString::fromLatin1(finding)
                + QStringLiteral("; first seen during the idle calls over a composition");
    };
    // Six idle calls in each walk, three of them over a composition.
    row("leaves_stream", "left open: stream 4 of layer 6 \"check[1-8].png\", 3 times");
    row("leaves_undo_group", "rule broken: undo group \"half done\" was left open, 6 times");
    row("disposes_twice",
        "rule broken: AEGP_DisposeCollection: collection 0 was given back already, 6 times");
    row("keeps_suite", "left open: suite \"AEGP Memory Suite\" 1, 6 times");
    row("asks_unknown_suite", "no such suite: AEGP Layer Suite 99");
    row("calls_unoffered",
        "not offered by this host: AEGP Proj Suite 8 AEGP_GetNumProjects, 6 times");
    row("throws_in_hook", "rule broken: something was thrown out of an idle hook, 6 times");
}

void TestCheck::aMisdeedIsToldWithItsStep()
{
    QFETCH(QString, finding);

    const RostrumRun run = Check(TestPlugin(QString::fromLatin1(QTest::currentDataTag())));

    for (const int walk : { 0, 1 })
        QCOMPARE(run.Section(walk, QStringLiteral("findings")), QStringList({ finding }));
    QCOMPARE(run.status, 1);
    QCOMPARE(run.err, QString());
    QVERIFY(run.out.endsWith(QLatin1String("\nsomething was found\n")));
}

void TestCheck::thePathMayHoldSpacesAndAccents_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("spaces") << QStringLiteral("my plug ins/well behaved one" VN_LIBRARY_SUFFIX);
    QTest::newRow("accents") << QStringLiteral("été à l'œuvre/bien élevé" VN_LIBRARY_SUFFIX);
    QTest::newRow("beyond the Latin letters") << QStringLiteral("原画/動画" VN_LIBRARY_SUFFIX);
    QTest::newRow("what the toolkit takes for a place of a text")
        << QStringLiteral("100%1/%2 of %1" VN_LIBRARY_SUFFIX);
    QTest::newRow("another suffix") << QStringLiteral("plug/well_behaved.aex");
}

void TestCheck::thePathMayHoldSpacesAndAccents()
{
    QFETCH(QString, name);
    const QTemporaryDir folder;
    const QString path = folder.filePath(name);
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QVERIFY(QFile::copy(TestPlugin(QStringLiteral("well_behaved")), path));

    const RostrumRun run = Check(path);

    QCOMPARE(run.status, 0);
    QCOMPARE(run.out.section(QLatin1Char('\n'), 0, 0), path);
}

void TestCheck::aNameAloneIsAFileHereAndNoSystemLibrary()
{
    const QString plugin = TestPlugin(QStringLiteral("well_behaved"));

    const RostrumRun run
        = Check(QStringLiteral("well_behaved" VN_LIBRARY_SUFFIX), QFileInfo(plugin).path());

    QCOMPARE(run.status, 0);
    QCOMPARE(run.out.section(QLatin1Char('\n'), 0, 0), plugin);
}

void TestCheck::ourOwnPluginPasses_data()
{
    QTest::addColumn<QString>("language");

    QTest::newRow("French effect names") << QStringLiteral("fr");
    QTest::newRow("English effect names") << QStringLiteral("en");
}

void TestCheck::ourOwnPluginPasses()
{
    QFETCH(QString, language);

    const RostrumRun run = RunRostrum({ QStringLiteral("--check"), QStringLiteral(VN_MORVEX),
        QStringLiteral("--effect-names"), language });

    for (const int walk : { 0, 1 }) {
        QCOMPARE(run.Section(walk, QStringLiteral("findings")), kNone);
        QCOMPARE(run.Section(walk, QStringLiteral("hooks")),
            QStringList({ QStringLiteral("command, all commands"), QStringLiteral("idle"),
                QStringLiteral("update menu"), QStringLiteral("death"),
                QStringLiteral("create panel") }));
        QCOMPARE(run.Section(walk, QStringLiteral("menu items")),
            QStringList({ QStringLiteral("\"morvex\" in the Window menu, command 10000") }));
    }
    QVERIFY(run.Section(/*walk=*/0, QStringLiteral("panels"))
                .value(0)
                .startsWith(QLatin1String("\"morvex\", made")));
    QCOMPARE(run.status, 0);
}

VN_TEST_MAIN(TestCheck)
#include "tst_check.moc"
