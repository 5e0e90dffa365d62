#include "PlainHost.h"
#include "WindowLook.h"
#include "testhost/SheetFixture.h"
#include "testing/TestMain.h"

#include <QDir>

#include <memory>

using testing::Click;
using testing::ColorsOf;
using testing::Covers;
using testing::IsInside;
using testing::PlainHost;
using testing::PressKey;
using testing::SheetFixture;
using testing::Shown;

namespace {

const QByteArray kPanel = "morvex";
constexpr LONG kChildStyle = 0x46000000; // child, clips its siblings and its children
constexpr char kProperty[] = "WinTools"; // of the container: the panel's object

constexpr int kFrames = 100;

/// Since the trace was started. A timer of the panel's reads the column's every frame anew, an idle call
/// reads none.
bool IsSheetRead(rostrum::Host &host)
{
    return host.GetTrace().Count("AEGP_GetLayerStreamValue") >= kFrames;
}

} // namespace

/// The product's library docked in a host that knows no Qt. The library stays in the process for good,
/// so that one host and one panel serve all tests.
class TestWin32Panel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void thePanelIsAChildOfTheContainerAndOfNoOtherStyle();
    void theFirstPaintShowsThePanel();
    void thePanelPaintsItself();
    void theContainerHasAnotherProcedureAndItsProperty();
    void aPaintReachesThePanelOnly();
    void aSizingReachesThePanelAndTheHost();
    void aCommandReachesTheHost();
    void aResizedContainerIsFilledAtItsNextPaint();
    void aTypedCellBecomesAKey();
    void theHostsUndoIsSeenByATimerWithNoQtLoop();
    void thePanelHandsUndoToTheHost();
    void aHostsMessageBoxKeepsThePanelAlive();
    void cleanupTestCase();

private:
    /// Clicks into the first column of the sheet and types an image.
    void TypeCell(WORD digit);

    std::unique_ptr<SheetFixture> sheet;
    std::unique_ptr<PlainHost> plain;
    bool wasVisibleBeforeThePaint = true;
};

void TestWin32Panel::initTestCase()
{
    sheet = std::make_unique<SheetFixture>(testing::Keys{ { 0, 1 } }, kFrames);
    plain = std::make_unique<PlainHost>(sheet->host);
    QVERIFY(plain->Open());
    QCOMPARE(sheet->host.Driver().LoadPlugin(QStringLiteral(VN_PLUGIN)), QString());
    QCOMPARE(sheet->host.Driver().TogglePanel(kPanel), A_Err_NONE);
    QVERIFY(plain->Panel());
    wasVisibleBeforeThePaint = IsWindowVisible(plain->Panel()) != 0;
    QVERIFY(plain->ServeUntil([this] { return IsWindowVisible(plain->Panel()) != 0; }));
    plain->Serve(/*milliseconds=*/300); // the sheet is read at an idle call
}

void TestWin32Panel::thePanelIsAChildOfTheContainerAndOfNoOtherStyle()
{
    QCOMPARE(GetParent(plain->Panel()), plain->Container());
    QCOMPARE(GetWindowLongA(plain->Panel(), GWL_STYLE) & ~WS_VISIBLE, kChildStyle);
}

void TestWin32Panel::theFirstPaintShowsThePanel()
{
    QVERIFY(!wasVisibleBeforeThePaint);
    QVERIFY(Covers(plain->Panel(), plain->Container()));
}

void TestWin32Panel::thePanelPaintsItself()
{
    const QImage shown = Shown(plain->Container());
    const QString picture = QDir::current().absoluteFilePath(QStringLiteral("win32_panel.png"));
    QVERIFY(shown.save(picture)); // to be looked at
    QVERIFY2(ColorsOf(shown) > 20, qPrintable(picture));
}

void TestWin32Panel::theContainerHasAnotherProcedureAndItsProperty()
{
    QVERIFY(GetPropA(plain->Container(), kProperty));
    QVERIFY(reinterpret_cast<WNDPROC>(GetWindowLongPtrA(plain->Container(), GWLP_WNDPROC))
        != plain->OwnProcedure());
}

void TestWin32Panel::aPaintReachesThePanelOnly()
{
    plain->ForgetCounts();
    InvalidateRect(plain->Container(), nullptr, TRUE);
    plain->Serve(/*milliseconds=*/100);
    QCOMPARE(plain->Count(WM_PAINT), 0);
}

void TestWin32Panel::aSizingReachesThePanelAndTheHost()
{
    plain->ForgetCounts();
    const HWND container = plain->Container();
    RECT place = {};
    GetWindowRect(container, &place);
    // Without a redraw no paint follows, which would fit the panel too.
    SetWindowPos(container, nullptr, 0, 0, 700, 420,
        SWP_NOMOVE | SWP_NOZORDER | SWP_NOREDRAW | SWP_NOACTIVATE);
    SendMessageW(container, WM_SIZING, WMSZ_RIGHT, reinterpret_cast<LPARAM>(&place));
    QVERIFY(Covers(plain->Panel(), container));
    QCOMPARE(plain->Count(WM_SIZING), 1);
}

void TestWin32Panel::aCommandReachesTheHost()
{
    plain->ForgetCounts();
    SendMessageW(plain->Container(), WM_COMMAND, 77, 0);
    QCOMPARE(plain->Count(WM_COMMAND), 1);
}

void TestWin32Panel::aResizedContainerIsFilledAtItsNextPaint()
{
    SetWindowPos(plain->Container(), nullptr, 0, 0, 861, 500, SWP_NOMOVE | SWP_NOZORDER);
    InvalidateRect(plain->Container(), nullptr, TRUE);
    QVERIFY(plain->ServeUntil([this] { return Covers(plain->Panel(), plain->Container()); }));
}

void TestWin32Panel::TypeCell(WORD digit)
{
    Click(plain->Container(), 50, 400);
    QVERIFY(plain->ServeUntil([this] { return IsInside(GetFocus(), plain->Panel()); }));
    plain->Serve(/*milliseconds=*/200);
    PressKey(digit);
    PressKey(VK_RETURN);
}

void TestWin32Panel::aTypedCellBecomesAKey()
{
    TypeCell('7');
    QVERIFY(plain->ServeUntil([this] { return sheet->RemapKeys().size() == 3; }));
    const testing::Keys keys = sheet->RemapKeys();
    const qint32 frame = keys[1].frame;
    QCOMPARE(keys, testing::Keys({ { 0, 1 }, { frame, 7 }, { frame + 1, 1 } }));
    QCOMPARE(sheet->UndoNames(), QVector<QByteArray>({ "morvex:EditCell" }));
}

void TestWin32Panel::theHostsUndoIsSeenByATimerWithNoQtLoop()
{
    const QImage before = Shown(plain->Container());
    QCOMPARE(sheet->host.Driver().RunCommand(16), A_Err_NONE);
    QCOMPARE(sheet->RemapKeys(), testing::Keys({ { 0, 1 } }));
    sheet->host.GetTrace().Start();
    QVERIFY(plain->ServeUntil([this] { return IsSheetRead(sheet->host); }));
    sheet->host.GetTrace().Stop();
    QVERIFY(plain->ServeUntil([&] { return Shown(plain->Container()) != before; }));
}

void TestWin32Panel::thePanelHandsUndoToTheHost()
{
    TypeCell('8');
    QVERIFY(plain->ServeUntil([this] { return sheet->RemapKeys().size() == 3; }));
    PressKey('Z', VK_CONTROL);
    QVERIFY(plain->ServeUntil([this] { return sheet->RemapKeys().size() == 1; }));
}

namespace {

SheetFixture *boxSheet = nullptr;
bool wasSheetRead = false;

/// Runs inside the message box's own loop, some time after the undo; then ends the box.
void CALLBACK OnBoxTimer(HWND, UINT, UINT_PTR timer, DWORD)
{
    KillTimer(nullptr, timer);
    wasSheetRead = IsSheetRead(boxSheet->host);
    EndDialog(GetForegroundWindow(), IDOK); // the box has it
}

} // namespace

void TestWin32Panel::aHostsMessageBoxKeepsThePanelAlive()
{
    boxSheet = sheet.get();
    TypeCell('9');
    QVERIFY(plain->ServeUntil([this] { return sheet->RemapKeys().size() == 3; }));
    QCOMPARE(sheet->host.Driver().RunCommand(16), A_Err_NONE);
    sheet->host.GetTrace().Start();
    SetTimer(nullptr, 0, /*ms=*/1000, OnBoxTimer);
    QCOMPARE(MessageBoxW(plain->Window(), L"A box of the host", L"Plain host", MB_OK), IDOK);
    sheet->host.GetTrace().Stop();
    QVERIFY(wasSheetRead);
}

void TestWin32Panel::cleanupTestCase()
{
    sheet->host.Driver().CallDeath();
    plain.reset();
}

int main(int argc, char **argv)
{
    TestWin32Panel tests; // no application object: this host has no Qt in its windows
    return testing::RunTests(tests, argc, argv);
}

#include "tst_win32_panel.moc"
