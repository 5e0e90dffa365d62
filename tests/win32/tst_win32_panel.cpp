#include "PlainHost.h"
#include "WindowUser.h"
#include "testhost/HostTestMain.h"
#include "testhost/SheetFixture.h"

#include <QDir>

#include <algorithm>
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
    void theHostsMainCommandsAreHandedOver_data();
    void theHostsMainCommandsAreHandedOver();
    void theTabKeyEntersAndLeavesThePanel_data();
    void theTabKeyEntersAndLeavesThePanel();
    void aHostsMessageBoxKeepsThePanelAlive();
    void aSuiteThatIsMissingInATimerStaysInTheLibrary();
    void cleanupTestCase();

private:
    /// Clicks into the first column of the sheet, each time another cell: two clicks on one would be a
    /// double one, which opens the cell's editor.
    void ClickSheet();
    /// The same, and types an image.
    void TypeCell(WORD digit);
    bool HasKeyOf(int image) const;

    std::unique_ptr<SheetFixture> sheet;
    std::unique_ptr<PlainHost> plain;
    int clicks = 0;
    bool wasVisibleBeforeThePaint = true;
};

void TestWin32Panel::initTestCase()
{
    sheet = std::make_unique<SheetFixture>(testing::Keys{ { 0, 1 } }, kFrames);
    plain = std::make_unique<PlainHost>(sheet->host);
    QVERIFY(plain->Open());
    sheet->host.Driver().openProject = sheet->host.Driver().saveProject = [] { return A_Err_NONE; };
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

void TestWin32Panel::ClickSheet()
{
    SetFocus(plain->Before()); // so that the click brings the keyboard
    Click(plain->Container(), 50, ++clicks % 2 ? 400 : 360);
    QVERIFY(plain->ServeUntil([this] { return IsInside(GetFocus(), plain->Panel()); }));
    plain->Serve(/*milliseconds=*/200);
}

void TestWin32Panel::TypeCell(WORD digit)
{
    ClickSheet();
    PressKey(digit);
    PressKey(VK_RETURN);
}

bool TestWin32Panel::HasKeyOf(int image) const
{
    const testing::Keys keys = sheet->RemapKeys();
    return std::any_of(
        keys.cbegin(), keys.cend(), [image](const auto &key) { return key.image == image; });
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
    QVERIFY(plain->ServeUntil([this] { return HasKeyOf(8); }));
    PressKey('Z', VK_CONTROL);
    QVERIFY(plain->ServeUntil([this] { return !HasKeyOf(8); }));
}

void TestWin32Panel::theHostsMainCommandsAreHandedOver_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("Undo") << int('Z') << QByteArray("16");
    QTest::newRow("Redo") << int('Y') << QByteArray("2035");
    QTest::newRow("Open") << int('O') << QByteArray("3");
    QTest::newRow("Save") << int('S') << QByteArray("5");
}

void TestWin32Panel::theHostsMainCommandsAreHandedOver()
{
    QFETCH(int, key);
    QFETCH(QByteArray, command);
    ClickSheet();
    const auto isCommand = [](const rostrum::TraceEntry &entry) {
        return QByteArray(entry.function) == "AEGP_DoCommand";
    };
    rostrum::Trace &trace = sheet->host.GetTrace();
    trace.Start();
    PressKey(static_cast<WORD>(key), VK_CONTROL);
    QVERIFY(plain->ServeUntil([&] { return trace.Count("AEGP_DoCommand") > 0; }));
    plain->Serve(/*milliseconds=*/50);
    trace.Stop();
    QCOMPARE(trace.Count("AEGP_DoCommand"), 1);
    const auto first = std::find_if(trace.Entries().cbegin(), trace.Entries().cend(), isCommand);
    QCOMPARE(first->arguments, command);
    plain->Serve(/*milliseconds=*/300); // what it makes the panel read is read
}

void TestWin32Panel::theTabKeyEntersAndLeavesThePanel_data()
{
    QTest::addColumn<bool>("forward");
    QTest::newRow("Tab, then Shift and Tab") << true;
    QTest::newRow("Shift and Tab, then Tab") << false;
}

void TestWin32Panel::theTabKeyEntersAndLeavesThePanel()
{
    QFETCH(bool, forward);
    SetFocus(forward ? plain->Before() : plain->After());
    PressKey(VK_TAB, forward ? 0 : VK_SHIFT);
    QVERIFY(plain->ServeUntil([this] { return IsInside(GetFocus(), plain->Panel()); }));
    plain->Serve(/*milliseconds=*/100);
    QVERIFY(IsInside(GetFocus(), plain->Panel()));
    PressKey(VK_TAB, forward ? VK_SHIFT : 0);
    QVERIFY(plain->ServeUntil([this] { return GetFocus() == plain->Container(); }));
}

namespace {

struct Box
{
    SheetFixture *sheet;
    HWND owner;
    int patience = 200; // calls
    bool wasSheetRead = false;
};

Box *box = nullptr;

/// Runs inside the message box's own loop; ends the box when the panel has read the sheet.
void CALLBACK OnBoxTimer(HWND, UINT, UINT_PTR timer, DWORD)
{
    box->wasSheetRead = IsSheetRead(box->sheet->host);
    const HWND popup = GetLastActivePopup(box->owner);
    if (popup == box->owner || !(box->wasSheetRead || --box->patience == 0))
        return;
    KillTimer(nullptr, timer);
    EndDialog(popup, IDOK);
}

} // namespace

void TestWin32Panel::aHostsMessageBoxKeepsThePanelAlive()
{
    TypeCell('9');
    QVERIFY(plain->ServeUntil([this] { return HasKeyOf(9); }));
    QCOMPARE(sheet->host.Driver().RunCommand(16), A_Err_NONE);
    sheet->host.GetTrace().Start();
    Box state{ sheet.get(), plain->Window() };
    box = &state;
    SetTimer(nullptr, 0, /*ms=*/50, OnBoxTimer);
    QCOMPARE(MessageBoxW(plain->Window(), L"A box of the host", L"Plain host", MB_OK), IDOK);
    sheet->host.GetTrace().Stop();
    QVERIFY(state.wasSheetRead);
}

/// Out of a slot it would go on through the system's call of Qt, into this host's loop.
void TestWin32Panel::aSuiteThatIsMissingInATimerStaysInTheLibrary()
{
    sheet->host.Withhold("AEGP Comp Suite", 14);
    QCOMPARE(sheet->host.Driver().RunCommand(16), A_Err_NONE);
    plain->Serve(/*milliseconds=*/400);
    Click(plain->Container(), 50, 350);
    plain->Serve(/*milliseconds=*/200);
    sheet->host.Faults().Clear();
    QCOMPARE(sheet->host.Driver().RunCommand(16), A_Err_NONE);
    sheet->host.GetTrace().Start();
    QVERIFY(plain->ServeUntil([this] { return IsSheetRead(sheet->host); }));
    sheet->host.GetTrace().Stop();
}

void TestWin32Panel::cleanupTestCase()
{
    sheet->host.Driver().CallDeath();
    plain.reset();
    sheet.reset();
}

int main(int argc, char **argv)
{
    testing::CollectHostEnds();
    TestWin32Panel tests; // no application object: this host has no Qt in its windows
    return testing::RunTests(tests, argc, argv);
}

#include "tst_win32_panel.moc"
