// Projects on disk: *.rostrum, JSON in UTF-8.
//
//     { "format": "rostrum project", "version": 1, "nextId": 12, "items": [ ... ] }
//
//     item    id, parent, name, label, kind, and by kind
//       folder       children: [id]
//       composition  size, rate, duration, background: [red, green, blue], layers: topmost first
//       footage      folder: relative to the project file, files, numbers, series, size, rate
//       solid        size, color
//     layer   id, kind (source, camera, light, text), source, name, parent, label, in, duration,
//             offset, anchorPoint, position, scale, rotation, opacity, timeRemap, effects
//     effect  id, effect: the match name, params
//     stream  value: [four numbers], keys, left out where there are none, each
//             [time's value, time's scale, in, out, four numbers]
//
// Sizes are [width, height], rates and times [value, scale], ids whole numbers. A name whose bytes
// are no UTF-8 is written as { "base64": ... }.
#pragma once

#include "core/Project.h"

namespace rostrum {

constexpr int kProjectFileVersion = 1;
constexpr qint64 kLargestProjectFile = qint64(64) << 20; // bytes

struct LoadedProject
{
    Project project; // an empty one when there is an error
    QString error; // what and where

    bool Ok() const { return error.isEmpty(); }
};

/// Reads a project. Whether its drawings are there is not looked at: a missing one keeps its place.
/// A file that is damaged, written by a newer version or larger than kLargestProjectFile is refused.
LoadedProject LoadProject(const QString &path);

/// The same from the bytes of a project file. @param path the file that they are of: the footage is
/// relative to it, and messages name it
LoadedProject ParseProject(const QByteArray &bytes, const QString &path);

/// Writes a project, whole or not at all. What could not be read again is not written, either: a
/// value that is no number, or more than kLargestProjectFile bytes.
/// @return what went wrong and where, empty when the file is written
QString SaveProject(const Project &project, const QString &path);

} // namespace rostrum
