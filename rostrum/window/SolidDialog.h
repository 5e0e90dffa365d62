// Asks for a solid's name, size and colour.
#pragma once

#include "core/Item.h"

#include <QDialog>

QT_FORWARD_DECLARE_CLASS(QLineEdit)
QT_FORWARD_DECLARE_CLASS(QSpinBox)

namespace rostrum {

class ColorButton;

class SolidDialog : public QDialog
{
    Q_OBJECT

public:
    SolidDialog(const QByteArray &name, const Solid &solid, QWidget *parent = nullptr);

    QByteArray Name() const;
    Solid GetSolid() const;

private:
    QLineEdit *name;
    QSpinBox *width;
    QSpinBox *height;
    ColorButton *color;
};

} // namespace rostrum
