#include "TypedFixtures.h"

#include "support/vnLog.h"
#include "testing/Platform.h"
#include "testing/TestMain.h"

#include <QPoint>
#include <QTemporaryDir>
#include <QTransform>
#include <QVector2D>
#include <QVector3D>

#include <cfloat>
#include <climits>
#include <clocale>
#include <cstring>

class TestTVarText : public QObject
{
    Q_OBJECT

private slots:
    void aNewVariableTakesItsArgumentsAsTheyCome();
    void aValueHasItsText_data();
    void aValueHasItsText();
    void aTextIsReadBack_data();
    void aTextIsReadBack();
    void onlyTrueInThisCaseIsTrue_data();
    void onlyTrueInThisCaseIsTrue();
    void aBoolIsReadThroughTheVariablesOwnField();
    void aDoubleKeepsAFloatsPrecisionOnly();
    void aLinkedPointKeepsTheSixDecimalsInFull();
    void aLinkedPointsLinkIsLeftAlone();
    void aTransformKeepsItsNonAffineTerms();
    void aTransformHasFloatPrecision();
    void aStringIsCutToItsCapacity();
    void aStringWithoutCapacityStoresNothing();
    void aStringElementIsWrittenByElementsAndReadByBytes();
    void smallNumbersStoreTheirOwnWidth();
    void aTextThatDoesNotFitLeavesTheValue_data();
    void aTextThatDoesNotFitLeavesTheValue();
    void aTextThatFitsInPartIsStoredInPart();
    void theTypesWithoutATextFormKeepTheTextOfTheCallBefore();
    void theTypesWithoutATextFormReadNothing();
    void elementsAreAddressedByTheStrideOfTheType();
    void aTextOf99CharactersFitsAndOneOf100IsEmptyWithTheErrorLine();
    void numbersTooLongForTheBufferAreEmptyWithTheErrorLine();
    void aTextBeyondLatin1IsWrittenWithQuestionMarks();
    void writeGivesThreeLinesAndMarkersNone();
    void readTakesOneLineAndAppliesItWhenAsked();
    void readIntoNoFieldSwallowsTheLine();
    void theDummyVariableSwallowsAnyLine();
    void theFormatHasThePointInALocaleWithACommaToo();
};

namespace {

/// A number to the last bit, since QCOMPARE takes neighbours for equal.
quint64 Bits(double value)
{
    quint64 bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/// One field of each type, with a variable on it.
class AllTypes : public T_Struct
{
public:
    AllTypes()
    {
        AddBool(&on, QStringLiteral("bool"), TG_DEFAULT);
        AddInt(&number, QStringLiteral("int"), TG_DEFAULT);
        AddVar(TV_FLOAT, QStringLiteral("float"), &real, TG_DEFAULT);
        AddVar(TV_STRING, QStringLiteral("string"), text, sizeof text);
        AddButton(&button, QStringLiteral("button"));
        AddVar(TV_COLOR, QStringLiteral("color"), &color, 4);
        AddVar(TV_SHORT, QStringLiteral("short"), &small, TG_DEFAULT);
        AddVar(TV_SXY, QStringLiteral("sxy"), &pair, TG_DEFAULT);
        AddVar(TV_DOUBLE, QStringLiteral("double"), &large, TG_DEFAULT);
        AddVar(TV_CHAR, QStringLiteral("char"), &tiny, TG_DEFAULT);
        AddVar(TV_QPOINT, QStringLiteral("point"), &point, TG_DEFAULT);
        AddVar(TV_QVECTOR2D, QStringLiteral("vector2"), &vector2, TG_DEFAULT);
        AddVar(TV_QVECTOR3D, QStringLiteral("vector3"), &vector3, TG_DEFAULT);
        AddVar(TV_QTRANSFORM, QStringLiteral("transform"), &transform, TG_DEFAULT);
        AddQString(&name, QStringLiteral("qstring"), TG_DEFAULT);
        AddVar(TV_LINKED_POINT, QStringLiteral("linked"), &linked, TG_DEFAULT);
    }

    T_Var *Var(const char *varName) { return GetVar(QString::fromLatin1(varName), TV_NULL); }
    QByteArray Text(const char *varName)
    {
        T_Var *var = Var(varName);
        return var->ValueToText(var->mData, nullptr, 0);
    }
    void SetText(const char *varName, const QByteArray &value)
    {
        T_Var *var = Var(varName);
        var->TextToValue(var->mData, value.constData(), 0);
    }
    /// Gives every field a value that no other field has, none of them zero.
    void Fill()
    {
        on = true;
        number = -123456;
        real = 1.5F;
        qstrncpy(text, "seven77", sizeof text);
        color = 0xFF123456;
        small = -321;
        pair = { -7, 8 };
        large = 2.25;
        tiny = -9;
        point = QPoint(10, -11);
        vector2 = QVector2D(12.5F, -13.5F);
        vector3 = QVector3D(14.5F, 15.5F, -16.5F);
        transform = QTransform(1, 2, 3, 4, 5, 6, 7, 8, 9);
        name = QStringLiteral("walk");
        linked = { 17.5, -18.5, 19 };
    }

    bool on = false;
    int number = 0;
    float real = 0;
    char text[8] = {};
    bool button = true;
    quint32 color = 0;
    qint16 small = 0;
    T_ShortPoint pair = {};
    double large = 0;
    qint8 tiny = 0;
    QPoint point;
    QVector2D vector2;
    QVector3D vector3;
    QTransform transform;
    QString name;
    T_LinkedPoint linked = {};
};

} // namespace

void TestTVarText::aNewVariableTakesItsArgumentsAsTheyCome()
{
    int field = 0;
    const T_Var var(77, QStringLiteral("odd one"), &field, 99);
    QCOMPARE(var.mData, static_cast<void *>(&field));
    QCOMPARE(var.mType, quint32(77));
    QCOMPARE(var.mGadget, quint32(99));
    QCOMPARE(var.mEnumList, nullptr);
    QCOMPARE(var.mStringSize, quint16(0));
    QCOMPARE(var.GetName(), QStringLiteral("odd one"));
}

void TestTVarText::aValueHasItsText_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("bool") << QByteArray("bool") << QByteArray("True");
    QTest::newRow("int") << QByteArray("int") << QByteArray("-123456");
    QTest::newRow("float") << QByteArray("float") << QByteArray("1.500000");
    QTest::newRow("string") << QByteArray("string") << QByteArray("seven77");
    QTest::newRow("colour") << QByteArray("color") << QByteArray("4279383126");
    QTest::newRow("short") << QByteArray("short") << QByteArray("-321");
    QTest::newRow("two shorts") << QByteArray("sxy") << QByteArray("-7 8");
    QTest::newRow("double") << QByteArray("double") << QByteArray("2.250000");
    QTest::newRow("char") << QByteArray("char") << QByteArray("-9");
    QTest::newRow("point") << QByteArray("point") << QByteArray("10 -11");
    QTest::newRow("2 floats") << QByteArray("vector2") << QByteArray("12.500000 -13.500000");
    QTest::newRow("3 floats") << QByteArray("vector3")
                              << QByteArray("14.500000 15.500000 -16.500000");
    QTest::newRow("transform, row by row")
        << QByteArray("transform")
        << QByteArray("1.000000 2.000000 3.000000 4.000000 5.000000 6.000000 7.000000 8.000000 "
                      "9.000000");
    QTest::newRow("text") << QByteArray("qstring") << QByteArray("walk");
    QTest::newRow("linked point") << QByteArray("linked") << QByteArray("17.500000 -18.500000");
}

void TestTVarText::aValueHasItsText()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, text);
    AllTypes all;
    all.Fill();
    QCOMPARE(all.Text(name.constData()), text);
}

void TestTVarText::aTextIsReadBack_data()
{
    aValueHasItsText_data();
}

void TestTVarText::aTextIsReadBack()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, text);
    AllTypes all;
    QVERIFY(all.Text(name.constData()) != text);
    all.SetText(name.constData(), text);
    QCOMPARE(all.Text(name.constData()), text);

    AllTypes expected;
    expected.Fill();
    QCOMPARE(all.Var(name.constData())->GetValue(), expected.Var(name.constData())->GetValue());
}

void TestTVarText::onlyTrueInThisCaseIsTrue_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("value");
    QTest::newRow("True") << QByteArray("True") << true;
    QTest::newRow("true") << QByteArray("true") << false;
    QTest::newRow("TRUE") << QByteArray("TRUE") << false;
    QTest::newRow("a blank behind") << QByteArray("True ") << false;
    QTest::newRow("1") << QByteArray("1") << false;
    QTest::newRow("empty") << QByteArray() << false;
}

void TestTVarText::onlyTrueInThisCaseIsTrue()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, value);
    AllTypes all;
    all.on = !value;
    all.SetText("bool", text);
    QCOMPARE(all.on, value);
}

void TestTVarText::aBoolIsReadThroughTheVariablesOwnField()
{
    bool own[3] = { false, false, false };
    bool other[3] = { false, false, false };
    T_Var var(TV_BOOL, QString(), own, TG_DEFAULT);
    var.TextToValue(other, "True", 2);
    QVERIFY(own[2]);
    QVERIFY(!own[0]);
    QVERIFY(!other[2]);

    T_Var withoutField(TV_BOOL, QString(), nullptr, TG_DEFAULT);
    withoutField.TextToValue(other, "True", 1);
    QVERIFY(!other[1]);
}

void TestTVarText::aDoubleKeepsAFloatsPrecisionOnly()
{
    AllTypes all;
    all.large = 0.1;
    const QByteArray text = all.Text("double");
    QCOMPARE(text, "0.100000");
    all.SetText("double", text);
    QCOMPARE(Bits(all.large), Bits(double(0.1F)));
    QVERIFY(Bits(all.large) != Bits(0.1));
}

void TestTVarText::aLinkedPointKeepsTheSixDecimalsInFull()
{
    AllTypes all;
    all.linked = { 0.1, 0.123456, 0 };
    all.SetText("linked", all.Text("linked"));
    QCOMPARE(Bits(all.linked.x), Bits(0.1));
    QCOMPARE(Bits(all.linked.y), Bits(0.123456));

    all.linked.x = 0.1234567;
    all.SetText("linked", all.Text("linked"));
    QCOMPARE(all.linked.x, 0.123457);
}

void TestTVarText::aLinkedPointsLinkIsLeftAlone()
{
    AllTypes all;
    all.linked = { 1, 2, 0x1122334455667788 };
    all.SetText("linked", "3.000000 4.000000 5.000000");
    QCOMPARE(all.linked.x, 3.0);
    QCOMPARE(all.linked.y, 4.0);
    QCOMPARE(all.linked.link, quint64(0x1122334455667788));
}

void TestTVarText::aTransformKeepsItsNonAffineTerms()
{
    AllTypes all;
    const QTransform projective(0.5, 0.25, 0.125, 2, 3, 0.0625, 25, -3, 4);
    all.transform = projective;
    const QByteArray text = all.Text("transform");
    all.transform.reset();
    all.SetText("transform", text);
    QCOMPARE(all.transform.m13(), 0.125);
    QCOMPARE(all.transform.m23(), 0.062500);
    QCOMPARE(all.transform.m33(), 4.0);
    QVERIFY(all.transform == projective);
    QCOMPARE(all.transform.type(), QTransform::TxProject);
}

void TestTVarText::aTransformHasFloatPrecision()
{
    AllTypes all;
    all.SetText("transform", "0.1 0 0 0 1 0 0 0 1");
    QCOMPARE(Bits(all.transform.m11()), Bits(double(0.1F)));
}

void TestTVarText::aStringIsCutToItsCapacity()
{
    AllTypes all;
    all.SetText("string", "twelve chars");
    QCOMPARE(all.text, "twelve ");
    QCOMPARE(all.text[7], '\0');
    all.SetText("string", "1234567");
    QCOMPARE(all.text, "1234567");
    all.SetText("string", "12345678");
    QCOMPARE(all.text, "1234567");
    all.SetText("string", "");
    QCOMPARE(QByteArray(all.text, sizeof all.text), QByteArray(8, '\0')); // filled up with zeros
}

void TestTVarText::aStringWithoutCapacityStoresNothing()
{
    char text[4] = "abc";
    T_Var var(TV_STRING, QString(), text, TG_DEFAULT);
    var.TextToValue(text, "xyz", 0);
    QCOMPARE(text, "abc");
    QCOMPARE(var.ValueToText(text, nullptr, 0), "");
}

void TestTVarText::aStringElementIsWrittenByElementsAndReadByBytes()
{
    char names[3][4] = { "ab", "cd", "ef" };
    T_Var var(TV_STRING, QString(), names, TG_DEFAULT);
    var.mStringSize = 4;
    QCOMPARE(var.ValueToText(names, nullptr, 2), "ef");

    var.TextToValue(names, "xyz", 1); // byte 1, not element 1
    QCOMPARE(QByteArray(names[0], 12), QByteArray("axyz\0d\0\0ef\0\0", 12));
}

void TestTVarText::smallNumbersStoreTheirOwnWidth()
{
    qint16 shorts[3] = { 1, 2, 3 };
    T_Var asShort(TV_SHORT, QString(), shorts, TG_DEFAULT);
    asShort.TextToValue(shorts, "-5", 1);
    QCOMPARE(QVector<int>({ shorts[0], shorts[1], shorts[2] }), QVector<int>({ 1, -5, 3 }));
    asShort.TextToValue(shorts, "65537", 1); // cut to 16 bits
    QCOMPARE(int(shorts[1]), 1);

    qint8 chars[3] = { 1, 2, 3 };
    T_Var asChar(TV_CHAR, QString(), chars, TG_DEFAULT);
    asChar.TextToValue(chars, "-5", 1);
    QCOMPARE(QVector<int>({ chars[0], chars[1], chars[2] }), QVector<int>({ 1, -5, 3 }));

    T_ShortPoint pairs[3] = { { 1, 2 }, { 3, 4 }, { 5, 6 } };
    T_Var asPair(TV_SXY, QString(), pairs, TG_DEFAULT);
    asPair.TextToValue(pairs, "-7 -8", 1);
    QCOMPARE(QVector<int>({ pairs[0].y, pairs[1].x, pairs[1].y, pairs[2].x }),
        QVector<int>({ 2, -7, -8, 5 }));
}

void TestTVarText::aTextThatDoesNotFitLeavesTheValue_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : { "int", "float", "color", "short", "sxy", "double", "char", "point",
             "vector2", "vector3", "transform", "linked" })
        QTest::newRow(name) << QByteArray(name);
}

void TestTVarText::aTextThatDoesNotFitLeavesTheValue()
{
    QFETCH(QByteArray, name);
    AllTypes all;
    all.Fill();
    const QVariant value = all.Var(name.constData())->GetValue();
    const QByteArray text = all.Text(name.constData());
    for (const char *bad : { "", " ", "x", "-", "True", "\xFF", ",5" })
        all.SetText(name.constData(), bad);
    QCOMPARE(all.Var(name.constData())->GetValue(), value);
    QCOMPARE(all.Text(name.constData()), text);
}

void TestTVarText::aTextThatFitsInPartIsStoredInPart()
{
    AllTypes all;
    all.Fill();
    all.SetText("point", "99");
    QCOMPARE(all.point, QPoint(99, -11));
    all.SetText("sxy", "98 x");
    QCOMPARE(all.Text("sxy"), "98 8");
    all.SetText("vector3", "1 2");
    QCOMPARE(all.vector3, QVector3D(1, 2, -16.5F));
    all.SetText("transform", "10 20");
    QVERIFY(all.transform == QTransform(10, 20, 3, 4, 5, 6, 7, 8, 9));
    all.SetText("linked", "97");
    QCOMPARE(all.Text("linked"), "97.000000 -18.500000");
    all.SetText("int", "96 and more");
    QCOMPARE(all.number, 96);
}

void TestTVarText::theTypesWithoutATextFormKeepTheTextOfTheCallBefore()
{
    AllTypes all;
    all.Fill();
    QCOMPARE(all.Text("int"), "-123456");
    QCOMPARE(all.Text("button"), "-123456");

    T_Var marker(TV_ONGLET, QStringLiteral("tab"), nullptr, TG_TAB);
    QCOMPARE(marker.ValueToText(nullptr, nullptr, 0), "-123456");
    T_Var last(TV_LAST, QString(), &all.number, TG_DEFAULT);
    QCOMPARE(last.ValueToText(&all.number, nullptr, 0), "-123456");
    T_Var beyond(1000, QString(), &all.number, TG_DEFAULT);
    QCOMPARE(beyond.ValueToText(&all.number, nullptr, 0), "-123456");

    T_Var null(TV_NULL, QString(), nullptr, TG_DEFAULT);
    QCOMPARE(null.ValueToText(nullptr, nullptr, 0), "NULL");
    QCOMPARE(all.Text("button"), "NULL");
}

void TestTVarText::theTypesWithoutATextFormReadNothing()
{
    for (const quint32 type : { quint32(TV_NULL), quint32(TV_ONGLET), quint32(TV_BOUTON),
             quint32(TV_LAST), 1000U, 0xFFFFFFFFU }) {
        char field[32];
        std::memset(field, 'f', sizeof field);
        T_Var var(type, QString(), field, TG_DEFAULT);
        var.mStringSize = 8;
        var.TextToValue(field, "True", 0);
        QCOMPARE(QByteArray(field, sizeof field), QByteArray(32, 'f'));
    }
}

void TestTVarText::elementsAreAddressedByTheStrideOfTheType()
{
    double doubles[] = { 1, 2, 3 };
    T_Var asDouble(TV_DOUBLE, QString(), nullptr, TG_DEFAULT);
    asDouble.TextToValue(doubles, "9", 2);
    QCOMPARE(doubles[1], 2.0);
    QCOMPARE(asDouble.ValueToText(doubles, nullptr, 2), "9.000000");

    QTransform transforms[2];
    T_Var asTransform(TV_QTRANSFORM, QString(), nullptr, TG_DEFAULT);
    asTransform.TextToValue(transforms, "1 0 0 0 1 0 5 6 1", 1);
    QVERIFY(transforms[0].isIdentity());
    QCOMPARE(transforms[1].dx(), 5.0);

    QString texts[2];
    T_Var asText(TV_QSTRING, QString(), nullptr, TG_DEFAULT);
    asText.TextToValue(texts, "second", 1);
    QCOMPARE(texts[0], QString());
    QCOMPARE(texts[1], QStringLiteral("second"));
}

void TestTVarText::aTextOf99CharactersFitsAndOneOf100IsEmptyWithTheErrorLine()
{
    AllTypes all;
    vnLog::Instance()->Clear();
    all.name = QString(99, QLatin1Char('x'));
    QCOMPARE(all.Text("qstring"), QByteArray(99, 'x'));
    QCOMPARE(vnLog::Instance()->Text(), "<END>");

    all.name.append(QLatin1Char('y'));
    QCOMPARE(all.Text("qstring"), "");
    QVERIFY(QByteArray(vnLog::Instance()->Text()).contains("-ERR B- line "));
    QVERIFY(QByteArray(vnLog::Instance()->Text()).contains("T_VarText.cpp"));

    char longText[150];
    std::memset(longText, 'z', sizeof longText); // not even terminated
    T_Var string(TV_STRING, QString(), longText, TG_DEFAULT);
    string.mStringSize = sizeof longText;
    QCOMPARE(string.ValueToText(longText, nullptr, 0), "");
    string.mStringSize = 99;
    QCOMPARE(QByteArray(string.ValueToText(longText, nullptr, 0)), QByteArray(99, 'z'));
}

void TestTVarText::numbersTooLongForTheBufferAreEmptyWithTheErrorLine()
{
    AllTypes all;
    vnLog::Instance()->Clear();
    all.large = DBL_MAX; // 309 digits
    QCOMPARE(all.Text("double"), "");
    QVERIFY(QByteArray(vnLog::Instance()->Text()).contains("-ERR B- "));
    all.linked = { -DBL_MAX, -DBL_MAX, 0 };
    QCOMPARE(all.Text("linked"), "");
    all.real = -FLT_MAX; // 39 digits fit
    QCOMPARE(all.Text("float"), "-340282346638528859811704183484516925440.000000");
    all.number = INT_MIN;
    QCOMPARE(all.Text("int"), "-2147483648");
}

void TestTVarText::aTextBeyondLatin1IsWrittenWithQuestionMarks()
{
    AllTypes all;
    all.name = QString::fromUtf8("caf\xC3\xA9 \xE2\x82\xAC");
    QCOMPARE(all.Text("qstring"), "caf\xE9 ?");
    all.SetText("qstring", "caf\xE9");
    QCOMPARE(all.name, QString::fromUtf8("caf\xC3\xA9"));
}

void TestTVarText::writeGivesThreeLinesAndMarkersNone()
{
    int number = 120;
    T_Var var(TV_INT, QStringLiteral("Pos. X"), &number, TG_DEFAULT);
    QCOMPARE(typed::Written(var), "TV_INT\nPos. X\n120\n");
    T_Var button(TV_BOUTON, QStringLiteral("New Col"), &number, TG_DEFAULT);
    QCOMPARE(typed::Written(button), "TV_BOUTON\nNew Col\n120\n");
    T_Var marker(TV_ONGLET, QStringLiteral("Layer"), nullptr, TG_TAB);
    QCOMPARE(typed::Written(marker), "");
    QCOMPARE(typed::Written(*T_DummyVar()), "");

    QCOMPARE(T_WriteStream, nullptr);
    var.Write(); // no stream, nothing happens
}

void TestTVarText::readTakesOneLineAndAppliesItWhenAsked()
{
    int number = 7;
    T_Var var(TV_INT, QStringLiteral("Pos. X"), &number, TG_DEFAULT);
    QCOMPARE(typed::ReadBody(var, "120\nrest\n", /*apply=*/false), "rest\n");
    QCOMPARE(number, 7);
    QCOMPARE(typed::ReadBody(var, "121\nrest\n"), "rest\n");
    QCOMPARE(number, 121);
    QCOMPARE(typed::ReadBody(var, "122"), ""); // the last line needs no newline
    QCOMPARE(number, 122);
    QCOMPARE(typed::ReadBody(var, ""), "");
    QCOMPARE(number, 122);
}

void TestTVarText::readIntoNoFieldSwallowsTheLine()
{
    T_Var var(TV_INT, QStringLiteral("none"), nullptr, TG_DEFAULT);
    QCOMPARE(typed::ReadBody(var, "120\nrest\n"), "rest\n");
}

void TestTVarText::theDummyVariableSwallowsAnyLine()
{
    QCOMPARE(T_DummyVar(), T_DummyVar());
    QCOMPARE(T_DummyVar()->mType, quint32(TV_NULL));
    QCOMPARE(T_DummyVar()->GetName(), QString());
    QCOMPARE(T_DummyVar()->mData, nullptr);
    QCOMPARE(typed::ReadBody(*T_DummyVar(), "anything\nrest\n", /*apply=*/false), "rest\n");
}

void TestTVarText::theFormatHasThePointInALocaleWithACommaToo()
{
    // A user whose country writes a comma saved a dashboard that nobody else could read.
    const typed::ChildResult child = typed::RunChild(QStringLiteral("--locale"));
    QCOMPARE(child.exitCode, 0);
    QCOMPARE(child.out.mid(child.out.indexOf(':')),
        ": the runtime writes 1,5\n"
        "1.500000 -2.500000\n"
        "3.250000 4.750000\n");
}

namespace {

/// The child's part: what a variable writes and reads where the comma is decimal.
void ShowNumbersOfTheLocale()
{
    const QTemporaryDir locales;
    const QString failure = testing::SetCommaLocale(locales.path());
    if (!failure.isEmpty())
        std::printf("%s\n", qPrintable(failure));
    std::printf(": the runtime writes %.1f\n", 1.5);
    T_LinkedPoint point = { 1.5, -2.5, 0 };
    T_Var var(TV_LINKED_POINT, QString(), &point, TG_DEFAULT);
    std::printf("%s\n", var.ValueToText(&point, nullptr, 0));
    var.TextToValue(&point, "3.25 4.75", 0);
    std::printf("%s\n", var.ValueToText(&point, nullptr, 0));
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--locale") == 0) {
        ShowNumbersOfTheLocale();
        return 0;
    }
    QApplication application(argc, argv);
    TestTVarText tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_tvar_text.moc"
