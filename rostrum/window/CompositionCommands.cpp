#include "CompositionCommands.h"

#include "render/Placement.h"
#include "window/Commands.h"
#include "window/ItemText.h"
#include "window/ProjectTree.h"

namespace rostrum {
namespace {

/// The first of the items that has a size, null without one.
const Item *FirstPicture(const Project &project, const QVector<ItemId> &items)
{
    for (const ItemId id : items) {
        const Item *item = project.Find(id);
        if (item && !item->AsFolder())
            return item;
    }
    return nullptr;
}

} // namespace

CompositionCommands::CompositionCommands(Session &session, ProjectTree &tree, QWidget *window)
    : QObject(window), session(session), tree(tree), window(window)
{
    last.name = "Composition";
}

void CompositionCommands::Fill(QMenu *menu)
{
    const QKeySequence newKey = CtrlKey(Qt::Key_N);
    AddEntry(menu, tr("&New Composition..."), newKey, this, &CompositionCommands::OnNew);
    QAction *from
        = AddEntry(menu, tr("New from &Picked Items"), this, &CompositionCommands::OnNewFromPicked);
    menu->addSeparator();
    const QKeySequence settingsKey = CtrlKey(Qt::Key_K);
    QAction *settings
        = AddEntry(menu, tr("&Settings..."), settingsKey, this, &CompositionCommands::OnSettings);
    QAction *add = AddEntry(menu, tr("&Add Picked Items as Layers"), CtrlKey(Qt::Key_Slash), this,
        [this] { AddLayers(tree.Picked()); });
    const auto hasPicture
        = [this] { return FirstPicture(session.GetProject(), tree.Picked()) != nullptr; };
    const auto hasComposition = [this] { return session.ActiveComposition() != nullptr; };
    GreyUnless(menu, from, hasPicture);
    GreyUnless(menu, settings, hasComposition);
    GreyUnless(
        menu, add, [hasPicture, hasComposition] { return hasPicture() && hasComposition(); });
}

/// The size of the drawing that is picked, if there is one: scenes are drawn in their own size.
CompositionSettings CompositionCommands::Proposed() const
{
    CompositionSettings settings = last;
    settings.name = FreeName(session.GetProject(), "Composition");
    if (const Item *picture = FirstPicture(session.GetProject(), tree.Picked()))
        settings.size = picture->Dimensions();
    return settings;
}

ItemId CompositionCommands::Make(const CompositionSettings &settings, const QVector<ItemId> &items)
{
    Composition composition;
    ApplySettings(settings, &composition);
    ItemId made = 0;
    const ItemId folder = tree.TargetFolder();
    session.Do("New Composition", [&](Project &project) {
        made = project.AddComposition(settings.name, composition, folder);
        for (auto item = items.crbegin(); item != items.crend(); ++item) {
            if (project.CanAddLayer(*item, made))
                project.AddLayer(*item, made);
        }
    });
    tree.Pick({ made }); // else the item picked before would be in front again with the list
    session.SetActiveItem(made);
    return made;
}

void CompositionCommands::OnNew()
{
    CompositionDialog dialog(tr("New Composition"), Proposed(), window);
    if (dialog.exec() != QDialog::Accepted)
        return;
    last = dialog.Settings();
    Make(last, {});
}

void CompositionCommands::OnNewFromPicked()
{
    NewFrom(tree.Picked());
}

void CompositionCommands::NewFrom(const QVector<ItemId> &items)
{
    const Item *picture = FirstPicture(session.GetProject(), items);
    if (!picture)
        return;
    CompositionSettings settings = last;
    settings.name = FreeName(session.GetProject(), picture->name.split('[').first());
    settings.size = picture->Dimensions();
    if (picture->CanRemapTime()) { // it has a length, and a rate of its own
        if (const Composition *other = picture->AsComposition()) {
            settings.rate = other->rate;
            settings.frames = FrameCount(*other);
        } else {
            settings.rate = picture->AsFootage()->rate;
            settings.frames = picture->AsFootage()->files.size();
        }
        settings.frames = qMax(settings.frames, 1);
    }
    Make(settings, items);
}

void CompositionCommands::OnSettings()
{
    const ItemId id = session.ActiveCompositionId();
    const Item *item = session.GetProject().Find(id);
    if (!item)
        return;
    CompositionDialog dialog(tr("Composition Settings"), SettingsOf(*item), window);
    if (dialog.exec() != QDialog::Accepted)
        return;
    last = dialog.Settings();
    session.Do("Composition Settings", [&](Project &project) {
        if (!project.FindComposition(id))
            return; // gone meanwhile
        project.Edit(id)->name = last.name;
        ApplySettings(last, project.EditComposition(id));
    });
}

void CompositionCommands::AddLayers(const QVector<ItemId> &items)
{
    AddLayersTo(session.ActiveCompositionId(), items);
}

void CompositionCommands::AddLayersTo(ItemId composition, const QVector<ItemId> &items)
{
    if (!composition || items.isEmpty())
        return;
    QVector<LayerId> added;
    int refused = 0;
    session.Do("Add Layers", [&](Project &project) {
        for (auto item = items.crbegin(); item != items.crend(); ++item) {
            if (project.CanAddLayer(*item, composition))
                added.prepend(project.AddLayer(*item, composition));
            else
                ++refused;
        }
    });
    if (refused > 0)
        session.Tell(tr("A folder is no layer, and a composition may not show itself: left out %1")
                         .arg(refused));
    if (added.isEmpty())
        return;
    session.SetActiveItem(composition);
    session.SelectLayers(added);
}

} // namespace rostrum
