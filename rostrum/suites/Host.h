// The host in this process: the open document behind the function tables that a plug-in is given.
//
// Handles    They are looked up, never followed (Handles.h). One that is null, of another kind, or
//            whose thing is gone answers kErrBadHandle: that is ordinary, for the user may have
//            deleted the layer. One that the plug-in itself has given back is a misuse.
// Misuse     A rule broken by the plug-in: a null or impossible argument, something given back
//            twice, a call from another thread. The call answers an error and the complaint is kept
//            in Complaints(); it never crashes. Tests fail on a complaint.
// Account    All that a plug-in must give back is accounted for by name.
// Threads    The main thread alone, which is the one that makes the host.
#pragma once

#include "core/Document.h"
#include "core/EffectCatalogue.h"
#include "suites/FaultPlan.h"
#include "suites/Handles.h"
#include "suites/HostDriver.h"
#include "suites/Trace.h"

#include "hostapi/BasicSuite.h"

#include <QByteArrayList>
#include <QMutex>
#include <QStringList>
#include <QThread>

#include <array>
#include <functional>
#include <unordered_map>

namespace rostrum {

constexpr A_Err kErrBadHandle = A_Err_STRUCT;
constexpr std::size_t kSuiteCount = 16;

/// Where a layer handle leads. There is one for each layer that was ever handed out, so that two
/// handles of one layer are equal.
struct LayerPlace
{
    ItemId composition = 0;
    LayerId layer = 0;
    int generation = 0; // of the project
    int index = 0; // where the layer was last found in the stack
    int remapKey = 0; // where in its time remap it was last read
};

/// A layer as a call finds it, null when it is gone.
struct LayerRef
{
    LayerPlace *place = nullptr;
    const Layer *layer = nullptr;

    explicit operator bool() const { return layer != nullptr; }
    const Layer *operator->() const { return layer; }
};

struct EffectPlace
{
    std::uint64_t layer = 0; // payload of the layer's handle
    EffectId effect = 0;
};

/// Where a stream handle leads: a stream of a layer, or a parameter of an effect on it.
struct StreamPlace
{
    std::uint64_t layer = 0; // payload of the layer's handle
    qint32 number = -1; // of a layer stream
    EffectId effect = 0; // of an effect's parameter, 0 for a layer stream
    qint32 param = 0; // 0 is the effect's input layer
    std::uint64_t effectHandle = 0; // payload of the handle it was made from
};

struct FootagePlace
{
    Footage footage;
    QByteArray name; // of the item to be
    ItemId item = 0; // once it is added
};

struct MemoryBlock
{
    void *address = nullptr;
    AEGP_MemSize size = 0;
    int locks = 0;
    QByteArray what;
    bool lost = false; // its only handle was overwritten by AEGP_GetProjectPath
};

struct Collection
{
    QVector<AEGP_LayerH> layers;
};

class Host
{
public:
    Host();
    ~Host();
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    /// Null while no host lives.
    static Host *Instance() { return instance; }

    SPBasicSuite *BasicSuite();
    Document &GetDocument() { return document; }
    const Project &GetProject() const { return document.GetProject(); }
    HostDriver &Driver() { return driver; }

    // Settings.

    /// Without time-remap keys: false reads the layer's own time, and the first key switches the
    /// remapping on; true refuses reading and inserting.
    bool strictTimeRemap = false;
    EffectLanguage effectLanguage = EffectLanguage::French;
    /// Shows the user a message; they are kept in Messages() in any case.
    std::function<void(const QString &)> messageArea;
    /// Called for each complaint as it comes. The start value prints on standard error.
    std::function<void(const QByteArray &)> onComplaint;

    // Handles, for tests and the program. One of something that does not exist is stale at once.

    AEGP_ProjectH ProjectHandle() const;
    AEGP_ItemH ItemHandle(ItemId item) const;
    AEGP_CompH CompHandle(ItemId composition) const;
    AEGP_LayerH LayerHandle(ItemId composition, LayerId layer);

    // Failures and records.

    FaultPlan &Faults() { return faults; }
    Trace &GetTrace() { return trace; }
    void FailNth(int call, A_Err error = A_Err_GENERIC) { faults.FailNth(call, error); }
    void FailNext(const QByteArray &function, A_Err error = A_Err_GENERIC)
    {
        faults.FailNext(function, error);
    }
    void FailEvery(const QByteArray &function, A_Err error = A_Err_GENERIC)
    {
        faults.FailEvery(function, error);
    }
    void Withhold(const QByteArray &suite, int version) { faults.Withhold(suite, version); }
    int CallCount() const { return faults.CallCount(); }

    // The account.

    /// What is open now and must be given back, by name: "stream 7 of layer 12 "walk"".
    QByteArrayList Account() const;
    int OpenHandles() const { return Account().size(); }
    /// What is open by rule: the suites that a plug-in and its panels hold for life, the memory
    /// handle that reading the project's path loses.
    QByteArrayList HeldByRule() const;
    /// How often a suite is held.
    int Held(const QByteArray &suite, int version) const;

    /// Rules broken, in order.
    QByteArrayList Complaints() const;
    QByteArrayList TakeComplaints();
    /// Calls of slots that this host does not offer: "AEGP Proj Suite 8 AEGP_GetNumProjects".
    QByteArrayList UnexpectedCalls() const { return unexpectedCalls; }
    QByteArrayList TakeUnexpectedCalls();
    /// Suites asked for that there are not: "AEGP Layer Suite 11".
    QByteArrayList RefusedSuites() const { return refusedSuites; }
    /// What was told to the user.
    QStringList Messages() const { return messages; }
    /// Rises with each change made through the suites or a command.
    int ChangeCount() const { return changeCount; }

    /// To be called when control returns to the event loop: changes outside any undo group become
    /// one entry; a group still open is closed and reported.
    void ReturnToEventLoop();

    /// What is told when a host ends with something open, complained about or unexpected. The
    /// start value prints on standard error.
    static void SetEndHandler(std::function<void(const QByteArrayList &)> handler);

    // For the suites.

    bool OnMainThread() const { return QThread::currentThreadId() == mainThread; }
    /// Complains. @return the error to answer
    A_Err Misuse(const QByteArray &what, A_Err error = A_Err_PARAMETER);
    void Unexpected(const char *suite, int version, const char *function);
    /// Tells the user.
    void Tell(const QString &message);
    void NoteChange() { ++changeCount; }
    /// The project for writing. @param what names the undo entry where no group is open
    Project &Edit(const char *what)
    {
        NoteChange();
        return document.Edit(what);
    }

    /// @return kErrBadHandle; a handle that was given back already is a misuse
    template <typename Handle>
    A_Err BadHandle(Handle handle)
    {
        return BadHandle(rostrum::TakeApart(handle));
    }
    A_Err BadHandle(const HandleParts &handle);
    bool IsProject(AEGP_ProjectH handle) const;
    const Item *FindItem(AEGP_ItemH handle) const;
    /// The item of a composition.
    const Item *FindComp(AEGP_CompH handle) const;
    LayerRef FindLayer(AEGP_LayerH handle) { return FindLayer(rostrum::TakeApart(handle)); }
    LayerRef FindLayer(std::uint64_t payload)
    {
        return FindLayer(HandleParts{ HandleKind::Layer, payload });
    }
    /// @param index where the layer stands in the stack, if it is known
    AEGP_LayerH LayerHandle(ItemId composition, LayerId layer, int index);
    AEGP_FootageH ItemFootageHandle(ItemId item) const;

    /// A block of its own. @return A_Err_ALLOC when there is no room
    A_Err NewMemory(
        const QByteArray &what, AEGP_MemSize size, AEGP_MemFlag flags, AEGP_MemHandle *memory);
    /// A text as zero-terminated UTF-16.
    A_Err NewText(const QByteArray &what, const QString &text, AEGP_MemHandle *memory);

    A_Err FreeMemory(AEGP_MemHandle memory);
    MemoryBlock *FindMemory(AEGP_MemHandle memory);

    SPErr Acquire(const char *name, int version, const void **table);
    SPErr Release(const char *name, int version);

    HandlePool<StreamPlace> streams;
    HandlePool<EffectPlace> effects;
    HandlePool<FootagePlace> footage;
    HandlePool<Collection> collections;
    HandlePool<MemoryBlock> memory;
    QVector<AEGP_StreamRefH> streamValues; // the stream of each value that was handed out

    /// The function that is being called, for complaints.
    const char *currentFunction = "";

private:
    LayerRef FindLayer(const HandleParts &handle);
    std::uint64_t Generation() const
    {
        return static_cast<std::uint64_t>(document.ReplaceCount()) & kGenerationMask;
    }
    bool IsCurrent(const HandleParts &handle, HandleKind kind) const
    {
        return handle.kind == kind && handle.Generation() == Generation();
    }
    std::uint64_t IdPayload(ItemId item) const
    {
        return Generation() << 32 | static_cast<std::uint32_t>(item);
    }
    std::uint64_t LayerKey(LayerId layer) const
    {
        return static_cast<std::uint64_t>(document.ReplaceCount()) << 32
            | static_cast<std::uint32_t>(layer);
    }
    QByteArray StreamText(const StreamPlace &place) const;
    QByteArray LayerText(std::uint64_t payload) const;
    QByteArrayList SuiteAccount(bool byRule) const;
    int HeldForLife(const QByteArray &suite) const;
    int FindSuite(const char *name, int version) const;

    inline static Host *instance = nullptr;

    const Qt::HANDLE mainThread;
    Document document;
    HostDriver driver;
    FaultPlan faults;
    Trace trace;
    std::array<int, kSuiteCount> held{};
    std::deque<LayerPlace> layerPlaces;
    std::unordered_map<std::uint64_t, std::uint64_t> placeOfLayer; // LayerKey to payload
    QByteArrayList unexpectedCalls;
    QByteArrayList refusedSuites;
    QStringList messages;
    int changeCount = 0;
    mutable QMutex complaintsLock; // a call from a wrong thread complains, too
    QByteArrayList complaints;
};

} // namespace rostrum
