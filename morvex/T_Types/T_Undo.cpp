#include "T_Types/T_Undo.h"

#include "T_Types/T_Struct.h"

namespace {

bool IsSameTarget(const T_UndoRecord &a, const T_UndoRecord &b)
{
    return a.mWord == b.mWord && a.mObject == b.mObject && a.mIndex == b.mIndex
        && a.mKind == b.mKind;
}

} // namespace

T_Undo *T_Undo::Instance()
{
    static T_Undo *const undo = new T_Undo;
    return undo;
}

void T_Undo::RecordValue(T_Var *var)
{
    if (!Instance()->IsRecording())
        return;
    Instance()->Record(var, 0, T_UndoRecord::Value, var->IsVar() ? var->GetValue() : QVariant());
}

void T_Undo::RecordElement(T_Tab *tab, int index)
{
    if (!Instance()->IsRecording())
        return;
    Instance()->Record(
        tab, index, T_UndoRecord::Element, tab->IsTab() ? tab->GetValueAt(index) : QVariant());
}

void T_Undo::RecordResize(T_Tab *tab, int newSize)
{
    if (!Instance()->IsRecording())
        return;
    for (int i = newSize; i < tab->mCount; ++i)
        RecordElement(tab, i);
    Instance()->Record(tab, 0, T_UndoRecord::Size, tab->mCount);
}

void T_Undo::RecordAdd(T_Struct *parent, int index)
{
    if (!Instance()->IsRecording() || !parent || index < 0)
        return;
    Instance()->Record(parent, parent->IsStruct() ? index : 0, T_UndoRecord::ChildAdded, 0);
}

void T_Undo::RecordRemove(T_Struct *parent, int index)
{
    if (!Instance()->IsRecording() || !parent || index < 0)
        return;
    if (!parent->IsStruct()) {
        Instance()->Record(parent, 0, T_UndoRecord::ChildRemoved, QVariant());
        return;
    }
    void *child = parent->GetStruct(index);
    Instance()->Record(parent, index, T_UndoRecord::ChildRemoved, QVariant::fromValue(child));
}

void T_Undo::BeginGroup()
{
    ++Instance()->mGroupDepth;
    if (Instance()->IsRecording())
        Instance()->Record(nullptr, 0, T_UndoRecord::GroupMark, 1);
}

void T_Undo::EndGroup()
{
    if (Instance()->mGroupDepth <= 0)
        return;
    --Instance()->mGroupDepth;
    if (Instance()->IsRecording())
        Instance()->Record(nullptr, 0, T_UndoRecord::GroupMark, 0);
}

void T_Undo::Clear()
{
    qDeleteAll(mRecords);
    mRecords.clear();
    mCursor = -1;
    mGroupDepth = 0;
    mTouched = false;
}

void T_Undo::Record(T_Obj *object, int index, int kind, const QVariant &value)
{
    auto *record = new T_UndoRecord;
    record->mObject = object;
    record->mIndex = index;
    record->mKind = kind;
    record->mValue = value;
    if (!Push(record))
        delete record;
}

/// Of a run of changes to one target the first record alone is kept: it has the oldest value.
/// @return false when the record is not needed; it is the caller's then
bool T_Undo::Push(T_UndoRecord *record)
{
    mTouched = true;
    if (!mRecords.isEmpty() && mCursor >= 0 && record->mKind <= T_UndoRecord::Size
        && IsSameTarget(*record, *mRecords.at(mCursor)))
        return false;

    while (mRecords.size() - 1 > mCursor)
        delete mRecords.takeLast();
    mRecords.append(record);
    mCursor = mRecords.size() - 1;
    return true;
}
