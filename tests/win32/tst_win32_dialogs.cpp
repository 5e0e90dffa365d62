#include "DockedPanel.h"
#include "WindowUser.h"
#include "testing/TestMain.h"

#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QTimer>

using testing::Click;
using testing::DockedPanel;
using testing::PressKey;

namespace {

/// A modal dialog of the panel's with a field in it.
class FieldDialog : public QDialog
{
public:
    explicit FieldDialog(QWidget *panel) : QDialog(panel), field(this)
    {
        setObjectName(QStringLiteral("dialog"));
        field.setObjectName(QStringLiteral("dialog's field"));
        setModal(true);
        resize(200, 80);
    }

    HWND Handle() { return reinterpret_cast<HWND>(winId()); }

    QLineEdit field;
};

bool IsEnabled(const DockedPanel &docked)
{
    return IsWindowEnabled(docked.plain.Container()) != 0;
}

/// How often the container was disabled or enabled since it was made.
int Switches(const DockedPanel &docked)
{
    return docked.plain.Count(WM_ENABLE);
}

} // namespace

/// What happens to the host's window and to the panel while a dialog of the panel's is up.
class TestWin32Dialogs : public QObject
{
    Q_OBJECT

private slots:
    void aModalChildDisablesTheHostAndItsHidingEnablesItOnce();
    void theDialogHasTheKeyboardAndGivesItBack();
    void aClickIntoTheDisabledPanelGoesNowhere();
    void aChildHidesThePanelAndTheContainersPaintShowsItAgain();
    void aChildThatIsNotModalLeavesTheHostEnabled();
    void aChildDeletedWhileItIsUpEnablesTheHostOnce();
    void aDialogsOwnLoopServesTheHost();
    void aMessageBoxIsAnsweredByItsKey();
};

void TestWin32Dialogs::aModalChildDisablesTheHostAndItsHidingEnablesItOnce()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    FieldDialog dialog(docked.panel);
    for (int round = 1; round <= 2; ++round) {
        dialog.show();
        QVERIFY(!IsEnabled(docked));
        QVERIFY(docked.ServeUntil([&] { return GetForegroundWindow() == dialog.Handle(); }));
        QCOMPARE(Switches(docked), 2 * round - 1);
        dialog.hide();
        QVERIFY(IsEnabled(docked));
        QVERIFY(docked.ServeUntil([&] { return GetForegroundWindow() == docked.plain.Window(); }));
        QCOMPARE(Switches(docked), 2 * round);
    }
}

/// To the one who had it when the panel was shown.
void TestWin32Dialogs::theDialogHasTheKeyboardAndGivesItBack()
{
    DockedPanel docked;
    QVERIFY(docked.plain.Open());
    SetFocus(docked.plain.Before());
    QVERIFY(docked.Open());
    FieldDialog dialog(docked.panel);
    dialog.show();
    QVERIFY(docked.WaitForFocus("dialog's field"));
    PressKey('3');
    QVERIFY(docked.ServeUntil([&] { return dialog.field.text() == QLatin1String("3"); }));
    PressKey(VK_ESCAPE);
    QVERIFY(docked.ServeUntil([&] { return !dialog.isVisible(); }));
    QVERIFY(docked.WaitForFocus(docked.plain.Before()));
    PressKey('4');
    QVERIFY(docked.ServeUntil(
        [&] { return testing::TextOf(docked.plain.Before()) == QLatin1String("4"); }));
}

void TestWin32Dialogs::aClickIntoTheDisabledPanelGoesNowhere()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    FieldDialog dialog(docked.panel);
    dialog.move(1000, 700); // out of the way
    dialog.show();
    QVERIFY(docked.WaitForFocus("dialog's field"));
    const QPoint place = docked.panel->fields[1]->geometry().center();
    Click(docked.plain.Container(), place.x(), place.y());
    PressKey('5');
    docked.plain.Serve(/*milliseconds=*/200);
    QCOMPARE(docked.panel->fields[1]->text(), QString());
}

void TestWin32Dialogs::aChildHidesThePanelAndTheContainersPaintShowsItAgain()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    QCOMPARE(docked.panel->shows, 1);
    FieldDialog dialog(docked.panel);
    dialog.show();
    QCOMPARE(docked.panel->hides, 1);
    QVERIFY(!IsWindowVisible(docked.plain.Panel()));
    QVERIFY(docked.ServeUntil([&] { return IsWindowVisible(docked.plain.Panel()) != 0; }));
    QCOMPARE(docked.panel->shows, 2);
    QVERIFY(dialog.isVisible());
    QVERIFY(testing::Covers(docked.plain.Panel(), docked.plain.Container()));
}

void TestWin32Dialogs::aChildThatIsNotModalLeavesTheHostEnabled()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    FieldDialog dialog(docked.panel);
    dialog.setModal(false);
    dialog.show();
    QVERIFY(docked.WaitForFocus("dialog's field"));
    QVERIFY(docked.ServeUntil([&] { return docked.panel->isVisible(); }));
    Click(docked.plain.After(), 5, 5);
    QVERIFY(docked.WaitForFocus(docked.plain.After()));
    dialog.hide();
    docked.plain.Serve(/*milliseconds=*/50);
    QCOMPARE(Switches(docked), 0);
}

void TestWin32Dialogs::aChildDeletedWhileItIsUpEnablesTheHostOnce()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    auto *dialog = new FieldDialog(docked.panel);
    dialog->show();
    QVERIFY(docked.WaitForFocus("dialog's field"));
    QCOMPARE(Switches(docked), 1);
    delete dialog;
    QCOMPARE(Switches(docked), 2);
    QVERIFY(IsEnabled(docked));
    QVERIFY(docked.ServeUntil([&] { return docked.panel->isVisible(); }));
}

/// The host's own timers run while exec() has the thread.
void TestWin32Dialogs::aDialogsOwnLoopServesTheHost()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    static int ticks;
    ticks = 0;
    const UINT_PTR timer
        = SetTimer(nullptr, 0, /*ms=*/10, [](HWND, UINT, UINT_PTR, DWORD) { ++ticks; });
    FieldDialog dialog(docked.panel);
    QTimer wait;
    connect(&wait, &QTimer::timeout, &dialog, [&dialog] {
        if (ticks >= 3 && QApplication::focusWidget() == &dialog.field)
            PressKey(VK_ESCAPE);
    });
    wait.start(/*msec=*/20);
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
    KillTimer(nullptr, timer);
    QVERIFY(ticks >= 3);
    QVERIFY(IsEnabled(docked));
    QCOMPARE(Switches(docked), 2);
}

void TestWin32Dialogs::aMessageBoxIsAnsweredByItsKey()
{
    DockedPanel docked;
    QVERIFY(docked.Open());
    bool wasEnabled = true;
    QTimer wait;
    connect(&wait, &QTimer::timeout, this, [&] {
        if (!QApplication::activeModalWidget() || !QApplication::focusWidget())
            return;
        wait.stop();
        wasEnabled = IsEnabled(docked);
        PressKey(VK_RETURN);
    });
    wait.start(/*msec=*/20);
    QCOMPARE(QMessageBox::question(docked.panel, QStringLiteral("Panel"), QStringLiteral("Well?")),
        QMessageBox::Yes);
    QVERIFY(!wasEnabled);
    QVERIFY(IsEnabled(docked));
    QVERIFY(docked.ServeUntil([&] { return docked.panel->isVisible(); }));
}

int main(int argc, char **argv)
{
    TestWin32Dialogs tests;
    return testing::RunDockedTests(tests, argc, argv);
}

#include "tst_win32_dialogs.moc"
