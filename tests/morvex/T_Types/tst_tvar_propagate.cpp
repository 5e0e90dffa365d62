#include "TypedFixtures.h"

#include "T_Types/T_SelectionList.h"
#include "testing/TestMain.h"

namespace {

/// A structure with one value that it shares by name with its sisters.
class Part : public T_Struct
{
public:
    explicit Part(const char *name, int start)
    {
        SetName(QString::fromLatin1(name));
        AddInt(&gain, QStringLiteral("Gain"), TG_DEFAULT);
        gain = start;
    }
    bool IsA(const std::type_info &kind) const override
    {
        return kind == typeid(Part) || T_Struct::IsA(kind);
    }
    T_Var *Gain() { return GetVar(QStringLiteral("Gain"), TV_INT); }
    int gain = 0;
};

/// Another class with a value of the same name.
class OtherPart : public T_Struct
{
public:
    explicit OtherPart(int start)
    {
        AddInt(&gain, QStringLiteral("Gain"), TG_DEFAULT);
        gain = start;
    }
    int gain = 0;
};

Part *AddPart(T_Struct &parent, const char *name, int start)
{
    auto *part = new Part(name, start);
    parent.AddChild(part);
    return part;
}

} // namespace

/// The tree of each test:  root > (key1 > (left, right, other), key2 > (left, right))
class TestTVarPropagate : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void levelOneCopiesToEverySisterOfTheSameClass();
    void levelOneIsOneUndoGroup();
    void levelTwoReachesTheElementsOfOtherKeys();
    void levelTwoByNameReachesTheSameElementOnly();
    void levelZeroFindsItsOwnParentAndChangesNothing();
    void aLevelBeyondTheTreeDoesNothing();
    void aVariableWithoutAStructureDoesNothing();
    void aSisterWithoutTheVariableWarnsAndIsPassedOver();
    void aSisterWithTheNameInAnotherTypeIsPassedOver();
    void aTypeWithoutAVariantFormIsNotCopied();
    void toTheSelectionWarnsWhenThereIsNone();
    void toTheSelectionCopiesToItsStructuresWhateverTheirNames();
    void aDestroyedSelectionIsNoneAgain();

private:
    T_Struct *root = nullptr;
    T_Struct *key1 = nullptr;
    T_Struct *key2 = nullptr;
    Part *left1 = nullptr;
    Part *right1 = nullptr;
    OtherPart *other1 = nullptr;
    Part *left2 = nullptr;
    Part *right2 = nullptr;
};

void TestTVarPropagate::init()
{
    root = new T_Struct;
    key1 = new T_Struct;
    key2 = new T_Struct;
    root->AddChild(key1);
    root->AddChild(key2);
    left1 = AddPart(*key1, "Left", 11);
    right1 = AddPart(*key1, "Right", 12);
    other1 = new OtherPart(13);
    key1->AddChild(other1);
    left2 = AddPart(*key2, "Left", 21);
    right2 = AddPart(*key2, "Right", 22);
    typed::FreshUndo();
}

void TestTVarPropagate::cleanup()
{
    delete root;
    T_Undo::Instance()->Clear();
}

void TestTVarPropagate::levelOneCopiesToEverySisterOfTheSameClass()
{
    Part *third = AddPart(*key1, "Third", 14);
    left1->Gain()->Propagate(/*toSelection=*/false, /*sameName=*/false, /*level=*/1);
    QCOMPARE(left1->gain, 11);
    QCOMPARE(right1->gain, 11);
    QCOMPARE(third->gain, 11);
    QCOMPARE(other1->gain, 13); // another class
    QCOMPARE(left2->gain, 21); // another key
}

void TestTVarPropagate::levelOneIsOneUndoGroup()
{
    left1->Gain()->Propagate(false, false, 1);
    const T_Undo *undo = T_Undo::Instance();
    QCOMPARE(undo->mRecords.size(), 3);
    QCOMPARE(undo->mRecords.at(0)->mKind, int(T_UndoRecord::GroupMark));
    QCOMPARE(undo->mRecords.at(1)->mObject, right1->Gain());
    QCOMPARE(undo->mRecords.at(1)->mValue, QVariant(12));
    QCOMPARE(undo->mRecords.at(2)->mKind, int(T_UndoRecord::GroupMark));
    QCOMPARE(undo->mGroupDepth, 0);
}

void TestTVarPropagate::levelTwoReachesTheElementsOfOtherKeys()
{
    left1->Gain()->Propagate(false, false, 2);
    QCOMPARE(right1->gain, 11);
    QCOMPARE(left2->gain, 11);
    QCOMPARE(right2->gain, 11);
    QCOMPARE(other1->gain, 13);
}

void TestTVarPropagate::levelTwoByNameReachesTheSameElementOnly()
{
    left1->Gain()->Propagate(false, true, 2);
    QCOMPARE(left2->gain, 11);
    QCOMPARE(right1->gain, 12);
    QCOMPARE(right2->gain, 22);
}

void TestTVarPropagate::levelZeroFindsItsOwnParentAndChangesNothing()
{
    left1->Gain()->Propagate(false, false, 0);
    QCOMPARE(left1->gain, 11);
    QCOMPARE(right1->gain, 12);
    QCOMPARE(T_Undo::Instance()->mRecords.size(), 2); // the group's two marks
}

void TestTVarPropagate::aLevelBeyondTheTreeDoesNothing()
{
    left1->Gain()->Propagate(false, false, 3);
    QCOMPARE(right1->gain, 12);
    QVERIFY(T_Undo::Instance()->mRecords.isEmpty());
}

void TestTVarPropagate::aVariableWithoutAStructureDoesNothing()
{
    int number = 5;
    T_Var alone(TV_INT, QStringLiteral("Gain"), &number, TG_DEFAULT);
    alone.Propagate(false, false, 1);
    alone.Propagate(true, false, 0); // not even the warning of the selection
    QVERIFY(T_Undo::Instance()->mRecords.isEmpty());
}

void TestTVarPropagate::aSisterWithoutTheVariableWarnsAndIsPassedOver()
{
    int own = 5;
    T_Var *extra = left1->AddVar(TV_INT, QStringLiteral("Extra"), &own, TG_DEFAULT);
    QTest::ignoreMessage(QtWarningMsg, "-ERR- T_Struct::GetVar[%s] NotFound \"Extra\"");
    extra->Propagate(false, false, 1);
    QCOMPARE(right1->gain, 12);
}

void TestTVarPropagate::aSisterWithTheNameInAnotherTypeIsPassedOver()
{
    int own = 5;
    float real = 2.5F;
    T_Var *extra = left1->AddVar(TV_INT, QStringLiteral("Extra"), &own, TG_DEFAULT);
    right1->AddVar(TV_FLOAT, QStringLiteral("Extra"), &real, TG_DEFAULT);
    QTest::ignoreMessage(QtWarningMsg, "-ERR- T_Struct::GetVar[%s] NotFound \"Extra\"");
    extra->Propagate(false, false, 1);
    QCOMPARE(real, 2.5F);
}

void TestTVarPropagate::aTypeWithoutAVariantFormIsNotCopied()
{
    char mine[8] = "mine";
    char yours[8] = "yours";
    T_Var *text = left1->AddVar(TV_STRING, QStringLiteral("Text"), mine, sizeof mine);
    right1->AddVar(TV_STRING, QStringLiteral("Text"), yours, sizeof yours);
    text->Propagate(false, false, 1);
    QCOMPARE(yours, "yours");
}

void TestTVarPropagate::toTheSelectionWarnsWhenThereIsNone()
{
    QTest::ignoreMessage(QtWarningMsg, "ERREUR On ne veut pas creer d'ici");
    left1->Gain()->Propagate(true, true, 0);
    QCOMPARE(right1->gain, 12);
    QVERIFY(T_Undo::Instance()->mRecords.isEmpty());
}

void TestTVarPropagate::toTheSelectionCopiesToItsStructuresWhateverTheirNames()
{
    T_SelectionList selection;
    QCOMPARE(T_SelectionList::Get(), &selection);
    selection.mObjects = { right2, other1, left1, nullptr, right1->Gain(), key1 };
    left1->Gain()->Propagate(/*toSelection=*/true, /*sameName=*/true, /*level=*/0);
    QCOMPARE(right2->gain, 11); // the name is not looked at here
    QCOMPARE(right1->gain, 12); // a variable is no structure
    QCOMPARE(other1->gain, 13);
    QCOMPARE(left2->gain, 21); // not selected
    QCOMPARE(T_Undo::Instance()->mRecords.size(), 3);
}

void TestTVarPropagate::aDestroyedSelectionIsNoneAgain()
{
    {
        const T_SelectionList selection;
    }
    QTest::ignoreMessage(QtWarningMsg, "ERREUR On ne veut pas creer d'ici");
    QCOMPARE(T_SelectionList::Get(), nullptr);
}

VN_TEST_MAIN(TestTVarPropagate)

#include "tst_tvar_propagate.moc"
