#include "TypedFixtures.h"

#include "T_Types/T_Obj.h"
#include "testing/TestMain.h"

namespace {

class Doc : public T_Struct
{
public:
    bool IsA(const std::type_info &kind) const override
    {
        return kind == typeid(Doc) || T_Struct::IsA(kind);
    }
};

class NamedLikeClass : public T_Struct
{ };

template <typename T>
class Pair : public T_Struct
{ };

class OwnVar : public T_Var
{
public:
    OwnVar() : T_Var(TV_NULL, QString(), nullptr, 0) { }
};

} // namespace

namespace outer {
namespace inner {

class Leaf : public T_Obj
{ };

class Branch : public T_Struct
{ };

} // namespace inner
} // namespace outer

class OuterDoc : public T_Struct
{
public:
    class Inner : public T_Struct
    { };
};

class TestTObj : public QObject
{
    Q_OBJECT

private slots:
    void aNewObjectIsUnattachedWithAllFlagsSet();
    void theNameIsPlainText();
    void theFlagsHaveTheirBits();
    void theKindTestsAreNotAlike_data();
    void theKindTestsAreNotAlike();
    void isAGoesByTheChainOfEachClass();
    void isExactlyIsTheDynamicTypeAlone();
    void getParentClimbsByLevels();
    void theClassNameOfAStructureIsItsOwn();
    void theClassNameOfAnyOtherObjectIsItsOwnToo();
    void theOwnNameIsCutOutOfATypeName_data();
    void theOwnNameIsCutOutOfATypeName();
    void theRootClassWritesAndReadsNothing();
    void printShowsEachKindOfObject();
};

void TestTObj::aNewObjectIsUnattachedWithAllFlagsSet()
{
    const T_Obj object;
    QCOMPARE(object.mNext, nullptr);
    QCOMPARE(object.mParent, nullptr);
    QCOMPARE(object.mFlags, quint8(0xFF));
    QCOMPARE(object.GetName(), QString());
}

void TestTObj::theNameIsPlainText()
{
    T_Obj object;
    object.SetName(QStringLiteral("Pos. X"));
    QCOMPARE(object.GetName(), QStringLiteral("Pos. X"));
    QCOMPARE(object.mName, QStringLiteral("Pos. X"));
}

void TestTObj::theFlagsHaveTheirBits()
{
    QCOMPARE(int(T_FLAG_SAVE), 1);
    QCOMPARE(int(T_FLAG_SHOW), 2);
    QCOMPARE(int(T_FLAG_ENABLE), 4);
}

void TestTObj::theKindTestsAreNotAlike_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<bool>("isStruct");
    QTest::addColumn<bool>("isVar");
    QTest::addColumn<bool>("isTab");
    QTest::newRow("root class") << QStringLiteral("obj") << false << false << false;
    QTest::newRow("variable") << QStringLiteral("var") << false << true << false;
    QTest::newRow("a class derived from it is none")
        << QStringLiteral("own var") << false << false << false;
    QTest::newRow("array: no variable, although it derives from one")
        << QStringLiteral("tab") << false << false << true;
    QTest::newRow("structure") << QStringLiteral("struct") << true << false << false;
    QTest::newRow("a class derived from it is one too")
        << QStringLiteral("doc") << true << false << false;
}

void TestTObj::theKindTestsAreNotAlike()
{
    QFETCH(QString, what);
    QFETCH(bool, isStruct);
    QFETCH(bool, isVar);
    QFETCH(bool, isTab);
    void *array = nullptr;
    const T_Obj obj;
    const T_Var var(TV_NULL, QString(), nullptr, 0);
    const OwnVar ownVar;
    const T_Tab tab(TV_INT, QString(), &array);
    const T_Struct structure;
    const Doc doc;
    const QHash<QString, const T_Obj *> objects
        = { { QStringLiteral("obj"), &obj }, { QStringLiteral("var"), &var },
              { QStringLiteral("own var"), &ownVar }, { QStringLiteral("tab"), &tab },
              { QStringLiteral("struct"), &structure }, { QStringLiteral("doc"), &doc } };

    QCOMPARE(objects[what]->IsStruct(), isStruct);
    QCOMPARE(objects[what]->IsVar(), isVar);
    QCOMPARE(objects[what]->IsTab(), isTab);
}

void TestTObj::isAGoesByTheChainOfEachClass()
{
    void *array = nullptr;
    const T_Tab tab(TV_INT, QString(), &array);
    QVERIFY(tab.IsA(typeid(T_Tab)));
    QVERIFY(tab.IsA(typeid(T_Var)));
    QVERIFY(tab.IsA(typeid(T_Obj)));
    QVERIFY(!tab.IsA(typeid(T_Struct)));

    const T_Var var(TV_NULL, QString(), nullptr, 0);
    QVERIFY(var.IsA(typeid(T_Var)));
    QVERIFY(var.IsA(typeid(T_Obj)));
    QVERIFY(!var.IsA(typeid(T_Tab)));

    const Doc doc;
    QVERIFY(doc.IsA(typeid(Doc)));
    QVERIFY(doc.IsA(typeid(T_Struct)));
    QVERIFY(doc.IsA(typeid(T_Obj)));
    QVERIFY(!doc.IsA(typeid(T_Var)));
    QVERIFY(!T_Struct().IsA(typeid(Doc)));

    const NamedLikeClass withoutOwnChain; // answers as the class above it does
    QVERIFY(!withoutOwnChain.IsA(typeid(NamedLikeClass)));
    QVERIFY(withoutOwnChain.IsA(typeid(T_Struct)));
}

void TestTObj::isExactlyIsTheDynamicTypeAlone()
{
    const Doc doc;
    const T_Obj &object = doc;
    QVERIFY(object.IsExactly(typeid(Doc)));
    QVERIFY(!object.IsExactly(typeid(T_Struct)));
    QVERIFY(!object.IsExactly(typeid(T_Obj)));
}

void TestTObj::getParentClimbsByLevels()
{
    T_Struct root;
    auto *branch = new T_Struct;
    auto *leaf = new T_Struct;
    root.AddChild(branch);
    branch->AddChild(leaf);

    QCOMPARE(leaf->GetParent(0), branch);
    QCOMPARE(leaf->GetParent(-5), branch);
    QCOMPARE(leaf->GetParent(1), &root);
    QCOMPARE(leaf->GetParent(2), nullptr);
    QCOMPARE(leaf->GetParent(1000000), nullptr);
    QCOMPARE(branch->GetParent(1), nullptr); // its parent is a root
    QCOMPARE(root.GetParent(0), nullptr);
    QCOMPARE(root.GetParent(1), nullptr);
}

void TestTObj::theClassNameOfAStructureIsItsOwn()
{
    class Local : public T_Struct
    { };
    QCOMPARE(T_Struct().GetClassName(), QStringLiteral("T_Struct"));
    QCOMPARE(Doc().GetClassName(), QStringLiteral("Doc"));
    QCOMPARE(NamedLikeClass().GetClassName(), QStringLiteral("NamedLikeClass"));
    QCOMPARE(OuterDoc().GetClassName(), QStringLiteral("OuterDoc"));
    QCOMPARE(outer::inner::Branch().GetClassName(), QStringLiteral("Branch"));
    QCOMPARE(OuterDoc::Inner().GetClassName(), QStringLiteral("Inner"));
    QCOMPARE(Local().GetClassName(), QStringLiteral("Local"));
    QCOMPARE(Pair<int>().GetClassName(), QStringLiteral("Pair<int>"));
}

void TestTObj::theClassNameOfAnyOtherObjectIsItsOwnToo()
{
    void *array = nullptr;
    QCOMPARE(T_Obj().GetClassName(), QStringLiteral("T_Obj"));
    QCOMPARE(T_Var(TV_NULL, QString(), nullptr, 0).GetClassName(), QStringLiteral("T_Var"));
    QCOMPARE(T_Tab(TV_INT, QString(), &array).GetClassName(), QStringLiteral("T_Tab"));
    QCOMPARE(OwnVar().GetClassName(), QStringLiteral("OwnVar")); // in a namespace without a name
    QCOMPARE(outer::inner::Leaf().GetClassName(), QStringLiteral("Leaf"));
}

void TestTObj::theOwnNameIsCutOutOfATypeName_data()
{
    QTest::addColumn<QByteArray>("typeName");
    QTest::addColumn<QString>("own");
    const auto row = [](const char *name, const char *typeName, const char *own) {
        QTest::newRow(name) << QByteArray(typeName) << QString::fromLatin1(own);
    };
    row("empty", "", "");

    // As GCC, Clang and MinGW give it.
    row("plain", "3Doc", "Doc");
    row("in two namespaces", "N5outer5inner4LeafE", "Leaf");
    row("in a namespace without a name", "N12_GLOBAL__N_13DocE", "Doc");
    row("in a class", "N8OuterDoc5InnerE", "Inner");
    row("in a function", "Z4mainE5Local", "Local");
    row("a template's arguments keep their scope", "N1a4PairIN1b3DocEiEE", "Pair<b::Doc, int>");

    // As other compilers do, and as the demangler may.
    row("with the word class", "class Doc", "Doc");
    row("with the word class wherever it occurs", "class Pair<class Doc,class Part>",
        "Pair<Doc,Part>");
    row("spelled out, in two namespaces", "a::b::Doc", "Doc");
    row("spelled out, in a namespace without a name", "(anonymous namespace)::Doc", "Doc");
    row("spelled out, in a function", "f(a::Doc const&, int)::Local", "Local");
    row("in an operator whose name is a bracket", "a::operator<(Doc const&)::Local", "Local");
    row("in a lambda", "f()::{lambda(a::Doc)#1}::operator()(a::Doc) const::Local", "Local");
}

void TestTObj::theOwnNameIsCutOutOfATypeName()
{
    QFETCH(QByteArray, typeName);
    QFETCH(QString, own);
    QCOMPARE(T_OwnClassName(typeName.constData()), own);
}

void TestTObj::theRootClassWritesAndReadsNothing()
{
    T_Obj object;
    object.SetName(QStringLiteral("Nothing"));
    QCOMPARE(typed::Written(object), "");
    QCOMPARE(typed::ReadBody(object, "TV_INT\nx\n"), "TV_INT\nx\n");
}

void TestTObj::printShowsEachKindOfObject()
{
    const typed::ChildResult child = typed::RunChild(QStringLiteral("--print"));
    QCOMPARE(child.exitCode, 0);
    QCOMPARE(child.out,
        "NewHook T_Struct\n"
        "T_OBJ\n"
        "Doc [Dashboard]\n"
        "T_VAR [TV_INT] (Pos. X=120)\n"
        "T_VAR [TV_ONGLET] (Layer=120)\n" // a type without a text form shows the text before it
        "T_VAR [TV_NULL] (none=NULL)\n"
        "T_Struct [?]\n"
        "END T_Struct [?]\n"
        "END Doc [Dashboard]\n");
}

namespace {

void PrintEachKind()
{
    T_Obj().Print();
    int posX = 0;
    int *marks = nullptr;
    Doc doc;
    doc.SetName(QStringLiteral("Dashboard"));
    doc.AddInt(&posX, QStringLiteral("Pos. X"), TG_DEFAULT);
    doc.AddVar(TV_ONGLET, QStringLiteral("Layer"), nullptr, TG_TAB);
    doc.AddVar(TV_NULL, QStringLiteral("none"), nullptr, 0);
    doc.AddChild(new T_Tab(TV_INT, QStringLiteral("Marks"), reinterpret_cast<void **>(&marks)));
    doc.AddChild(new T_Struct);
    posX = 120;
    doc.Print();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--print") == 0) {
        PrintEachKind();
        return 0;
    }
    QApplication application(argc, argv);
    TestTObj tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_tobj.moc"
