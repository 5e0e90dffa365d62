// SheetModel: what each command of the sheet has to do, told on plain arrays and as slowly as it
// reads. The sessions of the tests hold the sheet against it.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

enum class Deed {
    Type, // over the current cell
    Repeat,
    Serie,
    Cycle,
    StartExpo,
    EndExpo,
    Insert,
    Remove,
    Clear,
    Copy,
    Cut,
    Paste
};

/// The selected cells and the current one.
struct Chosen
{
    bool any = false; // exactly one range is selected
    int left = 0, right = 0, top = 0, bottom = 0;
    int col = -1, row = -1; // the current cell
};

struct ModelColumn
{
    bool isSeries = true; // else it has a span alone
    bool isBlank = true; // 0 shows as nothing
    int last = 0; // highest drawing
    int start = 0, end = 0; // the span that the sheet keeps, frames
    int hostStart = 0, hostEnd = 0; // and the one that the layer has
    QVector<int> cells;
};

class SheetModel
{
public:
    /// Does one deed. @param text what is typed
    void Do(Deed deed, const Chosen &chosen, const QString &text);

    QStringList Texts(int col) const;

    int rows = 0;
    QVector<ModelColumn> columns;
    QVector<int> clip;

    QString undoName; // of the last deed; empty when it opened no group
    QString box; // what the last deed said, "Title: text"

private:
    bool Passes(const Chosen &chosen, int mode, const char *message);
    void Write(int col, int row, int value);
    void WriteColumn(int col, const QVector<int> &values);
    int NextChange(int col, int row) const;
    static QVector<int> Continue(const QVector<int> &given, int total);

    void Type(const Chosen &chosen, const QString &text);
    void Repeat(const Chosen &chosen);
    void Serie(const Chosen &chosen);
    void Cycle(const Chosen &chosen);
    void Expo(const Chosen &chosen, bool isStart);
    void Blocs(Deed deed, const Chosen &chosen);
    void Clip(Deed deed, const Chosen &chosen);
    void Paste(const Chosen &chosen);
};
