#include "PanelFixture.h"

#include "T_Types/T_QtEdit.h"
#include "T_Types/T_QtEditTab.h"
#include "T_Types/T_Undo.h"
#include "T_Types/T_Var.h"
#include "panel/WinGraphDataAE.h"
#include "panel/WinGridDataAE.h"
#include "support/vnLog.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include <cmath>

using namespace rostrum;

namespace {

const QSize kContainerSize(861, 500);

/// As at the start of a process: both are made once and never again.
void Forget()
{
    vipLi *library = GetVipLi();
    std::memset(library->CompoName, 0, sizeof library->CompoName);
    std::memset(library->KeyMarks, 0, sizeof library->KeyMarks);
    library->Compo = nullptr;
    library->Layer = nullptr;
    library->Project = nullptr;
    const std::unique_ptr<::Doc> fresh(new ::Doc);
    ::Doc *doc = GetDoc();
    doc->row = doc->col = 0;
    doc->colWidth = fresh->colWidth;
    doc->extIndex = doc->typeIndex = 0;
    doc->extList = fresh->extList;
    doc->name.clear();
    doc->syncIma = doc->syncColumn = false;
    for (qint32 *number : { &doc->posX, &doc->posY, &doc->scale, &doc->rotation, &doc->opacity,
             &doc->blur, &doc->hue, &doc->saturation, &doc->lightness })
        *number = 0;
    for (bool *key : { &doc->keyPos, &doc->keyPosBis, &doc->keyScale, &doc->keyRotation })
        *key = false;
    T_Undo::SetEnabled(true);
    T_Undo::Instance()->Clear();
    vnLog::Instance()->Clear();
}

/// Lines that the sheet writes at each rebuild.
bool IsRebuildLine(const QString &line)
{
    return line == QLatin1String("setText2") || line.startsWith(QLatin1String("x y "));
}

/// Lines of the panel's ordinary course, which need not be taken.
bool IsPanelLine(const QString &line)
{
    return line.startsWith(QLatin1String("OnSpinNotify "))
        || line.startsWith(QLatin1String("NoCompoSelected "))
        || line == QLatin1String("T_Struct::OnButtonClicked");
}

} // namespace

PanelFixture::PanelFixture(int frames)
    : LibrarySheet({ { 0, 1 }, { 4, 2 } }, frames), before(qInstallMessageHandler(nullptr))
{
    qInstallMessageHandler(before);
    layers << layer;
    layers.prepend(AddStill("sky.png"));
    layers.prepend(AddSeries("jump", 9, { { 0, 3 }, { 5, 6 } }));
    host.GetDocument().Replace(Project(host.GetProject())); // with an empty history
    host.GetDocument().view.activeItem = composition;
    host.GetDocument().view.selections.insert(composition, { layer });
    Forget();
}

PanelFixture::~PanelFixture()
{
    const QStringList left = panel ? TakeLog() : QStringList();
    delete panel;
    qInstallMessageHandler(before);
    for (const QString &line : left) {
        if (!IsPanelLine(line))
            qWarning("left in the log page: %s", qPrintable(line));
    }
    host.GetDocument().CloseLooseEnds();
}

void PanelFixture::Open()
{
    container = std::make_unique<QWidget>();
    container->resize(kContainerSize);
    // A host hands its window over as a pointer. NOLINTNEXTLINE(performance-no-int-to-ptr)
    const auto view = reinterpret_cast<AEGP_PlatformViewRef>(container->winId());
    panel
        = new WinExpo(host.BasicSuite(), GetVipLi()->PluginId, /*panel=*/nullptr, view, &functions);
    container->show();
    container->activateWindow();
    QCoreApplication::processEvents(); // which mostly is enough: the waits below go in long steps
    QTRY_VERIFY(panel->isVisible()); // by the container's first paint
    // Where the panel is a window of the system's, the container hands the focus on to it.
    QTRY_VERIFY(container->isActiveWindow() || panel->isActiveWindow());
}

void PanelFixture::OpenOnCompo()
{
    Open();
    TakeLog(); // the banner
    Poll();
}

void PanelFixture::Poll()
{
    panel->OnHostIdle();
    Settle();
}

void PanelFixture::Settle()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::sendPostedEvents(nullptr, 0);
}

WinGridDataAE &PanelFixture::Grid() const
{
    return *panel->findChild<WinGridDataAE *>();
}

WExpoGraph &PanelFixture::Graph() const
{
    return *panel->findChild<WinGraphDataAE *>();
}

KDockPannel &PanelFixture::Dock() const
{
    return *panel->findChild<KDockPannel *>();
}

QTextEdit &PanelFixture::LogPage() const
{
    return *panel->findChild<QTextEdit *>(QStringLiteral("efLog"));
}

QTimer &PanelFixture::RefreshTimer() const
{
    return *panel->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
}

QStringList PanelFixture::Shown(int col) const
{
    const WinGridDataAE &grid = Grid();
    QStringList texts;
    for (int row = 0; row < grid.rowCount(); ++row)
        texts << (grid.item(row, col) ? grid.item(row, col)->text() : QStringLiteral("no item"));
    return texts;
}

QStringList PanelFixture::Headers() const
{
    QStringList texts;
    for (int col = 0; col < Grid().columnCount(); ++col)
        texts << Grid().horizontalHeaderItem(col)->text();
    return texts;
}

QStringList PanelFixture::EnabledTabs() const
{
    QStringList titles;
    for (int tab = 0; tab < Dock().count(); ++tab) {
        if (Dock().isTabEnabled(tab))
            titles << Dock().tabText(tab);
    }
    return titles;
}

void PanelFixture::PickTab(const char *title)
{
    QTabBar *bar = Dock().tabBar();
    for (int tab = 0; tab < bar->count(); ++tab) {
        if (bar->tabText(tab) == QLatin1String(title))
            QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(tab).center());
    }
    QCOMPARE(Dock().tabText(Dock().currentIndex()), QLatin1String(title));
}

T_QtEdit &PanelFixture::Editor(const void *field, int number) const
{
    for (T_QtEdit *editor : Dock().findChildren<T_QtEdit *>()) {
        if (editor->GetVar()->mData == field && number-- == 0)
            return *editor;
    }
    qFatal("no editor of this field");
}

void PanelFixture::Type(const void *field, const QString &text)
{
    T_QtEdit &editor = Editor(field);
    QWidget *input = editor.findChild<QSpinBox *>();
    if (!input)
        input = editor.findChild<QLineEdit *>();
    input->setFocus();
    QTest::keyClick(input, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(input, Qt::Key_Delete);
    for (const QChar letter : text) { // QTest's own way knows no letters beyond ASCII
        for (const QEvent::Type type : { QEvent::KeyPress, QEvent::KeyRelease }) {
            QKeyEvent event(type, /*key=*/0, Qt::NoModifier, QString(letter));
            QApplication::sendEvent(input, &event);
        }
    }
    QTest::keyClick(input, Qt::Key_Return);
    Settle();
}

void PanelFixture::Tick(const void *field, int number)
{
    auto *box = Editor(field, number).findChild<QCheckBox *>();
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(6, box->height() / 2));
    Settle();
}

void PanelFixture::Press(const void *field)
{
    QTest::mouseClick(Editor(field).findChild<QPushButton *>(), Qt::LeftButton);
    Settle();
}

void PanelFixture::Choose(const void *field, int index)
{
    auto *combo = Editor(field).findChild<QComboBox *>();
    QTest::keyClick(combo, Qt::Key_Home);
    for (int i = 0; i < index; ++i)
        QTest::keyClick(combo, Qt::Key_Down);
    Settle();
}

QString PanelFixture::TextOf(const void *field, int number) const
{
    const T_QtEdit &editor = Editor(field, number);
    if (const auto *spin = editor.findChild<QSpinBox *>())
        return spin->text();
    if (const auto *box = editor.findChild<QCheckBox *>())
        return box->isChecked() ? QStringLiteral("on") : QStringLiteral("off");
    if (const auto *combo = editor.findChild<QComboBox *>())
        return combo->currentText();
    return editor.findChild<QLineEdit *>()->text();
}

QPoint PanelFixture::Middle(int col, int row) const
{
    return Grid().visualRect(Grid().model()->index(row, col)).center();
}

void PanelFixture::SendMouse(QEvent::Type type, const QPoint &pos, Qt::KeyboardModifiers modifiers)
{
    QWidget *table = Grid().viewport();
    const bool released = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, pos, table->mapToGlobal(pos),
        type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
        released ? Qt::NoButton : Qt::LeftButton, modifiers);
    QApplication::sendEvent(table, &event);
}

void PanelFixture::ClickCell(int col, int row, Qt::KeyboardModifiers modifiers)
{
    SendMouse(QEvent::MouseButtonPress, Middle(col, row), modifiers);
    SendMouse(QEvent::MouseButtonRelease, Middle(col, row), modifiers);
    Settle();
}

void PanelFixture::TypeCell(const QString &text)
{
    QTest::keyClick(&Grid(), text[0].toLatin1()); // the first character opens the editor
    auto *editor = Grid().viewport()->findChild<QLineEdit *>();
    QVERIFY2(editor, "typing opened no editor");
    QTest::keyClicks(editor, text.mid(1));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!Grid().viewport()->findChild<QLineEdit *>()); // the table deletes it later
}

void PanelFixture::DragCells(int fromCol, int fromRow, int toCol, int toRow)
{
    const QPoint from = Middle(fromCol, fromRow);
    const QPoint to = Middle(toCol, toRow);
    SendMouse(QEvent::MouseButtonPress, from, Qt::NoModifier);
    SendMouse(QEvent::MouseMove, (from + to) / 2, Qt::NoModifier);
    SendMouse(QEvent::MouseMove, to, Qt::NoModifier);
    SendMouse(QEvent::MouseButtonRelease, to, Qt::NoModifier);
    Settle();
}

QStringList PanelFixture::TakeLog()
{
    QStringList lines;
    for (const QString &line : LogPage().toPlainText().split(QLatin1Char('\n'))) {
        if (!IsRebuildLine(line))
            lines << line;
    }
    LogPage().clear();
    return lines == QStringList(QString()) ? QStringList() : lines;
}

void PanelFixture::Change(LayerId changed, const std::function<void(Layer &)> &change)
{
    change(*Document().Edit("by hand").EditLayer(composition, changed));
    Document().CloseLooseEnds();
}

QVector<LayerId> PanelFixture::Selection()
{
    return Document().view.selections.value(composition);
}

qint32 PanelFixture::HostFrame()
{
    const Time now = Document().view.currentTimes.value(Document().view.activeItem);
    return static_cast<qint32>(std::lround(now.Seconds() * 25));
}

void PanelFixture::SetHostFrame(qint32 frame)
{
    Document().view.currentTimes.insert(Document().view.activeItem, Time{ frame, 25 });
}

ItemId PanelFixture::AddCompo(const QByteArray &name, int frames)
{
    Composition content;
    content.size = QSize(640, 360);
    content.rate = Rate{ 25, 1 };
    content.duration = Time{ frames, 25 };
    const ItemId added = Document().Edit("by hand").AddComposition(name, content);
    Document().CloseLooseEnds();
    return added;
}
