#include "EditorFixture.h"
#include "testing/TestMain.h"

#include <QLineEdit>
#include <QSpinBox>
#include <QVector2D>
#include <QVector3D>

#include <limits>

namespace {

/// A field of each type, one at a time, that is no default.
struct AnyField
{
    void *For(quint32 type)
    {
        switch (type) {
        case TV_BOOL:
            return &flag;
        case TV_FLOAT:
            return &narrow;
        case TV_DOUBLE:
            return &wide;
        case TV_QSTRING:
            return &text;
        case TV_QVECTOR2D:
            return &two;
        case TV_QVECTOR3D:
            return &three;
        default:
            return &whole;
        }
    }
    void Change()
    {
        flag = false;
        whole = 0;
        narrow = 0.25f;
        wide = -7.5;
        text = QStringLiteral("run");
        two = QVector2D(2, 3);
        three = QVector3D(4, 5, 7);
    }

    bool flag = true;
    int whole = 1;
    float narrow = 0.125f;
    double wide = 7.5;
    QString text = QStringLiteral("walk");
    QVector2D two{ 1.5f, 20000.0f };
    QVector3D three{ 4, 5, 6 };
};

} // namespace

/// What an editor does apart from its input: stores by number and by variant, types without an
/// input, and the rule that showing what is shown already asks for nothing.
class TestQtEditStores : public QObject
{
    Q_OBJECT

private slots:
    void aTypeWithoutInputShowsItsNameAlone_data();
    void aTypeWithoutInputShowsItsNameAlone();
    void aVariableWithoutDataIsShownEmptyAndStoresNothing_data();
    void aVariableWithoutDataIsShownEmptyAndStoresNothing();
    void setDoubleStoresByType();
    void setDoubleHoldsToTheRangeBoundsIncluded();
    void setDoubleTakesNumbersBeyondTheType();
    void setVariantConvertsAndAppliesNoRange();
    void anEqualStoreIsNotRecorded();
    void enablingReachesEveryWidgetOfTheRow();
    void nothingNewAsksForNoRepaint_data();
    void nothingNewAsksForNoRepaint();
};

void TestQtEditStores::aTypeWithoutInputShowsItsNameAlone_data()
{
    QTest::addColumn<quint32>("type");
    QTest::newRow("TV_STRING") << quint32(TV_STRING);
    QTest::newRow("TV_SHORT") << quint32(TV_SHORT);
    QTest::newRow("TV_SXY") << quint32(TV_SXY);
    QTest::newRow("TV_CHAR") << quint32(TV_CHAR);
    QTest::newRow("TV_QPOINT") << quint32(TV_QPOINT);
    QTest::newRow("TV_LINKED_POINT") << quint32(TV_LINKED_POINT);
}

void TestQtEditStores::aTypeWithoutInputShowsItsNameAlone()
{
    QFETCH(quint32, type);
    qint64 field[3] = { 11, 22, 33 };
    EditorFixture fixture(type, field, type == TV_STRING ? sizeof field : 0);
    QCOMPARE(fixture.edit->findChildren<QWidget *>().size(), 1);
    QCOMPARE(fixture.Input<MyLabel>()->text(), QStringLiteral("Name"));
    fixture.edit->SetDouble(5);
    fixture.edit->SetVariant(5);
    QCOMPARE(fixture.edit->GetDouble(), 0.0);
    QCOMPARE(fixture.edit->GetVariant(), QVariant(0));
    QCOMPARE(field[0], qint64(11));
    QCOMPARE(field[1], qint64(22));
    QCOMPARE(field[2], qint64(33));
}

void TestQtEditStores::aVariableWithoutDataIsShownEmptyAndStoresNothing_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<uint>("gadget");
    QTest::newRow("bool") << quint32(TV_BOOL) << uint(TG_DEFAULT);
    QTest::newRow("int") << quint32(TV_INT) << uint(TG_DEFAULT);
    QTest::newRow("slider") << quint32(TV_INT) << uint(TG_SLIDER);
    QTest::newRow("combo") << quint32(TV_INT) << uint(TG_COMBO);
    QTest::newRow("double") << quint32(TV_DOUBLE) << uint(TG_DEFAULT);
    QTest::newRow("text") << quint32(TV_QSTRING) << uint(TG_DEFAULT);
    QTest::newRow("editable combo") << quint32(TV_QSTRING) << uint(TG_EDITCOMBO);
    QTest::newRow("vector") << quint32(TV_QVECTOR2D) << uint(TG_DEFAULT);
}

void TestQtEditStores::aVariableWithoutDataIsShownEmptyAndStoresNothing()
{
    QFETCH(quint32, type);
    QFETCH(uint, gadget);
    EditorFixture fixture(type, nullptr, gadget);
    fixture.edit->ValToIhm();
    fixture.edit->SlotSetValue();
    fixture.edit->SetVariant(3);
    QCOMPARE(fixture.edit->GetDouble(), 0.0);
    QCOMPARE(fixture.edit->GetVariant(), QVariant(0));
}

void TestQtEditStores::setDoubleStoresByType()
{
    float narrow = 0;
    EditorFixture(TV_FLOAT, &narrow).edit->SetDouble(1.999);
    QCOMPARE(narrow, 1.999f);
    int whole = 0;
    EditorFixture(TV_INT, &whole).edit->SetDouble(1.999);
    QCOMPARE(whole, 1);
    EditorFixture(TV_INT, &whole).edit->SetDouble(-7.8);
    QCOMPARE(whole, -7);
    double wide = 0;
    EditorFixture(TV_DOUBLE, &wide).edit->SetDouble(0.1);
    QCOMPARE(wide, 0.1);
    bool flag = false;
    EditorFixture(TV_BOOL, &flag).edit->SetDouble(-0.5);
    QCOMPARE(flag, true);
    quint32 color = 0;
    EditorFixture(TV_COLOR, &color, /*gadget=*/4).edit->SetDouble(4294967295.0);
    QCOMPARE(color, 0xFFFFFFFFu);
}

void TestQtEditStores::setDoubleHoldsToTheRangeBoundsIncluded()
{
    int field = 30;
    EditorFixture fixture(TV_INT, &field, /*gadget=*/1);
    fixture.edit->SetDouble(57);
    QCOMPARE(field, 56);
    fixture.edit->SetDouble(1);
    QCOMPARE(field, 2);
    fixture.edit->SetDouble(56);
    QCOMPARE(field, 56);
    QCOMPARE(fixture.TakeSignals(), 0); // storing by itself tells nobody
}

void TestQtEditStores::setDoubleTakesNumbersBeyondTheType()
{
    int whole = 0;
    EditorFixture fixture(TV_INT, &whole, /*gadget=*/4);
    fixture.edit->SetDouble(1e300);
    QCOMPARE(whole, std::numeric_limits<int>::max());
    fixture.edit->SetDouble(-1e300);
    QCOMPARE(whole, std::numeric_limits<int>::min());
    quint32 color = 5;
    EditorFixture second(TV_COLOR, &color, /*gadget=*/5);
    second.edit->SetDouble(-3);
    QCOMPARE(color, 0u);
    second.edit->SetDouble(1e18);
    QCOMPARE(color, 0xFFFFFFFFu);
}

void TestQtEditStores::setVariantConvertsAndAppliesNoRange()
{
    int whole = 3;
    EditorFixture(TV_INT, &whole, /*gadget=*/1).edit->SetVariant(QStringLiteral("900"));
    QCOMPARE(whole, 900);
    EditorFixture(TV_INT, &whole, /*gadget=*/4).edit->SetVariant(QStringLiteral("no number"));
    QCOMPARE(whole, 0);
    bool flag = false;
    EditorFixture(TV_BOOL, &flag).edit->SetVariant(true);
    QCOMPARE(flag, true);
    float narrow = 0;
    EditorFixture(TV_FLOAT, &narrow).edit->SetVariant(2.5);
    QCOMPARE(narrow, 2.5f);
    double wide = 0;
    EditorFixture(TV_DOUBLE, &wide).edit->SetVariant(2.25f);
    QCOMPARE(wide, 2.25);
    quint32 color = 7;
    EditorFixture fixture(TV_COLOR, &color, /*gadget=*/4);
    QCOMPARE(fixture.edit->GetVariant(), QVariant(7u)); // a number here, no QColor
    fixture.edit->SetVariant(0x80402010u);
    QCOMPARE(color, 0x80402010u);
    QString text = QStringLiteral("a");
    EditorFixture second(
        TV_QSTRING, &text); // kept open: a line edit that goes stores what it shows
    second.edit->SetVariant(12);
    QCOMPARE(text, QStringLiteral("12"));
}

void TestQtEditStores::anEqualStoreIsNotRecorded()
{
    QString text = QStringLiteral("walk");
    EditorFixture fixture(TV_QSTRING, &text);
    T_Undo *undo = T_Undo::Instance();
    const int before = undo->mRecords.size();
    undo->mEnabled = true;
    fixture.edit->SetVariant(QStringLiteral("walk"));
    QCOMPARE(undo->mRecords.size(), before);
    fixture.Type(fixture.Input<QLineEdit>(), "run");
    QTest::keyClick(fixture.Input<QLineEdit>(), Qt::Key_Return);
    QCOMPARE(undo->mRecords.size(), before + 1);
    QCOMPARE(undo->mRecords.last()->mValue, QVariant(QStringLiteral("walk"))); // the older value

    int whole = 5;
    EditorFixture second(TV_INT, &whole);
    undo->mEnabled = true;
    second.edit->SetDouble(5);
    QCOMPARE(undo->mRecords.size(), before + 1);
    second.edit->SetDouble(6);
    QCOMPARE(undo->mRecords.size(), before + 2);
    QCOMPARE(undo->mRecords.last()->mValue, QVariant(5));
    undo->mEnabled = false;
}

void TestQtEditStores::enablingReachesEveryWidgetOfTheRow()
{
    int field = 0;
    EditorFixture fixture(TV_INT, &field);
    fixture.edit->SetEditEnabled(false);
    QVERIFY(!fixture.Input<QSpinBox>()->isEnabled());
    QVERIFY(!fixture.Input<MyLabel>()->isEnabled());
    QVERIFY(fixture.edit->isEnabled());
    fixture.edit->SetEditEnabled(true);
    QVERIFY(fixture.Input<QSpinBox>()->isEnabled());
    QVERIFY(fixture.Input<MyLabel>()->isEnabled());
}

void TestQtEditStores::nothingNewAsksForNoRepaint_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<uint>("gadget");
    QTest::addColumn<bool>("shows"); // a new value is seen
    const auto row = [](const char *name, quint32 type, uint gadget, bool shows) {
        QTest::newRow(name) << type << gadget << shows;
    };
    row("bool", TV_BOOL, TG_DEFAULT, true);
    row("int", TV_INT, TG_DEFAULT, true);
    row("int without a range", TV_INT, 4, false); // its box stands at -1 whatever the field holds
    row("slider", TV_INT, TG_SLIDER, true);
    row("combo", TV_INT, TG_COMBO, true);
    row("float", TV_FLOAT, TG_DEFAULT, true);
    row("double", TV_DOUBLE, TG_DEFAULT, true);
    row("double without a range", TV_DOUBLE, 4, false);
    row("button", TV_BOUTON, TG_DEFAULT, false);
    row("colour", TV_COLOR, 4, false);
    row("text", TV_QSTRING, TG_DEFAULT, true);
    row("editable combo", TV_QSTRING, TG_EDITCOMBO, true);
    row("vector of two", TV_QVECTOR2D, TG_DEFAULT, true);
    row("vector of three", TV_QVECTOR3D, TG_DEFAULT, true);
}

void TestQtEditStores::nothingNewAsksForNoRepaint()
{
    QFETCH(quint32, type);
    QFETCH(uint, gadget);
    AnyField field;
    QStringList items{ QStringLiteral("png"), QStringLiteral("tga") };
    EditorFixture fixture(type, field.For(type), gadget, &items);
    QVERIFY(fixture.shown);
    RepaintCounter repaints;
    fixture.edit->ValToIhm();
    QCOMPARE(repaints.Take(), 0);
    QCOMPARE(fixture.TakeSignals(), 0);
    field.Change();
    fixture.edit->ValToIhm();
    QTEST(repaints.Take() > 0, "shows");
}

VN_TEST_MAIN(TestQtEditStores)

#include "tst_qtedit_stores.moc"
