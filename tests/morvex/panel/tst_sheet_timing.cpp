// The timing of a whole cut, typed into new columns as it stands on paper.

#include "TimingSheet.h"
#include "TraceLinesOff.h"

#include <QTemporaryDir>

class TestSheetTiming : public QObject
{
    Q_OBJECT

private slots:
    void aPaperSheetTypedIntoNewColumnsLeavesOneKeyARun();
    void typedFromTheBottomUpwardsItStandsTheSame();
    void aWholeTypedCutIsUndoneStepByStep();
};

namespace {

constexpr int kFrames = 120;

// Two drawings in turn, on threes, then a run of its own; a second layer that comes in late.
const Timing kWalker{ { 0, 1 }, { 9, 2 }, { 18, 1 }, { 27, 2 }, { 36, 1 }, { 45, 3 }, { 48, 4 },
    { 51, 5 }, { 54, 6 }, { 55, 7 }, { 57, 8 }, { 90, 11 } };
const Timing kCat{ { 60, 1 }, { 63, 2 }, { 66, 1 }, { 69, 2 }, { 72, 3 }, { 100, 0 } };

/// The runs of a typed column: it starts with the blank drawing.
Keys RunsOf(const Timing &timing)
{
    return timing[0].frame == 0 ? timing : Keys{ { 0, 0 } } + timing;
}

/// Drawings numbered from 1 with three digits and nothing between name and number.
class Cut
{
public:
    Cut()
    {
        walker = testing::WriteSeries(folder.path(), QStringLiteral("A"), 1, 11, /*digits=*/3);
        cat = testing::WriteSeries(folder.path(), QStringLiteral("B"), 1, 4, /*digits=*/3);
    }

    QTemporaryDir folder;
    QString walker;
    QString cat;
};

QVector<int> CellsOf(const Timing &timing)
{
    QVector<int> cells(kFrames, 0);
    for (const testing::KeyAt &change : timing)
        std::fill(cells.begin() + change.frame, cells.end(), change.image);
    return cells;
}

QVector<int> CellsOf(TimingSheet &sheet, int col)
{
    QVector<int> cells;
    for (int row = 0; row < kFrames; ++row)
        cells << sheet.grid.GetCellValue(col, row);
    return cells;
}

void AddColumns(TimingSheet &sheet, const Cut &cut)
{
    QCOMPARE(sheet.AddColumn(cut.walker), QString());
    QCOMPARE(sheet.AddColumn(cut.cat), QString());
    sheet.Show();
    QCOMPARE(sheet.grid.GetNbc(), 2);
    QCOMPARE(sheet.grid.GetNbl(), kFrames);
}

void ComparesWithPaper(TimingSheet &sheet)
{
    QCOMPARE(sheet.RemapKeys(sheet.LayerOf(0).id), RunsOf(kWalker));
    QCOMPARE(sheet.RemapKeys(sheet.LayerOf(1).id), RunsOf(kCat));
    for (int reload = 0; reload < 2; ++reload) { // what the sheet knows, and what the host says
        QCOMPARE(CellsOf(sheet, 0), CellsOf(kWalker));
        QCOMPARE(CellsOf(sheet, 1), CellsOf(kCat));
        QVERIFY(sheet.grid.UpdateFromCompo());
    }
}

} // namespace

void TestSheetTiming::aPaperSheetTypedIntoNewColumnsLeavesOneKeyARun()
{
    const Cut cut;
    const TraceLinesOff quiet;
    TimingSheet sheet(kFrames);
    AddColumns(sheet, cut);
    sheet.Type(0, kWalker);
    sheet.Type(1, kCat);
    ComparesWithPaper(sheet);
}

void TestSheetTiming::typedFromTheBottomUpwardsItStandsTheSame()
{
    // Repeat goes on to the next other drawing, so that each run ends where the one below begins.
    // The last change of the cat is to the blank drawing, which ends no run; it comes last.
    const Cut cut;
    const TraceLinesOff quiet;
    TimingSheet sheet(kFrames);
    AddColumns(sheet, cut);
    Timing walker = kWalker, cat = kCat;
    std::reverse(walker.begin(), walker.end());
    std::reverse(cat.begin(), cat.end());
    cat.append(cat.takeFirst());
    sheet.Type(0, walker);
    sheet.Type(1, cat);
    ComparesWithPaper(sheet);
}

void TestSheetTiming::aWholeTypedCutIsUndoneStepByStep()
{
    const Cut cut;
    const TraceLinesOff quiet;
    TimingSheet sheet(kFrames);
    AddColumns(sheet, cut);
    sheet.host.GetDocument().CloseLooseEnds();
    const int before = sheet.UndoNames().size();
    sheet.Type(0, kWalker);

    const QVector<QByteArray> names = sheet.UndoNames().mid(before);
    QCOMPARE(names.count("morvex:EditCell"), kWalker.size());
    QCOMPARE(names.count("morvex:Repeat"), kWalker.size() - 1); // one drawing stands for one frame
    QCOMPARE(names.size(), 2 * kWalker.size() - 1);
    for (int i = 0; i < names.size(); ++i)
        QVERIFY(sheet.host.GetDocument().Undo());
    QCOMPARE(sheet.RemapKeys(sheet.LayerOf(0).id), Keys({ { 0, 0 } }));
}

VN_HOST_TEST_MAIN(TestSheetTiming)
#include "tst_sheet_timing.moc"
