// A frame on a table: zoomed, moved, over a checkerboard where it is transparent, safe frames.
//
//   wheel                 zooms, the point under the cursor stays
//   drag left or middle   moves
//   double click          fits
//
// It knows no project: it shows the image that it was given.
#pragma once

#include <QImage>
#include <QWidget>

namespace rostrum {

class FrameView : public QWidget
{
    Q_OBJECT

public:
    static constexpr double kLeastZoom = 0.05;
    static constexpr double kMostZoom = 16;

    explicit FrameView(QWidget *parent = nullptr);

    /// @param image is kept, not copied; null shows the text instead
    void SetFrame(const QImage &image, const QString &text = {});
    /// Holds the frame's pixels no longer, as they are about to be drawn anew; SetFrame is to follow
    /// before anything is painted.
    void LetGo() { frame = QImage(); }
    /// While frames follow each other quickly they are scaled roughly.
    void SetQuick(bool on);

    /// Pixels of the screen for one of the frame.
    double Zoom() const { return zoom; }
    bool IsFitted() const { return fitted; }
    /// Where the frame lies in this widget.
    QRectF FrameRect() const;

public slots:
    /// The middle of what is seen stays.
    void OnZoom(double factor);
    void OnFit();
    void OnChecker(bool on);
    void OnSafeFrames(bool on);

signals:
    void SigZoomed();
    /// Somebody has put a hand on it.
    void SigTouched();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void SetZoom(double factor, const QPointF &fixed);
    void Fit();
    void DrawFrame(QPainter &painter, const QRectF &target);
    void DrawChecker(QPainter &painter, const QRectF &target) const;
    void DrawSafeFrames(QPainter &painter, const QRectF &target) const;

    QImage frame;
    QSize frameSize; // also when it was let go
    QImage scaled; // the frame as it is shown, where it is shown smaller
    QString text;
    double zoom = 1;
    QPointF centre; // of the frame, in this widget, against the widget's own
    QPoint grabbed; // where the hand was last
    bool dragging = false;
    bool fitted = true;
    bool quick = false;
    bool checker = false;
    bool safeFrames = false;
};

} // namespace rostrum
