// Reading of the text form. Nothing in a file says how long it is, and nothing in it is trusted:
// the tree drives the reading, and what does not fit it is passed over line by line.
#include "T_Types/T_Struct.h"

#include "T_Types/T_Stream.h"
#include "support/vnMessage.h"

#include <QtDebug>

#include <cstring>

namespace {

constexpr int kMostNames = 100; // of new structures in one structure's text
constexpr int kDeepestLevel = 100; // of structures in structures, the root being level 0

int level = -1; // of the structure that is being read; -1 outside any

class LevelScope
{
public:
    LevelScope() { ++level; }
    ~LevelScope() { --level; }
    LevelScope(const LevelScope &) = delete;
    LevelScope &operator=(const LevelScope &) = delete;
};

bool HasPrefix(const char *tag, const char *prefix)
{
    return std::strncmp(tag, prefix, 3) == 0;
}

} // namespace

void T_Struct::Read(bool)
{
    const LevelScope scope;
    QStringList created;
    char tag[100];
    char name[1000];
    while (ReadLine(tag, sizeof tag)) {
        if (std::strcmp(tag, "TS_END") == 0 || !ReadLine(name, sizeof name))
            return;
        ReadItem(tag, QString::fromLatin1(name), created);
    }
}

void T_Struct::ReadItem(const char *tag, const QString &name, QStringList &created)
{
    if (HasPrefix(tag, "TS_") && level < kDeepestLevel) {
        ReadStruct(QString::fromLatin1(tag + 3), name, created);
    } else if (HasPrefix(tag, "TV_")) {
        T_Var *var = GetVar(name, T_TypeFromTag(tag)); // an unknown type matches by name alone
        (var ? var : T_DummyVar())->Read(var != nullptr);
    } else if (HasPrefix(tag, "TT_")) {
        T_Tab *tab = GetTab(name, TV_NULL); // the tab's own type reads the lines, whatever the tag
        (tab ? tab : T_DummyTab())->Read(tab != nullptr);
    } else {
        qWarning("-ERR- .........\n");
    }
}

/// A structure that stood here before this reading is read again; a name that this reading made is
/// made once more each time it comes.
/// @param created the names that this reading made so far
void T_Struct::ReadStruct(const QString &className, const QString &name, QStringList &created)
{
    const bool isNew = !created.contains(name);
    T_Obj *child = isNew ? FindStruct(name, typeid(T_Struct)) : nullptr;
    if (!child) {
        child = AddStruct(className, name);
        if (isNew && created.size() >= kMostNames)
            vnFatal("Read:T_TABNAMEMAX");
        if (isNew)
            created.append(name);
    }
    child->Read(true);
}
