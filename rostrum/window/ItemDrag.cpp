#include "ItemDrag.h"

#include <QUrl>

QStringList rostrum::TakeFiles(const QMimeData *data)
{
    QStringList files;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile())
            files << url.toLocalFile();
    }
    return files;
}
