// How a check keeps its windows from the user's eyes.
#pragma once

#include <QProcessEnvironment>
#include <QWidget>

namespace rostrum {

/// Lets a process that is started in this environment have no part in the user's display, where the
/// system can do without one.
void KeepOffScreen(QProcessEnvironment *environment);

/// Puts a window where no screen shows it, where the process has windows on the user's display.
void KeepOffScreen(QWidget *window);

} // namespace rostrum
