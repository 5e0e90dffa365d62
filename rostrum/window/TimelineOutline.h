// The left side of the timeline: layers by name, their parents; of unfolded ones the streams, each
// with its value at the current time and a button that adds or removes a key there.
//
//   name           press selects, drag moves the layers up or down, double click renames
//   arrow          unfolds
//   colour         picks the label
//   parent         picks another layer to hang on
//   value          press types another one
//   key button     adds a key at the current time, or takes it away; arrows beside it go to the
//                  keys before and behind
#pragma once

#include "TimelineBoard.h"

#include <QPointer>
#include <QWidget>

QT_FORWARD_DECLARE_CLASS(QComboBox)
QT_FORWARD_DECLARE_CLASS(QLineEdit)

namespace rostrum {

/// Where the cells of a row lie, for a width of the outline.
class OutlineCells
{
public:
    enum Cell {
        None,
        Arrow,
        Swatch,
        Name,
        Drawing,
        Parent,
        KeyBefore,
        KeyButton,
        KeyBehind,
        Value
    };

    explicit OutlineCells(int width) : width(width) { }

    /// Left and right edge of what a row shows there.
    QRect Rect(Cell cell, int top, int component = 0) const;
    Cell CellAt(int x, const TimelineRow &row) const;
    int ComponentAt(int x) const;

private:
    int ValuesFrom() const;

    int width;
};

class TimelineOutline : public QWidget
{
    Q_OBJECT

public:
    TimelineOutline(TimelineBoard &board, QWidget *parent);

    /// A value as it stands in the outline: "12.5", of a time remap the image's number.
    QString ValueText(const TimelineRow &row, int component) const;
    /// What is told about a place, "12 = walk0024.png" say.
    QString HintAt(const QPoint &place) const;

public slots:
    /// Opens the editor of a row's value at the current time.
    void OnEditValue(int row, int component = 0);
    void OnRename(int row);

signals:
    /// The row is to be scrolled into view.
    void SigShowRow(int row);
    /// Of what lies under the cursor.
    void SigHint(const QString &hint);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void OnTimeChanged();
    int RowAt(const QPoint &place) const;
    int TopOf(int row) const { return TimelineRows::TopOf(row) - board.ScrollY(); }

    void DrawRow(QPainter &painter, int row, const QRegion &dirty);
    void DrawLayer(QPainter &painter, const TimelineRow &row, const Layer &layer, int top,
        const QRegion &dirty);
    void DrawNumberAndName(
        QPainter &painter, const TimelineRow &row, const Layer &layer, QRect place);
    void DrawParent(QPainter &painter, const Layer &layer, QRect place);
    void DrawStream(QPainter &painter, const TimelineRow &row, const Layer &layer, int top);
    void DrawKeyButton(QPainter &painter, const TimelineRow &row, int top);
    void DrawDrop(QPainter &painter);

    void PressLayer(const TimelineRow &row, OutlineCells::Cell cell, QMouseEvent *event);
    void PressStream(const TimelineRow &row, OutlineCells::Cell cell, const QPoint &place);
    void ToggleKey(const TimelineRow &row);
    void SelectKeysOf(const TimelineRow &row);
    void GoToKey(const TimelineRow &row, int direction);
    void PickLabel(LayerId layer, const QPoint &globalPlace);
    void PickParent(const TimelineRow &row);
    void EndDrag();

    void OpenEditor(const QString &text, const char *name, int row);
    void PlaceEditor();
    void CloseEditor();
    void OnValueTyped();
    void OnNameTyped();
    void OnParentPicked();

    TimelineBoard &board;

    // The editor that is open, and what it edits.
    QPointer<QLineEdit> editor;
    QPointer<QComboBox> cbParent;
    BoardPlace editedIn;
    LayerId editedLayer = 0;
    StreamInfo editedStream;
    int editedComponent = 0;
    Time editedTime; // of the composition

    // The drag under way.
    bool held = false;
    bool dragging = false;
    bool selectsLate = false;
    Qt::KeyboardModifiers clicked;
    QPoint grabbedAt;
    LayerId grabbed = 0;
    BoardPlace draggedIn;
    int gap = 0; // where the layers would go
};

} // namespace rostrum
