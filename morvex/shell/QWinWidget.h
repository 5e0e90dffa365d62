// QWinWidget: a Qt widget whose parent is a native window of the host's.
//
// The host owns the process, the message loop and the window; Qt owns the widget. This class keeps
// the two apart at their border: the focus that comes and goes by the Tab key, and the dialogs that
// the widget opens, for which the host's window must wait.
//
//   1. construction: the widget becomes a child of the window, hidden
//   2. show(): remembers who had the focus, then shows
//   3. the focus comes by Tab: the first widget that takes it, or by Shift and Tab the last
//   4. Tab behind the last widget, Shift and Tab before the first: the focus goes to the host
//   5. a dialog with this widget as its parent: the widget hides, the host's window is disabled for
//      a modal one and enabled again, once, when the dialog hides
//
// The library exports this class. A null window leaves it an ordinary top-level widget.
#pragma once

#include "shell/Exported.h"
#include "shell/NativeWindow.h"

#include <QWidget>

class VN_EXPORTED QWinWidget : public QWidget
{
    Q_OBJECT

public:
    /// @param parent the host's window, not owned
    /// @param object deletes the widget with itself, or null
    explicit QWinWidget(
        nativeWindow::Handle parent, QObject *object = nullptr, Qt::WindowFlags flags = {});
    ~QWinWidget() override;

    /// Not QWidget's, which it calls: it saves the focus first.
    void show();
    /// Shows with the top-left corner in the middle of the host's window, without any size.
    void showCentered();

    nativeWindow::Handle parentWindow() const;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void childEvent(QChildEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    bool nativeEvent(const QByteArray &eventType, void *message, long *result) override;
    bool focusNextPrevChild(bool next) override;

private:
    void init();
    void saveFocus();
    void resetFocus();

    nativeWindow::Handle parentWnd; // the host's window
    nativeWindow::Handle prevFocus; // who had the focus before Qt; null: not saved yet
    bool reenableParent; // the host's window was disabled for a modal child
};
