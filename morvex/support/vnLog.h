// vnLog: the bounded memory log, and the two error lines of checked calls.
//
//     +-----------------------------+-------+----+
//     | \r\ntext \r\ntext \r\ntext  | <END> | \0 |
//     +-----------------------------+-------+----+
//      used counts all but the \0; a reader finds the newest text in front of the mark
//
// Failed calls of the composition library and the panel are noted here. Nothing in the product
// shows the log; a test reads it by Text(). It can mirror each message to a debug file, which is
// off.
#pragma once

#include <QtGlobal>

class vnLog
{
public:
    /// Made at first use, never destroyed.
    static vnLog *Instance();

    /// Empties the log: it then holds the end mark alone, in a buffer of 1000 bytes.
    void Clear();

    /// Adds one message on a line of its own; "\n" inside becomes "\r\n". A message of more than
    /// 1000 bytes is taken as it is and sticks to the one before.
    /// @return 1, or 0 when the memory switch is off, or the buffer cannot grow; the log is then as
    /// it was
    int Add(const char *text);

    /// Appends the text and a newline to the debug file when the file switch is on. A file that
    /// cannot be opened is ignored.
    void WriteFile(const char *text);

    /// The whole text, end mark included. Valid until the next call.
    const char *Text() const;

    /// Mirrors every message to "C:\VN_DEBUG.log"; nothing in the product turns it on.
    void SetFileSwitch(bool on);
    /// Off, Add keeps nothing. On at the start; nothing in the product turns it off.
    void SetMemorySwitch(bool on);

    qint32 Capacity() const { return capacity; }
    qint32 Used() const { return used; }

private:
    vnLog() = default;
    int Append(const char *text, qint32 length);
    bool MakeRoom(qint32 length);
    bool Resize(qint32 bytes);
    void DropOldest(qint32 bytes);

    qint32 capacity = 0; // bytes of the buffer
    qint32 limit = 30000; // bytes; from here on old text goes instead of the buffer growing
    qint32 used = 0; // bytes of text, end mark included, terminator not
    qint32 reserved = 0;
};

/// Notes "-ERR I- line %d, file(%s)" or, by another letter, "-ERR B- ...": the two lines of a
/// checked call that failed. I stands for a call of the host, B for an operation of our own.
void vnLogErrorLine(char kind, int line, const char *file);
