#include "DockedPanel.h"
#include "WindowUser.h"
#include "testing/TestMain.h"

#include <QRegularExpression>

#include <stdexcept>

using testing::Covers;
using testing::DockedPanel;
using testing::PlainHost;
using testing::TestPanel;

namespace {

/// A panel whose fitting fails.
class ThrowingPanel : public TestPanel
{
public:
    using TestPanel::TestPanel;

    void OnResize() override
    {
        ++resizes;
        throw std::runtime_error("no memory, say");
    }
};

LRESULT Ask(const PlainHost &host)
{
    return SendMessageW(host.Container(), PlainHost::kQuestion, 0, 0);
}

} // namespace

/// The container's messages, which reach the panel, the host's own procedure or both.
class TestWin32Container : public QObject
{
    Q_OBJECT

private slots:
    void theFirstPaintShowsThePanelAndNotItsConstruction();
    void theFirstPaintAsksForNoFurtherOne();
    void thePropertyLeadsToThePanel();
    void theHostsProcedureAnswersWhatIsNotThePanels();
    void withoutThePropertyTheSystemAnswers();
    void aPanelThatGoesLeavesTheContainerToTheSystem();
    void aSecondPanelInOneContainerTakesItOver();
    void aHiddenContainerThatIsUsedAgainShowsThePanel();
    void aContainerOfAnySizeIsFilled_data();
    void aContainerOfAnySizeIsFilled();
    void whatThePanelThrowsStaysOutOfTheHost();
    void aContainerThatGoesTakesThePanelsWindowAlone();
};

void TestWin32Container::theFirstPaintShowsThePanelAndNotItsConstruction()
{
    DockedPanel docked;
    const HWND window = docked.plain.Panel();
    QVERIFY(window);
    QVERIFY(docked.plain.Open()); // the container is hidden still
    QVERIFY(!docked.panel->isVisible());
    QVERIFY(docked.Open());
    QCOMPARE(docked.plain.Panel(), window);
    QCOMPARE(docked.panel->shows, 1);
    QCOMPARE(GetWindowLongA(window, GWL_STYLE), LONG(0x46000000 | WS_VISIBLE));
    QCOMPARE(GetWindowLongA(window, GWL_EXSTYLE) & (WS_EX_TOOLWINDOW | WS_EX_WINDOWEDGE), 0L);
    QVERIFY(Covers(window, docked.plain.Container()));
    QCOMPARE(docked.plain.Count(WM_PAINT), 0);
}

/// The panel invalidates the container while that is painted.
void TestWin32Container::theFirstPaintAsksForNoFurtherOne()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    docked.plain.Serve(/*milliseconds=*/100);
    const int resizes = docked.panel->resizes;
    docked.plain.Serve(/*milliseconds=*/200);
    QCOMPARE(docked.panel->resizes, resizes);
}

void TestWin32Container::thePropertyLeadsToThePanel()
{
    DockedPanel docked;
    QCOMPARE(GetPropA(docked.plain.Container(), "WinTools"),
        HANDLE(static_cast<WinQtAE *>(docked.panel.data())));
    QCOMPARE(docked.panel->parentWindow(), nativeWindow::Handle(docked.plain.Container()));
}

void TestWin32Container::theHostsProcedureAnswersWhatIsNotThePanels()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    const int resizes = docked.panel->resizes;
    QCOMPARE(Ask(docked.plain), PlainHost::kAnswer);
    QCOMPARE(docked.panel->resizes, resizes);
}

void TestWin32Container::withoutThePropertyTheSystemAnswers()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    RemovePropA(docked.plain.Container(), "WinTools");
    QCOMPARE(Ask(docked.plain), LRESULT(0));
    QCOMPARE(docked.plain.Count(PlainHost::kQuestion), 0);
}

void TestWin32Container::aPanelThatGoesLeavesTheContainerToTheSystem()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    delete docked.panel;
    QVERIFY(!docked.plain.Panel());
    QCOMPARE(Ask(docked.plain), LRESULT(0));
    InvalidateRect(docked.plain.Container(), nullptr, TRUE);
    docked.plain.Serve(/*milliseconds=*/50); // the property still leads to where it was
}

void TestWin32Container::aSecondPanelInOneContainerTakesItOver()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    AEGP_PanelFunctions1 functions{};
    TestPanel second(docked.host.BasicSuite(), docked.plain.Container(), &functions, /*count=*/1);
    const int resizes = docked.panel->resizes;
    InvalidateRect(docked.plain.Container(), nullptr, TRUE);
    SendMessageW(docked.plain.Container(), WM_PAINT, 0, 0);
    QVERIFY(second.isVisible());
    QCOMPARE(docked.panel->resizes, resizes);
    QCOMPARE(Ask(docked.plain), PlainHost::kAnswer); // and not the first panel's procedure for ever
}

void TestWin32Container::aHiddenContainerThatIsUsedAgainShowsThePanel()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    const HWND container = docked.plain.Container();
    ShowWindow(container, SW_HIDE);
    docked.plain.Serve(/*milliseconds=*/50);
    QVERIFY(!IsWindowVisible(docked.plain.Panel()));
    SetWindowPos(container, nullptr, 0, 0, 500, 300, SWP_NOMOVE | SWP_NOZORDER | SWP_SHOWWINDOW);
    QVERIFY(docked.ServeUntil([&] { return Covers(docked.plain.Panel(), container); }));
    QVERIFY(IsWindowVisible(docked.plain.Panel()));
}

void TestWin32Container::aContainerOfAnySizeIsFilled_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("narrower than the fields") << 60 << 300;
    QTest::newRow("lower than the fields") << 400 << 9;
    QTest::newRow("a pixel") << 1 << 1;
    QTest::newRow("large") << 800 << 450;
}

void TestWin32Container::aContainerOfAnySizeIsFilled()
{
    QFETCH(int, width);
    QFETCH(int, height);
    DockedPanel docked(/*fields=*/4);
    QVERIFY(docked.panel->minimumSizeHint().width() > 60);
    const HWND container = docked.plain.Container();
    SetWindowPos(container, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
    QVERIFY(docked.Open());
    QVERIFY(Covers(docked.plain.Panel(), container));
    QCOMPARE(docked.panel->size(), QSize(width, height));
    SetWindowPos(container, nullptr, 0, 0, height, width, SWP_NOMOVE | SWP_NOZORDER);
    QVERIFY(docked.ServeUntil([&] { return Covers(docked.plain.Panel(), container); }));
    QCOMPARE(docked.panel->size(), QSize(height, width));
    SetWindowPos(container, nullptr, 0, 0, height / 2 + 1, width / 2 + 1,
        SWP_NOMOVE | SWP_NOZORDER); // uncovers nothing that would have to be painted
    QVERIFY(docked.ServeUntil([&] { return Covers(docked.plain.Panel(), container); }));
}

void TestWin32Container::whatThePanelThrowsStaysOutOfTheHost()
{
    DockedPanel docked;
    delete docked.panel;
    AEGP_PanelFunctions1 functions{};
    auto *panel = new ThrowingPanel(
        docked.host.BasicSuite(), docked.plain.Container(), &functions, /*count=*/1);
    docked.panel = panel;
    QVERIFY(docked.Open()); // a paint
    QVERIFY(panel->resizes > 0);
    const int resizes = panel->resizes;
    docked.plain.ForgetCounts();
    SendMessageW(docked.plain.Container(), WM_SIZING, 0, 0);
    QCOMPARE(panel->resizes, resizes + 1);
    QCOMPARE(docked.plain.Count(WM_SIZING), 1);
}

/// The plug-in keeps its pointer: the host's next idle call goes there.
void TestWin32Container::aContainerThatGoesTakesThePanelsWindowAlone()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    docked.plain.Serve(/*milliseconds=*/100); // nothing is left to be painted
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(QStringLiteral("^External WM_DESTROY received")));
    DestroyWindow(docked.plain.Container());
    docked.plain.Serve(/*milliseconds=*/50);
    QVERIFY(docked.panel);
    QCOMPARE(docked.panel->fields.size(), 2);
}

int main(int argc, char **argv)
{
    TestWin32Container tests;
    return testing::RunDockedTests(tests, argc, argv);
}

#include "tst_win32_container.moc"
