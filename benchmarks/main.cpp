#include "bench/Bench.h"
#include "bench/StartChild.h"

#include <QApplication>

#include <cstdio>
#include <stdexcept>

int main(int argc, char **argv)
{
    if (argc == 4 && qstrcmp(argv[1], "--start") == 0)
        return bench::RunStartChild(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    try {
        return bench::Run(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString());
    } catch (const std::runtime_error &error) { // what has been started ends on the way here
        std::fprintf(stderr, "bench: %s\n", error.what());
        return 2;
    }
}
