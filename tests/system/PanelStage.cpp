#include "PanelStage.h"

#include "PluginDoor.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QTabBar>
#include <QTextEdit>
#include <QWindow>

using namespace rostrum;

namespace testing {
namespace {

constexpr int kPatience = 60000; // ms, on a busy machine

constexpr int kImages = 20; // of each series, numbered from 0
constexpr int kTimersTime = 130; // ms; more than the panel waits before it follows a command

const Rate kRate{ 25, 1 };

LayerId AddSeriesLayer(Project &project, ItemId item, ItemId composition, const Keys &keys)
{
    const LayerId added = project.AddLayer(item, composition);
    Stream &remap = project.EditLayer(composition, added)->timeRemap;
    for (const KeyAt &key : keys) {
        const int index
            = remap.InsertKey(kRate.FrameTime(key.frame), { key.image / 25.0, 0, 0, 0 });
        remap.SetKeyInterpolation(index, Interpolation::Hold, Interpolation::Hold);
    }
    return added;
}

/// Where a mouse event goes in. A window may be too small for what is in it.
QPoint InWindow(const QWidget *widget, const QPoint &pos)
{
    const QRect window = widget->window()->rect();
    const QPoint there = widget->mapTo(widget->window(), pos);
    return QPoint(qBound(window.left(), there.x(), window.right()),
        qBound(window.top(), there.y(), window.bottom()));
}

QWidget *OnlyOne(const QWidgetList &widgets, const char *className)
{
    QWidget *found = nullptr;
    for (QWidget *widget : widgets) {
        if (!widget->inherits(className))
            continue;
        if (found)
            return nullptr;
        found = widget;
    }
    return found;
}

ItemId AddSeriesItem(Project &project, const char *name)
{
    const QString stem = QString::fromLatin1(name);
    return project.AddFootage(name + QByteArray("[0000-0019].png"),
        SeriesOf(QStringLiteral("/scenes/") + stem, stem, kImages));
}

} // namespace

PanelStage::PanelStage()
{
    host.onComplaint = nullptr; // they are judged at the end, or taken by the test
    host.Driver().openProject = [this] {
        ReplaceProject();
        return A_Err_NONE;
    };
    host.Driver().saveProject = [] { return A_Err_NONE; };
    GiveWindows();
    connect(&answers, &QTimer::timeout, this, &PanelStage::AnswerBox);
    answers.start(5);

    const QString refused = EnterMorvex(host.Driver());
    if (!refused.isEmpty())
        qFatal("the plug-in: %s", qPrintable(refused));
    host.Driver().TogglePanel(kPanelName);
    if (!container || !QTest::qWaitFor([this] { return IsActive(); }, kPatience))
        qFatal("the panel's window does not come up");
    Settle();
    if (!Panel() || !Sheet() || !Graph() || !Dock())
        qFatal("the panel is not whole");
    GiveGraphRoom();
    OpenProject();
}

PanelStage::~PanelStage()
{
    answers.stop();
    Settle();
    host.Driver().CallDeath();
}

void PanelStage::GiveWindows()
{
    PanelWindows &windows = host.Driver().windows;
    windows.make = [this](const QByteArray &) {
        container = std::make_unique<QWidget>();
        container->resize(900, 900);
        // A host hands its window over as a pointer. NOLINTNEXTLINE(performance-no-int-to-ptr)
        return reinterpret_cast<AEGP_PlatformViewRef>(container->winId());
    };
    windows.show = [this](const QByteArray &) {
        container->show();
        container->activateWindow();
        QApplication::setActiveWindow(container.get()); // no window manager tells of a second time
    };
    windows.hide = [this](const QByteArray &) { container->hide(); };
    windows.isShown = [this](const QByteArray &) { return container && container->isVisible(); };
    windows.isFrontmost = windows.isShown;
}

void PanelStage::GiveGraphRoom()
{
    QWidget *handle = qobject_cast<QSplitter *>(Find("QSplitter"))->handle(1);
    const QPoint middle = handle->rect().center();
    const QPoint down = middle + QPoint(0, 300 - Graph()->height());
    Press(handle, middle);
    Move(handle, down);
    Release(handle, down - QPoint(0, handle->y() - Graph()->height())); // it has moved by now
    Settle();
}

void PanelStage::MakeProject(Project &project)
{
    Composition content;
    content.size = QSize(640, 360);
    content.rate = kRate;
    content.duration = kRate.FrameTime(kFrames);
    composition = project.AddComposition("scene 7", content);
    footage = AddSeriesItem(project, "walk");
    const ItemId run = AddSeriesItem(project, "run");
    const ItemId cel = AddSeriesItem(project, "cel");
    Footage still;
    still.folder = QStringLiteral("/scenes/stills");
    still.files << QStringLiteral("sky.png");
    still.size = QSize(640, 360);
    const ItemId sky = project.AddFootage("sky.png", still);

    layers.clear(); // each lies on top of those before
    layers.prepend(AddSeriesLayer(project, cel, composition, { { 0, 0 } }));
    layers.prepend(project.AddLayer(sky, composition));
    layers.prepend(AddSeriesLayer(project, run, composition, { { 0, 2 }, { 10, 5 } }));
    layers.prepend(AddSeriesLayer(project, footage, composition, { { 0, 1 }, { 4, 3 }, { 8, 0 } }));
}

void PanelStage::ReplaceProject()
{
    Project project;
    MakeProject(project);
    Document().Replace(project);
    Document().view.activeItem = composition;
}

void PanelStage::OpenProject()
{
    ReplaceProject();
    Document().view.activeItem = 0;
    Idle();
    for (const char *option : { "Sync Column with AE", "Sync Ima with AE" }) {
        if (IsTicked(option))
            Tick(option, false);
    }
    WaitForTimers(); // a frame that was still to be pushed, a refresh that was still due
    // By way of no composition, for the name alone would not tell it from the one before.
    Document().view.activeItem = footage;
    Idle();
    Document().view.activeItem = composition;
    Idle();
    Document().view.currentTimes.clear();
    Document().view.selections.clear();
    TakeBoxes();
    TakeLog();
}

const Layer &PanelStage::LayerAt(int col) const
{
    static const Layer none;
    const Layer *layer = host.GetProject().FindLayer(composition, layers.value(col));
    return layer ? *layer : none;
}

double PanelStage::StreamAt(int col, int stream, int frame, int component) const
{
    StreamValue value{};
    host.GetProject().StreamValueAt(LayerAt(col), stream, kRate.FrameTime(frame), &value);
    return value[static_cast<std::size_t>(component)];
}

double PanelStage::EffectAt(int col, const QByteArray &effect, int param) const
{
    for (const LayerEffect &applied : LayerAt(col).effects) {
        const EffectInfo *installed = FindEffect(applied.key);
        if (installed && installed->matchName == effect)
            return applied.params[param].Constant()[0];
    }
    return -1;
}

QVector<int> PanelStage::Images(int col) const
{
    QVector<int> images;
    for (int frame = 0; frame < kFrames; ++frame)
        images << qRound(25 * StreamAt(col, kTimeRemap, frame));
    return images;
}

QStringList PanelStage::SheetOf(int col) const
{
    QStringList texts;
    int above = -1;
    for (const int image : Images(col)) {
        texts << (image == 0     ? QString()
                : image == above ? QStringLiteral("~")
                                 : QString::number(image));
        above = image;
    }
    return texts;
}

int PanelStage::HostFrame()
{
    return kRate.FrameAt(host.GetDocument().view.currentTimes.value(composition, Time{ 0, 1 }));
}

void PanelStage::SetHostFrame(int frame)
{
    Document().view.currentTimes[composition] = kRate.FrameTime(frame);
}

QVector<int> PanelStage::HostSelection()
{
    QVector<int> columns;
    for (const LayerId layer : host.GetDocument().view.selections.value(composition))
        columns << layers.indexOf(layer);
    return columns;
}

void PanelStage::Idle()
{
    host.Driver().CallIdle();
    Settle();
}

void PanelStage::Settle()
{
    host.ReturnToEventLoop();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    host.ReturnToEventLoop();
}

void PanelStage::WaitForTimers()
{
    QTest::qWait(kTimersTime);
    Settle();
}

A_Err PanelStage::Run(AEGP_Command command)
{
    const A_Err error = host.Driver().RunCommand(command);
    host.ReturnToEventLoop();
    return error;
}

bool PanelStage::ChooseFlyout(const QByteArray &text)
{
    for (const FlyoutItem &item : host.Driver().PanelFlyout(kPanelName)) {
        if (item.text == text) {
            host.Driver().RunFlyout(kPanelName, item.command);
            Settle();
            return true;
        }
    }
    return false;
}

QWidget *PanelStage::Find(const char *className) const
{
    const QWidget *panel = Panel();
    return panel ? OnlyOne(panel->findChildren<QWidget *>(), className) : nullptr;
}

/// Where the panel is a window of the system's, the container hands the focus on to it.
bool PanelStage::IsActive() const
{
    return container->isActiveWindow() || (Panel() && Panel()->isActiveWindow());
}

/// It need not be a child of the container's: by the window system alone it may be one.
QWidget *PanelStage::Panel() const
{
    return OnlyOne(QApplication::allWidgets(), "WinExpo");
}

QTableWidget *PanelStage::Sheet() const
{
    return qobject_cast<QTableWidget *>(Find("WinGridDataAE"));
}

QTabWidget *PanelStage::Dock() const
{
    return qobject_cast<QTabWidget *>(Find("KDockPannel"));
}

void PanelStage::Press(
    QWidget *widget, const QPoint &pos, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    QTest::mousePress(widget->window()->windowHandle(), button, modifiers, InWindow(widget, pos));
}

void PanelStage::Move(QWidget *widget, const QPoint &pos)
{
    QTest::mouseMove(widget->window()->windowHandle(), InWindow(widget, pos));
}

void PanelStage::Release(
    QWidget *widget, const QPoint &pos, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    QTest::mouseRelease(widget->window()->windowHandle(), button, modifiers, InWindow(widget, pos));
}

void PanelStage::Click(
    QWidget *widget, const QPoint &pos, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    Press(widget, pos, button, modifiers);
    Release(widget, pos, button, modifiers);
    host.ReturnToEventLoop();
}

void PanelStage::Key(int key, Qt::KeyboardModifiers modifiers)
{
    QWidget *target = QApplication::focusWidget();
    QTest::keyClick(target ? target : Panel(), static_cast<Qt::Key>(key), modifiers);
    host.ReturnToEventLoop();
}

void PanelStage::Type(const QString &text)
{
    for (const QChar letter : text) {
        QWidget *target = QApplication::focusWidget();
        if (target && letter.unicode() < 128)
            QTest::keyClick(target, letter.toLatin1());
        else if (target)
            QTest::sendKeyEvent(QTest::Click, target, Qt::Key_unknown, letter, Qt::NoModifier);
    }
    host.ReturnToEventLoop();
}

QPoint PanelStage::CellMiddle(int col, int row) const
{
    QTableWidget *sheet = Sheet();
    const QModelIndex cell = sheet->model()->index(row, col);
    sheet->scrollTo(cell);
    return sheet->visualRect(cell).center();
}

void PanelStage::ClickCell(int col, int row, Qt::KeyboardModifiers modifiers)
{
    const QPoint pos = CellMiddle(col, row);
    Click(Sheet()->viewport(), pos, Qt::LeftButton, modifiers);
    Settle();
}

void PanelStage::TypeCell(const QString &text)
{
    Sheet()->setFocus();
    Type(text.left(1)); // opens the editor
    QPointer<QLineEdit> editor = Sheet()->viewport()->findChild<QLineEdit *>();
    QVERIFY2(editor, "typing opened no editor");
    Type(text.mid(1));
    Key(Qt::Key_Return);
    QTRY_VERIFY(!editor);
    Settle();
}

void PanelStage::DragCells(int fromCol, int fromRow, int toCol, int toRow)
{
    QWidget *viewport = Sheet()->viewport();
    const QPoint from = CellMiddle(fromCol, fromRow);
    const QPoint to = CellMiddle(toCol, toRow);
    Press(viewport, from);
    Move(viewport, (from + to) / 2);
    Move(viewport, to);
    Release(viewport, to);
    host.ReturnToEventLoop();
    Settle();
}

bool PanelStage::ClickTab(const QString &title)
{
    QTabBar *bar = Dock()->tabBar();
    for (int tab = 0; tab < bar->count(); ++tab) {
        if (bar->tabText(tab) != title)
            continue;
        Click(bar, bar->tabRect(tab).center());
        Settle();
        return bar->currentIndex() == tab;
    }
    return false;
}

/// An editor carries its label beside the input, or on it.
QWidget *PanelStage::EditorOf(const char *label, int number) const
{
    const QString text = QString::fromLatin1(label);
    for (QWidget *editor : Dock()->findChildren<QWidget *>()) {
        if (!editor->inherits("T_QtEdit"))
            continue;
        const auto *beside = editor->findChild<QLabel *>();
        const auto *box = editor->findChild<QAbstractButton *>();
        const bool isIt = (beside && beside->text() == text) || (box && box->text() == text);
        if (isIt && number-- == 0)
            return editor;
    }
    return nullptr;
}

/// Brings the tab of an input to front, by the mouse.
void PanelStage::Reach(QWidget *input)
{
    QTabWidget *dock = Dock();
    for (int tab = 0; tab < dock->count(); ++tab) {
        if (dock->widget(tab)->isAncestorOf(input) && tab != dock->currentIndex())
            ClickTab(dock->tabText(tab));
    }
}

void PanelStage::SetNumber(const char *label, int value)
{
    auto *box = Editor<QSpinBox>(label);
    Reach(box);
    auto *line = box->findChild<QLineEdit *>();
    Click(line);
    Key(Qt::Key_A, Qt::ControlModifier);
    Type(QString::number(value));
    Key(Qt::Key_Return);
    Settle();
}

void PanelStage::Tick(const char *label, bool on, int number)
{
    auto *box = Editor<QCheckBox>(label, number);
    Reach(box);
    if (box->isChecked() != on)
        Click(box, QPoint(8, box->height() / 2));
    Settle();
}

bool PanelStage::IsTicked(const char *label, int number) const
{
    return Editor<QCheckBox>(label, number)->isChecked();
}

void PanelStage::PickEntry(const char *label, const QString &entry)
{
    auto *combo = Editor<QComboBox>(label);
    Reach(combo);
    combo->setFocus();
    Key(Qt::Key_Home);
    for (int i = 1; i < combo->count() && combo->currentText() != entry; ++i)
        Key(Qt::Key_Down);
    Settle();
}

void PanelStage::SetText(const char *label, const QString &text)
{
    auto *line = Editor<QLineEdit>(label);
    Reach(line);
    Click(line);
    Key(Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty())
        Key(Qt::Key_Delete);
    Type(text);
    Key(Qt::Key_Return);
    Settle();
}

void PanelStage::PressButton(const char *label)
{
    auto *button = Editor<QPushButton>(label);
    Reach(button);
    Click(button);
    Settle();
}

QStringList PanelStage::Shown(int col) const
{
    QStringList texts;
    for (int row = 0; row < Sheet()->rowCount(); ++row) {
        const QTableWidgetItem *item = Sheet()->item(row, col);
        texts << (item ? item->text().trimmed() : QStringLiteral("no item"));
    }
    return texts;
}

QVector<bool> PanelStage::TabsEnabled() const
{
    QVector<bool> enabled;
    for (int tab = 0; tab < Dock()->count(); ++tab)
        enabled << Dock()->isTabEnabled(tab);
    return enabled;
}

QStringList PanelStage::TakeLog()
{
    auto *page = Dock()->findChild<QTextEdit *>(QStringLiteral("efLog"));
    const QStringList lines = page->toPlainText().split(QLatin1Char('\n'));
    page->clear();
    return lines;
}

void PanelStage::AnswerBox()
{
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (!box || !box->isVisible())
        return;
    boxes << QStringLiteral("%1: %2").arg(box->windowTitle(), box->text());
    box->accept();
}

QStringList PanelStage::TakeBoxes()
{
    QStringList taken;
    taken.swap(boxes);
    return taken;
}

} // namespace testing
