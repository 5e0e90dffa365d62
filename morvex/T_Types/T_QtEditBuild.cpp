// How an editor's row comes about: which label and which input a variable gets, and what the input
// is connected to.
#include "T_Types/T_QtEdit.h"

#include "T_Types/T_QWidget.h"
#include "T_Types/T_Var.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>

#include <initializer_list>

namespace {

/// A row without a range is handed over all the same: 0 and -1, in this order, leave the box -1.
template <class Box>
void SetGadgetRange(Box *box, const T_Var *var)
{
    const T_GadgetRow &row = T_GadgetTable[var->mGadget];
    box->setMinimum(row.lower);
    box->setMaximum(row.upper);
}

} // namespace

T_QtEdit::T_QtEdit(QWidget *parent, T_Var *var) : QWidget(parent), mVar(var)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    MakeLabel();
    if (mLabel)
        row->addWidget(mLabel);
    // A combo box takes what is left, as a line edit does by itself: their labels line up then.
    if (QWidget *input = MakeInput())
        row->addWidget(input, /*stretch=*/mCombo ? 1 : 0);
    ConnectInputs();
    ValToIhm();
}

/// These three carry their name themselves, on the button or beside the box.
void T_QtEdit::MakeLabel()
{
    if (mVar->mType == TV_BOUTON || mVar->mType == TV_COLOR || mVar->mType == TV_BOOL)
        return;
    mLabel = new MyLabel(mVar->GetName(), this, Qt::WindowFlags());
    mLabel->setToolTip(QStringLiteral("coucou les amis"));
    mLabel->setTextInteractionFlags(Qt::LinksAccessibleByMouse);
    mLabel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    GiveMenu(mLabel);
}

/// @return the input, null for a type that has none
QWidget *T_QtEdit::MakeInput()
{
    switch (mVar->mType) {
    case TV_BOOL:
        mCheck = new QCheckBox(mVar->GetName(), this);
        GiveMenu(mCheck);
        return mCheck;
    case TV_INT:
        return MakeIntInput();
    case TV_FLOAT:
    case TV_DOUBLE:
        mDoubleSpin = new QDoubleSpinBox(this);
        SetGadgetRange(mDoubleSpin, mVar);
        return mDoubleSpin;
    case TV_BOUTON:
        return mButton = new QPushButton(mVar->GetName(), this);
    case TV_COLOR:
        mButton = new QPushButton(mVar->GetName(), this);
        GiveMenu(mButton);
        return mButton;
    case TV_QVECTOR2D:
        return mVector2D = new T_QVector2D(this);
    case TV_QVECTOR3D:
        return mVector3D = new T_QVector3D(this);
    case TV_QTRANSFORM:
        return mTransform = new T_QTransform(this);
    case TV_QSTRING:
        return MakeTextInput();
    default:
        return nullptr;
    }
}

QWidget *T_QtEdit::MakeIntInput()
{
    if (mVar->mGadget == TG_SLIDER) // keeps its own range; the gadget's bounds the value alone
        return mSlider = new QSlider(Qt::Horizontal, this);
    if (mVar->mGadget == TG_COMBO) {
        mCombo = new QComboBox(this);
        if (mVar->mEnumList)
            mCombo->insertItems(0, *mVar->mEnumList);
        return mCombo;
    }
    mSpin = new QSpinBox(this);
    SetGadgetRange(mSpin, mVar);
    return mSpin;
}

QWidget *T_QtEdit::MakeTextInput()
{
    if (mVar->mGadget != TG_EDITCOMBO)
        return mLineEdit = new QLineEdit(this);
    mCombo = new QComboBox(this);
    mCombo->setEditable(true);
    mCombo->setInsertPolicy(QComboBox::InsertAlphabetically);
    mCombo->insertItem(0, QString());
    return mCombo;
}

void T_QtEdit::GiveMenu(QWidget *widget)
{
    widget->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(widget, &QWidget::customContextMenuRequested, this, &T_QtEdit::OnPopupMenu);
}

void T_QtEdit::ConnectInputs()
{
    if (mLineEdit)
        connect(mLineEdit, &QLineEdit::editingFinished, this, &T_QtEdit::SlotSetValue);
    if (mCheck)
        connect(mCheck, &QCheckBox::toggled, this, &T_QtEdit::SlotSetValue);
    if (mSpin)
        connect(mSpin, QOverload<int>::of(&QSpinBox::valueChanged), this, &T_QtEdit::SlotSetValue);
    if (mDoubleSpin)
        connect(mDoubleSpin, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &T_QtEdit::SlotSetValue);
    if (mButton)
        connect(mButton, &QPushButton::clicked, this, &T_QtEdit::SlotSetValue);
    if (mSlider)
        connect(mSlider, &QSlider::valueChanged, this, &T_QtEdit::SlotSetValue);
    if (mCombo && mVar->mGadget == TG_EDITCOMBO)
        connect(mCombo, &QComboBox::editTextChanged, this, &T_QtEdit::SlotSetValue);
    if (mCombo)
        connect(mCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &T_QtEdit::SlotSetValue);
    for (T_QWidget *compound :
        std::initializer_list<T_QWidget *>{ mVector2D, mVector3D, mTransform }) {
        if (compound)
            connect(compound, &T_QWidget::valueChanged, this, &T_QtEdit::SlotSetValue);
    }
}
