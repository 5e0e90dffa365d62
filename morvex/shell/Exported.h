// Marks what the library shows to whoever loads it; morvex.map lists the same for the linker.
//
// For Windows the linker takes the names from that list alone: a class that is marked as exported
// shows the compiler's tables and thunks as well, which belong to nobody's interface.
#pragma once

#include <QtGlobal>

#ifdef Q_OS_WIN
#define VN_EXPORTED
#else
#define VN_EXPORTED Q_DECL_EXPORT
#endif
