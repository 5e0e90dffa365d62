#include "SuiteChecks.h"

#include <limits>

using namespace rostrum;
using namespace testing;

namespace {

constexpr AEGP_LTimeMode kComp = AEGP_LTimeMode_CompTime;
constexpr AEGP_LTimeMode kLayer = AEGP_LTimeMode_LayerTime;

/// The tables and one open stream.
struct Open
{
    Open(AEGP_LayerH layer, qint32 number)
    {
        error = streams->AEGP_GetNewLayerStream(kPluginId, layer, number, &stream);
    }
    ~Open() { streams->AEGP_DisposeStream(stream); }
    Open(const Open &) = delete;
    Open &operator=(const Open &) = delete;

    A_Err Insert(const A_Time &time, A_long *index, AEGP_LTimeMode mode = kComp)
    {
        return keys->AEGP_InsertKeyframe(stream, mode, &time, index);
    }
    A_Err Set(A_long index, double value)
    {
        AEGP_StreamValue set{};
        set.val.one_d = value;
        return keys->AEGP_SetKeyframeValue(stream, index, &set);
    }
    A_long Count()
    {
        A_long count = -77;
        keys->AEGP_GetStreamNumKFs(stream, &count);
        return count;
    }

    const Suite<AEGP_StreamSuite2> streams;
    const Suite<AEGP_KeyframeSuite3> keys;
    const Suite<AEGP_KeyframeSuite4> keys4;
    AEGP_StreamRefH stream = nullptr;
    A_Err error = A_Err_NONE;
};

} // namespace

class TestKeyframeSuite : public QObject
{
    Q_OBJECT

private slots:
    void keysAreCountedAndTimedInRisingOrder();
    void version4ReadsTheSameTimes();
    void aKeyTimeKeepsItsNumbers();
    void aNewKeyTakesTheValueShownThere();
    void insertingAtAKeyGivesItsIndexAndChangesNothing();
    void insertingAtAnEqualTimeOfAnotherScaleFindsTheKey();
    void insertingMovesLaterKeysUp();
    void aNewKeyIsLinear();
    void timesAreThoseOfTheCompositionOrOfTheLayer();
    void theFirstKeySwitchesTheRemapOnAndTheLastOneOff();
    void aStrictHostRefusesTheFirstKeyOfARemap();
    void aStreamThatLosesItsLastKeyKeepsItsValue();
    void deletingMovesLaterKeysDown();
    void keyValuesAreReadAndSet();
    void aKeyValueIsOpenUntilItIsDisposedOf();
    void interpolationsAreSetOnBothSides();
    void unknownInterpolationsAreRefused();
    void anIndexWithoutAKeyIsRefused();
    void aValueThatIsNoNumberIsRefused();
    void impossibleTimesAreRefused();
    void eachChangeIsAnEntryAndNoneWhenNothingChanged();
    void keysOfAnEffectsParameterAreKeysToo();
    void keysFarOutOfTheCompositionAreMade();
    void nullArgumentsAreMisuses();
    void badHandlesAreErrors();
};

void TestKeyframeSuite::keysAreCountedAndTimedInRisingOrder()
{
    SheetFixture sheet({ { 0, 1 }, { 7, 5 }, { 20, 3 } });
    Open remap(sheet.LayerH(), 7);
    QCOMPARE(remap.Count(), 3);
    const int frames[] = { 0, 7, 20 };
    for (A_long index = 0; index < 3; ++index) {
        A_Time time = { -1, 0 };
        QCOMPARE(remap.keys->AEGP_GetKeyframeTime(remap.stream, index, kComp, &time), A_Err_NONE);
        QCOMPARE(time.value, frames[index]);
        QCOMPARE(time.scale, 25u);
    }
}

void TestKeyframeSuite::version4ReadsTheSameTimes()
{
    SheetFixture sheet({ { 3, 1 }, { 7, 5 } });
    Open remap(sheet.LayerH(), 7);
    A_Time time = { -1, 0 };
    A_long count = 0;
    QCOMPARE(remap.keys4->AEGP_GetStreamNumKFs(remap.stream, &count), A_Err_NONE);
    QCOMPARE(count, 2);
    QCOMPARE(remap.keys4->AEGP_GetKeyframeTime(remap.stream, 1, kComp, &time), A_Err_NONE);
    QCOMPARE(time.value, 7);
    QCOMPARE(remap.keys4->AEGP_SetKeyframeInterpolation(
                 remap.stream, 1, AEGP_KeyInterp_LINEAR, AEGP_KeyInterp_HOLD),
        A_Err_NONE);
    QCOMPARE(sheet.Remap().KeyAt(1).in, Interpolation::Linear);
}

void TestKeyframeSuite::aKeyTimeKeepsItsNumbers()
{
    SheetFixture sheet;
    Open rotation(sheet.LayerH(), 3);
    A_long index = -1;
    QCOMPARE(rotation.Insert({ 36, 100 }, &index), A_Err_NONE);
    A_Time time = { 0, 0 };
    QCOMPARE(rotation.keys->AEGP_GetKeyframeTime(rotation.stream, 0, kComp, &time), A_Err_NONE);
    QCOMPARE(time.value, 36);
    QCOMPARE(time.scale, 100u);
}

void TestKeyframeSuite::aNewKeyTakesTheValueShownThere()
{
    SheetFixture sheet({ { 0, 4 }, { 10, 9 } });
    Open remap(sheet.LayerH(), 7);
    A_long index = -1;
    QCOMPARE(remap.Insert(FrameTime(6), &index), A_Err_NONE);
    QCOMPARE(index, 1);
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 4 }, { 6, 4 }, { 10, 9 } }));
    QCOMPARE(remap.Insert(FrameTime(50), &index), A_Err_NONE);
    QCOMPARE(index, 3);
    QCOMPARE(sheet.RemapKeys().last(), (KeyAt{ 50, 9 }));
}

void TestKeyframeSuite::insertingAtAKeyGivesItsIndexAndChangesNothing()
{
    SheetFixture sheet({ { 0, 4 }, { 10, 9 } });
    Open remap(sheet.LayerH(), 7);
    A_long index = -1;
    QCOMPARE(remap.Insert(FrameTime(10), &index), A_Err_NONE);
    QCOMPARE(index, 1);
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 4 }, { 10, 9 } }));
    QCOMPARE(sheet.Remap().KeyAt(1).out, Interpolation::Hold);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
}

void TestKeyframeSuite::insertingAtAnEqualTimeOfAnotherScaleFindsTheKey()
{
    SheetFixture sheet({ { 0, 4 }, { 10, 9 } });
    Open remap(sheet.LayerH(), 7);
    A_long index = -1;
    QCOMPARE(remap.Insert({ 40, 100 }, &index), A_Err_NONE);
    QCOMPARE(index, 1);
    QCOMPARE(remap.Count(), 2);
    QCOMPARE(remap.Insert({ 41, 100 }, &index), A_Err_NONE); // a quarter of a frame later
    QCOMPARE(index, 2);
    QCOMPARE(remap.Count(), 3);
}

void TestKeyframeSuite::insertingMovesLaterKeysUp()
{
    SheetFixture sheet({ { 5, 2 }, { 10, 9 } });
    Open remap(sheet.LayerH(), 7);
    A_long index = -1;
    QCOMPARE(remap.Insert(FrameTime(0), &index), A_Err_NONE);
    QCOMPARE(index, 0);
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 2 }, { 5, 2 }, { 10, 9 } }));
}

void TestKeyframeSuite::aNewKeyIsLinear()
{
    SheetFixture sheet({ { 0, 4 }, { 10, 9 } });
    Open remap(sheet.LayerH(), 7);
    A_long index = -1;
    QCOMPARE(remap.Insert(FrameTime(6), &index), A_Err_NONE);
    QCOMPARE(sheet.Remap().KeyAt(1).in, Interpolation::Linear);
    QCOMPARE(sheet.Remap().KeyAt(1).out, Interpolation::Linear);
    QCOMPARE(sheet.Remap().KeyAt(0).out, Interpolation::Hold);
}

void TestKeyframeSuite::timesAreThoseOfTheCompositionOrOfTheLayer()
{
    SheetFixture sheet({ { 0, 4 } });
    sheet.host.GetDocument().Edit("fixture").EditLayer(sheet.composition, sheet.layer)->offset
        = { 3, 25 };
    Open remap(sheet.LayerH(), 7);
    A_Time time = { 0, 0 };
    QCOMPARE(remap.keys->AEGP_GetKeyframeTime(remap.stream, 0, kComp, &time), A_Err_NONE);
    QCOMPARE(time.value, 3);
    QCOMPARE(remap.keys->AEGP_GetKeyframeTime(remap.stream, 0, kLayer, &time), A_Err_NONE);
    QCOMPARE(time.value, 0);
    A_long index = -1;
    QCOMPARE(remap.Insert(FrameTime(10), &index), A_Err_NONE);
    QCOMPARE(remap.Insert(FrameTime(7), &index, kLayer), A_Err_NONE); // the same time
    QCOMPARE(index, 1);
    QCOMPARE(remap.Count(), 2);
    QCOMPARE(remap.keys->AEGP_GetKeyframeTime(remap.stream, 1, kLayer, &time), A_Err_NONE);
    QCOMPARE(time.value, 7);
}

void TestKeyframeSuite::theFirstKeySwitchesTheRemapOnAndTheLastOneOff()
{
    SheetFixture sheet;
    Open remap(sheet.LayerH(), 7);
    A_long index = -1;
    QCOMPARE(remap.Insert(FrameTime(6), &index), A_Err_NONE);
    QCOMPARE(index, 0);
    QCOMPARE(sheet.RemapKeys(), Keys({ { 6, 6 } })); // the value that the layer showed there
    QCOMPARE(sheet.Find(sheet.layer).SourceSeconds({ 20, 25 }), 6 / 25.0);
    QCOMPARE(remap.keys->AEGP_DeleteKeyframe(remap.stream, 0), A_Err_NONE);
    QCOMPARE(sheet.Find(sheet.layer).SourceSeconds({ 20, 25 }), 20 / 25.0);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>()); // on and off again is no change
}

void TestKeyframeSuite::aStrictHostRefusesTheFirstKeyOfARemap()
{
    SheetFixture sheet;
    sheet.host.strictTimeRemap = true;
    Open remap(sheet.LayerH(), 7);
    A_long index = -1;
    QCOMPARE(remap.Insert(FrameTime(6), &index), A_Err_PARAMETER);
    QCOMPARE(index, -1);
    QCOMPARE(remap.Count(), 0);
    Open opacity(sheet.LayerH(), 4);
    QCOMPARE(opacity.Insert(FrameTime(6), &index), A_Err_NONE);
    sheet.SetRemapKeys(sheet.layer, { { 0, 2 } });
    QCOMPARE(remap.Insert(FrameTime(6), &index), A_Err_NONE);
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
}

void TestKeyframeSuite::aStreamThatLosesItsLastKeyKeepsItsValue()
{
    SheetFixture sheet;
    Open opacity(sheet.LayerH(), 4);
    A_long index = -1;
    QCOMPARE(opacity.Insert(FrameTime(6), &index), A_Err_NONE);
    QCOMPARE(opacity.Set(index, 35), A_Err_NONE);
    QCOMPARE(opacity.keys->AEGP_DeleteKeyframe(opacity.stream, 0), A_Err_NONE);
    QCOMPARE(sheet.Find(sheet.layer).opacity.Constant()[0], 35.0);
}

void TestKeyframeSuite::deletingMovesLaterKeysDown()
{
    SheetFixture sheet({ { 0, 4 }, { 6, 5 }, { 10, 9 } });
    Open remap(sheet.LayerH(), 7);
    QCOMPARE(remap.keys->AEGP_DeleteKeyframe(remap.stream, 1), A_Err_NONE);
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 4 }, { 10, 9 } }));
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "Delete Keyframe" }));
}

void TestKeyframeSuite::keyValuesAreReadAndSet()
{
    SheetFixture sheet({ { 0, 4 }, { 6, 5 } });
    Open remap(sheet.LayerH(), 7);
    QCOMPARE(remap.Set(1, 29 / 25.0), A_Err_NONE);
    AEGP_StreamValue value{};
    QCOMPARE(remap.keys->AEGP_GetNewKeyframeValue(kPluginId, remap.stream, 1, &value), A_Err_NONE);
    QCOMPARE(value.val.one_d, 29 / 25.0); // to the last bit: a sheet cuts it toward zero
    QCOMPARE(static_cast<int>(25 * value.val.one_d), 28);
    QCOMPARE(remap.streams->AEGP_DisposeStreamValue(&value), A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "Set Keyframe Value" }));
}

void TestKeyframeSuite::aKeyValueIsOpenUntilItIsDisposedOf()
{
    SheetFixture sheet({ { 0, 4 } });
    Open remap(sheet.LayerH(), 7);
    const int open = sheet.host.OpenHandles();
    AEGP_StreamValue value{};
    QCOMPARE(remap.keys->AEGP_GetNewKeyframeValue(kPluginId, remap.stream, 0, &value), A_Err_NONE);
    QCOMPARE(sheet.host.OpenHandles(), open + 1);
    QCOMPARE(remap.streams->AEGP_DisposeStreamValue(&value), A_Err_NONE);
    QCOMPARE(sheet.host.OpenHandles(), open);
}

void TestKeyframeSuite::interpolationsAreSetOnBothSides()
{
    SheetFixture sheet({ { 0, 4 }, { 6, 5 } });
    Open remap(sheet.LayerH(), 7);
    QCOMPARE(remap.keys->AEGP_SetKeyframeInterpolation(
                 remap.stream, 1, AEGP_KeyInterp_LINEAR, AEGP_KeyInterp_BEZIER),
        A_Err_NONE);
    QCOMPARE(sheet.Remap().KeyAt(1).in, Interpolation::Linear);
    QCOMPARE(sheet.Remap().KeyAt(1).out, Interpolation::Bezier);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "Keyframe Interpolation" }));
}

void TestKeyframeSuite::unknownInterpolationsAreRefused()
{
    SheetFixture sheet({ { 0, 4 } });
    Open remap(sheet.LayerH(), 7);
    for (const AEGP_KeyframeInterpolationType type : { 0, 4, -1 }) {
        QCOMPARE(
            remap.keys->AEGP_SetKeyframeInterpolation(remap.stream, 0, type, AEGP_KeyInterp_HOLD),
            A_Err_PARAMETER);
        QCOMPARE(
            remap.keys->AEGP_SetKeyframeInterpolation(remap.stream, 0, AEGP_KeyInterp_HOLD, type),
            A_Err_PARAMETER);
    }
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
}

void TestKeyframeSuite::anIndexWithoutAKeyIsRefused()
{
    SheetFixture sheet({ { 0, 4 }, { 6, 5 } });
    Open remap(sheet.LayerH(), 7);
    for (const A_long index : { -1, 2, 2147483647 }) {
        A_Time time = { 0, 0 };
        AEGP_StreamValue value{};
        QCOMPARE(
            remap.keys->AEGP_GetKeyframeTime(remap.stream, index, kComp, &time), A_Err_PARAMETER);
        QCOMPARE(
            remap.keys4->AEGP_GetKeyframeTime(remap.stream, index, kComp, &time), A_Err_PARAMETER);
        QCOMPARE(remap.keys->AEGP_DeleteKeyframe(remap.stream, index), A_Err_PARAMETER);
        QCOMPARE(remap.keys->AEGP_GetNewKeyframeValue(kPluginId, remap.stream, index, &value),
            A_Err_PARAMETER);
        QCOMPARE(remap.Set(index, 1), A_Err_PARAMETER);
        QCOMPARE(remap.keys->AEGP_SetKeyframeInterpolation(
                     remap.stream, index, AEGP_KeyInterp_HOLD, AEGP_KeyInterp_HOLD),
            A_Err_PARAMETER);
    }
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 4 }, { 6, 5 } }));
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
}

void TestKeyframeSuite::aValueThatIsNoNumberIsRefused()
{
    SheetFixture sheet({ { 0, 4 } });
    Open remap(sheet.LayerH(), 7);
    QCOMPARE(remap.Set(0, std::numeric_limits<double>::quiet_NaN()), A_Err_PARAMETER);
    QCOMPARE(remap.Set(0, -std::numeric_limits<double>::infinity()), A_Err_PARAMETER);
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 4 } }));
}

void TestKeyframeSuite::impossibleTimesAreRefused()
{
    SheetFixture sheet({ { 0, 4 } });
    Open remap(sheet.LayerH(), 7);
    A_long index = -1;
    A_Time time = { 0, 0 };
    QCOMPARE(remap.Insert({ 4, 0 }, &index), A_Err_PARAMETER);
    QCOMPARE(remap.Insert({ 4, 25 }, &index, /*mode=*/-1), A_Err_PARAMETER);
    QCOMPARE(remap.keys->AEGP_GetKeyframeTime(remap.stream, 0, 2, &time), A_Err_PARAMETER);
    QCOMPARE(index, -1);
    QCOMPARE(sheet.host.TakeComplaints().size(), 3);
    QCOMPARE(remap.Count(), 1);
}

void TestKeyframeSuite::eachChangeIsAnEntryAndNoneWhenNothingChanged()
{
    SheetFixture sheet({ { 0, 4 }, { 6, 5 } });
    const Suite<AEGP_UtilitySuite5> utility;
    Open remap(sheet.LayerH(), 7);
    QCOMPARE(remap.Set(1, 5 / 25.0), A_Err_NONE);
    QCOMPARE(remap.keys->AEGP_SetKeyframeInterpolation(
                 remap.stream, 1, AEGP_KeyInterp_HOLD, AEGP_KeyInterp_HOLD),
        A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());

    A_long index = -1;
    QCOMPARE(utility->AEGP_StartUndoGroup("cells"), A_Err_NONE);
    QCOMPARE(remap.Insert(FrameTime(9), &index), A_Err_NONE);
    QCOMPARE(remap.Set(index, 1), A_Err_NONE);
    QCOMPARE(utility->AEGP_EndUndoGroup(), A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "cells" }));
    QVERIFY(sheet.host.GetDocument().Undo());
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 4 }, { 6, 5 } }));
}

void TestKeyframeSuite::keysOfAnEffectsParameterAreKeysToo()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> effects;
    Open opacity(sheet.LayerH(), 4);
    AEGP_EffectRefH effect = nullptr;
    AEGP_StreamRefH stream = nullptr;
    QCOMPARE(effects->AEGP_ApplyEffect(kPluginId, sheet.LayerH(), 1, &effect), A_Err_NONE);
    QCOMPARE(
        opacity.streams->AEGP_GetNewEffectStreamByIndex(kPluginId, effect, 1, &stream), A_Err_NONE);
    std::swap(stream, opacity.stream);
    A_long index = -1;
    QCOMPARE(opacity.Insert(FrameTime(4), &index), A_Err_NONE);
    QCOMPARE(opacity.Set(index, 12), A_Err_NONE);
    QCOMPARE(opacity.Count(), 1);
    AEGP_StreamValue value{};
    QCOMPARE(
        opacity.streams->AEGP_SetStreamValue(kPluginId, opacity.stream, &value), A_Err_PARAMETER);
    QCOMPARE(opacity.streams->AEGP_DisposeStream(opacity.stream), A_Err_NONE);
    std::swap(stream, opacity.stream);
    QCOMPARE(effects->AEGP_DisposeEffect(effect), A_Err_NONE);
    QCOMPARE(sheet.Find(sheet.layer).effects.at(0).params.at(0).KeyAt(0).value[0], 12.0);
}

void TestKeyframeSuite::keysFarOutOfTheCompositionAreMade()
{
    SheetFixture sheet({ { 0, 4 } }, /*frames=*/100);
    Open remap(sheet.LayerH(), 7);
    A_long index = -1;
    QCOMPARE(remap.Insert(FrameTime(5000), &index), A_Err_NONE);
    QCOMPARE(index, 1);
    QCOMPARE(remap.Insert({ -2147483647, 25 }, &index), A_Err_NONE);
    QCOMPARE(index, 0);
    QCOMPARE(remap.Insert({ 2147483647, 2147483647 }, &index), A_Err_NONE); // one second
    QCOMPARE(index, 2);
}

void TestKeyframeSuite::nullArgumentsAreMisuses()
{
    SheetFixture sheet({ { 0, 4 } });
    Open remap(sheet.LayerH(), 7);
    const auto &keys = remap.keys;
    const AEGP_StreamRefH stream = remap.stream;
    const A_Time time = FrameTime(3);
    A_long index = 0;
    RefusesNull(sheet.host,
        { { "AEGP_GetStreamNumKFs", [&] { return keys->AEGP_GetStreamNumKFs(stream, nullptr); } },
            { "AEGP_GetKeyframeTime",
                [&] { return keys->AEGP_GetKeyframeTime(stream, 0, kComp, nullptr); } },
            { "AEGP_GetKeyframeTime",
                [&] { return remap.keys4->AEGP_GetKeyframeTime(stream, 0, kComp, nullptr); } },
            { "AEGP_InsertKeyframe",
                [&] { return keys->AEGP_InsertKeyframe(stream, kComp, nullptr, &index); } },
            { "AEGP_InsertKeyframe",
                [&] { return keys->AEGP_InsertKeyframe(stream, kComp, &time, nullptr); } },
            { "AEGP_GetNewKeyframeValue",
                [&] { return keys->AEGP_GetNewKeyframeValue(kPluginId, stream, 0, nullptr); } },
            { "AEGP_SetKeyframeValue",
                [&] { return keys->AEGP_SetKeyframeValue(stream, 0, nullptr); } } });
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
}

void TestKeyframeSuite::badHandlesAreErrors()
{
    SheetFixture sheet;
    const LayerId gone = sheet.AddSeries("run", 12, { { 0, 4 } });
    Open remap(sheet.LayerH(gone), 7);
    sheet.host.GetDocument().Edit("delete").RemoveLayer(sheet.composition, gone);
    const auto &keys = remap.keys;
    A_Time time = FrameTime(3);
    A_long number = 0;
    AEGP_StreamValue value{};
    const QVector<std::function<A_Err(AEGP_StreamRefH)>> calls = {
        [&](AEGP_StreamRefH h) { return keys->AEGP_GetStreamNumKFs(h, &number); },
        [&](AEGP_StreamRefH h) { return keys->AEGP_GetKeyframeTime(h, 0, kComp, &time); },
        [&](AEGP_StreamRefH h) { return remap.keys4->AEGP_GetKeyframeTime(h, 0, kComp, &time); },
        [&](AEGP_StreamRefH h) { return keys->AEGP_InsertKeyframe(h, kComp, &time, &number); },
        [&](AEGP_StreamRefH h) { return keys->AEGP_DeleteKeyframe(h, 0); },
        [&](AEGP_StreamRefH h) { return keys->AEGP_GetNewKeyframeValue(kPluginId, h, 0, &value); },
        [&](AEGP_StreamRefH h) { return keys->AEGP_SetKeyframeValue(h, 0, &value); },
        [&](AEGP_StreamRefH h) { return keys->AEGP_SetKeyframeInterpolation(h, 0, 3, 3); },
    };
    for (const auto &call : calls)
        RefusesBadHandles(sheet.host, remap.stream, call);
}

VN_HOST_TEST_MAIN(TestKeyframeSuite)
#include "tst_keyframesuite.moc"
