// The viewer as a person meets it: what its pixels are, what its numbers say, what keys do.
#include "DrawnScene.h"
#include "MouseHand.h"
#include "testhost/HostTestMain.h"
#include "window/Viewer.h"

#include <QComboBox>
#include <QLabel>
#include <QSpinBox>
#include <QToolButton>
#include <QWheelEvent>

using namespace rostrum;
using testing::DrawnScene;

namespace {

constexpr qint64 kFrame = 40000000; // nanoseconds at 25 frames a second

/// A viewer in a window, with a clock that the test winds.
struct Shown
{
    explicit Shown(DrawnScene &scene) : session(scene.host), viewer(session)
    {
        viewer.resize(600, 400);
        viewer.show();
        viewer.GetTransport().SetTimeSource([this] { return now; });
        viewer.View().setFocus();
        QVERIFY2(QTest::qWaitForWindowExposed(&viewer), "no window");
    }
    template <typename Widget = QLabel>
    Widget &Find(const char *name)
    {
        return *viewer.findChild<Widget *>(QLatin1String(name));
    }
    QColor Pixel(double x = 0.5, double y = 0.5)
    {
        const QRectF frame = viewer.View().FrameRect();
        const QPointF place(frame.x() + frame.width() * x, frame.y() + frame.height() * y);
        return viewer.View().grab().toImage().pixelColor(place.toPoint());
    }
    int Drawing(double x = 0.5) { return (Pixel(x).red() - 40) / 10; }
    void Key(Qt::Key key) { QTest::keyClick(&viewer.View(), key); }
    void Wait(qint64 frames)
    {
        now += frames * kFrame;
        viewer.GetTransport().OnTick();
    }
    void Wheel(int notches, const QPoint &at)
    {
        FrameView &view = viewer.View();
        QWheelEvent event(at, view.mapToGlobal(at), QPoint(), QPoint(0, 120 * notches),
            Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&view, &event);
    }

    qint64 now = 0;
    Session session;
    Viewer viewer;
};

} // namespace

class TestViewer : public QObject
{
    Q_OBJECT

private slots:
    void frameFollowsTheCurrentTime();
    void keysStepAndJump();
    void keysActWhereTheFocusIsAlone();
    void numbersCountFromOneAsTheSheet();
    void typedFrameIsGoneTo();
    void playingSkipsAndCountsWhatIsLate();
    void playingLoops();
    void playingWithoutLoopEndsAtTheLastFrame();
    void scrubbingWhilePlayingGoesOnFromThere();
    void undoWhilePlayingGoesOn();
    void otherLengthWhilePlaying();
    void deletedCompositionEndsPlaying();
    void otherCompositionEndsPlaying();
    void nothingPlaysWhereNothingMoves_data();
    void nothingPlaysWhereNothingMoves();
    void noCompositionIsTold();
    void emptyCompositionShowsItsBackground();
    void missingDrawingIsToldAndNoCrash();
    void hugeCompositionIsTold();
    void staleCurrentTimeIsNoCrash();
    void transparencyShowsACheckerboard();
    void safeFramesAreDrawn();
    void wheelZoomsAtTheCursor();
    void comboZooms();
    void dragMoves();
    void fitFollowsTheSize();
    void dearFramesAreKeptUntilSomethingChanges();
    void quickFramesAreDrawnWheneverTheyAreShown();
    void quickFramesAreDrawnIntoOneImage();
    void theWindowIsNotLaidOutAnewWhilePlaying();
    void cacheKeepsToItsLimit();
    void memoryOfFramesIsUsedAgain();
    void drawingPaintedOverIsSeenAfterReload();
    void previewIsShownWhileItLasts();
    void clickPutsTheCompositionInFront();
};

void TestViewer::frameFollowsTheCurrentTime()
{
    DrawnScene scene;
    Shown shown(scene);
    QCOMPARE(shown.Drawing(), 0);
    shown.session.SetCurrentFrame(7);
    QCOMPARE(shown.Drawing(), 7);
    scene.host.GetDocument().view.currentTimes[scene.composition] = Rate().FrameTime(4);
    shown.session.Look(); // as after a plug-in
    QCOMPARE(shown.Drawing(), 4);
}

void TestViewer::keysStepAndJump()
{
    DrawnScene scene;
    Shown shown(scene);
    const auto press = [&](Qt::Key key) {
        shown.Key(key);
        return shown.session.CurrentFrame();
    };
    QCOMPARE(press(Qt::Key_PageUp), 0);
    QCOMPARE(press(Qt::Key_PageDown), 1);
    QCOMPARE(press(Qt::Key_PageDown), 2);
    QCOMPARE(press(Qt::Key_PageUp), 1);
    QCOMPARE(press(Qt::Key_End), 9);
    QCOMPARE(press(Qt::Key_PageDown), 9);
    QCOMPARE(press(Qt::Key_Home), 0);
    shown.Key(Qt::Key_Space);
    QVERIFY(shown.viewer.GetTransport().IsPlaying());
    shown.Key(Qt::Key_Space);
    QVERIFY(!shown.viewer.GetTransport().IsPlaying());
}

void TestViewer::keysActWhereTheFocusIsAlone()
{
    DrawnScene scene;
    Shown shown(scene);
    QWidget other(&shown.viewer); // a sheet, say
    other.setFocusPolicy(Qt::StrongFocus);
    other.show();
    other.setFocus();
    for (const Qt::Key key : { Qt::Key_Space, Qt::Key_PageDown, Qt::Key_End })
        QTest::keyClick(&other, key);
    QCOMPARE(shown.session.CurrentFrame(), 0);
    QVERIFY(!shown.viewer.GetTransport().IsPlaying());
    other.addActions(shown.viewer.GetTransport().Actions());
    QTest::keyClick(&other, Qt::Key_PageDown);
    QCOMPARE(shown.session.CurrentFrame(), 1);
}

void TestViewer::numbersCountFromOneAsTheSheet()
{
    DrawnScene scene(60);
    Shown shown(scene);
    shown.session.SetCurrentFrame(30);
    QCOMPARE(shown.Find<QSpinBox>("efFrame").text(), QStringLiteral("31"));
    QCOMPARE(shown.Find("lbCount").text(), QStringLiteral("/ 60"));
    QCOMPARE(shown.Find("lbTimecode").text(), QStringLiteral("0:00:01:05"));
}

void TestViewer::typedFrameIsGoneTo()
{
    DrawnScene scene;
    Shown shown(scene);
    auto &efFrame = shown.Find<QSpinBox>("efFrame");
    efFrame.setFocus();
    efFrame.selectAll();
    QTest::keyClicks(&efFrame, QStringLiteral("6"));
    QTest::keyClick(&efFrame, Qt::Key_Return);
    QCOMPARE(shown.session.CurrentFrame(), 5);
    QCOMPARE(shown.Drawing(), 5);
    QVERIFY(shown.viewer.View().hasFocus());
}

void TestViewer::playingSkipsAndCountsWhatIsLate()
{
    DrawnScene scene;
    Shown shown(scene);
    shown.Key(Qt::Key_Space);
    shown.Wait(1);
    QCOMPARE(shown.Drawing(), 1);
    QCOMPARE(shown.Find("lbDropped").text(), QString());
    const QSize before = shown.viewer.minimumSizeHint();
    shown.Wait(3);
    QCOMPARE(shown.Drawing(), 4);
    QCOMPARE(shown.Find("lbDropped").text(), QStringLiteral("2 dropped"));
    QCOMPARE(shown.viewer.minimumSizeHint(), before); // or the docks around would move
    shown.Key(Qt::Key_Space);
    QCOMPARE(shown.Drawing(), 4);
    shown.Key(Qt::Key_Space);
    QCOMPARE(shown.Find("lbDropped").text(), QString());
}

void TestViewer::playingLoops()
{
    DrawnScene scene;
    Shown shown(scene);
    shown.session.SetCurrentFrame(9);
    shown.Key(Qt::Key_Space);
    QCOMPARE(shown.session.CurrentFrame(), 0); // at the end it starts again
    for (int i = 0; i < 13; ++i)
        shown.Wait(1);
    QCOMPARE(shown.Drawing(), 3);
    QVERIFY(shown.viewer.GetTransport().IsPlaying());
}

void TestViewer::playingWithoutLoopEndsAtTheLastFrame()
{
    DrawnScene scene;
    Shown shown(scene);
    QTest::mouseClick(&shown.Find<QToolButton>("pbLoop"), Qt::LeftButton);
    QTest::mouseClick(&shown.Find<QToolButton>("pbPlay"), Qt::LeftButton);
    shown.Wait(50);
    QCOMPARE(shown.Drawing(), 9);
    QVERIFY(!shown.viewer.GetTransport().IsPlaying());
}

void TestViewer::scrubbingWhilePlayingGoesOnFromThere()
{
    DrawnScene scene;
    Shown shown(scene);
    shown.Key(Qt::Key_Space);
    shown.Wait(2);
    shown.session.SetCurrentFrame(6);
    shown.Wait(0);
    QCOMPARE(shown.session.CurrentFrame(), 6);
    shown.Wait(2);
    QCOMPARE(shown.session.CurrentFrame(), 8);
}

void TestViewer::undoWhilePlayingGoesOn()
{
    DrawnScene scene;
    Shown shown(scene);
    shown.session.Do("Opacity", [&](Project &project) {
        project.EditLayer(scene.composition, scene.layer)->opacity.SetConstant({ 0, 0, 0, 0 });
    });
    QCOMPARE(shown.Pixel(), QColor(0, 0, 255));
    shown.Key(Qt::Key_Space);
    shown.Wait(2);
    QVERIFY(scene.host.GetDocument().Undo());
    shown.session.Look();
    QCOMPARE(shown.Drawing(), 2);
    shown.Wait(1);
    QCOMPARE(shown.Drawing(), 3);
    QVERIFY(shown.viewer.GetTransport().IsPlaying());
}

void TestViewer::otherLengthWhilePlaying()
{
    DrawnScene scene;
    Shown shown(scene);
    shown.Key(Qt::Key_Space);
    shown.Wait(5);
    shown.session.Do("Length", [&](Project &project) {
        project.EditComposition(scene.composition)->duration = Rate().FrameTime(7);
    });
    shown.Wait(3);
    QCOMPARE(shown.session.CurrentFrame(), 1); // 5, 6, and around
    shown.session.Do("Length",
        [&](Project &project) { project.EditComposition(scene.composition)->duration = Time(); });
    QVERIFY(!shown.viewer.GetTransport().IsPlaying());
}

void TestViewer::deletedCompositionEndsPlaying()
{
    DrawnScene scene;
    Shown shown(scene);
    shown.Key(Qt::Key_Space);
    shown.Wait(2);
    shown.session.Do("Delete", [&](Project &project) { project.RemoveItem(scene.composition); });
    shown.Wait(2);
    QVERIFY(!shown.viewer.GetTransport().IsPlaying());
    QVERIFY(shown.viewer.View().grab().toImage().pixelColor(3, 3).isValid());
}

void TestViewer::otherCompositionEndsPlaying()
{
    DrawnScene scene;
    Shown shown(scene);
    shown.Key(Qt::Key_Space);
    ItemId other = 0;
    shown.session.Do("New", [&](Project &project) {
        Composition composition;
        composition.duration = Rate().FrameTime(50);
        other = project.AddComposition("other", composition);
    });
    shown.session.SetActiveItem(other);
    QVERIFY(!shown.viewer.GetTransport().IsPlaying());
    QCOMPARE(shown.Find("lbCount").text(), QStringLiteral("/ 50"));
}

void TestViewer::nothingPlaysWhereNothingMoves_data()
{
    QTest::addColumn<int>("frames");
    QTest::newRow("no frame") << 0;
    QTest::newRow("one frame") << 1;
}

void TestViewer::nothingPlaysWhereNothingMoves()
{
    QFETCH(int, frames);
    DrawnScene scene(frames);
    Shown shown(scene);
    for (const Qt::Key key :
        { Qt::Key_Space, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_End, Qt::Key_Home })
        shown.Key(key);
    QVERIFY(!shown.viewer.GetTransport().IsPlaying());
    QCOMPARE(shown.session.CurrentFrame(), 0);
}

void TestViewer::noCompositionIsTold()
{
    DrawnScene scene;
    scene.host.GetDocument().Replace(Project());
    Shown shown(scene);
    for (const Qt::Key key : { Qt::Key_Space, Qt::Key_PageDown, Qt::Key_End })
        shown.Key(key);
    const QImage empty = shown.viewer.View().grab().toImage();
    int bright = 0; // the text
    for (int x = 0; x < empty.width(); ++x) {
        for (int y = 0; y < empty.height(); ++y)
            bright += empty.pixelColor(x, y) != empty.pixelColor(0, 0);
    }
    QVERIFY(bright > 100);
    QVERIFY(!shown.Find<QToolButton>("pbPlay").isEnabled());
    QCOMPARE(shown.Find("lbTimecode").text(), QStringLiteral("0:00:00:00"));
}

void TestViewer::emptyCompositionShowsItsBackground()
{
    DrawnScene scene(0);
    Shown shown(scene);
    QCOMPARE(shown.Pixel(), QColor(0, 0, 255));
    QCOMPARE(shown.Find("lbCount").text(), QStringLiteral("/ 0"));
}

void TestViewer::missingDrawingIsToldAndNoCrash()
{
    DrawnScene scene;
    QVERIFY(QFile::remove(scene.PathOf(3)));
    Shown shown(scene);
    QVERIFY(!shown.Find("lbMessages").isVisible());
    shown.session.SetCurrentFrame(3);
    QVERIFY(shown.Find("lbMessages").isVisible());
    QVERIFY(shown.Find("lbMessages").text().contains(QStringLiteral("walk0003.png")));
    QVERIFY(shown.Pixel(0.3).green() > 100 || shown.Pixel(0.7).green() > 100); // the placeholder
    shown.session.SetCurrentFrame(4);
    QVERIFY(!shown.Find("lbMessages").isVisible());
    shown.session.SetCurrentFrame(3); // from the cache
    QVERIFY(shown.Find("lbMessages").text().contains(QStringLiteral("walk0003.png")));
}

void TestViewer::hugeCompositionIsTold()
{
    DrawnScene scene;
    Shown shown(scene);
    shown.session.Do("Size", [&](Project &project) {
        project.EditComposition(scene.composition)->size = QSize(2000000, 3);
    });
    QVERIFY(shown.viewer.View().FrameRect().isEmpty());
    shown.session.SetCurrentFrame(5);
    shown.viewer.grab();
}

void TestViewer::staleCurrentTimeIsNoCrash()
{
    DrawnScene scene;
    Shown shown(scene);
    View &view = scene.host.GetDocument().view;
    view.currentTimes[scene.composition] = Time{ 2000000000, 1 };
    shown.session.Look();
    QCOMPARE(shown.Pixel(), QColor(0, 0, 255)); // behind the end: the background
    shown.Key(Qt::Key_Space);
    shown.Wait(1);
    QCOMPARE(shown.Drawing(), 1);
    view.currentTimes[scene.composition] = Time{ -3, 1 };
    shown.session.Look();
    QCOMPARE(shown.Find<QSpinBox>("efFrame").text(), QStringLiteral("-74"));
}

void TestViewer::transparencyShowsACheckerboard()
{
    DrawnScene scene;
    Shown shown(scene);
    shown.session.Do("Opacity", [&](Project &project) {
        project.EditLayer(scene.composition, scene.layer)->opacity.SetConstant({ 0, 0, 0, 0 });
    });
    QTest::mouseClick(&shown.Find<QToolButton>("ckChecker"), Qt::LeftButton);
    const QImage picture = shown.viewer.View().grab().toImage();
    QSet<QRgb> colors;
    for (int x = 0; x < 40; ++x)
        colors << picture.pixel(QPoint(280 + x, 150));
    QCOMPARE(colors.size(), 2);
    for (const QRgb color : qAsConst(colors))
        QCOMPARE(qRed(color), qBlue(color)); // greys: no blue background
    QTest::mouseClick(&shown.Find<QToolButton>("ckChecker"), Qt::LeftButton);
    QCOMPARE(shown.Pixel(), QColor(0, 0, 255));
}

void TestViewer::safeFramesAreDrawn()
{
    DrawnScene scene;
    Shown shown(scene);
    const auto hasLine = [&](double around) {
        for (double x = around - 0.005; x < around + 0.005; x += 0.001) {
            if (shown.Pixel(x, 0.4).blue() > 100)
                return true;
        }
        return false;
    };
    QVERIFY(!hasLine(0.05));
    QTest::mouseClick(&shown.Find<QToolButton>("ckSafeFrames"), Qt::LeftButton);
    QVERIFY(hasLine(0.05)); // action safe
    QVERIFY(hasLine(0.1)); // title safe
    QVERIFY(hasLine(0.9));
    QVERIFY(!hasLine(0.07));
}

void TestViewer::wheelZoomsAtTheCursor()
{
    DrawnScene scene;
    Shown shown(scene);
    FrameView &view = shown.viewer.View();
    const QPoint at(200, 120);
    const auto under = [&] { return (QPointF(at) - view.FrameRect().topLeft()) / view.Zoom(); };
    const QPointF before = under();
    const double zoom = view.Zoom();
    shown.Wheel(2, at);
    QVERIFY(view.Zoom() > zoom * 1.5);
    QVERIFY(!view.IsFitted());
    QVERIFY((under() - before).manhattanLength() < 1.5);
    QVERIFY(shown.Find<QComboBox>("cbZoom").currentText().startsWith(
        QString::number(qRound(view.Zoom() * 100))));
    shown.Wheel(900, at);
    QCOMPARE(view.Zoom(), FrameView::kMostZoom);
    shown.Wheel(-900, at);
    QCOMPARE(view.Zoom(), FrameView::kLeastZoom);
    QTest::mouseDClick(&view, Qt::LeftButton);
    QVERIFY(view.IsFitted());
}

void TestViewer::comboZooms()
{
    DrawnScene scene;
    Shown shown(scene);
    auto &cbZoom = shown.Find<QComboBox>("cbZoom");
    for (const int percent : { 25, 50, 100, 200, 400, 800 }) {
        const int entry = cbZoom.findData(percent);
        cbZoom.setCurrentIndex(entry);
        emit cbZoom.activated(entry);
        QCOMPARE(shown.viewer.View().Zoom(), percent / 100.0);
        QCOMPARE(cbZoom.currentText(), QStringLiteral("%1 %").arg(percent));
        QCOMPARE(shown.viewer.View().FrameRect().size(), QSizeF(64, 48) * percent / 100.0);
        QCOMPARE(shown.Drawing(), 0);
    }
}

void TestViewer::dragMoves()
{
    DrawnScene scene;
    Shown shown(scene);
    FrameView &view = shown.viewer.View();
    const QRectF before = view.FrameRect();
    testing::DragMouse(view, { { 300, 200 }, { 310, 205 }, { 330, 190 } });
    QCOMPARE(view.FrameRect().topLeft() - before.topLeft(), QPointF(30, -10));
    testing::MoveMouse(view, { 10, 10 }, Qt::NoButton);
    QCOMPARE(view.FrameRect().topLeft() - before.topLeft(), QPointF(30, -10));
}

void TestViewer::fitFollowsTheSize()
{
    DrawnScene scene;
    Shown shown(scene);
    const double before = shown.viewer.View().Zoom();
    shown.viewer.resize(1200, 800);
    QTRY_VERIFY(shown.viewer.View().Zoom() > before * 1.8);
    shown.viewer.View().OnZoom(2);
    shown.viewer.resize(700, 500);
    QCOMPARE(shown.viewer.View().Zoom(), 2.0);
}

void TestViewer::dearFramesAreKeptUntilSomethingChanges()
{
    DrawnScene scene;
    scene.MakeDear();
    Shown shown(scene);
    const FrameCache &frames = shown.viewer.Frames();
    for (int round = 0; round < 3; ++round) {
        for (int frame = 0; frame < 10; ++frame)
            shown.session.SetCurrentFrame(frame);
    }
    QCOMPARE(frames.Renderings(), 10);
    shown.session.SelectLayers({ scene.layer }); // nothing that is drawn
    QCOMPARE(frames.Renderings(), 10);
    shown.session.Do("Opacity", [&](Project &project) {
        project.EditLayer(scene.composition, scene.layer)->opacity.SetConstant({ 0, 0, 0, 0 });
    });
    QCOMPARE(frames.Renderings(), 11);
    QCOMPARE(shown.Pixel(), QColor(0, 0, 255));
}

void TestViewer::quickFramesAreDrawnWheneverTheyAreShown()
{
    DrawnScene scene;
    Shown shown(scene);
    const FrameCache &frames = shown.viewer.Frames();
    const auto playRound = [&] {
        for (int frame = 0; frame < 10; ++frame) {
            shown.session.SetCurrentFrame(frame);
            QCOMPARE(shown.Drawing(), frame);
        }
    };
    playRound();
    QCOMPARE(frames.Count(), 10); // their drawings came from disk, which was dear
    shown.viewer.OnReload();
    const int before = frames.Renderings();
    for (int round = 0; round < 3; ++round) {
        playRound();
        QCOMPARE(frames.Count(), 0);
    }
    QCOMPARE(frames.Renderings() - before, 30);
    // What is painted over meanwhile is seen at once, and kept, as it had to be read.
    scene.Draw(3, QColor(0, 200, 0));
    shown.session.SetCurrentFrame(3);
    QCOMPARE(shown.Pixel(), QColor(0, 200, 0));
    QCOMPARE(frames.Count(), 1);
}

void TestViewer::quickFramesAreDrawnIntoOneImage()
{
    DrawnScene scene;
    DrawingCache drawings;
    FrameCache frames(drawings);
    const Project &project = scene.host.GetProject();
    for (int frame = 0; frame < 10; ++frame)
        frames.Get(project, scene.composition, frame, true); // reads the drawings
    frames.Clear();
    const auto get = [&](int frame) -> QImage {
        return frames.Get(project, scene.composition, frame, true).image;
    };
    const uchar *const place = get(0).constBits();
    for (int frame = 1; frame < 10; ++frame) {
        QCOMPARE(get(frame).pixelColor(5, 5), DrawnScene::ColorOf(frame));
        QCOMPARE(get(frame).constBits(), place);
    }
    const QImage held = get(4); // which is then left alone
    QCOMPARE(get(5).pixelColor(5, 5), DrawnScene::ColorOf(5));
    QCOMPARE(held.pixelColor(5, 5), DrawnScene::ColorOf(4));
    QCOMPARE(frames.Used(), 0);
}

void TestViewer::theWindowIsNotLaidOutAnewWhilePlaying()
{
    /// Counts what a layout does when one of its widgets wants another size.
    struct LayoutCounter : QObject
    {
        bool eventFilter(QObject *, QEvent *event) override
        {
            count += event->type() == QEvent::LayoutRequest ? 1 : 0;
            return false;
        }
        int count = 0;
    };
    DrawnScene scene;
    Shown shown(scene);
    shown.Key(Qt::Key_Space);
    for (int frame = 1; frame < 3; ++frame) { // what showing and starting have left over
        shown.Wait(1);
        QCoreApplication::processEvents();
    }
    LayoutCounter counter;
    for (QWidget *widget : shown.viewer.findChildren<QWidget *>())
        widget->installEventFilter(&counter);
    shown.viewer.installEventFilter(&counter);
    for (int frame = 3; frame < 25; ++frame) {
        shown.Wait(1);
        QCoreApplication::processEvents();
        QCOMPARE(shown.session.CurrentFrame(), frame % 10);
    }
    QCOMPARE(counter.count, 0);
    const QLabel &timecode = shown.Find("lbTimecode");
    QVERIFY(timecode.width() >= timecode.fontMetrics().horizontalAdvance(timecode.text()));
}

void TestViewer::cacheKeepsToItsLimit()
{
    DrawnScene scene;
    scene.MakeDear();
    DrawingCache drawings;
    constexpr qint64 bytes = 64 * 48 * 4;
    FrameCache frames(drawings, 4 * bytes + 17);
    const Project &project = scene.host.GetProject();
    const auto get = [&](int frame) {
        return frames.Get(project, scene.composition, frame, true).image.pixelColor(5, 5);
    };
    for (int round = 0; round < 2; ++round) {
        for (int frame = 0; frame < 10; ++frame) {
            QCOMPARE(get(frame), DrawnScene::ColorOf(frame));
            QVERIFY(frames.Used() <= 4 * bytes);
        }
    }
    QCOMPARE(frames.Count(), 4);
    // A loop that is longer than the cache finds some of its frames there all the same.
    QVERIFY(frames.Renderings() < 20);

    FrameCache none(drawings, bytes - 1);
    for (int frame = 0; frame < 10; ++frame)
        QCOMPARE(none.Get(project, scene.composition, frame, true).image.pixelColor(5, 5),
            DrawnScene::ColorOf(frame));
    QCOMPARE(none.Count(), 0);
}

void TestViewer::memoryOfFramesIsUsedAgain()
{
    DrawnScene scene;
    scene.MakeDear();
    DrawingCache drawings;
    FrameCache frames(drawings);
    Project project = scene.host.GetProject();
    const auto memory = [&] {
        QSet<const uchar *> places;
        for (int frame = 0; frame < 10; ++frame)
            places << frames.Get(project, scene.composition, frame, true).image.constBits();
        return places;
    };
    const QSet<const uchar *> before = memory();
    QCOMPARE(before.size(), 10);
    project.EditLayer(scene.composition, scene.layer)->opacity.SetConstant({ 50, 0, 0, 0 });
    QCOMPARE(memory(), before);
    QCOMPARE(frames.Renderings(), 20);
    // A frame that somebody holds is left alone.
    const QImage held = frames.Get(project, scene.composition, 3, true).image;
    const QImage copy = held.copy();
    project.EditLayer(scene.composition, scene.layer)->opacity.SetConstant({ 0, 0, 0, 0 });
    memory();
    QCOMPARE(held, copy);
}

void TestViewer::drawingPaintedOverIsSeenAfterReload()
{
    DrawnScene scene;
    scene.MakeDear();
    Shown shown(scene);
    scene.Draw(0, QColor(0, 200, 0));
    shown.viewer.OnReload();
    QCOMPARE(shown.Pixel(), QColor(0, 200, 0));
}

void TestViewer::previewIsShownWhileItLasts()
{
    DrawnScene scene;
    Shown shown(scene);
    Project preview = scene.host.GetProject();
    preview.EditLayer(scene.composition, scene.layer)->opacity.SetConstant({ 0, 0, 0, 0 });
    shown.viewer.OnPreview(preview);
    QCOMPARE(shown.Pixel(), QColor(0, 0, 255));
    shown.viewer.OnPreviewEnd();
    QCOMPARE(shown.Drawing(), 0);
    QCOMPARE(shown.viewer.Frames().Renderings(), 1); // what was kept is there yet
}

void TestViewer::clickPutsTheCompositionInFront()
{
    DrawnScene scene;
    Shown shown(scene);
    shown.session.SetActiveItem(scene.footage);
    QCOMPARE(shown.Drawing(), 0); // the last composition stays
    QTest::mouseClick(&shown.viewer.View(), Qt::LeftButton);
    QCOMPARE(shown.session.ActiveItem(), scene.composition);
}

VN_HOST_TEST_MAIN(TestViewer)
#include "tst_viewer.moc"
