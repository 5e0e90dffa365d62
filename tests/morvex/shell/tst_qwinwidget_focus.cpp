#include "DockFixture.h"
#include "testhost/HostTestMain.h"

#include <QLabel>

using testing::Container;
using testing::DockFixture;
using testing::TestPanel;

/// The border between the host's focus and the panel's, crossed by keys in a real window.
class TestQWinWidgetFocus : public QObject
{
    Q_OBJECT

private slots:
    void tabEntersAtTheFirstWidget();
    void tabOutOfTheLastWidgetReturnsTheFocusToTheHost();
    void shiftTabIntoThePanelLandsOnTheLastWidget();
    void shiftTabOutOfTheFirstWidgetReturnsTheFocusToTheHost();
    void aHostThatHandsTheFocusOverBackwardReachesTheLastWidget();
    void aPanelAndANeighbourWithoutTabFocusTakeNoFocus_data();
    void aPanelAndANeighbourWithoutTabFocusTakeNoFocus();
    void aPanelThatTakesTheTabKeyComesFirst();
    void onlyTheTabKeyBringsTheFocusIn_data();
    void onlyTheTabKeyBringsTheFocusIn();
    void aPanelOfOneWidgetLetsTheFocusThrough();
    void aPanelOfNoWidgetLetsTheFocusThrough();
    void widgetsThatCannotBeReachedDoNotKeepTheFocusIn_data();
    void widgetsThatCannotBeReachedDoNotKeepTheFocusIn();
    void inAHostWithNothingElseTheFocusGoesRound();
    void twoPanelsInOneWindowAreCrossedInOrder();
    void theFirstSavedFocusServesForLife();
    void aPanelWithoutAWindowIsAnOrdinaryWindow();
};

void TestQWinWidgetFocus::tabEntersAtTheFirstWidget()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    fixture.before->setFocus();
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("field0"));
    DockFixture::Press(Qt::Key_7); // the keys follow
    QCOMPARE(fixture.panel->fields[0]->text(), QStringLiteral("7"));
}

void TestQWinWidgetFocus::tabOutOfTheLastWidgetReturnsTheFocusToTheHost()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    fixture.panel->fields[0]->setFocus();
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("field1"));
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("after"));
    DockFixture::Press(Qt::Key_8);
    QCOMPARE(fixture.after->text(), QStringLiteral("8"));
    DockFixture::PressTab(); // round, and not back into the panel
    QCOMPARE(DockFixture::Focused(), QStringLiteral("before"));
}

void TestQWinWidgetFocus::shiftTabIntoThePanelLandsOnTheLastWidget()
{
    DockFixture fixture(/*fields=*/3);
    QVERIFY(fixture.Open());
    fixture.after->setFocus();
    DockFixture::PressShiftTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("field2"));
}

void TestQWinWidgetFocus::shiftTabOutOfTheFirstWidgetReturnsTheFocusToTheHost()
{
    DockFixture fixture(/*fields=*/3);
    QVERIFY(fixture.Open());
    fixture.panel->fields[1]->setFocus();
    DockFixture::PressShiftTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("field0"));
    DockFixture::PressShiftTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("before"));
}

void TestQWinWidgetFocus::aHostThatHandsTheFocusOverBackwardReachesTheLastWidget()
{
    DockFixture fixture(/*fields=*/3);
    QVERIFY(fixture.Open());
    fixture.container->setFocus(Qt::BacktabFocusReason);
    QCOMPARE(DockFixture::Focused(), QStringLiteral("field2"));
    fixture.container->setFocus(Qt::TabFocusReason);
    QCOMPARE(DockFixture::Focused(), QStringLiteral("field0"));
}

void TestQWinWidgetFocus::aPanelAndANeighbourWithoutTabFocusTakeNoFocus_data()
{
    QTest::addColumn<int>("reason");
    QTest::newRow("Tab") << int(Qt::TabFocusReason);
    QTest::newRow("Shift and Tab") << int(Qt::BacktabFocusReason);
}

void TestQWinWidgetFocus::aPanelAndANeighbourWithoutTabFocusTakeNoFocus()
{
    QFETCH(int, reason);
    DockFixture fixture;
    fixture.panel->fields[0]->setFocusPolicy(Qt::ClickFocus);
    QVERIFY(fixture.Open());
    fixture.before->setFocus();
    fixture.container->setFocus(Qt::FocusReason(reason)); // the second field would take it
    QCOMPARE(DockFixture::Focused(), QStringLiteral("container"));
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("after"));
    DockFixture::PressShiftTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("container"));
    DockFixture::PressShiftTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("before"));
}

void TestQWinWidgetFocus::aPanelThatTakesTheTabKeyComesFirst()
{
    DockFixture fixture;
    fixture.panel->setFocusPolicy(Qt::TabFocus);
    QVERIFY(fixture.Open());
    fixture.before->setFocus();
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("panel"));
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("field0"));
    fixture.container->setFocus(Qt::BacktabFocusReason);
    QCOMPARE(DockFixture::Focused(), QStringLiteral("field1"));
}

void TestQWinWidgetFocus::onlyTheTabKeyBringsTheFocusIn_data()
{
    QTest::addColumn<int>("reason");
    QTest::newRow("mouse") << int(Qt::MouseFocusReason);
    QTest::newRow("window") << int(Qt::ActiveWindowFocusReason);
    QTest::newRow("other") << int(Qt::OtherFocusReason);
}

void TestQWinWidgetFocus::onlyTheTabKeyBringsTheFocusIn()
{
    QFETCH(int, reason);
    DockFixture fixture;
    QVERIFY(fixture.Open());
    fixture.before->setFocus();
    fixture.container->setFocus(Qt::FocusReason(reason));
    QCOMPARE(DockFixture::Focused(), QStringLiteral("container"));
    fixture.panel->setFocus(Qt::FocusReason(reason));
    QCOMPARE(DockFixture::Focused(), QStringLiteral("panel"));
}

void TestQWinWidgetFocus::aPanelOfOneWidgetLetsTheFocusThrough()
{
    DockFixture fixture(/*fields=*/1);
    QVERIFY(fixture.Open());
    fixture.before->setFocus();
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("field0"));
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("after"));
    DockFixture::PressShiftTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("field0"));
    DockFixture::PressShiftTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("before"));
}

/// The container is a stop on the way, as a native window is that has the keyboard for itself.
void TestQWinWidgetFocus::aPanelOfNoWidgetLetsTheFocusThrough()
{
    DockFixture fixture(/*fields=*/0);
    QVERIFY(fixture.Open());
    fixture.before->setFocus();
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("container"));
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("after"));
    DockFixture::PressShiftTab();
    DockFixture::PressShiftTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("before"));
    fixture.panel->setFocus(); // by a click, say
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("after"));
    fixture.panel->setFocus();
    DockFixture::PressShiftTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("before"));
}

void TestQWinWidgetFocus::widgetsThatCannotBeReachedDoNotKeepTheFocusIn_data()
{
    QTest::addColumn<bool>("hidden");
    QTest::newRow("hidden") << true;
    QTest::newRow("disabled") << false;
}

void TestQWinWidgetFocus::widgetsThatCannotBeReachedDoNotKeepTheFocusIn()
{
    QFETCH(bool, hidden);
    DockFixture fixture(/*fields=*/3);
    for (int i : { 0, 2 }) {
        if (hidden)
            fixture.panel->fields[i]->hide();
        else
            fixture.panel->fields[i]->setEnabled(false);
    }
    QVERIFY(fixture.Open());
    fixture.panel->fields[1]->setFocus();
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("after"));
    fixture.panel->fields[1]->setFocus();
    DockFixture::PressShiftTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("before"));
}

void TestQWinWidgetFocus::inAHostWithNothingElseTheFocusGoesRound()
{
    DockFixture fixture;
    fixture.before->setFocusPolicy(Qt::NoFocus);
    fixture.after->setFocusPolicy(Qt::NoFocus);
    QVERIFY(fixture.Open());
    fixture.panel->fields[1]->setFocus();
    DockFixture::PressTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("field0"));
    DockFixture::PressShiftTab();
    QCOMPARE(DockFixture::Focused(), QStringLiteral("field1"));
}

void TestQWinWidgetFocus::twoPanelsInOneWindowAreCrossedInOrder()
{
    DockFixture fixture;
    auto *container = new Container(&fixture.window);
    container->setObjectName(QStringLiteral("container2"));
    fixture.window.layout()->addWidget(container); // behind "after", also in the chain
    container->setMinimumHeight(60);
    AEGP_PanelFunctions1 functions{};
    TestPanel second(fixture.host.BasicSuite(), container->Handle(), &functions, /*count=*/2);
    for (QLineEdit *field : qAsConst(second.fields))
        field->setObjectName(QStringLiteral("second ") + field->objectName());
    QVERIFY(fixture.Open());
    QTRY_VERIFY(second.isVisible());
    fixture.panel->fields[1]->setFocus();
    QStringList way;
    for (int i = 0; i < 5; ++i) {
        DockFixture::PressTab();
        way << DockFixture::Focused();
    }
    QCOMPARE(way.join(QStringLiteral(", ")),
        QStringLiteral("after, second field0, second field1, before, field0"));
    way.clear();
    for (int i = 0; i < 5; ++i) {
        DockFixture::PressShiftTab();
        way << DockFixture::Focused();
    }
    QCOMPARE(way.join(QStringLiteral(", ")),
        QStringLiteral("before, second field1, second field0, after, field1"));
}

/// Who had the focus when the panel was first shown gets it back after every dialog.
void TestQWinWidgetFocus::theFirstSavedFocusServesForLife()
{
    DockFixture fixture;
    fixture.before->winId(); // native windows, so that each can have the system's focus by itself
    fixture.after->winId();
    fixture.container->hide();
    fixture.window.show();
    fixture.window.activateWindow();
    QVERIFY(DockFixture::WaitForActive(&fixture.window));
    fixture.before->setFocus();
    fixture.container->show();
    QTRY_VERIFY(fixture.panel->isVisible());
    for (QWidget *other : { fixture.after, fixture.panel->fields[1] }) {
        other->setFocus();
        QWidget dialog(fixture.panel, Qt::Dialog);
        dialog.show();
        QVERIFY(DockFixture::WaitForActive(&dialog));
        dialog.hide();
        QVERIFY(DockFixture::WaitForActive(&fixture.window));
        QTRY_COMPARE(DockFixture::Focused(), QStringLiteral("before"));
    }
}

void TestQWinWidgetFocus::aPanelWithoutAWindowIsAnOrdinaryWindow()
{
    QWinWidget window(nullptr);
    QHBoxLayout row(&window);
    QLineEdit first;
    QLineEdit second;
    row.addWidget(&first);
    row.addWidget(&second);
    QVERIFY(!window.parentWindow());
    QVERIFY(window.isWindow());
    window.show();
    window.activateWindow();
    QVERIFY(DockFixture::WaitForActive(&window));
    second.setFocus();
    DockFixture::PressTab();
    QVERIFY(first.hasFocus());
    DockFixture::PressShiftTab();
    QVERIFY(second.hasFocus());
}

VN_HOST_TEST_MAIN(TestQWinWidgetFocus)
#include "tst_qwinwidget_focus.moc"
