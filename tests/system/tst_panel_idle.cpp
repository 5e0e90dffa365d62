#include "PanelStage.h"

#include "testing/RepaintCounter.h"

using testing::PanelStage;

namespace {

/// Counts what reaches a widget of the panel.
class EventCounter : public QObject
{
public:
    explicit EventCounter(QWidget *within) : within(within) { qApp->installEventFilter(this); }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        auto *widget = qobject_cast<QWidget *>(object);
        if (widget && (widget == within || within->isAncestorOf(widget)))
            events << event->type();
        return false;
    }

    QVector<int> events;

private:
    QWidget *within;
};

} // namespace

/// The idle call, which the host makes many times a second: what it costs when nothing has changed.
class TestPanelIdle : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { stage = std::make_unique<PanelStage>(); }
    void cleanupTestCase() { stage.reset(); }
    void init() { stage->OpenProject(); }

    void withNothingChangedItAsksThisAndNothingElse_data();
    void withNothingChangedItAsksThisAndNothingElse();
    void itAcquiresAndReleasesAsMuch();
    void noWidgetIsTouched_data();
    void noWidgetIsTouched();
    void nothingIsWritten();

private:
    void Prepare();

    std::unique_ptr<PanelStage> stage;
};

void TestPanelIdle::withNothingChangedItAsksThisAndNothingElse_data()
{
    QTest::addColumn<bool>("column");
    QTest::addColumn<bool>("frame");
    QTest::addColumn<QByteArrayList>("calls");

    const QByteArrayList name{ "AEGP_GetActiveItem", "AEGP_GetActiveItem", "AEGP_GetCompFromItem",
        "AEGP_GetItemFromComp", "AEGP_GetItemName" };
    const QByteArrayList column{ "AEGP_GetActiveLayer", "AEGP_GetLayerIndex" };
    const QByteArrayList frame{ "AEGP_GetItemFromComp", "AEGP_GetItemCurrentTime" };
    QTest::newRow("no option") << false << false << name;
    QTest::newRow("the column's") << true << false << name + column;
    QTest::newRow("the frame's") << false << true << name + frame;
    QTest::newRow("both") << true << true << name + column + frame;
}

/// A current cell, the host where the panel is, and no push of either still to come.
void TestPanelIdle::Prepare()
{
    QFETCH(const bool, column);
    QFETCH(const bool, frame);
    stage->ClickCell(PanelStage::kRun, 6);
    stage->SetHostFrame(6);
    stage->Document().view.selections[stage->composition] = { stage->layers[PanelStage::kRun] };
    stage->Tick("Sync Column with AE", column);
    stage->Tick("Sync Ima with AE", frame);
    stage->Idle();
    stage->WaitForTimers();
}

void TestPanelIdle::withNothingChangedItAsksThisAndNothingElse()
{
    QFETCH(const QByteArrayList, calls);
    Prepare();
    for (int i = 0; i < 3; ++i) {
        stage->host.GetTrace().Start();
        stage->host.Driver().CallIdle();
        stage->host.GetTrace().Stop();
        QCOMPARE(stage->host.GetTrace().Functions(), calls);
    }
}

void TestPanelIdle::itAcquiresAndReleasesAsMuch()
{
    stage->host.GetTrace().Start();
    stage->host.Driver().CallIdle();
    stage->host.GetTrace().Stop();
    // The items for the question whether there is one; items and compositions for the active one,
    // and again for its name.
    QCOMPARE(stage->host.GetTrace().Count("AcquireSuite"), 5);
    QCOMPARE(stage->host.GetTrace().Count("ReleaseSuite"), 5);
    QCOMPARE(stage->Open(), QByteArrayList());
}

void TestPanelIdle::noWidgetIsTouched_data()
{
    withNothingChangedItAsksThisAndNothingElse_data();
}

void TestPanelIdle::noWidgetIsTouched()
{
    Prepare();
    testing::RepaintCounter repaints; // lets what is due come first
    const EventCounter events(stage->Container());
    for (int i = 0; i < 50; ++i)
        stage->Idle();
    QCOMPARE(repaints.Take(), 0);
    QCOMPARE(events.events, QVector<int>());
}

void TestPanelIdle::nothingIsWritten()
{
    stage->ClickCell(PanelStage::kRun, 6);
    const rostrum::Project before = stage->host.GetProject();
    const int changes = stage->host.ChangeCount();
    stage->TakeLog();
    for (int i = 0; i < 50; ++i)
        stage->Idle();
    QCOMPARE(stage->host.ChangeCount(), changes);
    QVERIFY(stage->host.GetProject() == before);
    QCOMPARE(stage->UndoNames(), QVector<QByteArray>());
    QCOMPARE(stage->TakeLog(), QStringList{ QString() });
}

VN_HOST_TEST_MAIN(TestPanelIdle)
#include "tst_panel_idle.moc"
