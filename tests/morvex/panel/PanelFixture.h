// PanelFixture: the whole panel in a container of the host's, over a project of three columns, with
// hands that work it by keys and mouse.
//
//     column 0  "jump"     a blank series of 9 images: 3 on frames 0 to 4, 6 from frame 5 on
//            1  "sky.png"  a still
//            2  "walk"     a blank series of 40 images: 1 on frames 0 to 3, 2 from frame 4 on
//
// The panel takes over the messages of the process. What stands in its log page at the end, and is
// neither a trace line of the product nor was taken by the test, fails the run.
#pragma once

#include "librarysheet/LibrarySheet.h"
#include "panel/Doc.h"
#include "panel/WinExpo.h"

#include <QWidget>

#include <memory>

class KDockPannel;
class QTextEdit;
class T_QtEdit;
class WExpoGraph;
class WinGridDataAE;

class PanelFixture : public LibrarySheet
{
public:
    /// The host with its project, the library and the document as at the start of a process.
    explicit PanelFixture(int frames = 24);
    ~PanelFixture();

    /// Makes the panel and shows its container. What the construction throws passes.
    void Open();
    /// Opens and lets the panel find the composition.
    void OpenOnCompo();
    /// An idle call of the host, and the events that are due.
    void Poll();
    /// Serves what is due, no timers.
    static void Settle();

    // The panel's parts, by what a user sees of them.

    WinGridDataAE &Grid() const;
    WExpoGraph &Graph() const;
    KDockPannel &Dock() const;
    QTextEdit &LogPage() const;
    QTimer &RefreshTimer() const;
    /// The texts of a column from the top.
    QStringList Shown(int col) const;
    QStringList Headers() const;
    QStringList EnabledTabs() const;

    // The hands.

    void PickTab(const char *title);
    /// The editor of a field; of two, the one of this number.
    T_QtEdit &Editor(const void *field, int number = 0) const;
    /// Types a number or a text over what is there, and ends with Return.
    void Type(const void *field, const QString &text);
    void Tick(const void *field, int number = 0);
    void Press(const void *field);
    /// Chooses an item of a combo box by keys.
    void Choose(const void *field, int index);
    /// What an editor shows.
    QString TextOf(const void *field, int number = 0) const;
    void ClickCell(int col, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Types over the current cell and ends with Return.
    void TypeCell(const QString &text);
    void DragCells(int fromCol, int fromRow, int toCol, int toRow);

    /// What has been written to the log page since the last call, without the sheet's trace lines.
    QStringList TakeLog();

    rostrum::Document &Document() { return host.GetDocument(); }
    const rostrum::Layer &LayerOf(int col) const { return Find(layers[col]); }
    /// For what a user does by hand in the host.
    void Change(rostrum::LayerId changed, const std::function<void(rostrum::Layer &)> &change);
    QVector<rostrum::LayerId> Selection();
    qint32 HostFrame();
    void SetHostFrame(qint32 frame);
    rostrum::ItemId AddCompo(const QByteArray &name, int frames);

    QVector<rostrum::LayerId> layers; // by column, as they are made
    AEGP_PanelFunctions1 functions{};
    std::unique_ptr<QWidget> container;
    WinExpo *panel = nullptr; // deleted with the fixture, before the container

private:
    void SendMouse(QEvent::Type type, const QPoint &pos, Qt::KeyboardModifiers modifiers);
    QPoint Middle(int col, int row) const;

    QtMessageHandler before;
};
