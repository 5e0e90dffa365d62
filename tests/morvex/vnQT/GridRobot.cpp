#include "GridRobot.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>
#include <QWindow>

GridRobot::GridRobot(WExpoGrid &sheet) : grid(sheet)
{
    grid.RefreshGrid();
    grid.resize(qMin(900, 60 + grid.columnCount() * grid.GetColWidth()),
        qMin(700, 50 + grid.rowCount() * 18));
    grid.show();
    grid.activateWindow();
    grid.setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&grid));
    connect(&answers, &QTimer::timeout, this, &GridRobot::AnswerBox);
    answers.start(0);
}

void GridRobot::AnswerBox()
{
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (!box || !box->isVisible())
        return;
    boxes << QStringLiteral("%1: %2").arg(box->windowTitle(), box->text());
    lastIcon = box->icon();
    lastButtons = box->standardButtons();
    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
}

QStringList GridRobot::TakeBoxes()
{
    QStringList taken;
    taken.swap(boxes);
    return taken;
}

void GridRobot::Key(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(&grid, static_cast<Qt::Key>(key), modifiers);
}

void GridRobot::Type(const QString &text)
{
    QTest::keyClick(&grid, text[0].toLatin1()); // the first character opens the editor
    auto *editor = grid.viewport()->findChild<QLineEdit *>();
    QVERIFY2(editor, "typing opened no editor");
    QTest::keyClicks(editor, text.mid(1));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!grid.viewport()->findChild<QLineEdit *>()); // the table deletes it later
}

QPoint GridRobot::Middle(int col, int row) const
{
    return grid.visualRect(grid.model()->index(row, col)).center();
}

void GridRobot::SendMouse(QEvent::Type type, const QPoint &pos, Qt::KeyboardModifiers modifiers)
{
    const bool released = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, pos, grid.viewport()->mapToGlobal(pos),
        type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
        released ? Qt::NoButton : Qt::LeftButton, modifiers);
    QApplication::sendEvent(grid.viewport(), &event);
}

void GridRobot::Click(int col, int row, Qt::KeyboardModifiers modifiers)
{
    SendMouse(QEvent::MouseButtonPress, Middle(col, row), modifiers);
    SendMouse(QEvent::MouseButtonRelease, Middle(col, row), modifiers);
}

void GridRobot::Drag(int fromCol, int fromRow, int toCol, int toRow)
{
    const QPoint from = Middle(fromCol, fromRow);
    const QPoint to = Middle(toCol, toRow);
    SendMouse(QEvent::MouseButtonPress, from, Qt::NoModifier);
    SendMouse(QEvent::MouseMove, (from + to) / 2, Qt::NoModifier);
    SendMouse(QEvent::MouseMove, to, Qt::NoModifier);
    SendMouse(QEvent::MouseButtonRelease, to, Qt::NoModifier);
}

void GridRobot::Choose(const QString &menuText)
{
    bool chosen = false;
    QTimer chooser;
    connect(&chooser, &QTimer::timeout, this, [&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu || chosen)
            return;
        for (QAction *action : menu->actions()) {
            if (action->text() != menuText)
                continue;
            chosen = true;
            QTest::mouseClick(
                menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
            return;
        }
        menu->close(); // no such entry
    });
    chooser.start(0);
    const QPoint pos = Middle(grid.currentColumn(), grid.currentRow());
    QTest::mouseClick(grid.window()->windowHandle(), Qt::RightButton, Qt::NoModifier,
        grid.viewport()->mapTo(grid.window(), pos));
    QTRY_VERIFY2(chosen, qPrintable(menuText));
}

QStringList GridRobot::Shown(int col) const
{
    QStringList texts;
    for (int row = 0; row < grid.rowCount(); ++row)
        texts << (grid.item(row, col) ? grid.item(row, col)->text() : QStringLiteral("no item"));
    return texts;
}
