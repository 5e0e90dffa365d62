// What tests ask of the system beside what Qt offers: a full disk, a folder that must not be written,
// an interrupt, a locale. One file for each system.
#pragma once

#include <QProcess>
#include <QString>

namespace testing {

/// Makes every write beyond so many bytes of a file fail in this process, as if the disk were full.
/// @return false when the system refuses
bool LimitFileSize(qint64 bytes);
/// Takes the limit away.
bool LiftFileSize();

/// The file name of a link that the system calls by a name: the same, or, where a link is a file that
/// only the shell follows, one that is no drawing's.
QString LinkName(const QString &name);

/// As many files as a folder is filled with in a moment.
int ManyFiles();
/// Characters that a file's name may have for the file to be written whole or not at all.
int LongestName();

/// A library of the system's that any program can load.
QString SystemLibrary();

/// The style that the panel wears here.
QString PanelStyle();

/// As long as it lives nothing can be made or changed in a folder.
class WriteProtection
{
public:
    explicit WriteProtection(const QString &folder);
    ~WriteProtection();
    WriteProtection(const WriteProtection &) = delete;
    WriteProtection &operator=(const WriteProtection &) = delete;

private:
    QString folder;
};

/// Lets a child of a test be interrupted. To be called by the child, before anything else.
void AwaitInterrupt();
/// Does to a child what Ctrl+C does. @return false when it could not be done
bool Interrupt(QProcess &child);

/// Returns when no process works in a folder any longer, so that it can be removed: the console that
/// Windows gives a child may outlive it.
void AwaitUnused(const QString &folder);

/// Goes on where a failed assertion of this process asks what to do, and writes what it says to standard
/// error, where it says it by itself if nothing asks. To be called once, before it fails.
void AnswerAssertion();

/// Sets a locale with a decimal comma, for the whole process. @return what is missing for that, empty
/// when it is set
QString SetCommaLocale(const QString &folder);

} // namespace testing
