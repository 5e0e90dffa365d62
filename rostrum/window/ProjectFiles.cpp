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
constexpr char kLockSuffix[] = ".lock";

QString CopyBeside(const QString &path)
{
    const QFileInfo file(path);
    return file.absoluteDir().filePath(file.completeBaseName() + QLatin1String(kCopySuffix));
}

std::unique_ptr<QLockFile> LockOf(const QString &copy)
{
    auto lock = std::make_unique<QLockFile>(copy + QLatin1String(kLockSuffix));
    lock->setStaleLockTime(
        0); // a program may run for days; one that is gone is noticed all the same
    return lock;
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
}

ProjectFiles::~ProjectFiles() = default;

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
    session.Look();
    emit StateChanged();
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
    RemoveCopy(CopyBeside(path)); // of a session before, which this file takes over
    saved = session.GetProject();
    emit StateChanged();
    return {};
}

/// Held by a lock, so that no other program takes it for left over.
QString ProjectFiles::NewUntitledCopy()
{
    QDir().mkpath(dataFolder);
    const QString id = QUuid::createUuid().toString(QUuid::Id128).left(8);
    const QString path
        = QDir(dataFolder).filePath(QStringLiteral("untitled-") + id + QLatin1String(kCopySuffix));
    lock = LockOf(path);
    lock->tryLock(); // unchecked: where there is no lock, writing the copy tells why
    return path;
}

QString ProjectFiles::AutosavePath() const
{
    const QString &path = session.GetDocument().path;
    return path.isEmpty() ? untitledCopy : CopyBeside(path);
}

QString ProjectFiles::Autosave()
{
    const Project &project = session.GetProject();
    if (!IsDirty() || (hasCopy && project == copied) || session.GetDocument().IsGroupOpen())
        return {};
    if (session.GetDocument().path.isEmpty() && untitledCopy.isEmpty())
        untitledCopy = NewUntitledCopy();
    QString error = SaveProject(project, AutosavePath());
    if (error.isEmpty()) {
        copied = project;
        hasCopy = true;
    }
    return error;
}

void ProjectFiles::RemoveAutosave()
{
    if (hasCopy)
        RemoveCopy(AutosavePath());
    hasCopy = false;
    copied = Project();
    untitledCopy.clear();
    lock.reset();
}

QString ProjectFiles::CopyOf(const QString &path)
{
    const QFileInfo copy(CopyBeside(path));
    const QFileInfo file(path);
    const bool isNewer = !file.exists() || copy.lastModified() >= file.lastModified();
    return copy.isFile() && isNewer ? copy.filePath() : QString();
}

QStringList ProjectFiles::LeftCopies() const
{
    QStringList copies;
    const QDir folder(dataFolder);
    const QStringList names = folder.entryList(
        { QStringLiteral("untitled-*") + QLatin1String(kCopySuffix) }, QDir::Files, QDir::Time);
    for (const QString &name : names) {
        const QString path = folder.filePath(name);
        if (path != untitledCopy && LockOf(path)->tryLock())
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
    copied = loaded.project;
    hasCopy = true; // it stays until the project is saved
    if (path.isEmpty()) {
        untitledCopy = copy;
        lock = LockOf(copy);
        lock->tryLock(); // unchecked: without it, the copy is offered to the next program, too
    }
    return {};
}

void ProjectFiles::RemoveCopy(const QString &copy)
{
    QFile::remove(copy); // unchecked: one that stays is offered again
}

} // namespace rostrum
