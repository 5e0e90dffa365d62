#include "EditorFixture.h"
#include "testing/TestMain.h"

#include "T_Types/T_QWidget.h"
#include "T_Types/T_SelectionList.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTimer>

#include <memory>

namespace {

struct TransformFixture
{
    explicit TransformFixture(const QTransform &start = QTransform()) : field(start)
    {
        ExpectTrace();
        fixture = std::make_unique<EditorFixture>(TV_QTRANSFORM, &field);
    }
    QSpinBox *Box(const char *name) const { return fixture->Input<QSpinBox>(name); }
    void Reload() const
    {
        ExpectTrace();
        fixture->edit->ValToIhm();
    }

    QTransform field;
    std::unique_ptr<EditorFixture> fixture;
};

/// Waits inside the modal loop of a dialog or a menu that the next event opens.
template <class Answer>
void WhenAsked(Answer answer)
{
    QTimer::singleShot(0, qApp, answer);
}

/// Presses the right button as the window system would, so that the request for a menu follows.
void RightClick(const EditorFixture &fixture, const QWidget *widget, const QPoint &at)
{
    QTest::mouseClick(
        fixture.window.windowHandle(), Qt::RightButton, {}, widget->mapTo(&fixture.window, at));
}

/// A structure with one number; registered nowhere, so it stands in a tree by InsertStruct.
class Element : public T_Struct
{
public:
    Element(const char *name, int start)
    {
        AddInt(&number, QStringLiteral("Number"), TG_DEFAULT);
        number = start;
        SetName(QString::fromLatin1(name));
    }
    bool IsA(const std::type_info &kind) const override
    {
        return kind == typeid(Element) || T_Struct::IsA(kind);
    }
    int number;
};

/// root > (key A > (first, second), key B > third), and an editor of the first one's number.
struct TwoKeys
{
    TwoKeys()
    {
        auto *keyA = new T_Struct, *keyB = new T_Struct;
        root.InsertStruct(keyA, T_Struct::kAtEnd);
        root.InsertStruct(keyB, T_Struct::kAtEnd);
        keyA->InsertStruct(first, T_Struct::kAtEnd);
        keyA->InsertStruct(second, T_Struct::kAtEnd);
        keyB->InsertStruct(third, T_Struct::kAtEnd);
        edit = std::make_unique<T_QtEdit>(nullptr, first->GetVar(QStringLiteral("Number"), TV_INT));
        QObject::connect(edit.get(), &T_QtEdit::SignalValueChanged, [this] { ++told; });
    }

    /// Opens the menu and takes one of its four entries by the keys.
    void Pick(int entry)
    {
        WhenAsked([entry] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu)
                return;
            for (int i = 0; i <= entry; ++i)
                QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        edit->OnPopupMenu(QPoint(1, 1));
    }

    T_Struct root;
    Element *first = new Element("Left", 1);
    Element *second = new Element("Right", 2);
    Element *third = new Element("Right", 3);
    std::unique_ptr<T_QtEdit> edit; // goes before its variable
    int told = 0;
};

} // namespace

class TestQtEditCompound : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { T_Undo::Instance()->mEnabled = false; }
    void theFormsAreLaidOutAsDesigned_data();
    void theFormsAreLaidOutAsDesigned();
    void theBoxesHaveTheirBoundsAndSteps();
    void aFormKeepsTheObjectNameThatItHas();
    void aVectorIsTypedComponentByComponent();
    void aVectorIsShownCutTowardZeroAndSilently();
    void aVectorBeyondTheBoxesIsShownAtTheirBound();
    void aVectorThatIsNoneCountsAsZero();
    void theBaseOfTheCompoundInputsHoldsItsValueAndNothingElse();
    void aTransformIsTranslatedRotatedAndScaledInThisOrder();
    void aTransformIsShownByTranslationAndM11Alone();
    void aQuarterTurnReloadedPutsTheScaleAtItsMinimum();
    void showingATransformIsSilentAndRepaintsNothingNew();
    void aTransformIsRecordedBeforeItIsChanged();
    void theColourDialogStartsWithTheColourAndStoresThePick();
    void aCancelledColourDialogChangesNothingAndTells();
    void aColourNeedsAGadgetWithoutRange();
    void aColourButtonShowsNoColour();
    void theMenuOffersFourWaysInOrder();
    void theMenuLivesUntilTheEditorDies();
    void theMenuIsAskedForOnLabelBoxAndColourButton_data();
    void theMenuIsAskedForOnLabelBoxAndColourButton();
    void propagatingReachesTheSistersAndTells();
    void propagatingToTheSelectionReachesItsStructuresAndTells();
    void propagatingWithNothingToReachTellsAllTheSame();
    void aDoubleClickOnALabelIsTold();
};

void TestQtEditCompound::theFormsAreLaidOutAsDesigned_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QStringList>("inOrder");
    QTest::addColumn<QString>("layoutName");
    QTest::addColumn<int>("spacing");
    const auto names
        = [](const char *text) { return QString::fromLatin1(text).split(QLatin1Char(' ')); };
    QTest::newRow("two") << quint32(TV_QVECTOR2D) << names("sb_X sb_Y")
                         << QStringLiteral("horizontalLayout") << 4;
    QTest::newRow("three") << quint32(TV_QVECTOR3D) << names("sb_X sb_Y sb_Z")
                           << QStringLiteral("horizontalLayout") << 4;
    QTest::newRow("transform") << quint32(TV_QTRANSFORM)
                               << names("label sb_X sb_Y label_3 sb_S label_4 sb_R")
                               << QStringLiteral("gridLayout_2") << 0;
}

void TestQtEditCompound::theFormsAreLaidOutAsDesigned()
{
    QFETCH(quint32, type);
    QFETCH(QStringList, inOrder);
    QFETCH(int, spacing);
    double field[9] = { 1, 0, 0, 0, 1, 0, 0, 0, 1 };
    QTransform transform;
    if (type == TV_QTRANSFORM)
        ExpectTrace();
    EditorFixture fixture(type, type == TV_QTRANSFORM ? &transform : static_cast<void *>(field));
    const auto *form = fixture.Input<T_QWidget>();
    QCOMPARE(form->objectName(), QString::fromLatin1(form->metaObject()->className()));
    QCOMPARE(form->windowTitle(), QStringLiteral("Form"));
    QTEST(form->layout()->objectName(), "layoutName");
    QCOMPARE(form->layout()->spacing(), spacing);
    QCOMPARE(form->layout()->contentsMargins(), QMargins());
    QStringList found;
    for (int i = 0; i < form->layout()->count(); ++i)
        found << form->layout()->itemAt(i)->widget()->objectName();
    QCOMPARE(found, inOrder);
}

void TestQtEditCompound::theBoxesHaveTheirBoundsAndSteps()
{
    const T_QVector2D two(nullptr);
    const T_QVector3D three(nullptr);
    const T_QTransform transform(nullptr);
    QCOMPARE(two.size(), QSize(114, 20));
    QCOMPARE(three.size(), QSize(173, 20));
    QCOMPARE(transform.size(), QSize(234, 20));
    for (const QSpinBox *box : { two.sb_X, two.sb_Y, three.sb_X, three.sb_Y, three.sb_Z,
             transform.sb_X, transform.sb_Y }) {
        QCOMPARE(box->minimum(), -10000);
        QCOMPARE(box->maximum(), 10000);
        QCOMPARE(box->singleStep(), 10);
        QCOMPARE(box->value(), 0);
    }
    QCOMPARE(transform.sb_S->minimum(), 1);
    QCOMPARE(transform.sb_S->maximum(), 10000);
    QCOMPARE(transform.sb_S->singleStep(), 1);
    QCOMPARE(transform.sb_S->value(), 100);
    QCOMPARE(transform.sb_S->sizePolicy().horizontalPolicy(), QSizePolicy::Minimum);
    QCOMPARE(transform.sb_S->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(transform.sb_R->minimum(), -360);
    QCOMPARE(transform.sb_R->maximum(), 360);
    QCOMPARE(transform.sb_R->singleStep(), 5);
    QCOMPARE(transform.label->text(), QStringLiteral("T:"));
    QCOMPARE(transform.label_3->text(), QStringLiteral("S:"));
    QCOMPARE(transform.label_4->text(), QStringLiteral("R:"));
}

void TestQtEditCompound::aFormKeepsTheObjectNameThatItHas()
{
    QWidget named;
    named.setObjectName(QStringLiteral("mine"));
    Ui_T_QVector2D form;
    form.setupUi(&named);
    QCOMPARE(named.objectName(), QStringLiteral("mine"));
}

void TestQtEditCompound::aVectorIsTypedComponentByComponent()
{
    QVector2D two(3, 4);
    EditorFixture fixture(TV_QVECTOR2D, &two);
    fixture.Type(fixture.Input<QSpinBox>("sb_Y"), "27");
    QCOMPARE(two, QVector2D(3, 27));
    QCOMPARE(fixture.TakeSignals(), 2); // a signal at each key
    QTest::keyClick(fixture.Input<QSpinBox>("sb_X"), Qt::Key_Up);
    QCOMPARE(two, QVector2D(13, 27));
    QCOMPARE(fixture.TakeSignals(), 1);

    QVector3D three(5, 6, 7);
    EditorFixture second(TV_QVECTOR3D, &three);
    second.Type(second.Input<QSpinBox>("sb_Z"), "-8");
    QCOMPARE(three, QVector3D(5, 6, -8));
    QCOMPARE(second.TakeSignals(), 1); // "-" alone is no number yet
    QTest::keyClick(second.Input<QSpinBox>("sb_Y"), Qt::Key_Down);
    QCOMPARE(three, QVector3D(5, -4, -8));
}

void TestQtEditCompound::aVectorIsShownCutTowardZeroAndSilently()
{
    QVector3D field;
    EditorFixture fixture(TV_QVECTOR3D, &field);
    field = QVector3D(1.9f, -2.9f, 300.5f);
    fixture.edit->ValToIhm();
    QCOMPARE(fixture.Input<QSpinBox>("sb_X")->value(), 1);
    QCOMPARE(fixture.Input<QSpinBox>("sb_Y")->value(), -2);
    QCOMPARE(fixture.Input<QSpinBox>("sb_Z")->value(), 300);
    QCOMPARE(field, QVector3D(1.9f, -2.9f, 300.5f)); // showing does not round the field
    QCOMPARE(fixture.TakeSignals(), 0);
}

void TestQtEditCompound::aVectorBeyondTheBoxesIsShownAtTheirBound()
{
    QVector2D field(1e30f, -10001);
    EditorFixture fixture(TV_QVECTOR2D, &field);
    QCOMPARE(fixture.Input<QSpinBox>("sb_X")->value(), 10000);
    QCOMPARE(fixture.Input<QSpinBox>("sb_Y")->value(), -10000);
    QCOMPARE(field, QVector2D(1e30f, -10001));
}

void TestQtEditCompound::aVectorThatIsNoneCountsAsZero()
{
    T_QVector2D two(nullptr);
    two.SetValue(QVector2D(12, 34));
    two.SetValue(QStringLiteral("no vector"));
    QCOMPARE(two.sb_X->value(), 0);
    QCOMPARE(two.sb_Y->value(), 0);
    T_QVector3D three(nullptr);
    three.SetValue(QVector3D(12, 34, 56));
    three.SetValue(QVariant());
    QCOMPARE(three.sb_Z->value(), 0);
}

void TestQtEditCompound::theBaseOfTheCompoundInputsHoldsItsValueAndNothingElse()
{
    T_QWidget base(nullptr);
    QVERIFY(!base.GetValue().isValid());
    QSignalSpy changes(&base, &T_QWidget::valueChanged);
    base.SetValue(17);
    QCOMPARE(base.GetValue(), QVariant(17));
    QCOMPARE(changes.count(), 0);
    base.OnValueChanged(5); // an edit: whatever the boxes say, which are none here
    QCOMPARE(base.GetValue(), QVariant(17));
    QCOMPARE(changes.count(), 1);
}

void TestQtEditCompound::aTransformIsTranslatedRotatedAndScaledInThisOrder()
{
    const TransformFixture shown;
    shown.fixture->Type(shown.Box("sb_X"), "30");
    shown.fixture->Type(shown.Box("sb_Y"), "-7");
    shown.fixture->Type(shown.Box("sb_S"), "250");
    shown.fixture->Type(shown.Box("sb_R"), "30");
    QTransform expected;
    expected.translate(30, -7);
    expected.rotate(30);
    expected.scale(2.5, 2.5);
    QCOMPARE(shown.field, expected);
    QCOMPARE(shown.field.dx(), 30.0); // the translation is neither turned nor scaled
    QCOMPARE(shown.fixture->TakeSignals(), 8); // one at each key but the "-"
}

void TestQtEditCompound::aTransformIsShownByTranslationAndM11Alone()
{
    TransformFixture shown;
    shown.Box("sb_R")->setValue(45);
    shown.field = QTransform(1.759, 0, 0, 8, 12.9, -13.9);
    shown.Reload();
    QCOMPARE(shown.Box("sb_X")->value(), 12);
    QCOMPARE(shown.Box("sb_Y")->value(), -13);
    QCOMPARE(shown.Box("sb_S")->value(), 175);
    QCOMPARE(shown.Box("sb_R")->value(), 45); // is not read back
}

void TestQtEditCompound::aQuarterTurnReloadedPutsTheScaleAtItsMinimum()
{
    const TransformFixture shown;
    QCOMPARE(shown.Box("sb_S")->value(), 100);
    shown.fixture->Type(shown.Box("sb_R"), "90");
    QVERIFY(qAbs(shown.field.m11()) < 1e-9);
    shown.Reload();
    QCOMPARE(shown.Box("sb_S")->value(), 1); // 0 is below what the box takes
    QCOMPARE(shown.Box("sb_R")->value(), 90);
    QVERIFY(qAbs(shown.field.m11()) < 1e-9); // shown is not stored
}

void TestQtEditCompound::showingATransformIsSilentAndRepaintsNothingNew()
{
    TransformFixture shown(QTransform(0.5, 0, 0, 0.5, 3.5, 4.5));
    QVERIFY(shown.fixture->shown);
    testing::RepaintCounter repaints;
    shown.Reload();
    QCOMPARE(repaints.Take(), 0);
    shown.field = QTransform();
    shown.Reload();
    QVERIFY(repaints.Take() > 0);
    QCOMPARE(shown.fixture->TakeSignals(), 0);
    QCOMPARE(shown.field, QTransform());
}

void TestQtEditCompound::aTransformIsRecordedBeforeItIsChanged()
{
    const TransformFixture shown(QTransform(1, 0, 0, 1, 5, 6));
    T_Undo *undo = T_Undo::Instance();
    undo->Clear();
    undo->mEnabled = true;
    QTest::keyClick(shown.Box("sb_X"), Qt::Key_Up);
    undo->mEnabled = false;
    QCOMPARE(shown.field.dx(), 15.0);
    QCOMPARE(undo->mRecords.size(), 1);
    QCOMPARE(undo->mRecords.first()->mValue.value<QTransform>(), QTransform(1, 0, 0, 1, 5, 6));
    undo->Clear();
}

void TestQtEditCompound::theColourDialogStartsWithTheColourAndStoresThePick()
{
    quint32 field = 0x80102030;
    EditorFixture fixture(TV_COLOR, &field, /*gadget=*/4);
    QColor start;
    WhenAsked([&start] {
        auto *dialog = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        start = dialog->currentColor();
        dialog->setCurrentColor(QColor(1, 2, 3, 4));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    QTest::mouseClick(fixture.Input<QPushButton>(), Qt::LeftButton);
    QCOMPARE(start, QColor(0x10, 0x20, 0x30, 0x80));
    QCOMPARE(field, quint32(qRgba(1, 2, 3, 4)));
    QCOMPARE(fixture.TakeSignals(), 1);
}

void TestQtEditCompound::aCancelledColourDialogChangesNothingAndTells()
{
    quint32 field = 0xFF102030;
    EditorFixture fixture(TV_COLOR, &field, /*gadget=*/5);
    WhenAsked([] {
        if (auto *dialog = qobject_cast<QColorDialog *>(QApplication::activeModalWidget())) {
            dialog->setCurrentColor(Qt::red);
            QTest::keyClick(dialog, Qt::Key_Escape);
        }
    });
    QTest::mouseClick(fixture.Input<QPushButton>(), Qt::LeftButton);
    QCOMPARE(field, 0xFF102030u);
    QCOMPARE(fixture.TakeSignals(), 1);
}

void TestQtEditCompound::aColourNeedsAGadgetWithoutRange()
{
    quint32 field = 0;
    EditorFixture fixture(TV_COLOR, &field, TG_DEFAULT);
    WhenAsked([] {
        if (auto *dialog = qobject_cast<QColorDialog *>(QApplication::activeModalWidget())) {
            dialog->setCurrentColor(Qt::white);
            QTest::keyClick(dialog, Qt::Key_Return);
        }
    });
    QTest::mouseClick(fixture.Input<QPushButton>(), Qt::LeftButton);
    QCOMPARE(field, 100000u); // the bound of an ordinary number
}

void TestQtEditCompound::aColourButtonShowsNoColour()
{
    quint32 field = 0xFF00FF00;
    EditorFixture fixture(TV_COLOR, &field, /*gadget=*/4);
    QVERIFY(!fixture.Input<MyLabel>());
    QCOMPARE(fixture.Input<QPushButton>()->text(), QStringLiteral("Name"));
    testing::RepaintCounter repaints;
    field = 0xFFFF0000;
    fixture.edit->ValToIhm();
    QCOMPARE(repaints.Take(), 0);
    QCOMPARE(fixture.TakeSignals(), 0);
}

void TestQtEditCompound::theMenuOffersFourWaysInOrder()
{
    int field = 5;
    EditorFixture fixture(TV_INT, &field);
    QStringList texts;
    QPoint place;
    bool shortcuts = false;
    WhenAsked([&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return;
        place = menu->pos();
        for (const QAction *action : menu->actions()) {
            texts << action->text();
            shortcuts = shortcuts || !action->shortcut().isEmpty();
        }
        QTest::keyClick(menu, Qt::Key_Escape);
    });
    fixture.edit->OnPopupMenu(QPoint(13, 5));
    QCOMPARE(texts,
        QStringList({ QStringLiteral("Propagate Value On Selection"),
            QStringLiteral("Propagate Value On Other Elements of this Key"),
            QStringLiteral("Propagate Value On Other Keys (Same Element)"),
            QStringLiteral("Propagate Value On Other Keys (All Elements)") }));
    QVERIFY(!shortcuts);
    QCOMPARE(place, fixture.edit->mapToGlobal(QPoint(13, 5)));
    QCOMPARE(fixture.TakeSignals(), 0); // nothing was picked
}

void TestQtEditCompound::theMenuLivesUntilTheEditorDies()
{
    int field = 5;
    QPointer<QMenu> menu;
    {
        EditorFixture fixture(TV_INT, &field);
        WhenAsked([&menu] {
            menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (menu)
                QTest::keyClick(menu, Qt::Key_Escape);
        });
        fixture.edit->OnPopupMenu(QPoint());
        QVERIFY(menu);
        QCOMPARE(menu->parent(), fixture.edit);
    }
    QVERIFY(!menu);
}

void TestQtEditCompound::theMenuIsAskedForOnLabelBoxAndColourButton_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<bool>("answered");
    QTest::newRow("a label") << quint32(TV_INT) << true;
    QTest::newRow("a check box") << quint32(TV_BOOL) << true;
    QTest::newRow("a colour") << quint32(TV_COLOR) << true;
    QTest::newRow("a button has none") << quint32(TV_BOUTON) << false;
}

void TestQtEditCompound::theMenuIsAskedForOnLabelBoxAndColourButton()
{
    QFETCH(quint32, type);
    int field = 1;
    EditorFixture fixture(type, &field, type == TV_COLOR ? 4 : quint32(TG_DEFAULT));
    QVERIFY(fixture.shown);
    bool asked = false;
    WhenAsked([&asked] {
        if (QWidget *menu = QApplication::activePopupWidget()) {
            asked = true;
            QTest::keyClick(menu, Qt::Key_Escape);
        }
    });
    const QWidget *first = fixture.edit->layout()->itemAt(0)->widget();
    RightClick(fixture, first, QPoint(6, 6));
    testing::RepaintCounter::Settle();
    QTEST(asked, "answered");
}

void TestQtEditCompound::propagatingReachesTheSistersAndTells()
{
    TwoKeys keys;
    keys.Pick(1); // the other elements of this key
    QCOMPARE(keys.second->number, 1);
    QCOMPARE(keys.third->number, 3);
    QCOMPARE(keys.told, 1);

    keys.first->number = 40;
    keys.Pick(2); // the same element of other keys: none has its name
    QCOMPARE(keys.third->number, 3);
    keys.third->SetName(keys.first->GetName());
    keys.Pick(2);
    QCOMPARE(keys.third->number, 40);
    QCOMPARE(keys.second->number, 1);

    keys.first->number = 50;
    keys.Pick(3); // all elements of all keys
    QCOMPARE(keys.second->number, 50);
    QCOMPARE(keys.third->number, 50);
    QCOMPARE(keys.told, 4);
}

void TestQtEditCompound::propagatingToTheSelectionReachesItsStructuresAndTells()
{
    TwoKeys keys;
    T_SelectionList selection;
    selection.mObjects << keys.third;
    keys.Pick(0);
    QCOMPARE(keys.third->number, 1);
    QCOMPARE(keys.second->number, 2);
    QCOMPARE(keys.told, 1);
}

void TestQtEditCompound::propagatingWithNothingToReachTellsAllTheSame()
{
    int field = 5;
    EditorFixture fixture(TV_INT, &field);
    fixture.edit->OnPropagateValueProf1();
    fixture.edit->OnPropagateValueProf2();
    fixture.edit->OnPropagateValueProf2Name();
    QCOMPARE(fixture.TakeSignals(), 3);
    QTest::ignoreMessage(QtWarningMsg, "ERREUR On ne veut pas creer d'ici");
    fixture.edit->OnPropagateValueOnSelection();
    QCOMPARE(fixture.TakeSignals(), 1);
    QCOMPARE(fixture.lastChanged, fixture.var);
}

void TestQtEditCompound::aDoubleClickOnALabelIsTold()
{
    int field = 5;
    EditorFixture fixture(TV_INT, &field);
    auto *label = fixture.Input<MyLabel>();
    QSignalSpy clicks(label, &MyLabel::SignalDoubleClick);
    QTest::mouseClick(label, Qt::LeftButton);
    QCOMPARE(clicks.count(), 0);
    QTest::mouseDClick(label, Qt::LeftButton);
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(fixture.TakeSignals(), 0); // nobody listens
}

VN_TEST_MAIN(TestQtEditCompound)

#include "tst_qtedit_compound.moc"
