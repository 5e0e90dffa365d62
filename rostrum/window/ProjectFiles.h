// The open project's file: whether something in it is not saved yet, opening, saving, and the copy
// that is saved by itself every so often.
//
// Copies    A saved project's copy lies beside its file ("scene.rostrum" has
//           "scene.autosave.rostrum"), one that was never saved in the program's data folder. The copy
//           goes when the project is saved or given up, so that one that is found tells of a session
//           that ended otherwise.
// Locks     While a program has a project open, a hidden lock file lies beside it
//           (".scene.rostrum.lock"); it tells the program, so that one that is gone locks nothing. A
//           second program that opens the project has a lock of another name
//           (".scene.rostrum-1a2b3c4d.lock"), so that a third one sees it when the first has gone. It
//           gives its copy a name and a lock of its own, as that of a project without a file has.
//           What a living program has locked is never taken for left over, nor taken from it.
//
// All files are written whole or not at all.
#pragma once

#include "window/Session.h"

#include <QLockFile>

#include <memory>
#include <thread>

namespace rostrum {

constexpr char kProjectSuffix[] = ".rostrum";

class ProjectFiles : public QObject
{
    Q_OBJECT

public:
    /// @param dataFolder where copies of projects without a file are kept
    ProjectFiles(Session &session, const QString &dataFolder, QObject *parent = nullptr);
    ~ProjectFiles() override;

    /// The project differs from its file, or from an empty one.
    bool IsDirty() const { return session.GetProject() != saved; }
    /// The file's name, "Untitled" without one.
    QString Title() const;

    /// Puts an empty project in place. What is not saved is given up, here and in Open.
    void New();
    /// @return what went wrong; the open project then stays
    QString Open(const QString &path);
    /// @return what went wrong; the file and the path of the project then stay as they were
    QString Save(const QString &path);

    /// Where this project's copy lies.
    QString AutosavePath() const;
    /// Begins to save a copy, if there is something that neither the file nor the last copy holds.
    /// Another thread writes it; AutosaveFailed tells what went wrong.
    void StartAutosave();
    /// The same, to its end. @return what went wrong
    QString Autosave();
    /// Gives up what is not saved, at the end of the session.
    void Discard();

    /// Who has a project open besides this program, as a person may be told it; empty for nobody.
    static QString OpenElsewhere(const QString &path);
    /// The newest copy of a project file that is newer than the file and that no living program
    /// writes, empty when there is none. The project is not the open one.
    static QString CopyOf(const QString &path);
    /// Copies of projects without a file, left by sessions that did not end by themselves.
    QStringList LeftCopies() const;
    /// Opens a copy in place of the file, which stays as it is until the project is saved. A copy that
    /// another program holds stays that one's.
    /// @param path the project's file, empty when it has none
    QString OpenCopy(const QString &copy, const QString &path);
    /// Removes a copy that is not wanted.
    static void RemoveCopy(const QString &copy);

signals:
    /// IsDirty or Title may have changed.
    void StateChanged();
    void AutosaveFailed(const QString &error);
    /// From the thread that wrote it.
    void CopyWritten();

private:
    void Take(const Project &project, const QString &path, const Project &asSaved);
    void LockProject(const QString &path);
    void RemoveAutosave();
    QString EndAutosave();
    void OnCopyWritten();
    bool TakeOwnCopy(const QString &copy);
    bool TakeCopy(const QString &copy, const QString &path);
    QString NewOwnCopy() const;

    Session &session;
    QString dataFolder;
    Project saved; // as in the file
    Project copied; // as in the copy
    bool hasCopy = false;
    QString ownCopy; // a copy with a name of its own; empty while there is none
    std::unique_ptr<QLockFile> ownLock; // of that copy
    std::unique_ptr<QLockFile> projectLock;
    QString lockedPath; // of the project
    bool isOpenElsewhere = false;
    std::thread writer; // of a copy
    Project beingCopied;
    QString writerError; // the writer's, until it has ended
};

} // namespace rostrum
