#include "DragHand.h"
#include "WindowFixture.h"
#include "core/FootageFiles.h"
#include "core/ProjectFile.h"
#include "testhost/HostTestMain.h"
#include "window/ItemRow.h"
#include "window/Labels.h"
#include "window/Timeline.h"
#include "window/Viewer.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QImage>

using rostrum::ItemId;
using testing::ClickButton;
using testing::DialogHand;

namespace {

/// The window with a list of: folder "A", folder "B", series "walk", solid "sky", composition
/// "scene", which is in front.
class ListFixture : public testing::WindowFixture
{
public:
    ListFixture()
    {
        for (int i = 0; i < 3; ++i)
            Draw(QStringLiteral("walk%1.png").arg(i, 4, 10, QLatin1Char('0')), Qt::darkRed);
        const auto walk = rostrum::ImportDrawings(Path("walk0000.png"), /*series=*/true);
        Session().Do("Make", [&](rostrum::Project &project) {
            project.AddFolder("A");
            project.AddFolder("B");
            project.AddFootage("walk", walk.footage);
            project.AddSolid("sky", { QSize(32, 24), { 0, 0, 1 } });
            rostrum::Composition scene;
            scene.size = QSize(32, 24);
            scene.duration = rostrum::Rate().FrameTime(5);
            scene.background = { 0, 1, 0 };
            project.AddComposition("scene", scene);
        });
        Session().SetActiveItem(Id("scene"));
    }
    void Draw(const QString &name, const QColor &color) const
    {
        QImage image(32, 24, QImage::Format_RGB32);
        image.fill(color);
        QVERIFY(image.save(folder.filePath(name)));
    }
    ItemId Id(const QByteArray &name)
    {
        for (ItemId id = Project().RootFolder(); id; id = Project().NextInWalk(id)) {
            if (Project().Find(id)->name == name)
                return id;
        }
        return 0;
    }
    QTreeWidgetItem *Row(const QString &name)
    {
        const auto rows = Tree().findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
        return rows.isEmpty() ? nullptr : rows.first();
    }
    QPoint Place(const QString &name) { return Tree().visualItemRect(Row(name)).center(); }
    void Click(const char *name, Qt::KeyboardModifiers modifiers = {})
    {
        Activate();
        QTest::mouseClick(
            Tree().viewport(), Qt::LeftButton, modifiers, Place(QString::fromUtf8(name)));
    }
    void DragTo(
        const char *from, QWidget &to, const QPoint &place, Qt::KeyboardModifiers modifiers = {})
    {
        Activate();
        testing::DragAcross(
            *Tree().viewport(), Place(QString::fromUtf8(from)), to, place, modifiers);
    }
    void DragOnRow(const char *from, const char *to, Qt::KeyboardModifiers modifiers = {})
    {
        DragTo(from, *Tree().viewport(), Place(QString::fromUtf8(to)), modifiers);
    }
    QString Facts(const char *name)
    {
        return Row(QString::fromUtf8(name))->data(0, rostrum::kItemFactsRole).toString();
    }
    /// Of the picture that a row shows.
    QColor PictureColor(const char *name)
    {
        const QImage image
            = Row(QString::fromUtf8(name))->icon(0).pixmap(rostrum::kThumbnailSize).toImage();
        return image.pixelColor(image.rect().center());
    }
    QByteArray LastChange() { return Session().GetDocument().UndoNames().last(); }
    QStringList Menu(const char *name, const QStringList &titles)
    {
        Activate();
        return testing::ChooseFromMenu(*Tree().viewport(), Place(QString::fromUtf8(name)), titles);
    }
};

/// Pastes a path into a file dialog and accepts it; typed in a real window, it is completed while it
/// grows.
void PastePath(QDialog &dialog, const QString &path)
{
    auto *name = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    QVERIFY(name);
    name->setFocus();
    name->selectAll();
    QApplication::clipboard()->setText(path);
    QTest::keyClick(name, Qt::Key_V, Qt::ControlModifier);
    if (name->completer() && name->completer()->popup()->isVisible())
        QTest::keyClick(name->completer()->popup(), Qt::Key_Escape);
    for (QAbstractButton *button : dialog.findChildren<QAbstractButton *>()) {
        const auto *buttons = qobject_cast<QDialogButtonBox *>(button->parentWidget());
        if (buttons && buttons->buttonRole(button) == QDialogButtonBox::AcceptRole)
            return QTest::mouseClick(button, Qt::LeftButton);
    }
    QFAIL("the dialog has no button to accept it by");
}

} // namespace

/// The project list by mouse and keys.
class TestProjectTree : public QObject
{
    Q_OBJECT

private slots:
    void aRowTellsWhatItsItemIs();
    void everyKindHasItsPicture();
    void aPictureFollowsItsItem();
    void missingDrawingsAreMarkedAndFoundAgain();
    void anItemIsDraggedIntoAFolderAndOut();
    void severalItemsAreDraggedInOneStep();
    void aDragWithShiftLosesNothing();
    void aFolderIsNotDraggedIntoItself();
    void itemsBecomeLayersOfTheCompositionTheyAreDroppedOn();
    void itemsBecomeLayersWhereTheyAreDropped_data();
    void itemsBecomeLayersWhereTheyAreDropped();
    void aFolderIsNoLayer();
    void anItemIsRenamedInItsRow();
    void aRenameMayBeGivenUp_data();
    void aRenameMayBeGivenUp();
    void renamingInAnotherPlaceIsShown();
    void labelsColourSeveralItemsAtOnce();
    void theMenuOffersWhatCanBeDone();
    void relinkAsksForAFileAndFindsTheOthers();
    void relinkRefusesWhatIsNoDrawing();
    void itemsAreDeletedWithTheirLayers();
};

void TestProjectTree::aRowTellsWhatItsItemIs()
{
    ListFixture fixture;
    QCOMPARE(fixture.Facts("walk"), QStringLiteral("Series, 32 x 24, 3 drawings"));
    QCOMPARE(fixture.Facts("sky"), QStringLiteral("Solid, 32 x 24"));
    QCOMPARE(fixture.Facts("scene"), QStringLiteral("Composition, 32 x 24, 5 frames"));
    QCOMPARE(fixture.Facts("A"), QStringLiteral("Folder"));
    // Both lines are inside the row.
    const QFontMetrics metrics(fixture.Tree().font());
    QVERIFY(fixture.Tree().visualItemRect(fixture.Row(QStringLiteral("walk"))).height()
        > 3 * metrics.height() / 2);
}

void TestProjectTree::everyKindHasItsPicture()
{
    ListFixture fixture;
    QTRY_COMPARE(fixture.PictureColor("walk"), QColor(Qt::darkRed));
    QTRY_COMPARE(fixture.PictureColor("sky"), QColor(Qt::blue));
    QTRY_COMPARE(fixture.PictureColor("scene"), QColor(Qt::green));
    QVERIFY(!fixture.Row(QStringLiteral("A"))->icon(0).isNull());
}

void TestProjectTree::aPictureFollowsItsItem()
{
    ListFixture fixture;
    QTRY_COMPARE(fixture.PictureColor("scene"), QColor(Qt::green));
    fixture.Session().Do("Add", [&](rostrum::Project &project) {
        project.AddLayer(fixture.Id("sky"), fixture.Id("scene"));
    });

    QTRY_COMPARE(fixture.PictureColor("scene"), QColor(Qt::blue));
    fixture.Session().RunCommand(kHostCommandUndo);
    QTRY_COMPARE(fixture.PictureColor("scene"), QColor(Qt::green));
}

void TestProjectTree::missingDrawingsAreMarkedAndFoundAgain()
{
    ListFixture fixture;
    QVERIFY(QFile::rename(fixture.Path("walk0001.png"), fixture.Path("away.png")));

    fixture.Tree().LookForMissing();
    QCOMPARE(fixture.Facts("walk"), QStringLiteral("Missing: 1 of 3"));
    QVERIFY(QFile::rename(fixture.Path("away.png"), fixture.Path("walk0001.png")));
    QEvent back(QEvent::ActivationChange); // of a window that comes to the front again
    fixture.Activate();
    QApplication::sendEvent(fixture.window.get(), &back);
    QCOMPARE(fixture.Facts("walk"), QStringLiteral("Series, 32 x 24, 3 drawings"));
}

void TestProjectTree::anItemIsDraggedIntoAFolderAndOut()
{
    ListFixture fixture;

    fixture.DragOnRow("walk", "B");

    QCOMPARE(fixture.Project().Find(fixture.Id("walk"))->parent, fixture.Id("B"));
    QCOMPARE(fixture.Row(QStringLiteral("walk"))->parent(), fixture.Row(QStringLiteral("B")));
    QCOMPARE(fixture.LastChange(), QByteArray("Move Items"));
    const int changes = fixture.Session().GetDocument().UndoNames().size();
    fixture.DragOnRow("walk", "walk"); // where it is
    QCOMPARE(fixture.Session().GetDocument().UndoNames().size(), changes);
    fixture.DragTo("walk", *fixture.Tree().viewport(),
        QPoint(50, fixture.Tree().viewport()->height() - 5)); // below all rows
    QCOMPARE(fixture.Project().Find(fixture.Id("walk"))->parent, fixture.Project().RootFolder());
    QVERIFY(!fixture.Row(QStringLiteral("walk"))->parent());
}

void TestProjectTree::severalItemsAreDraggedInOneStep()
{
    ListFixture fixture;
    fixture.Click("walk");
    fixture.Click("sky", Qt::ControlModifier);
    fixture.Click("A", Qt::ControlModifier);
    const int changes = fixture.Session().GetDocument().UndoNames().size();

    fixture.DragOnRow("sky", "B");

    QCOMPARE(fixture.Row(QStringLiteral("B"))->childCount(), 3);
    QCOMPARE(fixture.Session().GetDocument().UndoNames().size(), changes + 1);
    fixture.Session().RunCommand(kHostCommandUndo);
    QCOMPARE(fixture.Row(QStringLiteral("B"))->childCount(), 0);
}

/// Shift asks for a move, after which the list would have taken the rows away.
void TestProjectTree::aDragWithShiftLosesNothing()
{
    ListFixture fixture;

    fixture.DragOnRow("walk", "A", Qt::ShiftModifier);

    QCOMPARE(fixture.ItemNames().size(), 5);
    QVERIFY(fixture.Row(QStringLiteral("walk")));
    QCOMPARE(fixture.Row(QStringLiteral("walk"))->parent(), fixture.Row(QStringLiteral("A")));
    QCOMPARE(fixture.Facts("walk"), QStringLiteral("Series, 32 x 24, 3 drawings"));
}

void TestProjectTree::aFolderIsNotDraggedIntoItself()
{
    ListFixture fixture;
    fixture.DragOnRow("B", "A");
    QCOMPARE(fixture.Row(QStringLiteral("B"))->parent(), fixture.Row(QStringLiteral("A")));

    fixture.DragOnRow("A", "B");

    QCOMPARE(fixture.ItemNames().size(), 5);
    QCOMPARE(fixture.Row(QStringLiteral("B"))->parent(), fixture.Row(QStringLiteral("A")));
    QVERIFY(!fixture.Row(QStringLiteral("A"))->parent());
}

void TestProjectTree::itemsBecomeLayersOfTheCompositionTheyAreDroppedOn()
{
    ListFixture fixture;
    fixture.Session().SetActiveItem(0);

    fixture.DragOnRow("walk", "scene");

    QCOMPARE(fixture.Session().ActiveCompositionId(), fixture.Id("scene"));
    QCOMPARE(fixture.LayerNames(), QStringList{ QStringLiteral("walk") });
    QCOMPARE(fixture.Session().SelectedLayers().size(), 1);
    QCOMPARE(fixture.Project().Find(fixture.Id("walk"))->parent, fixture.Project().RootFolder());
    fixture.DragOnRow("scene", "scene"); // it may not show itself
    QCOMPARE(fixture.LayerNames().size(), 1);
}

void TestProjectTree::itemsBecomeLayersWhereTheyAreDropped_data()
{
    QTest::addColumn<bool>("onTimeline");
    QTest::newRow("viewer") << false;
    QTest::newRow("timeline") << true;
}

void TestProjectTree::itemsBecomeLayersWhereTheyAreDropped()
{
    QFETCH(bool, onTimeline);
    ListFixture fixture;
    QWidget *target = onTimeline
        ? static_cast<QWidget *>(fixture.window->findChild<rostrum::Timeline *>())
        : fixture.window->findChild<rostrum::Viewer *>();
    fixture.Click("walk");
    fixture.Click("sky", Qt::ControlModifier);

    fixture.DragTo("walk", *target, target->rect().center());

    QCOMPARE(fixture.LayerNames(), QStringList({ QStringLiteral("walk"), QStringLiteral("sky") }));
    QCOMPARE(fixture.LastChange(), QByteArray("Add Layers"));
    QCOMPARE(fixture.Session().SelectedLayers().size(), 2);
    QCOMPARE(fixture.ItemNames().size(), 5);
}

void TestProjectTree::aFolderIsNoLayer()
{
    ListFixture fixture;
    QWidget *viewer = fixture.window->findChild<rostrum::Viewer *>();

    fixture.DragTo("A", *viewer, viewer->rect().center());

    QCOMPARE(fixture.LayerNames(), QStringList());
    QVERIFY2(fixture.Message().contains(QStringLiteral("A folder is no layer")),
        qPrintable(fixture.Message()));
}

void TestProjectTree::anItemIsRenamedInItsRow()
{
    ListFixture fixture;
    fixture.Click("walk");
    QTest::keyClick(&fixture.Tree(), Qt::Key_F2);
    auto *editor = fixture.Tree().viewport()->findChild<QLineEdit *>();
    QVERIFY(editor && editor->isVisible());
    QCOMPARE(editor->text(), QStringLiteral("walk"));
    const QRect row = fixture.Tree().visualItemRect(fixture.Row(QStringLiteral("walk")));
    QVERIFY(row.contains(editor->geometry()));
    QVERIFY2(editor->width() > row.width() / 2, "a name has room");

    testing::TypeText(editor, QStringLiteral("marche é"));
    QTest::keyClick(editor, Qt::Key_Return);

    QTRY_VERIFY(fixture.Row(QStringLiteral("marche é")));
    QCOMPARE(fixture.ItemNames().at(2), QStringLiteral("marche é"));
    QCOMPARE(fixture.LastChange(), QByteArray("Rename Item"));
    fixture.Session().RunCommand(kHostCommandUndo);
    QVERIFY(fixture.Row(QStringLiteral("walk")));
}

void TestProjectTree::aRenameMayBeGivenUp_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Escape") << QStringLiteral("other") << Qt::Key_Escape;
    QTest::newRow("no name") << QStringLiteral(" ") << Qt::Key_Return;
    QTest::newRow("the same") << QStringLiteral("walk") << Qt::Key_Return;
}

void TestProjectTree::aRenameMayBeGivenUp()
{
    QFETCH(QString, typed);
    QFETCH(Qt::Key, key);
    ListFixture fixture;
    const auto changes = fixture.Session().GetDocument().UndoNames();
    fixture.Click("walk");
    QTest::keyClick(&fixture.Tree(), Qt::Key_F2);
    const QPointer<QLineEdit> editor = fixture.Tree().viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);

    testing::TypeText(editor, typed);
    QTest::keyClick(editor, key);

    QTRY_VERIFY(!editor);
    QVERIFY(fixture.Row(QStringLiteral("walk")));
    QCOMPARE(fixture.ItemNames().at(2), QStringLiteral("walk"));
    QCOMPARE(fixture.Session().GetDocument().UndoNames(), changes);
}

void TestProjectTree::renamingInAnotherPlaceIsShown()
{
    ListFixture fixture;
    fixture.Session().Do("Rename",
        [&](rostrum::Project &project) { project.Edit(fixture.Id("walk"))->name = "run"; });
    QVERIFY(fixture.Row(QStringLiteral("run")));
    QVERIFY(!fixture.Row(QStringLiteral("walk")));
}

void TestProjectTree::labelsColourSeveralItemsAtOnce()
{
    ListFixture fixture;
    fixture.Click("walk");
    fixture.Click("sky", Qt::ControlModifier);
    const auto stripe = [&](const char *name) {
        const QRect row = fixture.Tree().visualItemRect(fixture.Row(QString::fromUtf8(name)));
        return fixture.Tree().viewport()->grab().toImage().pixelColor(
            row.left() + 3, row.center().y());
    };

    fixture.Menu("walk", { QStringLiteral("Label"), QStringLiteral("Cobalt") });

    QCOMPARE(int(fixture.Project().Find(fixture.Id("walk"))->label), 8);
    QCOMPARE(int(fixture.Project().Find(fixture.Id("sky"))->label), 8);
    QCOMPARE(fixture.LastChange(), QByteArray("Label Items"));
    QCOMPARE(stripe("walk"), rostrum::LabelColor(8));
    QCOMPARE(stripe("sky"), rostrum::LabelColor(8));
    QVERIFY(stripe("scene") != rostrum::LabelColor(8));
    fixture.Menu("walk", { QStringLiteral("Label"), QStringLiteral("None") });
    QCOMPARE(int(fixture.Project().Find(fixture.Id("walk"))->label), 0);
}

void TestProjectTree::theMenuOffersWhatCanBeDone()
{
    ListFixture fixture;
    fixture.Click("walk");
    QStringList usable = fixture.Menu("walk", {});
    QVERIFY(
        usable.contains(QStringLiteral("Rename")) && usable.contains(QStringLiteral("Relink...")));
    QVERIFY2(!usable.contains(QStringLiteral("Paste")), "nothing was copied");
    fixture.Tree().clearSelection();
    usable = fixture.Menu("walk", {});
    QVERIFY(!usable.contains(QStringLiteral("Delete")));
    fixture.Click("sky");
    QTest::keyClick(&fixture.Tree(), Qt::Key_Delete); // the keys work after a menu was open
    QVERIFY(!fixture.Row(QStringLiteral("sky")));
}

void TestProjectTree::relinkAsksForAFileAndFindsTheOthers()
{
    ListFixture fixture;
    fixture.Draw(QStringLiteral("run0001.png"), Qt::green);
    fixture.Session().Do("Add", [&](rostrum::Project &project) {
        project.AddFootage(
            "run", rostrum::ImportDrawings(fixture.Path("run0001.png"), /*series=*/true).footage);
    });
    QVERIFY(QDir().mkpath(fixture.Path("moved")));
    for (const char *name : { "walk0000.png", "walk0001.png", "walk0002.png", "run0001.png" })
        QVERIFY(QFile::rename(
            fixture.Path(name), fixture.Path("moved") + QLatin1Char('/') + QLatin1String(name)));
    fixture.Tree().LookForMissing();
    QCOMPARE(fixture.Facts("walk"), QStringLiteral("Missing: 3 of 3"));
    fixture.Click("walk");
    const DialogHand hand([&](QDialog &d) { PastePath(d, fixture.Path("moved/walk0001.png")); });

    fixture.Menu("walk", { QStringLiteral("Relink...") });

    QVERIFY(hand.Answered());
    QCOMPARE(fixture.Facts("walk"), QStringLiteral("Series, 32 x 24, 3 drawings"));
    QCOMPARE(fixture.Facts("run"), QStringLiteral("Series, 32 x 24, 1 drawing"));
    QCOMPARE(fixture.LastChange(), QByteArray("Relink Footage"));
    QVERIFY2(fixture.Message().contains(QStringLiteral("1 more of the folder found")),
        qPrintable(fixture.Message()));
    QTRY_COMPARE(fixture.PictureColor("walk"), QColor(Qt::darkRed));
}

void TestProjectTree::relinkRefusesWhatIsNoDrawing()
{
    ListFixture fixture;
    QFile notes(fixture.Path("notes.png"));
    QVERIFY(notes.open(QIODevice::WriteOnly) && notes.write("no image") > 0);
    notes.close();
    fixture.Click("walk");
    std::unique_ptr<DialogHand> second;
    const DialogHand hand([&](QDialog &d) {
        second = std::make_unique<DialogHand>(
            [](QDialog &box) { ClickButton(box, QStringLiteral("OK")); });
        PastePath(d, notes.fileName());
    });

    fixture.Menu("walk", { QStringLiteral("Relink...") });

    QVERIFY(hand.Answered() && second->Answered());
    QVERIFY2(second->Text().contains(QStringLiteral("is no image")), qPrintable(second->Text()));
    QCOMPARE(fixture.Facts("walk"), QStringLiteral("Series, 32 x 24, 3 drawings"));
}

void TestProjectTree::itemsAreDeletedWithTheirLayers()
{
    ListFixture fixture;
    fixture.DragOnRow("walk", "scene");
    fixture.Click("walk");

    QTest::keyClick(&fixture.Tree(), Qt::Key_Delete);

    QCOMPARE(fixture.LayerNames(), QStringList());
    QVERIFY(!fixture.Row(QStringLiteral("walk")));
    fixture.Session().RunCommand(kHostCommandUndo);
    QCOMPARE(fixture.LayerNames(), QStringList{ QStringLiteral("walk") });
}

VN_HOST_TEST_MAIN(TestProjectTree)
#include "tst_projecttree.moc"
