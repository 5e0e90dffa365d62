#include "ColorButton.h"

#include <QColorDialog>
#include <QPainter>

namespace rostrum {

ColorButton::ColorButton(const Color &color, QWidget *parent) : QPushButton(parent)
{
    SetColor(color);
    connect(this, &QPushButton::clicked, this, &ColorButton::OnClicked);
}

void ColorButton::SetColor(const Color &chosen)
{
    color = chosen;
    QPixmap field(48, 14);
    field.fill(QColor::fromRgbF(color.red, color.green, color.blue));
    QPainter(&field).drawRect(field.rect().adjusted(0, 0, -1, -1));
    setIcon(field);
    setIconSize(field.size());
}

void ColorButton::OnClicked()
{
    const QColor chosen = QColorDialog::getColor(
        QColor::fromRgbF(color.red, color.green, color.blue), this, toolTip());
    if (chosen.isValid())
        SetColor({ chosen.redF(), chosen.greenF(), chosen.blueF() });
}

} // namespace rostrum
