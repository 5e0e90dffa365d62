// Layers, bars and the current time in the timeline, by mouse and keyboard; judged by what the
// document holds and by what is shown.
#include "ShownTimeline.h"
#include "testhost/HostTestMain.h"
#include "window/TimelinePaint.h"
#include "window/Viewer.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>

using namespace rostrum;
using testing::Keys;
using testing::SheetFixture;
using testing::ShownTimeline;

namespace {

/// "in duration offset" of a layer, in frames.
QString Bar(const SheetFixture &sheet, LayerId layer)
{
    const Layer &found = sheet.Find(layer);
    return QStringLiteral("%1 %2 %3")
        .arg(Rate().FrameAt(found.inPoint))
        .arg(Rate().FrameAt(found.duration))
        .arg(Rate().FrameAt(found.offset));
}

QVector<LayerId> Order(const SheetFixture &sheet)
{
    QVector<LayerId> order;
    for (const LayerPtr &layer : sheet.host.GetProject().FindComposition(sheet.composition)->layers)
        order << layer->id;
    return order;
}

void Wheel(QWidget &widget, const QPoint &at, int notches, Qt::KeyboardModifiers modifiers = {})
{
    QWheelEvent event(at, widget.mapToGlobal(at), QPoint(), QPoint(0, 120 * notches), Qt::NoButton,
        modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

} // namespace

class TestTimeline : public QObject
{
    Q_OBJECT

private slots:
    void draggedBarTakesItsKeysAlong();
    void draggedBarsGoTogether();
    void endsAreDragged();
    void draggedEndsCatchOnOtherBars();
    void barCanLeaveTheComposition();
    void dragIsShownBeforeItIsDone();
    void clicksSelectLayers();
    void selectionIsThatOfTheHost();
    void clickBesideAllRowsSelectsNothing();
    void layersAreReorderedByDrag();
    void severalLayersAreReorderedByDrag();
    void parentIsPicked();
    void noCircleOfParentsIsOffered();
    void labelIsPicked();
    void layerIsRenamed();
    void arrowKeysWalkAndUnfold();
    void deleteTakesTheSelectedLayers();
    void rulerScrubs();
    void wheelZoomsAndScrolls();
    void currentTimeStaysInSight();
    void keysOfTheTransportAreLent();
    void barsAreSeen();
    void noCompositionIsEmpty();
    void emptyComposition();
    void compositionWithoutLength();
    void oneFrame();
    void fiveHundredLayers();
    void longAndForeignNames();
    void layerDeletedDuringADrag();
    void compositionLeftDuringADrag();
    void projectReplacedDuringADrag();
    void layerDeletedWhileItsParentIsPicked();
    void undoDuringPlayback();
    void playingLeavesNoTrace_data();
    void playingLeavesNoTrace();
    void staleIdsInTheView();
};

void TestTimeline::draggedBarTakesItsKeysAlong()
{
    SheetFixture sheet({ { 0, 3 }, { 10, 5 } });
    ShownTimeline shown(sheet);
    const int row = shown.RowOf(sheet.layer);
    shown.Drag(shown.At(row, 40), shown.At(row, 47));
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("7 100 7"));
    QCOMPARE(sheet.RemapKeys(), (Keys{ { 7, 3 }, { 17, 5 } }));
    QCOMPARE(shown.Undo(), QVector<QByteArray>{ "Move Layer" });
}

void TestTimeline::draggedBarsGoTogether()
{
    SheetFixture sheet;
    const LayerId other = sheet.AddSolid("other");
    const LayerId third = sheet.AddSolid("third");
    ShownTimeline shown(sheet);
    shown.ClickCell(shown.RowOf(other), OutlineCells::Name);
    shown.ClickCell(shown.RowOf(sheet.layer), OutlineCells::Name, 0, Qt::ControlModifier);
    const int row = shown.RowOf(other);
    shown.Drag(shown.At(row, 40), shown.At(row, 35));
    QCOMPARE(Bar(sheet, other), QStringLiteral("-5 100 -5"));
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("-5 100 -5"));
    QCOMPARE(Bar(sheet, third), QStringLiteral("0 100 0"));
    QCOMPARE(shown.Undo().size(), 1);
    QTest::mouseClick(&shown.Tracks(), Qt::LeftButton, {}, shown.At(row, 40));
    QCOMPARE(shown.session.SelectedLayers(), QVector<LayerId>{ other }); // a click singles out
}

void TestTimeline::endsAreDragged()
{
    SheetFixture sheet({ { 0, 3 } });
    ShownTimeline shown(sheet);
    shown.SetPixels(6);
    const int row = shown.RowOf(sheet.layer);
    shown.Drag(shown.EdgeAt(row, 100), shown.EdgeAt(row, 80));
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("0 80 0"));
    shown.Drag(shown.EdgeAt(row, 0) + QPoint(1, 0), shown.EdgeAt(row, 12));
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("12 68 0"));
    shown.Drag(shown.EdgeAt(row, 80), shown.EdgeAt(row, 0)); // past the in point
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("12 1 0"));
    QVERIFY(sheet.Find(sheet.layer).inPoint == (Time{ 12, 25 }));
    QCOMPARE(shown.Undo(), (QVector<QByteArray>{ "Trim Layer", "Trim Layer", "Trim Layer" }));
}

void TestTimeline::draggedEndsCatchOnOtherBars()
{
    SheetFixture sheet;
    const LayerId other = sheet.AddSolid("other");
    ShownTimeline shown(sheet);
    shown.SetPixels(4);
    shown.session.Do("Bar", [&](Project &project) {
        project.EditLayer(sheet.composition, other)->inPoint = Rate().FrameTime(31);
    });
    const int row = shown.RowOf(sheet.layer);
    shown.ClickCell(row, OutlineCells::Name);
    const QPoint to = shown.EdgeAt(row, 30);
    QTest::mousePress(&shown.Tracks(), Qt::LeftButton, Qt::ShiftModifier, shown.EdgeAt(row, 0));
    QMouseEvent move(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier);
    QApplication::sendEvent(&shown.Tracks(), &move);
    QTest::mouseRelease(&shown.Tracks(), Qt::LeftButton, Qt::ShiftModifier, to);
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("31 69 0"));
}

void TestTimeline::barCanLeaveTheComposition()
{
    SheetFixture sheet;
    ShownTimeline shown(sheet);
    shown.SetPixels(6);
    const int row = shown.RowOf(sheet.layer);
    shown.Drag(shown.At(row, 50), shown.At(row, 90));
    shown.Drag(shown.At(row, 50), shown.At(row, 95));
    shown.Drag(shown.At(row, 90), shown.At(row, 110));
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("105 100 105"));
    QVERIFY(!shown.Picture().isNull());
}

void TestTimeline::dragIsShownBeforeItIsDone()
{
    SheetFixture sheet;
    ShownTimeline shown(sheet);
    int previews = 0;
    int ends = 0;
    connect(&shown.timeline, &Timeline::SigPreview, this, [&](const Project &project) {
        ++previews;
        QCOMPARE(project.FindLayer(sheet.composition, sheet.layer)->inPoint.value, 20);
    });
    connect(&shown.timeline, &Timeline::SigPreviewEnd, this, [&] { ++ends; });
    const int row = shown.RowOf(sheet.layer);
    const QColor before = shown.Picture().pixelColor(shown.At(row, 4));
    QTest::mousePress(&shown.Tracks(), Qt::LeftButton, {}, shown.At(row, 20));
    testing::MoveMouse(shown.Tracks(), shown.At(row, 40));
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("0 100 0"));
    QVERIFY(shown.Picture().pixelColor(shown.At(row, 4)) != before);
    QCOMPARE(previews, 1);
    QCOMPARE(ends, 0);
    QTest::mouseRelease(&shown.Tracks(), Qt::LeftButton, {}, shown.At(row, 40));
    QCOMPARE(ends, 1);
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("20 100 20"));
}

void TestTimeline::clicksSelectLayers()
{
    SheetFixture sheet;
    const LayerId c = sheet.AddSolid("c");
    const LayerId b = sheet.AddSolid("b");
    const LayerId a = sheet.AddSolid("a"); // on top
    const LayerId d = sheet.layer;
    ShownTimeline shown(sheet);
    const auto click = [&](LayerId layer, Qt::KeyboardModifiers modifiers = {}) {
        shown.ClickCell(shown.RowOf(layer), OutlineCells::Name, 0, modifiers);
        return shown.session.SelectedLayers();
    };
    using Layers = QVector<LayerId>;
    QCOMPARE(click(b), Layers{ b });
    QCOMPARE(click(d, Qt::ShiftModifier), (Layers{ b, c, d }));
    QCOMPARE(click(a, Qt::ShiftModifier), (Layers{ a, b }));
    QCOMPARE(click(d, Qt::ControlModifier), (Layers{ a, b, d }));
    QCOMPARE(click(a, Qt::ControlModifier), (Layers{ b, d }));
    QCOMPARE(click(c), Layers{ c });
    QTest::mouseClick(&shown.Tracks(), Qt::LeftButton, {}, shown.At(shown.RowOf(a), 30));
    QCOMPARE(shown.session.SelectedLayers(), Layers{ a }); // the bar does the same
    QVERIFY(shown.Undo().isEmpty()); // looking is no change
}

void TestTimeline::selectionIsThatOfTheHost()
{
    SheetFixture sheet;
    const LayerId other = sheet.AddSolid("other");
    ShownTimeline shown(sheet);
    const QPoint place = shown.CellAt(shown.RowOf(other), OutlineCells::None) + QPoint(2, 3);
    const auto color = [&] { return shown.Outline().grab().toImage().pixelColor(place); };
    const QColor before = color();
    sheet.host.GetDocument().view.selections[sheet.composition] = { other }; // by a plug-in
    shown.session.Look();
    QVERIFY(color() != before);
    QVERIFY(shown.Board().IsSelected(other));
    QVERIFY(!shown.Board().IsSelected(sheet.layer));
}

void TestTimeline::clickBesideAllRowsSelectsNothing()
{
    SheetFixture sheet;
    ShownTimeline shown(sheet);
    shown.session.SelectLayers({ sheet.layer });
    QTest::mouseClick(&shown.Tracks(), Qt::LeftButton, {}, QPoint(60, 250));
    QVERIFY(shown.session.SelectedLayers().isEmpty());
    shown.session.SelectLayers({ sheet.layer });
    QTest::mouseClick(&shown.Outline(), Qt::LeftButton, {}, QPoint(60, 250));
    QVERIFY(shown.session.SelectedLayers().isEmpty());
}

void TestTimeline::layersAreReorderedByDrag()
{
    SheetFixture sheet;
    const LayerId b = sheet.AddSolid("b");
    const LayerId a = sheet.AddSolid("a");
    ShownTimeline shown(sheet);
    const auto name
        = [&](LayerId layer) { return shown.CellAt(shown.RowOf(layer), OutlineCells::Name); };
    testing::DragMouse(shown.Outline(), { name(a), name(b), name(sheet.layer) + QPoint(0, 5) });
    QCOMPARE(Order(sheet), (QVector<LayerId>{ b, sheet.layer, a }));
    testing::DragMouse(shown.Outline(), { name(a), QPoint(80, -40) });
    QCOMPARE(Order(sheet), (QVector<LayerId>{ a, b, sheet.layer }));
    testing::DragMouse(shown.Outline(), { name(b), name(b) + QPoint(0, 8) }); // where it was
    QCOMPARE(shown.Undo(), (QVector<QByteArray>{ "Reorder Layers", "Reorder Layers" }));
}

void TestTimeline::severalLayersAreReorderedByDrag()
{
    SheetFixture sheet;
    const LayerId c = sheet.AddSolid("c");
    const LayerId b = sheet.AddSolid("b");
    const LayerId a = sheet.AddSolid("a");
    ShownTimeline shown(sheet);
    shown.session.SelectLayers({ c, a });
    testing::DragMouse(
        shown.Outline(), { shown.CellAt(shown.RowOf(c), OutlineCells::Name), QPoint(80, 300) });
    QCOMPARE(Order(sheet), (QVector<LayerId>{ b, sheet.layer, a, c }));
    QCOMPARE(shown.Undo().size(), 1);
}

void TestTimeline::parentIsPicked()
{
    SheetFixture sheet;
    const LayerId child = sheet.AddSolid("child");
    ShownTimeline shown(sheet);
    shown.ClickCell(shown.RowOf(child), OutlineCells::Parent);
    auto *cbParent = shown.Outline().findChild<QComboBox *>(QStringLiteral("cbParent"));
    QVERIFY(cbParent);
    QCOMPARE(cbParent->count(), 2);
    QCOMPARE(cbParent->currentText(), QStringLiteral("None"));
    QTest::keyClick(cbParent->view(), Qt::Key_Down);
    QTest::keyClick(cbParent->view(), Qt::Key_Return);
    QCOMPARE(sheet.Find(child).parent, sheet.layer);
    QCOMPARE(shown.Undo(), QVector<QByteArray>{ "Parent Layer" });
    QTRY_VERIFY(!shown.Outline().findChild<QComboBox *>(QStringLiteral("cbParent")));
}

void TestTimeline::noCircleOfParentsIsOffered()
{
    SheetFixture sheet;
    const LayerId child = sheet.AddSolid("child");
    const LayerId other = sheet.AddSolid("other");
    ShownTimeline shown(sheet);
    shown.session.Do("Parent",
        [&](Project &project) { project.SetParent(sheet.composition, child, sheet.layer); });
    shown.ClickCell(shown.RowOf(sheet.layer), OutlineCells::Parent);
    auto *cbParent = shown.Outline().findChild<QComboBox *>(QStringLiteral("cbParent"));
    QCOMPARE(cbParent->count(), 2);
    QCOMPARE(cbParent->itemData(1).toInt(), other);
    cbParent->hidePopup();
    QTest::keyClick(cbParent, Qt::Key_Escape);
    QTRY_VERIFY(!shown.Outline().findChild<QComboBox *>(QStringLiteral("cbParent")));
    QCOMPARE(shown.Undo(), QVector<QByteArray>{ "Parent" });
}

void TestTimeline::labelIsPicked()
{
    SheetFixture sheet;
    ShownTimeline shown(sheet);
    const int row = shown.RowOf(sheet.layer);
    shown.ClickCell(row, OutlineCells::Swatch);
    auto *menu = shown.Outline().findChild<QMenu *>(QStringLiteral("mnLabel"));
    QVERIFY(menu);
    menu->actions()[5]->trigger();
    menu->close();
    QCOMPARE(int(sheet.Find(sheet.layer).label), 5);
    QCOMPARE(shown.Undo(), QVector<QByteArray>{ "Label Layer" });
    const QImage picture = shown.Outline().grab().toImage();
    QCOMPARE(picture.pixel(shown.CellAt(row, OutlineCells::Swatch)), LabelColor(5).rgb());
}

void TestTimeline::layerIsRenamed()
{
    SheetFixture sheet;
    ShownTimeline shown(sheet);
    const int row = shown.RowOf(sheet.layer);
    QTest::mouseDClick(&shown.Outline(), Qt::LeftButton, {}, shown.CellAt(row, OutlineCells::Name));
    QVERIFY(shown.Type("efName", QString::fromUtf8("marche")));
    QCOMPARE(sheet.Find(sheet.layer).name, QByteArray("marche"));
    QTest::keyClick(&shown.Outline(), Qt::Key_F2);
    QVERIFY(shown.Editor("efName"));
    shown.Editor("efName")->clear();
    QVERIFY(shown.Type("efName", QStringLiteral(" "), Qt::Key_Escape));
    QCOMPARE(shown.Undo(), QVector<QByteArray>{ "Rename Layer" });
}

void TestTimeline::arrowKeysWalkAndUnfold()
{
    SheetFixture sheet;
    const LayerId top = sheet.AddSolid("top");
    ShownTimeline shown(sheet);
    shown.session.SelectLayers({ top });
    QTest::keyClick(&shown.Outline(), Qt::Key_Down);
    QCOMPARE(shown.session.SelectedLayers(), QVector<LayerId>{ sheet.layer });
    QTest::keyClick(&shown.Outline(), Qt::Key_Down);
    QCOMPARE(shown.session.SelectedLayers(), QVector<LayerId>{ sheet.layer });
    QTest::keyClick(&shown.Outline(), Qt::Key_Right);
    QCOMPARE(shown.Rows().Count(), 8);
    QTest::keyClick(&shown.Outline(), Qt::Key_Left);
    QCOMPARE(shown.Rows().Count(), 2);
}

void TestTimeline::deleteTakesTheSelectedLayers()
{
    SheetFixture sheet;
    const LayerId other = sheet.AddSolid("other");
    ShownTimeline shown(sheet);
    shown.ClickCell(shown.RowOf(other), OutlineCells::Name);
    QTest::keyClick(&shown.Outline(), Qt::Key_Delete);
    QTest::keyClick(&shown.Tracks(), Qt::Key_Delete); // nothing is selected any more
    QCOMPARE(Order(sheet), QVector<LayerId>{ sheet.layer });
    QCOMPARE(shown.Undo(), QVector<QByteArray>{ "Delete Layers" });
}

void TestTimeline::rulerScrubs()
{
    SheetFixture sheet;
    ShownTimeline shown(sheet);
    TimelineRuler &ruler = shown.timeline.Ruler();
    const auto at = [&](int frame) { return QPoint(shown.At(0, frame).x(), 10); };
    QTest::mousePress(&ruler, Qt::LeftButton, {}, at(12));
    QCOMPARE(shown.session.CurrentFrame(), 12);
    testing::MoveMouse(ruler, at(31));
    QCOMPARE(shown.session.CurrentFrame(), 31);
    testing::MoveMouse(ruler, QPoint(-500, 10));
    QCOMPARE(shown.session.CurrentFrame(), 0);
    testing::MoveMouse(ruler, QPoint(50000, 10));
    QCOMPARE(shown.session.CurrentFrame(), 99);
    QTest::mouseRelease(&ruler, Qt::LeftButton);
    testing::MoveMouse(ruler, at(3), Qt::NoButton);
    QCOMPARE(shown.session.CurrentFrame(), 99);
    QVERIFY(shown.Undo().isEmpty());
}

void TestTimeline::wheelZoomsAndScrolls()
{
    SheetFixture sheet;
    for (int i = 0; i < 40; ++i)
        sheet.AddSolid("solid");
    ShownTimeline shown(sheet);
    const QPoint at(200, 12);
    const int frame = shown.Board().Scale().FrameAt(at.x());
    Wheel(shown.timeline.Ruler(), at, 3);
    QVERIFY(shown.Board().Scale().PixelsPerFrame() > 15);
    QCOMPARE(shown.Board().Scale().FrameAt(at.x()), frame);
    Wheel(shown.Tracks(), at, -1, Qt::ControlModifier);
    QVERIFY(shown.Board().Scale().PixelsPerFrame() < 16);
    Wheel(shown.Tracks(), at, -2, Qt::ShiftModifier);
    QVERIFY(shown.Board().Scale().Scroll() > 100);
    Wheel(shown.Tracks(), at, -1);
    QCOMPARE(shown.Board().ScrollY(), 60);
    Wheel(shown.Tracks(), at, 100);
    QCOMPARE(shown.Board().ScrollY(), 0);
    Wheel(shown.Outline(), at, -1000);
    auto *sb_Y = shown.timeline.findChild<QScrollBar *>(QStringLiteral("sb_Y"));
    QCOMPARE(shown.Board().ScrollY(), sb_Y->maximum());
    QCOMPARE(sb_Y->value(), sb_Y->maximum());
    sb_Y->setValue(22);
    QCOMPARE(shown.Board().ScrollY(), 22);
    auto *sb_X = shown.timeline.findChild<QScrollBar *>(QStringLiteral("sb_X"));
    sb_X->setValue(15);
    QCOMPARE(shown.Board().Scale().Scroll(), 15.0);
}

void TestTimeline::currentTimeStaysInSight()
{
    SheetFixture sheet;
    ShownTimeline shown(sheet);
    shown.SetPixels(40);
    for (const int frame : { 60, 99, 3 }) {
        shown.session.SetCurrentFrame(frame);
        const double x = shown.Board().Scale().MiddleOf(frame);
        QVERIFY(x > 0 && x < shown.Tracks().width());
    }
}

void TestTimeline::keysOfTheTransportAreLent()
{
    SheetFixture sheet;
    ShownTimeline shown(sheet);
    Viewer viewer(shown.session);
    shown.timeline.AddKeys(viewer.GetTransport().Actions());
    for (QWidget *part :
        { static_cast<QWidget *>(&shown.Tracks()), static_cast<QWidget *>(&shown.Outline()) }) {
        part->setFocus();
        QTest::keyClick(part, Qt::Key_End);
        QCOMPARE(shown.session.CurrentFrame(), 99);
        QTest::keyClick(part, Qt::Key_PageUp);
        QCOMPARE(shown.session.CurrentFrame(), 98);
    }
}

void TestTimeline::barsAreSeen()
{
    SheetFixture sheet({ { 0, 3 } });
    ShownTimeline shown(sheet);
    shown.session.Do("Bar", [&](Project &project) {
        Layer *layer = project.EditLayer(sheet.composition, sheet.layer);
        layer->inPoint = Rate().FrameTime(10);
        layer->duration = Rate().FrameTime(30);
        layer->label = 9;
    });
    shown.session.SelectLayers({});
    const QImage picture = shown.Picture();
    const int row = shown.RowOf(sheet.layer);
    const auto hue = [&](int frame) { return picture.pixelColor(shown.At(row, frame)).hsvHue(); };
    QCOMPARE(hue(5), -1); // grey
    QVERIFY(qAbs(hue(11) - LabelColor(9).hsvHue()) < 12);
    QVERIFY(qAbs(hue(39) - LabelColor(9).hsvHue()) < 12);
    QCOMPARE(hue(41), -1);
}

void TestTimeline::noCompositionIsEmpty()
{
    SheetFixture sheet;
    sheet.host.GetDocument().Replace(Project());
    ShownTimeline shown(sheet);
    QCOMPARE(shown.Rows().Count(), 0);
    QCOMPARE(shown.timeline.findChild<QLabel *>(QStringLiteral("lbName"))->text(),
        QStringLiteral("No composition"));
    QTest::mouseClick(&shown.timeline.Ruler(), Qt::LeftButton);
    shown.Drag({ 20, 20 }, { 90, 60 });
    testing::DragMouse(shown.Outline(), { { 20, 20 }, { 90, 60 } });
    for (QWidget *part :
        { static_cast<QWidget *>(&shown.Tracks()), static_cast<QWidget *>(&shown.Outline()) }) {
        for (const Qt::Key key : { Qt::Key_Delete, Qt::Key_Down, Qt::Key_F2, Qt::Key_Right })
            QTest::keyClick(part, key);
    }
    Wheel(shown.Tracks(), { 30, 30 }, -3, Qt::ControlModifier);
    QVERIFY(!shown.timeline.grab().isNull());
    QVERIFY(sheet.host.GetDocument().UndoNames().isEmpty());
}

void TestTimeline::emptyComposition()
{
    SheetFixture sheet;
    ShownTimeline shown(sheet);
    shown.session.Do(
        "Delete", [&](Project &project) { project.RemoveLayer(sheet.composition, sheet.layer); });
    QCOMPARE(shown.Rows().Count(), 0);
    shown.Drag({ 20, 20 }, { 90, 60 });
    QTest::mouseClick(&shown.timeline.Ruler(), Qt::LeftButton, {}, QPoint(205, 10));
    QCOMPARE(shown.session.CurrentFrame(), 20);
}

void TestTimeline::compositionWithoutLength()
{
    SheetFixture sheet({}, /*frames=*/0);
    ShownTimeline shown(sheet);
    shown.timeline.OnFit();
    QTest::mouseClick(&shown.timeline.Ruler(), Qt::LeftButton, {}, QPoint(205, 10));
    QCOMPARE(shown.session.CurrentFrame(), 0);
    const int row = shown.RowOf(sheet.layer);
    shown.SetPixels(10);
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("0 0 0"));
    shown.Drag(shown.EdgeAt(row, 0) + QPoint(3, 0), shown.EdgeAt(row, 5) + QPoint(3, 0));
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("0 5 0")); // its end can be pulled out
}

void TestTimeline::oneFrame()
{
    SheetFixture sheet({}, /*frames=*/1);
    ShownTimeline shown(sheet);
    const int row = shown.RowOf(sheet.layer);
    shown.SetPixels(20);
    shown.Drag(shown.At(row, 0), shown.At(row, 3));
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("3 1 3"));
    shown.session.SetCurrentFrame(5);
    QCOMPARE(shown.session.CurrentFrame(), 0);
}

void TestTimeline::fiveHundredLayers()
{
    SheetFixture sheet({}, /*frames=*/1500);
    ShownTimeline shown(sheet);
    shown.session.Do("Many", [&](Project &project) {
        for (int i = 0; i < 499; ++i)
            project.AddLayer(sheet.footage, sheet.composition);
    });
    const LayerId last = Order(sheet).last();
    QCOMPARE(shown.Rows().Count(), 500);
    Wheel(shown.Tracks(), { 30, 30 }, -1000);
    const int row = shown.RowOf(last);
    QVERIFY(shown.MiddleOf(row) > 0 && shown.MiddleOf(row) < shown.Tracks().height());
    shown.Drag(shown.At(row, 30), shown.At(row, 36));
    QCOMPARE(Bar(sheet, last), QStringLiteral("6 1500 6"));
    testing::DragMouse(
        shown.Outline(), { shown.CellAt(row, OutlineCells::Name), { 80, -9 }, { 80, -9 } });
    QVERIFY(Order(sheet).indexOf(last) < 499);
    shown.ClickCell(shown.RowOf(Order(sheet).at(497)), OutlineCells::Parent);
    auto *cbParent = shown.Outline().findChild<QComboBox *>(QStringLiteral("cbParent"));
    QCOMPARE(cbParent->count(), 500);
    cbParent->hidePopup();
}

void TestTimeline::longAndForeignNames()
{
    SheetFixture sheet;
    ShownTimeline shown(sheet);
    const QString name
        = QString::fromUtf8("\xE6\x97\xA9\xE3\x81\x84\xE6\xAD\xA9\xE3\x81\x8D \xC3\xA9t\xC3\xA9 ")
        + QString(3000, QLatin1Char('w'));
    shown.session.Do("Name", [&](Project &project) {
        project.EditLayer(sheet.composition, sheet.layer)->name = name.toUtf8();
        project.Edit(sheet.composition)->name = name.toUtf8();
    });
    const int row = shown.RowOf(sheet.layer);
    QVERIFY(!shown.timeline.grab().isNull());
    QCOMPARE(shown.timeline.width(), 1200);
    QVERIFY(shown.timeline.minimumSizeHint().width() < 1000);
    // Nothing of the name runs into the next cell.
    const QImage picture = shown.Outline().grab().toImage();
    const OutlineCells cells(shown.Outline().width());
    const int right = cells.Rect(OutlineCells::Name, 0).right();
    for (int y = 2; y < 20; ++y)
        QCOMPARE(picture.pixel(right + 3, TimelineRows::TopOf(row) + y),
            picture.pixel(right + 4, TimelineRows::TopOf(row) + y));
    QCOMPARE(shown.Outline().HintAt(shown.CellAt(row, OutlineCells::Name)), name);
    QTest::mouseDClick(&shown.Outline(), Qt::LeftButton, {}, shown.CellAt(row, OutlineCells::Name));
    QVERIFY(shown.Type("efName", QString::fromUtf8("\xC5\x93uvre")));
    QCOMPARE(sheet.Find(sheet.layer).name, QByteArray("\xC5\x93uvre"));
}

void TestTimeline::layerDeletedDuringADrag()
{
    SheetFixture sheet;
    const LayerId other = sheet.AddSolid("other");
    ShownTimeline shown(sheet);
    shown.session.SelectLayers({ other, sheet.layer });
    const int row = shown.RowOf(other);
    QTest::mousePress(&shown.Tracks(), Qt::LeftButton, {}, shown.At(row, 40));
    testing::MoveMouse(shown.Tracks(), shown.At(row, 42));
    shown.session.Do(
        "Delete", [&](Project &project) { project.RemoveLayer(sheet.composition, other); });
    QVERIFY(!shown.Picture().isNull());
    testing::MoveMouse(shown.Tracks(), shown.At(0, 45));
    QTest::mouseRelease(&shown.Tracks(), Qt::LeftButton, {}, shown.At(0, 45));
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("5 100 5")); // the other one goes on
    QCOMPARE(Order(sheet), QVector<LayerId>{ sheet.layer });
    QCOMPARE(shown.Undo(), (QVector<QByteArray>{ "Delete", "Move Layer" }));
}

void TestTimeline::compositionLeftDuringADrag()
{
    SheetFixture sheet;
    ShownTimeline shown(sheet);
    ItemId other = 0;
    shown.session.Do("New", [&](Project &project) {
        other = project.AddComposition("other", *project.FindComposition(sheet.composition));
    });
    QTest::mousePress(&shown.Tracks(), Qt::LeftButton, {}, shown.At(0, 40));
    testing::MoveMouse(shown.Tracks(), shown.At(0, 42));
    shown.session.SetActiveItem(other);
    QVERIFY(!shown.Board().IsPreviewing());
    testing::MoveMouse(shown.Tracks(), shown.At(0, 45));
    QTest::mouseRelease(&shown.Tracks(), Qt::LeftButton, {}, shown.At(0, 45));
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("0 100 0"));
    QCOMPARE(shown.Undo(), QVector<QByteArray>{ "New" });
}

void TestTimeline::projectReplacedDuringADrag()
{
    SheetFixture sheet;
    ShownTimeline shown(sheet);
    QTest::mousePress(&shown.Tracks(), Qt::LeftButton, {}, shown.At(0, 40));
    testing::MoveMouse(shown.Tracks(), shown.At(0, 42));
    sheet.host.GetDocument().Replace(sheet.host.GetProject()); // the same ids
    sheet.host.GetDocument().view.activeItem = sheet.composition;
    shown.session.Look();
    testing::MoveMouse(shown.Tracks(), shown.At(0, 45));
    QTest::mouseRelease(&shown.Tracks(), Qt::LeftButton, {}, shown.At(0, 45));
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("0 100 0"));
    QVERIFY(sheet.host.GetDocument().UndoNames().isEmpty());
}

void TestTimeline::layerDeletedWhileItsParentIsPicked()
{
    SheetFixture sheet;
    const LayerId child = sheet.AddSolid("child");
    ShownTimeline shown(sheet);
    shown.ClickCell(shown.RowOf(child), OutlineCells::Parent);
    QPointer<QComboBox> cbParent
        = shown.Outline().findChild<QComboBox *>(QStringLiteral("cbParent"));
    shown.session.Do(
        "Delete", [&](Project &project) { project.RemoveLayer(sheet.composition, child); });
    QTRY_VERIFY(!cbParent);
    QCOMPARE(shown.Undo(), QVector<QByteArray>{ "Delete" });
}

void TestTimeline::undoDuringPlayback()
{
    SheetFixture sheet({ { 0, 3 }, { 10, 5 } });
    ShownTimeline shown(sheet);
    Transport transport(shown.session);
    qint64 now = 0;
    transport.SetTimeSource([&] { return now; });
    const int row = shown.RowOf(sheet.layer);
    shown.Drag(shown.At(row, 40), shown.At(row, 47));
    transport.OnPlay();
    now += 200000000;
    transport.OnTick();
    QVERIFY(sheet.host.GetDocument().Undo());
    shown.session.Look();
    now += 200000000;
    transport.OnTick();
    QCOMPARE(shown.session.CurrentFrame(), 10);
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("0 100 0"));
    QVERIFY(transport.IsPlaying());
}

void TestTimeline::playingLeavesNoTrace_data()
{
    QTest::addColumn<double>("pixels"); // a frame
    for (const double pixels : { 0.7, 3.3, 10.0, 57.0 })
        QTest::addRow("%g pixels a frame", pixels) << pixels;
}

/// While the time moves only parts are painted: what is on the screen is what a whole painting shows.
void TestTimeline::playingLeavesNoTrace()
{
    QFETCH(double, pixels);
    SheetFixture sheet({ { 0, 3 }, { 10, 5 }, { 11, 7 }, { 30, 5 } });
    ShownTimeline shown(sheet);
    shown.Unfold(sheet.layer);
    shown.SetPixels(pixels);
    const auto screen = [&] {
        QApplication::processEvents();
        return shown.timeline.screen()->grabWindow(shown.timeline.winId()).toImage();
    };
    for (const int frame : { 0, 1, 2, 9, 10, 11, 12, 30, 99, 0, 3 }) {
        shown.session.SetCurrentFrame(frame);
        const QImage partly = screen();
        shown.timeline.Tracks().update();
        shown.timeline.Outline().update();
        for (auto *ruler : shown.timeline.findChildren<QWidget *>(QStringLiteral("timelineRuler")))
            ruler->update();
        QVERIFY2(partly == screen(), qPrintable(QStringLiteral("at frame %1").arg(frame)));
    }
}

void TestTimeline::staleIdsInTheView()
{
    SheetFixture sheet;
    ShownTimeline shown(sheet);
    View &view = sheet.host.GetDocument().view;
    view.selections[sheet.composition] = { 4711, sheet.layer, 4712 };
    shown.session.Look();
    const int row = shown.RowOf(sheet.layer);
    shown.Drag(shown.At(row, 40), shown.At(row, 47));
    QCOMPARE(Bar(sheet, sheet.layer), QStringLiteral("7 100 7"));
    view.activeItem = 4713;
    shown.session.Look();
    QVERIFY(!shown.timeline.grab().isNull());
}

VN_HOST_TEST_MAIN(TestTimeline)
#include "tst_timeline.moc"
