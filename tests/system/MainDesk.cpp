#include "MainDesk.h"

#include "PluginDoor.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMouseEvent>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

using namespace rostrum;

namespace testing {
namespace {

constexpr int kWatchInterval = 20; // ms
constexpr QSize kWindowSize{ 1280, 960 }; // pixels; fits the tests' display

QAction *FindEntry(const QMenu &menu, const QString &text)
{
    for (QAction *action : menu.actions()) {
        if (action->text().remove(QLatin1Char('&')).startsWith(text))
            return action;
    }
    return nullptr;
}

QWidget *FindWindow(const char *className)
{
    for (QWidget *widget : QApplication::allWidgets()) {
        if (widget->inherits(className))
            return widget;
    }
    return nullptr;
}

} // namespace

MainDesk::MainDesk()
{
    window = std::make_unique<MainWindow>(
        host, Places{ own.filePath(QStringLiteral("rostrum.ini")), own.path() });
    const QString refused = EnterMorvex(host.Driver());
    if (!refused.isEmpty())
        qFatal("the plug-in: %s", qPrintable(refused));
    window->LoadPlugins({}); // gives a dock to what is entered
    window->resize(kWindowSize);
    window->Start();
    if (!QTest::qWaitForWindowActive(window.get(), kPatience))
        qFatal("the window does not come up");
    connect(&watch, &QTimer::timeout, this, &MainDesk::Answer);
    watch.start(kWatchInterval);
}

MainDesk::~MainDesk()
{
    watch.stop();
    window.reset();
}

void MainDesk::WhenAsked(std::function<void(QWidget &)> answer)
{
    answers.push_back(std::move(answer));
}

void MainDesk::Accept(QWidget &dialog)
{
    auto *buttons = dialog.findChild<QDialogButtonBox *>();
    QVERIFY2(buttons, "the dialog has no buttons");
    for (QAbstractButton *button : buttons->buttons()) {
        if (buttons->buttonRole(button) == QDialogButtonBox::AcceptRole)
            return Click(button);
    }
}

void MainDesk::WhenAskedForFile(const QString &path)
{
    WhenAsked([path](QWidget &dialog) {
        auto *name = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        QVERIFY2(name, "this is no file dialog");
        name->setFocus();
        QTest::keyClick(name, Qt::Key_A, Qt::ControlModifier);
        QApplication::clipboard()->setText(path); // typed, it is completed while it grows
        QTest::keyClick(name, Qt::Key_V, Qt::ControlModifier);
        if (name->completer()->popup()->isVisible())
            QTest::keyClick(name->completer()->popup(), Qt::Key_Escape);
        Accept(dialog);
    });
}

/// A dialog that nobody foresaw is noted and closed, so that the run goes on to its verdict.
void MainDesk::Answer()
{
    QWidget *dialog = QApplication::activeModalWidget();
    if (!dialog || !dialog->isVisible() || dialog == answered
        || dialog->inherits("QProgressDialog"))
        return;
    answered = dialog;
    if (answers.empty()) {
        const auto *box = qobject_cast<QMessageBox *>(dialog);
        surprises << dialog->windowTitle() + QLatin1String(": ")
                + (box ? box->text() : QString::fromLatin1(dialog->metaObject()->className()));
        dialog->close();
        return;
    }
    const auto answer = std::move(answers.front());
    answers.pop_front();
    answer(*dialog);
}

bool MainDesk::Choose(const char *menuTitle, const QString &text)
{
    QMenuBar *bar = window->menuBar();
    for (QAction *title : bar->actions()) {
        if (title->text().remove(QLatin1Char('&')) != QLatin1String(menuTitle))
            continue;
        Click(bar, bar->actionGeometry(title).center());
        QMenu *menu = title->menu();
        if (!QTest::qWaitFor([menu] { return menu->isVisible(); }, kPatience))
            return false;
        QAction *entry = FindEntry(*menu, text);
        if (!entry || !entry->isEnabled()) {
            menu->close();
            return false;
        }
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
        QTest::qWait(0);
        return true;
    }
    return false;
}

void MainDesk::Click(QWidget *widget, const QPoint &pos, Qt::KeyboardModifiers modifiers)
{
    QTest::mouseClick(widget, Qt::LeftButton, modifiers, pos);
}

void MainDesk::Key(int key, Qt::KeyboardModifiers modifiers)
{
    QWidget *target = QApplication::focusWidget();
    QVERIFY2(target, "nobody has the keyboard");
    QTest::keyClick(target, static_cast<Qt::Key>(key), modifiers);
}

void MainDesk::Type(const QString &text)
{
    for (const QChar letter : text) {
        QWidget *target = QApplication::focusWidget();
        QVERIFY2(target, "nobody has the keyboard");
        QTest::keyClick(target, letter.toLatin1());
    }
}

QWidget *MainDesk::InPanel(const char *className) const
{
    const QWidget *panel = FindWindow("WinExpo");
    if (!panel)
        return nullptr;
    for (QWidget *widget : panel->findChildren<QWidget *>()) {
        if (widget->inherits(className))
            return widget;
    }
    return nullptr;
}

QTableWidget *MainDesk::Sheet() const
{
    return qobject_cast<QTableWidget *>(InPanel("WinGridDataAE"));
}

/// An editor carries its label beside the input, or on it.
QWidget *MainDesk::Editor(const char *label)
{
    auto *dock = qobject_cast<QTabWidget *>(InPanel("KDockPannel"));
    if (!dock)
        return nullptr;
    const QString text = QString::fromLatin1(label);
    for (QWidget *editor : dock->findChildren<QWidget *>()) {
        const auto *beside = editor->findChild<QLabel *>();
        const auto *box = editor->findChild<QAbstractButton *>();
        if (!editor->inherits("T_QtEdit")
            || !((beside && beside->text() == text) || (box && box->text() == text)))
            continue;
        for (int tab = 0; tab < dock->count(); ++tab) {
            if (dock->widget(tab)->isAncestorOf(editor))
                Click(dock->tabBar(), dock->tabBar()->tabRect(tab).center());
        }
        return editor;
    }
    return nullptr;
}

QPoint MainDesk::CellMiddle(int col, int row) const
{
    QTableWidget *sheet = Sheet();
    const QModelIndex cell = sheet->model()->index(row, col);
    sheet->scrollTo(cell); // as the wheel would
    return sheet->visualRect(cell).center();
}

void MainDesk::ClickCell(int col, int row)
{
    Click(Sheet()->viewport(), CellMiddle(col, row));
    QCOMPARE(Sheet()->currentRow(), row);
}

void MainDesk::DragCells(int col, int fromRow, int toRow)
{
    QWidget *viewport = Sheet()->viewport();
    const QPoint to = CellMiddle(col, toRow);
    const QPoint from = CellMiddle(col, fromRow);
    QVERIFY2(viewport->rect().contains(from)
            && viewport->rect().contains(
                Sheet()->visualRect(Sheet()->model()->index(toRow, col)).center()),
        "both ends have to be seen");
    QTest::mousePress(viewport, Qt::LeftButton, {}, from);
    for (const QPoint &pos : { (from + to) / 2, to }) {
        QMouseEvent move(QEvent::MouseMove, pos, viewport->mapToGlobal(pos), Qt::NoButton,
            Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(viewport, &move);
    }
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, to);
}

void MainDesk::TypeCell(int number)
{
    const QString text = QString::number(number);
    QTest::keyClick(Sheet(), text[0].toLatin1()); // opens the editor
    const QPointer<QLineEdit> editor = Sheet()->viewport()->findChild<QLineEdit *>();
    QVERIFY2(editor, "typing opened no editor");
    QTest::keyClicks(editor, text.mid(1));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!editor);
}

QStringList MainDesk::Shown(int col) const
{
    QStringList texts;
    for (int row = 0; row < Sheet()->rowCount(); ++row)
        texts << Sheet()->item(row, col)->text().trimmed();
    return texts;
}

void MainDesk::Picture(const QString &name)
{
    if (pictures.isEmpty())
        return;
    QTest::qWait(250); // what is still to be painted
    const QString path = pictures + QLatin1Char('/') + name + QLatin1String(".png");
    QVERIFY2(window->grab().save(path), qPrintable(path));
}

bool MainDesk::Quit()
{
    return Choose("File", QStringLiteral("Quit"))
        && QTest::qWaitFor([this] { return !window->isVisible(); }, kPatience);
}

} // namespace testing
