// The command that writes a composition's frames without a window.
//
//     rostrum render PROJECT --out FOLDER [--frames A-B] [--comp NAME] [--transparent]
//
// --frames     from A to B, both included, counted from 0; "A" alone is one frame; all unless told
// --comp       the composition's name; needed where the project has several
// --transparent  without the composition's background
//
// The way is shown on standard error. Ctrl+C ends after the frame being written; whole files stay.
#pragma once

#include <QStringList>

namespace rostrum {

/// The lines of the program's help.
constexpr char kRenderHelp[]
    = "  rostrum render PROJECT --out FOLDER\n"
      "                              writes a composition's frames as numbered PNG files; status\n"
      "                              1 where one could not be written or drawn whole\n"
      "      --frames A-B            these frames alone, counted from 0\n"
      "      --comp NAME             the composition, where the project has several\n"
      "      --transparent           without the composition's background\n";

/// @param arguments the words behind "render"
/// @return the exit status: 0 when all frames are written and drawn whole, 1 when not, 2 for words
/// that are not understood
int RunRender(const QStringList &arguments);

} // namespace rostrum
