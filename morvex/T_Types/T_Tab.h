// T_Tab: a variable whose value is a heap array of elements of one type.
//
//     class Part : public T_Struct          T_Tab "Marks"
//     {                                       mType  TV_INT, mData null
//         int *marks;  <----------------------  mArray
//     }      |                                mCount 3
//            +--> | 1 | 2 | 5 |
//
// The tab owns the array: it makes and resizes it by calloc and realloc and frees it. A class makes
// one with `new T_Tab(type, name, &pointer)` and AddChild; for TV_STRING it also sets mStringSize.
#pragma once

#include "T_Types/T_Var.h"

class T_Tab : public T_Var
{
public:
    /// Stores null in the owner's pointer.
    /// @param array address of the owner's pointer, null for the dummy alone
    T_Tab(quint32 type, const QString &name, void **array);
    /// Frees the array and stores null in the owner's pointer, which must still be there: a member
    /// of the class that made the tab is, as long as it is a plain pointer.
    ~T_Tab() override;

    /// A line with the tag, its second letter T; the name; the count; one line for each element.
    void Write() override;
    /// The count and as many lines. A count below 0 or above a million stores nothing, its lines
    /// are swallowed.
    void Read(bool apply) override;
    /// Shows nothing.
    void Print() override;
    bool IsA(const std::type_info &kind) const override;

    /// Resizes the array; new elements are zeroed. Records the change (T_Undo); the present size is
    /// no change. A size below 0 is refused, with the error line in the log.
    void SetSize(int count);

    /// @return an invalid variant for a type that has no variant form
    QVariant GetValueAt(int index) const;

    void **mArray; // address of the owner's pointer
    qint32 mCount = 0; // elements

private:
    /// False for an array of QString, which has no storage behind its count.
    bool HasText() const { return mType != TV_QSTRING; }
    void *Data() const { return mArray ? *mArray : nullptr; }
};

/// The stride of an array in bytes; 0 for a type that cannot stand in one, TV_QSTRING among them.
int T_GetElementSize(const T_Tab *tab);

/// One shared array without type, name and storage, made at first use and never deleted. It
/// swallows the lines of an array that the tree does not know.
T_Tab *T_DummyTab();
