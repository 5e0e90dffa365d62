#include "LibraryFile.h"
#include "suites/Host.h"
#include "testing/TestMain.h"

#include <QLibrary>

/// What the plug-in's library file shows to whoever loads it.
class TestExports : public QObject
{
    Q_OBJECT

private slots:
    void theLibraryExportsItsEntryPointAndTheClassOfTheBorderAndNothingElse();
    void theEntryPointIsFoundByName();
    void aHostThatLoadsTheLibraryGetsItsPanel();
};

void TestExports::theLibraryExportsItsEntryPointAndTheClassOfTheBorderAndNothingElse()
{
    QString failure;
    const QByteArrayList names = ExportedNames(QStringLiteral(VN_PLUGIN), &failure);
    QCOMPARE(failure, QString());
    const QByteArrayList expected = {
        "EntryPointFunc",
        "_ZN10QWinWidget10childEventEP11QChildEvent",
        "_ZN10QWinWidget10resetFocusEv",
        "_ZN10QWinWidget11eventFilterEP7QObjectP6QEvent",
        "_ZN10QWinWidget11nativeEventERK10QByteArrayPvPl",
        "_ZN10QWinWidget11qt_metacallEN11QMetaObject4CallEiPPv",
        "_ZN10QWinWidget11qt_metacastEPKc",
        "_ZN10QWinWidget12focusInEventEP11QFocusEvent",
        "_ZN10QWinWidget12showCenteredEv",
        "_ZN10QWinWidget16staticMetaObjectE",
        "_ZN10QWinWidget18focusNextPrevChildEb",
        "_ZN10QWinWidget4initEv",
        "_ZN10QWinWidget4showEv",
        "_ZN10QWinWidget9saveFocusEv",
        "_ZN10QWinWidgetC1EPvP7QObject6QFlagsIN2Qt10WindowTypeEE",
        "_ZN10QWinWidgetC2EPvP7QObject6QFlagsIN2Qt10WindowTypeEE",
        "_ZN10QWinWidgetD0Ev",
        "_ZN10QWinWidgetD1Ev",
        "_ZN10QWinWidgetD2Ev",
        "_ZNK10QWinWidget10metaObjectEv",
        "_ZNK10QWinWidget12parentWindowEv",
    };
    QCOMPARE(names, expected);
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
