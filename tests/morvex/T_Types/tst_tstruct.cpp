#include "TypedFixtures.h"

#include "T_Types/T_Registry.h"
#include "testing/TestMain.h"

#include <memory>

using typed::AddNamed;
using typed::List;
using typed::Names;

namespace {

/// A class that has a name of its own in the registry.
class Rig : public T_Struct
{
public:
    bool IsA(const std::type_info &kind) const override
    {
        return kind == typeid(Rig) || T_Struct::IsA(kind);
    }
};

T_Declare(Rig);

/// Notes that it dies.
class Mortal : public T_Struct
{
public:
    explicit Mortal(QStringList *note) : deaths(note) { }
    ~Mortal() override { deaths->append(GetName()); }
    QStringList *const deaths;
};

} // namespace

class TestTStruct : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aNewStructureIsEmptyAndHasTheNameQuestionMark();
    void childrenStandInTheOrderOfTheirAdding();
    void addingNoChildIsIgnored();
    void theDestructorDeletesTheLinkedChildren();
    void addVarTakesTheParameterAsGadgetOrAsCapacity();
    void theAddOperationsClearTheirField();
    void addStructMakesARegisteredClass();
    void addStructOfAnUnknownClassEndsTheProgram();
    void insertStructCountsChildStructuresOnly_data();
    void insertStructCountsChildStructuresOnly();
    void insertStructAtZeroWithoutChildStructuresGoesToTheEnd();
    void insertStructRefusesNullAndALinkedChild();
    void insertStructIsRecordedBeforeItLinks();
    void removeStructUnlinksWithoutDeleting();
    void removeStructOfAStrangerIsRefusedAndNotRecorded();
    void removeStructIsRecordedWithItsIndexAmongStructures();
    void getVarFindsByNameAndType();
    void getVarWarnsWhenThereIsNone();
    void getTabFindsByNameAndTypeInSilence();
    void findStructFindsByNameAndKind();
    void getStructCountsChildStructures();
    void indexOfCountsTheChildrenOfAKind();
    void indexOfNullIsZeroAndWithoutChildrenMinusOne();
    void countOfCountsStructuresOfAKind();
    void theWalksPassEachKindOnce();
    void aWalkInAWalkDisturbsIt();
    void theHooksOfAPlainStructureDoNothingButWarn();
    void printShowsAlsoWhatIsNotSaved();
};

void TestTStruct::init()
{
    typed::FreshUndo();
}

void TestTStruct::aNewStructureIsEmptyAndHasTheNameQuestionMark()
{
    const T_Struct structure;
    QCOMPARE(structure.GetName(), QStringLiteral("?"));
    QCOMPARE(structure.mFirst, nullptr);
    QCOMPARE(structure.mCursor, nullptr);
    QCOMPARE(structure.mFlags, quint8(0xFF));
}

void TestTStruct::childrenStandInTheOrderOfTheirAdding()
{
    T_Struct root;
    int number = 0;
    T_Var *var = root.AddVar(TV_INT, QStringLiteral("a"), &number, TG_DEFAULT);
    T_Struct *structure = AddNamed(root, "b");
    auto *var2 = new T_Var(TV_INT, QStringLiteral("c"), &number, TG_DEFAULT);
    var2->mNext = var; // whatever it had before
    root.AddChild(var2);

    QCOMPARE(Names(root), List("a b c"));
    QCOMPARE(var->mParent, &root);
    QCOMPARE(structure->mParent, &root);
    QCOMPARE(var2->mNext, nullptr);
}

void TestTStruct::addingNoChildIsIgnored()
{
    T_Struct root;
    root.AddChild(nullptr);
    QCOMPARE(root.mFirst, nullptr);
}

void TestTStruct::theDestructorDeletesTheLinkedChildren()
{
    QStringList deaths;
    auto *kept = new Mortal(&deaths);
    {
        T_Struct root;
        for (const char *name : { "a", "b", "c" }) {
            auto *child = new Mortal(&deaths);
            child->SetName(QString::fromLatin1(name));
            root.AddChild(child);
        }
        root.AddChild(kept);
        QVERIFY(root.RemoveStruct(kept));
    }
    QCOMPARE(deaths, List("a b c"));
    delete kept;
    QCOMPARE(deaths.size(), 4);
}

void TestTStruct::addVarTakesTheParameterAsGadgetOrAsCapacity()
{
    T_Struct root;
    char text[12];
    int number = 0;
    const T_Var *asString = root.AddVar(TV_STRING, QStringLiteral("s"), text, sizeof text);
    QCOMPARE(asString->mStringSize, quint16(12));
    QCOMPARE(asString->mGadget, quint32(TG_DEFAULT));
    const T_Var *asInt = root.AddVar(TV_INT, QStringLiteral("i"), &number, TG_SLIDER);
    QCOMPARE(asInt->mStringSize, quint16(0));
    QCOMPARE(asInt->mGadget, quint32(TG_SLIDER));
    const T_Var *marker = root.AddVar(TV_ONGLET, QStringLiteral("t"), nullptr, TG_TAB);
    QCOMPARE(marker->mData, nullptr);
    QCOMPARE(marker->mGadget, quint32(TG_TAB));
}

void TestTStruct::theAddOperationsClearTheirField()
{
    T_Struct root;
    bool on = true;
    bool button = true;
    int number = 5;
    int choice = 6;
    QString name = QStringLiteral("walk");
    QStringList items = List("png tga");
    root.AddBool(&on, QStringLiteral("on"), TG_DEFAULT);
    root.AddInt(&number, QStringLiteral("number"), 1);
    root.AddEnum(&choice, QStringLiteral("choice"), TG_COMBO, &items);
    root.AddQString(&name, QStringLiteral("name"), TG_EDITCOMBO);
    const T_Var *press = root.AddButton(&button, QStringLiteral("press"));

    QVERIFY(!on);
    QCOMPARE(number, 0);
    QCOMPARE(choice, 0);
    QCOMPARE(name, QStringLiteral("walk")); // a text keeps its value
    QVERIFY(button); // and so does what only names a button
    QCOMPARE(press->mType, quint32(TV_BOUTON));
    QCOMPARE(press->mData, static_cast<void *>(&button));
    QCOMPARE(press->mGadget, quint32(0));
    QCOMPARE(root.GetVar(QStringLiteral("on"), TV_BOOL)->mData, static_cast<void *>(&on));
    QCOMPARE(root.GetVar(QStringLiteral("number"), TV_INT)->mGadget, quint32(1));
    const T_Var *combo = root.GetVar(QStringLiteral("choice"), TV_INT);
    QCOMPARE(combo->mEnumList, &items);
    QCOMPARE(combo->mGadget, quint32(TG_COMBO));
    QCOMPARE(root.GetVar(QStringLiteral("name"), TV_QSTRING)->mGadget, quint32(TG_EDITCOMBO));
    QCOMPARE(Names(root), List("on number choice name press"));
}

void TestTStruct::addStructMakesARegisteredClass()
{
    T_Struct root;
    AddNamed(root, "first");
    T_Undo::Instance()->Clear();
    T_Obj *added = root.AddStruct(QStringLiteral("Rig"), QStringLiteral("arm"));
    QVERIFY(added->IsExactly(typeid(Rig)));
    QCOMPARE(added->GetName(), QStringLiteral("arm"));
    QCOMPARE(added->mParent, &root);
    QCOMPARE(Names(root), List("first arm"));
    const T_UndoRecord &record = *T_Undo::Instance()->mRecords.at(0);
    QCOMPARE(record.mKind, int(T_UndoRecord::ChildAdded));
    QCOMPARE(record.mObject, &root);
    QCOMPARE(record.mIndex, 1);
}

void TestTStruct::addStructOfAnUnknownClassEndsTheProgram()
{
    const typed::ChildResult child = typed::RunChild(QStringLiteral("--unknown-class"));
    QCOMPARE(child.exitCode, 1);
    QCOMPARE(child.err, "\n-ERR- T_Struct::AddStruct Wing%2 left %1\n\n");
}

void TestTStruct::insertStructCountsChildStructuresOnly_data()
{
    QTest::addColumn<quint32>("index");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("0: in front of the first structure, not of the variables")
        << 0U << List("v1 v2 new s1 v3 s2 v4");
    QTest::newRow("1: in front of the second") << 1U << List("v1 v2 s1 v3 new s2 v4");
    QTest::newRow("2: as many as there are, so the end of the chain")
        << 2U << List("v1 v2 s1 v3 s2 v4 new");
    QTest::newRow("7: more than there are") << 7U << List("v1 v2 s1 v3 s2 v4 new");
    QTest::newRow("the end") << T_Struct::kAtEnd << List("v1 v2 s1 v3 s2 v4 new");
}

void TestTStruct::insertStructCountsChildStructuresOnly()
{
    QFETCH(quint32, index);
    QFETCH(QStringList, names);
    T_Struct root;
    for (const char *name : { "v1", "v2", "s1", "v3", "s2", "v4" }) {
        if (name[0] == 's')
            AddNamed(root, name);
        else
            root.AddVar(TV_ONGLET, QString::fromLatin1(name), nullptr, TG_TAB);
    }
    auto *child = new T_Struct;
    child->SetName(QStringLiteral("new"));
    QVERIFY(root.InsertStruct(child, index));
    QCOMPARE(Names(root), names);
    QCOMPARE(child->mParent, &root);
}

void TestTStruct::insertStructAtZeroWithoutChildStructuresGoesToTheEnd()
{
    T_Struct root;
    root.AddVar(TV_ONGLET, QStringLiteral("v1"), nullptr, TG_TAB);
    root.AddVar(TV_ONGLET, QStringLiteral("v2"), nullptr, TG_TAB);
    QVERIFY(root.InsertStruct(new T_Struct, 0));
    QCOMPARE(Names(root), List("v1 v2 ?"));

    T_Struct empty;
    QVERIFY(empty.InsertStruct(new T_Struct, 0));
    QCOMPARE(Names(empty), List("?"));
}

void TestTStruct::insertStructRefusesNullAndALinkedChild()
{
    T_Struct root;
    T_Struct *child = AddNamed(root, "s1");
    T_Undo::Instance()->Clear();
    QVERIFY(!root.InsertStruct(nullptr, 0));
    QVERIFY(!root.InsertStruct(child, 0));
    QCOMPARE(Names(root), List("s1"));
    QVERIFY(T_Undo::Instance()->mRecords.isEmpty());
}

void TestTStruct::insertStructIsRecordedBeforeItLinks()
{
    T_Struct root;
    AddNamed(root, "s1");
    AddNamed(root, "s2");
    T_Undo::Instance()->Clear();
    root.InsertStruct(new T_Struct, 1);
    root.InsertStruct(new T_Struct, T_Struct::kAtEnd);
    root.InsertStruct(new T_Struct, 77);
    const T_Undo *undo = T_Undo::Instance();
    QCOMPARE(undo->mRecords.size(), 3);
    QCOMPARE(undo->mRecords.at(0)->mIndex, 1);
    QCOMPARE(undo->mRecords.at(1)->mIndex, 3); // the end: as many structures as there were
    QCOMPARE(undo->mRecords.at(2)->mIndex, 77); // as it was asked for
    QCOMPARE(undo->mRecords.at(0)->mKind, int(T_UndoRecord::ChildAdded));
}

void TestTStruct::removeStructUnlinksWithoutDeleting()
{
    T_Struct root;
    AddNamed(root, "s1");
    const std::unique_ptr<T_Struct> middle(AddNamed(root, "s2"));
    AddNamed(root, "s3");
    QVERIFY(root.RemoveStruct(middle.get()));
    QCOMPARE(Names(root), List("s1 s3"));
    QCOMPARE(middle->GetName(), QStringLiteral("s2"));
    QCOMPARE(middle->mParent, &root); // left as it was

    const std::unique_ptr<T_Struct> first(root.GetStruct(0));
    QVERIFY(root.RemoveStruct(first.get()));
    QCOMPARE(Names(root), List("s3"));
}

void TestTStruct::removeStructOfAStrangerIsRefusedAndNotRecorded()
{
    T_Struct root;
    AddNamed(root, "s1");
    T_Struct stranger;
    T_Undo::Instance()->Clear();
    QVERIFY(!root.RemoveStruct(&stranger));
    QVERIFY(!root.RemoveStruct(nullptr));
    QVERIFY(T_Undo::Instance()->mRecords.isEmpty());
    QCOMPARE(Names(root), List("s1"));
}

void TestTStruct::removeStructIsRecordedWithItsIndexAmongStructures()
{
    T_Struct root;
    root.AddVar(TV_ONGLET, QStringLiteral("v1"), nullptr, TG_TAB);
    AddNamed(root, "s1");
    const std::unique_ptr<T_Struct> second(AddNamed(root, "s2"));
    T_Undo::Instance()->Clear();
    QVERIFY(root.RemoveStruct(second.get()));
    QCOMPARE(T_Undo::Instance()->mRecords.size(), 1);
    const T_UndoRecord &record = *T_Undo::Instance()->mRecords.at(0);
    QCOMPARE(record.mKind, int(T_UndoRecord::ChildRemoved));
    QCOMPARE(record.mIndex, 1);
    QCOMPARE(record.mValue.value<void *>(), static_cast<void *>(second.get()));
}

void TestTStruct::getVarFindsByNameAndType()
{
    T_Struct root;
    int number = 0;
    float real = 0;
    void *array = nullptr;
    root.AddChild(new T_Tab(TV_INT, QStringLiteral("x"), &array)); // an array is no variable here
    T_Var *asInt = root.AddVar(TV_INT, QStringLiteral("x"), &number, TG_DEFAULT);
    T_Var *asFloat = root.AddVar(TV_FLOAT, QStringLiteral("x"), &real, TG_DEFAULT);
    QCOMPARE(root.GetVar(QStringLiteral("x"), TV_NULL), asInt);
    QCOMPARE(root.GetVar(QStringLiteral("x"), TV_INT), asInt);
    QCOMPARE(root.GetVar(QStringLiteral("x"), TV_FLOAT), asFloat);
}

void TestTStruct::getVarWarnsWhenThereIsNone()
{
    T_Struct root;
    int number = 0;
    root.AddVar(TV_INT, QStringLiteral("x"), &number, TG_DEFAULT);
    AddNamed(root, "s");
    QTest::ignoreMessage(QtWarningMsg, "-ERR- T_Struct::GetVar[%s] NotFound \"X\"");
    QCOMPARE(root.GetVar(QStringLiteral("X"), TV_NULL), nullptr); // case matters
    QTest::ignoreMessage(QtWarningMsg, "-ERR- T_Struct::GetVar[%s] NotFound \"x\"");
    QCOMPARE(root.GetVar(QStringLiteral("x"), TV_FLOAT), nullptr);
    QTest::ignoreMessage(QtWarningMsg, "-ERR- T_Struct::GetVar[%s] NotFound \"s\"");
    QCOMPARE(root.GetVar(QStringLiteral("s"), TV_NULL), nullptr);
    QTest::ignoreMessage(QtWarningMsg, "-ERR- T_Struct::GetVar[%s] NotFound \"\"");
    QCOMPARE(root.GetVar(QString(), TV_NULL), nullptr);
}

void TestTStruct::getTabFindsByNameAndTypeInSilence()
{
    T_Struct root;
    int number = 0;
    void *marks = nullptr;
    void *gains = nullptr;
    root.AddVar(TV_INT, QStringLiteral("x"), &number, TG_DEFAULT);
    auto *asInt = new T_Tab(TV_INT, QStringLiteral("x"), &marks);
    auto *asFloat = new T_Tab(TV_FLOAT, QStringLiteral("x"), &gains);
    root.AddChild(asInt);
    root.AddChild(asFloat);
    QCOMPARE(root.GetTab(QStringLiteral("x"), TV_NULL), asInt);
    QCOMPARE(root.GetTab(QStringLiteral("x"), TV_FLOAT), asFloat);
    QCOMPARE(root.GetTab(QStringLiteral("x"), TV_DOUBLE), nullptr);
    QCOMPARE(root.GetTab(QStringLiteral("y"), TV_NULL), nullptr);
}

void TestTStruct::findStructFindsByNameAndKind()
{
    T_Struct root;
    T_Struct *plain = AddNamed(root, "arm");
    T_Obj *rig = root.AddStruct(QStringLiteral("Rig"), QStringLiteral("arm"));
    QCOMPARE(root.FindStruct(QStringLiteral("arm"), typeid(T_Struct)), plain);
    QCOMPARE(root.FindStruct(QStringLiteral("arm"), typeid(Rig)), rig);
    QCOMPARE(root.FindStruct(QStringLiteral("leg"), typeid(T_Struct)), nullptr);
    QCOMPARE(root.FindStruct(QStringLiteral("arm"), typeid(T_Var)), nullptr);
}

void TestTStruct::getStructCountsChildStructures()
{
    T_Struct root;
    QCOMPARE(root.GetStruct(0), nullptr);
    root.AddVar(TV_ONGLET, QStringLiteral("v1"), nullptr, TG_TAB);
    T_Struct *first = AddNamed(root, "s1");
    root.AddVar(TV_ONGLET, QStringLiteral("v2"), nullptr, TG_TAB);
    T_Struct *second = AddNamed(root, "s2");
    QCOMPARE(root.GetStruct(0), first);
    QCOMPARE(root.GetStruct(1), second);
    QCOMPARE(root.GetStruct(2), nullptr);
    QCOMPARE(root.GetStruct(-1), nullptr);
}

void TestTStruct::indexOfCountsTheChildrenOfAKind()
{
    T_Struct root;
    const T_Var *var = root.AddVar(TV_ONGLET, QStringLiteral("v1"), nullptr, TG_TAB);
    const T_Struct *first = AddNamed(root, "s1");
    const T_Obj *rig = root.AddStruct(QStringLiteral("Rig"), QStringLiteral("r"));
    QCOMPARE(root.IndexOf(var, typeid(T_Obj)), 0);
    QCOMPARE(root.IndexOf(rig, typeid(T_Obj)), 2);
    QCOMPARE(root.IndexOf(rig, typeid(T_Struct)), 1);
    QCOMPARE(root.IndexOf(rig, typeid(Rig)), 0);
    QCOMPARE(root.IndexOf(first, typeid(Rig)), -1); // linked, of another kind
    QCOMPARE(root.IndexOf(&root, typeid(T_Obj)), -1);
}

void TestTStruct::indexOfNullIsZeroAndWithoutChildrenMinusOne()
{
    T_Struct root;
    const T_Struct stranger;
    QCOMPARE(root.IndexOf(nullptr, typeid(T_Struct)), 0);
    QCOMPARE(root.IndexOf(&stranger, typeid(T_Struct)), -1);
    AddNamed(root, "s1");
    QCOMPARE(root.IndexOf(nullptr, typeid(T_Struct)), 0);
}

void TestTStruct::countOfCountsStructuresOfAKind()
{
    T_Struct root;
    QCOMPARE(root.CountOf(typeid(T_Struct)), 0);
    root.AddVar(TV_ONGLET, QStringLiteral("v1"), nullptr, TG_TAB);
    AddNamed(root, "s1");
    root.AddStruct(QStringLiteral("Rig"), QStringLiteral("r1"));
    root.AddStruct(QStringLiteral("Rig"), QStringLiteral("r2"));
    QCOMPARE(root.CountOf(typeid(T_Struct)), 3);
    QCOMPARE(root.CountOf(typeid(Rig)), 2);
    QCOMPARE(root.CountOf(typeid(T_Obj)), 3); // the variable is no structure
    QCOMPARE(root.CountOf(typeid(T_Var)), 0);
}

void TestTStruct::theWalksPassEachKindOnce()
{
    T_Struct root;
    void *marks = nullptr;
    T_Var *v1 = root.AddVar(TV_ONGLET, QStringLiteral("v1"), nullptr, TG_TAB);
    auto *tab = new T_Tab(TV_INT, QStringLiteral("t"), &marks);
    root.AddChild(tab);
    T_Struct *s1 = AddNamed(root, "s1");
    T_Var *v2 = root.AddVar(TV_ONGLET, QStringLiteral("v2"), nullptr, TG_TAB);

    root.Rewind();
    QCOMPARE(root.NextVar(), v1);
    QCOMPARE(root.NextVar(), v2);
    QCOMPARE(root.NextVar(), nullptr);
    QCOMPARE(root.NextVar(), nullptr);
    root.Rewind();
    QCOMPARE(root.NextTab(), tab);
    QCOMPARE(root.NextTab(), nullptr);
    root.Rewind();
    QCOMPARE(root.NextOf(typeid(T_Struct)), s1);
    QCOMPARE(root.NextOf(typeid(T_Struct)), nullptr);
    root.Rewind();
    QCOMPARE(root.NextOf(typeid(T_Var)), v1);
    QCOMPARE(root.NextOf(typeid(T_Var)), tab); // by the chain of classes an array is one
    QCOMPARE(root.NextOf(typeid(T_Var)), v2);
    QCOMPARE(root.NextOf(typeid(T_Var)), nullptr);
}

void TestTStruct::aWalkInAWalkDisturbsIt()
{
    T_Struct root;
    T_Var *v1 = root.AddVar(TV_ONGLET, QStringLiteral("v1"), nullptr, TG_TAB);
    root.AddVar(TV_ONGLET, QStringLiteral("v2"), nullptr, TG_TAB);
    root.Rewind();
    QCOMPARE(root.NextVar(), v1);
    while (root.NextVar()) { }
    QCOMPARE(root.NextVar(), nullptr); // v2 went by in the inner walk
}

void TestTStruct::theHooksOfAPlainStructureDoNothingButWarn()
{
    T_Struct root;
    QString field;
    QTest::ignoreMessage(QtWarningMsg, "T_Struct::OnButtonClicked");
    root.OnButtonClicked(&field);
    QCOMPARE(root.GetEditList(&field), QStringList());
}

void TestTStruct::printShowsAlsoWhatIsNotSaved()
{
    const typed::ChildResult child = typed::RunChild(QStringLiteral("--print"));
    QCOMPARE(child.exitCode, 0);
    QVERIFY2(child.out.endsWith("T_Struct [root]\n"
                                "T_VAR [TV_INT] (saved=0)\n"
                                "T_VAR [TV_INT] (not saved=0)\n"
                                "END T_Struct [root]\n"),
        child.out.constData());
}

namespace {

int RunAsChild(const QByteArray &mode)
{
    T_Struct root;
    root.SetName(QStringLiteral("root"));
    int number = 0;
    root.AddInt(&number, QStringLiteral("saved"), TG_DEFAULT);
    root.AddInt(&number, QStringLiteral("not saved"), TG_DEFAULT);
    root.GetVar(QStringLiteral("not saved"), TV_INT)->mFlags = T_FLAG_SHOW;
    if (mode == "--print")
        root.Print();
    if (mode == "--unknown-class") // a name with a placeholder in it stays what it is
        root.AddStruct(QStringLiteral("Wing%2"), QStringLiteral("left %1"));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && qstrncmp(argv[1], "--", 2) == 0)
        return RunAsChild(argv[1]);
    QApplication application(argc, argv);
    TestTStruct tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_tstruct.moc"
