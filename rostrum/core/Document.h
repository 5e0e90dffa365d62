// The open project with its history, and what the user looks at.
#pragma once

#include "core/Project.h"

#include <QMap>
#include <QVector>

namespace rostrum {

/// What is shown and picked. It is no part of the project: it leaves no history entry and stays as
/// it is when a change is undone. An id in it may have become stale; who reads it looks it up.
struct View
{
    ItemId activeItem = 0;
    QMap<ItemId, Time> currentTimes; // of compositions; 0 where there is none
    QMap<ItemId, QVector<LayerId>> selections; // of compositions
};

/// The project and its undo history.
///
/// Changes are made through Edit. Inside a group they form one history entry, named by the
/// outermost group. Outside any group, all changes up to the next CloseLooseEnds form one entry,
/// named after the first. A group that changes nothing leaves no entry and keeps what can be
/// redone.
class Document
{
public:
    const Project &GetProject() const { return project; }
    /// The project for writing. @param what names the change where no group is open
    Project &Edit(const QByteArray &what);
    /// Puts another project in place and forgets the history, an open group, the view and the path.
    /// The ids of the project before may name other things from now on.
    void Replace(const Project &project);
    /// How often that was done. An id of one project means nothing in the next.
    int ReplaceCount() const { return replaceCount; }

    void StartGroup(const QByteArray &name);
    /// @return false when no group is open; nothing changes then
    bool EndGroup();
    bool IsGroupOpen() const { return depth > 0; }
    /// To be called when control returns to the event loop: closes what is still open.
    /// @return the name of a group that was left open, empty when there was none
    QByteArray CloseLooseEnds();

    /// @return false when there is nothing to undo, or a group is open
    bool Undo();
    bool Redo();
    /// The names of the entries, the latest last.
    QVector<QByteArray> UndoNames() const;
    QVector<QByteArray> RedoNames() const;
    /// Changes whenever the two lists above do, so that who shows them need not compare them.
    int HistoryVersion() const { return historyVersion; }

    View view;

    /// The file of the project, empty when it was never saved.
    QString path;

private:
    struct Entry
    {
        QByteArray name;
        Project other; // the project on the other side of the change
    };

    void CloseChange();
    void Exchange(QVector<Entry> &from, QVector<Entry> &to);

    Project project;
    Project before; // where the open change began
    QByteArray changeName;
    bool changeOpen = false; // by a group, or by a change outside any
    int depth = 0; // groups open
    int replaceCount = 0;
    int historyVersion = 0;
    QVector<Entry> undo;
    QVector<Entry> redo;
};

} // namespace rostrum
