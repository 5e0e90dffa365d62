// The Layer menu: new layers, and what is done with those that are selected.
#pragma once

#include "window/CompositionCommands.h"

namespace rostrum {

class LayerCommands : public QObject
{
    Q_OBJECT

public:
    LayerCommands(Session &session, CompositionCommands &compositions, QWidget *window);

    void Fill(QMenu *menu);

private:
    void FillFromProject();
    void FillEffects();
    void AddOnSelection(
        QMenu *menu, const QString &text, const QKeySequence &key, void (LayerCommands::*slot)());
    void GreyWithoutLayers(QMenu *menu, QAction *action);
    void OnNewSolid();
    void OnNewWithoutSource(LayerKind kind);
    void OnNewText();
    void OnRename();
    void OnDuplicate();
    void OnDelete();
    void OnLabel(int label);
    void OnApplyEffect(EffectKey key);
    void OnRemoveEffects();
    /// One history entry over all selected layers.
    template <typename Function>
    void ForSelected(const QByteArray &name, Function change);

    Session &session;
    CompositionCommands &compositions;
    QPointer<QWidget> window;
    QMenu *fromProject = nullptr;
    QMenu *effects = nullptr;
};

} // namespace rostrum
