#include "shell/Assert.h"

#include <assert.h>
#include <stdlib.h>

/// The runtime's own box, with its three buttons: Abort ends the process, Ignore comes back here.
void ReportAssertion(const char *text, const char *file)
{
    _set_error_mode(_OUT_TO_MSGBOX); // a console program would print and end without asking
    _assert(text, file, /*line=*/0); // the file is a header's fixed name, where no line is known
}
