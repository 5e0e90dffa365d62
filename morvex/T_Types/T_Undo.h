// T_Undo: the recorder of changes. Each change that passes through the typed objects is announced
// here before it is made, so that a history of earlier values can be kept.
//
//     mRecords   | mark 1 | value a | value b | mark 0 | size t |
//                                                        ^ mCursor
//
// It takes records only; there is no operation that plays one back. The panel switches it off.
#pragma once

#include <QList>
#include <QVariant>

class T_Obj;
class T_Struct;
class T_Tab;
class T_Var;

struct T_UndoRecord
{
    enum Kind {
        Value = 0, // a variable is about to change; mValue is its value now
        Element = 1, // element mIndex of an array likewise
        Size = 2, // an array is about to be resized; mValue is its count now
        GroupMark = 3, // mValue is 1 for the begin, 0 for the end
        ChildAdded = 4, // a structure gets a child structure at mIndex
        ChildRemoved = 5, // a structure loses the one at mIndex; mValue holds it as void *
    };

    quint64 mWord = 0; // 0 in every record
    T_Obj *mObject = nullptr; // not owned, and only ever compared: it may be gone
    int mIndex = 0;
    int mKind = Value;
    QVariant mValue;
};

class T_Undo
{
public:
    /// Made at first use, never destroyed.
    static T_Undo *Instance();

    static void RecordValue(T_Var *var);
    static void RecordElement(T_Tab *tab, int index);
    /// The elements that a smaller size is about to cut off are recorded first.
    static void RecordResize(T_Tab *tab, int newSize);
    /// A null structure or a negative index is not recorded.
    static void RecordAdd(T_Struct *parent, int index);
    static void RecordRemove(T_Struct *parent, int index);
    /// A group is counted while the recorder is off as well; its marks then are not recorded.
    static void BeginGroup();
    /// Does nothing when no group is open.
    static void EndGroup();

    /// The switch of the panel and of T_Struct::Clone.
    static bool IsEnabled() { return Instance()->mEnabled; }
    static void SetEnabled(bool enabled) { Instance()->mEnabled = enabled; }

    /// True when a record would be taken.
    bool IsRecording() const { return mEnabled && mActive && !mReplaying; }
    /// Forgets the history and closes every group; the switches stay.
    void Clear();

    // Public as the record's fields are: a player of the history would stand outside. None is set
    // from outside in this system but mEnabled.
    bool mReplaying = false; // refuses every record while set
    bool mActive = true; // refuses every record while clear
    bool mTouched = false; // set by every record that reaches the list, a refused one too
    bool mEnabled = true; // refuses every record while clear
    int mCursor = -1; // index of the last record, -1 when there is none
    QList<T_UndoRecord *> mRecords; // owned
    int mGroupDepth = 0; // groups open

private:
    T_Undo() = default;
    bool Push(T_UndoRecord *record);
    void Record(T_Obj *object, int index, int kind, const QVariant &value);
};
