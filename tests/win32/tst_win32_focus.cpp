#include "DockedPanel.h"
#include "WindowUser.h"
#include "testing/TestMain.h"

using testing::Click;
using testing::DockedPanel;
using testing::Focused;
using testing::PressKey;
using testing::TextOf;

/// The border between the host's focus and the panel's, crossed by keys of the system's.
class TestWin32Focus : public QObject
{
    Q_OBJECT

private slots:
    void tabEntersAtTheFirstWidget();
    void shiftTabIntoThePanelLandsOnTheLastWidget();
    void tabOutOfTheLastWidgetReturnsTheFocusToTheHost();
    void shiftTabOutOfTheFirstWidgetReturnsTheFocusToTheHost();
    void aPanelAndANeighbourWithoutTabFocusTakeNoFocus();
    void aPanelThatTakesTheTabKeyComesFirst();
    void aClickedWidgetHasTheKeyboard();
    void theHostTakesTheKeyboardBack();
};

void TestWin32Focus::tabEntersAtTheFirstWidget()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    SetFocus(docked.plain.Before());
    PressKey(VK_TAB);
    QVERIFY(docked.WaitForFocus("field0"));
    PressKey('7'); // the keys follow
    QVERIFY(
        docked.ServeUntil([&] { return docked.panel->fields[0]->text() == QLatin1String("7"); }));
    QCOMPARE(TextOf(docked.plain.Before()), QString());
}

void TestWin32Focus::shiftTabIntoThePanelLandsOnTheLastWidget()
{
    DockedPanel docked(/*fields=*/3);
    QVERIFY(docked.Open());
    SetFocus(docked.plain.After());
    PressKey(VK_TAB, VK_SHIFT);
    QVERIFY(docked.WaitForFocus("field2"));
    PressKey('8');
    QVERIFY(
        docked.ServeUntil([&] { return docked.panel->fields[2]->text() == QLatin1String("8"); }));
}

void TestWin32Focus::tabOutOfTheLastWidgetReturnsTheFocusToTheHost()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    SetFocus(docked.plain.Before());
    PressKey(VK_TAB);
    QVERIFY(docked.WaitForFocus("field0"));
    PressKey(VK_TAB);
    QVERIFY(docked.WaitForFocus("field1"));
    PressKey(VK_TAB);
    QVERIFY(docked.WaitForFocus(docked.plain.Container()));
    QVERIFY(docked.WaitForFocus("none"));
}

void TestWin32Focus::shiftTabOutOfTheFirstWidgetReturnsTheFocusToTheHost()
{
    DockedPanel docked(/*fields=*/3);
    QVERIFY(docked.Open());
    SetFocus(docked.plain.After());
    PressKey(VK_TAB, VK_SHIFT);
    for (const char *field : { "field2", "field1", "field0" }) {
        QVERIFY(docked.WaitForFocus(field));
        PressKey(VK_TAB, VK_SHIFT);
    }
    QVERIFY(docked.WaitForFocus(docked.plain.Container()));
}

void TestWin32Focus::aPanelAndANeighbourWithoutTabFocusTakeNoFocus()
{
    DockedPanel docked;
    docked.panel->fields[0]->setFocusPolicy(Qt::ClickFocus); // the second one would take it
    QVERIFY(docked.Open());
    SetFocus(docked.plain.Before());
    PressKey(VK_TAB);
    QVERIFY(docked.WaitForFocus(docked.plain.Panel()));
    PressKey('9');
    docked.plain.Serve(/*milliseconds=*/200);
    QCOMPARE(docked.panel->fields[0]->text(), QString());
    QCOMPARE(docked.panel->fields[1]->text(), QString());
}

void TestWin32Focus::aPanelThatTakesTheTabKeyComesFirst()
{
    DockedPanel docked;
    docked.panel->setFocusPolicy(Qt::TabFocus);
    QVERIFY(docked.Open());
    SetFocus(docked.plain.Before());
    PressKey(VK_TAB);
    QVERIFY(docked.WaitForFocus("panel"));
    PressKey(VK_TAB);
    QVERIFY(docked.WaitForFocus("field0"));
}

void TestWin32Focus::aClickedWidgetHasTheKeyboard()
{
    DockedPanel docked(/*fields=*/3);
    QVERIFY(docked.Open());
    SetFocus(docked.plain.Before());
    const QPoint place = docked.panel->fields[1]->geometry().center();
    Click(docked.plain.Panel(), place.x(), place.y());
    QVERIFY(docked.WaitForFocus("field1"));
    PressKey('5');
    QVERIFY(
        docked.ServeUntil([&] { return docked.panel->fields[1]->text() == QLatin1String("5"); }));
    QCOMPARE(docked.panel->fields[0]->text(), QString());
}

void TestWin32Focus::theHostTakesTheKeyboardBack()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    SetFocus(docked.plain.Before());
    PressKey(VK_TAB);
    QVERIFY(docked.WaitForFocus("field0"));
    Click(docked.plain.After(), 5, 5);
    QVERIFY(docked.WaitForFocus(docked.plain.After()));
    QVERIFY(docked.WaitForFocus("none"));
    PressKey('6');
    QVERIFY(docked.ServeUntil([&] { return TextOf(docked.plain.After()) == QLatin1String("6"); }));
    QCOMPARE(docked.panel->fields[0]->text(), QString());
}

int main(int argc, char **argv)
{
    TestWin32Focus tests;
    return testing::RunDockedTests(tests, argc, argv);
}

#include "tst_win32_focus.moc"
