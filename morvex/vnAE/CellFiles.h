// CellFiles: the trade's file convention for numbered drawings. It knows no host and no widget.
//
//     cut/walk_0012.PNG
//     |   |    |    `-- extension  png, tga or psd for a drawing, in any case
//     |   |    `------- digits     the last unbroken run of digits; their value is the number, their
//     |   |                        count the padding
//     |   `------------ root       what is left of the stem; may be empty or end in a point or dash
//     `---------------- folder     what stands before the last separator; empty without one
//
// Text       narrow, UTF-8. Names are compared without regard to the case of ASCII letters and byte
//            for byte beyond, so that an accented letter and its composed form are two names.
// Separators "/" and "\" both, wherever a path is taken apart, compared or used on disk. On disk an
//            empty folder is the root of the file system, because a name is joined behind a
//            separator: "\walk1.png" lies there.
// Errors     A text that does not fit its buffer leaves the buffer empty, writes "-ERR B-" to the
//            log and makes the operation answer false. No buffer is ever written past its end.
#pragma once

#include <QtGlobal>

constexpr int kCellNameBytes = 256; // a name or a folder, terminator included
constexpr int kCellPathBytes = 2 * kCellNameBytes; // a folder, a separator and a name
constexpr int kImportTextBytes = 1000;
constexpr qint32 kCellNumberLimit = 9999; // no file of this number or above can be a series' first

using CellName = char[kCellNameBytes];
using CellPath = char[kCellPathBytes];
using ImportText = char[kImportTextBytes];

/// The kinds of a column: a series of drawings, or anything that shows the same on every frame.
constexpr qint32 kSequence = 1;
constexpr qint32 kFixe = 2;

/// What an import can say. WriteZeroCell gives the four codes that it names.
enum ImportCode : qint32 {
    kImportOk = 0,
    kImportNoSerie = 1,
    kImportNotOpened = 11,
    kImportBadExtension = 12,
    kImportBadArguments = 13,
    kImportNoImage = 14,
    kImportZeroNotWritten = 21,
    kImportZeroNotSaved = 22
};

/// The four parts of a cell file's path, without their separator and point.
struct CellPathParts
{
    CellName folder;
    CellName root;
    CellName digits;
    CellName extension;
};

// Names, taken apart and put together.

/// File name without folder, extension and trailing digits.
bool GetCellRoot(const char *path, CellName &root);
/// The digit run just before the extension; empty when the character before the point is no digit.
bool GetCellDigits(const char *fileName, CellName &digits);
/// File name without folder and extension.
bool GetFileStem(const char *path, CellName &stem);
/// All four parts. @return false when one does not fit; all four are then empty
bool SplitCellPath(const char *path, CellPathParts &parts);
/// "folder/rootdigits.extension", without "folder/" when the folder is empty.
bool MakeCellPath(CellPath &path, const CellPathParts &parts);
/// Reads a drawing's name, with or without a folder. The root comes out in lower case. A number
/// beyond 32 bits reads as the highest there is.
/// @return false when the name has no cell extension or no digits; the root is then empty and the
/// number -1
bool ParseCellFileName(const char *fileName, CellName &root, qint32 &number);

// Series on disk.

/// Looks for the lowest number of a series, in one reading of the folder's list. Folders in it do
/// not count, whatever their name.
/// @param fileName takes the first file's name in lower case, which need not be its spelling on
/// disk; of two spellings of one number (walk1, walk01) the first listed. It is empty without a
/// file below kCellNumberLimit
/// @return the number, 0 or more; kCellNumberLimit when all files lie there or above; -1 when there
/// is no file of the series or no such folder
qint32 GetFirstCellFile(
    const char *folder, const char *root, const char *extension, CellName &fileName);

/// Makes sure that a series has its blank image, the file of number 0: writes one of the first
/// drawing's size and format beside the series, in one step, so that a failure leaves nothing.
/// Its padding is the first drawing's for 2, 3 or 4 digits, one digit otherwise. It is transparent
/// where the format has alpha; elsewhere every pixel has the value 0, whatever colour that is.
/// @param fileName as GetFirstCellFile gives it; never the file that was written
/// @return kImportOk, kImportNoSerie, kImportNotOpened when the first drawing does not load, or
/// kImportZeroNotWritten
ImportCode WriteZeroCell(
    const char *folder, const char *root, const char *extension, CellName &fileName);

/// True when a footage of the project is what an import asks for: the same folder and extension,
/// and the same root (kSequence; any file of the series will do) or stem (kFixe).
/// @param fileCount main files of the project's footage; a still is never one of several files
/// @return false also for any other kind
bool SameCellSerie(const char *projectPath, const char *wantedPath, qint32 kind, qint32 fileCount);

/// The message of a code, for the user.
/// @return false for kImportOk and codes that do not exist; the text is then empty
bool FormatImportMessage(
    ImportText &text, qint32 code, const char *folder, const char *root, const char *firstFile);
