// Items of the project list under way to another widget.
#pragma once

#include "core/Project.h"

#include <QMimeData>

namespace rostrum {

constexpr char kItemsMimeType[] = "application/x-rostrum-items";

inline void PutItems(const QVector<ItemId> &items, QMimeData *data)
{
    QByteArrayList ids;
    for (const ItemId item : items)
        ids << QByteArray::number(item);
    data->setData(QLatin1String(kItemsMimeType), ids.join(' '));
}

/// Empty for a drag of anything else.
inline QVector<ItemId> TakeItems(const QMimeData *data)
{
    QVector<ItemId> items;
    for (const QByteArray &id : data->data(QLatin1String(kItemsMimeType)).split(' ')) {
        if (!id.isEmpty())
            items << id.toInt();
    }
    return items;
}

/// The files on this machine among what is dragged.
QStringList TakeFiles(const QMimeData *data);

} // namespace rostrum
