#include "SuiteChecks.h"

#include "testhost/FakePlugin.h"

using namespace rostrum;
using namespace testing;

namespace {

/// A command with an item in the Window menu.
AEGP_Command AddItem(const char *text = "sheet")
{
    const Suite<AEGP_CommandSuite1> suite;
    AEGP_Command command = 0;
    suite->AEGP_GetUniqueCommand(&command);
    suite->AEGP_InsertMenuCommand(command, text, AEGP_Menu_WINDOW, AEGP_MENU_INSERT_SORTED);
    return command;
}

A_Err SetOffset(SheetFixture &sheet, qint32 frame)
{
    const Suite<AEGP_LayerSuite4> layers;
    const A_Time time = FrameTime(frame);
    return layers->AEGP_SetLayerOffset(sheet.LayerH(), &time);
}

} // namespace

class TestCommandSuite : public QObject
{
    Q_OBJECT

private slots:
    void commandsAreUniqueAndNoneOfTheHosts();
    void theWindowMenuIsSorted_data();
    void theWindowMenuIsSorted();
    void anItemStartsDisabledAndWithoutAMark();
    void anItemIsEnabledAndMarked();
    void onlyOwnCommandsHaveItems();
    void undoAndRedoRunThroughTheHooksFirst();
    void undoInsideAGroupIsRefused();
    void undoWithNothingToUndoIsNoError();
    void openAndSaveAreTheProgramsOwn();
    void anOwnCommandRunsItsHookOnly();
    void anUnknownCommandIsRefused();
    void aHandledCommandIsNotActedOn();
    void nullArgumentsAreMisuses();
};

void TestCommandSuite::commandsAreUniqueAndNoneOfTheHosts()
{
    SheetFixture sheet;
    const Suite<AEGP_CommandSuite1> suite;
    AEGP_Command first = 0;
    AEGP_Command second = 0;
    QCOMPARE(suite->AEGP_GetUniqueCommand(&first), A_Err_NONE);
    QCOMPARE(suite->AEGP_GetUniqueCommand(&second), A_Err_NONE);
    QVERIFY(first != second);
    for (const AEGP_Command own : { 0, 3, 5, 16, 2035, 2153 })
        QVERIFY(first != own && second != own);
}

void TestCommandSuite::theWindowMenuIsSorted_data()
{
    QTest::addColumn<int>("menu");
    QTest::addColumn<int>("after");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("sorted into the Window menu") << 7 << -2 << true;
    QTest::newRow("at its bottom") << 7 << -1 << false;
    QTest::newRow("at its top") << 7 << 0 << false;
    QTest::newRow("behind a command") << 7 << 16 << false;
    QTest::newRow("at the bottom of the Edit menu") << 3 << -1 << true;
    QTest::newRow("into no menu") << 0 << -2 << false;
    QTest::newRow("into a menu that there is not") << 16 << -2 << false;
    QTest::newRow("at a place that there is not") << 3 << -3 << false;
}

void TestCommandSuite::theWindowMenuIsSorted()
{
    QFETCH(int, menu);
    QFETCH(int, after);
    QFETCH(bool, accepted);
    SheetFixture sheet;
    const Suite<AEGP_CommandSuite1> suite;
    AEGP_Command command = 0;
    QCOMPARE(suite->AEGP_GetUniqueCommand(&command), A_Err_NONE);
    QCOMPARE(suite->AEGP_InsertMenuCommand(command, "sheet", menu, after),
        accepted ? A_Err_NONE : A_Err_PARAMETER);
    QCOMPARE(sheet.host.Driver().MenuItems().size(), accepted ? 1 : 0);
}

void TestCommandSuite::anItemStartsDisabledAndWithoutAMark()
{
    SheetFixture sheet;
    const AEGP_Command command = AddItem("Feuille d'exposition");
    const QVector<MenuItem> &items = sheet.host.Driver().MenuItems();
    QCOMPARE(items.size(), 1);
    QCOMPARE(items[0].command, command);
    QCOMPARE(items[0].text, QByteArray("Feuille d'exposition"));
    QCOMPARE(items[0].menu, AEGP_Menu_WINDOW);
    QVERIFY(!items[0].enabled);
    QVERIFY(!items[0].checked);
}

void TestCommandSuite::anItemIsEnabledAndMarked()
{
    SheetFixture sheet;
    const Suite<AEGP_CommandSuite1> suite;
    const AEGP_Command first = AddItem();
    const AEGP_Command second = AddItem("other");
    QCOMPARE(suite->AEGP_EnableCommand(second), A_Err_NONE);
    QCOMPARE(suite->AEGP_CheckMarkMenuCommand(first, 1), A_Err_NONE);
    const QVector<MenuItem> &items = sheet.host.Driver().MenuItems();
    QVERIFY(!items[0].enabled && items[0].checked);
    QVERIFY(items[1].enabled && !items[1].checked);
    QCOMPARE(suite->AEGP_CheckMarkMenuCommand(first, 0), A_Err_NONE);
    QVERIFY(!items[0].checked);
}

void TestCommandSuite::onlyOwnCommandsHaveItems()
{
    SheetFixture sheet;
    const Suite<AEGP_CommandSuite1> suite;
    const AEGP_Command command = AddItem();
    for (const AEGP_Command other : { 0, 16, command + 1, -1 }) {
        QCOMPARE(
            suite->AEGP_InsertMenuCommand(other, "x", AEGP_Menu_WINDOW, AEGP_MENU_INSERT_SORTED),
            A_Err_PARAMETER);
        QCOMPARE(suite->AEGP_EnableCommand(other), A_Err_PARAMETER);
        QCOMPARE(suite->AEGP_CheckMarkMenuCommand(other, 1), A_Err_PARAMETER);
    }
    QCOMPARE(
        suite->AEGP_InsertMenuCommand(command, "twice", AEGP_Menu_WINDOW, AEGP_MENU_INSERT_SORTED),
        A_Err_PARAMETER);
    QCOMPARE(sheet.host.Driver().MenuItems().size(), 1);
}

void TestCommandSuite::undoAndRedoRunThroughTheHooksFirst()
{
    SheetFixture sheet;
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    const Suite<AEGP_CommandSuite1> suite;
    QCOMPARE(SetOffset(sheet, 3), A_Err_NONE);
    QVector<int> seen; // the offset when the hook is called: the host has not acted yet
    plugin.onCommand = [&](AEGP_Command, A_Boolean *) {
        seen << sheet.Find(sheet.layer).offset.value;
        return A_Err_NONE;
    };
    const int changes = sheet.host.ChangeCount();
    QCOMPARE(suite->AEGP_DoCommand(16), A_Err_NONE);
    QCOMPARE(sheet.Find(sheet.layer).offset.value, 0);
    QCOMPARE(suite->AEGP_DoCommand(2035), A_Err_NONE);
    QCOMPARE(sheet.Find(sheet.layer).offset.value, 3);
    QCOMPARE(seen, QVector<int>({ 3, 0 }));
    QCOMPARE(sheet.host.ChangeCount(), changes + 2);
    QCOMPARE(plugin.calls, QByteArrayList({ "entry 17.0", "command 16", "command 2035" }));
    QVERIFY(plugin.refconsRight);
}

void TestCommandSuite::undoInsideAGroupIsRefused()
{
    SheetFixture sheet;
    const Suite<AEGP_CommandSuite1> suite;
    const Suite<AEGP_UtilitySuite5> utility;
    QCOMPARE(SetOffset(sheet, 3), A_Err_NONE);
    QCOMPARE(utility->AEGP_StartUndoGroup("group"), A_Err_NONE);
    QCOMPARE(suite->AEGP_DoCommand(16), A_Err_GENERIC);
    QCOMPARE(utility->AEGP_EndUndoGroup(), A_Err_NONE);
    QCOMPARE(sheet.Find(sheet.layer).offset.value, 3);
}

void TestCommandSuite::undoWithNothingToUndoIsNoError()
{
    SheetFixture sheet;
    const Suite<AEGP_CommandSuite1> suite;
    const int changes = sheet.host.ChangeCount();
    QCOMPARE(suite->AEGP_DoCommand(16), A_Err_NONE);
    QCOMPARE(suite->AEGP_DoCommand(2035), A_Err_NONE);
    QCOMPARE(sheet.host.ChangeCount(), changes);
}

void TestCommandSuite::openAndSaveAreTheProgramsOwn()
{
    SheetFixture sheet;
    const Suite<AEGP_CommandSuite1> suite;
    QCOMPARE(suite->AEGP_DoCommand(3), A_Err_GENERIC);
    QCOMPARE(suite->AEGP_DoCommand(5), A_Err_GENERIC);
    QByteArrayList ran;
    sheet.host.Driver().openProject = [&] {
        ran << "open";
        return A_Err_NONE;
    };
    sheet.host.Driver().saveProject = [&] {
        ran << "save";
        return A_Err_ALLOC;
    };
    QCOMPARE(suite->AEGP_DoCommand(5), A_Err_ALLOC);
    QCOMPARE(suite->AEGP_DoCommand(3), A_Err_NONE);
    QCOMPARE(ran, QByteArrayList({ "save", "open" }));
}

void TestCommandSuite::anOwnCommandRunsItsHookOnly()
{
    SheetFixture sheet;
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    const Suite<AEGP_CommandSuite1> suite;
    const AEGP_Command command = AddItem();
    QCOMPARE(suite->AEGP_DoCommand(command), A_Err_NONE);
    QCOMPARE(plugin.calls.last(), "command " + QByteArray::number(command));
}

void TestCommandSuite::anUnknownCommandIsRefused()
{
    SheetFixture sheet;
    const Suite<AEGP_CommandSuite1> suite;
    for (const AEGP_Command command : { -1, 0, 2153, 10001 })
        QCOMPARE(suite->AEGP_DoCommand(command), A_Err_PARAMETER);
}

void TestCommandSuite::aHandledCommandIsNotActedOn()
{
    SheetFixture sheet;
    FakePlugin plugin;
    QCOMPARE(plugin.Enter(sheet.host), A_Err_NONE);
    const Suite<AEGP_CommandSuite1> suite;
    QCOMPARE(SetOffset(sheet, 3), A_Err_NONE);
    plugin.onCommand = [](AEGP_Command, A_Boolean *handled) {
        *handled = 1;
        return A_Err_NONE;
    };
    QCOMPARE(suite->AEGP_DoCommand(16), A_Err_NONE);
    QCOMPARE(sheet.Find(sheet.layer).offset.value, 3);
}

void TestCommandSuite::nullArgumentsAreMisuses()
{
    SheetFixture sheet;
    const Suite<AEGP_CommandSuite1> suite;
    AEGP_Command command = 0;
    QCOMPARE(suite->AEGP_GetUniqueCommand(&command), A_Err_NONE);
    RefusesNull(sheet.host,
        { { "AEGP_GetUniqueCommand", [&] { return suite->AEGP_GetUniqueCommand(nullptr); } },
            { "AEGP_InsertMenuCommand", [&] {
                 return suite->AEGP_InsertMenuCommand(command, nullptr, AEGP_Menu_WINDOW, -2);
             } } });
}

VN_HOST_TEST_MAIN(TestCommandSuite)
#include "tst_commandsuite.moc"
