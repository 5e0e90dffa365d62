#include "Trace.h"

#include <QString>

#include <algorithm>

namespace rostrum {

void Trace::Start()
{
    started += entries.size();
    entries.clear();
    on = true;
}

int Trace::Add(const TraceEntry &entry)
{
    entries << entry;
    return started + entries.size() - 1;
}

void Trace::SetResult(int number, A_Err result)
{
    const int index = number - started;
    if (index >= 0 && index < entries.size())
        entries[index].result = result;
}

QByteArrayList Trace::Functions() const
{
    QByteArrayList names;
    for (const TraceEntry &entry : entries) {
        const QByteArray name = entry.function;
        if (name != "AcquireSuite" && name != "ReleaseSuite")
            names << name;
    }
    return names;
}

int Trace::Count(const QByteArray &function) const
{
    return static_cast<int>(std::count_if(entries.cbegin(), entries.cend(),
        [&](const TraceEntry &entry) { return function == entry.function; }));
}

QByteArray Trace::Text() const
{
    QByteArray text;
    for (const TraceEntry &entry : entries) {
        text += QByteArray(entry.suite) + ' ' + QByteArray::number(entry.version) + ' '
            + entry.function + '(' + entry.arguments + ") = " + QByteArray::number(entry.result)
            + '\n';
    }
    return text;
}

QByteArray HandleText(const HandleParts &handle)
{
    static const char *const names[] = { "none", "project", "item", "composition", "layer",
        "item footage", "footage", "stream", "effect", "collection", "memory", "panel" };
    const auto kind = static_cast<std::size_t>(handle.kind);
    if (kind >= std::size(names))
        return "unknown handle";
    // Items carry their id in the low bits, all others their place.
    const bool byId = handle.kind == HandleKind::Item || handle.kind == HandleKind::Composition
        || handle.kind == HandleKind::ItemFootage;
    const std::uint64_t number = handle.payload & (byId ? 0xFFFFFFFF : 0xFFFFF);
    return QByteArray(names[kind]) + ' ' + QByteArray::number(static_cast<qulonglong>(number));
}

QByteArray TimeText(const A_Time *time)
{
    return QByteArray::number(time->value) + '/' + QByteArray::number(time->scale);
}

QByteArray Utf16Text(const A_UTF16Char *text)
{
    return QString::fromUtf16(text).toUtf8();
}

} // namespace rostrum
