#include "SuiteChecks.h"

#include "testhost/FakePlugin.h"

using namespace rostrum;
using namespace testing;

namespace {

A_Err NoCommand(
    AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command, AEGP_HookPriority, A_Boolean, A_Boolean *)
{
    return A_Err_NONE;
}

A_Err NoIdle(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long *)
{
    return A_Err_NONE;
}

A_Err NoUpdateMenu(AEGP_GlobalRefcon, AEGP_UpdateMenuRefcon, AEGP_WindowType)
{
    return A_Err_NONE;
}

A_Err NoDeath(AEGP_GlobalRefcon, AEGP_DeathRefcon)
{
    return A_Err_NONE;
}

/// Each of the four registrations under an id.
QVector<A_Err> RegisterEach(AEGP_PluginID id)
{
    const Suite<AEGP_RegisterSuite5> suite;
    return { suite->AEGP_RegisterCommandHook(id, 1, 0, NoCommand, nullptr),
        suite->AEGP_RegisterIdleHook(id, NoIdle, nullptr),
        suite->AEGP_RegisterUpdateMenuHook(id, NoUpdateMenu, nullptr),
        suite->AEGP_RegisterDeathHook(id, NoDeath, nullptr) };
}

} // namespace

class TestRegisterSuite : public QObject
{
    Q_OBJECT

private slots:
    void hooksAreRegisteredInsideTheEntryPointAndCalledLater();
    void outsideTheEntryPointItIsAMisuse();
    void anIdThatNobodyHasIsAMisuse();
    void aHookForOneCommandSeesThatOneOnly();
    void nullHooksAreMisuses();
};

void TestRegisterSuite::hooksAreRegisteredInsideTheEntryPointAndCalledLater()
{
    SheetFixture sheet;
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    QCOMPARE(plugin.calls, QByteArrayList({ "entry 17.0" }));
    sheet.host.Driver().CallIdle();
    sheet.host.Driver().CallUpdateMenus(AEGP_WindType_COMP);
    sheet.host.Driver().RunCommand(16);
    sheet.host.Driver().CallDeath();
    QCOMPARE(
        plugin.calls, QByteArrayList({ "entry 17.0", "idle", "menu 2", "command 16", "death" }));
    QVERIFY(plugin.refconsRight);
}

void TestRegisterSuite::outsideTheEntryPointItIsAMisuse()
{
    SheetFixture sheet;
    FakePlugin plugin;
    plugin.onEntry = [] { return A_Err_NONE; };
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    QCOMPARE(RegisterEach(plugin.id), QVector<A_Err>(4, A_Err_GENERIC));
    QCOMPARE(sheet.host.TakeComplaints().size(), 4);
    sheet.host.Driver().CallIdle();
    sheet.host.Driver().CallDeath();
    QCOMPARE(plugin.calls, QByteArrayList({ "entry 17.0" }));
}

void TestRegisterSuite::anIdThatNobodyHasIsAMisuse()
{
    SheetFixture sheet;
    FakePlugin plugin;
    QVector<A_Err> errors;
    plugin.onEntry = [&] {
        errors = RegisterEach(plugin.id + 1) + RegisterEach(0) + RegisterEach(-1);
        return A_Err_NONE;
    };
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    QCOMPARE(errors, QVector<A_Err>(12, A_Err_PARAMETER));
    QCOMPARE(sheet.host.TakeComplaints().size(), 12);
}

void TestRegisterSuite::aHookForOneCommandSeesThatOneOnly()
{
    SheetFixture sheet;
    FakePlugin plugin;
    plugin.watched = 2035;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    sheet.host.Driver().RunCommand(16);
    sheet.host.Driver().RunCommand(2035);
    sheet.host.Driver().RunCommand(3);
    QCOMPARE(plugin.calls, QByteArrayList({ "entry 17.0", "command 2035" }));
}

void TestRegisterSuite::nullHooksAreMisuses()
{
    SheetFixture sheet;
    FakePlugin plugin;
    plugin.onEntry = [&] {
        const Suite<AEGP_RegisterSuite5> suite;
        const AEGP_PluginID id = plugin.id;
        RefusesNull(sheet.host,
            { { "AEGP_RegisterCommandHook",
                  [&] { return suite->AEGP_RegisterCommandHook(id, 1, 0, nullptr, nullptr); } },
                { "AEGP_RegisterIdleHook",
                    [&] { return suite->AEGP_RegisterIdleHook(id, nullptr, nullptr); } },
                { "AEGP_RegisterUpdateMenuHook",
                    [&] { return suite->AEGP_RegisterUpdateMenuHook(id, nullptr, nullptr); } },
                { "AEGP_RegisterDeathHook",
                    [&] { return suite->AEGP_RegisterDeathHook(id, nullptr, nullptr); } } });
        return A_Err_NONE;
    };
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
}

VN_HOST_TEST_MAIN(TestRegisterSuite)
#include "tst_registersuite.moc"
