// What the parts of the timeline share: the rows, the scale, how far it is scrolled, what is
// unfolded, which keys are selected, and the change that a hand is about to make.
//
// A drag changes nothing in the document until the hand lets go: meanwhile the parts show a copy of
// the project with the change made, a new one at each move. So a drag is one history entry, an undo
// or a plug-in's edit during it meets the document as it is, and what they leave of the dragged
// layers takes the change in the end.
#pragma once

#include "Session.h"
#include "TimeScale.h"
#include "TimelineEdits.h"
#include "TimelineRows.h"

#include <QObject>

#include <functional>
#include <optional>

namespace rostrum {

/// What a drag or an editor belongs to: ids mean nothing in another project.
struct BoardPlace
{
    ItemId composition = 0;
    int project = -1; // how many projects were opened before
};
inline bool operator==(const BoardPlace &a, const BoardPlace &b)
{
    return a.composition == b.composition && a.project == b.project;
}
inline bool operator!=(const BoardPlace &a, const BoardPlace &b)
{
    return !(a == b);
}

class TimelineBoard : public QObject
{
    Q_OBJECT

public:
    using Edit = std::function<void(Project &)>;

    explicit TimelineBoard(Session &session, QObject *parent = nullptr);

    Session &GetSession() { return session; }
    const Session &GetSession() const { return session; }
    ItemId Comp() const { return session.ActiveCompositionId(); }
    BoardPlace Place() const { return { Comp(), session.GetDocument().ReplaceCount() }; }
    /// The project as it is shown: with the change under way, if there is one.
    const Project &Shown() const { return preview ? *preview : session.GetProject(); }
    /// As it is shown; null without one.
    const Composition *ShownComp() const { return Shown().FindComposition(Comp()); }
    /// As it is shown, by its row. Null when the rows are older than the layers.
    const Layer *LayerOf(const TimelineRow &row) const;
    const Stream *StreamOf(const TimelineRow &row) const;
    /// Of the active composition; that of a new one when there is none.
    Rate GetRate() const;

    const TimelineRows &Rows() const { return rows; }
    const TimeScale &Scale() const { return scale; }
    void SetScale(const TimeScale &newScale);
    int ScrollY() const { return scrollY; } // pixels
    void SetScrollY(int pixels);

    bool IsUnfolded(LayerId layer) const { return unfolded.contains(layer); }
    void ToggleFold(LayerId layer);

    bool IsSelected(LayerId layer) const { return selected.contains(layer); }
    /// As a click does it: alone; with Ctrl in or out; with Shift all from the last one clicked on.
    void SelectLayer(LayerId layer, Qt::KeyboardModifiers modifiers);
    /// Keeps a selection that the layer is in, else selects it alone.
    void SelectForDrag(LayerId layer);
    void SelectNone();

    const KeyIds &Keys() const { return keys; }
    bool IsSelected(const KeyId &key) const { return keys.count(key) > 0; }
    void SelectKeys(const KeyIds &newKeys);
    /// As a click does it: alone; with Ctrl or Shift in or out.
    void SelectKey(const KeyId &key, Qt::KeyboardModifiers modifiers);

    /// Shows what an edit would do. It may be called any number of times, on any later state of the
    /// project.
    void Preview(const Edit &edit);
    bool IsPreviewing() const { return preview.has_value(); }
    void Cancel();
    /// Ends the preview and makes the edit: one history entry, none when it changes nothing.
    void Do(const QByteArray &name, const Edit &edit);

signals:
    /// Rows, bars, keys: all is to be painted anew.
    void SigChanged();
    /// Scrolled or zoomed.
    void SigScrolled();
    void SigPreview(const rostrum::Project &project);
    void SigPreviewEnd();

private:
    void OnProjectChanged();
    void OnCompositionChanged();
    void OnSelectionChanged();
    void Rebuild();
    void DropGoneKeys();

    Session &session;
    TimelineRows rows;
    TimeScale scale;
    int scrollY = 0;
    QSet<LayerId> unfolded;
    QSet<LayerId> selected;
    LayerId anchor = 0; // of a selection by Shift
    KeyIds keys;
    std::optional<Project> preview;
    Edit previewEdit;
    BoardPlace shown; // that the ids above belong to
};

} // namespace rostrum
