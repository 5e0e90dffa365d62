#include "PanelStage.h"

#include <QScreen>

using namespace rostrum;
using testing::PanelStage;

namespace {

const QVector<bool> kAllTabs(6, true);
const QVector<bool> kLastTabs{ false, false, false, false, true, true }; // "Setup" and "Board"
constexpr int kWalk = PanelStage::kWalk, kRun = PanelStage::kRun;

} // namespace

/// Changes of the host, and what the panel makes of them; what the panel sends back.
class TestPanelHost : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { stage = std::make_unique<PanelStage>(); }
    void cleanupTestCase() { stage.reset(); }
    void init() { stage->OpenProject(); }
    void cleanup();

    void theSheetShowsTheComposition();
    void switchingTheCompositionSwitchesThePanel();
    void theGraphShowsAnotherCompositionAtOnce();
    void twoCompositionsOfOneNameAreNotToldApart();
    void aRenamedCompositionLooksLikeAnotherOne();
    void aRemovedCompositionStaysOnShowUntilAnotherItemIsActive();
    void aFootageItemEmptiesThePanel();
    void withNoActiveItemThePanelStaysAsItIs();

    void theHostsTimeAndSelectionFollowTheOptions_data();
    void theHostsTimeAndSelectionFollowTheOptions();
    void aClickInTheSheetMovesTheHostByTheOptions_data();
    void aClickInTheSheetMovesTheHostByTheOptions();
    void theFrameIsPushedOnlyWhenTheButtonIsUp();
    void whileAFrameWaitsTheHostsOwnIsNotRead();
    void aPickInTheGraphMovesSheetAndHost();

    void aTypedCellIsOneStepOfTheHost();
    void theHostsShortcutsWorkInThePanel();
    void twoUndosWithinAMomentGiveOneRefresh();
    void twoUndosApartGiveTwo();
    void redoAndOpenRefreshToo_data();
    void redoAndOpenRefreshToo();

    void theFlyoutHidesAndShowsTheSheet();
    void theFlyoutHidesAndShowsTheGraph();
    void theFlyoutsVersionLineDoesNothing();
    void aClosedPanelShownAgainIsTheSame();

private:
    int Count(const char *function) const { return stage->host.GetTrace().Count(function); }
    int Reloads() const;
    ItemId AddScene(const char *name);

    std::unique_ptr<PanelStage> stage;
};

void TestPanelHost::cleanup()
{
    stage->host.GetTrace().Stop();
    QCOMPARE(stage->Open(), QByteArrayList());
    QCOMPARE(stage->host.Complaints(), QByteArrayList());
    QCOMPARE(stage->TakeBoxes(), QStringList());
}

int TestPanelHost::Reloads() const
{
    return stage->host.GetTrace().Text().count("AEGP_StartUndoGroup(\"morvex:Reload\")");
}

/// A second composition: two layers of "walk", 12 frames.
ItemId TestPanelHost::AddScene(const char *name)
{
    Composition content;
    content.duration = content.rate.FrameTime(12);
    Project &project = stage->Edit();
    const ItemId scene = project.AddComposition(name, content);
    project.AddLayer(stage->footage, scene);
    project.AddLayer(stage->footage, scene);
    stage->CloseChange();
    return scene;
}

void TestPanelHost::theSheetShowsTheComposition()
{
    QCOMPARE(stage->Title(), QStringLiteral("scene 7"));
    QCOMPARE(stage->TabsEnabled(), kAllTabs);
    QCOMPARE(stage->Sheet()->columnCount(), 4);
    QCOMPARE(stage->Sheet()->rowCount(), PanelStage::kFrames);
    for (const int col : { kWalk, kRun, PanelStage::kCel })
        QCOMPARE(stage->Shown(col), stage->SheetOf(col));
    QCOMPARE(stage->Shown(PanelStage::kSky).mid(0, 3),
        QStringList({ QStringLiteral("-"), QStringLiteral("-"), QStringLiteral("-") }));
}

void TestPanelHost::switchingTheCompositionSwitchesThePanel()
{
    stage->ClickCell(kRun, 10);
    QCOMPARE(stage->Editor<QSpinBox>("Opacity")->value(), 100);
    stage->Document().view.activeItem = AddScene("scene 8");
    QCOMPARE(stage->Title(), QStringLiteral("scene 7")); // it has to look first
    stage->Idle();

    QCOMPARE(stage->Title(), QStringLiteral("scene 8"));
    QCOMPARE(stage->TabsEnabled(), kAllTabs);
    QCOMPARE(stage->Sheet()->columnCount(), 2);
    QCOMPARE(stage->Sheet()->rowCount(), 12);

    stage->Document().view.activeItem = stage->composition;
    stage->Idle();
    QCOMPARE(stage->Title(), QStringLiteral("scene 7"));
    QCOMPARE(stage->Sheet()->columnCount(), 4);
    QCOMPARE(stage->Shown(kRun), stage->SheetOf(kRun));
}

void TestPanelHost::theGraphShowsAnotherCompositionAtOnce()
{
    const auto onScreen = [this] {
        stage->Settle();
        const QWidget *graph = stage->Graph();
        const QWidget *window = graph->window();
        const QRect place(graph->mapTo(window, QPoint(0, 0)), graph->size());
        return window->screen()->grabWindow(window->winId()).toImage().copy(place);
    };
    const auto afresh = [this] { return stage->Graph()->grab().toImage(); };
    const QImage before = onScreen();
    QCOMPARE(before, afresh().convertToFormat(before.format()));

    stage->Document().view.activeItem = AddScene("two layers");
    stage->Idle();
    const QImage after = onScreen();
    QVERIFY(after != before);
    QCOMPARE(after, afresh().convertToFormat(after.format()));

    // A layer that the user removes in the host is gone with "Update".
    QVERIFY(stage->Edit().RemoveLayer(stage->Document().view.activeItem,
        stage->Edit().FindComposition(stage->Document().view.activeItem)->layers[0]->id));
    stage->CloseChange();
    stage->Click(stage->Panel()->findChild<QWidget *>(QStringLiteral("pbRefresh")));
    QVERIFY(onScreen() != after);
}

void TestPanelHost::twoCompositionsOfOneNameAreNotToldApart()
{
    const ItemId twin = AddScene("scene 7");
    stage->Document().view.activeItem = twin;
    stage->host.GetTrace().Start();
    stage->Idle();
    QCOMPARE(Reloads(), 0);
    QCOMPARE(stage->Sheet()->columnCount(), 4);
}

void TestPanelHost::aRenamedCompositionLooksLikeAnotherOne()
{
    stage->ClickCell(kRun, 10);
    stage->Edit().Edit(stage->composition)->name = "s\xc3\xa9quence";
    stage->CloseChange();
    stage->host.GetTrace().Start();
    stage->Idle();

    QCOMPARE(Reloads(), 1);
    QCOMPARE(stage->Title(), QString::fromUtf8("s\xc3\xa9quence"));
    QCOMPARE(stage->TabsEnabled(), kAllTabs);
    QCOMPARE(stage->Shown(kRun), stage->SheetOf(kRun));
    stage->Idle();
    QCOMPARE(Reloads(), 1);
}

void TestPanelHost::aRemovedCompositionStaysOnShowUntilAnotherItemIsActive()
{
    stage->ClickCell(kRun, 10);
    stage->Edit().RemoveItem(stage->composition);
    stage->CloseChange();
    for (int i = 0; i < 3; ++i)
        stage->Idle();
    QCOMPARE(stage->Title(), QStringLiteral("scene 7"));
    QCOMPARE(stage->Sheet()->columnCount(), 4);
    stage->ClickCell(kWalk, 3); // on a composition that is gone
    stage->TypeCell(QStringLiteral("9"));
    stage->SetNumber("Opacity", 50);

    stage->Document().view.activeItem = stage->footage;
    stage->Idle();
    QCOMPARE(stage->Title(), QString());
    QCOMPARE(stage->Sheet()->columnCount(), 0);
}

void TestPanelHost::aFootageItemEmptiesThePanel()
{
    stage->ClickCell(kRun, 10);
    stage->Document().view.activeItem = stage->footage;
    stage->Idle();
    QCOMPARE(stage->Title(), QString());
    QCOMPARE(stage->TabsEnabled(), kLastTabs);
    QCOMPARE(stage->Sheet()->columnCount(), 0);
    QCOMPARE(stage->Sheet()->rowCount(), 0);

    stage->host.GetTrace().Start(); // no composition is the same as no composition
    stage->Idle();
    QCOMPARE(stage->host.GetTrace().Functions(),
        QByteArrayList({ "AEGP_GetActiveItem", "AEGP_GetActiveItem", "AEGP_GetCompFromItem" }));

    stage->Document().view.activeItem = stage->composition;
    stage->Idle();
    QCOMPARE(stage->TabsEnabled(), kAllTabs);
    QCOMPARE(stage->Sheet()->columnCount(), 4);
}

void TestPanelHost::withNoActiveItemThePanelStaysAsItIs()
{
    stage->ClickCell(kRun, 10);
    const QImage picture = stage->Container()->grab().toImage();
    stage->Document().view.activeItem = 0;
    stage->host.GetTrace().Start();
    stage->Idle();
    QCOMPARE(stage->host.GetTrace().Functions(), QByteArrayList{ "AEGP_GetActiveItem" });
    QCOMPARE(stage->Title(), QStringLiteral("scene 7"));
    QCOMPARE(stage->Container()->grab().toImage(), picture);
}

void TestPanelHost::theHostsTimeAndSelectionFollowTheOptions_data()
{
    QTest::addColumn<bool>("column");
    QTest::addColumn<bool>("frame");
    QTest::newRow("neither") << false << false;
    QTest::newRow("the column") << true << false;
    QTest::newRow("the frame") << false << true;
    QTest::newRow("both") << true << true;
}

void TestPanelHost::theHostsTimeAndSelectionFollowTheOptions()
{
    QFETCH(const bool, column);
    QFETCH(const bool, frame);
    stage->ClickCell(kWalk, 2);
    stage->SetHostFrame(2);
    stage->Document().view.selections[stage->composition] = { stage->layers[kWalk] };
    stage->Tick("Sync Column with AE", column);
    stage->Tick("Sync Ima with AE", frame);

    stage->SetHostFrame(17);
    stage->Document().view.selections[stage->composition] = { stage->layers[kRun] };
    stage->Idle();
    stage->WaitForTimers();

    QCOMPARE(stage->CurrentCol(), column ? kRun : kWalk);
    QCOMPARE(stage->CurrentRow(), frame ? 17 : 2);
    QCOMPARE(stage->HostFrame(), 17);
    QCOMPARE(stage->HostSelection(), QVector<int>{ kRun });
    QCOMPARE(stage->UndoNames(), QVector<QByteArray>());
}

void TestPanelHost::aClickInTheSheetMovesTheHostByTheOptions_data()
{
    theHostsTimeAndSelectionFollowTheOptions_data();
}

void TestPanelHost::aClickInTheSheetMovesTheHostByTheOptions()
{
    QFETCH(const bool, column);
    QFETCH(const bool, frame);
    stage->Tick("Sync Column with AE", column);
    stage->Tick("Sync Ima with AE", frame);
    stage->Document().view.selections[stage->composition] = { stage->layers[kWalk] };
    stage->SetHostFrame(0);
    stage->Idle();
    stage->WaitForTimers();
    stage->ClickCell(kRun, 12);
    stage->WaitForTimers();
    stage->Idle();

    QCOMPARE(stage->CurrentCol(), kRun);
    QCOMPARE(stage->CurrentRow(), 12);
    QCOMPARE(stage->HostSelection(), QVector<int>{ column ? kRun : kWalk });
    QCOMPARE(stage->HostFrame(), frame ? 12 : 0);
    QCOMPARE(stage->UndoNames(), QVector<QByteArray>());
}

void TestPanelHost::theFrameIsPushedOnlyWhenTheButtonIsUp()
{
    stage->Tick("Sync Ima with AE", true);
    stage->ClickCell(kRun, 1);
    stage->WaitForTimers();
    QCOMPARE(stage->HostFrame(), 1);
    stage->host.GetTrace().Start();

    QWidget *viewport = stage->Sheet()->viewport();
    stage->Press(viewport, stage->CellMiddle(kRun, 4));
    for (int row = 5; row <= 9; ++row) {
        stage->Move(viewport, stage->CellMiddle(kRun, row));
        stage->Idle();
    }
    stage->WaitForTimers();
    QCOMPARE(stage->HostFrame(), 1);
    QCOMPARE(Count("AEGP_SetItemCurrentTime"), 0);
    QCOMPARE(stage->CurrentRow(), 9);

    stage->Release(viewport, stage->CellMiddle(kRun, 9));
    QTRY_COMPARE(stage->HostFrame(), 9);
    stage->WaitForTimers();
    QCOMPARE(Count("AEGP_SetItemCurrentTime"), 1); // one for the whole drag
}

void TestPanelHost::whileAFrameWaitsTheHostsOwnIsNotRead()
{
    stage->Tick("Sync Ima with AE", true);
    stage->ClickCell(kRun, 1);
    stage->WaitForTimers();
    QWidget *viewport = stage->Sheet()->viewport();
    stage->Press(viewport, stage->CellMiddle(kRun, 4));
    stage->SetHostFrame(20); // the host plays on
    stage->Idle();
    QCOMPARE(stage->CurrentRow(), 4);
    stage->Release(viewport, stage->CellMiddle(kRun, 4));
    QTRY_COMPARE(stage->HostFrame(), 4);
    stage->SetHostFrame(20);
    stage->Idle();
    QCOMPARE(stage->CurrentRow(), 20);
    stage->WaitForTimers();
}

void TestPanelHost::aPickInTheGraphMovesSheetAndHost()
{
    stage->Tick("Sync Column with AE", true);
    stage->ClickCell(kWalk, 3);
    stage->Click(stage->Graph(), stage->BoxMiddle(kRun, 1));
    stage->Settle();
    QCOMPARE(stage->CurrentCol(), kRun);
    QCOMPARE(stage->CurrentRow(), 3);
    QCOMPARE(stage->HostSelection(), QVector<int>{ kRun });

    // A layer that the user hangs from another stands higher at the next paint.
    QVERIFY(stage->Edit().SetParent(stage->composition, stage->layers[kWalk], stage->layers[kRun]));
    stage->CloseChange();
    stage->Click(stage->Graph(), stage->BoxMiddle(kWalk, 2));
    stage->Settle();
    QCOMPARE(stage->CurrentCol(), kWalk);
}

void TestPanelHost::aTypedCellIsOneStepOfTheHost()
{
    stage->ClickCell(kWalk, 6);
    stage->TypeCell(QStringLiteral("7"));
    QCOMPARE(stage->UndoNames(), QVector<QByteArray>{ "morvex:EditCell" });
    QCOMPARE(stage->Images(kWalk).mid(3, 6), QVector<int>({ 1, 3, 3, 7, 3, 0 }));
    QCOMPARE(stage->Shown(kWalk), stage->SheetOf(kWalk));
}

void TestPanelHost::theHostsShortcutsWorkInThePanel()
{
    stage->ClickCell(kWalk, 6);
    stage->TypeCell(QStringLiteral("7"));
    const QVector<int> typed = stage->Images(kWalk);
    stage->Sheet()->setFocus();
    stage->Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(stage->UndoNames(), QVector<QByteArray>());
    QCOMPARE(stage->Images(kWalk).value(6), 3);
    stage->WaitForTimers();
    QCOMPARE(stage->Shown(kWalk), stage->SheetOf(kWalk));
    stage->Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(stage->Images(kWalk), typed);
    stage->WaitForTimers();
    QCOMPARE(stage->Shown(kWalk), stage->SheetOf(kWalk));
}

void TestPanelHost::twoUndosWithinAMomentGiveOneRefresh()
{
    stage->ClickCell(kWalk, 6);
    stage->TypeCell(QStringLiteral("7"));
    stage->ClickCell(kWalk, 10);
    stage->TypeCell(QStringLiteral("8"));
    stage->host.GetTrace().Start();
    QCOMPARE(stage->Run(kHostCommandUndo), A_Err_NONE);
    QTest::qWait(40);
    QCOMPARE(Reloads(), 0);
    QCOMPARE(stage->Run(kHostCommandUndo), A_Err_NONE);
    stage->WaitForTimers();
    QCOMPARE(Reloads(), 1);
    QCOMPARE(stage->UndoNames(), QVector<QByteArray>());
    QCOMPARE(stage->Shown(kWalk), stage->SheetOf(kWalk));
    QCOMPARE(stage->Document().RedoNames().size(), 2);
}

void TestPanelHost::twoUndosApartGiveTwo()
{
    stage->ClickCell(kWalk, 6);
    stage->TypeCell(QStringLiteral("7"));
    stage->ClickCell(kWalk, 10);
    stage->TypeCell(QStringLiteral("8"));
    stage->host.GetTrace().Start();
    for (int i = 1; i <= 2; ++i) {
        QCOMPARE(stage->Run(kHostCommandUndo), A_Err_NONE);
        stage->WaitForTimers();
        QCOMPARE(Reloads(), i);
        QCOMPARE(stage->Shown(kWalk), stage->SheetOf(kWalk));
    }
}

void TestPanelHost::redoAndOpenRefreshToo_data()
{
    QTest::addColumn<int>("command");
    QTest::newRow("Redo") << int(kHostCommandRedo);
    QTest::newRow("Open Project") << int(kHostCommandOpenProject);
}

void TestPanelHost::redoAndOpenRefreshToo()
{
    QFETCH(const int, command);
    stage->ClickCell(kWalk, 6);
    stage->TypeCell(QStringLiteral("7"));
    stage->Run(kHostCommandUndo);
    stage->WaitForTimers();
    stage->host.GetTrace().Start();
    if (command == kHostCommandOpenProject) {
        // The same file once more: the name is the same, and yet it is another project.
        auto open = std::exchange(stage->host.Driver().openProject, [this] {
            const ItemId active = stage->Document().view.activeItem;
            Project project = stage->host.GetProject();
            Stream &remap = project.EditLayer(stage->composition, stage->layers[kWalk])->timeRemap;
            remap.SetKeyValue(0, { 9 / 25.0, 0, 0, 0 });
            stage->Document().Replace(project);
            stage->Document().view.activeItem = active;
            return A_Err_NONE;
        });
        stage->Run(command);
        stage->host.Driver().openProject = open;
    } else {
        stage->Run(command);
    }
    stage->WaitForTimers();
    QCOMPARE(Reloads(), 1);
    QCOMPARE(stage->Shown(kWalk), stage->SheetOf(kWalk));
    QCOMPARE(stage->Images(kWalk).value(command == kHostCommandRedo ? 6 : 0),
        command == kHostCommandRedo ? 7 : 9);
}

void TestPanelHost::theFlyoutHidesAndShowsTheSheet()
{
    QVERIFY(stage->ChooseFlyout("Show Grid"));
    QVERIFY(!stage->Sheet()->isVisible());
    stage->Edit()
        .EditLayer(stage->composition, stage->layers[kWalk])
        ->timeRemap.SetKeyValue(0, { 9 / 25.0, 0, 0, 0 });
    stage->CloseChange();
    stage->host.GetTrace().Start();
    stage->Run(kHostCommandRedo); // there is nothing to redo; the refresh comes all the same
    stage->WaitForTimers();
    stage->Click(stage->Graph(), stage->BoxMiddle(kRun, 1));
    stage->Settle();
    QCOMPARE(Reloads(), 0);
    QCOMPARE(stage->Shown(kWalk).value(0), QStringLiteral("1"));

    QVERIFY(stage->ChooseFlyout("Show Grid"));
    QVERIFY(stage->Sheet()->isVisible());
    QCOMPARE(Reloads(), 1);
    QCOMPARE(stage->Shown(kWalk), stage->SheetOf(kWalk));
}

void TestPanelHost::theFlyoutHidesAndShowsTheGraph()
{
    const auto isMarked = [this](int entry) {
        return stage->host.Driver().PanelFlyout(PanelStage::kPanelName).value(entry).type
            == AEGP_FlyoutMenuMarkType_CHECKED;
    };
    QVERIFY(isMarked(1) && isMarked(2));
    QVERIFY(stage->ChooseFlyout("Show Graph"));
    QVERIFY(!stage->Graph()->isVisible() && stage->Sheet()->isVisible());
    QVERIFY(!isMarked(1) && isMarked(2));
    stage->host.GetTrace().Start();
    stage->ClickCell(kRun, 3);
    QCOMPARE(Count("AEGP_GetLayerParent"), 0); // it is not painted
    QVERIFY(stage->ChooseFlyout("Show Graph"));
    QVERIFY(stage->Graph()->isVisible());
    QVERIFY(isMarked(1));
    QTRY_VERIFY(Count("AEGP_GetLayerParent") > 0);
}

void TestPanelHost::theFlyoutsVersionLineDoesNothing()
{
    const QVector<FlyoutItem> items = stage->host.Driver().PanelFlyout(PanelStage::kPanelName);
    QCOMPARE(items.size(), 5);
    QVERIFY(items[4].text.startsWith("morvex v1.0 - "));
    const QImage picture = stage->Container()->grab().toImage();
    stage->host.GetTrace().Start();
    stage->host.Driver().RunFlyout(PanelStage::kPanelName, items[4].command);
    QCOMPARE(stage->host.GetTrace().Functions(), QByteArrayList());
    QCOMPARE(stage->Container()->grab().toImage(), picture);
}

void TestPanelHost::aClosedPanelShownAgainIsTheSame()
{
    stage->ClickCell(kRun, 10);
    stage->ClickTab(QStringLiteral("Effect"));
    const QImage picture = stage->Container()->grab().toImage();
    const AEGP_Command command = stage->host.Driver().MenuItems().value(0).command;
    QCOMPARE(stage->Run(command), A_Err_NONE);
    QVERIFY(!stage->Container()->isVisible());
    stage->Idle(); // it still follows the host
    stage->Edit()
        .EditLayer(stage->composition, stage->layers[kRun])
        ->timeRemap.SetKeyValue(0, { 9 / 25.0, 0, 0, 0 });
    stage->CloseChange();
    stage->Run(kHostCommandRedo);
    stage->WaitForTimers();
    QCOMPARE(stage->Shown(kRun), stage->SheetOf(kRun));
    stage->Run(kHostCommandUndo);
    stage->WaitForTimers();

    QCOMPARE(stage->Run(command), A_Err_NONE);
    QVERIFY(stage->Container()->isVisible());
    QTRY_VERIFY(stage->IsActive());
    stage->Settle();
    QVERIFY(stage->Panel()->isVisible());
    QCOMPARE(stage->CurrentCol(), kRun);
    QCOMPARE(stage->CurrentRow(), 10);
    QCOMPARE(stage->Dock()->tabText(stage->Dock()->currentIndex()), QStringLiteral("Effect"));
    QCOMPARE(stage->Container()->grab().toImage(), picture);
    stage->ClickCell(kWalk, 2);
    QCOMPARE(stage->CurrentCol(), kWalk);
}

VN_HOST_TEST_MAIN(TestPanelHost)
#include "tst_panel_host.moc"
