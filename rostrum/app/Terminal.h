// What the program has to know of the terminal that it was started in.
#pragma once

#include <QStringList>

#include <cstdio>

namespace rostrum {

/// True for a stream that a person reads as it is written, so that a line may be written over.
bool IsTerminal(std::FILE *stream);

/// The words of the command line, the program's own name first. A system whose narrow text cannot
/// hold every file name has them in wide text too.
QStringList CommandWords(int argc, char **argv);

/// Makes the output carry what is written, byte for byte, and a terminal read it as UTF-8.
void PrepareTerminal();

} // namespace rostrum
