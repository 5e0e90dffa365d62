#include "SlideHand.h"
#include "testing/TestMain.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalSpy>

#include <cmath>

namespace {

const QPoint kPointer(310, 57); // nowhere special

double ScaleOf(const QTransform &view)
{
    return std::hypot(view.m11(), view.m21());
}

void SetScale(OpenSlide &slide, double scale)
{
    slide.view = QTransform::fromTranslate(100, 100).scale(scale, scale);
}

/// Two points in pixels, so that 1e-6 is far below what can be seen.
bool IsSamePlace(const QPointF &a, const QPointF &b)
{
    return std::abs(a.x() - b.x()) < 1e-6 && std::abs(a.y() - b.y()) < 1e-6;
}

/// A parent that keeps the keys which its child let through.
class KeyKeeper : public QWidget
{
public:
    QVector<int> pressed;
    QVector<int> released;

protected:
    void keyPressEvent(QKeyEvent *event) override { pressed << event->key(); }
    void keyReleaseEvent(QKeyEvent *event) override { released << event->key(); }
};

QMouseEvent MouseEvent(
    Qt::MouseButton button, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers)
{
    return QMouseEvent(QEvent::MouseMove, QPointF(3, 4), button, buttons, modifiers);
}

} // namespace

class TestSlideWidget : public QObject
{
    Q_OBJECT

private slots:
    void startsWhiteWithItsOriginAt100();
    void aBackgroundColourChangesNoOtherRole();
    void mapToSceneReversesTheViewOnly();

    void aNotchDoublesOrHalvesWhateverItsDelta_data();
    void aNotchDoublesOrHalvesWhateverItsDelta();
    void smallStepsAddUpToANotch_data();
    void smallStepsAddUpToANotch();
    void aTurnOfNothingHalves();
    void anEmptyPhaseOfAGestureIsIgnored_data();
    void anEmptyPhaseOfAGestureIsIgnored();
    void theWheelKeepsTheScenePointUnderThePointer();
    void theWheelStopsOutwardsAtATwentiethButStillZoomsIn();
    void theWheelDoubles64To128AndRefusesTheNext();
    void aTurnedViewOf64StillDoubles();

    void pageUpAndPageDownGoPastBothBounds();
    void pageUpAndPageDownZoomAroundThePointer();
    void pageDownHeldForLongCanBeTakenBack();
    void homeAndEndTurnBy45Degrees();
    void eightTurnsEndWhereTheyBegan();
    void spaceIsNotedWhileItIsHeld();
    void everyKeyGoesOnToTheParent_data();
    void everyKeyGoesOnToTheParent();

    void ctrlAndAltMakeABareLeftButtonTheMiddleOne_data();
    void ctrlAndAltMakeABareLeftButtonTheMiddleOne();
    void aDragPansByExactlyItsPixels_data();
    void aDragPansByExactlyItsPixels();
    void theViewStandsStillWhileADragLasts();
    void otherButtonsDoNotPan_data();
    void otherButtonsDoNotPan();
};

void TestSlideWidget::startsWhiteWithItsOriginAt100()
{
    OpenSlide slide;
    SlideHand hand(slide);

    QCOMPARE(slide.view, QTransform::fromTranslate(100, 100));
    QVERIFY(slide.pan.isIdentity());
    QVERIFY(!slide.spaceDown);
    QCOMPARE(slide.focusPolicy(), Qt::StrongFocus);
    QVERIFY(slide.autoFillBackground());
    QCOMPARE(slide.grab().toImage().pixelColor(9, 5), QColor(Qt::white));
}

void TestSlideWidget::aBackgroundColourChangesNoOtherRole()
{
    OpenSlide slide;
    slide.SetBackgroundColor(QColor(12, 34, 56));

    for (const QPalette::ColorGroup group :
        { QPalette::Active, QPalette::Inactive, QPalette::Disabled }) {
        QCOMPARE(slide.palette().color(group, QPalette::Window), QColor(12, 34, 56));
        QCOMPARE(slide.palette().brush(group, QPalette::Window).style(), Qt::SolidPattern);
        for (const QPalette::ColorRole role : { QPalette::Base, QPalette::Text, QPalette::Button })
            QCOMPARE(
                slide.palette().color(group, role), QApplication::palette().color(group, role));
    }
}

void TestSlideWidget::mapToSceneReversesTheViewOnly()
{
    OpenSlide slide;
    slide.view = QTransform::fromTranslate(100, 60).scale(4, 4);
    slide.pan = QTransform::fromTranslate(7, 9);
    QCOMPARE(slide.MapToScene(QPointF(112, 44)), QPointF(3, -4));

    slide.view = QTransform::fromTranslate(100, 60).rotate(90).scale(2, 2);
    QVERIFY(IsSamePlace(slide.MapToScene(QPointF(104, 70)), QPointF(5, -2)));

    const double tiny = std::ldexp(1.0, -60); // below what counts as a scale for QTransform
    slide.view = QTransform::fromTranslate(100, 60).scale(tiny, tiny);
    QCOMPARE(slide.MapToScene(QPointF(103, 55)), QPointF(3 / tiny, -5 / tiny));
}

void TestSlideWidget::aNotchDoublesOrHalvesWhateverItsDelta_data()
{
    QTest::addColumn<QPoint>("delta");
    QTest::addColumn<double>("scale");

    QTest::newRow("one notch away") << QPoint(0, 120) << 2.0;
    QTest::newRow("one notch back") << QPoint(0, -120) << 0.5;
    QTest::newRow("two notches in one event") << QPoint(0, 240) << 2.0;
    QTest::newRow("three back in one event") << QPoint(0, -360) << 0.5;
    QTest::newRow("the largest delta") << QPoint(0, INT_MAX) << 2.0;
    QTest::newRow("sideways") << QPoint(120, 0) << 2.0;
    QTest::newRow("sideways back") << QPoint(-120, 0) << 0.5;
    QTest::newRow("both: up and down goes first") << QPoint(-120, 120) << 2.0;
}

void TestSlideWidget::aNotchDoublesOrHalvesWhateverItsDelta()
{
    QFETCH(const QPoint, delta);
    OpenSlide slide;
    SlideHand hand(slide);

    hand.Turn(kPointer, delta);

    QTEST(slide.view.m11(), "scale");
    QTEST(slide.view.m22(), "scale");
}

void TestSlideWidget::smallStepsAddUpToANotch_data()
{
    QTest::addColumn<QVector<int>>("steps");
    QTest::addColumn<double>("scale");

    using Steps = QVector<int>;
    QTest::newRow("one short of a notch") << Steps{ 60, 59 } << 1.0;
    QTest::newRow("three thirds") << Steps{ 40, 40, 40 } << 2.0;
    QTest::newRow("one by one") << Steps(120, -1) << 0.5;
    QTest::newRow("the rest counts on") << Steps{ 50, 50, 50, 89 } << 2.0;
    QTest::newRow("the rest completes the second") << Steps{ 50, 50, 50, 90 } << 4.0;
    QTest::newRow("the other way starts afresh") << Steps{ 100, -30, -90 } << 0.5;
    QTest::newRow("to and fro comes to nothing") << Steps{ 119, -119, 119, -119 } << 1.0;
}

void TestSlideWidget::smallStepsAddUpToANotch()
{
    QFETCH(const QVector<int>, steps);
    OpenSlide upDown;
    OpenSlide sideways;
    SlideHand upDownHand(upDown);
    SlideHand sidewaysHand(sideways);

    for (const int step : steps) {
        upDownHand.Turn(kPointer, QPoint(0, step), Qt::ScrollUpdate);
        sidewaysHand.Turn(kPointer, QPoint(step, 0), Qt::ScrollUpdate);
    }

    QTEST(upDown.view.m11(), "scale");
    QTEST(sideways.view.m11(), "scale");
}

void TestSlideWidget::aTurnOfNothingHalves()
{
    OpenSlide slide;
    SlideHand hand(slide);
    hand.Turn(kPointer, QPoint(0, 0));
    QCOMPARE(slide.view.m11(), 0.5);
}

void TestSlideWidget::anEmptyPhaseOfAGestureIsIgnored_data()
{
    QTest::addColumn<Qt::ScrollPhase>("phase");

    QTest::newRow("begin") << Qt::ScrollBegin;
    QTest::newRow("update") << Qt::ScrollUpdate;
    QTest::newRow("momentum") << Qt::ScrollMomentum;
    QTest::newRow("end") << Qt::ScrollEnd;
}

void TestSlideWidget::anEmptyPhaseOfAGestureIsIgnored()
{
    QFETCH(const Qt::ScrollPhase, phase);
    OpenSlide slide;
    SlideHand hand(slide);
    const QTransform before = slide.view;

    hand.Turn(kPointer, QPoint(0, 0), phase);

    QCOMPARE(slide.view, before);
}

void TestSlideWidget::theWheelKeepsTheScenePointUnderThePointer()
{
    OpenSlide slide;
    SlideHand hand(slide);
    const QPointF under = slide.MapToScene(kPointer);

    for (const int delta : { 120, 120, 120, -120, -120, -120, -120, -120 }) {
        hand.Turn(kPointer, QPoint(0, delta));
        QCOMPARE(slide.view.map(under), QPointF(kPointer)); // to the last bit
    }

    hand.Key(Qt::Key_Home);
    const QPointF underTurned = slide.MapToScene(kPointer);
    hand.Turn(kPointer, QPoint(0, 120));
    QVERIFY(IsSamePlace(slide.view.map(underTurned), kPointer));
}

void TestSlideWidget::theWheelStopsOutwardsAtATwentiethButStillZoomsIn()
{
    OpenSlide slide;
    SlideHand hand(slide);
    SetScale(slide, 0.05);
    const QTransform before = slide.view;

    hand.Turn(kPointer, QPoint(0, -120));
    QCOMPARE(slide.view, before);
    hand.Turn(kPointer, QPoint(0, 120));
    QCOMPARE(slide.view.m11(), 0.1);
    hand.Turn(kPointer, QPoint(0, -120)); // 0.1 is not below the bound
    QCOMPARE(slide.view.m11(), 0.05);
}

void TestSlideWidget::theWheelDoubles64To128AndRefusesTheNext()
{
    OpenSlide slide;
    SlideHand hand(slide);
    SetScale(slide, 64);

    hand.Turn(kPointer, QPoint(0, 120));
    QCOMPARE(slide.view.m11(), 128.0);
    const QTransform before = slide.view;
    hand.Turn(kPointer, QPoint(0, 120));
    QCOMPARE(slide.view, before);
    hand.Turn(kPointer, QPoint(0, -120));
    QCOMPARE(slide.view.m11(), 64.0);
}

void TestSlideWidget::aTurnedViewOf64StillDoubles()
{
    OpenSlide slide;
    SlideHand hand(slide);
    SetScale(slide, 64);
    for (int turns = 1; turns <= 8; ++turns) {
        hand.Key(Qt::Key_Home);
        hand.Turn(kPointer, QPoint(0, 120));
        QVERIFY(std::abs(ScaleOf(slide.view) - 128) < 1e-6);
        hand.Turn(kPointer, QPoint(0, -120));
    }
}

void TestSlideWidget::pageUpAndPageDownGoPastBothBounds()
{
    OpenSlide slide;
    SlideHand hand(slide);
    hand.Point(kPointer);

    SetScale(slide, 64);
    for (int i = 0; i < 4; ++i)
        hand.Key(Qt::Key_PageUp);
    QCOMPARE(slide.view.m11(), 1024.0);

    SetScale(slide, 0.0625);
    for (int i = 0; i < 4; ++i)
        hand.Key(Qt::Key_PageDown);
    QCOMPARE(slide.view.m11(), 0.00390625);
}

void TestSlideWidget::pageUpAndPageDownZoomAroundThePointer()
{
    OpenSlide slide;
    SlideHand hand(slide);
    hand.Point(kPointer);
    const QPointF under = slide.MapToScene(kPointer);

    hand.Key(Qt::Key_PageUp);
    QCOMPARE(slide.view.m11(), 2.0);
    QCOMPARE(slide.view.map(under), QPointF(kPointer));
    hand.Key(Qt::Key_PageDown);
    hand.Key(Qt::Key_PageDown);
    QCOMPARE(slide.view.m22(), 0.5);
    QCOMPARE(slide.view.map(under), QPointF(kPointer));
}

// A key held for a minute made the view a point, and no key brought the drawing back.
void TestSlideWidget::pageDownHeldForLongCanBeTakenBack()
{
    OpenSlide slide;
    SlideHand hand(slide);
    hand.Point(kPointer);
    for (const Qt::Key key : { Qt::Key_PageDown, Qt::Key_PageUp }) {
        for (int i = 0; i < 1200; ++i)
            hand.Key(key);
        const QPointF scene = slide.MapToScene(QPointF(1, 2));
        QVERIFY(std::isfinite(scene.x()) && std::isfinite(scene.y()));
        QVERIFY(slide.view.isAffine());
    }
    while (ScaleOf(slide.view) > 1.0)
        hand.Key(Qt::Key_PageDown);
    QCOMPARE(slide.view.m11(), 1.0);
}

void TestSlideWidget::homeAndEndTurnBy45Degrees()
{
    OpenSlide slide;
    SlideHand hand(slide);

    hand.Key(Qt::Key_Home);
    QVERIFY(IsSamePlace(slide.view.map(QPointF(0, 0)), QPointF(100, 100)));
    const double half = 10 * std::sqrt(0.5);
    QVERIFY(IsSamePlace(slide.view.map(QPointF(10, 0)), QPointF(100 + half, 100 + half)));

    hand.Key(Qt::Key_End);
    hand.Key(Qt::Key_End);
    QVERIFY(IsSamePlace(slide.view.map(QPointF(10, 0)), QPointF(100 + half, 100 - half)));
}

void TestSlideWidget::eightTurnsEndWhereTheyBegan()
{
    OpenSlide slide;
    SlideHand hand(slide);
    for (int i = 0; i < 8; ++i)
        hand.Key(Qt::Key_Home);
    QVERIFY(IsSamePlace(slide.view.map(QPointF(300, 17)), QPointF(400, 117)));
    QVERIFY(slide.view.isAffine());
}

void TestSlideWidget::spaceIsNotedWhileItIsHeld()
{
    OpenSlide slide;
    SlideHand hand(slide);
    hand.HoldKey(Qt::Key_Space);
    QVERIFY(slide.spaceDown);
    hand.Key(Qt::Key_A); // its trace says "true"
    QVERIFY(slide.spaceDown);
    QTest::keyRelease(&slide, Qt::Key_Space);
    QVERIFY(!slide.spaceDown);
}

void TestSlideWidget::everyKeyGoesOnToTheParent_data()
{
    QTest::addColumn<Qt::Key>("key");

    QTest::newRow("Space") << Qt::Key_Space;
    QTest::newRow("Home") << Qt::Key_Home;
    QTest::newRow("End") << Qt::Key_End;
    QTest::newRow("PageUp") << Qt::Key_PageUp;
    QTest::newRow("PageDown") << Qt::Key_PageDown;
    QTest::newRow("a letter") << Qt::Key_G;
    QTest::newRow("Delete") << Qt::Key_Delete;
}

void TestSlideWidget::everyKeyGoesOnToTheParent()
{
    QFETCH(const Qt::Key, key);
    KeyKeeper keeper;
    auto *slide = new OpenSlide;
    slide->setParent(&keeper);
    keeper.show();
    SlideHand hand(*slide);

    hand.Key(key);

    QCOMPARE(keeper.pressed, QVector<int>{ key });
    QCOMPARE(keeper.released, QVector<int>{ key });
}

void TestSlideWidget::ctrlAndAltMakeABareLeftButtonTheMiddleOne_data()
{
    QTest::addColumn<Qt::MouseButtons>("held");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<Qt::MouseButtons>("read");

    using Buttons = Qt::MouseButtons;
    using Modifiers = Qt::KeyboardModifiers;
    const Modifiers both = Qt::ControlModifier | Qt::AltModifier;
    QTest::newRow("left") << Buttons(Qt::LeftButton) << Modifiers() << Buttons(Qt::LeftButton);
    QTest::newRow("Ctrl + left") << Buttons(Qt::LeftButton) << Modifiers(Qt::ControlModifier)
                                 << Buttons(Qt::LeftButton);
    QTest::newRow("Alt + left") << Buttons(Qt::LeftButton) << Modifiers(Qt::AltModifier)
                                << Buttons(Qt::LeftButton);
    QTest::newRow("Ctrl + Alt + left")
        << Buttons(Qt::LeftButton) << both << Buttons(Qt::MiddleButton);
    QTest::newRow("Ctrl + Alt + Shift + left")
        << Buttons(Qt::LeftButton) << (both | Qt::ShiftModifier) << Buttons(Qt::MiddleButton);
    QTest::newRow("Ctrl + Alt + right")
        << Buttons(Qt::RightButton) << both << Buttons(Qt::RightButton);
    QTest::newRow("Ctrl + Alt + left and right") << Buttons(
        Qt::LeftButton | Qt::RightButton) << both << Buttons(Qt::LeftButton | Qt::RightButton);
    QTest::newRow("no button") << Buttons() << both << Buttons();
}

void TestSlideWidget::ctrlAndAltMakeABareLeftButtonTheMiddleOne()
{
    QFETCH(const Qt::MouseButtons, held);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const Qt::MouseButtons, read);

    const QMouseEvent move = MouseEvent(Qt::NoButton, held, modifiers);
    QCOMPARE(OpenSlide::GetMouseButtons(&move), read);
    QCOMPARE(OpenSlide::GetMouseButton(&move), Qt::NoButton);

    const bool isOne = held == Qt::LeftButton || held == Qt::RightButton;
    if (isOne) {
        const auto button = static_cast<Qt::MouseButton>(static_cast<int>(held));
        const QMouseEvent press = MouseEvent(button, held, modifiers);
        QCOMPARE(Qt::MouseButtons(OpenSlide::GetMouseButton(&press)), read);
    }
}

void TestSlideWidget::aDragPansByExactlyItsPixels_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");

    QTest::newRow("middle button") << Qt::MiddleButton << Qt::KeyboardModifiers();
    QTest::newRow("Ctrl + Alt + left")
        << Qt::LeftButton << Qt::KeyboardModifiers(Qt::ControlModifier | Qt::AltModifier);
}

void TestSlideWidget::aDragPansByExactlyItsPixels()
{
    QFETCH(const Qt::MouseButton, button);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    for (const double scale : { 0.0625, 1.0, 32.0 }) {
        OpenSlide slide;
        SlideHand hand(slide);
        SetScale(slide, scale);

        hand.Press(QPoint(40, 50), button, modifiers);
        for (const QPoint &on : { QPoint(90, 10), QPoint(33, 77), QPoint(53, 43) })
            hand.Move(on, button, modifiers);
        hand.Release(QPoint(53, 43), button, modifiers);

        QCOMPARE(slide.view, QTransform::fromTranslate(113, 93).scale(scale, scale));
        QVERIFY(slide.pan.isIdentity());
        hand.Move(QPoint(99, 99), Qt::NoButton, modifiers); // and it is over
        QVERIFY(slide.pan.isIdentity());
    }

    OpenSlide turned;
    SlideHand hand(turned);
    turned.view.rotate(30);
    hand.Press(QPoint(40, 50), button, modifiers);
    hand.Move(QPoint(53, 43), button, modifiers);
    hand.Release(QPoint(53, 43), button, modifiers);
    QVERIFY(IsSamePlace(turned.view.map(QPointF(0, 0)), QPointF(113, 93)));
}

void TestSlideWidget::theViewStandsStillWhileADragLasts()
{
    OpenSlide slide;
    SlideHand hand(slide);
    SetScale(slide, 2);
    const QTransform before = slide.view;

    hand.Press(QPoint(40, 50), Qt::MiddleButton);
    hand.Move(QPoint(54, 44), Qt::MiddleButton);

    QCOMPARE(slide.view, before);
    QCOMPARE(slide.pan, QTransform::fromTranslate(7, -3)); // scene units
    QCOMPARE(slide.MapToScene(QPointF(100, 100)), QPointF(0, 0)); // not reckoned with
    hand.Release(QPoint(54, 44), Qt::MiddleButton);
}

void TestSlideWidget::otherButtonsDoNotPan_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");

    QTest::newRow("left") << Qt::LeftButton << Qt::KeyboardModifiers();
    QTest::newRow("Ctrl + left") << Qt::LeftButton << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("right") << Qt::RightButton << Qt::KeyboardModifiers();
}

void TestSlideWidget::otherButtonsDoNotPan()
{
    QFETCH(const Qt::MouseButton, button);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    OpenSlide slide;
    SlideHand hand(slide);
    const QTransform before = slide.view;

    hand.Press(QPoint(40, 50), button, modifiers);
    hand.Move(QPoint(53, 43), button, modifiers);
    hand.Release(QPoint(53, 43), button, modifiers);

    QCOMPARE(slide.view, before);
    QVERIFY(slide.pan.isIdentity());
}

VN_TEST_MAIN(TestSlideWidget)
#include "tst_slidewidget.moc"
