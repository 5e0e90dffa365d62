#include "suites/Host.h"
#include "testing/TestMain.h"

#include <QLibrary>
#include <QProcess>

/// What the plug-in's library file shows to whoever loads it.
class TestExports : public QObject
{
    Q_OBJECT

private slots:
    void theLibraryExportsItsEntryPointAndNothingElse();
    void theEntryPointIsFoundByName();
    void aHostThatLoadsTheLibraryGetsItsPanel();
};

void TestExports::theLibraryExportsItsEntryPointAndNothingElse()
{
    QProcess nm;
    nm.start(QStringLiteral("nm"),
        { QStringLiteral("-D"), QStringLiteral("--defined-only"), QStringLiteral("--format=posix"),
            QStringLiteral(VN_PLUGIN) });
    QVERIFY2(nm.waitForFinished(), qPrintable(nm.errorString()));
    QCOMPARE(nm.exitCode(), 0);
    QList<QByteArray> names;
    for (const QByteArray &line : nm.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty())
            names << line.split(' ').first();
    }
    QCOMPARE(names, QList<QByteArray>({ "EntryPointFunc" }));
}

void TestExports::theEntryPointIsFoundByName()
{
    QLibrary library(QStringLiteral(VN_PLUGIN));
    QVERIFY2(library.load(), qPrintable(library.errorString()));
    QVERIFY(library.resolve("EntryPointFunc"));
}

void TestExports::aHostThatLoadsTheLibraryGetsItsPanel()
{
    rostrum::Host host;
    QCOMPARE(host.Driver().LoadPlugin(QStringLiteral(VN_PLUGIN)), QString());
    QCOMPARE(host.Driver().Panels(), QVector<QByteArray>({ "morvex" }));
    QCOMPARE(host.Driver().CallIdle(), 10);
    QCOMPARE(host.Complaints() + host.Account(), QByteArrayList());
}

VN_TEST_MAIN(TestExports)
#include "tst_exports.moc"
