#include "FootageFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QImageReader>

#include <algorithm>

namespace rostrum {
namespace {

struct NumberedFile
{
    qint32 number = 0;
    QString name;
};

bool ByNumber(const NumberedFile &a, const NumberedFile &b)
{
    return a.number != b.number ? a.number < b.number : a.name < b.name;
}

QVector<NumberedFile> FilesOfSeries(const QString &folder, const NumberedName &wanted)
{
    QVector<NumberedFile> files;
    QDirIterator list(folder, QDir::Files | QDir::Hidden);
    while (list.hasNext()) {
        list.next();
        const QString name = list.fileName();
        const NumberedName parts(name);
        const std::optional<qint32> number = parts.Number();
        if (number && parts.IsOfSeries(wanted))
            files << NumberedFile{ *number, name };
    }
    std::sort(files.begin(), files.end(), ByNumber);
    return files;
}

ImportResult Failed(const QString &error)
{
    ImportResult result;
    result.error = error;
    return result;
}

QByteArray SeriesName(const Footage &footage)
{
    const NumberedName first(footage.files.first());
    const NumberedName last(footage.files.last());
    const QString name = QStringLiteral("%1[%2-%3]").arg(first.stem, first.digits, last.digits);
    const bool hasExtension = !first.extension.isEmpty();
    return (hasExtension ? name + QLatin1Char('.') + first.extension : name).toUtf8();
}

/// Takes the whole series of a numbered file into the result. @return false when its number is
/// beyond what a series can hold
bool TakeSeries(const NumberedName &wanted, ImportResult *result)
{
    if (!wanted.Number())
        return false;
    const QVector<NumberedFile> series = FilesOfSeries(result->footage.folder, wanted);
    if (series.isEmpty()) // its files went away meanwhile; the one that was found is looked at
        return true;
    result->footage.files.clear();
    for (const NumberedFile &file : series) {
        result->footage.files << file.name;
        result->footage.numbers << file.number;
    }
    result->name = SeriesName(result->footage);
    return true;
}

} // namespace

NumberedName::NumberedName(const QString &fileName)
{
    const int point = fileName.lastIndexOf(QLatin1Char('.'));
    const QString whole = point > 0 ? fileName.left(point) : fileName;
    int start = whole.size();
    while (
        start > 0 && whole[start - 1] >= QLatin1Char('0') && whole[start - 1] <= QLatin1Char('9'))
        --start;
    stem = whole.left(start);
    digits = whole.mid(start);
    extension = point > 0 ? fileName.mid(point + 1) : QString();
}

std::optional<qint32> NumberedName::Number() const
{
    bool isNumber = false;
    const qint32 number = digits.toInt(&isNumber);
    return isNumber ? std::optional<qint32>(number) : std::nullopt;
}

bool NumberedName::IsOfSeries(const NumberedName &other) const
{
    return stem.compare(other.stem, Qt::CaseInsensitive) == 0
        && extension.compare(other.extension, Qt::CaseInsensitive) == 0;
}

QString WithSlashes(const QString &path)
{
    QString result = path;
    return result.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

QString RealFileName(const QString &folder, const QString &fileName)
{
    if (fileName.isEmpty())
        return {};
    QString real; // from the list: a system that takes any spelling tells nothing by opening it
    QDirIterator list(folder, QDir::Files | QDir::Hidden);
    while (list.hasNext()) {
        list.next();
        QString name = list.fileName();
        if (name == fileName)
            return name;
        if (name.compare(fileName, Qt::CaseInsensitive) == 0 && (real.isEmpty() || name < real))
            real = name;
    }
    return real;
}

ImportResult ImportDrawings(const QString &path, bool series)
{
    const QString slashed = WithSlashes(path);
    const QString fileName = slashed.section(QLatin1Char('/'), -1);
    if (fileName.isEmpty()) // a folder is never taken for a series
        return Failed(QStringLiteral("\"%1\" names no file").arg(path));
    const QString folder = QDir(slashed.chopped(fileName.size())).absolutePath();
    const QString real = RealFileName(folder, fileName);
    if (real.isEmpty())
        return Failed(QStringLiteral("There is no file \"%1\" in \"%2\"").arg(fileName, folder));

    ImportResult result;
    result.footage.folder = folder;
    result.footage.isSeries = series;
    result.footage.files << real;
    result.name = real.toUtf8();
    const NumberedName parts(real);
    if (series && !parts.digits.isEmpty() && !TakeSeries(parts, &result))
        return Failed(QStringLiteral("The number of \"%1\" is too large").arg(real));

    QImageReader reader(result.footage.PathOf(0));
    result.footage.size = reader.size();
    if (result.footage.size.isEmpty())
        result.footage.size = reader.read().size(); // some formats tell their size only so
    if (result.footage.size.isEmpty())
        return Failed(QStringLiteral("\"%1\" is no image that can be read: %2")
                          .arg(result.footage.PathOf(0), reader.errorString()));
    return result;
}

} // namespace rostrum
