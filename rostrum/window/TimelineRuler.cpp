#include "TimelineRuler.h"

#include "TimelinePaint.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace rostrum {
namespace {

constexpr double kNotch = 1.25; // zoom for a notch of the wheel
constexpr int kScrollNotch = 60; // pixels
constexpr int kMarkReach = 8; // pixels to each side of the middle

} // namespace

void TurnWheel(TimelineBoard &board, QWheelEvent *event, bool zooms)
{
    const QPoint turn = event->angleDelta();
    const bool along = event->modifiers() & Qt::ShiftModifier || (turn.y() == 0 && turn.x() != 0);
    const double notches = (turn.y() ? turn.y() : turn.x()) / 120.0;
    TimeScale scale = board.Scale();
    event->accept();
    if (along) {
        scale.SetScroll(scale.Scroll() - notches * kScrollNotch);
        board.SetScale(scale);
    } else if (zooms || event->modifiers() & Qt::ControlModifier) {
        scale.ZoomAt(event->position().x(), std::pow(kNotch, notches));
        board.SetScale(scale);
    } else {
        board.SetScrollY(board.ScrollY() - qRound(notches * kScrollNotch));
    }
}

TimelineRuler::TimelineRuler(TimelineBoard &board, QWidget *parent) : QWidget(parent), board(board)
{
    setObjectName(QStringLiteral("timelineRuler"));
    setFixedHeight(kHeight);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setToolTip(tr("Frames, counted from 1 as on the sheet. Drag to move the current time"));
    connect(&board, &TimelineBoard::SigChanged, this, [this] { update(); });
    connect(&board, &TimelineBoard::SigScrolled, this, [this] { update(); });
    connect(&board.GetSession(), &Session::TimeChanged, this, &TimelineRuler::OnTimeChanged);
}

/// While a composition plays only the mark moves.
void TimelineRuler::OnTimeChanged()
{
    for (const int frame : { markedFrame, board.GetSession().CurrentFrame() })
        update(QRectF(board.Scale().MiddleOf(frame) - kMarkReach, 0, 2 * kMarkReach, height())
                   .toAlignedRect());
}

void TimelineRuler::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    markedFrame = board.GetSession().CurrentFrame();
    const TimelineColors colors(palette());
    painter.fillRect(rect(), colors.row);
    if (board.ShownComp()) {
        DrawTicks(painter, event->rect());
        DrawNow(painter);
    }
    painter.setPen(colors.line);
    painter.drawLine(0, height() - 1, width(), height() - 1);
}

void TimelineRuler::DrawTicks(QPainter &painter, const QRect &part)
{
    const TimelineColors colors(palette());
    const TimeScale &scale = board.Scale();
    const int count = board.GetSession().FrameCount();
    painter.fillRect(QRectF(QPointF(scale.LeftOf(0), 0), QPointF(scale.LeftOf(count), height())),
        colors.streamRow);
    const int widest = fontMetrics().horizontalAdvance(QString::number(count)) + 12;
    const int step = scale.LabelStep(board.GetRate(), widest);
    const int first = scale.FrameAt(part.left() - widest); // whose label may reach in
    const int last = qMin(count - 1, scale.FrameAt(part.right()));
    const bool each = scale.PixelsPerFrame() >= 4;
    const int small = each ? 1 : step;
    // Labels count from 1 and stand at round numbers of that count: 1, 6, 11 would help nobody.
    for (int number = qMax(0, first) / small * small; number <= last + 1; number += small) {
        const int frame = qMax(0, number - 1);
        const bool isLabelled = number % step == 0;
        const double x = std::round(scale.LeftOf(frame)) + 0.5;
        painter.setPen(colors.faintText);
        const double from = isLabelled ? 8 : 19;
        painter.drawLine(QPointF(x, from), QPointF(x, height() - 2));
        if (!isLabelled)
            continue;
        painter.setPen(colors.text);
        painter.drawText(
            QRectF(x + 3, 0, widest, height() - 6), Qt::AlignVCenter, QString::number(frame + 1));
    }
}

void TimelineRuler::DrawNow(QPainter &painter)
{
    const TimeScale &scale = board.Scale();
    const double x = scale.MiddleOf(board.GetSession().CurrentFrame());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(TimelineColors(palette()).now);
    painter.drawPolygon(QPolygonF(
        { { x - 6, 10 }, { x + 6, 10 }, { x + 6, 17 }, { x, height() - 1.0 }, { x - 6, 17 } }));
}

void TimelineRuler::Scrub(const QPoint &place)
{
    board.GetSession().SetCurrentFrame(board.Scale().FrameAt(place.x()));
}

void TimelineRuler::mousePressEvent(QMouseEvent *event)
{
    board.GetSession().ActivateComposition();
    if (event->button() == Qt::LeftButton)
        Scrub(event->pos());
}

void TimelineRuler::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        Scrub(event->pos());
}

void TimelineRuler::wheelEvent(QWheelEvent *event)
{
    TurnWheel(board, event, /*zooms=*/true);
}

} // namespace rostrum
