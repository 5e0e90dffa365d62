#include "ProjectTree.h"

#include "window/BlankDrawing.h"
#include "window/ItemRow.h"
#include "window/ItemText.h"
#include "window/Labels.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>
#include <QToolTip>

namespace rostrum {
namespace {

constexpr int kName = 0; // the only column
constexpr char kPaste[] = "Paste";
const QColor kMissingColor(230, 110, 90);

ItemId IdOf(const QTreeWidgetItem *row)
{
    return row ? row->data(kName, kItemIdRole).toInt() : 0;
}

} // namespace

ProjectTree::ProjectTree(Session &session, QWidget *parent)
    : QTreeWidget(parent), session(session), thumbnails(session)
{
    setObjectName(QStringLiteral("projectTree"));
    setHeaderHidden(true);
    setItemDelegate(new ItemRow(this));
    setIconSize(kThumbnailSize);
    setUniformRowHeights(true);
    setIndentation(14);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setExpandsOnDoubleClick(false);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    setDragDropOverwriteMode(true); // things are dropped on rows, never between them
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
    Add(QLatin1String(kPaste), QKeySequence::Paste, &ProjectTree::OnPaste);
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
            row->setData(kName, kItemIdRole, children[i]);
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
    row->setData(kName, kItemLabelRole, int(item.label));
    Qt::ItemFlags flags
        = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsDragEnabled;
    if (item.AsFolder() || item.AsComposition())
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
    row->setForeground(kName, missing ? QBrush(kMissingColor) : QBrush());
    row->setData(kName, kItemFactsRole,
        missing ? QStringLiteral("Missing: %1 of %2").arg(missing).arg(footage->files.size())
                : FactsText(item));
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

ItemId ProjectTree::IdAt(const QPoint &place) const
{
    return IdOf(itemAt(place));
}

ItemId ProjectTree::CurrentItem() const
{
    return IdOf(currentItem());
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
    const QVector<ItemId> picked = Picked();
    for (QAction *action : actions()) // all but pasting is done to what is picked
        action->setEnabled(
            action->text() == QLatin1String(kPaste) ? !copied.isEmpty() : !picked.isEmpty());
    QMenu *labels = menu.addMenu(QStringLiteral("Label"));
    FillLabelMenu(labels, [this](int label) { OnLabel(label); });
    labels->setEnabled(!picked.isEmpty());
    emit MenuAboutToShow(&menu);
    const Item *item = picked.size() == 1 ? session.GetProject().Find(picked.first()) : nullptr;
    if (item && item->AsFootage()) {
        menu.addSeparator();
        menu.addAction(
            QStringLiteral("Relink..."), this, [this, id = item->id] { emit RelinkWanted(id); });
        menu.addAction(QStringLiteral("Add Blank Drawing"), this,
                [this, id = item->id] { emit BlankWanted(id); })
            ->setEnabled(LacksBlank(*item->AsFootage()));
    }
    menu.exec(event->globalPos());
    for (QAction *action : actions()) // their keys work whatever was picked then
        action->setEnabled(true);
}

/// The description looks at the disk, so that it is made when it is wanted.
bool ProjectTree::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QTreeWidget::viewportEvent(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const Item *item = session.GetProject().Find(IdAt(help->pos()));
    QToolTip::showText(help->globalPos(), item ? ItemDescription(*item) : QString(), viewport());
    return true;
}

} // namespace rostrum
