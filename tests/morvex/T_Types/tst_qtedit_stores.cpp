#include "EditorFixture.h"
#include "testing/TestMain.h"

#include <QLineEdit>
#include <QSpinBox>

#include <limits>

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
    void anEntryOf1point999StaysInAFloatAndIs1InAnInt();
    void setDoubleHoldsToTheRangeBoundsIncluded_data();
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
    QTest::newRow("TV_NULL") << quint32(TV_NULL);
    QTest::newRow("TV_ONGLET") << quint32(TV_ONGLET);
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
    EditorFixture(TV_FLOAT, &narrow).edit->SetDouble(-2.25);
    QCOMPARE(narrow, -2.25f);
    int whole = 0;
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

void TestQtEditStores::anEntryOf1point999StaysInAFloatAndIs1InAnInt()
{
    float narrow = 0;
    EditorFixture(TV_FLOAT, &narrow).edit->SetDouble(1.999);
    QCOMPARE(narrow, 1.999f);
    int whole = 0;
    EditorFixture(TV_INT, &whole).edit->SetDouble(1.999);
    QCOMPARE(whole, 1);
}

void TestQtEditStores::setDoubleHoldsToTheRangeBoundsIncluded_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<uint>("gadget");
    QTest::addColumn<double>("given");
    QTest::addColumn<double>("stored");
    const auto row = [](const char *name, quint32 type, uint gadget, double given, double stored) {
        QTest::newRow(name) << type << gadget << given << stored;
    };
    row("an int above", TV_INT, 1, 57, 56);
    row("an int below", TV_INT, 1, 1, 2);
    row("an int at the bound", TV_INT, 1, 56, 56);
    row("a slider's int", TV_INT, TG_SLIDER, 101, 100);
    row("a combo's int", TV_INT, TG_COMBO, -3, 0);
    row("an int without a range", TV_INT, 5, 1000000, 1000000);
    row("a float above", TV_FLOAT, 1, 56.5, 56);
    row("a float below", TV_FLOAT, TG_DEFAULT, -1e6, -100000);
    row("a float inside", TV_FLOAT, 1, 55.5, 55.5);
    row("a double above", TV_DOUBLE, 12, 100.25, 100);
    row("a double at the bound", TV_DOUBLE, 1, 2, 2);
    row("a double without a range", TV_DOUBLE, 4, -3000000.25, -3000000.25);
    row("a colour above", TV_COLOR, 3, 4278190080.0, 100);
    row("a colour without a range", TV_COLOR, 4, 4278190080.0, 4278190080.0);
    row("a bool, whose 1 is below 2 and whose 2 is true", TV_BOOL, 1, 1, 1);
}

void TestQtEditStores::setDoubleHoldsToTheRangeBoundsIncluded()
{
    QFETCH(quint32, type);
    QFETCH(uint, gadget);
    QFETCH(double, given);
    double bytes = 0; // the zero of every type
    EditorFixture fixture(type, &bytes, gadget);
    fixture.edit->SetDouble(given);
    QTEST(fixture.edit->GetDouble(), "stored");
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
    testing::RepaintCounter repaints;
    fixture.edit->ValToIhm();
    QCOMPARE(repaints.Take(), 0);
    QCOMPARE(fixture.TakeSignals(), 0);
    field.Change();
    fixture.edit->ValToIhm();
    QTEST(repaints.Take() > 0, "shows");
}

VN_TEST_MAIN(TestQtEditStores)

#include "tst_qtedit_stores.moc"
