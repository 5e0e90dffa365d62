#include "T_Types/T_Struct.h"

#include "T_Types/T_Registry.h"
#include "T_Types/T_Undo.h"

#include <cstring>

namespace {

/// The recorder switched off for one operation, then as it was.
class RecorderOff
{
public:
    RecorderOff() { T_Undo::SetEnabled(false); }
    ~RecorderOff() { T_Undo::SetEnabled(before); }
    RecorderOff(const RecorderOff &) = delete;
    RecorderOff &operator=(const RecorderOff &) = delete;

private:
    const bool before = T_Undo::IsEnabled();
};

} // namespace

T_Struct *T_Struct::Clone()
{
    const RecorderOff recorderOff;
    // No guard: a class that is not registered must not be cloned.
    auto *copy = static_cast<T_Struct *>(T_New(GetClassName()));
    copy->mNext = mNext;
    copy->mParent = mParent;
    copy->mFlags = mFlags;
    copy->mName = mName;
    CopyStructs(copy);
    CopyVars(copy);
    CopyTabs(copy);
    return copy;
}

/// The structures that the copy's constructor made give way to copies of this object's. They are
/// unlinked, not deleted: the class may keep pointers to them.
void T_Struct::CopyStructs(T_Struct *copy)
{
    copy->Rewind();
    while (T_Obj *child = copy->NextOf(typeid(T_Struct))) {
        copy->RemoveStruct(static_cast<T_Struct *>(child));
        copy->Rewind();
    }
    Rewind();
    while (T_Obj *child = NextOf(typeid(T_Struct)))
        copy->InsertStruct(static_cast<T_Struct *>(child)->Clone(), kAtEnd);
}

void T_Struct::CopyVars(T_Struct *copy)
{
    Rewind();
    while (const T_Var *var = NextVar()) {
        if (T_Var *target = copy->GetVar(var->GetName(), var->mType))
            target->SetValue(var->GetValue());
    }
}

void T_Struct::CopyTabs(T_Struct *copy)
{
    Rewind();
    while (const T_Tab *tab = NextTab()) {
        T_Tab *target = copy->GetTab(tab->GetName(), tab->mType);
        if (!target)
            continue;
        target->SetSize(tab->mCount);
        const int stride = qMin(T_GetElementSize(tab), T_GetElementSize(target));
        const size_t bytes = size_t(stride) * size_t(tab->mCount);
        if (bytes > 0)
            std::memcpy(*target->mArray, *tab->mArray, bytes);
    }
}
