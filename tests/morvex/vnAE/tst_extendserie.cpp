#include "testing/TestMain.h"
#include "vnAE/SerieRule.h"

#include <climits>
#include <cstdlib>

namespace {

using Cells = QVector<int>;
constexpr int kUntouched = -777; // what stands around the cells

/// A number that no test's series reaches: the end of a reference series that has run out.
constexpr int kEnd = INT_MIN;

/// The rule of one cell in words: each place shows one more than the place before.
Cells RisingSeries(int first, int length)
{
    Cells series{ first };
    while (series.size() < length)
        series << series.last() + 1;
    return series;
}

/// Two series, dealt out in turn.
Cells DealtSeries(const Cells &given, int length)
{
    int even = given[0], odd = given[1];
    const int evenStep = given[2] - given[0];
    const int oddStep = given.size() > 3 ? given[3] - given[1] : evenStep;
    Cells series;
    while (series.size() < length) {
        series << even << odd;
        even += evenStep;
        odd += oddStep;
    }
    return series;
}

/// The first run as it stands, then runs of the same length, one step apart.
Cells SeriesOfRuns(const Cells &given, int length)
{
    Cells run;
    for (const int cell : given) {
        if (cell != given[0])
            break;
        run << cell;
    }
    const bool allEqual = run.size() == given.size();
    const int next = allEqual ? given[0] : given[run.size()];
    const int step = allEqual ? 0 : next - given[0];
    Cells series = run;
    for (int value = next; series.size() < length; value += step)
        series += Cells(run.size(), value);
    return series;
}

/// What the cells become, from the rules as a user would tell them, one place at a time.
Cells Reference(const Cells &given, int total)
{
    Cells cells = given;
    while (cells.size() < total)
        cells << 0;
    for (int place = given.size(); place < cells.size(); ++place)
        cells[place] = 0;
    if (given.isEmpty())
        return cells;

    Cells series;
    int from = 0;
    bool hasFloor = true;
    const int length = qMax(total, 1) + 10;
    if (given.size() == 1) {
        series = RisingSeries(given[0], length);
        hasFloor = false;
    } else if (given.size() > 2 && std::abs(given[0] - given[1]) > std::abs(given[0] - given[2])) {
        series = DealtSeries(given, length);
    } else {
        series = SeriesOfRuns(given, length);
        while (from < given.size() && given[from] == given[0])
            ++from;
    }
    for (int place = from; place < total; ++place) {
        if (hasFloor && series[place] < 1)
            break;
        cells[place] = series[place];
    }
    return cells;
}

/// Runs the rule in a buffer that shows every write beside the cells. @return the cells; kEnd alone
/// when something beside them was written or the answer was not true
Cells Extended(const Cells &given, int total)
{
    const int size = qMax(given.size(), total);
    Cells buffer(size + 4, kUntouched);
    std::copy(given.begin(), given.end(), buffer.begin() + 2);
    const bool answer = ExtendSerie(buffer.data() + 2, given.size(), total);
    const bool outsideKept = buffer[0] == kUntouched && buffer[1] == kUntouched
        && buffer[size + 2] == kUntouched && buffer[size + 3] == kUntouched;
    return answer && outsideKept ? buffer.mid(2, size) : Cells{ kEnd };
}

} // namespace

class TestExtendSerie : public QObject
{
    Q_OBJECT

private slots:
    void aSelectionIsContinued_data();
    void aSelectionIsContinued();
    void everyShortSelectionFollowsTheRule();
    void selectionsBelowZeroFollowTheRule();
    void nothingGivenLeavesBlankCells();
    void nothingWantedWritesNothing();
    void fewerWantedThanGivenKeepsTheRest();
    void numbersAtTheLimitEndTheSeries_data();
    void numbersAtTheLimitEndTheSeries();
};

void TestExtendSerie::aSelectionIsContinued_data()
{
    QTest::addColumn<Cells>("given");
    QTest::addColumn<Cells>("expected");
    const auto row = [](const char *name, const Cells &given, const Cells &expected) {
        QTest::newRow(name) << given << expected;
    };
    row("one cell rises", { 5 }, { 5, 6, 7, 8 });
    row("one blank cell rises", { 0 }, { 0, 1, 2 });
    row("one cell below 0 rises through it", { -2 }, { -2, -1, 0, 1, 2 });
    row("two cells give the step", { 1, 3 }, { 1, 3, 5, 7, 9 });
    row("runs of two", { 1, 1, 2 }, { 1, 1, 2, 2, 3, 3, 4 });
    row("runs of two, to a full run", { 1, 1, 2 }, { 1, 1, 2, 2, 3, 3, 4, 4 });
    row("equal cells stay", { 4, 4 }, { 4, 4, 4, 4, 4 });
    row("equal blank cells stay blank", { 0, 0 }, { 0, 0, 0, 0 });
    row("down to 1, then blank", { 3, 2 }, { 3, 2, 1, 0, 0 });
    row("down to 1 from three cells", { 3, 2, 1 }, { 3, 2, 1, 0, 0, 0 });
    row("down past 1", { 5, 3 }, { 5, 3, 1, 0, 0 });
    row("a run that comes down", { 3, 3, 1 }, { 3, 3, 1, 1, 0, 0 });
    row("two series, one given twice", { 1, 9, 2 }, { 1, 9, 2, 10, 3, 11 });
    row("two series, the table's", { 1, 10, 2 }, { 1, 10, 2, 11, 3, 12 });
    row("two series, the second stands still", { 1, 10, 2, 10 }, { 1, 10, 2, 10, 3, 10 });
    row("two series of equal steps", { 1, 5, 2, 6 }, { 1, 5, 2, 6, 3, 7, 4, 8 });
    row("two series, one comes down to 1", { 9, 2, 8, 1 }, { 9, 2, 8, 1, 7, 0, 0, 0 });
    row("two series rewrite the fifth cell", { 1, 5, 2, 6, 9 }, { 1, 5, 2, 6, 3, 7 });
    row("two series whose first is blank keep what is given", { 0, 5, 1 }, { 0, 5, 1, 0, 0 });
    row("as far is not farther: runs", { 1, 3, 3 }, { 1, 3, 5, 7 });
    row("the first different value counts", { 1, 2, 5 }, { 1, 2, 3, 4 });
    row("later cells are rewritten", { 1, 2, 5, 9 }, { 1, 2, 3, 4, 5 });
    row("a series that goes blank at once keeps what is given", { 1, 0, 4 }, { 1, 0, 4, 0, 0 });
}

void TestExtendSerie::aSelectionIsContinued()
{
    QFETCH(Cells, given);
    QFETCH(Cells, expected);
    QCOMPARE(Extended(given, expected.size()), expected);
}

void TestExtendSerie::everyShortSelectionFollowsTheRule()
{
    int cases = 0;
    for (int count = 0, selections = 1; count <= 5; ++count, selections *= 7) {
        for (int code = 0; code < selections; ++code) {
            Cells given;
            for (int digits = code; given.size() < count; digits /= 7)
                given << digits % 7;
            for (int total = 0; total <= 12; ++total, ++cases)
                QCOMPARE(Extended(given, total), Reference(given, total));
        }
    }
    QCOMPARE(cases, 13 * (1 + 7 + 49 + 343 + 2401 + 16807));
}

void TestExtendSerie::selectionsBelowZeroFollowTheRule()
{
    for (int first = -4; first <= 4; ++first) {
        for (int second = -4; second <= 4; ++second) {
            for (int third = -4; third <= 4; ++third) {
                const Cells given{ first, second, third };
                QCOMPARE(Extended(given, 9), Reference(given, 9));
                QCOMPARE(Extended({ first, second }, 9), Reference({ first, second }, 9));
            }
        }
    }
}

void TestExtendSerie::nothingGivenLeavesBlankCells()
{
    Cells cells{ 7, 8, 9, kUntouched };
    QVERIFY(ExtendSerie(cells.data(), /*given=*/0, /*total=*/3));
    QCOMPARE(cells, Cells({ 0, 0, 0, kUntouched }));

    cells = { 7, 8, 9, kUntouched };
    QVERIFY(ExtendSerie(cells.data(), /*given=*/-1, /*total=*/2));
    QCOMPARE(cells, Cells({ 0, 0, 9, kUntouched }));
    QVERIFY(ExtendSerie(nullptr, /*given=*/0, /*total=*/0));
}

void TestExtendSerie::nothingWantedWritesNothing()
{
    for (const Cells &given : { Cells{ 5 }, Cells{ 1, 2, 5 }, Cells{ 1, 9, 2 } }) {
        for (const int total : { 0, -3 }) {
            Cells cells = given;
            QVERIFY(ExtendSerie(cells.data(), given.size(), total));
            QCOMPARE(cells, given);
        }
    }
}

void TestExtendSerie::fewerWantedThanGivenKeepsTheRest()
{
    QCOMPARE(Extended({ 1, 2, 5, 9 }, /*total=*/3), Cells({ 1, 2, 3, 9 }));
    QCOMPARE(Extended({ 1, 5, 2, 6, 9, 9 }, /*total=*/5), Cells({ 1, 5, 2, 6, 3, 9 }));
    QCOMPARE(Extended({ 1, 9, 2 }, /*total=*/1), Cells({ 1, 9, 2 }));
}

void TestExtendSerie::numbersAtTheLimitEndTheSeries_data()
{
    QTest::addColumn<Cells>("given");
    QTest::addColumn<Cells>("expected");
    constexpr int top = INT_MAX, bottom = INT_MIN;
    QTest::newRow("rising") << Cells{ top - 1 } << Cells{ top - 1, top, 0, 0 };
    QTest::newRow("runs") << Cells{ 1, top } << Cells{ 1, top, 0, 0 };
    QTest::newRow("runs, down") << Cells{ top, 1 } << Cells{ top, 1, 0, 0 };
    QTest::newRow("the widest step") << Cells{ bottom, top } << Cells{ bottom, top, 0, 0 };
    QTest::newRow("two series") << Cells{ 1, top, 2 } << Cells{ 1, top, 2, 0, 0 };
    QTest::newRow("two series, widest") << Cells{ 1, bottom, top } << Cells{ 1, bottom, top, 0 };
}

void TestExtendSerie::numbersAtTheLimitEndTheSeries()
{
    QFETCH(Cells, given);
    QFETCH(Cells, expected);
    QCOMPARE(Extended(given, expected.size()), expected);
}

VN_TEST_MAIN(TestExtendSerie)

#include "tst_extendserie.moc"
