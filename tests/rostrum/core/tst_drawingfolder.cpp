#include "CoreTest.h"

#include "core/DrawingFolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using rostrum::DrawingGroup;
using rostrum::FindDrawings;
using rostrum::FoundDrawings;
using rostrum::NumberRanges;
using rostrum::SeriesNotes;

using Numbers = QVector<qint32>;

/// What a person means by a folder, or by files of drawings.
class TestDrawingFolder : public QObject
{
    Q_OBJECT

private slots:
    void filesOfOneSeriesMakeOneGroup();
    void aLoneNumberedFileIsAStill();
    void aNumberBeyond31BitsMakesStills();
    void namesDifferInCaseOnlyAndAreOneSeries();
    void otherFormatsAreSeriesOfTheirOwn();
    void filesThatAreNoImagesAreLeftOut();
    void aFolderIsLookedThroughWithItsFolders();
    void foldersAreFollowedDownToALimit();
    void aRingOfLinksEnds();
    void bothSeparatorsAndNonAsciiNamesAreFound();
    void aThousandFilesOfASeriesAreOneGroup();
    void aPathThatIsNotThereIsHandedOn();
    void rangesAreWrittenShort_data();
    void rangesAreWrittenShort();
    void notesTellGaps();
    void aGapOfMillionsIsCutShort();
    void notesTellNumbersThatTwoFilesHave();
    void notesTellTheSameDrawingsInOtherFormats();
    void aStillHasNoNotes();
};

namespace {

/// Empty files: names alone count here.
struct Folder
{
    QTemporaryDir folder;

    QString Touch(const QString &name) const
    {
        const QString path = folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }
    QStringList Touch(const QStringList &names) const
    {
        QStringList paths;
        for (const QString &name : names)
            paths << Touch(name);
        return paths;
    }
    /// "cut/LO: a01.png series" for each group.
    QStringList Found(const QStringList &paths) const
    {
        QStringList lines;
        for (const DrawingGroup &group : FindDrawings(paths).groups) {
            const QString name = group.path.section(QLatin1Char('/'), -1);
            const QString where = group.folders.join(QLatin1Char('/'));
            lines << (where.isEmpty() ? name : where + QStringLiteral(": ") + name)
                    + (group.isSeries ? QStringLiteral(" series") : QString());
        }
        return lines;
    }
};

QStringList Words(const char *words)
{
    return QString::fromUtf8(words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QStringList Lines(const char *lines)
{
    return QString::fromUtf8(lines).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

void TestDrawingFolder::filesOfOneSeriesMakeOneGroup()
{
    const Folder folder;
    const QStringList all
        = folder.Touch(Words("walk.0001.png walk.0002.png A001.png A002.png decor.png"));

    QCOMPARE(folder.Found({ all[1] }), Lines("walk.0002.png series"));
    QCOMPARE(folder.Found({ all[1], all[0], all[4] }), Lines("walk.0002.png series\ndecor.png"));
    QCOMPARE(folder.Found(all), Lines("walk.0001.png series\nA001.png series\ndecor.png"));
    QVERIFY(rostrum::IsOneOfSeries(all[3]));
    QVERIFY(!rostrum::IsOneOfSeries(all[4]));
}

void TestDrawingFolder::aLoneNumberedFileIsAStill()
{
    const Folder folder;
    const QString path = folder.Touch(QStringLiteral("decor2.png"));
    folder.Touch(QStringLiteral("decor.png"));

    QCOMPARE(folder.Found({ path, path }), Lines("decor2.png"));
}

void TestDrawingFolder::aNumberBeyond31BitsMakesStills()
{
    const Folder folder;
    const QStringList all = folder.Touch(Words("a20240101123055.png a20240101123056.png"));

    QCOMPARE(folder.Found(all), Lines("a20240101123055.png\na20240101123056.png"));
}

void TestDrawingFolder::namesDifferInCaseOnlyAndAreOneSeries()
{
    const Folder folder;

    QCOMPARE(folder.Found(folder.Touch(Words("Walk1.PNG walk2.png"))), Lines("Walk1.PNG series"));
}

void TestDrawingFolder::otherFormatsAreSeriesOfTheirOwn()
{
    const Folder folder;

    QCOMPARE(folder.Found(folder.Touch(Words("a1.png a2.png a1.tga a2.tga"))),
        Lines("a1.png series\na1.tga series"));
}

void TestDrawingFolder::filesThatAreNoImagesAreLeftOut()
{
    const Folder folder;
    const QStringList all = folder.Touch(Words("a1.png a2.png notes.txt sheet noend."));

    const FoundDrawings found = FindDrawings(all);

    QCOMPARE(found.groups.size(), 1);
    QCOMPARE(found.leftOut, all.mid(2));
}

void TestDrawingFolder::aFolderIsLookedThroughWithItsFolders()
{
    const Folder folder;
    folder.Touch(Words("cut/b1.png cut/b2.png cut/A.png cut/LO/char1.png cut/LO/char2.png "
                       "cut/readme.txt cut/.hidden1.png"));

    const FoundDrawings found = FindDrawings({ folder.folder.filePath(QStringLiteral("cut")) });

    QCOMPARE(folder.Found({ folder.folder.filePath(QStringLiteral("cut/")) }),
        Lines("cut: A.png\ncut: b1.png series\ncut/LO: char1.png series"));
    QCOMPARE(found.leftOut.size(), 1);
}

void TestDrawingFolder::foldersAreFollowedDownToALimit()
{
    const Folder folder;
    QString deep = QStringLiteral("f1");
    for (int depth = 2; depth <= rostrum::kFolderDepth + 1; ++depth) {
        folder.Touch(deep + QStringLiteral("/a.png"));
        deep += QStringLiteral("/f%1").arg(depth);
    }
    folder.Touch(deep + QStringLiteral("/a.png"));

    const FoundDrawings found = FindDrawings({ folder.folder.filePath(QStringLiteral("f1")) });

    QCOMPARE(found.groups.size(), rostrum::kFolderDepth);
    QCOMPARE(found.groups.last().folders.size(), rostrum::kFolderDepth);
}

void TestDrawingFolder::aRingOfLinksEnds()
{
    const Folder folder;
    folder.Touch(QStringLiteral("cut/a.png"));
    const QString cut = folder.folder.filePath(QStringLiteral("cut"));
    QVERIFY(QFile::link(cut, cut + QStringLiteral("/again")));

    QCOMPARE(folder.Found({ cut }), Lines("cut: a.png"));
}

void TestDrawingFolder::bothSeparatorsAndNonAsciiNamesAreFound()
{
    const Folder folder;
    folder.Touch(Words("été/marché1.png été/marché2.png"));
    QString path = folder.folder.filePath(QStringLiteral("été/marché2.png"));
    path.replace(QLatin1Char('/'), QLatin1Char('\\'));

    QCOMPARE(folder.Found({ path }), Lines("marché2.png series"));
}

void TestDrawingFolder::aThousandFilesOfASeriesAreOneGroup()
{
    const Folder folder;
    QStringList all;
    for (int i = 1; i <= 1000; ++i)
        all << folder.Touch(QStringLiteral("walk%1.png").arg(i));

    QCOMPARE(folder.Found(all), Lines("walk1.png series"));
}

void TestDrawingFolder::aPathThatIsNotThereIsHandedOn()
{
    const Folder folder;

    // The import itself says what is wrong with it.
    QCOMPARE(
        folder.Found({ folder.folder.filePath(QStringLiteral("gone.png")) }), Lines("gone.png"));
    QVERIFY(FindDrawings({}).groups.isEmpty());
}

void TestDrawingFolder::rangesAreWrittenShort_data()
{
    QTest::addColumn<Numbers>("numbers");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << Numbers() << QString();
    QTest::newRow("one") << Numbers{ 7 } << QStringLiteral("7");
    QTest::newRow("two") << Numbers{ 7, 8 } << QStringLiteral("7-8");
    QTest::newRow("ranges and single ones")
        << Numbers{ 0, 3, 5, 6, 7, 12 } << QStringLiteral("0, 3, 5-7, 12");
}

void TestDrawingFolder::rangesAreWrittenShort()
{
    QFETCH(Numbers, numbers);
    QFETCH(QString, text);

    QCOMPARE(NumberRanges(numbers), text);
}

void TestDrawingFolder::notesTellGaps()
{
    rostrum::Footage footage = Series(6);
    QCOMPARE(SeriesNotes(footage), QStringList());
    footage.numbers = { 1, 2, 5, 6, 9, 11 };

    QCOMPARE(SeriesNotes(footage),
        QStringList(
            QStringLiteral("missing: 3-4, 7-8, 10; the numbers in a sheet close up over them")));
}

void TestDrawingFolder::aGapOfMillionsIsCutShort()
{
    rostrum::Footage footage = Series(2);
    footage.numbers = { 1, std::numeric_limits<qint32>::max() };

    QCOMPARE(SeriesNotes(footage).value(0),
        QStringLiteral("missing: 2-1001 and more; the numbers in a sheet close up over them"));
}

void TestDrawingFolder::notesTellNumbersThatTwoFilesHave()
{
    rostrum::Footage footage = Series(5);
    footage.numbers = { 1, 1, 2, 3, 3 };

    QCOMPARE(SeriesNotes(footage), QStringList(QStringLiteral("two files have the number: 1, 3")));
}

void TestDrawingFolder::notesTellTheSameDrawingsInOtherFormats()
{
    const Folder folder;
    folder.Touch(Words("a1.png a2.png A1.TGA a2.jpg a3.bmp a1.txt b1.tga"));
    rostrum::Footage footage = Series(2);
    footage.folder = folder.folder.path();
    footage.files = Words("a1.png a2.png");
    footage.numbers = { 1, 2 };

    QCOMPARE(SeriesNotes(footage),
        QStringList(QStringLiteral("drawings of the same numbers are there as jpg, tga, too; they "
                                   "are a series of their own")));
}

void TestDrawingFolder::aStillHasNoNotes()
{
    QCOMPARE(SeriesNotes(Still()), QStringList());
}

VN_TEST_MAIN(TestDrawingFolder)
#include "tst_drawingfolder.moc"
