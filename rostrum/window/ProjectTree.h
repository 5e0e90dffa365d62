// The tree of a project's items: folders, compositions, footage, solids.
//
// It shows the project and asks for changes; each is one history entry. With the keyboard focus it
// follows the rule of the host's active item: the item that is picked alone is the active one, with
// none or several there is no active item.
//
// Keys, with the focus only: Return opens, F2 renames, Del deletes, Ctrl+X, C and V.
// Items are dragged into folders, onto compositions, whose layers they become, and out onto viewer
// and timeline (ItemDrag.h); files are dropped to be imported.
#pragma once

#include "window/Session.h"
#include "window/Thumbnails.h"

#include <QTreeWidget>

namespace rostrum {

class ProjectTree : public QTreeWidget
{
    Q_OBJECT

public:
    explicit ProjectTree(Session &session, QWidget *parent = nullptr);

    /// In the tree's order.
    QVector<ItemId> Picked() const;
    void Pick(const QVector<ItemId> &items);
    /// Where a new item goes: the folder that is picked, or that holds what is picked.
    ItemId TargetFolder() const;
    /// Looks at the disk again: files may have come or gone.
    void LookForMissing();
    void StartRename();

signals:
    void CompositionOpened(rostrum::ItemId item);
    void FilesDropped(const QStringList &paths, rostrum::ItemId folder);
    /// Items were dropped on a composition.
    void LayersWanted(const QVector<rostrum::ItemId> &items, rostrum::ItemId composition);
    void RelinkWanted(rostrum::ItemId footage);
    void BlankWanted(rostrum::ItemId footage);
    void PickedChanged();
    /// Before the context menu shows; receivers add to it.
    void MenuAboutToShow(QMenu *menu);

protected:
    QMimeData *mimeData(const QList<QTreeWidgetItem *> items) const override;
    QStringList mimeTypes() const override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    void MakeActions();
    void Add(const QString &text, const QKeySequence &key, void (ProjectTree::*slot)());
    void OnProjectChanged();
    void OnItemChanged(QTreeWidgetItem *row, int column);
    void OnPickedChanged();
    void OnThumbnail(ItemId item);
    void OnOpen();
    void OnLabel(int label);
    void OnDelete();
    void OnCut();
    void OnCopy();
    void OnPaste();
    void DropGoneRows();
    void FollowFolder(ItemId folder, QTreeWidgetItem *row);
    void ShowItem(QTreeWidgetItem *row, const Item &item);
    void ShowMissing(QTreeWidgetItem *row, const Item &item);
    void MakePickedActive();
    void MoveInto(ItemId folder, const QVector<ItemId> &items);
    ItemId IdAt(const QPoint &place) const;
    ItemId CurrentItem() const;
    ItemId FolderAt(const QPoint &place) const;
    ItemId CompositionAt(const QPoint &place) const;

    Session &session;
    Thumbnails thumbnails;
    QHash<ItemId, QTreeWidgetItem *> rows;
    Project shown;
    int shownReplaceCount = -1;
    bool filling = false;
    QVector<ItemPtr> copied;
};

} // namespace rostrum
