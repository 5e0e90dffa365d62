// What the tests of the typed objects share: the two streams over a temporary file, a recorder that
// starts empty, and a run of the test program as a child of itself.
#pragma once

#include "T_Types/T_Stream.h"
#include "T_Types/T_Struct.h"
#include "T_Types/T_Undo.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QProcess>
#include <QString>

#include <cstdio>

namespace typed {

/// A temporary file, gone with this object.
class TextFile
{
public:
    explicit TextFile(const QByteArray &text = QByteArray()) : file(std::tmpfile())
    {
        std::fwrite(text.constData(), 1, size_t(text.size()), file);
        std::rewind(file);
    }
    ~TextFile()
    {
        if (T_WriteStream == file)
            T_WriteStream = nullptr;
        if (T_ReadStream == file)
            T_ReadStream = nullptr;
        std::fclose(file);
    }
    TextFile(const TextFile &) = delete;
    TextFile &operator=(const TextFile &) = delete;

    /// What is left from the present place on.
    QByteArray Rest() const
    {
        QByteArray text;
        char part[4096];
        while (const size_t length = std::fread(part, 1, sizeof part, file))
            text.append(part, int(length));
        return text;
    }
    std::FILE *const file;
};

/// What the object writes.
inline QByteArray Written(T_Obj &object)
{
    const TextFile text;
    T_WriteStream = text.file;
    object.Write();
    std::rewind(text.file);
    return text.Rest();
}

/// Lets an object read a text that begins with its body. @return what it left unread
inline QByteArray ReadBody(T_Obj &object, const QByteArray &body, bool apply = true)
{
    const TextFile text(body);
    T_ReadStream = text.file;
    object.Read(apply);
    return text.Rest();
}

/// Lets a root read a whole text, the two header lines included, as a program that opens a file
/// does.
inline QByteArray ReadWhole(T_Struct &root, const QByteArray &whole)
{
    const TextFile text(whole);
    T_ReadStream = text.file;
    char line[1000];
    if (ReadLine(line, sizeof line) && ReadLine(line, sizeof line))
        root.Read(true);
    return text.Rest();
}

/// The recorder, empty and switched on; for tests that look at what it took.
inline T_Undo *FreshUndo()
{
    T_Undo::Instance()->Clear();
    T_Undo::SetEnabled(true);
    return T_Undo::Instance();
}

/// A plain structure of that name, added at the end.
inline T_Struct *AddNamed(T_Struct &parent, const char *name)
{
    auto *child = new T_Struct;
    child->SetName(QString::fromLatin1(name));
    parent.AddChild(child);
    return child;
}

/// The names of the children, in the order of the chain.
inline QStringList Names(const T_Struct &parent)
{
    QStringList names;
    for (const T_Obj *child = parent.mFirst; child; child = child->mNext)
        names << child->GetName();
    return names;
}

/// The words of a text.
inline QStringList List(const char *names)
{
    return QString::fromLatin1(names).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

struct ChildResult
{
    int exitCode;
    QByteArray out;
    QByteArray err;
};

/// Text as the program wrote it, which the system's library may have ended with two characters a line.
inline QByteArray InLines(QByteArray printed)
{
    return printed.replace("\r\n", "\n");
}

/// Runs this program again, to see what it prints, or how it ends.
inline ChildResult RunChild(const QString &mode)
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), { mode });
    if (!child.waitForFinished() || child.exitStatus() != QProcess::NormalExit)
        return { -1, InLines(child.readAllStandardOutput()),
            InLines(child.readAllStandardError()) };
    return { child.exitCode(), InLines(child.readAllStandardOutput()),
        InLines(child.readAllStandardError()) };
}

} // namespace typed
