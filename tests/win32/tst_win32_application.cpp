#include "shell/LibraryLife.h"
#include "support/vnLog.h"
#include "testing/TestMain.h"

#include <QDir>
#include <QFile>
#include <QPalette>
#include <QProcess>
#include <QStyle>
#include <QTemporaryDir>

#include <cstdio>

#include <windows.h>

namespace {

const QEvent::Type kPosted = QEvent::Type(QEvent::User + 1);
const QEvent::Type kThrowing = QEvent::Type(QEvent::User + 2);

constexpr char kTellLog[] = "--tell-log"; // of this program itself: what a loading has to say

/// Counts the events that are posted to it.
class Receiver : public QObject
{
public:
    bool event(QEvent *event) override
    {
        if (event->type() == kPosted)
            ++count;
        if (event->type() == kPosted && isForOneUse)
            deleteLater();
        if (event->type() == kThrowing)
            throw 516; // as the host's errors are thrown
        return QObject::event(event);
    }

    int count = 0;
    bool isForOneUse = false;
};

/// A message that a host without Qt fetches, and hands to none of Qt's windows.
class Host
{
public:
    Host()
        : window(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr,
            GetModuleHandleW(nullptr), nullptr))
    { }
    ~Host() { DestroyWindow(window); }
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    bool FetchMessage() const
    {
        MSG message;
        return PostMessageW(window, WM_APP, 0, 0)
            && PeekMessageW(&message, window, WM_APP, WM_APP, PM_REMOVE);
    }

private:
    HWND window;
};

} // namespace

/// What the library does to a process that loads it, and takes back when it goes. This program plays
/// the library: nothing of it runs by itself here.
class TestWin32Application : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void aHostWithoutAnApplicationGetsOneInTheDarkPalette_data();
    void aHostWithoutAnApplicationGetsOneInTheDarkPalette();
    void eachFetchedMessageDeliversWhatQtPosted();
    void whatAnEventThrowsEndsInTheLibrary();
    void anApplicationThatTheHostDeletedIsNoneAnyMore();
    void aHostWithAnApplicationIsLeftAlone();
    void aPathThatNoBufferHoldsIsRefused_data();
    void aPathThatNoBufferHoldsIsRefused();
};

void TestWin32Application::cleanup()
{
    QVERIFY(!QCoreApplication::instance());
}

void TestWin32Application::aHostWithoutAnApplicationGetsOneInTheDarkPalette_data()
{
    QTest::addColumn<int>("round");
    QTest::newRow("loaded") << 1;
    QTest::newRow("loaded again") << 2;
}

void TestWin32Application::aHostWithoutAnApplicationGetsOneInTheDarkPalette()
{
    OnLibraryLoad();
    QVERIFY(qobject_cast<QApplication *>(QCoreApplication::instance()));
    QCOMPARE(QApplication::palette().color(QPalette::Window).name(), QStringLiteral("#585858"));
    QCOMPARE(QApplication::style()->objectName(), QStringLiteral("fusion"));
    QVERIFY(QByteArray(vnLog::Instance()->Text()).contains("\"plastique\" is not installed"));
    bool isDeleted = false;
    connect(QCoreApplication::instance(), &QObject::destroyed, [&] { isDeleted = true; });
    OnLibraryUnload();
    QVERIFY(isDeleted);
    QVERIFY(Host().FetchMessage()); // the hook is gone with it
}

void TestWin32Application::eachFetchedMessageDeliversWhatQtPosted()
{
    OnLibraryLoad();
    const Host host;
    Receiver receiver;
    for (int i = 1; i <= 3; ++i) {
        QCoreApplication::postEvent(&receiver, new QEvent(kPosted));
        QCOMPARE(receiver.count, i - 1);
        QVERIFY(host.FetchMessage());
        QCOMPARE(receiver.count, i);
    }
    auto *late = new Receiver;
    bool isDeleted = false;
    connect(late, &QObject::destroyed, [&] { isDeleted = true; });
    late->isForOneUse = true;
    QCoreApplication::postEvent(late, new QEvent(kPosted));
    QVERIFY(host.FetchMessage());
    QVERIFY(host.FetchMessage());
    QVERIFY(isDeleted);
    OnLibraryUnload();
}

void TestWin32Application::whatAnEventThrowsEndsInTheLibrary()
{
    OnLibraryLoad();
    const Host host;
    Receiver receiver;
    QCoreApplication::postEvent(&receiver, new QEvent(kThrowing));
    QCoreApplication::postEvent(&receiver, new QEvent(kPosted));
    QVERIFY(host.FetchMessage());
    QCOMPARE(receiver.count, 1); // the event behind it comes all the same
    QEvent event(kThrowing);
    QVERIFY(QCoreApplication::sendEvent(&receiver, &event));
    OnLibraryUnload();
}

void TestWin32Application::anApplicationThatTheHostDeletedIsNoneAnyMore()
{
    OnLibraryLoad();
    delete QCoreApplication::instance();
    const Host host;
    QVERIFY(host.FetchMessage());
    OnLibraryUnload();
    QVERIFY(host.FetchMessage());
}

void TestWin32Application::aHostWithAnApplicationIsLeftAlone()
{
    int argc = 0;
    QApplication application(argc, nullptr);
    const QPalette palette = QApplication::palette();
    const QStyle *style = QApplication::style();
    OnLibraryLoad();
    QCOMPARE(QCoreApplication::instance(), &application);
    QCOMPARE(QApplication::palette(), palette);
    QCOMPARE(QApplication::style(), style);
    const Host host;
    Receiver receiver;
    QCoreApplication::postEvent(&receiver, new QEvent(kPosted));
    QVERIFY(host.FetchMessage());
    QCOMPARE(receiver.count, 0); // no hook
    OnLibraryUnload();
    QCOMPARE(QCoreApplication::instance(), &application);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(receiver.count, 1);
}

void TestWin32Application::aPathThatNoBufferHoldsIsRefused_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("isRefused");
    QTest::newRow("the longest") << 255 << false;
    QTest::newRow("a character more") << 256 << true;
}

/// A copy of this program runs at a path of that length.
void TestWin32Application::aPathThatNoBufferHoldsIsRefused()
{
    QFETCH(int, length);
    QFETCH(bool, isRefused);
    int argc = 0;
    const QCoreApplication application(argc, nullptr);
    const QTemporaryDir place;
    const QString folder = place.filePath(QString(120, QLatin1Char('d'))) + QLatin1Char('/');
    QVERIFY(QDir().mkpath(folder));
    const QString path
        = folder + QString(length - 4 - folder.size(), QLatin1Char('p')) + QStringLiteral(".exe");
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), path));
    QProcess program;
    program.start(path, { QLatin1String(kTellLog) });
    QVERIFY2(program.waitForFinished(), qPrintable(program.errorString()));
    QCOMPARE(program.exitCode(), 0);
    const QByteArray log = program.readAllStandardOutput();
    for (int tries = 0; !QFile::remove(path) && tries < 50; ++tries) // it may be held for a moment
        QTest::qWait(/*ms=*/100);
    QVERIFY(log.contains("plastique")); // it is the log
    QCOMPARE(log.contains("the library's own path is of no use"), isRefused);
}

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], kTellLog) == 0) {
        OnLibraryLoad();
        std::fputs(vnLog::Instance()->Text(), stdout);
        OnLibraryUnload();
        return 0;
    }
    TestWin32Application tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_win32_application.moc"
