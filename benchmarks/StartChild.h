// The programs that bench_start measures, as processes of their own.
//
//     bench_figures --start window PROJECT   Rostrum's window on a project
//     bench_figures --start layout PROJECT   the same; opens the sheet, and leaves the layout so
//     bench_figures --start bare PROJECT     a bare window of the size that Rostrum's has at first
//
// Each says "ready" on its output when it can be used, and ends.
#pragma once

namespace bench {

/// @return the exit status
int RunStartChild(int argc, char **argv);

} // namespace bench
