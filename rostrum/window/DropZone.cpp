#include "DropZone.h"

#include "window/ItemDrag.h"

#include <QDropEvent>
#include <QWidget>

namespace rostrum {

DropZone::DropZone(QWidget *widget) : QObject(widget)
{
    widget->setAcceptDrops(true);
    widget->installEventFilter(this);
}

bool DropZone::eventFilter(QObject *object, QEvent *event)
{
    const bool isDrop = event->type() == QEvent::Drop;
    if (!isDrop && event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove)
        return QObject::eventFilter(object, event);
    auto *drag = static_cast<QDropEvent *>(event);
    const QVector<ItemId> items = TakeItems(drag->mimeData());
    const QStringList files = TakeFiles(drag->mimeData());
    if (items.isEmpty() && files.isEmpty())
        return QObject::eventFilter(object, event);
    drag->setDropAction(Qt::CopyAction); // whoever drags keeps what is dragged
    drag->accept();
    if (isDrop && !items.isEmpty())
        emit ItemsDropped(items);
    else if (isDrop)
        emit FilesDropped(files);
    return true;
}

} // namespace rostrum
