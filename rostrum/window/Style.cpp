#include "Style.h"

#include "support/vnPalette.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace rostrum {
namespace {

constexpr int kDarkSet = 1;
constexpr double kBrightness = 0.35; // between the dark and the light end of the set

} // namespace

QPalette DarkPalette()
{
    QPalette palette;
    ApplyColorSet(palette, kDarkSet, kBrightness);
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    // The set's bright edge is a warm yellow: it marks what is picked, and frames nothing.
    palette.setColor(QPalette::Light, window.lighter(140));
    palette.setColor(QPalette::Midlight, window.lighter(120));
    palette.setColor(QPalette::Dark, window.darker(160));
    palette.setColor(QPalette::Link, QColor(120, 170, 230));
    palette.setColor(QPalette::LinkVisited, QColor(160, 150, 210));
    palette.setColor(QPalette::NoRole, window);
    palette.setColor(QPalette::ToolTipBase, window.darker(130));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, text.darker(160));
    for (const QPalette::ColorRole role :
        { QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText })
        palette.setColor(QPalette::Disabled, role, text.darker(200));
    return palette;
}

void ApplyStyle(QApplication &application)
{
    QStyle *style = QStyleFactory::create(QStringLiteral("plastique"));
    application.setStyle(style ? style : QStyleFactory::create(QStringLiteral("fusion")));
    application.setPalette(DarkPalette());
}

} // namespace rostrum
