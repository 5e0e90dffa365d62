#include "SuiteChecks.h"

#include <QDir>
#include <QTemporaryDir>

using namespace rostrum;
using namespace testing;

namespace {

const AEGP_FileSequenceImportOptions kSeries = { 1, 0, AEGP_ANY_FRAME, AEGP_ANY_FRAME };
const AEGP_FileSequenceImportOptions kStill = { 0, 0, AEGP_ANY_FRAME, AEGP_ANY_FRAME };

A_Err Import(const QString &path, const AEGP_FileSequenceImportOptions *options,
    AEGP_FootageH *footage, AEGP_InterpretationStyle style = 0)
{
    const Suite<AEGP_FootageSuite5> suite;
    return suite->AEGP_NewFootage(
        kPluginId, path.utf16(), nullptr, options, style, nullptr, footage);
}

} // namespace

class TestFootageSuite : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aSeriesIsImportedWholeAndAddedOnce();
    void aStillIsOneFile();
    void withoutOptionsAFileIsAStill();
    void bothSeparatorsReachTheFile();
    void footageNotAddedIsOpen();
    void addingItTwiceIsAMisuse();
    void footageNotAddedCanBeGivenBackOnce();
    void footageOfTheProjectIsNotGivenBack();
    void footageIsAddedIntoAFolderOnly();
    void addingIsOneEntryAndImportingNone();
    void pathsOfEachFileAreTexts();
    void aSolidHasNoFileAndAnEmptyPath();
    void whatCannotBeImportedIsToldToTheUser_data();
    void whatCannotBeImportedIsToldToTheUser();
    void aNewColumnInAnUnsavedProjectAsksToSaveIt();
    void optionsThatAreNotOfferedAreRefused_data();
    void optionsThatAreNotOfferedAreRefused();
    void onlyFootageHasFootage();
    void nullArgumentsAreMisuses();
    void badHandlesAreErrors();

private:
    QTemporaryDir *folder = nullptr;
};

void TestFootageSuite::init()
{
    folder = new QTemporaryDir;
}

void TestFootageSuite::cleanup()
{
    delete folder;
}

void TestFootageSuite::aSeriesIsImportedWholeAndAddedOnce()
{
    SheetFixture sheet;
    const Suite<AEGP_FootageSuite5> suite;
    const Suite<AEGP_ItemSuite7> items;
    const QString first = WriteSeries(folder->path(), QStringLiteral("run"), 3, 5);
    AEGP_FootageH footage = nullptr;
    QCOMPARE(Import(first, &kSeries, &footage), A_Err_NONE);
    A_long files = 0;
    A_long filesPerFrame = 0;
    QCOMPARE(suite->AEGP_GetFootageNumFiles(footage, &files, &filesPerFrame), A_Err_NONE);
    QCOMPARE(files, 5);
    QCOMPARE(filesPerFrame, 1);

    AEGP_ItemH item = nullptr;
    const AEGP_ItemH root = sheet.host.ItemHandle(sheet.host.GetProject().RootFolder());
    QCOMPARE(suite->AEGP_AddFootageToProject(footage, root, &item), A_Err_NONE);
    QCOMPARE(suite->AEGP_GetFootageNumFiles(footage, &files, &filesPerFrame), A_Err_NONE);
    QCOMPARE(files, 5); // the handle stays good
    A_Time duration = { 0, 0 };
    QCOMPARE(items->AEGP_GetItemDuration(item, &duration), A_Err_NONE);
    QCOMPARE(duration.value, 5);
    QCOMPARE(duration.scale, 25u);
    A_char name[32];
    QCOMPARE(items->AEGP_GetItemName(item, name), A_Err_NONE);
    QCOMPARE(QByteArray(name), QByteArray("run[0003-0007].png"));
    AEGP_FootageH ofItem = nullptr;
    QCOMPARE(suite->AEGP_GetMainFootageFromItem(item, &ofItem), A_Err_NONE);
    QCOMPARE(suite->AEGP_GetFootageNumFiles(ofItem, &files, &filesPerFrame), A_Err_NONE);
    QCOMPARE(files, 5);
}

void TestFootageSuite::aStillIsOneFile()
{
    SheetFixture sheet;
    const Suite<AEGP_FootageSuite5> suite;
    const QString first = WriteSeries(folder->path(), QStringLiteral("run"), 3, 5);
    AEGP_FootageH footage = nullptr;
    AEGP_ItemH item = nullptr;
    QCOMPARE(Import(first, &kStill, &footage), A_Err_NONE);
    QCOMPARE(suite->AEGP_AddFootageToProject(
                 footage, sheet.host.ItemHandle(sheet.host.GetProject().RootFolder()), &item),
        A_Err_NONE);
    const Suite<AEGP_ItemSuite7> items;
    A_Time duration = { 5, 5 };
    A_char name[32];
    QCOMPARE(items->AEGP_GetItemDuration(item, &duration), A_Err_NONE);
    QCOMPARE(duration.value, 0);
    QCOMPARE(items->AEGP_GetItemName(item, name), A_Err_NONE);
    QCOMPARE(QByteArray(name), QByteArray("run0003.png"));
}

void TestFootageSuite::withoutOptionsAFileIsAStill()
{
    SheetFixture sheet;
    const Suite<AEGP_FootageSuite5> suite;
    AEGP_FootageH footage = nullptr;
    QCOMPARE(Import(WriteSeries(folder->path(), QStringLiteral("run"), 3, 5), nullptr, &footage),
        A_Err_NONE);
    A_long files = 0;
    A_long filesPerFrame = 0;
    QCOMPARE(suite->AEGP_GetFootageNumFiles(footage, &files, &filesPerFrame), A_Err_NONE);
    QCOMPARE(files, 1);
    ExpectAtEnd({ "left open: footage \"run0003.png\", not added to the project" });
}

void TestFootageSuite::bothSeparatorsReachTheFile()
{
    SheetFixture sheet;
    QString path = WriteSeries(folder->path(), QStringLiteral("run"), 3, 2);
    path.replace(path.lastIndexOf(QLatin1Char('/')), 1, QLatin1Char('\\'));
    AEGP_FootageH footage = nullptr;
    QCOMPARE(Import(path, &kSeries, &footage), A_Err_NONE);
    ExpectAtEnd({ "left open: footage \"run[0003-0004].png\", not added to the project" });
}

void TestFootageSuite::footageNotAddedIsOpen()
{
    SheetFixture sheet;
    AEGP_FootageH footage = nullptr;
    QCOMPARE(Import(WriteSeries(folder->path(), QStringLiteral("run"), 3, 2), &kSeries, &footage),
        A_Err_NONE);
    QCOMPARE(sheet.host.OpenHandles(), 1);
    const Suite<AEGP_FootageSuite5> suite;
    AEGP_ItemH item = nullptr;
    QCOMPARE(suite->AEGP_AddFootageToProject(
                 footage, sheet.host.ItemHandle(sheet.host.GetProject().RootFolder()), &item),
        A_Err_NONE);
    QCOMPARE(sheet.host.OpenHandles(), 1); // the suite
}

void TestFootageSuite::addingItTwiceIsAMisuse()
{
    SheetFixture sheet;
    const Suite<AEGP_FootageSuite5> suite;
    const AEGP_ItemH root = sheet.host.ItemHandle(sheet.host.GetProject().RootFolder());
    AEGP_FootageH footage = nullptr;
    AEGP_ItemH item = nullptr;
    QCOMPARE(Import(WriteSeries(folder->path(), QStringLiteral("run"), 3, 2), &kSeries, &footage),
        A_Err_NONE);
    QCOMPARE(suite->AEGP_AddFootageToProject(footage, root, &item), A_Err_NONE);
    const int items = sheet.host.GetProject().ItemCount();
    QCOMPARE(suite->AEGP_AddFootageToProject(footage, root, &item), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_GetMainFootageFromItem(item, &footage), A_Err_NONE);
    QCOMPARE(suite->AEGP_AddFootageToProject(footage, root, &item), A_Err_PARAMETER);
    QCOMPARE(sheet.host.TakeComplaints().size(), 2);
    QCOMPARE(sheet.host.GetProject().ItemCount(), items);
}

void TestFootageSuite::footageNotAddedCanBeGivenBackOnce()
{
    SheetFixture sheet;
    const Suite<AEGP_FootageSuite5> suite;
    AEGP_FootageH footage = nullptr;
    QCOMPARE(Import(WriteSeries(folder->path(), QStringLiteral("run"), 3, 2), &kSeries, &footage),
        A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeFootage(footage), A_Err_NONE);
    QCOMPARE(sheet.host.OpenHandles(), 1); // the suite
    QCOMPARE(suite->AEGP_DisposeFootage(footage), kErrBadHandle);
    QCOMPARE(sheet.host.TakeComplaints(),
        QByteArrayList{ "AEGP_DisposeFootage: footage 0 was given back already" });
    RefusesBadHandles(sheet.host, sheet.host.ItemFootageHandle(/*item=*/999),
        [&](AEGP_FootageH h) { return suite->AEGP_DisposeFootage(h); });
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
}

void TestFootageSuite::footageOfTheProjectIsNotGivenBack()
{
    SheetFixture sheet;
    const Suite<AEGP_FootageSuite5> suite;
    AEGP_FootageH added = nullptr;
    AEGP_ItemH item = nullptr;
    QCOMPARE(Import(WriteSeries(folder->path(), QStringLiteral("run"), 3, 2), &kSeries, &added),
        A_Err_NONE);
    QCOMPARE(suite->AEGP_AddFootageToProject(
                 added, sheet.host.ItemHandle(sheet.host.GetProject().RootFolder()), &item),
        A_Err_NONE);
    AEGP_FootageH ofItem = nullptr;
    QCOMPARE(suite->AEGP_GetMainFootageFromItem(item, &ofItem), A_Err_NONE);
    const int items = sheet.host.GetProject().ItemCount();
    for (const AEGP_FootageH footage : { added, ofItem }) {
        QCOMPARE(suite->AEGP_DisposeFootage(footage), A_Err_PARAMETER);
        QCOMPARE(sheet.host.TakeComplaints(),
            QByteArrayList{ "AEGP_DisposeFootage: the footage belongs to the project" });
    }
    QCOMPARE(sheet.host.GetProject().ItemCount(), items);
    A_long files = 0;
    A_long filesPerFrame = 0;
    QCOMPARE(suite->AEGP_GetFootageNumFiles(added, &files, &filesPerFrame), A_Err_NONE);
    QCOMPARE(files, 2);
}

void TestFootageSuite::footageIsAddedIntoAFolderOnly()
{
    SheetFixture sheet;
    const Suite<AEGP_FootageSuite5> suite;
    AEGP_FootageH footage = nullptr;
    AEGP_ItemH item = nullptr;
    QCOMPARE(Import(WriteSeries(folder->path(), QStringLiteral("run"), 3, 2), &kSeries, &footage),
        A_Err_NONE);
    QCOMPARE(suite->AEGP_AddFootageToProject(footage, sheet.CompItem(), &item), A_Err_PARAMETER);
    const ItemId inner = sheet.host.GetDocument().Edit("folder").AddFolder("inner");
    QCOMPARE(
        suite->AEGP_AddFootageToProject(footage, sheet.host.ItemHandle(inner), &item), A_Err_NONE);
    QCOMPARE(sheet.host.GetProject().Find(inner)->AsFolder()->children.size(), 1);
}

void TestFootageSuite::addingIsOneEntryAndImportingNone()
{
    SheetFixture sheet;
    const Suite<AEGP_FootageSuite5> suite;
    AEGP_FootageH footage = nullptr;
    AEGP_ItemH item = nullptr;
    QCOMPARE(Import(WriteSeries(folder->path(), QStringLiteral("run"), 3, 2), &kSeries, &footage),
        A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
    QCOMPARE(suite->AEGP_AddFootageToProject(
                 footage, sheet.host.ItemHandle(sheet.host.GetProject().RootFolder()), &item),
        A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "Import Footage" }));
}

void TestFootageSuite::pathsOfEachFileAreTexts()
{
    SheetFixture sheet({}, 100, /*images=*/3);
    const Suite<AEGP_FootageSuite5> suite;
    AEGP_FootageH footage = nullptr;
    QCOMPARE(suite->AEGP_GetMainFootageFromItem(sheet.host.ItemHandle(sheet.footage), &footage),
        A_Err_NONE);
    AEGP_MemHandle memory = nullptr;
    QCOMPARE(suite->AEGP_GetFootagePath(footage, 0, 0, &memory), A_Err_NONE);
    QCOMPARE(
        TakeText(memory), QDir::toNativeSeparators(QStringLiteral("/scenes/walk/walk0000.png")));
    QCOMPARE(suite->AEGP_GetFootagePath(footage, 2, 0, &memory), A_Err_NONE);
    QCOMPARE(
        TakeText(memory), QDir::toNativeSeparators(QStringLiteral("/scenes/walk/walk0002.png")));
    memory = nullptr;
    QCOMPARE(suite->AEGP_GetFootagePath(footage, 3, 0, &memory), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_GetFootagePath(footage, -1, 0, &memory), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_GetFootagePath(footage, 0, 1, &memory), A_Err_PARAMETER);
    QVERIFY(!memory);
    QCOMPARE(sheet.host.OpenHandles(), 1); // the suite
}

void TestFootageSuite::aSolidHasNoFileAndAnEmptyPath()
{
    SheetFixture sheet;
    const Suite<AEGP_FootageSuite5> suite;
    const ItemId solid
        = sheet.host.GetDocument().Edit("solid").AddSolid("black", { QSize(4, 3), {} });
    AEGP_FootageH footage = nullptr;
    QCOMPARE(
        suite->AEGP_GetMainFootageFromItem(sheet.host.ItemHandle(solid), &footage), A_Err_NONE);
    A_long files = -1;
    A_long filesPerFrame = -1;
    QCOMPARE(suite->AEGP_GetFootageNumFiles(footage, &files, &filesPerFrame), A_Err_NONE);
    QCOMPARE(files, 0);
    AEGP_MemHandle memory = nullptr;
    QCOMPARE(suite->AEGP_GetFootagePath(footage, 0, 0, &memory), A_Err_NONE);
    QCOMPARE(TakeText(memory), QString());
}

void TestFootageSuite::whatCannotBeImportedIsToldToTheUser_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("series");
    QTest::newRow("no such file") << QStringLiteral("/none.png") << false;
    QTest::newRow("no such series") << QStringLiteral("/none0001.png") << true;
    QTest::newRow("a folder with no file name") << QStringLiteral("/") << true;
    QTest::newRow("no image") << QStringLiteral("/notes.txt") << false;
    QTest::newRow("a name longer than any")
        << QStringLiteral("/") + QString(5000, QLatin1Char('n')) << false;
}

void TestFootageSuite::whatCannotBeImportedIsToldToTheUser()
{
    QFETCH(QString, file);
    QFETCH(bool, series);
    WriteSeries(folder->path(), QStringLiteral("run"), 3, 2); // a series that must not be guessed
    QFile notes(folder->filePath(QStringLiteral("notes.txt")));
    QVERIFY(notes.open(QIODevice::WriteOnly));
    SheetFixture sheet;
    QStringList told;
    sheet.host.messageArea = [&](const QString &message) { told << message; };
    AEGP_FootageH footage = nullptr;
    QCOMPARE(Import(folder->path() + file, series ? &kSeries : &kStill, &footage), A_Err_GENERIC);
    QVERIFY(!footage);
    QCOMPARE(told.size(), 1);
    QVERIFY(!told.first().startsWith(QStringLiteral("Save the project first")));
    QCOMPARE(sheet.host.Messages(), told);
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
    QCOMPARE(sheet.host.OpenHandles(), 0);
}

void TestFootageSuite::aNewColumnInAnUnsavedProjectAsksToSaveIt()
{
    SheetFixture sheet;
    AEGP_FootageH footage = nullptr;
    QCOMPARE(
        Import(QStringLiteral("\\walk-that-is-nowhere.png"), &kStill, &footage), A_Err_GENERIC);
    QVERIFY(sheet.host.Messages().last().startsWith(QStringLiteral("Save the project first")));
    sheet.host.GetDocument().path = QStringLiteral("/scenes/seven.rostrum");
    QCOMPARE(
        Import(QStringLiteral("\\walk-that-is-nowhere.png"), &kStill, &footage), A_Err_GENERIC);
    QVERIFY(!sheet.host.Messages().last().startsWith(QStringLiteral("Save the project first")));
}

void TestFootageSuite::optionsThatAreNotOfferedAreRefused_data()
{
    QTest::addColumn<int>("alphabetical");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("style");
    QTest::newRow("alphabetical order") << 1 << -1 << -1 << 0;
    QTest::newRow("a first frame") << 0 << 4 << -1 << 0;
    QTest::newRow("a last frame") << 0 << -1 << 4 << 0;
    QTest::newRow("an unknown style") << 0 << -1 << -1 << 3;
}

void TestFootageSuite::optionsThatAreNotOfferedAreRefused()
{
    QFETCH(int, alphabetical);
    QFETCH(int, start);
    QFETCH(int, end);
    QFETCH(int, style);
    SheetFixture sheet;
    const AEGP_FileSequenceImportOptions options
        = { 1, static_cast<A_Boolean>(alphabetical), start, end };
    AEGP_FootageH footage = nullptr;
    QCOMPARE(Import(WriteSeries(folder->path(), QStringLiteral("run"), 3, 2), &options, &footage,
                 static_cast<AEGP_InterpretationStyle>(style)),
        A_Err_PARAMETER);
    QVERIFY(!footage);
}

void TestFootageSuite::onlyFootageHasFootage()
{
    SheetFixture sheet;
    const Suite<AEGP_FootageSuite5> suite;
    AEGP_FootageH footage = nullptr;
    QCOMPARE(suite->AEGP_GetMainFootageFromItem(sheet.CompItem(), &footage), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_GetMainFootageFromItem(
                 sheet.host.ItemHandle(sheet.host.GetProject().RootFolder()), &footage),
        A_Err_PARAMETER);
    QVERIFY(!footage);
}

void TestFootageSuite::nullArgumentsAreMisuses()
{
    SheetFixture sheet;
    const Suite<AEGP_FootageSuite5> suite;
    const AEGP_ItemH item = sheet.host.ItemHandle(sheet.footage);
    const AEGP_ItemH root = sheet.host.ItemHandle(sheet.host.GetProject().RootFolder());
    const QString path = QStringLiteral("/a.png");
    AEGP_FootageH footage = nullptr;
    QCOMPARE(suite->AEGP_GetMainFootageFromItem(item, &footage), A_Err_NONE);
    AEGP_FootageH out = nullptr;
    A_long count = 0;
    RefusesNull(sheet.host,
        { { "AEGP_GetMainFootageFromItem",
              [&] { return suite->AEGP_GetMainFootageFromItem(item, nullptr); } },
            { "AEGP_GetFootageNumFiles",
                [&] { return suite->AEGP_GetFootageNumFiles(footage, &count, nullptr); } },
            { "AEGP_GetFootageNumFiles",
                [&] { return suite->AEGP_GetFootageNumFiles(footage, nullptr, &count); } },
            { "AEGP_GetFootagePath",
                [&] { return suite->AEGP_GetFootagePath(footage, 0, 0, nullptr); } },
            { "AEGP_NewFootage",
                [&] {
                    return suite->AEGP_NewFootage(
                        kPluginId, nullptr, nullptr, &kStill, 0, nullptr, &out);
                } },
            { "AEGP_NewFootage",
                [&] {
                    return suite->AEGP_NewFootage(
                        kPluginId, path.utf16(), nullptr, &kStill, 0, nullptr, nullptr);
                } },
            { "AEGP_AddFootageToProject",
                [&] { return suite->AEGP_AddFootageToProject(footage, root, nullptr); } } });
}

void TestFootageSuite::badHandlesAreErrors()
{
    SheetFixture sheet;
    const Suite<AEGP_FootageSuite5> suite;
    const AEGP_ItemH item = sheet.host.ItemHandle(sheet.footage);
    const AEGP_ItemH root = sheet.host.ItemHandle(sheet.host.GetProject().RootFolder());
    AEGP_FootageH footage = nullptr;
    QCOMPARE(suite->AEGP_GetMainFootageFromItem(item, &footage), A_Err_NONE);
    AEGP_FootageH mine = nullptr;
    QCOMPARE(Import(WriteSeries(folder->path(), QStringLiteral("run"), 3, 2), &kSeries, &mine),
        A_Err_NONE);
    sheet.host.GetDocument().Edit("delete").RemoveItem(sheet.footage);
    A_long count = 0;
    AEGP_FootageH out = nullptr;
    AEGP_ItemH outItem = nullptr;
    AEGP_MemHandle memory = nullptr;
    RefusesBadHandles(sheet.host, item,
        [&](AEGP_ItemH h) { return suite->AEGP_GetMainFootageFromItem(h, &out); });
    RefusesBadHandles(sheet.host, footage,
        [&](AEGP_FootageH h) { return suite->AEGP_GetFootageNumFiles(h, &count, &count); });
    RefusesBadHandles(sheet.host, footage,
        [&](AEGP_FootageH h) { return suite->AEGP_GetFootagePath(h, 0, 0, &memory); });
    RefusesBadHandles(sheet.host, footage,
        [&](AEGP_FootageH h) { return suite->AEGP_AddFootageToProject(h, root, &outItem); });
    RefusesBadHandles(sheet.host, item,
        [&](AEGP_ItemH h) { return suite->AEGP_AddFootageToProject(mine, h, &outItem); });
    QCOMPARE(suite->AEGP_AddFootageToProject(mine, root, &outItem), A_Err_NONE);
}

VN_HOST_TEST_MAIN(TestFootageSuite)
#include "tst_footagesuite.moc"
