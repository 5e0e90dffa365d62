// GridRobot: the hands and eyes of the grid's tests. It shows a grid, works it by keys and mouse
// and reads what the table shows. Message boxes are answered with Ok as they come, and noted, so
// that one which no test expected fails that test instead of stopping it.
#pragma once

#include "vnQT/wExpoGrid.h"

#include <QEvent>
#include <QMessageBox>
#include <QTimer>

class GridRobot : public QObject
{
    Q_OBJECT

public:
    /// @param grid rebuilt and shown, tall and wide enough for all cells up to 900 by 700 pixels
    explicit GridRobot(WExpoGrid &grid);

    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Types over the current cell and ends with Return.
    void Type(const QString &text);
    void Click(int col, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Presses in one cell, moves to the other and releases there: the current cell follows.
    void Drag(int fromCol, int fromRow, int toCol, int toRow);
    /// Opens the context menu by the right button and clicks the entry of this text.
    void Choose(const QString &menuText);

    /// The texts of a column from the top.
    QStringList Shown(int col) const;
    /// "Warning: text" for each box since the last call.
    QStringList TakeBoxes();

    QMessageBox::Icon lastIcon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons lastButtons = QMessageBox::NoButton;

private:
    void AnswerBox();
    QPoint Middle(int col, int row) const;
    void SendMouse(QEvent::Type type, const QPoint &pos, Qt::KeyboardModifiers modifiers);

    WExpoGrid &grid;
    QTimer answers;
    QStringList boxes;
};
