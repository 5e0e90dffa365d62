// Files that are written whole or not at all.
#pragma once

#include <QByteArray>
#include <QString>

namespace rostrum {

/// Puts the bytes into a file, which gets its name when the last of them is on the disk; up to then
/// a file of that name stays as it was, and it stays so when anything fails.
/// @return what went wrong and where, empty when the file is written
QString WriteWholeFile(const QString &path, const QByteArray &bytes);

} // namespace rostrum
