// Drawings on disk: which files belong to a series, and what an import makes of a path.
#pragma once

#include "core/Item.h"

#include <QString>

#include <optional>

namespace rostrum {

/// The parts of a file name. walk0001.png: stem "walk", digits "0001", extension "png". A leading
/// point starts no extension.
struct NumberedName
{
    QString stem;
    QString digits;
    QString extension;

    explicit NumberedName(const QString &fileName);
    /// None without digits, or when they go beyond 31 bits.
    std::optional<qint32> Number() const;
    /// Whether files of both names belong to one series: all but the digits is the same, case aside.
    bool IsOfSeries(const NumberedName &other) const;
};

/// What came of an import: the footage, or why there is none.
struct ImportResult
{
    Footage footage;
    QByteArray name; // of the new item: "walk[0001-0024].png" for a series, the file's otherwise
    QString error; // empty when it worked; says what and where

    bool Ok() const { return error.isEmpty(); }
};

/// Reads a path in. "/" and "\" both separate folders. With `series`, the file's whole series comes
/// in: all files of its folder that have the same name before the digits and the same extension,
/// case aside, sorted by number, then by name; a file without digits makes a series of one.
/// Otherwise the one file comes in as a still. Of the first image the header is read; its pixels
/// only where the format tells its size no other way.
ImportResult ImportDrawings(const QString &path, bool series);

/// The path with "/" between its folders.
QString WithSlashes(const QString &path);

/// The real spelling of a file name in a folder, matched without regard to case; the exact spelling
/// first, then the first by name. Empty when there is no such file.
QString RealFileName(const QString &folder, const QString &fileName);

} // namespace rostrum
