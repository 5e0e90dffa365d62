#include "CoreTest.h"

#include "core/EffectCatalogue.h"

#include <QSet>

using rostrum::EffectInfo;
using rostrum::EffectLanguage;
using rostrum::LayerEffect;

class TestEffects : public QObject
{
    Q_OBJECT

private slots:
    void theInstalledEffectsHaveTheirTwoNames_data();
    void theInstalledEffectsHaveTheirTwoNames();
    void theyStandByRisingKeyFrom1();
    void theirMatchNamesAreSevenBitAndUnique();
    void theirNamesFitTheHostsBuffer();
    void aStartValueLiesWithinItsLimits();
    void keysAndNamesThatAreNotInstalledFindNothing();
    void anAppliedEffectHasItsStartValues();
    void twoEffectsOfOneKindShareTheKeyAndHaveTheirOwnIds();
    void anEffectIsAppliedToALayerThatIsThereOnly();
    void effectsAreEqualByIdKeyAndValues();
};

namespace {

/// A project with one composition, and one layer of a solid in it.
struct OneLayer
{
    rostrum::Project project;
    rostrum::ItemId composition = project.AddComposition("comp", Comp(50));
    rostrum::LayerId layer
        = project.AddLayer(project.AddSolid("solid", { { 30, 40 }, {} }), composition);

    const rostrum::Layer &Shown() const { return *project.FindLayer(composition, layer); }
};

} // namespace

void TestEffects::theInstalledEffectsHaveTheirTwoNames_data()
{
    QTest::addColumn<QByteArray>("matchName");
    QTest::addColumn<QByteArray>("french");
    QTest::addColumn<QByteArray>("english");
    QTest::addColumn<int>("params");
    const auto row = [](const char *match, const char *french, const char *english, int params) {
        QTest::newRow(match) << QByteArray(match) << QByteArray(french) << QByteArray(english)
                             << params;
    };
    row(rostrum::kGaussianBlur, "Flou gaussien", "Gaussian Blur", 1);
    row(rostrum::kColorBalance, "Balance des couleurs (TLS)", "Color Balance (HLS)", 3);
    row(rostrum::kFill, "Remplir", "Fill", 3);
    row(rostrum::kStroke, "Trait", "Stroke", 1);
}

void TestEffects::theInstalledEffectsHaveTheirTwoNames()
{
    QFETCH(QByteArray, matchName);
    const EffectInfo *effect = rostrum::FindEffect(matchName);
    QVERIFY(effect);
    QTEST(rostrum::EffectName(*effect, EffectLanguage::French), "french");
    QTEST(rostrum::EffectName(*effect, EffectLanguage::English), "english");
    QTEST(effect->params.size(), "params");
    QCOMPARE(rostrum::FindEffect(effect->key), effect);
}

void TestEffects::theyStandByRisingKeyFrom1()
{
    QCOMPARE(rostrum::InstalledEffects().size(), 4);
    rostrum::EffectKey last = 0;
    for (const EffectInfo &effect : rostrum::InstalledEffects()) {
        QVERIFY(effect.key > last);
        last = effect.key;
    }
}

void TestEffects::theirMatchNamesAreSevenBitAndUnique()
{
    QSet<QByteArray> names;
    for (const EffectInfo &effect : rostrum::InstalledEffects()) {
        for (const char letter : effect.matchName)
            QVERIFY(letter > ' ' && letter < 0x7f);
        names << effect.matchName;
    }
    QCOMPARE(names.size(), rostrum::InstalledEffects().size());
}

void TestEffects::theirNamesFitTheHostsBuffer()
{
    for (const EffectInfo &effect : rostrum::InstalledEffects()) {
        for (const EffectLanguage language : { EffectLanguage::French, EffectLanguage::English }) {
            const QByteArray &name = rostrum::EffectName(effect, language);
            QVERIFY(!name.isEmpty());
            QVERIFY2(name.size() <= 47, name); // 48 bytes with the final 0
        }
    }
}

void TestEffects::aStartValueLiesWithinItsLimits()
{
    for (const EffectInfo &effect : rostrum::InstalledEffects()) {
        QVERIFY(!effect.params.isEmpty());
        for (const rostrum::EffectParam &param : effect.params) {
            QVERIFY(!param.name.isEmpty());
            QVERIFY2(param.low < param.high, param.name);
            QVERIFY2(param.low <= param.start && param.start <= param.high, param.name);
        }
    }
}

void TestEffects::keysAndNamesThatAreNotInstalledFindNothing()
{
    for (const rostrum::EffectKey key : { 0, -1, 5, 2147483647 })
        QVERIFY(!rostrum::FindEffect(key));
    for (const char *name : { "", "Flou gaussien", "ROSTRUM.FILL", "rostrum.fill " })
        QVERIFY2(!rostrum::FindEffect(QByteArray(name)), name);
}

void TestEffects::anAppliedEffectHasItsStartValues()
{
    OneLayer scene;
    const EffectInfo *fill = rostrum::FindEffect(QByteArray(rostrum::kFill));
    const rostrum::EffectId id
        = scene.project.ApplyEffect(scene.composition, scene.layer, fill->key);
    const LayerEffect *effect = scene.Shown().FindEffect(id);
    QVERIFY(effect);
    QCOMPARE(effect->key, fill->key);
    QCOMPARE(effect->params.size(), 3);
    QCOMPARE(effect->params[0].ValueAt({}), (rostrum::StreamValue{ 100, 0, 0, 0 }));
    QCOMPARE(effect->params[1].ValueAt({}), (rostrum::StreamValue{ 0, 0, 0, 0 }));
}

void TestEffects::twoEffectsOfOneKindShareTheKeyAndHaveTheirOwnIds()
{
    OneLayer scene;
    const auto first = scene.project.ApplyEffect(scene.composition, scene.layer, 1);
    const auto second = scene.project.ApplyEffect(scene.composition, scene.layer, 1);
    QVERIFY(first && second && first != second);
    scene.project.EditLayer(scene.composition, scene.layer)
        ->FindEffect(second)
        ->params[0]
        .SetConstant({ 12, 0, 0, 0 });
    QCOMPARE(scene.Shown().effects.size(), 2);
    QCOMPARE(scene.Shown().FindEffect(first)->params[0].Constant()[0], 0.0);
    QCOMPARE(scene.Shown().FindEffect(second)->params[0].Constant()[0], 12.0);
    QCOMPARE(scene.Shown().FindEffect(first)->key, scene.Shown().FindEffect(second)->key);
}

void TestEffects::anEffectIsAppliedToALayerThatIsThereOnly()
{
    OneLayer scene;
    const rostrum::Project before = scene.project;
    QCOMPARE(scene.project.ApplyEffect(scene.composition, scene.layer, /*key=*/0), 0);
    QCOMPARE(scene.project.ApplyEffect(scene.composition, scene.layer, /*key=*/99), 0);
    QCOMPARE(scene.project.ApplyEffect(scene.composition, /*layer=*/999, /*key=*/1), 0);
    QCOMPARE(scene.project.ApplyEffect(/*composition=*/999, scene.layer, /*key=*/1), 0);
    QCOMPARE(scene.project, before);
    QVERIFY(!scene.Shown().FindEffect(1));
    QVERIFY(!scene.project.EditLayer(scene.composition, scene.layer)->FindEffect(0));
}

void TestEffects::effectsAreEqualByIdKeyAndValues()
{
    const LayerEffect effect{ 7, 1, { rostrum::Stream({ 3, 0, 0, 0 }) } };
    QVERIFY((effect == LayerEffect{ 7, 1, { rostrum::Stream({ 3, 0, 0, 0 }) } }));
    QVERIFY(!(effect == LayerEffect{ 8, 1, effect.params }));
    QVERIFY(!(effect == LayerEffect{ 7, 2, effect.params }));
    QVERIFY(!(effect == LayerEffect{ 7, 1, { rostrum::Stream({ 4, 0, 0, 0 }) } }));
    QVERIFY(!(effect == LayerEffect{ 7, 1, {} }));
}

VN_TEST_MAIN(TestEffects)

#include "tst_effects.moc"
