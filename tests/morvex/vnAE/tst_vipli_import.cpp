#include "Drawings.h"
#include "LibrarySheet.h"
#include "support/vnLog.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

/// Series and stills on disk as footage of the project.
class TestVipLiImport : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aSeriesGetsItsBlankAndStartsAtItsFirstDrawing();
    void theBlanksNameFollowsTheFirstDrawing_data();
    void theBlanksNameFollowsTheFirstDrawing();
    void aSeriesThatHasItsBlankIsLeftAsItIs();
    void withoutTheWishForABlankThePathIsImportedAsGiven();
    void aSeriesIsImportedByAnyPathOfIt_data();
    void aSeriesIsImportedByAnyPathOfIt();
    void namesBeyondAscii();
    void aStillIsImportedAsGiven();
    void newFootageLiesInTheRootFolder();

    void aSeriesOfTheProjectIsReused_data();
    void aSeriesOfTheProjectIsReused();
    void anotherSeriesIsNoMatch_data();
    void anotherSeriesIsNoMatch();
    void aStillIsReusedByItsStem_data();
    void aStillIsReusedByItsStem();
    void aSeriesWithThatFirstFileIsNoStill();
    void aStillOfTheRootIsTakenForTheSeries();
    void theFirstMatchInTheWalkWins();
    void itemsWithoutFilesAreWalkedPast();
    void aPathOfTheProjectThatIsTooLongIsPassedOver();
    void thePathsThatFit_data();
    void thePathsThatFit();

    void aMovieIsOneFileWithoutABlank_data();
    void aMovieIsOneFileWithoutABlank();
    void aMovieThatTheHostCannotReadIsItsError_data();
    void aMovieThatTheHostCannotReadIsItsError();
    void aMovieOfTheProjectIsReusedAsItsKind();

    void withoutASeriesTheHostAnswersForAFolderWithAnEmptyName();
    void aFirstDrawingThatDoesNotLoadShiftsTheSeries();
    void a9999AloneIsAFolderThatDoesNotLoad();
    void aBlankThatCannotBeWrittenShiftsTheSeries_data();
    void aBlankThatCannotBeWrittenShiftsTheSeries();
    void aNameThatDoesNotFitIsRefused_data();
    void aNameThatDoesNotFitIsRefused();
    void aPathWithoutFolderAsksForASavedProject();
    void aKindThatThereIsNotIsAStillThatNothingMatches();
    void footageThatTheProjectRefusesIsGivenBack();
    void aFailureBehindTheAddingLeavesTheItem();

private:
    QByteArray PathOf(const char *fileName) const { return (Root() + '/' + fileName); }
    QByteArray Root() const { return folder->path().toUtf8(); }
    QStringList Files() const { return QDir(folder->path()).entryList(QDir::Files, QDir::Name); }
    void Write(
        const char *stem, int first, int count, int digits = 4, const char *extension = "png")
    {
        testing::WriteSeries(folder->path(), QString::fromUtf8(stem), first, count, digits,
            QSize(13, 7), QLatin1String(extension));
    }
    void WriteBytes(const char *fileName, const QByteArray &bytes)
    {
        QFile file(folder->filePath(QString::fromUtf8(fileName)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), qint64(bytes.size()));
    }

    QTemporaryDir *folder = nullptr;
};

namespace {

constexpr char kNoMessage[] = "ERROR : Voir Log"; // what stands there when nothing else is to say

/// What an import answered.
struct Imported
{
    bool ok = false;
    const rostrum::Item *item = nullptr;

    const rostrum::Footage &Footage() const { return *item->AsFootage(); }
};

/// Imports with the blank image and an item that must be cleared first.
Imported Import(LibrarySheet &sheet, qint32 kind, const QByteArray &path, bool makeZero = true)
{
    std::strcpy(ImportMessage, "before");
    AEGP_ItemH item = sheet.CompItem();
    vnLog::Instance()->Clear();
    sheet.host.GetTrace().Start();
    Imported imported;
    imported.ok = GetVipLi()->ImportCells(kind, path, item, makeZero);
    imported.item = sheet.host.FindItem(item);
    return imported;
}

/// The path that the last import handed to the host, empty when it handed none.
QByteArray HandedOver(LibrarySheet &sheet)
{
    for (const rostrum::TraceEntry &entry : sheet.host.GetTrace().Entries()) {
        if (qstrcmp(entry.function, "AEGP_NewFootage") == 0)
            return entry.arguments.split('"').value(1);
    }
    return {};
}

QByteArray Log()
{
    return vnLog::Instance()->Text();
}

bool IsOneErrorLine(const QByteArray &log, char kind)
{
    return log.startsWith(QByteArray("\r\n-ERR ") + kind + "- line ") && log.count("-ERR") == 1
        && log.contains(", file(morvex/vnAE/");
}

bool IsBlank(const QString &path, const QSize &size)
{
    const QImage image(path);
    return image.size() == size && image.pixelColor(0, 0).alpha() == 0
        && image.pixelColor(size.width() - 1, size.height() - 1).alpha() == 0;
}

/// Adds footage to the project as a user would, its files on no disk.
rostrum::ItemId AddFootage(LibrarySheet &sheet, const QString &folder, const QStringList &files,
    rostrum::ItemId parent = 0)
{
    rostrum::Footage footage;
    footage.folder = folder;
    footage.files = files;
    footage.isSeries = files.size() > 1;
    footage.size = QSize(5, 4);
    rostrum::Project &project = sheet.EditProject();
    return project.AddFootage("by hand", footage, parent ? parent : project.RootFolder());
}

QStringList Names(std::initializer_list<const char *> names)
{
    QStringList list;
    for (const char *name : names)
        list << QString::fromUtf8(name);
    return list;
}

} // namespace

void TestVipLiImport::init()
{
    folder = new QTemporaryDir;
    QVERIFY(folder->isValid());
}

void TestVipLiImport::cleanup()
{
    delete folder;
}

// New footage.

void TestVipLiImport::aSeriesGetsItsBlankAndStartsAtItsFirstDrawing()
{
    LibrarySheet sheet;
    Write("walk", 1, 24);
    const Imported imported = Import(sheet, kSequence, PathOf("walk0007.png"));
    QVERIFY(imported.ok);
    QVERIFY(IsBlank(folder->filePath(QStringLiteral("walk0000.png")), QSize(13, 7)));
    QCOMPARE(HandedOver(sheet), Root() + "\\walk0001.png");
    QCOMPARE(imported.item->name, QByteArray("walk[0000-0024].png"));
    QVERIFY(imported.Footage().isSeries);
    QCOMPARE(imported.Footage().files, Files()); // all files of the folder
    QCOMPARE(imported.Footage().files.size(), 25);
    QCOMPARE(ImportMessage, kNoMessage);
    QCOMPARE(Log(), QByteArray("<END>"));
    QCOMPARE(sheet.host.Account(), QByteArrayList());
}

void TestVipLiImport::theBlanksNameFollowsTheFirstDrawing_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("blank");
    const auto row = [](const char *title, const char *first, const char *blank) {
        QTest::newRow(title) << QString::fromUtf8(first) << QString::fromUtf8(blank);
    };
    row("one digit", "walk1.png", "walk0.png");
    row("two digits", "walk01.png", "walk00.png");
    row("three digits", "walk001.png", "walk000.png");
    row("five digits: one again", "walk00001.png", "walk0.png");
    row("in upper case: the blank comes out in lower", "WALK0001.PNG", "walk0000.png");
    row("no root", "01.png", "00.png");
    row("a root with a point and a dash", "cut.7-01.png", "cut.7-00.png");
    row("tga", "walk01.tga", "walk00.tga");
}

void TestVipLiImport::theBlanksNameFollowsTheFirstDrawing()
{
    QFETCH(QString, first);
    QFETCH(QString, blank);
    LibrarySheet sheet;
    QImage drawing(13, 7, QImage::Format_ARGB32);
    drawing.fill(0xFF204060);
    QVERIFY(drawing.save(folder->filePath(first)));
    const Imported imported = Import(sheet, kSequence, PathOf(first.toUtf8().constData()));
    QVERIFY(imported.ok);
    QVERIFY(IsBlank(folder->filePath(blank), QSize(13, 7)));
    QCOMPARE(imported.Footage().files, QStringList({ blank, first })); // its real spelling
    QCOMPARE(ImportMessage, kNoMessage);

    // Read as number 0 of the same root the next time, in another project.
    sheet.EditProject().RemoveItem(imported.item->id);
    QVERIFY(Import(sheet, kSequence, PathOf(first.toUtf8().constData())).ok);
    QCOMPARE(HandedOver(sheet), Root() + '\\' + blank.toUtf8());
    QCOMPARE(Files().size(), 2);
}

void TestVipLiImport::aSeriesThatHasItsBlankIsLeftAsItIs()
{
    LibrarySheet sheet;
    Write("walk", 0, 3);
    const QImage before(folder->filePath(QStringLiteral("walk0000.png")));
    const Imported imported = Import(sheet, kSequence, PathOf("walk0002.png"));
    QVERIFY(imported.ok);
    QCOMPARE(HandedOver(sheet), Root() + "\\walk0000.png");
    QCOMPARE(QImage(folder->filePath(QStringLiteral("walk0000.png"))), before);
    QCOMPARE(imported.Footage().files.size(), 3);
    QCOMPARE(ImportMessage, kNoMessage);
}

void TestVipLiImport::withoutTheWishForABlankThePathIsImportedAsGiven()
{
    LibrarySheet sheet;
    Write("walk", 1, 3);
    const Imported imported = Import(sheet, kSequence, PathOf("walk0002.png"), /*makeZero=*/false);
    QVERIFY(imported.ok);
    QCOMPARE(HandedOver(sheet), PathOf("walk0002.png"));
    QVERIFY(imported.Footage().isSeries);
    QCOMPARE(imported.Footage().files, Names({ "walk0001.png", "walk0002.png", "walk0003.png" }));
    QCOMPARE(Files().size(), 3);
}

void TestVipLiImport::aSeriesIsImportedByAnyPathOfIt_data()
{
    QTest::addColumn<QByteArray>("behind"); // the folder
    QTest::newRow("its first file") << QByteArray("/walk0003.png");
    QTest::newRow("a file in the middle") << QByteArray("/walk0004.png");
    QTest::newRow("a file that there is not") << QByteArray("/walk0999.png");
    QTest::newRow("another padding") << QByteArray("/walk4.png");
    QTest::newRow("its root alone") << QByteArray("/walk.png");
    QTest::newRow("a backslash") << QByteArray("\\walk0004.png");
    QTest::newRow("another case") << QByteArray("/WALK0004.Png");
}

void TestVipLiImport::aSeriesIsImportedByAnyPathOfIt()
{
    QFETCH(QByteArray, behind);
    LibrarySheet sheet;
    Write("walk", 3, 3);
    const Imported imported = Import(sheet, kSequence, Root() + behind);
    QVERIFY(imported.ok);
    QCOMPARE(HandedOver(sheet), Root() + "\\walk0003.png");
    QCOMPARE(imported.Footage().files,
        Names({ "walk0000.png", "walk0003.png", "walk0004.png", "walk0005.png" }));
    QCOMPARE(imported.Footage().folder, folder->path());
}

void TestVipLiImport::namesBeyondAscii()
{
    LibrarySheet sheet;
    const QString inner = QStringLiteral("scène 7/шаг");
    QVERIFY(QDir(folder->path()).mkpath(inner));
    testing::WriteSeries(folder->filePath(inner), QStringLiteral("été_日"), 1, 2);
    const QByteArray path = PathOf("scène 7\\шаг\\été_日0002.png");
    const Imported imported = Import(sheet, kSequence, path);
    QVERIFY(imported.ok);
    QCOMPARE(imported.item->name, QByteArray("été_日[0000-0002].png"));
    QCOMPARE(imported.Footage().files.size(), 3);
    QCOMPARE(Import(sheet, kSequence, path).item, imported.item); // and is found again
    QCOMPARE(HandedOver(sheet), QByteArray());
}

void TestVipLiImport::aStillIsImportedAsGiven()
{
    LibrarySheet sheet;
    Write("frame", 12, 3, /*digits=*/2);
    const Imported imported = Import(sheet, kFixe, PathOf("frame13.png"));
    QVERIFY(imported.ok);
    QCOMPARE(HandedOver(sheet), PathOf("frame13.png"));
    QVERIFY(!imported.Footage().isSeries);
    QCOMPARE(imported.Footage().files, Names({ "frame13.png" }));
    QCOMPARE(Files().size(), 3); // no blank
    QCOMPARE(ImportMessage, kNoMessage);

    WriteBytes("notes.txt", "no drawing"); // what can be imported is the host's to decide
    QVERIFY(!Import(sheet, kFixe, PathOf("notes.txt")).ok);
    QCOMPARE(HandedOver(sheet), PathOf("notes.txt"));
    QVERIFY2(IsOneErrorLine(Log(), 'I'), Log().constData());
}

void TestVipLiImport::newFootageLiesInTheRootFolder()
{
    LibrarySheet sheet;
    Write("walk", 1, 2);
    const rostrum::ItemId bin = sheet.EditProject().AddFolder("bin");
    AddFootage(sheet, folder->path(), Names({ "run0001.png", "run0002.png" }), bin);
    const Imported imported = Import(sheet, kSequence, PathOf("walk0001.png"));
    QVERIFY(imported.ok);
    QCOMPARE(imported.item->parent, sheet.host.GetProject().RootFolder());
}

// Footage of the project used again.

void TestVipLiImport::aSeriesOfTheProjectIsReused_data()
{
    QTest::addColumn<QByteArray>("behind"); // the folder
    QTest::newRow("by the same path") << QByteArray("/walk0001.png");
    QTest::newRow("by any file of it") << QByteArray("/walk0002.png");
    QTest::newRow("by a file that there is not") << QByteArray("/walk77.png");
    QTest::newRow("by its root alone") << QByteArray("/walk.png");
    QTest::newRow("by a backslash") << QByteArray("\\walk0002.png");
    QTest::newRow("in another case") << QByteArray("/Walk0002.PNG");
}

void TestVipLiImport::aSeriesOfTheProjectIsReused()
{
    QFETCH(QByteArray, behind);
    LibrarySheet sheet;
    Write("walk", 1, 3);
    const Imported first = Import(sheet, kSequence, PathOf("walk0001.png"));
    QVERIFY(first.ok);
    QVERIFY(QFile::remove(folder->filePath(QStringLiteral("walk0000.png"))));
    const rostrum::Project before = sheet.host.GetProject();

    const Imported again = Import(sheet, kSequence, Root() + behind);
    QVERIFY(again.ok);
    QCOMPARE(again.item, first.item);
    QVERIFY(sheet.host.GetProject() == before); // nothing is imported,
    QCOMPARE(HandedOver(sheet), QByteArray());
    QCOMPARE(Files().size(), 3); // and no image is written
    QCOMPARE(ImportMessage, kNoMessage);
    QCOMPARE(Log(), QByteArray("<END>"));
}

void TestVipLiImport::anotherSeriesIsNoMatch_data()
{
    QTest::addColumn<QString>("inProject"); // behind the test's folder
    QTest::newRow("of the same root in another folder") << QStringLiteral("/takes/walk");
    QTest::newRow("of the same root in the folder above") << QStringLiteral("/../walk");
    QTest::newRow("of a longer root") << QStringLiteral("/walk_b");
    QTest::newRow("of a shorter root") << QStringLiteral("/wal");
    QTest::newRow("of another extension") << QStringLiteral("/walk");
}

void TestVipLiImport::anotherSeriesIsNoMatch()
{
    QFETCH(QString, inProject);
    LibrarySheet sheet;
    Write("walk", 1, 3);
    const QString stem = inProject.section(QLatin1Char('/'), -1);
    const QString extension
        = inProject == QStringLiteral("/walk") ? QStringLiteral("tga") : QStringLiteral("png");
    const QString other = QDir::cleanPath(folder->path() + inProject.chopped(stem.size()));
    const rostrum::ItemId there = AddFootage(sheet, other,
        { stem + QStringLiteral("0001.") + extension, stem + QStringLiteral("0002.") + extension });

    const Imported imported = Import(sheet, kSequence, PathOf("walk0001.png"));
    QVERIFY(imported.ok);
    QVERIFY(imported.item->id != there);
    QCOMPARE(imported.Footage().files.size(), 4);
}

void TestVipLiImport::aStillIsReusedByItsStem_data()
{
    QTest::addColumn<QByteArray>("asked");
    QTest::addColumn<bool>("reused");
    QTest::newRow("the same file") << QByteArray("frame12.png") << true;
    QTest::newRow("in another case") << QByteArray("Frame12.PNG") << true;
    QTest::newRow("another number is another still") << QByteArray("frame13.png") << false;
    QTest::newRow("another padding, too") << QByteArray("frame012.png") << false;
    QTest::newRow("another extension") << QByteArray("frame12.tga") << false;
}

void TestVipLiImport::aStillIsReusedByItsStem()
{
    QFETCH(QByteArray, asked);
    QFETCH(bool, reused);
    LibrarySheet sheet;
    const rostrum::ItemId there = AddFootage(sheet, folder->path(), Names({ "frame12.png" }));
    Write("frame", 12, 2, /*digits=*/2);
    Write("frame", 12, 1, /*digits=*/3);
    Write("frame", 12, 1, /*digits=*/2, "tga");

    const Imported imported = Import(sheet, kFixe, PathOf(asked.constData()));
    QVERIFY(imported.ok);
    QCOMPARE(imported.item->id == there, reused);
    if (!reused)
        QCOMPARE(imported.item->name, asked);
}

void TestVipLiImport::aSeriesWithThatFirstFileIsNoStill()
{
    LibrarySheet sheet;
    Write("frame", 12, 3, /*digits=*/2);
    const rostrum::ItemId series
        = AddFootage(sheet, folder->path(), Names({ "frame12.png", "frame13.png", "frame14.png" }));
    const Imported still = Import(sheet, kFixe, PathOf("frame12.png"));
    QVERIFY(still.ok);
    QVERIFY(still.item->id != series);
    QCOMPARE(still.Footage().files, Names({ "frame12.png" }));
    QCOMPARE(Import(sheet, kFixe, PathOf("frame12.png")).item, still.item);
    QCOMPARE(Import(sheet, kSequence, PathOf("frame12.png")).item->id, series);
}

void TestVipLiImport::aStillOfTheRootIsTakenForTheSeries()
{
    // For a series the number of files does not count: a series may have one drawing only.
    LibrarySheet sheet;
    Write("frame", 12, 3, /*digits=*/2);
    const rostrum::ItemId still = AddFootage(sheet, folder->path(), Names({ "frame13.png" }));
    QCOMPARE(Import(sheet, kSequence, PathOf("frame12.png")).item->id, still);
    QCOMPARE(Files().size(), 3);
}

void TestVipLiImport::theFirstMatchInTheWalkWins()
{
    LibrarySheet sheet;
    const rostrum::ItemId bin = sheet.EditProject().AddFolder("bin");
    const QStringList files = Names({ "walk0001.png", "walk0002.png" });
    const rostrum::ItemId outside = AddFootage(sheet, folder->path(), files);
    const rostrum::ItemId inside = AddFootage(sheet, folder->path(), files, bin);
    QCOMPARE(Import(sheet, kSequence, PathOf("walk0002.png")).item->id, inside);
    sheet.EditProject().RemoveItem(bin);
    QCOMPARE(Import(sheet, kSequence, PathOf("walk0002.png")).item->id, outside);
}

void TestVipLiImport::itemsWithoutFilesAreWalkedPast()
{
    LibrarySheet sheet;
    sheet.AddSolid("black");
    sheet.AddCamera("camera");
    sheet.EditProject().AddFolder("walk0001.png");
    sheet.EditProject().AddComposition("walk0001.png", {});
    const rostrum::ItemId there = AddFootage(sheet, folder->path(), Names({ "walk0001.png" }));
    QCOMPARE(Import(sheet, kFixe, PathOf("walk0001.png")).item->id, there);
}

void TestVipLiImport::aPathOfTheProjectThatIsTooLongIsPassedOver()
{
    LibrarySheet sheet;
    const QString tooLong = QLatin1Char('/') + QString(400, QLatin1Char('d'));
    AddFootage(sheet, tooLong, Names({ "walk0001.png", "walk0002.png" }));
    const rostrum::ItemId there = AddFootage(sheet, folder->path(), Names({ "walk0001.png" }));
    QCOMPARE(Import(sheet, kFixe, PathOf("walk0001.png")).item->id, there);
    QCOMPARE(Log(), QByteArray("<END>"));
}

void TestVipLiImport::thePathsThatFit_data()
{
    QTest::addColumn<QString>("folderName");
    QTest::addColumn<bool>("found");
    // "/", the folder, "/frame12.png": 1, the folder's bytes, 12
    QTest::newRow("259 bytes and a terminator fit") << QString(246, QLatin1Char('d')) << true;
    QTest::newRow("260 bytes do not") << QString(247, QLatin1Char('d')) << false;
    QTest::newRow("259 bytes of 136 characters") << QString(123, QChar(0xE9)) << true;
    QTest::newRow("261 bytes of 137 characters") << QString(124, QChar(0xE9)) << false;
}

void TestVipLiImport::thePathsThatFit()
{
    QFETCH(QString, folderName);
    QFETCH(bool, found);
    LibrarySheet sheet;
    const QString inProject = QLatin1Char('/') + folderName;
    const rostrum::ItemId there = AddFootage(sheet, inProject, Names({ "frame12.png" }));
    const Imported imported = Import(sheet, kFixe, inProject.toUtf8() + "/frame12.png");
    QCOMPARE(imported.ok, found); // it is on no disk, so that it cannot be imported anew
    QCOMPARE(imported.item ? imported.item->id : 0, found ? there : 0);
}

// Movies.

void TestVipLiImport::aMovieIsOneFileWithoutABlank_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("kind");
    for (const char *name : { "clip01.mov", "clip01.MOV", "clip01.swf", "Clip01.Swf" }) {
        QTest::addRow("%s as a series", name) << QByteArray(name) << kSequence;
        QTest::addRow("%s as a still", name) << QByteArray(name) << kFixe;
    }
}

void TestVipLiImport::aMovieIsOneFileWithoutABlank()
{
    // Movies that the host can read: it goes by what is in the file.
    QFETCH(QByteArray, name);
    QFETCH(int, kind);
    LibrarySheet sheet;
    const QByteArray drawing = drawings::Png(13, 7, 8, 2, {}, {}, "\x80\x40\x20", 39);
    WriteBytes(name.constData(), drawing);
    WriteBytes("clip02.mov", drawing);
    WriteBytes("clip02.swf", drawing);
    const Imported imported = Import(sheet, kind, PathOf(name.constData()));
    QVERIFY(imported.ok);
    QCOMPARE(HandedOver(sheet), PathOf(name.constData()));
    QVERIFY(!imported.Footage().isSeries);
    QCOMPARE(imported.Footage().files, QStringList(QString::fromUtf8(name)));
    QCOMPARE(Files().size(), 3); // no blank
    QCOMPARE(ImportMessage, kNoMessage);
}

void TestVipLiImport::aMovieThatTheHostCannotReadIsItsError_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("mov") << QByteArray("clip01.mov");
    QTest::newRow("swf") << QByteArray("clip01.swf");
    QTest::newRow("a movie that there is not") << QByteArray("none01.mov");
}

void TestVipLiImport::aMovieThatTheHostCannotReadIsItsError()
{
    QFETCH(QByteArray, name);
    LibrarySheet sheet;
    WriteBytes("clip01.mov", "moov");
    WriteBytes("clip01.swf", "FWS");
    const rostrum::Project before = sheet.host.GetProject();
    const Imported imported = Import(sheet, kSequence, PathOf(name.constData()));
    QVERIFY(!imported.ok);
    QVERIFY(!imported.item);
    QVERIFY2(IsOneErrorLine(Log(), 'I'), Log().constData());
    QCOMPARE(ImportMessage, kNoMessage);
    QCOMPARE(sheet.host.Messages().size(), 1);
    QVERIFY(sheet.host.GetProject() == before);
}

void TestVipLiImport::aMovieOfTheProjectIsReusedAsItsKind()
{
    // What the project has is looked at first: as a series a movie goes by its root, too.
    LibrarySheet sheet;
    const rostrum::ItemId there = AddFootage(sheet, folder->path(), Names({ "clip01.mov" }));
    QCOMPARE(Import(sheet, kSequence, PathOf("clip02.MOV")).item->id, there);
    QCOMPARE(Import(sheet, kFixe, PathOf("clip01.mov")).item->id, there);
    QVERIFY(!Import(sheet, kFixe, PathOf("clip02.mov")).ok);
}

// What goes wrong on disk, and its messages.

void TestVipLiImport::withoutASeriesTheHostAnswersForAFolderWithAnEmptyName()
{
    LibrarySheet sheet;
    Write("walk", 1, 3); // a series that must not be guessed
    const Imported imported = Import(sheet, kSequence, PathOf("ghost0001.png"));
    QVERIFY(!imported.ok);
    QVERIFY(!imported.item);
    QCOMPARE(HandedOver(sheet), Root() + '\\');
    QCOMPARE(
        QByteArray(ImportMessage), "[]Aucune images du type " + Root() + "/ghost[0-9][tga/png]");
    QVERIFY2(IsOneErrorLine(Log(), 'I'), Log().constData());
    QCOMPARE(Files().size(), 3);
}

void TestVipLiImport::aFirstDrawingThatDoesNotLoadShiftsTheSeries()
{
    LibrarySheet sheet;
    const QByteArray drawing = drawings::Png(13, 7, 8, 2, {}, {}, "\x80\x40\x20", 39);
    WriteBytes("walk0001.png", drawing.left(60)); // its size can be read, its pixels cannot
    WriteBytes("walk0002.png", drawing);
    const Imported imported = Import(sheet, kSequence, PathOf("walk0002.png"));
    QCOMPARE(QByteArray(ImportMessage), "Echec ouverture fichier [" + Root() + "/walk0001.png]");
    QVERIFY(imported.ok); // and the import goes on, with the drawings one place too low
    QCOMPARE(imported.Footage().files, Names({ "walk0001.png", "walk0002.png" }));
    QCOMPARE(Files().size(), 2);
    QCOMPARE(Log(), QByteArray("<END>"));
}

void TestVipLiImport::a9999AloneIsAFolderThatDoesNotLoad()
{
    LibrarySheet sheet;
    Write("walk", 9999, 1);
    const Imported imported = Import(sheet, kSequence, PathOf("walk9999.png"));
    QVERIFY(!imported.ok);
    QCOMPARE(QByteArray(ImportMessage), "Echec ouverture fichier [" + Root() + "/]");
    QCOMPARE(HandedOver(sheet), Root() + '\\');
}

void TestVipLiImport::aBlankThatCannotBeWrittenShiftsTheSeries_data()
{
    QTest::addColumn<QByteArray>("extension");
    QTest::newRow("psd is read, never written") << QByteArray("psd");
    QTest::newRow("a folder in the blank's place") << QByteArray("png");
}

void TestVipLiImport::aBlankThatCannotBeWrittenShiftsTheSeries()
{
    QFETCH(QByteArray, extension);
    LibrarySheet sheet;
    const bool isPsd = extension == "psd";
    const QByteArray drawing
        = isPsd ? drawings::Psd(13, 7) : drawings::Png(13, 7, 8, 2, {}, {}, "\x80\x40\x20", 39);
    WriteBytes(("walk0001." + extension).constData(), drawing);
    WriteBytes(("walk0002." + extension).constData(), drawing);
    if (!isPsd)
        QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("walk0000.png")));
    const Imported imported = Import(sheet, kSequence, PathOf(("walk." + extension).constData()));
    QCOMPARE(QByteArray(ImportMessage), "Echec ecriture image Zero [" + Root() + "/walk*]");
    QVERIFY(imported.ok);
    QCOMPARE(imported.Footage().files, Files());
    QCOMPARE(imported.Footage().files.size(), 2);
}

void TestVipLiImport::aNameThatDoesNotFitIsRefused_data()
{
    QTest::addColumn<QByteArray>("path");
    const QByteArray of256(256, 'w');
    QTest::newRow("folder") << '/' + of256.left(255) + "/walk1.png";
    QTest::newRow("root") << "/cut/" + of256 + "1.png";
    QTest::newRow("digits") << "/cut/walk" + QByteArray(256, '1') + ".png";
    QTest::newRow("extension") << "/cut/walk1." + of256;
}

void TestVipLiImport::aNameThatDoesNotFitIsRefused()
{
    QFETCH(QByteArray, path);
    LibrarySheet sheet;
    const Imported imported = Import(sheet, kSequence, path);
    QVERIFY(!imported.ok);
    QVERIFY(!imported.item);
    QCOMPARE(HandedOver(sheet), QByteArray());
    QVERIFY2(IsOneErrorLine(Log(), 'B'), Log().constData());
    QCOMPARE(ImportMessage, kNoMessage);

    QVERIFY(!Import(sheet, kFixe, path).ok); // a still is not taken apart: the host answers for it
    QCOMPARE(HandedOver(sheet), path);
    QVERIFY2(IsOneErrorLine(Log(), 'I'), Log().constData());
}

void TestVipLiImport::aPathWithoutFolderAsksForASavedProject()
{
    // A new column of a project without a file has no folder: its name hangs on a separator alone.
    LibrarySheet sheet;
    QVERIFY(!Import(sheet, kSequence, "walk-that-is-nowhere1.png").ok);
    QCOMPARE(HandedOver(sheet), QByteArray("\\"));
    QCOMPARE(QByteArray(ImportMessage),
        QByteArray("[]Aucune images du type /walk-that-is-nowhere[0-9][tga/png]"));
    QVERIFY(sheet.host.Messages().last().startsWith(QStringLiteral("Save the project first")));
}

void TestVipLiImport::aKindThatThereIsNotIsAStillThatNothingMatches()
{
    LibrarySheet sheet;
    Write("walk", 1, 2);
    const Imported first = Import(sheet, /*kind=*/3, PathOf("walk0001.png"));
    QVERIFY(first.ok);
    QVERIFY(!first.Footage().isSeries);
    const Imported second = Import(sheet, /*kind=*/3, PathOf("walk0001.png"));
    QVERIFY(second.ok);
    QVERIFY(second.item->id != first.item->id);
    QCOMPARE(Files().size(), 2);
}

void TestVipLiImport::footageThatTheProjectRefusesIsGivenBack()
{
    LibrarySheet sheet;
    Write("walk", 1, 2);
    sheet.host.FailNext("AEGP_AddFootageToProject");
    const rostrum::Project before = sheet.host.GetProject();
    const Imported imported = Import(sheet, kSequence, PathOf("walk0001.png"));
    QVERIFY(!imported.ok);
    QVERIFY(!imported.item);
    QCOMPARE(sheet.host.Account(), QByteArrayList());
    QCOMPARE(sheet.host.UnexpectedCalls(), QByteArrayList());
    QVERIFY(sheet.host.GetProject() == before);
}

void TestVipLiImport::aFailureBehindTheAddingLeavesTheItem()
{
    LibrarySheet sheet;
    Write("walk", 1, 2);
    int calls = 0;
    QVERIFY(Import(sheet, kSequence, PathOf("walk0001.png")).ok);
    for (const QByteArray &function : sheet.host.GetTrace().Functions())
        calls += !rostrum::FaultPlan::IsGiveBack(function.constData());
    sheet.host.GetDocument().Undo();

    sheet.host.Faults().SpareGiveBacks(true);
    sheet.host.FailNth(calls); // the last one asks for the number of files
    const Imported imported = Import(sheet, kSequence, PathOf("walk0001.png"));
    sheet.host.Faults().Clear();
    QVERIFY(!imported.ok);
    QVERIFY(imported.item);
    QVERIFY2(IsOneErrorLine(Log(), 'I'), Log().constData());
    QCOMPARE(Import(sheet, kSequence, PathOf("walk0001.png")).item, imported.item); // the next try
}

VN_HOST_TEST_MAIN(TestVipLiImport)

#include "tst_vipli_import.moc"
