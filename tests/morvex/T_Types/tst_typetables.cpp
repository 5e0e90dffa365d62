#include "TypedFixtures.h"

#include "T_Types/T_TypeTables.h"
#include "testing/TestMain.h"

#include <algorithm>

class TestTypeTables : public QObject
{
    Q_OBJECT

private slots:
    void eachTypeStandsAtItsCode_data();
    void eachTypeStandsAtItsCode();
    void theTypeTableEndsWithLast();
    void eachGadgetStandsAtItsRow_data();
    void eachGadgetStandsAtItsRow();
    void aGadgetRowWithBounds0AndMinus1HasNoRange();
    void aTextThatIsNoTagIsTypeNull_data();
    void aTextThatIsNoTagIsTypeNull();
    void aCodeBeyondTheTableHasTheLastTag();
    void theTablesOfTheProgramAreInOrder();
    void aTableOutOfOrderEndsTheProgram_data();
    void aTableOutOfOrderEndsTheProgram();
};

void TestTypeTables::eachTypeStandsAtItsCode_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("tag");
    QTest::addColumn<QByteArray>("displayName");
    QTest::newRow("null") << 0 << QByteArray("TV_NULL") << QByteArray("null");
    QTest::newRow("marker") << 1 << QByteArray("TV_ONGLET") << QByteArray("onglet");
    QTest::newRow("bool") << 2 << QByteArray("TV_BOOL") << QByteArray("bool");
    QTest::newRow("int") << 3 << QByteArray("TV_INT") << QByteArray("int");
    QTest::newRow("float") << 4 << QByteArray("TV_FLOAT") << QByteArray("float");
    QTest::newRow("string") << 5 << QByteArray("TV_STRING") << QByteArray("string");
    QTest::newRow("button") << 6 << QByteArray("TV_BOUTON") << QByteArray("bouton");
    QTest::newRow("colour") << 7 << QByteArray("TV_COLOR") << QByteArray("couleur");
    QTest::newRow("short") << 8 << QByteArray("TV_SHORT") << QByteArray("short");
    QTest::newRow("two shorts") << 9 << QByteArray("TV_SXY") << QByteArray("pointXY");
    QTest::newRow("double") << 10 << QByteArray("TV_DOUBLE") << QByteArray("double");
    QTest::newRow("char") << 11 << QByteArray("TV_CHAR") << QByteArray("char");
    QTest::newRow("point") << 12 << QByteArray("TV_QPOINT") << QByteArray("QPoint");
    QTest::newRow("2 floats") << 13 << QByteArray("TV_QVECTOR2D") << QByteArray("QVector2D");
    QTest::newRow("3 floats") << 14 << QByteArray("TV_QVECTOR3D") << QByteArray("QVector3D");
    QTest::newRow("transform") << 15 << QByteArray("TV_QTRANSFORM") << QByteArray("QTransform");
    QTest::newRow("text") << 16 << QByteArray("TV_QSTRING") << QByteArray("QString");
    QTest::newRow("linked point") << 17 << QByteArray("TV_LINKED_POINT")
                                  << QByteArray("LinkedPoint");
}

void TestTypeTables::eachTypeStandsAtItsCode()
{
    QFETCH(int, code);
    QFETCH(QByteArray, tag);
    QFETCH(QByteArray, displayName);

    const T_VarTypeRow &row = T_VarTypeTable[code];
    QCOMPARE(row.code, quint32(code));
    QCOMPARE(QByteArray(row.tag), tag);
    QCOMPARE(QByteArray(row.displayName), displayName);
    QCOMPARE(T_TypeFromTag(tag.constData()), quint32(code));
    QCOMPARE(QByteArray(T_TagFromType(quint32(code))), tag);
}

void TestTypeTables::theTypeTableEndsWithLast()
{
    QCOMPARE(kVarTypeRows, quint32(19));
    QCOMPARE(T_VarTypeTable[TV_LAST].code, quint32(18));
    QCOMPARE(T_VarTypeTable[TV_LAST].tag, "TV_LAST");
    QCOMPARE(T_VarTypeTable[TV_LAST].displayName, "last");
}

void TestTypeTables::eachGadgetStandsAtItsRow_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("lower");
    QTest::addColumn<int>("upper");
    QTest::newRow("default") << int(TG_DEFAULT) << -100000 << 100000;
    QTest::newRow("1") << 1 << 2 << 56;
    QTest::newRow("2") << 2 << 0 << 100;
    QTest::newRow("3") << 3 << 0 << 100;
    QTest::newRow("4: no range") << 4 << 0 << -1;
    QTest::newRow("5: no range") << 5 << 0 << -1;
    QTest::newRow("slider") << int(TG_SLIDER) << 0 << 100;
    QTest::newRow("combo") << int(TG_COMBO) << 0 << 100;
    QTest::newRow("tab") << int(TG_TAB) << 0 << 100;
    QTest::newRow("group") << int(TG_GROUP) << 0 << 100;
    QTest::newRow("column") << int(TG_COLUMN) << 0 << 100;
    QTest::newRow("editable combo") << int(TG_EDITCOMBO) << 0 << 100;
    QTest::newRow("12") << 12 << 0 << 100;
}

void TestTypeTables::eachGadgetStandsAtItsRow()
{
    QFETCH(int, row);
    QFETCH(int, lower);
    QFETCH(int, upper);

    const T_GadgetRow &gadget = T_GadgetTable[row];
    QCOMPARE(gadget.row, quint32(row));
    QCOMPARE(gadget.lower, lower);
    QCOMPARE(gadget.upper, upper);
    QCOMPARE(gadget.word, quint32(0));
    QCOMPARE(gadget.factorA, 1.0F);
    QCOMPARE(gadget.factorB, 1.0F);
}

void TestTypeTables::aGadgetRowWithBounds0AndMinus1HasNoRange()
{
    QVector<quint32> withoutRange;
    for (const T_GadgetRow &gadget : T_GadgetTable) {
        if (gadget.lower >= gadget.upper)
            withoutRange << gadget.row;
    }
    QCOMPARE(withoutRange, QVector<quint32>({ 4, 5 }));
}

void TestTypeTables::aTextThatIsNoTagIsTypeNull_data()
{
    QTest::addColumn<QByteArray>("tag");
    QTest::newRow("the end mark is no type") << QByteArray("TV_LAST");
    QTest::newRow("lower case") << QByteArray("TV_int");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("prefix alone") << QByteArray("TV_");
    QTest::newRow("a tag's beginning") << QByteArray("TV_QVECTOR");
    QTest::newRow("a tag and more") << QByteArray("TV_INT ");
    QTest::newRow("an array's tag") << QByteArray("TT_INT");
}

void TestTypeTables::aTextThatIsNoTagIsTypeNull()
{
    QFETCH(QByteArray, tag);
    QCOMPARE(T_TypeFromTag(tag.constData()), quint32(TV_NULL));
}

void TestTypeTables::aCodeBeyondTheTableHasTheLastTag()
{
    QCOMPARE(T_TagFromType(TV_LAST), "TV_LAST");
    QCOMPARE(T_TagFromType(19), "TV_LAST");
    QCOMPARE(T_TagFromType(0xFFFFFFFF), "TV_LAST");
}

void TestTypeTables::theTablesOfTheProgramAreInOrder()
{
    T_VerifTables(T_VarTypeTable, T_GadgetTable); // would end the program
    T_VerifEnum();
    T_VerifEnum();
    const typed::ChildResult child = typed::RunChild(QStringLiteral("--in-order"));
    QCOMPARE(child.exitCode, 0);
    QCOMPARE(child.err, "");
}

void TestTypeTables::aTableOutOfOrderEndsTheProgram_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QByteArray>("text");
    const QByteArray types = "\n-ERR- T_VerifEnum:coherence TV\n\n";
    const QByteArray gadgets = "\n-ERR- T_VerifEnum:coherence TG\n\n";
    QTest::newRow("two types swapped") << QStringLiteral("--swap-types") << types;
    QTest::newRow("the last row of the types") << QStringLiteral("--break-last-type") << types;
    QTest::newRow("two gadgets swapped") << QStringLiteral("--swap-gadgets") << gadgets;
    QTest::newRow("the last row of the gadgets")
        << QStringLiteral("--break-last-gadget") << gadgets;
    QTest::newRow("both: the types come first") << QStringLiteral("--swap-both") << types;
}

void TestTypeTables::aTableOutOfOrderEndsTheProgram()
{
    QFETCH(QString, mode);
    QFETCH(QByteArray, text);
    const typed::ChildResult child = typed::RunChild(mode);
    QCOMPARE(child.exitCode, 1);
    QCOMPARE(child.err, text);
}

namespace {

/// The child's part: checks tables that are broken as the mode says. Status 0 when they pass.
int VerifyBrokenTables(const QByteArray &mode)
{
    T_VarTypeRow types[kVarTypeRows];
    T_GadgetRow gadgets[kGadgetRows];
    std::copy(std::begin(T_VarTypeTable), std::end(T_VarTypeTable), types);
    std::copy(std::begin(T_GadgetTable), std::end(T_GadgetTable), gadgets);
    if (mode == "--swap-types" || mode == "--swap-both")
        std::swap(types[TV_INT], types[TV_FLOAT]);
    if (mode == "--swap-gadgets" || mode == "--swap-both")
        std::swap(gadgets[2], gadgets[3]);
    if (mode == "--break-last-type")
        types[TV_LAST].code = 17;
    if (mode == "--break-last-gadget")
        gadgets[12].row = 0;
    T_VerifTables(types, gadgets);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && qstrncmp(argv[1], "--", 2) == 0)
        return VerifyBrokenTables(argv[1]);
    QApplication application(argc, argv);
    TestTypeTables tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_typetables.moc"
