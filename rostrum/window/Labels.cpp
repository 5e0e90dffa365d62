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

constexpr Label kLabels[kLabelCount] = { { "Red", 0xffb04848 }, { "Yellow", 0xffc8b04a },
    { "Aqua", 0xff8fc0b8 }, { "Pink", 0xffd9a0b4 }, { "Lavender", 0xffa0a0cc },
    { "Peach", 0xffd8b48c }, { "Sea Foam", 0xff98c090 }, { "Blue", 0xff5a78c0 },
    { "Green", 0xff58a050 }, { "Purple", 0xff8a5aa8 }, { "Orange", 0xffd08838 },
    { "Brown", 0xff8a6a48 }, { "Fuchsia", 0xffc860a8 }, { "Cyan", 0xff60b8d0 },
    { "Sand", 0xffb8aa84 }, { "Dark Green", 0xff487858 } };

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
