// Small helpers on plain character strings. "/" and "\" both separate folders; a separator at
// position 0 counts as none, and so does a "." at position 0 of a file name.
//
//     FilePart("cut/walk01.png")   "walk01.png"        Extension("cut/walk01.png")  "png"
//     FilePart("/walk01.png")      "/walk01.png"       Extension("cut.d/walk01")    ""
//     FilePart("walk01.png")       "walk01.png"        Extension("cut/.png")        ""
#pragma once

class QString;

namespace vnPath {

/// What stands behind the last separator; the whole text without one. Points into the argument.
const char *FilePart(const char *path);
/// Cuts the text at its last separator, so that the folder is left; empty without one.
void CutFilePart(char *path);
/// What follows the last point of the file name; the empty end of the text when there is none.
const char *Extension(const char *path);
/// Cuts the extension with its point.
void CutExtension(char *path);
/// The extension in lower case, the empty text when there is none.
QString LowerExtension(const QString &path);

/// Lower-cases in place. ASCII letters alone change, so that UTF-8 stays whole.
void ToLower(char *text);
/// True when the text holds digits and nothing else; false for the empty text.
bool IsDigitsOnly(const char *text);
/// Swaps the two where the first is the larger.
void OrderInts(int &low, int &high);

} // namespace vnPath
