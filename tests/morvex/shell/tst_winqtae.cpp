#include "DockFixture.h"
#include "testhost/HostTestMain.h"
#include "testing/RepaintCounter.h"
#include "vnAE/vipLi.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QSplitter>

using testing::Container;
using testing::DockFixture;
using testing::TestPanel;

/// A panel that fills the host's container, in a real window.
class TestWinQtAE : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void theFirstPaintOfTheContainerShowsTheWidget();
    void sizingReachesTheWidgetAndTheOldProcedureAndPaintOnlyTheWidget();
    void otherEventsReachTheOldProcedureAlone();
    void thePanelFillsTheContainerHoweverTheHostResizesIt();
    void anInvalidateDuringThePaintIsAbsorbed();
    void aContainerThatIsHiddenAndUsedAgainShowsThePanel();
    void aDockThatFloatsKeepsThePanel();
    void theHostsMainCommandsAreHandedOver_data();
    void theHostsMainCommandsAreHandedOver();
    void otherKeysGoUp();
    void aHandedKeyWithoutTheSuiteDoesNothing();
    void aContainerThatGoesLeavesThePanel();
    void aPanelThatGoesLeavesTheContainer();
    void aSecondPanelInOneContainerTakesItOver();
    void whatThePanelThrowsStaysOutOfTheHost();
    void aContainerThatIsNoWindowLeavesThePanelAlone();
};

void TestWinQtAE::cleanup()
{
    GetVipLi()->BasicSuite = nullptr;
}

void TestWinQtAE::theFirstPaintOfTheContainerShowsTheWidget()
{
    DockFixture fixture;
    QVERIFY(!fixture.panel->isVisible());
    fixture.window.show();
    QVERIFY(!fixture.panel->isVisible()); // shown with the host's window, it would be too early
    QVERIFY(QTest::qWaitForWindowExposed(&fixture.window));
    QTRY_VERIFY(fixture.panel->isVisible());
    QCOMPARE(fixture.panel->shows, 1);
    QCOMPARE(fixture.panel->geometry(), fixture.container->rect());
    const QImage picture = fixture.container->grab().toImage();
    const QPoint field = fixture.panel->fields[0]->geometry().center();
    QCOMPARE(picture.pixelColor(field), fixture.panel->palette().color(QPalette::Base));
}

void TestWinQtAE::sizingReachesTheWidgetAndTheOldProcedureAndPaintOnlyTheWidget()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    fixture.container->sizings = fixture.panel->resizes = 0;
    fixture.window.resize(510, 333);
    QTRY_COMPARE(fixture.container->sizings, 1);
    QVERIFY(fixture.panel->resizes >= 1);
    QCOMPARE(fixture.panel->geometry(), fixture.container->rect());

    fixture.panel->hide(); // so that the container is to be seen, and painted
    const int resizes = fixture.panel->resizes;
    fixture.container->update();
    QTRY_VERIFY(fixture.panel->isVisible());
    QVERIFY(fixture.panel->resizes > resizes);
    QCOMPARE(fixture.container->paints, 0);
}

void TestWinQtAE::otherEventsReachTheOldProcedureAlone()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    const int resizes = fixture.panel->resizes;
    fixture.container->setFocus();
    DockFixture::Press(Qt::Key_F7);
    QCOMPARE(fixture.container->keys, QList<int>({ Qt::Key_F7 }));
    QCOMPARE(fixture.panel->resizes, resizes);
}

void TestWinQtAE::thePanelFillsTheContainerHoweverTheHostResizesIt()
{
    DockFixture fixture;
    QSplitter splitter;
    splitter.addWidget(fixture.container);
    splitter.addWidget(new QWidget);
    splitter.resize(600, 200);
    splitter.show();
    QVERIFY(QTest::qWaitForWindowExposed(&splitter));
    QTRY_VERIFY(fixture.panel->isVisible());
    for (const QList<int> &sizes :
        { QList<int>{ 50, 550 }, { 560, 40 }, { 0, 600 }, { 300, 300 } }) {
        splitter.setSizes(sizes);
        QTRY_COMPARE(fixture.panel->geometry(), fixture.container->rect());
    }
    fixture.container->setParent(&fixture.window); // or the splitter would take it along
}

void TestWinQtAE::anInvalidateDuringThePaintIsAbsorbed()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    testing::RepaintCounter counter;
    fixture.panel->hide();
    QTRY_VERIFY(fixture.panel->isVisible());
    counter.Take();
    const int resizes = fixture.panel->resizes;
    QTest::qWait(60);
    QCOMPARE(counter.Take(), 0); // nothing goes on painting
    QCOMPARE(fixture.panel->resizes, resizes);
}

void TestWinQtAE::aContainerThatIsHiddenAndUsedAgainShowsThePanel()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    fixture.container->hide();
    QVERIFY(!fixture.panel->isVisible());
    fixture.window.resize(500, 350);
    fixture.container->show();
    QTRY_VERIFY(fixture.panel->isVisible());
    QTRY_COMPARE(fixture.panel->geometry(), fixture.container->rect());
}

/// A dock that floats becomes a window of its own; the container's native window may be another one.
void TestWinQtAE::aDockThatFloatsKeepsThePanel()
{
    DockFixture fixture;
    QMainWindow main;
    QDockWidget dock;
    dock.setWidget(fixture.container);
    main.setCentralWidget(new QLineEdit);
    main.addDockWidget(Qt::BottomDockWidgetArea, &dock);
    main.resize(700, 500);
    main.show();
    QVERIFY(QTest::qWaitForWindowExposed(&main));
    for (bool floats : { true, false, true }) {
        dock.setFloating(floats);
        dock.resize(floats ? QSize(333, 222) : dock.size());
        QTRY_VERIFY(fixture.panel->isVisible());
        QTRY_COMPARE(fixture.panel->geometry(), fixture.container->rect());
        fixture.panel->fields[0]->window()->activateWindow();
        QVERIFY(DockFixture::WaitForActive(fixture.panel->window()));
        fixture.panel->fields[0]->setFocus();
        fixture.panel->fields[0]->deselect();
        DockFixture::Press(Qt::Key_5);
        fixture.panel->fields[1]->setFocus();
        DockFixture::PressTab(); // out of the panel, also where there is nothing else
        QVERIFY(!fixture.panel->fields[1]->hasFocus());
    }
    QCOMPARE(fixture.panel->fields[0]->text(), QStringLiteral("555"));
    fixture.container->setParent(&fixture.window);
}

void TestWinQtAE::theHostsMainCommandsAreHandedOver_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("command");
    QTest::newRow("Undo") << int(QKeySequence::Undo) << 16;
    QTest::newRow("Redo") << int(QKeySequence::Redo) << 2035;
    QTest::newRow("Open") << int(QKeySequence::Open) << 3;
    QTest::newRow("Save") << int(QKeySequence::Save) << 5;
}

void TestWinQtAE::theHostsMainCommandsAreHandedOver()
{
    QFETCH(int, key);
    QFETCH(int, command);
    DockFixture fixture;
    GetVipLi()->BasicSuite = fixture.host.BasicSuite();
    fixture.host.Driver().openProject = fixture.host.Driver().saveProject
        = [] { return A_Err_NONE; };
    QVERIFY(fixture.Open());
    auto *child = new QWidget(fixture.panel); // passes up what it does not want
    child->setFocusPolicy(Qt::StrongFocus);
    child->show();
    child->setFocus();
    fixture.host.GetTrace().Start();
    QTest::keySequence(fixture.window.windowHandle(), QKeySequence(QKeySequence::StandardKey(key)));
    QByteArrayList calls;
    for (const rostrum::TraceEntry &entry : fixture.host.GetTrace().Entries()) {
        if (QByteArray(entry.function) == "AEGP_DoCommand")
            calls << entry.arguments;
    }
    QCOMPARE(calls, QByteArrayList({ QByteArray::number(command) }));
    const QSet<int> passedUp(fixture.container->keys.cbegin(), fixture.container->keys.cend());
    QVERIFY(!passedUp.intersects({ Qt::Key_Z, Qt::Key_O, Qt::Key_S })); // it is used up
}

void TestWinQtAE::otherKeysGoUp()
{
    DockFixture fixture;
    GetVipLi()->BasicSuite = fixture.host.BasicSuite();
    QVERIFY(fixture.Open());
    fixture.panel->setFocus();
    fixture.host.GetTrace().Start();
    DockFixture::Press(Qt::Key_N, Qt::ControlModifier);
    DockFixture::Press(Qt::Key_Z);
    QCOMPARE(fixture.container->keys, QList<int>({ Qt::Key_Control, Qt::Key_N, Qt::Key_Z }));
    QCOMPARE(fixture.host.GetTrace().Functions(), QByteArrayList());
}

void TestWinQtAE::aHandedKeyWithoutTheSuiteDoesNothing()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    fixture.panel->setFocus();
    DockFixture::Press(Qt::Key_Z, Qt::ControlModifier); // the library has no basic suite yet
    GetVipLi()->BasicSuite = fixture.host.BasicSuite();
    fixture.host.Faults().Withhold("AEGP Command Suite", 1);
    DockFixture::Press(Qt::Key_Z, Qt::ControlModifier);
    fixture.host.Faults().Clear();
    fixture.host.FailNext("AEGP_DoCommand");
    DockFixture::Press(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(fixture.panel->isVisible());
}

/// The plug-in keeps its pointer to the panel when the host's window goes.
void TestWinQtAE::aContainerThatGoesLeavesThePanel()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    fixture.panel->fields[0]->setFocus();
    delete fixture.container;
    QVERIFY(fixture.panel);
    QVERIFY(!fixture.panel->isVisible());
    fixture.panel->OnResize();
    DockFixture::PressTab(); // the chain of the host has no hole
    QVERIFY(fixture.window.isAncestorOf(QApplication::focusWidget()));
    QApplication::processEvents();
    QVERIFY(!fixture.panel->isVisible());
}

void TestWinQtAE::aPanelThatGoesLeavesTheContainer()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    delete fixture.panel;
    fixture.window.resize(333, 444);
    fixture.container->update();
    fixture.before->setFocus();
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("container"));
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("after"));
}

void TestWinQtAE::aSecondPanelInOneContainerTakesItOver()
{
    DockFixture fixture;
    AEGP_PanelFunctions1 functions{};
    TestPanel second(
        fixture.host.BasicSuite(), fixture.container->Handle(), &functions, /*count=*/1);
    fixture.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&fixture.window));
    QTRY_VERIFY(second.isVisible());
    QVERIFY(!fixture.panel->isVisible());
    fixture.container->sizings = 0;
    fixture.window.resize(500, 400);
    QTRY_COMPARE(fixture.container->sizings, 1);
    QCOMPARE(second.geometry(), fixture.container->rect());
}

namespace {

class ThrowingPanel : public TestPanel
{
public:
    using TestPanel::TestPanel;

    void OnResize() override { throw 7; }
};

} // namespace

void TestWinQtAE::whatThePanelThrowsStaysOutOfTheHost()
{
    DockFixture fixture;
    delete fixture.panel;
    ThrowingPanel panel(
        fixture.host.BasicSuite(), fixture.container->Handle(), &fixture.functions, /*count=*/1);
    fixture.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&fixture.window));
    fixture.window.resize(500, 400);
    QTRY_VERIFY(fixture.container->sizings >= 1); // the old procedure is called all the same
    QTRY_VERIFY(panel.isVisible());
}

void TestWinQtAE::aContainerThatIsNoWindowLeavesThePanelAlone()
{
    using namespace nativeWindow;
    for (const Handle handle : { Handle(nullptr), reinterpret_cast<Handle>(0x7fffff1) }) {
        QVERIFY(!GetProcedure(handle));
        SetProcedure(handle, nullptr);
        SetProperty(handle, "WinTools", this);
        QVERIFY(!GetProperty(handle, "WinTools"));
        QCOMPARE(ClientRectangle(handle).width, 0);
        QCOMPARE(WindowRectangle(handle).height, 0);
        Invalidate(handle);
        Enable(handle, /*enabled=*/false);
        BringToTop(handle);
        Activate(handle);
        SetFocus(handle);
        QWinWidget widget(handle);
        QVERIFY(widget.isWindow());
        QVERIFY(!widget.isVisible());
    }
}

VN_HOST_TEST_MAIN(TestWinQtAE)
#include "tst_winqtae.moc"
