// What the project list changes, and what is dragged in and out of it.
#include "ProjectTree.h"

#include "window/ItemDrag.h"
#include "window/ItemRow.h"
#include "window/ItemText.h"

#include <QDropEvent>

namespace rostrum {
namespace {

/// Without the layers whose source was deleted since.
Composition WithSourcesOnly(const Composition &composition, const Project &project)
{
    Composition result = composition;
    result.layers.clear();
    for (const LayerPtr &layer : composition.layers) {
        if (layer->kind != LayerKind::Source || project.Find(layer->source))
            result.layers << layer;
    }
    return result;
}

bool IsForUs(const QMimeData *data)
{
    return !TakeItems(data).isEmpty() || !TakeFiles(data).isEmpty();
}

} // namespace

// Changes.

void ProjectTree::OnOpen()
{
    const ItemId id = CurrentItem();
    if (session.GetProject().FindComposition(id))
        emit CompositionOpened(id);
    else if (currentItem() && currentItem()->childCount() > 0)
        currentItem()->setExpanded(!currentItem()->isExpanded());
}

void ProjectTree::StartRename()
{
    if (currentItem())
        editItem(currentItem(), 0);
}

/// An empty name is no name: the old one stays.
void ProjectTree::OnItemChanged(QTreeWidgetItem *row, int column)
{
    const Item *item = session.GetProject().Find(row->data(0, kItemIdRole).toInt());
    if (filling || column != 0 || !item)
        return;
    const QByteArray name = row->text(0).trimmed().toUtf8();
    if (name == item->name)
        return;
    if (name.isEmpty()) {
        filling = true;
        row->setText(0, QString::fromUtf8(item->name));
        filling = false;
        return;
    }
    session.Do("Rename Item", [id = item->id, name](Project &p) { p.Edit(id)->name = name; });
}

/// The sheet's columns have the colour of what they show.
void ProjectTree::OnLabel(int label)
{
    const QVector<ItemId> picked = Picked();
    if (picked.isEmpty())
        return;
    session.Do("Label Items", [&](Project &project) {
        for (const ItemId item : picked)
            project.Edit(item)->label = static_cast<qint8>(label);
    });
}

void ProjectTree::OnDelete()
{
    const QVector<ItemId> picked = Picked();
    if (picked.isEmpty())
        return;
    session.Do("Delete Items", [&](Project &project) {
        for (const ItemId item : picked)
            project.RemoveItem(item); // unchecked: a folder may have taken it along already
    });
}

void ProjectTree::OnCut()
{
    OnCopy();
    OnDelete();
}

void ProjectTree::OnCopy()
{
    const QVector<ItemId> picked = Picked();
    if (picked.isEmpty())
        return;
    copied.clear();
    for (const ItemId id : picked) {
        const Item *item = session.GetProject().Find(id);
        if (!item->AsFolder())
            copied << ItemPtr(new Item(*item));
    }
    if (copied.size() < picked.size())
        session.Tell(QStringLiteral("Folders are not copied, only what is picked in them"));
}

void ProjectTree::OnPaste()
{
    if (copied.isEmpty())
        return;
    const ItemId folder = TargetFolder();
    QVector<ItemId> pasted;
    session.Do("Paste Items", [&](Project &project) {
        for (const ItemPtr &each : qAsConst(copied)) {
            const Item &item = *each;
            const QByteArray name = FreeName(project, item.name);
            if (const Footage *footage = item.AsFootage())
                pasted << project.AddFootage(name, *footage, folder);
            else if (const Solid *solid = item.AsSolid())
                pasted << project.AddSolid(name, *solid, folder);
            else
                pasted << project.AddComposition(
                    name, WithSourcesOnly(*item.AsComposition(), project), folder);
        }
    });
    Pick(pasted);
}

// Dragging.

QStringList ProjectTree::mimeTypes() const
{
    return { QLatin1String(kItemsMimeType), QStringLiteral("text/uri-list") };
}

/// In the list's order, whatever order they were picked in.
QMimeData *ProjectTree::mimeData(const QList<QTreeWidgetItem *>) const
{
    auto *data = new QMimeData;
    PutItems(Picked(), data);
    return data;
}

/// The folder under the pointer, or the one that holds the item there.
ItemId ProjectTree::FolderAt(const QPoint &place) const
{
    const Item *item = session.GetProject().Find(IdAt(place));
    if (!item)
        return session.GetProject().RootFolder();
    return item->AsFolder() ? item->id : item->parent;
}

/// 0 where there is none under the pointer.
ItemId ProjectTree::CompositionAt(const QPoint &place) const
{
    const ItemId item = IdAt(place);
    return session.GetProject().FindComposition(item) ? item : 0;
}

/// Never as a move: whoever drags would take away what was moved. The list sees to that itself, and
/// files stay where they are.
void ProjectTree::dragEnterEvent(QDragEnterEvent *event)
{
    if (!IsForUs(event->mimeData()))
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void ProjectTree::dragMoveEvent(QDragMoveEvent *event)
{
    QTreeWidget::dragMoveEvent(event); // scrolls at the edges
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void ProjectTree::dropEvent(QDropEvent *event)
{
    const ItemId folder = FolderAt(event->pos());
    const ItemId composition = CompositionAt(event->pos());
    const QVector<ItemId> items = TakeItems(event->mimeData());
    const QStringList files = TakeFiles(event->mimeData());
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setState(NoState);
    if (!files.isEmpty())
        emit FilesDropped(files, folder);
    else if (composition && !items.contains(composition))
        emit LayersWanted(items, composition);
    else if (!items.isEmpty())
        MoveInto(folder, items);
}

void ProjectTree::MoveInto(ItemId folder, const QVector<ItemId> &items)
{
    session.Do("Move Items", [&](Project &project) {
        for (const ItemId item : items) {
            const Item *moved = project.Find(item);
            if (moved && moved->parent != folder)
                project.MoveItem(item, folder); // unchecked: a folder is not put into itself
        }
    });
}

} // namespace rostrum
