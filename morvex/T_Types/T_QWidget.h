// The compound inputs: one small form of spin boxes for a value of several numbers.
//
// A compound input holds its value as a variant. SetValue shows a value and is never taken for a
// user's edit: the spin boxes' own signals run, and mBlocked keeps them from being answered. An
// edit in any spin box goes into the value, and then valueChanged() tells.
//
// The spin boxes hold whole numbers, so a value is shown cut toward zero, and within their bounds.
#pragma once

#include "ui_T_QTransform.h"
#include "ui_T_QVector2D.h"
#include "ui_T_QVector3D.h"

#include <QVariant>
#include <QWidget>

class T_QWidget : public QWidget
{
    Q_OBJECT

public:
    explicit T_QWidget(QWidget *parent);

    /// Reads the spin boxes into the value.
    virtual void IhmToVal();
    /// Shows the value in the spin boxes. What is shown already is not set again.
    virtual void ValToIhm();
    virtual QVariant GetValue();

    /// Takes the value over and shows it; valueChanged() stays silent.
    void SetValue(const QVariant &value);

signals:
    void valueChanged();

public slots:
    void OnValueChanged(int i);

private:
    bool mBlocked = false; // a value is being shown: the spin boxes' signals are no edit

protected:
    QVariant mValue;
};

/// Two numbers from -10000 to 10000. A value that is no vector counts as zero.
class T_QVector2D : public T_QWidget, public Ui_T_QVector2D
{
    Q_OBJECT

public:
    explicit T_QVector2D(QWidget *parent);
    void IhmToVal() override;
    void ValToIhm() override;
};

/// Three numbers from -10000 to 10000. A value that is no vector counts as zero.
class T_QVector3D : public T_QWidget, public Ui_T_QVector3D
{
    Q_OBJECT

public:
    explicit T_QVector3D(QWidget *parent);
    void IhmToVal() override;
    void ValToIhm() override;
};

/// A translation in pixels, one scale in percent for both axes, a rotation in degrees; put together
/// in this order: translate, rotate, scale.
///
/// The way back is partial. The scale is read from m11 alone and the rotation is not read at all:
/// a value with a rotation in it shows its scale times the cosine of the angle, and the rotation
/// box keeps the number that it had.
class T_QTransform : public T_QWidget, public Ui_T_QTransform
{
    Q_OBJECT

public:
    explicit T_QTransform(QWidget *parent);
    void IhmToVal() override;
    /// Writes a trace line to the Qt messages each time.
    void ValToIhm() override;
};
