#include "CoreTest.h"

#include <QSet>

using rostrum::Composition;
using rostrum::Item;
using rostrum::ItemId;
using rostrum::Layer;
using rostrum::LayerId;
using rostrum::LayerKind;
using rostrum::Project;
using rostrum::StreamValue;
using rostrum::Time;

class TestProject : public QObject
{
    Q_OBJECT

private slots:
    void aNewProjectHoldsTheRootFolderAlone();
    void theKindsOfItemsTellTheirSizesAndDurations_data();
    void theKindsOfItemsTellTheirSizesAndDurations();
    void anItemNeedsAFolderAboveIt();
    void namesOfAnyBytesAreKept_data();
    void namesOfAnyBytesAreKept();
    void theWalkTakesEachFolderBeforeItsContents();
    void theWalkEndsAtAnItemThatIsGone();
    void anIdThatIsNotThereAnswersNothing();
    void idsAreNeverUsedAgain();
    void keepIdsOfHoldsBackTheIdsOfTheOtherProject();
    void aCompositionThatBringsLayersGivesThemIdsOfTheirOwn();
    void removingAnItemTakesItsLayersEverywhere();
    void removingAFolderTakesAllThatItHolds();
    void aDeepTreeOfFoldersIsWalkedAndRemoved();
    void theRootFolderStays();
    void anItemMovesIntoAnotherFolder();
    void aFolderMayNotMoveIntoItself();
    void aNewLayerLiesOnTopCentredFromTheStart();
    void aLayerWithoutSourceHasItsName();
    void aLayerMayNotMakeACompositionShowItself_data();
    void aLayerMayNotMakeACompositionShowItself();
    void aCompositionShownManyTimesOverIsLookedIntoOnce();
    void aFolderIsNoSource();
    void aCopyOfALayerHasIdsOfItsOwn();
    void aCopyMayNotMakeACompositionShowItself();
    void removingALayerFreesItsChildren();
    void aParentIsSetAndFreed();
    void aLayerMayNotBecomeItsOwnParentAtAnyDistance();
    void moveLayerTakesTheFinalIndex_data();
    void moveLayerTakesTheFinalIndex();
    void aMoveInACompositionThatIsNotThereIsRefused();
    void theHintSavesTheSearchAndIsPutRight();
    void timeRemapIsLegalWhereTheSourceHasTime_data();
    void timeRemapIsLegalWhereTheSourceHasTime();
    void streamsThatAreNotOfferedAnswerNothing_data();
    void streamsThatAreNotOfferedAnswerNothing();
    void theStreamsOfALayerGoByTheirNumbers();
    void withoutTimeRemapKeysALayerShowsItsOwnTime();
    void withTimeRemapKeysALayerShowsTheirValue();
    void keysMoveWithTheLayer();
    void projectsAreEqualByWhatAPersonSees();
    void aCopyIsLeftAloneByLaterChanges();
    void thirtyThousandLayersAreAddedMovedAndRemoved();
};

namespace {

/// A composition with a layer of a series, one of a still and a camera, topmost first.
struct Scene
{
    Project project;
    ItemId series = project.AddFootage("walk[0001-0024].png", Series(24));
    ItemId still = project.AddFootage("decor.psd", Still());
    ItemId composition = project.AddComposition("scene", Comp(100));
    LayerId camera = project.AddLayerWithoutSource(LayerKind::Camera, "cam", composition);
    LayerId decor = project.AddLayer(still, composition);
    LayerId walk = project.AddLayer(series, composition);

    const Layer &Shown(LayerId layer) const { return *project.FindLayer(composition, layer); }
    Layer &Edit(LayerId layer) { return *project.EditLayer(composition, layer); }
};

QVector<ItemId> Walk(const Project &project)
{
    QVector<ItemId> items;
    for (ItemId item = project.RootFolder(); item; item = project.NextInWalk(item))
        items << item;
    return items;
}

} // namespace

void TestProject::aNewProjectHoldsTheRootFolderAlone()
{
    const Project project;
    QCOMPARE(project.ItemCount(), 1);
    const Item *root = project.Find(project.RootFolder());
    QVERIFY(root && root->AsFolder());
    QCOMPARE(root->parent, 0);
    QCOMPARE(root->AsFolder()->children.size(), 0);
    QCOMPARE(project.NextInWalk(project.RootFolder()), 0);
    QCOMPARE(project, Project());
}

void TestProject::theKindsOfItemsTellTheirSizesAndDurations_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<qint32>("frames"); // of 25
    QTest::addColumn<bool>("remap");
    QTest::newRow("folder") << 0 << QSize(0, 0) << 0 << false;
    QTest::newRow("composition") << 1 << QSize(1280, 721) << 77 << true;
    QTest::newRow("series") << 2 << QSize(640, 481) << 24 << true;
    QTest::newRow("still") << 3 << QSize(1001, 700) << 0 << false;
    QTest::newRow("solid") << 4 << QSize(30, 40) << 0 << false;
}

void TestProject::theKindsOfItemsTellTheirSizesAndDurations()
{
    QFETCH(int, kind);
    QFETCH(qint32, frames);
    Project project;
    const ItemId made[] = { project.AddFolder("f"), project.AddComposition("c", Comp(77)),
        project.AddFootage("s", Series(24)), project.AddFootage("d", Still()),
        project.AddSolid("s", { { 30, 40 }, { 1, 0.5, 0 } }) };
    const Item *item = project.Find(made[kind]);
    QVERIFY(item);
    QTEST(item->Dimensions(), "size");
    QCOMPARE(item->Duration(), (Time{ frames, 25 }));
    QTEST(item->CanRemapTime(), "remap");
    QCOMPARE(item->AsFolder() != nullptr, kind == 0);
    QCOMPARE(item->AsComposition() != nullptr, kind == 1);
    QCOMPARE(item->AsFootage() != nullptr, kind == 2 || kind == 3);
    QCOMPARE(item->AsSolid() != nullptr, kind == 4);
    QCOMPARE(project.FindComposition(made[kind]) != nullptr, kind == 1);
}

void TestProject::anItemNeedsAFolderAboveIt()
{
    Project project;
    const ItemId solid = project.AddSolid("solid", { { 3, 4 }, {} });
    const Project before = project;
    QCOMPARE(project.AddFolder("in nothing", 0), 0);
    QCOMPARE(project.AddFolder("in a solid", solid), 0);
    QCOMPARE(project.AddComposition("in what is not there", Comp(5), 99), 0);
    QCOMPARE(project.AddFootage("in what is not there", Series(5), -1), 0);
    QCOMPARE(project.AddSolid("in what is not there", {}, 2147483647), 0);
    QCOMPARE(project, before);
}

void TestProject::namesOfAnyBytesAreKept_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("beyond ASCII") << QByteArray("décor — 夜.psd");
    QTest::newRow("no UTF-8") << QByteArray("d\xe9"
                                            "cor\xff");
    QTest::newRow("a zero inside") << QByteArray("a\0b", 3);
    QTest::newRow("longer than any buffer") << QByteArray(100000, 'n');
    QTest::newRow("lines and quotes") << QByteArray("a\r\n\"b\"\\");
}

void TestProject::namesOfAnyBytesAreKept()
{
    QFETCH(QByteArray, name);
    Project project;
    QCOMPARE(project.Find(project.AddFolder(name))->name, name);
    const ItemId composition = project.AddComposition(name, Comp(3));
    QCOMPARE(project.Find(composition)->name, name);
    const LayerId light = project.AddLayerWithoutSource(LayerKind::Light, name, composition);
    QCOMPARE(project.FindLayer(composition, light)->name, name);
}

void TestProject::theWalkTakesEachFolderBeforeItsContents()
{
    Project project;
    const ItemId last = project.AddSolid("last by name, first by place", { { 1, 2 }, {} });
    const ItemId outer = project.AddFolder("outer");
    const ItemId empty = project.AddFolder("empty", outer);
    const ItemId inner = project.AddFolder("inner", outer);
    const ItemId after = project.AddComposition("after", Comp(9));
    const ItemId deep = project.AddFootage("deep", Series(3), inner); // made last, walked before
    const QVector<ItemId> expected{ project.RootFolder(), last, outer, empty, inner, deep, after };
    QCOMPARE(Walk(project), expected);
    QCOMPARE(project.ItemCount(), 7);
}

void TestProject::theWalkEndsAtAnItemThatIsGone()
{
    Project project;
    const ItemId gone = project.AddFolder("gone");
    project.AddFolder("stays");
    project.RemoveItem(gone);
    QCOMPARE(project.NextInWalk(gone), 0);
    QCOMPARE(project.NextInWalk(0), 0);
    QCOMPARE(project.NextInWalk(-1), 0);
}

void TestProject::anIdThatIsNotThereAnswersNothing()
{
    Scene scene;
    Project &project = scene.project;
    const Project before = project;
    for (const qint32 id : { 0, -1, 4711, 2147483647, -2147483647 - 1 }) {
        QVERIFY(!project.Find(id));
        QVERIFY(!project.Edit(id));
        QVERIFY(!project.FindComposition(id));
        QVERIFY(!project.EditComposition(id));
        QVERIFY(!project.FindLayer(scene.composition, id));
        QVERIFY(!project.EditLayer(scene.composition, id));
        QVERIFY(!project.FindLayer(id, scene.walk));
        QVERIFY(!project.RemoveItem(id));
        QVERIFY(!project.RemoveLayer(scene.composition, id));
        QVERIFY(!project.RemoveLayer(id, scene.walk));
        QVERIFY(!project.CanAddLayer(id, scene.composition));
        QCOMPARE(project.AddLayer(id, scene.composition), 0);
        QCOMPARE(project.AddLayer(scene.series, id), 0);
        QCOMPARE(project.AddLayerWithoutSource(LayerKind::Text, "t", id), 0);
        QVERIFY(!project.SetParent(scene.composition, id, scene.walk));
    }
    QVERIFY(!project.FindLayer(scene.series, scene.walk)); // footage is no composition
    QVERIFY(!project.SetParent(scene.composition, scene.walk, 4711));
    QCOMPARE(project, before);
}

void TestProject::idsAreNeverUsedAgain()
{
    Project project;
    QSet<qint32> used{ project.RootFolder() };
    const auto isNew = [&used](qint32 id) {
        const bool fresh = id > 0 && !used.contains(id);
        used << id;
        return fresh;
    };
    for (int round = 0; round < 20; ++round) {
        const ItemId folder = project.AddFolder("f");
        const ItemId composition = project.AddComposition("c", Comp(10), folder);
        const ItemId solid = project.AddSolid("s", { { 8, 9 }, {} }, folder);
        const LayerId layer = project.AddLayer(solid, composition);
        QVERIFY(isNew(folder) && isNew(composition) && isNew(solid) && isNew(layer));
        QVERIFY(isNew(project.ApplyEffect(composition, layer, 1)));
        QVERIFY(isNew(project.AddLayerWithoutSource(LayerKind::Camera, "c", composition)));
        QVERIFY(project.RemoveLayer(composition, layer));
        QVERIFY(isNew(project.AddLayer(solid, composition)));
        if (round % 3)
            QVERIFY(project.RemoveItem(folder));
    }
}

void TestProject::keepIdsOfHoldsBackTheIdsOfTheOtherProject()
{
    Project project;
    const Project early = project;
    const ItemId first = project.AddFolder("first");
    Project back = early;
    back.KeepIdsOf(project);
    QCOMPARE(back, early); // the next id is nothing that a person sees
    QVERIFY(back.AddFolder("second") > first);

    project.KeepIdsOf(early); // an older state takes nothing back
    QVERIFY(project.AddFolder("third") > first);
}

// A composition that was copied shared its layers' ids with the first one.
void TestProject::aCompositionThatBringsLayersGivesThemIdsOfTheirOwn()
{
    Scene scene;
    QVERIFY(scene.project.SetParent(scene.composition, scene.walk, scene.camera));
    QVERIFY(scene.project.ApplyEffect(scene.composition, scene.decor, 4));
    const Composition first = *scene.project.FindComposition(scene.composition);
    const ItemId copy = scene.project.AddComposition("copy", first);

    const QVector<LayerId> ids = LayerIds(scene.project, copy);
    QCOMPARE(ids.size(), 3);
    for (const LayerId id : ids)
        QVERIFY(!scene.project.FindLayer(scene.composition, id));
    const Composition &copied = *scene.project.FindComposition(copy);
    QCOMPARE(copied.layers[0]->parent, ids[2]); // the copied camera, not the first one
    QCOMPARE(copied.layers[1]->parent, 0);
    QCOMPARE(copied.layers[1]->source, scene.still);
    QVERIFY(copied.layers[1]->effects[0].id != first.layers[1]->effects[0].id);
    QCOMPARE(*scene.project.FindComposition(scene.composition), first);

    Composition raw = Comp(10); // layers that have no ids yet
    raw.layers << rostrum::LayerPtr(new Layer) << rostrum::LayerPtr(new Layer);
    const QVector<LayerId> made = LayerIds(scene.project, scene.project.AddComposition("raw", raw));
    QVERIFY(made[0] > ids[2] && made[1] > made[0]);
}

void TestProject::removingAnItemTakesItsLayersEverywhere()
{
    Scene scene;
    const ItemId other = scene.project.AddComposition("other", Comp(8));
    const LayerId again = scene.project.AddLayer(scene.series, other);
    const LayerId twice = scene.project.AddLayer(scene.series, scene.composition);
    const LayerId nested = scene.project.AddLayer(scene.composition, other);
    QVERIFY(scene.project.SetParent(scene.composition, scene.decor, twice));

    QVERIFY(scene.project.RemoveItem(scene.series));
    QVERIFY(!scene.project.Find(scene.series));
    QCOMPARE(LayerIds(scene.project, scene.composition),
        QVector<LayerId>({ scene.decor, scene.camera }));
    QCOMPARE(LayerIds(scene.project, other), QVector<LayerId>({ nested }));
    QVERIFY(!scene.project.FindLayer(other, again));
    QCOMPARE(scene.Shown(scene.decor).parent, 0); // freed

    QVERIFY(scene.project.RemoveItem(scene.composition)); // its layers go with it
    QVERIFY(!scene.project.FindLayer(scene.composition, scene.decor));
    QCOMPARE(LayerIds(scene.project, other), QVector<LayerId>());
    QVERIFY(!scene.project.RemoveItem(scene.composition));
}

void TestProject::removingAFolderTakesAllThatItHolds()
{
    Scene scene;
    const ItemId outer = scene.project.AddFolder("outer");
    const ItemId inner = scene.project.AddFolder("inner", outer);
    const ItemId solid = scene.project.AddSolid("solid", { { 5, 6 }, {} }, inner);
    const ItemId inside = scene.project.AddComposition("inside", Comp(8), outer);
    scene.project.AddLayer(solid, inside);
    scene.project.AddLayer(solid, scene.composition);
    scene.project.AddLayer(inside, scene.composition);
    const ItemId after = scene.project.AddFolder("after");
    const QVector<ItemId> expected{ scene.project.RootFolder(), scene.series, scene.still,
        scene.composition, after };

    QVERIFY(scene.project.RemoveItem(outer));
    QCOMPARE(Walk(scene.project), expected);
    QCOMPARE(scene.project.ItemCount(), 5);
    QCOMPARE(LayerIds(scene.project, scene.composition),
        QVector<LayerId>({ scene.walk, scene.decor, scene.camera }));
    for (const ItemId gone : { outer, inner, solid, inside })
        QVERIFY(!scene.project.Find(gone));
}

void TestProject::aDeepTreeOfFoldersIsWalkedAndRemoved()
{
    Project project;
    const ItemId top = project.AddFolder("top");
    ItemId deepest = top;
    for (int depth = 0; depth < 20000; ++depth)
        deepest = project.AddFolder("f", deepest);
    const QVector<ItemId> walk = Walk(project);
    QCOMPARE(walk.size(), 20002);
    QCOMPARE(walk.last(), deepest);
    QVERIFY(project.RemoveItem(top));
    QCOMPARE(project, Project());
}

void TestProject::theRootFolderStays()
{
    Scene scene;
    const Project before = scene.project;
    QVERIFY(!scene.project.RemoveItem(scene.project.RootFolder()));
    QCOMPARE(scene.project, before);
}

void TestProject::anItemMovesIntoAnotherFolder()
{
    Scene scene;
    const ItemId folder = scene.project.AddFolder("drawings");

    QVERIFY(scene.project.MoveItem(scene.series, folder));

    QCOMPARE(Walk(scene.project),
        QVector<ItemId>(
            { scene.project.RootFolder(), scene.still, scene.composition, folder, scene.series }));
    QCOMPARE(scene.project.Find(scene.series)->parent, folder);
    QVERIFY(scene.project.MoveItem(scene.series, scene.project.RootFolder()));
    QCOMPARE(Walk(scene.project).last(), scene.series);
}

void TestProject::aFolderMayNotMoveIntoItself()
{
    Project project;
    const ItemId outer = project.AddFolder("outer");
    const ItemId inner = project.AddFolder("inner", outer);
    const ItemId series = project.AddFootage("walk", Series(2));
    const Project before = project;

    QVERIFY(!project.MoveItem(outer, inner));
    QVERIFY(!project.MoveItem(outer, outer));
    QVERIFY(!project.MoveItem(project.RootFolder(), inner));
    QVERIFY(!project.MoveItem(inner, series));
    QVERIFY(!project.MoveItem(inner, 999));
    QVERIFY(!project.MoveItem(999, inner));
    QVERIFY(project == before);
}

void TestProject::aNewLayerLiesOnTopCentredFromTheStart()
{
    const Scene scene;
    QCOMPARE(LayerIds(scene.project, scene.composition),
        QVector<LayerId>({ scene.walk, scene.decor, scene.camera }));
    const Layer &layer = scene.Shown(scene.walk);
    QCOMPARE(layer.kind, LayerKind::Source);
    QCOMPARE(layer.source, scene.series);
    QCOMPARE(scene.project.SourceOf(layer), scene.project.Find(scene.series));
    QCOMPARE(layer.name, QByteArray()); // it has its source's until the user gives one
    QCOMPARE(layer.inPoint, (Time{ 0, 25 }));
    QCOMPARE(layer.offset, (Time{ 0, 25 }));
    QCOMPARE(layer.duration, (Time{ 100, 25 })); // of the composition, the series has 24 images
    QCOMPARE(layer.parent, 0);
    QCOMPARE(layer.anchorPoint.Constant(), (StreamValue{ 320, 240.5, 0, 0 }));
    QCOMPARE(layer.position.Constant(), (StreamValue{ 640, 360.5, 0, 0 }));
    QCOMPARE(layer.scale.Constant(), (StreamValue{ 100, 100, 100, 0 }));
    QCOMPARE(layer.rotation.Constant(), StreamValue());
    QCOMPARE(layer.opacity.Constant(), (StreamValue{ 100, 0, 0, 0 }));
    QCOMPARE(layer.timeRemap.HasKeys(), false);
    QCOMPARE(layer.effects.size(), 0);
}

void TestProject::aLayerWithoutSourceHasItsName()
{
    Scene scene;
    const Layer &camera = scene.Shown(scene.camera);
    QCOMPARE(camera.kind, LayerKind::Camera);
    QCOMPARE(camera.name, QByteArray("cam"));
    QCOMPARE(camera.source, 0);
    QVERIFY(!scene.project.SourceOf(camera));
    QCOMPARE(camera.duration, (Time{ 100, 25 }));
    QCOMPARE(scene.project.AddLayerWithoutSource(LayerKind::Source, "none", scene.composition), 0);
    QCOMPARE(LayerIds(scene.project, scene.composition).size(), 3);
}

void TestProject::aLayerMayNotMakeACompositionShowItself_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("itself") << 0;
    QTest::newRow("one that shows it") << 1;
    QTest::newRow("seven down") << 7;
    QTest::newRow("two thousand down") << 2000;
}

void TestProject::aLayerMayNotMakeACompositionShowItself()
{
    QFETCH(int, depth);
    Project project;
    const ItemId bottom = project.AddComposition("bottom", Comp(4));
    ItemId top = bottom;
    for (int i = 0; i < depth; ++i) {
        const ItemId above = project.AddComposition("above", Comp(4));
        project.AddLayerWithoutSource(LayerKind::Camera, "c", above);
        QCOMPARE(project.AddLayer(top, above) != 0, true);
        top = above;
    }
    const Project before = project;
    QCOMPARE(project.CanAddLayer(top, bottom), false);
    QCOMPARE(project.AddLayer(top, bottom), 0);
    QCOMPARE(project, before);
    QCOMPARE(project.CanAddLayer(bottom, top), depth > 0); // shown twice is no cycle
}

// Each level showed the one below twice: the search took twice as long with every level.
void TestProject::aCompositionShownManyTimesOverIsLookedIntoOnce()
{
    Project project;
    const ItemId bottom = project.AddComposition("bottom", Comp(4));
    ItemId top = bottom;
    for (int i = 0; i < 60; ++i) {
        const ItemId above = project.AddComposition("above", Comp(4));
        QVERIFY(project.AddLayer(top, above) && project.AddLayer(top, above));
        top = above;
    }
    const ItemId aside = project.AddComposition("aside", Comp(4));
    QCOMPARE(project.CanAddLayer(top, aside), true);
    QCOMPARE(project.CanAddLayer(top, bottom), false);
}

void TestProject::aFolderIsNoSource()
{
    Scene scene;
    const ItemId folder = scene.project.AddFolder("folder");
    QCOMPARE(scene.project.CanAddLayer(folder, scene.composition), false);
    QCOMPARE(scene.project.CanAddLayer(scene.series, folder), false);
    QCOMPARE(scene.project.CanAddLayer(scene.series, scene.composition), true);
    QCOMPARE(scene.project.AddLayer(folder, scene.composition), 0);
}

void TestProject::aCopyOfALayerHasIdsOfItsOwn()
{
    Scene scene;
    QVERIFY(scene.project.SetParent(scene.composition, scene.walk, scene.decor));
    const rostrum::EffectId effect
        = scene.project.ApplyEffect(scene.composition, scene.walk, /*key=*/1);
    scene.Edit(scene.walk).effects[0].params[0].SetConstant({ 7, 0, 0, 0 });
    scene.Edit(scene.walk).timeRemap.InsertKey({ 3, 25 }, { 0.5, 0, 0, 0 });
    const ItemId other = scene.project.AddComposition("other", Comp(50));

    const LayerId copy = scene.project.AddCopy(scene.Shown(scene.walk), scene.composition);
    const LayerId far = scene.project.AddCopy(scene.Shown(scene.walk), other);

    QCOMPARE(LayerIds(scene.project, scene.composition),
        QVector<LayerId>({ copy, scene.walk, scene.decor, scene.camera }));
    QCOMPARE(scene.Shown(copy).parent, scene.decor);
    QCOMPARE(scene.project.FindLayer(other, far)->parent, 0); // its parent is not there
    QVERIFY(scene.Shown(copy).effects[0].id != effect);
    QVERIFY(scene.Shown(copy).effects[0].id != scene.project.FindLayer(other, far)->effects[0].id);
    QVERIFY(scene.Shown(copy).effects[0].params == scene.Shown(scene.walk).effects[0].params);
    QVERIFY(scene.Shown(copy).timeRemap == scene.Shown(scene.walk).timeRemap);
    QVERIFY(scene.project.AddCopy(scene.Shown(scene.camera), other)); // of a layer without source
}

void TestProject::aCopyMayNotMakeACompositionShowItself()
{
    Scene scene;
    const ItemId outer = scene.project.AddComposition("outer", Comp(50));
    const LayerId inner = scene.project.AddLayer(scene.composition, outer);

    QCOMPARE(scene.project.AddCopy(*scene.project.FindLayer(outer, inner), scene.composition), 0);
    QCOMPARE(scene.project.AddCopy(scene.Shown(scene.walk), scene.series), 0);
}

void TestProject::removingALayerFreesItsChildren()
{
    Scene scene;
    QVERIFY(scene.project.SetParent(scene.composition, scene.decor, scene.walk));
    QVERIFY(scene.project.SetParent(scene.composition, scene.camera, scene.decor));
    QVERIFY(scene.project.RemoveLayer(scene.composition, scene.walk));
    QCOMPARE(LayerIds(scene.project, scene.composition),
        QVector<LayerId>({ scene.decor, scene.camera }));
    QCOMPARE(scene.Shown(scene.decor).parent, 0);
    QCOMPARE(scene.Shown(scene.camera).parent, scene.decor);
}

void TestProject::aParentIsSetAndFreed()
{
    Scene scene;
    QVERIFY(scene.project.SetParent(scene.composition, scene.decor, scene.walk));
    QCOMPARE(scene.Shown(scene.decor).parent, scene.walk);
    QVERIFY(scene.project.SetParent(scene.composition, scene.decor, scene.camera));
    QCOMPARE(scene.Shown(scene.decor).parent, scene.camera);
    QVERIFY(scene.project.SetParent(scene.composition, scene.decor, 0));
    QCOMPARE(scene.Shown(scene.decor).parent, 0);
}

void TestProject::aLayerMayNotBecomeItsOwnParentAtAnyDistance()
{
    Project project;
    const ItemId composition = project.AddComposition("c", Comp(4));
    const ItemId other = project.AddComposition("o", Comp(4));
    QVector<LayerId> chain;
    for (int i = 0; i < 40; ++i) {
        chain << project.AddLayerWithoutSource(LayerKind::Light, "l", composition);
        if (i > 0)
            QVERIFY(project.SetParent(composition, chain[i], chain[i - 1]));
    }
    const LayerId stranger = project.AddLayerWithoutSource(LayerKind::Light, "l", other);
    const Project before = project;
    QVERIFY(!project.SetParent(composition, chain[0], chain[0]));
    QVERIFY(!project.SetParent(composition, chain[0], chain[1]));
    QVERIFY(!project.SetParent(composition, chain[0], chain[39]));
    QVERIFY(!project.SetParent(composition, chain[20], chain[39]));
    QVERIFY(!project.SetParent(composition, chain[0], stranger)); // of another composition
    QVERIFY(!project.SetParent(other, chain[0], stranger));
    QCOMPARE(project, before);
    QVERIFY(project.SetParent(composition, chain[39], chain[0])); // nearer is no loop
}

void TestProject::moveLayerTakesTheFinalIndex_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QByteArray>("expected"); // of the layers a to e
    QTest::newRow("down by one") << 1 << 2 << QByteArray("acbde");
    QTest::newRow("up by one") << 3 << 2 << QByteArray("abdce");
    QTest::newRow("to the top") << 4 << 0 << QByteArray("eabcd");
    QTest::newRow("to the bottom") << 0 << 4 << QByteArray("bcdea");
    QTest::newRow("-1 is the bottom") << 1 << -1 << QByteArray("acdeb");
    QTest::newRow("-1 from the bottom") << 4 << -1 << QByteArray("abcde");
    QTest::newRow("to where it is") << 2 << 2 << QByteArray("abcde");
    QTest::newRow("one past the bottom is refused") << 2 << 5 << QByteArray();
    QTest::newRow("two above the top is refused") << 2 << -2 << QByteArray();
    QTest::newRow("the largest is refused") << 2 << 2147483647 << QByteArray();
}

void TestProject::moveLayerTakesTheFinalIndex()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QByteArray, expected);
    Project project;
    const ItemId composition = project.AddComposition("c", Comp(4));
    for (const char *name : { "e", "d", "c", "b", "a" })
        project.AddLayerWithoutSource(LayerKind::Text, name, composition);
    const Project before = project;

    const LayerId layer = LayerIds(project, composition)[from];
    QCOMPARE(project.MoveLayer(composition, layer, to), !expected.isEmpty());

    QByteArray names;
    for (const rostrum::LayerPtr &each : project.FindComposition(composition)->layers)
        names += each->name;
    QCOMPARE(names, expected.isEmpty() ? QByteArray("abcde") : expected);
    QCOMPARE(project == before, names == "abcde");
}

void TestProject::aMoveInACompositionThatIsNotThereIsRefused()
{
    Scene scene;
    QCOMPARE(scene.project.MoveLayer(scene.series, scene.walk, 0), false);
    QCOMPARE(scene.project.MoveLayer(99, scene.walk, 0), false);
    QCOMPARE(scene.project.MoveLayer(scene.composition, 99, 0), false);
}

void TestProject::theHintSavesTheSearchAndIsPutRight()
{
    Scene scene;
    for (const int start : { -1, 0, 1, 2, 3, 2147483647 }) {
        int hint = start;
        QCOMPARE(scene.project.FindLayer(scene.composition, scene.decor, &hint),
            &scene.Shown(scene.decor));
        QCOMPARE(hint, 1);
    }
    int hint = 2;
    QVERIFY(!scene.project.FindLayer(scene.composition, 99, &hint));
    QCOMPARE(hint, 2);
    QVERIFY(scene.project.EditLayer(scene.composition, scene.walk, &hint));
    QCOMPARE(hint, 0);
}

void TestProject::timeRemapIsLegalWhereTheSourceHasTime_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("legal");
    QTest::newRow("series") << 0 << true;
    QTest::newRow("composition") << 1 << true;
    QTest::newRow("a series of one image") << 2 << true;
    QTest::newRow("still") << 3 << false;
    QTest::newRow("solid") << 4 << false;
    QTest::newRow("camera") << 5 << false;
    QTest::newRow("light") << 6 << false;
    QTest::newRow("text") << 7 << false;
}

void TestProject::timeRemapIsLegalWhereTheSourceHasTime()
{
    QFETCH(int, kind);
    QFETCH(bool, legal);
    Project project;
    const ItemId composition = project.AddComposition("c", Comp(100));
    const ItemId sources[] = { project.AddFootage("s", Series(24)),
        project.AddComposition("p", Comp(7)), project.AddFootage("o", Series(1)),
        project.AddFootage("d", Still()), project.AddSolid("s", { { 3, 4 }, {} }) };
    const LayerKind kinds[] = { LayerKind::Camera, LayerKind::Light, LayerKind::Text };
    const LayerId id = kind < 5 ? project.AddLayer(sources[kind], composition)
                                : project.AddLayerWithoutSource(kinds[kind - 5], "n", composition);
    const Layer &layer = *project.FindLayer(composition, id);

    QCOMPARE(project.HasStream(layer, rostrum::kTimeRemap), legal);
    StreamValue value{ -1, -2, -3, -4 };
    QCOMPARE(project.StreamValueAt(layer, rostrum::kTimeRemap, { 5, 25 }, &value), legal);
    QCOMPARE(value, legal ? (StreamValue{ 0.2, 0, 0, 0 }) : (StreamValue{ -1, -2, -3, -4 }));
    QCOMPARE(project.HasStream(layer, rostrum::kPosition), true); // every layer has the others
}

void TestProject::streamsThatAreNotOfferedAnswerNothing_data()
{
    QTest::addColumn<qint32>("number");
    for (const qint32 number : { -1, 5, 6, 8, 9, 10, 22, 2147483647, -2147483647 - 1 })
        QTest::addRow("%d", number) << number;
}

void TestProject::streamsThatAreNotOfferedAnswerNothing()
{
    QFETCH(qint32, number);
    Scene scene;
    StreamValue value{ 7, 7, 7, 7 };
    QCOMPARE(scene.project.HasStream(scene.Shown(scene.walk), number), false);
    QCOMPARE(scene.project.StreamValueAt(scene.Shown(scene.walk), number, {}, &value), false);
    QCOMPARE(value, (StreamValue{ 7, 7, 7, 7 }));
    QVERIFY(!scene.Shown(scene.walk).FindStream(number));
    QVERIFY(!scene.Edit(scene.walk).FindStream(number));
}

void TestProject::theStreamsOfALayerGoByTheirNumbers()
{
    Scene scene;
    Layer &layer = scene.Edit(scene.walk);
    QCOMPARE(layer.FindStream(0), &layer.anchorPoint);
    QCOMPARE(layer.FindStream(1), &layer.position);
    QCOMPARE(layer.FindStream(2), &layer.scale);
    QCOMPARE(layer.FindStream(3), &layer.rotation);
    QCOMPARE(layer.FindStream(4), &layer.opacity);
    QCOMPARE(layer.FindStream(7), &layer.timeRemap);
}

void TestProject::withoutTimeRemapKeysALayerShowsItsOwnTime()
{
    Scene scene;
    Layer &layer = scene.Edit(scene.walk);
    layer.offset = { 12, 24 }; // half a second
    layer.timeRemap.SetConstant({ 99, 0, 0, 0 }); // does not count
    QCOMPARE(layer.SourceSeconds({ 0, 25 }), -0.5);
    QCOMPARE(layer.SourceSeconds({ 1, 2 }), 0.0);
    QCOMPARE(layer.SourceSeconds({ 75, 25 }), 2.5);
    QCOMPARE(layer.ToLayerTime({ 1, 2 }), (Time{ 0, 1 }));
    QCOMPARE(layer.ToCompTime({ 1, 25 }), (Time{ 27, 50 }));
    StreamValue value{};
    QVERIFY(scene.project.StreamValueAt(layer, rostrum::kTimeRemap, { 75, 25 }, &value));
    QCOMPARE(value, (StreamValue{ 2.5, 0, 0, 0 }));
}

void TestProject::withTimeRemapKeysALayerShowsTheirValue()
{
    Scene scene;
    Layer &layer = scene.Edit(scene.walk);
    layer.offset = { -4, 25 };
    layer.timeRemap.InsertKey({ 10, 25 }, { 0.28, 0, 0, 0 });
    QCOMPARE(layer.SourceSeconds({ 0, 25 }), 0.28); // before the first key its value
    layer.timeRemap.InsertKey({ 20, 25 }, { 0.48, 0, 0, 0 });
    QCOMPARE(layer.SourceSeconds({ 11, 25 }), 0.38); // half way in layer time
    QCOMPARE(layer.SourceSeconds({ 16, 25 }), 0.48);
    layer.timeRemap.DeleteKey(1);
    layer.timeRemap.DeleteKey(0); // switches it off again
    QCOMPARE(layer.SourceSeconds({ 11, 25 }), 0.6);
}

void TestProject::keysMoveWithTheLayer()
{
    Scene scene;
    Layer &layer = scene.Edit(scene.walk);
    layer.position = rostrum::Stream();
    layer.position.InsertKey({ 0, 25 }, { 100, 7, 0, 0 });
    layer.position.InsertKey({ 10, 25 }, { 200, 7, 0, 0 });
    StreamValue value{};
    QVERIFY(scene.project.StreamValueAt(layer, rostrum::kPosition, { 5, 25 }, &value));
    QCOMPARE(value[0], 150.0);
    layer.offset = { 5, 25 };
    QVERIFY(scene.project.StreamValueAt(layer, rostrum::kPosition, { 5, 25 }, &value));
    QCOMPARE(value, (StreamValue{ 100, 7, 0, 0 }));
}

void TestProject::projectsAreEqualByWhatAPersonSees()
{
    const Scene scene;
    const auto differs = [&](auto change) {
        Scene other;
        const bool same = other.project == scene.project;
        change(other);
        return same && other.project != scene.project;
    };
    const auto comp
        = [](Scene &s) -> Composition & { return *s.project.EditComposition(s.composition); };
    QVERIFY(differs([](Scene &s) { s.project.AddFolder("f"); }));
    QVERIFY(differs([](Scene &s) { s.project.RemoveItem(s.still); }));
    QVERIFY(differs([](Scene &s) { s.project.Edit(s.still)->name = "other"; }));
    QVERIFY(differs([](Scene &s) { s.project.Edit(s.still)->label = 3; }));
    QVERIFY(differs([&](Scene &s) { comp(s).size.rheight() += 1; }));
    QVERIFY(differs([&](Scene &s) { comp(s).rate = { 24, 1 }; }));
    QVERIFY(differs([&](Scene &s) { comp(s).duration = { 99, 25 }; }));
    QVERIFY(differs([&](Scene &s) { comp(s).background.blue = 0.25; }));
    QVERIFY(differs([&](Scene &s) { comp(s).layers.move(0, 1); }));
    QVERIFY(differs([](Scene &s) { s.Edit(s.walk).name = "a"; }));
    QVERIFY(differs([](Scene &s) { s.Edit(s.walk).parent = s.decor; }));
    QVERIFY(differs([](Scene &s) { s.Edit(s.walk).inPoint = { 1, 25 }; }));
    QVERIFY(differs([](Scene &s) { s.Edit(s.walk).duration = { 1, 25 }; }));
    QVERIFY(differs([](Scene &s) { s.Edit(s.walk).offset = { 1, 25 }; }));
    QVERIFY(differs([](Scene &s) { s.Edit(s.walk).effects << rostrum::LayerEffect(); }));
    for (const qint32 number : { 0, 1, 2, 3, 4, 7 })
        QVERIFY(differs([number](Scene &s) {
            s.Edit(s.walk).FindStream(number)->SetConstant({ -1, 0, 0, 0 });
        }));
    QVERIFY(!differs([&](Scene &s) { comp(s).duration = { 200, 50 }; })); // the same fraction
    QVERIFY(!differs([&](Scene &s) { comp(s).rate = { 50, 2 }; }));
    QVERIFY(!differs([](Scene &s) { s.project.RemoveItem(s.project.AddFolder("f")); }));
    QVERIFY(!differs([](Scene &s) { s.Edit(s.walk); })); // touched, not changed
}

void TestProject::aCopyIsLeftAloneByLaterChanges()
{
    Scene scene;
    const Project copy = scene.project;
    const Scene expected;
    scene.Edit(scene.walk).position.InsertKey({ 3, 25 }, { 1, 2, 3, 0 });
    scene.project.RemoveLayer(scene.composition, scene.decor);
    scene.project.Edit(scene.still)->name = "other";
    scene.project.RemoveItem(scene.series);
    QCOMPARE(copy, expected.project);
}

void TestProject::thirtyThousandLayersAreAddedMovedAndRemoved()
{
    const int count = 30001;
    Project project;
    const ItemId solid = project.AddSolid("solid", { { 3, 4 }, {} });
    const ItemId still = project.AddFootage("still", Still());
    const ItemId composition = project.AddComposition("c", Comp(4));
    const LayerId bottom = project.AddLayer(still, composition);
    for (int i = 1; i < count; ++i)
        project.AddLayer(solid, composition);
    const QVector<LayerId> ids = LayerIds(project, composition);
    QCOMPARE(ids.size(), count);
    QCOMPARE(ids.last(), bottom);
    QCOMPARE(QSet<LayerId>(ids.cbegin(), ids.cend()).size(), count);

    QVERIFY(project.SetParent(composition, bottom, ids[17]));
    QVERIFY(project.MoveLayer(composition, bottom, 0));
    QCOMPARE(LayerIds(project, composition)[18], ids[17]);
    QVERIFY(project.RemoveLayer(composition, ids[29999]));
    QCOMPARE(LayerIds(project, composition).size(), count - 1);

    QVERIFY(project.RemoveItem(solid)); // all but one
    QCOMPARE(LayerIds(project, composition), QVector<LayerId>({ bottom }));
    QCOMPARE(project.FindLayer(composition, bottom)->parent, 0);
}

VN_TEST_MAIN(TestProject)

#include "tst_project.moc"
