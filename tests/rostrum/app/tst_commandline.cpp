#include "RostrumRun.h"
#include "testing/TestMain.h"

using testing::RostrumRun;
using testing::RunRostrum;
using testing::TestPlugin;

/// What can be typed behind "rostrum", and what it answers.
class TestCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void versionIsPrintedAlone();
    void helpNamesEveryCommandAndOption();
    void wordsThatAreNotUnderstoodEndWithStatusTwo_data();
    void wordsThatAreNotUnderstoodEndWithStatusTwo();
    void effectNamesSetTheLanguageOfTheInstalledEffects_data();
    void effectNamesSetTheLanguageOfTheInstalledEffects();
};

void TestCommandLine::versionIsPrintedAlone()
{
    const RostrumRun run = RunRostrum({ QStringLiteral("--version") });

    QCOMPARE(run.status, 0);
    QCOMPARE(run.out, QStringLiteral("rostrum " VN_VERSION "\n"));
    QCOMPARE(run.err, QString());
}

void TestCommandLine::helpNamesEveryCommandAndOption()
{
    const RostrumRun run = RunRostrum({ QStringLiteral("--help") });

    QCOMPARE(run.status, 0);
    QCOMPARE(run.err, QString());
    for (const char *word : { "--check PLUGIN", "--effect-names en|fr", "--time-limit SECONDS",
             "render PROJECT --out FOLDER", "--frames A-B", "--comp NAME", "--transparent",
             "--version", "--help", "rostrum [PROJECT]", "--plug-in FILE" })
        QVERIFY2(run.out.contains(QLatin1String(word)), word);
    for (const QString &line : run.out.split(QLatin1Char('\n')))
        QVERIFY2(line.size() <= 80, qPrintable(line)); // the width of a plain terminal
}

void TestCommandLine::wordsThatAreNotUnderstoodEndWithStatusTwo_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QString>("why");
    const auto row = [](const char *name, const QString &words, const char *why) {
        QTest::newRow(name) << words.split(QLatin1Char(' '), Qt::SkipEmptyParts)
                            << QString::fromLatin1(why);
    };
    const QString check = QStringLiteral("--check plug.so ");
    const char *wantsFile = "--check wants the file of one plug-in";
    const char *wantsLanguage = "--effect-names wants en or fr";
    const char *wantsSeconds = "--time-limit wants seconds, 1 to 86400";

    row("two projects", QStringLiteral("a.rostrum b.rostrum"), "one project is opened at a time");
    row("no plug-in", QStringLiteral("--plug-in"), "--plug-in wants a file");
    row("an option for a plug-in", QStringLiteral("a.rostrum --plug-in --effect-names en"),
        "--plug-in wants a file");
    row("an option that the window does not have", QStringLiteral("a.rostrum --frames 3"),
        "\"--frames\" is no option of the window");
    row("an unknown language for the window", QStringLiteral("--effect-names xx"), wantsLanguage);
    row("an unknown command", QStringLiteral("--chekc plug.so"), "\"--chekc\" is no command");
    row("an option first", QStringLiteral("--effect-names en --check plug.so"),
        "\"--check\" is no option of the window");
    row("--version and more", QStringLiteral("--version --help"), "--version stands alone");
    row("--help and more", QStringLiteral("--help me"), "--help stands alone");
    row("--check without a file", QStringLiteral("--check"), wantsFile);
    row("--check with two files", check + QStringLiteral("other.so"), wantsFile);
    row("an unknown option", check + QStringLiteral("--effects en"),
        "\"--effects\" is no option of --check");
    row("an unknown language", check + QStringLiteral("--effect-names xx"), wantsLanguage);
    row("a language in capitals", check + QStringLiteral("--effect-names EN"), wantsLanguage);
    row("no language", check + QStringLiteral("--effect-names"), wantsLanguage);
    row("the second language is bad", check + QStringLiteral("--effect-names en --effect-names x"),
        wantsLanguage);
    row("a limit of no seconds", check + QStringLiteral("--time-limit 0"), wantsSeconds);
    row("a limit below zero", check + QStringLiteral("--time-limit -3"), wantsSeconds);
    row("a limit beyond a day", check + QStringLiteral("--time-limit 86401"), wantsSeconds);
    row("a limit beyond every number", check + QStringLiteral("--time-limit 99999999999"),
        wantsSeconds);
    row("a limit that is no number", check + QStringLiteral("--time-limit soon"), wantsSeconds);
    row("no limit", check + QStringLiteral("--time-limit"), wantsSeconds);
    row("render without a project", QStringLiteral("render"), "render wants a project");
    row("an option of render for --check", QStringLiteral("render a --time-limit 3"),
        "\"--time-limit\" is no option of render");
    QTest::newRow("an empty file name")
        << QStringList{ QStringLiteral("--check"), QString() } << QString::fromLatin1(wantsFile);
    QTest::newRow("an empty project name")
        << QStringList{ QString() } << QStringLiteral("a project has a name");
    QTest::newRow("a command beyond ASCII") << QStringList{ QStringLiteral("--vérifie") }
                                            << QStringLiteral("\"--vérifie\" is no command");
}

void TestCommandLine::wordsThatAreNotUnderstoodEndWithStatusTwo()
{
    QFETCH(QStringList, words);
    QFETCH(QString, why);

    const RostrumRun run = RunRostrum(words);

    QCOMPARE(run.status, 2);
    QCOMPARE(run.out, QString());
    QCOMPARE(run.err, QStringLiteral("rostrum: %1; see rostrum --help\n").arg(why));
}

void TestCommandLine::effectNamesSetTheLanguageOfTheInstalledEffects_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("blur");
    const QString option = QStringLiteral("--effect-names");
    const QString english = QStringLiteral("en");
    const QString french = QStringLiteral("fr");

    QTest::newRow("not told: French") << QStringList() << QStringLiteral("Flou gaussien");
    QTest::newRow("fr") << QStringList{ option, french } << QStringLiteral("Flou gaussien");
    QTest::newRow("en") << QStringList{ option, english } << QStringLiteral("Gaussian Blur");
    QTest::newRow("twice: the last one counts")
        << QStringList{ option, french, option, english } << QStringLiteral("Gaussian Blur");
}

void TestCommandLine::effectNamesSetTheLanguageOfTheInstalledEffects()
{
    QFETCH(QStringList, options);
    QFETCH(QString, blur);

    const RostrumRun run = RunRostrum(QStringList{ QStringLiteral("--check") } + options
        + QStringList{ TestPlugin(QStringLiteral("names_effects")) });

    QCOMPARE(run.status, 0);
    for (const int walk : { 0, 1 })
        QCOMPARE(run.PluginLines(walk).value(0), QStringLiteral("effect \"%1\"").arg(blur));
}

VN_TEST_MAIN(TestCommandLine)
#include "tst_commandline.moc"
