// The active composition at the current frame, with its transport below.
//
// What cannot be drawn is told in lines over the frame. Frames that were drawn are kept while
// nothing changes (FrameCache.h); they are drawn anew when the program comes to the front again,
// since a drawing may have been painted over meanwhile.
#pragma once

#include "FrameCache.h"
#include "FrameView.h"
#include "Session.h"
#include "Transport.h"

#include <optional>

QT_FORWARD_DECLARE_CLASS(QComboBox)
QT_FORWARD_DECLARE_CLASS(QHBoxLayout)
QT_FORWARD_DECLARE_CLASS(QLabel)
QT_FORWARD_DECLARE_CLASS(QToolButton)

namespace rostrum {

class Viewer : public QWidget
{
    Q_OBJECT

public:
    /// @param cacheLimit bytes of frames that are kept
    explicit Viewer(
        Session &session, QWidget *parent = nullptr, qint64 cacheLimit = FrameCache::kDefaultLimit);

    Transport &GetTransport() { return *transport; }
    FrameView &View() { return *view; }
    const FrameCache &Frames() const { return frames; }

public slots:
    /// Shows a project that is not the document's (yet): that of a drag under way.
    void OnPreview(const rostrum::Project &project);
    void OnPreviewEnd();
    /// Looks at the drawings on disk again.
    void OnReload();

protected:
    void changeEvent(QEvent *event) override;

private:
    QToolButton *AddSwitch(QHBoxLayout *layout, const char *name, const QString &hint);
    void AddZoom(QHBoxLayout *layout);
    void MakeIcons();
    void ShowFrame();
    void ShowZoom();
    void ShowMessages(const QStringList &messages);
    void OnZoomPicked();
    void OnPlaying(bool on);

    Session &session;
    FrameCache frames;
    FrameCache previewFrames; // keeps none: a drag must not cost the frames that are kept
    std::optional<Project> preview;
    FrameView *view;
    Transport *transport;
    QComboBox *cbZoom;
    QToolButton *ckChecker;
    QToolButton *ckSafeFrames;
    QLabel *lbMessages;
};

} // namespace rostrum
