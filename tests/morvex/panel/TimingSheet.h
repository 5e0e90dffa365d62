// TimingSheet: an animator at an empty composition. Columns come in from drawings on disk, then the
// timing of a paper sheet is typed into them by keys.
#pragma once

#include "gridtest/GridRobot.h"
#include "librarysheet/LibrarySheet.h"
#include "panel/WinGridDataAE.h"

#include <memory>

/// The timing of a column as a paper sheet has it: a number is written where the drawing changes,
/// and holds up to the next one. The keys that are to stand are written the same way.
using Timing = Keys;

class TimingSheet : public LibrarySheet
{
public:
    explicit TimingSheet(int frames);

    /// Makes a column of a series, to the right of those that are there.
    /// @param drawing path of any one of its files @return what went wrong, empty when nothing did
    QString AddColumn(const QString &drawing);
    /// Fills the sheet and shows it.
    void Show();
    /// Types the changes in their order: each number ended by Return, and Return again, which repeats
    /// it down to where the next drawing begins, but for a drawing of one frame.
    void Type(int col, const Timing &timing);

    const rostrum::Layer &LayerOf(int col) const;

    WinGridDataAE grid;

private:
    std::unique_ptr<GridRobot> robot;
};
