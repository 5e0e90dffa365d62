#include "PanelMonkey.h"

#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QWheelEvent>

using namespace rostrum;

namespace testing {
namespace {

constexpr int kMostLayers = 9; // more are thinned out, so that a paint stays quick
constexpr int kImages = 20; // of the stage's series

const Rate kRate{ 25, 1 };

const char *const kNumbers[] = { "Pos. X", "Pos. Y", "Scale", "Rotation", "Opacity", "Blur", "Hue",
    "Saturation", "Lightness" };
const char *const kBoxes[]
    = { "Key Pos", "Key Scale", "Key Rotation", "Sync Column with AE", "Sync Ima with AE" };
const char *const kButtons[] = { "<< (move left)", ">> (move right)", "New Col" };
const char *const kNames[] = { "ink", "ink.tga", "nowhere", "", "/nowhere/x.png",
    "\xc3\xa9t\xc3\xa9", "..", "ink0001.png" };

struct Stroke
{
    int key;
    Qt::KeyboardModifiers modifiers;
};

const Stroke kSheetStrokes[] = { { Qt::Key_Return, {} }, { Qt::Key_G, Qt::ControlModifier },
    { Qt::Key_H, Qt::ControlModifier }, { Qt::Key_Home, {} }, { Qt::Key_End, {} },
    { Qt::Key_Insert, {} }, { Qt::Key_Delete, Qt::ControlModifier }, { Qt::Key_Delete, {} },
    { Qt::Key_C, Qt::ControlModifier }, { Qt::Key_X, Qt::ControlModifier },
    { Qt::Key_V, Qt::ControlModifier } };

const int kKeys[] = { Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_PageUp,
    Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End, Qt::Key_Space, Qt::Key_Tab, Qt::Key_Backtab,
    Qt::Key_Escape, Qt::Key_Return, Qt::Key_F2, Qt::Key_1, Qt::Key_7, Qt::Key_A, Qt::Key_Z,
    Qt::Key_Y, Qt::Key_O, Qt::Key_S, Qt::Key_Backspace };

} // namespace

PanelMonkey::PanelMonkey(PanelStage &stage, quint32 seed) : stage(stage), dice(seed)
{
    WriteSeries(folder.path(), QStringLiteral("ink"), 1, 6);
    stage.Document().path = folder.filePath(QStringLiteral("scene.rostrum"));
    connect(&popups, &QTimer::timeout, this, &PanelMonkey::AnswerPopup);
    popups.start(1);
}

QByteArray PanelMonkey::Act()
{
    struct Choice
    {
        int weight;
        Deed deed;
    };
    static const Choice choices[] = { { 14, &PanelMonkey::ClickAnywhere },
        { 5, &PanelMonkey::DragAnywhere }, { 2, &PanelMonkey::TurnWheel },
        { 10, &PanelMonkey::PressKey }, { 16, &PanelMonkey::RunSheetCommand },
        { 10, &PanelMonkey::TypeText }, { 10, &PanelMonkey::SelectCells },
        { 8, &PanelMonkey::EditNumber }, { 6, &PanelMonkey::TickBox },
        { 4, &PanelMonkey::PressButton }, { 2, &PanelMonkey::NameColumn },
        { 3, &PanelMonkey::ChangeTab }, { 3, &PanelMonkey::ActivateItem },
        { 5, &PanelMonkey::MoveHost }, { 5, &PanelMonkey::EditLayer },
        { 3, &PanelMonkey::EditLayers }, { 2, &PanelMonkey::EditItems },
        { 8, &PanelMonkey::RunCommand }, { 2, &PanelMonkey::UseFlyout },
        { 1, &PanelMonkey::TogglePanel }, { 1, &PanelMonkey::ResizeContainer },
        { 12, &PanelMonkey::Idle }, { 1, &PanelMonkey::Wait } };
    int sum = 0;
    for (const Choice &choice : choices)
        sum += choice.weight;
    int drawn = dice.bounded(sum);
    const Choice *choice = choices;
    for (; drawn >= choice->weight; ++choice)
        drawn -= choice->weight;
    QByteArray what = (this->*choice->deed)();
    stage.Settle();
    return what;
}

void PanelMonkey::Rest()
{
    if (!stage.Container()->isVisible())
        TogglePanel();
    for (const char *name : { "WinGridDataAE", "WinGraphDataAE" }) {
        if (stage.Find(name)->isHidden())
            stage.ChooseFlyout(qstrcmp(name, "WinGraphDataAE") ? "Show Grid" : "Show Graph");
    }
    stage.WaitForTimers();
}

QByteArray PanelMonkey::HostError()
{
    if (!stage.Open().isEmpty())
        return "open: " + stage.Open().join(", ");
    for (const QByteArray &complaint : stage.host.TakeComplaints()) {
        // By rule: a reload of a composition that is gone leaves its group to the host to close.
        if (complaint != "undo group \"morvex:Reload\" was left open")
            return "complaint: " + complaint;
    }
    if (!stage.host.UnexpectedCalls().isEmpty())
        return "unexpected: " + stage.host.UnexpectedCalls().join(", ");
    // The panel suite by the plug-in and by the panel, the app suite by the panel. The handle that
    // is lost while the project's path is read grows by one with each new column.
    QByteArrayList suites;
    for (const QByteArray &held : stage.host.HeldByRule()) {
        if (!held.startsWith("memory of 520 bytes"))
            suites << held;
    }
    if (suites
        != QByteArrayList{ "suite \"AEGP Workspace Panel Suite\" 1",
            "suite \"AEGP Workspace Panel Suite\" 1", "suite \"PF AE App Suite\" 6" })
        return "held: " + suites.join(", ");
    return {};
}

/// What the sheet shows of a layer: the images of a series, a stroke for the frames of another one.
QStringList PanelMonkey::ColumnOf(const Layer &layer, int frames) const
{
    const Item *source = stage.host.GetProject().SourceOf(layer);
    const auto *footage = source ? std::get_if<Footage>(&source->content) : nullptr;
    if (!footage || footage->files.size() < 2)
        return {}; // what bounds it is not looked at here
    QStringList texts;
    int above = -1;
    for (int frame = 0; frame < frames; ++frame) {
        StreamValue value{};
        stage.host.GetProject().StreamValueAt(layer, kTimeRemap, kRate.FrameTime(frame), &value);
        int image = qRound(25 * value[0]);
        if (image < 0 || image >= footage->files.size())
            image = 0;
        texts << (image == 0     ? QString()
                : image == above ? QStringLiteral("~")
                                 : QString::number(image));
        above = image;
    }
    return texts;
}

QByteArray PanelMonkey::SheetError()
{
    Rest();
    stage.Idle();
    const Item *active = stage.host.GetProject().Find(stage.Document().view.activeItem);
    if (!active)
        return {};
    const bool isScene = std::holds_alternative<Composition>(active->content);
    const QString title = isScene ? QString::fromUtf8(active->name.left(31)) : QString();
    if (stage.Title() != title)
        return "the title is \"" + stage.Title().toUtf8() + '"';
    stage.Click(stage.Panel()->findChild<QWidget *>(QStringLiteral("pbRefresh")));
    stage.Settle();
    const QTableWidget *sheet = stage.Sheet();
    const Composition *content = Content();
    if (!content)
        return {};
    const int frames = qMin(1500, kRate.FrameAt(content->duration));
    if (sheet->columnCount() != qMin(50, content->layers.size()) || sheet->rowCount() != frames)
        return "the sheet has another size";
    for (int col = 0; col < sheet->columnCount(); ++col) {
        const QStringList expected = ColumnOf(*content->layers[col], frames);
        columnsCompared += expected.isEmpty() ? 0 : 1;
        if (!expected.isEmpty() && stage.Shown(col) != expected)
            return "column " + QByteArray::number(col) + " shows "
                + stage.Shown(col).join(QLatin1Char('|')).toUtf8() + " for "
                + expected.join(QLatin1Char('|')).toUtf8();
    }
    return {};
}

// In the panel.

Qt::KeyboardModifiers PanelMonkey::AnyModifiers()
{
    switch (dice.bounded(10)) {
    case 0:
        return Qt::ShiftModifier;
    case 1:
        return Qt::ControlModifier;
    case 2:
        return Qt::ControlModifier | Qt::AltModifier;
    default:
        return {};
    }
}

QPoint PanelMonkey::AnyPoint(const QWidget *widget)
{
    return QPoint(dice.bounded(qMax(1, widget->width())), dice.bounded(qMax(1, widget->height())));
}

/// Any that can be seen. The link behind the "?" would open the user's browser.
QWidget *PanelMonkey::AnyWidget()
{
    QWidgetList seen;
    for (QWidget *widget : stage.Panel()->findChildren<QWidget *>()) {
        if (widget->isVisible() && widget->window() == stage.Container()
            && widget->objectName() != QLatin1String("label"))
            seen << widget;
    }
    return seen.isEmpty() ? stage.Panel() : seen[dice.bounded(seen.size())];
}

QByteArray PanelMonkey::ClickAnywhere()
{
    QWidget *widget = AnyWidget();
    const QPoint pos = AnyPoint(widget);
    const Qt::MouseButton button = Chance(6) ? Qt::RightButton
        : Chance(12)                         ? Qt::MiddleButton
                                             : Qt::LeftButton;
    QByteArray what = QByteArray("click on ") + widget->metaObject()->className();
    stage.Click(widget, pos, button, AnyModifiers());
    return what;
}

QByteArray PanelMonkey::DragAnywhere()
{
    QWidget *widget = AnyWidget();
    QByteArray what = QByteArray("drag over ") + widget->metaObject()->className();
    const QPointer<QWidget> held = widget;
    const Qt::MouseButton button = Chance(4) ? Qt::MiddleButton : Qt::LeftButton;
    stage.Press(widget, AnyPoint(widget), button, AnyModifiers());
    for (int i = dice.bounded(4); i >= 0 && held; --i) {
        stage.Move(held, AnyPoint(held));
        if (Chance(3))
            stage.host.Driver().CallIdle(); // the host runs on while a button is held
    }
    if (held)
        stage.Release(held, AnyPoint(held), button);
    else
        stage.Release(stage.Panel(), QPoint(1, 1), button);
    return what;
}

QByteArray PanelMonkey::TurnWheel()
{
    QWidget *widget = Chance(2) ? stage.Graph() : AnyWidget();
    QByteArray what = QByteArray("wheel over ") + widget->metaObject()->className();
    const QPoint pos = AnyPoint(widget);
    QWheelEvent event(pos, widget->mapToGlobal(pos), QPoint(), QPoint(0, Chance(2) ? 120 : -120),
        Qt::NoButton, AnyModifiers(), Qt::NoScrollPhase, /*inverted=*/false);
    QApplication::sendEvent(widget, &event);
    return what;
}

QByteArray PanelMonkey::PressKey()
{
    const int key = kKeys[dice.bounded(int(std::size(kKeys)))];
    const Qt::KeyboardModifiers modifiers = AnyModifiers();
    const QByteArray what
        = "key " + QByteArray::number(key, 16) + " with " + QByteArray::number(int(modifiers), 16);
    stage.Key(key, modifiers);
    return what;
}

QByteArray PanelMonkey::RunSheetCommand()
{
    const Stroke stroke = kSheetStrokes[dice.bounded(int(std::size(kSheetStrokes)))];
    stage.Sheet()->setFocus();
    stage.Key(stroke.key, stroke.modifiers);
    return "sheet command " + QByteArray::number(stroke.key, 16);
}

QByteArray PanelMonkey::TypeText()
{
    const QString text = QString::number(dice.bounded(Chance(5) ? 12000 : 25));
    if (Chance(2))
        stage.Sheet()->setFocus();
    stage.Type(text);
    if (!Chance(4))
        stage.Key(Qt::Key_Return);
    return "typing " + text.toUtf8();
}

QByteArray PanelMonkey::SelectCells()
{
    QTableWidget *sheet = stage.Sheet();
    if (!sheet->isVisible() || sheet->columnCount() == 0 || sheet->rowCount() == 0)
        return "nothing to select";
    const int col = dice.bounded(sheet->columnCount());
    const int row = dice.bounded(sheet->rowCount());
    if (Chance(2)) {
        stage.ClickCell(col, row, AnyModifiers());
        return "a cell";
    }
    const int toCol = qMin(sheet->columnCount() - 1, col + dice.bounded(3));
    const int toRow = qMin(sheet->rowCount() - 1, row + dice.bounded(5));
    stage.DragCells(col, row, toCol, toRow);
    return "a block of cells";
}

QByteArray PanelMonkey::EditNumber()
{
    const char *label = kNumbers[dice.bounded(int(std::size(kNumbers)))];
    const int value = Chance(6) ? static_cast<int>(dice.generate()) : dice.bounded(-200, 200);
    if (stage.Container()->isVisible())
        stage.SetNumber(label, value);
    return QByteArray(label) + " to " + QByteArray::number(value);
}

QByteArray PanelMonkey::TickBox()
{
    const char *label = kBoxes[dice.bounded(int(std::size(kBoxes)))];
    if (stage.Container()->isVisible())
        stage.Tick(label, !stage.IsTicked(label));
    return label;
}

QByteArray PanelMonkey::PressButton()
{
    const char *label = kButtons[dice.bounded(int(std::size(kButtons)))];
    if (stage.Container()->isVisible())
        stage.PressButton(label);
    return label;
}

QByteArray PanelMonkey::NameColumn()
{
    const QByteArray name = kNames[dice.bounded(int(std::size(kNames)))];
    if (stage.Container()->isVisible()) {
        stage.SetText("Name", QString::fromUtf8(name));
        stage.PickEntry("Type", QString::fromLatin1(Chance(3) ? "FIXE" : "SEQUENCE"));
        stage.PickEntry("Ext", QString::fromLatin1(Chance(4) ? "mov" : "png"));
    }
    return "a column's name: " + name;
}

QByteArray PanelMonkey::ChangeTab()
{
    const QString title = stage.Dock()->tabText(dice.bounded(stage.Dock()->count()));
    if (stage.Container()->isVisible())
        stage.ClickTab(title);
    return "tab " + title.toUtf8();
}

/// Menus and dialogs hold the program until someone answers.
void PanelMonkey::AnswerPopup()
{
    if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
        const QList<QAction *> actions = menu->actions();
        const int choice = dice.bounded(actions.size() + 1);
        if (choice < actions.size() && actions[choice]->isEnabled())
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                menu->actionGeometry(actions[choice]).center());
        else
            menu->close();
    } else if (QWidget *popup = QApplication::activePopupWidget()) {
        popup->close();
    }
    auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (dialog && !qobject_cast<QMessageBox *>(dialog))
        dialog->reject();
}

// In the host.

QVector<ItemId> PanelMonkey::Items() const
{
    const Project &project = stage.host.GetProject();
    QVector<ItemId> items;
    for (ItemId item = project.NextInWalk(project.RootFolder()); item;
         item = project.NextInWalk(item))
        items << item;
    return items;
}

/// Of the active composition, null when there is none.
const Composition *PanelMonkey::Content() const
{
    return stage.host.GetProject().FindComposition(stage.Document().view.activeItem);
}

LayerId PanelMonkey::AnyLayer()
{
    const Composition *content = Content();
    if (!content || content->layers.isEmpty())
        return 0;
    return content->layers[dice.bounded(content->layers.size())]->id;
}

QByteArray PanelMonkey::ActivateItem()
{
    const QVector<ItemId> items = Items();
    ItemId item = stage.composition;
    if (Chance(3) && !items.isEmpty())
        item = items[dice.bounded(items.size())];
    if (Chance(8))
        item = 0;
    stage.Document().view.activeItem = item;
    return "active item " + QByteArray::number(item);
}

QByteArray PanelMonkey::MoveHost()
{
    const ItemId item = stage.Document().view.activeItem;
    stage.Document().view.currentTimes[item] = Time{ dice.bounded(-10, 60), 25 };
    if (const LayerId layer = AnyLayer())
        stage.Document().view.selections[item] = { layer };
    if (Chance(5))
        stage.Document().view.selections.remove(item);
    return "the host's time and selection";
}

QByteArray PanelMonkey::EditLayer()
{
    const LayerId id = AnyLayer();
    if (!id)
        return "no layer to edit";
    Layer &layer = *stage.Edit().EditLayer(stage.Document().view.activeItem, id);
    switch (dice.bounded(6)) {
    case 0:
        layer.name = Chance(2) ? QByteArray() : QByteArray(dice.bounded(40), 'n');
        return "a layer's name";
    case 1:
        layer.inPoint = kRate.FrameTime(dice.bounded(-10, 30));
        layer.duration = kRate.FrameTime(dice.bounded(1, 50));
        return "a layer's span";
    case 2:
        layer.position.InsertKey(kRate.FrameTime(dice.bounded(40)), { 5, 6, 0, 0 });
        return "a key of the position";
    default:
        break;
    }
    Stream &remap = layer.timeRemap;
    if (remap.HasKeys() && Chance(3)) {
        remap.DeleteKey(dice.bounded(remap.KeyCount()));
        return "a key of the images less";
    }
    const int key = remap.InsertKey(
        kRate.FrameTime(dice.bounded(40)), { dice.bounded(kImages + 2) / 25.0, 0, 0, 0 });
    const Interpolation kind = Chance(4) ? Interpolation::Linear : Interpolation::Hold;
    remap.SetKeyInterpolation(key, kind, kind);
    return "a key of the images";
}

QByteArray PanelMonkey::EditLayers()
{
    const ItemId active = stage.Document().view.activeItem;
    const Composition *content = Content();
    if (!content)
        return "no layers to edit";
    const int count = content->layers.size();
    const LayerId layer = AnyLayer();
    if (count > kMostLayers || (layer && Chance(4))) {
        stage.Edit().RemoveLayer(active, layer);
        return "a layer less";
    }
    const LayerId other = AnyLayer();
    if (layer && Chance(2)) {
        stage.Edit().SetParent(active, layer, layer == other ? 0 : other);
        return "a parent";
    }
    if (layer && Chance(2)) {
        stage.Edit().MoveLayer(active, layer, dice.bounded(count));
        return "the layers' order";
    }
    const QVector<ItemId> items = Items();
    const ItemId source = items[dice.bounded(items.size())]; // the active one is among them
    if (stage.host.GetProject().CanAddLayer(source, active))
        stage.Edit().AddLayer(source, active);
    return "a layer more";
}

QByteArray PanelMonkey::EditItems()
{
    const QVector<ItemId> items = Items();
    const ItemId active = stage.Document().view.activeItem;
    switch (items.isEmpty() ? 5 : dice.bounded(6)) {
    case 0:
        stage.Edit().Edit(items[dice.bounded(items.size())])->name
            = Chance(3) ? QByteArray(dice.bounded(1, 40), 'z') : QByteArray("scene 7");
        return "an item's name";
    case 1:
        if (items.size() > 3)
            stage.Edit().RemoveItem(items[dice.bounded(items.size())]);
        return "an item less";
    case 2:
        if (items.size() < 12)
            stage.Edit().AddComposition(Chance(2) ? "scene 7" : "another", {});
        return "a composition more";
    case 3:
        if (Content())
            stage.Edit().EditComposition(active)->duration = kRate.FrameTime(dice.bounded(1, 60));
        return "the composition's duration";
    case 4:
        stage.Document().CloseLooseEnds();
        stage.ReplaceProject();
        stage.Document().path = folder.filePath(QStringLiteral("scene.rostrum"));
        return "another project";
    default:
        stage.ReplaceProject();
        stage.Document().path.clear(); // never saved
        return "a new project";
    }
}

QByteArray PanelMonkey::RunCommand()
{
    static const AEGP_Command commands[] = { kHostCommandUndo, kHostCommandUndo, kHostCommandUndo,
        kHostCommandRedo, kHostCommandRedo, kHostCommandOpenProject, kHostCommandSave, 4242 };
    const AEGP_Command command = commands[dice.bounded(Chance(4) ? 8 : 5)];
    stage.host.Driver().CallUpdateMenus(dice.bounded(11));
    stage.Run(command); // unchecked: there may be nothing to undo
    return "command " + QByteArray::number(command);
}

QByteArray PanelMonkey::UseFlyout()
{
    const QVector<FlyoutItem> items = stage.host.Driver().PanelFlyout(PanelStage::kPanelName);
    const FlyoutItem &item = items[dice.bounded(items.size())];
    stage.host.Driver().RunFlyout(PanelStage::kPanelName, item.command);
    return "flyout " + item.text;
}

QByteArray PanelMonkey::TogglePanel()
{
    stage.Run(stage.host.Driver().MenuItems().value(0).command);
    return "the panel closed or shown";
}

QByteArray PanelMonkey::ResizeContainer()
{
    const bool isSmall = Chance(3);
    stage.Container()->resize(
        isSmall ? QSize(dice.bounded(1, 300), dice.bounded(1, 300)) : QSize(900, 900));
    return "another size";
}

QByteArray PanelMonkey::Idle()
{
    stage.Idle();
    return "idle";
}

QByteArray PanelMonkey::Wait()
{
    QTest::qWait(dice.bounded(120));
    return "a wait";
}

} // namespace testing
