#include "TypedFixtures.h"

#include "testing/TestMain.h"

#include <QColor>
#include <QPointF>
#include <QTransform>
#include <QVector2D>
#include <QVector3D>

class TestTVarVariant : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aValueHasItsVariant();
    void aVariantIsStored();
    void theTypesWithoutAVariantFormGiveAnInvalidOneAndStoreNothing();
    void aColourKeepsItsAlpha();
    void aColourFromSomethingElseIsAnInvalidColoursValue();
    void aFloatGoesThroughADouble();
    void aShortIsCutTo16Bits();
    void aCharIsStoredFromACharacterBelow256_data();
    void aCharIsStoredFromACharacterBelow256();
    void vectorsAndTransformsFallBackToTheirEmptyValue();
    void aBoolByteOtherThanZeroIsTrue();
    void getValueOfAStringIsInvalid();
    void setValueAppliesNoRange();
};

namespace {

/// What a variable of a type reads from a field.
template <typename T>
QVariant Got(quint32 type, T field)
{
    T fields[] = { T(), field };
    const T_Var var(type, QString(), fields, TG_DEFAULT);
    return var.ValueToVariant(fields, 1);
}

/// What a field holds after a variable of a type stored a variant in it.
template <typename T>
T Stored(quint32 type, const QVariant &value, T before = T())
{
    T fields[] = { T(), before };
    T_Var var(type, QString(), fields, TG_DEFAULT);
    var.VariantToValue(value, fields, 1);
    return fields[1];
}

} // namespace

void TestTVarVariant::init()
{
    T_Undo::SetEnabled(false); // tst_tundo looks at the recorder
}

void TestTVarVariant::aValueHasItsVariant()
{
    QCOMPARE(Got(TV_BOOL, true), QVariant(true));
    QCOMPARE(Got(TV_INT, -7), QVariant(-7));
    QCOMPARE(Got(TV_SHORT, qint16(-8)), QVariant(-8));
    QCOMPARE(Got(TV_CHAR, qint8(-9)), QVariant(-9));
    QCOMPARE(Got(TV_FLOAT, 1.5F), QVariant(1.5F));
    QCOMPARE(Got(TV_FLOAT, 1.5F).userType(), int(QMetaType::Float));
    QCOMPARE(Got(TV_DOUBLE, 2.5), QVariant(2.5));
    QCOMPARE(Got(TV_DOUBLE, 2.5).userType(), int(QMetaType::Double));
    QCOMPARE(Got(TV_QPOINT, QPoint(3, 4)), QVariant(QPoint(3, 4)));
    QCOMPARE(Got(TV_QVECTOR2D, QVector2D(5, 6)), QVariant(QVector2D(5, 6)));
    QCOMPARE(Got(TV_QVECTOR3D, QVector3D(7, 8, 9)), QVariant(QVector3D(7, 8, 9)));
    const QTransform transform(1, 2, 3, 4, 5, 6, 7, 8, 9);
    QCOMPARE(Got(TV_QTRANSFORM, transform), QVariant(transform));
    QCOMPARE(Got(TV_QSTRING, QStringLiteral("walk")), QVariant(QStringLiteral("walk")));
    QCOMPARE(Got(TV_LINKED_POINT, T_LinkedPoint{ 0.5, -1.5, 9 }), QVariant(QPointF(0.5, -1.5)));
    QCOMPARE(Got(TV_COLOR, quint32(0xFF102030)), QVariant(QColor(0x10, 0x20, 0x30)));
}

void TestTVarVariant::aVariantIsStored()
{
    QCOMPARE(Stored<bool>(TV_BOOL, true), true);
    QCOMPARE(Stored<int>(TV_INT, -7), -7);
    QCOMPARE(Stored<int>(TV_INT, QStringLiteral("12")), 12);
    QCOMPARE(Stored<double>(TV_DOUBLE, 2.5), 2.5);
    QCOMPARE(Stored<QPoint>(TV_QPOINT, QPoint(3, 4)), QPoint(3, 4));
    QCOMPARE(Stored<QVector2D>(TV_QVECTOR2D, QVector2D(5, 6)), QVector2D(5, 6));
    QCOMPARE(Stored<QVector3D>(TV_QVECTOR3D, QVector3D(7, 8, 9)), QVector3D(7, 8, 9));
    const QTransform transform(1, 2, 3, 4, 5, 6, 7, 8, 9);
    QVERIFY(Stored<QTransform>(TV_QTRANSFORM, transform) == transform);
    QCOMPARE(Stored<QString>(TV_QSTRING, QStringLiteral("walk")), QStringLiteral("walk"));
    const T_LinkedPoint point
        = Stored<T_LinkedPoint>(TV_LINKED_POINT, QPointF(0.5, -1.5), T_LinkedPoint{ 1, 2, 77 });
    QCOMPARE(point.x, 0.5);
    QCOMPARE(point.y, -1.5);
    QCOMPARE(point.link, quint64(77));
}

void TestTVarVariant::theTypesWithoutAVariantFormGiveAnInvalidOneAndStoreNothing()
{
    for (const quint32 type : { quint32(TV_NULL), quint32(TV_ONGLET), quint32(TV_STRING),
             quint32(TV_BOUTON), quint32(TV_SXY), quint32(TV_LAST), 1000U }) {
        QVERIFY(!Got(type, qint64(5)).isValid());
        QCOMPARE(Stored<qint64>(type, 1, 0x5555555555555555), qint64(0x5555555555555555));
    }
}

void TestTVarVariant::aColourKeepsItsAlpha()
{
    const QVariant half = Got(TV_COLOR, quint32(0x80102030));
    QCOMPARE(half.userType(), int(QMetaType::QColor));
    QCOMPARE(half.value<QColor>().alpha(), 0x80);
    QCOMPARE(Stored<quint32>(TV_COLOR, half), quint32(0x80102030));
}

void TestTVarVariant::aColourFromSomethingElseIsAnInvalidColoursValue()
{
    QCOMPARE(Stored<quint32>(TV_COLOR, QPoint(1, 2), 5), QColor().rgba());
    QCOMPARE(Stored<quint32>(TV_COLOR, QStringLiteral("#102030")), quint32(0xFF102030));
}

void TestTVarVariant::aFloatGoesThroughADouble()
{
    QCOMPARE(Stored<float>(TV_FLOAT, 1.25), 1.25F);
    QCOMPARE(Stored<float>(TV_FLOAT, QStringLiteral("0.1")), 0.1F);
}

void TestTVarVariant::aShortIsCutTo16Bits()
{
    QCOMPARE(Stored<qint16>(TV_SHORT, -5), qint16(-5));
    QCOMPARE(Stored<qint16>(TV_SHORT, 65537), qint16(1));
    QCOMPARE(Stored<qint16>(TV_SHORT, 40000), qint16(-25536));
}

void TestTVarVariant::aCharIsStoredFromACharacterBelow256_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("stored");
    QTest::newRow("a character") << QVariant(QChar(0x41)) << 0x41;
    QTest::newRow("a number is a character's code") << QVariant(65) << 65;
    QTest::newRow("255, the last that fits") << QVariant(255) << -1;
    QTest::newRow("256") << QVariant(256) << 0;
    QTest::newRow("a negative number, as it is given out, is none that fits") << QVariant(-5) << 0;
    QTest::newRow("a character beyond") << QVariant(QChar(0x20AC)) << 0;
    QTest::newRow("no character at all") << QVariant() << 0;
}

void TestTVarVariant::aCharIsStoredFromACharacterBelow256()
{
    QFETCH(QVariant, value);
    QFETCH(int, stored);
    QCOMPARE(int(Stored<qint8>(TV_CHAR, value, 99)), stored);
}

void TestTVarVariant::vectorsAndTransformsFallBackToTheirEmptyValue()
{
    QCOMPARE(Stored<QVector2D>(TV_QVECTOR2D, QVariant(), QVector2D(1, 2)), QVector2D());
    QCOMPARE(Stored<QVector3D>(TV_QVECTOR3D, 5, QVector3D(1, 2, 3)), QVector3D());
    QVERIFY(Stored<QTransform>(TV_QTRANSFORM, QStringLiteral("x"), QTransform::fromScale(2, 3))
        == QTransform());
    QCOMPARE(Stored<int>(TV_INT, QVariant(), 5), 0);
    QCOMPARE(Stored<QString>(TV_QSTRING, QVariant(), QStringLiteral("old")), QString());
}

void TestTVarVariant::aBoolByteOtherThanZeroIsTrue()
{
    QCOMPARE(Got(TV_BOOL, quint8(2)), QVariant(true));
    QCOMPARE(Got(TV_BOOL, quint8(0)), QVariant(false));
    QCOMPARE(Stored<quint8>(TV_BOOL, 7), quint8(1));
}

void TestTVarVariant::getValueOfAStringIsInvalid()
{
    char text[8] = "abc";
    T_Struct owner;
    T_Var *var = owner.AddVar(TV_STRING, QStringLiteral("text"), text, sizeof text);
    QVERIFY(!var->GetValue().isValid());
    var->SetValue(QStringLiteral("xyz"));
    QCOMPARE(text, "abc");
}

void TestTVarVariant::setValueAppliesNoRange()
{
    int number = 0;
    T_Var var(TV_INT, QString(), &number, 1); // 2 to 56, for the editor to apply
    var.SetValue(1000000);
    QCOMPARE(number, 1000000);
}

VN_TEST_MAIN(TestTVarVariant)

#include "tst_tvar_variant.moc"
