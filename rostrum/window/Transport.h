// Plays the active composition and steps through it, with the frame and the timecode in numbers.
//
// Frames are counted from 1 where a person reads them, as on the sheet; the timecode starts at 0.
// Playing keeps to the composition's rate by a steady clock; frames that come too late are skipped,
// counted and shown.
//
// The keys (Space, PageUp, PageDown, Home, End) are Qt::WidgetShortcut: they act where the focus is
// in a widget that was given the Actions(), and nowhere else, since they belong to the sheet, too.
#pragma once

#include "PlayClock.h"
#include "Session.h"

#include <QAction>
#include <QTimer>
#include <QWidget>

#include <functional>

QT_FORWARD_DECLARE_CLASS(QLabel)
QT_FORWARD_DECLARE_CLASS(QSpinBox)
QT_FORWARD_DECLARE_CLASS(QHBoxLayout)

namespace rostrum {

class Transport : public QWidget
{
    Q_OBJECT

public:
    explicit Transport(Session &session, QWidget *parent = nullptr);

    /// To be added to each widget in which the keys are to work.
    QList<QAction *> Actions() const { return { first, back, play, forward, last }; }
    bool IsPlaying() const { return timer.isActive(); }
    /// Frames skipped since playing started last.
    qint64 Dropped() const { return clock.Dropped(); }
    /// Nanoseconds since any moment; the system's steady clock at the start.
    void SetTimeSource(std::function<qint64()> nanoseconds) { now = std::move(nanoseconds); }

public slots:
    /// Starts or stops. At the last frame it starts from the first.
    void OnPlay();
    void OnStop();
    void OnBack() { Go(session.CurrentFrame() - 1); }
    void OnForward() { Go(session.CurrentFrame() + 1); }
    void OnFirst() { Go(0); }
    void OnLast() { Go(session.FrameCount() - 1); }
    void OnLoop(bool on);
    /// Shows the frame that is due by now.
    void OnTick();

signals:
    void SigPlaying(bool on);

protected:
    void changeEvent(QEvent *event) override;

private:
    QAction *NewAction(
        const char *name, const QString &text, const QKeySequence &key, void (Transport::*slot)());
    void AddButton(QHBoxLayout *layout, QAction *action);
    void MakeIcons();
    void Go(qint32 frame);
    void Restart();
    void Arm();
    void OnProjectChanged();
    void OnCompositionChanged();
    void OnFrameTyped();
    void KeepRooms();
    void ShowNumbers();

    Session &session;
    PlayClock clock;
    QTimer timer;
    std::function<qint64()> now;
    ItemId playing = 0; // the composition
    qint32 playedCount = 0;
    Rate playedRate;
    qint32 shown = 0; // the frame that playing showed last

    QAction *first;
    QAction *back;
    QAction *play;
    QAction *forward;
    QAction *last;
    QAction *loop;
    QSpinBox *efFrame;
    QLabel *lbCount;
    QLabel *lbTimecode;
    QLabel *lbDropped;
};

} // namespace rostrum
