// Assertions that stay active in the product. A failed one tells of itself and comes back: on
// Windows in a box as the C runtime has it, elsewhere in one line on standard error. What follows
// is the caller's, a throw as a rule; it never ends the process by itself.
#pragma once

/// @param holds the checked condition
/// @param text the condition as the report shows it
/// @param file the file as the report shows it
void Assert(bool holds, const char *text, const char *file);

/// A seam for tests: the handler takes the report's place. Null restores the report. It must not
/// throw, since destructors assert too.
using AssertHandler = void (*)(const char *text, const char *file);
void SetAssertHandler(AssertHandler handler);

/// The report of this system, in AssertReport_stderr.cpp or AssertReport_win32.cpp.
void ReportAssertion(const char *text, const char *file);
