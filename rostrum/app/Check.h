// rostrum --check: a plug-in library walked through its life, without a display.
//
// It is done twice, each time in a process of its own (CheckWalk.h): once with the host's
// application object made before the library is loaded, as when the host is a program of the same
// toolkit, and once without any, as in a host that knows nothing of it. What a library breaks it
// breaks there: a walk that crashes, hangs or leaves its process is told with the step it was in.
#pragma once

#include "core/EffectCatalogue.h"

#include <QString>

namespace rostrum {

struct CheckSettings
{
    QString plugin; // the library's file
    EffectLanguage effectNames = EffectLanguage::French;
    int timeLimit = 60; // seconds that one step of a walk may take
    bool withApplication = true; // of the one walk that this process does
};

// How the program calls itself for one of the two walks.
constexpr char kWalkWithApplication[] = "--walk-with-application";
constexpr char kWalkWithoutApplication[] = "--walk-without-application";

/// Both walks; prints their reports.
/// @return 1 when anything was found, or a walk did not come to its end; else 0
int RunCheck(const CheckSettings &settings, int argc, char **argv);

} // namespace rostrum
