#include "PanelFixture.h"

#include "panel/WinGridDataAE.h"
#include "testing/RepaintCounter.h"
#include "vnQT/wExpoGraph.h"

#include <QSignalSpy>
#include <QTimer>
#include <QWindow>

/// The panel's main loop: what it finds when it polls the host, and what follows from a change.
class TestPanelLoop : public QObject
{
    Q_OBJECT

private slots:
    void thePanelFindsTheCompositionAtItsFirstPoll();
    void withNoActiveItemPollingDoesNothingAtAll();
    void aFootageItemMadeActiveEmptiesThePanel();
    void switchingBetweenTwoCompositionsOfTheSameNameIsNotNoticed();
    void switchingToAnotherCompositionShowsIt();
    void renamingTheCompositionOnShowLooksLikeAnotherOne();
    void aLongNameIsKeptAsTheHostTellsIt_data();
    void aLongNameIsKeptAsTheHostTellsIt();
    void withBothSyncOptionsOffNeitherFollowsTheOther();
    void withSyncColumnThePanelFollowsTheHostsLayer();
    void withSyncColumnAClickSelectsTheLayerInTheHost();
    void withSyncImaThePanelFollowsTheHostsTime();
    void withSyncImaAClickMovesTheHostALittleLater();
    void oneUpdateServesColumnAndFrame();
    void aHeldMouseButtonHoldsBackThePushAndThePollingOfTheFrame();
    void aPushThatWaitsIsDroppedWhenTheCompositionChanges();
    void twoHostUndosWithin100MsGiveOneRefresh();
    void theRefreshReloadsWhatTheHostHasUndone();
    void hidingTheSheetStopsItsUpdatesShowingItReloadsIt();
    void aCompositionThatComesWhileTheSheetIsHiddenWaitsForTheNextOne();
    void aPollWhereNothingChangedTouchesNothing_data();
    void aPollWhereNothingChangedTouchesNothing();
    void withoutACurrentCellTheMirrorDoesNotCrash();
    void aLevelBelowCurrentIsNoChange();
    void whoCausedAChangeSkipsIt();
    void thePushOfThisFrameComesAtOnce();
    void thePanelCanGoWhileAPushWaits();
};

namespace {

const QStringList kAllTabs{ QStringLiteral("Layer"), QStringLiteral("NewCol"),
    QStringLiteral("Transform"), QStringLiteral("Effect"), QStringLiteral("Setup"),
    QStringLiteral("Board") };
const QStringList kTabsWithoutCompo = kAllTabs.mid(4);

constexpr int kLongerThanAnyTimer = 200; // ms

/// Names of the functions that the host has seen, without repetition.
QByteArrayList Seen(const rostrum::Trace &trace)
{
    QByteArrayList seen;
    for (const QByteArray &function : trace.Functions()) {
        if (!seen.contains(function))
            seen << function;
    }
    return seen;
}

void Select(PanelFixture &shown, int col)
{
    shown.Document().view.selections[shown.composition] = { shown.layers[col] };
}

} // namespace

void TestPanelLoop::thePanelFindsTheCompositionAtItsFirstPoll()
{
    PanelFixture shown;
    shown.Open();
    shown.TakeLog();
    QCOMPARE(shown.panel->windowTitle(), QStringLiteral("Form"));
    QCOMPARE(shown.EnabledTabs(), kTabsWithoutCompo);
    QCOMPARE(shown.Grid().columnCount(), 0);
    shown.Poll();
    QCOMPARE(shown.panel->windowTitle(), QStringLiteral("scene 7"));
    QCOMPARE(shown.EnabledTabs(), kAllTabs);
    QCOMPARE(shown.Headers(),
        QStringList({ QStringLiteral("jump"), QStringLiteral("sky"), QStringLiteral("walk") }));
    QCOMPARE(shown.Shown(0).mid(0, 6),
        QStringList({ QStringLiteral("3"), QStringLiteral(" ~ "), QStringLiteral(" ~ "),
            QStringLiteral(" ~ "), QStringLiteral(" ~ "), QStringLiteral("6") }));
    QCOMPARE(GetDoc()->GetRow(), -1);
    QCOMPARE(GetDoc()->GetCol(), -1);
    QCOMPARE(QByteArray(GetVipLi()->CompoName), QByteArray("scene 7"));
}

void TestPanelLoop::withNoActiveItemPollingDoesNothingAtAll()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.ClickCell(0, 5);
    shown.Document().view.activeItem = 0;
    shown.host.GetTrace().Start();
    shown.Poll();
    QCOMPARE(shown.host.GetTrace().Functions(), QByteArrayList{ "AEGP_GetActiveItem" });
    QCOMPARE(shown.panel->windowTitle(), QStringLiteral("scene 7"));
    QCOMPARE(shown.EnabledTabs(), kAllTabs);
    QCOMPARE(GetDoc()->GetRow(), 5);
}

void TestPanelLoop::aFootageItemMadeActiveEmptiesThePanel()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.Document().view.activeItem = shown.footage;
    shown.Poll();
    QCOMPARE(shown.panel->windowTitle(), QString());
    QCOMPARE(shown.EnabledTabs(), kTabsWithoutCompo);
    QCOMPARE(shown.Grid().columnCount(), 0);
    QCOMPARE(shown.Grid().rowCount(), 0);
    QVERIFY(!GetVipLi()->Compo);
    QCOMPARE(shown.TakeLog(), QStringList{ QStringLiteral("NoCompoSelected => Init nbc nbl") });

    shown.Document().view.activeItem = shown.composition;
    shown.Poll();
    QCOMPARE(shown.EnabledTabs(), kAllTabs);
    QCOMPARE(shown.Grid().columnCount(), 3);
}

void TestPanelLoop::switchingBetweenTwoCompositionsOfTheSameNameIsNotNoticed()
{
    PanelFixture shown;
    const rostrum::ItemId twin = shown.AddCompo("scene 7", 9);
    shown.OpenOnCompo();
    shown.ClickCell(1, 4);
    shown.Document().view.activeItem = twin;
    shown.Poll();
    QCOMPARE(shown.Grid().rowCount(), 24);
    QCOMPARE(GetDoc()->GetRow(), 4);
}

void TestPanelLoop::switchingToAnotherCompositionShowsIt()
{
    PanelFixture shown;
    const rostrum::ItemId other = shown.AddCompo("scene 8", 9);
    shown.OpenOnCompo();
    shown.ClickCell(1, 4);
    shown.Document().view.activeItem = other;
    shown.Poll();
    QCOMPARE(shown.panel->windowTitle(), QStringLiteral("scene 8"));
    QCOMPARE(shown.Grid().rowCount(), 9);
    QCOMPARE(shown.Grid().columnCount(), 0);
    QCOMPARE(GetDoc()->GetRow(), -1);
    QCOMPARE(GetDoc()->GetCol(), -1);
    QVERIFY(!GetVipLi()->Layer);
}

void TestPanelLoop::renamingTheCompositionOnShowLooksLikeAnotherOne()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.ClickCell(2, 7);
    shown.Document().Edit("by hand").Edit(shown.composition)->name = "scene 7 b";
    shown.Document().CloseLooseEnds();
    shown.Poll();
    QCOMPARE(shown.panel->windowTitle(), QStringLiteral("scene 7 b"));
    QCOMPARE(shown.Grid().columnCount(), 3);
    QCOMPARE(shown.EnabledTabs(), kAllTabs);
    QCOMPARE(GetDoc()->GetRow(), -1);
}

void TestPanelLoop::aLongNameIsKeptAsTheHostTellsIt_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    const QString letters = QStringLiteral("abcdefghijklmnopqrstuvwxyz0123456789");
    QTest::newRow("31 bytes") << letters.left(31) << letters.left(31);
    QTest::newRow("36 bytes") << letters << letters.left(31);
    QTest::newRow("accents, two bytes each")
        << QString(20, QChar(0xE9)) << QString(15, QChar(0xE9));
}

void TestPanelLoop::aLongNameIsKeptAsTheHostTellsIt()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    PanelFixture panel;
    panel.Document().Edit("by hand").Edit(panel.composition)->name = name.toUtf8();
    panel.Document().CloseLooseEnds();
    panel.OpenOnCompo();
    QCOMPARE(panel.panel->windowTitle(), shown);
    QCOMPARE(panel.Grid().columnCount(), 3);
    panel.host.GetTrace().Start();
    panel.Poll();
    QCOMPARE(
        panel.host.GetTrace().Count("AEGP_StartUndoGroup"), 0); // no reload: the names are equal
}

void TestPanelLoop::withBothSyncOptionsOffNeitherFollowsTheOther()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.ClickCell(0, 5);
    shown.SetHostFrame(12);
    Select(shown, 2);
    shown.Poll();
    QCOMPARE(GetDoc()->GetRow(), 5);
    QCOMPARE(GetDoc()->GetCol(), 0);
    shown.ClickCell(1, 9);
    QCOMPARE(GetDoc()->GetRow(), 9);
    QTest::qWait(kLongerThanAnyTimer);
    QCOMPARE(shown.HostFrame(), 12);
    QCOMPARE(shown.Selection(), QVector<rostrum::LayerId>{ shown.layers[2] });
}

void TestPanelLoop::withSyncColumnThePanelFollowsTheHostsLayer()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.ClickCell(1, 4);
    shown.PickTab("Setup");
    shown.Tick(&GetDoc()->syncColumn);
    QVERIFY(GetDoc()->syncColumn);
    shown.Change(
        shown.layers[2], [](rostrum::Layer &layer) { layer.rotation = rostrum::Stream({ 33 }); });
    Select(shown, 2);
    shown.Poll();
    QCOMPARE(GetDoc()->GetCol(), 2);
    QCOMPARE(GetDoc()->GetRow(), 4);
    QCOMPARE(shown.Grid().currentColumn(), 2);
    QCOMPARE(shown.TextOf(&GetDoc()->rotation), QStringLiteral("33"));
    shown.Document().view.selections[shown.composition] = {};
    shown.Poll();
    QCOMPARE(GetDoc()->GetCol(), 0); // no layer is active: the host's index is 0
}

void TestPanelLoop::withSyncColumnAClickSelectsTheLayerInTheHost()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.PickTab("Setup");
    shown.Tick(&GetDoc()->syncColumn);
    shown.ClickCell(1, 4);
    QCOMPARE(shown.Selection(), QVector<rostrum::LayerId>{ shown.layers[1] });
    QCOMPARE(shown.UndoNames().mid(1), QVector<QByteArray>()); // a selection is no change
}

void TestPanelLoop::withSyncImaThePanelFollowsTheHostsTime()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.ClickCell(0, 4);
    shown.PickTab("Setup");
    shown.Tick(&GetDoc()->syncIma);
    QTest::qWait(kLongerThanAnyTimer); // until all is painted, for which the graph asks the host
    shown.SetHostFrame(17);
    shown.Poll();
    QCOMPARE(GetDoc()->GetRow(), 17);
    QCOMPARE(shown.Grid().currentRow(), 17);
    shown.host.GetTrace().Start();
    QTest::qWait(kLongerThanAnyTimer); // the frame goes back, which is no change
    QCOMPARE(Seen(shown.host.GetTrace()),
        QByteArrayList({ "AEGP_GetItemFromComp", "AEGP_GetItemCurrentTime" }));
    QCOMPARE(shown.HostFrame(), 17);
}

void TestPanelLoop::withSyncImaAClickMovesTheHostALittleLater()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.PickTab("Setup");
    shown.Tick(&GetDoc()->syncIma);
    shown.ClickCell(0, 11);
    QCOMPARE(shown.HostFrame(), 0);
    shown.Poll(); // the host still holds the frame that is about to be replaced
    QCOMPARE(GetDoc()->GetRow(), 11);
    QTRY_COMPARE(shown.HostFrame(), 11);
    shown.SetHostFrame(3);
    shown.Poll();
    QCOMPARE(GetDoc()->GetRow(), 3);
}

void TestPanelLoop::oneUpdateServesColumnAndFrame()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    GetDoc()->syncColumn = GetDoc()->syncIma = true;
    shown.ClickCell(1, 4);
    QTRY_COMPARE(shown.HostFrame(), 4);
    Select(shown, 0);
    shown.SetHostFrame(9);
    shown.host.GetTrace().Start();
    shown.Poll();
    QCOMPARE(
        shown.host.GetTrace().Count("AEGP_GetLayerStreamValue"), 4); // one reading of the mirror
    QCOMPARE(GetDoc()->GetCol(), 0);
    QCOMPARE(GetDoc()->GetRow(), 9);
}

void TestPanelLoop::aHeldMouseButtonHoldsBackThePushAndThePollingOfTheFrame()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.PickTab("Setup");
    shown.Tick(&GetDoc()->syncIma);
    QWindow *window = shown.Grid().window()->windowHandle();
    QVERIFY(window);
    const auto at = [&](int col, int row) {
        const QPoint middle
            = shown.Grid().visualRect(shown.Grid().model()->index(row, col)).center();
        return shown.Grid().viewport()->mapTo(shown.Grid().window(), middle);
    };
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, at(0, 2));
    QCOMPARE(GetDoc()->GetRow(), 2);
    QTest::mouseMove(window, at(0, 4));
    QTest::mouseMove(window, at(0, 6));
    QTest::qWait(kLongerThanAnyTimer);
    QCOMPARE(shown.HostFrame(), 0);
    const int row = GetDoc()->GetRow();
    QVERIFY(row > 2);
    shown.SetHostFrame(15);
    shown.Poll();
    QCOMPARE(GetDoc()->GetRow(), row);
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, at(0, 6));
    QTRY_COMPARE(shown.HostFrame(), row);
}

void TestPanelLoop::aPushThatWaitsIsDroppedWhenTheCompositionChanges()
{
    PanelFixture shown;
    const rostrum::ItemId other = shown.AddCompo("scene 8", 9);
    shown.OpenOnCompo();
    GetDoc()->syncIma = true;
    shown.ClickCell(0, 11);
    shown.Document().view.activeItem = other;
    shown.SetHostFrame(5);
    shown.Poll();
    QCOMPARE(GetDoc()->GetRow(), -1);
    shown.host.GetTrace().Start();
    QTest::qWait(kLongerThanAnyTimer);
    QCOMPARE(shown.host.GetTrace().Count("AEGP_SetItemCurrentTime"), 0);
    QCOMPARE(shown.HostFrame(), 5);
    shown.Poll(); // and the polling of the frame goes on
    QCOMPARE(GetDoc()->GetRow(), 5);
}

void TestPanelLoop::twoHostUndosWithin100MsGiveOneRefresh()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    QTimer &timer = shown.RefreshTimer();
    QVERIFY(!timer.isActive());
    shown.host.GetTrace().Start();
    shown.panel->ScheduleRefresh();
    QVERIFY(timer.isActive());
    QCOMPARE(timer.interval(), 100);
    QVERIFY(timer.isSingleShot());
    shown.panel->ScheduleRefresh();
    QTRY_VERIFY(!timer.isActive());
    QTest::qWait(kLongerThanAnyTimer);
    QCOMPARE(shown.host.GetTrace().Count("AEGP_StartUndoGroup"), 1); // each reload opens one
}

void TestPanelLoop::theRefreshReloadsWhatTheHostHasUndone()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    const QStringList before = shown.Shown(2);
    shown.ClickCell(2, 2);
    QTest::keyClick(&shown.Grid(), Qt::Key_Delete);
    QVERIFY(shown.Shown(2) != before);
    shown.panel->ScheduleRefresh(); // as at the command, which the host carries out afterwards
    shown.Document().CloseLooseEnds();
    QVERIFY(shown.Document().Undo());
    QTRY_COMPARE(shown.Shown(2), before);
}

void TestPanelLoop::hidingTheSheetStopsItsUpdatesShowingItReloadsIt()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.panel->DoFlyoutCommand(31);
    QVERIFY(!shown.Grid().isVisible());
    shown.SetRemapKeys(shown.layers[2], { { 0, 8 } });
    shown.host.GetTrace().Start();
    shown.panel->OnRefresh();
    shown.panel->OnPbReloadExpo();
    shown.panel->OnUpdate(UpdAll, nullptr);
    QCOMPARE(shown.host.GetTrace().Count("AEGP_StartUndoGroup"), 0);
    QCOMPARE(shown.Shown(2)[0], QStringLiteral("1"));
    shown.panel->DoFlyoutCommand(31);
    QVERIFY(shown.Grid().isVisible());
    QCOMPARE(shown.host.GetTrace().Count("AEGP_StartUndoGroup"), 1);
    QCOMPARE(shown.Shown(2)[0], QStringLiteral("8"));
}

/// The sheet's reload is what finds a composition, and the change of composition is the one moment
/// at which the tabs are set.
void TestPanelLoop::aCompositionThatComesWhileTheSheetIsHiddenWaitsForTheNextOne()
{
    PanelFixture shown;
    shown.Open();
    shown.TakeLog();
    shown.panel->DoFlyoutCommand(31);
    shown.Poll();
    QCOMPARE(shown.panel->windowTitle(), QStringLiteral("scene 7"));
    QCOMPARE(shown.EnabledTabs(), kTabsWithoutCompo);
    shown.panel->DoFlyoutCommand(31);
    QCOMPARE(shown.Grid().columnCount(), 3);
    QCOMPARE(shown.EnabledTabs(), kTabsWithoutCompo);
    shown.Document().view.activeItem = shown.AddCompo("scene 8", 9);
    shown.Poll();
    QCOMPARE(shown.EnabledTabs(), kAllTabs);
}

void TestPanelLoop::aPollWhereNothingChangedTouchesNothing_data()
{
    QTest::addColumn<bool>("sync");
    QTest::addColumn<QByteArrayList>("asked");
    const QByteArrayList name{ "AEGP_GetActiveItem", "AEGP_GetActiveItem", "AEGP_GetCompFromItem",
        "AEGP_GetItemFromComp", "AEGP_GetItemName" };
    QTest::newRow("sync off") << false << name;
    QTest::newRow("sync on") << true
                             << name
            + QByteArrayList{ "AEGP_GetActiveLayer", "AEGP_GetLayerIndex", "AEGP_GetItemFromComp",
                  "AEGP_GetItemCurrentTime" };
}

void TestPanelLoop::aPollWhereNothingChangedTouchesNothing()
{
    QFETCH(bool, sync);
    QFETCH(QByteArrayList, asked);
    PanelFixture shown;
    shown.OpenOnCompo();
    GetDoc()->syncColumn = GetDoc()->syncIma = sync;
    shown.ClickCell(1, 4);
    QTest::qWait(kLongerThanAnyTimer);
    shown.Poll();
    testing::RepaintCounter repaints;
    const int changes = shown.host.ChangeCount();
    shown.host.GetTrace().Start();
    shown.panel->OnHostIdle();
    QCOMPARE(shown.host.GetTrace().Functions(), asked);
    QCOMPARE(repaints.Take(), 0);
    QCOMPARE(shown.host.ChangeCount(), changes);
    QVERIFY(!shown.RefreshTimer().isActive());
}

void TestPanelLoop::withoutACurrentCellTheMirrorDoesNotCrash()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    GetDoc()->blur = 7;
    for (const int row : { -1, 3 }) {
        for (const int col : { -1, 0, 3 }) {
            GetDoc()->SetRow(row);
            GetDoc()->SetCol(col);
            shown.panel->OnUpdate(UpdAll, nullptr);
            PanelFixture::Settle();
            QCOMPARE(GetDoc()->posX, col == 0 ? 320 : -1);
            QCOMPARE(shown.TextOf(&GetDoc()->posX),
                col == 0 ? QStringLiteral("320") : QStringLiteral("-1"));
        }
    }
    QCOMPARE(shown.host.OpenHandles(), 2); // the panel's two suites
}

void TestPanelLoop::aLevelBelowCurrentIsNoChange()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    GetDoc()->syncIma = true;
    shown.host.GetTrace().Start();
    shown.panel->OnUpdate(UpdNone, nullptr);
    QCOMPARE(shown.host.GetTrace().Entries().size(), 0);
}

void TestPanelLoop::whoCausedAChangeSkipsIt()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.ClickCell(0, 3);
    shown.SetRemapKeys(shown.layers[0], { { 0, 8 } });
    GetDoc()->SetRow(6);
    shown.panel->OnUpdate(UpdCurrent, static_cast<WExpoGrid *>(&shown.Grid()));
    QCOMPARE(shown.Grid().currentRow(), 3);
    shown.panel->OnUpdate(UpdCurrent, static_cast<WExpoGraph *>(&shown.Graph()));
    QCOMPARE(shown.Grid().currentRow(), 6);
}

void TestPanelLoop::thePushOfThisFrameComesAtOnce()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.ClickCell(0, 13);
    QCOMPARE(shown.HostFrame(), 0);
    shown.panel->OnPbTest();
    QCOMPARE(shown.HostFrame(), 13);
}

void TestPanelLoop::thePanelCanGoWhileAPushWaits()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    GetDoc()->syncIma = true;
    shown.ClickCell(0, 13);
    shown.panel->ScheduleRefresh();
    shown.TakeLog();
    delete shown.panel;
    shown.panel = nullptr;
    QTest::qWait(kLongerThanAnyTimer);
    QCOMPARE(shown.HostFrame(), 0);
}

VN_HOST_TEST_MAIN(TestPanelLoop)
#include "tst_panel_loop.moc"
