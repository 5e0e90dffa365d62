#include "T_Types/T_QtEdit.h"
#include "T_Types/T_QtEditTab.h"
#include "T_Types/T_Struct.h"
#include "T_Types/T_Tab.h"
#include "T_Types/T_Undo.h"
#include "testing/TestMain.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>

Q_DECLARE_METATYPE(T_Var *)

namespace {

/// A structure that is filled by the test, with fields enough for all its variables.
class Fields : public T_Struct
{
public:
    explicit Fields(const char *name) { SetName(QString::fromLatin1(name)); }

    Fields &Tab(const char *title) { return Mark(title, TG_TAB); }
    Fields &Group(const char *size) { return Mark(size, TG_GROUP); }
    Fields &Column() { return Mark("", TG_COLUMN); }
    Fields &Number(const char *name)
    {
        AddInt(&numbers[used++], QString::fromLatin1(name), TG_DEFAULT);
        return *this;
    }
    Fields &Numbers(int count)
    {
        for (int i = 0; i < count; ++i)
            Number(QByteArray::number(i).constData());
        return *this;
    }
    T_Var *Last()
    {
        T_Obj *last = mFirst;
        while (last->mNext)
            last = last->mNext;
        return static_cast<T_Var *>(last);
    }
    void OnButtonClicked(void *field) override { clicked << field; }

    int numbers[20] = {};
    int used = 0;
    bool flag = false;
    QList<void *> clicked;

private:
    Fields &Mark(const char *text, quint32 gadget)
    {
        AddVar(TV_ONGLET, QString::fromLatin1(text), nullptr, gadget);
        return *this;
    }
};

QStringList Titles(const KDockPannel &dock)
{
    QStringList titles;
    for (int tab = 0; tab < dock.count(); ++tab)
        titles << dock.tabText(tab);
    return titles;
}

QGridLayout *Grid(const KDockPannel &dock, int tab)
{
    return qobject_cast<QGridLayout *>(dock.widget(tab)->layout());
}

QString NameOf(const QWidget *editor)
{
    return static_cast<const T_QtEdit *>(editor)->GetVar()->GetName();
}

/// One cell as text: an editor's name, "spacer", or a group's editors in brackets.
QString Describe(QLayoutItem *item)
{
    if (item->widget())
        return NameOf(item->widget());
    if (!item->layout())
        return QStringLiteral("spacer");
    QStringList names;
    for (int i = 0; i < item->layout()->count(); ++i)
        names << NameOf(item->layout()->itemAt(i)->widget());
    return QLatin1Char('[') + names.join(QLatin1Char(' ')) + QLatin1Char(']');
}

/// The cells of a page in the order they were placed, as "row,column name".
QStringList Cells(const KDockPannel &dock, int tab)
{
    QStringList cells;
    QGridLayout *grid = Grid(dock, tab);
    for (int i = 0; i < grid->count(); ++i) {
        int row = 0, column = 0, rowSpan = 0, columnSpan = 0;
        grid->getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
        cells << QStringLiteral("%1,%2 %3").arg(row).arg(column).arg(Describe(grid->itemAt(i)));
    }
    return cells;
}

QStringList Lines(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1String(" | "));
}

QList<T_QtEdit *> Editors(const KDockPannel &dock, int tab)
{
    return dock.widget(tab)->findChildren<T_QtEdit *>();
}

} // namespace

class TestQtEditTab : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void anEmptyDockHasItsHeightAndNoTabs();
    void aStructureWithoutMarkersGetsATabOfItsOwnName();
    void aMarkerAtTheHeadLeavesTheStructuresNameOut();
    void editorsFillColumnsFromTheTop();
    void aTabMarkerAsTheLastChildGivesAnEmptyTab();
    void aTabMarkerBeginsAtTheTopAgainAndClosesTheTabBefore();
    void aColumnMarkerBeginsAColumnUnlessOneHasJustBegun();
    void aGroupTakesOneCell();
    void aGroupThatWaitsForMoreIsDroppedByATab();
    void aGroupWhoseSizeIsNoNumberLeavesAnEmptyCell();
    void aSecondGroupDropsTheOneThatWaits();
    void aGroupOfNegativeSizeIsNone();
    void theGridRunsOnOverTheStructures();
    void whatIsHiddenAndWhatIsNoPlainVariableGetsNoEditor();
    void aPageHasItsSpacings();
    void aDisabledVariablesEditorStartsDisabled();
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

void TestQtEditTab::initTestCase()
{
    qRegisterMetaType<T_Var *>("T_Var*");
    T_Undo::Instance()->mEnabled = false;
}

void TestQtEditTab::anEmptyDockHasItsHeightAndNoTabs()
{
    KDockPannel dock(nullptr, /*rows=*/3);
    QCOMPARE(dock.count(), 0);
    QCOMPARE(dock.minimumHeight(), 126);
    QCOMPARE(dock.maximumHeight(), 126);
    dock.UpdateAll();
}

void TestQtEditTab::aStructureWithoutMarkersGetsATabOfItsOwnName()
{
    Fields fields("Dashboard");
    fields.Number("a");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QCOMPARE(Titles(dock), QStringList({ QStringLiteral("Dashboard") }));
    QCOMPARE(Cells(dock, 0), Lines("0,0 a | 0,1 spacer"));

    // A marker that is no tab's comes too late for a title of its own.
    Fields grouped("Grouped");
    grouped.Group("1").Number("b");
    dock.SetStructs(&grouped);
    QCOMPARE(Titles(dock), QStringList({ QStringLiteral("Grouped") }));
}

void TestQtEditTab::aMarkerAtTheHeadLeavesTheStructuresNameOut()
{
    Fields fields("Dashboard");
    fields.Tab("Layer").Number("a").Number("b").Tab("Effect").Number("c");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QCOMPARE(Titles(dock), Lines("Layer | Effect"));
    QCOMPARE(Cells(dock, 0), Lines("0,0 a | 1,0 b | 0,2 spacer"));
    QCOMPARE(Cells(dock, 1), Lines("0,0 c | 0,1 spacer"));
}

void TestQtEditTab::editorsFillColumnsFromTheTop()
{
    Fields fields("F");
    fields.Numbers(5);
    KDockPannel two(nullptr, 2);
    two.SetStructs(&fields);
    QCOMPARE(Cells(two, 0), Lines("0,0 0 | 1,0 1 | 0,1 2 | 1,1 3 | 0,2 4 | 0,3 spacer"));
    KDockPannel three(nullptr, 3);
    three.SetStructs(&fields);
    QCOMPARE(Cells(three, 0), Lines("0,0 0 | 1,0 1 | 2,0 2 | 0,1 3 | 1,1 4 | 0,2 spacer"));
}

void TestQtEditTab::aTabMarkerAsTheLastChildGivesAnEmptyTab()
{
    Fields fields("F");
    fields.Number("a").Tab("Last");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QCOMPARE(Titles(dock), Lines("F | Last"));
    QCOMPARE(Cells(dock, 1), Lines("0,1 spacer"));
}

void TestQtEditTab::aTabMarkerBeginsAtTheTopAgainAndClosesTheTabBefore()
{
    Fields fields("F");
    fields.Tab("A").Numbers(3).Tab("B").Number("b");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QCOMPARE(Cells(dock, 0), Lines("0,0 0 | 1,0 1 | 0,1 2 | 0,2 spacer"));
    QCOMPARE(Cells(dock, 1), Lines("0,0 b | 0,1 spacer"));
    QLayoutItem *spacer = Grid(dock, 0)->itemAt(3);
    QCOMPARE(spacer->sizeHint(), QSize(0, 0));
    QCOMPARE(spacer->expandingDirections(), Qt::Horizontal | Qt::Vertical);
}

void TestQtEditTab::aColumnMarkerBeginsAColumnUnlessOneHasJustBegun()
{
    Fields fields("F");
    fields.Column().Number("a").Column().Number("b").Number("c").Column().Column().Number("d");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QCOMPARE(Cells(dock, 0), Lines("0,0 a | 0,1 b | 1,1 c | 0,2 d | 0,3 spacer"));
}

void TestQtEditTab::aGroupTakesOneCell()
{
    Fields fields("F");
    fields.Group("2").Number("a").Number("b").Number("c").Group("3").Numbers(3).Number("d");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QCOMPARE(Cells(dock, 0), Lines("0,0 [a b] | 1,0 c | 0,1 [0 1 2] | 1,1 d | 0,3 spacer"));
    QVERIFY(qobject_cast<QHBoxLayout *>(Grid(dock, 0)->itemAt(0)->layout()));
}

void TestQtEditTab::aGroupThatWaitsForMoreIsDroppedByATab()
{
    Fields fields("F");
    fields.Group("3").Number("a").Number("b").Tab("Next").Number("c");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QCOMPARE(Cells(dock, 0), Lines("0,1 spacer"));
    QCOMPARE(Editors(dock, 0).size(), 2); // they stand on the page, unplaced
    QCOMPARE(Cells(dock, 1), Lines("0,0 c | 0,1 spacer"));
    dock.show();
    fields.numbers[1] = 7;
    dock.UpdateAll(); // and are refreshed like any other
    QCOMPARE(Editors(dock, 0).at(1)->GetDouble(), 7.0);
}

void TestQtEditTab::aGroupWhoseSizeIsNoNumberLeavesAnEmptyCell()
{
    Fields fields("F");
    fields.Group("two").Number("a").Number("b");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QCOMPARE(Cells(dock, 0), Lines("0,0 [] | 1,0 b | 0,2 spacer"));
    QCOMPARE(Editors(dock, 0).size(), 2); // a stands in no layout
}

void TestQtEditTab::aSecondGroupDropsTheOneThatWaits()
{
    Fields fields("F");
    fields.Group("3").Number("a").Group("2").Number("b").Number("c");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QCOMPARE(Cells(dock, 0), Lines("0,0 [b c] | 0,1 spacer"));
    QCOMPARE(Editors(dock, 0).size(), 3);
}

void TestQtEditTab::aGroupOfNegativeSizeIsNone()
{
    Fields fields("F");
    fields.Group("-4").Number("a").Number("b");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QCOMPARE(Cells(dock, 0), Lines("0,0 a | 1,0 b | 0,2 spacer"));
}

/// A structure that begins no tab goes on in the one before, spacer and all.
void TestQtEditTab::theGridRunsOnOverTheStructures()
{
    Fields first("First"), second("Second"), third("Third");
    first.Number("a");
    second.Number("b").Number("c");
    third.Tab("Own").Number("d");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&first, &second, &third);
    QCOMPARE(Titles(dock), Lines("First | Own"));
    QCOMPARE(Cells(dock, 0), Lines("0,0 a | 0,1 spacer | 1,0 b | 0,1 c | 0,2 spacer | 0,2 spacer"));
    QCOMPARE(Cells(dock, 1), Lines("0,0 d | 0,1 spacer"));
}

void TestQtEditTab::whatIsHiddenAndWhatIsNoPlainVariableGetsNoEditor()
{
    Fields fields("F");
    fields.Number("hidden");
    fields.Last()->mFlags &= static_cast<quint8>(~T_FLAG_SHOW);
    fields.Tab("Hidden");
    fields.Last()->mFlags &= static_cast<quint8>(~T_FLAG_SHOW);
    fields.AddVar(TV_NULL, QStringLiteral("nothing"), nullptr, TG_DEFAULT);
    void *array = nullptr;
    fields.AddChild(new T_Tab(TV_INT, QStringLiteral("array"), &array));
    fields.InsertStruct(new T_Struct, T_Struct::kAtEnd);
    fields.AddVar(TV_ONGLET, QStringLiteral("plain marker"), nullptr, TG_DEFAULT);
    fields.Number("a");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QCOMPARE(Titles(dock), QStringList({ QStringLiteral("F") }));
    QCOMPARE(Cells(dock, 0), Lines("0,0 a | 0,1 spacer"));
    QCOMPARE(Editors(dock, 0).size(), 1);

    Fields empty("Empty");
    dock.SetStructs(&empty);
    QCOMPARE(dock.count(), 0);
}

void TestQtEditTab::aPageHasItsSpacings()
{
    Fields fields("F");
    fields.Number("a");
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QCOMPARE(Grid(dock, 0)->horizontalSpacing(), 48);
    QCOMPARE(Grid(dock, 0)->verticalSpacing(), 2);
    QCOMPARE(Grid(dock, 0)->contentsMargins(), QMargins(2, 2, 2, 2));
    QCOMPARE(Editors(dock, 0).first()->maximumWidth(), 200);
}

void TestQtEditTab::aDisabledVariablesEditorStartsDisabled()
{
    Fields fields("F");
    fields.Number("on").Number("off");
    fields.Last()->mFlags &= static_cast<quint8>(~T_FLAG_ENABLE);
    KDockPannel dock(nullptr, 2);
    dock.SetStructs(&fields);
    QVERIFY(Editors(dock, 0).at(0)->findChild<QSpinBox *>()->isEnabled());
    QVERIFY(!Editors(dock, 0).at(1)->findChild<QSpinBox *>()->isEnabled());
}

void TestQtEditTab::theSameStructuresAreNotBuiltAgain()
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

void TestQtEditTab::sevenStructuresGoInOneCall()
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

void TestQtEditTab::theCurrentTabIsKeptAsFarAsThereAreTabs()
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

void TestQtEditTab::theClientsTabsStandBehindTheGeneratedOnes()
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

void TestQtEditTab::theDockMayGrowWhileAClientsTabIsOnTop()
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

void TestQtEditTab::anEditorStaysAliveForOneBuildMore()
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
void TestQtEditTab::aClientsTabIsTakenOverOnceAndThenDeleted()
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

void TestQtEditTab::anEditIsToldOnce()
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

void TestQtEditTab::aButtonIsToldToItsStructureAndInBothSignals()
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

void TestQtEditTab::updateAllShowsWhatTheFieldsHold()
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

void TestQtEditTab::theSkippedFieldsEditorsAreLeftAloneAndNamed()
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

void TestQtEditTab::aVariableWithoutDataIsReportedAsSkippedWhenNothingElseIs()
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

void TestQtEditTab::anEchoDuringAnUpdateReachesTheClient()
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

void TestQtEditTab::theClientMayRebuildFromWithinAnUpdate()
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

void TestQtEditTab::aDockThatIsDestroyedLeavesTheStructuresAlone()
{
    Fields fields("F");
    fields.Group("5").Number("a").Number("b");
    auto *dock = new KDockPannel(nullptr, 2);
    dock->SetStructs(&fields);
    delete dock;
    QCOMPARE(fields.CountOf(typeid(T_Struct)), 0);
    QVERIFY(fields.GetVar(QStringLiteral("a"), TV_INT));
}

VN_TEST_MAIN(TestQtEditTab)

#include "tst_qtedittab.moc"
