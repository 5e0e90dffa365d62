#include "testing/TestMain.h"

#include <QProcess>
#include <QProcessEnvironment>

/// What the library does when a process loads it, and when it goes, seen in processes of their own.
class TestLibraryLife : public QObject
{
    Q_OBJECT

private slots:
    void aHostWithoutAnApplicationGetsOneAndKeepsTheLibrary();
    void aHostWithAnApplicationIsLeftAlone();
    void withoutADisplayTheLoadingDoesNotEndTheProcess_data();
    void withoutADisplayTheLoadingDoesNotEndTheProcess();
    void aProcessEndsCleanWithThePanelOpen_data();
    void aProcessEndsCleanWithThePanelOpen();
    void theHostsCheckFindsNothingWrongWithAPanel();

private:
    /// @param platform of the host's environment; null: none @return what the host said
    QByteArrayList Run(
        const char *plugin, const char *mode, const char *platform, const char *display = nullptr);
};

QByteArrayList TestLibraryLife::Run(
    const char *plugin, const char *mode, const char *platform, const char *display)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : { "QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY" })
        environment.remove(QLatin1String(name));
    if (platform)
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QLatin1String(platform));
    if (display)
        environment.insert(QStringLiteral("DISPLAY"), QLatin1String(display));
    QProcess host;
    host.setProcessEnvironment(environment);
    host.start(QStringLiteral(VN_LIBRARY_HOST), { QString::fromUtf8(plugin), QLatin1String(mode) });
    if (!host.waitForFinished())
        return { "did not end" };
    QByteArrayList lines;
    for (const QByteArray &line : host.readAllStandardOutput().split('\n')) {
        if (line.contains(": "))
            lines << line;
    }
    const QByteArray status = host.exitStatus() == QProcess::NormalExit
        ? QByteArray::number(host.exitCode())
        : QByteArray("crash");
    const QByteArray errors = host.readAllStandardError();
    lines << "status: " + status;
    if (status != "0")
        lines << errors;
    return lines;
}

void TestLibraryLife::aHostWithoutAnApplicationGetsOneAndKeepsTheLibrary()
{
    const QByteArrayList lines = Run(VN_PLUGIN, "bare", "offscreen");
    QCOMPARE(lines,
        QByteArrayList({ "application: yes", "platform: offscreen", "style: QPlastiqueStyle",
            "window color: #585858", "arguments: 0", "environment: offscreen", "library: stays",
            "application: stays", "main: ends", "application: deleted", "status: 0" }));
}

/// No palette, no style, no reference, and its application lives on when the library goes.
void TestLibraryLife::aHostWithAnApplicationIsLeftAlone()
{
    const QByteArrayList lines = Run(VN_PLUGIN, "qt", "offscreen");
    const int half = lines.indexOf("library: is gone") / 2;
    QVERIFY2(half == 6, lines.join('\n').constData());
    QCOMPARE(lines.mid(0, half), lines.mid(half, half)); // before and after the loading
    QCOMPARE(lines.mid(2 * half),
        QByteArrayList({ "library: is gone", "application: stays", "main: ends",
            "application: deleted", "application: deleted", "status: 0" })); // told twice
    QVERIFY(!lines.contains("style: QPlastiqueStyle"));
}

void TestLibraryLife::withoutADisplayTheLoadingDoesNotEndTheProcess_data()
{
    QTest::addColumn<QByteArray>("display");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("one that does not answer") << QByteArray(":4711");
}

void TestLibraryLife::withoutADisplayTheLoadingDoesNotEndTheProcess()
{
    QFETCH(QByteArray, display);
    const QByteArrayList lines
        = Run(VN_PLUGIN, "bare", nullptr, display.isEmpty() ? nullptr : display.constData());
    QVERIFY2(lines.contains("platform: offscreen"), lines.join('\n').constData());
    QVERIFY(lines.contains("environment: unset")); // as it was
    QCOMPARE(lines.last(), QByteArray("status: 0"));
}

void TestLibraryLife::aProcessEndsCleanWithThePanelOpen_data()
{
    QTest::addColumn<QByteArray>("plugin");
    QTest::addColumn<QByteArray>("platform");
    QTest::newRow("plain, off screen") << QByteArray(VN_DOCK_PLUGIN) << QByteArray("offscreen");
    QTest::newRow("plain, on a display") << QByteArray(VN_DOCK_PLUGIN) << QByteArray("xcb");
    QTest::newRow("the product's, off screen") << QByteArray(VN_PLUGIN) << QByteArray("offscreen");
    QTest::newRow("the product's, on a display") << QByteArray(VN_PLUGIN) << QByteArray("xcb");
}

/// The application is deleted at the very end of the process, with the panel still there.
void TestLibraryLife::aProcessEndsCleanWithThePanelOpen()
{
    QFETCH(QByteArray, plugin);
    QFETCH(QByteArray, platform);
    const QByteArrayList lines
        = Run(plugin.constData(), "panel", platform.constData(), qgetenv("DISPLAY").constData());
    QVERIFY2(lines.contains("panel shown: yes"), lines.join('\n').constData());
    QVERIFY(lines.contains("timer: ran"));
    QCOMPARE(lines.mid(lines.indexOf("main: ends")),
        QByteArrayList({ "main: ends", "application: deleted", "status: 0" }));
}

/// Through a life of the panel, in a host with an application and in one without.
void TestLibraryLife::theHostsCheckFindsNothingWrongWithAPanel()
{
    QProcess check;
    check.start(
        QStringLiteral(VN_ROSTRUM), { QStringLiteral("--check"), QStringLiteral(VN_DOCK_PLUGIN) });
    QVERIFY(check.waitForFinished(/*msecs=*/120000));
    const QByteArray report = check.readAllStandardOutput();
    QVERIFY2(check.exitCode() == 0, report.constData());
    QCOMPARE(report.count("\"morvex\", made, snap sizes 100 x 100, 200 x 400"), 2);
    QVERIFY(report.endsWith("nothing was found\n"));
}

VN_TEST_MAIN(TestLibraryLife)
#include "tst_librarylife.moc"
