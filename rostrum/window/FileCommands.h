// The File menu: projects, imports, rendering.
//
// Opening and saving run as commands of the host, so that plug-ins see them come. Before what is not
// saved is given up the user is asked.
#pragma once

#include "window/Importer.h"
#include "window/ProjectFiles.h"

#include <QSettings>

QT_FORWARD_DECLARE_CLASS(QMenu)

namespace rostrum {

class ProjectTree;

class FileCommands : public QObject
{
    Q_OBJECT

public:
    FileCommands(Session &session, ProjectFiles &files, Importer &importer, ProjectTree &tree,
        QSettings &settings, QWidget *window);
    ~FileCommands() override;

    void Fill(QMenu *menu);
    /// @return true when the project is open
    bool Open(const QString &path);
    /// Asks whether to save what is not saved, and does so. @return false to stay
    bool MayGiveUp();
    /// Offers what sessions left that did not end by themselves.
    void OfferLeftCopies();
    /// Imports files, series recognised, and picks what came in.
    QVector<ItemId> Import(const QStringList &paths, ItemId folder);
    /// The same with what was dropped; a project alone is opened.
    QVector<ItemId> TakeDropped(const QStringList &paths, ItemId folder);

signals:
    void QuitWanted();

private:
    void FillRecent();
    void NoteRecent(const QString &path);
    void OnNew();
    void OnOpen();
    void OnSave();
    void OnSaveAs();
    void OnRevert();
    void OnRender();
    void OnRenderMovie();
    A_Err OpenPending();
    A_Err SavePending();
    bool OpenAsSaved(const QString &path);
    bool OpenOrRecover(const QString &path);
    bool Warn(const QString &error) const;
    QString AskForSavePath() const;

    Session &session;
    ProjectFiles &files;
    Importer &importer;
    ProjectTree &tree;
    QSettings &settings;
    QPointer<QWidget> window;
    QMenu *recent = nullptr;
    QString pendingOpen; // instead of asking
    QString pendingSave;
    bool opened = false; // by the last command
    bool saved = false;
};

} // namespace rostrum
