#include "vnPalette.h"

#include <QColor>
#include <QGuiApplication>
#include <QList>
#include <QPalette>

#include <array>

namespace {

struct ColorPair
{
    ColorPair(const QColor &both) : dark(both), light(both) { }
    ColorPair(const QColor &darkEnd, const QColor &lightEnd) : dark(darkEnd), light(lightEnd) { }

    QColor dark; // at range 0
    QColor light; // at range 1
};

/// One role's pairs, a pair for each colour set.
struct RoleColors
{
    QPalette::ColorRole role;
    QList<ColorPair> sets;
};

using ColorLists = std::array<RoleColors, 13>;

QColor Grey(int level)
{
    return QColor(level, level, level);
}

ColorLists BuildColorLists()
{
    const QPalette system = QGuiApplication::palette();
    const auto found
        = [&system](QPalette::ColorRole role) { return ColorPair(system.color(role)); };

    // The rows that several roles share.
    const ColorPair darkWindow(Grey(38), Grey(88)), lightWindow(Grey(130), Grey(242));
    const ColorPair darkText(Grey(165), Grey(255)), lightText(Grey(0), Grey(75));
    const ColorPair darkBase(Grey(13), Grey(69)), lightBase(Grey(104), Grey(203));

    using P = QPalette;
    return { {
        { P::Window, { found(P::Window), darkWindow, lightWindow, QColor(0, 255, 128) } },
        { P::WindowText, { found(P::WindowText), darkText, lightText, QColor(255, 128, 0) } },
        // The one role whose "System" colour is fixed.
        { P::Button, { Grey(216), darkWindow, lightWindow, QColor(0, 255, 0) } },
        { P::ButtonText, { found(P::ButtonText), darkText, lightText, QColor(25, 128, 200) } },
        { P::Text, { found(P::Text), darkText, lightText, QColor(255, 28, 70) } },
        { P::Light,
            { found(P::Light), QColor(210, 154, 0), QColor(210, 154, 0), QColor(210, 0, 0) } },
        { P::Base, { found(P::Base), darkBase, lightBase, QColor(255, 0, 0) } },
        { P::AlternateBase,
            { found(P::AlternateBase), darkBase, lightBase, QColor(127, 128, 30) } },
        { P::Highlight,
            { found(P::Highlight), { Grey(158), Grey(205) }, { Grey(75), Grey(140) },
                QColor(75, 0, 140) } },
        { P::HighlightedText,
            { found(P::HighlightedText), Grey(25), { Grey(232), Grey(255) },
                QColor(232, 0, 255) } },
        { P::Mid, { found(P::Mid), darkWindow, lightWindow, QColor(100, 100, 190) } },
        { P::Shadow, { found(P::Shadow), Grey(0), Grey(0), QColor(0, 34, 200) } },
        { P::BrightText,
            { found(P::BrightText), QColor(180, 135, 30),
                { QColor(28, 52, 96), QColor(40, 135, 220) }, QColor(28, 52, 96) } },
    } };
}

const ColorLists &Lists()
{
    static const auto *const lists = new ColorLists(BuildColorLists());
    return *lists;
}

/// One channel between its two ends, cut toward zero. Far outside the band the cast would be
/// undefined, so the number is held to what an int takes; it stays as wrong a colour as it was.
int Mix(int dark, int light, double range)
{
    const double value = dark + (light - dark) * range;
    return static_cast<int>(qBound(-1.0e9, value, 1.0e9));
}

QColor Mix(const ColorPair &pair, double range)
{
    return QColor(Mix(pair.dark.red(), pair.light.red(), range),
        Mix(pair.dark.green(), pair.light.green(), range),
        Mix(pair.dark.blue(), pair.light.blue(), range));
}

/// Roles that no widget of the panel should show: a loud colour tells at once when one does.
void SetLoudRoles(QPalette &palette)
{
    palette.setColor(QPalette::Midlight, QColor(255, 0, 255));
    palette.setColor(QPalette::Dark, QColor(128, 0, 128));
    palette.setColor(QPalette::Link, QColor(255, 0, 0));
    palette.setColor(QPalette::LinkVisited, QColor(0, 255, 0));
    palette.setColor(QPalette::NoRole, QColor(0, 0, 255));
    palette.setColor(QPalette::ToolTipBase, QColor(0, 255, 255));
    palette.setColor(QPalette::ToolTipText, QColor(255, 255, 0));
}

} // namespace

void ApplyColorSet(QPalette &palette, int set, double range)
{
    const ColorLists &lists = Lists();
    if (set < 0 || set >= lists.front().sets.size())
        return;
    for (const RoleColors &list : lists)
        palette.setColor(list.role, Mix(list.sets.at(set), range));
    SetLoudRoles(palette);
}
