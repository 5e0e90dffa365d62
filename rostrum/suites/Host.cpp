#include "Host.h"

#include "suites/HostCall.h"
#include "suites/Tables.h"

#include <cstdio>
#include <cstring>
#include <new>

namespace rostrum {
namespace {

constexpr std::align_val_t kMemoryAlignment{ 16 }; // bytes
constexpr AEGP_MemSize kLargestBlock = 0x7FFFFFFF; // bytes
constexpr int kUnwritten = 0xCD; // what a block holds that nobody asked to be cleared

void Print(const QByteArray &line)
{
    std::fprintf(stderr, "Rostrum: %s\n", line.constData());
}

void PrintAll(const QByteArrayList &lines)
{
    for (const QByteArray &line : lines)
        Print(line);
}

std::function<void(const QByteArrayList &)> &EndHandler()
{
    static std::function<void(const QByteArrayList &)> handler = PrintAll;
    return handler;
}

QByteArray Quoted(const QByteArray &name)
{
    return '"' + name + '"';
}

} // namespace

A_Err RefuseCall(Host *host, const char *function)
{
    if (host)
        host->Misuse(QByteArray(function) + " was called from another thread");
    return A_Err_GENERIC;
}

Host::Host() : onComplaint(Print), mainThread(QThread::currentThreadId()), driver(*this)
{
    if (instance)
        qFatal("There is a host in this process already");
    OfferedSuites(); // made here, so that no call pays for it
    instance = this;
}

Host::~Host()
{
    QByteArrayList lines = TakeComplaints() + TakeUnexpectedCalls();
    for (const QByteArray &open : Account())
        lines << "left open: " + open;
    if (!lines.isEmpty() && EndHandler())
        EndHandler()(lines);
    memory.ForEach(
        [](const MemoryBlock &block) { ::operator delete(block.address, kMemoryAlignment); });
    instance = nullptr;
}

void Host::SetEndHandler(std::function<void(const QByteArrayList &)> handler)
{
    EndHandler() = std::move(handler);
}

void Host::ReturnToEventLoop()
{
    const bool leftOpen = document.IsGroupOpen();
    const QByteArray name = document.CloseLooseEnds();
    if (leftOpen)
        Misuse("undo group " + Quoted(name) + " was left open");
}

A_Err Host::Misuse(const QByteArray &what, A_Err error)
{
    // Another thread may come here; the function that the main thread is in is then not its own.
    const bool inCall = OnMainThread() && *currentFunction;
    const QByteArray line = inCall ? QByteArray(currentFunction) + ": " + what : what;
    {
        const QMutexLocker lock(&complaintsLock);
        complaints << line;
    }
    if (onComplaint)
        onComplaint(line);
    return error;
}

QByteArrayList Host::Complaints() const
{
    const QMutexLocker lock(&complaintsLock);
    return complaints;
}

QByteArrayList Host::TakeComplaints()
{
    const QMutexLocker lock(&complaintsLock);
    return std::exchange(complaints, {});
}

void Host::Unexpected(const char *suite, int version, const char *function)
{
    unexpectedCalls << QByteArray(suite) + ' ' + QByteArray::number(version) + ' ' + function;
}

QByteArrayList Host::TakeUnexpectedCalls()
{
    return std::exchange(unexpectedCalls, {});
}

void Host::Tell(const QString &message)
{
    messages << message;
    if (messageArea)
        messageArea(message);
}

// Handles.

AEGP_ProjectH Host::ProjectHandle() const
{
    return MakeHandle<AEGP_ProjectH>(HandleKind::Project, IdPayload(0));
}

AEGP_ItemH Host::ItemHandle(ItemId item) const
{
    return item ? MakeHandle<AEGP_ItemH>(HandleKind::Item, IdPayload(item)) : nullptr;
}

AEGP_CompH Host::CompHandle(ItemId composition) const
{
    return composition ? MakeHandle<AEGP_CompH>(HandleKind::Composition, IdPayload(composition))
                       : nullptr;
}

AEGP_FootageH Host::ItemFootageHandle(ItemId item) const
{
    return MakeHandle<AEGP_FootageH>(HandleKind::ItemFootage, IdPayload(item));
}

AEGP_LayerH Host::LayerHandle(ItemId composition, LayerId layer)
{
    return LayerHandle(composition, layer, /*index=*/0);
}

AEGP_LayerH Host::LayerHandle(ItemId composition, LayerId layer, int index)
{
    if (!layer)
        return nullptr;
    const auto known = placeOfLayer.try_emplace(LayerKey(layer), layerPlaces.size());
    const std::uint64_t payload = known.first->second;
    if (known.second)
        layerPlaces.push_back({ composition, layer, document.ReplaceCount(), index });
    else if (index)
        layerPlaces[payload].index = index;
    return MakeHandle<AEGP_LayerH>(HandleKind::Layer, payload);
}

bool Host::IsProject(AEGP_ProjectH handle) const
{
    return IsCurrent(rostrum::TakeApart(handle), HandleKind::Project);
}

const Item *Host::FindItem(AEGP_ItemH handle) const
{
    const HandleParts parts = rostrum::TakeApart(handle);
    return IsCurrent(parts, HandleKind::Item) ? GetProject().Find(parts.Id()) : nullptr;
}

const Item *Host::FindComp(AEGP_CompH handle) const
{
    const HandleParts parts = rostrum::TakeApart(handle);
    const Item *item
        = IsCurrent(parts, HandleKind::Composition) ? GetProject().Find(parts.Id()) : nullptr;
    return item && item->AsComposition() ? item : nullptr;
}

LayerRef Host::FindLayer(const HandleParts &handle)
{
    if (handle.kind != HandleKind::Layer || handle.payload >= layerPlaces.size())
        return {};
    LayerPlace &place = layerPlaces[handle.payload];
    if (place.generation != document.ReplaceCount())
        return {};
    return { &place, GetProject().FindLayer(place.composition, place.layer, &place.index) };
}

A_Err Host::BadHandle(const HandleParts &handle)
{
    const std::uint64_t number = handle.payload;
    const bool closed = (handle.kind == HandleKind::Stream && streams.WasClosed(number))
        || (handle.kind == HandleKind::Effect && effects.WasClosed(number))
        || (handle.kind == HandleKind::Footage && footage.WasClosed(number))
        || (handle.kind == HandleKind::Collection && collections.WasClosed(number))
        || (handle.kind == HandleKind::Memory && memory.WasClosed(number));
    if (closed)
        return Misuse(HandleText(handle) + " was given back already", kErrBadHandle);
    return kErrBadHandle;
}

// Memory.

A_Err Host::NewMemory(
    const QByteArray &what, AEGP_MemSize size, AEGP_MemFlag flags, AEGP_MemHandle *handle)
{
    if (size > kLargestBlock)
        return A_Err_ALLOC;
    MemoryBlock block;
    block.address = ::operator new(size, kMemoryAlignment, std::nothrow);
    block.size = size;
    block.what = what;
    std::uint64_t payload = 0;
    if (!block.address || !memory.Open(block, &payload)) {
        ::operator delete(block.address, kMemoryAlignment);
        return A_Err_ALLOC;
    }
    std::memset(block.address, flags & AEGP_MemFlag_CLEAR ? 0 : kUnwritten, size);
    *handle = MakeHandle<AEGP_MemHandle>(HandleKind::Memory, payload);
    return A_Err_NONE;
}

A_Err Host::FreeMemory(AEGP_MemHandle handle)
{
    const std::uint64_t payload = rostrum::TakeApart(handle).payload;
    const MemoryBlock *block = FindMemory(handle);
    if (!block)
        return BadHandle(handle);
    if (block->locks > 0)
        return Misuse("the memory is locked");
    ::operator delete(block->address, kMemoryAlignment);
    memory.Close(payload);
    return A_Err_NONE;
}

MemoryBlock *Host::FindMemory(AEGP_MemHandle handle)
{
    const HandleParts parts = rostrum::TakeApart(handle);
    return parts.kind == HandleKind::Memory ? memory.Find(parts.payload) : nullptr;
}

A_Err Host::NewText(const QByteArray &what, const QString &text, AEGP_MemHandle *handle)
{
    const auto size = static_cast<AEGP_MemSize>((text.size() + 1) * int(sizeof(A_UTF16Char)));
    const A_Err error = NewMemory(what, size, AEGP_MemFlag_CLEAR, handle);
    if (error)
        return error;
    std::memcpy(FindMemory(*handle)->address, text.utf16(), size);
    return A_Err_NONE;
}

// Suites.

int Host::FindSuite(const char *name, int version) const
{
    const auto &suites = OfferedSuites();
    for (std::size_t i = 0; i < suites.size(); ++i) {
        if (suites[i].version == version && std::strcmp(suites[i].name, name) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

SPErr Host::Acquire(const char *name, int version, const void **table)
{
    const int index = FindSuite(name, version);
    if (index < 0 || faults.IsWithheld(name, version)) {
        const QByteArray asked = QByteArray(name) + ' ' + QByteArray::number(version);
        if (!refusedSuites.contains(asked))
            refusedSuites << asked;
        return kSPSuiteNotFound;
    }
    if (faults.IsNull(name, version)) {
        *table = nullptr;
        return kSPNoError;
    }
    const auto place = static_cast<std::size_t>(index);
    ++held[place];
    *table = OfferedSuites()[place].table;
    return kSPNoError;
}

SPErr Host::Release(const char *name, int version)
{
    const int index = FindSuite(name, version);
    if (index < 0 || held[static_cast<std::size_t>(index)] == 0) {
        Misuse("suite " + Quoted(name) + ' ' + QByteArray::number(version)
            + " was released, but is not held");
        return kSPAlreadyReleased;
    }
    --held[static_cast<std::size_t>(index)];
    return kSPNoError;
}

int Host::Held(const QByteArray &suite, int version) const
{
    const int index = FindSuite(suite.constData(), version);
    return index < 0 ? 0 : held[static_cast<std::size_t>(index)];
}

// The account.

QByteArray Host::LayerText(std::uint64_t payload) const
{
    const LayerPlace &place = layerPlaces[payload];
    const Layer *layer = GetProject().FindLayer(place.composition, place.layer);
    const QByteArray text = "layer " + QByteArray::number(place.layer);
    if (!layer || place.generation != document.ReplaceCount())
        return text + ", which is gone";
    const Item *source = GetProject().SourceOf(*layer);
    return text + ' ' + Quoted(layer->name.isEmpty() && source ? source->name : layer->name);
}

QByteArray Host::StreamText(const StreamPlace &place) const
{
    const QByteArray stream = place.effect
        ? "parameter " + QByteArray::number(place.param) + " of an effect"
        : "stream " + QByteArray::number(place.number);
    return stream + " of " + LayerText(place.layer);
}

/// The holds that last as long as the process: the plug-in object and each panel hold the panel
/// suite, each panel holds the app suite.
int Host::HeldForLife(const QByteArray &suite) const
{
    if (suite == AEGP_WorkspacePanelSuite1::kName)
        return driver.PluginCount() + driver.PanelsMade();
    return suite == PF_AppSuite4::kName ? driver.PanelsMade() : 0;
}

QByteArrayList Host::SuiteAccount(bool byRule) const
{
    QByteArrayList lines;
    const auto &suites = OfferedSuites();
    for (std::size_t i = 0; i < suites.size(); ++i) {
        const int forLife = qMin(held[i], HeldForLife(suites[i].name));
        const int count = byRule ? forLife : held[i] - forLife;
        for (int k = 0; k < count; ++k) {
            lines << "suite " + Quoted(suites[i].name) + ' '
                    + QByteArray::number(suites[i].version);
        }
    }
    return lines;
}

QByteArrayList Host::HeldByRule() const
{
    QByteArrayList lines = SuiteAccount(/*byRule=*/true);
    memory.ForEach([&](const MemoryBlock &block) {
        if (block.lost)
            lines << "memory of " + QByteArray::number(block.size)
                    + " bytes, its handle overwritten by the project's path";
    });
    return lines;
}

QByteArrayList Host::Account() const
{
    QByteArrayList lines = SuiteAccount(/*byRule=*/false);
    streams.ForEach([&](const StreamPlace &place) { lines << StreamText(place); });
    for (const AEGP_StreamRefH stream : streamValues)
        lines << "value of " + HandleText(rostrum::TakeApart(stream));
    effects.ForEach([&](const EffectPlace &place) {
        lines << "effect " + QByteArray::number(place.effect) + " of " + LayerText(place.layer);
    });
    footage.ForEach([&](const FootagePlace &place) {
        if (!place.item)
            lines << "footage " + Quoted(place.name) + ", not added to the project";
    });
    collections.ForEach([&](const Collection &collection) {
        lines << "collection, layers: " + QByteArray::number(collection.layers.size());
    });
    memory.ForEach([&](const MemoryBlock &block) {
        if (!block.lost)
            lines << "memory of " + QByteArray::number(block.size) + " bytes " + Quoted(block.what)
                    + (block.locks ? ", locks: " + QByteArray::number(block.locks) : "");
    });
    if (document.IsGroupOpen())
        lines << "undo group";
    return lines;
}

} // namespace rostrum
