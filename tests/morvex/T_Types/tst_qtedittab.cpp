#include "DockFixture.h"
#include "testing/TestMain.h"

#include "T_Types/T_Tab.h"

#include <QHBoxLayout>
#include <QSpinBox>

/// The pages that a dock makes of its structures.
class TestQtEditTab : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { T_Undo::SetEnabled(false); }
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
};

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

VN_TEST_MAIN(TestQtEditTab)

#include "tst_qtedittab.moc"
