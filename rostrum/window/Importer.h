// Brings drawings from disk into the project: series are recognised from any of their files, folders
// become project folders. All that comes in at once is one history entry.
//
// What a person should know of a series is told in the message area, what could not be read in a box.
#pragma once

#include "core/DrawingFolder.h"
#include "window/Session.h"

#include <QPointer>
#include <QWidget>

namespace rostrum {

class Importer
{
public:
    /// @param window that boxes belong to
    Importer(Session &session, QWidget *window) : session(session), window(window) { }

    /// @param folder of the project; 0 for the root
    /// @return the new footage items, in order; none where it was cancelled
    QVector<ItemId> Import(const QStringList &paths, ItemId folder = 0);
    /// The one file of each path, also of one that is part of a series.
    QVector<ItemId> ImportStills(const QStringList &paths, ItemId folder = 0);
    /// Asks for files or a folder, then imports. @param stills see ImportStills
    QVector<ItemId> AskAndImport(bool stills, ItemId folder = 0);
    QVector<ItemId> AskForFolderAndImport(ItemId folder = 0);

    /// Puts other files behind a footage item, which keeps its name and its layers. Other footage
    /// that is missing in the same folder follows where the new folder has its files.
    /// @return false where the path is no drawing; a box tells why
    bool Relink(ItemId footage, const QString &path);
    bool AskAndRelink(ItemId footage);

    /// Writes the blank drawing 0 that a series lacks, and takes it in. @return false where it could not
    /// be done; a box tells why
    bool AddBlank(ItemId footage);

    int patience = 400; // ms before the way of an import is shown

private:
    struct Loaded
    {
        DrawingGroup group;
        ImportResult result;
    };

    bool Load(const QVector<DrawingGroup> &groups, QVector<Loaded> *loaded, QStringList *errors);
    QVector<ItemId> Add(const QVector<Loaded> &loaded, ItemId folder);
    QVector<ItemId> ImportGroups(const FoundDrawings &found, ItemId folder);
    void TellNotes(const QVector<Loaded> &loaded);
    void TellErrors(const QStringList &errors) const;
    int RelinkOthers(const QString &oldFolder, const QString &newFolder, Project *project) const;

    Session &session;
    QPointer<QWidget> window;
    QString lastFolder; // where files were asked for
};

} // namespace rostrum
