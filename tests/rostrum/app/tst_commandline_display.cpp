#include "RostrumRun.h"
#include "testing/TestMain.h"

using testing::RostrumRun;
using testing::RunRostrum;

/// The program where no display is to be had.
class TestCommandLineDisplay : public QObject
{
    Q_OBJECT

private slots:
    void withoutADisplayTheWindowIsToldNotToOpen_data();
    void withoutADisplayTheWindowIsToldNotToOpen();
};

void TestCommandLineDisplay::withoutADisplayTheWindowIsToldNotToOpen_data()
{
    QTest::addColumn<QString>("display");
    QTest::newRow("none named") << QString();
    QTest::newRow("one that is not there") << QStringLiteral(":9987");
}

void TestCommandLineDisplay::withoutADisplayTheWindowIsToldNotToOpen()
{
    QFETCH(QString, display);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : { "QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "DISPLAY" })
        environment.remove(QLatin1String(name));
    if (!display.isEmpty())
        environment.insert(QStringLiteral("DISPLAY"), display);

    const RostrumRun run = RunRostrum({}, {}, environment);

    QCOMPARE(run.status, 1);
    QVERIFY2(run.err.startsWith(QStringLiteral("rostrum: no window can be opened")),
        qPrintable(run.err));
}

VN_TEST_MAIN(TestCommandLineDisplay)

#include "tst_commandline_display.moc"
