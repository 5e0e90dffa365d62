#include "EffectList.h"
#include "vnAE/hostErrors.h"
#include "support/vnLog.h"

using rostrum::StreamValue;

Q_DECLARE_METATYPE(rostrum::StreamValue)

/// Transform values and effects of a column's layer.
class TestVipLiValues : public QObject
{
    Q_OBJECT

private slots:
    void aValueWithoutKeysHoldsForAllFrames_data();
    void aValueWithoutKeysHoldsForAllFrames();
    void aComponentThatThereIsNotChangesNothing_data();
    void aComponentThatThereIsNotChangesNothing();
    void withKeysTheFramesKeyTakesTheValue();
    void theFirstKeyComesFromAddKey();
    void newKeysAreTheHostsDefaultAndOldOnesKeepTheirs();
    void aScaleIsWrittenTwice_data();
    void aScaleIsWrittenTwice();
    void aLayerWithAnOffsetTakesItsValueInCompositionTime();
    void theWholeRangeOfNumbersIsWritten();

    void valuesAreCutTowardZero_data();
    void valuesAreCutTowardZero();
    void aStreamOfOneDimensionReadsTheHostsSecond();
    void keysAreReadBetweenBeforeAndAfter();

    void withoutProjectCompoOrLayerNothingReachesTheHost_data();
    void withoutProjectCompoOrLayerNothingReachesTheHost();
    void aStaleLayerIsTheHostsError();
    void aStreamThatTheHostRefuses_data();
    void aStreamThatTheHostRefuses();
    void oneUndoGroupIsOneEntry();

    void effectsOfAFrenchHost();
    void effectsOfAnEnglishHost();
    void effectNames_data();
    void effectNames();
    void aListThatEndsEarlyIsAnErrorAndLogsNoKeys();

    void theFirstEffectOfTheKeyIsFound();
    void anEffectIsAppliedOnRequestOnly();
    void aKeyThatIsNotInstalledCannotBeApplied();

    void aBlurOf0AppliesNothingA5DoesAndALater0LeavesItThere();
    void eachFieldHasItsParameter_data();
    void eachFieldHasItsParameter();
    void ofTwoBlursTheFirstIsReadAndWritten();
    void effectValuesAreCutTowardZero();
    void aKeyedParameterIsReadAtItsFrame();
    void aKeyedParameterIsNotWrittenAndStaysOpen();
    void aParameterThatThereIsNotLeavesItsEffectOpen();
    void withoutItsEffectAnEnglishHostsFieldKeepsWhatItHeld();
    void withoutCompoOrLayerAnEffectValueIsLeftAlone_data();
    void withoutCompoOrLayerAnEffectValueIsLeftAlone();
    void anEffectDeletedByTheUserIsMissing();
};

namespace {

using Components = QVector<double>;

Components All(const StreamValue &value)
{
    return { value[0], value[1], value[2] };
}

QByteArray Log()
{
    return vnLog::Instance()->Text();
}

/// One host error of the library's source of values, and nothing else.
bool IsOneErrorLine(const QByteArray &log)
{
    return log.startsWith("\r\n-ERR I- line ") && log.count("-ERR") == 1
        && log.endsWith(", file(morvex/vnAE/vipLi_values.cpp)<END>");
}

/// The keys of effects that Rostrum has installed.
rostrum::EffectKey KeyOf(const char *matchName)
{
    return rostrum::FindEffect(QByteArray(matchName))->key;
}

const QVector<rostrum::LayerEffect> &EffectsOf(LibrarySheet &sheet)
{
    return sheet.Find(sheet.layer).effects;
}

/// Applies an effect as a user would. @return a parameter of it
rostrum::Stream &Apply(LibrarySheet &sheet, const char *matchName, int param = 0)
{
    sheet.EditProject().ApplyEffect(sheet.composition, sheet.layer, KeyOf(matchName));
    return sheet.EditLayer().effects.last().params[param];
}

double Param(LibrarySheet &sheet, int effect, int param)
{
    return EffectsOf(sheet)[effect].params[param].Constant()[0];
}

/// The layer as the host's account names it.
QByteArray LayerName(LibrarySheet &sheet)
{
    return "layer " + QByteArray::number(sheet.layer) + " \"walk[0000-0039].png\"";
}

/// The first effect of the layer, left open.
QByteArray OpenEffect(LibrarySheet &sheet)
{
    return "left open: effect " + QByteArray::number(EffectsOf(sheet)[0].id) + " of "
        + LayerName(sheet);
}

} // namespace

// Transform values written.

void TestVipLiValues::aValueWithoutKeysHoldsForAllFrames_data()
{
    QTest::addColumn<int>("stream");
    QTest::addColumn<int>("component");
    QTest::addColumn<int>("value");
    QTest::addColumn<Components>("after");
    QTest::newRow("anchor y") << 0 << 1 << -40 << Components{ 160, -40, 0 };
    QTest::newRow("position x") << 1 << 0 << 33 << Components{ 33, 180, 0 };
    QTest::newRow("position y") << 1 << 1 << -7 << Components{ 320, -7, 0 };
    QTest::newRow("position z") << 1 << 2 << 5 << Components{ 320, 180, 5 };
    QTest::newRow("scale x") << 2 << 0 << 50 << Components{ 50, 100, 100 };
    QTest::newRow("rotation") << 3 << 0 << -370 << Components{ -370, 0, 0 };
    QTest::newRow("opacity") << 4 << 0 << 75 << Components{ 75, 0, 0 };
}

void TestVipLiValues::aValueWithoutKeysHoldsForAllFrames()
{
    QFETCH(int, stream);
    QFETCH(int, component);
    QFETCH(int, value);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    QVERIFY(GetVipLi()->SetStreamValue(stream, /*frame=*/6, value, component));

    const rostrum::Stream &written = *sheet.Find(sheet.layer).FindStream(stream);
    QTEST(All(written.Constant()), "after");
    QCOMPARE(written.KeyCount(), 0);
    for (const int frame : { 0, 6, 23 }) {
        qint32 read[2];
        QVERIFY(GetVipLi()->GetStreamValue(stream, frame, read[0], read[1]));
        if (component < 2)
            QCOMPARE(read[component], value);
    }
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 1 } }));
}

void TestVipLiValues::aComponentThatThereIsNotChangesNothing_data()
{
    QTest::addColumn<int>("component");
    for (const int component : { 3, 4, 2147483647, -1 })
        QTest::addRow("component %d", component) << component;
}

void TestVipLiValues::aComponentThatThereIsNotChangesNothing()
{
    QFETCH(int, component);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const rostrum::Project before = sheet.host.GetProject();
    vnLog::Instance()->Clear();
    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_POSITION, 6, 77, component));
    QVERIFY(sheet.host.GetProject() == before);
    QCOMPARE(Log(), QByteArray("<END>"));
}

void TestVipLiValues::withKeysTheFramesKeyTakesTheValue()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.EditLayer().position.InsertKey({ 4, 25 }, { 10, 20, 30, 0 });
    sheet.EditLayer().position.InsertKey({ 12, 25 }, { 50, 60, 70, 0 });

    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_POSITION, 8, -3, 0)); // a new key
    const rostrum::Stream &stream = sheet.Find(sheet.layer).position;
    QCOMPARE(stream.KeyCount(), 3);
    QCOMPARE(stream.KeyAt(1).time, (rostrum::Time{ 8, 25 }));
    QCOMPARE(All(stream.KeyAt(1).value), Components({ -3, 40, 50 })); // the others as shown there
    QCOMPARE(All(stream.KeyAt(0).value), Components({ 10, 20, 30 }));
    QCOMPARE(All(stream.KeyAt(2).value), Components({ 50, 60, 70 }));

    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_POSITION, 12, 9, 1)); // the one there
    QCOMPARE(sheet.Find(sheet.layer).position.KeyCount(), 3);
    QCOMPARE(All(sheet.Find(sheet.layer).position.KeyAt(2).value), Components({ 50, 9, 70 }));
}

void TestVipLiValues::theFirstKeyComesFromAddKey()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_ROTATION, 3, 30, 0));
    QVERIFY(!GetVipLi()->HasKey(AEGP_LayerStream_ROTATION, 3));
    QVERIFY(GetVipLi()->AddKey(AEGP_LayerStream_ROTATION, 3));
    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_ROTATION, 9, 90, 0));

    QVERIFY(GetVipLi()->HasKey(AEGP_LayerStream_ROTATION, 9));
    qint32 rotation, none;
    QVERIFY(GetVipLi()->GetStreamValue(AEGP_LayerStream_ROTATION, 3, rotation, none));
    QCOMPARE(rotation, 30);
    QVERIFY(GetVipLi()->GetStreamValue(AEGP_LayerStream_ROTATION, 5, rotation, none));
    QCOMPARE(rotation, 50);
    QVERIFY(GetVipLi()->DeleteKey(AEGP_LayerStream_ROTATION, 3));
    QVERIFY(GetVipLi()->DeleteKey(AEGP_LayerStream_ROTATION, 9));
    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_ROTATION, 5, 7, 0)); // no keys: no new one
    QCOMPARE(sheet.Find(sheet.layer).rotation.KeyCount(), 0);
}

void TestVipLiValues::newKeysAreTheHostsDefaultAndOldOnesKeepTheirs()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    rostrum::Stream &opacity = sheet.EditLayer().opacity;
    opacity.InsertKey({ 4, 25 }, { 10, 0, 0, 0 });
    opacity.SetKeyInterpolation(0, rostrum::Interpolation::Bezier, rostrum::Interpolation::Hold);
    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_OPACITY, 4, 15, 0));
    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_OPACITY, 7, 25, 0));

    const rostrum::Stream &written = sheet.Find(sheet.layer).opacity;
    QCOMPARE(int(written.KeyAt(0).in), int(rostrum::Interpolation::Bezier));
    QCOMPARE(int(written.KeyAt(0).out), int(rostrum::Interpolation::Hold));
    QCOMPARE(int(written.KeyAt(1).in), int(rostrum::Interpolation::Linear));
    QCOMPARE(int(written.KeyAt(1).out), int(rostrum::Interpolation::Linear));
}

void TestVipLiValues::aScaleIsWrittenTwice_data()
{
    QTest::addColumn<int>("keyFrame"); // -1: no keys
    QTest::addColumn<int>("keysAfter");
    QTest::newRow("without keys: both hold for all frames") << -1 << 0;
    QTest::newRow("the second finds the key that the first made") << 2 << 2;
    QTest::newRow("both find the key that stands there") << 9 << 1;
}

void TestVipLiValues::aScaleIsWrittenTwice()
{
    QFETCH(int, keyFrame);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    if (keyFrame >= 0)
        sheet.EditLayer().scale.InsertKey({ keyFrame, 25 }, { 100, 90, 80, 0 });
    const double z = keyFrame >= 0 ? 80 : 100;

    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_SCALE, 9, 40, 0));
    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_SCALE, 9, 40, 1));

    const rostrum::Stream &scale = sheet.Find(sheet.layer).scale;
    QTEST(scale.KeyCount(), "keysAfter");
    QCOMPARE(All(scale.ValueAt({ 9, 25 })), Components({ 40, 40, z }));
}

void TestVipLiValues::aLayerWithAnOffsetTakesItsValueInCompositionTime()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.EditLayer().offset = { 4, 25 };
    sheet.EditLayer().position.InsertKey({ 0, 25 }, { 0, 0, 0, 0 });
    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_POSITION, 10, 70, 0));
    QCOMPARE(sheet.Find(sheet.layer).position.KeyAt(1).time, (rostrum::Time{ 6, 25 }));
    qint32 x, y;
    QVERIFY(GetVipLi()->GetStreamValue(AEGP_LayerStream_POSITION, 10, x, y));
    QCOMPARE(x, 70);
    QVERIFY(GetVipLi()->GetStreamValue(AEGP_LayerStream_POSITION, 4, x, y));
    QCOMPARE(x, 0);
}

void TestVipLiValues::theWholeRangeOfNumbersIsWritten()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    for (const qint32 value : { 2147483647, -2147483647 - 1, 0 }) {
        QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_POSITION, -2147483647, value, 1));
        qint32 x, y;
        QVERIFY(GetVipLi()->GetStreamValue(AEGP_LayerStream_POSITION, 2147483647, x, y));
        QCOMPARE(y, value);
        QCOMPARE(x, 320);
    }
}

// Transform values read.

void TestVipLiValues::valuesAreCutTowardZero_data()
{
    QTest::addColumn<double>("held");
    QTest::addColumn<int>("read");
    QTest::newRow("10.9") << 10.9 << 10;
    QTest::newRow("-10.9") << -10.9 << -10;
    QTest::newRow("0.99") << 0.99 << 0;
    QTest::newRow("-0.99") << -0.99 << 0;
    QTest::newRow("a whole number") << 7.0 << 7;
    QTest::newRow("beyond 32 bits") << 3e9 << 2147483647;
    QTest::newRow("beyond 32 bits below zero") << -3e9 << -2147483647 - 1;
}

void TestVipLiValues::valuesAreCutTowardZero()
{
    QFETCH(double, held);
    QFETCH(int, read);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.EditLayer().position.SetConstant({ held, -held, 0, 0 });
    qint32 x, y;
    QVERIFY(GetVipLi()->GetStreamValue(AEGP_LayerStream_POSITION, 5, x, y));
    QCOMPARE(x, read);
    sheet.EditLayer().position.SetConstant({ 1, held, 0, 0 });
    QVERIFY(GetVipLi()->GetStreamValue(AEGP_LayerStream_POSITION, 5, x, y));
    QCOMPARE(y, read);
}

void TestVipLiValues::aStreamOfOneDimensionReadsTheHostsSecond()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.EditLayer().rotation.SetConstant({ 45.5, 0, 0, 0 });
    qint32 rotation = 8, second = 8;
    QVERIFY(GetVipLi()->GetStreamValue(AEGP_LayerStream_ROTATION, 5, rotation, second));
    QCOMPARE(rotation, 45);
    QCOMPARE(second, 0);
}

void TestVipLiValues::keysAreReadBetweenBeforeAndAfter()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.EditLayer().position.InsertKey({ 4, 25 }, { 10, 100, 0, 0 });
    sheet.EditLayer().position.InsertKey({ 8, 25 }, { 20, 103, 0, 0 });
    const auto read = [](qint32 frame) {
        qint32 x = 0, y = 0;
        GetVipLi()->GetStreamValue(AEGP_LayerStream_POSITION, frame, x, y);
        return QVector<int>{ x, y };
    };
    QCOMPARE(read(0), QVector<int>({ 10, 100 }));
    QCOMPARE(read(5), QVector<int>({ 12, 100 })); // 12.5 and 100.75
    QCOMPARE(read(50), QVector<int>({ 20, 103 }));
}

// Where transform values end.

void TestVipLiValues::withoutProjectCompoOrLayerNothingReachesTheHost_data()
{
    QTest::addColumn<bool>("project");
    QTest::addColumn<bool>("compo");
    QTest::addColumn<bool>("layer");
    QTest::newRow("no project") << false << true << true;
    QTest::newRow("no composition") << true << false << true;
    QTest::newRow("no layer") << true << true << false;
}

void TestVipLiValues::withoutProjectCompoOrLayerNothingReachesTheHost()
{
    QFETCH(bool, project);
    QFETCH(bool, compo);
    QFETCH(bool, layer);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    if (!project)
        GetVipLi()->Project = nullptr;
    if (!compo)
        GetVipLi()->Compo = nullptr;
    if (!layer)
        GetVipLi()->Layer = nullptr;
    vnLog::Instance()->Clear();
    sheet.host.GetTrace().Start();
    qint32 first = 5, second = 6;
    QVERIFY(!GetVipLi()->SetStreamValue(AEGP_LayerStream_POSITION, 3, 9, 0));
    QVERIFY(!GetVipLi()->GetStreamValue(AEGP_LayerStream_POSITION, 3, first, second));
    QCOMPARE(first, -1);
    QCOMPARE(second, -1);
    QCOMPARE(sheet.host.GetTrace().Entries().size(), 0);
    QCOMPARE(Log(), QByteArray("<END>"));
}

void TestVipLiValues::aStaleLayerIsTheHostsError()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    GetVipLi()->FindEfxKeys();
    sheet.EditProject().RemoveLayer(sheet.composition, sheet.layer);
    qint32 first = 5, second = 6;
    const std::function<bool()> operations[] = {
        [&] { return GetVipLi()->SetStreamValue(AEGP_LayerStream_POSITION, 3, 9, 0); },
        [&] { return GetVipLi()->GetStreamValue(AEGP_LayerStream_POSITION, 3, first, second); },
        [&] { return GetVipLi()->GetEfxValue(GetVipLi()->EfxKeyBlur, 3, 0, second); },
        [&] { return GetVipLi()->SetEfxValue(GetVipLi()->EfxKeyBlur, 3, 0, 5); },
    };
    for (const auto &operation : operations) {
        vnLog::Instance()->Clear();
        QVERIFY(!operation());
        QVERIFY2(IsOneErrorLine(Log()), Log().constData());
        QCOMPARE(LastHostError, int(rostrum::kErrBadHandle));
    }
    QCOMPARE(first, -1);
    QCOMPARE(second, 0); // an effect's value starts at 0 once there is a layer
    QCOMPARE(sheet.host.Complaints(), QByteArrayList());
}

void TestVipLiValues::aStreamThatTheHostRefuses_data()
{
    QTest::addColumn<int>("stream");
    QTest::newRow("one that there is not") << 6;
    QTest::newRow("a time remap without keys has no constant") << 7;
}

void TestVipLiValues::aStreamThatTheHostRefuses()
{
    QFETCH(int, stream);
    LibrarySheet sheet(Keys{});
    const rostrum::Project before = sheet.host.GetProject();
    vnLog::Instance()->Clear();
    QVERIFY(!GetVipLi()->SetStreamValue(stream, 3, 9, 0));
    QVERIFY2(IsOneErrorLine(Log()), Log().constData());
    QVERIFY(sheet.host.GetProject() == before);
    QCOMPARE(sheet.host.Account(), QByteArrayList());
}

void TestVipLiValues::oneUndoGroupIsOneEntry()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    GetVipLi()->FindEfxKeys();
    const rostrum::Project before = sheet.host.GetProject();
    GetVipLi()->StartUndoGroup(QStringLiteral("morvex:Values"));
    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_SCALE, 3, 40, 0));
    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_SCALE, 3, 40, 1));
    QVERIFY(GetVipLi()->AddKey(AEGP_LayerStream_POSITION, 3));
    QVERIFY(GetVipLi()->SetStreamValue(AEGP_LayerStream_POSITION, 8, -4, 1));
    QVERIFY(GetVipLi()->SetEfxValue(GetVipLi()->EfxKeyBlur, 3, 0, 5));
    GetVipLi()->EndUndoGroup();
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>{ "morvex:Values" });
    QVERIFY(sheet.host.GetDocument().Undo());
    QVERIFY(sheet.host.GetProject() == before);
}

// Installed effects.

void TestVipLiValues::effectsOfAFrenchHost()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const vipLi *library = GetVipLi();
    vnLog::Instance()->Clear();
    QVERIFY(GetVipLi()->FindEfxKeys());
    QCOMPARE(library->EfxKeyBlur, KeyOf(rostrum::kGaussianBlur));
    QCOMPARE(library->EfxKeyFiltre, KeyOf(rostrum::kColorBalance));
    QCOMPARE(library->EfxKeyFill, KeyOf(rostrum::kFill));
    QCOMPARE(library->EfxKeyOutline, KeyOf(rostrum::kStroke));
    QCOMPARE(library->EfxKeyTessaly, 0); // Rostrum does not have it
    QCOMPARE(Log(),
        QByteArray("\r\nEfxKeyBlur=1\r\nEfxKeyFiltre=2\r\nEfxKeyOutline=4\r\nEfxKeyFill=3<END>"));
}

void TestVipLiValues::effectsOfAnEnglishHost()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.host.effectLanguage = rostrum::EffectLanguage::English;
    vnLog::Instance()->Clear();
    QVERIFY(GetVipLi()->FindEfxKeys());
    QCOMPARE(GetVipLi()->EfxKeyBlur, -1);
    QCOMPARE(GetVipLi()->EfxKeyFiltre, -1);
    QCOMPARE(GetVipLi()->EfxKeyFill, KeyOf(rostrum::kFill));
    QCOMPARE(GetVipLi()->EfxKeyOutline, KeyOf(rostrum::kStroke));
    QCOMPARE(Log(),
        QByteArray("\r\nEfxKeyBlur=-1\r\nEfxKeyFiltre=-1\r\nEfxKeyOutline=4\r\nEfxKeyFill=3<END>"));
}

void TestVipLiValues::effectNames_data()
{
    using Names = QByteArrayList;
    QTest::addColumn<QByteArrayList>("names"); // of the keys from 11 on
    QTest::addColumn<QVector<int>>("keys"); // blur, filter, fill, outline, house effect
    QTest::newRow("none installed") << Names{} << QVector<int>{ -1, -1, 0, 0, 0 };
    QTest::newRow("all, in French")
        << Names{ "TessalyEfx", "Trait", "Remplir", "Balance des couleurs (TLS)", "Flou gaussien" }
        << QVector<int>{ 15, 14, 13, 12, 11 };
    QTest::newRow("a name that occurs twice leaves the later key") << Names{ "Flou gaussien",
        "Other", "Flou gaussien", "Another" } << QVector<int>{ 13, -1, 0, 0, 0 };
    QTest::newRow("of two names for one field the later in the list wins")
        << Names{ "Fill", "Trait", "Stroke", "Remplir" } << QVector<int>{ -1, -1, 14, 13, 0 };
    QTest::newRow("and the other way around")
        << Names{ "Remplir", "Stroke", "Trait", "Fill" } << QVector<int>{ -1, -1, 14, 13, 0 };
    QTest::newRow("compared in full, case included") << Names{ "flou gaussien", "Flou gaussien 2",
        "Flou gaussie", " Flou gaussien", "FILL", "Trait ", "Tessaly" }
                                                     << QVector<int>{ -1, -1, 0, 0, 0 };
    QTest::newRow("names of 47 bytes") << Names{ QByteArray(47, 'x'), "Fill", QByteArray(47, 'y') }
                                       << QVector<int>{ -1, -1, 12, 0, 0 };
    QTest::newRow("names beyond ASCII") << Names{ "Flou gaussi\xE9n", "Flou gaussién", "\xFF",
        "Remplir" } << QVector<int>{ -1, -1, 14, 0, 0 };
}

void TestVipLiValues::effectNames()
{
    QFETCH(QByteArrayList, names);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    InstallEffects(sheet, names);
    const vipLi *library = GetVipLi();
    QVERIFY(GetVipLi()->FindEfxKeys());
    const QVector<int> keys{ library->EfxKeyBlur, library->EfxKeyFiltre, library->EfxKeyFill,
        library->EfxKeyOutline, library->EfxKeyTessaly };
    QTEST(keys, "keys");
    QVERIFY(!Log().contains("Tessaly"));
}

void TestVipLiValues::aListThatEndsEarlyIsAnErrorAndLogsNoKeys()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.host.FailNth(4); // of count, next, name, next: what was found so far stays
    vnLog::Instance()->Clear();
    QVERIFY(!GetVipLi()->FindEfxKeys());
    sheet.host.Faults().Clear();
    QVERIFY2(IsOneErrorLine(Log()), Log().constData());
    QCOMPARE(GetVipLi()->EfxKeyBlur, 1);
    QCOMPARE(GetVipLi()->EfxKeyFiltre, -1);
}

// Effects of the layer.

void TestVipLiValues::theFirstEffectOfTheKeyIsFound()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    for (const char *name : { rostrum::kFill, rostrum::kGaussianBlur, rostrum::kGaussianBlur })
        Apply(sheet, name);
    AEGP_EffectRefH effect = nullptr;
    QVERIFY(GetVipLi()->GetLayerEffect(KeyOf(rostrum::kGaussianBlur), /*apply=*/true, effect));

    // The one that was looked at before it is given back; this one is the caller's.
    const QByteArray expected
        = "effect " + QByteArray::number(EffectsOf(sheet)[1].id) + " of " + LayerName(sheet);
    QCOMPARE(sheet.host.Account(), QByteArrayList{ expected });
    const testing::Suite<AEGP_EffectSuite3> effects;
    QCOMPARE(effects->AEGP_DisposeEffect(effect), A_Err_NONE);
    QCOMPARE(EffectsOf(sheet).size(), 3);
}

void TestVipLiValues::anEffectIsAppliedOnRequestOnly()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    Apply(sheet, rostrum::kFill);
    AEGP_EffectRefH effect = reinterpret_cast<AEGP_EffectRefH>(&sheet);
    QVERIFY(GetVipLi()->GetLayerEffect(KeyOf(rostrum::kStroke), /*apply=*/false, effect));
    QVERIFY(!effect);
    QCOMPARE(EffectsOf(sheet).size(), 1);

    QVERIFY(GetVipLi()->GetLayerEffect(KeyOf(rostrum::kStroke), /*apply=*/true, effect));
    QVERIFY(effect);
    QCOMPARE(EffectsOf(sheet).size(), 2);
    QCOMPARE(EffectsOf(sheet)[1].key, KeyOf(rostrum::kStroke));
    const testing::Suite<AEGP_EffectSuite3> effects;
    QCOMPARE(effects->AEGP_DisposeEffect(effect), A_Err_NONE);
}

void TestVipLiValues::aKeyThatIsNotInstalledCannotBeApplied()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    for (const qint32 key : { 0, 99, -2 }) {
        AEGP_EffectRefH effect = nullptr;
        QVERIFY(GetVipLi()->GetLayerEffect(key, /*apply=*/false, effect));
        vnLog::Instance()->Clear();
        QVERIFY(!GetVipLi()->GetLayerEffect(key, /*apply=*/true, effect));
        QVERIFY2(IsOneErrorLine(Log()), Log().constData());
        QVERIFY(!effect);
    }
}

// Effect values.

void TestVipLiValues::aBlurOf0AppliesNothingA5DoesAndALater0LeavesItThere()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    GetVipLi()->FindEfxKeys();
    const qint32 blur = GetVipLi()->EfxKeyBlur;
    qint32 value = 77;
    QVERIFY(GetVipLi()->GetEfxValue(blur, 3, 0, value));
    QCOMPARE(value, 0);
    QVERIFY(GetVipLi()->SetEfxValue(blur, 3, 0, 0));
    QCOMPARE(EffectsOf(sheet).size(), 0);

    QVERIFY(GetVipLi()->SetEfxValue(blur, 3, 0, 5));
    QCOMPARE(EffectsOf(sheet).size(), 1);
    QCOMPARE(EffectsOf(sheet)[0].key, blur);
    QCOMPARE(Param(sheet, 0, 0), 5.0);
    for (const int frame : { 0, 3, 20 }) { // the same on all frames
        QVERIFY(GetVipLi()->GetEfxValue(blur, frame, 0, value));
        QCOMPARE(value, 5);
    }

    QVERIFY(GetVipLi()->SetEfxValue(blur, 3, 0, 0));
    QCOMPARE(EffectsOf(sheet).size(), 1);
    QCOMPARE(Param(sheet, 0, 0), 0.0);
    QCOMPARE(EffectsOf(sheet)[0].params[0].KeyCount(), 0);
    QCOMPARE(sheet.host.Account(), QByteArrayList());
}

void TestVipLiValues::eachFieldHasItsParameter_data()
{
    QTest::addColumn<int>("param");
    QTest::newRow("hue") << 0;
    QTest::newRow("lightness") << 1;
    QTest::newRow("saturation") << 2;
}

void TestVipLiValues::eachFieldHasItsParameter()
{
    QFETCH(int, param);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    GetVipLi()->FindEfxKeys();
    const qint32 filter = GetVipLi()->EfxKeyFiltre;
    QVERIFY(GetVipLi()->SetEfxValue(filter, 8, param, -33));
    for (int other = 0; other < 3; ++other) {
        QCOMPARE(Param(sheet, 0, other), other == param ? -33.0 : 0.0);
        qint32 value = 77;
        QVERIFY(GetVipLi()->GetEfxValue(filter, 2, other, value));
        QCOMPARE(value, other == param ? -33 : 0);
    }
}

void TestVipLiValues::ofTwoBlursTheFirstIsReadAndWritten()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    Apply(sheet, rostrum::kStroke);
    Apply(sheet, rostrum::kGaussianBlur).SetConstant({ 3, 0, 0, 0 });
    Apply(sheet, rostrum::kGaussianBlur).SetConstant({ 9, 0, 0, 0 });
    const qint32 blur = KeyOf(rostrum::kGaussianBlur);
    qint32 value = 0;
    QVERIFY(GetVipLi()->GetEfxValue(blur, 4, 0, value));
    QCOMPARE(value, 3);
    QVERIFY(GetVipLi()->SetEfxValue(blur, 4, 0, 6));
    QCOMPARE(Param(sheet, 1, 0), 6.0);
    QCOMPARE(Param(sheet, 2, 0), 9.0);
    QCOMPARE(EffectsOf(sheet).size(), 3);
}

void TestVipLiValues::effectValuesAreCutTowardZero()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const qint32 filter = KeyOf(rostrum::kColorBalance);
    Apply(sheet, rostrum::kColorBalance, /*param=*/1).SetConstant({ -10.9, 0, 0, 0 });
    qint32 value = 0;
    QVERIFY(GetVipLi()->GetEfxValue(filter, 4, 1, value));
    QCOMPARE(value, -10);
    sheet.EditLayer().effects[0].params[1].SetConstant({ 10.9, 0, 0, 0 });
    QVERIFY(GetVipLi()->GetEfxValue(filter, 4, 1, value));
    QCOMPARE(value, 10);
    sheet.EditLayer().effects[0].params[1].SetConstant({ 1e300, 0, 0, 0 });
    QVERIFY(GetVipLi()->GetEfxValue(filter, 4, 1, value));
    QCOMPARE(value, 2147483647);
}

void TestVipLiValues::aKeyedParameterIsReadAtItsFrame()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    rostrum::Stream &radius = Apply(sheet, rostrum::kGaussianBlur);
    radius.InsertKey({ 4, 25 }, { 10, 0, 0, 0 });
    radius.InsertKey({ 8, 25 }, { 20, 0, 0, 0 });
    const qint32 blur = KeyOf(rostrum::kGaussianBlur);
    qint32 value = 0;
    QVERIFY(GetVipLi()->GetEfxValue(blur, 5, 0, value));
    QCOMPARE(value, 12); // 12.5
    QVERIFY(GetVipLi()->GetEfxValue(blur, 9, 0, value));
    QCOMPARE(value, 20);
}

void TestVipLiValues::aKeyedParameterIsNotWrittenAndStaysOpen()
{
    // The host has no constant to set under keys. What was opened for it stays open by rule.
    LibrarySheet sheet(Keys{ { 0, 1 } });
    Apply(sheet, rostrum::kGaussianBlur).InsertKey({ 4, 25 }, { 10, 0, 0, 0 });
    const rostrum::Project before = sheet.host.GetProject();
    vnLog::Instance()->Clear();
    QVERIFY(!GetVipLi()->SetEfxValue(KeyOf(rostrum::kGaussianBlur), 4, 0, 7));
    QVERIFY2(IsOneErrorLine(Log()), Log().constData());
    QVERIFY(sheet.host.GetProject() == before);
    testing::ExpectAtEnd({ "left open: parameter 1 of an effect of " + LayerName(sheet),
        "left open: value of stream 0", OpenEffect(sheet) });
}

void TestVipLiValues::aParameterThatThereIsNotLeavesItsEffectOpen()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    Apply(sheet, rostrum::kGaussianBlur);
    vnLog::Instance()->Clear();
    qint32 value = 77;
    QVERIFY(!GetVipLi()->GetEfxValue(KeyOf(rostrum::kGaussianBlur), 4, /*param=*/1, value));
    QVERIFY2(IsOneErrorLine(Log()), Log().constData());
    QCOMPARE(value, 0);
    testing::ExpectAtEnd({ OpenEffect(sheet) });
}

void TestVipLiValues::withoutItsEffectAnEnglishHostsFieldKeepsWhatItHeld()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.host.effectLanguage = rostrum::EffectLanguage::English;
    QVERIFY(GetVipLi()->FindEfxKeys());
    vnLog::Instance()->Clear();
    sheet.host.GetTrace().Start();
    qint32 value = 77;
    QVERIFY(!GetVipLi()->GetEfxValue(GetVipLi()->EfxKeyBlur, 3, 0, value));
    QVERIFY(!GetVipLi()->GetEfxValue(GetVipLi()->EfxKeyFiltre, 3, 2, value));
    QVERIFY(!GetVipLi()->SetEfxValue(GetVipLi()->EfxKeyBlur, 3, 0, 5));
    QCOMPARE(value, 77);
    QCOMPARE(sheet.host.GetTrace().Entries().size(), 0);
    QCOMPARE(Log(), QByteArray("<END>"));
}

void TestVipLiValues::withoutCompoOrLayerAnEffectValueIsLeftAlone_data()
{
    QTest::addColumn<bool>("compo");
    QTest::addColumn<bool>("layer");
    QTest::newRow("no composition") << false << true;
    QTest::newRow("no layer") << true << false;
}

void TestVipLiValues::withoutCompoOrLayerAnEffectValueIsLeftAlone()
{
    QFETCH(bool, compo);
    QFETCH(bool, layer);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const qint32 blur = KeyOf(rostrum::kGaussianBlur);
    if (!compo)
        GetVipLi()->Compo = nullptr;
    if (!layer)
        GetVipLi()->Layer = nullptr;
    vnLog::Instance()->Clear();
    sheet.host.GetTrace().Start();
    qint32 value = 77;
    AEGP_EffectRefH effect = nullptr;
    QVERIFY(!GetVipLi()->GetEfxValue(blur, 3, 0, value));
    QCOMPARE(value, 77);
    QVERIFY(!GetVipLi()->SetEfxValue(blur, 3, 0, 5));
    QVERIFY(!GetVipLi()->SetEfxValue(blur, 3, 0, 0));
    QVERIFY(!GetVipLi()->GetLayerEffect(blur, /*apply=*/true, effect));
    QCOMPARE(sheet.host.GetTrace().Entries().size(), 0);
    QCOMPARE(Log(), QByteArray("<END>"));
}

void TestVipLiValues::anEffectDeletedByTheUserIsMissing()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const qint32 blur = KeyOf(rostrum::kGaussianBlur);
    QVERIFY(GetVipLi()->SetEfxValue(blur, 3, 0, 5));
    sheet.EditLayer().effects.clear();
    qint32 value = 77;
    QVERIFY(GetVipLi()->GetEfxValue(blur, 3, 0, value));
    QCOMPARE(value, 0);
    QVERIFY(GetVipLi()->SetEfxValue(blur, 3, 0, 0));
    QCOMPARE(EffectsOf(sheet).size(), 0);
}

VN_HOST_TEST_MAIN(TestVipLiValues)

#include "tst_vipli_values.moc"
