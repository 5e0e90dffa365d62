// How the plug-in comes into the host of a test program that looks at its widgets: both need the same Qt.
//
//     PluginDoor_posix.cpp   loads the library file
//     PluginDoor_win32.cpp   enters the plug-in that is linked into the program. The library file has
//                            a Qt of its own there, whose widgets no other can see; tests/win32 works
//                            it by the system's input
#pragma once

#include "suites/HostDriver.h"

namespace testing {

/// @return what went wrong, empty when the plug-in was entered and answered no error
QString EnterMorvex(rostrum::HostDriver &driver);

} // namespace testing
