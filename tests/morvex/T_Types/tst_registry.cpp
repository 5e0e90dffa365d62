#include "TypedFixtures.h"

#include "T_Types/T_Registry.h"
#include "testing/TestMain.h"

#include <algorithm>
#include <memory>

namespace {

class Wing : public T_Struct
{ };

class Tail : public T_Struct
{ };

T_Declare(Wing); // as a class of an application does, before main

T_Obj *NewWing()
{
    return new Wing;
}

T_Obj *NewTail()
{
    return new Tail;
}

int CountOfRecords(const QString &name)
{
    int count = 0;
    for (const NewHook *hook = NewHook::First(); hook; hook = hook->next)
        count += hook->name == name;
    return count;
}

} // namespace

class TestRegistry : public QObject
{
    Q_OBJECT

private slots:
    void aDeclaredClassIsMadeByItsName();
    void anUnknownNameMakesNothing_data();
    void anUnknownNameMakesNothing();
    void eachDeclarationIsNotedOnStandardOutput();
    void theSameClassTwiceUnderTheSameNameWarnsAndHasTwoRecords();
    void twoClassesUnderOneNameWarnAndTheLaterOneIsMade();
    void oneClassUnderTwoNamesWarns();
    void aRecordIsComparedWithEveryEarlierOne();
};

void TestRegistry::aDeclaredClassIsMadeByItsName()
{
    const std::unique_ptr<T_Obj> wing(T_New(QStringLiteral("Wing")));
    QVERIFY(wing);
    QVERIFY(wing->IsExactly(typeid(Wing)));
    const std::unique_ptr<T_Obj> structure(T_New(QStringLiteral("T_Struct")));
    QVERIFY(structure);
    QVERIFY(structure->IsExactly(typeid(T_Struct)));
    QCOMPARE(structure->GetName(), QStringLiteral("?"));
}

void TestRegistry::anUnknownNameMakesNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("not declared") << QStringLiteral("Tail fin");
    QTest::newRow("empty") << QString();
    QTest::newRow("other case") << QStringLiteral("wing");
    QTest::newRow("a beginning") << QStringLiteral("T_Str");
    QTest::newRow("an abstract part of the model") << QStringLiteral("T_Var");
}

void TestRegistry::anUnknownNameMakesNothing()
{
    QFETCH(QString, name);
    QCOMPARE(T_New(name), nullptr);
}

void TestRegistry::eachDeclarationIsNotedOnStandardOutput()
{
    const typed::ChildResult child = typed::RunChild(QStringLiteral("--nothing"));
    QCOMPARE(child.exitCode, 0);
    QList<QByteArray> lines = child.out.split('\n');
    std::sort(lines.begin(), lines.end()); // which file is initialised first is the linker's choice
    QCOMPARE(lines, QList<QByteArray>({ "", "NewHook T_Struct", "NewHook Wing" }));
}

void TestRegistry::theSameClassTwiceUnderTheSameNameWarnsAndHasTwoRecords()
{
    static const NewHook first(NewTail, QStringLiteral("TwiceTheSame"));
    QTest::ignoreMessage(QtWarningMsg, "-WAR- T_Declare deja reference %s \"TwiceTheSame\"");
    static const NewHook second(NewTail, QStringLiteral("TwiceTheSame"));

    QCOMPARE(CountOfRecords(QStringLiteral("TwiceTheSame")), 2);
    QCOMPARE(NewHook::First(), &second);
    QCOMPARE(second.next, &first);
}

void TestRegistry::twoClassesUnderOneNameWarnAndTheLaterOneIsMade()
{
    // A factory of its own for each record here, so that no other record has it.
    static const NewHook first([]() -> T_Obj * { return new Wing; }, QStringLiteral("OneName"));
    QTest::ignoreMessage(QtWarningMsg, "-ERR- Type deja reference par autre atome %s \"OneName\"");
    static const NewHook second([]() -> T_Obj * { return new Tail; }, QStringLiteral("OneName"));

    const std::unique_ptr<T_Obj> made(T_New(QStringLiteral("OneName")));
    QVERIFY(made->IsExactly(typeid(Tail)));
    QCOMPARE(CountOfRecords(QStringLiteral("OneName")), 2);
}

void TestRegistry::oneClassUnderTwoNamesWarns()
{
    static const NewHook first(NewWing, QStringLiteral("FirstName"));
    QTest::ignoreMessage(
        QtWarningMsg, "-ERR- T_Declare reference sous un autre type %s \"SecondName\"");
    static const NewHook second(NewWing, QStringLiteral("SecondName"));

    const std::unique_ptr<T_Obj> made(T_New(QStringLiteral("SecondName")));
    QVERIFY(made->IsExactly(typeid(Wing)));
}

void TestRegistry::aRecordIsComparedWithEveryEarlierOne()
{
    const T_Factory factory = []() -> T_Obj * { return new T_Struct; };
    const T_Factory other = []() -> T_Obj * { return new Tail; };
    static const NewHook a(factory, QStringLiteral("EveryA"));
    QTest::ignoreMessage(
        QtWarningMsg, "-ERR- T_Declare reference sous un autre type %s \"EveryB\"");
    static const NewHook b(factory, QStringLiteral("EveryB"));
    static const NewHook c(other, QStringLiteral("EveryC"));

    // The walk is not stopped by a test that holds: b has the factory, a the factory and the name.
    QTest::ignoreMessage(
        QtWarningMsg, "-ERR- T_Declare reference sous un autre type %s \"EveryA\"");
    QTest::ignoreMessage(QtWarningMsg, "-WAR- T_Declare deja reference %s \"EveryA\"");
    static const NewHook d(factory, QStringLiteral("EveryA"));
    QCOMPARE(CountOfRecords(QStringLiteral("EveryA")), 2);
}

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--nothing") == 0)
        return 0;
    QApplication application(argc, argv);
    TestRegistry tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_registry.moc"
