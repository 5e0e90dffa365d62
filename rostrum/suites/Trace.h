// A record of the calls that reach the host, in order: suite, function, arguments in short, result.
// Off, it costs one branch a call.
#pragma once

#include "suites/Handles.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QVector>

#include <type_traits>

namespace rostrum {

struct TraceEntry
{
    const char *suite = "";
    int version = 0;
    const char *function = "";
    QByteArray arguments; // "layer 12, 7, 5/25, &"; "&" stands for a place that takes a result
    A_Err result = A_Err_NONE;
};

class Trace
{
public:
    /// Empties the record and starts it.
    void Start();
    void Stop() { on = false; }
    bool IsOn() const { return on; }

    const QVector<TraceEntry> &Entries() const { return entries; }
    /// The functions' names alone, without those of the basic suite.
    QByteArrayList Functions() const;
    /// How often a function was called; of a suite's acquisitions: Count("AcquireSuite").
    int Count(const QByteArray &function) const;
    /// One line an entry: "AEGP Stream Suite 7 AEGP_DisposeStream(stream 3) = 0".
    QByteArray Text() const;

    /// For the host. @return the number for SetResult
    int Add(const TraceEntry &entry);
    void SetResult(int number, A_Err result);

private:
    QVector<TraceEntry> entries;
    int started
        = 0; // number of the first entry: a call may begin under one record, end under the next
    bool on = false;
};

QByteArray HandleText(const HandleParts &handle);
QByteArray TimeText(const A_Time *time);
QByteArray Utf16Text(const A_UTF16Char *text);

/// An argument in short. Texts and times are shown, handles named, all other pointers are "&".
template <typename Argument>
QByteArray ArgumentText(Argument argument)
{
    using Pointee = std::remove_pointer_t<Argument>;
    if constexpr (std::is_floating_point_v<Argument>) {
        return QByteArray::number(argument);
    } else if constexpr (std::is_integral_v<Argument>) {
        return QByteArray::number(static_cast<qint64>(argument));
    } else if constexpr (!std::is_pointer_v<Argument>) {
        return "{...}";
    } else if constexpr (std::is_function_v<Pointee>) {
        return argument ? "function" : "null";
    } else {
        if (!argument)
            return "null";
        const HandleParts handle = TakeApart(argument);
        if (handle.kind != HandleKind::None)
            return HandleText(handle);
        if constexpr (std::is_same_v<Pointee, const A_char>)
            return '"' + QByteArray(argument) + '"';
        else if constexpr (std::is_same_v<Pointee, const A_u_char>)
            return '"' + QByteArray(reinterpret_cast<const char *>(argument)) + '"';
        else if constexpr (std::is_same_v<Pointee, const A_UTF16Char>)
            return '"' + Utf16Text(argument) + '"';
        else if constexpr (std::is_same_v<Pointee, const A_Time>)
            return TimeText(argument);
        else
            return "&";
    }
}

template <typename... Arguments>
QByteArray ArgumentsText(const Arguments &...arguments)
{
    const QByteArrayList texts{ ArgumentText(arguments)... };
    return texts.join(", ");
}

} // namespace rostrum
