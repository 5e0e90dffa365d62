// T_Var: the leaf of the typed tree, a named and typed handle on a field that belongs to someone
// else.
//
//     class Part : public T_Struct          T_Var "Gain"
//     {                                       mType  TV_FLOAT
//         float gain;  <----------------------  mData
//     }                                       mGadget TG_DEFAULT
//
// The owner reads and writes its field directly; the variable gives the library the means to show,
// save, clone and propagate it. It holds no value, has no observers, and applies no range: that is
// the editor's part. Conversions take the address and an element's index, since T_Tab uses them on
// the elements of an array.
//
// Errors     None is told: an unknown type stores nothing, a text that does not fit leaves the field
//            as it was, and a variant that cannot be converted stores the type's empty value. A null
//            mData is the caller's fault except in Read.
#pragma once

#include "T_Types/T_Obj.h"
#include "T_Types/T_TypeTables.h"

#include <QStringList>
#include <QVariant>

class T_Struct;

class T_Var : public T_Obj
{
public:
    /// Takes everything as it comes. A TV_STRING also needs mStringSize, which T_Struct::AddVar
    /// sets.
    T_Var(quint32 type, const QString &name, void *data, quint32 gadget);

    /// Three lines: tag, name, value. Layout markers and TV_NULL are not saved.
    void Write() override;
    /// One line, the value.
    void Read(bool apply) override;
    void Print() override;
    bool IsA(const std::type_info &kind) const override;

    /// The text form of element `index` of `data`; `buffer` is not used.
    /// @return a buffer of 100 bytes shared by all variables, valid until the next call. A type
    /// without a text form leaves the text of the call before in it. A text of more than 99
    /// characters cannot be held: the result is empty then, with the error line in the log
    char *ValueToText(void *data, char *buffer, int index) const;
    /// Reads element `index` of `data` from a text. The way back is not the mirror of the way out
    /// for every type; T_VarText.cpp tells where and why.
    void TextToValue(void *data, const char *text, int index);

    /// @return an invalid variant for the types without a variant form: TV_STRING, TV_BOUTON,
    /// TV_SXY and those that have no value
    QVariant ValueToVariant(void *data, int index) const;
    void VariantToValue(const QVariant &value, void *data, int index);

    QVariant GetValue() const { return ValueToVariant(mData, 0); }
    /// Records the old value (T_Undo) and stores the new one. No signal, no range.
    void SetValue(const QVariant &value);

    /// Copies this value to the variables of the same name and type in sister structures, as one
    /// undo group.
    /// @param toSelection true: to the structures of T_SelectionList, whatever the other arguments
    /// @param sameName only to structures that have the name of this variable's parent
    /// @param level generations to climb; the sisters stand that many levels below the ancestor
    void Propagate(bool toSelection, bool sameName, int level);

    void *mData; // the field; null for a layout marker. Not owned, fixed for life
    quint32 mType; // T_VarType
    quint32 mGadget; // row of T_GadgetTable
    QStringList *mEnumList = nullptr; // items of a combo box or null; the owner's
    quint16 mStringSize = 0; // bytes of a TV_STRING, terminator included; that type only

private:
    void RealsToText(void *data, int index) const;
    void TextToReals(void *data, const char *text, int index);
    void VariantToQtValue(const QVariant &value, void *data, int index);
    void PropagateTo(T_Struct *target, bool sameName, int level);
};

/// One shared variable without type, name and field, made at first use and never deleted. It
/// swallows a value that has no variable.
T_Var *T_DummyVar();
