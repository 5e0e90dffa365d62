#include "T_Types/T_QtEdit.h"

#include "T_Types/T_QWidget.h"
#include "T_Types/T_Struct.h"
#include "T_Types/T_Undo.h"
#include "T_Types/T_Var.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QTransform>
#include <QVector2D>
#include <QVector3D>

#include <limits>

namespace {

/// Brings a number into the gadget's range; a row whose bounds do not rise has none.
template <class Number>
void BringIntoRange(const T_Var *var, Number &number)
{
    const T_GadgetRow &row = T_GadgetTable[var->mGadget];
    if (row.lower >= row.upper)
        return;
    const auto lower = static_cast<Number>(row.lower), upper = static_cast<Number>(row.upper);
    number = qMax(lower, qMin(number, upper)); // in this order, a number that is none ends as upper
}

/// Cut toward zero; what no int holds becomes the nearest one.
int ToInt(double number)
{
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(qMax<double>(Limits::min(), qMin<double>(number, Limits::max())));
}

quint32 ToUInt(double number)
{
    return static_cast<quint32>(qMax(0.0, qMin<double>(number, ~quint32(0))));
}

/// What a box would make of a number: the number at the box's decimals, within its bounds.
double AsShown(const QDoubleSpinBox *box, double number)
{
    const double rounded = QString::number(number, 'f', box->decimals()).toDouble();
    return qBound(box->minimum(), rounded, box->maximum());
}

} // namespace

/// The variable's field, whose type is known from mType.
template <class Field>
Field &T_QtEdit::Data() const
{
    return *static_cast<Field *>(mVar->mData);
}

MyLabel::MyLabel(const QString &text, QWidget *parent, Qt::WindowFlags flags)
    : QLabel(text, parent, flags)
{ }

void MyLabel::mouseDoubleClickEvent(QMouseEvent *)
{
    emit SignalDoubleClick();
}

T_QtEdit::~T_QtEdit()
{
    delete mLineEdit;
    delete mCheck;
    delete mLabel;
    delete mButton;
    delete mCombo;
    delete mSpin;
    delete mDoubleSpin;
    delete mSlider;
    delete mVector2D;
    delete mVector3D;
    delete mTransform;
}

void T_QtEdit::ValToIhm()
{
    if (!mVar->mData)
        return;
    switch (mVar->mType) {
    case TV_BOOL:
        ShowBool(Data<quint8>() != 0);
        break;
    case TV_INT:
        ShowInt();
        break;
    case TV_FLOAT:
        BringIntoRange(mVar, Data<float>());
        ShowReal(static_cast<double>(Data<float>()));
        break;
    case TV_DOUBLE:
        BringIntoRange(mVar, Data<double>());
        ShowReal(Data<double>());
        break;
    case TV_QVECTOR2D:
        mVector2D->SetValue(Data<QVector2D>());
        break;
    case TV_QVECTOR3D:
        mVector3D->SetValue(Data<QVector3D>());
        break;
    case TV_QTRANSFORM:
        mTransform->SetValue(Data<QTransform>());
        break;
    case TV_QSTRING:
        ShowText();
        break;
    default: // a colour too shows nothing: its button keeps the name
        break;
    }
}

double T_QtEdit::GetDouble() const
{
    if (!mVar->mData)
        return 0;
    switch (mVar->mType) {
    case TV_BOOL:
        return Data<quint8>() != 0 ? 1 : 0;
    case TV_INT:
        return Data<qint32>();
    case TV_FLOAT:
        return static_cast<double>(Data<float>());
    case TV_COLOR:
        return Data<quint32>();
    case TV_DOUBLE:
        return Data<double>();
    default:
        return 0;
    }
}

void T_QtEdit::SetDouble(double value)
{
    if (!mVar->mData || GetDouble() == value)
        return;
    T_Undo::RecordValue(mVar);
    BringIntoRange(mVar, value);
    switch (mVar->mType) {
    case TV_BOOL:
        Data<quint8>() = value != 0 ? 1 : 0;
        break;
    case TV_INT:
        Data<qint32>() = ToInt(value);
        break;
    case TV_FLOAT:
        Data<float>() = static_cast<float>(value);
        break;
    case TV_COLOR:
        Data<quint32>() = ToUInt(value);
        break;
    case TV_DOUBLE:
        Data<double>() = value;
        break;
    default:
        break;
    }
}

QVariant T_QtEdit::GetVariant() const
{
    if (!mVar->mData)
        return 0;
    switch (mVar->mType) {
    case TV_BOOL:
        return Data<quint8>() != 0;
    case TV_INT:
        return Data<qint32>();
    case TV_FLOAT:
        return Data<float>();
    case TV_COLOR:
        return Data<quint32>();
    case TV_DOUBLE:
        return Data<double>();
    case TV_QVECTOR2D:
        return Data<QVector2D>();
    case TV_QVECTOR3D:
        return Data<QVector3D>();
    case TV_QTRANSFORM:
        return Data<QTransform>();
    case TV_QSTRING:
        return Data<QString>();
    default:
        return 0;
    }
}

void T_QtEdit::SetVariant(const QVariant &value)
{
    if (!mVar->mData || value == GetVariant())
        return;
    T_Undo::RecordValue(mVar);
    switch (mVar->mType) {
    case TV_BOOL:
        Data<quint8>() = value.value<bool>() ? 1 : 0;
        break;
    case TV_INT:
        Data<qint32>() = value.value<int>();
        break;
    case TV_FLOAT:
        Data<float>() = value.value<float>();
        break;
    case TV_COLOR:
        Data<quint32>() = value.value<uint>();
        break;
    case TV_DOUBLE:
        Data<double>() = value.value<double>();
        break;
    case TV_QVECTOR2D:
        Data<QVector2D>() = value.value<QVector2D>();
        break;
    case TV_QVECTOR3D:
        Data<QVector3D>() = value.value<QVector3D>();
        break;
    case TV_QTRANSFORM:
        Data<QTransform>() = value.value<QTransform>();
        break;
    case TV_QSTRING:
        Data<QString>() = value.value<QString>();
        break;
    default:
        break;
    }
}

void T_QtEdit::SetEditEnabled(bool enabled)
{
    for (QWidget *widget : Widgets()) {
        if (widget)
            widget->setEnabled(enabled);
    }
}

bool T_QtEdit::SameItems(const QComboBox *combo, const QStringList &items)
{
    if (combo->count() != items.size())
        return false;
    for (int i = 0; i < items.size(); ++i) {
        if (combo->itemText(i) != items.at(i))
            return false;
    }
    return true;
}

void T_QtEdit::OnPopupMenu(QPoint pt)
{
    auto *menu = new QMenu(this); // lives until the editor dies
    menu->addAction(QStringLiteral("Propagate Value On Selection"), this,
        &T_QtEdit::OnPropagateValueOnSelection);
    menu->addAction(QStringLiteral("Propagate Value On Other Elements of this Key"), this,
        &T_QtEdit::OnPropagateValueProf1);
    menu->addAction(QStringLiteral("Propagate Value On Other Keys (Same Element)"), this,
        &T_QtEdit::OnPropagateValueProf2Name);
    menu->addAction(QStringLiteral("Propagate Value On Other Keys (All Elements)"), this,
        &T_QtEdit::OnPropagateValueProf2);
    // The point is the asking widget's own and is taken as the editor's all the same. In a row of
    // two widgets that puts the menu at most some pixels off, which nobody minds.
    menu->exec(mapToGlobal(pt));
}

void T_QtEdit::SlotSetValue()
{
    if (mCheck)
        SetDouble(mCheck->isChecked());
    if (mSpin)
        SetDouble(mSpin->value());
    if (mDoubleSpin)
        SetDouble(mDoubleSpin->value());
    if (mSlider)
        SetDouble(mSlider->value());
    if (mCombo && mVar->mGadget == TG_EDITCOMBO)
        SetVariant(mCombo->currentText());
    else if (mCombo)
        SetDouble(mCombo->currentIndex());
    if (mLineEdit) {
        // editingFinished() comes at each Return and at each loss of the focus
        if (!mVar->mData || mLineEdit->text() == Data<QString>())
            return;
        T_Undo::RecordValue(mVar);
        Data<QString>() = mLineEdit->text();
    }
    if (mButton && mVar->mType == TV_COLOR)
        PickColor();
    if (mVector2D)
        SetVariant(mVector2D->GetValue());
    if (mVector3D)
        SetVariant(mVector3D->GetValue());
    if (mTransform)
        SetVariant(mTransform->GetValue());
    emit SignalValueChanged(mVar);
}

void T_QtEdit::OnPropagateValueOnSelection()
{
    Propagate(/*toSelection=*/true, /*sameName=*/true, /*level=*/0);
}

void T_QtEdit::OnPropagateValueProf1()
{
    Propagate(/*toSelection=*/false, /*sameName=*/false, /*level=*/1);
}

void T_QtEdit::OnPropagateValueProf2()
{
    Propagate(/*toSelection=*/false, /*sameName=*/false, /*level=*/2);
}

void T_QtEdit::OnPropagateValueProf2Name()
{
    Propagate(/*toSelection=*/false, /*sameName=*/true, /*level=*/2);
}

QList<QWidget *> T_QtEdit::Widgets() const
{
    return { mLineEdit, mCheck, mLabel, mButton, mCombo, mSpin, mDoubleSpin, mSlider, mVector2D,
        mVector3D, mTransform };
}

void T_QtEdit::ShowBool(bool on)
{
    if (mCheck->isChecked() == on)
        return;
    const QSignalBlocker blocker(mCheck);
    mCheck->setChecked(on);
}

void T_QtEdit::ShowInt()
{
    auto &field = Data<qint32>();
    BringIntoRange(mVar, field);
    if (mSpin && mSpin->value() != qBound(mSpin->minimum(), field, mSpin->maximum())) {
        const QSignalBlocker blocker(mSpin);
        mSpin->setValue(field);
    }
    if (mSlider && mSlider->value() != field)
        mSlider->setValue(field);
    if (mCombo)
        ShowChoice(field);
}

void T_QtEdit::ShowChoice(int index)
{
    const bool otherItems = mVar->mEnumList && !SameItems(mCombo, *mVar->mEnumList);
    if (!otherItems && mCombo->currentIndex() == index)
        return;
    const QSignalBlocker blocker(mCombo);
    if (otherItems) {
        mCombo->clear();
        mCombo->insertItems(0, *mVar->mEnumList);
    }
    if (mCombo->currentIndex() != index)
        mCombo->setCurrentIndex(index);
}

/// Not blocked: a value that the box rounds comes back rounded into the field.
void T_QtEdit::ShowReal(double value)
{
    if (mDoubleSpin->value() != AsShown(mDoubleSpin, value))
        mDoubleSpin->setValue(value);
}

void T_QtEdit::ShowText()
{
    if (mLineEdit) {
        if (mLineEdit->text() != Data<QString>())
            mLineEdit->setText(Data<QString>());
        return;
    }
    ShowEditList();
    if (mCombo->currentText() != Data<QString>())
        mCombo->setEditText(Data<QString>()); // not blocked
}

/// The items of an editable combo box are the structure's answer for this field.
void T_QtEdit::ShowEditList()
{
    T_Obj *parent = mVar->mParent;
    if (!parent || !parent->IsStruct())
        return;
    auto *structure = static_cast<T_Struct *>(parent);
    auto *field = &Data<QString>();
    if (SameItems(mCombo, structure->GetEditList(field)))
        return;
    const QSignalBlocker blocker(mCombo);
    mCombo->clear();
    mCombo->insertItems(0, structure->GetEditList(field));
}

/// Modal. A dialog that is cancelled leaves the colour as it is.
void T_QtEdit::PickColor()
{
    const QColor start = QColor::fromRgba(ToUInt(GetDouble()));
    const QColor picked
        = QColorDialog::getColor(start, this, QString(), QColorDialog::ShowAlphaChannel);
    if (picked.isValid())
        SetDouble(picked.rgba());
}

void T_QtEdit::Propagate(bool toSelection, bool sameName, int level)
{
    mVar->Propagate(toSelection, sameName, level);
    emit SignalValueChanged(mVar); // also when nothing was copied
}
