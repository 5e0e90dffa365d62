// The Edit menu: the history by name, and what the widget with the focus makes of cut, copy, paste
// and delete.
//
// Undo and redo run as commands of the host, so that plug-ins see them come.
#pragma once

#include "window/Session.h"

#include <QKeySequence>

QT_FORWARD_DECLARE_CLASS(QAction)
QT_FORWARD_DECLARE_CLASS(QMenu)

namespace rostrum {

class EditCommands : public QObject
{
    Q_OBJECT

public:
    EditCommands(Session &session, QObject *parent);

    void Fill(QMenu *menu);

signals:
    void HistoryWanted();

private:
    void AddFocusEntry(QMenu *menu, const QString &text, QKeySequence::StandardKey key);
    void FollowHistory();

    Session &session;
    QAction *undo = nullptr;
    QAction *redo = nullptr;
};

/// Does what the widget with the focus does at a key: by an action of it or of a widget around it
/// that has the key, else by the key itself. @return false without any such widget
bool RunFocusKey(QKeySequence::StandardKey key);

} // namespace rostrum
