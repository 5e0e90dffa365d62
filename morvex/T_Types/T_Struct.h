// T_Struct: the container of the typed tree. A class derives from it and binds each of its fields
// to a variable in its constructor:
//
//     class Part : public T_Struct
//     {
//     public:
//         Part() { AddBool(&on, QStringLiteral("On"), TG_DEFAULT); ... }
//         bool IsA(const std::type_info &kind) const override
//         {
//             return kind == typeid(Part) || T_Struct::IsA(kind);
//         }
//         bool on;
//     };
//     T_Declare(Part); // only a class that files may create or that is cloned
//
// The order of the children is the order of saving, of printing and of the editors on screen.
//
// The text form, one item per line, Latin-1, each line ended by "\n", nothing escaped:
//
//     TS_Part           structure: "TS_" and the class
//     Left wing           its name
//     TV_FLOAT          variable: tag, name, value
//     Gain
//     1.500000
//     TT_INT            array: tag with a T, name, count, then a line for each element
//     Marks
//     2
//     1
//     5
//     TS_END            the end of the structure
//
// Lines are read into buffers of 100 bytes (tags and elements) and 1000 (names and values), and
// what is longer counts as the next line: these are limits of the format.
#pragma once

#include "T_Types/T_Obj.h"
#include "T_Types/T_Tab.h"
#include "T_Types/T_Var.h"

#include <QStringList>

class T_Struct : public T_Obj
{
public:
    /// The index that means the end.
    static constexpr quint32 kAtEnd = 0xFFFFFFFF;

    /// No children and the name "?".
    T_Struct();
    /// Deletes the children.
    ~T_Struct() override;

    void Write() override;
    /// Reads a body up to "TS_END"; the two header lines are the caller's. Nothing is cleared
    /// first, and what the tree does not know is passed over. Two things end the process (vnFatal):
    /// a new structure of an unknown class, and more than 100 names of new structures.
    /// @param apply is not looked at
    void Read(bool apply) override;
    void Print() override;
    bool IsA(const std::type_info &kind) const override;

    /// A button of this structure was pressed. @param field the mData of its variable
    virtual void OnButtonClicked(void *field);
    /// The items of the editable combo box that shows a field. @param field the mData of its
    /// variable
    virtual QStringList GetEditList(QString *field);
    /// A deep copy, owned by the caller. The class must be registered: the copy has the variables
    /// that its constructor makes, with this object's values. A TV_STRING and whatever else has no
    /// variant form stays as the constructor left it.
    virtual T_Struct *Clone();

    // Building, called by the constructor of a derived class. The Add operations for values clear
    // the field; a text and a button's field stay as they are.
    /// Links a child at the end and owns it from then on. Null is ignored.
    void AddChild(T_Obj *child);
    /// @param param the capacity in bytes for a TV_STRING, the gadget row for any other type
    T_Var *AddVar(quint32 type, const QString &name, void *field, quint32 param);
    void AddBool(bool *field, const QString &name, quint32 gadget);
    void AddInt(int *field, const QString &name, quint32 gadget);
    /// @param items the texts of the values from 0 on; not owned
    void AddEnum(int *field, const QString &name, quint32 gadget, QStringList *items);
    void AddQString(QString *field, const QString &name, quint32 gadget);
    T_Var *AddButton(bool *field, const QString &name);

    // Changes, each recorded (T_Undo).
    /// Makes a child of a registered class at the end. An unknown class ends the process (vnFatal).
    T_Obj *AddStruct(const QString &className, const QString &name);
    /// Links a structure in front of the child structure that has this index, at the end of the
    /// chain when there are fewer.
    /// @return false for null and for a child that is linked here already
    bool InsertStruct(T_Struct *child, quint32 index);
    /// Unlinks a structure: the caller owns it then. Its mParent stays.
    /// @return false when it is not linked here
    bool RemoveStruct(T_Struct *child);

    // Lookups: the whole name, case included, first match in the chain.
    /// @param type 0 for any. @return null, after a warning, when there is none
    T_Var *GetVar(const QString &name, quint32 type);
    /// @param type 0 for any. @return null when there is none
    T_Tab *GetTab(const QString &name, quint32 type);
    /// @return the child of that name and kind, null when there is none
    T_Obj *FindStruct(const QString &name, const std::type_info &kind);
    /// @return the child structure that has this index, null when there is none
    T_Struct *GetStruct(int index);
    bool Contains(const T_Obj *child) const;
    /// @return the place among the children of that kind; -1 when it is none of them, 0 for null
    int IndexOf(const T_Obj *child, const std::type_info &kind) const;
    /// @return the number of child structures of that kind
    int CountOf(const std::type_info &kind) const;

    // Walks: Rewind, then Next until null. The cursor stands in the object, so that there is one
    // walk at a time over a structure.
    void Rewind() { mCursor = mFirst; }
    T_Var *NextVar();
    T_Tab *NextTab();
    T_Obj *NextOf(const std::type_info &kind);

    T_Obj *mFirst = nullptr; // first child
    T_Obj *mCursor = nullptr; // where a walk goes on

private:
    template <typename Test>
    T_Obj *NextThat(const Test &passes);
    void ReadItem(const char *tag, const QString &name, QStringList &created);
    void ReadStruct(const QString &className, const QString &name, QStringList &created);
    void CopyStructs(T_Struct *copy);
    void CopyVars(T_Struct *copy);
    void CopyTabs(T_Struct *copy);
};
