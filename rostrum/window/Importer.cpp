#include "Importer.h"

#include "window/BlankDrawing.h"
#include "window/ItemText.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QImageReader>
#include <QMessageBox>
#include <QProgressDialog>

namespace rostrum {
namespace {

constexpr int kErrorsTold = 10;
constexpr int kFilesTold = 4;

QString ImageFilter()
{
    QStringList patterns;
    for (const QByteArray &format : QImageReader::supportedImageFormats())
        patterns << QStringLiteral("*.") + QString::fromLatin1(format);
    return QStringLiteral("Drawings (%1)").arg(patterns.join(QLatin1Char(' ')));
}

/// The names of files, of many the first ones.
QString ShortList(const QStringList &paths)
{
    QStringList names;
    for (const QString &path : paths.mid(0, kFilesTold))
        names << QFileInfo(path).fileName();
    QString list = names.join(QLatin1String(", "));
    if (paths.size() > kFilesTold)
        list += QStringLiteral(" and %1 more").arg(paths.size() - kFilesTold);
    return list;
}

/// Of a series that has just got its blank drawing.
QString BlankReport(const Footage &footage)
{
    bool isOneToOne = true;
    for (int i = 0; i < footage.numbers.size(); ++i)
        isOneToOne = isOneToOne && footage.numbers[i] == i;
    const QString file = QFileInfo(BlankPath(footage)).fileName();
    return isOneToOne
        ? QStringLiteral("0 in a sheet is now %1, which is blank; the numbers are the files'")
              .arg(file)
        : QStringLiteral("0 in a sheet is now %1, which is blank; 1 is %2")
              .arg(file, footage.files.value(1));
}

/// The project folders on the way to a group, made where they are not there yet in this import.
class FolderMaker
{
public:
    FolderMaker(Project &project, ItemId root) : project(project), root(root) { }

    ItemId Make(const QStringList &names)
    {
        ItemId folder = root;
        QString way;
        for (const QString &name : names) {
            way += QLatin1Char('/') + name;
            if (!made.contains(way))
                made.insert(way, project.AddFolder(name.toUtf8(), folder));
            folder = made.value(way);
        }
        return folder;
    }

private:
    Project &project;
    ItemId root;
    QHash<QString, ItemId> made;
};

} // namespace

void Importer::TellErrors(const QStringList &errors) const
{
    if (errors.isEmpty())
        return;
    QStringList told = errors.mid(0, kErrorsTold);
    if (errors.size() > kErrorsTold)
        told << QStringLiteral("... and %1 more").arg(errors.size() - kErrorsTold);
    QMessageBox::warning(window, QStringLiteral("Import"), told.join(QLatin1Char('\n')));
}

/// Reads the headers, in slices. @return false when it was cancelled
bool Importer::Load(
    const QVector<DrawingGroup> &groups, QVector<Loaded> *loaded, QStringList *errors)
{
    QProgressDialog progress(
        QStringLiteral("Reading drawings..."), QStringLiteral("Cancel"), 0, groups.size(), window);
    progress.setWindowTitle(QStringLiteral("Import"));
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(patience);
    for (int i = 0; i < groups.size(); ++i) {
        progress.setValue(i); // serves events as well
        if (progress.wasCanceled())
            return false;
        const ImportResult result = ImportDrawings(groups[i].path, groups[i].isSeries);
        if (result.Ok())
            *loaded << Loaded{ groups[i], result };
        else
            *errors << result.error;
    }
    progress.setValue(groups.size());
    return true;
}

QVector<ItemId> Importer::Add(const QVector<Loaded> &loaded, ItemId folder)
{
    QVector<ItemId> items;
    session.Do("Import Drawings", [&](Project &project) {
        const Item *target = project.Find(folder);
        FolderMaker folders(project, target && target->AsFolder() ? folder : project.RootFolder());
        for (const Loaded &each : loaded)
            items << project.AddFootage(
                each.result.name, each.result.footage, folders.Make(each.group.folders));
    });
    return items;
}

void Importer::TellNotes(const QVector<Loaded> &loaded)
{
    for (const Loaded &each : loaded) {
        QStringList notes = SeriesNotes(each.result.footage);
        notes << BlankNote(each.result.footage);
        notes.removeAll(QString());
        if (!notes.isEmpty())
            session.Tell(QString::fromUtf8(each.result.name) + QStringLiteral(": ")
                + notes.join(QLatin1String("; ")));
    }
}

QVector<ItemId> Importer::ImportGroups(const FoundDrawings &found, ItemId folder)
{
    QVector<Loaded> loaded;
    QStringList errors;
    if (!Load(found.groups, &loaded, &errors)) {
        session.Tell(QStringLiteral("The import was cancelled; nothing came in"));
        return {};
    }
    QVector<ItemId> items;
    if (!loaded.isEmpty()) {
        items = Add(loaded, folder);
        session.Tell(items.size() == 1
                ? QStringLiteral("Imported %1").arg(QString::fromUtf8(loaded.first().result.name))
                : QStringLiteral("Imported %1 items").arg(items.size()));
    }
    if (!found.leftOut.isEmpty())
        session.Tell(QStringLiteral("Left out, since no image: %1").arg(ShortList(found.leftOut)));
    TellNotes(loaded);
    if (found.groups.isEmpty())
        errors << (found.leftOut.isEmpty()
                ? QStringLiteral("There are no drawings")
                : QStringLiteral("There are no drawings, only %1").arg(ShortList(found.leftOut)));
    TellErrors(errors);
    return items;
}

QVector<ItemId> Importer::Import(const QStringList &paths, ItemId folder)
{
    return ImportGroups(FindDrawings(paths), folder);
}

QVector<ItemId> Importer::ImportStills(const QStringList &paths, ItemId folder)
{
    FoundDrawings found;
    for (const QString &path : paths)
        found.groups << DrawingGroup{ path, /*isSeries=*/false, {} };
    return ImportGroups(found, folder);
}

QVector<ItemId> Importer::AskAndImport(bool stills, ItemId folder)
{
    QFileDialog dialog(window,
        stills ? QStringLiteral("Import Stills") : QStringLiteral("Import Drawings"), lastFolder,
        ImageFilter() + QStringLiteral(";;All files (*)"));
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setOption(QFileDialog::HideNameFilterDetails); // there are sixty
    dialog.setLabelText(QFileDialog::Accept, QStringLiteral("Import"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    lastFolder = dialog.directory().path();
    const QStringList files = dialog.selectedFiles();
    return stills ? ImportStills(files, folder) : Import(files, folder);
}

QVector<ItemId> Importer::AskForFolderAndImport(ItemId folder)
{
    const QString path
        = QFileDialog::getExistingDirectory(window, QStringLiteral("Import Folder"), lastFolder);
    if (path.isEmpty())
        return {};
    lastFolder = path;
    return Import({ path }, folder);
}

bool Importer::AskAndRelink(ItemId footage)
{
    const Item *item = session.GetProject().Find(footage);
    if (!item || !item->AsFootage())
        return false;
    const QString path = QFileDialog::getOpenFileName(window,
        QStringLiteral("Relink %1").arg(QString::fromUtf8(item->name)), item->AsFootage()->folder,
        ImageFilter() + QStringLiteral(";;All files (*)"), nullptr,
        QFileDialog::HideNameFilterDetails);
    return !path.isEmpty() && Relink(footage, path);
}

bool Importer::AddBlank(ItemId id)
{
    const Item *item = session.GetProject().Find(id);
    if (!item || !item->AsFootage() || !LacksBlank(*item->AsFootage()))
        return false;
    QString error = WriteBlank(*item->AsFootage());
    Project changed = session.GetProject();
    if (error.isEmpty())
        error = TakeBlank(id, &changed);
    if (!error.isEmpty()) {
        TellErrors({ error });
        return false;
    }
    session.Do("Add Blank Drawing", [&](Project &project) { project = changed; });
    session.Tell(BlankReport(*session.GetProject().Find(id)->AsFootage()));
    return true;
}

/// Footage of the old folder of which nothing is there any more, and all of it is in the new one.
int Importer::RelinkOthers(
    const QString &oldFolder, const QString &newFolder, Project *project) const
{
    int count = 0;
    for (ItemId id = project->RootFolder(); id; id = project->NextInWalk(id)) {
        const Footage *footage = project->Find(id)->AsFootage();
        if (!footage || footage->folder != oldFolder || MissingFiles(*footage).isEmpty())
            continue;
        Footage moved = *footage;
        moved.folder = newFolder;
        if (!MissingFiles(moved).isEmpty())
            continue;
        project->Edit(id)->content = moved;
        ++count;
    }
    return count;
}

bool Importer::Relink(ItemId id, const QString &path)
{
    const Item *item = session.GetProject().Find(id);
    const Footage *before = item ? item->AsFootage() : nullptr;
    if (!before)
        return false;
    const ImportResult result = ImportDrawings(path, before->isSeries);
    if (!result.Ok()) {
        TellErrors({ result.error });
        return false;
    }
    const Footage old = *before;
    Footage footage = result.footage;
    footage.rate = old.rate;
    int others = 0;
    session.Do("Relink Footage", [&](Project &project) {
        project.Edit(id)->content = footage;
        others = RelinkOthers(old.folder, footage.folder, &project);
    });
    QString told = QStringLiteral("Relinked to %1").arg(QString::fromUtf8(result.name));
    if (old.files.size() != footage.files.size())
        told += QStringLiteral("; it has %1 drawings, there were %2")
                    .arg(footage.files.size())
                    .arg(old.files.size());
    if (others > 0)
        told += QStringLiteral("; %1 more of the folder found").arg(others);
    session.Tell(told);
    return true;
}

} // namespace rostrum
