#include "SuiteChecks.h"

#include <cstring>

using namespace rostrum;
using namespace testing;

class TestEffectSuite : public QObject
{
    Q_OBJECT

private slots:
    void theWalkOfInstalledEffectsStartsAndEndsWithNone();
    void namesAreFrenchAndEnglishOnRequest();
    void anEffectIsAppliedBehindTheOthers();
    void twoEffectsOfOneKindShareTheirKey();
    void anEffectIsOpenUntilItIsDisposedOf();
    void aSecondDisposalIsAMisuse();
    void anEffectIsDisposedOfAfterItsStreams();
    void whatIsNotThereIsRefused();
    void applyingIsOneEntry();
    void anEffectThatIsGoneIsAnErrorAndDisposedOf();
    void nullArgumentsAreMisuses();
    void badHandlesAreErrors();
};

void TestEffectSuite::theWalkOfInstalledEffectsStartsAndEndsWithNone()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> suite;
    A_long count = 0;
    QCOMPARE(suite->AEGP_GetNumInstalledEffects(&count), A_Err_NONE);
    QVector<A_long> keys;
    A_long key = AEGP_InstalledEffectKey_NONE;
    do {
        QCOMPARE(suite->AEGP_GetNextInstalledEffect(key, &key), A_Err_NONE);
        keys << key;
    } while (key != AEGP_InstalledEffectKey_NONE && keys.size() < 100);
    QCOMPARE(keys.size(), count + 1);
    QCOMPARE(keys.count(AEGP_InstalledEffectKey_NONE), 1);
    QCOMPARE(suite->AEGP_GetNextInstalledEffect(4711, &key), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_GetNextInstalledEffect(-1, &key), A_Err_PARAMETER);
}

void TestEffectSuite::namesAreFrenchAndEnglishOnRequest()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> suite;
    const auto names = [&] {
        QByteArrayList found;
        for (A_long key = 1; key <= InstalledEffects().size(); ++key) {
            A_char name[60];
            std::memset(name, '#', sizeof name);
            found << (suite->AEGP_GetEffectName(key, name) ? "error" : name);
        }
        return found;
    };
    QCOMPARE(names(),
        QByteArrayList({ "Flou gaussien", "Balance des couleurs (TLS)", "Remplir", "Trait" }));
    sheet.host.effectLanguage = EffectLanguage::English;
    QCOMPARE(names(), QByteArrayList({ "Gaussian Blur", "Color Balance (HLS)", "Fill", "Stroke" }));
    A_char name[48];
    QCOMPARE(suite->AEGP_GetEffectName(0, name), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_GetEffectName(99, name), A_Err_PARAMETER);
}

void TestEffectSuite::anEffectIsAppliedBehindTheOthers()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> suite;
    for (const A_long key : { 2, 1 }) {
        AEGP_EffectRefH effect = nullptr;
        QCOMPARE(suite->AEGP_ApplyEffect(kPluginId, sheet.LayerH(), key, &effect), A_Err_NONE);
        QCOMPARE(suite->AEGP_DisposeEffect(effect), A_Err_NONE);
    }
    A_long count = 0;
    QCOMPARE(suite->AEGP_GetLayerNumEffects(sheet.LayerH(), &count), A_Err_NONE);
    QCOMPARE(count, 2);
    const A_long keys[] = { 2, 1 };
    for (A_long index = 0; index < 2; ++index) {
        AEGP_EffectRefH effect = nullptr;
        A_long key = 0;
        QCOMPARE(suite->AEGP_GetLayerEffectByIndex(kPluginId, sheet.LayerH(), index, &effect),
            A_Err_NONE);
        QCOMPARE(suite->AEGP_GetInstalledKeyFromLayerEffect(effect, &key), A_Err_NONE);
        QCOMPARE(key, keys[index]);
        QCOMPARE(suite->AEGP_DisposeEffect(effect), A_Err_NONE);
    }
}

void TestEffectSuite::twoEffectsOfOneKindShareTheirKey()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> suite;
    AEGP_EffectRefH first = nullptr;
    AEGP_EffectRefH second = nullptr;
    QCOMPARE(suite->AEGP_ApplyEffect(kPluginId, sheet.LayerH(), 1, &first), A_Err_NONE);
    QCOMPARE(suite->AEGP_ApplyEffect(kPluginId, sheet.LayerH(), 1, &second), A_Err_NONE);
    A_long keys[2] = { 0, 0 };
    QCOMPARE(suite->AEGP_GetInstalledKeyFromLayerEffect(first, &keys[0]), A_Err_NONE);
    QCOMPARE(suite->AEGP_GetInstalledKeyFromLayerEffect(second, &keys[1]), A_Err_NONE);
    QCOMPARE(keys[0], 1);
    QCOMPARE(keys[1], 1);
    QVERIFY(first != second);
    QCOMPARE(suite->AEGP_DisposeEffect(second), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeEffect(first), A_Err_NONE);
    QCOMPARE(sheet.Find(sheet.layer).effects.size(), 2); // they stay on the layer
}

void TestEffectSuite::anEffectIsOpenUntilItIsDisposedOf()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> suite;
    AEGP_EffectRefH effect = nullptr;
    QCOMPARE(suite->AEGP_ApplyEffect(kPluginId, sheet.LayerH(), 1, &effect), A_Err_NONE);
    const EffectId id = sheet.Find(sheet.layer).effects.at(0).id;
    QVERIFY(sheet.host.Account().contains("effect " + QByteArray::number(id) + " of layer "
        + QByteArray::number(sheet.layer) + " \"walk[0000-0039].png\""));
    QCOMPARE(suite->AEGP_DisposeEffect(effect), A_Err_NONE);
    QCOMPARE(sheet.host.OpenHandles(), 1);
}

void TestEffectSuite::aSecondDisposalIsAMisuse()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> suite;
    AEGP_EffectRefH effect = nullptr;
    QCOMPARE(suite->AEGP_ApplyEffect(kPluginId, sheet.LayerH(), 1, &effect), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeEffect(effect), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeEffect(effect), kErrBadHandle);
    QCOMPARE(sheet.host.TakeComplaints(),
        QByteArrayList{ "AEGP_DisposeEffect: effect 0 was given back already" });
}

void TestEffectSuite::anEffectIsDisposedOfAfterItsStreams()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> suite;
    const Suite<AEGP_StreamSuite2> streams;
    AEGP_EffectRefH effect = nullptr;
    AEGP_StreamRefH stream = nullptr;
    QCOMPARE(suite->AEGP_ApplyEffect(kPluginId, sheet.LayerH(), 1, &effect), A_Err_NONE);
    QCOMPARE(streams->AEGP_GetNewEffectStreamByIndex(kPluginId, effect, 1, &stream), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeEffect(effect), A_Err_GENERIC);
    QCOMPARE(sheet.host.TakeComplaints(),
        QByteArrayList{ "AEGP_DisposeEffect: a stream of the effect is still open" });
    QCOMPARE(streams->AEGP_DisposeStream(stream), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeEffect(effect), A_Err_NONE);
}

void TestEffectSuite::whatIsNotThereIsRefused()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> suite;
    AEGP_EffectRefH effect = nullptr;
    for (const A_long index : { -1, 0, 1 }) {
        QCOMPARE(suite->AEGP_GetLayerEffectByIndex(kPluginId, sheet.LayerH(), index, &effect),
            A_Err_PARAMETER);
    }
    for (const A_long key : { -1, 0, 4711 }) {
        QCOMPARE(suite->AEGP_ApplyEffect(kPluginId, sheet.LayerH(), key, &effect), A_Err_PARAMETER);
    }
    QVERIFY(!effect);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>());
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
}

void TestEffectSuite::applyingIsOneEntry()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> suite;
    AEGP_EffectRefH effect = nullptr;
    QCOMPARE(suite->AEGP_ApplyEffect(kPluginId, sheet.LayerH(), 1, &effect), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeEffect(effect), A_Err_NONE);
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>({ "Apply Effect" }));
    QVERIFY(sheet.host.GetDocument().Undo());
    QCOMPARE(sheet.Find(sheet.layer).effects.size(), 0);
}

void TestEffectSuite::anEffectThatIsGoneIsAnErrorAndDisposedOf()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> suite;
    const Suite<AEGP_StreamSuite2> streams;
    AEGP_EffectRefH effect = nullptr;
    AEGP_StreamRefH stream = nullptr;
    QCOMPARE(suite->AEGP_ApplyEffect(kPluginId, sheet.LayerH(), 1, &effect), A_Err_NONE);
    QCOMPARE(streams->AEGP_GetNewEffectStreamByIndex(kPluginId, effect, 1, &stream), A_Err_NONE);
    QVERIFY(sheet.host.GetDocument().Undo());
    A_long key = -5;
    A_Boolean varying = 0;
    QCOMPARE(suite->AEGP_GetInstalledKeyFromLayerEffect(effect, &key), kErrBadHandle);
    QCOMPARE(key, -5);
    QCOMPARE(streams->AEGP_IsStreamTimevarying(stream, &varying), kErrBadHandle);
    QCOMPARE(streams->AEGP_DisposeStream(stream), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeEffect(effect), A_Err_NONE);
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
}

void TestEffectSuite::nullArgumentsAreMisuses()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> suite;
    AEGP_EffectRefH effect = nullptr;
    QCOMPARE(suite->AEGP_ApplyEffect(kPluginId, sheet.LayerH(), 1, &effect), A_Err_NONE);
    const AEGP_LayerH layer = sheet.LayerH();
    RefusesNull(sheet.host,
        { { "AEGP_GetLayerNumEffects",
              [&] { return suite->AEGP_GetLayerNumEffects(layer, nullptr); } },
            { "AEGP_GetLayerEffectByIndex",
                [&] { return suite->AEGP_GetLayerEffectByIndex(kPluginId, layer, 0, nullptr); } },
            { "AEGP_GetInstalledKeyFromLayerEffect",
                [&] { return suite->AEGP_GetInstalledKeyFromLayerEffect(effect, nullptr); } },
            { "AEGP_ApplyEffect",
                [&] { return suite->AEGP_ApplyEffect(kPluginId, layer, 1, nullptr); } },
            { "AEGP_GetNumInstalledEffects",
                [&] { return suite->AEGP_GetNumInstalledEffects(nullptr); } },
            { "AEGP_GetNextInstalledEffect",
                [&] { return suite->AEGP_GetNextInstalledEffect(0, nullptr); } },
            { "AEGP_GetEffectName", [&] { return suite->AEGP_GetEffectName(1, nullptr); } } });
    QCOMPARE(sheet.Find(sheet.layer).effects.size(), 1);
    QCOMPARE(suite->AEGP_DisposeEffect(effect), A_Err_NONE);
}

void TestEffectSuite::badHandlesAreErrors()
{
    SheetFixture sheet;
    const Suite<AEGP_EffectSuite3> suite;
    const LayerId gone = sheet.AddSeries("run", 12);
    const AEGP_LayerH stale = sheet.LayerH(gone);
    AEGP_EffectRefH effect = nullptr;
    QCOMPARE(suite->AEGP_ApplyEffect(kPluginId, stale, 1, &effect), A_Err_NONE);
    sheet.host.GetDocument().Edit("delete").RemoveLayer(sheet.composition, gone);
    A_long number = 0;
    AEGP_EffectRefH out = nullptr;
    RefusesBadHandles(sheet.host, stale,
        [&](AEGP_LayerH h) { return suite->AEGP_GetLayerNumEffects(h, &number); });
    RefusesBadHandles(sheet.host, stale,
        [&](AEGP_LayerH h) { return suite->AEGP_GetLayerEffectByIndex(kPluginId, h, 0, &out); });
    RefusesBadHandles(sheet.host, stale,
        [&](AEGP_LayerH h) { return suite->AEGP_ApplyEffect(kPluginId, h, 1, &out); });
    RefusesBadHandles(sheet.host, effect,
        [&](AEGP_EffectRefH h) { return suite->AEGP_GetInstalledKeyFromLayerEffect(h, &number); });
    QCOMPARE(suite->AEGP_DisposeEffect(effect), A_Err_NONE);
    QCOMPARE(suite->AEGP_DisposeEffect(nullptr), kErrBadHandle);
}

VN_HOST_TEST_MAIN(TestEffectSuite)
#include "tst_effectsuite.moc"
