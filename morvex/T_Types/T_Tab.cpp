#include "T_Types/T_Tab.h"

#include "T_Types/T_Stream.h"
#include "T_Types/T_Undo.h"
#include "support/vnLog.h"

#include <QPoint>
#include <QTransform>
#include <QVector2D>
#include <QVector3D>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr qint64 kMostElements = 1000000; // of an array in a file

// The strides are part of the arrays' contract; an owner walks his array by them.
static_assert(sizeof(T_ShortPoint) == 4, "two 16-bit numbers");
static_assert(sizeof(QPoint) == 8 && sizeof(QVector2D) == 8, "two 32-bit numbers");
static_assert(sizeof(QVector3D) == 12, "three 32-bit floats");
static_assert(sizeof(T_LinkedPoint) == 24, "two doubles and a word");

} // namespace

T_Tab::T_Tab(quint32 type, const QString &name, void **array)
    : T_Var(type, name, nullptr, TG_DEFAULT), mArray(array)
{
    if (mArray)
        *mArray = nullptr;
}

T_Tab::~T_Tab()
{
    if (!Data())
        return;
    std::free(*mArray);
    *mArray = nullptr;
}

void T_Tab::Write()
{
    if (!T_WriteStream)
        return;
    QByteArray tag = T_TagFromType(mType);
    tag[1] = 'T';
    std::fprintf(T_WriteStream, "%s\n%s\n", tag.constData(), mName.toLatin1().constData());
    std::fprintf(T_WriteStream, "%d\n", mCount);
    for (int i = 0; i < mCount; ++i)
        std::fprintf(T_WriteStream, "%s\n", HasText() ? ValueToText(Data(), nullptr, i) : "");
}

void T_Tab::Read(bool apply)
{
    // Ten digits and more would overflow an int; white space behind the number is eaten with it.
    long long count = 0;
    if (!T_ReadStream || std::fscanf(T_ReadStream, "%18lld\n", &count) != 1)
        return;
    const bool store = apply && count >= 0 && count <= kMostElements;
    if (store)
        SetSize(int(count));

    char value[100];
    for (long long i = 0; i < count && ReadLine(value, sizeof value); ++i) {
        if (store && HasText())
            TextToValue(Data(), value, int(i));
    }
}

void T_Tab::Print() { }

bool T_Tab::IsA(const std::type_info &kind) const
{
    return kind == typeid(T_Tab) || T_Var::IsA(kind);
}

void T_Tab::SetSize(int count)
{
    if (count == mCount || !mArray)
        return;
    if (count < 0) {
        vnLogErrorLine('B', __LINE__, __FILE__);
        return;
    }

    T_Undo::RecordResize(this, count);
    const size_t stride = size_t(T_GetElementSize(this));
    const size_t oldBytes = size_t(mCount) * stride;
    const size_t newBytes = size_t(count) * stride;
    mCount = count;
    if (!*mArray) {
        *mArray = std::calloc(size_t(count), stride);
        return;
    }
    // A size of 0 frees the block with most runtimes; whatever comes back is kept.
    *mArray = std::realloc(*mArray, newBytes);
    if (*mArray && newBytes > oldBytes)
        std::memset(static_cast<char *>(*mArray) + oldBytes, 0, newBytes - oldBytes);
}

QVariant T_Tab::GetValueAt(int index) const
{
    if (!Data() || !HasText() || index < 0 || index >= mCount)
        return QVariant();
    return ValueToVariant(Data(), index);
}

int T_GetElementSize(const T_Tab *tab)
{
    switch (tab->mType) {
    case TV_BOOL:
    case TV_CHAR:
        return 1;
    case TV_SHORT:
        return 2;
    case TV_INT:
    case TV_FLOAT:
    case TV_COLOR:
    case TV_SXY:
        return 4;
    case TV_DOUBLE:
    case TV_QPOINT:
    case TV_QVECTOR2D:
        return 8;
    case TV_QVECTOR3D:
        return 12;
    case TV_LINKED_POINT:
        return 24;
    case TV_QTRANSFORM:
        return int(sizeof(QTransform));
    case TV_STRING:
        return tab->mStringSize;
    default:
        return 0;
    }
}

T_Tab *T_DummyTab()
{
    static T_Tab *const dummy = new T_Tab(TV_NULL, QString(), nullptr);
    return dummy;
}
