#include "DrawingFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QImageReader>
#include <QSet>

#include <algorithm>

namespace rostrum {
namespace {

bool IsImageName(const QString &fileName)
{
    static const QList<QByteArray> formats = QImageReader::supportedImageFormats();
    const QByteArray extension = NumberedName(fileName).extension.toLower().toUtf8();
    return !extension.isEmpty() && formats.contains(extension);
}

QStringList NamesIn(const QString &folder, QDir::Filters filter)
{
    return QDir(folder).entryList(filter | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase);
}

/// What files of one series have in common.
QString SeriesKey(const QString &folder, const NumberedName &name)
{
    return folder + QLatin1Char('/') + name.stem.toLower() + QLatin1Char('\n')
        + name.extension.toLower();
}

class Finder
{
public:
    void TakeFile(const QString &path)
    {
        const QFileInfo file(path);
        if (!IsImageName(file.fileName())) {
            found.leftOut << path;
            return;
        }
        const QString folder = file.absolutePath();
        if (!looked.contains(folder)) // once for all of a thousand files
            looked.insert(folder, SeriesIn(folder, NamesIn(folder, QDir::Files)));
        Take(path, looked.value(folder), {});
    }
    void TakeFolder(const QString &folder, QStringList folders, int depth);

    FoundDrawings found;

private:
    /// The keys of the series of a folder with two numbered files at least.
    static QSet<QString> SeriesIn(const QString &folder, const QStringList &names);
    void Take(const QString &path, const QSet<QString> &series, const QStringList &folders);

    QSet<QString> taken; // keys of series, paths of stills
    QHash<QString, QSet<QString>> looked; // the series of folders of single files
};

QSet<QString> Finder::SeriesIn(const QString &folder, const QStringList &names)
{
    QSet<QString> once;
    QSet<QString> series;
    for (const QString &name : names) {
        const NumberedName parts(name);
        if (!parts.Number())
            continue;
        const QString key = SeriesKey(folder, parts);
        (once.contains(key) ? series : once) << key;
    }
    return series;
}

void Finder::Take(const QString &path, const QSet<QString> &series, const QStringList &folders)
{
    const QFileInfo file(path);
    const NumberedName parts(file.fileName());
    const QString seriesKey = SeriesKey(file.absolutePath(), parts);
    const bool isSeries = parts.Number() && series.contains(seriesKey);
    const QString key = isSeries ? seriesKey : file.absoluteFilePath();
    if (taken.contains(key))
        return;
    taken << key;
    found.groups << DrawingGroup{ path, isSeries, folders };
}

void Finder::TakeFolder(const QString &folder, QStringList folders, int depth)
{
    const QDir here(folder);
    folders << here.dirName();
    const QStringList names = NamesIn(folder, QDir::Files);
    const QSet<QString> series = SeriesIn(here.absolutePath(), names);
    for (const QString &name : names) {
        if (IsImageName(name))
            Take(here.absoluteFilePath(name), series, folders);
        else
            found.leftOut << here.absoluteFilePath(name);
    }
    if (depth <= 1)
        return;
    for (const QString &name : NamesIn(folder, QDir::Dirs | QDir::NoSymLinks)) // no rings
        TakeFolder(here.absoluteFilePath(name), folders, depth - 1);
}

QVector<qint32> MissingNumbers(const QVector<qint32> &rising, int atMost)
{
    QVector<qint32> missing;
    for (int i = 1; i < rising.size(); ++i) {
        for (qint32 number = rising[i - 1] + 1; number < rising[i]; ++number) {
            if (missing.size() == atMost)
                return missing;
            missing << number;
        }
    }
    return missing;
}

QVector<qint32> DoubleNumbers(const QVector<qint32> &rising)
{
    QVector<qint32> doubles;
    for (int i = 1; i < rising.size(); ++i) {
        if (rising[i] == rising[i - 1] && !doubles.endsWith(rising[i]))
            doubles << rising[i];
    }
    return doubles;
}

/// The extensions of other files of the same stem and number, sorted.
QStringList OtherFormats(const Footage &footage)
{
    const NumberedName own(footage.files.first());
    const QSet<qint32> numbers(footage.numbers.cbegin(), footage.numbers.cend());
    QStringList others;
    for (const QString &name : NamesIn(footage.folder, QDir::Files)) {
        const NumberedName parts(name);
        const QString extension = parts.extension.toLower();
        if (parts.stem.compare(own.stem, Qt::CaseInsensitive) == 0 && !own.IsOfSeries(parts)
            && IsImageName(name) && numbers.contains(parts.Number().value_or(-1))
            && !others.contains(extension))
            others << extension;
    }
    others.sort();
    return others;
}

} // namespace

bool IsOneOfSeries(const QString &path)
{
    const FoundDrawings found = FindDrawings({ path });
    return !found.groups.isEmpty() && found.groups.first().isSeries;
}

FoundDrawings FindDrawings(const QStringList &paths)
{
    Finder finder;
    for (const QString &path : paths) {
        const QString clean = QDir::cleanPath(WithSlashes(path));
        if (QFileInfo(clean).isDir())
            finder.TakeFolder(clean, {}, kFolderDepth);
        else
            finder.TakeFile(clean);
    }
    return finder.found;
}

QString NumberRanges(const QVector<qint32> &rising)
{
    QStringList parts;
    for (int i = 0; i < rising.size();) {
        int end = i;
        while (end + 1 < rising.size() && rising[end + 1] == rising[end] + 1)
            ++end;
        const QString first = QString::number(rising[i]);
        parts << (end == i ? first : first + QLatin1Char('-') + QString::number(rising[end]));
        i = end + 1;
    }
    return parts.join(QLatin1String(", "));
}

QStringList SeriesNotes(const Footage &footage)
{
    if (!footage.isSeries || footage.numbers.isEmpty())
        return {};
    QStringList notes;
    constexpr int kMostNumbers = 1000; // a number that was mistyped may open a gap of millions
    const QVector<qint32> missing = MissingNumbers(footage.numbers, kMostNumbers);
    if (!missing.isEmpty())
        notes << QStringLiteral("missing: %1%2; the numbers in a sheet close up over them")
                     .arg(NumberRanges(missing),
                         missing.size() == kMostNumbers ? QStringLiteral(" and more") : QString());
    const QVector<qint32> doubles = DoubleNumbers(footage.numbers);
    if (!doubles.isEmpty())
        notes << QStringLiteral("two files have the number: %1").arg(NumberRanges(doubles));
    const QStringList others = OtherFormats(footage);
    if (!others.isEmpty())
        notes << QStringLiteral("drawings of the same numbers are there as %1, too; they are a "
                                "series of their own")
                     .arg(others.join(QLatin1String(", ")));
    return notes;
}

} // namespace rostrum
