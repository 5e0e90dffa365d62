// The blank drawing, number 0, of a series that came in without one.
//
// A sheet counts drawings by their place from 0. In a series that begins with drawing 1 every number
// is one too low, and no cell can show nothing. A blank drawing 0 beside the others mends both.
#pragma once

#include "core/Project.h"

#include <QString>

namespace rostrum {

/// A series whose first number is not 0.
bool LacksBlank(const Footage &footage);
/// What that means and what to do, for a person. Empty where a blank drawing is there.
QString BlankNote(const Footage &footage);

/// Where the blank drawing of a series lies: its first file's name with the number 0.
QString BlankPath(const Footage &footage);
/// Writes it: as large as the first drawing, in its format, nothing on it. A file that is there stays.
/// @return what went wrong
QString WriteBlank(const Footage &footage);
/// Takes the series in anew, with the blank drawing that now lies beside it. Remapped layers go on
/// showing the drawings that they showed. @return what went wrong
QString TakeBlank(ItemId footage, Project *project);

} // namespace rostrum
