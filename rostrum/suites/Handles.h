// What a plug-in gets to hold. A handle is a number in the form of a pointer; it points at nothing,
// so that a handle of another kind, an old one or plain rubbish can be told and is never followed.
//
//   bits 63-48  0x524F, no address of any process
//   bits 47-44  the kind
//   bits 43-0   items and compositions: the project's generation (12 bits) and the id (32)
//               all others: a serial number (24 bits) and a place in a pool (20)
#pragma once

#include "hostapi/HostTypes.h"

#include <cstdint>
#include <deque>
#include <vector>

namespace rostrum {

enum class HandleKind : std::uint8_t {
    None,
    Project,
    Item,
    Composition,
    Layer,
    ItemFootage, // the footage of an item
    Footage, // made by an import, its own thing until it is added to the project
    Stream,
    Effect,
    Collection,
    Memory,
    Panel
};

constexpr std::uint64_t kHandleMark = 0x524F;
constexpr std::uint64_t kPayloadMask = (std::uint64_t(1) << 44) - 1;
constexpr std::uint64_t kGenerationMask = 0xFFF;

inline std::uint64_t HandleBits(HandleKind kind, std::uint64_t payload)
{
    return kHandleMark << 48 | std::uint64_t(kind) << 44 | (payload & kPayloadMask);
}

template <typename Handle>
Handle MakeHandle(HandleKind kind, std::uint64_t payload)
{
    return reinterpret_cast<Handle>(static_cast<std::uintptr_t>(HandleBits(kind, payload)));
}

/// A handle taken apart. None for null and for anything that this host never made.
struct HandleParts
{
    HandleKind kind = HandleKind::None;
    std::uint64_t payload = 0;

    std::int32_t Id() const { return static_cast<std::int32_t>(payload & 0xFFFFFFFF); }
    std::uint64_t Generation() const { return payload >> 32; }
};

template <typename Handle>
HandleParts TakeApart(Handle handle)
{
    const auto bits = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(handle));
    if (bits >> 48 != kHandleMark)
        return {};
    return { static_cast<HandleKind>(bits >> 44 & 0xF), bits & kPayloadMask };
}

/// Things behind handles that are given back. A place is used again, its serial number is not: a
/// handle that was given back is known as such.
template <typename Thing>
class HandlePool
{
public:
    static constexpr std::uint64_t kPlaces = 1 << 20;

    /// @return false when a million things are open
    bool Open(const Thing &thing, std::uint64_t *payload)
    {
        if (freePlaces.empty() && entries.size() >= kPlaces)
            return false;
        if (freePlaces.empty()) {
            freePlaces.push_back(static_cast<std::uint32_t>(entries.size()));
            entries.emplace_back();
        }
        const std::uint32_t place = freePlaces.back();
        freePlaces.pop_back();
        entries[place].open = true;
        entries[place].thing = thing;
        *payload = std::uint64_t(entries[place].serial) << 20 | place;
        return true;
    }

    /// @return null when nothing is open under this number
    Thing *Find(std::uint64_t payload)
    {
        Slot *slot = SlotAt(payload);
        return slot && slot->open && slot->serial == payload >> 20 ? &slot->thing : nullptr;
    }

    /// True for a number that was given out and is no longer open.
    bool WasClosed(std::uint64_t payload)
    {
        const Slot *slot = SlotAt(payload);
        return slot && payload >> 20 < slot->serial;
    }

    void Close(std::uint64_t payload)
    {
        Slot *slot = SlotAt(payload);
        slot->open = false;
        slot->thing = Thing();
        slot->serial = (slot->serial + 1) & 0xFFFFFF;
        freePlaces.push_back(static_cast<std::uint32_t>(payload & (kPlaces - 1)));
    }

    template <typename Visitor>
    void ForEach(Visitor visit) const
    {
        for (const Slot &slot : entries) {
            if (slot.open)
                visit(slot.thing);
        }
    }

private:
    struct Slot
    {
        Thing thing{};
        std::uint32_t serial = 1;
        bool open = false;
    };

    Slot *SlotAt(std::uint64_t payload)
    {
        const std::uint64_t place = payload & (kPlaces - 1);
        return place < entries.size() ? &entries[place] : nullptr;
    }

    std::deque<Slot> entries; // a thing stays where it is while others are opened
    std::vector<std::uint32_t> freePlaces;
};

} // namespace rostrum
