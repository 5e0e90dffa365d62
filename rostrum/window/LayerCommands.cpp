#include "LayerCommands.h"

#include "window/Commands.h"
#include "window/ItemText.h"
#include "window/Labels.h"
#include "window/SolidDialog.h"

#include <QInputDialog>

namespace rostrum {

LayerCommands::LayerCommands(Session &session, CompositionCommands &compositions, QWidget *window)
    : QObject(window), session(session), compositions(compositions), window(window)
{ }

void LayerCommands::AddOnSelection(
    QMenu *menu, const QString &text, const QKeySequence &key, void (LayerCommands::*slot)())
{
    GreyWithoutLayers(menu, AddEntry(menu, text, key, this, slot));
}

void LayerCommands::GreyWithoutLayers(QMenu *menu, QAction *action)
{
    GreyUnless(menu, action, [this] { return !session.SelectedLayers().isEmpty(); });
}

void LayerCommands::Fill(QMenu *menu)
{
    QMenu *made = menu->addMenu(tr("&New"));
    fromProject = made->addMenu(tr("From &Footage"));
    connect(fromProject, &QMenu::aboutToShow, this, &LayerCommands::FillFromProject);
    AddEntry(made, tr("&Solid..."), CtrlKey(Qt::Key_Y), this, &LayerCommands::OnNewSolid);
    AddEntry(made, tr("&Camera"), this, [this] { OnNewWithoutSource(LayerKind::Camera); });
    AddEntry(made, tr("&Light"), this, [this] { OnNewWithoutSource(LayerKind::Light); });
    AddEntry(made, tr("&Text..."), this, &LayerCommands::OnNewText);
    GreyUnless(menu, made->menuAction(), [this] { return session.ActiveComposition() != nullptr; });
    menu->addSeparator();
    AddOnSelection(menu, tr("&Rename..."), QKeySequence(), &LayerCommands::OnRename);
    QMenu *labels = menu->addMenu(tr("&Label"));
    FillLabelMenu(labels, [this](int label) { OnLabel(label); });
    GreyWithoutLayers(menu, labels->menuAction());
    const QKeySequence duplicateKey = CtrlKey(Qt::Key_D);
    AddOnSelection(menu, tr("&Duplicate"), duplicateKey, &LayerCommands::OnDuplicate);
    AddOnSelection(menu, tr("De&lete"), QKeySequence(), &LayerCommands::OnDelete);
    menu->addSeparator();
    effects = menu->addMenu(tr("&Effects"));
    FillEffects();
    GreyWithoutLayers(menu, effects->menuAction());
}

void LayerCommands::FillFromProject()
{
    fromProject->clear();
    const Project &project = session.GetProject();
    for (ItemId id = project.RootFolder(); id; id = project.NextInWalk(id)) {
        if (!project.CanAddLayer(id, session.ActiveCompositionId()))
            continue;
        const QString name = QString::fromUtf8(project.Find(id)->name);
        AddEntry(fromProject, QString(name).replace(QLatin1Char('&'), QLatin1String("&&")), this,
            [this, id] { compositions.AddLayers({ id }); });
    }
    if (fromProject->isEmpty())
        fromProject->addAction(tr("(nothing to show)"))->setEnabled(false);
}

void LayerCommands::FillEffects()
{
    const EffectLanguage language = session.GetHost().effectLanguage;
    for (const EffectInfo &effect : InstalledEffects()) {
        AddEntry(effects, QString::fromUtf8(EffectName(effect, language)), this,
            [this, key = effect.key] { OnApplyEffect(key); });
    }
    effects->addSeparator();
    AddEntry(effects, tr("Remove &All"), this, &LayerCommands::OnRemoveEffects);
}

// New layers.

void LayerCommands::OnNewSolid()
{
    const ItemId composition = session.ActiveCompositionId();
    const Item *shown = session.GetProject().Find(composition);
    if (!shown) {
        session.Tell(tr("Open a composition first: layers lie in one"));
        return;
    }
    SolidDialog dialog(
        FreeName(session.GetProject(), "Solid"), { shown->Dimensions(), {} }, window);
    if (dialog.exec() != QDialog::Accepted)
        return;
    LayerId layer = 0;
    session.Do("New Solid", [&](Project &project) {
        const ItemId parent = project.Find(composition)->parent;
        const ItemId solid = project.AddSolid(dialog.Name(), dialog.GetSolid(), parent);
        layer = project.AddLayer(solid, composition);
    });
    session.SelectLayers({ layer });
}

void LayerCommands::OnNewWithoutSource(LayerKind kind)
{
    const ItemId composition = session.ActiveCompositionId();
    if (!composition)
        return;
    LayerId layer = 0;
    const QByteArray name = kind == LayerKind::Camera ? "Camera" : "Light";
    session.Do("New " + name,
        [&](Project &project) { layer = project.AddLayerWithoutSource(kind, name, composition); });
    session.SelectLayers({ layer });
}

/// A text layer holds its place and its name; no text is drawn.
void LayerCommands::OnNewText()
{
    const ItemId composition = session.ActiveCompositionId();
    if (!composition)
        return;
    bool ok = false;
    const QString name = QInputDialog::getText(
        window, tr("New Text Layer"), tr("Name"), QLineEdit::Normal, tr("Text"), &ok);
    if (!ok || name.trimmed().isEmpty())
        return;
    LayerId layer = 0;
    session.Do("New Text", [&](Project &project) {
        layer
            = project.AddLayerWithoutSource(LayerKind::Text, name.trimmed().toUtf8(), composition);
    });
    session.SelectLayers({ layer });
}

// Selected layers.

template <typename Function>
void LayerCommands::ForSelected(const QByteArray &name, Function change)
{
    const ItemId composition = session.ActiveCompositionId();
    const QVector<LayerId> layers = session.SelectedLayers();
    if (layers.isEmpty()) {
        session.Tell(tr("Select a layer first"));
        return;
    }
    session.Do(name, [&](Project &project) {
        for (const LayerId layer : layers)
            change(project, composition, layer);
    });
}

/// An empty name gives a layer its source's again.
void LayerCommands::OnRename()
{
    const QVector<LayerId> layers = session.SelectedLayers();
    const Project &project = session.GetProject();
    const Layer *layer = layers.isEmpty()
        ? nullptr
        : project.FindLayer(session.ActiveCompositionId(), layers.first());
    if (!layer)
        return;
    bool ok = false;
    const QString name = QInputDialog::getText(window, tr("Rename Layer"),
        tr("Name; empty for that of its source"), QLineEdit::Normal, LayerText(project, *layer),
        &ok);
    if (!ok)
        return;
    ForSelected("Rename Layer", [&](Project &p, ItemId composition, LayerId id) {
        p.EditLayer(composition, id)->name = name.trimmed().toUtf8();
    });
}

void LayerCommands::OnLabel(int label)
{
    ForSelected("Label", [&](Project &p, ItemId composition, LayerId id) {
        p.EditLayer(composition, id)->label = static_cast<qint8>(label);
    });
}

/// Each copy lies right above its layer.
void LayerCommands::OnDuplicate()
{
    QVector<LayerId> copies;
    ForSelected("Duplicate Layer", [&](Project &p, ItemId composition, LayerId id) {
        const Layer original = *p.FindLayer(composition, id);
        const LayerId copy = p.AddCopy(original, composition);
        p.MoveLayer(composition, copy, p.FindComposition(composition)->IndexOf(id) - 1);
        copies << copy;
    });
    if (!copies.isEmpty())
        session.SelectLayers(copies);
}

void LayerCommands::OnDelete()
{
    ForSelected("Delete Layer",
        [](Project &p, ItemId composition, LayerId id) { p.RemoveLayer(composition, id); });
}

void LayerCommands::OnApplyEffect(EffectKey key)
{
    ForSelected("Apply Effect",
        [&](Project &p, ItemId composition, LayerId id) { p.ApplyEffect(composition, id, key); });
}

void LayerCommands::OnRemoveEffects()
{
    ForSelected("Remove Effects", [](Project &p, ItemId composition, LayerId id) {
        p.EditLayer(composition, id)->effects.clear();
    });
}

} // namespace rostrum
