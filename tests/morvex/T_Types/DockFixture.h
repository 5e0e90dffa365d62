// What the tests of the dock share: a structure to fill, and a dock's tabs and cells as text.
#pragma once

#include "T_Types/T_QtEdit.h"
#include "T_Types/T_QtEditTab.h"
#include "T_Types/T_Struct.h"
#include "T_Types/T_Undo.h"

#include <QGridLayout>

/// A structure that is filled by the test, with fields enough for all its variables.
class Fields : public T_Struct
{
public:
    explicit Fields(const char *name) { SetName(QString::fromLatin1(name)); }

    Fields &Tab(const char *title) { return Mark(title, TG_TAB); }
    Fields &Group(const char *size) { return Mark(size, TG_GROUP); }
    Fields &Column() { return Mark("", TG_COLUMN); }
    Fields &Number(const char *name)
    {
        AddInt(&numbers[used++], QString::fromLatin1(name), TG_DEFAULT);
        return *this;
    }
    Fields &Numbers(int count)
    {
        for (int i = 0; i < count; ++i)
            Number(QByteArray::number(i).constData());
        return *this;
    }
    T_Var *Last()
    {
        T_Obj *last = mFirst;
        while (last->mNext)
            last = last->mNext;
        return static_cast<T_Var *>(last);
    }
    void OnButtonClicked(void *field) override { clicked << field; }

    int numbers[20] = {};
    int used = 0;
    bool flag = false;
    QList<void *> clicked;

private:
    Fields &Mark(const char *text, quint32 gadget)
    {
        AddVar(TV_ONGLET, QString::fromLatin1(text), nullptr, gadget);
        return *this;
    }
};

inline QStringList Titles(const KDockPannel &dock)
{
    QStringList titles;
    for (int tab = 0; tab < dock.count(); ++tab)
        titles << dock.tabText(tab);
    return titles;
}

inline QGridLayout *Grid(const KDockPannel &dock, int tab)
{
    return qobject_cast<QGridLayout *>(dock.widget(tab)->layout());
}

inline QString NameOf(const QWidget *editor)
{
    return static_cast<const T_QtEdit *>(editor)->GetVar()->GetName();
}

/// One cell as text: an editor's name, "spacer", or a group's editors in brackets.
inline QString Describe(QLayoutItem *item)
{
    if (item->widget())
        return NameOf(item->widget());
    if (!item->layout())
        return QStringLiteral("spacer");
    QStringList names;
    for (int i = 0; i < item->layout()->count(); ++i)
        names << NameOf(item->layout()->itemAt(i)->widget());
    return QLatin1Char('[') + names.join(QLatin1Char(' ')) + QLatin1Char(']');
}

/// The cells of a page in the order they were placed, as "row,column name".
inline QStringList Cells(const KDockPannel &dock, int tab)
{
    QStringList cells;
    QGridLayout *grid = Grid(dock, tab);
    for (int i = 0; i < grid->count(); ++i) {
        int row = 0, column = 0, rowSpan = 0, columnSpan = 0;
        grid->getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
        cells << QStringLiteral("%1,%2 %3").arg(row).arg(column).arg(Describe(grid->itemAt(i)));
    }
    return cells;
}

inline QStringList Lines(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1String(" | "));
}

inline QList<T_QtEdit *> Editors(const KDockPannel &dock, int tab)
{
    return dock.widget(tab)->findChildren<T_QtEdit *>();
}
