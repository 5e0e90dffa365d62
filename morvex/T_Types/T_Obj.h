// T_Obj: the root of the typed objects, a named node in a tree that mirrors the fields of its
// owner.
//
//     T_Struct mFirst --> T_Var mNext --> T_Tab mNext --> T_Struct mNext --> null
//
//     T_Obj                 a name, flags, a place in a chain of children
//       T_Var               a typed handle on one field of its owner
//         T_Tab             a typed handle on a heap array
//       T_Struct            a container; Doc is one
//
// None of them is a QObject. All work happens on the thread of the widgets. A structure owns its
// children from the moment that they are linked into it.
#pragma once

#include <QString>
#include <QtGlobal>

#include <typeinfo>

/// Bits of T_Obj::mFlags. All are set at the start and nothing in this library clears one.
enum T_Flag : quint8 {
    T_FLAG_SAVE = 1 << 0, // written by its parent's Write
    T_FLAG_SHOW = 1 << 1, // KDockPannel makes an editor for it
    T_FLAG_ENABLE = 1 << 2, // its editor starts enabled
};

class T_Obj
{
public:
    T_Obj() = default;
    /// Leaves the chain and the parent as they are: a structure takes a child out before it dies.
    virtual ~T_Obj() = default;
    T_Obj(const T_Obj &) = delete;
    T_Obj &operator=(const T_Obj &) = delete;

    /// Writes the object to T_WriteStream; here nothing.
    virtual void Write();
    /// Reads the object's body from T_ReadStream; here nothing.
    /// @param apply false swallows the text without storing it
    virtual void Read(bool apply);
    /// Shows the object on standard output.
    virtual void Print();
    /// Tells whether the object is of a class or of one above it. Each class of the model writes
    /// its own chain: its own type, then that of each class above.
    virtual bool IsA(const std::type_info &kind) const;
    /// Tells whether the object's class is this one and no other.
    virtual bool IsExactly(const std::type_info &kind) const;

    // The three kind tests are not alike, on purpose.
    /// True for T_Struct and for every class derived from it.
    bool IsStruct() const;
    /// True for T_Var alone: a T_Tab is none, although it derives from T_Var.
    bool IsVar() const;
    /// True for T_Tab alone.
    bool IsTab() const;

    void SetName(const QString &name) { mName = name; }
    QString GetName() const { return mName; }

    /// @param level 0 or below for the parent, 1 for its parent, and so on
    /// @return null as soon as the walk leaves the tree
    T_Obj *GetParent(int level) const;

    /// The class's own name, without the namespace or the class around it. For a structure it
    /// stands behind "TS_" in a file, and T_New looks it up.
    QString GetClassName() const;

    T_Obj *mNext = nullptr; // next sibling in the parent's chain
    T_Obj *mParent = nullptr; // owning T_Struct, null for a root
    quint8 mFlags = 0xFF; // T_Flag
    QString mName; // also the key by which the object is found and saved
};

/// A class's own name from what type_info::name() gives for it, which GCC, Clang and MinGW mangle
/// alike and others spell out. "class " goes wherever it stands, and so does every namespace, class
/// or function around it; template arguments are kept as they are.
QString T_OwnClassName(const char *typeName);
