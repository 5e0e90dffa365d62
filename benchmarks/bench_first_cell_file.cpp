// Looking for a series' first file, against reading the same folder's list once.
#include "bench/Bench.h"
#include "vnAE/CellFiles.h"
#include "vnAE/FolderList.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

constexpr int kFiles = 20000; // all of the series, so that every name has to be taken apart
constexpr int kRounds = 31;
constexpr double kGoal = 1.5; // times one listing
constexpr int kFirstNumber = 3;

void MakeSeries(const QTemporaryDir &folder)
{
    for (int number = kFirstNumber; number < kFirstNumber + kFiles; ++number) {
        const QString name = QStringLiteral("walk_%1.png").arg(number, 5, 10, QLatin1Char('0'));
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("%s cannot be made", qPrintable(name));
    }
}

/// The floor: every name is read by the same primitive, none is looked at.
void ListOnce(const QByteArray &folder)
{
    int count = 0;
    FolderList list(folder.constData());
    while (list.Next())
        ++count;
    if (count < kFiles)
        qFatal("%d names listed instead of %d", count, kFiles);
}

void FindFirst(const QByteArray &folder)
{
    CellName first;
    const qint32 number = GetFirstCellFile(folder.constData(), "walk_", "png", first);
    if (number != kFirstNumber || qstrcmp(first, "walk_00003.png") != 0)
        qFatal("%d is not the first of the series", number);
}

const bench::Registration registration("first-cell-file", [] {
    const QTemporaryDir folder;
    MakeSeries(folder);
    const QByteArray path = folder.path().toUtf8();
    return bench::Figures{ bench::Compare(
        QStringLiteral("GetFirstCellFile, 20000 files"), kGoal, kRounds, [&] { FindFirst(path); },
        [&] { ListOnce(path); }) };
});

} // namespace
