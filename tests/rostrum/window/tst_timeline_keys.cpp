// Keys and values in the timeline, by mouse and keys; judged by what the document holds, and the
// sheet would read.
#include "ShownTimeline.h"
#include "testhost/HostTestMain.h"
#include "window/ImageNumber.h"

#include <QHelpEvent>
#include <QLabel>
#include <QToolButton>
#include <QToolTip>

using namespace rostrum;
using testing::Keys;
using testing::SheetFixture;
using testing::ShownTimeline;

namespace {

const Keys kKeys{ { 0, 3 }, { 10, 5 }, { 20, 7 } };

/// The timeline with the fixture's layer unfolded.
struct Shown : ShownTimeline
{
    explicit Shown(SheetFixture &sheet) : ShownTimeline(sheet)
    {
        Unfold(sheet.layer);
        image = RowOf(sheet.layer, kTimeRemap);
    }
    void ClickButton(const char *name)
    {
        QTest::mouseClick(timeline.findChild<QToolButton *>(QLatin1String(name)), Qt::LeftButton);
    }
    const Key &RemapKey(int index) { return sheet.Remap().KeyAt(index); }

    int image = 0; // the row of the time remap
};

} // namespace

class TestTimelineKeys : public QObject
{
    Q_OBJECT

private slots:
    void draggedKeyIsOneEntry();
    void draggedKeysGoTogether();
    void keyDroppedOnAnotherTakesItsPlace();
    void keyDraggedBackLeavesNoEntry();
    void escapeCallsADragOff();
    void shiftCatchesTheCurrentTime();
    void clicksSelectKeys();
    void frameSelectsKeys();
    void nameOfAStreamSelectsItsKeys();
    void deleteTakesTheSelectedKeys();
    void interpolationIsChanged();
    void imageIsTypedAsItsNumber();
    void keyIsEditedByDoubleClick();
    void typedValueWithoutKeysIsTheConstant();
    void typedValueIsHeldWithinItsLimits();
    void whatIsNoNumberChangesNothing_data();
    void whatIsNoNumberChangesNothing();
    void tabGoesToTheNextComponent();
    void effectIsTyped();
    void parametersOfAnEffectAreToldApart();
    void keyButtonAddsAndRemoves();
    void keyBesideTheFrameStartIsMeant();
    void keyArrowsGoFromKeyToKey();
    void hintNamesTheFile();
    void kindsOfKeysLookDifferent();
    void undoDuringADrag();
    void keyDeletedDuringADrag();
    void layerDeletedWhileAValueIsTyped();
    void thousandsOfKeysArePaintedInAMoment();
};

void TestTimelineKeys::draggedKeyIsOneEntry()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    shown.Drag(shown.At(shown.image, 10), shown.At(shown.image, 14));
    QCOMPARE(sheet.RemapKeys(), (Keys{ { 0, 3 }, { 14, 5 }, { 20, 7 } }));
    QCOMPARE(int(shown.RemapKey(1).out), int(Interpolation::Hold));
    QCOMPARE(shown.Undo(), QVector<QByteArray>{ "Move Keys" });
    QVERIFY(sheet.host.GetDocument().Undo());
    QCOMPARE(sheet.RemapKeys(), kKeys);
}

void TestTimelineKeys::draggedKeysGoTogether()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    shown.ClickKey(shown.image, 0);
    shown.ClickKey(shown.image, 10, Qt::ControlModifier);
    shown.Drag(shown.At(shown.image, 10), shown.At(shown.image, 13));
    QCOMPARE(sheet.RemapKeys(), (Keys{ { 3, 3 }, { 13, 5 }, { 20, 7 } }));
    QCOMPARE(shown.Board().Keys().size(), std::size_t(2));
    shown.Drag(shown.At(shown.image, 13), shown.At(shown.image, 12)); // they are still selected
    QCOMPARE(sheet.RemapKeys(), (Keys{ { 2, 3 }, { 12, 5 }, { 20, 7 } }));
    QCOMPARE(shown.Undo(), (QVector<QByteArray>{ "Move Keys", "Move Keys" }));
}

void TestTimelineKeys::keyDroppedOnAnotherTakesItsPlace()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    const QPoint from = shown.At(shown.image, 10);
    const QPoint far = shown.At(shown.image, 25);
    // Over the other key and beyond, and back onto it: what lay in the way comes back.
    testing::DragMouse(shown.Tracks(), { from, shown.At(shown.image, 20), far });
    QCOMPARE(sheet.RemapKeys(), (Keys{ { 0, 3 }, { 20, 7 }, { 25, 5 } }));
    shown.Drag(far, shown.At(shown.image, 20));
    QCOMPARE(sheet.RemapKeys(), (Keys{ { 0, 3 }, { 20, 5 } }));
}

void TestTimelineKeys::keyDraggedBackLeavesNoEntry()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    const QPoint from = shown.At(shown.image, 10);
    testing::DragMouse(shown.Tracks(), { from, shown.At(shown.image, 30), from });
    QCOMPARE(sheet.RemapKeys(), kKeys);
    QVERIFY(shown.Undo().isEmpty());
}

void TestTimelineKeys::escapeCallsADragOff()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    QTest::mousePress(&shown.Tracks(), Qt::LeftButton, {}, shown.At(shown.image, 10));
    testing::MoveMouse(shown.Tracks(), shown.At(shown.image, 30));
    QVERIFY(shown.Board().IsPreviewing());
    QCOMPARE(sheet.RemapKeys(), kKeys); // the document waits for the hand to let go
    QTest::keyClick(&shown.Tracks(), Qt::Key_Escape);
    QVERIFY(!shown.Board().IsPreviewing());
    testing::MoveMouse(shown.Tracks(), shown.At(shown.image, 40));
    QTest::mouseRelease(&shown.Tracks(), Qt::LeftButton, {}, shown.At(shown.image, 40));
    QCOMPARE(sheet.RemapKeys(), kKeys);
}

void TestTimelineKeys::shiftCatchesTheCurrentTime()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    shown.SetPixels(4);
    shown.session.SetCurrentFrame(33);
    shown.ClickKey(shown.image, 20);
    const QPoint from = shown.At(shown.image, 20);
    QTest::mousePress(&shown.Tracks(), Qt::LeftButton, Qt::ShiftModifier, from);
    const QPoint to = shown.At(shown.image, 32);
    QMouseEvent move(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier);
    QApplication::sendEvent(&shown.Tracks(), &move);
    QTest::mouseRelease(&shown.Tracks(), Qt::LeftButton, Qt::ShiftModifier, to);
    QCOMPARE(sheet.RemapKeys().last().frame, 33);
}

void TestTimelineKeys::clicksSelectKeys()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    const auto count = [&] { return int(shown.Board().Keys().size()); };
    shown.ClickKey(shown.image, 0);
    QCOMPARE(count(), 1);
    shown.ClickKey(shown.image, 10, Qt::ShiftModifier);
    shown.ClickKey(shown.image, 20, Qt::ControlModifier);
    QCOMPARE(count(), 3);
    shown.ClickKey(shown.image, 20, Qt::ControlModifier);
    QCOMPARE(count(), 2);
    shown.ClickKey(shown.image, 0, Qt::ShiftModifier);
    QCOMPARE(count(), 1);
    shown.ClickKey(shown.image, 20);
    QCOMPARE(count(), 1);
    QTest::mouseClick(&shown.Tracks(), Qt::LeftButton, {}, shown.At(shown.image, 15));
    QCOMPARE(count(), 0);
    QVERIFY(shown.Undo().isEmpty());
}

void TestTimelineKeys::frameSelectsKeys()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    shown.Drag(shown.At(shown.image, 7), shown.At(shown.image + 2, 25));
    QCOMPARE(shown.Board().Keys().size(), std::size_t(2));
    QVERIFY(shown.Board().IsSelected(KeyId{ sheet.layer, { kTimeRemap }, Rate().FrameTime(10) }));
    QCOMPARE(sheet.RemapKeys(), kKeys);
}

void TestTimelineKeys::nameOfAStreamSelectsItsKeys()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    shown.ClickCell(shown.image, OutlineCells::Name);
    QCOMPARE(shown.Board().Keys().size(), std::size_t(3));
}

void TestTimelineKeys::deleteTakesTheSelectedKeys()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    shown.ClickKey(shown.image, 10);
    shown.ClickKey(shown.image, 20, Qt::ControlModifier);
    QTest::keyClick(&shown.Tracks(), Qt::Key_Delete);
    QCOMPARE(sheet.RemapKeys(), (Keys{ { 0, 3 } }));
    QCOMPARE(shown.Undo(), QVector<QByteArray>{ "Delete Keys" });
    QVERIFY(shown.Board().Keys().empty());
}

void TestTimelineKeys::interpolationIsChanged()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    QVERIFY(!shown.timeline.findChild<QToolButton *>(QStringLiteral("pbLinear"))->isEnabled());
    shown.ClickKey(shown.image, 0);
    shown.ClickButton("pbLinear");
    QCOMPARE(int(shown.RemapKey(0).out), int(Interpolation::Linear));
    QCOMPARE(ImageAt(sheet.host.GetProject(), sheet.Find(sheet.layer), Rate().FrameTime(5)), 4);
    shown.ClickButton("pbBezier");
    QCOMPARE(int(shown.RemapKey(0).in), int(Interpolation::Bezier));
    shown.ClickButton("pbHold");
    QCOMPARE(sheet.RemapKeys(), kKeys);
    QCOMPARE(int(shown.RemapKey(0).out), int(Interpolation::Hold));
    QCOMPARE(shown.Undo().size(), 3);
    shown.ClickButton("pbHold"); // it holds already
    QCOMPARE(shown.Undo().size(), 3);
}

void TestTimelineKeys::imageIsTypedAsItsNumber()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    shown.session.SetCurrentFrame(10);
    shown.ClickCell(shown.image, OutlineCells::Value);
    QCOMPARE(shown.Editor("efValue")->text(), QStringLiteral("5"));
    QVERIFY(shown.Type("efValue", QStringLiteral("29")));
    QCOMPARE(sheet.RemapKeys(), (Keys{ { 0, 3 }, { 10, 29 }, { 20, 7 } }));
    QVERIFY(!shown.Editor("efValue"));
    shown.session.SetCurrentFrame(13); // between keys: a new one
    shown.ClickCell(shown.image, OutlineCells::Value);
    QVERIFY(shown.Type("efValue", QStringLiteral("2")));
    QCOMPARE(sheet.RemapKeys(), (Keys{ { 0, 3 }, { 10, 29 }, { 13, 2 }, { 20, 7 } }));
    QCOMPARE(int(shown.RemapKey(2).out), int(Interpolation::Hold));
    QCOMPARE(shown.Undo(), (QVector<QByteArray>{ "Set Image", "Set Image" }));
}

void TestTimelineKeys::keyIsEditedByDoubleClick()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    QTest::mouseDClick(&shown.Tracks(), Qt::LeftButton, {}, shown.At(shown.image, 20));
    QCOMPARE(shown.session.CurrentFrame(), 20);
    QVERIFY(shown.Type("efValue", QStringLiteral("11")));
    QCOMPARE(sheet.RemapKeys(), (Keys{ { 0, 3 }, { 10, 5 }, { 20, 11 } }));
}

void TestTimelineKeys::typedValueWithoutKeysIsTheConstant()
{
    SheetFixture sheet;
    Shown shown(sheet);
    const int row = shown.RowOf(sheet.layer, kPosition);
    shown.ClickCell(row, OutlineCells::Value, 1);
    QVERIFY(shown.Type("efValue", QStringLiteral("12,5")));
    QCOMPARE(sheet.Find(sheet.layer).position.Constant()[0], 320.0);
    QCOMPARE(sheet.Find(sheet.layer).position.Constant()[1], 12.5);
    QCOMPARE(shown.Outline().ValueText(shown.Rows().At(row), 1), QStringLiteral("12.5"));
    QCOMPARE(shown.Undo(), QVector<QByteArray>{ "Set Position" });
}

void TestTimelineKeys::typedValueIsHeldWithinItsLimits()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    shown.ClickCell(shown.RowOf(sheet.layer, kOpacity), OutlineCells::Value);
    QVERIFY(shown.Type("efValue", QStringLiteral("-40")));
    QCOMPARE(sheet.Find(sheet.layer).opacity.Constant()[0], 0.0);
    shown.ClickCell(shown.image, OutlineCells::Value);
    QVERIFY(shown.Type("efValue", QStringLiteral("-4")));
    QCOMPARE(sheet.RemapKeys().first().image, 0);
    shown.ClickCell(shown.RowOf(sheet.layer, kRotation), OutlineCells::Value);
    QVERIFY(shown.Type("efValue", QStringLiteral("1e300")));
    QCOMPARE(sheet.Find(sheet.layer).rotation.Constant()[0], 1e6);
}

void TestTimelineKeys::whatIsNoNumberChangesNothing_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("end");
    QTest::newRow("letters") << QStringLiteral("abc") << int(Qt::Key_Return);
    QTest::newRow("infinite") << QStringLiteral("inf") << int(Qt::Key_Return);
    QTest::newRow("no number") << QStringLiteral("nan") << int(Qt::Key_Return);
    QTest::newRow("nothing") << QStringLiteral(" ") << int(Qt::Key_Return);
    QTest::newRow("called off") << QStringLiteral("77") << int(Qt::Key_Escape);
}

void TestTimelineKeys::whatIsNoNumberChangesNothing()
{
    QFETCH(QString, text);
    QFETCH(int, end);
    SheetFixture sheet;
    Shown shown(sheet);
    shown.ClickCell(shown.RowOf(sheet.layer, kRotation), OutlineCells::Value);
    QVERIFY(shown.Type("efValue", text, Qt::Key(end)));
    QVERIFY(!shown.Editor("efValue"));
    QCOMPARE(sheet.Find(sheet.layer).rotation.Constant()[0], 0.0);
    QVERIFY(shown.Undo().isEmpty());
}

void TestTimelineKeys::tabGoesToTheNextComponent()
{
    SheetFixture sheet;
    Shown shown(sheet);
    shown.ClickCell(shown.RowOf(sheet.layer, kScale), OutlineCells::Value);
    QVERIFY(shown.Type("efValue", QStringLiteral("50"), Qt::Key_Tab));
    QVERIFY(shown.Type("efValue", QStringLiteral("70")));
    QCOMPARE(sheet.Find(sheet.layer).scale.Constant()[0], 50.0);
    QCOMPARE(sheet.Find(sheet.layer).scale.Constant()[1], 70.0);
}

void TestTimelineKeys::effectIsTyped()
{
    SheetFixture sheet;
    Shown shown(sheet);
    EffectId effect = 0;
    shown.session.Do("Effect", [&](Project &project) {
        effect = project.ApplyEffect(
            sheet.composition, sheet.layer, FindEffect(QByteArray(kColorBalance))->key);
    });
    const StreamId lightness{ -1, effect, 1 };
    const int row = shown.Rows().RowOf(sheet.layer, lightness);
    QVERIFY(row > 0);
    shown.ClickCell(row, OutlineCells::Value);
    QVERIFY(shown.Type("efValue", QStringLiteral("-30")));
    QCOMPARE(sheet.Find(sheet.layer).effects[0].params[1].Constant()[0], -30.0);
    shown.ClickCell(row, OutlineCells::KeyButton);
    QCOMPARE(sheet.Find(sheet.layer).effects[0].params[1].KeyCount(), 1);
}

/// All three were "Balance d...".
void TestTimelineKeys::parametersOfAnEffectAreToldApart()
{
    SheetFixture sheet;
    Shown shown(sheet);
    EffectId effect = 0;
    shown.session.Do("Effect", [&](Project &project) {
        effect = project.ApplyEffect(
            sheet.composition, sheet.layer, FindEffect(QByteArray(kColorBalance))->key);
    });
    const OutlineCells cells(shown.Outline().width());
    QVector<QImage> names;
    for (int param = 0; param < 3; ++param) {
        const int row = shown.Rows().RowOf(sheet.layer, StreamId{ -1, effect, param });
        QVERIFY(row > 0);
        QRect place = cells.Rect(
            OutlineCells::Name, rostrum::TimelineRows::TopOf(row) - shown.Board().ScrollY());
        place.setLeft(cells.Rect(OutlineCells::KeyBehind, 0).right() + 1);
        QVERIFY(shown.Outline().rect().contains(place));
        const QString name = shown.Rows().At(row).stream.name;
        QVERIFY(shown.Outline().fontMetrics().horizontalAdvance(name) > place.width());
        names << shown.Outline().grab(place).toImage();
    }
    QVERIFY(names[0] != names[1] && names[1] != names[2] && names[0] != names[2]);
}

void TestTimelineKeys::keyButtonAddsAndRemoves()
{
    SheetFixture sheet;
    Shown shown(sheet);
    shown.session.SetCurrentFrame(6);
    shown.ClickCell(shown.image, OutlineCells::KeyButton);
    QCOMPARE(sheet.RemapKeys(), (Keys{ { 6, 6 } })); // the drawing that stood there stays
    shown.ClickCell(shown.image, OutlineCells::KeyButton);
    QVERIFY(sheet.RemapKeys().isEmpty());
    QCOMPARE(shown.Undo(), (QVector<QByteArray>{ "Add Key", "Remove Key" }));
}

void TestTimelineKeys::keyBesideTheFrameStartIsMeant()
{
    SheetFixture sheet;
    Shown shown(sheet);
    shown.session.Do("Key", [&](Project &project) {
        project.EditLayer(sheet.composition, sheet.layer)
            ->rotation.InsertKey(Time{ 9, 50 }, { 3, 0, 0, 0 }); // in the middle of frame 4
    });
    shown.session.SetCurrentFrame(4);
    const int row = shown.RowOf(sheet.layer, kRotation);
    shown.ClickCell(row, OutlineCells::Value);
    QVERIFY(shown.Type("efValue", QStringLiteral("8")));
    QCOMPARE(sheet.Find(sheet.layer).rotation.KeyCount(), 1);
    QCOMPARE(sheet.Find(sheet.layer).rotation.KeyAt(0).value[0], 8.0);
    shown.ClickCell(row, OutlineCells::KeyButton);
    QVERIFY(!sheet.Find(sheet.layer).rotation.HasKeys());
}

void TestTimelineKeys::keyArrowsGoFromKeyToKey()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    const auto go = [&](OutlineCells::Cell cell) {
        shown.ClickCell(shown.image, cell);
        return shown.session.CurrentFrame();
    };
    QCOMPARE(go(OutlineCells::KeyBehind), 10);
    QCOMPARE(go(OutlineCells::KeyBehind), 20);
    QCOMPARE(go(OutlineCells::KeyBehind), 20);
    QCOMPARE(go(OutlineCells::KeyBefore), 10);
    QCOMPARE(go(OutlineCells::KeyBefore), 0);
    QCOMPARE(go(OutlineCells::KeyBefore), 0);
}

void TestTimelineKeys::hintNamesTheFile()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    const QPoint onKey = shown.At(shown.image, 10);
    QCOMPARE(shown.Tracks().HintAt(onKey), QStringLiteral("5 = walk0005.png"));
    const QPoint onBar = shown.At(shown.RowOf(sheet.layer), 25);
    QCOMPARE(shown.Tracks().HintAt(onBar), QStringLiteral("7 = walk0007.png"));
    QHelpEvent help(QEvent::ToolTip, onKey, shown.Tracks().mapToGlobal(onKey));
    QApplication::sendEvent(&shown.Tracks(), &help);
    QCOMPARE(QToolTip::text(), QStringLiteral("5 = walk0005.png"));
    QToolTip::hideText();
    testing::MoveMouse(shown.Tracks(), onBar, Qt::NoButton);
    QCOMPARE(shown.timeline.findChild<QLabel *>(QStringLiteral("lbHint"))->text(),
        QStringLiteral("7 = walk0007.png"));
    shown.session.SetCurrentFrame(12);
    QCOMPARE(shown.Outline().HintAt(shown.CellAt(shown.RowOf(sheet.layer), OutlineCells::Drawing)),
        QStringLiteral("5 = walk0005.png"));
}

void TestTimelineKeys::kindsOfKeysLookDifferent()
{
    SheetFixture sheet;
    Shown shown(sheet);
    const Interpolation kinds[]
        = { Interpolation::Linear, Interpolation::Bezier, Interpolation::Hold };
    shown.session.Do("Keys", [&](Project &project) {
        Stream &stream = project.EditLayer(sheet.composition, sheet.layer)->rotation;
        for (int i = 0; i < 3; ++i) {
            stream.InsertKey(Rate().FrameTime(5 + 10 * i), {});
            stream.SetKeyInterpolation(i, kinds[i], kinds[i]);
        }
    });
    const QImage picture = shown.Picture();
    const int row = shown.RowOf(sheet.layer, kRotation);
    const auto light = [&](int frame, int x, int y) {
        return picture.pixelColor(shown.At(row, frame) + QPoint(x, y)).lightness();
    };
    const auto differing = [&](int one, int other) {
        int count = 0;
        for (int place = 0; place < 121; ++place) {
            const int x = place % 11 - 5;
            const int y = place / 11 - 5;
            count += qAbs(light(one, x, y) - light(other, x, y)) > 40;
        }
        return count;
    };
    for (const int frame : { 5, 15, 25 })
        QVERIFY(light(frame, -1, 1) > light(40, 0, 0) + 60);
    QVERIFY(differing(5, 15) >= 8);
    QVERIFY(differing(15, 25) >= 8);
    QVERIFY(differing(5, 25) >= 8);
}

void TestTimelineKeys::undoDuringADrag()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    shown.session.Do("More", [&](Project &project) {
        project.EditLayer(sheet.composition, sheet.layer)
            ->timeRemap.InsertKey(Rate().FrameTime(30), {});
    });
    QTest::mousePress(&shown.Tracks(), Qt::LeftButton, {}, shown.At(shown.image, 10));
    testing::MoveMouse(shown.Tracks(), shown.At(shown.image, 12));
    QVERIFY(sheet.host.GetDocument().Undo());
    shown.session.Look();
    testing::MoveMouse(shown.Tracks(), shown.At(shown.image, 13));
    QTest::mouseRelease(&shown.Tracks(), Qt::LeftButton, {}, shown.At(shown.image, 13));
    QCOMPARE(sheet.RemapKeys(), (Keys{ { 0, 3 }, { 13, 5 }, { 20, 7 } }));
    QCOMPARE(shown.Undo(), QVector<QByteArray>{ "Move Keys" });
}

void TestTimelineKeys::keyDeletedDuringADrag()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    QTest::mousePress(&shown.Tracks(), Qt::LeftButton, {}, shown.At(shown.image, 10));
    testing::MoveMouse(shown.Tracks(), shown.At(shown.image, 12));
    sheet.SetRemapKeys(sheet.layer, { { 0, 9 } }); // as a plug-in does
    shown.session.Look();
    testing::MoveMouse(shown.Tracks(), shown.At(shown.image, 13));
    QTest::mouseRelease(&shown.Tracks(), Qt::LeftButton, {}, shown.At(shown.image, 13));
    QCOMPARE(sheet.RemapKeys().first().image, 9);
    QCOMPARE(sheet.Remap().FindKey(Rate().FrameTime(13)), -1);
    QVERIFY(shown.Undo().isEmpty());
}

void TestTimelineKeys::layerDeletedWhileAValueIsTyped()
{
    SheetFixture sheet(kKeys);
    Shown shown(sheet);
    shown.ClickCell(shown.image, OutlineCells::Value);
    QPointer<QLineEdit> editor = shown.Editor("efValue");
    QTest::keyClicks(editor, QStringLiteral("31"));
    shown.session.Do(
        "Delete", [&](Project &project) { project.RemoveLayer(sheet.composition, sheet.layer); });
    QVERIFY(!shown.Editor("efValue"));
    QCOMPARE(shown.Undo(), QVector<QByteArray>{ "Delete" });
}

void TestTimelineKeys::thousandsOfKeysArePaintedInAMoment()
{
    SheetFixture sheet({}, /*frames=*/100000);
    Shown shown(sheet);
    shown.session.Do("Keys", [&](Project &project) {
        Layer *layer = project.EditLayer(sheet.composition, sheet.layer);
        layer->duration = Rate().FrameTime(100000);
        for (int i = 0; i < 100000; ++i)
            layer->timeRemap.InsertKey(Rate().FrameTime(i), { i / 25.0, 0, 0, 0 });
    });
    shown.SetPixels(0.02);
    const QImage picture = shown.Picture();
    const QColor back = picture.pixelColor(shown.At(shown.image + 1, 20000));
    QVERIFY(picture.pixelColor(shown.At(shown.image, 4000)) != back);
    shown.SetPixels(40);
    TimeScale scale = shown.Board().Scale();
    scale.SetScroll(40.0 * 50000);
    shown.Board().SetScale(scale);
    QCOMPARE(
        shown.Tracks().HintAt(shown.At(shown.image, 50003)), QStringLiteral("50003: no drawing"));
    shown.Picture();
}

VN_HOST_TEST_MAIN(TestTimelineKeys)
#include "tst_timeline_keys.moc"
