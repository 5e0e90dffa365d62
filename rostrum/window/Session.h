// What the widgets of the window share: the host with its open document, seen as an object that
// tells what has changed.
//
// The document is a value that many hands change: the widgets, the history, and plug-ins at any
// event of their own panels. None of them reports. So Look() compares the document with what was
// seen last and emits a signal for each thing that differs. It costs next to nothing where nothing
// has changed, since copies of a project share what is equal. It runs by itself each time control
// returns to the event loop; who needs the others to follow at once calls it.
//
// Active item       what the host answers to plug-ins: what is in front, may be none or a drawing
// Active composition  the one that viewer and timeline show: the last active item that was one.
//                   Picking a drawing in the project list thus does not empty them
//
// Frames count from 0 at the start of the composition.
#pragma once

#include "render/DrawingCache.h"
#include "suites/Host.h"

#include <QObject>

namespace rostrum {

class Session : public QObject
{
    Q_OBJECT

public:
    /// @param host is kept by reference; its messages go to MessageShown from now on
    explicit Session(Host &host, QObject *parent = nullptr);
    ~Session() override;

    Host &GetHost() { return host; }
    HostDriver &Driver() { return host.Driver(); }
    Document &GetDocument() { return host.GetDocument(); }
    const Document &GetDocument() const { return host.GetDocument(); }
    const Project &GetProject() const { return host.GetProject(); }
    /// Decoded drawings, for all who draw in the main thread.
    DrawingCache &Drawings() { return drawings; }

    /// 0 when there is none, or it is gone.
    ItemId ActiveItem() const;
    void SetActiveItem(ItemId item);
    /// 0 when there is none.
    ItemId ActiveCompositionId() const;
    /// Null when there is none. Not to be kept: any change may move it.
    const Composition *ActiveComposition() const;
    /// Puts the active composition in front, as a click on viewer or timeline does.
    void ActivateComposition() { SetActiveItem(ActiveCompositionId()); }

    // Of the active composition; without one, 0 frames and nothing selected.

    int FrameCount() const;
    Time CurrentTime() const;
    qint32 CurrentFrame() const;
    /// Held within the composition.
    void SetCurrentFrame(qint32 frame);
    /// Those that still exist, in the order in which they were selected.
    QVector<LayerId> SelectedLayers() const;
    void SelectLayers(const QVector<LayerId> &layers);

    /// Makes one history entry of all that a function changes.
    /// @param edit takes the project for writing
    template <typename Function>
    void Do(const QByteArray &name, Function edit)
    {
        GetDocument().StartGroup(name);
        edit(host.Edit(name.constData()));
        GetDocument().EndGroup();
        Look();
    }
    /// A command of the host or of a plug-in, past the plug-ins' command hooks.
    A_Err RunCommand(AEGP_Command command);
    /// Tells the user something in the message area.
    void Tell(const QString &message) { host.Tell(message); }

    /// Compares the document with what was seen last, and tells what differs.
    void Look();

signals:
    void ProjectChanged();
    /// The active item, or the active composition.
    void ActiveItemChanged();
    void SelectionChanged();
    void TimeChanged();
    void HistoryChanged();
    void MessageShown(const QString &message);

private:
    /// What was seen last.
    struct Seen
    {
        Project project;
        int replaceCount = 0;
        int historyVersion = 0;
        ItemId activeItem = 0;
        ItemId composition = 0;
        QVector<LayerId> selection;
        Time time;
    };

    void OnAboutToBlock();
    void FollowActiveItem() const;
    Seen See() const;
    void LookOnce();

    Host &host;
    DrawingCache drawings;
    mutable ItemId composition = 0; // the active one
    mutable int compositionOf = 0; // the replace count when it became so
    Seen seen;
    bool looking = false;
    bool lookAgain = false;
};

} // namespace rostrum
