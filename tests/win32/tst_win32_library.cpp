#include "testing/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <windows.h>

namespace {

/// A library loaded by its path in wide text, as a host may.
class Loaded
{
public:
    explicit Loaded(const QString &path)
        : module(LoadLibraryW(QDir::toNativeSeparators(path).toStdWString().c_str()))
    { }

    HMODULE Module() const { return module; }
    bool HasEntryPoint() const { return GetProcAddress(module, "EntryPointFunc") != nullptr; }
    /// Gives back one reference.
    void GiveBack() const { FreeLibrary(module); }

private:
    HMODULE module;
};

/// A hook that the library left behind would be called here.
bool FetchesMessages()
{
    MSG message;
    return PostThreadMessageW(GetCurrentThreadId(), WM_APP, 0, 0)
        && PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE);
}

bool IsInProcess(const wchar_t *name)
{
    return GetModuleHandleW(name) != nullptr;
}

} // namespace

/// The library's life in a process without any Qt of its own.
class TestWin32Library : public QObject
{
    Q_OBJECT

private slots:
    void theLibraryHoldsOneReferenceToItselfAndGoesWithTheSecond_data();
    void theLibraryHoldsOneReferenceToItselfAndGoesWithTheSecond();
    void aPathLongerThanTheBufferHasNoExtraReference();
};

void TestWin32Library::theLibraryHoldsOneReferenceToItselfAndGoesWithTheSecond_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("plain") << QStringLiteral("plain");
    QTest::newRow("a second time") << QStringLiteral("again");
    QTest::newRow("spaces and accents") << QStringLiteral("été à l'atelier");
}

void TestWin32Library::theLibraryHoldsOneReferenceToItselfAndGoesWithTheSecond()
{
    QFETCH(QString, folder);
    const QTemporaryDir place;
    QVERIFY(QDir(place.path()).mkdir(folder));
    const QString path = place.filePath(folder + QStringLiteral("/morvex.aex"));
    QVERIFY(QFile::copy(QStringLiteral(VN_PLUGIN), path));

    const Loaded library(path);
    QVERIFY(library.Module());
    QVERIFY(library.HasEntryPoint());
    library.GiveBack();
    QVERIFY(IsInProcess(L"morvex.aex")); // the host cannot unload it while its Qt lives
    QVERIFY(FetchesMessages());
    library.GiveBack();
    QVERIFY(!IsInProcess(L"morvex.aex"));
    QVERIFY(FetchesMessages());
}

void TestWin32Library::aPathLongerThanTheBufferHasNoExtraReference()
{
    const QTemporaryDir place;
    const QString folder = place.path() + QLatin1Char('/') + QString(200, QLatin1Char('d'));
    QVERIFY(QDir().mkpath(folder));
    const QString path
        = folder + QLatin1Char('/') + QString(60, QLatin1Char('m')) + QStringLiteral(".aex");
    const QString prefixed = QStringLiteral("\\\\?\\") + QDir::toNativeSeparators(path);
    QVERIFY(QFile::copy(QStringLiteral(VN_PLUGIN), path));

    const HMODULE module = LoadLibraryW(prefixed.toStdWString().c_str());
    QVERIFY(module);
    FreeLibrary(module);
    QVERIFY(!IsInProcess(
        QFileInfo(path).fileName().toStdWString().c_str())); // the cut path names nothing
}

int main(int argc, char **argv)
{
    TestWin32Library tests; // no application object: the library makes its own each time
    return testing::RunTests(tests, argc, argv);
}

#include "tst_win32_library.moc"
