// The two streams of the typed text format. One of each serves all objects; both are null at the
// start, and whoever uses the format opens a file, stores it here, and calls Write or Read on a
// root. For reading he first reads the root's two header lines himself.
#pragma once

#include <cstdio>

/// Null makes every Write do nothing.
extern std::FILE *T_WriteStream;
/// Null reads as a stream at its end.
extern std::FILE *T_ReadStream;

/// Reads one line from T_ReadStream and cuts its newline. A line longer than the buffer comes in
/// two goes, and the rest counts as the next line.
/// @param size bytes of the buffer, at least 2
/// @return the buffer, null at the end of the stream
char *ReadLine(char *buffer, int size);
