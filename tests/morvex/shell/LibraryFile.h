// What a library file shows from outside, read out of the file. One file for each system.
#pragma once

#include <QByteArrayList>
#include <QString>

/// The names that a library exports, sorted. @param failure out: why they cannot be told, or empty
QByteArrayList ExportedNames(const QString &path, QString *failure);
