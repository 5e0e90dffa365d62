#include "Labels.h"

#include <QMenu>
#include <QPixmap>

namespace rostrum {
namespace {

struct Label
{
    const char *name;
    QRgb color;
};

constexpr Label kLabels[kLabelCount] = { { "Brick", 0xffb04848 }, { "Straw", 0xffc8b04a },
    { "Lagoon", 0xff8fc0b8 }, { "Rose", 0xffd9a0b4 }, { "Lilac", 0xffa0a0cc },
    { "Apricot", 0xffd8b48c }, { "Mint", 0xff98c090 }, { "Cobalt", 0xff5a78c0 },
    { "Leaf", 0xff58a050 }, { "Plum", 0xff8a5aa8 }, { "Amber", 0xffd08838 },
    { "Umber", 0xff8a6a48 }, { "Beet", 0xffc860a8 }, { "Ice", 0xff60b8d0 }, { "Flax", 0xffb8aa84 },
    { "Fir", 0xff487858 } };

} // namespace

QColor LabelColor(int label)
{
    return label >= 1 && label <= kLabelCount ? QColor(kLabels[label - 1].color)
                                              : QColor(120, 126, 134);
}

QString LabelName(int label)
{
    return label >= 1 && label <= kLabelCount ? QLatin1String(kLabels[label - 1].name)
                                              : QStringLiteral("None");
}

void FillLabelMenu(QMenu *menu, const std::function<void(int)> &chosen)
{
    for (int label = 0; label <= kLabelCount; ++label) {
        QAction *action = menu->addAction(LabelName(label));
        if (label > 0) {
            QPixmap field(12, 12);
            field.fill(LabelColor(label));
            action->setIcon(field);
        }
        QObject::connect(action, &QAction::triggered, menu, [chosen, label] { chosen(label); });
    }
}

} // namespace rostrum
