#include "SuiteChecks.h"

#include <limits>

using namespace rostrum;
using namespace testing;

namespace {

constexpr AEGP_LTimeMode kComp = AEGP_LTimeMode_CompTime;
constexpr AEGP_LTimeMode kLayer = AEGP_LTimeMode_LayerTime;

/// What a layer stream shows at a frame, all four components; -1 as the first on an error.
StreamValue ValueAt(AEGP_LayerH layer, qint32 number, qint32 frame, AEGP_LTimeMode mode = kComp)
{
    const Suite<AEGP_StreamSuite2> suite;
    AEGP_StreamVal value{};
    const A_Time time = FrameTime(frame);
    if (suite->AEGP_GetLayerStreamValue(layer, number, mode, &time, 0, &value, nullptr))
        return { -1, 0, 0, 0 };
    return { value.four_d.x, value.four_d.y, value.four_d.z, value.four_d.w };
}

/// A stream handle for a scope.
class OpenStream
{
public:
    OpenStream(AEGP_LayerH layer, qint32 number)
    {
        error = suite->AEGP_GetNewLayerStream(kPluginId, layer, number, &handle);
    }
    ~OpenStream()
    {
        if (!error)
            suite->AEGP_DisposeStream(handle);
    }
    OpenStream(const OpenStream &) = delete;
    OpenStream &operator=(const OpenStream &) = delete;

    const Suite<AEGP_StreamSuite2> suite;
    AEGP_StreamRefH handle = nullptr;
    A_Err error = A_Err_NONE;
};

} // namespace

class TestStreamSuite : public QObject
{
    Q_OBJECT

private slots:
    void aStreamIsOpenUntilItIsDisposedOf();
    void aSecondDisposalIsAMisuse();
    void aDisposedStreamIsNoStream();
    void onlyTheOfferedStreamsAreOpened_data();
    void onlyTheOfferedStreamsAreOpened();
    void theTimeRemapOfWhatHasNoTimeIsRefusedWithoutComplaint();
    void layerStreamValuesHaveTheirTypeAndStartValue_data();
    void layerStreamValuesHaveTheirTypeAndStartValue();
    void theTypeMayBeLeftOut();
    void aRemapWithoutKeysReadsTheLayersOwnTime();
    void aStrictHostRefusesARemapWithoutKeys();
    void valuesHoldOutsideTheKeysAndBetweenThem();
    void timesAreThoseOfTheCompositionOrOfTheLayer();
    void aNewValueIsOpenUntilItIsDisposedOf();
    void aSecondDisposalOfAValueIsAMisuse();
    void aValueMayOutliveItsStream();
    void aConstantIsSetWithoutMakingAKey();
    void componentsThatAStreamDoesNotHaveAreNotTaken();
    void aConstantOfAStreamWithKeysIsRefused();
    void aRemapHasNoConstant();
    void aValueThatIsNoNumberIsRefused();
    void aStreamWithKeysVariesOverTime();
    void effectStreamsCountTheInputLayer();
    void theInputLayerOfAnEffectHasNoValues();
    void aStreamWhoseLayerIsGoneIsDisposedOfAllTheSame();
    void nullArgumentsAreMisuses();
    void badHandlesAreErrors();
};

void TestStreamSuite::aStreamIsOpenUntilItIsDisposedOf()
{
    SheetFixture sheet;
    {
        const OpenStream remap(sheet.LayerH(), 7);
        const OpenStream again(sheet.LayerH(), 7);
        QVERIFY(remap.handle != again.handle); // each is given back on its own
        const QByteArray line
            = "stream 7 of layer " + QByteArray::number(sheet.layer) + " \"walk[0000-0039].png\"";
        QCOMPARE(sheet.host.Account().count(line), 2);
        QCOMPARE(sheet.host.OpenHandles(), 4); // with the suite, held twice
    }
    QCOMPARE(sheet.host.OpenHandles(), 0);
}

void TestStreamSuite::aSecondDisposalIsAMisuse()
{
    SheetFixture sheet;
    const Suite<AEGP_StreamSuite2> suite;
    AEGP_StreamRefH stream = nullptr;
    QCOMPARE(suite->AEGP_GetNewLayerStream(kPluginId, sheet.LayerH(), 1, &stream), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeStream(stream), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeStream(stream), kErrBadHandle);
    QCOMPARE(sheet.host.TakeComplaints(),
        QByteArrayList{ "AEGP_DisposeStream: stream 0 was given back already" });
    // The place is used again; the old handle does not come to name the new stream.
    const OpenStream other(sheet.LayerH(), 2);
    QCOMPARE(suite->AEGP_DisposeStream(stream), kErrBadHandle);
    QCOMPARE(sheet.host.TakeComplaints().size(), 1);
}

void TestStreamSuite::aDisposedStreamIsNoStream()
{
    SheetFixture sheet;
    AEGP_StreamRefH old = nullptr;
    {
        const OpenStream stream(sheet.LayerH(), 1);
        old = stream.handle;
    }
    const Suite<AEGP_StreamSuite2> suite;
    A_Boolean varying = 7;
    QCOMPARE(suite->AEGP_IsStreamTimevarying(old, &varying), kErrBadHandle);
    QCOMPARE(int(varying), 7);
    QCOMPARE(sheet.host.TakeComplaints().size(), 1);
}

void TestStreamSuite::onlyTheOfferedStreamsAreOpened_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("offered");
    for (const int number : { 0, 1, 2, 3, 4, 7 })
        QTest::addRow("%d", number) << number << true;
    for (const int number : { -1, 5, 6, 8, 10, 22, 2147483647 })
        QTest::addRow("%d", number) << number << false;
}

void TestStreamSuite::onlyTheOfferedStreamsAreOpened()
{
    QFETCH(int, number);
    QFETCH(bool, offered);
    SheetFixture sheet;
    const OpenStream stream(sheet.LayerH(), number);
    QCOMPARE(stream.error, offered ? A_Err_NONE : A_Err_PARAMETER);
    AEGP_StreamVal value{};
    const A_Time time = FrameTime(0);
    QCOMPARE(stream.suite->AEGP_GetLayerStreamValue(
                 sheet.LayerH(), number, kComp, &time, 0, &value, nullptr),
        offered ? A_Err_NONE : A_Err_PARAMETER);
}

void TestStreamSuite::theTimeRemapOfWhatHasNoTimeIsRefusedWithoutComplaint()
{
    SheetFixture sheet;
    const Suite<AEGP_StreamSuite2> suite;
    const A_Time time = FrameTime(3);
    for (const LayerId layer :
        { sheet.AddStill("a.png"), sheet.AddSolid("b"), sheet.AddCamera("c") }) {
        const OpenStream stream(sheet.LayerH(layer), 7);
        QCOMPARE(stream.error, A_Err_PARAMETER);
        AEGP_StreamVal value{};
        QCOMPARE(suite->AEGP_GetLayerStreamValue(
                     sheet.LayerH(layer), 7, kComp, &time, 0, &value, nullptr),
            A_Err_PARAMETER);
        const OpenStream opacity(sheet.LayerH(layer), 4);
        QCOMPARE(opacity.error, A_Err_NONE);
    }
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
}

void TestStreamSuite::layerStreamValuesHaveTheirTypeAndStartValue_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("type");
    QTest::addColumn<QVector<double>>("value");
    using Values = QVector<double>;
    QTest::newRow("anchor point: the source's middle") << 0 << 1 << Values{ 160, 100, 0, 0 };
    QTest::newRow("position: 3D also where the layer is not") << 1 << 1 << Values{ 320, 180, 0, 0 };
    QTest::newRow("scale") << 2 << 2 << Values{ 100, 100, 100, 0 };
    QTest::newRow("rotation") << 3 << 5 << Values{ 0, 0, 0, 0 };
    QTest::newRow("opacity") << 4 << 5 << Values{ 100, 0, 0, 0 };
    QTest::newRow("time remap") << 7 << 5 << Values{ 0.4, 0, 0, 0 };
}

void TestStreamSuite::layerStreamValuesHaveTheirTypeAndStartValue()
{
    QFETCH(int, number);
    QFETCH(int, type);
    QFETCH(QVector<double>, value);
    SheetFixture sheet({ { 0, 10 } });
    const Suite<AEGP_StreamSuite2> suite;
    AEGP_StreamVal read;
    read.four_d = { 9, 9, 9, 9 };
    AEGP_StreamType readType = -1;
    const A_Time time = FrameTime(3);
    QCOMPARE(
        suite->AEGP_GetLayerStreamValue(sheet.LayerH(), number, kComp, &time, 0, &read, &readType),
        A_Err_NONE);
    QCOMPARE(readType, type);
    QCOMPARE(
        QVector<double>({ read.four_d.x, read.four_d.y, read.four_d.z, read.four_d.w }), value);
}

void TestStreamSuite::theTypeMayBeLeftOut()
{
    SheetFixture sheet({ { 0, 10 } });
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 3)[0], 10 / 25.0);
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
}

void TestStreamSuite::aRemapWithoutKeysReadsTheLayersOwnTime()
{
    SheetFixture sheet;
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 12)[0], 12 / 25.0);
    sheet.host.GetDocument().Edit("offset").EditLayer(sheet.composition, sheet.layer)->offset
        = { 5, 25 };
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 12)[0], 7 / 25.0);
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 12, kLayer)[0], 12 / 25.0);
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 3)[0], -2 / 25.0); // before the layer's own start
}

void TestStreamSuite::aStrictHostRefusesARemapWithoutKeys()
{
    SheetFixture sheet;
    sheet.host.strictTimeRemap = true;
    const OpenStream stream(sheet.LayerH(), 7);
    QCOMPARE(stream.error, A_Err_NONE);
    AEGP_StreamVal value{};
    AEGP_StreamValue newValue{};
    const A_Time time = FrameTime(3);
    QCOMPARE(
        stream.suite->AEGP_GetLayerStreamValue(sheet.LayerH(), 7, kComp, &time, 0, &value, nullptr),
        A_Err_PARAMETER);
    QCOMPARE(
        stream.suite->AEGP_GetNewStreamValue(kPluginId, stream.handle, kComp, &time, 0, &newValue),
        A_Err_PARAMETER);
    QCOMPARE(ValueAt(sheet.LayerH(), 4, 3)[0], 100.0);
    sheet.SetRemapKeys(sheet.layer, { { 0, 6 } });
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 3)[0], 6 / 25.0);
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
}

void TestStreamSuite::valuesHoldOutsideTheKeysAndBetweenThem()
{
    SheetFixture sheet({ { 4, 3 }, { 10, 8 } });
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 0)[0], 3 / 25.0);
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 9)[0], 3 / 25.0);
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 10)[0], 8 / 25.0);
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 5000)[0], 8 / 25.0);
    QCOMPARE(ValueAt(sheet.LayerH(), 7, -5000)[0], 3 / 25.0);
}

void TestStreamSuite::timesAreThoseOfTheCompositionOrOfTheLayer()
{
    SheetFixture sheet({ { 4, 3 }, { 10, 8 } });
    sheet.host.GetDocument().Edit("offset").EditLayer(sheet.composition, sheet.layer)->offset
        = { 2, 25 };
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 11)[0], 3 / 25.0);
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 12)[0], 8 / 25.0);
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 10, kLayer)[0], 8 / 25.0);
    const Suite<AEGP_StreamSuite2> suite;
    AEGP_StreamVal value{};
    const A_Time time = FrameTime(3);
    const A_Time none = { 3, 0 };
    QCOMPARE(suite->AEGP_GetLayerStreamValue(sheet.LayerH(), 7, 2, &time, 0, &value, nullptr),
        A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_GetLayerStreamValue(sheet.LayerH(), 7, kComp, &none, 0, &value, nullptr),
        A_Err_PARAMETER);
    QCOMPARE(sheet.host.TakeComplaints(),
        (QByteArrayList{ "AEGP_GetLayerStreamValue: time mode 2",
            "AEGP_GetLayerStreamValue: a time with the scale 0" }));
}

void TestStreamSuite::aNewValueIsOpenUntilItIsDisposedOf()
{
    SheetFixture sheet({ { 0, 10 } });
    const OpenStream stream(sheet.LayerH(), 7);
    const int open = sheet.host.OpenHandles();
    AEGP_StreamValue value{};
    const A_Time time = FrameTime(3);
    QCOMPARE(
        stream.suite->AEGP_GetNewStreamValue(kPluginId, stream.handle, kComp, &time, 0, &value),
        A_Err_NONE);
    QCOMPARE(value.streamH, stream.handle);
    QCOMPARE(value.val.one_d, 10 / 25.0);
    QCOMPARE(sheet.host.OpenHandles(), open + 1);
    QVERIFY(sheet.host.Account().contains("value of stream 0"));
    QCOMPARE(stream.suite->AEGP_DisposeStreamValue(&value), A_Err_NONE);
    QCOMPARE(sheet.host.OpenHandles(), open);
}

void TestStreamSuite::aSecondDisposalOfAValueIsAMisuse()
{
    SheetFixture sheet;
    const OpenStream stream(sheet.LayerH(), 1);
    const A_Time time = FrameTime(3);
    AEGP_StreamValue first{};
    AEGP_StreamValue second{};
    for (AEGP_StreamValue *value : { &first, &second }) {
        QCOMPARE(
            stream.suite->AEGP_GetNewStreamValue(kPluginId, stream.handle, kComp, &time, 0, value),
            A_Err_NONE);
    }
    QCOMPARE(stream.suite->AEGP_DisposeStreamValue(&first), A_Err_NONE);
    QCOMPARE(stream.suite->AEGP_DisposeStreamValue(&first), A_Err_PARAMETER);
    QCOMPARE(sheet.host.TakeComplaints().size(), 1);
    QCOMPARE(stream.suite->AEGP_DisposeStreamValue(&second), A_Err_NONE);
    AEGP_StreamValue made{};
    made.streamH = stream.handle;
    QCOMPARE(stream.suite->AEGP_DisposeStreamValue(&made), A_Err_PARAMETER);
    QCOMPARE(sheet.host.TakeComplaints().size(), 1);
}

void TestStreamSuite::aValueMayOutliveItsStream()
{
    SheetFixture sheet;
    const Suite<AEGP_StreamSuite2> suite;
    AEGP_StreamValue value{};
    {
        const OpenStream stream(sheet.LayerH(), 1);
        const A_Time time = FrameTime(3);
        QCOMPARE(suite->AEGP_GetNewStreamValue(kPluginId, stream.handle, kComp, &time, 0, &value),
            A_Err_NONE);
    }
    QCOMPARE(suite->AEGP_DisposeStreamValue(&value), A_Err_NONE);
    QCOMPARE(sheet.host.OpenHandles(), 1);
}

void TestStreamSuite::aConstantIsSetWithoutMakingAKey()
{
    SheetFixture sheet;
    const OpenStream position(sheet.LayerH(), 1);
    AEGP_StreamValue value{};
    value.val.three_d = { 12.5, -7, 3 };
    QCOMPARE(position.suite->AEGP_SetStreamValue(kPluginId, position.handle, &value), A_Err_NONE);
    QCOMPARE(ValueAt(sheet.LayerH(), 1, 50), (StreamValue{ 12.5, -7, 3, 0 }));
    QCOMPARE(sheet.Find(sheet.layer).position.KeyCount(), 0);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "Set Value" }));
    QCOMPARE(position.suite->AEGP_SetStreamValue(kPluginId, position.handle, &value), A_Err_NONE);
    QCOMPARE(sheet.UndoNames().size(), 1); // the same once more is no change
}

void TestStreamSuite::componentsThatAStreamDoesNotHaveAreNotTaken()
{
    SheetFixture sheet;
    const OpenStream rotation(sheet.LayerH(), 3);
    const OpenStream scale(sheet.LayerH(), 2);
    AEGP_StreamValue value{};
    const double rubbish = std::numeric_limits<double>::quiet_NaN();
    value.val.four_d = { 45, rubbish, rubbish, rubbish };
    QCOMPARE(rotation.suite->AEGP_SetStreamValue(kPluginId, rotation.handle, &value), A_Err_NONE);
    QCOMPARE(ValueAt(sheet.LayerH(), 3, 0), (StreamValue{ 45, 0, 0, 0 }));
    value.val.four_d = { 50, 60, 70, rubbish };
    QCOMPARE(scale.suite->AEGP_SetStreamValue(kPluginId, scale.handle, &value), A_Err_NONE);
    QCOMPARE(ValueAt(sheet.LayerH(), 2, 0), (StreamValue{ 50, 60, 70, 0 }));
}

void TestStreamSuite::aConstantOfAStreamWithKeysIsRefused()
{
    SheetFixture sheet;
    sheet.host.GetDocument()
        .Edit("fixture")
        .EditLayer(sheet.composition, sheet.layer)
        ->opacity.InsertKey({ 3, 25 }, { 40, 0, 0, 0 });
    const OpenStream opacity(sheet.LayerH(), 4);
    AEGP_StreamValue value{};
    value.val.one_d = 70;
    QCOMPARE(
        opacity.suite->AEGP_SetStreamValue(kPluginId, opacity.handle, &value), A_Err_PARAMETER);
    QCOMPARE(ValueAt(sheet.LayerH(), 4, 0)[0], 40.0);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
    QCOMPARE(sheet.host.Complaints(), QByteArrayList()); // ordinary: the user may have made keys
}

void TestStreamSuite::aRemapHasNoConstant()
{
    SheetFixture sheet;
    const OpenStream remap(sheet.LayerH(), 7);
    AEGP_StreamValue value{};
    value.val.one_d = 0.2;
    QCOMPARE(remap.suite->AEGP_SetStreamValue(kPluginId, remap.handle, &value), A_Err_PARAMETER);
    QCOMPARE(ValueAt(sheet.LayerH(), 7, 10)[0], 10 / 25.0);
}

void TestStreamSuite::aValueThatIsNoNumberIsRefused()
{
    SheetFixture sheet;
    const OpenStream rotation(sheet.LayerH(), 3);
    for (const double value :
        { std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity() }) {
        AEGP_StreamValue set{};
        set.val.one_d = value;
        QCOMPARE(
            rotation.suite->AEGP_SetStreamValue(kPluginId, rotation.handle, &set), A_Err_PARAMETER);
    }
    QCOMPARE(ValueAt(sheet.LayerH(), 3, 0)[0], 0.0);
}

void TestStreamSuite::aStreamWithKeysVariesOverTime()
{
    SheetFixture sheet;
    const OpenStream remap(sheet.LayerH(), 7);
    A_Boolean varying = 7;
    QCOMPARE(remap.suite->AEGP_IsStreamTimevarying(remap.handle, &varying), A_Err_NONE);
    QCOMPARE(int(varying), 0);
    sheet.SetRemapKeys(sheet.layer, { { 5, 2 } });
    QCOMPARE(remap.suite->AEGP_IsStreamTimevarying(remap.handle, &varying), A_Err_NONE);
    QCOMPARE(int(varying), 1);
}

void TestStreamSuite::effectStreamsCountTheInputLayer()
{
    SheetFixture sheet;
    const Suite<AEGP_StreamSuite2> suite;
    const Suite<AEGP_EffectSuite3> effects;
    AEGP_EffectRefH effect = nullptr;
    QCOMPARE(effects->AEGP_ApplyEffect(
                 kPluginId, sheet.LayerH(), FindEffect(QByteArray(kColorBalance))->key, &effect),
        A_Err_NONE);
    A_long count = 0;
    QCOMPARE(suite->AEGP_GetEffectNumParamStreams(effect, &count), A_Err_NONE);
    QCOMPARE(count, 4);
    AEGP_StreamRefH stream = nullptr;
    for (const A_long index : { -1, 4 }) {
        QCOMPARE(suite->AEGP_GetNewEffectStreamByIndex(kPluginId, effect, index, &stream),
            A_Err_PARAMETER);
    }
    QCOMPARE(suite->AEGP_GetNewEffectStreamByIndex(kPluginId, effect, 3, &stream), A_Err_NONE);
    QVERIFY(sheet.host.Account().contains("parameter 3 of an effect of layer "
        + QByteArray::number(sheet.layer) + " \"walk[0000-0039].png\""));
    const A_Time time = FrameTime(3);
    AEGP_StreamValue value{};
    QCOMPARE(suite->AEGP_GetNewStreamValue(kPluginId, stream, kComp, &time, 0, &value), A_Err_NONE);
    value.val.one_d = -35;
    QCOMPARE(suite->AEGP_SetStreamValue(kPluginId, stream, &value), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeStreamValue(&value), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeStream(stream), A_Err_NONE);
    QCOMPARE(effects->AEGP_DisposeEffect(effect), A_Err_NONE);
    QCOMPARE(sheet.Find(sheet.layer).effects.at(0).params.at(2).Constant()[0], -35.0); // saturation
}

void TestStreamSuite::theInputLayerOfAnEffectHasNoValues()
{
    SheetFixture sheet;
    const Suite<AEGP_StreamSuite2> suite;
    const Suite<AEGP_KeyframeSuite3> keys;
    const Suite<AEGP_EffectSuite3> effects;
    AEGP_EffectRefH effect = nullptr;
    AEGP_StreamRefH stream = nullptr;
    QCOMPARE(effects->AEGP_ApplyEffect(kPluginId, sheet.LayerH(), 1, &effect), A_Err_NONE);
    QCOMPARE(suite->AEGP_GetNewEffectStreamByIndex(kPluginId, effect, 0, &stream), A_Err_NONE);
    const A_Time time = FrameTime(3);
    AEGP_StreamValue value{};
    A_Boolean varying = 7;
    A_long count = 7;
    QCOMPARE(suite->AEGP_GetNewStreamValue(kPluginId, stream, kComp, &time, 0, &value), A_Err_NONE);
    QCOMPARE(value.val.layer_id, sheet.layer);
    QCOMPARE(suite->AEGP_SetStreamValue(kPluginId, stream, &value), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_DisposeStreamValue(&value), A_Err_NONE);
    QCOMPARE(suite->AEGP_IsStreamTimevarying(stream, &varying), A_Err_NONE);
    QCOMPARE(int(varying), 0);
    QCOMPARE(keys->AEGP_GetStreamNumKFs(stream, &count), A_Err_NONE);
    QCOMPARE(count, -1);
    QCOMPARE(keys->AEGP_InsertKeyframe(stream, kComp, &time, &count), A_Err_PARAMETER);
    QCOMPARE(keys->AEGP_DeleteKeyframe(stream, 0), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_DisposeStream(stream), A_Err_NONE);
    QCOMPARE(effects->AEGP_DisposeEffect(effect), A_Err_NONE);
}

void TestStreamSuite::aStreamWhoseLayerIsGoneIsDisposedOfAllTheSame()
{
    SheetFixture sheet;
    const OpenStream stream(sheet.LayerH(), 4);
    sheet.host.GetDocument().Edit("delete").RemoveLayer(sheet.composition, sheet.layer);
    A_Boolean varying = 0;
    QCOMPARE(stream.suite->AEGP_IsStreamTimevarying(stream.handle, &varying), kErrBadHandle);
    QVERIFY(sheet.host.Account().contains(
        "stream 4 of layer " + QByteArray::number(sheet.layer) + ", which is gone"));
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
}

void TestStreamSuite::nullArgumentsAreMisuses()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> effects;
    AEGP_EffectRefH effect = nullptr;
    QCOMPARE(effects->AEGP_ApplyEffect(kPluginId, sheet.LayerH(), 1, &effect), A_Err_NONE);
    const OpenStream open(sheet.LayerH(), 1);
    const auto &suite = open.suite;
    const A_Time time = FrameTime(3);
    AEGP_StreamValue value{};
    AEGP_StreamVal val{};
    RefusesNull(sheet.host,
        { { "AEGP_GetNewLayerStream",
              [&] {
                  return suite->AEGP_GetNewLayerStream(kPluginId, sheet.LayerH(), 1, nullptr);
              } },
            { "AEGP_GetEffectNumParamStreams",
                [&] { return suite->AEGP_GetEffectNumParamStreams(effect, nullptr); } },
            { "AEGP_GetNewEffectStreamByIndex",
                [&] {
                    return suite->AEGP_GetNewEffectStreamByIndex(kPluginId, effect, 1, nullptr);
                } },
            { "AEGP_IsStreamTimevarying",
                [&] { return suite->AEGP_IsStreamTimevarying(open.handle, nullptr); } },
            { "AEGP_GetNewStreamValue",
                [&] {
                    return suite->AEGP_GetNewStreamValue(
                        kPluginId, open.handle, kComp, nullptr, 0, &value);
                } },
            { "AEGP_GetNewStreamValue",
                [&] {
                    return suite->AEGP_GetNewStreamValue(
                        kPluginId, open.handle, kComp, &time, 0, nullptr);
                } },
            { "AEGP_DisposeStreamValue", [&] { return suite->AEGP_DisposeStreamValue(nullptr); } },
            { "AEGP_SetStreamValue",
                [&] { return suite->AEGP_SetStreamValue(kPluginId, open.handle, nullptr); } },
            { "AEGP_GetLayerStreamValue",
                [&] {
                    return suite->AEGP_GetLayerStreamValue(
                        sheet.LayerH(), 1, kComp, nullptr, 0, &val, nullptr);
                } },
            { "AEGP_GetLayerStreamValue", [&] {
                 return suite->AEGP_GetLayerStreamValue(
                     sheet.LayerH(), 1, kComp, &time, 0, nullptr, nullptr);
             } } });
    QCOMPARE(effects->AEGP_DisposeEffect(effect), A_Err_NONE);
}

void TestStreamSuite::badHandlesAreErrors()
{
    SheetFixture sheet;
    const LayerId gone = sheet.AddSeries("run", 12);
    const AEGP_LayerH staleLayer = sheet.LayerH(gone);
    const OpenStream open(staleLayer, 4);
    const auto &suite = open.suite;
    const Suite<AEGP_EffectSuite3> effects;
    AEGP_EffectRefH staleEffect = nullptr;
    QCOMPARE(effects->AEGP_ApplyEffect(kPluginId, staleLayer, 1, &staleEffect), A_Err_NONE);
    sheet.host.GetDocument().Edit("delete").RemoveLayer(sheet.composition, gone);

    const A_Time time = FrameTime(3);
    AEGP_StreamValue value{};
    AEGP_StreamVal val{};
    A_long count = 0;
    A_Boolean varying = 0;
    AEGP_StreamRefH out = nullptr;
    RefusesBadHandles(sheet.host, staleLayer, [&](AEGP_LayerH layer) {
        return suite->AEGP_GetNewLayerStream(kPluginId, layer, 1, &out);
    });
    RefusesBadHandles(sheet.host, staleLayer, [&](AEGP_LayerH layer) {
        return suite->AEGP_GetLayerStreamValue(layer, 1, kComp, &time, 0, &val, nullptr);
    });
    RefusesBadHandles(sheet.host, staleEffect, [&](AEGP_EffectRefH effect) {
        return suite->AEGP_GetEffectNumParamStreams(effect, &count);
    });
    RefusesBadHandles(sheet.host, staleEffect, [&](AEGP_EffectRefH effect) {
        return suite->AEGP_GetNewEffectStreamByIndex(kPluginId, effect, 1, &out);
    });
    RefusesBadHandles(sheet.host, open.handle,
        [&](AEGP_StreamRefH stream) { return suite->AEGP_IsStreamTimevarying(stream, &varying); });
    RefusesBadHandles(sheet.host, open.handle, [&](AEGP_StreamRefH stream) {
        return suite->AEGP_GetNewStreamValue(kPluginId, stream, kComp, &time, 0, &value);
    });
    RefusesBadHandles(sheet.host, open.handle, [&](AEGP_StreamRefH stream) {
        return suite->AEGP_SetStreamValue(kPluginId, stream, &value);
    });
    for (const AEGP_StreamRefH stream : BadHandles<AEGP_StreamRefH>(open.handle)) {
        if (stream != open.handle) // a stream of a layer that is gone is given back like any other
            QCOMPARE(suite->AEGP_DisposeStream(stream), kErrBadHandle);
    }
    QCOMPARE(effects->AEGP_DisposeEffect(staleEffect), A_Err_NONE);
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
}

VN_HOST_TEST_MAIN(TestStreamSuite)
#include "tst_streamsuite.moc"
