// The two message boxes of last resort.
#pragma once

/// Shows the text in a box and ends the process with status 1; it never returns. Without an
/// application object the text goes to standard error instead. A text beyond 246 bytes is cut.
[[noreturn]] void vnFatal(const char *text);

/// Shows a box titled "Info" and returns when the user has closed it.
void vnInfo(const char *text);

/// A seam for tests: the handler takes the box's place, with the text as the box would show it. It
/// may throw to get back to the test; the process ends when it returns. Null restores the box.
using vnFatalHandler = void (*)(const char *boxText);
void SetFatalHandler(vnFatalHandler handler);
