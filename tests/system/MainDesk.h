// MainDesk: the program's window with the plug-in in it, worked by mouse and keyboard as a
// person works it. Dialogs are answered as they come; what is to be typed into one is said before.
#pragma once

#include "suites/Host.h"
#include "window/MainWindow.h"

#include <QPointer>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>

#include <deque>
#include <functional>
#include <memory>

namespace testing {

class MainDesk : public QObject
{
public:
    static constexpr int kPatience = 60000; // ms, on a busy machine

    /// The window as it comes up for somebody who starts it the first time.
    MainDesk();
    ~MainDesk() override;

    rostrum::Host host;
    rostrum::MainWindow &Window() { return *window; }
    rostrum::Session &Session() { return window->GetSession(); }
    QString DataFolder() const { return own.path(); }

    /// Opens a menu and clicks the entry that begins so. What it opens has been answered when this
    /// returns. @return false when there is no such entry, or it is grey
    bool Choose(const char *menu, const QString &entry);
    /// What to do with the dialog that comes next; it has to close it.
    void WhenAsked(std::function<void(QWidget &dialog)> answer);
    /// Pastes a path into a file dialog and accepts it.
    void WhenAskedForFile(const QString &path);
    /// Clicks the button that a dialog is accepted by.
    static void Accept(QWidget &dialog);
    /// Every dialog that was foreseen has come, and no other.
    bool AllAsked() const { return answers.empty() && surprises.isEmpty(); }
    QStringList Surprises() const { return surprises; }

    static void Click(QWidget *widget, const QPoint &pos, Qt::KeyboardModifiers modifiers = {});
    static void Click(QWidget *widget) { Click(widget, widget->rect().center()); }
    /// Goes to the widget that has the keyboard.
    static void Key(int key, Qt::KeyboardModifiers modifiers = {});
    static void Type(const QString &text);

    // The panel; null while it is not there.

    QTableWidget *Sheet() const;
    QWidget *InPanel(const char *className) const;
    /// The input of the dashboard's editor with this label, its tab brought to front.
    template <class Input>
    Input *InputOf(const char *label)
    {
        QWidget *editor = Editor(label);
        return editor ? editor->findChild<Input *>() : nullptr;
    }
    void ClickCell(int col, int row);
    void DragCells(int col, int fromRow, int toRow);
    /// A number into the current cell, ended by Return.
    void TypeCell(int number);
    QStringList Shown(int col) const;

    /// Saves a picture of the window, where pictures are wanted.
    void Picture(const QString &name);
    QString pictures; // folder; empty for none

    /// Closes the window by its own command. @return whether it went
    bool Quit();

private:
    QWidget *Editor(const char *label);
    QPoint CellMiddle(int col, int row) const;
    void Answer();

    QTemporaryDir own; // what the program keeps for its user
    std::unique_ptr<rostrum::MainWindow> window; // ends before the host
    QTimer watch;
    std::deque<std::function<void(QWidget &)>> answers;
    QPointer<QWidget> answered;
    QStringList surprises;
};

} // namespace testing
