#include "testhost/HostTestMain.h"
#include "testhost/SheetFixture.h"

#include "T_Types/T_QtEditTab.h"
#include "T_Types/T_Undo.h"
#include "panel/Doc.h"
#include "panel/DocMirror.h"
#include "vnAE/vipLi.h"

#include <QSignalSpy>

#include <cstring>
#include <functional>

using namespace rostrum;

namespace {

/// All that the mirror fills, in the order of the reads.
struct Mirrored
{
    int posX, posY, keyPos, keyPosBis, scale, keyScale, rotation, keyRotation, opacity;
    int blur, hue, lightness, saturation;
};

bool operator==(const Mirrored &a, const Mirrored &b)
{
    return std::memcmp(&a, &b, sizeof a) == 0; // integers throughout
}

char *toString(const Mirrored &m)
{
    const QString text
        = QStringLiteral("pos %1 %2 key %3 %4 scale %5 key %6 rotation %7 key %8 opacity %9")
              .arg(m.posX)
              .arg(m.posY)
              .arg(m.keyPos)
              .arg(m.keyPosBis)
              .arg(m.scale)
              .arg(m.keyScale)
              .arg(m.rotation)
              .arg(m.keyRotation)
              .arg(m.opacity)
        + QStringLiteral(" blur %1 hue %2 lightness %3 saturation %4")
              .arg(m.blur)
              .arg(m.hue)
              .arg(m.lightness)
              .arg(m.saturation);
    return qstrdup(text.toUtf8().constData());
}

Mirrored Of(const Doc &doc)
{
    return { doc.posX, doc.posY, doc.keyPos, doc.keyPosBis, doc.scale, doc.keyScale, doc.rotation,
        doc.keyRotation, doc.opacity, doc.blur, doc.hue, doc.lightness, doc.saturation };
}

/// A layer as it comes: in the middle of 640 by 360, with no key and no effect.
constexpr Mirrored kFresh = { 320, 180, 0, 0, 100, 0, 0, 0, 100, 0, 0, 0, 0 };

/// Three columns; the document stands on column 1, frame 6.
struct MirrorFixture
{
    explicit MirrorFixture(EffectLanguage language = EffectLanguage::French)
    {
        T_Undo::Instance()->mEnabled = false;
        sheet.host.effectLanguage = language;
        middle = sheet.AddSeries("run", 12);
        top = sheet.AddSeries("jump", 9);
        library.BasicSuite = sheet.host.BasicSuite();
        library.PluginId = 3;
        qstrcpy(library.CompoName, "scene 7");
        found = library.FindCompo() && library.FindEfxKeys();
        doc.SetCol(1);
        doc.SetRow(6);
    }
    ~MirrorFixture()
    {
        library = vipLi();
        sheet.host.GetDocument().CloseLooseEnds();
    }

    /// Changes a layer behind the library's back, as the user would in the host.
    void Change(LayerId layer, const std::function<void(Layer &)> &change)
    {
        change(*sheet.host.GetDocument().Edit("by hand").EditLayer(sheet.composition, layer));
        sheet.host.GetDocument().CloseLooseEnds();
    }

    void SetEffect(LayerId layer, const char *matchName, int param, double value)
    {
        Project &project = sheet.host.GetDocument().Edit("by hand");
        const EffectId effect
            = project.ApplyEffect(sheet.composition, layer, FindEffect(matchName)->key);
        project.EditLayer(sheet.composition, layer)->FindEffect(effect)->params[param]
            = Stream(StreamValue{ value });
        sheet.host.GetDocument().CloseLooseEnds();
    }

    Mirrored Read()
    {
        ReadDocFromHost(library, doc);
        return Of(doc);
    }

    testing::SheetFixture sheet;
    LayerId middle = 0, top = 0;
    vipLi &library = *GetVipLi();
    Doc doc;
    bool found = false;
};

Time FrameTime(int frame)
{
    return Rate{ 25, 1 }.FrameTime(frame);
}

/// "value 1", "key 1", "param 1" and so on: what the host was asked for, in order. A key is looked
/// for through a stream of its own, a value is not.
QByteArrayList Asked(const Trace &trace)
{
    QByteArrayList asked;
    for (const TraceEntry &entry : trace.Entries()) {
        const QByteArray function = entry.function;
        const QByteArrayList arguments = entry.arguments.split(',');
        if (function == "AEGP_GetCompLayerByIndex")
            asked << "column" + arguments.value(1);
        else if (function == "AEGP_GetLayerStreamValue")
            asked << "value" + arguments.value(1);
        else if (function == "AEGP_GetNewLayerStream")
            asked << "key" + arguments.value(2);
        else if (function == "AEGP_GetNewEffectStreamByIndex")
            asked << "param" + arguments.value(2);
    }
    return asked;
}

} // namespace

Q_DECLARE_METATYPE(std::function<void(MirrorFixture &)>)
Q_DECLARE_METATYPE(Mirrored)
Q_DECLARE_METATYPE(T_Var *)

/// The document's mirror against a host: each value of the current column at the current frame.
class TestDocMirror : public QObject
{
    Q_OBJECT

private slots:
    void eachValueLandsInItsField_data();
    void eachValueLandsInItsField();
    void theHostIsAskedInTheOrderOfTheTable();
    void readingChangesNothingInTheHost();
    void valuesAndKeysAreThoseOfTheDocumentsRow();
    void valuesAreThoseOfTheDocumentsColumn();
    void aScaleThatIsNotUniformShowsItsFirstComponent();
    void aNegativeRowReadsWhatTheHostShowsThere();
    void withoutAColumnTheMirrorFallsBack_data();
    void withoutAColumnTheMirrorFallsBack();
    void anEnglishHostLeavesTheEffectFieldsAsTheyWere();
    void aReadThatFailsLeavesTheOthersWhole_data();
    void aReadThatFailsLeavesTheOthersWhole();
    void settingTheColumnMakesItCurrentWithoutSelecting();
    void theCurrentLayerIsFoundByTheColumnAndTheColumnByTheLayer();
    void showingTheMirrorIsNoUsersChange();
};

void TestDocMirror::eachValueLandsInItsField_data()
{
    using Change = std::function<void(MirrorFixture &)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<Mirrored>("expected");
    const auto row = [](const char *name, const Change &change,
                         const std::function<void(Mirrored &)> &differs) {
        Mirrored expected = kFresh;
        differs(expected);
        QTest::newRow(name) << change << expected;
    };
    const auto layer = [](const std::function<void(Layer &)> &change) -> Change {
        return [change](MirrorFixture &mirror) { mirror.Change(mirror.middle, change); };
    };
    const auto key = [&layer](Stream Layer::*stream) {
        return layer([stream](Layer &changed) {
            (changed.*stream).InsertKey(FrameTime(6), (changed.*stream).Constant());
        });
    };
    const auto efx = [](const char *matchName, int param, double value) -> Change {
        return [=](MirrorFixture &mirror) {
            mirror.SetEffect(mirror.middle, matchName, param, value);
        };
    };

    row(
        "a layer as it comes", [](MirrorFixture &) {}, [](Mirrored &) {});
    row("position", layer([](Layer &l) {
        l.position = Stream({ 10.9, -10.9 });
    }),
        [](Mirrored &m) {
            m.posX = 10; // cut toward zero
            m.posY = -10;
        });
    row("a key of position", key(&Layer::position),
        [](Mirrored &m) { m.keyPos = m.keyPosBis = 1; });
    row("scale", layer([](Layer &l) {
        l.scale = Stream({ 250.5, 40 });
    }),
        [](Mirrored &m) { m.scale = 250; });
    row("a key of scale", key(&Layer::scale), [](Mirrored &m) { m.keyScale = 1; });
    row("rotation", layer([](Layer &l) { l.rotation = Stream({ -721.5 }); }),
        [](Mirrored &m) { m.rotation = -721; });
    row("a key of rotation", key(&Layer::rotation), [](Mirrored &m) { m.keyRotation = 1; });
    row("opacity", layer([](Layer &l) { l.opacity = Stream({ 33.3 }); }),
        [](Mirrored &m) { m.opacity = 33; });
    row("a key of opacity shows nowhere", key(&Layer::opacity), [](Mirrored &) {});
    row("blur", efx(kGaussianBlur, 0, 17), [](Mirrored &m) { m.blur = 17; });
    row("hue", efx(kColorBalance, 0, -18), [](Mirrored &m) { m.hue = -18; });
    row("lightness", efx(kColorBalance, 1, 19), [](Mirrored &m) { m.lightness = 19; });
    row("saturation", efx(kColorBalance, 2, -20), [](Mirrored &m) { m.saturation = -20; });
    row("an effect that is no field's", efx(kStroke, 0, 21), [](Mirrored &) {});
}

void TestDocMirror::eachValueLandsInItsField()
{
    QFETCH(std::function<void(MirrorFixture &)>, change);
    QFETCH(Mirrored, expected);
    MirrorFixture mirror;
    QVERIFY(mirror.found);
    mirror.doc.keyPosBis = true; // what stood there before goes
    mirror.doc.blur = 99;
    change(mirror);
    QCOMPARE(mirror.Read(), expected);
}

void TestDocMirror::theHostIsAskedInTheOrderOfTheTable()
{
    MirrorFixture mirror;
    mirror.SetEffect(mirror.middle, kColorBalance, 0, 5);
    mirror.SetEffect(mirror.middle, kGaussianBlur, 0, 6);
    mirror.sheet.host.GetTrace().Start();
    ReadDocFromHost(mirror.library, mirror.doc);
    mirror.sheet.host.GetTrace().Stop();
    QCOMPARE(Asked(mirror.sheet.host.GetTrace()),
        QByteArrayList({ "column 1", "value 1", "key 1", "value 2", "key 2", "value 3", "key 3",
            "value 4", "param 1", "param 1", "param 2", "param 3" }));

    // The blur is asked for before the colour filter, which stands in front of it on the layer.
    QCOMPARE(kDocReads.size(), std::size_t(11));
    QVERIFY(std::get<EfxRead>(kDocReads[7]).installedKey == &vipLi::EfxKeyBlur);
    QVERIFY(std::get<EfxRead>(kDocReads[8]).installedKey == &vipLi::EfxKeyFiltre);
    QVERIFY(std::get<EfxRead>(kDocReads[8]).field == &Doc::hue);
}

void TestDocMirror::readingChangesNothingInTheHost()
{
    MirrorFixture mirror;
    const Project before = mirror.sheet.host.GetProject();
    const auto selections = mirror.sheet.host.GetDocument().view.selections;
    const int changes = mirror.sheet.host.ChangeCount();
    mirror.Read();
    QVERIFY(mirror.sheet.host.GetProject() == before);
    QVERIFY(mirror.sheet.host.GetDocument().view.selections == selections);
    QCOMPARE(mirror.sheet.host.ChangeCount(), changes);
    QCOMPARE(mirror.sheet.host.OpenHandles(), 0);
    QCOMPARE(mirror.library.Layer, mirror.sheet.LayerH(mirror.middle));
}

void TestDocMirror::valuesAndKeysAreThoseOfTheDocumentsRow()
{
    MirrorFixture mirror;
    mirror.Change(mirror.middle, [](Layer &layer) {
        layer.position.InsertKey(FrameTime(4), { 100, 1000 });
        layer.position.InsertKey(FrameTime(14), { 200, 2000 });
    });
    mirror.doc.SetRow(4);
    mirror.Read();
    QCOMPARE(mirror.doc.posX, 100);
    QCOMPARE(mirror.doc.posY, 1000);
    QVERIFY(mirror.doc.keyPos);
    mirror.doc.SetRow(9);
    mirror.Read();
    QCOMPARE(mirror.doc.posX, 150);
    QCOMPARE(mirror.doc.posY, 1500);
    QVERIFY(!mirror.doc.keyPos);
    QVERIFY(!mirror.doc.keyPosBis);
    QCOMPARE(mirror.doc.GetRow(), 9);
}

void TestDocMirror::valuesAreThoseOfTheDocumentsColumn()
{
    MirrorFixture mirror;
    mirror.Change(mirror.top, [](Layer &layer) { layer.rotation = Stream({ 11 }); });
    mirror.Change(mirror.middle, [](Layer &layer) { layer.rotation = Stream({ 22 }); });
    mirror.Change(mirror.sheet.layer, [](Layer &layer) { layer.rotation = Stream({ 33 }); });
    for (const int col : { 2, 0, 1 }) {
        mirror.doc.SetCol(col);
        mirror.library.Layer = nullptr; // the mirror makes the column current itself
        mirror.Read();
        QCOMPARE(mirror.doc.rotation, 11 * (col + 1));
    }
}

void TestDocMirror::aScaleThatIsNotUniformShowsItsFirstComponent()
{
    MirrorFixture mirror;
    mirror.Change(mirror.middle, [](Layer &layer) { layer.scale = Stream({ 70, 130 }); });
    QCOMPARE(mirror.Read().scale, 70);
    // An edit writes both, the same value; from then on it is uniform.
    QVERIFY(mirror.library.SetStreamValue(AEGP_LayerStream_SCALE, 6, 85, /*component=*/0));
    QVERIFY(mirror.library.SetStreamValue(AEGP_LayerStream_SCALE, 6, 85, /*component=*/1));
    QCOMPARE(mirror.Read().scale, 85);
    QCOMPARE(mirror.sheet.Find(mirror.middle).scale.Constant()[1], 85.0);
}

void TestDocMirror::aNegativeRowReadsWhatTheHostShowsThere()
{
    MirrorFixture mirror;
    mirror.Change(mirror.middle, [](Layer &layer) {
        layer.rotation.InsertKey(FrameTime(0), { 45 });
        layer.rotation.InsertKey(FrameTime(10), { 90 });
    });
    mirror.doc.SetRow(-1);
    const Mirrored read = mirror.Read();
    QCOMPARE(read.rotation, 45); // before the first key
    QCOMPARE(read.keyRotation, 0);
    QVERIFY(mirror.sheet.host.Complaints().isEmpty());
}

void TestDocMirror::withoutAColumnTheMirrorFallsBack_data()
{
    QTest::addColumn<int>("col");
    QTest::newRow("no column is current") << -1;
    QTest::newRow("a column that does not exist") << 3;
}

void TestDocMirror::withoutAColumnTheMirrorFallsBack()
{
    QFETCH(int, col);
    MirrorFixture mirror;
    mirror.SetEffect(mirror.middle, kGaussianBlur, 0, 6);
    mirror.Read();
    mirror.doc.SetCol(col);
    const Mirrored expected = { -1, -1, 0, 0, -1, 0, -1, 0, -1, 6, 0, 0, 0 };
    QCOMPARE(mirror.Read(), expected); // the blur keeps what it held
    mirror.doc.SetRow(-1);
    QCOMPARE(mirror.Read(), expected);
    QCOMPARE(mirror.doc.GetCol(), col);
    QVERIFY(!mirror.library.Layer);
}

/// The blur and the colour filter are known by their French names alone.
void TestDocMirror::anEnglishHostLeavesTheEffectFieldsAsTheyWere()
{
    MirrorFixture mirror(EffectLanguage::English);
    QCOMPARE(mirror.library.EfxKeyBlur, -1);
    mirror.SetEffect(mirror.middle, kGaussianBlur, 0, 6);
    mirror.doc.blur = 71;
    mirror.doc.hue = 72;
    mirror.doc.lightness = 73;
    mirror.doc.saturation = 74;
    Mirrored expected = kFresh;
    expected.blur = 71;
    expected.hue = 72;
    expected.lightness = 73;
    expected.saturation = 74;
    QCOMPARE(mirror.Read(), expected);
}

void TestDocMirror::aReadThatFailsLeavesTheOthersWhole_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::addColumn<Mirrored>("expected");
    // Around it: position 10 20, scale 30, rotation 40, opacity 50, all but the last with a key.
    QTest::newRow("a value of a stream") << QByteArray("AEGP_GetLayerStreamValue")
                                         << Mirrored{ -1, -1, 1, 1, 30, 1, 40, 1, 50, 6, 7, 0, 0 };
    QTest::newRow("a stream, and with it its key") << QByteArray(
        "AEGP_GetNewLayerStream") << Mirrored{ 10, 20, 0, 0, 30, 1, 40, 1, 50, 6, 7, 0, 0 };
    QTest::newRow("the effects of the layer: the first of the four is 0") << QByteArray(
        "AEGP_GetLayerNumEffects") << Mirrored{ 10, 20, 1, 1, 30, 1, 40, 1, 50, 0, 7, 0, 0 };
}

void TestDocMirror::aReadThatFailsLeavesTheOthersWhole()
{
    QFETCH(QByteArray, function);
    QFETCH(Mirrored, expected);
    MirrorFixture mirror;
    mirror.Change(mirror.middle, [](Layer &layer) {
        layer.position.InsertKey(FrameTime(6), { 10, 20 });
        layer.scale.InsertKey(FrameTime(6), { 30, 31 });
        layer.rotation.InsertKey(FrameTime(6), { 40 });
        layer.opacity = Stream({ 50 });
    });
    mirror.SetEffect(mirror.middle, kGaussianBlur, 0, 6);
    mirror.SetEffect(mirror.middle, kColorBalance, 0, 7);
    mirror.doc.blur = 99;
    mirror.sheet.host.FailNext(function);
    QCOMPARE(mirror.Read(), expected);
    QCOMPARE(mirror.sheet.host.OpenHandles(), 0);
}

void TestDocMirror::settingTheColumnMakesItCurrentWithoutSelecting()
{
    MirrorFixture mirror;
    const auto selections = mirror.sheet.host.GetDocument().view.selections;
    mirror.doc.SetCol(2);
    QCOMPARE(mirror.doc.GetCol(), 2);
    QCOMPARE(mirror.library.Layer, mirror.sheet.LayerH());
    QVERIFY(mirror.sheet.host.GetDocument().view.selections == selections);
    mirror.doc.SetCol(-1);
    QVERIFY(!mirror.library.Layer);
    mirror.sheet.host.GetTrace().Start();
    mirror.doc.SetRow(40);
    mirror.sheet.host.GetTrace().Stop();
    QVERIFY(mirror.sheet.host.GetTrace().Entries().isEmpty()); // a row calls no host
}

void TestDocMirror::theCurrentLayerIsFoundByTheColumnAndTheColumnByTheLayer()
{
    MirrorFixture mirror;
    QCOMPARE(mirror.doc.GetCurrentLayer(), mirror.sheet.LayerH(mirror.middle));
    mirror.doc.SetCol(0);
    QCOMPARE(mirror.doc.GetCurrentLayer(), mirror.sheet.LayerH(mirror.top));
    for (const int col : { -1, 3 }) {
        mirror.doc.SetCol(col);
        QVERIFY(!mirror.doc.GetCurrentLayer());
    }
    mirror.doc.SetCurrentLayer(mirror.sheet.LayerH());
    QCOMPARE(mirror.doc.GetCol(), 2);
    QCOMPARE(mirror.library.Layer, mirror.sheet.LayerH());
}

void TestDocMirror::showingTheMirrorIsNoUsersChange()
{
    qRegisterMetaType<T_Var *>("T_Var*");
    MirrorFixture mirror;
    KDockPannel dock(nullptr, /*rows=*/2);
    dock.SetStructs(&mirror.doc);
    QSignalSpy changes(&dock, &KDockPannel::SignalValueChanged);
    mirror.Change(mirror.middle, [](Layer &layer) {
        layer.position.InsertKey(FrameTime(6), { 11, -12 });
        layer.opacity = Stream({ 1000000 });
    });
    mirror.SetEffect(mirror.middle, kColorBalance, 2, 44);
    mirror.Read();
    dock.UpdateAll();
    QCOMPARE(changes.count(), 0);
    QCOMPARE(mirror.doc.posX, 11);
    QCOMPARE(mirror.doc.opacity, 100000); // held to what its editor shows
}

VN_HOST_TEST_MAIN(TestDocMirror)

#include "tst_docmirror.moc"
