#include "ProjectTree.h"

#include "window/ItemDrag.h"
#include "window/ItemText.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QToolTip>

namespace rostrum {
namespace {

enum Column { kName, kKind, kSize, kLength, kColumnCount };

constexpr int kIdRole = Qt::UserRole;
const QColor kMissingColor(230, 110, 90);

ItemId IdOf(const QTreeWidgetItem *row)
{
    return row ? row->data(kName, kIdRole).toInt() : 0;
}

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

} // namespace

ProjectTree::ProjectTree(Session &session, QWidget *parent)
    : QTreeWidget(parent), session(session), thumbnails(session)
{
    setObjectName(QStringLiteral("projectTree"));
    setColumnCount(kColumnCount);
    setHeaderLabels({ QStringLiteral("Name"), QStringLiteral("Kind"), QStringLiteral("Size"),
        QStringLiteral("Length") });
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(kName, QHeaderView::Stretch);
    for (const Column column : { kKind, kSize, kLength })
        header()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    header()->setMinimumSectionSize(50);
    setIconSize(kThumbnailSize);
    setUniformRowHeights(true);
    setIndentation(14);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setExpandsOnDoubleClick(false);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    MakeActions();
    connect(&session, &Session::ProjectChanged, this, &ProjectTree::OnProjectChanged);
    connect(&thumbnails, &Thumbnails::Ready, this, &ProjectTree::OnThumbnail);
    connect(this, &QTreeWidget::itemChanged, this, &ProjectTree::OnItemChanged);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &ProjectTree::OnPickedChanged);
    connect(this, &QTreeWidget::itemDoubleClicked, this, &ProjectTree::OnOpen);
    OnProjectChanged();
}

void ProjectTree::Add(const QString &text, const QKeySequence &key, void (ProjectTree::*slot)())
{
    auto *action = new QAction(text, this);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut); // the sheet has the same keys
    connect(action, &QAction::triggered, this, slot);
    addAction(action);
}

void ProjectTree::MakeActions()
{
    Add(QStringLiteral("Open"), Qt::Key_Return, &ProjectTree::OnOpen);
    Add(QStringLiteral("Rename"), Qt::Key_F2, &ProjectTree::StartRename);
    Add(QStringLiteral("Cut"), QKeySequence::Cut, &ProjectTree::OnCut);
    Add(QStringLiteral("Copy"), QKeySequence::Copy, &ProjectTree::OnCopy);
    Add(QStringLiteral("Paste"), QKeySequence::Paste, &ProjectTree::OnPaste);
    Add(QStringLiteral("Delete"), QKeySequence::Delete, &ProjectTree::OnDelete);
}

// What is shown.

/// Only what differs from what was shown is touched: a sheet changes the project at every cell.
void ProjectTree::OnProjectChanged()
{
    const Project &project = session.GetProject();
    const int replaceCount = session.GetDocument().ReplaceCount();
    filling = true;
    if (replaceCount != shownReplaceCount) {
        clear();
        rows.clear();
        thumbnails.Clear();
        shown = Project();
        copied.clear(); // its ids mean nothing here
        shownReplaceCount = replaceCount;
    }
    FollowFolder(project.RootFolder(), invisibleRootItem());
    DropGoneRows();
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        const Item *item = project.Find(row.key());
        if (shown.Find(row.key()) == item)
            continue;
        thumbnails.Forget(row.key());
        ShowItem(*row, *item);
    }
    shown = project;
    filling = false;
}

/// All are taken out before the first is deleted, since a row deletes those below it.
void ProjectTree::DropGoneRows()
{
    QVector<QTreeWidgetItem *> gone;
    for (auto row = rows.begin(); row != rows.end();) {
        if (session.GetProject().Find(row.key())) {
            ++row;
            continue;
        }
        QTreeWidgetItem *parent = (*row)->parent();
        (parent ? parent : invisibleRootItem())->removeChild(*row);
        thumbnails.Forget(row.key());
        gone << *row;
        row = rows.erase(row);
    }
    for (QTreeWidgetItem *row : qAsConst(gone))
        row->takeChildren();
    qDeleteAll(gone);
}

/// Brings the rows of a folder into the project's order, those that stand right untouched.
void ProjectTree::FollowFolder(ItemId folder, QTreeWidgetItem *parent)
{
    const Project &project = session.GetProject();
    const QVector<ItemId> &children = project.Find(folder)->AsFolder()->children;
    for (int i = 0; i < children.size(); ++i) {
        QTreeWidgetItem *&row = rows[children[i]];
        const bool isNew = !row;
        if (isNew) {
            row = new QTreeWidgetItem;
            row->setData(kName, kIdRole, children[i]);
        }
        if (parent->child(i) != row) {
            const bool wasOpen = row->isExpanded();
            const bool wasPicked = row->isSelected();
            QTreeWidgetItem *old = row->parent();
            if (!isNew)
                (old ? old : invisibleRootItem())->removeChild(row);
            parent->insertChild(qMin(i, parent->childCount()), row);
            row->setExpanded(wasOpen || isNew);
            row->setSelected(wasPicked);
        }
        if (project.Find(children[i])->AsFolder())
            FollowFolder(children[i], row);
    }
}

void ProjectTree::ShowItem(QTreeWidgetItem *row, const Item &item)
{
    row->setText(kName, QString::fromUtf8(item.name));
    row->setText(kKind, KindText(item));
    row->setText(kSize, SizeText(item));
    row->setText(kLength, LengthText(item));
    Qt::ItemFlags flags
        = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsDragEnabled;
    if (item.AsFolder())
        flags |= Qt::ItemIsDropEnabled;
    row->setFlags(flags);
    if (!item.AsFolder())
        row->setIcon(kName, thumbnails.Of(item.id));
    else
        row->setIcon(kName, style()->standardIcon(QStyle::SP_DirIcon));
    ShowMissing(row, item);
}

void ProjectTree::ShowMissing(QTreeWidgetItem *row, const Item &item)
{
    const Footage *footage = item.AsFootage();
    const int missing = footage ? MissingFiles(*footage).size() : 0;
    row->setForeground(kKind, missing ? QBrush(kMissingColor) : QBrush());
    row->setForeground(kName, missing ? QBrush(kMissingColor) : QBrush());
    if (missing)
        row->setText(kKind, QStringLiteral("Missing"));
    else
        row->setText(kKind, KindText(item));
}

void ProjectTree::LookForMissing()
{
    filling = true;
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        const Item *item = session.GetProject().Find(row.key());
        if (item && item->AsFootage())
            ShowMissing(*row, *item);
    }
    filling = false;
}

void ProjectTree::OnThumbnail(ItemId item)
{
    filling = true;
    if (QTreeWidgetItem *row = rows.value(item))
        row->setIcon(kName, thumbnails.Of(item));
    filling = false;
}

// What is picked.

QVector<ItemId> ProjectTree::Picked() const
{
    QVector<ItemId> picked;
    for (QTreeWidgetItemIterator row(const_cast<ProjectTree *>(this)); *row; ++row) {
        if ((*row)->isSelected())
            picked << IdOf(*row);
    }
    return picked;
}

void ProjectTree::Pick(const QVector<ItemId> &items)
{
    clearSelection();
    for (const ItemId item : items) {
        if (QTreeWidgetItem *row = rows.value(item)) {
            setCurrentItem(row, kName, QItemSelectionModel::Select);
            scrollToItem(row);
        }
    }
}

ItemId ProjectTree::TargetFolder() const
{
    const QVector<ItemId> picked = Picked();
    const Item *item = picked.size() == 1 ? session.GetProject().Find(picked.first()) : nullptr;
    if (!item)
        return session.GetProject().RootFolder();
    return item->AsFolder() ? item->id : item->parent;
}

void ProjectTree::OnPickedChanged()
{
    emit PickedChanged();
    if (hasFocus())
        MakePickedActive();
}

void ProjectTree::MakePickedActive()
{
    const QVector<ItemId> picked = Picked();
    session.SetActiveItem(picked.size() == 1 ? picked.first() : 0);
}

/// A click into the tree picks first, and an item that was picked already is the active one again.
void ProjectTree::focusInEvent(QFocusEvent *event)
{
    QTreeWidget::focusInEvent(event);
    if (event->reason() != Qt::PopupFocusReason && !Picked().isEmpty())
        MakePickedActive();
}

void ProjectTree::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    menu.addActions(actions());
    emit MenuAboutToShow(&menu);
    const QVector<ItemId> picked = Picked();
    const Item *item = picked.size() == 1 ? session.GetProject().Find(picked.first()) : nullptr;
    if (item && item->AsFootage()) {
        menu.addSeparator();
        menu.addAction(
            QStringLiteral("Relink..."), this, [this, id = item->id] { emit RelinkWanted(id); });
    }
    menu.exec(event->globalPos());
}

/// The description looks at the disk, so that it is made when it is wanted.
bool ProjectTree::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QTreeWidget::viewportEvent(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const Item *item = session.GetProject().Find(IdOf(itemAt(help->pos())));
    QToolTip::showText(help->globalPos(), item ? ItemDescription(*item) : QString(), viewport());
    return true;
}

// Changes.

void ProjectTree::OnOpen()
{
    const ItemId id = IdOf(currentItem());
    if (session.GetProject().FindComposition(id))
        emit CompositionOpened(id);
    else if (currentItem() && currentItem()->childCount() > 0)
        currentItem()->setExpanded(!currentItem()->isExpanded());
}

void ProjectTree::StartRename()
{
    if (currentItem())
        editItem(currentItem(), kName);
}

/// An empty name is no name: the old one stays.
void ProjectTree::OnItemChanged(QTreeWidgetItem *row, int column)
{
    const Item *item = session.GetProject().Find(IdOf(row));
    if (filling || column != kName || !item)
        return;
    const QByteArray name = row->text(kName).trimmed().toUtf8();
    if (name == item->name)
        return;
    if (name.isEmpty()) {
        filling = true;
        row->setText(kName, QString::fromUtf8(item->name));
        filling = false;
        return;
    }
    session.Do("Rename Item", [id = item->id, name](Project &p) { p.Edit(id)->name = name; });
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

QMimeData *ProjectTree::mimeData(const QList<QTreeWidgetItem *> items) const
{
    QVector<ItemId> ids;
    for (const QTreeWidgetItem *item : items)
        ids << IdOf(item);
    auto *data = new QMimeData;
    PutItems(ids, data);
    return data;
}

/// The folder under the pointer, or the one that holds the item there.
ItemId ProjectTree::FolderAt(const QPoint &place) const
{
    const Item *item = session.GetProject().Find(IdOf(itemAt(place)));
    if (!item)
        return session.GetProject().RootFolder();
    return item->AsFolder() ? item->id : item->parent;
}

void ProjectTree::dragEnterEvent(QDragEnterEvent *event)
{
    if (!TakeItems(event->mimeData()).isEmpty() || !TakeFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void ProjectTree::dragMoveEvent(QDragMoveEvent *event)
{
    QTreeWidget::dragMoveEvent(event); // scrolls at the edges
    event->acceptProposedAction();
}

void ProjectTree::dropEvent(QDropEvent *event)
{
    const ItemId folder = FolderAt(event->pos());
    const QVector<ItemId> items = TakeItems(event->mimeData());
    const QStringList files = TakeFiles(event->mimeData());
    event->acceptProposedAction();
    if (!files.isEmpty())
        emit FilesDropped(files, folder);
    if (items.isEmpty())
        return;
    session.Do("Move Items", [&](Project &project) {
        for (const ItemId item : items) {
            const Item *moved = project.Find(item);
            if (moved && moved->parent != folder)
                project.MoveItem(item, folder); // unchecked: a folder is not put into itself
        }
    });
    setState(NoState);
}

} // namespace rostrum
