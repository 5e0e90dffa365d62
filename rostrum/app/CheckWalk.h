// One walk of a plug-in library through its life, in this process.
//
// Order of the steps:
//   1. the library is loaded and entered
//   2. idle calls over a composition; the menus' update for each kind of window
//   3. the host's own commands, then the plug-in's, each twice: a panel opens, and closes
//   4. each panel: shown, idle, painted, menus, the host's commands, other items, times and layers in the
//      host, flyout, timers; closed and shown again
//   5. an empty project: idle calls, menus
//   6. the death hook, and the end of the process
//
// All goes to standard output, in lines that begin with a mark: those of the report, and the
// findings, which whoever reads may add to. Each step is announced before it begins, so that the
// reader knows where a walk broke off. A line without a mark is the plug-in's own.
#pragma once

#include "app/Check.h"

namespace rostrum {

constexpr char kStepMark = '\x1D';
constexpr char kReportMark = '\x1E';
constexpr char kFindingMark = '\x1F';
constexpr char kFirstStep[] = "the start of the process";
constexpr char kLastStep[] = "the end of the process";

/// @return 1 when anything was found, else 0
int RunWalkHere(const CheckSettings &settings, int argc, char **argv);

} // namespace rostrum
