#include "app/CommandLine.h"

int main(int argc, char **argv)
{
    return rostrum::RunCommandLine(argc, argv);
}
