// SerieRule: the rule of the sheet's Serie command. It knows no host and no widget.
#pragma once

/// Continues, in place, what the first cells of a column begin.
///
///     given       becomes                  rule
///     5           5 6 7 8                  one cell: a series rises by one per frame
///     1 1 2       1 1 2 2 3 3              runs: as long as the first one, as far apart as the
///                                          first two values
///     1 9 2       1 9 2 10 3 11            two series that alternate: the second cell lies farther
///                                          from the first than the third does
///
/// The last two rules write no number below 1: the first place that would get one ends them. Places
/// from given on that no rule reaches are 0. Given cells are rewritten where the rule says so. A
/// number beyond 32 bits ends a rule too.
/// @param cells room for the larger of given and total
/// @param given cells that are there; with 0 or less every place becomes 0
/// @param total cells wanted; given cells behind them are read, not written
/// @return true
bool ExtendSerie(int *cells, int given, int total);
