#include "Transport.h"

#include "WindowIcons.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

#include <limits>
#include <memory>

namespace rostrum {
namespace {

/// Gives a label room for a text with any digits: one that takes what each of its texts needs would
/// lay out the whole window anew at each frame that plays.
void KeepRoom(QLabel *label, QString widest)
{
    for (QChar &sign : widest)
        sign = sign.isDigit() ? QLatin1Char('8') : sign;
    const QFontMetrics metrics = label->fontMetrics();
    label->setFixedSize(metrics.horizontalAdvance(widest), metrics.height());
}

} // namespace

Transport::Transport(Session &session, QWidget *parent) : QWidget(parent), session(session)
{
    setObjectName(QStringLiteral("transport"));
    auto elapsed = std::make_shared<QElapsedTimer>();
    elapsed->start();
    now = [elapsed] { return elapsed->nsecsElapsed(); };
    timer.setTimerType(Qt::PreciseTimer);
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &Transport::OnTick);

    first = NewAction("acFirst", tr("First frame"), Qt::Key_Home, &Transport::OnFirst);
    back = NewAction("acBack", tr("One frame back"), Qt::Key_PageUp, &Transport::OnBack);
    play = NewAction("acPlay", tr("Play or stop"), Qt::Key_Space, &Transport::OnPlay);
    forward = NewAction("acForward", tr("One frame on"), Qt::Key_PageDown, &Transport::OnForward);
    last = NewAction("acLast", tr("Last frame"), Qt::Key_End, &Transport::OnLast);
    loop = new QAction(tr("Loop"), this);
    loop->setObjectName(QStringLiteral("acLoop"));
    loop->setCheckable(true);
    loop->setChecked(true);
    connect(loop, &QAction::toggled, this, &Transport::OnLoop);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    for (QAction *action : Actions())
        AddButton(layout, action);
    AddButton(layout, loop);
    layout->addSpacing(8);
    efFrame = new QSpinBox(this);
    efFrame->setObjectName(QStringLiteral("efFrame"));
    efFrame->setToolTip(tr("The current frame, counted from 1 as on the sheet"));
    efFrame->setKeyboardTracking(false);
    efFrame->setFocusPolicy(Qt::ClickFocus);
    efFrame->setButtonSymbols(QAbstractSpinBox::NoButtons);
    efFrame->setAlignment(Qt::AlignRight);
    connect(efFrame, &QSpinBox::editingFinished, this, &Transport::OnFrameTyped);
    layout->addWidget(efFrame);
    lbCount = new QLabel(this);
    lbCount->setObjectName(QStringLiteral("lbCount"));
    layout->addWidget(lbCount);
    layout->addSpacing(8);
    lbTimecode = new QLabel(this);
    lbTimecode->setObjectName(QStringLiteral("lbTimecode"));
    lbTimecode->setToolTip(tr("Hours, minutes, seconds and frames, counted from 0"));
    layout->addWidget(lbTimecode);
    layout->addSpacing(8);
    lbDropped = new QLabel(this);
    lbDropped->setObjectName(QStringLiteral("lbDropped"));
    lbDropped->setForegroundRole(QPalette::BrightText);
    lbDropped->setToolTip(tr("Frames that came too late to be shown since playing started"));
    layout->addWidget(lbDropped);
    MakeIcons();

    connect(&session, &Session::ProjectChanged, this, &Transport::OnProjectChanged);
    connect(&session, &Session::ActiveItemChanged, this, &Transport::OnCompositionChanged);
    connect(&session, &Session::TimeChanged, this, &Transport::ShowNumbers);
    ShowNumbers();
}

QAction *Transport::NewAction(
    const char *name, const QString &text, const QKeySequence &key, void (Transport::*slot)())
{
    auto *action = new QAction(text, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    action->setToolTip(
        text + QStringLiteral(" (") + key.toString(QKeySequence::NativeText) + QLatin1Char(')'));
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void Transport::AddButton(QHBoxLayout *layout, QAction *action)
{
    auto *button = new QToolButton(this);
    button->setDefaultAction(action);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus); // else a click would take the keys away from the view
    button->setObjectName(QStringLiteral("pb") + action->objectName().mid(2));
    layout->addWidget(button);
}

void Transport::MakeIcons()
{
    first->setIcon(NewIcon(IconShape::First, palette()));
    back->setIcon(NewIcon(IconShape::Back, palette()));
    play->setIcon(NewIcon(IsPlaying() ? IconShape::Stop : IconShape::Play, palette()));
    forward->setIcon(NewIcon(IconShape::Forward, palette()));
    last->setIcon(NewIcon(IconShape::Last, palette()));
    loop->setIcon(NewIcon(IconShape::Loop, palette()));
}

void Transport::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        MakeIcons();
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        KeepRooms();
    QWidget::changeEvent(event);
}

void Transport::KeepRooms()
{
    KeepRoom(lbTimecode, lbTimecode->text());
    KeepRoom(lbDropped, tr("%1 dropped").arg(999)); // also while there are none
}

void Transport::OnPlay()
{
    if (IsPlaying()) {
        OnStop();
        return;
    }
    if (session.FrameCount() < 2)
        return; // nothing moves
    if (session.CurrentFrame() >= session.FrameCount() - 1)
        session.SetCurrentFrame(0);
    playing = session.ActiveCompositionId();
    Restart();
    Arm();
    MakeIcons();
    ShowNumbers();
    emit SigPlaying(true);
}

void Transport::OnStop()
{
    if (!IsPlaying())
        return;
    timer.stop();
    MakeIcons();
    ShowNumbers();
    emit SigPlaying(false);
}

void Transport::OnLoop(bool on)
{
    clock.SetLoop(on);
    if (IsPlaying())
        Restart(); // the end that counts is that of this round
}

void Transport::Go(qint32 frame)
{
    session.SetCurrentFrame(frame);
    if (IsPlaying())
        Restart();
}

/// From the frame that is shown now on.
void Transport::Restart()
{
    shown = session.CurrentFrame();
    playedCount = session.FrameCount();
    playedRate = session.ActiveComposition()->rate;
    clock.Start(shown, playedCount, playedRate, now());
}

void Transport::Arm()
{
    const qint64 wait = clock.NextAt() - now();
    constexpr qint64 milli = 1000000;
    timer.start(static_cast<int>(qBound<qint64>(0, (wait + milli - 1) / milli, 1000)));
}

void Transport::OnTick()
{
    if (playing == 0 || playing != session.ActiveCompositionId()) {
        OnStop();
        return;
    }
    if (session.CurrentFrame() != shown)
        Restart(); // somebody has moved the current time
    const PlayClock::Due due = clock.At(now());
    Arm(); // before the frame is drawn, so that what it takes is no further delay
    if (due.isNew) {
        shown = due.frame;
        session.SetCurrentFrame(due.frame);
        ShowNumbers();
    }
    if (due.isEnd)
        OnStop();
}

void Transport::OnProjectChanged()
{
    ShowNumbers();
    if (!IsPlaying())
        return;
    const Composition *active = session.ActiveComposition();
    if (!active || session.FrameCount() < 2)
        OnStop();
    else if (session.FrameCount() != playedCount || active->rate != playedRate)
        Restart();
}

void Transport::OnCompositionChanged()
{
    if (IsPlaying() && playing != session.ActiveCompositionId())
        OnStop();
    ShowNumbers();
}

void Transport::OnFrameTyped()
{
    if (efFrame->value() - 1 != session.CurrentFrame())
        Go(efFrame->value() - 1);
    if (efFrame->hasFocus() && parentWidget())
        parentWidget()->setFocus(); // Return ends the typing, the keys act on the view again
}

void Transport::ShowNumbers()
{
    const Composition *active = session.ActiveComposition();
    const int count = session.FrameCount();
    constexpr qint32 kMostFrames = std::numeric_limits<qint32>::max();
    const qint32 frame = qMin(session.CurrentFrame(), kMostFrames - 1); // one more is shown
    const QSignalBlocker quiet(efFrame);
    efFrame->setEnabled(active != nullptr);
    const int least = qMin(frame + 1, 1);
    const int most = qMax(frame + 1, count);
    if (efFrame->minimum() != least || efFrame->maximum() != most)
        efFrame->setRange(least, most); // lays out the window anew
    efFrame->setValue(frame + 1);
    lbCount->setText(QStringLiteral("/ %1").arg(count));
    const int digits = lbTimecode->text().size();
    lbTimecode->setText(Timecode(frame, active ? active->rate : Rate()));
    if (lbTimecode->text().size() != digits)
        KeepRooms();
    const qint64 dropped = Dropped();
    lbDropped->setText(dropped > 0 ? tr("%1 dropped").arg(dropped) : QString());
    for (QAction *action : Actions())
        action->setEnabled(count > 0);
}

} // namespace rostrum
