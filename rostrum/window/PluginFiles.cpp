#include "PluginFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace rostrum {

QStringList PluginFolders()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return { program.filePath(QStringLiteral("plug-ins")),
        QDir::cleanPath(program.filePath(QStringLiteral("../plug-ins"))) };
}

QStringList FindPlugins(const QStringList &folders)
{
    QStringList files;
    QSet<QString> found; // real paths, since one folder may be a link to another
    for (const QString &folder : folders) {
        const QFileInfoList list = QDir(folder).entryInfoList(
            { QStringLiteral("*.so"), QStringLiteral("*.aex"), QStringLiteral("*.dylib") },
            QDir::Files, QDir::Name);
        for (const QFileInfo &file : list) {
            if (found.contains(file.canonicalFilePath()))
                continue;
            found << file.canonicalFilePath();
            files << file.absoluteFilePath();
        }
    }
    return files;
}

} // namespace rostrum
