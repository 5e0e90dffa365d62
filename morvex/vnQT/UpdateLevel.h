// UpdateLevel: how much of the display has to follow a change. It travels in the signal
// SigSomethingHasChanged(UpdateLevel,void*) of the panel's widgets; the second argument is the
// object that caused the change, so that it can skip its own echo.
#pragma once

#include <QMetaType>

enum UpdateLevel {
    UpdNone = 0, // nothing; a receiver ignores every level below 1
    UpdCurrent = 1, // the current cell, frame or column moved
    UpdCells = 2, // cell values or keys changed
    UpdAll = 3, // the structure changed
    UpdCompo = 4 // another composition became active
};

Q_DECLARE_METATYPE(UpdateLevel)
