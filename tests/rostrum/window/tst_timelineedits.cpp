// Changes by hand on the project as a value: what they do to keys and bars, and what they leave.
#include "testhost/HostTestMain.h"
#include "testhost/SheetFixture.h"
#include "window/ImageNumber.h"
#include "window/TimelineEdits.h"

#include <cmath>

using namespace rostrum;
using testing::SheetFixture;

namespace {

const StreamId kRemap{ kTimeRemap };
const StreamId kTurn{ kRotation };

/// A project with the fixture's one layer, apart from any history.
struct Scene
{
    SheetFixture sheet{ { { 0, 3 }, { 10, 5 }, { 20, 7 } } };
    Project project = sheet.host.GetProject();
    ItemId comp = sheet.composition;
    LayerId layer = sheet.layer;

    const Layer &Get(LayerId id) const { return *project.FindLayer(comp, id); }
    const Layer &Get() const { return Get(layer); }
    KeyId KeyOf(const StreamId &stream, int frame) const
    {
        return { layer, stream, Rate().FrameTime(frame) };
    }
    /// Rotation keys; each has its frame as value.
    void SetTurnKeys(const QVector<int> &frames)
    {
        for (const int frame : frames)
            project.EditLayer(comp, layer)
                ->rotation.InsertKey(Rate().FrameTime(frame), { double(frame), 0, 0, 0 });
    }
    /// "frame:value" of each key.
    QString Turns() const { return Text(Get().rotation, 1); }
    QString Images() const { return Text(Get().timeRemap, 25); }
    static QString Text(const Stream &stream, double factor)
    {
        QStringList keys;
        for (int i = 0; i < stream.KeyCount(); ++i)
            keys << QStringLiteral("%1:%2")
                        .arg(Rate().FrameAt(stream.KeyAt(i).time))
                        .arg(qRound(stream.KeyAt(i).value[0] * factor));
        return keys.join(QLatin1Char(' '));
    }
    /// "in duration offset" in frames.
    QString Bar(LayerId id) const
    {
        const Layer &found = Get(id);
        return QStringLiteral("%1 %2 %3")
            .arg(Rate().FrameAt(found.inPoint))
            .arg(Rate().FrameAt(found.duration))
            .arg(Rate().FrameAt(found.offset));
    }
    QString Bar() const { return Bar(layer); }
};

} // namespace

class TestTimelineEdits : public QObject
{
    Q_OBJECT

private slots:
    void valueWithoutKeysIsTheConstant();
    void valueWithKeysGoesToTheKeyAtTheTime();
    void imageTypedWithoutKeysSwitchesTheRemapOn();
    void newKeyChangesNothingThatIsSeen();
    void newKeyOnAKeyIsRefused();
    void lastKeyLeavesItsValue();
    void lastRemapKeySwitchesTheRemapOff();
    void movedKeysKeepTheirDistance();
    void movedKeyTakesThePlaceOfAnother();
    void keyThatIsGoneIsPassedOver();
    void interpolationOfSeveralKeysIsSetAtOnce();
    void movedLayerTakesItsKeysAlong();
    void trims_data();
    void trims();
    void partOfAFrameIsKept();
    void layersAreReordered_data();
    void layersAreReordered();
    void childCannotBecomeAParentOfItsParent();
    void idsThatAreGoneChangeNothing();
    void imageNumberNamesItsFile();
    void everyImageSurvivesItsTime();
};

void TestTimelineEdits::valueWithoutKeysIsTheConstant()
{
    Scene scene;
    QVERIFY(SetStreamValue(
        scene.project, scene.comp, scene.layer, { kOpacity }, Time{ 1, 5 }, { 40, 0, 0, 0 }));
    QVERIFY(!scene.Get().opacity.HasKeys());
    QCOMPARE(scene.Get().opacity.Constant()[0], 40.0);
}

void TestTimelineEdits::valueWithKeysGoesToTheKeyAtTheTime()
{
    Scene scene;
    scene.SetTurnKeys({ 5, 9 });
    const auto set = [&](int frame, double value) {
        QVERIFY(SetStreamValue(scene.project, scene.comp, scene.layer, kTurn,
            Rate().FrameTime(frame), { value, 0, 0, 0 }));
    };
    set(9, 90);
    set(7, 70);
    QCOMPARE(scene.Turns(), QStringLiteral("5:5 7:70 9:90"));
}

void TestTimelineEdits::imageTypedWithoutKeysSwitchesTheRemapOn()
{
    Scene scene;
    const LayerId series = scene.sheet.AddSeries("run", 12);
    scene.project = scene.sheet.host.GetProject();
    scene.layer = series;
    QVERIFY(SetStreamValue(scene.project, scene.comp, series, kRemap, Rate().FrameTime(4),
        { SecondsOfImage(9, Rate()), 0, 0, 0 }));
    QCOMPARE(scene.Images(), QStringLiteral("4:9"));
    QCOMPARE(int(scene.Get().timeRemap.KeyAt(0).out), int(Interpolation::Hold));
}

void TestTimelineEdits::newKeyChangesNothingThatIsSeen()
{
    Scene scene;
    scene.SetTurnKeys({ 0, 20 });
    scene.project.EditLayer(scene.comp, scene.layer)
        ->rotation.SetKeyInterpolation(0, Interpolation::Hold, Interpolation::Hold);
    const Layer before = scene.Get();
    QVERIFY(AddKey(scene.project, scene.comp, scene.layer, kTurn, Rate().FrameTime(8)));
    QVERIFY(AddKey(scene.project, scene.comp, scene.layer, kRemap, Rate().FrameTime(13)));
    QCOMPARE(scene.Turns(), QStringLiteral("0:0 8:0 20:20"));
    QCOMPARE(scene.Images(), QStringLiteral("0:3 10:5 13:5 20:7"));
    for (int frame = 0; frame < 30; ++frame) {
        const Time time = Rate().FrameTime(frame);
        QCOMPARE(scene.Get().rotation.ValueAt(time), before.rotation.ValueAt(time));
        QCOMPARE(scene.Get().timeRemap.ValueAt(time), before.timeRemap.ValueAt(time));
    }
}

void TestTimelineEdits::newKeyOnAKeyIsRefused()
{
    Scene scene;
    const Project before = scene.project;
    QVERIFY(!AddKey(scene.project, scene.comp, scene.layer, kRemap, Rate().FrameTime(10)));
    QVERIFY(scene.project == before);
}

void TestTimelineEdits::lastKeyLeavesItsValue()
{
    Scene scene;
    scene.SetTurnKeys({ 30 });
    RemoveKeys(scene.project, scene.comp, { scene.KeyOf(kTurn, 30) });
    QVERIFY(!scene.Get().rotation.HasKeys());
    QCOMPARE(scene.Get().rotation.Constant()[0], 30.0);
}

void TestTimelineEdits::lastRemapKeySwitchesTheRemapOff()
{
    Scene scene;
    RemoveKeys(scene.project, scene.comp,
        { scene.KeyOf(kRemap, 0), scene.KeyOf(kRemap, 10), scene.KeyOf(kRemap, 20) });
    QVERIFY(!scene.Get().timeRemap.HasKeys());
    QCOMPARE(ImageAt(scene.project, scene.Get(), Rate().FrameTime(6)), 6);
}

void TestTimelineEdits::movedKeysKeepTheirDistance()
{
    Scene scene;
    const KeyIds moved = MoveKeys(
        scene.project, scene.comp, { scene.KeyOf(kRemap, 0), scene.KeyOf(kRemap, 10) }, -4);
    QCOMPARE(scene.Images(), QStringLiteral("-4:3 6:5 20:7"));
    QVERIFY(moved == (KeyIds{ scene.KeyOf(kRemap, -4), scene.KeyOf(kRemap, 6) }));
    QCOMPARE(int(scene.Get().timeRemap.KeyAt(1).in), int(Interpolation::Hold));
}

void TestTimelineEdits::movedKeyTakesThePlaceOfAnother()
{
    Scene scene;
    MoveKeys(scene.project, scene.comp, { scene.KeyOf(kRemap, 0), scene.KeyOf(kRemap, 10) }, 10);
    QCOMPARE(scene.Images(), QStringLiteral("10:3 20:5")); // 10 was not lost to 0, which came there
}

void TestTimelineEdits::keyThatIsGoneIsPassedOver()
{
    Scene scene;
    const Project before = scene.project;
    const KeyIds gone{ scene.KeyOf(kRemap, 11), { 999, kRemap, Time() },
        { scene.layer, { -1, 77, 0 }, Time() }, { scene.layer, { 5 }, Time() } };
    RemoveKeys(scene.project, scene.comp, gone);
    SetInterpolation(scene.project, scene.comp, gone, Interpolation::Bezier);
    QVERIFY(MoveKeys(scene.project, scene.comp, gone, 3).empty());
    SetKeyValue(scene.project, scene.comp, *gone.begin(), { 1, 0, 0, 0 });
    QVERIFY(scene.project == before);
}

void TestTimelineEdits::interpolationOfSeveralKeysIsSetAtOnce()
{
    Scene scene;
    scene.SetTurnKeys({ 1 });
    SetInterpolation(scene.project, scene.comp, { scene.KeyOf(kTurn, 1), scene.KeyOf(kRemap, 10) },
        Interpolation::Bezier);
    QCOMPARE(int(scene.Get().rotation.KeyAt(0).out), int(Interpolation::Bezier));
    QCOMPARE(int(scene.Get().timeRemap.KeyAt(1).in), int(Interpolation::Bezier));
    QCOMPARE(int(scene.Get().timeRemap.KeyAt(0).in), int(Interpolation::Hold));
}

void TestTimelineEdits::movedLayerTakesItsKeysAlong()
{
    Scene scene;
    MoveLayers(scene.project, scene.comp, { scene.layer }, 6);
    QCOMPARE(scene.Bar(), QStringLiteral("6 100 6"));
    QCOMPARE(ImageAt(scene.project, scene.Get(), Rate().FrameTime(15)), 3);
    QCOMPARE(ImageAt(scene.project, scene.Get(), Rate().FrameTime(16)), 5);
}

void TestTimelineEdits::trims_data()
{
    QTest::addColumn<int>("in");
    QTest::addColumn<int>("out");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("bar");
    QTest::newRow("in to the right") << 7 << 0 << 100 << "7 93 0";
    QTest::newRow("in to the left, before the composition") << -7 << 0 << 100 << "-7 107 0";
    QTest::newRow("in past the end keeps a frame") << 500 << 0 << 100 << "99 1 0";
    QTest::newRow("end to the left") << 0 << -30 << 100 << "0 70 0";
    QTest::newRow("end past the in point keeps a frame") << 0 << -500 << 100 << "0 1 0";
    QTest::newRow("one frame cannot be cut from the left") << 1 << 0 << 1 << "0 1 0";
    QTest::newRow("one frame cannot be cut from the right") << 0 << -1 << 1 << "0 1 0";
    QTest::newRow("no length cannot be cut from the left") << 1 << 0 << 0 << "0 0 0";
    QTest::newRow("no length cannot be cut from the right") << 0 << -1 << 0 << "0 0 0";
    QTest::newRow("no length grows to the right") << 0 << 3 << 0 << "0 3 0";
    QTest::newRow("no length grows to the left") << -3 << 0 << 0 << "-3 3 0";
}

void TestTimelineEdits::trims()
{
    QFETCH(int, in);
    QFETCH(int, out);
    QFETCH(int, length);
    Scene scene;
    scene.project.EditLayer(scene.comp, scene.layer)->duration = Rate().FrameTime(length);
    TrimIn(scene.project, scene.comp, { scene.layer }, in);
    TrimOut(scene.project, scene.comp, { scene.layer }, out);
    QTEST(scene.Bar(), "bar");
}

void TestTimelineEdits::partOfAFrameIsKept()
{
    Scene scene;
    scene.project.EditLayer(scene.comp, scene.layer)->inPoint = Time{ 1, 100 };
    MoveLayers(scene.project, scene.comp, { scene.layer }, 2);
    TrimIn(scene.project, scene.comp, { scene.layer }, 3);
    QVERIFY(scene.Get().inPoint == (Time{ 21, 100 }));
    QVERIFY(scene.Get().duration == Rate().FrameTime(97));
}

void TestTimelineEdits::layersAreReordered_data()
{
    QTest::addColumn<QByteArray>("moved");
    QTest::addColumn<int>("gap");
    QTest::addColumn<QByteArray>("order");
    QTest::newRow("up") << QByteArray("d") << 1 << QByteArray("adbce");
    QTest::newRow("down") << QByteArray("b") << 4 << QByteArray("acdbe");
    QTest::newRow("to the top") << QByteArray("e") << 0 << QByteArray("eabcd");
    QTest::newRow("to the end") << QByteArray("a") << 5 << QByteArray("bcdea");
    QTest::newRow("into its own place") << QByteArray("c") << 2 << QByteArray("abcde");
    QTest::newRow("behind itself") << QByteArray("c") << 3 << QByteArray("abcde");
    QTest::newRow("several apart keep their order") << QByteArray("eb") << 3 << QByteArray("acbed");
    QTest::newRow("beyond the end") << QByteArray("a") << 99 << QByteArray("bcdea");
}

void TestTimelineEdits::layersAreReordered()
{
    QFETCH(QByteArray, moved);
    QFETCH(int, gap);
    QFETCH(QByteArray, order);
    Scene scene;
    scene.project.RemoveLayer(scene.comp, scene.layer);
    for (const char name : QByteArray("edcba"))
        scene.project.AddLayerWithoutSource(LayerKind::Text, QByteArray(1, name), scene.comp);
    QVector<LayerId> layers;
    for (const LayerPtr &layer : scene.project.FindComposition(scene.comp)->layers) {
        if (moved.contains(layer->name))
            layers << layer->id;
    }
    const Project before = scene.project;
    Reorder(scene.project, scene.comp, layers, gap);
    QByteArray found;
    for (const LayerPtr &layer : scene.project.FindComposition(scene.comp)->layers)
        found += layer->name;
    QCOMPARE(found, order);
    QCOMPARE(scene.project == before, order == "abcde");
}

void TestTimelineEdits::childCannotBecomeAParentOfItsParent()
{
    Scene scene;
    const LayerId child = scene.sheet.AddSolid("child");
    const LayerId grandchild = scene.sheet.AddSolid("grandchild");
    const LayerId other = scene.sheet.AddSolid("other");
    scene.project = scene.sheet.host.GetProject();
    QVERIFY(scene.project.SetParent(scene.comp, child, scene.layer));
    QVERIFY(scene.project.SetParent(scene.comp, grandchild, child));
    QCOMPARE(PossibleParents(scene.project, scene.comp, scene.layer), QVector<LayerId>{ other });
    QCOMPARE(PossibleParents(scene.project, scene.comp, grandchild),
        (QVector<LayerId>{ other, child, scene.layer }));
}

void TestTimelineEdits::idsThatAreGoneChangeNothing()
{
    Scene scene;
    const Project before = scene.project;
    for (const ItemId comp : { scene.comp, scene.sheet.footage, 0, 4711 }) {
        const QVector<LayerId> layers{ comp == scene.comp ? 4711 : scene.layer };
        MoveLayers(scene.project, comp, layers, 3);
        TrimIn(scene.project, comp, layers, 3);
        TrimOut(scene.project, comp, layers, 3);
        Reorder(scene.project, comp, layers, 0);
        QVERIFY(!AddKey(scene.project, comp, layers[0], kTurn, Time()));
        QVERIFY(!SetStreamValue(scene.project, comp, layers[0], kTurn, Time(), {}));
    }
    QVERIFY(scene.project == before);
    QVERIFY(PossibleParents(scene.project, 4711, scene.layer).isEmpty());
}

void TestTimelineEdits::imageNumberNamesItsFile()
{
    Scene scene;
    Item *item = scene.project.Edit(scene.sheet.footage);
    Footage gaps = *item->AsFootage();
    gaps.files = QStringList{ QStringLiteral("walk0002.png"), QStringLiteral("walk0024.png") };
    gaps.numbers = { 2, 24 };
    item->content = gaps;
    const Layer &layer = scene.Get();
    QCOMPARE(ImageText(scene.project, layer, 1), QStringLiteral("1 = walk0024.png"));
    QCOMPARE(ImageText(scene.project, layer, 2), QStringLiteral("2: no drawing"));
    QCOMPARE(ImageText(scene.project, layer, -1), QStringLiteral("-1: no drawing"));
    const LayerId solid = scene.project.AddLayerWithoutSource(LayerKind::Text, "t", scene.comp);
    QCOMPARE(ImageAt(scene.project, scene.Get(solid), Time()), -1);
    QCOMPARE(ImageCount(scene.project, scene.Get(solid)), 0);
}

void TestTimelineEdits::everyImageSurvivesItsTime()
{
    for (const Rate &rate : { Rate{ 25, 1 }, Rate{ 24, 1 }, Rate{ 30000, 1001 } }) {
        for (int image = 0; image < 3000; ++image)
            QCOMPARE(ImageOfSeconds(SecondsOfImage(image, rate), rate), image);
    }
    QCOMPARE(ImageOfSeconds(std::nan(""), Rate()), 0);
    QCOMPARE(ImageOfSeconds(1e300, Rate()), 2147483647);
}

VN_HOST_TEST_MAIN(TestTimelineEdits)
#include "tst_timelineedits.moc"
