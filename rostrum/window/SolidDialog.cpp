#include "SolidDialog.h"

#include "render/DrawingCache.h"
#include "window/ColorButton.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

namespace rostrum {

SolidDialog::SolidDialog(const QByteArray &solidName, const Solid &solid, QWidget *parent)
    : QDialog(parent)
    , name(new QLineEdit(QString::fromUtf8(solidName)))
    , width(new QSpinBox)
    , height(new QSpinBox)
    , color(new ColorButton(solid.color))
{
    setWindowTitle(tr("New Solid"));
    name->setObjectName(QStringLiteral("name"));
    name->selectAll();
    width->setObjectName(QStringLiteral("width"));
    height->setObjectName(QStringLiteral("height"));
    width->setRange(1, kLargestSide);
    height->setRange(1, kLargestSide);
    width->setValue(solid.size.width());
    height->setValue(solid.size.height());
    color->setObjectName(QStringLiteral("color"));
    color->setToolTip(tr("Colour"));
    auto *size = new QHBoxLayout;
    size->addWidget(width);
    size->addWidget(new QLabel(QStringLiteral("x")));
    size->addWidget(height);
    size->addStretch(1);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    const auto check = [this, ok = buttons->button(QDialogButtonBox::Ok)] {
        ok->setEnabled(!name->text().trimmed().isEmpty()
            && IsSizeAllowed({ width->value(), height->value() }));
    };
    connect(name, &QLineEdit::textChanged, this, check);
    for (QSpinBox *box : { width, height })
        connect(box, QOverload<int>::of(&QSpinBox::valueChanged), this, check);
    auto *form = new QFormLayout(this);
    form->addRow(tr("Name"), name);
    form->addRow(tr("Size"), size);
    form->addRow(tr("Colour"), color);
    form->addRow(buttons);
}

QByteArray SolidDialog::Name() const
{
    return name->text().trimmed().toUtf8();
}

Solid SolidDialog::GetSolid() const
{
    return { { width->value(), height->value() }, color->GetColor() };
}

} // namespace rostrum
