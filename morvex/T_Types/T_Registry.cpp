#include "T_Types/T_Registry.h"

#include "T_Types/T_TypeTables.h"

#include <QDebug>

#include <cstdio>

namespace {

const NewHook *firstHook = nullptr; // the newest record; set before any constructor runs

/// The three warnings keep the %s of their text, and the name follows it.
void WarnOfDuplicate(const NewHook &earlier, T_Factory factory, const QString &name)
{
    const bool sameName = earlier.name == name;
    const bool sameFactory = earlier.factory == factory;
    if (sameName && sameFactory)
        qWarning() << "-WAR- T_Declare deja reference %s" << name;
    if (!sameName && sameFactory)
        qWarning() << "-ERR- T_Declare reference sous un autre type %s" << name;
    if (sameName && !sameFactory)
        qWarning() << "-ERR- Type deja reference par autre atome %s" << name;
}

} // namespace

NewHook::NewHook(T_Factory newFactory, const QString &newName)
{
    T_VerifEnum();
    for (const NewHook *hook = firstHook; hook; hook = hook->next)
        WarnOfDuplicate(*hook, newFactory, newName);
    std::printf("NewHook %s\n", newName.toUtf8().constData());

    next = firstHook;
    firstHook = this;
    factory = newFactory;
    name = newName;
}

const NewHook *NewHook::First()
{
    return firstHook;
}

T_Obj *T_New(const QString &className)
{
    for (const NewHook *hook = firstHook; hook; hook = hook->next) {
        if (hook->name == className)
            return hook->factory();
    }
    return nullptr;
}
