// How the program looks: dark, in the plastique style, so that a plug-in's panel does not stand out.
#pragma once

class QApplication;
class QPalette;

namespace rostrum {

/// The palette of the support library, with quiet colours for the roles that it makes loud on
/// purpose: the window's own widgets show them all.
QPalette DarkPalette();

/// Gives the application its style and palette. Where plastique is not installed, its successor
/// fusion is taken.
void ApplyStyle(QApplication &application);

} // namespace rostrum
