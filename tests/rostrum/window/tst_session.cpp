#include "testhost/HostTestMain.h"
#include "testhost/SheetFixture.h"
#include "window/Session.h"

#include <QSignalSpy>
#include <QTimer>

using rostrum::ItemId;
using rostrum::Project;
using rostrum::Session;
using testing::SheetFixture;

namespace {

/// Counts of the signals since the last call, one line: "project 1 time 2".
class Signals
{
public:
    explicit Signals(Session &session)
        : names{ "project", "active", "selection", "time", "history" }
        , spies{ { &session, &Session::ProjectChanged }, { &session, &Session::ActiveItemChanged },
            { &session, &Session::SelectionChanged }, { &session, &Session::TimeChanged },
            { &session, &Session::HistoryChanged } }
    { }
    QByteArray Take()
    {
        QByteArrayList told;
        for (std::size_t i = 0; i < std::size(spies); ++i) {
            if (!spies[i].isEmpty())
                told << QByteArray(names[i]) + ' ' + QByteArray::number(spies[i].size());
            spies[i].clear();
        }
        return told.join(' ');
    }

private:
    const char *names[5];
    QSignalSpy spies[5];
};

} // namespace

/// What the widgets of the window are told of the document.
class TestSession : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsToldWhereNothingHasChanged();
    void eachChangeIsToldOnce();
    void whatAPluginDidIsToldWhenControlReturnsToTheEventLoop();
    void aGroupOpenAcrossANestedLoopIsNotClosed();
    void oneEditIsOneHistoryEntry();
    void anEditThatChangesNothingIsNotTold();
    void activeCompositionStaysWhenADrawingIsPicked();
    void activeCompositionIsGoneWithItsProject();
    void deletedCompositionIsNoLongerActive();
    void currentFrameIsHeldWithinTheComposition_data();
    void currentFrameIsHeldWithinTheComposition();
    void withoutACompositionThereAreNoFrames();
    void selectionForgetsLayersThatAreGone();
    void aReceiverThatChangesSomethingIsToldInOrder();
    void messagesOfTheHostAreTold();
};

void TestSession::nothingIsToldWhereNothingHasChanged()
{
    SheetFixture sheet;
    Session session(sheet.host);
    Signals told(session);

    session.Look();
    session.SetActiveItem(sheet.composition);
    session.SetCurrentFrame(0);

    QCOMPARE(told.Take(), QByteArray());
}

void TestSession::eachChangeIsToldOnce()
{
    SheetFixture sheet;
    Session session(sheet.host);
    Signals told(session);

    session.SetCurrentFrame(7);
    QCOMPARE(told.Take(), QByteArray("time 1"));
    session.SelectLayers({});
    QCOMPARE(told.Take(), QByteArray("selection 1"));
    session.Do("Rename", [&](Project &project) { project.Edit(sheet.footage)->name = "run"; });
    QCOMPARE(told.Take(), QByteArray("project 1 history 1"));
    QCOMPARE(session.RunCommand(kHostCommandUndo), A_Err_NONE);
    QCOMPARE(told.Take(), QByteArray("project 1 history 1"));
    session.SetActiveItem(0);
    QCOMPARE(told.Take(), QByteArray("active 1 selection 1 time 1"));
    session.GetDocument().Replace(Project());
    session.Look();
    QCOMPARE(told.Take(), QByteArray("project 1 active 1 selection 1 time 1 history 1"));
}

void TestSession::whatAPluginDidIsToldWhenControlReturnsToTheEventLoop()
{
    SheetFixture sheet;
    Session session(sheet.host);
    Signals told(session);
    sheet.host.Edit("loose").Edit(sheet.footage)->name = "run";

    QEventLoop loop;
    QTimer::singleShot(50, &loop, &QEventLoop::quit); // ms; it must come to wait before
    loop.exec();

    QCOMPARE(told.Take(), QByteArray("project 1 history 1"));
    QCOMPARE(session.GetDocument().UndoNames().last(), QByteArray("loose"));
}

void TestSession::aGroupOpenAcrossANestedLoopIsNotClosed()
{
    SheetFixture sheet;
    Session session(sheet.host);
    bool wasOpen = false;
    QTimer::singleShot(0, &session, [&] { // a plug-in at an event, which opens a dialog
        session.GetDocument().StartGroup("outer");
        QEventLoop dialog;
        QTimer::singleShot(20, &dialog, &QEventLoop::quit);
        dialog.exec();
        wasOpen = session.GetDocument().IsGroupOpen();
        session.GetDocument().EndGroup();
    });

    QEventLoop loop;
    QTimer::singleShot(60, &loop, &QEventLoop::quit);
    loop.exec();

    QVERIFY(wasOpen);
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
}

void TestSession::oneEditIsOneHistoryEntry()
{
    SheetFixture sheet;
    Session session(sheet.host);
    const int before = session.GetDocument().UndoNames().size();

    session.Do("Two names", [&](Project &project) {
        project.Edit(sheet.footage)->name = "run";
        project.Edit(sheet.composition)->name = "scene 8";
    });

    QCOMPARE(session.GetDocument().UndoNames().size(), before + 1);
    QCOMPARE(session.GetDocument().UndoNames().last(), QByteArray("Two names"));
}

void TestSession::anEditThatChangesNothingIsNotTold()
{
    SheetFixture sheet;
    Session session(sheet.host);
    const int before = session.GetDocument().UndoNames().size();
    Signals told(session);

    session.Do("Nothing", [](Project &) {});

    QCOMPARE(told.Take(), QByteArray());
    QCOMPARE(session.GetDocument().UndoNames().size(), before);
}

void TestSession::activeCompositionStaysWhenADrawingIsPicked()
{
    SheetFixture sheet;
    Session session(sheet.host);
    Signals told(session);

    session.SetActiveItem(sheet.footage);

    QCOMPARE(session.ActiveItem(), sheet.footage);
    QCOMPARE(session.ActiveCompositionId(), sheet.composition);
    QCOMPARE(told.Take(), QByteArray("active 1 selection 1 time 1"));
    session.ActivateComposition();
    QCOMPARE(session.ActiveItem(), sheet.composition);
}

void TestSession::activeCompositionIsGoneWithItsProject()
{
    SheetFixture sheet;
    Session session(sheet.host);
    const Project same = session.GetProject();

    session.GetDocument().Replace(same); // where the id names a composition, too

    QCOMPARE(session.ActiveCompositionId(), 0);
    QCOMPARE(session.ActiveItem(), 0);
}

void TestSession::deletedCompositionIsNoLongerActive()
{
    SheetFixture sheet;
    Session session(sheet.host);

    session.Do("Delete", [&](Project &project) { project.RemoveItem(sheet.composition); });

    QCOMPARE(session.ActiveItem(), 0);
    QCOMPARE(session.ActiveCompositionId(), 0);
    QVERIFY(!session.ActiveComposition());
    QCOMPARE(session.RunCommand(kHostCommandUndo), A_Err_NONE);
    QCOMPARE(session.ActiveCompositionId(), sheet.composition); // it is back, with its selection
    QCOMPARE(session.SelectedLayers(), QVector<rostrum::LayerId>{ sheet.layer });
}

void TestSession::currentFrameIsHeldWithinTheComposition_data()
{
    QTest::addColumn<int>("wanted");
    QTest::addColumn<int>("got");
    QTest::newRow("the first") << 0 << 0;
    QTest::newRow("the last") << 99 << 99;
    QTest::newRow("behind the last") << 100 << 99;
    QTest::newRow("before the first") << -1 << 0;
    QTest::newRow("the greatest number") << std::numeric_limits<int>::max() << 99;
}

void TestSession::currentFrameIsHeldWithinTheComposition()
{
    QFETCH(int, wanted);
    QFETCH(int, got);
    SheetFixture sheet;
    Session session(sheet.host);
    session.SetCurrentFrame(41);

    session.SetCurrentFrame(wanted);

    QCOMPARE(session.FrameCount(), 100);
    QCOMPARE(session.CurrentFrame(), got);
    QVERIFY(session.CurrentTime() == session.ActiveComposition()->rate.FrameTime(got));
}

void TestSession::withoutACompositionThereAreNoFrames()
{
    rostrum::Host host;
    Session session(host);

    session.SetCurrentFrame(3);
    session.SelectLayers({ 4 });

    QCOMPARE(session.FrameCount(), 0);
    QCOMPARE(session.CurrentFrame(), 0);
    QCOMPARE(session.SelectedLayers(), QVector<rostrum::LayerId>());
    QVERIFY(host.GetDocument().view.currentTimes.isEmpty());
}

void TestSession::selectionForgetsLayersThatAreGone()
{
    SheetFixture sheet;
    const rostrum::LayerId other = sheet.AddSolid("ground");
    Session session(sheet.host);
    session.SelectLayers({ other, sheet.layer });
    Signals told(session);

    session.Do("Delete", [&](Project &p) { p.RemoveLayer(sheet.composition, other); });

    QCOMPARE(session.SelectedLayers(), QVector<rostrum::LayerId>{ sheet.layer });
    QCOMPARE(told.Take(), QByteArray("project 1 selection 1 history 1"));
}

void TestSession::aReceiverThatChangesSomethingIsToldInOrder()
{
    SheetFixture sheet;
    Session session(sheet.host);
    QByteArrayList order;
    connect(&session, &Session::TimeChanged, &session, [&] {
        order << "time " + QByteArray::number(session.CurrentFrame());
        if (session.CurrentFrame() == 5)
            session.SetCurrentFrame(6);
        order << "done";
    });

    session.SetCurrentFrame(5);

    QCOMPARE(order, QByteArrayList({ "time 5", "done", "time 6", "done" }));
}

void TestSession::messagesOfTheHostAreTold()
{
    SheetFixture sheet;
    {
        Session session(sheet.host);
        QSignalSpy spy(&session, &Session::MessageShown);
        sheet.host.Tell(QStringLiteral("save the project first"));
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.first().first().toString(), QStringLiteral("save the project first"));
    }
    sheet.host.Tell(QStringLiteral("nobody listens any more"));
    QCOMPARE(sheet.host.Messages().size(), 2);
}

VN_HOST_TEST_MAIN(TestSession)
#include "tst_session.moc"
