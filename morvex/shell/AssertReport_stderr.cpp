#include "shell/Assert.h"

#include <cstdio>

void ReportAssertion(const char *text, const char *file)
{
    std::fprintf(stderr, "Assertion failed: %s, file %s\n", text, file);
}
