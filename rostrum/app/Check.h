// rostrum --check: a plug-in library walked through its life, without a display.
//
// It is done twice, each time in a process of its own: once with the host's application object made
// before the library is loaded, as when the host is a program of the same toolkit, and once without
// any, as in a host that knows nothing of it. What a library breaks it breaks there.
#pragma once

#include "core/EffectCatalogue.h"

#include <QString>

namespace rostrum {

struct CheckSettings
{
    QString plugin; // the library's file
    EffectLanguage effectNames = EffectLanguage::French;
    bool withApplication = true;
};

// How the program calls itself for one of the two walks.
constexpr char kCheckPassWith[] = "--check-with-application";
constexpr char kCheckPassWithout[] = "--check-without-application";

/// Both walks. @return 1 when anything was found, or a walk did not come to its end
int RunCheck(const CheckSettings &settings, int argc, char **argv);

/// One walk in this process; prints its report. @return 1 when anything was found
int RunCheckPass(const CheckSettings &settings, int argc, char **argv);

} // namespace rostrum
