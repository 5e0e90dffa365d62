#include "SheetSession.h"
#include "TraceLinesOff.h"

#include <cstdio>
#include <cstring>

/// The sheet is the truth: random sessions of commands, typed cells, undo, redo and changes made by
/// hand in the host. The table follows the commands' own model, the host follows the table, and a
/// reload shows what the host's streams hold.
///
///     tst_sheet_truth                  the sessions of seed 1 to 300
///     tst_sheet_truth --sessions 5000  more of them
///     tst_sheet_truth --seed 1234      one alone
///
/// VN_SESSIONS and VN_SEED say the same. A session that fails is cut down to the fewest steps that
/// still fail, and told with its seed.
class TestSheetTruth : public QObject
{
    Q_OBJECT

private slots:
    void theSheetIsTheTruth();
    void aWrongModelIsFoundAndCutDownToItsOneStep();
    void everyKindOfStepComesUp();
    void aDurationThatIsNoWholeFrameIsMadeOneByTheReload();
    void undoingTheReloadGivesTheDurationBackUntilTheNextOne();
};

namespace {

int sessions = 300;
int onlySeed = 0;
constexpr int kSteps = 200;

QByteArray RunSeed(quint32 seed, int *changes = nullptr)
{
    int frames = 0;
    const SheetPlan plan = RandomPlan(seed, &frames);
    const SheetSteps steps = RandomSteps(seed, kSteps, plan.size(), frames);
    SheetSession session;
    const QByteArray error = session.Run(plan, frames, steps);
    if (changes)
        *changes += session.changes;
    if (error.isEmpty())
        return {};

    const SheetSteps shortest = Shrink(steps,
        [&](const SheetSteps &some) { return !SheetSession().Run(plan, frames, some).isEmpty(); });
    QByteArray text = "--seed " + QByteArray::number(seed) + ": " + error + "\n"
        + QByteArray::number(frames) + " frames\n" + Describe(plan);
    for (const SheetStep &step : shortest)
        text += "  " + Describe(step) + '\n';
    return text + "these alone: " + SheetSession().Run(plan, frames, shortest);
}

} // namespace

void TestSheetTruth::theSheetIsTheTruth()
{
    const TraceLinesOff quiet;
    const int first = onlySeed ? onlySeed : 1;
    const int last = onlySeed ? onlySeed : sessions;
    std::printf("seeds %d to %d, %d steps each\n", first, last, kSteps);
    int changes = 0;
    for (int seed = first; seed <= last; ++seed) {
        const QByteArray error = RunSeed(static_cast<quint32>(seed), &changes);
        QVERIFY2(error.isEmpty(), error.constData());
    }
    std::printf("%d steps changed the project\n", changes);
    QVERIFY(changes > (last - first + 1) * kSteps / 4); // the sessions did something
}

void TestSheetTruth::aWrongModelIsFoundAndCutDownToItsOneStep()
{
    const TraceLinesOff quiet;
    int frames = 0;
    const SheetPlan plan = RandomPlan(/*seed=*/7, &frames);
    const SheetSteps steps = RandomSteps(/*seed=*/7, kSteps, plan.size(), frames);
    const auto run = [&](const SheetSteps &some) {
        SheetSession session;
        session.spoil = [](SheetModel &model, const SheetStep &step) {
            if (step.deed == Deed::Insert && step.selects)
                model.columns[step.toCol].cells[step.toRow] += 1;
        };
        return session.Run(plan, frames, some);
    };
    QVERIFY(!run(steps).isEmpty());
    const SheetSteps shortest
        = Shrink(steps, [&](const SheetSteps &some) { return !run(some).isEmpty(); });
    QCOMPARE(shortest.size(), 1);
    QCOMPARE(shortest[0].deed, Deed::Insert);
}

void TestSheetTruth::everyKindOfStepComesUp()
{
    const SheetSteps steps = RandomSteps(/*seed=*/3, /*count=*/2000, /*columns=*/5, /*frames=*/20);
    QSet<int> kinds, deeds;
    int unselected = 0, upwards = 0, wide = 0;
    for (const SheetStep &step : steps) {
        kinds << step.kind;
        deeds << int(step.deed);
        unselected += !step.selects;
        upwards += step.toRow < step.fromRow;
        wide += step.toCol != step.fromCol;
    }
    QCOMPARE(kinds.size(), 6);
    QCOMPARE(deeds.size(), 12);
    QVERIFY(unselected > 100 && upwards > 50 && wide > 100);
}

void TestSheetTruth::aDurationThatIsNoWholeFrameIsMadeOneByTheReload()
{
    BoundSheet sheet({ SeriesColumn("walk", 12, { { 0, 3 } }) }, 30);
    sheet.Doc().Edit("by hand").EditComposition(sheet.composition)->duration
        = rostrum::Time{ 1210, 1000 };
    sheet.Doc().CloseLooseEnds();
    sheet.Show();
    QCOMPARE(sheet.grid.GetNbl(), 30); // 30.25 frames
    QCOMPARE(sheet.Doc().UndoNames(), QVector<QByteArray>({ "by hand", "morvex:Reload" }));
    const rostrum::Composition *composition
        = sheet.Doc().GetProject().FindComposition(sheet.composition);
    QVERIFY(composition->duration == (rostrum::Time{ 30, 25 }));
}

void TestSheetTruth::undoingTheReloadGivesTheDurationBackUntilTheNextOne()
{
    BoundSheet sheet({ SeriesColumn("walk", 12, { { 0, 3 } }) }, 30);
    sheet.Doc().Edit("by hand").EditComposition(sheet.composition)->duration
        = rostrum::Time{ 1210, 1000 };
    sheet.Doc().CloseLooseEnds();
    const rostrum::Project before = sheet.Doc().GetProject();
    sheet.Show();
    sheet.Robot().Click(0, 4);
    sheet.Robot().Type(QStringLiteral("7"));
    QVERIFY(sheet.Doc().Undo());
    QVERIFY(sheet.Doc().Undo());
    QVERIFY(sheet.Doc().GetProject() == before);
    QCOMPARE(sheet.Doc().RedoNames().size(), 2);
    QVERIFY(sheet.grid.UpdateFromCompo()); // which is a change, so that nothing is left to redo
    QCOMPARE(sheet.Doc().UndoNames(), QVector<QByteArray>({ "by hand", "morvex:Reload" }));
    QCOMPARE(sheet.Doc().RedoNames().size(), 0);
}

/// "--name N" taken out of the arguments, else the variable, else the start value.
static int TakeNumber(int &argc, char **argv, const char *name, const char *variable, int start)
{
    const QByteArray given = qgetenv(variable);
    int number = given.isEmpty() ? start : given.toInt();
    for (int i = 1; i + 1 < argc; ++i) {
        if (std::strcmp(argv[i], name) != 0)
            continue;
        number = QByteArray(argv[i + 1]).toInt();
        std::memmove(
            argv + i, argv + i + 2, sizeof(char *) * static_cast<std::size_t>(argc - i - 1));
        argc -= 2;
    }
    return number;
}

int main(int argc, char **argv)
{
    sessions = TakeNumber(argc, argv, "--sessions", "VN_SESSIONS", sessions);
    onlySeed = TakeNumber(argc, argv, "--seed", "VN_SEED", onlySeed);
    QApplication application(argc, argv);
    testing::CollectHostEnds();
    TestSheetTruth tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_sheet_truth.moc"
