#include "shell/Assert.h"

namespace {
AssertHandler assertHandler = nullptr;
}

void Assert(bool holds, const char *text, const char *file)
{
    if (holds)
        return;
    if (assertHandler)
        assertHandler(text, file);
    else
        ReportAssertion(text, file);
}

void SetAssertHandler(AssertHandler handler)
{
    assertHandler = handler;
}
