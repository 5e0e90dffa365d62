// What a person means by a folder or a handful of files of drawings: the series and stills in them,
// and what is worth telling of each.
#pragma once

#include "core/FootageFiles.h"

#include <QStringList>
#include <QVector>

namespace rostrum {

/// Drawings that come in as one item.
struct DrawingGroup
{
    QString path; // of a still, or of any file of the series
    bool isSeries = false; // two numbered files at least
    QStringList folders; // names of the project folders to put it in, outermost first
};

struct FoundDrawings
{
    QVector<DrawingGroup> groups; // by name, a folder's own before those of its folders
    QStringList leftOut; // files that are no images
};

/// The file's name has a number, and so have others of its series in the folder.
bool IsOneOfSeries(const QString &path);

/// Looks through files and folders. Files of one series make one group, whichever of them is named;
/// a folder becomes a project folder, with the folders in it down to kFolderDepth. Hidden files and
/// folders are passed over.
FoundDrawings FindDrawings(const QStringList &paths);
constexpr int kFolderDepth = 8;

/// What a person should know before trusting a series: numbers that are missing between the first
/// and the last, numbers that two files have, and files of the same names in other formats, which
/// are no part of it. Empty for a still. Looks at the disk for the last of the three only.
QStringList SeriesNotes(const Footage &footage);

/// Numbers as a person writes them: "3, 5-9, 12".
QString NumberRanges(const QVector<qint32> &rising);

} // namespace rostrum
