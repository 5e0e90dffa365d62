#include "Terminal.h"

#include <unistd.h>

namespace rostrum {

bool IsTerminal(std::FILE *stream)
{
    return isatty(fileno(stream)) != 0;
}

QStringList CommandWords(int argc, char **argv)
{
    QStringList words;
    for (int i = 0; i < argc; ++i)
        words << QString::fromLocal8Bit(argv[i]);
    return words;
}

void PrepareTerminal() { } // it is so from the start

} // namespace rostrum
