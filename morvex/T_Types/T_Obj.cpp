#include "T_Types/T_Obj.h"

#include "T_Types/T_Struct.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#if __has_include(<cxxabi.h>)
#include <cxxabi.h>
#define VN_HAS_DEMANGLER 1
#else
#define VN_HAS_DEMANGLER 0
#endif

namespace {

/// A type name as it stands in the source, scope included. A name that is not mangled is in that
/// form already.
QString Demangled(const char *typeName)
{
#if VN_HAS_DEMANGLER
    int status = 0;
    const std::unique_ptr<char, void (*)(void *)> text(
        abi::__cxa_demangle(typeName, nullptr, nullptr, &status), std::free);
    if (text)
        return QString::fromUtf8(text.get());
#endif
    return QString::fromUtf8(typeName);
}

} // namespace

void T_Obj::Write() { }

void T_Obj::Read(bool) { }

void T_Obj::Print()
{
    std::printf("T_OBJ\n");
}

bool T_Obj::IsA(const std::type_info &kind) const
{
    return kind == typeid(T_Obj);
}

bool T_Obj::IsExactly(const std::type_info &kind) const
{
    return kind == typeid(*this);
}

bool T_Obj::IsStruct() const
{
    return IsA(typeid(T_Struct));
}

bool T_Obj::IsVar() const
{
    return IsExactly(typeid(T_Var));
}

bool T_Obj::IsTab() const
{
    return IsExactly(typeid(T_Tab));
}

T_Obj *T_Obj::GetParent(int level) const
{
    T_Obj *parent = mParent;
    for (; level > 0 && parent; --level)
        parent = parent->mParent;
    return parent;
}

QString T_Obj::GetClassName() const
{
    return T_OwnClassName(typeid(*this).name());
}

QString T_OwnClassName(const char *typeName)
{
    QString name = Demangled(typeName);
    name.remove(QLatin1String("class "));

    // From the end, since a scope may be a function whose own name has unpaired signs in it.
    int depth = 0;
    for (int i = name.size() - 1; i > 0; --i) {
        const QChar sign = name.at(i);
        if (QStringLiteral(">)}").contains(sign))
            ++depth;
        else if (QStringLiteral("<({").contains(sign))
            --depth;
        else if (depth == 0 && sign == QLatin1Char(':'))
            return name.mid(i + 1);
    }
    return name;
}
