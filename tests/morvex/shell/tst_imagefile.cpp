#include "ImageFile.h"
#include "shell/PropertyList.h"
#include "testing/TestMain.h"

/// The files for Windows as they are shipped: nothing else has to be installed with them.
class TestImageFile : public QObject
{
    Q_OBJECT

private slots:
    void onlyWindowsOwnLibrariesAreImported_data();
    void onlyWindowsOwnLibrariesAreImported();
    void thePropertyListIsAResource();
    void thereIsNoPropertyListOfAnotherNumberOrLanguage();
};

void TestImageFile::onlyWindowsOwnLibrariesAreImported_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("plug-in") << QStringLiteral(VN_PLUGIN);
    QTest::newRow("rostrum") << QStringLiteral(VN_ROSTRUM);
}

void TestImageFile::onlyWindowsOwnLibrariesAreImported()
{
    QFETCH(QString, path);
    // Every Windows from 7 on has them, the C runtime of the system among them.
    static const QByteArrayList windowsOwn{ "advapi32.dll", "comdlg32.dll", "d3d11.dll",
        "dwmapi.dll", "dxgi.dll", "gdi32.dll", "imm32.dll", "kernel32.dll", "mpr.dll", "msvcrt.dll",
        "netapi32.dll", "ole32.dll", "oleaut32.dll", "shell32.dll", "shlwapi.dll", "user32.dll",
        "userenv.dll", "uxtheme.dll", "version.dll", "winmm.dll", "winspool.drv", "ws2_32.dll",
        "wtsapi32.dll" };

    const ImageFile file(path);
    QVERIFY(file.IsMapped());
    const QByteArrayList imports = file.Imports();
    QVERIFY(imports.contains("kernel32.dll"));
    for (const QByteArray &import : imports)
        QVERIFY2(windowsOwn.contains(import), import.constData());
}

void TestImageFile::thePropertyListIsAResource()
{
    const ImageFile file(QStringLiteral(VN_PLUGIN));
    QVERIFY(file.IsMapped());
    QCOMPARE(file.Resource("PIPL", 16000, 1033),
        QByteArray(reinterpret_cast<const char *>(kPropertyList.data()),
            static_cast<int>(kPropertyList.size())));
}

void TestImageFile::thereIsNoPropertyListOfAnotherNumberOrLanguage()
{
    const ImageFile file(QStringLiteral(VN_PLUGIN));
    QVERIFY(file.IsMapped());
    QCOMPARE(file.Resource("PIPL", 16001, 1033), QByteArray());
    QCOMPARE(file.Resource("PIPL", 16000, 1036), QByteArray());
}

VN_TEST_MAIN(TestImageFile)
#include "tst_imagefile.moc"
