#include "window/Importer.h"
#include "DragHand.h"
#include "WindowFixture.h"
#include "core/ProjectFile.h"
#include "testhost/HostTestMain.h"
#include "window/MessageLog.h"
#include "window/Timeline.h"
#include "window/Viewer.h"

#include <QProgressDialog>

using testing::ClickButton;
using testing::DialogHand;
using testing::DropFiles;
using testing::WindowFixture;
using testing::WriteSeries;

namespace {

/// A cut as a folder: two series, a still, notes, and a folder with a series.
void WriteCut(const QString &folder)
{
    QVERIFY(QDir().mkpath(folder + QStringLiteral("/LO")));
    WriteSeries(folder, QStringLiteral("A"), 0, 3);
    WriteSeries(folder, QStringLiteral("B"), 0, 2);
    WriteSeries(folder + QStringLiteral("/LO"), QStringLiteral("char"), 0, 2);
    QImage still(8, 6, QImage::Format_RGB32);
    still.fill(Qt::gray);
    QVERIFY(still.save(folder + QStringLiteral("/paper.png")));
    QFile notes(folder + QStringLiteral("/notes.txt"));
    QVERIFY(notes.open(QIODevice::WriteOnly) && notes.write("slow in") > 0);
}

QString Log(WindowFixture &fixture)
{
    return fixture.window->findChild<rostrum::MessageLog *>()->toPlainText();
}

/// Clicks Cancel in a progress dialog as soon as it shows.
class CancelAtOnce : public QObject
{
public:
    CancelAtOnce() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *object, QEvent *event) override
    {
        auto *progress = qobject_cast<QProgressDialog *>(object);
        if (progress && event->type() == QEvent::Show) {
            wasShown = true;
            title = progress->windowTitle();
            auto *cancel = progress->findChild<QPushButton *>();
            QTimer::singleShot(
                0, progress, [cancel] { QTest::mouseClick(cancel, Qt::LeftButton); });
        }
        return false;
    }
    bool wasShown = false;
    QString title;
};

} // namespace

/// Drawings on their way in: what is dropped, what is told, and imports that are given up.
class TestImporter : public QObject
{
    Q_OBJECT

private slots:
    void aDroppedFolderBringsItsSeriesAndFolders();
    void droppedFilesOfASeriesComeInOnce();
    void filesDroppedOnTheCompositionBecomeLayers_data();
    void filesDroppedOnTheCompositionBecomeLayers();
    void filesDroppedOnAFolderComeIntoIt();
    void aDroppedProjectIsOpened_data();
    void aDroppedProjectIsOpened();
    void rubbishIsToldAndChangesNothing();
    void whatIsDroppedIsNeverMoved();
    void droppedTextIsRefused();
    void aCancelledImportBringsNothing();
    void drawingsThatCannotBeReadAreToldAndTheRestComesIn();
    void aSeriesWithoutABlankDrawingIsToldWithWhatToDo();
    void aBlankDrawingIsAddedFromTheListsMenu();
    void aBlankDrawingOfAnySeriesIsToldAsItIs();
    void aBlankDrawingThatCannotBeWrittenIsTold();
};

void TestImporter::aDroppedFolderBringsItsSeriesAndFolders()
{
    WindowFixture fixture;
    WriteCut(fixture.Path("cut"));

    QCOMPARE(
        DropFiles(*fixture.Tree().viewport(), { 20, 20 }, { fixture.Path("cut") }), Qt::CopyAction);

    QTRY_COMPARE(fixture.ItemNames(),
        QStringList({ QStringLiteral("cut"), QStringLiteral("A[0000-0002].png"),
            QStringLiteral("B[0000-0001].png"), QStringLiteral("paper.png"), QStringLiteral("LO"),
            QStringLiteral("char[0000-0001].png") }));
    QCOMPARE(fixture.Session().GetDocument().UndoNames(), QVector<QByteArray>{ "Import Drawings" });
    QVERIFY2(Log(fixture).contains(QStringLiteral("Left out, since no image: notes.txt")),
        qPrintable(Log(fixture)));
}

void TestImporter::droppedFilesOfASeriesComeInOnce()
{
    WindowFixture fixture;
    WriteCut(fixture.Path("cut"));

    DropFiles(*fixture.Tree().viewport(), { 20, 20 },
        { fixture.Path("cut/A0001.png"), fixture.Path("cut/A0002.png"),
            fixture.Path("cut/paper.png") });

    QTRY_COMPARE(fixture.ItemNames(),
        QStringList({ QStringLiteral("A[0000-0002].png"), QStringLiteral("paper.png") }));
    QCOMPARE(fixture.Tree().Picked().size(), 2);
}

void TestImporter::filesDroppedOnTheCompositionBecomeLayers_data()
{
    QTest::addColumn<bool>("onTimeline");
    QTest::newRow("viewer") << false;
    QTest::newRow("timeline") << true;
}

void TestImporter::filesDroppedOnTheCompositionBecomeLayers()
{
    QFETCH(bool, onTimeline);
    WindowFixture fixture;
    fixture.MakeComposition();
    WriteCut(fixture.Path("cut"));
    QWidget *target = onTimeline
        ? static_cast<QWidget *>(fixture.window->findChild<rostrum::Timeline *>())
        : fixture.window->findChild<rostrum::Viewer *>();

    QCOMPARE(DropFiles(*target, target->rect().center(),
                 { fixture.Path("cut/A0001.png"), fixture.Path("cut/paper.png") }),
        Qt::CopyAction);

    QTRY_COMPARE(fixture.LayerNames(),
        QStringList({ QStringLiteral("A[0000-0002].png"), QStringLiteral("paper.png") }));
}

void TestImporter::filesDroppedOnAFolderComeIntoIt()
{
    WindowFixture fixture;
    WriteCut(fixture.Path("cut"));
    rostrum::ItemId folder = 0;
    fixture.Session().Do(
        "Add", [&](rostrum::Project &project) { folder = project.AddFolder("drawings"); });
    const QRect row = fixture.Tree().visualItemRect(fixture.Tree().topLevelItem(0));

    DropFiles(*fixture.Tree().viewport(), row.center(), { fixture.Path("cut/A0001.png") });

    QTRY_COMPARE(fixture.Project().Find(folder)->AsFolder()->children.size(), 1);
}

void TestImporter::aDroppedProjectIsOpened_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isDirty");
    QTest::newRow("by any spelling") << QStringLiteral("Scene.ROSTRUM") << false;
    QTest::newRow("what is not saved is asked about") << QStringLiteral("scene.rostrum") << true;
}

void TestImporter::aDroppedProjectIsOpened()
{
    QFETCH(QString, name);
    QFETCH(bool, isDirty);
    WindowFixture fixture;
    rostrum::Project project;
    project.AddFolder("in the file");
    const QString path = fixture.folder.filePath(name);
    QCOMPARE(rostrum::SaveProject(project, path), QString());
    if (isDirty)
        fixture.Session().Do("Add", [](rostrum::Project &p) { p.AddFolder("new"); });
    DialogHand hand([](QDialog &d) { ClickButton(d, QStringLiteral("Discard")); });

    DropFiles(*fixture.Tree().viewport(), { 20, 20 }, { path });

    QTRY_COMPARE(fixture.ItemNames(), QStringList{ QStringLiteral("in the file") });
    QCOMPARE(hand.Answered(), isDirty);
    QCOMPARE(fixture.Session().GetDocument().path, path);
}

void TestImporter::rubbishIsToldAndChangesNothing()
{
    WindowFixture fixture;
    WriteCut(fixture.Path("cut"));
    DialogHand hand([](QDialog &d) { ClickButton(d, QStringLiteral("OK")); });

    DropFiles(*fixture.Tree().viewport(), { 20, 20 }, { fixture.Path("cut/notes.txt") });

    QTRY_VERIFY(hand.Answered());
    QCOMPARE(hand.Text(), QStringLiteral("There are no drawings, only notes.txt"));
    QCOMPARE(fixture.ItemNames(), QStringList());
    QCOMPARE(fixture.Session().GetDocument().UndoNames().size(), 0);
}

/// A file manager that is told "moved" takes its file away.
void TestImporter::whatIsDroppedIsNeverMoved()
{
    WindowFixture fixture;
    fixture.MakeComposition();
    WriteCut(fixture.Path("cut"));
    const QStringList files{ fixture.Path("cut/paper.png") };
    for (QWidget *target : { fixture.Tree().viewport(),
             static_cast<QWidget *>(fixture.window->findChild<rostrum::Viewer *>()),
             static_cast<QWidget *>(fixture.window->findChild<rostrum::Timeline *>()) }) {
        QCOMPARE(DropFiles(*target, target->rect().center(), files), Qt::CopyAction);
    }
    QTRY_COMPARE(fixture.ItemNames().size(), 4);
}

void TestImporter::droppedTextIsRefused()
{
    WindowFixture fixture;
    QMimeData data;
    data.setText(QStringLiteral("words"));
    for (QWidget *target : { fixture.Tree().viewport(),
             static_cast<QWidget *>(fixture.window->findChild<rostrum::Viewer *>()) }) {
        QDragEnterEvent enter({ 5, 5 }, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(target, &enter);
        QVERIFY(!enter.isAccepted());
    }
}

void TestImporter::aCancelledImportBringsNothing()
{
    WindowFixture fixture;
    QStringList paths;
    for (int i = 0; i < 40; ++i)
        paths << WriteSeries(
            fixture.folder.path(), QStringLiteral("still%1_").arg(i), /*first=*/1, /*count=*/1);
    rostrum::Importer importer(fixture.Session(), fixture.window.get());
    importer.patience = 0;
    CancelAtOnce cancel;

    QCOMPARE(importer.ImportStills(paths).size(), 0);

    QVERIFY(cancel.wasShown);
    QCOMPARE(cancel.title, QStringLiteral("Import"));
    QCOMPARE(fixture.ItemNames(), QStringList());
    QCOMPARE(fixture.Session().GetDocument().UndoNames().size(), 0);
    QCOMPARE(fixture.Message(), QStringLiteral("The import was cancelled; nothing came in"));
}

void TestImporter::drawingsThatCannotBeReadAreToldAndTheRestComesIn()
{
    WindowFixture fixture;
    WriteCut(fixture.Path("cut"));
    QFile bad(fixture.Path("cut/broken.png"));
    QVERIFY(bad.open(QIODevice::WriteOnly) && bad.write("no image") > 0);
    bad.close();
    DialogHand hand([](QDialog &d) { ClickButton(d, QStringLiteral("OK")); });

    DropFiles(*fixture.Tree().viewport(), { 20, 20 },
        { fixture.Path("cut/broken.png"), fixture.Path("cut/paper.png") });

    QTRY_VERIFY(hand.Answered());
    QVERIFY2(hand.Text().contains(QStringLiteral("broken.png\" is no image that can be read")),
        qPrintable(hand.Text()));
    QCOMPARE(fixture.ItemNames(), QStringList{ QStringLiteral("paper.png") });
}

/// Its numbers in a sheet are one less than those on paper, and no cell can be blank.
void TestImporter::aSeriesWithoutABlankDrawingIsToldWithWhatToDo()
{
    WindowFixture fixture;
    WriteSeries(fixture.folder.path(), QStringLiteral("walk"), 1, 3);

    DropFiles(*fixture.Tree().viewport(), { 20, 20 }, { fixture.Path("walk0002.png") });

    QTRY_COMPARE(fixture.ItemNames(), QStringList{ QStringLiteral("walk[0001-0003].png") });
    QVERIFY2(fixture.Message().contains(QStringLiteral("0 in a sheet is walk0001.png")),
        qPrintable(fixture.Message()));
    QVERIFY2(fixture.Message().contains(QStringLiteral("Add Blank Drawing")),
        qPrintable(fixture.Message()));
}

/// Layers that were timed before go on showing the drawings that they showed.
void TestImporter::aBlankDrawingIsAddedFromTheListsMenu()
{
    WindowFixture fixture;
    WriteSeries(fixture.folder.path(), QStringLiteral("walk"), 1, 3);
    fixture.MakeComposition();
    auto *viewer = fixture.window->findChild<rostrum::Viewer *>();
    DropFiles(*viewer, viewer->rect().center(), { fixture.Path("walk0002.png") });
    QTRY_COMPARE(fixture.LayerNames(), QStringList{ QStringLiteral("walk[0001-0003].png") });
    const rostrum::ItemId scene = fixture.Session().ActiveCompositionId();
    const rostrum::LayerId layer = fixture.Session().ActiveComposition()->layers[0]->id;
    fixture.Session().Do("Time", [&](rostrum::Project &project) {
        for (const int frame : { 0, 5 }) {
            project.EditLayer(scene, layer)
                ->timeRemap.InsertKey(
                    rostrum::Rate().FrameTime(frame), { (frame ? 2 : 0) / 25.0, 0, 0, 0 });
        }
    });
    const QPoint row = fixture.Tree().visualItemRect(fixture.Tree().topLevelItem(1)).center();
    fixture.Activate();
    QTest::mouseClick(fixture.Tree().viewport(), Qt::LeftButton, {}, row);

    testing::ChooseFromMenu(
        *fixture.Tree().viewport(), row, { QStringLiteral("Add Blank Drawing") });

    QCOMPARE(fixture.Message(),
        QStringLiteral("0 in a sheet is now walk0000.png, which is blank; the numbers are the "
                       "files'"));
    QVERIFY(fixture.ItemNames().contains(QStringLiteral("walk[0000-0003].png")));
    const QImage blank(fixture.Path("walk0000.png"));
    QCOMPARE(blank.size(), QSize(8, 6));
    QCOMPARE(blank.pixel(3, 3), 0U);
    const rostrum::Item *item
        = fixture.Project().Find(fixture.Project().FindComposition(scene)->layers[0]->source);
    QCOMPARE(item->AsFootage()->numbers, QVector<qint32>({ 0, 1, 2, 3 }));
    const rostrum::Stream &remap = fixture.Session().ActiveComposition()->layers[0]->timeRemap;
    QCOMPARE(remap.KeyAt(0).value[0], 1 / 25.0);
    QCOMPARE(remap.KeyAt(1).value[0], 3 / 25.0);
    QCOMPARE(fixture.Session().GetDocument().UndoNames().last(), QByteArray("Add Blank Drawing"));
    const QStringList usable = testing::ChooseFromMenu(*fixture.Tree().viewport(), row, {});
    QVERIFY(usable.contains(QStringLiteral("Relink...")));
    QVERIFY(!usable.contains(QStringLiteral("Add Blank Drawing"))); // it is there
}

/// Files may begin anywhere: the numbers in a sheet are then still not theirs.
void TestImporter::aBlankDrawingOfAnySeriesIsToldAsItIs()
{
    WindowFixture fixture;
    WriteSeries(fixture.folder.path(), QStringLiteral("walk"), 101, 3);
    DropFiles(*fixture.Tree().viewport(), { 20, 20 }, { fixture.Path("walk0102.png") });
    QTRY_COMPARE(fixture.ItemNames().size(), 1);
    const rostrum::ItemId walk = fixture.Tree().Picked().value(0);
    fixture.Session().Do(
        "Rename", [&](rostrum::Project &project) { project.Edit(walk)->name = "my walk"; });
    rostrum::Importer importer(fixture.Session(), fixture.window.get());

    QVERIFY(importer.AddBlank(walk));

    QCOMPARE(fixture.Message(),
        QStringLiteral("0 in a sheet is now walk0000.png, which is blank; 1 is walk0101.png"));
    QCOMPARE(fixture.ItemNames(), QStringList{ QStringLiteral("my walk") });
}

void TestImporter::aBlankDrawingThatCannotBeWrittenIsTold()
{
    WindowFixture fixture;
    WriteSeries(fixture.folder.path(), QStringLiteral("walk"), 1, 3);
    DropFiles(*fixture.Tree().viewport(), { 20, 20 }, { fixture.Path("walk0002.png") });
    QTRY_COMPARE(fixture.ItemNames().size(), 1);
    const rostrum::ItemId walk = fixture.Tree().Picked().value(0);
    QVERIFY(QFile::remove(fixture.Path("walk0001.png"))); // whose size and format it would have
    rostrum::Importer importer(fixture.Session(), fixture.window.get());
    const DialogHand hand([](QDialog &d) { ClickButton(d, QStringLiteral("OK")); });
    const auto changes = fixture.Session().GetDocument().UndoNames();

    QVERIFY(!importer.AddBlank(walk));

    QVERIFY(hand.Answered());
    QVERIFY2(hand.Text().contains(QStringLiteral("walk0001.png\" cannot be read")),
        qPrintable(hand.Text()));
    QVERIFY(!QFile::exists(fixture.Path("walk0000.png")));
    QCOMPARE(fixture.Session().GetDocument().UndoNames(), changes);
}

VN_HOST_TEST_MAIN(TestImporter)
#include "tst_importer.moc"
