#include "TypedFixtures.h"

#include "testing/TestMain.h"

/// Each test starts from an empty recorder that is switched on.
class TestTUndo : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aNewRecorderTakesRecords();
    void aValueRecordHoldsTheValueBeforeTheChange();
    void twoRecordsOfOneVariableInARunKeepTheOlderValue();
    void aRecordOfAnotherVariableBetweenKeepsAllThree();
    void anotherVariableOfTheSameIndexAndKindIsAnotherTarget();
    void aResizeRecordsTheElementsThatVanishFirst();
    void aResizeThatGrowsRecordsTheSizeAlone();
    void twoResizesInARunKeepTheOlderSize();
    void recordElementOfTheSameElementIsRefusedAndOfAnotherIsNot();
    void aVariableOfADerivedClassIsRecordedWithoutItsValue();
    void addAndRemoveAreNeverRefused();
    void addAndRemoveNeedAStructureAndAnIndex();
    void aRemoveHoldsTheChildAtItsIndex();
    void groupsAreMarkedAndNest();
    void endGroupWithNoGroupOpenDoesNothing();
    void beginGroupCountsAlsoWhileTheRecorderIsOff();
    void nothingIsRecordedWhileASwitchForbidsIt_data();
    void nothingIsRecordedWhileASwitchForbidsIt();
    void switchedOffSetValueStillChangesTheField();
    void recordsBehindTheCursorGoWhenANewOneComes();
    void aRefusedRecordStillTouchesTheRecorder();
    void clearForgetsTheHistoryAndKeepsTheSwitches();

private:
    T_Undo *undo = nullptr;
};

namespace {

QList<int> Kinds(const T_Undo *undo)
{
    QList<int> kinds;
    for (const T_UndoRecord *record : undo->mRecords)
        kinds << record->mKind;
    return kinds;
}

/// A structure of two whole numbers and an array of five.
class Sample : public T_Struct
{
public:
    Sample()
    {
        AddInt(&a, QStringLiteral("a"), TG_DEFAULT);
        AddInt(&b, QStringLiteral("b"), TG_DEFAULT);
        tab = new T_Tab(TV_INT, QStringLiteral("marks"), reinterpret_cast<void **>(&marks));
        AddChild(tab);
        a = 11;
        b = 22;
        T_Undo::SetEnabled(false);
        tab->SetSize(5);
        T_Undo::SetEnabled(true);
        for (int i = 0; i < 5; ++i)
            marks[i] = 100 + i;
    }
    T_Var *A() { return GetVar(QStringLiteral("a"), TV_INT); }
    T_Var *B() { return GetVar(QStringLiteral("b"), TV_INT); }

    int a = 0;
    int b = 0;
    int *marks = nullptr;
    T_Tab *tab = nullptr;
};

} // namespace

void TestTUndo::init()
{
    undo = typed::FreshUndo();
    undo->mActive = true;
    undo->mReplaying = false;
}

void TestTUndo::aNewRecorderTakesRecords()
{
    QVERIFY(undo->IsRecording());
    QVERIFY(T_Undo::IsEnabled());
    QCOMPARE(undo->mCursor, -1);
    QCOMPARE(undo->mGroupDepth, 0);
    QVERIFY(!undo->mTouched);
    QVERIFY(undo->mRecords.isEmpty());
    QCOMPARE(T_Undo::Instance(), undo);
}

void TestTUndo::aValueRecordHoldsTheValueBeforeTheChange()
{
    Sample sample;
    sample.A()->SetValue(12);
    QCOMPARE(sample.a, 12);
    QCOMPARE(undo->mRecords.size(), 1);
    const T_UndoRecord &record = *undo->mRecords.at(0);
    QCOMPARE(record.mWord, quint64(0));
    QCOMPARE(record.mObject, sample.A());
    QCOMPARE(record.mIndex, 0);
    QCOMPARE(record.mKind, int(T_UndoRecord::Value));
    QCOMPARE(record.mValue, QVariant(11));
    QCOMPARE(undo->mCursor, 0);
    QVERIFY(undo->mTouched);
}

void TestTUndo::twoRecordsOfOneVariableInARunKeepTheOlderValue()
{
    Sample sample;
    sample.A()->SetValue(12);
    sample.A()->SetValue(13);
    QCOMPARE(sample.a, 13);
    QCOMPARE(undo->mRecords.size(), 1);
    QCOMPARE(undo->mRecords.at(0)->mValue, QVariant(11));
}

void TestTUndo::aRecordOfAnotherVariableBetweenKeepsAllThree()
{
    Sample sample;
    sample.A()->SetValue(12);
    sample.B()->SetValue(23);
    sample.A()->SetValue(13);
    QCOMPARE(undo->mRecords.size(), 3);
    QCOMPARE(undo->mRecords.at(0)->mValue, QVariant(11));
    QCOMPARE(undo->mRecords.at(1)->mValue, QVariant(22));
    QCOMPARE(undo->mRecords.at(2)->mValue, QVariant(12));
    QCOMPARE(undo->mCursor, 2);
}

void TestTUndo::anotherVariableOfTheSameIndexAndKindIsAnotherTarget()
{
    Sample sample;
    T_Undo::RecordValue(sample.A());
    T_Undo::RecordValue(sample.B());
    QCOMPARE(undo->mRecords.size(), 2);
    QCOMPARE(undo->mRecords.at(1)->mObject, sample.B());
}

void TestTUndo::aResizeRecordsTheElementsThatVanishFirst()
{
    Sample sample;
    T_Undo::RecordResize(sample.tab, 2);
    QCOMPARE(Kinds(undo), QList<int>({ 1, 1, 1, 2 }));
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(undo->mRecords.at(i)->mObject, sample.tab);
        QCOMPARE(undo->mRecords.at(i)->mIndex, 2 + i);
        QCOMPARE(undo->mRecords.at(i)->mValue, QVariant(102 + i));
    }
    QCOMPARE(undo->mRecords.at(3)->mIndex, 0);
    QCOMPARE(undo->mRecords.at(3)->mValue, QVariant(5));
    QCOMPARE(sample.tab->mCount, 5); // only recorded, not done
}

void TestTUndo::aResizeThatGrowsRecordsTheSizeAlone()
{
    Sample sample;
    sample.tab->SetSize(8);
    QCOMPARE(Kinds(undo), QList<int>({ 2 }));
    QCOMPARE(undo->mRecords.at(0)->mValue, QVariant(5));
}

void TestTUndo::twoResizesInARunKeepTheOlderSize()
{
    Sample sample;
    sample.tab->SetSize(8);
    sample.tab->SetSize(9);
    QCOMPARE(undo->mRecords.size(), 1);
    QCOMPARE(undo->mRecords.at(0)->mValue, QVariant(5));
}

void TestTUndo::recordElementOfTheSameElementIsRefusedAndOfAnotherIsNot()
{
    Sample sample;
    T_Undo::RecordElement(sample.tab, 1);
    T_Undo::RecordElement(sample.tab, 1);
    T_Undo::RecordElement(sample.tab, 3);
    QCOMPARE(undo->mRecords.size(), 2);
    QCOMPARE(undo->mRecords.at(0)->mIndex, 1);
    QCOMPARE(undo->mRecords.at(0)->mValue, QVariant(101));
    QCOMPARE(undo->mRecords.at(1)->mIndex, 3);
    QCOMPARE(undo->mRecords.at(1)->mValue, QVariant(103));
}

void TestTUndo::aVariableOfADerivedClassIsRecordedWithoutItsValue()
{
    Sample sample;
    T_Undo::RecordValue(sample.tab); // a T_Tab is no T_Var to IsVar
    QCOMPARE(undo->mRecords.size(), 1);
    QCOMPARE(undo->mRecords.at(0)->mObject, sample.tab);
    QVERIFY(!undo->mRecords.at(0)->mValue.isValid());
}

void TestTUndo::addAndRemoveAreNeverRefused()
{
    Sample sample;
    T_Undo::RecordAdd(&sample, 3);
    T_Undo::RecordAdd(&sample, 3);
    T_Undo::RecordRemove(&sample, 3);
    T_Undo::RecordRemove(&sample, 3);
    QCOMPARE(Kinds(undo), QList<int>({ 4, 4, 5, 5 }));
    QCOMPARE(undo->mRecords.at(0)->mIndex, 3);
    QCOMPARE(undo->mRecords.at(0)->mValue, QVariant(0));
}

void TestTUndo::addAndRemoveNeedAStructureAndAnIndex()
{
    Sample sample;
    T_Undo::RecordAdd(nullptr, 0);
    T_Undo::RecordAdd(&sample, -1);
    T_Undo::RecordRemove(nullptr, 0);
    T_Undo::RecordRemove(&sample, -1);
    QVERIFY(undo->mRecords.isEmpty());
    QVERIFY(!undo->mTouched);
}

void TestTUndo::aRemoveHoldsTheChildAtItsIndex()
{
    Sample sample;
    auto *first = new T_Struct;
    auto *second = new T_Struct;
    sample.AddChild(first);
    sample.AddChild(second);
    T_Undo::RecordRemove(&sample, 1);
    QCOMPARE(undo->mRecords.size(), 1);
    QCOMPARE(undo->mRecords.at(0)->mObject, &sample);
    QCOMPARE(undo->mRecords.at(0)->mIndex, 1);
    QCOMPARE(undo->mRecords.at(0)->mValue.value<void *>(), static_cast<void *>(second));
}

void TestTUndo::groupsAreMarkedAndNest()
{
    Sample sample;
    T_Undo::BeginGroup();
    sample.A()->SetValue(12);
    T_Undo::BeginGroup();
    QCOMPARE(undo->mGroupDepth, 2);
    T_Undo::EndGroup();
    T_Undo::EndGroup();
    QCOMPARE(undo->mGroupDepth, 0);
    QCOMPARE(Kinds(undo), QList<int>({ 3, 0, 3, 3, 3 }));
    QCOMPARE(undo->mRecords.at(0)->mValue, QVariant(1));
    QCOMPARE(undo->mRecords.at(2)->mValue, QVariant(1));
    QCOMPARE(undo->mRecords.at(3)->mValue, QVariant(0));
    QCOMPARE(undo->mRecords.at(4)->mValue, QVariant(0)); // equal to the one before, not refused
    QCOMPARE(undo->mRecords.at(0)->mObject, nullptr);
}

void TestTUndo::endGroupWithNoGroupOpenDoesNothing()
{
    T_Undo::EndGroup();
    QCOMPARE(undo->mGroupDepth, 0);
    QVERIFY(undo->mRecords.isEmpty());
}

void TestTUndo::beginGroupCountsAlsoWhileTheRecorderIsOff()
{
    T_Undo::SetEnabled(false);
    T_Undo::BeginGroup();
    QCOMPARE(undo->mGroupDepth, 1);
    QVERIFY(undo->mRecords.isEmpty());
    T_Undo::EndGroup();
    QCOMPARE(undo->mGroupDepth, 0);
    QVERIFY(undo->mRecords.isEmpty());
}

void TestTUndo::nothingIsRecordedWhileASwitchForbidsIt_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("active");
    QTest::addColumn<bool>("replaying");
    QTest::newRow("switched off") << false << true << false;
    QTest::newRow("not active") << true << false << false;
    QTest::newRow("replaying") << true << true << true;
}

void TestTUndo::nothingIsRecordedWhileASwitchForbidsIt()
{
    QFETCH(bool, enabled);
    QFETCH(bool, active);
    QFETCH(bool, replaying);
    Sample sample;
    T_Undo::SetEnabled(enabled);
    undo->mActive = active;
    undo->mReplaying = replaying;
    QVERIFY(!undo->IsRecording());

    T_Undo::RecordValue(sample.A());
    T_Undo::RecordElement(sample.tab, 0);
    T_Undo::RecordResize(sample.tab, 1);
    T_Undo::RecordAdd(&sample, 0);
    T_Undo::RecordRemove(&sample, 0);
    T_Undo::BeginGroup();
    T_Undo::EndGroup();
    QVERIFY(undo->mRecords.isEmpty());
    QVERIFY(!undo->mTouched);
}

void TestTUndo::switchedOffSetValueStillChangesTheField()
{
    Sample sample;
    T_Undo::SetEnabled(false);
    sample.A()->SetValue(99);
    sample.tab->SetSize(2);
    QCOMPARE(sample.a, 99);
    QCOMPARE(sample.tab->mCount, 2);
    QVERIFY(undo->mRecords.isEmpty());
}

void TestTUndo::recordsBehindTheCursorGoWhenANewOneComes()
{
    Sample sample;
    T_Undo::RecordAdd(&sample, 1);
    T_Undo::RecordAdd(&sample, 2);
    T_Undo::RecordAdd(&sample, 3);
    undo->mCursor = 0; // as a player of the history would leave it, two steps back
    T_Undo::RecordAdd(&sample, 4);
    QCOMPARE(undo->mRecords.size(), 2);
    QCOMPARE(undo->mRecords.at(0)->mIndex, 1);
    QCOMPARE(undo->mRecords.at(1)->mIndex, 4);
    QCOMPARE(undo->mCursor, 1);

    undo->mCursor = -1; // all the way back: everything goes
    T_Undo::RecordAdd(&sample, 5);
    QCOMPARE(undo->mRecords.size(), 1);
    QCOMPARE(undo->mRecords.at(0)->mIndex, 5);
}

void TestTUndo::aRefusedRecordStillTouchesTheRecorder()
{
    Sample sample;
    T_Undo::RecordValue(sample.A());
    undo->mTouched = false;
    T_Undo::RecordValue(sample.A());
    QVERIFY(undo->mTouched);
    QCOMPARE(undo->mRecords.size(), 1);
}

void TestTUndo::clearForgetsTheHistoryAndKeepsTheSwitches()
{
    Sample sample;
    T_Undo::RecordValue(sample.A());
    T_Undo::BeginGroup();
    T_Undo::SetEnabled(false);
    undo->Clear();
    QVERIFY(undo->mRecords.isEmpty());
    QCOMPARE(undo->mCursor, -1);
    QCOMPARE(undo->mGroupDepth, 0);
    QVERIFY(!T_Undo::IsEnabled());
}

VN_TEST_MAIN(TestTUndo)

#include "tst_tundo.moc"
