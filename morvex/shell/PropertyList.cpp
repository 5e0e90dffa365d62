#include "shell/PropertyList.h"

#include "hostapi/Hooks.h"

namespace {

enum class DataKind {
    Code, // four characters
    Number, // 32 bits
    PrefixedText, // a length byte in front
    TerminatedText // a zero byte behind
};

struct Property
{
    const char *key;
    DataKind kind;
    const char *text;
    std::uint32_t number;
};

constexpr Property kProperties[] = {
    { "kind", DataKind::Code, "AEgx", 0 }, // a general plug-in
    { "name", DataKind::PrefixedText, "vnMorvex", 0 },
    { "catg", DataKind::PrefixedText, "General Plugin", 0 },
    { "vers", DataKind::Number, "", 0x00030000 },
    { "8664", DataKind::TerminatedText, kEntryPointName, 0 }, // of the 64-bit library for Windows
};

constexpr std::size_t TextLength(const char *text)
{
    std::size_t length = 0;
    while (text[length])
        ++length;
    return length;
}

constexpr std::uint32_t Code(const char *text)
{
    std::uint32_t code = 0;
    for (int i = 0; i < 4; ++i)
        code = code << 8 | static_cast<std::uint8_t>(text[i]);
    return code;
}

constexpr std::size_t DataLength(const Property &property)
{
    const bool isText
        = property.kind == DataKind::PrefixedText || property.kind == DataKind::TerminatedText;
    return isText ? (TextLength(property.text) + 1 + 3) / 4 * 4 : 4;
}

/// Fills a list from its start. A byte too many does not compile.
struct Writer
{
    std::array<std::uint8_t, kPropertyListSize> bytes{};
    std::size_t used = 0;

    constexpr void Put(std::uint32_t value, int size)
    {
        for (int i = 0; i < size; ++i)
            bytes[used++] = static_cast<std::uint8_t>(value >> (8 * i));
    }

    constexpr void PutText(const char *text)
    {
        for (; *text; ++text)
            bytes[used++] = static_cast<std::uint8_t>(*text);
    }

    constexpr void PutData(const Property &property)
    {
        const std::size_t end = used + DataLength(property);
        if (property.kind == DataKind::Code)
            Put(Code(property.text), 4);
        if (property.kind == DataKind::Number)
            Put(property.number, 4);
        if (property.kind == DataKind::PrefixedText)
            Put(static_cast<std::uint32_t>(TextLength(property.text)), 1);
        if (property.kind == DataKind::PrefixedText || property.kind == DataKind::TerminatedText)
            PutText(property.text);
        used = end; // the bytes between are zero: terminator and padding
    }

    constexpr void PutProperty(const Property &property)
    {
        Put(Code("8BIM"), 4);
        Put(Code(property.key), 4);
        Put(0, 4);
        Put(static_cast<std::uint32_t>(DataLength(property)), 4);
        PutData(property);
    }
};

constexpr Writer WriteList()
{
    Writer writer;
    writer.Put(1, 2);
    writer.Put(0, 4);
    writer.Put(sizeof(kProperties) / sizeof(kProperties[0]), 4);
    for (const Property &property : kProperties)
        writer.PutProperty(property);
    return writer;
}

static_assert(WriteList().used == kPropertyListSize);

} // namespace

const std::array<std::uint8_t, kPropertyListSize> kPropertyList = WriteList().bytes;
