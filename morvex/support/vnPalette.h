// The interface palette: the panel sits inside a dark host, and its widgets must not stand out.
//
// A colour set holds a pair of colours for each of thirteen palette roles, one for the dark end and
// one for the light end; a range picks the point between them. So each set is a whole band of
// brightness, and one slider moves along it.
//
//     set   0 "System"   the application's palette as it was found at the first call
//           1 "Dark AE"
//           2 "Light AE"
//           3 "Color Test", a loud colour for every role
//     range 0.0 the dark end, 1.0 the light end; not limited
#pragma once

class QPalette;

/// Gives the thirteen roles of a set to the palette, and seven more roles their fixed loud colours,
/// in all colour groups. A set that does not exist leaves the palette as it was. The range is taken
/// as it comes: a red, green or blue that leaves 0 to 255 goes to QColor as it is.
///
/// The first call, with whatever set, reads the "System" colours from the application's palette, so
/// it comes before any other palette is set. The caller hands the result to the application.
void ApplyColorSet(QPalette &palette, int set, double range);
