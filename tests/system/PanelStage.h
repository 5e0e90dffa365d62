// PanelStage: the plug-in in a host, its panel open in a window, worked by key and mouse as a user
// works it. Nothing is known of the panel: its widgets are found by the names of their classes and
// their texts, and judged by what they show and by what stands in the host.
//
// The plug-in is entered once in a process and its panel lives as long as the process, so a program
// makes one stage and opens a project of its own for each test.
//
//   composition  "scene 7", 25 frames a second, 40 frames, active
//   columns      "walk" and "run", series of 20 drawings; "sky", a still; "cel", a series
#pragma once

#include "suites/Host.h"
#include "testhost/HostTestMain.h"
#include "testhost/SheetFixture.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <memory>

namespace testing {

class PanelStage : public QObject
{
public:
    static constexpr char kPanelName[] = "morvex";
    static constexpr int kFrames = 40;
    static constexpr int kWalk = 0, kRun = 1, kSky = 2, kCel = 3; // columns

    /// Enters the plug-in and opens its panel over the project above.
    PanelStage();
    /// Ends the plug-in's life as the program does.
    ~PanelStage() override;

    // The host's side.

    rostrum::Host host;
    rostrum::ItemId composition = 0;
    rostrum::ItemId footage = 0; // of the column "walk"
    QVector<rostrum::LayerId> layers; // by column
    /// Puts the project above in place, nothing selected, at frame 0, and lets the panel find it
    /// with both sync options off.
    void OpenProject();
    /// The project alone, as the command "Open Project" does it here.
    void ReplaceProject();
    rostrum::Document &Document() { return host.GetDocument(); }
    /// The project, to change it as the user does by hand in the host. CloseChange makes the change
    /// a history entry.
    rostrum::Project &Edit() { return host.GetDocument().Edit("by hand"); }
    void CloseChange() { host.GetDocument().CloseLooseEnds(); }
    const rostrum::Layer &LayerAt(int col) const;
    /// A component of a layer's stream at a frame.
    double StreamAt(int col, int stream, int frame, int component = 0) const;
    /// A parameter of an effect that is applied to a layer; -1 where there is none.
    double EffectAt(int col, const QByteArray &effect, int param) const;
    /// The images that a series column shows, by frame.
    QVector<int> Images(int col) const;
    /// What the sheet shows of a series column that the host shows in this way: " ~ " repeats.
    QStringList SheetOf(int col) const;
    int HostFrame();
    void SetHostFrame(int frame);
    QVector<int> HostSelection(); // by column
    /// Entries of the history since the project was opened.
    QVector<QByteArray> UndoNames() { return host.GetDocument().UndoNames(); }

    // The program's side.

    /// One idle call, then what comes between two of them: events are served, loose ends closed.
    void Idle();
    void Settle();
    /// Lets the panel's own timers run out.
    void WaitForTimers();
    A_Err Run(AEGP_Command command);
    bool ChooseFlyout(const QByteArray &text);

    // The panel, by class name.

    QWidget *Container() const { return container.get(); }
    QWidget *Panel() const;
    bool IsActive() const; // has the keyboard, or its container has
    QTableWidget *Sheet() const;
    QWidget *Graph() const { return Find("WinGraphDataAE"); }
    QTabWidget *Dock() const;
    /// @return null when there is none, or more than one
    QWidget *Find(const char *className) const;

    // The hands.

    // The mouse comes in through the window, as from the window system: so the application knows which
    // buttons are held.

    void Press(QWidget *widget, const QPoint &pos, Qt::MouseButton button = Qt::LeftButton,
        Qt::KeyboardModifiers modifiers = {});
    void Move(QWidget *widget, const QPoint &pos);
    void Release(QWidget *widget, const QPoint &pos, Qt::MouseButton button = Qt::LeftButton,
        Qt::KeyboardModifiers modifiers = {});
    void Click(QWidget *widget, const QPoint &pos, Qt::MouseButton button = Qt::LeftButton,
        Qt::KeyboardModifiers modifiers = {});
    void Click(QWidget *widget) { Click(widget, widget->rect().center()); }
    /// Goes to the widget that has the keyboard.
    void Key(int key, Qt::KeyboardModifiers modifiers = {});
    void Type(const QString &text);

    void ClickCell(int col, int row, Qt::KeyboardModifiers modifiers = {});
    QPoint CellMiddle(int col, int row) const;
    /// Types over the current cell and ends with Return.
    void TypeCell(const QString &text);
    /// A row of columns from the top of one to the bottom of the other.
    void DragCells(int fromCol, int fromRow, int toCol, int toRow);
    /// Of a layer's box, in the graph. Its view is as it was at the start, where no test has moved it.
    QPoint BoxMiddle(int col, int depth) const { return { 224 + col * 48, 212 - depth * 36 }; }
    bool ClickTab(const QString &title);

    // The dashboard's inputs, by their labels.

    /// @param number the editor among those of one label @return null when there is none
    template <class Input>
    Input *Editor(const char *label, int number = 0) const;
    /// Types a value into a number's editor and ends with Return.
    void SetNumber(const char *label, int value);
    int Number(const char *label) const { return Editor<QSpinBox>(label)->value(); }
    void Tick(const char *label, bool on, int number = 0);
    bool IsTicked(const char *label, int number = 0) const;
    void PickEntry(const char *label, const QString &entry);
    void SetText(const char *label, const QString &text);
    void PressButton(const char *label);

    // The eyes.

    QStringList Shown(int col) const;
    int CurrentCol() const { return Sheet()->currentColumn(); }
    int CurrentRow() const { return Sheet()->currentRow(); }
    /// "Layer" first.
    QVector<bool> TabsEnabled() const;
    QString Title() const { return Panel()->windowTitle(); }
    /// What Qt's messages have become on the log page since the last call.
    QStringList TakeLog();
    /// "Warning: text" for each message box since the last call; each was answered with Ok.
    QStringList TakeBoxes();
    /// Open in the host beyond what is held for the panel's life.
    QByteArrayList Open() const { return host.Account(); }

private:
    void MakeProject(rostrum::Project &project);
    void GiveWindows();
    /// At the start the graph is too low for its boxes to be seen.
    void GiveGraphRoom();
    void AnswerBox();
    QWidget *EditorOf(const char *label, int number) const;
    void Reach(QWidget *input);

    std::unique_ptr<QWidget> container; // ends before the host
    QTimer answers;
    QStringList boxes;
};

template <class Input>
Input *PanelStage::Editor(const char *label, int number) const
{
    QWidget *editor = EditorOf(label, number);
    return editor ? editor->findChild<Input *>() : nullptr;
}

} // namespace testing
