#include "DockFixture.h"
#include "shell/Assert.h"
#include "testhost/HostTestMain.h"

using testing::Container;
using testing::TestPanel;

namespace {

QByteArrayList assertions;

void NoteAssertion(const char *text, const char *file)
{
    assertions << QByteArray(text) + " in " + file;
}

/// A panel whose answers the test can set.
class AnsweringPanel : public WinQtAECallback
{
public:
    using WinQtAECallback::WinQtAECallback;

    void GetSnapSizes(A_LPoint *sizes, A_long *count) override
    {
        MayThrow();
        WinQtAECallback::GetSnapSizes(sizes, count);
    }
    void PopulateFlyout(AEGP_FlyoutMenuItem *items, A_long *count) override
    {
        MayThrow();
        items[0].cmdID = 30;
        *count = 1;
    }
    void DoFlyoutCommand(AEGP_FlyoutMenuCmdID command) override
    {
        MayThrow();
        commands << command;
    }
    void OnResize() override { }

    bool throws = false;
    QList<int> commands;

private:
    void MayThrow() const
    {
        if (throws)
            throw SuiteErr(PF_Err_BAD_CALLBACK_PARAM);
    }
};

class PlainPanel : public WinQtAECallback
{
public:
    using WinQtAECallback::WinQtAECallback;
    void OnResize() override { }
};

/// The suites that were released, in order.
QByteArrayList Released(const rostrum::Trace &trace)
{
    QByteArrayList released;
    for (const rostrum::TraceEntry &entry : trace.Entries()) {
        if (QByteArray(entry.function) == "ReleaseSuite")
            released << entry.arguments;
    }
    return released;
}

} // namespace

/// The panel function table, and the suites that a panel holds.
class TestWinQtAECallback : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theTableCallsTheOperations();
    void theBaseOffersTwoSnapSizesAndNoFlyout();
    void whatAnOperationThrowsIsSwallowed();
    void aCallWithoutAPanelDoesNothing();
    void aSuiteThatCannotBeHadIsThrownOutOfTheConstructor_data();
    void aSuiteThatCannotBeHadIsThrownOutOfTheConstructor();
    void destructionReleasesTheSuitesInReverse();

private:
    Container *container = nullptr;
};

void TestWinQtAECallback::init()
{
    assertions.clear();
    SetAssertHandler(NoteAssertion);
    container = new Container;
}

void TestWinQtAECallback::cleanup()
{
    SetAssertHandler(nullptr);
    delete container;
}

void TestWinQtAECallback::theTableCallsTheOperations()
{
    rostrum::Host host;
    AEGP_PanelFunctions1 table{};
    AnsweringPanel panel(host.BasicSuite(), nullptr, container->Handle(), &table);
    QCOMPARE(panel.parentWindow(), container->Handle());
    A_LPoint sizes[kMaxSnapSizes] = {};
    A_long count = kMaxSnapSizes;
    QCOMPARE(table.GetSnapSizes(panel.PanelRefcon(), sizes, &count), A_Err_NONE);
    QCOMPARE(count, 2);
    AEGP_FlyoutMenuItem items[5] = {};
    count = 5;
    QCOMPARE(table.PopulateFlyout(panel.PanelRefcon(), items, &count), A_Err_NONE);
    QCOMPARE(count, 1);
    QCOMPARE(items[0].cmdID, 30);
    QCOMPARE(table.DoFlyoutCommand(panel.PanelRefcon(), 31), A_Err_NONE);
    QCOMPARE(panel.commands, QList<int>({ 31 }));
}

void TestWinQtAECallback::theBaseOffersTwoSnapSizesAndNoFlyout()
{
    rostrum::Host host;
    AEGP_PanelFunctions1 table{};
    PlainPanel panel(host.BasicSuite(), nullptr, container->Handle(), &table);
    A_LPoint sizes[3] = { { 1, 2 }, { 3, 4 }, { 5, 6 } };
    A_long count = 0;
    QCOMPARE(table.GetSnapSizes(panel.PanelRefcon(), sizes, &count), A_Err_NONE);
    QCOMPARE(count, 2);
    QCOMPARE(QPoint(sizes[0].x, sizes[0].y), QPoint(100, 100));
    QCOMPARE(QPoint(sizes[1].x, sizes[1].y), QPoint(200, 400));
    QCOMPARE(QPoint(sizes[2].x, sizes[2].y), QPoint(5, 6));
    AEGP_FlyoutMenuItem item = {};
    item.cmdID = 77;
    count = 1;
    QCOMPARE(table.PopulateFlyout(panel.PanelRefcon(), &item, &count), A_Err_NONE);
    QCOMPARE(count, 1);
    QCOMPARE(item.cmdID, 77);
    QCOMPARE(table.DoFlyoutCommand(panel.PanelRefcon(), 30), A_Err_NONE);
}

void TestWinQtAECallback::whatAnOperationThrowsIsSwallowed()
{
    rostrum::Host host;
    AEGP_PanelFunctions1 table{};
    AnsweringPanel panel(host.BasicSuite(), nullptr, container->Handle(), &table);
    panel.throws = true;
    A_LPoint size = { 7, 8 };
    A_long count = 1;
    AEGP_FlyoutMenuItem item = {};
    QCOMPARE(table.GetSnapSizes(panel.PanelRefcon(), &size, &count), A_Err_NONE);
    QCOMPARE(table.PopulateFlyout(panel.PanelRefcon(), &item, &count), A_Err_NONE);
    QCOMPARE(table.DoFlyoutCommand(panel.PanelRefcon(), 30), A_Err_NONE);
    QCOMPARE(size.x, 7);
    QCOMPARE(count, 1);
}

/// A panel whose construction fails behind this part has left its functions with the host.
void TestWinQtAECallback::aCallWithoutAPanelDoesNothing()
{
    rostrum::Host host;
    AEGP_PanelFunctions1 table{};
    {
        PlainPanel panel(host.BasicSuite(), nullptr, container->Handle(), &table);
    }
    A_LPoint size = { 7, 8 };
    A_long count = 1;
    AEGP_FlyoutMenuItem item = {};
    QCOMPARE(table.GetSnapSizes(nullptr, &size, &count), A_Err_NONE);
    QCOMPARE(table.PopulateFlyout(nullptr, &item, &count), A_Err_NONE);
    QCOMPARE(table.DoFlyoutCommand(nullptr, 30), A_Err_NONE);
    QCOMPARE(size.x, 7);
}

void TestWinQtAECallback::aSuiteThatCannotBeHadIsThrownOutOfTheConstructor_data()
{
    QTest::addColumn<QByteArray>("suite");
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("releases");
    QTest::newRow("application") << QByteArray("PF AE App Suite") << 6 << 0;
    QTest::newRow("panels") << QByteArray("AEGP Workspace Panel Suite") << 1 << 1;
}

void TestWinQtAECallback::aSuiteThatCannotBeHadIsThrownOutOfTheConstructor()
{
    QFETCH(QByteArray, suite);
    QFETCH(int, version);
    QFETCH(int, releases);
    rostrum::Host host;
    host.Faults().Withhold(suite, version);
    host.GetTrace().Start();
    AEGP_PanelFunctions1 table{};
    SuiteErr thrown = A_Err_NONE;
    try {
        TestPanel panel(host.BasicSuite(), container->Handle(), &table, /*count=*/1);
    } catch (SuiteErr err) {
        thrown = err;
    }
    QCOMPARE(thrown, A_Err_MISSING_SUITE);
    QCOMPARE(assertions.size(), 1);
    QVERIFY(!table.GetSnapSizes && !table.PopulateFlyout && !table.DoFlyoutCommand);
    QCOMPARE(Released(host.GetTrace()).size(), releases);
    QCOMPARE(container->findChildren<QWidget *>().size(), 0);
    container->show();
    QVERIFY(QTest::qWaitForWindowExposed(container));
    QTRY_VERIFY(container->paints >= 1); // the container is still the host's own
}

void TestWinQtAECallback::destructionReleasesTheSuitesInReverse()
{
    rostrum::Host host;
    AEGP_PanelFunctions1 table{};
    auto *panel = new PlainPanel(host.BasicSuite(), nullptr, container->Handle(), &table);
    host.GetTrace().Start();
    delete panel;
    QCOMPARE(Released(host.GetTrace()),
        QByteArrayList({ "AEGP Workspace Panel Suite 1", "PF AE App Suite 6" }));
}

VN_HOST_TEST_MAIN(TestWinQtAECallback)
#include "tst_winqtaecallback.moc"
