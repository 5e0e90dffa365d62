// Any bytes as a typed text: the reader must neither crash nor leak, nor write outside a field.
//
// A text is read into a tree that holds a variable and an array of every type, structures that are
// there before, and fields and capacities that lead nowhere. Each field is a heap block of its own
// and of its exact size, so that the sanitizer sees a byte too many. What was read is then read a
// second time on top, cloned and written, so that the tree is walked whatever it has become.
//
// The two texts that end the process, an unknown class and too many names, come back as an exception.
#include "T_Types/T_Registry.h"
#include "T_Types/T_Stream.h"
#include "T_Types/T_Struct.h"
#include "T_Types/T_Undo.h"
#include "support/vnMessage.h"

#include <QPoint>
#include <QTransform>
#include <QVector2D>
#include <QVector3D>
#include <QtDebug>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <vector>

namespace {

constexpr quint16 kCapacity = 8; // bytes of a TV_STRING

/// Bytes of a field of that type.
size_t FieldSize(quint32 type)
{
    switch (type) {
    case TV_BOOL:
    case TV_BOUTON:
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
    case TV_STRING:
        return 8;
    case TV_QVECTOR3D:
        return 12;
    case TV_LINKED_POINT:
        return 24;
    default:
        return 0;
    }
}

/// A variable and an array of every type, named by the type's tag.
class Everything : public T_Struct
{
public:
    Everything()
    {
        for (quint32 type = TV_NULL; type < TV_LAST; ++type) {
            const QString tag = QString::fromLatin1(T_TagFromType(type));
            AddVar(type, tag, Field(type), type == TV_STRING ? quint32(kCapacity) : 0);
            auto *tab = new T_Tab(type, tag, &arrays[type]);
            tab->mStringSize = kCapacity;
            AddChild(tab);
        }
        AddVar(TV_STRING, QStringLiteral("no capacity"), Field(TV_STRING), 0);
        auto *emptyTab = new T_Tab(TV_STRING, QStringLiteral("no capacity"), &arrays[TV_LAST]);
        AddChild(emptyTab);
    }
    bool IsA(const std::type_info &kind) const override
    {
        return kind == typeid(Everything) || T_Struct::IsA(kind);
    }

private:
    void *Field(quint32 type)
    {
        if (type == TV_QTRANSFORM)
            return transform.get();
        if (type == TV_QSTRING)
            return text.get();
        const size_t size = FieldSize(type);
        if (size == 0)
            return nullptr;
        fields.emplace_back(new char[size]());
        return fields.back().get();
    }

    std::vector<std::unique_ptr<char[]>> fields;
    const std::unique_ptr<QTransform> transform{ new QTransform };
    const std::unique_ptr<QString> text{ new QString };
    void *arrays[TV_LAST + 1] = {};
};

/// What a text is read into: Everything, a structure that is there before, and variables without a
/// field.
class Root : public T_Struct
{
public:
    Root()
    {
        AddStruct(QStringLiteral("Everything"), QStringLiteral("all"));
        AddStruct(QStringLiteral("T_Struct"), QStringLiteral("part"));
        for (quint32 type = TV_NULL; type < TV_LAST; ++type) {
            const QString tag = QString::fromLatin1(T_TagFromType(type));
            T_Var *var = AddVar(type, tag, nullptr, TG_DEFAULT);
            var->mFlags = T_FLAG_SHOW; // without a field there is nothing to save
        }
    }
};

T_Declare(Everything);

struct Fatal : std::exception
{ };

/// The tree's own streams are open for this long.
class StreamScope
{
public:
    StreamScope(std::FILE *&global, std::FILE *file) : stream(global) { stream = file; }
    ~StreamScope()
    {
        std::fclose(stream);
        stream = nullptr;
    }
    StreamScope(const StreamScope &) = delete;
    StreamScope &operator=(const StreamScope &) = delete;

private:
    std::FILE *&stream;
};

void ReadWhole(T_Struct &root, const void *data, size_t size)
{
    const StreamScope scope(T_ReadStream, fmemopen(const_cast<void *>(data), size, "rb"));
    char line[1000];
    if (ReadLine(line, sizeof line) && ReadLine(line, sizeof line))
        root.Read(true);
}

void WriteWhole(T_Struct &root)
{
    char *text = nullptr;
    size_t size = 0;
    {
        const StreamScope scope(T_WriteStream, open_memstream(&text, &size));
        root.Write();
    }
    std::free(text);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    SetFatalHandler([](const char *) { throw Fatal(); });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0; // fmemopen refuses it
    Root root;
    try {
        ReadWhole(root, data, size);
        ReadWhole(root, data, size); // what the first reading made is there before now
    } catch (const Fatal &) { }
    WriteWhole(root);

    // The class named T_Struct is what a file makes most; Everything is cloned as a part of it.
    T_Struct *all = root.GetStruct(0);
    const std::unique_ptr<T_Struct> clone(all->Clone());
    WriteWhole(*clone);
    T_Undo::Instance()->Clear();
    return 0;
}
