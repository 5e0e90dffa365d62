#include "GridRobot.h"
#include "RecordingGrid.h"
#include "testing/TestMain.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalSpy>

namespace {

const Qt::KeyboardModifiers kCtrl = Qt::ControlModifier;
const Qt::KeyboardModifiers kCtrlShift = Qt::ControlModifier | Qt::ShiftModifier;

/// A sheet of 3 columns by 8 rows with unequal numbers.
void FillSheet(RecordingGrid &grid)
{
    grid.SetSize(3, 8);
    grid.SetColumn(0, { 1, 1, 2, 2, 3, 3, 4, 4 });
    grid.SetColumn(1, { 5, 6, 7, 8, 9, 10, 11, 12 });
    grid.SetColumn(2, { 0, 0, 21, 22, 23, 0, 0, 24 });
}

QList<QAction *> Menu(const QWidget &grid)
{
    return grid.actions(); // the grid's own field of this name hides the function
}

} // namespace

Q_DECLARE_METATYPE(Qt::KeyboardModifiers)

class TestExpoGridCore : public QObject
{
    Q_OBJECT

private slots:
    void withoutAnySheetItIsHarmless();
    void aNewGridIsEmptyAndItsEmptyAreaHasTheAlternateColour();
    void theMenuHasItsElevenEntriesInOrder();
    void aMenuEntryRunsItsCommand_data();
    void aMenuEntryRunsItsCommand();
    void theMenusCutDoesNothing();
    void theMenusClearBlocCutsOneColumnAndRefusesMore();
    void theDelKeyClearsAWholeBlock();
    void aKeyRunsItsCommand_data();
    void aKeyRunsItsCommand();
    void everyOtherKeyIsTheTables_data();
    void everyOtherKeyIsTheTables();
    void enterOfTheNumericPadIsNotReturn();
    void homeOfTheNumericPadMovesTheCurrentCell();
    void withoutCellsEveryCommandShowsItsWarning_data();
    void withoutCellsEveryCommandShowsItsWarning();
    void aSelectionPassesTheModesThatAdmitIt_data();
    void aSelectionPassesTheModesThatAdmitIt();
    void aFailedModeLeavesTheResultsAlone();
    void aColumnDraggedUpwardsHasItsResultsWrittenAllTheSame();
    void selectBlocKeepsWhatIsSelected();
    void movingTheCurrentCellMovesTheDocumentsAndIsAnnounced();
    void aMoveThatTheDocumentKnowsAlreadyChangesNothing();
    void syncMovesTheTableToTheDocumentInSilence();
    void syncToWhereTheTableIsDoesNothing();
    void syncToACellOutsideTheTableLeavesNoCurrentCell();
    void anUpdateOfAnotherFollowsItsLevel_data();
    void anUpdateOfAnotherFollowsItsLevel();
    void anUpdateOfItsOwnIsIgnored();
    void aTypedTextBecomesANumber_data();
    void aTypedTextBecomesANumber();
    void aTypedCellIsOneUndoStepAndAnnouncedInside();
    void keysThatAnOpenEditorLeavesOverRunNoCommand();
    void keysTypedAheadAreNotLost();
    void aTypedCellThatIsRefusedIsNotAnnounced();
    void aTypedCellOfAFixedColumnIsAnnouncedAndGoesOnShowingTheText();
    void aChangeWithoutAnItemIsAnEmptyUndoStep();
};

void TestExpoGridCore::withoutAnySheetItIsHarmless()
{
    WExpoGrid grid;
    grid.RefreshGrid();
    QCOMPARE(grid.columnCount(), 5);
    QCOMPARE(grid.rowCount(), 5);
    QCOMPARE(grid.item(4, 3)->text(), QStringLiteral("?"));
    QCOMPARE(grid.horizontalHeaderItem(4)->text(), QStringLiteral("??"));
    QCOMPARE(grid.columnWidth(2), 36);
    QCOMPARE(grid.GetCellValue(1, 2), 0);
    QCOMPARE(grid.SetCellValue(2, 1, 7), false);
    QCOMPARE(int(grid.GetCellKey(1, 2)), 0);
    QCOMPARE(grid.GetColBrush(1), QBrush(Qt::white));
    QCOMPARE(grid.GetSheetFlag(), false);
    QCOMPARE(grid.IsBlankCol(1), true);
    QCOMPARE(grid.GetEmptyValue(1), 0);
    QCOMPARE(grid.IsBusy(), false);
    int col = 3;
    int row = 2;
    QCOMPARE(grid.GetCurrentCell(&col, &row), false);
    QCOMPARE(QPoint(col, row), QPoint(3, 2));
    QCOMPARE(grid.SetCurrentCell(2, 3), false);
}

void TestExpoGridCore::aNewGridIsEmptyAndItsEmptyAreaHasTheAlternateColour()
{
    QPalette odd = QApplication::palette();
    const QPalette before = odd;
    odd.setColor(QPalette::Base, QColor(10, 20, 30));
    odd.setColor(QPalette::AlternateBase, QColor(40, 50, 60));
    QApplication::setPalette(odd);
    MemoryGrid grid(3, 8);
    QApplication::setPalette(before);

    QCOMPARE(grid.columnCount(), 0);
    QCOMPARE(grid.rowCount(), 0);
    QCOMPARE(grid.palette().brush(QPalette::Active, QPalette::Base), QBrush(QColor(40, 50, 60)));
}

void TestExpoGridCore::theMenuHasItsElevenEntriesInOrder()
{
    MemoryGrid grid;
    QStringList texts;
    for (const QAction *action : Menu(grid)) {
        texts << action->text();
        QVERIFY(action->shortcut().isEmpty()); // the keys work through keyPressEvent alone
        QCOMPARE(action->parent(), &grid);
    }
    QCOMPARE(texts,
        (QStringList{ QStringLiteral("Repeat\t(Return)"), QStringLiteral("Cut\t(Ctrl+X)"),
            QStringLiteral("Copy\t(Ctrl+C)"), QStringLiteral("Paste\t(Ctrl+V)"),
            QStringLiteral("Serie\t(Ctrl+G)"), QStringLiteral("Cycle\t(Ctrl+H)"),
            QStringLiteral("StartExpo\t(Home)"), QStringLiteral("EndExpo\t(End)"),
            QStringLiteral("Insert Bloc\t(Ins)"), QStringLiteral("Clear  Bloc\t(Del)"),
            QStringLiteral("Remove Bloc\t(Ctrl+Del)") }));
    QCOMPARE(grid.contextMenuPolicy(), Qt::ActionsContextMenu);
}

void TestExpoGridCore::aMenuEntryRunsItsCommand_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("undoStep");
    const auto row = [](const char *entry, const char *undoStep) {
        QTest::newRow(entry) << QString::fromLatin1(entry) << QString::fromLatin1(undoStep);
    };
    row("Repeat\t(Return)", "morvex:Repeat");
    row("Paste\t(Ctrl+V)", "morvex:Paste");
    row("Serie\t(Ctrl+G)", "morvex:Serie");
    row("Cycle\t(Ctrl+H)", "morvex:Cycle");
    row("StartExpo\t(Home)", "morvex:StartExpo");
    row("EndExpo\t(End)", "morvex:EndExpo");
    row("Insert Bloc\t(Ins)", "morvex:Insert Bloc");
    row("Clear  Bloc\t(Del)", "morvex:Cut");
    row("Remove Bloc\t(Ctrl+Del)", "morvex:Remove Bloc");
}

void TestExpoGridCore::aMenuEntryRunsItsCommand()
{
    QFETCH(QString, entry);
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);

    robot.Choose(entry);

    QTEST(grid.undoSteps.join(QLatin1Char('|')), "undoStep");
    QCOMPARE(grid.openGroups, QStringList());
    QCOMPARE(robot.TakeBoxes(), QStringList());
}

void TestExpoGridCore::theMenusCutDoesNothing()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    grid.calls.clear();

    robot.Choose(QStringLiteral("Cut\t(Ctrl+X)"));

    QCOMPARE(grid.Changes(), QStringList());
    QCOMPARE(grid.clip.size(), 0);
    QCOMPARE(robot.TakeBoxes(), QStringList());
}

void TestExpoGridCore::theMenusClearBlocCutsOneColumnAndRefusesMore()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(1, 2, 1, 4);
    robot.Choose(QStringLiteral("Clear  Bloc\t(Del)"));
    QCOMPARE(grid.Column(1), (QVector<int>{ 5, 6, 0, 0, 0, 10, 11, 12 }));
    QCOMPARE(grid.clip.size(), 3); // it keeps a copy
    QCOMPARE(grid.clip[2], 9);

    robot.Drag(0, 2, 1, 4);
    robot.Choose(QStringLiteral("Clear  Bloc\t(Del)"));
    QCOMPARE(robot.TakeBoxes(), QStringList{ QStringLiteral("Warning: Select only One Column") });
    QCOMPARE(grid.Column(0), (QVector<int>{ 1, 1, 2, 2, 3, 3, 4, 4 }));
}

void TestExpoGridCore::theDelKeyClearsAWholeBlock()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(0, 2, 1, 4);
    robot.Key(Qt::Key_Delete);
    QCOMPARE(grid.Column(0), (QVector<int>{ 1, 1, 0, 0, 0, 3, 4, 4 }));
    QCOMPARE(grid.Column(1), (QVector<int>{ 5, 6, 0, 0, 0, 10, 11, 12 }));
    QCOMPARE(grid.clip.size(), 0); // no copy
}

void TestExpoGridCore::aKeyRunsItsCommand_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("undoStep");
    const auto row
        = [](const char *name, int key, Qt::KeyboardModifiers modifiers, const char *undoStep) {
              QTest::newRow(name) << key << modifiers << QString::fromLatin1(undoStep);
          };
    row("Return", Qt::Key_Return, Qt::NoModifier, "morvex:Repeat");
    row("Ins", Qt::Key_Insert, Qt::NoModifier, "morvex:Insert Bloc");
    row("Del", Qt::Key_Delete, Qt::NoModifier, "morvex:Delete Bloc");
    row("Home", Qt::Key_Home, Qt::NoModifier, "morvex:StartExpo");
    row("End", Qt::Key_End, Qt::NoModifier, "morvex:EndExpo");
    row("Ctrl+G", Qt::Key_G, kCtrl, "morvex:Serie");
    row("Ctrl+H", Qt::Key_H, kCtrl, "morvex:Cycle");
    row("Ctrl+Del", Qt::Key_Delete, kCtrl, "morvex:Remove Bloc");

    // Cut, Copy and Paste go by the platform: every key that it has for them.
    const auto standard = [](QKeySequence::StandardKey key, const char *undoStep) {
        for (const QKeySequence &keys : QKeySequence::keyBindings(key)) {
            const int combined = keys[0];
            QTest::newRow(qPrintable(keys.toString() + QLatin1String(" of the platform")))
                << (combined & ~int(Qt::KeyboardModifierMask))
                << Qt::KeyboardModifiers(combined & int(Qt::KeyboardModifierMask))
                << QString::fromLatin1(undoStep);
        }
    };
    standard(QKeySequence::Cut, "morvex:Cut");
    standard(QKeySequence::Copy, "");
    standard(QKeySequence::Paste, "morvex:Paste");
}

void TestExpoGridCore::aKeyRunsItsCommand()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(QString, undoStep);
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);

    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(&grid, &event);

    QVERIFY(event.isAccepted());
    QCOMPARE(grid.undoSteps.join(QLatin1Char('|')), undoStep);
    QCOMPARE(
        grid.clip.size(), undoStep.isEmpty() || undoStep.endsWith(QLatin1String("Cut")) ? 1 : 0);
    QCOMPARE(robot.TakeBoxes(), QStringList());
}

void TestExpoGridCore::everyOtherKeyIsTheTables_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    const auto row = [](const char *name, int key, Qt::KeyboardModifiers modifiers) {
        QTest::newRow(name) << key << modifiers;
    };
    row("Ctrl+Shift+G", Qt::Key_G, kCtrlShift);
    row("Ctrl+Shift+H", Qt::Key_H, kCtrlShift);
    row("Ctrl+Shift+Del", Qt::Key_Delete, kCtrlShift);
    row("Alt+Return", Qt::Key_Return, Qt::AltModifier);
    row("Ctrl+Home", Qt::Key_Home, kCtrl);
    row("Shift+End", Qt::Key_End, Qt::ShiftModifier);
    row("Enter", Qt::Key_Enter, Qt::KeypadModifier);
}

void TestExpoGridCore::everyOtherKeyIsTheTables()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);

    robot.Key(key, modifiers);

    QCOMPARE(grid.undoSteps, QStringList());
    QCOMPARE(robot.TakeBoxes(), QStringList());
    QCOMPARE(grid.Column(1), (QVector<int>{ 5, 6, 7, 8, 9, 10, 11, 12 }));
}

void TestExpoGridCore::enterOfTheNumericPadIsNotReturn()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    QSignalSpy activated(&grid, &QTableWidget::cellActivated);

    robot.Key(Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(activated.count(), 1); // so it came to the table

    robot.Key(Qt::Key_Return);
    QCOMPARE(activated.count(), 1);
    QCOMPARE(grid.undoSteps, QStringList{ QStringLiteral("morvex:Repeat") });
}

void TestExpoGridCore::homeOfTheNumericPadMovesTheCurrentCell()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    robot.Key(Qt::Key_Home, Qt::KeypadModifier);
    QCOMPARE(grid.currentColumn(), 0);
    QCOMPARE(grid.undoSteps, QStringList());
}

void TestExpoGridCore::withoutCellsEveryCommandShowsItsWarning_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("message");
    const auto row
        = [](const char *name, int key, Qt::KeyboardModifiers modifiers, const char *message) {
              QTest::newRow(name) << key << modifiers << QString::fromLatin1(message);
          };
    row("Repeat", Qt::Key_Return, Qt::NoModifier, "Warning: Select only One Cell");
    row("Cut", Qt::Key_X, kCtrl, "Warning: Select only One Column");
    row("Copy", Qt::Key_C, kCtrl, "Warning: Select only One Column");
    row("Serie", Qt::Key_G, kCtrl, "Warning: Select only One Column");
    row("Cycle", Qt::Key_H, kCtrl, "Warning: Select only One Column");
    row("StartExpo", Qt::Key_Home, Qt::NoModifier, "Warning: Select only One Row");
    row("EndExpo", Qt::Key_End, Qt::NoModifier, "Warning: Select only One Row");
    row("Insert", Qt::Key_Insert, Qt::NoModifier, "Warning: Select only One Bloc");
    row("Remove", Qt::Key_Delete, kCtrl, "Warning: Select only One Bloc");
    row("Clear", Qt::Key_Delete, Qt::NoModifier, "Warning: Select only One Bloc");
}

void TestExpoGridCore::withoutCellsEveryCommandShowsItsWarning()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(QString, message);
    RecordingGrid grid;
    GridRobot robot(grid);
    grid.calls.clear();

    robot.Key(key, modifiers);

    QCOMPARE(robot.TakeBoxes(), QStringList{ message });
    QCOMPARE(robot.lastIcon, QMessageBox::Warning);
    QCOMPARE(robot.lastButtons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(grid.calls, QStringList());
}

void TestExpoGridCore::aSelectionPassesTheModesThatAdmitIt_data()
{
    QTest::addColumn<QRect>("drag"); // from top left to bottom right, as points
    QTest::addColumn<QRect>("secondDrag"); // with Ctrl; null for none
    QTest::addColumn<QVector<bool>>("passes"); // by mode
    const auto row = [](const char *name, QPoint from, QPoint to, const QVector<bool> &passes) {
        QTest::newRow(name) << QRect(from, to) << QRect() << passes;
    };
    row("one cell", { 1, 2 }, { 1, 2 }, { true, true, true, true });
    row("a column downwards", { 1, 2 }, { 1, 5 }, { true, true, false, true });
    row("a column upwards", { 1, 5 }, { 1, 2 }, { true, false, false, true });
    row("a row", { 0, 3 }, { 2, 3 }, { true, false, true, true });
    row("a block", { 0, 3 }, { 1, 6 }, { false, false, false, true });
    QTest::newRow("two ranges") << QRect(QPoint(0, 1), QPoint(0, 2))
                                << QRect(QPoint(2, 5), QPoint(2, 5))
                                << QVector<bool>{ false, false, false, false };
}

void TestExpoGridCore::aSelectionPassesTheModesThatAdmitIt()
{
    QFETCH(QRect, drag);
    QFETCH(QRect, secondDrag);
    QFETCH(QVector<bool>, passes);
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(drag.left(), drag.top(), drag.right(), drag.bottom());
    if (!secondDrag.isNull())
        robot.Click(secondDrag.left(), secondDrag.top(), kCtrl);

    for (int mode = 0; mode < 4; ++mode) {
        int left = -7, right = -7, top = -7, bottom = -7;
        QCOMPARE(grid.GetSelectedBloc(&left, &right, &top, &bottom, mode), passes[mode]);
        if (!passes[mode])
            continue;
        QCOMPARE(left, qMin(drag.left(), drag.right()));
        QCOMPARE(right, qMax(drag.left(), drag.right()));
        QCOMPARE(top, qMin(drag.top(), drag.bottom()));
        QCOMPARE(bottom, qMax(drag.top(), drag.bottom()));
    }
}

void TestExpoGridCore::aFailedModeLeavesTheResultsAlone()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(0, 3, 1, 6);
    int left = -1, right = -2, top = -3, bottom = -4;
    QCOMPARE(grid.GetSelectedBloc(&left, &right, &top, &bottom, /*mode=*/2), false);
    QCOMPARE(QRect(left, top, right, bottom), QRect(-1, -3, -2, -4));
}

void TestExpoGridCore::aColumnDraggedUpwardsHasItsResultsWrittenAllTheSame()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(1, 5, 1, 2);
    int left = -1, right = -2, top = -3, bottom = -4;
    QCOMPARE(grid.GetSelectedBloc(&left, &right, &top, &bottom, /*mode=*/1), false);
    QCOMPARE(QRect(left, top, right, bottom), QRect(1, 2, 1, 5));
}

void TestExpoGridCore::selectBlocKeepsWhatIsSelected()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(0, 6);
    grid.SelectBloc(/*left=*/1, /*right=*/2, /*top=*/3, /*bottom=*/5);
    QCOMPARE(grid.selectedRanges().size(), 2);
    QVERIFY(grid.item(6, 0)->isSelected());
    QVERIFY(grid.item(3, 1)->isSelected());
    QVERIFY(grid.item(5, 2)->isSelected());
    QCOMPARE(grid.selectedItems().size(), 7);
}

void TestExpoGridCore::movingTheCurrentCellMovesTheDocumentsAndIsAnnounced()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    grid.calls.clear();

    robot.Key(Qt::Key_Down);

    QCOMPARE(grid.current, QPoint(1, 3));
    QCOMPARE(grid.Changes(),
        (QStringList{ QStringLiteral("SetCurrentCell(3,1)"), QStringLiteral("signal(1)") }));
}

void TestExpoGridCore::aMoveThatTheDocumentKnowsAlreadyChangesNothing()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    const QBrush lit = grid.item(2, 1)->background();
    grid.current = QPoint(1, 3);
    grid.calls.clear();

    robot.Key(Qt::Key_Down);

    QCOMPARE(grid.Changes(), QStringList{ QStringLiteral("SetCurrentCell(3,1)") });
    QCOMPARE(grid.item(2, 1)->background(), lit);
}

void TestExpoGridCore::syncMovesTheTableToTheDocumentInSilence()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(1, 2, 1, 4);
    const QBrush lit = grid.item(4, 0)->background();
    const QBrush plain = grid.item(6, 0)->background();
    QVERIFY(lit != plain);
    grid.current = QPoint(2, 6);
    grid.calls.clear();

    grid.SyncCurrentCell();

    QCOMPARE(grid.currentColumn(), 2);
    QCOMPARE(grid.currentRow(), 6);
    QCOMPARE(grid.Changes(), QStringList());
    QCOMPARE(grid.selectedItems(), QList<QTableWidgetItem *>{ grid.item(6, 2) });
    QCOMPARE(grid.item(4, 0)->background(), plain);
    QCOMPARE(grid.item(6, 0)->background(), lit);
}

void TestExpoGridCore::syncToWhereTheTableIsDoesNothing()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(1, 2, 1, 4);
    grid.calls.clear();
    grid.SyncCurrentCell();
    QCOMPARE(grid.calls, QStringList{ QStringLiteral("GetCurrentCell(1,4)") });
    QCOMPARE(grid.selectedItems().size(), 3); // a selection survives
}

void TestExpoGridCore::syncToACellOutsideTheTableLeavesNoCurrentCell()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    const QBrush plain = grid.item(5, 0)->background();
    grid.current = QPoint(1, 40);
    grid.SyncCurrentCell();
    QCOMPARE(grid.currentRow(), -1);
    QCOMPARE(grid.item(2, 0)->background(), plain);
    grid.current = QPoint(-1, -1); // no composition
    grid.SyncCurrentCell();
    QCOMPARE(grid.currentRow(), -1);
}

void TestExpoGridCore::anUpdateOfAnotherFollowsItsLevel_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("rebuilds");
    QTest::addColumn<QPoint>("current");
    QTest::newRow("nothing") << int(UpdNone) << 0 << QPoint(1, 2);
    QTest::newRow("current: no rebuild") << int(UpdCurrent) << 0 << QPoint(2, 6);
    QTest::newRow("cells") << int(UpdCells) << 1 << QPoint(2, 6);
    QTest::newRow("all") << int(UpdAll) << 1 << QPoint(2, 6);
    QTest::newRow("composition") << int(UpdCompo) << 1 << QPoint(2, 6);
}

void TestExpoGridCore::anUpdateOfAnotherFollowsItsLevel()
{
    QFETCH(int, level);
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    grid.current = QPoint(2, 6);
    grid.calls.clear();

    grid.OnUpdate(static_cast<UpdateLevel>(level), &robot);

    QTEST(grid.Rebuilds(), "rebuilds");
    QTEST(QPoint(grid.currentColumn(), grid.currentRow()), "current");
    QVERIFY(!grid.calls.contains(QStringLiteral("SetCurrentCell(6,2)")));
}

void TestExpoGridCore::anUpdateOfItsOwnIsIgnored()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    grid.current = QPoint(2, 6);
    grid.calls.clear();
    grid.OnUpdate(UpdCells, &grid);
    QCOMPARE(grid.calls, QStringList());
    QCOMPARE(grid.currentRow(), 2);
}

void TestExpoGridCore::aTypedTextBecomesANumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");
    QTest::newRow("a number") << QStringLiteral("12") << 12;
    QTest::newRow("a colon") << QStringLiteral(":") << -1;
    QTest::newRow("letters") << QStringLiteral("abc") << 0;
    QTest::newRow("digits and a letter") << QStringLiteral("12a") << 0;
    QTest::newRow("two colons") << QStringLiteral("::") << 0;
    QTest::newRow("a sign") << QStringLiteral("-4") << -4;
    QTest::newRow("the highest number") << QStringLiteral("2147483647") << 2147483647;
    QTest::newRow("beyond 32 bits") << QStringLiteral("2147483648") << 0;
    QTest::newRow("a hexadecimal number") << QStringLiteral("0x10") << 0;
    QTest::newRow("a hold's sign") << QStringLiteral("~") << 0;
}

void TestExpoGridCore::aTypedTextBecomesANumber()
{
    QFETCH(QString, text);
    QFETCH(int, value);
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    grid.calls.clear();
    robot.Type(text);
    QCOMPARE(grid.Changes().value(1), QStringLiteral("SetCellValue(2,1,%1)").arg(value));
    QCOMPARE(grid.Column(1)[2], value);
}

void TestExpoGridCore::aTypedCellIsOneUndoStepAndAnnouncedInside()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    grid.calls.clear();

    robot.Type(QStringLiteral("6"));

    QCOMPARE(grid.Changes(),
        (QStringList{ QStringLiteral("StartUndoGroup(morvex:EditCell)"),
            QStringLiteral("SetCellValue(2,1,6)"), QStringLiteral("rebuild"),
            QStringLiteral("signal(2)"), QStringLiteral("EndUndoGroup()") }));
    QCOMPARE(robot.Shown(1).mid(1, 3),
        (QStringList{ QStringLiteral("6"), QStringLiteral(" ~ "), QStringLiteral("8") }));
}

// The user saw a typed number repeated over the next exposure: the editor leaves its Return to the
// table.
void TestExpoGridCore::keysThatAnOpenEditorLeavesOverRunNoCommand()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    robot.Key(Qt::Key_F2);
    auto *editor = grid.viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    grid.calls.clear();

    QTest::keyClick(editor, Qt::Key_G, kCtrl);
    QTest::keyClick(editor, Qt::Key_H, kCtrl);
    QTest::keyClick(editor, Qt::Key_Insert);
    QTest::keyClick(editor, Qt::Key_Return); // the text is as it was: nothing is typed

    QCOMPARE(grid.Changes(), QStringList());
    QCOMPARE(robot.TakeBoxes(), QStringList());
    QTRY_VERIFY(!grid.viewport()->findChild<QLineEdit *>());
    robot.Key(Qt::Key_Return);
    QCOMPARE(grid.undoSteps, QStringList{ QStringLiteral("morvex:Repeat") });
}

/// Keys that have piled up while the program was busy come without anything between them.
void TestExpoGridCore::keysTypedAheadAreNotLost()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 2);
    grid.activateWindow();
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget *>(&grid));
    const auto type = [](int key, const QString &text = {}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
        QApplication::sendEvent(QApplication::focusWidget(), &press);
    };
    type(Qt::Key_3, QStringLiteral("3"));
    type(Qt::Key_Return);
    type(Qt::Key_Return); // Repeat, to the next change, which is the next cell
    type(Qt::Key_Down);
    type(Qt::Key_9, QStringLiteral("9"));
    type(Qt::Key_1, QStringLiteral("1"));
    type(Qt::Key_Return);
    type(Qt::Key_Down);
    type(Qt::Key_4, QStringLiteral("4"));
    type(Qt::Key_Return);

    QCOMPARE(grid.undoSteps,
        (QStringList{ QStringLiteral("morvex:EditCell"), QStringLiteral("morvex:Repeat"),
            QStringLiteral("morvex:EditCell"), QStringLiteral("morvex:EditCell") }));
    QCOMPARE(grid.Column(1), (QVector<int>{ 5, 6, 3, 91, 4, 10, 11, 12 }));
}

void TestExpoGridCore::aTypedCellThatIsRefusedIsNotAnnounced()
{
    RecordingGrid grid;
    FillSheet(grid);
    grid.takes = false;
    GridRobot robot(grid);
    robot.Click(1, 2);
    grid.calls.clear();
    robot.Type(QStringLiteral("6"));
    QCOMPARE(grid.Changes(),
        (QStringList{ QStringLiteral("StartUndoGroup(morvex:EditCell)"),
            QStringLiteral("SetCellValue(2,1,6)"), QStringLiteral("EndUndoGroup()") }));
}

void TestExpoGridCore::aTypedCellOfAFixedColumnIsAnnouncedAndGoesOnShowingTheText()
{
    RecordingGrid grid;
    FillSheet(grid);
    grid.fixed = { 1 };
    GridRobot robot(grid);
    robot.Click(1, 2);
    grid.calls.clear();
    robot.Type(QStringLiteral("6"));
    QCOMPARE(grid.Changes(),
        (QStringList{ QStringLiteral("StartUndoGroup(morvex:EditCell)"),
            QStringLiteral("SetCellValue(2,1,6)"), QStringLiteral("signal(2)"),
            QStringLiteral("EndUndoGroup()") }));
    QCOMPARE(robot.Shown(1)[2], QStringLiteral("6"));
    grid.RefreshGrid();
    QCOMPARE(robot.Shown(1)[2], QStringLiteral(" - "));
}

void TestExpoGridCore::aChangeWithoutAnItemIsAnEmptyUndoStep()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    delete grid.takeItem(2, 1);
    grid.calls.clear();
    grid.OnCellChanged(2, 1);
    QCOMPARE(grid.Changes(),
        (QStringList{
            QStringLiteral("StartUndoGroup(morvex:EditCell)"), QStringLiteral("EndUndoGroup()") }));
}

VN_TEST_MAIN(TestExpoGridCore)
#include "tst_expogrid_core.moc"
