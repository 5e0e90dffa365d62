#include "T_Types/T_SelectionList.h"

#include <QDebug>

namespace {

T_SelectionList *theList = nullptr;

} // namespace

T_SelectionList::T_SelectionList()
{
    theList = this;
}

T_SelectionList::~T_SelectionList()
{
    if (theList == this)
        theList = nullptr;
}

T_SelectionList *T_SelectionList::Get()
{
    if (!theList)
        qWarning() << "ERREUR On ne veut pas creer d'ici";
    return theList;
}
