#include "EditorFixture.h"
#include "testing/TestMain.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>

#include <limits>

/// The plain inputs, each driven from both sides: what the user does reaches the field and is told
/// once, and what the field holds is shown without being told.
class TestQtEdit : public QObject
{
    Q_OBJECT

private slots:
    void theRowIsALabelAndAnInputSideBySide();
    void aClickTogglesABool();
    void aBoolIsShownSilently();
    void aNumberTypedReachesAnIntAtEachKey();
    void aStepOfTheSpinBoxIsTold();
    void anIntIsShownSilently();
    void anIntIsCorrectedWhenItIsFirstShown_data();
    void anIntIsCorrectedWhenItIsFirstShown();
    void aGadgetWithoutRangeLeavesTheFieldAlone();
    void aRowWithoutRangeHoldsItsSpinBoxAtMinusOne();
    void aNumberTypedReachesARealNumber_data();
    void aNumberTypedReachesARealNumber();
    void aRealNumberIsClampedWhenShown();
    void aRealNumberIsRewrittenAsItsBoxRoundsIt();
    void showingARealNumberIsToldSinceItsBoxIsNotBlocked();
    void aSliderMovesItsInt();
    void aSliderTakesItsOwnRangeNotTheGadgets();
    void pickingAnItemStoresItsIndex();
    void aComboFollowsItsListAndItsIndexSilently();
    void anIndexBeyondTheListShowsNothing();
    void aComboWithoutAListIsEmpty();
    void leavingALineEditStoresItsText();
    void aLineEditLeftUnchangedSaysNothing();
    void aTextIsShownSilently();
    void aRefreshLeavesTheCursorOfAnEqualTextAlone();
    void theEditableComboStartsOverFromItsStructuresList();
    void theEditableComboLosesItsEmptyItemToTheBaseListAndIsLeftAloneThen();
    void theEditableComboOffersItsStructuresList();
    void theEditableComboStoresAtEachKey();
    void aButtonTellsEachClickOnce();
};

void TestQtEdit::theRowIsALabelAndAnInputSideBySide()
{
    int field = 7;
    EditorFixture fixture(TV_INT, &field);
    const auto *layout = qobject_cast<QHBoxLayout *>(fixture.edit->layout());
    QVERIFY(layout);
    QCOMPARE(layout->spacing(), 4);
    QCOMPARE(layout->contentsMargins(), QMargins());
    QCOMPARE(layout->count(), 2);
    const auto *label = qobject_cast<MyLabel *>(layout->itemAt(0)->widget());
    QVERIFY(label);
    QCOMPARE(label->text(), QStringLiteral("Name"));
    QCOMPARE(label->toolTip(), QStringLiteral("coucou les amis"));
    QCOMPARE(label->textInteractionFlags(), Qt::LinksAccessibleByMouse);
    QCOMPARE(label->alignment(), Qt::AlignRight | Qt::AlignVCenter);
    QVERIFY(qobject_cast<QSpinBox *>(layout->itemAt(1)->widget()));
}

void TestQtEdit::aClickTogglesABool()
{
    bool field = false;
    EditorFixture fixture(TV_BOOL, &field);
    auto *check = fixture.Input<QCheckBox>();
    QCOMPARE(check->text(), QStringLiteral("Name"));
    QVERIFY(!fixture.Input<MyLabel>()); // the box carries the name

    QTest::mouseClick(check, Qt::LeftButton, {}, QPoint(8, check->height() / 2));
    QCOMPARE(field, true);
    QCOMPARE(fixture.TakeSignals(), 1);
    QCOMPARE(fixture.lastChanged, fixture.var);
    QTest::keyClick(check, Qt::Key_Space);
    QCOMPARE(field, false);
    QCOMPARE(fixture.TakeSignals(), 1);
}

void TestQtEdit::aBoolIsShownSilently()
{
    bool field = true;
    EditorFixture fixture(TV_BOOL, &field);
    auto *check = fixture.Input<QCheckBox>();
    QVERIFY(check->isChecked());
    field = false;
    fixture.edit->ValToIhm();
    QVERIFY(!check->isChecked());
    QCOMPARE(fixture.TakeSignals(), 0);
}

void TestQtEdit::aNumberTypedReachesAnIntAtEachKey()
{
    int field = 3;
    EditorFixture fixture(TV_INT, &field);
    fixture.Type(fixture.Input<QSpinBox>(), "-425");
    QCOMPARE(field, -425);
    QCOMPARE(fixture.TakeSignals(), 3); // "-" alone is no number yet
}

void TestQtEdit::aStepOfTheSpinBoxIsTold()
{
    int field = 55;
    EditorFixture fixture(TV_INT, &field, /*gadget=*/1); // 2 to 56
    auto *spin = fixture.Input<QSpinBox>();
    QTest::keyClick(spin, Qt::Key_Up);
    QCOMPARE(field, 56);
    QCOMPARE(fixture.TakeSignals(), 1);
    QTest::keyClick(spin, Qt::Key_Up);
    QCOMPARE(field, 56);
    QCOMPARE(fixture.TakeSignals(), 0);
}

void TestQtEdit::anIntIsShownSilently()
{
    int field = 3;
    EditorFixture fixture(TV_INT, &field);
    field = -4711;
    fixture.edit->ValToIhm();
    QCOMPARE(fixture.Input<QSpinBox>()->text(), QStringLiteral("-4711"));
    QCOMPARE(field, -4711);
    QCOMPARE(fixture.TakeSignals(), 0);
}

void TestQtEdit::anIntIsCorrectedWhenItIsFirstShown_data()
{
    QTest::addColumn<uint>("gadget");
    QTest::addColumn<int>("held");
    QTest::addColumn<int>("corrected");
    QTest::newRow("60 with row 1 becomes 56") << 1U << 60 << 56;
    QTest::newRow("1 with row 1 becomes 2") << 1U << 1 << 2;
    QTest::newRow("the upper bound itself stays") << 1U << 56 << 56;
    QTest::newRow("the default row too has bounds") << uint(TG_DEFAULT) << 100001 << 100000;
    QTest::newRow("the default row below") << uint(TG_DEFAULT) << -2000000 << -100000;
    QTest::newRow("row 12") << 12U << 101 << 100;
}

void TestQtEdit::anIntIsCorrectedWhenItIsFirstShown()
{
    QFETCH(uint, gadget);
    QFETCH(int, held);
    QFETCH(int, corrected);
    int field = held;
    EditorFixture fixture(TV_INT, &field, gadget);
    QCOMPARE(field, corrected);
    QCOMPARE(fixture.Input<QSpinBox>()->value(), corrected);
}

void TestQtEdit::aGadgetWithoutRangeLeavesTheFieldAlone()
{
    int whole = 1000000;
    EditorFixture fixture(TV_INT, &whole, /*gadget=*/4);
    QCOMPARE(whole, 1000000);
    fixture.edit->ValToIhm();
    QCOMPARE(whole, 1000000);
    fixture.edit->SetDouble(-2000000);
    QCOMPARE(whole, -2000000);
    double real = 1000000.5;
    EditorFixture second(TV_DOUBLE, &real, /*gadget=*/5);
    QCOMPARE(real, 1000000.5);
    second.edit->SetDouble(3000000.25);
    QCOMPARE(real, 3000000.25);
}

void TestQtEdit::aRowWithoutRangeHoldsItsSpinBoxAtMinusOne()
{
    int field = 1000000;
    EditorFixture fixture(TV_INT, &field, /*gadget=*/5);
    const auto *spin = fixture.Input<QSpinBox>();
    QCOMPARE(spin->minimum(), -1); // 0 and then -1, in this order
    QCOMPARE(spin->maximum(), -1);
    QCOMPARE(spin->value(), -1);
    QCOMPARE(field, 1000000);
}

void TestQtEdit::aNumberTypedReachesARealNumber_data()
{
    QTest::addColumn<quint32>("type");
    QTest::newRow("float") << quint32(TV_FLOAT);
    QTest::newRow("double") << quint32(TV_DOUBLE);
}

void TestQtEdit::aNumberTypedReachesARealNumber()
{
    QFETCH(quint32, type);
    union
    {
        float narrow;
        double wide;
    } field = {};
    EditorFixture fixture(type, &field);
    fixture.Type(fixture.Input<QDoubleSpinBox>(), "-2.75");
    if (type == TV_FLOAT)
        QCOMPARE(field.narrow, -2.75f);
    else
        QCOMPARE(field.wide, -2.75);
    QCOMPARE(fixture.edit->GetDouble(), -2.75);
    QCOMPARE(fixture.TakeSignals(), 3); // at 2, 7 and 5
    QTest::keyClick(fixture.Input<QDoubleSpinBox>(), Qt::Key_Down);
    QCOMPARE(fixture.edit->GetDouble(), -3.75); // the step and the decimals are the widget's own
    QCOMPARE(fixture.TakeSignals(), 1);
}

void TestQtEdit::aRealNumberIsClampedWhenShown()
{
    float narrow = 60.5f;
    EditorFixture fixture(TV_FLOAT, &narrow, /*gadget=*/1);
    QCOMPARE(narrow, 56.0f);
    QCOMPARE(fixture.Input<QDoubleSpinBox>()->value(), 56.0);
    double wide = -1e9;
    EditorFixture second(TV_DOUBLE, &wide, /*gadget=*/1);
    QCOMPARE(wide, 2.0);
    QCOMPARE(second.Input<QDoubleSpinBox>()->value(), 2.0);
    float none = std::numeric_limits<float>::quiet_NaN();
    EditorFixture third(TV_FLOAT, &none, /*gadget=*/2);
    QCOMPARE(none, 100.0f);
}

/// The user saw a value of three decimals turn into two, in the field too, by the mere showing.
void TestQtEdit::aRealNumberIsRewrittenAsItsBoxRoundsIt()
{
    float narrow = 0.123f;
    const EditorFixture fixture(TV_FLOAT, &narrow);
    QCOMPARE(fixture.Input<QDoubleSpinBox>()->value(), 0.12);
    QCOMPARE(narrow, 0.12f);
    double wide = 0.126;
    EditorFixture second(TV_DOUBLE, &wide);
    QCOMPARE(wide, 0.13);
    wide = 4.567;
    second.edit->ValToIhm();
    QCOMPARE(wide, 4.57);
    QCOMPARE(second.TakeSignals(), 1);
}

void TestQtEdit::showingARealNumberIsToldSinceItsBoxIsNotBlocked()
{
    double field = 0;
    EditorFixture fixture(TV_DOUBLE, &field);
    field = 8.25;
    fixture.edit->ValToIhm();
    QCOMPARE(fixture.TakeSignals(), 1);
    QCOMPARE(field, 8.25);
    fixture.edit->ValToIhm();
    QCOMPARE(fixture.TakeSignals(), 0);
}

void TestQtEdit::aSliderMovesItsInt()
{
    int field = 40;
    EditorFixture fixture(TV_INT, &field, TG_SLIDER);
    auto *slider = fixture.Input<QSlider>();
    QCOMPARE(slider->orientation(), Qt::Horizontal);
    QCOMPARE(slider->value(), 40);
    QTest::keyClick(slider, Qt::Key_Right);
    QCOMPARE(field, 41);
    QCOMPARE(fixture.TakeSignals(), 1);
    field = 17;
    fixture.edit->ValToIhm();
    QCOMPARE(slider->value(), 17);
    QCOMPARE(field, 17);
    QCOMPARE(fixture.TakeSignals(), 1); // not blocked
}

void TestQtEdit::aSliderTakesItsOwnRangeNotTheGadgets()
{
    int field = 250;
    EditorFixture fixture(TV_INT, &field, TG_SLIDER);
    const auto *slider = fixture.Input<QSlider>();
    QCOMPARE(slider->maximum(), 99);
    QCOMPARE(slider->value(), 99);
    QCOMPARE(field, 99); // 100 by the gadget, and then what the slider said
    field = 100;
    fixture.edit->ValToIhm();
    QCOMPARE(field, 100); // the slider stood at its end and said nothing
    QCOMPARE(fixture.TakeSignals(), 0);
}

void TestQtEdit::pickingAnItemStoresItsIndex()
{
    int field = 1;
    QStringList items{ QStringLiteral("png"), QStringLiteral("tga"), QStringLiteral("swf") };
    EditorFixture fixture(TV_INT, &field, TG_COMBO, &items);
    auto *combo = fixture.Input<QComboBox>();
    QCOMPARE(combo->currentText(), QStringLiteral("tga"));
    QTest::keyClick(combo, Qt::Key_Down);
    QCOMPARE(field, 2);
    QCOMPARE(fixture.TakeSignals(), 1);
    QTest::keyClick(combo, Qt::Key_Home);
    QCOMPARE(field, 0);
    QCOMPARE(fixture.TakeSignals(), 1);
}

void TestQtEdit::aComboFollowsItsListAndItsIndexSilently()
{
    int field = 0;
    QStringList items{ QStringLiteral("png"), QStringLiteral("tga") };
    EditorFixture fixture(TV_INT, &field, TG_COMBO, &items);
    auto *combo = fixture.Input<QComboBox>();
    QVERIFY(T_QtEdit::SameItems(combo, items));

    items = QStringList{ QStringLiteral("png"), QStringLiteral("mov"), QStringLiteral("psd") };
    QVERIFY(!T_QtEdit::SameItems(combo, items));
    field = 2;
    fixture.edit->ValToIhm();
    QVERIFY(T_QtEdit::SameItems(combo, items));
    QCOMPARE(combo->currentText(), QStringLiteral("psd"));
    QCOMPARE(field, 2);
    QCOMPARE(fixture.TakeSignals(), 0);

    items.swapItemsAt(0, 2); // as many, in another order
    QVERIFY(!T_QtEdit::SameItems(combo, items));
    items.clear();
    fixture.edit->ValToIhm();
    QCOMPARE(combo->count(), 0);
    QCOMPARE(fixture.TakeSignals(), 0);
}

void TestQtEdit::anIndexBeyondTheListShowsNothing()
{
    int field = 7;
    QStringList items{ QStringLiteral("png"), QStringLiteral("tga") };
    EditorFixture fixture(TV_INT, &field, TG_COMBO, &items);
    QCOMPARE(fixture.Input<QComboBox>()->currentIndex(), -1);
    QCOMPARE(field, 7);
    field = 300;
    fixture.edit->ValToIhm();
    QCOMPARE(field, 100); // the gadget's bound
    field = -5;
    fixture.edit->ValToIhm();
    QCOMPARE(field, 0);
    QCOMPARE(fixture.Input<QComboBox>()->currentText(), QStringLiteral("png"));
    QCOMPARE(fixture.TakeSignals(), 0);
}

void TestQtEdit::aComboWithoutAListIsEmpty()
{
    int field = 3;
    EditorFixture fixture(TV_INT, &field, TG_COMBO, nullptr);
    QCOMPARE(fixture.Input<QComboBox>()->count(), 0);
    QCOMPARE(field, 3);
}

void TestQtEdit::leavingALineEditStoresItsText()
{
    QString field = QStringLiteral("walk");
    EditorFixture fixture(TV_QSTRING, &field);
    auto *line = fixture.Input<QLineEdit>();
    fixture.Type(line, "run");
    QCOMPARE(field, QStringLiteral("walk")); // not yet
    QCOMPARE(fixture.TakeSignals(), 0);
    fixture.other->setFocus();
    QCOMPARE(field, QStringLiteral("run"));
    QCOMPARE(fixture.TakeSignals(), 1);

    fixture.Type(line, "jump");
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(field, QStringLiteral("jump"));
    QCOMPARE(fixture.TakeSignals(), 1);
}

void TestQtEdit::aLineEditLeftUnchangedSaysNothing()
{
    QString field = QStringLiteral("walk");
    EditorFixture fixture(TV_QSTRING, &field);
    auto *line = fixture.Input<QLineEdit>();
    fixture.Type(line, "walk");
    QTest::keyClick(line, Qt::Key_Return);
    fixture.other->setFocus();
    QCOMPARE(field, QStringLiteral("walk"));
    QCOMPARE(fixture.TakeSignals(), 0);
}

void TestQtEdit::aTextIsShownSilently()
{
    QString field;
    EditorFixture fixture(TV_QSTRING, &field);
    field = QString::fromUtf8("été \"a\\b\" é");
    fixture.edit->ValToIhm();
    QCOMPARE(fixture.Input<QLineEdit>()->text(), field);
    QCOMPARE(fixture.TakeSignals(), 0);
}

void TestQtEdit::aRefreshLeavesTheCursorOfAnEqualTextAlone()
{
    QString field = QStringLiteral("walk");
    EditorFixture fixture(TV_QSTRING, &field);
    auto *line = fixture.Input<QLineEdit>();
    line->setFocus();
    QTest::keyClick(line, Qt::Key_Home);
    QTest::keyClick(line, Qt::Key_Right);
    fixture.edit->ValToIhm();
    QCOMPARE(line->cursorPosition(), 1);
}

void TestQtEdit::theEditableComboStartsOverFromItsStructuresList()
{
    QString field = QStringLiteral("walk");
    EditorFixture fixture(TV_QSTRING, &field, TG_EDITCOMBO);
    auto *combo = fixture.Input<QComboBox>();
    QVERIFY(combo->isEditable());
    QCOMPARE(combo->insertPolicy(), QComboBox::InsertAlphabetically);
    QCOMPARE(combo->count(), 0); // the empty item that it began with is gone
    QCOMPARE(combo->currentText(), QStringLiteral("walk"));
    QCOMPARE(fixture.owner.asked, 2); // once to compare, once to fill
    QCOMPARE(fixture.owner.lastAsked, &field);

    field = QStringLiteral("run");
    fixture.edit->ValToIhm();
    QCOMPARE(fixture.owner.asked, 3); // the items are equal now
    QCOMPARE(combo->currentText(), QStringLiteral("run"));
    QCOMPARE(field, QStringLiteral("run"));
    QCOMPARE(fixture.TakeSignals(), 1); // the text is not blocked
}

/// A plain structure has no list to offer.
void TestQtEdit::theEditableComboLosesItsEmptyItemToTheBaseListAndIsLeftAloneThen()
{
    T_Struct plain;
    QString field = QStringLiteral("walk");
    plain.AddQString(&field, QStringLiteral("Name"), TG_EDITCOMBO);
    T_QtEdit edit(nullptr, plain.GetVar(QStringLiteral("Name"), TV_QSTRING));
    auto *combo = edit.findChild<QComboBox *>();
    QCOMPARE(combo->count(), 0);
    QCOMPARE(combo->currentText(), QStringLiteral("walk"));
    const QSignalSpy removed(combo->model(), &QAbstractItemModel::modelReset);
    const QSignalSpy inserted(combo->model(), &QAbstractItemModel::rowsInserted);
    field = QStringLiteral("run");
    edit.ValToIhm();
    QCOMPARE(removed.count() + inserted.count(), 0); // the items are equal: only the text is set
    QCOMPARE(combo->currentText(), QStringLiteral("run"));
}

void TestQtEdit::theEditableComboOffersItsStructuresList()
{
    QString field = QStringLiteral("walk");
    EditorFixture fixture(TV_QSTRING, &field, TG_EDITCOMBO);
    auto *combo = fixture.Input<QComboBox>();
    fixture.owner.list = QStringList{ QStringLiteral("jump"), QStringLiteral("run") };
    fixture.edit->ValToIhm();
    QVERIFY(T_QtEdit::SameItems(combo, fixture.owner.list));
    QCOMPARE(combo->currentText(), QStringLiteral("walk"));
    QCOMPARE(field, QStringLiteral("walk")); // the first item never got into the field
    fixture.TakeSignals();

    QTest::keyClick(combo, Qt::Key_Down);
    QCOMPARE(field, QStringLiteral("run"));
    QCOMPARE(fixture.TakeSignals(), 2); // the text has changed, and the index
}

void TestQtEdit::theEditableComboStoresAtEachKey()
{
    QString field = QStringLiteral("walk");
    EditorFixture fixture(TV_QSTRING, &field, TG_EDITCOMBO);
    auto *combo = fixture.Input<QComboBox>();
    combo->setFocus();
    QTest::keyClicks(combo->lineEdit(), QStringLiteral("er"));
    QCOMPARE(field, QStringLiteral("walker"));
    QCOMPARE(fixture.TakeSignals(), 2);
}

void TestQtEdit::aButtonTellsEachClickOnce()
{
    bool field = true;
    EditorFixture fixture(TV_BOUTON, &field);
    auto *button = fixture.Input<QPushButton>();
    QCOMPARE(button->text(), QStringLiteral("Name"));
    for (int click = 0; click < 3; ++click) {
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(fixture.TakeSignals(), 1);
    }
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(fixture.TakeSignals(), 1);
    QCOMPARE(field, true); // the field is the button's identity, not its state
}

VN_TEST_MAIN(TestQtEdit)

#include "tst_qtedit.moc"
