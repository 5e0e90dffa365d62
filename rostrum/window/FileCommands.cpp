#include "FileCommands.h"

#include "window/Commands.h"
#include "window/ProjectTree.h"
#include "window/RecoveryQuestions.h"
#include "window/RenderDialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

namespace rostrum {
namespace {

constexpr int kMostRecent = 10;
constexpr char kRecentKey[] = "recentProjects";

QString ProjectFilter()
{
    return QStringLiteral("Rostrum projects (*%1);;All files (*)")
        .arg(QLatin1String(kProjectSuffix));
}

QString ShortName(const QString &path)
{
    return QFileInfo(path).fileName();
}

} // namespace

FileCommands::FileCommands(Session &session, ProjectFiles &files, Importer &importer,
    ProjectTree &tree, QSettings &settings, QWidget *window)
    : QObject(window)
    , session(session)
    , files(files)
    , importer(importer)
    , tree(tree)
    , settings(settings)
    , window(window)
{
    session.Driver().openProject = [this] { return OpenPending(); };
    session.Driver().saveProject = [this] { return SavePending(); };
}

FileCommands::~FileCommands()
{
    session.Driver().openProject = nullptr;
    session.Driver().saveProject = nullptr;
}

void FileCommands::Fill(QMenu *menu)
{
    const QKeySequence newKey(Qt::CTRL | Qt::ALT | Qt::Key_N);
    AddEntry(menu, tr("&New Project"), newKey, this, &FileCommands::OnNew);
    AddEntry(menu, tr("&Open..."), QKeySequence::Open, this, &FileCommands::OnOpen);
    recent = menu->addMenu(tr("Open &Recent"));
    recent->setObjectName(QStringLiteral("recent"));
    connect(recent, &QMenu::aboutToShow, this, &FileCommands::FillRecent);
    FillRecent();
    menu->addSeparator();
    AddEntry(menu, tr("&Save"), QKeySequence::Save, this, &FileCommands::OnSave);
    const QKeySequence saveAsKey(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    AddEntry(menu, tr("Save &As..."), saveAsKey, this, &FileCommands::OnSaveAs);
    QAction *revert = AddEntry(menu, tr("Re&vert to Saved"), this, &FileCommands::OnRevert);
    GreyUnless(
        menu, revert, [this] { return files.IsDirty() && !session.GetDocument().path.isEmpty(); });
    menu->addSeparator();
    const auto pick = [this](const QVector<ItemId> &items) {
        if (!items.isEmpty())
            tree.Pick(items);
    };
    const QKeySequence importKey = CtrlKey(Qt::Key_I);
    AddEntry(menu, tr("&Import Drawings..."), importKey, this,
        [this, pick] { pick(importer.AskAndImport(/*stills=*/false, tree.TargetFolder())); });
    AddEntry(menu, tr("Import S&tills..."), this,
        [this, pick] { pick(importer.AskAndImport(/*stills=*/true, tree.TargetFolder())); });
    AddEntry(menu, tr("Import &Folder..."), this,
        [this, pick] { pick(importer.AskForFolderAndImport(tree.TargetFolder())); });
    menu->addSeparator();
    const QKeySequence renderKey = CtrlKey(Qt::Key_M);
    AddEntry(menu, tr("Render Fra&mes..."), renderKey, this, &FileCommands::OnRender);
    QAction *movie = AddEntry(menu, tr("Render Mo&vie..."), this, &FileCommands::OnRenderMovie);
    GreyUnless(menu, movie, [movie] {
        const bool isThere = !FindEncoder().isEmpty();
        movie->setText(
            isThere ? tr("Render Mo&vie...") : tr("Render Mo&vie... (ffmpeg is not installed)"));
        return isThere;
    });
    menu->addSeparator();
    AddEntry(menu, tr("&Quit"), CtrlKey(Qt::Key_Q), this, &FileCommands::QuitWanted);
}

/// @return false
bool FileCommands::Warn(const QString &error) const
{
    QMessageBox::warning(window, QStringLiteral("Rostrum"), error);
    return false;
}

// Opening.

bool FileCommands::MayGiveUp()
{
    if (!files.IsDirty())
        return true;
    QMessageBox box(QMessageBox::Question, QStringLiteral("Rostrum"),
        tr("Save the changes to \"%1\"?").arg(files.Title()),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, window);
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
    case QMessageBox::Save:
        OnSave();
        return saved;
    case QMessageBox::Discard:
        return true;
    default:
        return false;
    }
}

void FileCommands::OnNew()
{
    if (MayGiveUp())
        files.New();
}

void FileCommands::OnOpen()
{
    session.RunCommand(kHostCommandOpenProject); // unchecked: what went wrong was told
}

bool FileCommands::Open(const QString &path)
{
    opened = false;
    pendingOpen = path;
    session.RunCommand(kHostCommandOpenProject); // unchecked: as above
    pendingOpen.clear();
    return opened;
}

A_Err FileCommands::OpenPending()
{
    opened = false;
    QString path = std::exchange(pendingOpen, {});
    if (!MayGiveUp())
        return A_Err_GENERIC;
    if (path.isEmpty())
        path = QFileDialog::getOpenFileName(window, tr("Open Project"),
            QFileInfo(session.GetDocument().path).path(), ProjectFilter());
    if (path.isEmpty())
        return A_Err_GENERIC;
    opened = OpenOrRecover(path);
    if (opened)
        NoteRecent(path);
    return opened ? A_Err_NONE : A_Err_GENERIC;
}

bool FileCommands::OpenAsSaved(const QString &path)
{
    const QString error = files.Open(path);
    return error.isEmpty() || Warn(error);
}

bool FileCommands::OpenOrRecover(const QString &path)
{
    if (QFileInfo(path).absoluteFilePath() == session.GetDocument().path)
        return OpenAsSaved(path); // once more
    const QString who = ProjectFiles::OpenElsewhere(path);
    if (!who.isEmpty() && !AskToOpenAgain(path, who, window))
        return false;
    const QString copy = ProjectFiles::CopyOf(path);
    if (copy.isEmpty())
        return OpenAsSaved(path);
    const Recovery answer = AskToRecover(path, copy, window);
    if (answer == Recovery::Cancel)
        return false;
    if (ProjectFiles::CopyOf(path) != copy)
        return OpenOrRecover(path); // another program was asked the same, and answered first
    if (answer == Recovery::OpenAsSaved) {
        if (!OpenAsSaved(path))
            return false;
        ProjectFiles::RemoveCopy(copy);
        return true;
    }
    const QString error = files.OpenCopy(copy, path);
    if (error.isEmpty())
        return true;
    Warn(error);
    return OpenAsSaved(path); // the copy stays: what is in it may be wanted
}

/// One at a time: the next one is offered at the next start.
void FileCommands::OfferLeftCopies()
{
    const QString copy = files.LeftCopies().value(0);
    if (copy.isEmpty() || files.IsDirty())
        return;
    const LeftWork answer = AskAboutLeftWork(copy, window);
    if (answer == LeftWork::Later)
        return;
    if (!files.LeftCopies().contains(copy)) { // as above
        Warn(tr("Another window has taken or removed that project meanwhile."));
        return;
    }
    if (answer == LeftWork::Remove)
        ProjectFiles::RemoveCopy(copy);
    if (answer != LeftWork::Recover)
        return;
    const QString error = files.OpenCopy(copy, QString());
    if (!error.isEmpty())
        Warn(error);
}

void FileCommands::OnRevert()
{
    const QString path = session.GetDocument().path;
    QMessageBox box(QMessageBox::Question, QStringLiteral("Rostrum"),
        tr("Give up all changes since \"%1\" was saved?").arg(files.Title()),
        QMessageBox::Discard | QMessageBox::Cancel, window);
    box.setDefaultButton(QMessageBox::Cancel);
    if (path.isEmpty() || box.exec() != QMessageBox::Discard)
        return;
    const QString error = files.Open(path);
    if (!error.isEmpty())
        Warn(error);
}

void FileCommands::NoteRecent(const QString &path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QStringList paths = settings.value(QLatin1String(kRecentKey)).toStringList();
    paths.removeAll(absolute);
    paths.prepend(absolute);
    settings.setValue(QLatin1String(kRecentKey), QStringList(paths.mid(0, kMostRecent)));
}

void FileCommands::FillRecent()
{
    recent->clear();
    const QStringList paths = settings.value(QLatin1String(kRecentKey)).toStringList();
    for (const QString &path : paths) {
        QAction *action = recent->addAction(path);
        action->setEnabled(QFileInfo::exists(path));
        connect(action, &QAction::triggered, this, [this, path] { Open(path); });
    }
    if (paths.isEmpty())
        recent->addAction(tr("(none)"))->setEnabled(false);
}

// Saving.

void FileCommands::OnSave()
{
    saved = false;
    session.RunCommand(kHostCommandSave); // unchecked: what went wrong was told
}

void FileCommands::OnSaveAs()
{
    const QString path = AskForSavePath();
    if (path.isEmpty())
        return;
    pendingSave = path;
    OnSave();
    pendingSave.clear();
}

A_Err FileCommands::SavePending()
{
    saved = false;
    QString path = std::exchange(pendingSave, {});
    if (path.isEmpty())
        path = session.GetDocument().path;
    if (path.isEmpty())
        path = AskForSavePath();
    if (path.isEmpty())
        return A_Err_GENERIC;
    const QString error = files.Save(path);
    saved = error.isEmpty();
    if (!saved) {
        Warn(error);
        return A_Err_GENERIC;
    }
    NoteRecent(path);
    session.Tell(tr("Saved %1").arg(ShortName(path)));
    return A_Err_NONE;
}

QString FileCommands::AskForSavePath() const
{
    QFileDialog dialog(window, tr("Save Project As"), QFileInfo(session.GetDocument().path).path(),
        ProjectFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QLatin1String(kProjectSuffix + 1));
    if (!session.GetDocument().path.isEmpty())
        dialog.selectFile(ShortName(session.GetDocument().path));
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return dialog.selectedFiles().value(0);
}

// Drawings in and out.

QVector<ItemId> FileCommands::Import(const QStringList &paths, ItemId folder)
{
    const QVector<ItemId> items = importer.Import(paths, folder);
    if (!items.isEmpty())
        tree.Pick(items);
    return items;
}

QVector<ItemId> FileCommands::TakeDropped(const QStringList &paths, ItemId folder)
{
    const bool isProject = paths.size() == 1 && QFileInfo(paths.first()).isFile()
        && paths.first().endsWith(QLatin1String(kProjectSuffix), Qt::CaseInsensitive);
    if (!isProject)
        return Import(paths, folder);
    Open(paths.first()); // unchecked: what went wrong was told
    return {};
}

void FileCommands::OnRender()
{
    if (!session.ActiveComposition()) {
        session.Tell(tr("Open a composition first: its frames are rendered"));
        return;
    }
    RenderDialog dialog(session, RenderTarget::Frames, window);
    dialog.exec();
}

void FileCommands::OnRenderMovie()
{
    if (!session.ActiveComposition()) {
        session.Tell(tr("Open a composition first: its frames are rendered"));
        return;
    }
    RenderDialog dialog(session, RenderTarget::Movie, window);
    dialog.exec();
}

} // namespace rostrum
