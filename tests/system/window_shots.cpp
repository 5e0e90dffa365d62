// Pictures of the program's window, its menus and every dialog, as they stand on a real display, to be
// looked at:
//     VN_SCREEN=1280x800 tools/with_display env QT_QPA_PLATFORM=xcb window_shots FOLDER
#include "MainDesk.h"

#include "core/ProjectFile.h"
#include "window/ColorButton.h"
#include "window/Importer.h"
#include "window/ProjectTree.h"
#include "window/Style.h"
#include "window/Timeline.h"
#include "window/Viewer.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QLockFile>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QTreeWidget>

#include <cstdio>

using namespace rostrum;
using testing::MainDesk;

namespace {

constexpr int kPaintTime = 300; // ms for what is still to be painted

class Shots : public QObject
{
public:
    Shots(const QString &scene, const QString &folder) : scene(scene), folder(folder)
    {
        QDir().mkpath(folder);
        desk.Window().setGeometry(QApplication::primaryScreen()->availableGeometry().adjusted(
            2, 30, -2, -2)); // with its frame
        QTest::qWait(kPaintTime);
    }

    int Take()
    {
        Save(QStringLiteral("01-empty"));
        FirstDialogs();
        if (!desk.Window().Open(scene)) { // another run has it open, say
            Missed("the scene");
            for (const QString &surprise : desk.Surprises())
                std::fprintf(stderr, "not foreseen: %s\n", qPrintable(surprise));
            return 1;
        }
        QTest::qWait(3 * kPaintTime); // the thumbnails
        Save(QStringLiteral("10-scene"));
        OpenPanel();
        Menus();
        ListMenu();
        Dialogs();
        Docks();
        Errors();
        desk.Window().Files().Discard();
        return good ? 0 : 1;
    }

private:
    void Save(const QString &name)
    {
        QTest::qWait(kPaintTime);
        const QString path = folder + QLatin1Char('/') + name + QStringLiteral(".png");
        good = QApplication::primaryScreen()->grabWindow(0).save(path) && good;
    }
    /// Saves a picture of the dialog that comes next, and closes it.
    void SaveNext(const QString &name, const std::function<void(QWidget &)> &before = {})
    {
        desk.WhenAsked([this, name, before](QWidget &dialog) {
            if (before)
                before(dialog);
            Save(name);
            dialog.close();
        });
    }
    void Choose(const char *menu, const char *entry)
    {
        if (!desk.Choose(menu, QString::fromUtf8(entry)))
            std::fprintf(stderr, "%s > %s cannot be chosen\n", menu, entry);
        QTest::qWait(50);
    }
    void SaveDialog(const QString &name, const char *menu, const char *entry)
    {
        SaveNext(name);
        Choose(menu, entry);
    }

    void FirstDialogs()
    {
        SaveDialog(QStringLiteral("02-new-composition"), "Composition", "New Composition");
        SaveDialog(QStringLiteral("03-import"), "File", "Import Drawings");
        SaveDialog(QStringLiteral("04-about"), "Help", "About");
        SaveDialog(QStringLiteral("05-guide"), "Help", "User Guide");
        SaveNext(QStringLiteral("06-no-project"));
        desk.Window().Open(QStringLiteral("/no/such/scene.rostrum"));
    }
    void OpenPanel()
    {
        Choose("Window", "morvex");
        QTest::qWait(2 * kPaintTime);
        if (auto *viewer = desk.Window().findChild<Viewer *>())
            desk.Click(&viewer->View());
        desk.Session().SetCurrentFrame(29);
        Save(QStringLiteral("11-panel"));
        const QVector<LayerPtr> layers = desk.Session().ActiveComposition()->layers;
        desk.Session().SelectLayers({ layers[0]->id, layers[1]->id });
        auto *timeline = desk.Window().findChild<Timeline *>();
        timeline->Board().ToggleFold(layers[1]->id);
        Save(QStringLiteral("12-timeline-open"));
        timeline->Board().ToggleFold(layers[1]->id);
        Effects(*timeline, layers[2]->id);
    }
    /// A layer with one of each effect, its values unfolded, from their top and from their end.
    void Effects(Timeline &timeline, LayerId layer)
    {
        const ItemId composition = desk.Session().ActiveCompositionId();
        desk.Session().Do("Effects", [&](Project &project) {
            for (const EffectInfo &effect : InstalledEffects())
                project.ApplyEffect(composition, layer, effect.key);
        });
        desk.Session().SelectLayers({ layer });
        timeline.Board().ToggleFold(layer);
        auto *down = timeline.findChild<QScrollBar *>(QStringLiteral("sb_Y"));
        down->setValue(down->maximum() / 2);
        Save(QStringLiteral("13-effects"));
        down->setValue(down->maximum());
        Save(QStringLiteral("14-effects-end"));
        timeline.Board().ToggleFold(layer);
        desk.Session().RunCommand(kHostCommandUndo);
        down->setValue(0);
    }
    void Menus()
    {
        QMenuBar *bar = desk.Window().menuBar();
        int number = 20;
        for (QAction *title : bar->actions()) {
            desk.Click(bar, bar->actionGeometry(title).center());
            QString name = title->text().remove(QLatin1Char('&')).toLower();
            QTest::qWait(100);
            for (QAction *entry : title->menu()->actions()) { // the first that opens another
                if (entry->menu() && entry->isEnabled()) {
                    title->menu()->setActiveAction(entry);
                    QTest::keyClick(title->menu(), Qt::Key_Right);
                    QTest::qWait(300);
                    if (entry->menu()->isVisible()) {
                        Save(QStringLiteral("%1-menu-%2-%3")
                                 .arg(number)
                                 .arg(name, entry->text().remove(QLatin1Char('&')).toLower()));
                        entry->menu()->close();
                    }
                }
            }
            if (!title->menu()->isVisible()) {
                desk.Click(bar, bar->actionGeometry(title).center());
                QTest::qWait(100);
            }
            Save(QStringLiteral("%1-menu-%2").arg(number++).arg(name));
            title->menu()->close();
        }
    }
    void ListMenu()
    {
        auto *tree = desk.Window().findChild<QTreeWidget *>(QStringLiteral("projectTree"));
        QTreeWidgetItem *row = tree->topLevelItem(0);
        tree->setFocus();
        tree->setCurrentItem(row);
        const QPoint place = tree->visualItemRect(row).center();
        QTimer::singleShot(200, this, [this] {
            Save(QStringLiteral("30-list-menu"));
            for (QAction *entry :
                static_cast<QMenu *>(QApplication::activePopupWidget())->actions()) {
                if (!entry->menu())
                    continue;
                static_cast<QMenu *>(QApplication::activePopupWidget())->setActiveAction(entry);
                QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Right);
                Save(QStringLiteral("31-list-label"));
                entry->menu()->close();
            }
            while (QApplication::activePopupWidget())
                QApplication::activePopupWidget()->close();
        });
        QContextMenuEvent menu(
            QContextMenuEvent::Mouse, place, tree->viewport()->mapToGlobal(place));
        QApplication::sendEvent(tree->viewport(), &menu);
        tree->editItem(row, 0);
        Save(QStringLiteral("32-list-rename"));
        desk.Key(Qt::Key_Escape);
    }
    void Dialogs()
    {
        SaveDialog(QStringLiteral("40-settings"), "Composition", "Settings");
        desk.WhenAsked([this](QWidget &dialog) {
            QTimer::singleShot(
                kPaintTime, this, [this] { // the hand for dialogs is busy with this one
                    Save(QStringLiteral("42-color"));
                    QApplication::activeModalWidget()->close();
                });
            desk.Click(dialog.findChild<ColorButton *>());
            dialog.close();
        });
        Choose("Composition", "Settings");
        SaveDialog(QStringLiteral("43-rename-layer"), "Layer", "Rename");
        SaveNext(QStringLiteral("41-solid"));
        QTest::keyClick(&desk.Window(), Qt::Key_Y, Qt::ControlModifier);
        SaveNext(QStringLiteral("44-render-frames"), [this](QWidget &dialog) {
            auto *place = dialog.findChild<QLineEdit *>(QStringLiteral("place"));
            place->setText(folder + QStringLiteral("/frames"));
            Save(QStringLiteral("44-render-frames-before"));
            QTest::mouseClick(
                dialog.findChild<QPushButton *>(QStringLiteral("render")), Qt::LeftButton);
            QTest::qWait(400);
            Save(QStringLiteral("44-render-frames-during"));
            auto *state = dialog.findChild<QLabel *>(QStringLiteral("state"));
            good = QTest::qWaitFor(
                       [&] { return state->text().contains(QStringLiteral("frames are in")); },
                       60000)
                && good;
        });
        Choose("File", "Render Frames");
        SaveNext(QStringLiteral("45-render-movie"), [this](QWidget &dialog) {
            auto *place = dialog.findChild<QLineEdit *>(QStringLiteral("place"));
            place->setText(folder + QStringLiteral("/movie.nonsense"));
            QTest::qWait(kPaintTime);
            QTest::mouseClick(
                dialog.findChild<QPushButton *>(QStringLiteral("render")), Qt::LeftButton);
            auto *render = dialog.findChild<QPushButton *>(QStringLiteral("render"));
            good = QTest::qWaitFor([&] { return render->isEnabled(); }, 60000) && good;
        });
        Choose("File", "Render Movie");
        SaveDialog(QStringLiteral("46-save-as"), "File", "Save As");
        ListDialog(QStringLiteral("48-relink"), QStringLiteral("Relink..."));
        SaveDialog(QStringLiteral("47-import-folder"), "File", "Import Folder");
        Imports();
    }
    /// An import that takes a while, stopped; and one of files that are none.
    void Imports()
    {
        const QDir many(folder + QStringLiteral("/many"));
        many.mkpath(QStringLiteral("."));
        for (int i = 0; i < 400; ++i) { // without numbers each is a drawing of its own
            const QString name = QStringLiteral("drawing %1%2.png")
                                     .arg(QChar('a' + i / 20))
                                     .arg(QChar('a' + i % 20));
            QFile::copy(QFileInfo(scene).dir().filePath(QStringLiteral("walk/walk0001.png")),
                many.filePath(name)); // unchecked: a run before left it
        }
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [this, &watch] {
            auto *progress = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
            if (!progress || progress->value() < 150)
                return;
            watch.stop();
            Save(QStringLiteral("49-import-progress"));
            progress->cancel();
        });
        watch.start(1);
        Importer importer(desk.Session(), &desk.Window());
        importer.patience = 0;
        importer.Import({ many.path() }); // unchecked: it is stopped
        if (watch.isActive())
            Missed("the import's progress");
        Save(QStringLiteral("49-import-stopped"));

        QStringList bad;
        for (const char *name : { "torn.png", "a drawing with a rather long name, torn.png" }) {
            bad << folder + QLatin1Char('/') + QLatin1String(name);
            QFile file(bad.last());
            if (!file.open(QIODevice::WriteOnly) || file.write("torn") != 4)
                Missed(name);
        }
        SaveNext(QStringLiteral("49-import-error"));
        importer.Import(bad); // unchecked: nothing comes in
    }
    void Missed(const char *what)
    {
        std::fprintf(stderr, "not seen: %s\n", what);
        good = false;
    }
    /// Of the list's menu, for its second row.
    void ListDialog(const QString &name, const QString &entry)
    {
        auto *tree = desk.Window().findChild<QTreeWidget *>(QStringLiteral("projectTree"));
        tree->setCurrentItem(tree->topLevelItem(1));
        const QPoint place = tree->visualItemRect(tree->topLevelItem(1)).center();
        SaveNext(name);
        QTimer::singleShot(200, this, [entry] {
            auto *menu = static_cast<QMenu *>(QApplication::activePopupWidget());
            for (QAction *action : menu->actions()) {
                if (action->text() == entry)
                    QTest::mouseClick(
                        menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            }
        });
        QContextMenuEvent menu(
            QContextMenuEvent::Mouse, place, tree->viewport()->mapToGlobal(place));
        QApplication::sendEvent(tree->viewport(), &menu);
    }
    void Docks()
    {
        Choose("Layer", "Duplicate");
        Choose("Edit", "History");
        Choose("Window", "Messages");
        desk.host.Tell(
            QStringLiteral("A message that is rather long, so that it is seen what becomes "
                           "of one that the line at the bottom has no room for, in a "
                           "window of this width or even of a larger one"));
        Save(QStringLiteral("50-docks"));
        Choose("Window", "Reset Layout");
        Save(QStringLiteral("51-reset"));
    }
    void Errors()
    {
        SaveDialog(QStringLiteral("60-give-up"), "File", "New Project");
        SaveDialog(QStringLiteral("61-revert"), "File", "Revert");
        const QString other = folder + QStringLiteral("/other.rostrum");
        SaveProject(desk.Session().GetProject(), other);
        SaveProject(
            desk.Session().GetProject(), folder + QStringLiteral("/other.autosave.rostrum"));
        desk.Session().RunCommand(kHostCommandUndo);
        SaveNext(QStringLiteral("62-recover"));
        desk.Window().Open(other);
        {
            QLockFile lock(folder + QStringLiteral("/.other.rostrum.lock"));
            lock.tryLock(); // unchecked: the picture shows it
            SaveNext(QStringLiteral("64-open-elsewhere"));
            desk.Window().Open(other);
        }
        SaveProject(desk.Session().GetProject(),
            desk.DataFolder() + QStringLiteral("/untitled-12345678.autosave.rostrum"));
        desk.Window().Files().New();
        SaveNext(QStringLiteral("65-left-work"));
        desk.Window().Start();
        MissingFootage();
        QFile bad(folder + QStringLiteral("/bad.rostrum"));
        if (bad.open(QIODevice::WriteOnly))
            bad.write(
                "{ \"format\": \"rostrum project\", \"version\": 1, \"items\": [ nothing ] }");
        bad.close();
        desk.WhenAsked([this](QWidget &dialog) { // what MissingFootage did is not saved
            Save(QStringLiteral("68-unsaved"));
            desk.Click(static_cast<QMessageBox &>(dialog).button(QMessageBox::Discard));
        });
        SaveNext(QStringLiteral("63-damaged"));
        desk.Window().Open(bad.fileName());
        if (!desk.AllAsked())
            Missed("a question");
        for (const QString &surprise : desk.Surprises())
            std::fprintf(stderr, "not foreseen: %s\n", qPrintable(surprise));
    }

    /// A series that lost a drawing, and a drop of what is none.
    void MissingFootage()
    {
        const QDir drawings(folder + QStringLiteral("/drawings"));
        drawings.mkpath(QStringLiteral("."));
        const QDir walk(QFileInfo(scene).dir().filePath(QStringLiteral("walk")));
        for (const QString &name : walk.entryList(QDir::Files))
            QFile::copy(walk.filePath(name), drawings.filePath(name));
        QFile::remove(drawings.filePath(QStringLiteral("walk0000.png")));
        desk.WhenAskedForFile(drawings.filePath(QStringLiteral("walk0003.png")));
        Choose("File", "Import Drawings");
        Choose("Composition", "New from Picked");
        QTest::qWait(2 * kPaintTime);
        Save(QStringLiteral("66-no-blank"));
        QFile::remove(drawings.filePath(QStringLiteral("walk0002.png")));
        desk.Window().findChild<ProjectTree *>()->LookForMissing();
        desk.Session().Drawings().Clear();
        desk.Session().SetCurrentFrame(1);
        Save(QStringLiteral("67-missing"));
    }

    QString scene;
    QString folder;
    MainDesk desk;
    bool good = true;
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    ApplyStyle(application);
    if (argc != 2) {
        std::fprintf(stderr, "usage: window_shots FOLDER\n");
        return 2;
    }
    return Shots(QStringLiteral(VN_SCENE), QDir(QString::fromLocal8Bit(argv[1])).absolutePath())
        .Take();
}
