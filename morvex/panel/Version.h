// The texts that tell which Morvex this is. They stand in a source file of their own, the only one
// that differs from build to build.
#pragma once

namespace Version {

/// "morvex v1.0"
const char *Name();
/// When this build was made, as "Dec  1 2015"; the compiler takes SOURCE_DATE_EPOCH where that is
/// set, so that a build can be repeated.
const char *BuildDate();
/// "13:16:00"
const char *BuildTime();
/// The page behind the panel's "?".
const char *GuideAddress();

} // namespace Version
