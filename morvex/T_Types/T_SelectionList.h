// T_SelectionList: the structures that an application has selected, as far as T_Var::Propagate
// knows. This library neither makes nor fills it.
#pragma once

#include <QList>

class T_Obj;

class T_SelectionList
{
public:
    /// Becomes the one list of the process, until it is destroyed.
    T_SelectionList();
    ~T_SelectionList();
    T_SelectionList(const T_SelectionList &) = delete;
    T_SelectionList &operator=(const T_SelectionList &) = delete;

    /// Never creates the list. @return null, after a warning, when there is none
    static T_SelectionList *Get();

    QList<T_Obj *> mObjects; // not owned
};
