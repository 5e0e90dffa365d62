#include "ProjectFile.h"

#include "ProjectReading.h"
#include "ProjectWriting.h"
#include "WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

namespace rostrum {
namespace {

/// The folder that the paths of the footage are relative to.
QDir FolderOf(const QString &path)
{
    return QFileInfo(path).absoluteDir();
}

LoadedProject Refused(const QString &path, const QString &why)
{
    LoadedProject loaded;
    loaded.error = QStringLiteral("The project file \"%1\" %2").arg(path, why);
    return loaded;
}

QString TooLarge(qint64 size)
{
    return QStringLiteral("is too large: it has %1 bytes, and %2 are the most")
        .arg(size)
        .arg(kLargestProjectFile);
}

} // namespace

LoadedProject LoadProject(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile())
        return Refused(path, QStringLiteral("is not there"));
    if (!file.open(QIODevice::ReadOnly))
        return Refused(path, QStringLiteral("cannot be opened: ") + file.errorString());
    if (file.size() > kLargestProjectFile)
        return Refused(path, TooLarge(file.size()));
    const QByteArray bytes = file.read(kLargestProjectFile);
    if (file.error() != QFileDevice::NoError)
        return Refused(path, QStringLiteral("cannot be read: ") + file.errorString());
    return ParseProject(bytes, path);
}

LoadedProject ParseProject(const QByteArray &bytes, const QString &path)
{
    if (bytes.isEmpty())
        return Refused(path, QStringLiteral("is empty"));
    QJsonParseError parsing{};
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &parsing);
    if (parsing.error != QJsonParseError::NoError)
        return Refused(path,
            QStringLiteral("is damaged at byte %1: %2")
                .arg(parsing.offset)
                .arg(parsing.errorString()));
    const QJsonObject all = document.object();
    if (all.value(QLatin1String("format")).toString() != QLatin1String(kProjectFormat))
        return Refused(path, QStringLiteral("is no project of Rostrum"));
    const double version = all.value(QLatin1String("version")).toDouble();
    if (version > kProjectFileVersion)
        return Refused(path,
            QStringLiteral("was written by a newer Rostrum: it has version %1, this one reads up "
                           "to version %2")
                .arg(version)
                .arg(kProjectFileVersion));
    LoadedProject loaded;
    QString damage;
    loaded.project = ReadProject(JsonReader(all, &damage), FolderOf(path));
    return damage.isEmpty() ? loaded : Refused(path, QStringLiteral("is damaged at ") + damage);
}

QString SaveProject(const Project &project, const QString &path)
{
    const QJsonObject all = WrittenProject(project, FolderOf(path));
    // Read again before the file of yesterday is given up for it. The text is not taken apart for
    // that: what JSON has no way to write is refused in its members already.
    QString damage;
    const Project again = ReadProject(JsonReader(all, &damage), FolderOf(path));
    if (!damage.isEmpty())
        damage = Refused(path, QStringLiteral("would be damaged at ") + damage).error;
    if (!damage.isEmpty() || again != project)
        return QStringLiteral("The project cannot be saved, since it could not be read again. %1")
            .arg(damage);
    const QByteArray bytes = QJsonDocument(all).toJson(QJsonDocument::Compact) + '\n';
    if (bytes.size() > kLargestProjectFile)
        return Refused(path, TooLarge(bytes.size())).error;
    return WriteWholeFile(path, bytes);
}

} // namespace rostrum
