#include "WholeFile.h"

#include <QSaveFile>

namespace rostrum {
namespace {

QString Failed(const QString &path, const QString &why)
{
    return QStringLiteral("The file \"%1\" cannot be written: %2").arg(path, why);
}

} // namespace

QString WriteWholeFile(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Failed(path, file.errorString());
    // Flushed by hand: a write that fails inside commit, on a full disk, would not be reported
    // there, and the cut file would take the name. Which error it was is not kept either.
    if (file.write(bytes) != bytes.size() || !file.flush())
        return Failed(path, QStringLiteral("there is no room for all of it"));
    return file.commit() ? QString() : Failed(path, file.errorString());
}

} // namespace rostrum
