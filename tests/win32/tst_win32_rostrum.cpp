#include "WindowUser.h"
#include "testing/TestMain.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <functional>

#include <windows.h>

using testing::Click;
using testing::Covers;
using testing::PressKey;

namespace {

constexpr int kPatience = 60000; // ms; the program starts, and the machine may have much to do
const QString kSavedTitle = QStringLiteral("puddles.rostrum - Rostrum");
const QString kChangedTitle = QStringLiteral("puddles.rostrum* - Rostrum");
constexpr LONG kChildStyle = 0x46000000; // child, clips its siblings and its children

QString TitleOf(HWND window)
{
    wchar_t title[200];
    const int length = GetWindowTextW(window, title, 200);
    return QString::fromWCharArray(title, length);
}

/// The first of a program's visible windows that is wanted; null when there is none.
HWND FindVisible(const QProcess &program, const std::function<bool(HWND)> &isWanted)
{
    struct Search
    {
        const DWORD process;
        const std::function<bool(HWND)> &isWanted;
        HWND found;
    } search{ static_cast<DWORD>(program.processId()), isWanted, nullptr };
    EnumWindows(
        [](HWND window, LPARAM place) -> BOOL {
            auto *search = reinterpret_cast<Search *>(place);
            DWORD process = 0;
            GetWindowThreadProcessId(window, &process);
            if (process == search->process && IsWindowVisible(window) && search->isWanted(window))
                search->found = window;
            return search->found == nullptr;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

/// The window that the program has lent to the panel; null when it has not yet.
HWND ContainerIn(HWND window)
{
    HWND found = nullptr;
    EnumChildWindows(
        window,
        [](HWND child, LPARAM place) -> BOOL {
            const bool isContainer = GetPropA(child, "WinTools") != nullptr;
            if (isContainer)
                *reinterpret_cast<HWND *>(place) = child;
            return !isContainer;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

QByteArray Content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void CopyFolder(const QString &from, const QString &to)
{
    QVERIFY(QDir().mkpath(to));
    for (const QFileInfo &entry :
        QDir(from).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        const QString target = to + QLatin1Char('/') + entry.fileName();
        if (entry.isDir())
            CopyFolder(entry.filePath(), target);
        else
            QVERIFY(QFile::copy(entry.filePath(), target));
    }
}

} // namespace

/// The shipped program with the shipped library in its window. Each has a Qt of its own, and this test
/// sees of both what the window system knows.
class TestWin32Rostrum : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void thePanelIsDockedTypedInSavedAndClosed();

private:
    /// By the program's own menu.
    void OpenPanel();

    QTemporaryDir place;
    QString project;
    const QString layoutFile
        = QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
              .filePath(QStringLiteral("rostrum/rostrum.ini"));
    QByteArray keptLayout; // the user's own
    QProcess program;
    HWND window = nullptr;
    HWND container = nullptr;
};

void TestWin32Rostrum::init()
{
    const QString folder = place.filePath(QStringLiteral("été à l'atelier"));
    CopyFolder(QStringLiteral(VN_SAMPLE), folder);
    project = folder + QStringLiteral("/puddles.rostrum");
    keptLayout = Content(layoutFile);
    QFile::remove(layoutFile); // unchecked: there may be none
    program.setProcessChannelMode(QProcess::ForwardedChannels);
    program.start(QStringLiteral(VN_ROSTRUM), { project }); // it finds the library beside itself
    QVERIFY(program.waitForStarted());
    const auto hasProject = [](HWND window) { return TitleOf(window) == kSavedTitle; };
    QTRY_VERIFY_WITH_TIMEOUT((window = FindVisible(program, hasProject)), kPatience);
    SetForegroundWindow(window);
    QTRY_COMPARE_WITH_TIMEOUT(GetForegroundWindow(), window, kPatience);
}

void TestWin32Rostrum::cleanup()
{
    if (program.state() != QProcess::NotRunning) {
        program.kill();
        program.waitForFinished();
    }
    QFile layout(layoutFile);
    if (keptLayout.isEmpty())
        layout.remove();
    else
        QVERIFY(layout.open(QIODevice::WriteOnly) && layout.write(keptLayout) > 0);
}

/// The keys of a person who looks what has come of each; a program that is still starting drops some.
void TestWin32Rostrum::OpenPanel()
{
    const auto isMenu = [this](HWND other) { return other != window; };
    for (int tries = 0; !ContainerIn(window) && tries < 10; ++tries) {
        PressKey('W', VK_MENU);
        if (!QTest::qWaitFor([&] { return FindVisible(program, isMenu) != nullptr; }))
            continue;
        PressKey(VK_UP); // from the first entry to the last: the panels are the last ones
        PressKey(VK_RETURN);
        if (!QTest::qWaitFor([this] { return ContainerIn(window) != nullptr; }))
            PressKey(VK_ESCAPE);
    }
    container = ContainerIn(window);
    QVERIFY(container);
}

void TestWin32Rostrum::thePanelIsDockedTypedInSavedAndClosed()
{
    OpenPanel();
    if (!container)
        return;
    QTRY_VERIFY_WITH_TIMEOUT(IsWindowVisible(GetWindow(container, GW_CHILD)), kPatience);
    const HWND panel = GetWindow(container, GW_CHILD);
    QCOMPARE(GetWindowLongA(panel, GWL_STYLE), LONG(kChildStyle | WS_VISIBLE));
    QTRY_VERIFY_WITH_TIMEOUT(Covers(panel, container), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(testing::ColorsOf(testing::Shown(container)) > 20, kPatience);

    const QByteArray before = Content(project);
    RECT area = {};
    GetClientRect(container, &area);
    Click(container, 45, area.bottom - 60); // a frame of the first column
    QTest::qWait(500); // as a person looks before typing
    PressKey('5');
    PressKey(VK_RETURN);
    QTRY_COMPARE_WITH_TIMEOUT(TitleOf(window), kChangedTitle, kPatience);
    PressKey('S', VK_CONTROL); // in the panel, which hands it to the program
    QTRY_COMPARE_WITH_TIMEOUT(TitleOf(window), kSavedTitle, kPatience);
    QVERIFY(Content(project) != before);

    QVERIFY(testing::Shown(window).save(
        QDir::current().absoluteFilePath(QStringLiteral("win32_rostrum.png")))); // to be looked at
    PostMessageW(window, WM_CLOSE, 0, 0);
    QVERIFY(program.waitForFinished(kPatience));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    TestWin32Rostrum tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_win32_rostrum.moc"
