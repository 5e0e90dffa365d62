// A timeline in a window over the fixture's sheet, 10 pixels a frame, and where its things lie.
#pragma once

#include "MouseHand.h"
#include "testhost/SheetFixture.h"
#include "window/Timeline.h"

#include <QLineEdit>

namespace testing {

class ShownTimeline
{
public:
    explicit ShownTimeline(SheetFixture &sheet)
        : sheet(sheet), session(sheet.host), timeline(session)
    {
        QPalette dark;
        dark.setColor(QPalette::Window, QColor(48, 48, 48));
        dark.setColor(QPalette::Base, QColor(24, 24, 24));
        dark.setColor(QPalette::WindowText, QColor(190, 190, 190));
        timeline.setPalette(dark);
        timeline.resize(1200, 400);
        timeline.show();
        QApplication::setActiveWindow(&timeline); // shortcuts ask for it
        SetPixels(10);
        timeline.Tracks().setFocus();
    }

    rostrum::TimelineBoard &Board() { return timeline.Board(); }
    rostrum::TimelineTracks &Tracks() { return timeline.Tracks(); }
    rostrum::TimelineOutline &Outline() { return timeline.Outline(); }
    const rostrum::TimelineRows &Rows() { return Board().Rows(); }

    void SetPixels(double perFrame)
    {
        rostrum::TimeScale scale = Board().Scale();
        scale.ZoomAt(0, perFrame / scale.PixelsPerFrame());
        scale.SetScroll(0);
        Board().SetScale(scale);
    }
    int MiddleOf(int row)
    {
        return rostrum::TimelineRows::TopOf(row) - Board().ScrollY()
            + rostrum::TimelineRows::kRowHeight / 2;
    }
    int RowOf(rostrum::LayerId layer) { return Rows().RowOf(layer); }
    int RowOf(rostrum::LayerId layer, qint32 stream) { return Rows().RowOf(layer, { stream }); }
    /// In the tracks: the middle of a frame's cell, or so many pixels beside it.
    QPoint At(int row, int frame, int beside = 0)
    {
        return { int(Board().Scale().MiddleOf(frame)) + beside, MiddleOf(row) };
    }
    /// In the tracks: the left edge of a frame's cell.
    QPoint EdgeAt(int row, int frame)
    {
        return { int(Board().Scale().LeftOf(frame)), MiddleOf(row) };
    }
    /// In the outline.
    QPoint CellAt(int row, rostrum::OutlineCells::Cell cell, int component = 0)
    {
        const rostrum::OutlineCells cells(Outline().width());
        return { cells.Rect(cell, 0, component).center().x(), MiddleOf(row) };
    }
    void ClickCell(int row, rostrum::OutlineCells::Cell cell, int component = 0,
        Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(&Outline(), Qt::LeftButton, modifiers, CellAt(row, cell, component));
    }
    void Unfold(rostrum::LayerId layer) { ClickCell(RowOf(layer), rostrum::OutlineCells::Arrow); }
    void ClickKey(int row, int frame, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(&Tracks(), Qt::LeftButton, modifiers, At(row, frame));
    }
    void Drag(const QPoint &from, const QPoint &to, Qt::KeyboardModifiers modifiers = {})
    {
        DragMouse(Tracks(), { from, (from + to) / 2, to }, modifiers);
    }
    /// Types over what an open editor holds. @return false when none of the name is open
    bool Type(const char *editorName, const QString &text, Qt::Key end = Qt::Key_Return)
    {
        QLineEdit *editor = Editor(editorName);
        if (!editor)
            return false;
        editor->selectAll();
        if (text.toLatin1() == text.toUtf8())
            QTest::keyClicks(editor, text);
        else
            editor->insert(text); // as an input method does: there are no keys for it
        QTest::keyClick(editor, end);
        return true;
    }
    QLineEdit *Editor(const char *name)
    {
        for (QLineEdit *editor : Outline().findChildren<QLineEdit *>(QLatin1String(name))) {
            if (editor->isVisible())
                return editor;
        }
        return nullptr;
    }
    QImage Picture() { return Tracks().grab().toImage(); }
    QVector<QByteArray> Undo() { return sheet.UndoNames(); }

    SheetFixture &sheet;
    rostrum::Session session;
    rostrum::Timeline timeline;
};

} // namespace testing
