#include "TimelineBoard.h"

#include <algorithm>

namespace rostrum {

TimelineBoard::TimelineBoard(Session &session, QObject *parent) : QObject(parent), session(session)
{
    connect(&session, &Session::ProjectChanged, this, &TimelineBoard::OnProjectChanged);
    connect(&session, &Session::ActiveItemChanged, this, &TimelineBoard::OnCompositionChanged);
    connect(&session, &Session::SelectionChanged, this, &TimelineBoard::OnSelectionChanged);
    shown = Place();
    OnSelectionChanged();
    Rebuild();
}

const Layer *TimelineBoard::LayerOf(const TimelineRow &row) const
{
    int hint = row.index;
    return Shown().FindLayer(Comp(), row.layer, &hint);
}

const Stream *TimelineBoard::StreamOf(const TimelineRow &row) const
{
    const Layer *layer = row.isLayer ? nullptr : LayerOf(row);
    return layer ? FindStream(*layer, row.stream.id) : nullptr;
}

Rate TimelineBoard::GetRate() const
{
    const Composition *composition = ShownComp();
    return composition ? composition->rate : Rate();
}

void TimelineBoard::SetScale(const TimeScale &newScale)
{
    scale = newScale;
    emit SigScrolled();
}

void TimelineBoard::SetScrollY(int pixels)
{
    if (scrollY == pixels)
        return;
    scrollY = pixels;
    emit SigScrolled();
}

void TimelineBoard::ToggleFold(LayerId layer)
{
    if (!unfolded.remove(layer))
        unfolded.insert(layer);
    Rebuild();
}

void TimelineBoard::SelectLayer(LayerId layer, Qt::KeyboardModifiers modifiers)
{
    QVector<LayerId> layers = session.SelectedLayers();
    const Composition *composition = session.ActiveComposition();
    const int from = composition ? composition->IndexOf(anchor) : -1;
    const int to = composition ? composition->IndexOf(layer) : -1;
    if (to < 0)
        return;
    if (modifiers & Qt::ShiftModifier && from >= 0) {
        layers.clear();
        for (int i = qMin(from, to); i <= qMax(from, to); ++i)
            layers << composition->layers[i]->id;
        session.SelectLayers(layers);
        return; // the anchor stays
    }
    if (!(modifiers & Qt::ControlModifier))
        layers = { layer };
    else if (!layers.removeOne(layer))
        layers << layer;
    anchor = layer;
    session.SelectLayers(layers);
}

void TimelineBoard::SelectForDrag(LayerId layer)
{
    if (!IsSelected(layer))
        SelectLayer(layer, {});
}

void TimelineBoard::SelectNone()
{
    SelectKeys({});
    session.SelectLayers({});
}

void TimelineBoard::SelectKeys(const KeyIds &newKeys)
{
    keys = newKeys;
    emit SigChanged();
}

void TimelineBoard::SelectKey(const KeyId &key, Qt::KeyboardModifiers modifiers)
{
    KeyIds chosen = keys;
    if (!(modifiers & (Qt::ControlModifier | Qt::ShiftModifier)))
        chosen = { key };
    else if (chosen.erase(key) == 0)
        chosen.insert(key);
    SelectKeys(chosen);
}

void TimelineBoard::Preview(const Edit &edit)
{
    previewEdit = edit;
    preview = session.GetProject();
    edit(*preview);
    Rebuild();
    emit SigPreview(*preview);
}

void TimelineBoard::Cancel()
{
    if (!preview)
        return;
    preview.reset();
    previewEdit = nullptr;
    Rebuild();
    emit SigPreviewEnd();
}

void TimelineBoard::Do(const QByteArray &name, const Edit &edit)
{
    Cancel();
    session.Do(name, edit);
}

void TimelineBoard::OnProjectChanged()
{
    OnCompositionChanged();
    DropGoneKeys();
    if (preview)
        Preview(Edit(previewEdit)); // a copy: the call sets it
    else
        Rebuild();
}

void TimelineBoard::OnCompositionChanged()
{
    if (shown == Place())
        return;
    if (shown.project != Place().project)
        unfolded.clear(); // their ids may name other layers now
    shown = Place();
    keys.clear();
    anchor = 0;
    Cancel();
    Rebuild();
}

void TimelineBoard::OnSelectionChanged()
{
    selected.clear();
    for (const LayerId layer : session.SelectedLayers())
        selected.insert(layer);
    emit SigChanged();
}

void TimelineBoard::Rebuild()
{
    rows.Rebuild(Shown(), Comp(), unfolded, session.GetHost().effectLanguage);
    emit SigChanged();
}

void TimelineBoard::DropGoneKeys()
{
    for (auto key = keys.begin(); key != keys.end();) {
        const bool isThere = FindKey(session.GetProject(), Comp(), *key) >= 0;
        key = isThere ? std::next(key) : keys.erase(key);
    }
}

} // namespace rostrum
