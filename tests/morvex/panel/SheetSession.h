// SheetSession: random work on the sheet, the same for the same seed. A session is a plan of columns
// and a list of steps; the list can be cut down to the few steps that still make a fault show.
#pragma once

#include "BoundSheet.h"
#include "SheetModel.h"

#include <QHash>

#include <functional>

struct SheetStep
{
    enum Kind { Command, Undo, Redo, Reload, PutKey, TakeKey };

    Kind kind = Command;
    Deed deed = Deed::Type;
    bool selects = false; // drags over cells first; else the selection stays
    int fromCol = 0, fromRow = 0, toCol = 0, toRow = 0;
    QString text; // to be typed
    int image = 0; // of a key that is put by hand at toCol, toRow
    bool isLinear = false;
};

using SheetSteps = QVector<SheetStep>;

QByteArray Describe(const SheetPlan &plan);
QByteArray Describe(const SheetStep &step);

SheetPlan RandomPlan(quint32 seed, int *frames);
SheetSteps RandomSteps(quint32 seed, int count, int columns, int frames);

/// What a first load makes of the host's layers.
SheetModel ModelOf(BoundSheet &sheet);

/// Does the selecting and the key presses of a command.
void DoCommand(BoundSheet &sheet, const SheetStep &step);
/// Does a change that a user makes in the host: a key put or taken.
void DoByHand(BoundSheet &sheet, const SheetStep &step);

/// The shortest list that still fails, by leaving out ever smaller parts.
/// @param fails runs a list; at most `tries` runs are made
SheetSteps Shrink(
    SheetSteps steps, const std::function<bool(const SheetSteps &)> &fails, int tries = 400);

/// A sheet and its model, led through steps side by side.
class SheetSession
{
public:
    /// What a defect in the model would be, to see that a session finds it.
    std::function<void(SheetModel &, const SheetStep &)> spoil;
    int changes = 0; // steps that changed the project

    /// @return what went wrong first, empty when all is well
    QByteArray Run(const SheetPlan &plan, int frames, const SheetSteps &steps);

private:
    QByteArray Do(BoundSheet &sheet, const SheetStep &step);
    QByteArray DoDeed(BoundSheet &sheet, const SheetStep &step);
    QByteArray GoInHistory(BoundSheet &sheet, bool back);
    QByteArray Reload(BoundSheet &sheet);
    QByteArray UndoAll(BoundSheet &sheet);
    /// The table, what is shown and the hold columns against the model.
    QByteArray Compare(BoundSheet &sheet) const;
    QByteArray CompareHistory(BoundSheet &sheet, const QByteArray &name);
    QByteArray CompareAccount(BoundSheet &sheet) const;
    void TakeFromHost(BoundSheet &sheet);

    SheetModel model;
    Chosen chosen;
    QVector<bool> holds; // columns that the sheet alone has written since the last reload
    QVector<rostrum::Project> states; // of the history
    QVector<QByteArray> names; // of its entries
    int state = 0; // where in the history the project stands
    QHash<QPair<int, int>, QString> typedOver; // what cells that take nothing go on showing
};
