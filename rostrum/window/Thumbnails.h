// Small pictures of a project's items, made one at a time while nothing else is due.
//
// A series shows its middle drawing, since its first is often the blank one, a composition its
// middle frame. Each is kept until the item changes.
#pragma once

#include "render/Renderer.h"
#include "window/Session.h"

#include <QHash>
#include <QPixmap>
#include <QTimer>

namespace rostrum {

constexpr QSize kThumbnailSize{ 48, 32 }; // pixels

class Thumbnails : public QObject
{
    Q_OBJECT

public:
    explicit Thumbnails(Session &session, QObject *parent = nullptr);

    /// A plain field until the picture is there.
    QPixmap Of(ItemId item);
    /// Drops what is kept of an item; the next Of makes it anew.
    void Forget(ItemId item) { kept.remove(item); }
    void Clear();

signals:
    void Ready(rostrum::ItemId item);

private:
    void OnTurn();
    QImage Draw(ItemId item);
    QImage DrawFootage(const Footage &footage) const;

    Session &session;
    Renderer renderer;
    QHash<ItemId, QPixmap> kept;
    QVector<ItemId> waiting;
    QTimer turn;
};

} // namespace rostrum
