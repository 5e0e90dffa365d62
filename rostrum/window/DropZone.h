// Lets items of the project list and files from elsewhere be dropped on a widget that knows nothing
// of drops. It lives with the widget.
#pragma once

#include "core/Layer.h"

#include <QObject>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace rostrum {

class DropZone : public QObject
{
    Q_OBJECT

public:
    explicit DropZone(QWidget *widget);

    bool eventFilter(QObject *object, QEvent *event) override;

signals:
    void ItemsDropped(const QVector<rostrum::ItemId> &items);
    void FilesDropped(const QStringList &paths);
};

} // namespace rostrum
