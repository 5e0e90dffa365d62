#include "LibraryFile.h"
#include "suites/Host.h"
#include "testing/TestMain.h"

#include <QLibrary>

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
    QString failure;
    const QByteArrayList names = ExportedNames(QStringLiteral(VN_PLUGIN), &failure);
    QCOMPARE(failure, QString());
    QCOMPARE(names, QByteArrayList({ "EntryPointFunc" }));
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
