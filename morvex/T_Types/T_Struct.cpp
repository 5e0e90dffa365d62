#include "T_Types/T_Struct.h"

#include "T_Types/T_Registry.h"
#include "T_Types/T_Stream.h"
#include "T_Types/T_Undo.h"
#include "support/vnMessage.h"

#include <QDebug>

#include <cstdio>

T_Declare(T_Struct);

T_Struct::T_Struct()
{
    SetName(QStringLiteral("?"));
}

T_Struct::~T_Struct()
{
    for (T_Obj *child = mFirst; child;) {
        T_Obj *next = child->mNext;
        delete child;
        child = next;
    }
}

void T_Struct::Write()
{
    if (!T_WriteStream)
        return;
    std::fprintf(T_WriteStream, "TS_%s\n%s\n", GetClassName().toLatin1().constData(),
        mName.toLatin1().constData());
    for (T_Obj *child = mFirst; child; child = child->mNext) {
        if (child->mFlags & T_FLAG_SAVE)
            child->Write();
    }
    std::fprintf(T_WriteStream, "TS_END\n");
}

void T_Struct::Print()
{
    const QByteArray className = GetClassName().toUtf8();
    const QByteArray name = mName.toUtf8();
    std::printf("%s [%s]\n", className.constData(), name.constData());
    for (T_Obj *child = mFirst; child; child = child->mNext)
        child->Print();
    std::printf("END %s [%s]\n", className.constData(), name.constData());
}

bool T_Struct::IsA(const std::type_info &kind) const
{
    return kind == typeid(T_Struct) || T_Obj::IsA(kind);
}

void T_Struct::OnButtonClicked(void *)
{
    qWarning() << "T_Struct::OnButtonClicked";
}

QStringList T_Struct::GetEditList(QString *)
{
    return {};
}

void T_Struct::AddChild(T_Obj *child)
{
    if (!child)
        return;
    child->mParent = this;
    child->mNext = nullptr;
    T_Obj **link = &mFirst;
    while (*link)
        link = &(*link)->mNext;
    *link = child;
}

T_Var *T_Struct::AddVar(quint32 type, const QString &name, void *field, quint32 param)
{
    const bool isString = type == TV_STRING;
    auto *var = new T_Var(type, name, field, isString ? quint32(TG_DEFAULT) : param);
    if (isString)
        var->mStringSize = static_cast<quint16>(param);
    AddChild(var);
    return var;
}

void T_Struct::AddBool(bool *field, const QString &name, quint32 gadget)
{
    *field = false;
    AddVar(TV_BOOL, name, field, gadget);
}

void T_Struct::AddInt(int *field, const QString &name, quint32 gadget)
{
    *field = 0;
    AddVar(TV_INT, name, field, gadget);
}

void T_Struct::AddEnum(int *field, const QString &name, quint32 gadget, QStringList *items)
{
    *field = 0;
    AddVar(TV_INT, name, field, gadget)->mEnumList = items;
}

void T_Struct::AddQString(QString *field, const QString &name, quint32 gadget)
{
    AddVar(TV_QSTRING, name, field, gadget);
}

T_Var *T_Struct::AddButton(bool *field, const QString &name)
{
    return AddVar(TV_BOUTON, name, field, TG_DEFAULT);
}

T_Obj *T_Struct::AddStruct(const QString &className, const QString &name)
{
    T_Undo::RecordAdd(this, CountOf(typeid(T_Struct)));
    T_Obj *child = T_New(className);
    if (!child) {
        const QString text = QStringLiteral("T_Struct::AddStruct %1 %2").arg(className, name);
        vnFatal(text.toUtf8().constData());
    }
    child->SetName(name);
    AddChild(child);
    return child;
}

bool T_Struct::InsertStruct(T_Struct *child, quint32 index)
{
    if (!child || Contains(child))
        return false;
    T_Undo::RecordAdd(this, index == kAtEnd ? CountOf(typeid(T_Struct)) : static_cast<int>(index));
    child->mParent = this;

    quint32 before = 0; // child structures passed
    T_Obj **link = &mFirst;
    for (; *link; link = &(*link)->mNext) {
        if (!(*link)->IsStruct())
            continue;
        if (before == index)
            break;
        ++before;
    }
    child->mNext = *link;
    *link = child;
    return true;
}

bool T_Struct::RemoveStruct(T_Struct *child)
{
    if (!child || !Contains(child))
        return false;
    const int index = IndexOf(child, typeid(T_Struct));
    if (index >= 0)
        T_Undo::RecordRemove(this, index);

    T_Obj **link = &mFirst;
    while (*link != child)
        link = &(*link)->mNext;
    *link = child->mNext;
    return true;
}

T_Var *T_Struct::GetVar(const QString &name, quint32 type)
{
    for (T_Obj *child = mFirst; child; child = child->mNext) {
        if (!child->IsVar() || child->GetName() != name)
            continue;
        auto *var = static_cast<T_Var *>(child);
        if (type == TV_NULL || type == var->mType)
            return var;
    }
    qWarning() << "-ERR- T_Struct::GetVar[%s] NotFound" << name;
    return nullptr;
}

T_Tab *T_Struct::GetTab(const QString &name, quint32 type)
{
    for (T_Obj *child = mFirst; child; child = child->mNext) {
        if (!child->IsTab() || child->GetName() != name)
            continue;
        auto *tab = static_cast<T_Tab *>(child);
        if (type == TV_NULL || type == tab->mType)
            return tab;
    }
    return nullptr;
}

T_Obj *T_Struct::FindStruct(const QString &name, const std::type_info &kind)
{
    for (T_Obj *child = mFirst; child; child = child->mNext) {
        if (child->IsA(kind) && child->GetName() == name)
            return child;
    }
    return nullptr;
}

T_Struct *T_Struct::GetStruct(int index)
{
    for (T_Obj *child = mFirst; child; child = child->mNext) {
        if (child->IsStruct() && index-- == 0)
            return static_cast<T_Struct *>(child);
    }
    return nullptr;
}

bool T_Struct::Contains(const T_Obj *child) const
{
    for (const T_Obj *linked = mFirst; linked; linked = linked->mNext) {
        if (linked == child)
            return true;
    }
    return false;
}

int T_Struct::IndexOf(const T_Obj *child, const std::type_info &kind) const
{
    if (!child)
        return 0; // no child counts as the first place
    int index = 0;
    for (const T_Obj *linked = mFirst; linked; linked = linked->mNext) {
        if (!linked->IsA(kind))
            continue;
        if (linked == child)
            return index;
        ++index;
    }
    return -1;
}

int T_Struct::CountOf(const std::type_info &kind) const
{
    int count = 0;
    for (const T_Obj *child = mFirst; child; child = child->mNext) {
        if (child->IsStruct() && child->IsA(kind))
            ++count;
    }
    return count;
}

/// @return the next child from the cursor on that passes the test, null at the end; the cursor then
/// stands behind it
template <typename Test>
T_Obj *T_Struct::NextThat(const Test &passes)
{
    while (mCursor) {
        T_Obj *child = mCursor;
        mCursor = child->mNext;
        if (passes(*child))
            return child;
    }
    return nullptr;
}

T_Var *T_Struct::NextVar()
{
    return static_cast<T_Var *>(NextThat([](const T_Obj &child) { return child.IsVar(); }));
}

T_Tab *T_Struct::NextTab()
{
    return static_cast<T_Tab *>(NextThat([](const T_Obj &child) { return child.IsTab(); }));
}

T_Obj *T_Struct::NextOf(const std::type_info &kind)
{
    return NextThat([&kind](const T_Obj &child) { return child.IsA(kind); });
}
