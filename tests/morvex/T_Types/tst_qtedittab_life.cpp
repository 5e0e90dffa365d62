#include "DockFixture.h"
#include "testing/TestMain.h"

#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>

Q_DECLARE_METATYPE(T_Var *)

/// A dock in use: its builds, the client's tabs, edits and refreshes.
class TestQtEditTabLife : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theSameStructuresAreNotBuiltAgain();
    void sevenStructuresGoInOneCall();
    void theCurrentTabIsKeptAsFarAsThereAreTabs();
    void theClientsTabsStandBehindTheGeneratedOnes();
    void theDockMayGrowWhileAClientsTabIsOnTop();
    void anEditorStaysAliveForOneBuildMore();
    void aClientsTabIsTakenOverOnceAndThenDeleted();
    void anEditIsToldOnce();
    void aButtonIsToldToItsStructureAndInBothSignals();
    void updateAllShowsWhatTheFieldsHold();
    void theSkippedFieldsEditorsAreLeftAloneAndNamed();
    void aVariableWithoutDataIsReportedAsSkippedWhenNothingElseIs();
    void anEchoDuringAnUpdateReachesTheClient();
    void theClientMayRebuildFromWithinAnUpdate();
    void aDockThatIsDestroyedLeavesTheStructuresAlone();
};

void TestQtEditTabLife::initTestCase()
{
    qRegisterMetaType<T_Var *>("T_Var*");
    T_Undo::SetEnabled(false);
}

void TestQtEditTabLife::theSameStructuresAreNotBuiltAgain()
{
    Fields a("A"), b("B");
    a.Number("a");
    b.Number("b");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&a, nullptr, &b);
    const QPointer<T_QtEdit> editor = Editors(dock, 0).first();
    QWidget *page = dock.widget(0);
    dock.SetStructs(QList<T_Struct *>{ &a, &b });
    dock.SetStructs(nullptr, &a, &b, nullptr);
    QCOMPARE(dock.widget(0), page);
    dock.SetStructs(&b, &a); // another order is another list
    QVERIFY(dock.widget(0) != page);
    QVERIFY(editor);
}

void TestQtEditTabLife::sevenStructuresGoInOneCall()
{
    Fields s0("0"), s1("1"), s2("2"), s3("3"), s4("4"), s5("5"), s6("6");
    int i = 0;
    for (Fields *fields : { &s0, &s1, &s2, &s3, &s4, &s5, &s6 }) {
        const QByteArray name = "tab" + QByteArray::number(i++);
        fields->Tab(name.constData());
    }
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&s0, &s1, &s2, &s3, &s4, &s5, &s6);
    QCOMPARE(Titles(dock), Lines("tab0 | tab1 | tab2 | tab3 | tab4 | tab5 | tab6"));
}

void TestQtEditTabLife::theCurrentTabIsKeptAsFarAsThereAreTabs()
{
    Fields three("three"), two("two"), alsoTwo("also two");
    three.Tab("1").Tab("2").Tab("3");
    two.Tab("a").Tab("b");
    alsoTwo.Tab("c").Tab("d");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&three);
    QCOMPARE(dock.currentIndex(), 0);
    dock.setCurrentIndex(2);
    dock.SetStructs(&two);
    QCOMPARE(dock.currentIndex(), 1);
    dock.SetStructs(&alsoTwo);
    QCOMPARE(dock.currentIndex(), 1);
    dock.setCurrentIndex(0);
    dock.SetStructs(&three);
    QCOMPARE(dock.currentIndex(), 0);
    dock.SetStructs(QList<T_Struct *>());
    QCOMPARE(dock.count(), 0);
    QCOMPARE(dock.currentIndex(), -1);
}

void TestQtEditTabLife::theClientsTabsStandBehindTheGeneratedOnes()
{
    Fields fields("F");
    fields.Tab("Layer").Tab("Setup");
    auto *board = new QWidget, *more = new QWidget;
    KDockPannel dock(nullptr, 2);
    dock.AddExtraTab(board, QStringLiteral("Board"));
    dock.AddExtraTab(more, QStringLiteral("More"));
    QCOMPARE(dock.count(), 0); // they wait for the build
    dock.SetStructs(&fields);
    QCOMPARE(Titles(dock), Lines("Layer | Setup | Board | More"));
    QCOMPARE(dock.widget(2), board);
    QCOMPARE(dock.widget(3), more);
}

void TestQtEditTabLife::theDockMayGrowWhileAClientsTabIsOnTop()
{
    Fields fields("F");
    fields.Tab("Layer").Number("a");
    auto *board = new QWidget;
    KDockPannel dock(nullptr, 3);
    dock.AddExtraTab(board, QStringLiteral("Board"));
    dock.SetStructs(&fields);
    dock.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dock));
    QCOMPARE(dock.maximumHeight(), 126);
    QTest::mouseClick(dock.tabBar(), Qt::LeftButton, {}, dock.tabBar()->tabRect(1).center());
    QCOMPARE(dock.currentWidget(), board);
    QCOMPARE(dock.maximumHeight(), 840);
    QCOMPARE(dock.minimumHeight(), 126);
    QTest::mouseClick(dock.tabBar(), Qt::LeftButton, {}, dock.tabBar()->tabRect(0).center());
    QCOMPARE(dock.maximumHeight(), 126);
    QCOMPARE(dock.minimumHeight(), 126);
}

void TestQtEditTabLife::anEditorStaysAliveForOneBuildMore()
{
    Fields a("A"), b("B"), c("C");
    a.Number("a").Number("a2");
    b.Number("b");
    c.Number("c");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&a);
    const QPointer<QWidget> page = dock.widget(0);
    const QPointer<T_QtEdit> editor = Editors(dock, 0).first();
    dock.SetStructs(&b);
    QVERIFY(page);
    QVERIFY(editor);
    QVERIFY(!page->isVisible());
    dock.SetStructs(&c);
    QVERIFY(!page);
    QVERIFY(!editor);
}

/// A client's page goes through the same steps as a generated one, which is why a dock with such a
/// tab is built twice at most.
void TestQtEditTabLife::aClientsTabIsTakenOverOnceAndThenDeleted()
{
    Fields a("A"), b("B"), c("C");
    a.Number("a");
    b.Number("b");
    c.Number("c");
    const QPointer<QWidget> board = new QWidget;
    KDockPannel dock(nullptr, 2);
    dock.AddExtraTab(board, QStringLiteral("Board"));
    dock.SetStructs(&a);
    dock.SetStructs(&b);
    QCOMPARE(Titles(dock), Lines("B | Board"));
    QCOMPARE(dock.widget(1), board.data());
    dock.SetStructs(&c);
    QVERIFY(!board);
    QCOMPARE(Titles(dock), QStringList({ QStringLiteral("C") }));
}

void TestQtEditTabLife::anEditIsToldOnce()
{
    Fields fields("F");
    fields.Number("a").Number("b");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    dock.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dock));
    QSignalSpy changes(&dock, &KDockPannel::SignalValueChanged);
    QSignalSpy buttons(&dock, &KDockPannel::SignalButtonClicked);
    QTest::keyClick(Editors(dock, 0).at(1)->findChild<QSpinBox *>(), Qt::Key_Up);
    QCOMPARE(fields.numbers[1], 1);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.first().first().value<T_Var *>()->mData, &fields.numbers[1]);
    QCOMPARE(buttons.count(), 0);
}

void TestQtEditTabLife::aButtonIsToldToItsStructureAndInBothSignals()
{
    Fields fields("F");
    T_Var *var = fields.AddButton(&fields.flag, QStringLiteral("Go"));
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    dock.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dock));
    QStringList order;
    connect(&dock, &KDockPannel::SignalButtonClicked, [&](T_Var *told) {
        order << QStringLiteral("button %1 %2").arg(told == var).arg(fields.clicked.size());
    });
    connect(&dock, &KDockPannel::SignalValueChanged,
        [&](T_Var *told) { order << QStringLiteral("value %1").arg(told == var); });
    QTest::mouseClick(dock.findChild<QPushButton *>(), Qt::LeftButton);
    QCOMPARE(order, Lines("button 1 1 | value 1")); // the structure first, then the two signals
    QCOMPARE(fields.clicked, QList<void *>({ &fields.flag }));

    // A structure that has no answer of its own says so; a button without a structure is only told.
    T_Struct plain;
    QTest::ignoreMessage(QtWarningMsg, "T_Struct::OnButtonClicked");
    dock.SlotSpinEditChanged(plain.AddButton(&fields.flag, QStringLiteral("Plain")));
    T_Var orphan(TV_BOUTON, QStringLiteral("Orphan"), &fields.flag, TG_DEFAULT);
    dock.SlotSpinEditChanged(&orphan);
    QCOMPARE(order.size(), 6);
}

void TestQtEditTabLife::updateAllShowsWhatTheFieldsHold()
{
    Fields fields("F");
    fields.Number("a").Tab("Other").Number("b");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QSignalSpy changes(&dock, &KDockPannel::SignalValueChanged);
    fields.numbers[0] = 12;
    fields.numbers[1] = 34;
    dock.UpdateAll();
    QCOMPARE(Editors(dock, 0).first()->findChild<QSpinBox *>()->value(), 12);
    QCOMPARE(Editors(dock, 1).first()->findChild<QSpinBox *>()->value(), 34);
    QCOMPARE(changes.count(), 0);
}

void TestQtEditTabLife::theSkippedFieldsEditorsAreLeftAloneAndNamed()
{
    Fields fields("F");
    fields.Number("a").Number("b");
    fields.AddVar(TV_INT, QStringLiteral("b again"), &fields.numbers[1], TG_DEFAULT);
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    fields.numbers[0] = 12;
    fields.numbers[1] = 34;
    QTest::ignoreMessage(QtWarningMsg, "TabEdit::OnUpdate SKIP  \"b\"");
    QTest::ignoreMessage(QtWarningMsg, "TabEdit::OnUpdate SKIP  \"b again\"");
    dock.OnUpdate(/*level=*/0, &fields.numbers[1]);
    const QList<QSpinBox *> boxes = dock.widget(0)->findChildren<QSpinBox *>();
    QCOMPARE(boxes.at(0)->value(), 12);
    QCOMPARE(boxes.at(1)->value(), 0);
    QCOMPARE(boxes.at(2)->value(), 0);
}

void TestQtEditTabLife::aVariableWithoutDataIsReportedAsSkippedWhenNothingElseIs()
{
    Fields fields("F");
    fields.AddVar(TV_INT, QStringLiteral("nowhere"), nullptr, TG_DEFAULT);
    fields.Number("a");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    fields.numbers[0] = 12;
    QTest::ignoreMessage(QtWarningMsg, "TabEdit::OnUpdate SKIP  \"nowhere\"");
    dock.OnUpdate(2, nullptr);
    QCOMPARE(dock.widget(0)->findChildren<QSpinBox *>().at(1)->value(), 12);
}

void TestQtEditTabLife::anEchoDuringAnUpdateReachesTheClient()
{
    Fields fields("F");
    fields.AddInt(&fields.numbers[0], QStringLiteral("slider"), TG_SLIDER);
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QSignalSpy changes(&dock, &KDockPannel::SignalValueChanged);
    fields.numbers[0] = 12;
    dock.UpdateAll();
    QCOMPARE(dock.findChild<QSlider *>()->value(), 12);
    QCOMPARE(changes.count(), 1);
    dock.UpdateAll();
    QCOMPARE(changes.count(), 1);
}

void TestQtEditTabLife::theClientMayRebuildFromWithinAnUpdate()
{
    Fields a("A"), b("B");
    a.AddInt(&a.numbers[0], QStringLiteral("slider"), TG_SLIDER);
    a.AddInt(&a.numbers[1], QStringLiteral("after"), TG_DEFAULT);
    b.Number("b");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&a);
    const QPointer<T_QtEdit> after = Editors(dock, 0).at(1);
    connect(&dock, &KDockPannel::SignalValueChanged, [&] { dock.SetStructs(&b); });
    a.numbers[0] = 12;
    a.numbers[1] = 34;
    dock.UpdateAll();
    QCOMPARE(Titles(dock), QStringList({ QStringLiteral("B") }));
    QVERIFY(after); // of the build before, so still there and refreshed
    QCOMPARE(after->findChild<QSpinBox *>()->value(), 34);
}

void TestQtEditTabLife::aDockThatIsDestroyedLeavesTheStructuresAlone()
{
    Fields fields("F");
    fields.Group("5").Number("a").Number("b");
    auto *dock = new KDockPannel(nullptr, 2);
    dock->SetStructs(&fields);
    delete dock;
    QCOMPARE(fields.CountOf(typeid(T_Struct)), 0);
    QVERIFY(fields.GetVar(QStringLiteral("a"), TV_INT));
}

VN_TEST_MAIN(TestQtEditTabLife)

#include "tst_qtedittab_life.moc"
