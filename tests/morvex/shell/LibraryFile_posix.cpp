#include "LibraryFile.h"

#include <QProcess>

#include <algorithm>

QByteArrayList ExportedNames(const QString &path, QString *failure)
{
    QProcess nm;
    nm.start(QStringLiteral("nm"),
        { QStringLiteral("-D"), QStringLiteral("--defined-only"), QStringLiteral("--format=posix"),
            path });
    if (!nm.waitForFinished() || nm.exitCode() != 0) {
        *failure = nm.errorString() + QString::fromLocal8Bit(nm.readAllStandardError());
        return {};
    }
    QByteArrayList names;
    for (const QByteArray &line : nm.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty())
            names << line.split(' ').first();
    }
    std::sort(names.begin(), names.end());
    return names;
}
