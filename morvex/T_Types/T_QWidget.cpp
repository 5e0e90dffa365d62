#include "T_Types/T_QWidget.h"

#include <QDebug>
#include <QTransform>
#include <QVector2D>
#include <QVector3D>

#include <initializer_list>

namespace {

/// Cut toward zero and held to the box's bounds; not set when the box shows the number already,
/// since setting it would repaint the box all the same.
void Show(QSpinBox *box, double number)
{
    const double bounded = qMax<double>(box->minimum(), qMin<double>(number, box->maximum()));
    const int value = static_cast<int>(bounded); // the bounds are whole, so the cut stays inside
    if (box->value() != value)
        box->setValue(value);
}

void ConnectBoxes(T_QWidget *widget, std::initializer_list<QSpinBox *> boxes)
{
    for (QSpinBox *box : boxes) {
        QObject::connect(
            box, QOverload<int>::of(&QSpinBox::valueChanged), widget, &T_QWidget::OnValueChanged);
    }
}

} // namespace

T_QWidget::T_QWidget(QWidget *parent) : QWidget(parent) { }

void T_QWidget::IhmToVal() { }

void T_QWidget::ValToIhm() { }

QVariant T_QWidget::GetValue()
{
    return mValue;
}

void T_QWidget::SetValue(const QVariant &value)
{
    mBlocked = true;
    mValue = value;
    ValToIhm();
    mBlocked = false;
}

void T_QWidget::OnValueChanged(int)
{
    if (mBlocked)
        return;
    IhmToVal();
    emit valueChanged();
}

T_QVector2D::T_QVector2D(QWidget *parent) : T_QWidget(parent)
{
    setupUi(this);
    ConnectBoxes(this, { sb_X, sb_Y });
}

void T_QVector2D::IhmToVal()
{
    mValue = QVector2D(static_cast<float>(sb_X->value()), static_cast<float>(sb_Y->value()));
}

void T_QVector2D::ValToIhm()
{
    const auto vector = mValue.value<QVector2D>();
    Show(sb_X, vector.x());
    Show(sb_Y, vector.y());
}

T_QVector3D::T_QVector3D(QWidget *parent) : T_QWidget(parent)
{
    setupUi(this);
    ConnectBoxes(this, { sb_X, sb_Y, sb_Z });
}

void T_QVector3D::IhmToVal()
{
    mValue = QVector3D(static_cast<float>(sb_X->value()), static_cast<float>(sb_Y->value()),
        static_cast<float>(sb_Z->value()));
}

void T_QVector3D::ValToIhm()
{
    const auto vector = mValue.value<QVector3D>();
    Show(sb_X, vector.x());
    Show(sb_Y, vector.y());
    Show(sb_Z, vector.z());
}

T_QTransform::T_QTransform(QWidget *parent) : T_QWidget(parent)
{
    setupUi(this);
    ConnectBoxes(this, { sb_X, sb_Y, sb_S, sb_R });
}

void T_QTransform::IhmToVal()
{
    QTransform transform;
    transform.translate(sb_X->value(), sb_Y->value());
    transform.rotate(sb_R->value());
    transform.scale(sb_S->value() / 100.0, sb_S->value() / 100.0);
    mValue = transform;
}

void T_QTransform::ValToIhm()
{
    qWarning() << "T_QtEdit VAL->IHM ";
    const auto transform = mValue.value<QTransform>();
    Show(sb_X, transform.dx());
    Show(sb_Y, transform.dy());
    Show(sb_S, transform.m11() * 100.0);
}
