// The timeline of the active composition: a row a layer, the topmost first, with its bar; unfolded,
// a row for each of its streams with their keys.
//
//   TimelineOutline   names, parents, values       TimelineTracks   bars and keys
//   TimelineRuler     frames and the current time  TimelineBoard    what they share
//
// Every change by hand is one history entry; a drag is one, made when the hand lets go. The layer
// selection is that of the host. Frames are counted from 1 where a person reads them, as on the
// sheet; drawings from 0, with the file that a number means beside it.
//
// Del takes away the selected keys, without any the selected layers: Qt::WidgetShortcut, as all
// keys here.
#pragma once

#include "TimelineBoard.h"
#include "TimelineOutline.h"
#include "TimelineRuler.h"
#include "TimelineTracks.h"

#include <QWidget>

QT_FORWARD_DECLARE_CLASS(QAction)
QT_FORWARD_DECLARE_CLASS(QLabel)
QT_FORWARD_DECLARE_CLASS(QScrollBar)
QT_FORWARD_DECLARE_CLASS(QSlider)
QT_FORWARD_DECLARE_CLASS(QSplitter)

namespace rostrum {

class Timeline : public QWidget
{
    Q_OBJECT

public:
    explicit Timeline(Session &session, QWidget *parent = nullptr);

    TimelineBoard &Board() { return *board; }
    TimelineOutline &Outline() { return *outline; }
    TimelineRuler &Ruler() { return *ruler; }
    TimelineTracks &Tracks() { return *tracks; }
    /// Keys that act where the focus is in the timeline: those of the transport, say.
    void AddKeys(const QList<QAction *> &actions);

public slots:
    void OnDelete();
    void OnHold() { SetKeys(Interpolation::Hold); }
    void OnLinear() { SetKeys(Interpolation::Linear); }
    void OnBezier() { SetKeys(Interpolation::Bezier); }
    /// All frames in the width that there is.
    void OnFit();

signals:
    /// What a drag would do, to be shown while it lasts.
    void SigPreview(const rostrum::Project &project);
    void SigPreviewEnd();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *NewBar();
    QWidget *NewLeft();
    QWidget *NewRight();
    QAction *NewAction(const char *name, const QString &text, void (Timeline::*slot)());
    void SetKeys(Interpolation interpolation);
    void OnMenu(const QPoint &globalPlace);
    void OnHint(const QString &hint);
    void OnChanged();
    void OnScrolled();
    void OnZoomSlider(int value);
    void OnTimeChanged();
    void OnCompositionChanged();
    void ShowRow(int row);
    int WidestScroll() const;

    Session &session;
    TimelineBoard *board;
    TimelineOutline *outline;
    TimelineRuler *ruler;
    TimelineTracks *tracks;
    QSplitter *splitter;
    QScrollBar *sb_X;
    QScrollBar *sb_Y;
    QSlider *slZoom;
    QLabel *lbName;
    QLabel *lbHint;
    QList<QAction *> keyActions;
    QAction *acDelete;
    ItemId fitted = 0; // the composition that the scale was last fitted to
    double fittedScale = 0; // pixels a frame
    bool isSplitByHand = false;
    bool following = false; // the scroll bars are being set
};

} // namespace rostrum
