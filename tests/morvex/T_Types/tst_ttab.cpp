#include "TypedFixtures.h"

#include "support/vnLog.h"
#include "testing/TestMain.h"

#include <QTransform>

#include <algorithm>
#include <climits>

class TestTTab : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aNewArrayIsEmptyAndClearsTheOwnersPointer();
    void theArrayGoesWithItsTab();
    void theStrideFollowsTheType_data();
    void theStrideFollowsTheType();
    void theStrideOfAStringIsItsCapacity();
    void growingKeepsTheElementsAndZeroesTheTail();
    void shrinkingKeepsTheFirstElements();
    void sizeZeroOnAFilledArrayCanGrowAgain();
    void thePresentSizeRecordsNothing();
    void aResizeIsRecorded();
    void aSizeBelowZeroIsRefusedWithTheErrorLine();
    void anElementHasItsVariant();
    void anElementThatIsNotThereIsAnInvalidVariant();
    void theTextHasTagNameCountAndElements();
    void anEmptyArrayIsWrittenWithCountZero();
    void theTextIsReadBack();
    void readingWithoutApplySwallowsTheLines();
    void aCountThatCannotBeSwallowsItsLines_data();
    void aCountThatCannotBeSwallowsItsLines();
    void aCountThatIsNoNumberEatsNothing();
    void aMillionElementsAreTheMost();
    void fewerLinesThanTheCountLeaveTheRestZero();
    void theLeadingWhiteSpaceOfTheFirstElementIsLost();
    void elementsOf150CharactersCountAsTwoLinesEach();
    void anArrayOfBoolCannotBeRead();
    void anArrayOfTextIsWrittenByElementsAndReadByBytes();
    void anArrayOfQStringHasNoElements();
    void theDummySwallowsAnyArray();
};

namespace {

void **Address(int **array)
{
    return reinterpret_cast<void **>(array);
}

} // namespace

void TestTTab::init()
{
    typed::FreshUndo();
    vnLog::Instance()->Clear();
}

void TestTTab::aNewArrayIsEmptyAndClearsTheOwnersPointer()
{
    int field = 5;
    int *marks = &field;
    const T_Tab tab(TV_INT, QStringLiteral("Marks"), Address(&marks));
    QCOMPARE(marks, nullptr);
    QCOMPARE(tab.mCount, 0);
    QCOMPARE(tab.mData, nullptr);
    QCOMPARE(tab.mGadget, quint32(0));
    QCOMPARE(tab.mType, quint32(TV_INT));
    QCOMPARE(tab.GetName(), QStringLiteral("Marks"));
}

void TestTTab::theArrayGoesWithItsTab()
{
    int *marks = nullptr;
    {
        T_Tab tab(TV_INT, QStringLiteral("Marks"), Address(&marks));
        tab.SetSize(4);
        QVERIFY(marks);
    }
    QCOMPARE(marks, nullptr);
}

void TestTTab::theStrideFollowsTheType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("stride");
    const int strides[]
        = { 0, 0, 1, 4, 4, 0, 0, 4, 2, 4, 8, 1, 8, 8, 12, int(sizeof(QTransform)), 0, 24, 0 };
    for (int type = 0; type <= int(TV_LAST); ++type)
        QTest::newRow(T_VarTypeTable[type].tag) << type << strides[type];
    QTest::newRow("beyond the table") << 1000 << 0;
}

void TestTTab::theStrideFollowsTheType()
{
    QFETCH(int, type);
    QFETCH(int, stride);
    void *array = nullptr;
    const T_Tab tab(quint32(type), QString(), &array);
    QCOMPARE(T_GetElementSize(&tab), stride);
}

void TestTTab::theStrideOfAStringIsItsCapacity()
{
    void *array = nullptr;
    T_Tab tab(TV_STRING, QString(), &array);
    tab.mStringSize = 17;
    QCOMPARE(T_GetElementSize(&tab), 17);
}

void TestTTab::growingKeepsTheElementsAndZeroesTheTail()
{
    int *marks = nullptr;
    T_Tab tab(TV_INT, QString(), Address(&marks));
    tab.SetSize(3);
    QCOMPARE(QVector<int>({ marks[0], marks[1], marks[2] }), QVector<int>({ 0, 0, 0 }));
    marks[0] = 1;
    marks[1] = 2;
    marks[2] = 5;
    tab.SetSize(1000);
    QCOMPARE(tab.mCount, 1000);
    QCOMPARE(QVector<int>({ marks[0], marks[1], marks[2] }), QVector<int>({ 1, 2, 5 }));
    for (int i = 3; i < 1000; ++i)
        QCOMPARE(marks[i], 0);
}

void TestTTab::shrinkingKeepsTheFirstElements()
{
    int *marks = nullptr;
    T_Tab tab(TV_INT, QString(), Address(&marks));
    tab.SetSize(5);
    marks[1] = 7;
    tab.SetSize(2);
    QCOMPARE(tab.mCount, 2);
    QCOMPARE(marks[1], 7);
    marks[1] = 8;
    tab.SetSize(3);
    QCOMPARE(QVector<int>({ marks[1], marks[2] }), QVector<int>({ 8, 0 }));
}

void TestTTab::sizeZeroOnAFilledArrayCanGrowAgain()
{
    int *marks = nullptr;
    T_Tab tab(TV_INT, QString(), Address(&marks));
    tab.SetSize(5);
    tab.SetSize(0);
    QCOMPARE(tab.mCount, 0);
    tab.SetSize(2);
    QCOMPARE(QVector<int>({ marks[0], marks[1] }), QVector<int>({ 0, 0 }));
}

void TestTTab::thePresentSizeRecordsNothing()
{
    int *marks = nullptr;
    T_Tab tab(TV_INT, QString(), Address(&marks));
    tab.SetSize(0);
    QVERIFY(T_Undo::Instance()->mRecords.isEmpty());
    QCOMPARE(marks, nullptr);
    tab.SetSize(4);
    T_Undo::Instance()->Clear();
    tab.SetSize(4);
    QVERIFY(T_Undo::Instance()->mRecords.isEmpty());
}

void TestTTab::aResizeIsRecorded()
{
    int *marks = nullptr;
    T_Tab tab(TV_INT, QString(), Address(&marks));
    tab.SetSize(3);
    marks[2] = 9;
    T_Undo::Instance()->Clear();
    tab.SetSize(2);
    const T_Undo *undo = T_Undo::Instance();
    QCOMPARE(undo->mRecords.size(), 2);
    QCOMPARE(undo->mRecords.at(0)->mIndex, 2);
    QCOMPARE(undo->mRecords.at(0)->mValue, QVariant(9));
    QCOMPARE(undo->mRecords.at(1)->mKind, int(T_UndoRecord::Size));
    QCOMPARE(undo->mRecords.at(1)->mValue, QVariant(3));
}

void TestTTab::aSizeBelowZeroIsRefusedWithTheErrorLine()
{
    int *marks = nullptr;
    T_Tab tab(TV_INT, QString(), Address(&marks));
    tab.SetSize(3);
    T_Undo::Instance()->Clear();
    tab.SetSize(-1);
    tab.SetSize(INT_MIN);
    QCOMPARE(tab.mCount, 3);
    QVERIFY(T_Undo::Instance()->mRecords.isEmpty());
    QCOMPARE(QByteArray(vnLog::Instance()->Text()).count("-ERR B- line "), 2);
}

void TestTTab::anElementHasItsVariant()
{
    double *values = nullptr;
    T_Tab tab(TV_DOUBLE, QString(), reinterpret_cast<void **>(&values));
    tab.SetSize(3);
    values[2] = 2.5;
    QCOMPARE(tab.GetValueAt(2), QVariant(2.5));
    QCOMPARE(tab.GetValueAt(1), QVariant(0.0));
}

void TestTTab::anElementThatIsNotThereIsAnInvalidVariant()
{
    int *marks = nullptr;
    T_Tab tab(TV_INT, QString(), Address(&marks));
    QVERIFY(!tab.GetValueAt(0).isValid());
    tab.SetSize(3);
    QVERIFY(tab.GetValueAt(0).isValid());
    QVERIFY(!tab.GetValueAt(3).isValid());
    QVERIFY(!tab.GetValueAt(-1).isValid());
    QVERIFY(!T_DummyTab()->GetValueAt(0).isValid());
}

void TestTTab::theTextHasTagNameCountAndElements()
{
    int *marks = nullptr;
    T_Tab tab(TV_INT, QStringLiteral("Marks"), Address(&marks));
    tab.SetSize(3);
    marks[0] = 1;
    marks[1] = -2;
    marks[2] = 5;
    QCOMPARE(typed::Written(tab), "TT_INT\nMarks\n3\n1\n-2\n5\n");
    QCOMPARE(T_WriteStream, nullptr);
    tab.Write(); // no stream, nothing happens
}

void TestTTab::anEmptyArrayIsWrittenWithCountZero()
{
    void *array = nullptr;
    T_Tab tab(TV_QVECTOR2D, QStringLiteral("Path"), &array);
    QCOMPARE(typed::Written(tab), "TT_QVECTOR2D\nPath\n0\n");
}

void TestTTab::theTextIsReadBack()
{
    int *marks = nullptr;
    T_Tab tab(TV_INT, QString(), Address(&marks));
    tab.SetSize(5);
    QCOMPARE(typed::ReadBody(tab, "3\n11\n-12\n13\nrest\n"), "rest\n");
    QCOMPARE(tab.mCount, 3);
    QCOMPARE(QVector<int>({ marks[0], marks[1], marks[2] }), QVector<int>({ 11, -12, 13 }));
}

void TestTTab::readingWithoutApplySwallowsTheLines()
{
    int *marks = nullptr;
    T_Tab tab(TV_INT, QString(), Address(&marks));
    tab.SetSize(1);
    marks[0] = 7;
    QCOMPARE(typed::ReadBody(tab, "2\n11\n12\nrest\n", /*apply=*/false), "rest\n");
    QCOMPARE(tab.mCount, 1);
    QCOMPARE(marks[0], 7);
}

void TestTTab::aCountThatCannotBeSwallowsItsLines_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("rest");
    QTest::newRow("below zero: it has no lines")
        << QByteArray("-1\n11\n12\n") << QByteArray("11\n12\n");
    QTest::newRow("far below zero") << QByteArray("-999999999999999999999\n11\n")
                                           .replace("999999999999999999999", "99999999999")
                                    << QByteArray("11\n");
    QTest::newRow("above a million") << QByteArray("1000001\n11\n12\n") << QByteArray();
    QTest::newRow("above 32 bits, where 3 would be left of it")
        << QByteArray("4294967299\n11\n12\n") << QByteArray();
    QTest::newRow("above 64 bits")
        << QByteArray("99999999999999999999999999\n11\n12\n") << QByteArray();
}

void TestTTab::aCountThatCannotBeSwallowsItsLines()
{
    QFETCH(QByteArray, body);
    QFETCH(QByteArray, rest);
    int *marks = nullptr;
    T_Tab tab(TV_INT, QString(), Address(&marks));
    tab.SetSize(1);
    marks[0] = 7;
    QCOMPARE(typed::ReadBody(tab, body), rest);
    QCOMPARE(tab.mCount, 1);
    QCOMPARE(marks[0], 7);
}

void TestTTab::aCountThatIsNoNumberEatsNothing()
{
    int *marks = nullptr;
    T_Tab tab(TV_INT, QString(), Address(&marks));
    QCOMPARE(typed::ReadBody(tab, "three\n11\n"), "three\n11\n");
    QCOMPARE(typed::ReadBody(tab, ""), "");
    QCOMPARE(typed::ReadBody(tab, "\n\n"), "");
    QCOMPARE(tab.mCount, 0);
}

void TestTTab::aMillionElementsAreTheMost()
{
    int *marks = nullptr;
    T_Undo::SetEnabled(false);
    T_Tab tab(TV_INT, QString(), Address(&marks));
    QCOMPARE(typed::ReadBody(tab, "1000000\n11\n"), "");
    QCOMPARE(tab.mCount, 1000000);
    QCOMPARE(marks[0], 11);
    QCOMPARE(marks[999999], 0);
}

void TestTTab::fewerLinesThanTheCountLeaveTheRestZero()
{
    int *marks = nullptr;
    T_Tab tab(TV_INT, QString(), Address(&marks));
    QCOMPARE(typed::ReadBody(tab, "3\n11"), "");
    QCOMPARE(tab.mCount, 3);
    QCOMPARE(QVector<int>({ marks[0], marks[1], marks[2] }), QVector<int>({ 11, 0, 0 }));
}

void TestTTab::theLeadingWhiteSpaceOfTheFirstElementIsLost()
{
    char *names = nullptr;
    T_Tab tab(TV_STRING, QString(), reinterpret_cast<void **>(&names));
    tab.mStringSize = 8;
    QCOMPARE(typed::ReadBody(tab, "1\n\n  \tab\nrest\n"), "rest\n");
    QCOMPARE(names, "ab");
}

void TestTTab::elementsOf150CharactersCountAsTwoLinesEach()
{
    int *marks = nullptr;
    T_Tab tab(TV_INT, QString(), Address(&marks));
    // 150 characters come as 99 and 51: the two pieces of the first line fill both elements.
    const QByteArray first = "11" + QByteArray(97, ' ') + "22" + QByteArray(49, ' ');
    const QByteArray second = "33" + QByteArray(148, ' ');
    QCOMPARE(first.size(), 150);
    QCOMPARE(typed::ReadBody(tab, "2\n" + first + "\n" + second + "\n"), second + "\n");
    QCOMPARE(QVector<int>({ marks[0], marks[1] }), QVector<int>({ 11, 22 }));
}

void TestTTab::anArrayOfBoolCannotBeRead()
{
    bool *flags = nullptr;
    T_Tab tab(TV_BOOL, QStringLiteral("On"), reinterpret_cast<void **>(&flags));
    tab.SetSize(2);
    flags[1] = true;
    QCOMPARE(typed::Written(tab), "TT_BOOL\nOn\n2\nFalse\nTrue\n");
    QCOMPARE(typed::ReadBody(tab, "3\nTrue\nFalse\nTrue\nrest\n"), "rest\n");
    QCOMPARE(tab.mCount, 3);
    QVERIFY(!flags[0]);
    QVERIFY(flags[1]); // as it was
    QVERIFY(!flags[2]);
}

void TestTTab::anArrayOfTextIsWrittenByElementsAndReadByBytes()
{
    char *names = nullptr;
    T_Tab tab(TV_STRING, QStringLiteral("Names"), reinterpret_cast<void **>(&names));
    tab.mStringSize = 4;
    tab.SetSize(2);
    std::copy_n("ab\0\0cd\0\0", 8, names);
    QCOMPARE(typed::Written(tab), "TT_STRING\nNames\n2\nab\ncd\n");
    QCOMPARE(typed::ReadBody(tab, "2\nwxyz\n1234\n"), "");
    QCOMPARE(QByteArray(names, 8), QByteArray("w123\0d\0\0", 8)); // at byte 0 and at byte 1
}

void TestTTab::anArrayOfQStringHasNoElements()
{
    void *texts = nullptr;
    T_Tab tab(TV_QSTRING, QStringLiteral("Texts"), &texts);
    tab.SetSize(2);
    QCOMPARE(tab.mCount, 2);
    QCOMPARE(typed::Written(tab), "TT_QSTRING\nTexts\n2\n\n\n");
    QCOMPARE(typed::ReadBody(tab, "3\none\ntwo\nthree\nrest\n"), "rest\n");
    QCOMPARE(tab.mCount, 3);
    QVERIFY(!tab.GetValueAt(0).isValid());
}

void TestTTab::theDummySwallowsAnyArray()
{
    QCOMPARE(T_DummyTab(), T_DummyTab());
    QCOMPARE(T_DummyTab()->mType, quint32(TV_NULL));
    QCOMPARE(T_DummyTab()->GetName(), QString());
    QCOMPARE(typed::ReadBody(*T_DummyTab(), "2\na\nb\nrest\n", /*apply=*/false), "rest\n");
    T_DummyTab()->SetSize(3); // it has no owner to hold an array
    QCOMPARE(T_DummyTab()->mCount, 0);
}

VN_TEST_MAIN(TestTTab)

#include "tst_ttab.moc"
