// Where plug-in libraries lie.
#pragma once

#include <QStringList>

namespace rostrum {

/// The folders beside the program: "plug-ins" next to it, and next to its folder.
QStringList PluginFolders();

/// The plug-in libraries in the folders, by name, each library once.
QStringList FindPlugins(const QStringList &folders);

} // namespace rostrum
