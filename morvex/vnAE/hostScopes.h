// Handles of the host, each held for one operation and given back on every way out.
//
// Declare a scope after the SuiteHandler that it is made from. It keeps the suite's table, so that
// its destructor acquires nothing and cannot throw. It logs nothing: the error line is the
// caller's. Close gives back early, where the answer of the giving back counts.
#pragma once

#include "shell/SuiteHandler.h"

#include <QtGlobal>

#include <utility>

/// A stream of a layer or of an applied effect.
class LayerStream
{
public:
    LayerStream(SuiteHandler &suites, A_long pluginId, AEGP_LayerH layer, qint32 streamNumber)
        : table(suites.Stream7())
    {
        error = table->AEGP_GetNewLayerStream(pluginId, layer, streamNumber, &handle);
    }
    /// @param index the stream's place in the effect; 0 is the input layer
    LayerStream(SuiteHandler &suites, A_long pluginId, AEGP_EffectRefH effect, qint32 index)
        : table(suites.Stream7())
    {
        error = table->AEGP_GetNewEffectStreamByIndex(pluginId, effect, index, &handle);
    }
    ~LayerStream() { Close(); }

    LayerStream(const LayerStream &) = delete;
    LayerStream &operator=(const LayerStream &) = delete;

    A_Err Error() const { return error; }
    AEGP_StreamRefH Handle() const { return handle; }
    A_Err Close()
    {
        const bool owed = error == A_Err_NONE && handle;
        AEGP_StreamRefH given = std::exchange(handle, nullptr);
        return owed ? table->AEGP_DisposeStream(given) : A_Err_NONE;
    }
    /// Leaves the stream open for good. @return nothing; the reason stands at the call
    void Release() { handle = nullptr; }

private:
    const AEGP_StreamSuite2 *table;
    AEGP_StreamRefH handle = nullptr;
    A_Err error;
};

/// A value that the host made: of a stream at a time, or of a key.
class StreamValue
{
public:
    StreamValue(SuiteHandler &suites, A_long pluginId, AEGP_StreamRefH stream, const A_Time &time)
        : table(suites.Stream7())
    {
        error = table->AEGP_GetNewStreamValue(
            pluginId, stream, AEGP_LTimeMode_CompTime, &time, /*preExpression=*/false, &value);
    }
    StreamValue(SuiteHandler &suites, A_long pluginId, AEGP_StreamRefH stream, qint32 keyIndex)
        : table(suites.Stream7())
    {
        error = suites.Keyframe3()->AEGP_GetNewKeyframeValue(pluginId, stream, keyIndex, &value);
    }
    ~StreamValue() { Close(); }

    StreamValue(const StreamValue &) = delete;
    StreamValue &operator=(const StreamValue &) = delete;

    A_Err Error() const { return error; }
    /// The value's first component.
    double &First() { return value.val.one_d; }
    AEGP_StreamValue *Value() { return &value; }
    A_Err Close()
    {
        return std::exchange(open, false) && !error ? table->AEGP_DisposeStreamValue(&value) : 0;
    }
    void Release() { open = false; }

private:
    const AEGP_StreamSuite2 *table;
    AEGP_StreamValue value{};
    A_Err error;
    bool open = true;
};

/// An effect applied to a layer.
class EffectRef
{
public:
    EffectRef(SuiteHandler &suites, AEGP_EffectRefH effect)
        : table(suites.Effect3()), handle(effect)
    { }
    ~EffectRef() { Close(); }

    EffectRef(const EffectRef &) = delete;
    EffectRef &operator=(const EffectRef &) = delete;

    AEGP_EffectRefH Handle() const { return handle; }
    A_Err Close()
    {
        AEGP_EffectRefH given = std::exchange(handle, nullptr);
        return given ? table->AEGP_DisposeEffect(given) : A_Err_NONE;
    }
    /// Hands the effect to somebody else, or leaves it open for good.
    AEGP_EffectRefH Release() { return std::exchange(handle, nullptr); }

private:
    const AEGP_EffectSuite3 *table;
    AEGP_EffectRefH handle;
};

/// A block of the host's memory, locked while its text is read.
class MemHandle
{
public:
    /// Takes over a handle that the host has made; null is allowed.
    MemHandle(SuiteHandler &suites, AEGP_MemHandle memory) : table(suites.Memory1()), handle(memory)
    { }
    ~MemHandle()
    {
        if (Unlock() == A_Err_NONE && handle) // what is still locked may not be freed
            table->AEGP_FreeMemHandle(handle);
    }

    MemHandle(const MemHandle &) = delete;
    MemHandle &operator=(const MemHandle &) = delete;

    A_Err Lock(void **address)
    {
        const A_Err error = table->AEGP_LockMemHandle(handle, address);
        locked = error == A_Err_NONE;
        return error;
    }
    A_Err Unlock()
    {
        return std::exchange(locked, false) ? table->AEGP_UnlockMemHandle(handle) : A_Err_NONE;
    }

private:
    const AEGP_MemorySuite1 *table;
    AEGP_MemHandle handle;
    bool locked = false;
};

/// Footage that was just imported: ours until the project takes it.
class NewFootage
{
public:
    NewFootage(SuiteHandler &suites, AEGP_FootageH footage)
        : table(suites.Footage11()), handle(footage)
    { }
    ~NewFootage()
    {
        if (handle)
            table->AEGP_DisposeFootage(handle);
    }

    NewFootage(const NewFootage &) = delete;
    NewFootage &operator=(const NewFootage &) = delete;

    /// The project has taken it.
    void Release() { handle = nullptr; }

private:
    const AEGP_FootageSuite5 *table;
    AEGP_FootageH handle;
};

/// A set of layers, to be handed over as a selection.
class Collection
{
public:
    Collection(SuiteHandler &suites, A_long pluginId) : table(suites.Collection2())
    {
        error = table->AEGP_NewCollection(pluginId, &handle);
    }
    ~Collection()
    {
        if (error == A_Err_NONE && handle)
            table->AEGP_DisposeCollection(handle);
    }

    Collection(const Collection &) = delete;
    Collection &operator=(const Collection &) = delete;

    A_Err Error() const { return error; }
    AEGP_Collection2H Handle() const { return handle; }
    A_Err Add(AEGP_LayerH layer)
    {
        AEGP_CollectionItemV2 item{}; // all that is no layer is zero
        item.type = AEGP_CollectionItemType_LAYER;
        item.u.layer.layerH = layer;
        return table->AEGP_CollectionPushBack(handle, &item);
    }

private:
    const AEGP_CollectionSuite2 *table;
    AEGP_Collection2H handle = nullptr;
    A_Err error;
};
