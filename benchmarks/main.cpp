#include "bench/Bench.h"

#include <QApplication>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    return bench::Run(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString());
}
