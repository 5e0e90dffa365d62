#include "ImageFile.h"
#include "LibraryFile.h"

QByteArrayList ExportedNames(const QString &path, QString *failure)
{
    const ImageFile file(path);
    if (!file.IsMapped())
        *failure = QStringLiteral("\"%1\" cannot be mapped").arg(path);
    return file.IsMapped() ? file.Exports() : QByteArrayList();
}
