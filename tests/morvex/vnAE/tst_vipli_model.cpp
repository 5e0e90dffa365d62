#include "LibrarySheet.h"
#include "GridWrite.h"

#include <QRandomGenerator>

/// Random writes to a column of hold keys, held against a plain array.
class TestVipLiModel : public QObject
{
    Q_OBJECT

private slots:
    void everyFrameReadsAsTheArraySays_data();
    void everyFrameReadsAsTheArraySays();
    void aNumberBeforeARunOfItselfLeavesTheRowBetween();
    void undoAndRedoRestoreTheProjectExactly();
    void writingWhatIsThereLeavesNoHistoryEntry();
};

namespace {

constexpr int kRows = 40;

/// The seed of a run: another one by VN_SEED, so that a failure can be played again.
quint32 Seed()
{
    const QByteArray given = qgetenv("VN_SEED");
    return given.isEmpty() ? 20260411u : given.toUInt();
}

int Runs(const QVector<int> &table)
{
    int runs = 1;
    for (int row = 1; row < table.size(); ++row)
        runs += table[row] != table[row - 1];
    return runs;
}

QByteArray Describe(const QVector<int> &table, int row, int value, quint32 seed)
{
    QByteArray text = "VN_SEED=" + QByteArray::number(seed) + ": " + QByteArray::number(value)
        + " at row " + QByteArray::number(row) + " of";
    for (const int cell : table)
        text += ' ' + QByteArray::number(cell);
    return text;
}

} // namespace

void TestVipLiModel::everyFrameReadsAsTheArraySays_data()
{
    QTest::addColumn<QVector<int>>("images");
    QTest::addColumn<bool>("oneKeyARun");
    QTest::newRow("few small numbers, many equal neighbours") << QVector<int>{ 0, 1, 2 } << true;
    QTest::newRow("many numbers") << QVector<int>{ 0, 1, 2, 3, 5, 8, 13, 21, 34, 55, 89 } << true;
    QTest::newRow("numbers beside those whose double falls short")
        << QVector<int>{ 28, 30, 56, 59, 112, 117 } << true;
    // A key of these is not seen to be the image already, so that they take keys beyond the runs.
    QTest::newRow("numbers whose double falls short, and their neighbours")
        << QVector<int>{ 27, 28, 29, 30, 56, 57, 58, 59, 113, 114, 115, 116 } << false;
    QTest::newRow("28 and 29 alone") << QVector<int>{ 28, 29 } << false;
}

void TestVipLiModel::everyFrameReadsAsTheArraySays()
{
    QFETCH(QVector<int>, images);
    QFETCH(bool, oneKeyARun);
    const quint32 seed = Seed();
    QRandomGenerator random(seed);
    for (int column = 0; column < 60; ++column) {
        QVector<int> table(kRows, images[random.bounded(images.size())]);
        LibrarySheet sheet(Keys{ { 0, table[0] } });
        for (int write = 0; write < 150; ++write) {
            const int row = random.bounded(kRows);
            const int value = images[random.bounded(images.size())];
            const QVector<int> before = table;
            WriteCell(table, row, value);
            const QByteArray told = Describe(before, row, value, seed);
            QVERIFY2(sheet.Column(kRows) == table, told.constData());
            if (oneKeyARun)
                QVERIFY2(sheet.Remap().KeyCount() <= Runs(table), told.constData());
        }
    }
}

void TestVipLiModel::aNumberBeforeARunOfItselfLeavesTheRowBetween()
{
    // 2 on row 1 swallows the key of the run of 2 at row 3; the row between and the run must stay.
    QVector<int> table{ 1, 1, 1, 2, 2, 1, 1, 3 };
    LibrarySheet sheet(Keys{ { 0, 1 }, { 3, 2 }, { 5, 1 }, { 7, 3 } });
    WriteCell(table, 1, 2);
    QCOMPARE(table, QVector<int>({ 1, 2, 1, 2, 2, 1, 1, 3 }));
    QCOMPARE(sheet.Column(8), table);
}

void TestVipLiModel::undoAndRedoRestoreTheProjectExactly()
{
    QRandomGenerator random(Seed());
    QVector<int> table(kRows, 1);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    rostrum::Document &document = sheet.host.GetDocument();
    QVector<rostrum::Project> states{ document.GetProject() };
    for (int step = 0; step < 120; ++step) {
        GetVipLi()->StartUndoGroup(QStringLiteral("morvex:EditCell"));
        WriteCell(table, random.bounded(kRows), random.bounded(4));
        GetVipLi()->EndUndoGroup();
        if (document.GetProject() != states.last())
            states << document.GetProject();
    }
    QCOMPARE(document.UndoNames().size(), states.size() - 1);
    QCOMPARE(document.UndoNames().last(), QByteArray("morvex:EditCell"));
    for (int state = states.size() - 2; state >= 0; --state) {
        QVERIFY(document.Undo());
        QVERIFY(document.GetProject() == states[state]);
    }
    QVERIFY(!document.Undo());
    for (int state = 1; state < states.size(); ++state) {
        QVERIFY(document.Redo());
        QVERIFY(document.GetProject() == states[state]);
    }
    QVERIFY(!document.Redo());
    QCOMPARE(sheet.Column(kRows), table);
}

void TestVipLiModel::writingWhatIsThereLeavesNoHistoryEntry()
{
    QVector<int> table{ 1, 1, 1, 4, 4 };
    LibrarySheet sheet(Keys{ { 0, 1 }, { 3, 4 } });
    GetVipLi()->StartUndoGroup(QStringLiteral("morvex:EditCell"));
    WriteCell(table, 2, 1);
    WriteCell(table, 4, 4);
    GetVipLi()->EndUndoGroup();
    QVERIFY(sheet.UndoNames().isEmpty());
}

VN_HOST_TEST_MAIN(TestVipLiModel)

#include "tst_vipli_model.moc"
