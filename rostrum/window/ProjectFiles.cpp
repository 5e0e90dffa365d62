#include "ProjectFiles.h"

#include "core/ProjectFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

namespace rostrum {
namespace {

constexpr char kCopySuffix[] = ".autosave.rostrum";
constexpr char kOwnCopyMark[] = ".autosave-"; // then a name of its own
constexpr char kLockSuffix[] = ".lock";

QString CopyBeside(const QString &path)
{
    const QFileInfo file(path);
    return file.absoluteDir().filePath(file.completeBaseName() + QLatin1String(kCopySuffix));
}

QString ProjectLockPath(const QString &path)
{
    const QFileInfo file(path);
    return file.absoluteDir().filePath(
        QLatin1Char('.') + file.fileName() + QLatin1String(kLockSuffix));
}

/// Of a program that is not the first on the project.
QString OtherLockPath(const QString &path, const QString &id)
{
    const QFileInfo file(path);
    return file.absoluteDir().filePath(
        QLatin1Char('.') + file.fileName() + QLatin1Char('-') + id + QLatin1String(kLockSuffix));
}

QString NewId()
{
    return QUuid::createUuid().toString(QUuid::Id128).left(8);
}

QString CopyLockPath(const QString &copy)
{
    return copy + QLatin1String(kLockSuffix);
}

std::unique_ptr<QLockFile> LockAt(const QString &path)
{
    auto lock = std::make_unique<QLockFile>(path);
    // A program may run for days; one that is gone is noticed all the same.
    lock->setStaleLockTime(0);
    return lock;
}

/// Takes a lock. Where none can be made nobody holds one: in a folder that is not there Windows has not
/// even an error that Qt would know.
/// @return false when a living program holds it
bool TakeLock(const QString &path, std::unique_ptr<QLockFile> *lock)
{
    *lock = LockAt(path);
    return !QFileInfo(path).dir().exists() || (*lock)->tryLock()
        || (*lock)->error() != QLockFile::LockFailedError;
}

bool IsFree(const QString &path)
{
    std::unique_ptr<QLockFile> lock;
    return TakeLock(path, &lock);
}

/// All locks that programs have on the project, that of the first one first.
QStringList ProjectLocks(const QString &path)
{
    QStringList locks{ ProjectLockPath(path) };
    const QDir folder = QFileInfo(path).absoluteDir();
    const QString stem = QFileInfo(OtherLockPath(path, {})).completeBaseName();
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden)) {
        if (name.startsWith(stem) && name.endsWith(QLatin1String(kLockSuffix)))
            locks << folder.filePath(name);
    }
    return locks;
}

/// Beside the project file, those that no living program writes.
QStringList CopiesBeside(const QString &path)
{
    QStringList copies;
    const QString plain = CopyBeside(path);
    if (QFileInfo(plain).isFile() && IsFree(ProjectLockPath(path)))
        copies << plain;
    const QString stem = QFileInfo(path).completeBaseName() + QLatin1String(kOwnCopyMark);
    const QDir folder = QFileInfo(path).absoluteDir();
    for (const QString &name : folder.entryList(QDir::Files)) {
        const bool isOwn = name.startsWith(stem) && name.endsWith(QLatin1String(kProjectSuffix));
        if (isOwn && IsFree(CopyLockPath(folder.filePath(name))))
            copies << folder.filePath(name);
    }
    return copies;
}

/// The composition to begin with: the first in the list.
ItemId FirstComposition(const Project &project)
{
    ItemId item = project.RootFolder();
    while (item && !project.FindComposition(item))
        item = project.NextInWalk(item);
    return item;
}

} // namespace

ProjectFiles::ProjectFiles(Session &session, const QString &dataFolder, QObject *parent)
    : QObject(parent), session(session), dataFolder(dataFolder), saved(session.GetProject())
{
    connect(&session, &Session::ProjectChanged, this, &ProjectFiles::StateChanged);
    connect(
        this, &ProjectFiles::CopyWritten, this, &ProjectFiles::OnCopyWritten, Qt::QueuedConnection);
}

ProjectFiles::~ProjectFiles()
{
    EndAutosave(); // unchecked: nobody is left to be told
}

QString ProjectFiles::Title() const
{
    const QString &path = session.GetDocument().path;
    return path.isEmpty() ? QStringLiteral("Untitled") : QFileInfo(path).fileName();
}

void ProjectFiles::Take(const Project &project, const QString &path, const Project &asSaved)
{
    Document &document = session.GetDocument();
    document.Replace(project);
    document.path = path;
    document.view.activeItem = FirstComposition(project);
    saved = asSaved;
    LockProject(path);
    session.Look();
    emit StateChanged();
}

void ProjectFiles::LockProject(const QString &path)
{
    if (path == lockedPath)
        return;
    lockedPath = path;
    projectLock.reset();
    isOpenElsewhere = false;
    if (path.isEmpty())
        return;
    isOpenElsewhere = !TakeLock(ProjectLockPath(path), &projectLock);
    if (isOpenElsewhere)
        TakeLock(
            OtherLockPath(path, NewId()), &projectLock); // unchecked: nobody else takes this name
}

QString ProjectFiles::OpenElsewhere(const QString &path)
{
    for (const QString &lockPath : ProjectLocks(path)) {
        if (IsFree(lockPath))
            continue;
        qint64 process = 0;
        QString machine, program;
        if (!LockAt(lockPath)->getLockInfo(&process, &machine, &program))
            return QStringLiteral("another program");
        return QStringLiteral("%1 on %2, process %3").arg(program, machine).arg(process);
    }
    return {};
}

void ProjectFiles::New()
{
    RemoveAutosave();
    Take(Project(), QString(), Project());
}

QString ProjectFiles::Open(const QString &path)
{
    const LoadedProject loaded = LoadProject(path);
    if (!loaded.Ok())
        return loaded.error;
    RemoveAutosave();
    Take(loaded.project, QFileInfo(path).absoluteFilePath(), loaded.project);
    return {};
}

QString ProjectFiles::Save(const QString &path)
{
    QString error = SaveProject(session.GetProject(), path);
    if (!error.isEmpty())
        return error;
    RemoveAutosave(); // of the path before
    session.GetDocument().path = QFileInfo(path).absoluteFilePath();
    LockProject(session.GetDocument().path);
    if (!isOpenElsewhere)
        RemoveCopy(CopyBeside(path)); // of a session before, which this file takes over
    saved = session.GetProject();
    emit StateChanged();
    return {};
}

// Copies.

QString ProjectFiles::NewOwnCopy() const
{
    const QString id = NewId();
    const QString &path = session.GetDocument().path;
    if (!path.isEmpty()) {
        const QFileInfo file(path);
        return file.absoluteDir().filePath(file.completeBaseName() + QLatin1String(kOwnCopyMark)
            + id + QLatin1String(kProjectSuffix));
    }
    QDir().mkpath(dataFolder);
    return QDir(dataFolder).filePath(QStringLiteral("untitled-") + id + QLatin1String(kCopySuffix));
}

/// Held by a lock, so that no other program takes it for left over. Where no lock can be made, writing
/// the copy tells why. @return false when another program holds it
bool ProjectFiles::TakeOwnCopy(const QString &copy)
{
    std::unique_ptr<QLockFile> lock;
    if (!TakeLock(CopyLockPath(copy), &lock))
        return false;
    ownCopy = copy;
    ownLock = std::move(lock);
    return true;
}

/// Goes on with a copy that was left. @return false when another program holds it
bool ProjectFiles::TakeCopy(const QString &copy, const QString &path)
{
    const bool isPlain = !path.isEmpty() && copy == CopyBeside(path);
    return isPlain ? !isOpenElsewhere : TakeOwnCopy(copy);
}

QString ProjectFiles::AutosavePath() const
{
    const QString &path = session.GetDocument().path;
    return !ownCopy.isEmpty() || path.isEmpty() ? ownCopy : CopyBeside(path);
}

void ProjectFiles::StartAutosave()
{
    const Project &project = session.GetProject();
    const bool isKnown = hasCopy && project == copied;
    if (writer.joinable() || !IsDirty() || isKnown || session.GetDocument().IsGroupOpen())
        return;
    if (ownCopy.isEmpty() && (isOpenElsewhere || session.GetDocument().path.isEmpty()))
        TakeOwnCopy(NewOwnCopy()); // unchecked: the name is new
    beingCopied = project;
    writer = std::thread([this, project, path = AutosavePath()] {
        writerError = SaveProject(project, path);
        emit CopyWritten();
    });
}

/// Waits for a copy that is being written. @return what went wrong with it
QString ProjectFiles::EndAutosave()
{
    if (!writer.joinable())
        return {};
    writer.join();
    if (writerError.isEmpty()) {
        copied = beingCopied;
        hasCopy = true;
    }
    beingCopied = Project();
    return writerError;
}

void ProjectFiles::OnCopyWritten()
{
    const QString error = EndAutosave();
    if (!error.isEmpty())
        emit AutosaveFailed(error);
}

QString ProjectFiles::Autosave()
{
    StartAutosave();
    return EndAutosave();
}

void ProjectFiles::RemoveAutosave()
{
    EndAutosave(); // unchecked: it goes
    if (hasCopy)
        RemoveCopy(AutosavePath());
    hasCopy = false;
    copied = Project();
    ownCopy.clear();
    ownLock.reset();
}

void ProjectFiles::Discard()
{
    RemoveAutosave();
    LockProject({});
}

QString ProjectFiles::CopyOf(const QString &path)
{
    const QFileInfo file(path);
    QFileInfo newest;
    for (const QString &each : CopiesBeside(path)) {
        const QFileInfo copy(each);
        const bool isNewer = !file.exists() || copy.lastModified() >= file.lastModified();
        if (isNewer && (newest.filePath().isEmpty() || newest.lastModified() < copy.lastModified()))
            newest = copy;
    }
    return newest.filePath();
}

QStringList ProjectFiles::LeftCopies() const
{
    QStringList copies;
    const QDir folder(dataFolder);
    const QStringList names = folder.entryList(
        { QStringLiteral("untitled-*") + QLatin1String(kCopySuffix) }, QDir::Files, QDir::Time);
    for (const QString &name : names) {
        const QString path = folder.filePath(name);
        if (path != ownCopy && IsFree(CopyLockPath(path)))
            copies << path;
    }
    return copies;
}

QString ProjectFiles::OpenCopy(const QString &copy, const QString &path)
{
    const LoadedProject loaded = LoadProject(copy);
    if (!loaded.Ok())
        return loaded.error;
    const LoadedProject file = path.isEmpty() ? LoadedProject() : LoadProject(path);
    RemoveAutosave();
    const QString absolute = path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath();
    Take(loaded.project, absolute, file.project);
    hasCopy = TakeCopy(copy, path); // it stays until the project is saved
    if (hasCopy)
        copied = loaded.project;
    return {};
}

void ProjectFiles::RemoveCopy(const QString &copy)
{
    QFile::remove(copy); // unchecked: one that stays is offered again
}

} // namespace rostrum
