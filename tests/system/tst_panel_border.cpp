#include "system/PanelStage.h"

#include <QVBoxLayout>

using testing::PanelStage;

/// The whole panel in the middle of a host's window, on a real display: the keyboard comes and goes.
class TestPanelBorder : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void tabEntersThePanelAndShiftTabLeavesIt();
    void shiftTabEntersThePanelAndTabLeavesIt();
    void aTypedCellStandsInTheHostAndUndoComesFromThePanel();

private:
    std::unique_ptr<PanelStage> stage;
    QWidget *window = nullptr; // ends with the process, as the host's main window does
    QLineEdit *before = nullptr;
    QLineEdit *after = nullptr;
};

void TestPanelBorder::initTestCase()
{
    stage = std::make_unique<PanelStage>();
    stage->OpenProject();
    window = new QWidget;
    auto *column = new QVBoxLayout(window);
    before = new QLineEdit;
    after = new QLineEdit;
    column->addWidget(before);
    column->addWidget(stage->Container(), /*stretch=*/1);
    column->addWidget(after);
    window->resize(900, 700);
    window->show();
    window->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), window);
    QTRY_VERIFY(stage->Panel()->isVisible());
    QTRY_COMPARE(stage->Panel()->geometry(), stage->Container()->rect());
}

void TestPanelBorder::cleanupTestCase()
{
    stage->Container()->setParent(nullptr); // it is the stage's
    delete window;
    stage.reset();
}

void TestPanelBorder::tabEntersThePanelAndShiftTabLeavesIt()
{
    before->setFocus();
    QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
    QVERIFY(stage->Panel()->isAncestorOf(QApplication::focusWidget()));
    QTest::keyClick(window->windowHandle(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), before);
}

void TestPanelBorder::shiftTabEntersThePanelAndTabLeavesIt()
{
    after->setFocus();
    QTest::keyClick(window->windowHandle(), Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(stage->Panel()->isAncestorOf(QApplication::focusWidget()));
    QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), after);
}

void TestPanelBorder::aTypedCellStandsInTheHostAndUndoComesFromThePanel()
{
    const QVector<int> images = stage->Images(PanelStage::kWalk);
    stage->ClickCell(PanelStage::kWalk, /*row=*/7);
    stage->Type(QStringLiteral("15"));
    stage->Key(Qt::Key_Return);
    stage->Settle();
    QCOMPARE(stage->Images(PanelStage::kWalk).at(7), 15);
    QTest::keySequence(window->windowHandle(), QKeySequence(QKeySequence::Undo));
    stage->Settle();
    QCOMPARE(stage->Images(PanelStage::kWalk), images);
}

VN_HOST_TEST_MAIN(TestPanelBorder)
#include "tst_panel_border.moc"
