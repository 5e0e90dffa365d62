// The Composition menu: new compositions, and the settings of the one that is shown.
#pragma once

#include "window/CompositionDialog.h"
#include "window/Session.h"

#include <QPointer>
#include <QWidget>

QT_FORWARD_DECLARE_CLASS(QMenu)

namespace rostrum {

class ProjectTree;

class CompositionCommands : public QObject
{
    Q_OBJECT

public:
    CompositionCommands(Session &session, ProjectTree &tree, QWidget *window);

    void Fill(QMenu *menu);
    /// Makes items of the project layers of the active composition, the first one topmost; each is
    /// selected. What may not be a layer there is told.
    void AddLayers(const QVector<ItemId> &items);
    /// The same in any composition, which becomes the active one.
    void AddLayersTo(ItemId composition, const QVector<ItemId> &items);
    /// A composition of the size and length of a drawing or series, with it as layer.
    void NewFrom(const QVector<ItemId> &items);

private:
    void OnNew();
    void OnNewFromPicked();
    void OnSettings();
    CompositionSettings Proposed() const;
    ItemId Make(const CompositionSettings &settings, const QVector<ItemId> &items);

    Session &session;
    ProjectTree &tree;
    QPointer<QWidget> window;
    CompositionSettings last; // typed last
};

} // namespace rostrum
