#include "T_Types/T_Var.h"

#include "T_Types/T_SelectionList.h"
#include "T_Types/T_Stream.h"
#include "T_Types/T_Struct.h"
#include "T_Types/T_Undo.h"

#include <cstdio>

namespace {

/// A group of the recorder, closed on every way out.
class UndoGroup
{
public:
    UndoGroup() { T_Undo::BeginGroup(); }
    ~UndoGroup() { T_Undo::EndGroup(); }
    UndoGroup(const UndoGroup &) = delete;
    UndoGroup &operator=(const UndoGroup &) = delete;
};

T_Struct *AsStruct(T_Obj *object)
{
    return object && object->IsStruct() ? static_cast<T_Struct *>(object) : nullptr;
}

} // namespace

T_Var::T_Var(quint32 type, const QString &name, void *data, quint32 gadget)
    : mData(data), mType(type), mGadget(gadget)
{
    SetName(name);
}

void T_Var::Write()
{
    if (!T_WriteStream || mType == TV_NULL || mType == TV_ONGLET)
        return;
    std::fprintf(T_WriteStream, "%s\n%s\n", T_TagFromType(mType), mName.toLatin1().constData());
    std::fprintf(T_WriteStream, "%s\n", ValueToText(mData, nullptr, 0));
}

void T_Var::Read(bool apply)
{
    char value[1000];
    if (ReadLine(value, sizeof value) && apply && mData)
        TextToValue(mData, value, 0);
}

void T_Var::Print()
{
    std::printf("T_VAR [%s] (%s=%s)\n", T_TagFromType(mType), mName.toUtf8().constData(),
        ValueToText(mData, nullptr, 0));
}

bool T_Var::IsA(const std::type_info &kind) const
{
    return kind == typeid(T_Var) || T_Obj::IsA(kind);
}

void T_Var::SetValue(const QVariant &value)
{
    T_Undo::RecordValue(this);
    VariantToValue(value, mData, 0);
}

void T_Var::Propagate(bool toSelection, bool sameName, int level)
{
    if (!AsStruct(mParent))
        return;
    if (!toSelection) {
        T_Struct *ancestor = AsStruct(GetParent(level));
        if (!ancestor)
            return;
        const UndoGroup group;
        PropagateTo(ancestor, sameName, level);
        return;
    }

    const T_SelectionList *selection = T_SelectionList::Get();
    if (!selection)
        return;
    const UndoGroup group;
    for (T_Obj *element : selection->mObjects)
        PropagateTo(AsStruct(element), /*sameName=*/false, /*level=*/0);
}

void T_Var::PropagateTo(T_Struct *target, bool sameName, int level)
{
    if (!target)
        return;
    if (level != 0) {
        target->Rewind();
        while (T_Obj *child = target->NextOf(typeid(T_Struct)))
            PropagateTo(static_cast<T_Struct *>(child), sameName, level - 1);
        return;
    }

    const T_Obj &parent = *mParent;
    if (target == mParent || !target->IsExactly(typeid(parent)))
        return;
    if (sameName && target->GetName() != parent.GetName())
        return;
    T_Var *sister = target->GetVar(mName, mType);
    if (sister && sister != this)
        sister->SetValue(GetValue());
}

T_Var *T_DummyVar()
{
    static T_Var *const dummy = new T_Var(TV_NULL, QString(), nullptr, TG_DEFAULT);
    return dummy;
}
