#include "WindowFixture.h"
#include "hostapi/Suites.h"
#include "testhost/FakePlugin.h"
#include "testhost/HostTestMain.h"
#include "testing/Platform.h"
#include "window/PluginFiles.h"

#include <QDir>
#include <QToolButton>

using rostrum::PanelDock;
using testing::FakePlugin;
using testing::Suite;
using testing::WindowFixture;

namespace {

constexpr char kFakePanel[] = "fake panel";

/// A window with a plug-in in it that is made of this process's functions.
struct Docked : WindowFixture
{
    FakePlugin plugin;
    AEGP_Command command = 0;

    Docked()
    {
        plugin.onEntry = [this] {
            const Suite<AEGP_CommandSuite1> commands;
            commands->AEGP_GetUniqueCommand(&command);
            commands->AEGP_InsertMenuCommand(
                command, "Fake", AEGP_Menu_WINDOW, AEGP_MENU_INSERT_SORTED);
            return plugin.RegisterAll();
        };
        plugin.onUpdateMenu = [this] {
            A_Boolean shown = 0, front = 0;
            Suite<AEGP_WorkspacePanelSuite1>()->AEGP_IsShown(Name(), &shown, &front);
            const Suite<AEGP_CommandSuite1> commands;
            commands->AEGP_CheckMarkMenuCommand(command, shown);
            return commands->AEGP_EnableCommand(command);
        };
        plugin.onCommand = [this](AEGP_Command run, A_Boolean *handled) {
            if (run != command)
                return A_Err(A_Err_NONE);
            *handled = 1;
            return Suite<AEGP_WorkspacePanelSuite1>()->AEGP_ToggleVisibility(Name());
        };
        plugin.onCreatePanel = [](AEGP_PanelFunctions1 *functions) {
            functions->GetSnapSizes = [](AEGP_PanelRefcon, A_LPoint *sizes, A_long *count) {
                sizes[0] = { 333, 222 };
                *count = 1;
                return A_Err(A_Err_NONE);
            };
            functions->PopulateFlyout = Flyout;
            functions->DoFlyoutCommand = [](AEGP_PanelRefcon, AEGP_FlyoutMenuCmdID chosen) {
                Chosen() << chosen;
                return A_Err(A_Err_NONE);
            };
            return A_Err(A_Err_NONE);
        };
        Enter();
    }
    ~Docked() { window.reset(); } // its death hook is the plug-in's
    /// The plug-in in the window as it is now.
    void Enter()
    {
        QCOMPARE(plugin.Enter(*host), A_Err_NONE);
        window->Panels().MakeDocks();
        plugin.calls.clear();
        Chosen().clear();
    }
    static const A_u_char *Name() { return reinterpret_cast<const A_u_char *>(kFakePanel); }
    static QVector<int> &Chosen()
    {
        static QVector<int> chosen;
        return chosen;
    }
    static A_Err Flyout(AEGP_PanelRefcon, AEGP_FlyoutMenuItem *items, A_long *count)
    {
        const auto text = [](const char *name) { return reinterpret_cast<const A_u_char *>(name); };
        items[0] = { 1, AEGP_FlyoutMenuMarkType_NORMAL, 1, 5, text("Rename") };
        items[1] = { 1, AEGP_FlyoutMenuMarkType_SEPARATOR, 0, AEGP_FlyoutMenuCmdID_NONE, nullptr };
        items[2] = { 1, AEGP_FlyoutMenuMarkType_NORMAL, 0, 6, text("Later") };
        items[3] = { 1, AEGP_FlyoutMenuMarkType_NORMAL, 1, 7, text("Colours") };
        items[4] = { 2, AEGP_FlyoutMenuMarkType_CHECKED, 1, 8, text("Dark") };
        items[5] = { 2, AEGP_FlyoutMenuMarkType_NORMAL, 1, 9, text("Light") };
        *count = 6;
        return A_Err_NONE;
    }
    PanelDock *Dock() { return window->Panels().Find(kFakePanel); }
    QAction *Entry() { return Find(Look(QStringLiteral("Window")), QStringLiteral("Fake")); }
};

/// Of the docks that are open at the sides, by name; between them the others have what is left.
QMap<QString, int> WidthsAtTheSides(const QMainWindow &window)
{
    QMap<QString, int> widths;
    for (auto *dock : window.findChildren<QDockWidget *>()) {
        const bool isAtSide = window.dockWidgetArea(dock) != Qt::BottomDockWidgetArea;
        if (isAtSide && dock->isVisible())
            widths.insert(dock->objectName(), dock->width());
    }
    return widths;
}

} // namespace

/// Plug-ins in the window: their menus, hooks, panels.
class TestPanelDocks : public QObject
{
    Q_OBJECT

private slots:
    void aPanelIsOpenedAndClosedFromTheWindowMenu();
    void theContainerIsANativeWidgetAndIsUsedAgain();
    void aPanelBehindAnotherTabIsBroughtToFront();
    void theTitlesMenuIsThatOfThePanel();
    void aPanelStaysAfloatAndComesBack();
    void thePanelIsOpenAgainAtTheNextStart();
    void aPanelThatCannotBeMadeIsLeftOut();
    void idleIsCalledAfterTheTimeThatTheHookNames();
    void idleWaitsForMenusAndDialogs();
    void commandsOfTheHostAreSeenByTheHook();
    void deathIsCalledOnceAtTheEnd();
    void withThePanelInFrontTheCompositionIsTheActiveItem();
    void aLibraryThatDoesNotLoadIsToldAndLeftOut();
    void librariesAreFoundByName();
};

void TestPanelDocks::aPanelIsOpenedAndClosedFromTheWindowMenu()
{
    Docked docked;
    QVERIFY(!docked.Dock()->isVisible());
    QVERIFY(!docked.Entry()->isChecked());

    docked.Choose(QStringLiteral("Window/Fake"));
    QVERIFY(docked.Dock()->isVisible());
    QCOMPARE(docked.plugin.calls.count("panel"), 1);
    QVERIFY(docked.Entry()->isChecked());
    docked.Choose(QStringLiteral("Window/Fake"));
    QVERIFY(!docked.Dock()->isVisible());
    QVERIFY(!docked.Entry()->isChecked());
}

void TestPanelDocks::theContainerIsANativeWidgetAndIsUsedAgain()
{
    Docked docked;
    docked.Choose(QStringLiteral("Window/Fake"));
    QWidget *container = docked.Dock()->Container();
    const auto id = reinterpret_cast<AEGP_PlatformViewRef>(container->winId());

    QCOMPARE(docked.plugin.container, id);
    QCOMPARE(QWidget::find(container->winId()), container);
    QTest::mouseClick(
        docked.Dock()->findChild<QToolButton *>(QStringLiteral("close")), Qt::LeftButton);
    QVERIFY(!docked.Dock()->isVisible());
    docked.Choose(QStringLiteral("Window/Fake"));
    QCOMPARE(docked.Dock()->Container(), container);
    QVERIFY(container->isVisible());
    QCOMPARE(docked.plugin.calls.count("panel"), 1);
}

void TestPanelDocks::aPanelBehindAnotherTabIsBroughtToFront()
{
    Docked docked;
    docked.Choose(QStringLiteral("Window/Fake"));
    docked.Choose(QStringLiteral("Window/Messages"));
    auto *messages = docked.window->findChild<QDockWidget *>(QStringLiteral("messagesDock"));
    docked.window->tabifyDockWidget(docked.Dock(), messages);
    messages->raise();
    QTRY_VERIFY(!docked.Dock()->IsFrontmost());
    A_Boolean shown = 0, front = 1;
    Suite<AEGP_WorkspacePanelSuite1>()->AEGP_IsShown(Docked::Name(), &shown, &front);
    QCOMPARE(int(shown), 1);
    QCOMPARE(int(front), 0);

    docked.Choose(QStringLiteral("Window/Fake"));
    QTRY_VERIFY(docked.Dock()->IsFrontmost());
    docked.Choose(QStringLiteral("Window/Fake"));
    QVERIFY(!docked.Dock()->isVisible());
}

void TestPanelDocks::theTitlesMenuIsThatOfThePanel()
{
    Docked docked;
    docked.Choose(QStringLiteral("Window/Fake"));
    QStringList texts;
    QTimer::singleShot(20, [&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        for (QAction *action : menu->actions())
            texts << action->text() + QLatin1String(action->isEnabled() ? "" : " (grey)");
        QMenu *colours = menu->actions().at(3)->menu();
        QVERIFY(colours);
        QVERIFY(colours->actions().at(0)->isChecked());
        QVERIFY(!colours->actions().at(1)->isChecked());
        colours->actions().at(1)->trigger();
        QTest::mouseClick(
            menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().at(0)).center());
    });

    QTest::mouseClick(
        docked.Dock()->findChild<QToolButton *>(QStringLiteral("flyout")), Qt::LeftButton);

    QCOMPARE(texts,
        QStringList({ QStringLiteral("Rename"), QString(), QStringLiteral("Later (grey)"),
            QStringLiteral("Colours") }));
    QCOMPARE(Docked::Chosen(), QVector<int>({ 9, 5 }));
}

void TestPanelDocks::aPanelStaysAfloatAndComesBack()
{
    Docked docked;
    docked.Choose(QStringLiteral("Window/Fake"));
    auto *button = docked.Dock()->findChild<QToolButton *>(QStringLiteral("float"));

    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(docked.Dock()->isFloating());
    QVERIFY(docked.Dock()->Container()->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!docked.Dock()->isFloating());
    QVERIFY(docked.Dock()->Container()->isVisible());
}

void TestPanelDocks::thePanelIsOpenAgainAtTheNextStart()
{
    Docked docked;
    docked.Choose(QStringLiteral("Window/Fake"));
    docked.window->resizeDocks({ docked.Dock() }, { 300 }, Qt::Horizontal);
    QCoreApplication::processEvents();
    const QMap<QString, int> left = WidthsAtTheSides(*docked.window);
    QVERIFY(docked.window->close());
    docked.window.reset();
    docked.host.reset();
    docked.host = std::make_unique<rostrum::Host>();
    docked.window = std::make_unique<rostrum::MainWindow>(*docked.host, docked.Places());
    docked.Enter();

    docked.window->Start();

    QVERIFY(docked.Dock()->isVisible());
    QCOMPARE(docked.plugin.calls.count("panel"), 1);
    QVERIFY(docked.Dock()->Container()->isVisible());
    QVERIFY(docked.Entry()->isChecked());
    QTRY_COMPARE(WidthsAtTheSides(*docked.window), left);
}

void TestPanelDocks::aPanelThatCannotBeMadeIsLeftOut()
{
    Docked docked;
    docked.plugin.onCreatePanel = [](AEGP_PanelFunctions1 *) { return A_Err(A_Err_GENERIC); };

    docked.Choose(QStringLiteral("Window/Fake"));

    QVERIFY(!docked.Dock()->isVisible());
    QVERIFY(!docked.Entry()->isChecked());
}

void TestPanelDocks::idleIsCalledAfterTheTimeThatTheHookNames()
{
    Docked docked;
    docked.plugin.onIdle = [](A_long *sleep) {
        *sleep = 1; // 1/60 s
        return A_Err(A_Err_NONE);
    };

    QTRY_VERIFY(docked.plugin.calls.count("idle") >= 3);
}

void TestPanelDocks::idleWaitsForMenusAndDialogs()
{
    Docked docked;
    docked.plugin.onIdle = [](A_long *sleep) {
        *sleep = 1;
        return A_Err(A_Err_NONE);
    };
    QTRY_VERIFY(docked.plugin.calls.contains("idle"));
    int before = 0, after = 0;
    const testing::DialogHand hand([&](QDialog &) {
        before = docked.plugin.calls.count("idle");
        QTest::qWait(250);
        after = docked.plugin.calls.count("idle");
    });

    docked.Choose(QStringLiteral("Help/About Rostrum"));

    QVERIFY(hand.Answered());
    QCOMPARE(after, before);
    QTRY_VERIFY(docked.plugin.calls.count("idle") > after);
}

void TestPanelDocks::commandsOfTheHostAreSeenByTheHook()
{
    Docked docked;
    docked.MakeComposition();
    QCOMPARE(docked.window->Files().Save(docked.Path("a.rostrum")), QString());
    docked.plugin.calls.clear();

    docked.Choose(QStringLiteral("Edit/Undo New Composition"));
    docked.Choose(QStringLiteral("Edit/Redo New Composition"));
    docked.Choose(QStringLiteral("File/Save"));
    QVERIFY(docked.window->Open(docked.Path("a.rostrum")));

    QByteArrayList commands;
    for (const QByteArray &call : docked.plugin.calls) {
        if (call.startsWith("command"))
            commands << call;
    }
    QCOMPARE(commands, QByteArrayList({ "command 16", "command 2035", "command 5", "command 3" }));
}

void TestPanelDocks::deathIsCalledOnceAtTheEnd()
{
    Docked docked;
    docked.Choose(QStringLiteral("Window/Fake"));

    QVERIFY(docked.window->close());
    docked.window.reset();

    QCOMPARE(docked.plugin.calls.count("death"), 1);
    QCOMPARE(docked.plugin.calls.last(), QByteArray("death"));
}

void TestPanelDocks::withThePanelInFrontTheCompositionIsTheActiveItem()
{
    Docked docked;
    docked.MakeComposition();
    docked.Choose(QStringLiteral("Window/Fake"));
    auto *field = new QWidget(docked.Dock()->Container()); // the plug-in's own
    field->setFocusPolicy(Qt::ClickFocus);
    field->resize(20, 20);
    field->show();
    const rostrum::ItemId scene = docked.Session().ActiveCompositionId();
    docked.Session().Do("Folder", [](rostrum::Project &p) { p.AddFolder("drawings"); });
    docked.Activate();
    docked.Tree().setFocus();
    docked.Tree().Pick({ docked.Project().NextInWalk(scene) });
    QVERIFY(docked.Session().ActiveItem() != scene);
    docked.Tree().selectAll();
    QCOMPARE(docked.Session().ActiveItem(), 0); // several: none of them

    QTest::mouseClick(field, Qt::LeftButton);
    field->setFocus();

    QTRY_COMPARE(docked.Session().ActiveItem(), scene);
}

void TestPanelDocks::aLibraryThatDoesNotLoadIsToldAndLeftOut()
{
    WindowFixture fixture;
    QFile bad(fixture.Path("bad.so"));
    QVERIFY(bad.open(QIODevice::WriteOnly) && bad.write("no library") > 0);
    bad.close();

    QCOMPARE(fixture.window->LoadPlugins({ bad.fileName() }), 0);
    QVERIFY(fixture.Message().startsWith(QStringLiteral("A plug-in was left out: ")));
    QVERIFY(fixture.Message().contains(QDir::toNativeSeparators(bad.fileName())));
    QCOMPARE(fixture.window->LoadPlugins({ fixture.Path("none.so") }), 0);
    QVERIFY(fixture.Message().contains(QStringLiteral("there is no file")));
    QVERIFY(fixture.window->findChild<QDockWidget *>(QStringLiteral("messagesDock"))->isVisible());
}

void TestPanelDocks::librariesAreFoundByName()
{
    QTemporaryDir folder;
    for (const char *name : { "b.so", "a.aex", "c.txt", "d.so.1" }) {
        QFile file(folder.filePath(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QVERIFY(QFile::link(folder.filePath(QStringLiteral("b.so")),
        folder.filePath(testing::LinkName(QStringLiteral("link.so")))));

    const QStringList found = rostrum::FindPlugins(
        { folder.filePath(QStringLiteral("nowhere")), folder.path(), folder.path() });

    QCOMPARE(found,
        QStringList(
            { folder.filePath(QStringLiteral("a.aex")), folder.filePath(QStringLiteral("b.so")) }));
    QCOMPARE(rostrum::PluginFolders().size(), 2);
}

VN_HOST_TEST_MAIN(TestPanelDocks)
#include "tst_paneldocks.moc"
