// The ruler over the tracks: frames, and the mark of the current time, which follows the hand.
//
//   press and drag   the current time
//   wheel            zooms, with Shift or sideways scrolls; as over the tracks
#pragma once

#include "TimelineBoard.h"

#include <QWidget>

namespace rostrum {

class TimelineRuler : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kHeight = 26; // pixels

    TimelineRuler(TimelineBoard &board, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void Scrub(const QPoint &place);
    void OnTimeChanged();
    void DrawTicks(QPainter &painter, const QRect &part);
    void DrawNow(QPainter &painter);

    TimelineBoard &board;
    int markedFrame = 0; // the current one when it was drawn last
};

/// The wheel over ruler and tracks: turned alone it zooms at the cursor over the ruler and scrolls
/// the rows over the tracks; with Ctrl it zooms, with Shift it scrolls along.
/// @param zooms what a turn alone does
void TurnWheel(TimelineBoard &board, QWheelEvent *event, bool zooms);

} // namespace rostrum
