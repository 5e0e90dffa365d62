// The command that opens the window.
//
//     rostrum [PROJECT] [--plug-in FILE]... [--effect-names en|fr]
//
// The plug-ins in the folders "plug-ins" beside the program are loaded as well.
#pragma once

#include <QStringList>

namespace rostrum {

/// The lines of the program's help.
constexpr char kWindowHelp[]
    = "  rostrum [PROJECT]           opens the window, on a project where one is named\n"
      "      --plug-in FILE          loads this library, too; may be given again\n"
      "      --effect-names en|fr    the language of the installed effects' names, fr\n"
      "                              unless told\n";

/// Whether the words behind "rostrum" open the window: none at all, options of it, or a file.
bool OpensWindow(const QStringList &words);

/// @return the exit status: 0 when the window was closed, 1 where no window can be opened, 2 for
/// words that are not understood
int RunWindow(const QStringList &words, int argc, char **argv);

} // namespace rostrum
