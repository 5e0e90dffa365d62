#include "DockFixture.h"
#include "testhost/HostTestMain.h"

#include <QDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

using testing::DockFixture;
using testing::TestPanel;

/// What happens to the host's window and to the panel while a dialog of the panel's is up.
class TestQWinWidgetDialogs : public QObject
{
    Q_OBJECT

private slots:
    void aModalChildDisablesTheHostAndItsHidingEnablesItOnce();
    void aModalChildShownAgainDisablesTheHostAgain();
    void theDialogItselfStaysUsable();
    void aChildHidesThePanelAndTheContainersPaintShowsItAgain();
    void aChildThatIsNotModalLeavesTheHostEnabled();
    void aChildDeletedWhileItIsUpEnablesTheHostOnce();
    void newsOfAnotherChildEnablesTheHostAndTheHidingNotAgain();
    void anOrdinaryChildIsNotWatched();
    void aChildMadeForOneUseTakesThePanelWithIt_data();
    void aChildMadeForOneUseTakesThePanelWithIt();
    void aClosedChildActivatesTheHost();
    void aModalChildThatLosesTheKeyboardBringsTheHostToTheTop();
    void aMessageBoxOnThePanelComesAndGoes();
};

void TestQWinWidgetDialogs::aModalChildDisablesTheHostAndItsHidingEnablesItOnce()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    QDialog dialog(fixture.panel);
    dialog.setModal(true);
    dialog.show();
    QVERIFY(DockFixture::WaitForActive(&dialog));
    QCOMPARE(fixture.container->enabled, QList<bool>({ false }));
    dialog.hide();
    QCOMPARE(fixture.container->enabled, QList<bool>({ false, true }));
    dialog.close(); // closed while hidden, and deleted below: the host hears no more of it
    QVERIFY(DockFixture::WaitForActive(&fixture.window));
    QCOMPARE(fixture.container->enabled, QList<bool>({ false, true }));
    QVERIFY(fixture.panel->isEnabled());
}

void TestQWinWidgetDialogs::aModalChildShownAgainDisablesTheHostAgain()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    QDialog dialog(fixture.panel);
    dialog.setModal(true);
    for (int i = 1; i <= 2; ++i) {
        dialog.show();
        QVERIFY(DockFixture::WaitForActive(&dialog));
        dialog.hide();
        QCOMPARE(fixture.container->enabled.size(), 2 * i);
        QVERIFY(DockFixture::WaitForActive(&fixture.window)); // as after a person's key or click
    }
    QVERIFY(fixture.container->isEnabled());
}

void TestQWinWidgetDialogs::theDialogItselfStaysUsable()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    fixture.panel->fields[0]->setFocus();
    QDialog dialog(fixture.panel);
    dialog.setModal(true);
    QHBoxLayout row(&dialog);
    QLineEdit first;
    QLineEdit second;
    row.addWidget(&first);
    row.addWidget(&second);
    second.setFocus();
    dialog.show();
    QVERIFY(DockFixture::WaitForActive(&dialog));
    QVERIFY(!fixture.container->isEnabled());
    QVERIFY(!fixture.panel->isEnabled());
    QVERIFY(dialog.isEnabled());
    QVERIFY(second.hasFocus());
    DockFixture::Press(Qt::Key_9);
    QCOMPARE(second.text(), QStringLiteral("9"));
    dialog.hide();
    QVERIFY(dialog.isEnabled());
}

void TestQWinWidgetDialogs::aChildHidesThePanelAndTheContainersPaintShowsItAgain()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    QCOMPARE(fixture.panel->shows, 1);
    QDialog dialog(fixture.panel);
    dialog.setModal(true);
    dialog.show();
    QCOMPARE(fixture.panel->hides, 1);
    QVERIFY(!fixture.panel->isVisible());
    QTRY_COMPARE(fixture.panel->shows, 2);
    QVERIFY(fixture.panel->isVisible());
    QVERIFY(dialog.isVisible());
    QCOMPARE(fixture.panel->geometry(), fixture.container->rect());
}

void TestQWinWidgetDialogs::aChildThatIsNotModalLeavesTheHostEnabled()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    QDialog dialog(fixture.panel);
    dialog.show();
    QVERIFY(DockFixture::WaitForActive(&dialog));
    QCOMPARE(fixture.panel->hides, 1);
    dialog.hide();
    QMenu menu(fixture.panel); // a window too, though nobody takes it for one
    menu.addAction(QStringLiteral("nothing"));
    menu.popup(fixture.window.mapToGlobal(QPoint(9, 7)));
    QTRY_VERIFY(menu.isVisible());
    QCOMPARE(fixture.panel->hides, 2);
    menu.hide();
    QTRY_VERIFY(fixture.panel->isVisible());
    QCOMPARE(fixture.container->enabled, QList<bool>());
}

void TestQWinWidgetDialogs::aChildDeletedWhileItIsUpEnablesTheHostOnce()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    auto *dialog = new QDialog(fixture.panel);
    dialog->setModal(true);
    dialog->show();
    QVERIFY(DockFixture::WaitForActive(dialog));
    delete dialog;
    QCOMPARE(fixture.container->enabled, QList<bool>({ false, true }));
    QVERIFY(DockFixture::WaitForActive(&fixture.window));
    QTRY_VERIFY(fixture.panel->isVisible());
}

void TestQWinWidgetDialogs::newsOfAnotherChildEnablesTheHostAndTheHidingNotAgain()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    QDialog dialog(fixture.panel);
    dialog.setModal(true);
    dialog.show();
    auto *child = new QWidget(fixture.panel); // added: nothing
    QCOMPARE(fixture.container->enabled, QList<bool>({ false }));
    child->ensurePolished();
    QCOMPARE(fixture.container->enabled, QList<bool>({ false, true }));
    delete child;
    dialog.hide();
    QCOMPARE(fixture.container->enabled, QList<bool>({ false, true }));
}

void TestQWinWidgetDialogs::anOrdinaryChildIsNotWatched()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    QWidget child(fixture.panel);
    child.show();
    child.hide();
    QCOMPARE(fixture.panel->hides, 0);
    QDialog grandchild(&child); // a dialog of a widget in the panel is Qt's own matter
    grandchild.setModal(true);
    grandchild.show();
    QVERIFY(DockFixture::WaitForActive(&grandchild));
    QCOMPARE(fixture.panel->hides, 0);
    QCOMPARE(fixture.container->enabled, QList<bool>());
}

void TestQWinWidgetDialogs::aChildMadeForOneUseTakesThePanelWithIt_data()
{
    QTest::addColumn<bool>("closes");
    QTest::newRow("closed") << true;
    QTest::newRow("hidden") << false;
}

void TestQWinWidgetDialogs::aChildMadeForOneUseTakesThePanelWithIt()
{
    QFETCH(bool, closes);
    DockFixture fixture;
    QVERIFY(fixture.Open());
    auto *dialog = new QDialog(fixture.panel);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
    QVERIFY(DockFixture::WaitForActive(dialog));
    if (closes)
        dialog->close();
    else
        dialog->hide();
    QTRY_VERIFY(!fixture.panel);
    fixture.container->resize(99, 77); // the host's window is still there, and nobody in it
    fixture.container->update();
    QTest::qWait(20);
    QCOMPARE(fixture.container->findChildren<QWidget *>().size(), 0);
}

void TestQWinWidgetDialogs::aClosedChildActivatesTheHost()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    QWidget other;
    other.setGeometry(600, 100, 200, 100);
    QDialog dialog(fixture.panel);
    dialog.show();
    QVERIFY(DockFixture::WaitForActive(&dialog));
    other.show();
    other.activateWindow();
    QVERIFY(DockFixture::WaitForActive(&other));
    dialog.close();
    QVERIFY(DockFixture::WaitForActive(&fixture.window));
}

void TestQWinWidgetDialogs::aModalChildThatLosesTheKeyboardBringsTheHostToTheTop()
{
    DockFixture fixture;
    fixture.window.move(100, 100);
    QVERIFY(fixture.Open());
    QWidget other; // covers the host's window
    other.show();
    QVERIFY(QTest::qWaitForWindowExposed(&other));
    other.windowHandle()->setFramePosition(QPoint(60, 60));
    other.resize(600, 500);
    QDialog dialog(fixture.panel);
    dialog.setWindowModality(Qt::WindowModal);
    dialog.show();
    dialog.move(900, 700); // out of the way
    QVERIFY(DockFixture::WaitForActive(&dialog));
    const auto top = [&fixture] {
        return QGuiApplication::topLevelAt(fixture.before->mapToGlobal(QPoint(5, 5)));
    };
    other.raise();
    QTRY_COMPARE(top(), other.windowHandle());
    other.activateWindow();
    QVERIFY(DockFixture::WaitForActive(&other));
    QTRY_COMPARE(top(), fixture.window.windowHandle());
}

void TestQWinWidgetDialogs::aMessageBoxOnThePanelComesAndGoes()
{
    DockFixture fixture;
    QVERIFY(fixture.Open());
    fixture.panel->fields[0]->setFocus();
    QStringList seen;
    QTimer::singleShot(/*msec=*/0, &fixture.window, [&seen] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !DockFixture::WaitForActive(box))
            return;
        seen << box->text();
        if (qobject_cast<QPushButton *>(box->focusWidget()))
            seen << QStringLiteral("button");
        DockFixture::Press(Qt::Key_Return);
    });
    QMessageBox::warning(fixture.panel, QStringLiteral("Warning"), QStringLiteral("No column"));
    QCOMPARE(seen, QStringList({ QStringLiteral("No column"), QStringLiteral("button") }));
    QCOMPARE(fixture.container->enabled, QList<bool>({ false, true }));
    QVERIFY(DockFixture::WaitForActive(&fixture.window));
    QTRY_VERIFY(fixture.panel->isVisible());
}

VN_HOST_TEST_MAIN(TestQWinWidgetDialogs)
#include "tst_qwinwidget_dialogs.moc"
