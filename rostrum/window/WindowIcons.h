// The small pictures on buttons, drawn in the colours of the palette, so that they stay legible in
// each of its sets.
#pragma once

#include <QIcon>
#include <QPalette>

namespace rostrum {

enum class IconShape {
    First,
    Back,
    Play,
    Stop,
    Forward,
    Last,
    Loop,
    Fit,
    Checker,
    SafeFrames,
};

QIcon NewIcon(IconShape shape, const QPalette &palette);

} // namespace rostrum
