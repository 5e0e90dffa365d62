#include "WindowFixture.h"
#include "core/ProjectFile.h"
#include "testhost/HostTestMain.h"
#include "window/HistoryList.h"
#include "window/ItemRow.h"
#include "window/MessageLog.h"
#include "window/Viewer.h"

#include <QDesktopServices>
#include <QDockWidget>
#include <QLineEdit>
#include <QMessageBox>
#include <QUrl>

using testing::ClickButton;
using testing::DialogHand;
using testing::Type;
using testing::TypePath;
using testing::WindowFixture;
using testing::WriteSeries;

namespace {

DialogHand Press(const char *button)
{
    return DialogHand([button](QDialog &d) { ClickButton(d, QString::fromLatin1(button)); });
}

} // namespace

/// Stands in for what shows pages here.
class Browser : public QObject
{
    Q_OBJECT

public slots:
    void OnUrl(const QUrl &url) { shown = url.toLocalFile(); }

public:
    QString shown;
};

/// The window, its menus and dialogs, by mouse and keys.
class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyWindowIsUntitled();
    void aProjectIsMadeSavedAndOpenedAgain();
    void openRecentNamesWhatWasOpenedAndSaved();
    void openingADamagedFileTellsAndKeepsTheProject();
    void whatIsNotSavedIsAskedAbout_data();
    void whatIsNotSavedIsAskedAbout();
    void closingAsksAndACancelKeepsTheWindow();
    void revertGoesBackToTheFile();
    void aCopyLeftByAnAbruptEndIsOfferedAtOpen_data();
    void aCopyLeftByAnAbruptEndIsOfferedAtOpen();
    void aCopyOfAnUntitledProjectIsOfferedAtStart();
    void drawingsAreImportedByTheDialog();
    void stillsAndFoldersAreImported();
    void theCompositionDialogTakesSizeRateAndLength();
    void compositionSettingsChangeWhatIsShown();
    void aPartOfAFrameIsAFrameWhereverFramesAreCounted();
    void aCompositionIsMadeFromADrawing();
    void layersOfEachKindAreMade();
    void selectedLayersAreRenamedLabelledDuplicatedAndDeleted();
    void severalLayersAreChangedInOneStep();
    void effectsAreAppliedAndRemoved();
    void undoAndRedoAreNamedInTheMenu();
    void theHistoryListGoesToAnyState();
    void deleteInTheMenuIsThatOfTheListWithTheFocus();
    void keysOfTheSheetAreNotTheWindows();
    void docksAreShownAndKeptBetweenRuns();
    void helpShowsTheVersion();
    void helpOpensTheUserGuide();
    void framesAreRenderedFromTheMenu();
    void withoutACompositionRenderingTells();
    void messagesAreShownAndKept();
};

void TestMainWindow::anEmptyWindowIsUntitled()
{
    WindowFixture fixture;

    QCOMPARE(fixture.window->windowTitle(), QStringLiteral("Untitled[*] - Rostrum"));
    QVERIFY(!fixture.window->isWindowModified());
    QVERIFY(!fixture.Session().ActiveComposition());
}

void TestMainWindow::aProjectIsMadeSavedAndOpenedAgain()
{
    WindowFixture fixture;
    fixture.MakeComposition();
    QVERIFY(fixture.window->isWindowModified());
    const QString path = fixture.Path("scène 7.rostrum");
    {
        const DialogHand hand([&](QDialog &d) { TypePath(d, fixture.Path("scène 7")); });
        fixture.Choose(QStringLiteral("File/Save"));
        QVERIFY(hand.Answered());
    }
    QVERIFY2(QFile::exists(path), "the suffix is added");
    QCOMPARE(fixture.window->windowTitle(), QStringLiteral("scène 7.rostrum[*] - Rostrum"));
    QVERIFY(!fixture.window->isWindowModified());

    fixture.Choose(QStringLiteral("File/New Project"));
    QCOMPARE(fixture.ItemNames(), QStringList());
    {
        const DialogHand hand([&](QDialog &d) { TypePath(d, path); });
        fixture.Choose(QStringLiteral("File/Open..."));
        QVERIFY(hand.Answered());
    }
    QCOMPARE(fixture.ItemNames(), QStringList{ QStringLiteral("Composition") });
    QVERIFY(fixture.Session().ActiveComposition());
    {
        const DialogHand hand([&](QDialog &d) { TypePath(d, fixture.Path("other.rostrum")); });
        fixture.Choose(QStringLiteral("File/Save As..."));
        QVERIFY(hand.Answered());
    }
    QCOMPARE(fixture.Session().GetDocument().path, fixture.Path("other.rostrum"));
    QFile first(path), second(fixture.Path("other.rostrum"));
    QVERIFY(first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly));
    QCOMPARE(second.readAll(), first.readAll());
}

void TestMainWindow::openRecentNamesWhatWasOpenedAndSaved()
{
    WindowFixture fixture;
    const rostrum::Project empty;
    for (const char *name : { "a.rostrum", "b.rostrum" }) {
        QCOMPARE(rostrum::SaveProject(empty, fixture.Path(name)), QString());
        QVERIFY(fixture.window->Open(fixture.Path(name)));
    }
    fixture.Show(); // another run

    fixture.Choose(QStringLiteral("File/Open Recent"));
    QMenu *recent = fixture.window->findChild<QMenu *>(QStringLiteral("recent"));
    QTRY_COMPARE(recent->actions().size(), 2);
    QCOMPARE(recent->actions().at(0)->text(), fixture.Path("b.rostrum"));
    QTest::keyClick(recent, Qt::Key_Escape);
    recent->parentWidget()->hide();
    recent->actions().at(1)->trigger();
    QCOMPARE(fixture.Session().GetDocument().path, fixture.Path("a.rostrum"));
    QVERIFY(QFile::remove(fixture.Path("b.rostrum")));
    emit recent->aboutToShow();
    QCOMPARE(recent->actions().at(0)->text(), fixture.Path("a.rostrum"));
    QVERIFY(!recent->actions().at(1)->isEnabled()); // gone from the disk
}

void TestMainWindow::openingADamagedFileTellsAndKeepsTheProject()
{
    WindowFixture fixture;
    fixture.MakeComposition();
    QCOMPARE(fixture.window->Files().Save(fixture.Path("a.rostrum")), QString());
    QFile bad(fixture.Path("bad.rostrum"));
    QVERIFY(bad.open(QIODevice::WriteOnly) && bad.write("{ \"format\"") > 0);
    bad.close();
    const DialogHand hand = Press("OK");

    QVERIFY(!fixture.window->Open(bad.fileName()));

    QVERIFY(hand.Answered());
    QVERIFY2(hand.Text().contains(QStringLiteral("is damaged at byte")), qPrintable(hand.Text()));
    QCOMPARE(fixture.ItemNames().size(), 1);
    QCOMPARE(fixture.Session().GetDocument().path, fixture.Path("a.rostrum"));
}

void TestMainWindow::whatIsNotSavedIsAskedAbout_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("itemsLeft");
    QTest::addColumn<int>("itemsInFile");
    QTest::newRow("save") << QStringLiteral("Save") << 0 << 2;
    QTest::newRow("discard") << QStringLiteral("Discard") << 0 << 1;
    QTest::newRow("cancel") << QStringLiteral("Cancel") << 2 << 1;
}

void TestMainWindow::whatIsNotSavedIsAskedAbout()
{
    QFETCH(QString, button);
    QFETCH(int, itemsLeft);
    QFETCH(int, itemsInFile);
    WindowFixture fixture;
    fixture.MakeComposition();
    QCOMPARE(fixture.window->Files().Save(fixture.Path("a.rostrum")), QString());
    fixture.MakeComposition();
    const DialogHand hand([&](QDialog &d) { ClickButton(d, button); });

    fixture.Choose(QStringLiteral("File/New Project"));

    QVERIFY(hand.Answered());
    QCOMPARE(fixture.ItemNames().size(), itemsLeft);
    QCOMPARE(rostrum::LoadProject(fixture.Path("a.rostrum")).project.ItemCount(), itemsInFile + 1);
}

void TestMainWindow::closingAsksAndACancelKeepsTheWindow()
{
    WindowFixture fixture;
    fixture.MakeComposition();
    {
        const DialogHand hand = Press("Cancel");
        fixture.Choose(QStringLiteral("File/Quit"));
        QVERIFY(hand.Answered());
        QVERIFY(fixture.window->isVisible());
    }
    QCOMPARE(fixture.window->Files().Autosave(), QString());
    QCOMPARE(QDir(fixture.Path("data")).entryList(QDir::Files).size(), 2); // copy and lock
    const DialogHand hand = Press("Discard");
    QVERIFY(fixture.window->close());
    QVERIFY(hand.Answered());
    QVERIFY(!fixture.window->isVisible());
    QCOMPARE(QDir(fixture.Path("data")).entryList(QDir::Files).size(), 0);
}

void TestMainWindow::revertGoesBackToTheFile()
{
    WindowFixture fixture;
    fixture.MakeComposition();
    QVERIFY(!WindowFixture::Find(
        fixture.Look(QStringLiteral("File")), QStringLiteral("Revert to Saved"))
                 ->isEnabled());
    QCOMPARE(fixture.window->Files().Save(fixture.Path("a.rostrum")), QString());
    fixture.MakeComposition();
    const DialogHand hand = Press("Discard");

    fixture.Choose(QStringLiteral("File/Revert to Saved"));

    QVERIFY(hand.Answered());
    QCOMPARE(fixture.ItemNames().size(), 1);
}

void TestMainWindow::aCopyLeftByAnAbruptEndIsOfferedAtOpen_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("items");
    QTest::addColumn<bool>("isDirty");
    QTest::addColumn<bool>("isCopyLeft");
    QTest::newRow("recover") << QStringLiteral("Recover") << 2 << true << true;
    QTest::newRow("as saved") << QStringLiteral("Open as Saved") << 1 << false << false;
    QTest::newRow("cancel") << QStringLiteral("Cancel") << 0 << false << true;
}

void TestMainWindow::aCopyLeftByAnAbruptEndIsOfferedAtOpen()
{
    QFETCH(QString, button);
    QFETCH(int, items);
    QFETCH(bool, isDirty);
    QFETCH(bool, isCopyLeft);
    WindowFixture fixture;
    rostrum::Project project;
    project.AddFolder("a");
    QCOMPARE(rostrum::SaveProject(project, fixture.Path("a.rostrum")), QString());
    project.AddFolder("b");
    QCOMPARE(rostrum::SaveProject(project, fixture.Path("a.autosave.rostrum")), QString());
    const DialogHand hand([&](QDialog &d) { ClickButton(d, button); });

    QCOMPARE(fixture.window->Open(fixture.Path("a.rostrum")), items > 0);

    QVERIFY(hand.Answered());
    QCOMPARE(fixture.ItemNames().size(), items);
    QCOMPARE(fixture.window->isWindowModified(), isDirty);
    QCOMPARE(QFile::exists(fixture.Path("a.autosave.rostrum")), isCopyLeft);
}

void TestMainWindow::aCopyOfAnUntitledProjectIsOfferedAtStart()
{
    WindowFixture fixture;
    rostrum::Project project;
    project.AddFolder("a");
    QVERIFY(QDir().mkpath(fixture.Path("data")));
    const QString copy = fixture.Path("data/untitled-1.autosave.rostrum");
    QCOMPARE(rostrum::SaveProject(project, copy), QString());
    {
        const DialogHand hand = Press("Later");
        fixture.Show();
        QVERIFY(hand.Answered());
        QCOMPARE(fixture.ItemNames().size(), 0);
        QVERIFY(QFile::exists(copy));
    }
    {
        const DialogHand hand = Press("Recover");
        fixture.Show();
        QVERIFY(hand.Answered());
        QCOMPARE(fixture.ItemNames().size(), 1);
        QVERIFY(fixture.window->isWindowModified());
    }
    const DialogHand hand = Press("Remove It");
    fixture.Show(); // the one before was never closed
    QVERIFY(hand.Answered());
    QVERIFY(!QFile::exists(copy));
}

void TestMainWindow::drawingsAreImportedByTheDialog()
{
    WindowFixture fixture;
    WriteSeries(fixture.folder.path(), QStringLiteral("walk"), 1, 3);
    WriteSeries(fixture.folder.path(), QStringLiteral("walk"), 5, 2);
    const DialogHand hand([&](QDialog &d) { TypePath(d, fixture.Path("walk0002.png")); });

    fixture.Choose(QStringLiteral("File/Import Drawings..."));

    QVERIFY(hand.Answered());
    QCOMPARE(fixture.ItemNames(), QStringList{ QStringLiteral("walk[0001-0006].png") });
    QVERIFY2(fixture.Message().startsWith(
                 QStringLiteral("walk[0001-0006].png: missing: 4; the numbers in a sheet close up "
                                "over them; there is no drawing 0")),
        qPrintable(fixture.Message()));
    QCOMPARE(fixture.Tree().Picked().size(), 1);
    QCOMPARE(fixture.Session().GetDocument().UndoNames().last(), QByteArray("Import Drawings"));
}

void TestMainWindow::stillsAndFoldersAreImported()
{
    WindowFixture fixture;
    QVERIFY(QDir().mkpath(fixture.Path("cut/LO")));
    WriteSeries(fixture.Path("cut"), QStringLiteral("A"), 1, 3);
    WriteSeries(fixture.Path("cut/LO"), QStringLiteral("char"), 1, 2);
    {
        const DialogHand hand([&](QDialog &d) { TypePath(d, fixture.Path("cut/A0002.png")); });
        fixture.Choose(QStringLiteral("File/Import Stills..."));
        QVERIFY(hand.Answered());
    }
    QCOMPARE(fixture.ItemNames(), QStringList{ QStringLiteral("A0002.png") });
    fixture.Tree().clearSelection();
    {
        const DialogHand hand([&](QDialog &d) { TypePath(d, fixture.Path("cut")); });
        fixture.Choose(QStringLiteral("File/Import Folder..."));
        QVERIFY(hand.Answered());
    }
    QCOMPARE(fixture.ItemNames(),
        QStringList({ QStringLiteral("A0002.png"), QStringLiteral("cut"),
            QStringLiteral("A[0001-0003].png"), QStringLiteral("LO"),
            QStringLiteral("char[0001-0002].png") }));
}

void TestMainWindow::theCompositionDialogTakesSizeRateAndLength()
{
    WindowFixture fixture;
    const DialogHand hand([](QDialog &d) {
        Type(d, "name", QStringLiteral("plan é"));
        Type(d, "width", QStringLiteral("1234"));
        Type(d, "height", QStringLiteral("567"));
        Type(d, "rate", QStringLiteral("nothing"));
        const auto buttons = d.findChildren<QPushButton *>();
        const auto ok = std::find_if(buttons.begin(), buttons.end(),
            [](QPushButton *b) { return b->text().contains(QStringLiteral("OK")); });
        QVERIFY(!(*ok)->isEnabled());
        auto *hint = d.findChild<QLabel *>(QStringLiteral("rateHint"));
        QVERIFY(hint);
        Type(d, "rate", QStringLiteral("25.0"));
        QVERIFY(!hint->isVisible());
        Type(d, "rate", QStringLiteral("23,976"));
        QVERIFY(hint->isVisible()); // the sheet's rows would be no frames
        Type(d, "frames", QStringLiteral("48"));
        QVERIFY((*ok)->isEnabled());
        ClickButton(d, QStringLiteral("OK"));
    });

    fixture.Press(Qt::Key_N, Qt::ControlModifier);

    QVERIFY(hand.Answered());
    const rostrum::Composition *made = fixture.Session().ActiveComposition();
    QVERIFY(made);
    QCOMPARE(fixture.ItemNames(), QStringList{ QStringLiteral("plan é") });
    QCOMPARE(made->size, QSize(1234, 567));
    QVERIFY(made->rate == (rostrum::Rate{ 24000, 1001 }));
    QCOMPARE(fixture.Session().FrameCount(), 48);
}

void TestMainWindow::compositionSettingsChangeWhatIsShown()
{
    WindowFixture fixture;
    fixture.MakeComposition();
    fixture.Choose(QStringLiteral("Layer/New/Camera"));
    const DialogHand hand([](QDialog &d) {
        Type(d, "frames", QStringLiteral("250"));
        ClickButton(d, QStringLiteral("OK"));
    });

    fixture.Choose(QStringLiteral("Composition/Settings..."));

    QVERIFY(hand.Answered());
    QCOMPARE(fixture.Session().FrameCount(), 250);
    QVERIFY(fixture.Session().ActiveComposition()->layers[0]->duration
        == fixture.Session().ActiveComposition()->duration); // it filled the composition before
    QCOMPARE(
        fixture.Session().GetDocument().UndoNames().last(), QByteArray("Composition Settings"));
}

/// The list said 2 frames and the viewer went to the second, while the renderer drew three.
void TestMainWindow::aPartOfAFrameIsAFrameWhereverFramesAreCounted()
{
    WindowFixture fixture;
    rostrum::Composition composition;
    composition.size = { 32, 20 };
    composition.duration = { 81, 1000 }; // two frames at 25 a second, and a part
    rostrum::ItemId made = 0;
    fixture.Session().Do("Make",
        [&](rostrum::Project &project) { made = project.AddComposition("scene", composition); });
    fixture.Session().SetActiveItem(made);
    fixture.Tree().Pick({ made });

    QCOMPARE(fixture.Tree().topLevelItem(0)->data(0, rostrum::kItemFactsRole).toString(),
        QStringLiteral("Composition, 32 x 20, 3 frames"));
    auto &viewer = *fixture.window->findChild<rostrum::Viewer *>();
    fixture.Activate();
    viewer.View().setFocus();
    QTest::keyClick(&viewer.View(), Qt::Key_End);
    QCOMPARE(fixture.Session().CurrentFrame(), 2);
    {
        const DialogHand render([](QDialog &d) {
            QCOMPARE(d.findChild<QSpinBox *>(QStringLiteral("last"))->text(), QStringLiteral("3"));
            d.reject();
        });
        fixture.Choose(QStringLiteral("File/Render Frames..."));
        QVERIFY(render.Answered());
    }
    const DialogHand settings([](QDialog &d) {
        QCOMPARE(d.findChild<QSpinBox *>(QStringLiteral("frames"))->text(), QStringLiteral("3"));
        Type(d, "name", QStringLiteral("street"));
        ClickButton(d, QStringLiteral("OK"));
    });
    fixture.Choose(QStringLiteral("Composition/Settings..."));
    QVERIFY(settings.Answered());
    QCOMPARE(fixture.ItemNames(), QStringList{ QStringLiteral("street") });
    QVERIFY(fixture.Session().ActiveComposition()->duration == composition.duration);

    fixture.Tree().Pick({ made });
    fixture.Choose(QStringLiteral("Composition/New from Picked Items"));
    QVERIFY(fixture.Session().ActiveCompositionId() != made);
    QCOMPARE(fixture.Session().FrameCount(), 3);
}

void TestMainWindow::aCompositionIsMadeFromADrawing()
{
    WindowFixture fixture;
    const QString path
        = WriteSeries(fixture.folder.path(), QStringLiteral("walk"), 1, 7, 4, { 64, 36 });
    const auto items = fixture.Tree().Picked();
    QVERIFY(items.isEmpty());
    QVERIFY(!WindowFixture::Find(
        fixture.Look(QStringLiteral("Composition")), QStringLiteral("New from Picked Items"))
                 ->isEnabled());
    const DialogHand hand([&](QDialog &d) { TypePath(d, path); });
    fixture.Choose(QStringLiteral("File/Import Drawings..."));
    const auto drawing = fixture.Tree().Picked();

    fixture.Choose(QStringLiteral("Composition/New from Picked Items"));

    // The composition is picked, so that it stays in front when the list has the focus again.
    QCOMPARE(fixture.Tree().Picked(),
        QVector<rostrum::ItemId>{ fixture.Session().ActiveCompositionId() });
    QCOMPARE(fixture.Session().ActiveComposition()->size, QSize(64, 36));
    QCOMPARE(fixture.Session().FrameCount(), 7);
    QCOMPARE(fixture.LayerNames(), QStringList{ QStringLiteral("walk[0001-0007].png") });
    fixture.Tree().Pick(drawing);
    fixture.Choose(QStringLiteral("Composition/Add Picked Items as Layers"));
    QCOMPARE(fixture.LayerNames().size(), 2);
    QCOMPARE(fixture.Session().SelectedLayers().size(), 1);
}

void TestMainWindow::layersOfEachKindAreMade()
{
    WindowFixture fixture;
    QVERIFY(!WindowFixture::Find(fixture.Look(QStringLiteral("Layer")), QStringLiteral("New"))
                 ->isEnabled());
    fixture.MakeComposition();
    fixture.MakeComposition();
    {
        const DialogHand hand([](QDialog &d) {
            Type(d, "name", QStringLiteral("sky"));
            ClickButton(d, QStringLiteral("OK"));
        });
        fixture.Choose(QStringLiteral("Layer/New/Solid..."));
        QVERIFY(hand.Answered());
    }
    fixture.Choose(QStringLiteral("Layer/New/Camera"));
    fixture.Choose(QStringLiteral("Layer/New/Light"));
    {
        const DialogHand hand([](QDialog &d) {
            testing::TypeText(d.findChild<QLineEdit *>(), QStringLiteral("The end"));
            ClickButton(d, QStringLiteral("OK"));
        });
        fixture.Choose(QStringLiteral("Layer/New/Text..."));
        QVERIFY(hand.Answered());
    }
    fixture.Choose(QStringLiteral("Layer/New/From Footage/Composition"));

    QCOMPARE(fixture.LayerNames(),
        QStringList({ QStringLiteral("Composition"), QStringLiteral("The end"),
            QStringLiteral("Light"), QStringLiteral("Camera"), QStringLiteral("sky") }));
    const QMenu *footage = WindowFixture::Find(
        WindowFixture::Find(fixture.Look(QStringLiteral("Layer")), QStringLiteral("New"))->menu(),
        QStringLiteral("From Footage"))
                               ->menu();
    emit const_cast<QMenu *>(footage)->aboutToShow();
    for (const QAction *action : footage->actions())
        QVERIFY(action->text() != QStringLiteral("Composition 2")); // it may not show itself
}

void TestMainWindow::selectedLayersAreRenamedLabelledDuplicatedAndDeleted()
{
    WindowFixture fixture;
    fixture.MakeComposition();
    fixture.Choose(QStringLiteral("Layer/New/Camera"));
    fixture.Choose(QStringLiteral("Layer/New/Light"));
    {
        const DialogHand hand([](QDialog &d) {
            testing::TypeText(d.findChild<QLineEdit *>(), QStringLiteral("lamp"));
            ClickButton(d, QStringLiteral("OK"));
        });
        fixture.Choose(QStringLiteral("Layer/Rename..."));
        QVERIFY(hand.Answered());
    }
    fixture.Choose(QStringLiteral("Layer/Label/Cobalt"));
    fixture.Choose(QStringLiteral("Layer/Duplicate"));
    QCOMPARE(fixture.LayerNames(),
        QStringList({ QStringLiteral("lamp"), QStringLiteral("lamp"), QStringLiteral("Camera") }));
    const auto &layers = fixture.Session().ActiveComposition()->layers;
    QCOMPARE(int(layers[0]->label), 8);
    QCOMPARE(fixture.Session().SelectedLayers(), QVector<rostrum::LayerId>{ layers[0]->id });

    fixture.Choose(QStringLiteral("Layer/Delete"));

    QCOMPARE(
        fixture.LayerNames(), QStringList({ QStringLiteral("lamp"), QStringLiteral("Camera") }));
    QMenu *menu = fixture.Look(QStringLiteral("Layer"));
    QVERIFY(!WindowFixture::Find(menu, QStringLiteral("Delete"))->isEnabled());
    emit menu->aboutToHide();
    fixture.Press(Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(fixture.Message(), QStringLiteral("Select a layer first"));
}

void TestMainWindow::severalLayersAreChangedInOneStep()
{
    WindowFixture fixture;
    fixture.MakeComposition();
    for (const char *kind : { "Camera", "Light", "Camera" })
        fixture.Choose(QStringLiteral("Layer/New/") + QLatin1String(kind));
    const auto layers = [&] { return fixture.Session().ActiveComposition()->layers; };
    fixture.Session().SelectLayers({ layers()[0]->id, layers()[2]->id });
    const int before = fixture.Session().GetDocument().UndoNames().size();
    {
        const DialogHand hand([](QDialog &d) {
            testing::TypeText(d.findChild<QLineEdit *>(), QStringLiteral("eye"));
            ClickButton(d, QStringLiteral("OK"));
        });
        fixture.Choose(QStringLiteral("Layer/Rename..."));
        QVERIFY(hand.Answered());
    }
    QCOMPARE(fixture.LayerNames(),
        QStringList({ QStringLiteral("eye"), QStringLiteral("Light"), QStringLiteral("eye") }));
    fixture.Choose(QStringLiteral("Layer/Label/Mint"));
    QCOMPARE(int(layers()[0]->label), 7);
    QCOMPARE(int(layers()[1]->label), 0);
    QCOMPARE(int(layers()[2]->label), 7);
    fixture.Choose(QStringLiteral("Layer/Effects/Flou gaussien"));
    QCOMPARE(layers()[0]->effects.size() + layers()[2]->effects.size(), 2);
    fixture.Choose(QStringLiteral("Layer/Duplicate"));
    QCOMPARE(fixture.LayerNames(),
        QStringList({ QStringLiteral("eye"), QStringLiteral("eye"), QStringLiteral("Light"),
            QStringLiteral("eye"), QStringLiteral("eye") }));
    QCOMPARE(fixture.Session().SelectedLayers(),
        QVector<rostrum::LayerId>({ layers()[0]->id, layers()[3]->id }));
    fixture.Choose(QStringLiteral("Layer/Delete"));
    QCOMPARE(fixture.LayerNames().size(), 3);
    QCOMPARE(fixture.Session().GetDocument().UndoNames().size(), before + 5);
    for (int i = 0; i < 5; ++i)
        fixture.Press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(fixture.LayerNames(),
        QStringList(
            { QStringLiteral("Camera"), QStringLiteral("Light"), QStringLiteral("Camera") }));
}

void TestMainWindow::effectsAreAppliedAndRemoved()
{
    WindowFixture fixture;
    fixture.MakeComposition();
    fixture.Choose(QStringLiteral("Layer/New/Light"));

    fixture.Choose(QStringLiteral("Layer/Effects/Flou gaussien"));
    fixture.Choose(QStringLiteral("Layer/Effects/Remplir"));

    QCOMPARE(fixture.Session().ActiveComposition()->layers[0]->effects.size(), 2);
    fixture.Choose(QStringLiteral("Layer/Effects/Remove All"));
    QCOMPARE(fixture.Session().ActiveComposition()->layers[0]->effects.size(), 0);
}

void TestMainWindow::undoAndRedoAreNamedInTheMenu()
{
    WindowFixture fixture;
    QVERIFY(!WindowFixture::Find(fixture.Look(QStringLiteral("Edit")), QStringLiteral("Undo"))
                 ->isEnabled());
    fixture.MakeComposition();

    fixture.Choose(QStringLiteral("Edit/Undo New Composition"));
    QCOMPARE(fixture.ItemNames().size(), 0);
    fixture.Choose(QStringLiteral("Edit/Redo New Composition"));
    QCOMPARE(fixture.ItemNames().size(), 1);
    fixture.Press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(fixture.ItemNames().size(), 0);
    fixture.Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(fixture.ItemNames().size(), 1);
}

void TestMainWindow::theHistoryListGoesToAnyState()
{
    WindowFixture fixture;
    for (int i = 0; i < 3; ++i)
        fixture.MakeComposition();
    fixture.Choose(QStringLiteral("Edit/History"));
    auto *list = fixture.window->findChild<rostrum::HistoryList *>();
    QVERIFY(list->isVisible());
    QCOMPARE(list->count(), 4);
    const auto click = [list](int row) {
        QTest::mouseClick(
            list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
    };

    click(1);
    QCOMPARE(fixture.ItemNames().size(), 1);
    QCOMPARE(list->currentRow(), 1);
    click(3);
    QCOMPARE(fixture.ItemNames().size(), 3);
    click(0);
    QCOMPARE(fixture.ItemNames().size(), 0);
}

void TestMainWindow::deleteInTheMenuIsThatOfTheListWithTheFocus()
{
    WindowFixture fixture;
    fixture.MakeComposition();
    fixture.Tree().setFocus();
    fixture.Tree().selectAll();

    fixture.Choose(QStringLiteral("Edit/Copy"));
    fixture.Choose(QStringLiteral("Edit/Paste"));
    QCOMPARE(fixture.ItemNames(),
        QStringList({ QStringLiteral("Composition"), QStringLiteral("Composition 2") }));
    fixture.Choose(QStringLiteral("Edit/Cut")); // what was pasted is picked
    QCOMPARE(fixture.ItemNames(), QStringList{ QStringLiteral("Composition") });
    fixture.Tree().selectAll();
    fixture.Choose(QStringLiteral("Edit/Delete"));
    QCOMPARE(fixture.ItemNames(), QStringList());
}

void TestMainWindow::keysOfTheSheetAreNotTheWindows()
{
    WindowFixture fixture;
    const QStringList names{ QStringLiteral("Return"), QStringLiteral("Home"),
        QStringLiteral("End"), QStringLiteral("Ins"), QStringLiteral("Del"),
        QStringLiteral("Space"), QStringLiteral("PgUp"), QStringLiteral("PgDown"),
        QStringLiteral("Ctrl+X"), QStringLiteral("Ctrl+C"), QStringLiteral("Ctrl+V"),
        QStringLiteral("Ctrl+G"), QStringLiteral("Ctrl+H"), QStringLiteral("Ctrl+Del") };
    QVector<QKeySequence> forbidden;
    for (const QString &name : names)
        forbidden << QKeySequence(name);
    int keys = 0;
    for (const QAction *action : fixture.window->findChildren<QAction *>()) {
        for (const QKeySequence &key : action->shortcuts()) {
            ++keys;
            if (forbidden.contains(key))
                QVERIFY2(action->shortcutContext() == Qt::WidgetShortcut,
                    qPrintable(action->text() + QLatin1Char(' ') + key.toString()));
        }
    }
    QVERIFY(keys > 15);
}

void TestMainWindow::docksAreShownAndKeptBetweenRuns()
{
    WindowFixture fixture;
    const auto dock = [&](const char *name) {
        return fixture.window->findChild<QDockWidget *>(QLatin1String(name));
    };
    QVERIFY(dock("projectDock")->isVisible() && !dock("messagesDock")->isVisible());
    fixture.Choose(QStringLiteral("Window/Messages"));
    fixture.Choose(QStringLiteral("Window/Project"));
    QVERIFY(!dock("projectDock")->isVisible() && dock("messagesDock")->isVisible());
    QVERIFY(fixture.window->close());

    fixture.Show();

    QVERIFY(!dock("projectDock")->isVisible() && dock("messagesDock")->isVisible());
    fixture.Choose(QStringLiteral("Window/Reset Layout"));
    QVERIFY(dock("projectDock")->isVisible() && !dock("messagesDock")->isVisible());
    QTest::mouseClick(
        dock("projectDock")->findChild<QWidget *>(QStringLiteral("close")), Qt::LeftButton);
    QVERIFY(!dock("projectDock")->isVisible());
}

void TestMainWindow::helpShowsTheVersion()
{
    WindowFixture fixture;
    const DialogHand hand = Press("OK");

    fixture.Choose(QStringLiteral("Help/About Rostrum"));

    QVERIFY(hand.Answered());
    QVERIFY(hand.Text().contains(QStringLiteral("Rostrum 0.")));
}

void TestMainWindow::helpOpensTheUserGuide()
{
    WindowFixture fixture;
    Browser browser;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &browser, "OnUrl");

    fixture.Choose(QStringLiteral("Help/User Guide"));
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));

    QVERIFY2(browser.shown.endsWith(QStringLiteral("user-guide.md")), qPrintable(browser.shown));
    QVERIFY(QFile::exists(browser.shown));
}

void TestMainWindow::framesAreRenderedFromTheMenu()
{
    WindowFixture fixture;
    {
        const DialogHand make([](QDialog &d) {
            Type(d, "width", QStringLiteral("32"));
            Type(d, "height", QStringLiteral("20"));
            ClickButton(d, QStringLiteral("OK"));
        });
        fixture.Choose(QStringLiteral("Composition/New Composition..."));
        QVERIFY(make.Answered());
    }
    QString told;
    const DialogHand hand([&](QDialog &d) {
        Type(d, "place", fixture.Path("out"));
        Type(d, "first", QStringLiteral("3"));
        Type(d, "last", QStringLiteral("5"));
        ClickButton(d, QStringLiteral("Render"));
        QTRY_VERIFY(d.findChild<QWidget *>(QStringLiteral("render"))->isEnabled());
        told = d.findChild<QLabel *>(QStringLiteral("state"))->text();
    });

    fixture.Press(Qt::Key_M, Qt::ControlModifier);

    QVERIFY(hand.Answered());
    QCOMPARE(
        told, QStringLiteral("3 frames are in ") + QDir::toNativeSeparators(fixture.Path("out")));
    QCOMPARE(QDir(fixture.Path("out")).entryList(QDir::Files, QDir::Name),
        QStringList({ QStringLiteral("Composition_0002.png"),
            QStringLiteral("Composition_0003.png"), QStringLiteral("Composition_0004.png") }));
}

void TestMainWindow::withoutACompositionRenderingTells()
{
    WindowFixture fixture;

    fixture.Choose(QStringLiteral("File/Render Frames..."));

    QCOMPARE(
        fixture.Message(), QStringLiteral("Open a composition first: its frames are rendered"));
}

void TestMainWindow::messagesAreShownAndKept()
{
    WindowFixture fixture;
    fixture.host->Tell(QStringLiteral("first"));
    fixture.host->Tell(QStringLiteral("second"));

    QCOMPARE(fixture.Message(), QStringLiteral("second"));
    const QString log = fixture.window->findChild<rostrum::MessageLog *>()->toPlainText();
    QVERIFY(log.contains(QStringLiteral("first")) && log.contains(QStringLiteral("second")));
}

VN_HOST_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
