// What the grid does when one cell is written, until the grid stands: the cell, and then whatever
// the written key has covered.
#pragma once

#include "vnAE/vipLi.h"

#include <QVector>

/// Writes a value into the table and into the current column, so that no other cell changes.
inline void WriteCell(QVector<int> &table, int row, int value)
{
    vipLi *library = GetVipLi();
    table[row] = value;
    library->SetCellImage(row, value);
    // The written key holds up to the next key: the next row keeps what the table says.
    if (row + 1 < table.size() && table[row + 1] != value)
        library->SetCellImage(row + 1, table[row + 1]);
    // A key that held the same number was joined to the written one, and its run's end with it.
    for (int next = row + 2; next < table.size(); ++next) {
        if (table[next] == table[next - 1])
            continue;
        qint32 read = -1;
        if (library->GetCellImage(next, read) && read == table[next])
            return; // from here on nothing was covered
        library->SetCellImage(next, table[next]);
    }
}
