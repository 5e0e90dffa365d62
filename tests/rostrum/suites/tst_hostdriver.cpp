#include "SuiteChecks.h"

#include "testhost/FakePlugin.h"
#include "testhost/FakeWindows.h"
#include "testing/Platform.h"

#include <stdexcept>

using namespace rostrum;
using namespace testing;

namespace {

A_Err TwoSizes(AEGP_PanelRefcon, A_LPoint *sizes, A_long *count)
{
    sizes[0] = { 100, 110 };
    sizes[1] = { 200, 400 };
    *count = 2;
    return A_Err_NONE;
}

A_Err ThreeItems(AEGP_PanelRefcon, AEGP_FlyoutMenuItem *items, A_long *count)
{
    const auto *text = reinterpret_cast<const A_u_char *>("Montrer é");
    items[0] = { 1, AEGP_FlyoutMenuMarkType_SEPARATOR, 1, 0, nullptr };
    items[1] = { 1, AEGP_FlyoutMenuMarkType_CHECKED, 1, 30, text };
    items[2] = { 2, AEGP_FlyoutMenuMarkType_NORMAL, 0, 31, text };
    *count = 3;
    return A_Err_NONE;
}

int flyoutCommand = 0;

A_Err RunFlyoutCommand(AEGP_PanelRefcon refcon, AEGP_FlyoutMenuCmdID command)
{
    flyoutCommand = refcon == FakePlugin::RefconOf<AEGP_PanelRefcon>(6) ? command : -1;
    return A_Err_NONE;
}

/// A host with a panel on show.
struct ShownPanel
{
    explicit ShownPanel(const AEGP_PanelFunctions1 &functions) : windows(sheet.host.Driver())
    {
        plugin.onCreatePanel = [&functions](AEGP_PanelFunctions1 *table) {
            *table = functions;
            return A_Err_NONE;
        };
        plugin.Enter(sheet.host);
        sheet.host.Driver().TogglePanel("fake panel");
    }

    SheetFixture sheet;
    FakeWindows windows;
    FakePlugin plugin;
};

} // namespace

class TestHostDriver : public QObject
{
    Q_OBJECT

private slots:
    void theEntryPointsAnswerIsPassedOn();
    void idleAnswersTheShortestWait_data();
    void idleAnswersTheShortestWait();
    void idleIsNotCalledFromInsideACall();
    void updateMenusDisablesItemsThatNoHookEnables();
    void deathIsCalledOnceAndNothingAfterIt();
    void anythingThrownOutOfAHookIsReported();
    void snapSizesAreReadWithinTheirLimit();
    void aCountOfSnapSizesBeyondTheRoomIsCut();
    void theFlyoutIsRead();
    void flyoutRoomThatIsNotFilledIsLeftOut();
    void aFlyoutCountBeyondTheRoomIsCut();
    void flyoutCommandsReachThePanel();
    void aPanelThatIsNotMadeHasNoFlyout();
    void aLibraryThatCannotBeLoadedIsToldByName();
    void aLibraryWithoutAnEntryPointIsToldByName();
    void twoPluginsHaveTwoIds();
};

void TestHostDriver::theEntryPointsAnswerIsPassedOn()
{
    SheetFixture sheet;
    FakePlugin plugin;
    plugin.onEntry = [] { return 42; };
    QCOMPARE(plugin.Enter(sheet.host), 42);
    QVERIFY(plugin.refconsRight); // the basic suite was the host's
    QCOMPARE(sheet.host.Driver().PluginCount(), 1);
}

void TestHostDriver::idleAnswersTheShortestWait_data()
{
    QTest::addColumn<int>("wanted");
    QTest::addColumn<int>("wait");
    QTest::newRow("shorter than a second") << 10 << 10;
    QTest::newRow("longer than a second") << 600 << 60;
    QTest::newRow("at once") << 0 << 1;
    QTest::newRow("less than nothing") << -10 << 1;
}

void TestHostDriver::idleAnswersTheShortestWait()
{
    QFETCH(int, wanted);
    QFETCH(int, wait);
    SheetFixture sheet;
    QCOMPARE(sheet.host.Driver().CallIdle(), 60); // no hook
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    plugin.onIdle = [&](A_long *maxSleep) {
        *maxSleep = wanted;
        return A_Err_NONE;
    };
    QCOMPARE(sheet.host.Driver().CallIdle(), wait);
    QCOMPARE(plugin.calls.count("idle"), 1);
}

void TestHostDriver::idleIsNotCalledFromInsideACall()
{
    SheetFixture sheet;
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    plugin.onCommand = [&](AEGP_Command, A_Boolean *) {
        sheet.host.Driver().CallIdle(); // as a nested event loop would
        return A_Err_NONE;
    };
    sheet.host.Driver().RunCommand(16);
    QCOMPARE(plugin.calls.count("idle"), 0);
    sheet.host.Driver().CallIdle();
    QCOMPARE(plugin.calls.count("idle"), 1);
}

void TestHostDriver::updateMenusDisablesItemsThatNoHookEnables()
{
    SheetFixture sheet;
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    const Suite<AEGP_CommandSuite1> commands;
    AEGP_Command command = 0;
    QCOMPARE(commands->AEGP_GetUniqueCommand(&command), A_Err_NONE);
    QCOMPARE(commands->AEGP_InsertMenuCommand(command, "x", AEGP_Menu_WINDOW, -2), A_Err_NONE);
    plugin.onUpdateMenu = [&] { return commands->AEGP_EnableCommand(command); };
    sheet.host.Driver().CallUpdateMenus(AEGP_WindType_PROJECT);
    QVERIFY(sheet.host.Driver().MenuItems().at(0).enabled);
    QCOMPARE(plugin.calls.last(), QByteArray("menu 1"));
    plugin.onUpdateMenu = nullptr;
    sheet.host.Driver().CallUpdateMenus(AEGP_WindType_NONE);
    QVERIFY(!sheet.host.Driver().MenuItems().at(0).enabled);
}

void TestHostDriver::deathIsCalledOnceAndNothingAfterIt()
{
    SheetFixture sheet;
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    sheet.host.Driver().CallDeath();
    sheet.host.Driver().CallDeath();
    sheet.host.Driver().CallIdle();
    sheet.host.Driver().CallUpdateMenus(AEGP_WindType_NONE);
    QCOMPARE(sheet.host.Driver().RunCommand(16), A_Err_GENERIC);
    QCOMPARE(plugin.calls, QByteArrayList({ "entry 17.0", "death" }));
}

void TestHostDriver::anythingThrownOutOfAHookIsReported()
{
    SheetFixture sheet;
    FakeWindows windows(sheet.host.Driver());
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    plugin.onIdle = [](A_long *) -> A_Err { throw 13; };
    plugin.onCommand = [](AEGP_Command, A_Boolean *) -> A_Err { throw std::runtime_error("x"); };
    plugin.onCreatePanel = [](AEGP_PanelFunctions1 *) -> A_Err { throw 516; };
    QCOMPARE(sheet.host.Driver().CallIdle(), 60);
    QCOMPARE(sheet.host.Driver().RunCommand(16), A_Err_NONE); // the host acts all the same
    QCOMPARE(sheet.host.Driver().TogglePanel("fake panel"), A_Err_GENERIC);
    QCOMPARE(sheet.host.TakeComplaints(),
        (QByteArrayList{ "something was thrown out of an idle hook",
            "something was thrown out of a command hook",
            "something was thrown out of a create-panel hook" }));
    sheet.host.Driver().CallIdle(); // no call is thought to be under way for good
    QCOMPARE(plugin.calls.count("idle"), 2);
    sheet.host.TakeComplaints();
}

void TestHostDriver::snapSizesAreReadWithinTheirLimit()
{
    ShownPanel panel({ TwoSizes, nullptr, nullptr });
    const QVector<A_LPoint> sizes = panel.sheet.host.Driver().PanelSnapSizes("fake panel");
    QCOMPARE(sizes.size(), 2);
    QCOMPARE(sizes[0].y, 110);
    QCOMPARE(sizes[1].x, 200);
}

void TestHostDriver::aCountOfSnapSizesBeyondTheRoomIsCut()
{
    const auto many = [](AEGP_PanelRefcon, A_LPoint *, A_long *count) {
        *count = 50;
        return A_Err_NONE;
    };
    ShownPanel panel({ many, nullptr, nullptr });
    QCOMPARE(panel.sheet.host.Driver().PanelSnapSizes("fake panel").size(), 5);
}

void TestHostDriver::theFlyoutIsRead()
{
    ShownPanel panel({ nullptr, ThreeItems, nullptr });
    const QVector<FlyoutItem> items = panel.sheet.host.Driver().PanelFlyout("fake panel");
    QCOMPARE(items.size(), 3);
    QCOMPARE(items[0].type, AEGP_FlyoutMenuMarkType_SEPARATOR);
    QCOMPARE(items[0].text, QByteArray());
    QCOMPARE(items[1].text, QByteArray("Montrer é"));
    QCOMPARE(items[1].type, AEGP_FlyoutMenuMarkType_CHECKED);
    QCOMPARE(items[1].command, 30);
    QVERIFY(items[1].enabled && !items[2].enabled);
    QCOMPARE(items[2].indent, 2);
    QVERIFY(panel.sheet.host.Driver().PanelSnapSizes("fake panel").isEmpty());
}

void TestHostDriver::flyoutRoomThatIsNotFilledIsLeftOut()
{
    const auto nothing = [](AEGP_PanelRefcon, AEGP_FlyoutMenuItem *, A_long *) {
        return A_Err_NONE; // the count stays what the room is
    };
    ShownPanel panel({ nullptr, nothing, nullptr });
    QVERIFY(panel.sheet.host.Driver().PanelFlyout("fake panel").isEmpty());
}

void TestHostDriver::aFlyoutCountBeyondTheRoomIsCut()
{
    const auto many = [](AEGP_PanelRefcon, AEGP_FlyoutMenuItem *items, A_long *count) {
        for (A_long i = 0; i < *count; ++i)
            items[i].type = AEGP_FlyoutMenuMarkType_SEPARATOR;
        *count += 1000;
        return A_Err_NONE;
    };
    ShownPanel panel({ nullptr, many, nullptr });
    QCOMPARE(panel.sheet.host.Driver().PanelFlyout("fake panel").size(), 64);
}

void TestHostDriver::flyoutCommandsReachThePanel()
{
    ShownPanel panel({ nullptr, nullptr, RunFlyoutCommand });
    QCOMPARE(panel.sheet.host.Driver().RunFlyout("fake panel", 31), A_Err_NONE);
    QCOMPARE(flyoutCommand, 31);
}

void TestHostDriver::aPanelThatIsNotMadeHasNoFlyout()
{
    SheetFixture sheet;
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    for (const QByteArray &name : { QByteArray("fake panel"), QByteArray("nobody's") }) {
        QVERIFY(sheet.host.Driver().PanelFlyout(name).isEmpty());
        QVERIFY(sheet.host.Driver().PanelSnapSizes(name).isEmpty());
        QCOMPARE(sheet.host.Driver().RunFlyout(name, 30), A_Err_PARAMETER);
    }
    QCOMPARE(sheet.host.Driver().TogglePanel("nobody's"), A_Err_PARAMETER);
}

void TestHostDriver::aLibraryThatCannotBeLoadedIsToldByName()
{
    SheetFixture sheet;
    const QString error = sheet.host.Driver().LoadPlugin(QStringLiteral("/nowhere/libnothing.so"));
    QVERIFY2(error.contains(QStringLiteral("libnothing")), qPrintable(error));
    QCOMPARE(sheet.host.Driver().PluginCount(), 0);
}

void TestHostDriver::aLibraryWithoutAnEntryPointIsToldByName()
{
    SheetFixture sheet;
    const QString error = sheet.host.Driver().LoadPlugin(testing::SystemLibrary());
    QVERIFY2(error.contains(QStringLiteral("EntryPointFunc")), qPrintable(error));
    QCOMPARE(sheet.host.Driver().PluginCount(), 0);
}

void TestHostDriver::twoPluginsHaveTwoIds()
{
    SheetFixture sheet;
    FakePlugin plugin;
    plugin.onEntry = [] { return A_Err_NONE; };
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    const AEGP_PluginID first = plugin.id;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    QVERIFY(plugin.id != first);
    QVERIFY(sheet.host.Driver().IsPlugin(first) && sheet.host.Driver().IsPlugin(plugin.id));
    QVERIFY(!sheet.host.Driver().IsPlugin(plugin.id + 1));
}

VN_HOST_TEST_MAIN(TestHostDriver)
#include "tst_hostdriver.moc"
