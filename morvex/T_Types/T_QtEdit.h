// T_QtEdit: the generated editor of one T_Var, a row of a label and the input that the variable's
// type and gadget ask for.
//
//     value -> widgets   ValToIhm       at construction, and whenever the dock refreshes
//     widgets -> value   SlotSetValue   on an edit; SignalValueChanged then tells
//
// Showing a value brings it into the gadget's range first, also in the variable's field: what is
// shown is what is stored. A setter of a widget runs only when the widget shows something else, so
// that a refresh with nothing new repaints nothing.
//
// The echo, a widget's signal during ValToIhm, is kept out in three ways: signals are blocked for
// the check box, the spin box and the combo box; the compound inputs block for themselves
// (T_QWidget.h); and a store that changes nothing is none. The slider and the double spin box are
// not blocked: showing a new value in them emits SignalValueChanged.
#pragma once

#include <QLabel>
#include <QVariant>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLineEdit;
class QPushButton;
class QSlider;
class QSpinBox;
class T_QTransform;
class T_QVector2D;
class T_QVector3D;
class T_Var;

/// A label that tells a double click. It has no other answer to one.
class MyLabel : public QLabel
{
    Q_OBJECT

public:
    MyLabel(const QString &text, QWidget *parent, Qt::WindowFlags flags);

signals:
    void SignalDoubleClick();

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;
};

class T_QtEdit : public QWidget
{
    Q_OBJECT

public:
    /// Builds the row and shows the value. The variable is not owned and must outlive the editor;
    /// one without data (a null mData) is shown empty.
    T_QtEdit(QWidget *parent, T_Var *var);
    ~T_QtEdit() override;

    T_Var *GetVar() const { return mVar; }

    /// Value to widgets.
    void ValToIhm();

    /// The value of a bool, int, float, colour (its 32-bit ARGB) or double; 0 for any other type.
    double GetDouble() const;
    /// Stores a number, brought into the gadget's range and cut toward zero where the type is
    /// whole. The value that is there already is no change and is not recorded.
    void SetDouble(double value);
    /// The value as its own type; a colour as an unsigned int; the integer 0 for a type that has no
    /// editor of its own.
    QVariant GetVariant() const;
    /// Stores a value, converted to the variable's type; what cannot be converted counts as that
    /// type's empty value. No range is applied here.
    void SetVariant(const QVariant &value);

    void SetEditEnabled(bool enabled);

    /// True when the combo box holds these strings in this order.
    static bool SameItems(const QComboBox *combo, const QStringList &items);

signals:
    void SignalValueChanged(T_Var *var);

public slots:
    void OnPopupMenu(QPoint pt);
    /// Widgets to value, then the signal; only a line edit that holds the value already is silent.
    void SlotSetValue();
    void OnPropagateValueOnSelection();
    void OnPropagateValueProf1();
    void OnPropagateValueProf2();
    void OnPropagateValueProf2Name();

private:
    template <class Field>
    Field &Data() const;
    QList<QWidget *> Widgets() const;

    void MakeLabel();
    QWidget *MakeInput();
    QWidget *MakeIntInput();
    QWidget *MakeTextInput();
    void GiveMenu(QWidget *widget);
    void ConnectInputs();

    void ShowBool(bool on);
    void ShowInt();
    void ShowChoice(int index);
    void ShowReal(double value);
    void ShowText();
    void ShowEditList();

    void PickColor();
    void Propagate(bool toSelection, bool sameName, int level);

    T_Var *mVar = nullptr;
    QLineEdit *mLineEdit = nullptr;
    QSpinBox *mSpin = nullptr;
    QDoubleSpinBox *mDoubleSpin = nullptr;
    MyLabel *mLabel = nullptr;
    QCheckBox *mCheck = nullptr;
    QPushButton *mButton = nullptr;
    QComboBox *mCombo = nullptr;
    QSlider *mSlider = nullptr;
    T_QVector2D *mVector2D = nullptr;
    T_QVector3D *mVector3D = nullptr;
    T_QTransform *mTransform = nullptr;
};
