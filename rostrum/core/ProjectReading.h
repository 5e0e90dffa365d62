// A project from JSON; the form is told in ProjectFile.h. Everything is checked, so that a project
// that was read is one that could have been made: ids are unique, folders and layers hang together,
// keys rise, no composition shows itself.
#pragma once

#include "core/JsonReader.h"
#include "core/Project.h"

#include <QDir>

namespace rostrum {

/// @param folder what the paths of the footage are relative to
/// @return an empty project when anything is wrong; the reader's error then says what and where
Project ReadProject(const JsonReader &all, const QDir &folder);

} // namespace rostrum
