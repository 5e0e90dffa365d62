// The right side of the timeline: bars, keys, the current time.
//
//   bar          press selects, drag moves the selected layers with their keys
//   its ends     drag trims; with Shift, as for bars, edges catch on others and the current time
//   key          press selects, drag moves the selected keys; double click edits its value
//   empty        press clears the selection, drag picks keys with a frame
//   Esc          calls a drag off
//
// A drag shows what it would do and does it when the hand lets go (TimelineBoard.h).
#pragma once

#include "TimelineHit.h"

#include <QPixmap>
#include <QWidget>

namespace rostrum {

class TimelineTracks : public QWidget
{
    Q_OBJECT

public:
    TimelineTracks(TimelineBoard &board, QWidget *parent);

    /// What is told about a place: "12 = walk0024.png". Empty where there is nothing to tell.
    QString HintAt(const QPoint &place) const;

signals:
    /// A key is to be edited by its row and component.
    void SigEditKey(int row);
    void SigMenu(const QPoint &globalPlace);
    /// Of what lies under the cursor.
    void SigHint(const QString &hint);

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void OnChanged();
    void OnTimeChanged();
    void DrawRows();
    void DrawRow(QPainter &painter, int row, const QRectF &place);
    void DrawLayer(QPainter &painter, const Layer &layer, const QRectF &place);
    void DrawUndrawn(QPainter &painter, const Layer &layer, const QRectF &bar);
    void DrawImages(QPainter &painter, const Layer &layer, const QRectF &place);
    void DrawKeys(
        QPainter &painter, const TimelineRow &row, const Layer &layer, const QRectF &place);
    void DrawOver(QPainter &painter);

    void Press(const TimelineHit &hit, Qt::KeyboardModifiers modifiers);
    void Drag(const QPoint &to, Qt::KeyboardModifiers modifiers);
    void Drop();
    void EndDrag();
    int WayInFrames(const QPoint &to, Qt::KeyboardModifiers modifiers) const;
    TimelineBoard::Edit EditOf(int frames) const;
    void SelectPressed();
    void ShowCursor(TimelineHit::Kind kind);

    TimelineBoard &board;
    QPixmap rows; // as they were drawn last; null when they have changed since
    int markedFrame = 0; // the current one when it was drawn last

    // The drag under way.
    bool held = false; // the button is down
    bool dragging = false; // and the hand has moved
    TimelineHit grabbed;
    QPoint grabbedAt;
    int way = 0; // frames
    QVector<LayerId> draggedLayers;
    KeyIds draggedKeys;
    BoardPlace draggedIn;
    bool selectsLate = false; // what was selected already: only a click without a drag changes that
    Qt::KeyboardModifiers clicked; // the modifiers at the press
    QRect band; // of picked keys
    KeyIds keysBefore; // that were selected before the band
};

} // namespace rostrum
