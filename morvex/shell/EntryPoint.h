// The one function that the host finds by name in the library.
#pragma once

#include "hostapi/BasicSuite.h"
#include "hostapi/Hooks.h"

#include "shell/Exported.h"

/// Builds the plug-in object, which registers everything else; both version numbers are ignored.
/// @param globalRefcon out: the object; null when there was no memory for it; left alone when its
///        construction failed
/// @return 0 in every case: the host goes on without the plug-in and says nothing
extern "C" VN_EXPORTED A_Err EntryPointFunc(SPBasicSuite *basicSuite, A_long majorVersion,
    A_long minorVersion, AEGP_PluginID pluginId, AEGP_GlobalRefcon *globalRefcon);
