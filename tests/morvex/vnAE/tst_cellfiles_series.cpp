// Series on real files, in a folder that lasts for one test function.
#include "testing/Platform.h"
#include "testing/TestMain.h"
#include "vnAE/CellFiles.h"
#include "vnAE/FolderList.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

class TestCellFilesSeries : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { folder.reset(); }

    void theLowestNumberIsFound_data();
    void theLowestNumberIsFound();
    void theFolderMayBeWrittenWithEitherSeparator();
    void ofTwoSpellingsTheFirstListedStays();
    void aFolderIsNoFileOfTheSeries();
    void aLinkCountsAsWhatItLeadsTo();
    void aFolderThatCannotBeListedHasNoSeries_data();
    void aFolderThatCannotBeListedHasNoSeries();
    void aFolderBeyondAsciiIsListed();
    void aFolderOfThousandsOfFilesIsSearched();
    void aFolderDeeperThanANameBufferIsListed();
    void aListGivesEachNameOnce();

private:
    QString PathOf(const QString &name) const { return folder->filePath(name); }
    QByteArray Folder() const { return folder->path().toUtf8(); }
    void Make(const QString &name) const;
    /// @return the answer and the out name, as "12 walk12.png"
    static QByteArray First(
        const QByteArray &where, const QByteArray &root, const QByteArray &extension);

    std::unique_ptr<QTemporaryDir> folder;
};

void TestCellFilesSeries::init()
{
    folder = std::make_unique<QTemporaryDir>();
    QVERIFY(folder->isValid());
}

void TestCellFilesSeries::Make(const QString &name) const
{
    QFile file(PathOf(name));
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(name));
}

QByteArray TestCellFilesSeries::First(
    const QByteArray &where, const QByteArray &root, const QByteArray &extension)
{
    CellName fileName = "before";
    const qint32 number
        = GetFirstCellFile(where.constData(), root.constData(), extension.constData(), fileName);
    return QByteArray::number(number) + ' ' + QByteArray(fileName);
}

void TestCellFilesSeries::theLowestNumberIsFound_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QByteArray>("root");
    QTest::addColumn<QByteArray>("extension");
    QTest::addColumn<QByteArray>("first");
    const auto row = [](const char *name, const QString &files, const char *root,
                         const char *extension, const char *first) {
        QTest::newRow(name) << files.split(QLatin1Char(' '), Qt::SkipEmptyParts) << QByteArray(root)
                            << QByteArray(extension) << QByteArray(first);
    };
    const auto text = [](const char *files) { return QString::fromUtf8(files); };
    row("an empty folder", text(""), "walk", "png", "-1 ");
    row("in any order", text("walk0012.png walk0003.png walk0007.png"), "walk", "png",
        "3 walk0003.png");
    row("number 0", text("walk0001.png walk0000.png"), "walk", "png", "0 walk0000.png");
    row("five digits of number 0 beside", text("walk00001.png walk0.png"), "walk", "png",
        "0 walk0.png");
    row("number 0 of five digits", text("walk00000.png walk1.png"), "walk", "png",
        "0 walk00000.png");
    row("upper case on disk", text("WALK0002.PNG WALK0001.PNG"), "walk", "png", "1 walk0001.png");
    row("upper case asked for", text("walk0001.png"), "WALK", "PNG", "1 walk0001.png");
    row("another root is another series", text("walk_b0001.png walk_0005.png"), "walk_", "png",
        "5 walk_0005.png");
    row("a shorter root too", text("walk0001.png"), "wal", "png", "-1 ");
    row("a root with digits inside", text("s01_walk3.png s01.png"), "s01_walk", "png",
        "3 s01_walk3.png");
    row("digits behind the point are not the number", text("walk.0004.png"), "walk.", "png",
        "4 walk.0004.png");
    row("a root without that point", text("walk.0004.png"), "walk", "png", "-1 ");
    row("a root that ends in a dash", text("walk-3.png walk4.png"), "walk-", "png", "3 walk-3.png");
    row("an empty root", text("0042.png walk0001.png"), "", "png", "42 0042.png");
    row("a hidden series", text(".walk2.png"), ".walk", "png", "2 .walk2.png");
    row("another extension", text("walk0001.tga walk0002.png"), "walk", "png", "2 walk0002.png");
    row("an extension that starts alike", text("walk0001.pngx walk0002.pn"), "walk", "png", "-1 ");
    row("tga", text("walk0001.tga"), "walk", "tga", "1 walk0001.tga");
    row("psd", text("walk0001.psd"), "walk", "psd", "1 walk0001.psd");
    row("not an extension of drawings", text("walk0001.jpg"), "walk", "jpg", "-1 ");
    row("no extension", text("walk0001 walk0001."), "walk", "", "-1 ");
    row("a still of the root's name", text("walk.png"), "walk", "png", "-1 ");
    row("9999 alone is found but is no first", text("walk9999.png"), "walk", "png", "9999 ");
    row("above 9999 as well", text("walk10000.png walk99999999999.png"), "walk", "png", "9999 ");
    row("9998 is the last that can be", text("walk9999.png walk9998.png"), "walk", "png",
        "9998 walk9998.png");
    row("beyond ASCII", text("marché03.png marché02.png"), "marché", "png", "2 marché02.png");
    row("the composed letter is not the decomposed one",
        text("marche\xCC\x81"
             "02.png marché05.png"),
        "marché", "png", "5 marché05.png");
    row("nor the other way round",
        text("marche\xCC\x81"
             "02.png marché05.png"),
        "marche\xCC\x81", "png",
        "2 marche\xCC\x81"
        "02.png");
    row("only ASCII letters lose their case", text("ÉTÉ07.PNG"), "Été", "png", "-1 ");
    row("and these keep theirs", text("ÉTÉ07.PNG"), "ÉtÉ", "png", "7 ÉtÉ07.png");
    row("three bytes a letter", text("歩く12.png 歩く3.png"), "歩く", "png", "3 歩く3.png");
#ifndef Q_OS_WIN // where no file can have that name
    row("characters of a pattern mean themselves", text("wa*k1.png walk2.png"), "wa*k", "png",
        "1 wa*k1.png");
#endif
    row("brackets too", text("walk[0-9]1.png walk52.png"), "walk[0-9]", "png", "1 walk[0-9]1.png");
}

void TestCellFilesSeries::theLowestNumberIsFound()
{
    QFETCH(QStringList, files);
    QFETCH(QByteArray, root);
    QFETCH(QByteArray, extension);
    for (const QString &file : files)
        Make(file);
    QTEST(First(Folder(), root, extension), "first");
}

void TestCellFilesSeries::theFolderMayBeWrittenWithEitherSeparator()
{
    QVERIFY(QDir(folder->path()).mkpath(QStringLiteral("cut/a")));
    Make(QStringLiteral("cut/a/walk3.png"));
    QCOMPARE(First(Folder() + "\\cut\\a", "walk", "png"), QByteArray("3 walk3.png"));
    QCOMPARE(First(Folder() + "/cut\\a/", "walk", "png"), QByteArray("3 walk3.png"));
    QCOMPARE(First(Folder() + "/cut", "walk", "png"), QByteArray("-1 ")); // not in folders below
}

void TestCellFilesSeries::ofTwoSpellingsTheFirstListedStays()
{
    for (const char *name : { "walk01.png", "walk1.png", "walk0001.png", "walk001.png" })
        Make(QString::fromLatin1(name));
    QByteArray firstListed;
    FolderList list(Folder().constData());
    for (const char *name = list.Next(); name && firstListed.isEmpty(); name = list.Next()) {
        if (QByteArray(name).endsWith("1.png"))
            firstListed = name;
    }
    QVERIFY(!firstListed.isEmpty());
    QCOMPARE(First(Folder(), "walk", "png"), "1 " + firstListed);
}

void TestCellFilesSeries::aFolderIsNoFileOfTheSeries()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("walk0000.png")));
    QCOMPARE(First(Folder(), "walk", "png"), QByteArray("-1 "));
    Make(QStringLiteral("walk0004.png"));
    QCOMPARE(First(Folder(), "walk", "png"), QByteArray("4 walk0004.png"));
}

void TestCellFilesSeries::aLinkCountsAsWhatItLeadsTo()
{
    const QString toFolder = testing::LinkName(QStringLiteral("walk1.png"));
    const QString toDrawing = testing::LinkName(QStringLiteral("walk2.png"));
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("below")));
    Make(QStringLiteral("drawing"));
    QVERIFY(QFile::link(PathOf(QStringLiteral("below")), PathOf(toFolder)));
    QVERIFY(QFile::link(PathOf(QStringLiteral("drawing")), PathOf(toDrawing)));
    const bool hasDrawingsName = toDrawing.endsWith(QLatin1String(".png"));
    QCOMPARE(First(Folder(), "walk", "png"), QByteArray(hasDrawingsName ? "2 walk2.png" : "-1 "));
}

void TestCellFilesSeries::aFolderThatCannotBeListedHasNoSeries_data()
{
    QTest::addColumn<QString>("below");
    QTest::newRow("there is none") << QStringLiteral("/nowhere");
    QTest::newRow("it is a file") << QStringLiteral("/walk1.png");
    QTest::newRow("it lies below a file") << QStringLiteral("/walk1.png/cut");
}

void TestCellFilesSeries::aFolderThatCannotBeListedHasNoSeries()
{
    QFETCH(QString, below);
    Make(QStringLiteral("walk1.png"));
    QCOMPARE(First((folder->path() + below).toUtf8(), "walk", "png"), QByteArray("-1 "));
}

void TestCellFilesSeries::aFolderBeyondAsciiIsListed()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("scène 3 歩")));
    Make(QStringLiteral("scène 3 歩/walk7.png"));
    QCOMPARE(First(Folder() + "/scène 3 歩", "walk", "png"), QByteArray("7 walk7.png"));
}

void TestCellFilesSeries::aFolderOfThousandsOfFilesIsSearched()
{
    // Two series, so that half of the names are of another one.
    for (int number = 19; number < testing::ManyFiles() / 2 + 19; ++number) {
        Make(QStringLiteral("walk%1.png").arg(number, 5, 10, QLatin1Char('0')));
        Make(QStringLiteral("run%1.png").arg(number + 2, 5, 10, QLatin1Char('0')));
    }
    QCOMPARE(First(Folder(), "walk", "png"), QByteArray("19 walk00019.png"));
    QCOMPARE(First(Folder(), "run", "png"), QByteArray("21 run00021.png"));
    QCOMPARE(First(Folder(), "jump", "png"), QByteArray("-1 "));
}

void TestCellFilesSeries::aFolderDeeperThanANameBufferIsListed()
{
    const QString below = (QString(80, QLatin1Char('d')) + QLatin1Char('/')).repeated(4);
    QVERIFY(QDir(folder->path()).mkpath(below));
    Make(below + QStringLiteral("walk7.png"));
    QCOMPARE(First((PathOf(below)).toUtf8(), "walk", "png"), QByteArray("7 walk7.png"));
}

void TestCellFilesSeries::aListGivesEachNameOnce()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("cut")));
    for (const char *name : { "walk1.png", ".hidden", "ÉTÉ", "no drawing.txt" })
        Make(QString::fromUtf8(name));
    QStringList names;
    QStringList folders;
    FolderList list(Folder().constData());
    while (const char *name = list.Next()) {
        const QString text = QString::fromUtf8(name);
        if (text == QLatin1String(".") || text == QLatin1String(".."))
            continue;
        names << text;
        if (list.IsFolder())
            folders << text;
    }
    names.sort();
    QCOMPARE(names,
        QStringList(
            { QStringLiteral(".hidden"), QStringLiteral("cut"), QStringLiteral("no drawing.txt"),
                QStringLiteral("walk1.png"), QStringLiteral("ÉTÉ") }));
    QCOMPARE(folders, QStringList(QStringLiteral("cut")));
    QVERIFY(!list.Next()); // past the end it stays at the end
}

VN_TEST_MAIN(TestCellFilesSeries)

#include "tst_cellfiles_series.moc"
