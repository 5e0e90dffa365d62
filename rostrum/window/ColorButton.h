// A button that shows a colour and asks for another.
#pragma once

#include "core/Item.h"

#include <QPushButton>

namespace rostrum {

class ColorButton : public QPushButton
{
    Q_OBJECT

public:
    explicit ColorButton(const Color &color, QWidget *parent = nullptr);

    const Color &GetColor() const { return color; }
    void SetColor(const Color &chosen);

private:
    void OnClicked();

    Color color;
};

} // namespace rostrum
