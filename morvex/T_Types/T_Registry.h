// The class registry: with it a class name read from a file becomes a new object.
//
// Records are made by static initialisation, form a chain whose head is the newest one, and live as
// long as the program.
#pragma once

#include <QString>

class T_Obj;

using T_Factory = T_Obj *(*)();

/// One record of the registry. A duplicate is warned of and linked all the same, and is then what
/// T_New finds first.
class NewHook
{
public:
    /// Checks the tables (T_VerifEnum), compares with every earlier record, and links itself. The
    /// record must live as long as the program.
    NewHook(T_Factory factory, const QString &name);
    NewHook(const NewHook &) = delete;
    NewHook &operator=(const NewHook &) = delete;

    /// The newest record, null when there is none.
    static const NewHook *First();

    const NewHook *next = nullptr;
    T_Factory factory = nullptr;
    QString name;
};

/// @return a new object of the class that was registered last under this name, owned by the caller;
/// null when there is none
T_Obj *T_New(const QString &className);

/// Registers a class under its own name. Stands once, beside the class's definition.
#define T_Declare(ClassName)                                                                       \
    static NewHook T_hookOf##ClassName(                                                            \
        []() -> T_Obj * { return new ClassName; }, QStringLiteral(#ClassName))
