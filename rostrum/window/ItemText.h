// How the items of a project are told to a person: kind, size, length, and which file a number in a
// sheet means.
#pragma once

#include "core/Project.h"

#include <QString>

namespace rostrum {

/// "Composition", "Series", "Still", "Solid", "Folder".
QString KindText(const Item &item);
/// "1920 x 1080", empty for a folder.
QString SizeText(const Item &item);
/// "100 frames", "8 drawings", empty where there is no length.
QString LengthText(const Item &item);
/// All three in one line.
QString FactsText(const Item &item);
QString RateText(const Rate &rate); // "25", "23.976"
/// Several lines on the item, the files of a series by their numbers in the sheet among them.
QString ItemDescription(const Item &item);
/// A layer's name as a list shows it: its own, else its source's, else what kind it is.
QString LayerText(const Project &project, const Layer &layer);
/// The files of the footage that are not there, by position. Looks at the disk, once.
QVector<qint32> MissingFiles(const Footage &footage);
/// "name", "name 2", "name 3": the first that no item of the project has.
QByteArray FreeName(const Project &project, const QByteArray &name);

} // namespace rostrum
