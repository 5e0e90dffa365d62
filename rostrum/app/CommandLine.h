// What can be typed behind "rostrum".
//
//     rostrum [PROJECT] [--plug-in FILE]... [--effect-names en|fr]
//     rostrum render PROJECT --out FOLDER [--frames A-B] [--comp NAME] [--transparent]
//     rostrum --check PLUGIN [--effect-names en|fr] [--time-limit SECONDS]
//     rostrum --version
//     rostrum --help
//
// Exit status: 0 when all is well, 1 when something was found or went wrong, 2 for words that are
// not understood.
#pragma once

namespace rostrum {

int RunCommandLine(int argc, char **argv);

} // namespace rostrum
